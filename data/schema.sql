-- The tables and indexes of Brenvo.mdb that every version has. What this program keeps beside them
-- comes by steps (upkeep/schema_steps.h).
--
-- Column types tell the file engine what a column holds: TEXT, INTEGER, REAL, DATETIME (ISO text
-- "yyyy-mm-dd hh:mm:ss"), YESNO (-1 and 0), and a counter, which is the key of its table and never
-- gives a number twice.
--
-- Text compares without regard to case and to trailing blanks. An index on a text column is
-- therefore an index on rtrim(column) COLLATE NOCASE, made of nothing that SQLite does not bring
-- along, so that every SQLite tool can read and write this file. An index is named by its table,
-- a point, and the name by which the program knows it.

PRAGMA application_id = 0x4252564F;  -- "BRVO"
PRAGMA user_version = 1;

-- The station log.
CREATE TABLE "Log" (
  "QsoNr" INTEGER PRIMARY KEY AUTOINCREMENT,
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
  "QslDaInviare" YESNO NOT NULL DEFAULT 0,
  "QslRicevuta" YESNO NOT NULL DEFAULT 0,
  "QslInviata" YESNO NOT NULL DEFAULT 0,
  "Note" TEXT
);
CREATE INDEX "Log.DataQso" ON "Log" (
  "DataQso"
);
CREATE UNIQUE INDEX "Log.Unico" ON "Log" (
  "DataQso",
  rtrim("Call") COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE
);
CREATE INDEX "Log.Call" ON "Log" (
  rtrim("Call") COLLATE NOCASE
);
CREATE INDEX "Log.CallBanda" ON "Log" (
  rtrim("Call") COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE,
  "QslRicevuta"
);
CREATE INDEX "Log.SquareBanda" ON "Log" (
  rtrim(substr("Locator", 1, 4)) COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE,
  "QslRicevuta",
  rtrim("Modo") COLLATE NOCASE
);
CREATE INDEX "Log.CountryBanda" ON "Log" (
  rtrim("Country") COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE,
  "QslRicevuta",
  rtrim("Modo") COLLATE NOCASE
);
CREATE INDEX "Log.PrefissoBanda" ON "Log" (
  rtrim("Prefisso") COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE,
  "QslRicevuta",
  rtrim("Modo") COLLATE NOCASE
);
CREATE INDEX "Log.ZonaCQBanda" ON "Log" (
  "Zona CQ",
  rtrim("Banda") COLLATE NOCASE,
  "QslRicevuta",
  rtrim("Modo") COLLATE NOCASE
);
CREATE INDEX "Log.ZonaITUBanda" ON "Log" (
  "Zona ITU",
  rtrim("Banda") COLLATE NOCASE,
  "QslRicevuta",
  rtrim("Modo") COLLATE NOCASE
);
CREATE INDEX "Log.ContinenteBanda" ON "Log" (
  rtrim("Continente") COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE,
  "QslRicevuta",
  rtrim("Modo") COLLATE NOCASE
);
CREATE INDEX "Log.Provincia" ON "Log" (
  rtrim("Provincia") COLLATE NOCASE,
  "QslRicevuta"
);

-- Staging of awards and reports: the columns of Log in the same order. Without a key of its own
-- its rows stand in the order in which they were put in.
CREATE TABLE "SLog" (
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
  "QslDaInviare" YESNO NOT NULL DEFAULT 0,
  "QslRicevuta" YESNO NOT NULL DEFAULT 0,
  "QslInviata" YESNO NOT NULL DEFAULT 0,
  "Note" TEXT
);

-- Staging of the note statistics.
CREATE TABLE "SNote" (
  "Note" TEXT,
  "QslRicevuta" YESNO NOT NULL DEFAULT 0
);

-- Contest headers, one for each band of a contest.
CREATE TABLE "Contest" (
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
  "MoltSquare" YESNO NOT NULL DEFAULT 0,
  "MoltCountry" YESNO NOT NULL DEFAULT 0,
  "MoltExch" YESNO NOT NULL DEFAULT 0
);
CREATE UNIQUE INDEX "Contest.PrimaryKey" ON "Contest" (
  "DataContest",
  rtrim("Banda") COLLATE NOCASE
);

-- The contacts of contests.
CREATE TABLE "Contest Qso" (
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
  "Qsl" YESNO NOT NULL DEFAULT 0,
  "InLog" YESNO NOT NULL DEFAULT 0
);
CREATE UNIQUE INDEX "Contest Qso.PrimaryKey" ON "Contest Qso" (
  "DataContest",
  rtrim("Banda") COLLATE NOCASE,
  "ProgrDato"
);
-- A day is a range of the date, and only the last part of a key serves a range.
CREATE INDEX "Contest Qso.Call" ON "Contest Qso" (
  rtrim("Call") COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE,
  "DataContest"
);
CREATE INDEX "Contest Qso.ProgrDato" ON "Contest Qso" (
  "ProgrDato",
  rtrim("Banda") COLLATE NOCASE,
  "DataContest"
);

-- Staging: the squares of a contest.
CREATE TABLE "ContestWWL" (
  "WWL" TEXT
);
CREATE UNIQUE INDEX "ContestWWL.PrimaryKey" ON "ContestWWL" (
  rtrim("WWL") COLLATE NOCASE
);

-- Staging: the countries of a contest.
CREATE TABLE "ContestDXC" (
  "Country" TEXT
);
CREATE UNIQUE INDEX "ContestDXC.PrimaryKey" ON "ContestDXC" (
  rtrim("Country") COLLATE NOCASE
);

-- Staging: the exchanges of a contest.
CREATE TABLE "ContestExc" (
  "Exc" TEXT
);
CREATE UNIQUE INDEX "ContestExc.PrimaryKey" ON "ContestExc" (
  rtrim("Exc") COLLATE NOCASE
);

-- Prefixes, each with its digit.
CREATE TABLE "Prefissi" (
  "Prefisso" TEXT,
  "Country" TEXT,
  "Zona CQ" INTEGER,
  "Zona ITU" INTEGER,
  "Continente" TEXT
);
CREATE UNIQUE INDEX "Prefissi.PrimaryKey" ON "Prefissi" (
  rtrim("Prefisso") COLLATE NOCASE,
  "Zona CQ",
  "Zona ITU",
  rtrim("Continente") COLLATE NOCASE
);

-- Countries, today's and deleted ones.
CREATE TABLE "Country" (
  "Country" TEXT,
  "Descrizione" TEXT,
  "Locator" TEXT,
  "Mappa" TEXT,
  "Flag" TEXT,
  "Pointer_X" INTEGER,
  "Pointer_Y" INTEGER,
  "From" TEXT,
  "Deleted" TEXT
);
CREATE UNIQUE INDEX "Country.PrimaryKey" ON "Country" (
  rtrim("Country") COLLATE NOCASE
);

-- Provinces of countries.
CREATE TABLE "Provincie" (
  "Country" TEXT,
  "Provincia" TEXT,
  "Descrizione" TEXT
);
CREATE UNIQUE INDEX "Provincie.PrimaryKey" ON "Provincie" (
  rtrim("Country") COLLATE NOCASE,
  rtrim("Provincia") COLLATE NOCASE
);

-- Ready-made notes.
CREATE TABLE "NoteHelp" (
  "TipoNota" TEXT,
  "Nota" TEXT
);
CREATE UNIQUE INDEX "NoteHelp.PrimaryKey" ON "NoteHelp" (
  rtrim("TipoNota") COLLATE NOCASE,
  rtrim("Nota") COLLATE NOCASE
);

-- The station profile, one row.
CREATE TABLE "User" (
  "Call" TEXT,
  "Qra" TEXT,
  "Qth" TEXT,
  "Indirizzo" TEXT,
  "Provincia" TEXT,
  "Locator" TEXT,
  "ClusterNode" TEXT,
  "TelnetCluster" TEXT,
  "TelnetWWConv" TEXT,
  "TNCPort" TEXT,
  "TNCBaud" INTEGER,
  "TNCEcho" YESNO NOT NULL DEFAULT 0,
  "CallFile" TEXT,
  "CallInterval" INTEGER
);

-- The bands of the station.
CREATE TABLE "UserRTX" (
  "Banda" TEXT,
  "Frequenza" REAL,
  "FrequenzaI" REAL,
  "FrequenzaF" REAL,
  "RTX" TEXT,
  "Antenna" TEXT,
  "Potenza" INTEGER,
  "RST" TEXT,
  "Modo" TEXT,
  "AnnunceDX" YESNO NOT NULL DEFAULT 0,
  "FilenameDX" TEXT
);
CREATE UNIQUE INDEX "UserRTX.PrimaryKey" ON "UserRTX" (
  rtrim("Banda") COLLATE NOCASE
);

-- Modes.
CREATE TABLE "Modi" (
  "Codice" INTEGER,
  "Modo" TEXT
);
CREATE UNIQUE INDEX "Modi.PrimaryKey" ON "Modi" (
  "Codice"
);

-- Propagations.
CREATE TABLE "Propagazione" (
  "Codice" INTEGER,
  "Propagazione" TEXT
);
CREATE UNIQUE INDEX "Propagazione.PrimaryKey" ON "Propagazione" (
  "Codice"
);

-- Squares on the map of Europe.
CREATE TABLE "Square" (
  "Square" TEXT,
  "X" INTEGER,
  "Y" INTEGER
);
CREATE UNIQUE INDEX "Square.PrimaryKey" ON "Square" (
  rtrim("Square") COLLATE NOCASE
);

-- Fields on the world map.
CREATE TABLE "Field" (
  "Field" TEXT,
  "X" INTEGER,
  "Y" INTEGER
);
CREATE UNIQUE INDEX "Field.PrimaryKey" ON "Field" (
  rtrim("Field") COLLATE NOCASE
);

-- CQ zones on their map.
CREATE TABLE "ZoneCQ" (
  "ZonaCQ" INTEGER,
  "X" INTEGER,
  "Y" INTEGER
);
CREATE UNIQUE INDEX "ZoneCQ.PrimaryKey" ON "ZoneCQ" (
  "ZonaCQ"
);

-- Italian provinces on their map.
CREATE TABLE "ProvincieItaliane" (
  "Provincia" TEXT,
  "X" INTEGER,
  "Y" INTEGER
);
CREATE UNIQUE INDEX "ProvincieItaliane.PrimaryKey" ON "ProvincieItaliane" (
  rtrim("Provincia") COLLATE NOCASE
);

-- QSL managers by the year from which they hold.
CREATE TABLE "qmgr" (
  "call" TEXT,
  "mgr" TEXT,
  "active" INTEGER
);
CREATE INDEX "qmgr.call" ON "qmgr" (
  rtrim("call") COLLATE NOCASE,
  "active"
);

-- Kept for its place in the file.
CREATE TABLE "Hrd" (
  "Call" TEXT,
  "Banda" TEXT
);
CREATE UNIQUE INDEX "Hrd.PrimaryKey" ON "Hrd" (
  rtrim("Call") COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE
);
