#include "contest/insert_qso.h"

#include <fmt/format.h>

#include "base/number.h"
#include "base/text.h"
#include "contact.h"
#include "core/writing.h"
#include "geo/locator.h"

namespace brenvo::contest {

std::optional<std::string> DuplicateSerial(core::Session& session,
                                           const core::ContestContext& contest,
                                           std::string_view call, std::string_view serial) {
  const auto rows = session.Db.OpenSnapshot(
      fmt::format("Select ProgrDato FROM [Contest Qso]{} AND Call='{}' AND ProgrDato<>{}",
                  OfContest(contest.DataContest, contest.Banda), base::Trim(call), serial));
  if (rows->EOF_()) return std::nullopt;
  return base::Trim(rows->Field(0).Text());
}

WorkedOutQso WorkOut(core::Session& session, const core::ContestContext& contest,
                     const core::TypedContestQso& typed) {
  WorkedOutQso made;
  made.Qrb = std::to_string(geo::QrbKm(session.Station.MyLocator, typed.Locator));
  made.Punti = base::Val(made.Qrb);
  made.Note = typed.Note;
  if (const auto serial = DuplicateSerial(session, contest, typed.Call, typed.ProgrDato)) {
    made.Punti = 0;
    made.Note = MarkDuplicate(made.Note, *serial);
  }
  if (const std::string exchange = base::Trim(typed.Exc); !exchange.empty()) {
    made.Note = MarkExchange(made.Note, exchange);
  }
  return made;
}

void StoreQso(core::Session& session, const core::ContestContext& contest,
              engine::EditableRecordset& rows, bool isNew, const core::TypedContestQso& typed,
              const WorkedOutQso& made, const core::ContactDoor::Beside& beside) {
  const auto qtr = base::ParseTime(typed.Qtr);
  if (!qtr)
    throw engine::DatabaseError(engine::DatabaseError::kConversion, "Ora non valida: " + typed.Qtr);
  const auto fill = [&](engine::EditableRecordset& row) {
    row.Set("DataContest",
            base::ParseDate(contest.DataContest).value_or(base::DateTime()).DatePart());
    row.Set("Banda", contest.Banda);
    core::SetNumber(row, "ProgrDato", typed.ProgrDato);
    row.Set("Qtr", *qtr);
    row.Set("Call", typed.Call);
    core::SetNumber(row, "Giorno", typed.Giorno);
    core::SetNumber(row, "QrkDato", typed.QrkDato);
    core::SetNumber(row, "QrkRicevuto", typed.QrkRicevuto);
    core::SetNumber(row, "ProgrRicevuto", typed.ProgrRicevuto);
    row.Set("Locator", typed.Locator);
    row.Set("Modo", typed.Modo);
    row.Set("Note", made.Note);
    core::SetNumber(row, "Qrb", made.Qrb);
    row.Set("Punti", made.Punti);
    row.Set("Qsl", typed.Qsl);
    row.Set("InLog", typed.InLog);
  };
  constexpr auto kTable = core::ContactTable::kContestQso;
  if (isNew) {
    session.Contacts.Add(kTable, rows, fill, beside);
  } else {
    session.Contacts.Change(kTable, rows, fill);
  }
}

void PutQso(core::Session& session, const core::ContestContext& contest,
            std::optional<std::int64_t> replaced, const core::TypedContestQso& typed,
            const core::ContactDoor::Beside& beside) {
  const WorkedOutQso made = WorkOut(session, contest, typed);
  if (!replaced) {
    const auto rows = session.Db.OpenTable("Contest Qso");
    StoreQso(session, contest, *rows, true, typed, made, beside);
    return;
  }
  const auto rows =
      session.Db.OpenDynaset(fmt::format("Select * FROM [Contest Qso]{} AND ProgrDato={}",
                                         OfContest(contest.DataContest, contest.Banda), *replaced));
  if (rows->EOF_()) {
    throw engine::DatabaseError(engine::DatabaseError::kNoCurrentRecord, "Il qso non c'è più");
  }
  StoreQso(session, contest, *rows, false, typed, made);
}

}  // namespace brenvo::contest
