// What saves keys in a new contact, each part of it a choice of the operator's.
#include <fmt/format.h>

#include <algorithm>

#include "base/match.h"
#include "base/number.h"
#include "base/text.h"
#include "core/entry.h"
#include "core/lists.h"
#include "core/log_time.h"
#include "core/preferences.h"
#include "core/station_profile.h"
#include "geo/locator.h"
#include "log/log_form.h"

namespace brenvo::log {
namespace {

// From this frequency up a contact is worth its locator.
constexpr double kLocatorsFrom = 50;  // MHz

}  // namespace

void LogForm::FollowChoices() {
  namespace choice = core::choice;
  const core::Preferences& choices = session_.Choices;
  chosen_ = {choices.Get<choice::kKeepsLink>(), choices.Get<choice::kReportsByMode>(),
             choices.Get<choice::kStatusByBand>(), choices.Get<choice::kTimesOfQso>(),
             choices.Get<choice::kRigInLog>()};
  DefaultCommand = choices.Get<choice::kEnterStores>() ? &cmInvio : nullptr;
}

void LogForm::TakeTimeOfStart() {
  if (!chosen_.timesOfQso || !timeOfStart_.empty() || !IsNew() || CallQso.Text().empty()) return;
  DataQso.SetText(base::DateText(core::ProposedTime(session_)));
  SetTime();
  timeOfStart_ = DataQso.Text() + Qtr.Text();
}

// A contact whose time was typed is an old one that is being copied: when it ended nobody knows.
void LogForm::KeepTimeOfEnd(std::int64_t qsoNr) {
  if (timeOfStart_.empty() || timeOfStart_ != DataQso.Text() + Qtr.Text()) return;
  // By the clock that gave the start.
  const base::DateTime end = core::LogTimes(session_).ToUtc(core::ProposedTime(session_));
  const auto kept = session_.Db.OpenAppender("LogAdif");
  kept->Append(
      {qsoNr, "QSO_DATE_OFF", fmt::format("{:04}{:02}{:02}", end.Year(), end.Month(), end.Day())});
  kept->Append(
      {qsoNr, "TIME_OFF", fmt::format("{:02}{:02}{:02}", end.Hour(), end.Minute(), end.Second())});
}

std::string LogForm::TextsOfRecord() const {
  std::string texts;
  for (const FieldOfColumn& each : record_) {
    texts += std::visit(
        base::Match{[](const forms::CheckBox* box) { return std::string(box->IsOn() ? "Y" : "N"); },
                    [](const auto* field) { return field->Text(); }},
        each.field);
    texts += '\n';
  }
  return texts;
}

// As if the operator had chosen the band: its reports and its power come along.
void LogForm::FollowRig() {
  const auto& rig = session_.Rig.Now();
  if (!chosen_.followsRig || !rig || !IsNew() || TextsOfRecord() != untouched_) return;
  core::SelectListEntry(Banda, rig->banda, std::max<std::size_t>(5, base::Len(rig->banda)));
  Frequenza.SetText(base::FormatNumber(base::ToMhz(rig->frequency).Value(), "####0.000###"));
  if (!rig->modo.empty()) {
    core::SelectListEntry(Modo, rig->modo, std::max<std::size_t>(20, base::Len(rig->modo)));
  }
  untouched_ = TextsOfRecord();
}

void LogForm::TuneRig() {
  const double mhz = base::Val(Frequenza.Text());
  Avviso.SetText(mhz > 0 ? session_.Rig.Tune(base::ToHz(base::Mhz(mhz)), Modo.Text())
                         : "Manca la frequenza per l'rtx");
}

void LogForm::PutUsualReports() {
  if (!IsNew() || !chosen_.reportsByMode) return;
  const std::string report =
      core::UsualReport(Modo.Text(), core::FindBandProfile(session_, Banda.Text()));
  QrkDato.SetText(report);
  QrkRicevuto.SetText(report);
}

forms::TextField* LogForm::NextMissing() {
  const bool wantsLocator = base::Val(Frequenza.Text()) >= kLocatorsFrom;
  const auto isMissing = [&](const forms::TextField* field) {
    if (field == &Qtr) return !HasTime();
    if (field == &Locator) return wantsLocator && !geo::IsValidLocator(Locator.Text());
    return core::IsEmptyField(field->Text());
  };
  forms::TextField* const wanted[] = {&CallQso, &DataQso, &Qtr,         &Banda,
                                      &Modo,    &QrkDato, &QrkRicevuto, &Locator};
  for (forms::TextField* field : wanted) {
    if (isMissing(field) && std::ranges::find(skipped_, field) == skipped_.end()) return field;
  }
  return nullptr;
}

void LogForm::EnterPressed() {
  if (!IsNew()) {
    Avviso.SetText("Invio registra un Qso nuovo: F5 lo comincia");
    return;
  }
  OnCallLeave();
  forms::TextField* missing = NextMissing();
  const bool mayStay = missing != &CallQso && missing != &DataQso && missing != &Qtr;
  if (missing != nullptr && missing == asked_ && mayStay) {
    skipped_.push_back(missing);
    missing = NextMissing();
  }
  asked_ = missing;
  if (missing != nullptr) {
    Avviso.SetText("Manca: " + missing->Caption());
    Host().MoveFocus(*missing);
    return;
  }
  if (!TryInsert()) return;
  ClearQso();
  Host().MoveFocus(CallQso);
}

}  // namespace brenvo::log
