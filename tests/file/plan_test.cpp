// What the statements of each keystroke cost: an index serves them, and they are compiled once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

struct Plan {
  const char* statement;
  const char* search;
};

class PlanTest : public ::testing::TestWithParam<Plan> {
 protected:
  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

TEST_P(PlanTest, AnIndexServesIt) {
  const std::string plan = db_.QueryPlan(GetParam().statement);
  EXPECT_THAT(plan, HasSubstr(GetParam().search)) << GetParam().statement;
  EXPECT_THAT(plan, Not(HasSubstr("SCAN"))) << GetParam().statement;
}

constexpr Plan kKeystrokes[] = {
    {"select Call from Log where Call='I3ABC' and QslRicevuta=true and Banda='  2 m' and QsoNr<> 9",
     "SEARCH Log USING INDEX Log.CallBanda (<expr>=? AND <expr>=? AND QslRicevuta=?)"},
    {"select Call from Log where Call='I3ABC' and Banda='  2 m' and QsoNr<> 9",
     "SEARCH Log USING INDEX Log.CallBanda (<expr>=? AND <expr>=?)"},
    {"select mgr from qmgr where call='I3ABC' and active=(select max(active) from qmgr where "
     "call='I3ABC' and active<= 2001)",
     "SEARCH qmgr USING INDEX qmgr.call (<expr>=? AND active=?)"},
    {"SELECT * FROM Log where Call='I3ABC' ORDER By DataQso DESC,QsoNr",
     "SEARCH Log USING INDEX Log.Call"},
    {"select Call from Log where Locator like 'JN65*' and QslRicevuta=true and Banda='  2 m' and "
     "QsoNr<> 9",
     "SEARCH Log USING INDEX Log.SquareBanda (<expr>=? AND <expr>=? AND QslRicevuta=?)"},
    {"select Call from Log where Locator like 'JN65*' and Banda='  2 m' and QsoNr<> 9",
     "SEARCH Log USING INDEX Log.SquareBanda (<expr>=? AND <expr>=?)"},
    {"SELECT * FROM Log where Locator like 'JN65*' and Banda='  2 m' ORDER By DataQso DESC,QsoNr",
     "SEARCH Log USING INDEX Log.SquareBanda (<expr>=? AND <expr>=?)"},
    {"select Call from Log where Country='I' and QslRicevuta=true and Banda='  2 m' and QsoNr<> 9",
     "SEARCH Log USING INDEX Log.CountryBanda (<expr>=? AND <expr>=? AND QslRicevuta=?)"},
    {"select Call from Log where Country='I' and Banda='  2 m' and QsoNr<> 9",
     "SEARCH Log USING INDEX Log.CountryBanda (<expr>=? AND <expr>=?)"},
    {"Select left(Provincia+space(5),5)+Descrizione as Campo from Provincie where Country='I    '",
     "SEARCH Provincie USING INDEX Provincie.PrimaryKey (<expr>=?)"},
    {"Select ProgrDato FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('02/06/2001') AND "
     "Banda='  2 m' AND Call='I3ABC' AND ProgrDato<>2",
     "SEARCH Contest Qso USING INDEX Contest Qso."},
    {"SELECT max(ProgrDato) FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('02/06/2001')"
     " AND Banda='  2 m'",
     "(DataContest>? AND DataContest<?)"},
    {"SELECT * FROM [Contest Qso] WHERE DateValue(DataContest)=DateValue('02/06/2001') AND "
     "Banda='  2 m' order by ProgrDato",
     "(DataContest>? AND DataContest<?)"},
};
INSTANTIATE_TEST_SUITE_P(Keystrokes, PlanTest, ::testing::ValuesIn(kKeystrokes));

constexpr Plan kMatrix[] = {
    {"select count(*) from Log where Call='I3ABC' and Banda='  2 m' and QslRicevuta",
     "INDEX Log.CallBanda (<expr>=? AND <expr>=? AND QslRicevuta=?)"},
    {"select count(*) from Log where Locator like 'JN65*' and Banda='  2 m' and QslRicevuta",
     "INDEX Log.SquareBanda (<expr>=? AND <expr>=? AND QslRicevuta=?)"},
    {"select count(*) from Log where Country='I' and Banda='  2 m' and QslRicevuta",
     "INDEX Log.CountryBanda (<expr>=? AND <expr>=? AND QslRicevuta=?)"},
    {"select count(*) from Log where Prefisso='I3' and Banda='  2 m' and QslRicevuta",
     "INDEX Log.PrefissoBanda (<expr>=? AND <expr>=? AND QslRicevuta=?)"},
    {"select count(*) from Log where [Zona CQ]= 15 and Banda='  2 m' and QslRicevuta",
     "INDEX Log.ZonaCQBanda (Zona CQ=? AND <expr>=? AND QslRicevuta=?)"},
    {"select count(*) from Log where [Zona ITU]= 28 and Banda='  2 m' and QslRicevuta",
     "INDEX Log.ZonaITUBanda (Zona ITU=? AND <expr>=? AND QslRicevuta=?)"},
    {"select count(*) from Log where Continente='EU' and Banda='  2 m' and QslRicevuta",
     "INDEX Log.ContinenteBanda (<expr>=? AND <expr>=? AND QslRicevuta=?)"},
    {"select Call from Log where Locator like 'JN65*' and Banda='  2 m' and QslRicevuta=false and "
     "Modo='SSB'",
     "INDEX Log.SquareBanda (<expr>=? AND <expr>=? AND QslRicevuta=? AND <expr>=?)"},
    {"select Call from Log where Country='I' and Modo='SSB' and QslRicevuta and banda='  2 m'",
     "INDEX Log.CountryBanda (<expr>=? AND <expr>=? AND QslRicevuta=? AND <expr>=?)"},
    {"select Call from Log where [Zona CQ]= 15 and Banda='  2 m' and QslRicevuta and Modo='SSB'",
     "INDEX Log.ZonaCQBanda (Zona CQ=? AND <expr>=? AND QslRicevuta=? AND <expr>=?)"},
    {"select Call from Log where Continente='EU' and Banda='  2 m' and QslRicevuta=false and "
     "Modo='SSB'",
     "INDEX Log.ContinenteBanda (<expr>=? AND <expr>=? AND QslRicevuta=? AND <expr>=?)"},
    {"Select * from Log WHERE left(Locator,4)='JN65' and QslRicevuta=false order by DataQso desc",
     "INDEX Log.SquareBanda (<expr>=?)"},
    {"SELECT * FROM Log WHERE Call LIKE 'I3*' ORDER BY Call",
     "INDEX Log.Call (<expr>>? AND <expr><?)"},
    {"SELECT * FROM Log WHERE Locator LIKE 'JN*' ORDER BY DataQso",
     "INDEX Log.SquareBanda (<expr>>? AND <expr><?)"},
    {"SELECT * FROM Log WHERE Locator='JN65FR' ORDER BY DataQso",
     "INDEX Log.SquareBanda (<expr>=?)"},
    {"SELECT * FROM Log WHERE DateValue(DataQso)>=DateValue('01/01/2001') AND "
     "DateValue(DataQso)<=DateValue('02/01/2001') ORDER BY DataQso",
     "INDEX Log.DataQso (DataQso>? AND DataQso<?)"},
    {"select X,Y from ProvincieItaliane where Provincia='PD'",
     "INDEX ProvincieItaliane.PrimaryKey (<expr>=?)"},
    {"SELECT count(*) FROM ContestWWL where WWL='JN65'", "INDEX ContestWWL.PrimaryKey (<expr>=?)"},
};
INSTANTIATE_TEST_SUITE_P(Matrix, PlanTest, ::testing::ValuesIn(kMatrix));

class CostTest : public ::testing::Test {
 protected:
  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

TEST_F(CostTest, TheLogOpensInItsOrderWithoutSorting) {
  EXPECT_THAT(db_.QueryPlan("SELECT QsoNr FROM Log ORDER By DataQso,QsoNr"),
              Not(HasSubstr("TEMP B-TREE")));
  EXPECT_THAT(db_.QueryPlan("SELECT * FROM Log ORDER By DataQso,QsoNr"),
              HasSubstr("USING INDEX Log.DataQso"));
}

TEST_F(CostTest, StatementsThatDifferInLiteralsAloneAreCompiledOnce) {
  const auto type = [&](const std::string& call, int number) {
    db_.OpenSnapshot("select Call from Log where Call='" + call +
                     "' and QslRicevuta=true and Banda='  2 m' and QsoNr<> " +
                     std::to_string(number));
    db_.OpenSnapshot("select Call from Log where Locator like '" + call + "*' and Banda='" + call +
                     "'");
  };
  type("I3AB", 1);
  const engine::EngineCounters before = db_.Counters();
  for (const char* call : {"W1AW", "IK2X", "9A5Y"}) type(call, call[1]);
  EXPECT_EQ(db_.Counters().prepared, before.prepared);
  EXPECT_EQ(db_.Counters().statements, before.statements + 6);
}

TEST_F(CostTest, WritesOfRecordsAreCompiledOnce) {
  AddContact(db_, 1, "I1AAA");
  const auto before = db_.Counters().prepared;
  for (int minute = 2; minute < 9; ++minute) AddContact(db_, minute, "I1AAA");
  EXPECT_EQ(db_.Counters().prepared, before);
}

TEST_F(CostTest, AStatementInUseIsCompiledForASecondReaderAlone) {
  for (int minute = 0; minute < 3; ++minute) AddContact(db_, minute, "I1AAA");
  const char* const select = "select * from Log order by DataQso";
  const auto first = db_.OpenSnapshot(select);
  const auto second = db_.OpenSnapshot(select);
  second->MoveLast();
  EXPECT_EQ(first->Field("QsoNr").Integer(), 1);
  first->MoveNext();
  EXPECT_EQ(first->Field("QsoNr").Integer(), 2);
  EXPECT_EQ(second->Field("QsoNr").Integer(), 3);
}

TEST_F(CostTest, ManyDifferentStatementsAreNotKeptForEver) {
  for (int n = 0; n < 400; ++n) {
    db_.OpenSnapshot("select Left(Call," + std::to_string(n) + ") from Log");
  }
  AddContact(db_, 1, "I1AAA");
  EXPECT_EQ(Select(db_, "select Left(Call,0) from Log"), std::vector<std::string>{""});
  EXPECT_EQ(Select(db_, "select Left(Call,2) from Log"), std::vector<std::string>{"I1"});
}

// Each of these steps reads a row or two, however many there are.
TEST_F(CostTest, SeeksAndMovesReadNoMoreRowsThanTheyShow) {
  db_.BeginTrans();
  for (int minute = 0; minute < 400; ++minute) {
    AddContact(db_, minute, ("I" + std::to_string(minute)).c_str());
  }
  db_.CommitTrans();
  const auto table = db_.OpenTable("Log");
  table->SetIndex("Call");
  const auto before = db_.Counters().rowsStepped;
  table->Seek("=", {"I200"});
  table->MoveNext();
  table->MovePrevious();
  table->Seek(">=", {"I300"});
  EXPECT_EQ(db_.Counters().rowsStepped - before, 4);
}

TEST_F(CostTest, FindingANumberReadsOneRow) {
  db_.BeginTrans();
  for (int minute = 0; minute < 400; ++minute) AddContact(db_, minute, "I1AAA");
  db_.CommitTrans();
  const auto rows = db_.OpenDynaset("SELECT * FROM Log ORDER By DataQso,QsoNr");
  rows->MoveLast();
  const auto before = db_.Counters().rowsStepped;
  rows->FindFirst("QsoNr= 250");
  EXPECT_EQ(db_.Counters().rowsStepped - before, 1);
  EXPECT_EQ(rows->GetBookmark().key, 250);
}

}  // namespace
}  // namespace brenvo::file
