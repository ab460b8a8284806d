// What the log tells and fills in while a contact is typed.
#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "core/call_forms.h"
#include "core/country_map.h"
#include "core/lists.h"
#include "core/log_contact.h"
#include "core/log_time.h"
#include "core/place_on_day.h"
#include "core/places.h"
#include "core/prefix.h"
#include "core/station_notes.h"
#include "core/station_profile.h"
#include "core/texts.h"
#include "geo/locator.h"
#include "log/log_form.h"

namespace brenvo::log {
namespace {

constexpr int kFirstStatus = 2;  // of the panels with status words

// Wider than any mode, so that whole names are compared.
constexpr std::size_t kModeWidth = 20;

bool FindsARow(core::Session& session, std::string_view select) {
  return !session.Db.OpenSnapshot(select)->EOF_();
}

}  // namespace

// Before the first contact there is no number to leave out: 0 stands for it.
std::string LogForm::ExcludedQsoNr() const { return base::Str(base::Val(QsoNr.Text())); }

void LogForm::ShowStatus(int number, std::string_view condition, std::string_view subject) {
  const std::string base = fmt::format("select Call from Log where {}", condition);
  const std::string onBand = fmt::format("Banda='{}' and QsoNr<>{}", Banda.Text(), ExcludedQsoNr());
  forms::Weight weight = forms::Weight::kNew;
  if (FindsARow(session_, fmt::format("{} and QslRicevuta=true and {}", base, onBand))) {
    weight = forms::Weight::kConfirmed;
    StatusBar1.SetPanel(number, fmt::format("{} Conf", subject));
  } else if (FindsARow(session_, fmt::format("{} and {}", base, onBand))) {
    weight = forms::Weight::kWorked;
    StatusBar1.SetPanel(number, fmt::format("{} Worked", subject));
  } else {
    StatusBar1.SetPanel(number, fmt::format("New {}", subject));
  }
  Told& told = told_[static_cast<std::size_t>(number - kFirstStatus)];
  // While a call is typed the words are mostly those of the keystroke before.
  const std::string& banda = Banda.Text();
  if (told.weight == weight && told.banda == banda && told.shownOn == banda) return;
  told.weight = weight;
  told.banda = banda;
  MarkStatus(number);
}

void LogForm::MarkStatus(int number) {
  Told& told = told_[static_cast<std::size_t>(number - kFirstStatus)];
  if (StatusBar1.Panel(number).empty()) {
    told = {};
    StatusBar1.SetMark(number, {});
    return;
  }
  told.shownOn = Banda.Text();
  const std::string theirs = base::Trim(told.banda), chosen = base::Trim(Banda.Text());
  std::string tip;
  if (theirs.empty()) {
    tip = "Nessuna banda scelta: vale per i Qso senza banda";
  } else if (theirs != chosen) {
    tip = fmt::format("Vale per {}, non per {}", theirs,
                      chosen.empty() ? "un Qso senza banda" : chosen);
  } else {
    tip = "Vale per " + theirs;
  }
  StatusBar1.SetMark(number, {told.weight, theirs.empty() || theirs != chosen, std::move(tip)});
}

void LogForm::TellCall() {
  ShowStatus(2, fmt::format("Call='{}'", base::Trim(CallQso.Text())), "Call");
}

void LogForm::TellCountry() {
  ShowStatus(3, fmt::format("Country='{}'", base::Trim(base::Left(Country.Text(), 5))), "Country");
}

void LogForm::TellSquare() {
  ShowStatus(4, fmt::format("Locator like '{}*'", base::Trim(base::Left(Locator.Text(), 4))),
             "Square");
}

void LogForm::RenewStatus() {
  if (!StatusBar1.Panel(2).empty()) TellCall();
  if (!StatusBar1.Panel(3).empty()) TellCountry();
  if (!StatusBar1.Panel(4).empty()) TellSquare();
}

void LogForm::OnCallChange() {
  const std::string call = base::Trim(CallQso.Text());
  TakeTimeOfStart();
  session_.CallTyped({call, Locator.Text()});
  TellCall();
  if (!session_.Station.ManagerPath.empty()) {
    const auto date = base::ParseDate(DataQso.Text());
    if (!date) throw std::runtime_error("Data errata");
    const auto manager = session_.Db.OpenSnapshot(
        fmt::format("select mgr from qmgr where call='{0}' and active=(select max(active) from "
                    "qmgr where call='{0}' and active<={1})",
                    call, base::Str(date->Year())));
    Manager.SetText(manager->EOF_() ? std::string() : core::FieldText(*manager, "mgr"));
  }
  if (cmWorked.Down()) {
    for (core::MatrixWindow* matrix : {session_.Opened.Hrd, session_.Opened.HrdMode}) {
      if (matrix == nullptr) continue;
      matrix->CallQso.SetText(call);
      matrix->Search();
    }
  }
  if (session_.Opened.OldQsoForm != nullptr) {
    session_.Opened.OldQsoForm->SetRecordSource(
        fmt::format("SELECT * FROM Log where Call='{}' ORDER By DataQso DESC,QsoNr", call));
  }
}

void LogForm::OnCallLeave() {
  if (CallQso.Text() == PrevCall) return;
  engine::Table& log = *session_.Tables.TbLog;
  log.SetIndex("Call");
  log.Seek("=", {CallQso.Text()});
  if (!log.NoMatch()) {
    Qra.SetText(core::FieldText(log, core::column::kQra));
    Qth.SetText(core::FieldText(log, core::column::kQth));
    const std::string locator = core::FieldText(log, core::column::kLocator);
    const std::string qrb = base::PlainNumber(base::Val(log.Field("Qrb").Text()));
    PrevLocator = locator;
    Locator.SetText(locator);
    Qrb.SetText(qrb);
  }
  // Prefix data always come from the table, never from an old contact.
  for (forms::TextField* field :
       {static_cast<forms::TextField*>(&Country), &Prefisso, &ZonaCQ, &ZonaITU, &Continente}) {
    field->SetText("");
  }
  const core::ResolvedPrefix resolved = core::ResolvePrefix(session_, CallQso.Text());
  if (!resolved.Prefisso.empty()) {
    Prefisso.SetText(base::PadRight(resolved.Prefisso, 5));
    ZonaCQ.SetText(resolved.ZonaCQ.Text());
    ZonaITU.SetText(resolved.ZonaITU.Text());
    Continente.SetText(resolved.Continente.Text());
    const std::string country = core::FindCountryText(session_, resolved.Country);
    if (!country.empty()) Country.SetText(country);
    if (Country.Text() != PrevCountry) {
      Provincia.SetText("");
      PrevCountry = Country.Text();
    }
  }
  PrevCall = CallQso.Text();
  toldOfCall_ = WhatIsToldOfCall();
  if (!toldOfCall_.empty()) Avviso.SetText(toldOfCall_);
}

void LogForm::OnRulesChange() {
  // What was told since stays to be read.
  if (CallQso.Text() != PrevCall || Avviso.Text() != toldOfCall_) return;
  toldOfCall_ = WhatIsToldOfCall();
  Avviso.SetText(toldOfCall_);
}

std::string LogForm::WhatIsToldOfCall() {
  std::string told = OtherOnItsDay();
  if (const std::string note = core::StationNote(session_.Db, CallQso.Text()); !note.empty()) {
    told += fmt::format("{}Nota su {}: {}", told.empty() ? "" : ". ",
                        core::BaseCall(CallQso.Text()), note);
  }
  return told;
}

std::string LogForm::OtherOnItsDay() {
  const auto date = base::ParseDate(DataQso.Text()), time = base::ParseTime(Qtr.Text());
  const std::string call = base::Trim(CallQso.Text());
  if (call.empty() || !date) return {};
  base::DateTime when = date->DatePart();
  if (time) when = when + time->TimePart();
  return core::OtherOnDay(session_, call, core::LogTimes(session_).ToUtc(when),
                          base::Left(Country.Text(), 5));
}

void LogForm::OnLocatorChange() {
  const std::string locator = Locator.Text();
  if (!geo::IsValidLocator(locator)) {
    Qrb.SetText("0");
    StatusBar1.SetPanel(4, "");
    MarkStatus(4);
    return;
  }
  if (locator != PrevLocator) {
    Qrb.SetText(std::to_string(geo::QrbKm(session_.Station.MyLocator, locator)));
    PrevLocator = locator;
  }
  session_.CallTyped({base::Trim(CallQso.Text()), locator});
  TellSquare();
  if (cmWorked.Down()) {
    for (core::MatrixWindow* matrix : {session_.Opened.Hrd, session_.Opened.HrdMode}) {
      if (matrix == nullptr) continue;
      matrix->Locator.SetText(base::Trim(locator));
      matrix->Search();
    }
  }
  if (session_.Opened.OldQsoLocator != nullptr) {
    session_.Opened.OldQsoLocator->SetRecordSource(fmt::format(
        "SELECT * FROM Log where Locator like '{}*' and Banda='{}' ORDER By DataQso DESC,QsoNr",
        base::Left(locator, 4), Banda.Text()));
  }
}

void LogForm::OnCountryChange() {
  const std::string code = base::Left(Country.Text(), 5);
  core::LoadProvinceChoices(session_, Provincia, code);
  Provincia.SetText("");
  TellCountry();
}

void LogForm::OnCountryLeave() {
  Country.SetText(core::FindCountryText(session_, base::Left(Country.Text(), 5)));
  if (Country.Text() == PrevCountry) return;
  Provincia.SetText("");
  PrevCountry = Country.Text();
}

void LogForm::OnProvinciaLeave() {
  Provincia.SetText(core::FindProvinceText(session_, base::Left(Country.Text(), 5),
                                           base::Left(Provincia.Text(), 3)));
}

void LogForm::OnPrefissoPick() {
  auto* table = static_cast<core::PrefixPicker*>(session_.Windows.LoadNew("TabellaPrefissi"));
  if (table == nullptr) return;
  table->Tag = core::PrefixPicker::kPick;
  session_.Windows.ShowModal(*table);
  const std::optional<core::PrefixChoice> chosen = table->Chosen;
  if (!chosen) return;
  Prefisso.SetText(base::PadRight(chosen->Prefisso, 5));
  ZonaCQ.SetText(chosen->ZonaCQ);
  ZonaITU.SetText(chosen->ZonaITU);
  Continente.SetText(chosen->Continente);
  engine::Table& prefissi = *session_.Tables.TbPrefissi;
  prefissi.Seek(">=", {Prefisso.Text(), base::Val(ZonaCQ.Text()), base::Val(ZonaITU.Text()),
                       Continente.Text()});
  if (prefissi.NoMatch() ||
      base::Trim(core::FieldText(prefissi, "Prefisso")) != base::Trim(Prefisso.Text()))
    return;
  Country.SetText(chosen->Country);
  OnCountryLeave();
}

void LogForm::OnNotePick() { core::AppendPickedNote(session_, Note); }

void LogForm::OnBandaChange() {
  if (chosen_.statusByBand) {
    RenewStatus();
  } else {
    for (const int number : {2, 3, 4}) MarkStatus(number);
  }
  if (Banda.Text() == PrevBanda) return;
  if (const auto profile = core::FindBandProfile(session_, Banda.Text())) {
    Frequenza.SetText(base::Str(base::Val(profile->Frequenza.Text())));
    QrkDato.SetText(profile->RST);
    Potenza.SetText(base::Str(base::Val(profile->Potenza.Text())));
    core::SelectListEntry(Modo, profile->Modo, std::max(kModeWidth, base::Len(profile->Modo)));
  }
  PrevBanda = Banda.Text();
}

void LogForm::WorkedPressed() {
  const bool down = cmWorked.Down();
  session_.SaveSetting("Log", "LookupWorked", down ? "Y" : "N");
  if (!down) return;
  for (core::MatrixWindow* matrix : {session_.Opened.Hrd, session_.Opened.HrdMode}) {
    if (matrix == nullptr) continue;
    matrix->CallQso.SetText(base::Trim(CallQso.Text()));
    matrix->Locator.SetText(base::Trim(Locator.Text()));
    matrix->Search();
  }
}

void LogForm::MappaPressed() {
  const bool down = cmMappa.Down();
  session_.SaveSetting("Log", "DisplayMappa", down ? "Y" : "N");
  if (down) core::ShowCountryMap(session_, Country.Text());
}

}  // namespace brenvo::log
