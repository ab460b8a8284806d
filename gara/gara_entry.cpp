// The contact in the fields: what it lacks, how it is stored, corrected and deleted.
#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "contest_log.h"
#include "core/station_profile.h"
#include "core/texts.h"
#include "gara/gara_contest.h"

namespace brenvo::gara {
namespace {

bool DiffersFrom(const Worth& a, const Worth& b) {
  return a.points != b.points || a.multipliers != b.multipliers ||
         a.duplicateOf.has_value() != b.duplicateOf.has_value();
}

// Contacts that this window stores are no news to it.
class Storing {
 public:
  explicit Storing(bool& flag) : flag_(flag) { flag_ = true; }
  ~Storing() { flag_ = false; }
  Storing(const Storing&) = delete;
  Storing& operator=(const Storing&) = delete;

 private:
  bool& flag_;
};

}  // namespace

bool GaraContest::Wants(PartKind kind) const { return rule_.Part(kind) != nullptr; }

std::optional<GaraContest::Lack> GaraContest::FindLack(const forms::TextField* but) {
  const auto text = [](const forms::TextField& field) { return base::Trim(field.Text()); };
  const auto lacks = [&](forms::TextField& field, bool isThere,
                         std::string what) -> std::optional<Lack> {
    if (isThere || &field == but) return std::nullopt;
    return Lack{&field, std::move(what)};
  };
  const ExchangePart* const serial = rule_.Part(PartKind::kSerial);
  const ExchangePart* const province = rule_.Part(PartKind::kProvince);
  const ExchangePart* const own = rule_.Part(PartKind::kOwn);
  const ExchangePart* const other = province != nullptr ? province : own;
  const bool hasSerial = !text(SerialeRicevuto).empty() && base::Val(SerialeRicevuto.Text()) > 0;
  const bool hasOther = !text(Scambio).empty();
  const bool either = serial != nullptr && serial->mayLack && other != nullptr;
  if (auto lack = lacks(Call, text(Call).size() >= 3, "il nominativo")) return lack;
  for (forms::TextField* report : {&RapportoDato, &RapportoRicevuto}) {
    if (auto lack = lacks(*report, !text(*report).empty(), "il rapporto")) return lack;
  }
  if (serial != nullptr && (!serial->mayLack || (either && !hasOther))) {
    if (auto lack = lacks(SerialeRicevuto, hasSerial, "il progressivo ricevuto")) return lack;
  }
  if (other != nullptr && !other->mayLack && !(either && hasSerial)) {
    if (auto lack = lacks(Scambio, hasOther, "lo scambio ricevuto")) return lack;
  }
  if (Wants(PartKind::kLocator)) {
    if (auto lack =
            lacks(Locator, IsLocator(text(Locator), 6), "il locatore di sei lettere e cifre"))
      return lack;
  }
  return std::nullopt;
}

void GaraContest::EnterPressed(forms::TextField& from) {
  if (!HasContest()) return Say("Prima si sceglie o si comincia un contest");
  if (const auto elsewhere = FindLack(&from)) return Host().MoveFocus(*elsewhere->field);
  if (const auto here = FindLack()) return Say("Manca " + here->text);
  Store();
}

void GaraContest::ClearEntry() {
  corrected_.reset();
  for (forms::TextField* field : {&Call, &SerialeRicevuto, &Scambio, &Locator, &Quando}) {
    field->SetText("");
  }
  const std::string report = core::UsualReport(Modo.Text(), std::nullopt);
  RapportoDato.SetText(report);
  RapportoRicevuto.SetText(report);
  const auto& rig = session_.Rig.Now();
  if (session_.Choices.Get<core::choice::kRigInContest>() && rig) {
    const std::string band = base::Trim(rig->banda);
    if (std::ranges::find(Banda.Items(), band) != Banda.Items().end()) Banda.SetText(band);
    const std::string family(ModeFamily(rig->modo));
    if (!rig->modo.empty() && std::ranges::find(Modo.Items(), family) != Modo.Items().end()) {
      Modo.SetText(family);
    }
  }
  ShowSerial();
  ShowStatus();
}

void GaraContest::Empty() {
  if (keyer_.IsSending()) {
    keyer_.Stop();
    return Say("Trasmissione fermata");
  }
  const bool isEmpty = base::Trim(Call.Text()).empty() && base::Trim(Locator.Text()).empty() &&
                       base::Trim(SerialeRicevuto.Text()).empty() &&
                       base::Trim(Scambio.Text()).empty() && !corrected_;
  if (isEmpty) return PutBack();
  kept_ = {Call.Text(),    RapportoDato.Text(), RapportoRicevuto.Text(), SerialeRicevuto.Text(),
           Scambio.Text(), Locator.Text(),      Quando.Text(),           corrected_};
  ClearEntry();
  Say("Campi svuotati: Ctrl+Z li rimette");
}

void GaraContest::PutBack() {
  if (!kept_) return;
  const Kept kept = *std::exchange(kept_, std::nullopt);
  corrected_ = kept.corrected;
  Call.SetText(kept.call);
  RapportoDato.SetText(kept.sent);
  RapportoRicevuto.SetText(kept.received);
  SerialeRicevuto.SetText(kept.serial);
  Scambio.SetText(kept.exchange);
  Locator.SetText(kept.locator);
  Quando.SetText(kept.when);
  ShowSerial();
  ShowStatus();
  Say("Campi rimessi");
}

void GaraContest::Step(forms::ListField& list) {
  if (list.Items().empty()) return;
  list.SetListIndex((list.ListIndex() + 1) % static_cast<int>(list.Items().size()));
}

bool GaraContest::TableKey(char32_t) { return false; }

Contact GaraContest::TypedContact() const {
  Contact contact;
  contact.band = Banda.Text();
  contact.mode = Modo.Text();
  contact.call = base::UpperAscii(base::Trim(Call.Text()));
  contact.reportSent = base::Trim(RapportoDato.Text());
  contact.reportReceived = base::Trim(RapportoRicevuto.Text());
  contact.serialReceived =
      static_cast<std::int64_t>(std::clamp(base::Val(SerialeRicevuto.Text()), 0.0, 999999.0));
  contact.exchange = base::UpperAscii(base::Trim(Scambio.Text()));
  contact.locator = base::UpperAscii(base::Trim(Locator.Text()));
  return contact;
}

std::int64_t GaraContest::NextSerial(const std::string& band) {
  if (entry_ == nullptr) return 0;
  const ExchangePart* const part = rule_.Part(PartKind::kSerial);
  const bool perBand = part == nullptr || part->serialPerBand;
  const auto last = [&](const std::string& of) {
    const auto known = serials_.find(of);
    if (known != serials_.end()) return known->second;
    return serials_[of] = LastSerial(session_.Db, *entry_, of);
  };
  if (perBand) return last(band) + 1;
  std::int64_t highest = 0;
  for (const std::string& each : rule_.bands) highest = std::max(highest, last(each));
  return highest + 1;
}

// False, and why is said, where the field holds no time.
bool GaraContest::TakeTime(Contact& contact, const Contact* corrected) {
  const std::string typed = base::Trim(Quando.Text());
  if (typed.empty()) {
    contact.time = corrected != nullptr ? corrected->time : session_.Machine.GetClock().UtcNow();
    return true;
  }
  const std::size_t blank = typed.find(' ');
  const auto day = base::ParseDate(typed.substr(0, blank));
  const auto time =
      blank == std::string::npos ? std::nullopt : base::ParseTime(base::Trim(typed.substr(blank)));
  if (!day || !time) {
    Say("Quando si scrive come 07/09/2024 14:05");
    Host().MoveFocus(Quando);
    return false;
  }
  contact.time = day->DatePart() + time->TimePart();
  // The field has no seconds; a minute that was left alone keeps those of the contact.
  constexpr std::int64_t kMinute = 60;
  if (corrected != nullptr &&
      corrected->time.Seconds() / kMinute == contact.time.Seconds() / kMinute) {
    contact.time = corrected->time;
  }
  return true;
}

void GaraContest::Store() {
  if (!HasContest()) return Say("Prima si sceglie o si comincia un contest");
  if (const auto lack = FindLack()) {
    Say("Manca " + lack->text);
    return Host().MoveFocus(*lack->field);
  }
  const auto place = corrected_ ? PlaceOfKey(*corrected_) : std::nullopt;
  if (corrected_ && !place) {
    corrected_.reset();
    return Say("Il Qso che si correggeva non c'è più");
  }
  StoredQso qso = place ? qsos_[*place] : StoredQso();
  const Contact before = qso.contact;
  Contact& contact = qso.contact;
  contact = TypedContact();
  if (place && contact.band != before.band) {
    return Say("La banda di un Qso non si corregge: si cancella e si scrive sull'altra");
  }
  if (!TakeTime(contact, place ? &before : nullptr)) return;
  contact.place = PlaceOf(contact);
  if (const std::string why = WhyNoBand(session_, entry_->number, entry_->begin, contact.band);
      !place && !why.empty()) {
    return Say(why);
  }
  contact.serialSent = place ? before.serialSent : NextSerial(contact.band);
  const std::int64_t key = KeyOf(contact);
  const std::string call = contact.call, locator = contact.locator, band = contact.band;
  const std::int64_t serial = contact.serialSent;
  if (!place && (qsos_.empty() || !(contact.time < qsos_.back().contact.time))) {
    StoreBehindAll(std::move(qso));
  } else {
    StoreAmongOthers(std::move(qso), place);
  }
  ShowRows(key);
  serials_[band] = std::max(serials_[band], serial);
  const Worth worth = count_->Worths()[PlaceOfKey(key).value()];
  kept_.reset();
  ClearEntry();
  ShowTotals();
  Say(fmt::format(
      "Qso {}: {}", place ? "corretto" : "registrato",
      core::Joined({std::to_string(serial), call, locator, std::to_string(worth.points) + " punti",
                    worth.duplicateOf ? "doppio" : ""})));
  Host().MoveFocus(Call);
}

// The usual case costs the same however many there are.
void GaraContest::StoreBehindAll(StoredQso qso) {
  qso.worth = count_->Try(qso.contact);
  {
    const Storing storing(storing_);
    StoreNewQso(session_, put_, *entry_, qso, {});
  }
  count_->Add(qso.contact);
  lookedUp_.reset();
  const std::int64_t key = KeyOf(qso.contact);
  qsos_.push_back(std::move(qso));
  Remember(qsos_.size() - 1);
  rows_.PutNumbered(key, RowOf(qsos_.size() - 1));
}

// One that is corrected, or was made before others: what the rules give these may become another.
void GaraContest::StoreAmongOthers(StoredQso qso, std::optional<std::size_t> place) {
  std::vector<StoredQso> after = qsos_;
  if (place) after.erase(after.begin() + static_cast<std::ptrdiff_t>(*place));
  const auto at = std::ranges::upper_bound(after, qso.contact.time, {},
                                           [](const StoredQso& each) { return each.contact.time; });
  const std::size_t here =
      static_cast<std::size_t>(after.insert(at, std::move(qso)) - after.begin());
  const std::vector<ChangedWorth> others = WeighAnew(after, here);
  const StoredQso& stored = after[here];
  {
    const Storing storing(storing_);
    if (place) {
      ChangeQso(session_, put_, *entry_, stored.contact.band, stored.contact.serialSent, stored,
                others);
    } else {
      StoreNewQso(session_, put_, *entry_, stored, others);
    }
  }
  qsos_ = std::move(after);
  Recount();
}

// Gives all of them what the rules now give; tells those that are worth another than before, but
// for one.
std::vector<ChangedWorth> GaraContest::WeighAnew(std::vector<StoredQso>& qsos,
                                                 std::optional<std::size_t> but) {
  Count counted(rule_, Own());
  std::vector<ChangedWorth> changed;
  for (std::size_t i = 0; i < qsos.size(); ++i) {
    const Contact& contact = qsos[i].contact;
    const Worth& now = counted.Add(contact);
    const auto was = PlaceOfKey(KeyOf(contact));
    if (i != but && was && DiffersFrom(count_->Worths()[*was], now)) {
      changed.push_back({contact.band, contact.serialSent, now});
    }
    qsos[i].worth = now;
  }
  return changed;
}

void GaraContest::TakeUp() {
  if (const auto key = ChosenKey()) TakeUp(*key);
}

void GaraContest::TakeUp(std::int64_t key) {
  const auto place = PlaceOfKey(key);
  if (!place) return;
  const Contact contact = qsos_[*place].contact;
  Banda.SetText(contact.band);
  if (std::ranges::find(Modo.Items(), contact.mode) == Modo.Items().end()) {
    Modo.AddItem(contact.mode);
  }
  Modo.SetText(contact.mode);
  corrected_ = key;
  Call.SetText(contact.call);
  RapportoDato.SetText(contact.reportSent);
  RapportoRicevuto.SetText(contact.reportReceived);
  SerialeRicevuto.SetText(contact.serialReceived == 0 ? ""
                                                      : std::to_string(contact.serialReceived));
  Scambio.SetText(contact.exchange);
  Locator.SetText(contact.locator);
  Quando.SetText(base::DateText(contact.time) + " " + core::HourMinute(contact.time));
  ShowSerial();
  ShowStatus();
  Say(fmt::format("Si corregge il Qso {} con {}: Inserisci lo registra, Svuota lo lascia com'era",
                  contact.serialSent, contact.call));
  Host().MoveFocus(Call);
}

void GaraContest::Remove() {
  const auto key = ChosenKey();
  const auto place = key ? PlaceOfKey(*key) : std::nullopt;
  if (!place) return;
  const Contact contact = qsos_[*place].contact;
  if (!session_.Messages().AskYesNo("Contest", fmt::format("Cancellare il Qso {} con {} ?",
                                                           contact.serialSent, contact.call))) {
    return;
  }
  std::vector<StoredQso> left = qsos_;
  left.erase(left.begin() + static_cast<std::ptrdiff_t>(*place));
  const std::vector<ChangedWorth> others = WeighAnew(left, {});
  {
    const Storing storing(storing_);
    DeleteQso(session_, *entry_, contact.band, contact.serialSent, others);
  }
  qsos_ = std::move(left);
  if (corrected_ == key) ClearEntry();
  Recount();
  ShowStatus();
  Say(fmt::format("Qso {} con {} cancellato", contact.serialSent, contact.call));
}

}  // namespace brenvo::gara
