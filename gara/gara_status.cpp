// What the window says while a contact is typed, and of the contest as a whole.
#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "base/number.h"
#include "base/text.h"
#include "contest_log.h"
#include "core/call_forms.h"
#include "core/quoted.h"
#include "gara/gara_contest.h"
#include "geo/locator.h"

namespace brenvo::gara {
namespace {

constexpr std::size_t kMostPartials = 8;

std::string Listed(const std::vector<std::string>& texts, std::string_view between) {
  std::string all;
  for (const std::string& text : texts) {
    if (!all.empty()) all += between;
    all += text;
  }
  return all;
}

std::string LengthText(std::int64_t seconds) {
  const std::int64_t minutes = seconds / 60;
  if (minutes >= 24 * 60) return fmt::format("{} g {} h", minutes / 1440, minutes % 1440 / 60);
  return fmt::format("{} h {:02} min", minutes / 60, minutes % 60);
}

// A square is enough for a direction: the middle of what is typed.
std::string WholeLocator(std::string_view typed) {
  if (IsLocator(typed, 6)) return std::string(typed);
  if (IsLocator(typed, 4)) return std::string(typed) + "LL";
  return {};
}

}  // namespace

std::vector<std::string> GaraContest::LocatorsOf(std::string_view call) {
  std::vector<std::string> found;
  const std::string base = core::BaseCall(call);
  if (base.size() < 3) return found;
  std::set<std::string> calls = {base, base + "/P", base::UpperAscii(base::Trim(call))};
  const auto add = [&](const std::string& text) {
    const std::string locator = base::UpperAscii(base::Trim(text)).substr(0, 6);
    if (IsLocator(locator, 6) && std::ranges::find(found, locator) == found.end()) {
      found.push_back(locator);
    }
  };
  for (const std::string& each : calls) {
    for (const std::string_view table : {"Log", "[Contest Qso]"}) {
      constexpr int kMost = 50;
      const auto rows = session_.Db.OpenSnapshot(
          fmt::format("Select Locator from {} where Call={}", table, core::Quoted(each)));
      for (int i = 0; i < kMost && !rows->EOF_(); ++i, rows->MoveNext()) {
        add(rows->Field(std::size_t{0}).Text());
      }
    }
  }
  return found;
}

std::string GaraContest::PartialsOf(const std::string& typed) const {
  if (typed.size() < 2) return {};
  std::vector<std::string> holding, near;
  const auto look = [&](const std::string& call) {
    if (call == typed) return;
    if (holding.size() < kMostPartials && call.find(typed) != std::string::npos) {
      holding.push_back(call);
    } else if (near.size() < kMostPartials && typed.size() >= 4 && DifferByOne(call, typed)) {
      near.push_back(call);
    }
  };
  for (const std::string& call : worked_) look(call);
  for (const std::string& call : known_) {
    if (!worked_.contains(call)) look(call);
  }
  std::string text = Listed(holding, " ");
  if (!near.empty()) {
    text += fmt::format("{}una lettera: {}", text.empty() ? "" : "   ", Listed(near, " "));
  }
  return text;
}

std::string GaraContest::OtherBandsOf(const std::string& call) const {
  if (call.size() < 3 || Banda.Items().size() < 2) return {};
  const std::string base = core::BaseCall(call);
  std::set<std::string> worked;
  for (const StoredQso& each : qsos_) {
    if (core::BaseCall(each.contact.call) == base) worked.insert(each.contact.band);
  }
  if (worked.empty()) return {};
  std::vector<std::string> done, free;
  for (const std::string& band : Banda.Items()) {
    (worked.contains(band) ? done : free).push_back(band);
  }
  if (free.empty()) return "già su tutte le bande";
  return fmt::format("già su {}, chiedi {}", Listed(done, ", "), Listed(free, ", "));
}

void GaraContest::ShowStatus() {
  if (showing_) return;
  const std::string call = base::UpperAscii(base::Trim(Call.Text()));
  expected_.clear();
  if (entry_ == nullptr || count_ == nullptr || call.empty()) {
    for (forms::Label* label : {&Stato, &Storia, &Parziali, &Cambi, &Punti}) label->SetText("");
    if (entry_ == nullptr) Stato.SetText("Scegliere le regole e cominciare un contest");
  }
  const std::string locator = base::UpperAscii(base::Trim(Locator.Text()));
  const std::string whole = WholeLocator(locator);
  Direzione.SetText("");
  if (entry_ != nullptr && !whole.empty() && IsLocator(entry_->locator, 6)) {
    const auto km = DistanceKm(entry_->locator, whole, 111.2);
    std::string direction;
    try {
      direction = fmt::format("{}°", geo::BearingSpLp(entry_->locator, whole).shortPath);
    } catch (const std::domain_error&) {  // due north or south, or the same place
    }
    Direzione.SetText(fmt::format("{} {} km{}", direction,
                                  static_cast<std::int64_t>(km.value_or(0)),
                                  locator.size() == 6 ? "" : " (dal quadrato)"));
  }
  if (entry_ == nullptr || count_ == nullptr || call.empty()) return;
  Contact contact = TypedContact();
  contact.time = session_.Machine.GetClock().UtcNow();
  contact.place = PlaceOf(contact);
  // One that is corrected is no duplicate of itself.
  Worth worth = count_->Try(contact);
  if (corrected_ && worth.duplicateOf) {
    const std::size_t own = *worth.duplicateOf;
    const bool same = PlaceOfKey(*corrected_) == own &&
                      core::BaseCall(qsos_[own].contact.call) == core::BaseCall(contact.call);
    if (same) worth = count_->Worths()[own];
  }
  std::vector<std::string> parts;
  if (worth.duplicateOf && *worth.duplicateOf < qsos_.size()) {
    const Contact& first = qsos_[*worth.duplicateOf].contact;
    parts.push_back(fmt::format("Doppio: {} alle {:02}:{:02}, progressivo {}", first.call,
                                first.time.Hour(), first.time.Minute(), first.serialSent));
  } else {
    parts.push_back(corrected_ ? "Si corregge" : "Nuovo");
    for (const std::string& each : worth.multipliers) parts.push_back("moltiplicatore " + each);
  }
  const auto known = LocatorsOf(call);
  if (!known.empty()) {
    expected_ = known.front();
    // In this contest he is where he was.
    for (const StoredQso& each : qsos_) {
      if (IsLocator(each.contact.locator, 6) &&
          core::BaseCall(each.contact.call) == core::BaseCall(call)) {
        expected_ = each.contact.locator;
      }
    }
    if (IsLocator(locator, 6) && std::ranges::find(known, locator) == known.end()) {
      parts.push_back("locatore diverso dal solito");
    }
  }
  Stato.SetText(Listed(parts, ", "));
  std::vector<std::string> past;
  if (!known.empty()) past.push_back("locatore " + Listed(known, " / "));
  std::int64_t serial = 0;
  for (const StoredQso& each : qsos_) {
    if (core::BaseCall(each.contact.call) == core::BaseCall(call)) {
      serial = std::max(serial, each.contact.serialReceived);
    }
  }
  if (serial > 0) past.push_back(fmt::format("il suo progressivo era {}", serial));
  Storia.SetText(Listed(past, ", "));
  Parziali.SetText(PartialsOf(call));
  Cambi.SetText(OtherBandsOf(call));
  Punti.SetText(std::to_string(worth.points));
}

void GaraContest::AcceptLocator() {
  if (expected_.empty()) return Say("Di questa stazione non si conosce un locatore");
  Locator.SetText(expected_);
}

void GaraContest::ShowSerial() {
  if (showing_ || entry_ == nullptr) {
    SerialeDato.SetText("");
    return;
  }
  const auto own = corrected_ ? PlaceOfKey(*corrected_) : std::nullopt;
  SerialeDato.SetText(
      fmt::format("{:03}", own ? qsos_[*own].contact.serialSent : NextSerial(Banda.Text())));
}

void GaraContest::ShowTotals() {
  if (entry_ == nullptr || count_ == nullptr) {
    Totale.SetText("");
    ShowTime();
    return;
  }
  const Score score = count_->Total();
  std::string text =
      fmt::format("{} QSO, {} punti", score.contacts - score.duplicates, score.points);
  if (!rule_.multipliers.empty()) {
    text += fmt::format(" × {} = {}", score.multipliers, score.total);
  }
  if (score.duplicates > 0) text += fmt::format(", doppi {}", score.duplicates);
  if (score.bands.size() > 1) {
    for (const BandScore& each : score.bands) {
      text += fmt::format(", {}: {} QSO {} punti", each.band, each.contacts, each.points);
    }
  }
  if (entry_->goal > 0) {
    text += fmt::format(", obiettivo {}%", score.total * 100 / entry_->goal);
  }
  Totale.SetText(text);
  ShowTime();
}

void GaraContest::ShowTime() {
  if (entry_ == nullptr) {
    Ritmo.SetText("");
    Tempo.SetText("");
    return;
  }
  const base::DateTime now = session_.Machine.GetClock().UtcNow();
  const auto since = [&](std::int64_t minutes) {
    const base::DateTime from = now.Later(-minutes * 60);
    return std::ranges::count_if(qsos_, [&](const StoredQso& each) {
      return from < each.contact.time && each.contact.time <= now;
    });
  };
  const std::int64_t worked = std::clamp<std::int64_t>(
      (now.Seconds() - entry_->begin.Seconds()) / 60, 1,
      std::max<std::int64_t>(1, (entry_->end.Seconds() - entry_->begin.Seconds()) / 60));
  Ritmo.SetText(fmt::format("10 min: {}, 60 min: {}, media {}/h", since(10), since(60),
                            std::ssize(qsos_) * 60 / worked));
  if (now < entry_->begin) {
    Tempo.SetText("Comincia fra " + LengthText(entry_->begin.Seconds() - now.Seconds()));
  } else if (now < entry_->end) {
    Tempo.SetText("Finisce fra " + LengthText(entry_->end.Seconds() - now.Seconds()));
  } else {
    const std::string due = DeadlineText(rule_, {entry_->begin, entry_->end}, now);
    Tempo.SetText(due.empty() ? "Finito" : "Finito. " + due);
  }
}

}  // namespace brenvo::gara
