#include "contest/contest_new_qso.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "contact.h"
#include "contest/insert_qso.h"
#include "core/entry.h"
#include "core/log_time.h"
#include "core/place_on_day.h"
#include "core/prefix.h"
#include "core/texts.h"
#include "core/window_place.h"
#include "core/writing.h"
#include "geo/locator.h"

namespace brenvo::contest {
namespace {

constexpr std::string_view kReport = "59";
constexpr std::string_view kFirstMode = "USB";

// Digits, and Enter, which leads on.
char32_t DigitsAndEnter(char32_t key) {
  return key == forms::kEnter ? key : core::DigitsOnlyKey(key);
}

}  // namespace

ContestNewQso::ContestNewQso(core::Session& session)
    : forms::Window(session.Host(), "ContestNewQso", "Contest - Nuovo Qso", base::Twips(7200),
                    base::Twips(3900)),
      session_(session) {
  Qrb.ReadOnly = true;
  Operation.SetVisible(false);
  HandleEvents();
  ChainEnter();
}

void ContestNewQso::HandleEvents() {
  for (forms::TextField* field : {&Giorno, &QrkD, &ProgrD, &QrkR, &ProgrR})
    field->Filter = DigitsAndEnter;
  for (forms::TextField* field : {&CallQso, &Locator, &Exc}) field->Filter = core::UpperKey;
  CallQso.OnLeave = [this] { OnCallLeave(); };
  Locator.OnLeave = [this] { OnLocatorLeave(); };
  ProgrR.OnFocus = [this] {
    if (core::IsEmptyField(CallQso.Text())) Host().MoveFocus(CallQso);
  };
}

void ContestNewQso::InsertAndLeave() {
  InsertQso();
  Close();
}

void ContestNewQso::InsertAndStay() {
  InsertQso();
  Operation.SetText("I");
  Prepare();
}

void ContestNewQso::ChainEnter() {
  forms::TextField* const contact[] = {&CallQso, &QrkD, &QrkR, &ProgrR, &Locator, &Exc};
  forms::TextField* const rest[] = {&Giorno, &Qtr, &ProgrD, &Modo, &CallQso};
  const auto chain = [this](const auto& fields) {
    for (std::size_t i = 0; i + 1 < std::size(fields); ++i) {
      fields[i]->OnEnter = [this, next = fields[i + 1]] { Host().MoveFocus(*next); };
    }
  };
  chain(contact);
  chain(rest);
  Exc.OnEnter = Note.OnEnter = [this] { EnterOnLastField(); };
}

void ContestNewQso::EnterOnLastField() {
  if (const auto refusal = FindRefusal()) {
    Host().MoveFocus(*refusal->field);
    return;
  }
  cmInsertR.Press();
  Host().MoveFocus(CallQso);
}

void ContestNewQso::Load() {
  core::RestoreWindow(session_, *this, "ContestNewQso");
  changes_ = session_.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.table != core::ContactTable::kContestQso || storing_) return;
    others_ = true;
    GiveWayToOther();
  });
}

void ContestNewQso::Activate() { Prepare(); }

void ContestNewQso::Unload() {
  changes_ = {};
  others_ = false;
  core::SaveWindow(session_, *this, "ContestNewQso");
  UltimoProgr = 0;
}

void ContestNewQso::Prepare() {
  contest_ = session_.Handed.CurrentContest;
  if (Operation.Text() == "I") PrepareNew();
  if (Operation.Text() == "U") ShowRow();
}

void ContestNewQso::PrepareNew() {
  if (UltimoProgr == 0) {
    const std::string where = OfContest(contest_.DataContest, contest_.Banda);
    const auto last = session_.Db.OpenSnapshot("SELECT max(ProgrDato) FROM [Contest Qso]" + where);
    const engine::Value serial = last->EOF_() ? engine::Value() : last->Field(0);
    if (serial.IsNull()) {
      Giorno.SetText(
          std::to_string(base::ParseDate(contest_.DataContest).value_or(base::DateTime()).Day()));
      Modo.SetText(kFirstMode);
    } else {
      UltimoProgr = serial.Integer();
      const auto row = session_.Db.OpenSnapshot(
          fmt::format("SELECT * FROM [Contest Qso]{} and ProgrDato={}", where, UltimoProgr));
      Giorno.SetText(core::FieldText(*row, "Giorno"));
      Modo.SetText(core::FieldText(*row, "Modo"));
    }
  }
  const auto& rig = session_.Rig.Now();
  if (session_.Choices.Get<core::choice::kRigInContest>() && rig && !rig->modo.empty()) {
    Modo.SetText(rig->modo);
  }
  ++UltimoProgr;
  ProgrD.SetText(std::to_string(UltimoProgr));
  ShowTime();
  QrkD.SetText(kReport);
  QrkR.SetText(kReport);
  for (forms::TextField* field : {&CallQso, &Locator, &Qrb, &ProgrR, &Note}) field->SetText("");
  InLog.SetOn(false);
  Qsl.SetOn(false);
  if (others_) GiveWayToOther();
}

// A serial that the operator has typed himself is his.
void ContestNewQso::GiveWayToOther() {
  const std::string shown = std::to_string(UltimoProgr);
  if (Operation.Text() != "I" || UltimoProgr == 0 || ProgrD.Text() != shown) return;
  const std::string where = OfContest(contest_.DataContest, contest_.Banda);
  const auto taken = session_.Db.OpenSnapshot(
      fmt::format("SELECT Call FROM [Contest Qso]{} and ProgrDato={}", where, shown));
  if (taken->EOF_()) return;
  const std::string call = base::Trim(taken->Field(0).Text());
  const auto last = session_.Db.OpenSnapshot("SELECT max(ProgrDato) FROM [Contest Qso]" + where);
  UltimoProgr = std::max(UltimoProgr, last->Field(0).Integer()) + 1;
  ProgrD.SetText(std::to_string(UltimoProgr));
  Avviso.SetText(fmt::format("Il progressivo {} è andato a {}: questo Qso ha il {}", shown, call,
                             UltimoProgr));
}

void ContestNewQso::ShowRow() {
  engine::Recordset& row = *Data1->Rows();
  const std::pair<forms::TextField*, std::string_view> columns[] = {
      {&Giorno, "Giorno"},    {&CallQso, "Call"},     {&QrkD, "QrkDato"},
      {&ProgrD, "ProgrDato"}, {&QrkR, "QrkRicevuto"}, {&ProgrR, "ProgrRicevuto"},
      {&Locator, "Locator"},  {&Qrb, "Qrb"},          {&Modo, "Modo"},
      {&Note, "Note"}};
  for (const auto& [field, column] : columns) field->SetText(core::FieldText(row, column));
  Qtr.SetText(core::HourMinute(row.Field("Qtr").Date()));
  Qsl.SetOn(row.Field("Qsl").Bool());
  InLog.SetOn(row.Field("InLog").Bool());
}

void ContestNewQso::ShowTime() { Qtr.SetText(core::HourMinute(session_.Now())); }

std::string ContestNewQso::OtherOnItsDay() {
  const std::string call = base::Trim(CallQso.Text());
  const auto contestDay = base::ParseDate(contest_.DataContest);
  if (call.empty() || !contestDay) return {};
  base::DateTime when = contestDay->DatePart();
  // The night from one day to the next belongs to one contest.
  constexpr std::int64_t kDay = 24 * 60 * 60;
  if (base::Val(Giorno.Text()) == when.Later(kDay).Day()) when = when.Later(kDay);
  if (const auto time = base::ParseTime(Qtr.Text())) when = when + time->TimePart();
  return core::OtherOnDay(session_, call, core::LogTimes(session_).ToUtc(when),
                          core::ResolvePrefix(session_, call).Country);
}

void ContestNewQso::OnCallLeave() {
  // What was told of another call goes; what was stored last stays to be read.
  const std::string other = OtherOnItsDay();
  if (!other.empty() || otherOnDay_) Avviso.SetText(other);
  otherOnDay_ = !other.empty();
  const auto serial = DuplicateSerial(session_, contest_, CallQso.Text(), ProgrD.Text());
  if (!serial) return;
  if (!session_.Messages().AskYesNo("Qso doppio (" + *serial + ")", "Confermi call ?")) {
    CallQso.SetText("");
  }
}

void ContestNewQso::OnLocatorLeave() {
  const std::string& locator = Locator.Text();
  Qrb.SetText(geo::IsValidLocator(locator) ? std::to_string(geo::QrbKm(contest_.Locator, locator))
                                           : "0");
}

std::optional<ContestNewQso::Refusal> ContestNewQso::FindRefusal() {
  const Refusal required[] = {{"Giorno obbligatorio", &Giorno}, {"Qtr obbligatorio", &Qtr},
                              {"Call obbligatorio", &CallQso},  {"Rapporti obbligatori", &QrkD},
                              {"Rapporti obbligatori", &QrkR},  {"Rapporti obbligatori", &ProgrD},
                              {"Rapporti obbligatori", &ProgrR}};
  for (const Refusal& each : required) {
    if (core::IsEmptyField(each.field->Text())) return each;
  }
  if (!geo::IsValidLocator(Locator.Text())) return Refusal{"Locator errato", &Locator};
  return std::nullopt;
}

void ContestNewQso::InsertQso() {
  if (const auto refusal = FindRefusal()) {
    session_.Messages().Show(platform::MessageIcon::kCritical, "", refusal->text);
    Avviso.SetText(fmt::format("Qso non inserito: {}", refusal->text));
    return;
  }
  const core::TypedContestQso typed = Typed();
  // The station's own locator, not the contest's, makes the distance that counts.
  const WorkedOutQso made = WorkOut(session_, contest_, typed);
  Qrb.SetText(made.Qrb);
  struct Storing {
    explicit Storing(bool& state) : flag(state) { flag = true; }
    ~Storing() { flag = false; }
    bool& flag;
  };
  std::optional<Storing> storing(storing_);
  StoreQso(session_, contest_, *Data1->Rows(), Operation.Text() == "I", typed, made);
  storing.reset();
  Data1->Refresh();
  Avviso.SetText(fmt::format("Qso {}: {}", Operation.Text() == "I" ? "inserito" : "aggiornato",
                             core::Joined({ProgrD.Text(), CallQso.Text(), Locator.Text(),
                                           Qrb.Text() + " km", made.Punti == 0 ? "doppio" : ""})));
  otherOnDay_ = false;
  if (OnStored) OnStored();
}

core::TypedContestQso ContestNewQso::Typed() const {
  return {Giorno.Text(), Qtr.Text(),    CallQso.Text(), QrkD.Text(), ProgrD.Text(),
          QrkR.Text(),   ProgrR.Text(), Locator.Text(), Modo.Text(), Exc.Text(),
          Note.Text(),   Qsl.IsOn(),    InLog.IsOn()};
}

}  // namespace brenvo::contest
