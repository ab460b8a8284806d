// How texts, dates, yes/no values and Nulls compare, and what expressions give.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CompareTest : public ::testing::Test {
 protected:
  void AddQth(const char* qth) {
    Add(db_, "Log", {{"Call", "I1AAA"}, {"Qth", qth}, {"Note", qth}, {"Provincia", qth}});
  }
  std::vector<std::string> Where(const std::string& condition) {
    return Select(db_, "select QsoNr from Log where " + condition);
  }
  // The value of an expression over one empty row.
  std::string Of(const std::string& expression) {
    if (Select(db_, "select count(*) from SNote") == std::vector<std::string>{"0"}) {
      db_.Execute("INSERT INTO SNote (Note) VALUES ('nota')");
    }
    return Select(db_, "select " + expression + " from SNote").at(0);
  }

  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

TEST_F(CompareTest, CaseAndTrailingBlanksDoNotCount) {
  for (const char* text : {"Roma", "ROMA ", "roma   ", " Roma", "Rom"}) AddQth(text);
  for (const char* column : {"Qth", "Provincia"}) {
    const std::string name = column;
    EXPECT_THAT(Where(name + "='roma'"), ElementsAre("1", "2", "3")) << name;
    EXPECT_THAT(Where("'ROMA  '=" + name), ElementsAre("1", "2", "3")) << name;
    EXPECT_THAT(Where(name + "<>'roma'"), ElementsAre("4", "5")) << name;
    EXPECT_THAT(Where(name + " in ('ROMA  ','x')"), ElementsAre("1", "2", "3")) << name;
    EXPECT_THAT(Where(name + " not in ('ROMA  ','x')"), ElementsAre("4", "5")) << name;
    EXPECT_THAT(Where(name + " between 'ROM' and 'romz'"), ElementsAre("1", "2", "3", "5")) << name;
    EXPECT_THAT(Where(name + ">'ROM'"), ElementsAre("1", "2", "3")) << name;
    EXPECT_THAT(Where(name + " in (select Qth from Log where QsoNr=3)"), ElementsAre("1", "2", "3"))
        << name;
    EXPECT_THAT(Where(name + "=(select Qth from Log where QsoNr=2)"), ElementsAre("1", "2", "3"))
        << name;
    EXPECT_THAT(Select(db_, "select count(*) from Log group by " + name),
                ElementsAre("1", "1", "3"))
        << name;
    EXPECT_THAT(Select(db_, "select distinct " + name + " from Log order by " + name),
                ElementsAre(" Roma", "Rom", "Roma"))
        << name;
    EXPECT_THAT(Select(db_, "select UCase(max(" + name + ")) from Log"), ElementsAre("ROMA"))
        << name;
  }
}

TEST_F(CompareTest, BlanksInFrontCount) {
  AddQth("  2 m");
  EXPECT_THAT(Where("Qth='2 m'"), IsEmpty());
  EXPECT_THAT(Where("Qth='  2 m'"), ElementsAre("1"));
}

TEST_F(CompareTest, LettersOutsideAsciiCompareWithoutRegardToCase) {
  for (const char* text : {"Cantù", "CANTÙ ", "Cantu", "Forlì"}) AddQth(text);
  for (const char* column : {"Qth", "Provincia"}) {
    const std::string name = column;
    EXPECT_THAT(Where(name + "='cantÙ'"), ElementsAre("1", "2")) << name;
    EXPECT_THAT(Where(name + "<>'cantÙ'"), ElementsAre("3", "4")) << name;
    EXPECT_THAT(Where(name + " in ('CANTÙ','FORLÌ')"), ElementsAre("1", "2", "4")) << name;
    EXPECT_THAT(Where(name + " like 'cantÙ'"), ElementsAre("1", "2")) << name;
    EXPECT_THAT(Where(name + " like '*ù'"), ElementsAre("1", "2")) << name;
    EXPECT_THAT(Where(name + " like 'CANTÙ*'"), ElementsAre("1", "2")) << name;
  }
  EXPECT_THAT(Select(db_, "select count(*) from Log group by Qth order by Qth"),
              ElementsAre("1", "2", "1"));
}

TEST_F(CompareTest, UnindexedTextsSortLettersOutsideAsciiWithoutRegardToCase) {
  for (const char* text : {"ÈB", "èA", "Èa", "z"}) AddQth(text);
  EXPECT_THAT(Select(db_, "select QsoNr from Log order by Qth"), ElementsAre("4", "2", "3", "1"));
}

TEST_F(CompareTest, TiesKeepTheOrderOfEntry) {
  for (const char* text : {"b", "A", "B ", "a"}) AddQth(text);
  EXPECT_THAT(Select(db_, "select QsoNr from Log order by Qth"), ElementsAre("2", "4", "1", "3"));
  EXPECT_THAT(Select(db_, "select QsoNr from Log order by Qth desc"),
              ElementsAre("1", "3", "2", "4"));
}

TEST_F(CompareTest, NullEqualsNothingAndSortsFirst) {
  AddQth("Roma");
  Add(db_, "Log", {{"Call", "I1BBB"}});
  EXPECT_THAT(Where("Qth=''"), IsEmpty());
  EXPECT_THAT(Where("Qth<>'x'"), ElementsAre("1"));
  EXPECT_THAT(Where("Qth is null"), ElementsAre("2"));
  EXPECT_THAT(Where("Qth is not null"), ElementsAre("1"));
  EXPECT_THAT(Where("Qth like '*'"), ElementsAre("1"));
  EXPECT_THAT(Where("not Qth like '*'"), IsEmpty());
  EXPECT_THAT(Where("isnull(Qth)"), ElementsAre("2"));
  EXPECT_THAT(Where("Qth=null"), IsEmpty());
  EXPECT_THAT(Select(db_, "select QsoNr from Log order by Qth"), ElementsAre("2", "1"));
}

TEST_F(CompareTest, YesIsMinusOneAndSortsFirst) {
  AddContact(db_, 1, "I1AAA", "  2 m", "", false);
  AddContact(db_, 2, "I1BBB", "  2 m", "", true);
  EXPECT_THAT(Where("QslRicevuta"), ElementsAre("2"));
  EXPECT_THAT(Where("not QslRicevuta"), ElementsAre("1"));
  EXPECT_THAT(Where("QslRicevuta=True"), ElementsAre("2"));
  EXPECT_THAT(Where("QslRicevuta=-1"), ElementsAre("2"));
  EXPECT_THAT(Where("QslRicevuta=false"), ElementsAre("1"));
  EXPECT_THAT(Where("QslRicevuta=0"), ElementsAre("1"));
  EXPECT_THAT(Where("QslRicevuta<>true"), ElementsAre("1"));
  EXPECT_THAT(Where("(Call='I1BBB')=QslRicevuta"), ElementsAre("1", "2"));
  EXPECT_THAT(Select(db_, "select QsoNr from Log order by QslRicevuta"), ElementsAre("2", "1"));
  EXPECT_THAT(Select(db_, "select Call='i1aaa' from Log"), ElementsAre("-1", "0"));
}

TEST_F(CompareTest, AndBindsTighterThanOrAndNotTighterThanAnd) {
  for (const char* text : {"a", "b", "c"}) AddQth(text);
  EXPECT_THAT(Where("Qth='a' or Qth='b' and Qth='c'"), ElementsAre("1"));
  EXPECT_THAT(Where("(Qth='a' or Qth='b') and Qth<>'a'"), ElementsAre("2"));
  EXPECT_THAT(Where("not Qth='a' and Qth<>'b'"), ElementsAre("3"));
  EXPECT_THAT(Where("not (Qth='a' or Qth='b')"), ElementsAre("3"));
  EXPECT_THAT(Where("not not Qth='a'"), ElementsAre("1"));
}

TEST_F(CompareTest, TwoSignsHideNothingBehindThem) {
  for (const char* text : {"a", "b"}) AddQth(text);
  EXPECT_EQ(db_.Execute("DELETE FROM Log WHERE -True=1 and --True=-1 and -(1=1)=1 and Qth='b'"), 1);
  EXPECT_THAT(Select(db_, "select Qth from Log"), ElementsAre("a"));
}

TEST_F(CompareTest, ALiteralMayHoldAnything) {
  for (const char* text : {"it's", "SELECT; -- x", "[a]*?#", "\"q\""}) AddQth(text);
  EXPECT_THAT(Where("Qth='it''s'"), ElementsAre("1"));
  EXPECT_THAT(Where("Qth=\"it's\""), ElementsAre("1"));
  EXPECT_THAT(Where("Qth='select; -- X'"), ElementsAre("2"));
  EXPECT_THAT(Where("Qth='[a]*?#'"), ElementsAre("3"));
  EXPECT_THAT(Where("Qth='\"Q\"'"), ElementsAre("4"));
}

TEST_F(CompareTest, NamesMayStandInBracketsAndBehindTheTable) {
  Add(db_, "Log", {{"Zona CQ", 15}});
  EXPECT_THAT(Where("[zona cq]=15"), ElementsAre("1"));
  EXPECT_THAT(Where("Log.[Zona CQ]=15"), ElementsAre("1"));
  EXPECT_THAT(Where("[Log].[ZONA CQ]=15"), ElementsAre("1"));
  EXPECT_THAT(Select(db_, "select l.[Zona CQ] from [Log] as l where L.QsoNr=1"), ElementsAre("15"));
  EXPECT_THAT(Select(db_, "select [From] from Country"), IsEmpty());
}

TEST_F(CompareTest, DaysCompareWhateverTheTime) {
  for (const auto& [day, hour, minute] :
       {std::tuple{1, 23, 59}, {2, 0, 0}, {2, 23, 59}, {3, 0, 0}}) {
    Add(db_, "Log", {{"DataQso", base::DateTime::Of(2001, 2, day, hour, minute, 59 * (hour > 0))}});
  }
  Add(db_, "Log", {{"Call", "senza data"}});
  const std::string day = "DateValue('02/02/2001')";
  EXPECT_THAT(Where("DateValue(DataQso)=" + day), ElementsAre("2", "3"));
  EXPECT_THAT(Where(day + "=DateValue(DataQso)"), ElementsAre("2", "3"));
  EXPECT_THAT(Where("DateValue(DataQso)<>" + day), ElementsAre("1", "4"));
  EXPECT_THAT(Where("not DateValue(DataQso)=" + day), ElementsAre("1", "4"));
  EXPECT_THAT(Where("DateValue(DataQso)<" + day), ElementsAre("1"));
  EXPECT_THAT(Where("DateValue(DataQso)<=" + day), ElementsAre("1", "2", "3"));
  EXPECT_THAT(Where("DateValue(DataQso)>" + day), ElementsAre("4"));
  EXPECT_THAT(Where("DateValue(DataQso)>=" + day), ElementsAre("2", "3", "4"));
  EXPECT_THAT(Where(day + "<DateValue(DataQso)"), ElementsAre("4"));
  EXPECT_THAT(Where(day + ">=DateValue(DataQso)"), ElementsAre("1", "2", "3"));
  EXPECT_THAT(Where("DateValue(DataQso) between " + day + " and cvdate('03/02/2001')"),
              ElementsAre("2", "3", "4"));
  EXPECT_THAT(Where("DateValue(DataQso) not between " + day + " and " + day),
              ElementsAre("1", "4"));
  EXPECT_THAT(Where("DateValue(DataQso) in (" + day + ")"), ElementsAre("2", "3"));
}

TEST_F(CompareTest, ADateColumnComparesWithItsTime) {
  for (int minute : {0, 30}) {
    Add(db_, "Log", {{"DataQso", base::DateTime::Of(2001, 2, 2, 10, minute)}});
  }
  EXPECT_THAT(Where("DataQso=cvdate('02/02/2001 10:30')"), ElementsAre("2"));
  EXPECT_THAT(Where("DataQso>cvdate('02/02/2001 10:00:00')"), ElementsAre("2"));
  EXPECT_THAT(Where("DataQso>=DateValue('02/02/2001')"), ElementsAre("1", "2"));
  EXPECT_THAT(Where("cvdate(DataQso)<=cvdate('02/02/2001 10:00')"), ElementsAre("1"));
  EXPECT_THAT(Where("DateValue(DataQso)>=cvdate('02/02/2001 10:00')"), IsEmpty());
  EXPECT_THAT(Where("Year(DataQso)=2001 and Month(DataQso)=2 and Day(DataQso)=2"),
              ElementsAre("1", "2"));
}

TEST_F(CompareTest, DaysOfAnyFormThatOtherToolsWriteAreMet) {
  scratch_.Sql(
      "INSERT INTO Log (DataQso) VALUES ('2001-02-02'), ('2001-02-02 10:00'), "
      "('9999-12-31 23:59:59')");
  EXPECT_THAT(Where("DateValue(DataQso)=DateValue('02/02/2001')"), ElementsAre("1", "2"));
  EXPECT_THAT(Where("DateValue(DataQso)=DateValue('31/12/9999')"), ElementsAre("3"));
}

TEST_F(CompareTest, ATextThatIsNoDateIsAnError) {
  for (const char* text : {"__/__/____", "31/02/2001", "", "ieri", "2001"}) {
    const std::string value = std::string("('") + text + "')";
    EXPECT_EQ(ErrorOf([&] { Where("DateValue(DataQso)>=DateValue" + value); }), 3464) << text;
    EXPECT_EQ(ErrorOf([&] { Where("DateValue(DataQso)>= cvdate" + value); }), 3464) << text;
  }
}

TEST_F(CompareTest, ATextColumnWithADateReadsAsOne) {
  AddQth("05/06/2001");
  EXPECT_THAT(Where("DateValue(Qth)=DateValue('05/06/2001')"), ElementsAre("1"));
  AddQth("domani");
  EXPECT_EQ(ErrorOf([&] { Where("DateValue(Qth)=DateValue('05/06/2001')"); }), 3464);
}

TEST_F(CompareTest, TypesThatDoNotFitAreAnError) {
  for (const char* condition :
       {"QsoNr='5'", "Call=5", "DataQso='01/01/2001'", "DataQso=5", "Call", "DataQso", "'x'",
        "Call+1='x'", "Call*2=4", "-Call=1", "QsoNr in (1,'2')", "Left(QsoNr,1)='1'",
        "DataQso like '2001*'", "QsoNr between 'a' and 'b'", "Year(5)=1", "DateValue(5)=1"}) {
    EXPECT_EQ(ErrorOf([&] { Where(condition); }), 3464) << condition;
  }
}

TEST_F(CompareTest, ExpressionsGiveTheirValues) {
  const std::pair<const char*, const char*> cases[] = {
      {"1+2*3", "7"},
      {"(1+2)*3", "9"},
      {"7/2", "3.5"},
      {"-3", "-3"},
      {"- -3", "3"},
      {"--3", "3"},
      {"-True", "1"},
      {"--True+5", "4"},
      {"-(1=1)", "1"},
      {"2--True", "1"},
      {"1-2-3", "-4"},
      {".5+1.25e1", "13"},
      {"'a'+'b'", "ab"},
      {"Note+'!'", "nota!"},
      {"Note+Null", ""},
      {"Note & Null & 5", "nota5"},
      {"Left('abc',2)", "ab"},
      {"Left('abc',9)", "abc"},
      {"Left('ùàè',2)", "ùà"},
      {"Left(Note,0)", ""},
      {"Right('ùàè',2)", "àè"},
      {"Right('abc',0)", ""},
      {"Mid('abcd',2)", "bcd"},
      {"Mid('abcd',2,2)", "bc"},
      {"Len('ùàè ')", "4"},
      {"'['+Space(3)+']'", "[   ]"},
      {"'['+Trim('  a b  ')+']'", "[a b]"},
      {"UCase('cantù')", "CANTÙ"},
      {"LCase('CANTÙ')", "cantù"},
      {"Str(5)", " 5"},
      {"Val('12x')", "12"},
      {"IIf(1=1,'si','no')", "si"},
      {"True", "-1"},
      {"False", "0"},
      {"Null", ""},
      {"DateValue('03/02/2001')", "03/02/2001"},
      {"cvdate('03/02/2001 04:05')", "03/02/2001 04:05:00"},
      {"(select max(Note) from SNote)", "nota"},
      {"exists (select * from SNote)", "-1"},
      {"exists (select * from Modi)", "0"},
  };
  for (const auto& [expression, expected] : cases)
    EXPECT_EQ(Of(expression), expected) << expression;
}

TEST_F(CompareTest, GroupsAreCountedAndSifted) {
  for (const char* text : {"a", "A ", "b", "c", "C"}) AddQth(text);
  EXPECT_THAT(Select(db_, "select Qth from Log group by Qth having count(*)>1 order by Qth"),
              ElementsAre("a", "c"));
  EXPECT_THAT(Select(db_, "select sum(QsoNr) from Log group by Qth order by count(*) desc, Qth"),
              ElementsAre("3", "9", "3"));
  EXPECT_THAT(Select(db_, "select min(QsoNr)+max(QsoNr) from Log"), ElementsAre("6"));
}

TEST_F(CompareTest, AnOrderMayNameAColumnByItsPlace) {
  for (const char* text : {"b", "a"}) AddQth(text);
  EXPECT_THAT(Select(db_, "select Qth from Log order by 1"), ElementsAre("a", "b"));
  EXPECT_EQ(ErrorOf([&] { Select(db_, "select Qth from Log order by 2"); }), 3075);
}

TEST_F(CompareTest, ASubselectMayReferToTheRowOutside) {
  for (const auto& [manager, year] : {std::pair{"OLD", 1995}, {"NEW", 2000}}) {
    Add(db_, "qmgr", {{"call", "I3ABC"}, {"mgr", manager}, {"active", year}});
  }
  EXPECT_THAT(Select(db_,
                     "select mgr from qmgr as a where active=(select max(b.active) from qmgr "
                     "as b where b.call=a.call)"),
              ElementsAre("NEW"));
}

TEST_F(CompareTest, SeveralTablesJoinOnAText) {
  Add(db_, "Country", {{"Country", "I"}, {"Descrizione", "Italy"}});
  Add(db_, "Log", {{"Call", "I3ABC"}, {"Country", "i  "}});
  EXPECT_THAT(Select(db_, "select Descrizione from Log, Country as c where Log.Country=c.Country"),
              ElementsAre("Italy"));
  EXPECT_EQ(ErrorOf([&] { Select(db_, "select Country from Log, Country"); }), 3079);
  EXPECT_EQ(ErrorOf([&] { Select(db_, "select Call from Log, Log"); }), 3075);
}

}  // namespace
}  // namespace brenvo::file
