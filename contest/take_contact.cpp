#include "contest/take_contact.h"

#include <fmt/format.h>

#include "base/text.h"
#include "contact.h"
#include "contest/contest_new_qso.h"
#include "contest/contest_qso.h"
#include "core/quoted.h"
#include "core/writing.h"
#include "geo/locator.h"

namespace brenvo::contest {
namespace {

// A contest that begins in the evening goes on into the next day.
constexpr std::int64_t kLongest = 2 * 24 * 60 * 60;

}  // namespace

// Somebody who tells of it once more may not know the serials.
bool ContestQso::HasAtItsTime(const core::ToldContact& told, const std::string& where) {
  constexpr std::int64_t kMinute = 60;
  const auto rows = session_.Db.OpenSnapshot(
      fmt::format("Select Qtr FROM [Contest Qso]{} AND Call={} AND Giorno={}", where,
                  core::Quoted(told.call), told.time.Day()));
  for (; !rows->EOF_(); rows->MoveNext()) {
    const base::DateTime qtr = rows->Field(std::size_t{0}).Date();
    const std::int64_t apart =
        told.time.TimePart().Seconds() / kMinute - qtr.TimePart().Seconds() / kMinute;
    if (apart >= -1 && apart <= 1) return true;
  }
  return false;
}

bool ContestQso::Take(const core::ToldContact& told) {
  const auto day = base::ParseDate(contest_.DataContest);
  const bool isOfBand =
      base::SameText(base::Trim(contest_.Banda), base::Trim(told.banda)) && Data1.Rows() != nullptr;
  if (!day || !isOfBand || told.time < day->DatePart() ||
      told.time >= day->DatePart().Later(kLongest)) {
    return false;
  }
  const std::string where = OfContest(contest_.DataContest, contest_.Banda);
  if (told.serialSent <= 0 || told.serialReceived <= 0) return HasAtItsTime(told, where);
  if (!geo::IsValidLocator(told.locator)) return false;
  const auto same = session_.Db.OpenSnapshot(
      fmt::format("Select Call FROM [Contest Qso]{} AND ProgrDato={}", where, told.serialSent));
  if (!same->EOF_()) {
    return base::SameText(base::Trim(same->Field(std::size_t{0}).Text()), told.call);
  }
  const auto worked = session_.Db.OpenSnapshot(fmt::format(
      "Select ProgrDato FROM [Contest Qso]{} AND Call={}", where, core::Quoted(told.call)));
  const double distance = geo::QrbKm(session_.Station.MyLocator, told.locator);
  const bool isDouble = !worked->EOF_();
  // Rows of its own: whoever changes a row in the entry has the log's standing on it.
  const auto rows = session_.Db.OpenTable("Contest Qso");
  session_.Contacts.Add(
      core::ContactTable::kContestQso, *rows, [&](engine::EditableRecordset& row) {
        row.Set("DataContest", day->DatePart());
        row.Set("Banda", contest_.Banda);
        row.Set("ProgrDato", told.serialSent);
        row.Set("Qtr", base::DateTime::FromSeconds(told.time.TimePart().Seconds() / 60 * 60));
        row.Set("Call", told.call);
        row.Set("Giorno", static_cast<std::int64_t>(told.time.Day()));
        core::SetNumber(row, "QrkDato", told.reportSent);
        core::SetNumber(row, "QrkRicevuto", told.reportReceived);
        row.Set("ProgrRicevuto", told.serialReceived);
        row.Set("Locator", told.locator);
        row.Set("Modo", told.modo);
        row.Set("Note", isDouble
                            ? MarkDuplicate("", base::Trim(worked->Field(std::size_t{0}).Text()))
                            : std::string());
        row.Set("Qrb", distance);
        row.Set("Punti", isDouble ? 0 : distance);
        row.Set("Qsl", false);
        row.Set("InLog", false);
      });
  const auto* const entry =
      static_cast<const ContestNewQso*>(session_.Windows.Find("ContestNewQso"));
  if (entry != nullptr && entry->Data1 == &Data1) {
    Data1.Renew(QC);
    return true;
  }
  Data1.Refresh();
  QC.ContentChanged();
  ShowLastRow();
  return true;
}

bool TakeContact(core::Session& session, const core::ToldContact& told) {
  const std::vector<forms::Window*> open = session.Windows.Loaded();
  for (forms::Window* window : open) {
    auto* const log = dynamic_cast<ContestQso*>(window);
    if (log != nullptr && log->Take(told)) return true;
  }
  return false;
}

}  // namespace brenvo::contest
