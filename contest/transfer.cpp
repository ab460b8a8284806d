#include "transfer.h"

#include <fmt/format.h>

#include <string>

#include "base/number.h"
#include "base/text.h"
#include "contact.h"
#include "core/modules.h"
#include "core/prefix.h"
#include "core/session.h"
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

void CopyZones(engine::Table& log, engine::Table& prefissi, std::string_view prefix) {
  if (!core::SeekPrefix(prefissi, prefix)) return;
  for (const char* column : {"Zona CQ", "Zona ITU", "Continente"}) {
    log.Set(column, prefissi.Field(column));
  }
}

void TransferContact(core::Session& session, engine::Recordset& row, base::DateTime date,
                     engine::Table& contest) {
  engine::Table& log = *session.Tables.TbLog;
  log.Seek("=", {core::FieldText(row, "Call")});
  const bool known = !log.NoMatch();
  constexpr const char* kOperator[] = {"Qra", "Qth", "Provincia"};
  std::string kept[std::size(kOperator)];
  for (std::size_t i = 0; known && i < std::size(kOperator); ++i) {
    kept[i] = core::FieldText(log, kOperator[i]);
  }
  const core::ResolvedPrefix resolved = core::ResolvePrefix(session, core::FieldText(row, "Call"));

  log.AddNew();
  log.Set("Call", row.Field("Call"));
  log.Set("DataQso", DateInContest(row, date));
  for (std::size_t i = 0; known && i < std::size(kOperator); ++i) log.Set(kOperator[i], kept[i]);
  log.Set("Country", resolved.Country);
  if (!resolved.Prefisso.empty()) {
    log.Set("Prefisso", resolved.Prefisso);
    CopyZones(log, *session.Tables.TbPrefissi, resolved.Prefisso);
  }
  log.Set("Qrb", row.Field("Qrb"));
  for (const char* column : {"Locator", "Banda", "Note"})
    log.Set(column, core::FieldText(row, column));
  for (const char* column : {"Frequenza", "Potenza"}) log.Set(column, contest.Field(column));
  log.Set("Modo", kMode);
  log.Set("QrkDato", ReportAndSerial(row, "QrkDato", "ProgrDato"));
  log.Set("QrkRicevuto", ReportAndSerial(row, "QrkRicevuto", "ProgrRicevuto"));
  log.Set("QslDaInviare", row.Field("Qsl"));
  log.Update();
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
                                "Il contest dei qso non esiste piu'");
  }
  const auto rows = session.Db.OpenSnapshot("Select * FROM [Contest Qso]" + MarkedOf(date, band));
  session.Tables.TbLog->SetIndex("Call");
  core::Transaction transaction(session.Db);
  for (; !rows->EOF_(); rows->MoveNext()) TransferContact(session, *rows, day, contest);
  rows->Close();
  session.Db.Execute("UPDATE [Contest Qso] Set InLog=False,Qsl=False" + MarkedOf(date, band));
  transaction.Commit();
  session.Changes.AnnounceMany(core::ContactTable::kLog);
  session.Changes.AnnounceMany(core::ContactTable::kContestQso);
}

}  // namespace brenvo::contest
