#include "transfer.h"

#include <fmt/format.h>

#include <string>

#include "base/number.h"
#include "base/text.h"
#include "contact.h"
#include "core/history.h"
#include "core/log_contact.h"
#include "core/prefix.h"
#include "core/session.h"
#include "core/texts.h"
#include "core/transaction.h"

namespace brenvo::contest {
namespace {

constexpr std::size_t kReportWidth = 3;
constexpr std::string_view kMode = "SSB";  // whatever the mode of the contact was

std::string MarkedOf(std::string_view date, std::string_view band) {
  return OfContest(date, band) + " AND InLog";
}

// Report and serial in six characters: "59 012".
std::string ReportAndSerial(engine::Recordset& row, std::string_view report,
                            std::string_view serial) {
  return base::PadRight(core::FieldText(row, report), kReportWidth) +
         base::Left(base::FormatNumber(row.Field(serial).Number(), "000"), kReportWidth);
}

base::DateTime DateInContest(engine::Recordset& row, base::DateTime contest) {
  const std::string text =
      fmt::format("{}-{}-{}", core::FieldText(row, "Giorno"), contest.Month(), contest.Year());
  const auto date = base::ParseDate(text);
  if (!date)
    throw engine::DatabaseError(engine::DatabaseError::kConversion, "Data non valida: " + text);
  return *date + row.Field("Qtr").Date().TimePart();
}

void TransferContact(core::Session& session, engine::Recordset& row, base::DateTime date,
                     engine::Table& contest) {
  namespace column = core::column;
  engine::Table& log = *session.Tables.TbLog;
  log.Seek("=", {core::FieldText(row, column::kCall)});
  const bool known = !log.NoMatch();
  constexpr std::string_view kOperator[] = {column::kQra, column::kQth, column::kProvincia};
  std::string kept[std::size(kOperator)];
  for (std::size_t i = 0; known && i < std::size(kOperator); ++i) {
    kept[i] = core::FieldText(log, kOperator[i]);
  }
  const core::ResolvedPrefix resolved =
      core::ResolvePrefix(session, core::FieldText(row, column::kCall));

  session.Contacts.Add(core::ContactTable::kLog, log, [&](engine::EditableRecordset& contact) {
    contact.Set(column::kCall, row.Field(column::kCall));
    contact.Set(column::kDataQso, DateInContest(row, date));
    for (std::size_t i = 0; known && i < std::size(kOperator); ++i) {
      contact.Set(kOperator[i], kept[i]);
    }
    contact.Set(column::kCountry, resolved.Country);
    if (!resolved.Prefisso.empty()) {
      contact.Set(column::kPrefisso, resolved.Prefisso);
      contact.Set(column::kZonaCQ, resolved.ZonaCQ);
      contact.Set(column::kZonaITU, resolved.ZonaITU);
      contact.Set(column::kContinente, resolved.Continente);
    }
    contact.Set(column::kQrb, row.Field(column::kQrb));
    for (const std::string_view each : {column::kLocator, column::kBanda, column::kNote}) {
      contact.Set(each, core::FieldText(row, each));
    }
    for (const std::string_view each : {column::kFrequenza, column::kPotenza}) {
      contact.Set(each, contest.Field(each));
    }
    contact.Set(column::kModo, kMode);
    contact.Set(column::kQrkDato, ReportAndSerial(row, "QrkDato", "ProgrDato"));
    contact.Set(column::kQrkRicevuto, ReportAndSerial(row, "QrkRicevuto", "ProgrRicevuto"));
    contact.Set(column::kQslDaInviare, row.Field("Qsl"));
  });
}

}  // namespace

bool HasContactsForLog(core::Session& session, std::string_view date, std::string_view band) {
  const auto rows = session.Db.OpenSnapshot("Select * FROM [Contest Qso]" + MarkedOf(date, band));
  return !rows->EOF_();
}

void TransferToLog(core::Session& session, std::string_view date, std::string_view band) {
  const forms::BusyPointer busy(session.Host());
  const base::DateTime day = base::ParseDate(date).value_or(base::DateTime());
  engine::Table& contest = *session.Tables.TbContest;
  contest.Seek("=", {day, band});
  if (contest.NoMatch()) {
    throw engine::DatabaseError(engine::DatabaseError::kNoCurrentRecord,
                                "Il contest dei qso non esiste più");
  }
  const auto rows = session.Db.OpenSnapshot("Select * FROM [Contest Qso]" + MarkedOf(date, band));
  session.Tables.TbLog->SetIndex("Call");
  const auto transfer = [&] {
    core::Transaction transaction(session);
    for (; !rows->EOF_(); rows->MoveNext()) TransferContact(session, *rows, day, contest);
    rows->Close();
    session.Contacts.Past().KeepContestQsos(MarkedOf(date, band));
    session.Db.Execute("UPDATE [Contest Qso] Set InLog=False,Qsl=False" + MarkedOf(date, band));
    transaction.Commit();
    return true;
  };
  session.Contacts.ChangeMany(
      "Contest nel log", {core::ContactTable::kLog, core::ContactTable::kContestQso}, transfer);
}

}  // namespace brenvo::contest
