#include "upkeep/schema_steps.h"

#include <fmt/format.h>

#include "core/contact_origin.h"
#include "core/files.h"
#include "file/database_file.h"
#include "file/file_check.h"
#include "upkeep/backup.h"

namespace brenvo::upkeep {
namespace {

constexpr std::string_view kDatabase = "\\Brenvo.mdb";

// What log files say of a contact beyond the columns of Log, by the standard's field names. Older
// deliveries have brought it without a number.
constexpr std::string_view kKeptFields = R"(
CREATE TABLE IF NOT EXISTS "LogAdif" (
  "QsoNr" INTEGER,
  "Campo" TEXT,
  "Valore" TEXT
);
CREATE UNIQUE INDEX IF NOT EXISTS "LogAdif.PrimaryKey" ON "LogAdif" (
  "QsoNr",
  rtrim("Campo") COLLATE NOCASE
);
)";

// Valori: single values of the log. Stazioni: the stations that contacts were made from.
// LogOrigine: a contact's own name, and its station.
constexpr std::string_view kOrigin = R"(
CREATE TABLE "Valori" (
  "Nome" TEXT,
  "Valore" TEXT
);
CREATE UNIQUE INDEX "Valori.PrimaryKey" ON "Valori" (
  rtrim("Nome") COLLATE NOCASE
);
CREATE TABLE "Stazioni" (
  "Stazione" INTEGER PRIMARY KEY AUTOINCREMENT,
  "Nome" TEXT,
  "Tipo" TEXT,
  "Call" TEXT,
  "Operatore" TEXT,
  "Locator" TEXT,
  "Provincia" TEXT,
  "Country" TEXT,
  "Altezza" INTEGER,
  "RTX" TEXT,
  "Antenna" TEXT,
  "Dal" DATETIME,
  "Al" DATETIME
);
CREATE TABLE "LogOrigine" (
  "QsoNr" INTEGER PRIMARY KEY,
  "Uuid" TEXT,
  "Stazione" INTEGER
);
CREATE INDEX "LogOrigine.Uuid" ON "LogOrigine" (
  rtrim("Uuid") COLLATE NOCASE
);
)";

// Storia: a row a work. What a work found is in the others: the numbers from Dal to Al, and the
// runs of StoriaNuovi, are contacts that it brought into Log, a run of one number each where they
// came back; StoriaLog has the contacts as they were; StoriaCampi what stood beside them;
// StoriaContestQso and StoriaContest rows of the contests as they were, or by their key alone where
// the work brought them. What a work finds of one contact is kept once. StoriaScelta is a staging
// table: the contacts that are being taken back.
constexpr std::string_view kHistory = R"(
CREATE TABLE "Storia" (
  "Lavoro" INTEGER PRIMARY KEY,
  "Quando" DATETIME,
  "Titolo" TEXT,
  "Qso" INTEGER,
  "Dal" INTEGER,
  "Al" INTEGER,
  "Riprende" INTEGER,
  "Ripreso" INTEGER
);
CREATE TABLE "StoriaNuovi" (
  "Lavoro" INTEGER,
  "Dal" INTEGER,
  "Al" INTEGER
);
CREATE INDEX "StoriaNuovi.PrimaryKey" ON "StoriaNuovi" (
  "Lavoro"
);
CREATE INDEX "StoriaNuovi.Dal" ON "StoriaNuovi" (
  "Dal",
  "Lavoro"
);
CREATE TABLE "StoriaLog" (
  "Lavoro" INTEGER,
  "QsoNr" INTEGER,
  "DataQso" DATETIME,
  "Call" TEXT,
  "Manager" TEXT,
  "Qra" TEXT,
  "Qth" TEXT,
  "Prefisso" TEXT,
  "Zona CQ" INTEGER,
  "Zona ITU" INTEGER,
  "Continente" TEXT,
  "Country" TEXT,
  "Provincia" TEXT,
  "Locator" TEXT,
  "Qrb" INTEGER,
  "Banda" TEXT,
  "Frequenza" REAL,
  "Potenza" INTEGER,
  "Modo" TEXT,
  "Propagazione" TEXT,
  "QrkDato" TEXT,
  "QrkRicevuto" TEXT,
  "QslDaInviare" YESNO,
  "QslRicevuta" YESNO,
  "QslInviata" YESNO,
  "Note" TEXT
);
CREATE UNIQUE INDEX "StoriaLog.PrimaryKey" ON "StoriaLog" (
  "Lavoro",
  "QsoNr"
);
CREATE INDEX "StoriaLog.QsoNr" ON "StoriaLog" (
  "QsoNr",
  "Lavoro"
);
CREATE TABLE "StoriaCampi" (
  "Lavoro" INTEGER,
  "QsoNr" INTEGER,
  "Campo" TEXT,
  "Valore" TEXT
);
CREATE UNIQUE INDEX "StoriaCampi.PrimaryKey" ON "StoriaCampi" (
  "Lavoro",
  "QsoNr",
  rtrim("Campo") COLLATE NOCASE
);
CREATE INDEX "StoriaCampi.QsoNr" ON "StoriaCampi" (
  "QsoNr",
  rtrim("Campo") COLLATE NOCASE,
  "Lavoro"
);
CREATE TABLE "StoriaContestQso" (
  "Lavoro" INTEGER,
  "Nuovo" YESNO NOT NULL DEFAULT 0,
  "DataContest" DATETIME,
  "Banda" TEXT,
  "ProgrDato" INTEGER,
  "ProgrRicevuto" INTEGER,
  "Giorno" INTEGER,
  "Qtr" DATETIME,
  "Call" TEXT,
  "QrkDato" INTEGER,
  "QrkRicevuto" INTEGER,
  "Locator" TEXT,
  "Modo" TEXT,
  "Qrb" INTEGER,
  "Punti" INTEGER,
  "Note" TEXT,
  "Qsl" YESNO,
  "InLog" YESNO
);
CREATE UNIQUE INDEX "StoriaContestQso.PrimaryKey" ON "StoriaContestQso" (
  "Lavoro",
  "DataContest",
  rtrim("Banda") COLLATE NOCASE,
  "ProgrDato"
);
CREATE TABLE "StoriaContest" (
  "Lavoro" INTEGER,
  "Nuovo" YESNO NOT NULL DEFAULT 0,
  "DataContest" DATETIME,
  "Banda" TEXT,
  "Nome" TEXT,
  "Frequenza" REAL,
  "Categoria" TEXT,
  "FissoPortatile" TEXT,
  "SingoloMulti" TEXT,
  "Call" TEXT,
  "Qra" TEXT,
  "Qth" TEXT,
  "Indirizzo" TEXT,
  "Provincia" TEXT,
  "SQth" TEXT,
  "SProvincia" TEXT,
  "Altezza" INTEGER,
  "Locator" TEXT,
  "RTX" TEXT,
  "Antenna" TEXT,
  "Potenza" INTEGER,
  "Note" TEXT,
  "MoltSquare" YESNO,
  "MoltCountry" YESNO,
  "MoltExch" YESNO
);
CREATE UNIQUE INDEX "StoriaContest.PrimaryKey" ON "StoriaContest" (
  "Lavoro",
  "DataContest",
  rtrim("Banda") COLLATE NOCASE
);
CREATE TABLE "StoriaScelta" (
  "QsoNr" INTEGER PRIMARY KEY
);
)";

// NoteStazioni: what the operator has noted about a station, by its call without what stands before
// and behind a slash. Verificati: what the check of the log has found and the operator lets stand.
constexpr std::string_view kNotesAndChecks = R"(
CREATE TABLE "NoteStazioni" (
  "Call" TEXT,
  "Nota" TEXT
);
CREATE UNIQUE INDEX "NoteStazioni.PrimaryKey" ON "NoteStazioni" (
  rtrim("Call") COLLATE NOCASE
);
CREATE TABLE "Verificati" (
  "QsoNr" INTEGER,
  "Regola" TEXT,
  "Motivo" TEXT
);
CREATE UNIQUE INDEX "Verificati.PrimaryKey" ON "Verificati" (
  "QsoNr",
  rtrim("Regola") COLLATE NOCASE
);
)";

// LogQsl: the cards of a contact, sent (Verso I) and received (R), each way once: B bureau, D
// direct, M manager, O request on line, E electronic, empty where it is not known. Data is empty
// where the day is not known. What log files have brought of it moves here as far as it is said of
// a card that went out or came; the rest of their words stays where it was.
constexpr std::string_view kCards = R"(
CREATE TABLE "LogQsl" (
  "QsoNr" INTEGER,
  "Verso" TEXT,
  "Via" TEXT,
  "Data" DATETIME
);
CREATE UNIQUE INDEX "LogQsl.PrimaryKey" ON "LogQsl" (
  "QsoNr",
  rtrim("Verso") COLLATE NOCASE,
  rtrim("Via") COLLATE NOCASE
);
CREATE TEMP TABLE "Cartoline" AS
  SELECT "QsoNr", "Verso",
    max(CASE WHEN "Cosa" = 'V' THEN upper(trim("Valore")) END) AS "Via",
    max(CASE WHEN "Cosa" = 'D' THEN trim("Valore") END) AS "Giorno"
  FROM (
    SELECT "QsoNr", "Valore",
      CASE WHEN upper("Campo") IN ('QSL_SENT_VIA', 'QSLSDATE') THEN 'I' ELSE 'R' END AS "Verso",
      CASE WHEN upper("Campo") IN ('QSL_SENT_VIA', 'QSL_RCVD_VIA') THEN 'V' ELSE 'D' END AS "Cosa"
    FROM "LogAdif"
    WHERE upper("Campo") IN ('QSL_SENT_VIA', 'QSLSDATE', 'QSL_RCVD_VIA', 'QSLRDATE')
  )
  GROUP BY "QsoNr", "Verso";
INSERT INTO "LogQsl"
  SELECT c."QsoNr", c."Verso", coalesce(c."Via", ''),
    substr("Giorno", 1, 4) || '-' || substr("Giorno", 5, 2) || '-' || substr("Giorno", 7, 2)
      || ' 00:00:00'
  FROM temp."Cartoline" AS c, "Log"
  WHERE "Log"."QsoNr" = c."QsoNr"
    AND CASE c."Verso" WHEN 'I' THEN "QslInviata" ELSE "QslRicevuta" END <> 0
    AND ("Via" IS NULL OR "Via" IN ('B', 'D', 'E', 'M'))
    AND ("Giorno" IS NULL
      OR (length("Giorno") = 8 AND "Giorno" >= '0100'
        AND strftime('%Y%m%d', substr("Giorno", 1, 4) || '-' || substr("Giorno", 5, 2) || '-'
          || substr("Giorno", 7, 2), '+0 days') = "Giorno"))
    AND NOT EXISTS (SELECT 1 FROM "LogAdif" AS said
      WHERE said."QsoNr" = c."QsoNr"
        AND upper(said."Campo") = CASE c."Verso" WHEN 'I' THEN 'QSL_SENT' ELSE 'QSL_RCVD' END
        AND upper(said."Valore") NOT IN ('Y', 'V'));
DELETE FROM "LogAdif"
  WHERE (upper("Campo") IN ('QSL_SENT_VIA', 'QSLSDATE')
      AND "QsoNr" IN (SELECT "QsoNr" FROM "LogQsl" WHERE "Verso" = 'I'))
    OR (upper("Campo") IN ('QSL_RCVD_VIA', 'QSLRDATE')
      AND "QsoNr" IN (SELECT "QsoNr" FROM "LogQsl" WHERE "Verso" = 'R'));
DROP TABLE temp."Cartoline";
)";

// EntitaCarichi: tables of countries by date that the operator has loaded; EntitaRighe: their
// lines, as entities/ writes them. EntitaQso: of a contact the country that a log file has told,
// and whether the operator leaves his own.
constexpr std::string_view kCountriesByDate = R"(
CREATE TABLE "EntitaCarichi" (
  "Carico" INTEGER PRIMARY KEY,
  "File" TEXT,
  "Formato" TEXT,
  "Versione" TEXT,
  "Quando" DATETIME,
  "Regole" INTEGER,
  "InUso" YESNO NOT NULL DEFAULT 0,
  "Sostituisce" INTEGER
);
CREATE TABLE "EntitaRighe" (
  "Carico" INTEGER,
  "Riga" INTEGER,
  "Testo" TEXT
);
CREATE UNIQUE INDEX "EntitaRighe.PrimaryKey" ON "EntitaRighe" (
  "Carico",
  "Riga"
);
CREATE TABLE "EntitaQso" (
  "QsoNr" INTEGER PRIMARY KEY,
  "Dxcc" INTEGER,
  "Scelta" YESNO NOT NULL DEFAULT 0
);
)";

// By which rule a contact has got its country, where that is not the one of the table of prefixes:
// the rule gave this country; in words with its days; its text, and the file that says so.
constexpr std::string_view kAppliedRules = R"(
ALTER TABLE "EntitaQso" ADD COLUMN "Country" TEXT;
ALTER TABLE "EntitaQso" ADD COLUMN "Motivo" TEXT;
ALTER TABLE "EntitaQso" ADD COLUMN "Regola" TEXT;
ALTER TABLE "EntitaQso" ADD COLUMN "Tabella" TEXT;
)";

// Gare: contests by rules, a row an entry; Regole is the name of the rules' file. GareBande: the
// bands of each, whose contacts stand in Contest Qso under its date, and the highest serial that
// was ever given there. GareQso: what a contact has beyond the columns of Contest Qso, by its key
// there: the whole moment in UTC, the texts as they were exchanged, what the rules give for it.
constexpr std::string_view kContestsByRules = R"(
CREATE TABLE "Gare" (
  "Gara" INTEGER PRIMARY KEY AUTOINCREMENT,
  "Regole" TEXT,
  "Nome" TEXT,
  "DataContest" DATETIME,
  "Inizio" DATETIME,
  "Fine" DATETIME,
  "Call" TEXT,
  "Locator" TEXT,
  "Scambio" TEXT,
  "Categoria" TEXT,
  "Mail" TEXT,
  "Obiettivo" INTEGER
);
CREATE TABLE "GareBande" (
  "Gara" INTEGER,
  "Banda" TEXT,
  "DataContest" DATETIME,
  "UltimoProgr" INTEGER
);
CREATE UNIQUE INDEX "GareBande.PrimaryKey" ON "GareBande" (
  "DataContest",
  rtrim("Banda") COLLATE NOCASE
);
CREATE TABLE "GareQso" (
  "DataContest" DATETIME,
  "Banda" TEXT,
  "ProgrDato" INTEGER,
  "Quando" DATETIME,
  "Modo" TEXT,
  "RapportoDato" TEXT,
  "RapportoRicevuto" TEXT,
  "Scambio" TEXT,
  "Punti" INTEGER,
  "Moltiplicatori" TEXT,
  "Doppio" YESNO NOT NULL DEFAULT 0,
  "NelLog" YESNO NOT NULL DEFAULT 0
);
CREATE UNIQUE INDEX "GareQso.PrimaryKey" ON "GareQso" (
  "DataContest",
  rtrim("Banda") COLLATE NOCASE,
  "ProgrDato"
);
)";

// LogConferme: what a service has told of a contact beside the day and the credits, which stand in
// LogAdif. Spunta: QslRicevuta stands because of it. ConfermeRecord: records of services without a
// contact, by the record's own name. Stato: D doubtful, N no contact, I the operator ignores it, C
// a credit without a contact. Contenuto is the record as the service told it.
constexpr std::string_view kConfirmations = R"(
CREATE TABLE "LogConferme" (
  "QsoNr" INTEGER,
  "Servizio" TEXT,
  "Record" TEXT,
  "Locator" TEXT,
  "Stato" TEXT,
  "Iota" TEXT,
  "Modo" TEXT,
  "ZonaCQ" INTEGER,
  "ZonaITU" INTEGER,
  "Dedotti" TEXT,
  "AMano" YESNO NOT NULL DEFAULT 0,
  "Spunta" YESNO NOT NULL DEFAULT 0
);
CREATE UNIQUE INDEX "LogConferme.PrimaryKey" ON "LogConferme" (
  "QsoNr",
  rtrim("Servizio") COLLATE NOCASE
);
CREATE TABLE "ConfermeRecord" (
  "Numero" INTEGER PRIMARY KEY AUTOINCREMENT,
  "Servizio" TEXT,
  "Record" TEXT,
  "Stato" TEXT,
  "Motivo" TEXT,
  "Candidati" TEXT,
  "Call" TEXT,
  "Quando" DATETIME,
  "Banda" TEXT,
  "Modo" TEXT,
  "Gruppo" TEXT,
  "Dxcc" INTEGER,
  "Crediti" TEXT,
  "Contenuto" TEXT
);
CREATE UNIQUE INDEX "ConfermeRecord.Record" ON "ConfermeRecord" (
  rtrim("Servizio") COLLATE NOCASE,
  rtrim("Record") COLLATE NOCASE
);
)";

// Of a list of awards: its groups first, behind them what the operator asks for most.
constexpr std::string_view kAwardIndexes = R"(
CREATE INDEX "Log.FieldQsl" ON "Log" (
  rtrim(substr("Locator", 1, 2)) COLLATE NOCASE,
  "QslRicevuta",
  rtrim("Banda") COLLATE NOCASE,
  rtrim("Modo") COLLATE NOCASE
);
CREATE INDEX "Log.SquareQsl" ON "Log" (
  rtrim(substr("Locator", 1, 4)) COLLATE NOCASE,
  "QslRicevuta",
  rtrim("Banda") COLLATE NOCASE,
  rtrim("Modo") COLLATE NOCASE
);
CREATE INDEX "Log.PrefissoQsl" ON "Log" (
  rtrim("Prefisso") COLLATE NOCASE,
  "QslRicevuta",
  rtrim("Country") COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE,
  rtrim("Modo") COLLATE NOCASE
);
DROP INDEX IF EXISTS "Log.Provincia";
CREATE INDEX "Log.ProvinciaQsl" ON "Log" (
  rtrim("Provincia") COLLATE NOCASE,
  "QslRicevuta",
  rtrim("Country") COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE,
  rtrim("Modo") COLLATE NOCASE
);
)";

constexpr SchemaStep kSteps[] = {
    {1, "Campi conservati dei file di log", kKeptFields},
    {2, "Stazioni, e un nome per ogni contatto", kOrigin},
    {3, "Storia dei contatti", kHistory},
    {4, "Note delle stazioni e verifiche", kNotesAndChecks},
    {5, "Qsl inviate e ricevute, con via e data", kCards},
    {6, "Country per data", kCountriesByDate},
    {7, "La regola che ha dato il country", kAppliedRules},
    {8, "Contest con le regole", kContestsByRules},
    {9, "Conferme dei servizi", kConfirmations},
    {13, "Indici dei diplomi", kAwardIndexes},
};

constexpr std::string_view kStepTable = R"(
CREATE TABLE IF NOT EXISTS "Passi" (
  "Passo" INTEGER PRIMARY KEY,
  "Titolo" TEXT,
  "Quando" DATETIME
);
)";

void AdoptAll(engine::Database& database, const ShowProgress& show) {
  const std::int64_t contacts = core::ContactsWithoutOrigin(database);
  if (contacts == 0) return;
  const auto progress = show("Un nome per ogni contatto", contacts);
  core::AdoptContacts(database, [&](std::int64_t done) { (void)progress->Advance(done); });
}

}  // namespace

std::span<const SchemaStep> SchemaSteps() { return kSteps; }

std::string StatementsOf(const SchemaStep& step, std::optional<base::DateTime> when) {
  return fmt::format("{}{}INSERT INTO \"Passi\" VALUES ({}, '{}', {});", kStepTable,
                     step.statements, step.number, step.title,
                     when ? "'" + base::IsoText(*when) + "'" : "NULL");
}

int StepsTaken(engine::Database& database) {
  try {
    const auto steps = database.OpenTable("Passi");
    steps->MoveLast();
    return steps->EOF_() ? 0 : static_cast<int>(steps->Field("Passo").Integer());
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kUnknownTable) throw;
    return 0;
  }
}

bool IsOutOfDate(engine::Database& database) {
  return StepsTaken(database) < SchemaSteps().back().number;
}

std::vector<std::string> BringUpToDate(const std::filesystem::path& appPath, base::DateTime now,
                                       const ShowProgress& show) {
  const std::filesystem::path database = core::FileIn(appPath, kDatabase);
  engine::Database opened = file::OpenDatabaseFile(database);
  const int last = StepsTaken(opened);
  opened.Close();
  std::vector<std::string> taken;
  for (const SchemaStep& step : SchemaSteps()) {
    if (step.number <= last) continue;
    if (taken.empty() && file::RowsIn(database, "Log") > 0) MakeDaysCopy(appPath, now, show);
    file::ChangeStructure(database, StatementsOf(step, now));
    taken.emplace_back(step.title);
  }
  if (taken.empty()) return taken;
  opened = file::OpenDatabaseFile(database);
  AdoptAll(opened, show);
  return taken;
}

}  // namespace brenvo::upkeep
