#include "gara/check.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

#include "base/number.h"
#include "base/text.h"
#include "core/call_forms.h"
#include "plain_line.h"

namespace brenvo::gara {
namespace {

constexpr double kFar = 1000, kFarOn50 = 3000;  // km
constexpr std::string_view kWeekdays[] = {"domenica", "lunedì",  "martedì", "mercoledì",
                                          "giovedì",  "venerdì", "sabato"};

std::string_view WeekdayName(base::DateTime day) {
  // Day zero, 30/12/1899, is a Saturday.
  return kWeekdays[static_cast<std::size_t>((day.Seconds() / (24 * 60 * 60) + 6) % 7)];
}

class Checker {
 public:
  explicit Checker(const LogToCheck& log) : log_(log), rule_(log.rule), head_(log.head) {}

  std::vector<Finding> All() {
    CheckHead();
    for (std::size_t i = 0; i < log_.rows.size(); ++i) CheckRow(i);
    CheckSerials();
    CheckStations();
    CheckCounts();
    CheckHours();
    CheckDeadline();
    std::ranges::stable_sort(found_, {}, [](const Finding& each) {
      return std::pair(each.weight, each.row ? *each.row + 1 : 0);
    });
    return std::move(found_);
  }

 private:
  void Find(Weight weight, std::optional<std::size_t> row, std::string text) {
    found_.push_back({weight, row, std::move(text)});
  }

  void CheckHead() {
    using enum Weight;
    for (const std::string& open : rule_.open) {
      Find(kError, {}, fmt::format("Regole da completare: {}", open));
    }
    if (!LooksLikeCall(head_.call)) Find(kError, {}, "Manca il nominativo usato");
    if (rule_.Part(PartKind::kLocator) != nullptr && !IsLocator(head_.locator, 6)) {
      Find(kError, {}, "Il proprio locatore non è di sei lettere e cifre");
    }
    if (rule_.Part(PartKind::kProvince) != nullptr && head_.exchange.empty()) {
      Find(kError, {}, "Manca la propria provincia");
    }
    if (!rule_.categories.empty() &&
        std::ranges::find(rule_.categories, head_.category, &Category::words) ==
            rule_.categories.end()) {
      Find(kError, {},
           head_.category.empty()
               ? std::string("Manca la categoria")
               : fmt::format("La categoria \"{}\" non è fra quelle dello sponsor", head_.category));
    }
    if (head_.mail.empty()) Find(kWarning, {}, "Manca la mail (RHBBS)");
    if (head_.power.empty()) Find(kWarning, {}, "Manca la potenza");
    if (head_.name.empty()) Find(kWarning, {}, "Manca il nome dell'operatore");
    if (log_.rows.empty()) Find(kError, {}, "Non c'è nessun QSO");
    for (const auto& [name, text] :
         {std::pair("il nome", &head_.name), std::pair("l'indirizzo", &head_.street),
          std::pair("la città", &head_.city), std::pair("l'antenna", &head_.antenna)}) {
      if (!FitsEdi(*text)) {
        Find(kHint, {}, fmt::format("Nel file {} cambia lettere: {}", name, *text));
      }
    }
  }

  void CheckRow(std::size_t i) {
    using enum Weight;
    const Contact& contact = log_.rows[i].contact;
    if (!LooksLikeCall(contact.call)) Find(kError, i, "Il nominativo non è tale");
    if (contact.time < log_.period.begin || contact.time >= log_.period.end) {
      Find(kError, i, "Fuori dall'orario del contest");
    }
    if (std::ranges::find(rule_.bands, contact.band) == rule_.bands.end()) {
      Find(kError, i, fmt::format("La banda {} non è del contest", contact.band));
    }
    const std::string_view family = ModeFamily(contact.mode);
    if (std::ranges::find(rule_.modes, family) == rule_.modes.end()) {
      Find(kError, i, fmt::format("Il modo {} non è del contest", contact.mode));
    }
    const std::size_t digits = family == "CW" || family == "RTTY" ? 3 : 2;
    if (family == "CW" || family == "SSB" || family == "FM" || family == "AM" || family == "RTTY") {
      // A station may answer in the other mode: two digits against three are told, not refused.
      for (const auto& [which, report] : {std::pair("dato", &contact.reportSent),
                                          std::pair("ricevuto", &contact.reportReceived)}) {
        if (!IsNumber(*report, 3) || report->size() < 2) {
          Find(kError, i, fmt::format("Il rapporto {} \"{}\" non è tale", which, *report));
        } else if (report->size() != digits) {
          Find(kWarning, i, fmt::format("Il rapporto {} {} non è di {}", which, *report, family));
        }
      }
    }
    if (rule_.Part(PartKind::kLocator) != nullptr) {
      if (!IsLocator(contact.locator, 6)) {
        Find(kError, i, "Il locatore ricevuto non è di sei lettere e cifre");
      } else if (const auto km = DistanceKm(head_.locator, contact.locator, 111.2);
                 km && *km > (contact.band == "6 m" || contact.band == "4 m" ? kFarOn50 : kFar)) {
        Find(kWarning, i, fmt::format("{} km sono tanti", static_cast<int>(*km)));
      }
    }
    if (const ExchangePart* const part = rule_.Part(PartKind::kSerial);
        part != nullptr && !part->mayLack && contact.serialReceived <= 0) {
      Find(kError, i, "Manca il progressivo ricevuto");
    }
    for (const PartKind kind : {PartKind::kProvince, PartKind::kOwn}) {
      const ExchangePart* const part = rule_.Part(kind);
      if (part == nullptr || !contact.exchange.empty()) continue;
      const bool instead = contact.serialReceived > 0 && rule_.Part(PartKind::kSerial) != nullptr &&
                           rule_.Part(PartKind::kSerial)->mayLack;
      if (!part->mayLack && !instead) Find(kError, i, "Manca lo scambio ricevuto");
    }
    if (core::BaseCall(contact.call) == core::BaseCall(head_.call)) {
      Find(kWarning, i, "È il proprio nominativo");
    }
  }

  void CheckSerials() {
    using enum Weight;
    const ExchangePart* const part = rule_.Part(PartKind::kSerial);
    if (part == nullptr || part->mayLack) return;
    std::map<std::string, std::vector<std::size_t>> runs;
    for (std::size_t i = 0; i < log_.rows.size(); ++i) {
      runs[part->serialPerBand ? log_.rows[i].contact.band : ""].push_back(i);
    }
    for (auto& [band, rows] : runs) {
      std::ranges::stable_sort(rows, {},
                               [&](std::size_t i) { return log_.rows[i].contact.serialSent; });
      std::int64_t before = 0;
      base::DateTime time;
      for (const std::size_t i : rows) {
        const Contact& contact = log_.rows[i].contact;
        if (contact.serialSent <= 0) {
          Find(kError, i, "Manca il progressivo dato");
          continue;
        }
        if (contact.serialSent == before) {
          Find(kError, i, fmt::format("Il progressivo {} è dato due volte", before));
        } else if (contact.serialSent > before + 1) {
          Find(kWarning, i,
               fmt::format("Prima manca il progressivo {}: un QSO cancellato?", before + 1));
        }
        if (contact.time < time) Find(kWarning, i, "L'ora è prima di quella del QSO precedente");
        before = contact.serialSent;
        time = contact.time;
      }
    }
  }

  void CheckStations() {
    using enum Weight;
    std::unordered_map<std::string, std::size_t> first;  // by call, its row
    std::unordered_map<std::string, std::pair<std::size_t, std::int64_t>> serials;  // call and band
    std::unordered_map<std::string, std::string> near;  // a call without a letter
    for (std::size_t i = 0; i < log_.rows.size(); ++i) {
      const Contact& contact = log_.rows[i].contact;
      const std::string call = core::BaseCall(contact.call);
      const auto [station, isFirst] = first.emplace(call, i);
      if (!isFirst) {
        const Contact& other = log_.rows[station->second].contact;
        if (!contact.locator.empty() && !other.locator.empty() &&
            !base::SameText(contact.locator, other.locator)) {
          Find(kWarning, i, fmt::format("{} aveva il locatore {}", call, other.locator));
        }
      } else {
        for (std::size_t at2 = 0; at2 < call.size(); ++at2) {
          std::string changed = call, shorter = call;
          changed[at2] = '?';
          shorter.erase(at2, 1);
          for (const std::string& key : {changed, shorter}) {
            const auto [known, fresh] = near.emplace(key, call);
            if (!fresh && known->second != call) Doubt(i, call, known->second);
          }
        }
        const auto [known, fresh] = near.emplace(call, call);
        if (!fresh && known->second != call) Doubt(i, call, known->second);
        if (log_.locatorsOf && IsLocator(contact.locator, 6)) {
          const auto before = log_.locatorsOf(contact.call);
          const bool isKnown =
              before.empty() || std::ranges::any_of(before, [&](const std::string& each) {
                return base::SameText(each.substr(0, 6), contact.locator);
              });
          if (!isKnown) {
            Find(kWarning, i, fmt::format("Locatore diverso dal solito: {}", before.front()));
          }
        }
      }
      if (isFirst && log_.likelierThan) {
        const auto likelier = log_.likelierThan(contact.call);
        if (!likelier.empty()) {
          Find(kHint, i,
               fmt::format("{} non è fra i nominativi conosciuti, {} sì", contact.call,
                           fmt::join(likelier, ", ")));
        }
      }
      if (contact.serialReceived <= 0) continue;
      const auto [at, isNew] =
          serials.emplace(call + '\x1f' + contact.band, std::pair(i, contact.serialReceived));
      if (!isNew) {
        if (contact.serialReceived < at->second.second) {
          Find(kWarning, i,
               fmt::format("Il progressivo ricevuto scende: prima era {}", at->second.second));
        }
        at->second = {i, contact.serialReceived};
      }
    }
  }
  void Doubt(std::size_t row, const std::string& call, const std::string& other) {
    if (!DifferByOne(call, other)) return;
    if (!doubted_.insert(std::minmax(call, other)).second) return;
    Find(Weight::kWarning, row, fmt::format("{} e {} differiscono di una lettera", call, other));
  }

  void CheckCounts() {
    std::vector<Contact> contacts;
    contacts.reserve(log_.rows.size());
    for (const LogRow& row : log_.rows) contacts.push_back(row.contact);
    const Recounted again = Recount(rule_, log_.own, contacts);
    for (std::size_t i = 0; i < contacts.size(); ++i) {
      const Worth& stored = log_.rows[i].worth;
      const Worth& counted = again.worths[i];
      if (stored.duplicateOf.has_value() != counted.duplicateOf.has_value()) {
        Find(Weight::kError, i,
             counted.duplicateOf ? "È doppio e non è segnato" : "È segnato doppio e non lo è");
      } else if (stored.points != counted.points) {
        Find(Weight::kError, i,
             fmt::format("Punti {}, dalle regole {}", stored.points, counted.points));
      }
    }
    if (again.score.total != log_.score) {
      Find(Weight::kError, {},
           fmt::format("Il totale è {}, dal secondo conteggio {}", log_.score, again.score.total));
    }
    if (again.score.duplicates > 0) {
      Find(Weight::kHint, {},
           fmt::format("Doppi: {}, restano nel log con 0 punti", again.score.duplicates));
    }
  }

  // The longest pauses are left out, as many as the periods leave between them.
  void CheckHours() {
    const auto category = std::ranges::find(rule_.categories, head_.category, &Category::words);
    if (category == rule_.categories.end() || category->hours == 0 || log_.rows.empty()) return;
    std::vector<std::int64_t> times, pauses;
    for (const LogRow& row : log_.rows) times.push_back(row.contact.time.Seconds() / 60);
    std::ranges::sort(times);
    for (std::size_t i = 1; i < times.size(); ++i) {
      const std::int64_t pause = times[i] - times[i - 1];
      if (pause >= category->pauseMinutes) pauses.push_back(pause);
    }
    std::ranges::sort(pauses, std::ranges::greater());
    std::int64_t minutes = times.back() - times.front();
    for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(category->periods); ++i) {
      if (i < pauses.size()) minutes -= pauses[i];
    }
    if (minutes > category->hours * 60) {
      Find(
          Weight::kError, {},
          fmt::format("In {} contano {} ore: dal primo all'ultimo QSO, senza le pause che valgono, "
                      "ne passano {} e {} minuti",
                      category->words, category->hours, minutes / 60, minutes % 60));
    }
  }

  void CheckDeadline() {
    const std::string text = DeadlineText(rule_, log_.period, log_.now);
    if (text.empty()) return;
    const auto deadline = DeadlineOf(rule_, log_.period);
    Find(*deadline < log_.now ? Weight::kWarning : Weight::kHint, {}, text);
  }

  const LogToCheck& log_;
  const Rule& rule_;
  const LogHead& head_;
  std::vector<Finding> found_;
  std::set<std::pair<std::string, std::string>> doubted_;
};

}  // namespace

bool DifferByOne(std::string_view a, std::string_view b) {
  if (a.size() > b.size()) std::swap(a, b);
  if (b.size() - a.size() > 1 || a == b) return false;
  std::size_t same = 0;
  while (same < a.size() && a[same] == b[same]) ++same;
  return a.size() == b.size() ? a.substr(same + 1) == b.substr(same + 1)
                              : a.substr(same) == b.substr(same + 1);
}

std::vector<Finding> CheckLog(const LogToCheck& log) { return Checker(log).All(); }

std::string DeadlineText(const Rule& rule, const Period& period, base::DateTime now) {
  const auto deadline = DeadlineOf(rule, period);
  if (!deadline) return {};
  const std::string when =
      fmt::format("{} {} alle {:02}:{:02} UTC", WeekdayName(deadline->DatePart()),
                  base::DateText(*deadline), deadline->Hour(), deadline->Minute());
  if (*deadline < now) return fmt::format("Il log scadeva {}", when);
  const std::int64_t hours = (deadline->Seconds() - now.Seconds()) / 3600;
  return fmt::format("Il log scade {}, fra {} g {} h", when, hours / 24, hours % 24);
}

}  // namespace brenvo::gara
