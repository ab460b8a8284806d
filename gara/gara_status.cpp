// What the window says while a contact is typed, and of the contest as a whole.
#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "base/number.h"
#include "base/text.h"
#include "call_list.h"
#include "contest_log.h"
#include "core/call_forms.h"
#include "core/quoted.h"
#include "gara/gara_contest.h"
#include "geo/locator.h"
#include "read_bytes.h"

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

// Letters, digits and "/": nothing that a pattern takes for a sign of its own.
bool LooksLikePart(std::string_view text) {
  return std::ranges::all_of(
      text, [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/'; });
}

// "JN48QT (3 volte, 07/09/2024)".
std::string PlaceText(const core::PlaceOfCall& place) {
  std::string more = place.times > 1 ? fmt::format("{} volte", place.times) : "";
  if (place.seen) more += (more.empty() ? "" : ", ") + base::DateText(*place.seen);
  return more.empty() ? place.locator : fmt::format("{} ({})", place.locator, more);
}

}  // namespace

std::vector<core::PlaceOfCall> GaraContest::PlacesOf(std::string_view call, bool others) {
  const std::string typed = base::UpperAscii(base::Trim(call)), base = core::BaseCall(call);
  if (base.size() < 3) return {};
  std::vector<std::string> calls = {typed};
  for (const std::string& each : {base, base + "/P"}) {
    if (each != typed) calls.push_back(each);
  }
  std::vector<core::PlaceOfCall> found;
  const auto add = [&](const std::vector<core::PlaceOfCall>& places) {
    for (const core::PlaceOfCall& each : places) {
      const bool fits =
          found.size() < core::kMostPlaces &&
          std::ranges::find(found, each.locator, &core::PlaceOfCall::locator) == found.end();
      if (fits) found.push_back(each);
    }
  };
  // What was worked counts more than what others say, the form that is typed more than another.
  for (const std::string& each : calls) {
    std::vector<core::PlaceOfCall> worked;
    for (const auto& [table, date] :
         {std::pair("Log", "DataQso"), {"[Contest Qso]", "DataContest"}}) {
      constexpr int kMost = 200;
      const bool leavesOut = others && entry_ != nullptr && table[0] == '[';
      const auto rows = session_.Db.OpenSnapshot(
          fmt::format("Select Locator,{} from {} where Call={}", date, table, core::Quoted(each)));
      for (int i = 0; i < kMost && !rows->EOF_(); ++i, rows->MoveNext()) {
        const std::string locator =
            base::UpperAscii(base::Trim(rows->Field(std::size_t{0}).Text())).substr(0, 6);
        const engine::Value told = rows->Field(1);
        const auto when = told.IsNull() ? std::nullopt : told.ReadableDate();
        const auto day = when ? std::optional(when->DatePart()) : std::nullopt;
        if (!IsLocator(locator, 6) || (leavesOut && day == entry_->Day())) continue;
        const auto there = std::ranges::find(worked, locator, &core::PlaceOfCall::locator);
        if (there == worked.end()) {
          worked.push_back({locator, day, 1});
        } else {
          there->seen = std::max(there->seen, day);
          ++there->times;
        }
      }
    }
    add(core::PlacesTogether({}, worked));
  }
  for (const std::string& each : calls) {
    if (found.size() == core::kMostPlaces) break;
    if (const auto known = core::FindKnownCall(session_.Db, each)) add(known->places);
  }
  return found;
}

const CallList& GaraContest::KnownCalls() {
  if (known_ == nullptr) {
    std::vector<std::string> calls = core::AllKnownCalls(session_.Db);
    constexpr std::size_t kMostBytes = 8 << 20;
    if (const auto bytes = ReadBytesOf(session_.File("\\MASTER.SCP"), kMostBytes)) {
      for (std::string& each : CallsOf(*bytes)) calls.push_back(std::move(each));
    }
    known_ = std::make_unique<CallList>(std::move(calls));
  }
  return *known_;
}

std::string GaraContest::PartialsOf(const std::string& typed) {
  if (typed.size() < 2) return {};
  std::vector<std::string> holding, near;
  const auto add = [&](std::vector<std::string>& to, const std::string& call) {
    if (to.size() < kMostPartials && call != typed && std::ranges::find(to, call) == to.end()) {
      to.push_back(call);
    }
  };
  // Those of this contest come first.
  for (const auto& [station, places] : stations_) {
    for (const std::size_t place : places) {
      const std::string& call = qsos_[place].contact.call;
      if (call.find(typed) != std::string::npos) {
        add(holding, call);
      } else if (typed.size() >= 4 && DifferByOne(call, typed)) {
        add(near, call);
      }
    }
  }
  std::ranges::sort(holding);
  std::ranges::sort(near);
  if (LooksLikePart(typed)) {
    const auto logged = session_.Db.OpenSnapshot(
        fmt::format("Select Call from Log where Call like {}", core::Quoted(typed + "*")));
    constexpr int kMostLooked = 50;
    for (int i = 0; i < kMostLooked && !logged->EOF_(); ++i, logged->MoveNext()) {
      add(holding, base::UpperAscii(base::Trim(logged->Field(std::size_t{0}).Text())));
    }
  }
  for (const std::string& call : KnownCalls().Holding(typed, kMostPartials)) add(holding, call);
  if (typed.size() >= 4) {
    for (const std::string& call : KnownCalls().Near(typed, kMostPartials)) {
      if (std::ranges::find(holding, call) == holding.end()) add(near, call);
    }
  }
  std::string text = Listed(holding, " ");
  if (!near.empty()) {
    text += fmt::format("{}una lettera: {}", text.empty() ? "" : "   ", Listed(near, " "));
  }
  return text;
}

std::string GaraContest::OtherBandsOf(const std::string& call) const {
  if (call.size() < 3 || Banda.Items().size() < 2) return {};
  std::set<std::string> worked;
  for (const std::size_t place : WithStation(call)) worked.insert(qsos_[place].contact.band);
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
  // The other fields of a contact ask nothing anew.
  if (!lookedUp_ || lookedUp_->call != call) {
    lookedUp_ = LookedUp{call, PartialsOf(call), PlacesOf(call, false)};
  }
  const auto& known = lookedUp_->places;
  std::int64_t serial = 0;
  if (!known.empty()) expected_ = known.front().locator;
  for (const std::size_t place : WithStation(call)) {
    const Contact& each = qsos_[place].contact;
    serial = std::max(serial, each.serialReceived);
    // In this contest he is where he was.
    if (IsLocator(each.locator, 6)) expected_ = each.locator;
  }
  if (!expected_.empty()) {
    if (IsLocator(locator, 6) && locator != expected_ &&
        std::ranges::find(known, locator, &core::PlaceOfCall::locator) == known.end()) {
      parts.push_back("locatore diverso dal solito");
    }
  }
  Stato.SetText(Listed(parts, ", "));
  std::vector<std::string> past;
  std::vector<std::string> places;
  for (const core::PlaceOfCall& each : known) places.push_back(PlaceText(each));
  if (!places.empty()) past.push_back("locatore " + Listed(places, " / "));
  if (serial > 0) past.push_back(fmt::format("il suo progressivo era {}", serial));
  Storia.SetText(Listed(past, ", "));
  Parziali.SetText(lookedUp_->partials);
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
