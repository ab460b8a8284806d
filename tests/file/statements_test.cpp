// The statements of the program's windows, with literals as they occur, on a small log.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

void Fill(engine::Database& db) {
  const auto log = [&](Cells cells) { Add(db, "Log", cells); };
  log({{"DataQso", base::DateTime::Of(2001, 2, 3, 10, 0)},
       {"Call", "I3ABC"},
       {"Banda", "  2 m"},
       {"Locator", "JN65FR"},
       {"Country", "I"},
       {"Prefisso", "I3   "},
       {"Zona CQ", 15},
       {"Zona ITU", 28},
       {"Continente", "EU"},
       {"Provincia", "PD"},
       {"Modo", "SSB"},
       {"Propagazione", "TR"},
       {"QslRicevuta", true},
       {"QslInviata", true},
       {"Note", "prova [SOTA I/VE-1] fine"},
       {"Qrb", 20}});
  log({{"DataQso", base::DateTime::Of(2001, 2, 4, 11, 0)},
       {"Call", "i3abc"},
       {"Banda", " 20 m"},
       {"Locator", "JN65"},
       {"Country", "I"},
       {"Prefisso", "I3"},
       {"Zona CQ", 15},
       {"Zona ITU", 28},
       {"Continente", "EU"},
       {"Provincia", "PD"},
       {"Modo", "CW"},
       {"Propagazione", ""},
       {"Note", ""},
       {"Qrb", 10}});
  log({{"DataQso", base::DateTime::Of(2001, 2, 5, 12, 0)},
       {"Call", "K1XYZ"},
       {"Banda", " 20 m"},
       {"Locator", "FN42"},
       {"Country", "K"},
       {"Prefisso", "K1"},
       {"Zona CQ", 5},
       {"Zona ITU", 8},
       {"Continente", "NA"},
       {"Provincia", ""},
       {"Modo", "SSB"},
       {"Propagazione", ""},
       {"QslDaInviare", true},
       {"Qrb", 6000}});
  log({{"DataQso", base::DateTime::Of(2001, 3, 1, 9, 30)},
       {"Call", "IS0AAA"},
       {"Banda", "  2 m"},
       {"Locator", "JM49"},
       {"Country", "IS0"},
       {"Prefisso", "IS0"},
       {"Zona CQ", 15},
       {"Zona ITU", 28},
       {"Continente", "EU"},
       {"Provincia", "CA"},
       {"Modo", "SSB"},
       {"Propagazione", "TR"},
       {"QslRicevuta", true},
       {"Qrb", 500},
       {"Note", "SOTA senza parentesi"}});
  log({{"DataQso", base::DateTime::Of(2001, 3, 1, 10, 0)},
       {"Call", "K1XYZ"},
       {"Banda", "  2 m"},
       {"Country", "K"},
       {"Zona CQ", 0},
       {"Modo", "SSB"},
       {"Propagazione", "EME"},
       {"QslRicevuta", true},
       {"Qrb", 6000}});

  for (const auto& [band, mhz, from, to] :
       {std::tuple{"  2 m", 144.3, 144000.0, 146000.0}, {" 20 m", 14.2, 14000.0, 14350.0}}) {
    Add(db, "UserRTX",
        {{"Banda", band},
         {"Frequenza", mhz},
         {"FrequenzaI", from},
         {"FrequenzaF", to},
         {"AnnunceDX", true},
         {"FilenameDX", "dx.wav"}});
  }
  Add(db, "Modi", {{"Codice", 2}, {"Modo", "CW"}});
  Add(db, "Modi", {{"Codice", 1}, {"Modo", "SSB"}});
  Add(db, "Propagazione", {{"Codice", 1}, {"Propagazione", ""}});
  Add(db, "Propagazione", {{"Codice", 2}, {"Propagazione", "TR"}});
  Add(db, "Country", {{"Country", "K"}, {"Descrizione", "United States"}});
  Add(db, "Country", {{"Country", "I"}, {"Descrizione", "Italy"}});
  Add(db, "Provincie", {{"Country", "I"}, {"Provincia", "VE"}, {"Descrizione", "Venezia"}});
  Add(db, "Provincie", {{"Country", "I"}, {"Provincia", "PD"}, {"Descrizione", "Padova"}});
  Add(db, "NoteHelp", {{"TipoNota", "SOTA"}, {"Nota", "[SOTA ]"}});
  Add(db, "NoteHelp", {{"TipoNota", "Sota "}, {"Nota", "[SOTA I]"}});
  Add(db, "NoteHelp", {{"TipoNota", "IOTA"}, {"Nota", "[IOTA ]"}});
  Add(db, "Prefissi", {{"Prefisso", "K1"}, {"Country", "K"}, {"Zona CQ", 5}});
  Add(db, "Prefissi", {{"Prefisso", "I3"}, {"Country", "I"}, {"Zona CQ", 15}});
  Add(db, "Field", {{"Field", "JN"}, {"X", 10}, {"Y", 20}});
  Add(db, "ZoneCQ", {{"ZonaCQ", 15}, {"X", 7}, {"Y", 8}});
  Add(db, "ProvincieItaliane", {{"Provincia", "PD"}, {"X", 3}, {"Y", 4}});
  for (const auto& [manager, year] : {std::pair{"OLD", 1995}, {"NEW", 2000}, {"LATE", 2005}}) {
    Add(db, "qmgr", {{"call", "I3ABC"}, {"mgr", manager}, {"active", year}});
  }
  const base::DateTime contest = base::DateTime::Of(2001, 6, 2);
  Add(db, "Contest", {{"DataContest", contest}, {"Banda", "  2 m"}, {"Nome", "Giugno"}});
  for (const auto& [serial, call] : {std::pair{2, "I3ABC"}, {1, "K1XYZ"}, {3, "I3ABC"}}) {
    Add(db, "Contest Qso",
        {{"DataContest", contest},
         {"Banda", "  2 m"},
         {"ProgrDato", serial},
         {"Call", call},
         {"Locator", "JN65FR"},
         {"InLog", serial == 2},
         {"Qsl", serial == 2}});
  }
  Add(db, "Contest Qso",
      {{"DataContest", base::DateTime::Of(2001, 6, 3)}, {"Banda", "  2 m"}, {"ProgrDato", 9}});
}

// One log for all statements that only read.
class StatementsTest : public ::testing::TestWithParam<std::pair<const char*, const char*>> {
 protected:
  static void SetUpTestSuite() {
    scratch_ = std::make_unique<ScratchDatabase>();
    db_ = std::make_unique<engine::Database>(scratch_->Open());
    Fill(*db_);
  }
  static void TearDownTestSuite() {
    db_.reset();
    scratch_.reset();
  }
  static std::unique_ptr<ScratchDatabase> scratch_;
  static std::unique_ptr<engine::Database> db_;
};
std::unique_ptr<ScratchDatabase> StatementsTest::scratch_;
std::unique_ptr<engine::Database> StatementsTest::db_;

std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) joined += "|" + text;
  return joined;
}

TEST_P(StatementsTest, GivesItsRows) {
  const auto& [statement, expected] = GetParam();
  EXPECT_EQ(Joined(Select(*db_, statement)), expected) << statement;
}

// The statement with all that stands outside of its literals in one case.
std::string Recased(std::string_view statement, bool upper) {
  std::string recased(statement);
  char quote = 0;
  for (char& c : recased) {
    if (quote == 0 && (c == '\'' || c == '"')) {
      quote = c;
    } else if (c == quote) {
      quote = 0;
    } else if (quote == 0) {
      c = static_cast<char>(upper ? std::toupper(c) : std::tolower(c));
    }
  }
  return recased;
}

TEST_P(StatementsTest, GivesThemInWhateverCaseItsNamesAreWritten) {
  const auto& [statement, expected] = GetParam();
  for (const bool upper : {false, true}) {
    const std::string recased = Recased(statement, upper);
    EXPECT_EQ(Joined(Select(*db_, recased)), expected) << recased;
  }
}

constexpr std::pair<const char*, const char*> kLists[] = {
    {"Select Banda from UserRTX Order By Frequenza", "| 20 m|  2 m"},
    {"select Modo from Modi order by Codice", "|SSB|CW"},
    {"Select Modo from Modi Order By Codice", "|SSB|CW"},
    {"select Propagazione from Propagazione order by Codice", "||TR"},
    {"Select Descrizione from Provincie Where Country='I'", "|Venezia|Padova"},
    {"Select Nota from NoteHelp", "|[SOTA ]|[SOTA I]|[IOTA ]"},
    {"Select TipoNota from NoteHelp Group By TipoNota", "|IOTA|SOTA"},
    {"Select Nota from NoteHelp Where TipoNota='SOTA'", "|[SOTA ]|[SOTA I]"},
    {"select left(Country+space(5),5)+Descrizione as Campo from Country",
     "|K    United States|I    Italy"},
    {"Select left(Provincia+space(5),5)+Descrizione as Campo from Provincie where Country='I    '",
     "|VE   Venezia|PD   Padova"},
    {"SELECT Country,Descrizione FROM Country ORDER BY Country", "|I|K"},
    {"SELECT Provincia,Descrizione FROM Provincie WHERE Country='I' ORDER BY Provincia", "|PD|VE"},
    {"select Prefisso,Country,[Zona CQ],[Zona ITU],Continente from Prefissi order by prefisso",
     "|I3|K1"},
    {"select Prefisso,Country,[Zona CQ],[Zona ITU],Continente from Prefissi order by [Zona CQ]",
     "|K1|I3"},
    {"select Banda from UserRTX order by Frequenza", "| 20 m|  2 m"},
    {"select * from UserRTX", "|  2 m| 20 m"},
    {"select Nome from Contest", "|Giugno"},
    {"select Banda,AnnunceDX,FilenameDX from UserRTX where 14195.5 >=FrequenzaI and 14195.5 "
     "<=FrequenzaF",
     "| 20 m"},
    {"Select * from Field order by Field", "|JN"},
    {"select X,Y from ZoneCQ where ZonaCQ= 15", "|7"},
    {"select X,Y from ProvincieItaliane where Provincia='PD'", "|3"},
};
INSTANTIATE_TEST_SUITE_P(Lists, StatementsTest, ::testing::ValuesIn(kLists));

constexpr std::pair<const char*, const char*> kEntry[] = {
    {"select Call from Log where Call='I3ABC' and QslRicevuta=true and Banda='  2 m' and QsoNr<> 9",
     "|I3ABC"},
    {"select Call from Log where Call='I3ABC' and QslRicevuta=true and Banda='  2 m' and QsoNr<> 1",
     ""},
    {"select Call from Log where Call='I3ABC' and Banda=' 20 m' and QsoNr<> 1", "|i3abc"},
    {"select Call from Log where Call='I3ABC' and Banda='' and QsoNr<> 1", ""},
    {"select Call from Log where Call='' and Banda='  2 m' and QsoNr<> 0", ""},
    {"select mgr from qmgr where call='I3ABC' and active=(select max(active) from qmgr where "
     "call='I3ABC' and active<= 2001)",
     "|NEW"},
    {"select mgr from qmgr where call='I3ABC' and active=(select max(active) from qmgr where "
     "call='I3ABC' and active<= 1990)",
     ""},
    {"SELECT QsoNr FROM Log where Call='I3ABC' ORDER By DataQso DESC,QsoNr", "|2|1"},
    {"SELECT * FROM Log where Call='YYZZYYZZ' ORDER By DataQso,QsoNr", ""},
    {"select Call from Log where Locator like 'JN65*' and QslRicevuta=true and Banda='  2 m' and "
     "QsoNr<> 0",
     "|I3ABC"},
    {"select Call from Log where Locator like 'JN65*' and Banda=' 20 m' and QsoNr<> 0", "|i3abc"},
    {"SELECT QsoNr FROM Log where Locator like 'JN65*' and Banda='  2 m' ORDER By DataQso "
     "DESC,QsoNr",
     "|1"},
    {"select Call from Log where Country='I' and QslRicevuta=true and Banda='  2 m' and QsoNr<> 0",
     "|I3ABC"},
    {"select Call from Log where Country='I' and Banda=' 20 m' and QsoNr<> 0", "|i3abc"},
    {"Select * from Log where QsoNr= 3", "|3"},
    {"SELECT * FROM Log ORDER By DataQso,QsoNr", "|1|2|3|4|5"},
    {"SELECT * FROM Log ORDER By DataQso DESC ,QsoNr", "|5|4|3|2|1"},
};
INSTANTIATE_TEST_SUITE_P(Entry, StatementsTest, ::testing::ValuesIn(kEntry));

constexpr std::pair<const char*, const char*> kSearch[] = {
    {"SELECT * FROM Log  ORDER BY DataQso", "|1|2|3|4|5"},
    {"SELECT * FROM Log WHERE DateValue(DataQso)>= cvdate('04/02/2001') AND Call LIKE 'I3*' ORDER "
     "BY DataQso",
     "|2"},
    {"SELECT * FROM Log WHERE DateValue(DataQso)= cvdate('01/03/2001') ORDER BY Call", "|4|5"},
    {"SELECT * FROM Log WHERE DateValue(DataQso)<= cvdate('04/02/2001') ORDER BY DataQso", "|1|2"},
    {"SELECT * FROM Log WHERE QsldaInviare=true ORDER BY DataQso", "|3"},
    {"SELECT * FROM Log WHERE QsldaInviare=false ORDER BY DataQso", "|1|2|4|5"},
    {"SELECT * FROM Log WHERE QslRicevuta=true AND QslInviata=false ORDER BY DataQso", "|4|5"},
    {"SELECT * FROM Log WHERE Country='I' AND Provincia='PD' AND Modo='CW' ORDER BY Prefisso",
     "|2"},
    {"SELECT * FROM Log WHERE Propagazione='TR' AND Note LIKE '*sota*' ORDER BY Locator", "|4|1"},
    {"SELECT * FROM Log WHERE Locator LIKE 'J?6*' ORDER BY Locator", "|2|1"},
    {"SELECT * FROM Log WHERE Call LIKE '[ik]#*' ORDER BY Qrb", "|2|1|3|5"},
    {"SELECT * FROM Log  ORDER BY QslRicevuta", "|1|4|5|2|3"},
    {"SELECT * FROM Log  ORDER BY Provincia", "|5|3|4|1|2"},
};
INSTANTIATE_TEST_SUITE_P(Search, StatementsTest, ::testing::ValuesIn(kSearch));

constexpr std::pair<const char*, const char*> kContest[] = {
    {"SELECT ProgrDato FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('02/06/2001') AND "
     "Banda='  2 m' order by ProgrDato",
     "|1|2|3"},
    {"SELECT max(ProgrDato) FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('02/06/2001')"
     " AND Banda='  2 m'",
     "|3"},
    {"SELECT max(ProgrDato) FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('09/06/2001')"
     " AND Banda='  2 m'",
     "|"},
    {"SELECT ProgrDato FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('02/06/2001') AND "
     "Banda='  2 m' and ProgrDato=3",
     "|3"},
    {"Select ProgrDato FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('02/06/2001') AND "
     "Banda='  2 m' AND Call='I3ABC' AND ProgrDato<>2",
     "|3"},
    {"Select ProgrDato FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('02/06/2001') AND "
     "Banda='  2 m' AND Call='i3abc '",
     "|2|3"},
    {"SELECT ProgrDato,Call,Locator,Qrb,Punti,Note FROM [Contest Qso] WHERE "
     "DateValue(DataContest)=DateValue('02/06/2001') AND Banda='  2 m'",
     "|2|1|3"},
    {"Select ProgrDato FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('02/06/2001') AND "
     "Banda='  2 m' AND InLog",
     "|2"},
    {"SELECT count(*) FROM ContestWWL", "|0"},
    {"SELECT count(*) FROM ContestExc where Exc='12'", "|0"},
    {"SELECT count(*) FROM ContestWWL where WWL='JN65'", "|0"},
    {"SELECT count(*) FROM ContestDXC where Country='I'", "|0"},
};
INSTANTIATE_TEST_SUITE_P(Contest, StatementsTest, ::testing::ValuesIn(kContest));

constexpr std::pair<const char*, const char*> kAwards[] = {
    {"SELECT Left(Locator,2) as Field,QslRicevuta FROM Log WHERE DateValue(DataQso)>=DateValue("
     "'03/02/2001') AND DateValue(DataQso)<=DateValue('01/03/2001') AND Locator<>'' GROUP BY "
     "Left(Locator,2),QslRicevuta ORDER BY Left(Locator,2),QslRicevuta",
     "|FN|JM|JN|JN"},
    {"SELECT Left(Locator,4) as Square,QslRicevuta FROM Log WHERE Banda='  2 m' AND Locator<>'' "
     "GROUP BY Left(Locator,4),QslRicevuta ORDER BY Left(Locator,4),QslRicevuta",
     "|JM49|JN65"},
    {"SELECT Prefisso,QslRicevuta,Country FROM Log WHERE Prefisso<>'' GROUP BY "
     "Prefisso,QslRicevuta,Country ORDER BY Prefisso,QslRicevuta",
     "|I3   |I3|IS0|K1"},
    {"SELECT Continente,QslRicevuta FROM Log WHERE Continente<>'' GROUP BY Continente,QslRicevuta "
     "ORDER BY Continente,QslRicevuta",
     "|EU|EU|NA"},
    {"SELECT [Zona CQ],QslRicevuta FROM Log WHERE [Zona CQ]<>0 GROUP BY [Zona CQ],QslRicevuta "
     "ORDER BY [Zona CQ],QslRicevuta",
     "|5|15|15"},
    {"SELECT Country,QslRicevuta FROM Log WHERE (Country='I' OR Country='IS0') AND Modo in "
     "('SSB','CW') AND Propagazione in ('','TR') AND Country<>'' GROUP BY Country,QslRicevuta "
     "ORDER "
     "BY Country,QslRicevuta",
     "|I|I|IS0"},
    {"SELECT Country,Provincia,QslRicevuta FROM Log WHERE Country='I' AND Provincia<>'' GROUP BY "
     "Country,Provincia,QslRicevuta ORDER BY Provincia,QslRicevuta",
     "|I|I"},
    {"SELECT Provincia,QslRicevuta FROM Log WHERE Country='I' AND Provincia<>'' GROUP BY "
     "Provincia,QslRicevuta ORDER BY Provincia,QslRicevuta",
     "|PD|PD"},
    {"SELECT Note,QslRicevuta FROM SNote GROUP BY Note,QslRicevuta ORDER BY Note,QslRicevuta", ""},
    {"SELECT * FROM SNote", ""},
    {"Select * from Log WHERE Banda='  2 m' And left(Locator,4)= 'JN65'", "|1"},
    {"Select * from Log WHERE Modo in ('SSB') And left(Locator,2)= 'JN'", "|1"},
    {"Select * from Log WHERE Banda='  2 m' And Prefisso='I3'", "|1"},
    {"Select * from Log WHERE Banda='  2 m' And [Zona CQ]= 15", "|1|4"},
    {"Select * from Log WHERE Banda='  2 m' And Country='K' and QslRicevuta=true order by DataQso",
     "|5"},
    {"Select * from Log WHERE Modo='SSB' And Provincia='PD' and QslRicevuta=false order by DataQso",
     ""},
    {"Select * from Log WHERE Country='I' And left(Locator,4)='JN65' and QslRicevuta=false order "
     "by DataQso desc",
     "|2"},
    {"Select * from Log WHERE QslRicevuta=True And [Zona CQ]=15 and QslRicevuta=true order by "
     "DataQso desc",
     "|4|1"},
    {"select * from SLog order by DataQso desc", ""},
    {"select count(*) from Log where Call='I3ABC' and Banda='  2 m' and QslRicevuta", "|1"},
    {"select count(*) from Log where Call='I3ABC' and Banda='  2 m' and QslRicevuta and Modo='CW'",
     "|0"},
    {"select count(*) from Log where Locator like 'JN65*' and Banda=' 20 m'", "|1"},
    {"select count(*) from Log where Country='K' and Banda='  2 m' and QslRicevuta", "|1"},
    {"select count(*) from Log where Prefisso='I3' and Banda=' 20 m'", "|1"},
    {"select count(*) from Log where [Zona CQ]= 15 and Banda='  2 m'", "|2"},
    {"select count(*) from Log where [Zona ITU]= 28 and Banda='  2 m' and QslRicevuta", "|2"},
    {"select count(*) from Log where Continente='EU' and Banda='  2 m'", "|2"},
    {"select count(*) from Log where Call='I3ABC' and Modo='SSB' and QslRicevuta and banda='  2 m'",
     "|1"},
    {"select count(*) from Log where [Zona CQ]= 15 and Modo='SSB' and banda='  2 m'", "|2"},
    {"Select * from Log where [ZOna CQ]= 15 and Banda='  2 m'", "|1|4"},
    {"Select * from Log where [ZOna ITU]= 8 and Banda=' 20 m' and Modo='SSB'", "|3"},
    {"Select * from Log where Locator like 'JN65*' and Banda='  2 m'", "|1"},
    {"SELECT * FROM Log WHERE (QslDaInviare OR (QslRicevuta and not QslInviata))", "|3|4|5"},
};
INSTANTIATE_TEST_SUITE_P(Awards, StatementsTest, ::testing::ValuesIn(kAwards));

class WritingTest : public ::testing::Test {
 protected:
  WritingTest() { Fill(db_); }
  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

TEST_F(WritingTest, CardsAreMarkedInThreeSteps) {
  EXPECT_EQ(db_.Execute("UPDATE Log SET QslInviata=True WHERE QslDaInviare"), 1);
  EXPECT_EQ(db_.Execute("UPDATE Log SET QslDaInviare=False WHERE QslDaInviare"), 1);
  EXPECT_EQ(db_.Execute("UPDATE Log SET QslInviata=True WHERE QslRicevuta and not QslInviata"), 2);
  EXPECT_EQ(Joined(Select(db_, "select QsoNr from Log where QslInviata")), "|1|3|4|5");
  EXPECT_EQ(Joined(Select(db_, "select QsoNr from Log where QslDaInviare")), "");
}

TEST_F(WritingTest, EmptyingATableTellsHowManyRowsItHad) {
  EXPECT_EQ(db_.Execute("DELETE * FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('"
                        "02/06/2001') AND Banda='  2 m'"),
            3);
  EXPECT_EQ(db_.Execute("DELETE * FROM [Contest Qso]"), 1);
  EXPECT_EQ(db_.Execute("DELETE * FROM Contest"), 1);
  EXPECT_EQ(db_.Execute("DELETE * FROM Log"), 5);
  EXPECT_EQ(db_.Execute("DELETE FROM SLog"), 0);
  EXPECT_EQ(db_.Execute("DELETE FROM SNote"), 0);
}

TEST_F(WritingTest, ContestMarksAreCleared) {
  EXPECT_EQ(db_.Execute("UPDATE [Contest Qso] Set InLog=False,Qsl=False WHERE DateValue("
                        "DataContest)=DateValue('02/06/2001') AND Banda='  2 m' AND InLog"),
            1);
  EXPECT_EQ(Joined(Select(db_, "select ProgrDato from [Contest Qso] where InLog or Qsl")), "");
}

TEST_F(WritingTest, AnInsertDropsRowsThatRepeatAKey) {
  db_.Execute("delete from ContestWWL");
  EXPECT_EQ(db_.Execute("Insert into ContestWWL values ('JN65')"), 1);
  EXPECT_EQ(db_.Execute("Insert into ContestWWL values ('jn65 ')"), 0);
  EXPECT_EQ(db_.Execute("Insert into ContestDXC values ('I')"), 1);
  EXPECT_EQ(db_.Execute("Insert into ContestExc values ('12')"), 1);
  EXPECT_EQ(Joined(Select(db_, "SELECT count(*) FROM ContestWWL")), "|1");
}

TEST_F(WritingTest, TheStagingTableTakesTheColumnsOfTheLog) {
  EXPECT_EQ(db_.Execute("INSERT INTO SLog SELECT * FROM Log WHERE Country<>'' ORDER BY "
                        "Country,QslRicevuta"),
            5);
  const auto rows = db_.OpenSnapshot("SELECT * FROM SLog ORDER BY Country,QslRicevuta");
  EXPECT_EQ(rows->Field("Call").Text(), "I3ABC");
  EXPECT_EQ(rows->Field("DataQso"), engine::Value(base::DateTime::Of(2001, 2, 3, 10, 0)));
  EXPECT_EQ(rows->Field("QslRicevuta"), engine::Value(true));
}

TEST_F(WritingTest, TheStagingTableKeepsTheOrderInWhichItWasFilled) {
  db_.Execute("INSERT INTO SLog SELECT * FROM Log WHERE Qrb<1000 ORDER BY Qrb");
  EXPECT_EQ(Joined(Select(db_, "select QsoNr from SLog")), "|2|1|4");
}

TEST_F(WritingTest, TheStagingTableOfNotesTakesTwoColumns) {
  EXPECT_EQ(db_.Execute("INSERT INTO SNote SELECT Note,QslRicevuta FROM Log WHERE Note LIKE "
                        "'*SOTA*'"),
            2);
  EXPECT_EQ(Joined(Select(db_, "SELECT * FROM SNote")),
            "|prova [SOTA I/VE-1] fine|SOTA senza parentesi");
}

TEST_F(WritingTest, AnInsertNamesItsColumnsInAnyOrder) {
  EXPECT_EQ(db_.Execute("INSERT INTO Modi (Modo, Codice) VALUES ('FM', 3)"), 1);
  EXPECT_EQ(Joined(Select(db_, "select Codice from Modi where Modo='FM'")), "|3");
}

TEST_F(WritingTest, WrittenValuesTakeTheColumnsType) {
  db_.Execute(
      "INSERT INTO Log (DataQso, Call, Qrb, Frequenza, QslInviata, Note) "
      "VALUES ('05/06/2001 10:20:30', 77, '12', '14.25', 1, DateValue('01/02/2001'))");
  const auto rows = db_.OpenSnapshot("select * from Log where Call='77'");
  EXPECT_EQ(rows->Field("DataQso"), engine::Value(base::DateTime::Of(2001, 6, 5, 10, 20, 30)));
  EXPECT_EQ(rows->Field("Qrb"), engine::Value(12));
  EXPECT_EQ(rows->Field("Frequenza"), engine::Value(14.25));
  EXPECT_EQ(rows->Field("QslInviata"), engine::Value(true));
  EXPECT_EQ(rows->Field("Note"), engine::Value("01/02/2001"));
}

TEST_F(WritingTest, AValueThatDoesNotFitWritesNothing) {
  EXPECT_EQ(ErrorOf([&] { db_.Execute("UPDATE Log SET Qrb='molti'"); }), 3421);
  EXPECT_EQ(ErrorOf([&] { db_.Execute("UPDATE Log SET Qrb=Call"); }), 3421);
  EXPECT_EQ(ErrorOf([&] { db_.Execute("UPDATE Log SET DataQso=Call"); }), 3421);
  EXPECT_EQ(ErrorOf([&] { db_.Execute("INSERT INTO Modi VALUES ('x', 'FM')"); }), 3421);
  EXPECT_EQ(Joined(Select(db_, "select Qrb from Log where QsoNr=1")), "|20");
}

TEST_F(WritingTest, AnUpdateThatRepeatsAKeyIsToldAndWritesNothing) {
  EXPECT_EQ(ErrorOf([&] { db_.Execute("UPDATE Modi SET Codice=7"); }), 3022);
  EXPECT_EQ(Joined(Select(db_, "select Codice from Modi order by Codice")), "|1|2");
}

TEST_F(WritingTest, NamesHaveNoCase) {
  EXPECT_EQ(db_.Execute("update Log set LOG.Note='a', [log].[NOTE]='b', log.QRB=Log.qrb+1 "
                        "where lOg.qsonr=1 and LOG.Call='I3ABC'"),
            1);
  EXPECT_EQ(Joined(Select(db_, "select note & Qrb from LOG where log.QSONR=1")), "|b21");
  EXPECT_EQ(db_.Execute("insert into MODI (CODICE, modo) values (3, 'FM')"), 1);
  EXPECT_EQ(db_.Execute("DELETE * FROM modi WHERE Modi.CODICE=3 AND MODI.modo='fm'"), 1);
  EXPECT_EQ(ErrorOf([&] { db_.Execute("update Log set Modi.Note='b'"); }), 3075);
}

TEST_F(WritingTest, ColumnsAreComputedFromOthers) {
  EXPECT_EQ(db_.Execute("UPDATE Log SET Prefisso=Left(Call,2)+'-', Qrb=Qrb*2+1 WHERE QsoNr=1"), 1);
  EXPECT_EQ(Joined(Select(db_, "select Prefisso & Qrb from Log where QsoNr=1")), "|I3-41");
}

}  // namespace
}  // namespace brenvo::file
