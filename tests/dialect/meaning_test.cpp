// What statements mean, as the tree that is read from them, and which texts are none.
#include <gtest/gtest.h>

#include <string>

#include "dialect/plan.h"
#include "tests/dialect/written.h"
#include "tests/support/error_of.h"

namespace brenvo::dialect {
namespace {

const Schema& Tables() {
  static const Schema schema = [] {
    TableSchema log;
    log.name = "Log";
    log.columns = {{"QsoNr", "", ColumnType::kCounter},     {"Call", "", ColumnType::kText},
                   {"DataQso", "", ColumnType::kDateTime},  {"Mhz", "", ColumnType::kReal},
                   {"QslRicevuta", "", ColumnType::kYesNo}, {"Punti", "", ColumnType::kInteger}};
    log.keyColumn = 0;
    TableSchema bands;
    bands.name = "Band";
    bands.columns = {{"Banda", "", ColumnType::kText}, {"Punti", "", ColumnType::kInteger}};
    TableSchema contest;
    contest.name = "Contest Qso";
    contest.columns = {{"Call", "", ColumnType::kText}};
    return Schema({log, bands, contest});
  }();
  return schema;
}

std::string Selected(const std::string& select) {
  return Written(SelectPlan(Tables(), select).Select());
}
std::string Done(const std::string& action) {
  return Written(ActionPlan(Tables(), action).Statement());
}
std::string Evaluated(const std::string& expression) {
  const std::string select = "select " + expression + " from Log";
  const SelectPlan plan(Tables(), select);
  return Written(*plan.Select().items.at(0).value);
}
int ErrorOfValue(const std::string& expression) {
  return ErrorOf([&] { Evaluated(expression); });
}
int ErrorOfSelect(const std::string& select) {
  return ErrorOf([&] { Selected(select); });
}
int ErrorOfAction(const std::string& action) {
  return ErrorOf([&] { Done(action); });
}

struct Case {
  const char* text;
  const char* meaning;
};

TEST(MeaningTest, OfValues) {
  constexpr Case kCases[] = {
      {"1", "1i"},
      {"9223372036854775807", "9223372036854775807i"},
      {"9223372036854775808", "9.223372036854776e+18r"},
      {".5", "0.5r"},
      {"1.5e+3", "1500r"},
      {"2E-1", "0.2r"},
      {"'x'", "'x't"},
      {"''", "''t"},
      {"'d''A'", "'d'A't"},
      {"''''", "'''t"},
      {"'a''''b''c'", "'a''b'c't"},
      {"\"d'A\"\"b\"", "'d'A\"b't"},
      {"true", "yesy"},
      {"False", "noy"},
      {"null", "null?"},
      {"call", "Call:t"},
      {"[Call]", "Call:t"},
      {"log.call", "Log.Call:t"},
      {"[Log].[Mhz]", "Log.Mhz:r"},
      {"-1", "-1i"},
      {"- -1.5", "1.5r"},
      {"+1", "1i"},
      {"-Mhz", "(neg Mhz:r)r"},
      {"-true", "(neg yesy)i"},
      {"1+2*3", "(+ 1i (* 2i 3i)i)i"},
      {"(1+2)*3", "(* (+ 1i 2i)i 3i)i"},
      {"1-2-3", "(- (- 1i 2i)i 3i)i"},
      {"8/2*3", "(* (/ 8i 2i)r 3i)r"},
      {"Punti*Mhz", "(* Punti:i Mhz:r)r"},
      {"Punti+null", "(+ Punti:i null?)i"},
      {"'a'+'b'", "'ab't"},
      {"Call+'b'", "(+ Call:t 'b't)t"},
      {"'b'+null", "(+ 'b't null?)t"},
      {"Call & 1+2 & Mhz", "(& (& Call:t (+ 1i 2i)i)t Mhz:r)t"},
  };
  for (const Case& c : kCases) EXPECT_EQ(Evaluated(c.text), c.meaning) << c.text;
}

TEST(MeaningTest, OfConditions) {
  constexpr Case kCases[] = {
      {"Mhz=1", "(= Mhz:r 1i)y"},
      {"Mhz<>1", "(<> Mhz:r 1i)y"},
      {"Mhz<1", "(< Mhz:r 1i)y"},
      {"Mhz<=1", "(<= Mhz:r 1i)y"},
      {"Mhz>1", "(> Mhz:r 1i)y"},
      {"Mhz>=1", "(>= Mhz:r 1i)y"},
      {"Mhz=1=true", "(= (= Mhz:r 1i)y yesy)y"},
      {"QslRicevuta=1", "(= QslRicevuta:y 1i)y"},
      {"null=Call", "(= null? Call:t)y"},
      {"not QslRicevuta", "(not QslRicevuta:y)y"},
      {"not not QslRicevuta", "(not (not QslRicevuta:y)y)y"},
      {"1 or 2 and 3", "(or 1i (and 2i 3i)y)y"},
      {"1 or 2 or 3", "(or (or 1i 2i)y 3i)y"},
      {"1 and 2 and not 3=4", "(and (and 1i 2i)y (not (= 3i 4i)y)y)y"},
      {"Call is null", "(null Call:t)y"},
      {"Call is not null", "(not null Call:t)y"},
      {"Call like 'I*'", "(like Call:t 'I*'t)y"},
      {"Mhz not like '1*'", "(not like Mhz:r '1*'t)y"},
      {"Mhz between 1 and 2", "(between Mhz:r 1i 2i)y"},
      {"Mhz not between 1 and 2 and 1", "(and (not between Mhz:r 1i 2i)y 1i)y"},
      {"Call in ('A')", "(in Call:t 'A't)y"},
      {"Call not in ('A','B' & 'C')", "(not in Call:t 'A't (& 'B't 'C't)t)y"},
      {"Call in (select Banda from Band)", "(in Call:t select Banda:t from Band)y"},
      {"Call not in (select Banda from Band)", "(not in Call:t select Banda:t from Band)y"},
      {"exists (select 1 from Band)", "(exists select 1i from Band)y"},
      {"(select max(Punti) from Band)>1", "(> (sub select (Max Punti:i)i from Band)i 1i)y"},
  };
  for (const Case& c : kCases) EXPECT_EQ(Evaluated(c.text), c.meaning) << c.text;
}

TEST(MeaningTest, OfCalls) {
  constexpr Case kCases[] = {
      {"left(Call,2)", "(Left Call:t 2i)t"},
      {"RIGHT(Call,Punti)", "(Right Call:t Punti:i)t"},
      {"mid(Call,2)", "(Mid Call:t 2i)t"},
      {"mid(Call,2,3)", "(Mid Call:t 2i 3i)t"},
      {"len(trim(Call))", "(Len (Trim Call:t)t)i"},
      {"ltrim(rtrim(ucase(lcase(null))))", "(LTrim (RTrim (UCase (LCase null?)t)t)t)t"},
      {"space(1)+str(Mhz)", "(+ (Space 1i)t (Str Mhz:r)t)t"},
      {"val('1')+abs(-2)", "(+ (Val '1't)r (Abs -2i)r)r"},
      {"datevalue(DataQso)", "(DateValue DataQso:d)d"},
      {"cdate(Call)", "(CDate Call:t)d"},
      {"cvdate(null)", "(CVDate null?)d"},
      {"DateValue('03/02/2001')", "#2001-02-03 00:00:00#d"},
      {"cdate(datevalue('03/02/2001'))", "#2001-02-03 00:00:00#d"},
      {"Year(DataQso)+month(DataQso)+day('03/02/2001')",
       "(+ (+ (Year DataQso:d)i (Month DataQso:d)i)i (Day '03/02/2001't)i)i"},
      {"iif(QslRicevuta,1,2)", "(IIf QslRicevuta:y 1i 2i)i"},
      {"iif(1,'a',2)", "(IIf 1i 'a't 2i)?"},
      {"isnull(Call)", "(IsNull Call:t)y"},
      {"count(*)", "(Count *)i"},
      {"count(Call)", "(Count Call:t)i"},
      {"sum(Punti)", "(Sum Punti:i)r"},
      {"avg(Mhz*2)", "(Avg (* Mhz:r 2i)r)r"},
      {"max(DataQso)", "(Max DataQso:d)d"},
      {"min(Call)", "(Min Call:t)t"},
  };
  for (const Case& c : kCases) EXPECT_EQ(Evaluated(c.text), c.meaning) << c.text;
}

TEST(MeaningTest, OfSelects) {
  constexpr Case kCases[] = {
      {"select * from Band", "select Banda:t Punti:i from Band"},
      {"select *,Mhz as F from Log,Band",
       "select Log.QsoNr:i Log.Call:t Log.DataQso:d Log.Mhz:r Log.QslRicevuta:y Log.Punti:i "
       "Band.Banda:t Band.Punti:i Log.Mhz:r as F from Log, Band"},
      {"select b.*, l.Punti from Log l, Band as b where l.Punti=b.punti",
       "select b.Banda:t b.Punti:i l.Punti:i from Log as l, Band as b where (= l.Punti:i "
       "b.Punti:i)y"},
      {"select 1 from Log as [Contest Qso], [Contest Qso] c where c.call<>[Contest Qso].call",
       "select 1i from Log as Contest Qso, Contest Qso as c where (<> c.Call:t Contest "
       "Qso.Call:t)y"},
      {"select distinct Call,Mhz from Log order by Mhz desc,Call asc,2,1;",
       "select distinct Call:t Mhz:r from Log falling Mhz:r rising Call:t rising Mhz:r rising "
       "Call:t"},
      {"select Call,count(*) from Log group by Call,Mhz having count(*)>1 order by count(*) desc",
       "select Call:t (Count *)i from Log group Call:t group Mhz:r having (> (Count *)i 1i)y "
       "falling (Count *)i"},
      {"select Call from Log where Punti=(select max(Punti) from Band where Banda=Call)",
       "select Call:t from Log where (= Punti:i (sub select (Max Punti:i)i from Band where (= "
       "Banda:t Call:t)y)i)y"},
      {"select Call from Log where exists (select * from Band where Punti=Log.Punti)",
       "select Call:t from Log where (exists select Banda:t Punti:i from Band where (= Punti:i "
       "Log.Punti:i)y)y"},
  };
  for (const Case& c : kCases) EXPECT_EQ(Selected(c.text), c.meaning) << c.text;
}

TEST(MeaningTest, OfActions) {
  constexpr Case kCases[] = {
      {"insert into band values ('20',1+2)", "insert band [Banda] [Punti] '20't (+ 1i 2i)i"},
      {"insert into Band (punti) values (3);", "insert Band [punti] 3i"},
      {"insert into Band (Punti,Banda) select Punti,Call from Log where Mhz>1",
       "insert Band [Punti] [Banda] select Punti:i Call:t from Log where (> Mhz:r 1i)y"},
      {"insert into [Contest Qso] select Call from Log",
       "insert Contest Qso [Call] select Call:t from Log"},
      {"update Log set Mhz=Mhz*2, LOG.Call='A' where Punti=1",
       "update Log Mhz:=(* Mhz:r 2i)r Call:='A't where (= Punti:i 1i)y"},
      {"update Log set Punti=null", "update Log Punti:=null?"},
      {"delete * from Log", "delete Log"},
      {"delete from Log where Log.QslRicevuta", "delete Log where Log.QslRicevuta:y"},
  };
  for (const Case& c : kCases) EXPECT_EQ(Done(c.text), c.meaning) << c.text;
}

TEST(MeaningTest, ATextThatIsNoStatementIsRefused) {
  for (const char* text : {"",
                           ";",
                           "x",
                           "select",
                           "select from Log",
                           "select * Log",
                           "select * from",
                           "select 1,",
                           "select 1 from Log,",
                           "select 1 from Log where",
                           "select 1 from Log group Call",
                           "select 1 from Log group by",
                           "select 1 from Log order Call",
                           "select 1 from Log order by",
                           "select 1 from Log having 1",
                           "select 1 from Log as",
                           "select Call as from Log",
                           "select (1 from Log",
                           "select 1) from Log",
                           "select Call. from Log",
                           "select * from Log x y",
                           "select 1 from select",
                           "select Call like from Log",
                           "select Call not from Log",
                           "select Call not = 1 from Log",
                           "select Call is 1 from Log",
                           "select Call in 1 from Log",
                           "select Call in (1 from Log",
                           "select Call in () from Log",
                           "select Mhz between 1 or 2 from Log",
                           "select left(Call 2) from Log",
                           "select left(Call,2 from Log",
                           "select exists 1 from Log",
                           "select exists (select 1 from Log from Log",
                           "select 1e999 from Log",
                           "select 'x from Log",
                           "select (select 1 from Log from Log",
                           "select Call in (select Banda from Band from Log",
                           "select and(1) from Log",
                           "select count(*,1) from Log"}) {
    EXPECT_EQ(ErrorOfSelect(text), 3075) << text;
  }
  for (const char* text : {"insert Band values (1)",
                           "insert into values (1)",
                           "insert into Band",
                           "insert into Band ()",
                           "insert into Band (Punti",
                           "insert into Band (Punti,) values (1)",
                           "insert into Band (Punti) values",
                           "insert into Band (Punti) values 1",
                           "insert into Band (Punti) values (1",
                           "insert into Band (Punti) values ()",
                           "update Log",
                           "update Log Mhz=1",
                           "update Log set",
                           "update Log set Mhz",
                           "update Log set Mhz 1",
                           "update Log set Mhz=",
                           "update Log set Mhz=1,",
                           "update Log set Band.Punti=1",
                           "update Log set Log.=1",
                           "update Log set Mhz=1 where",
                           "delete Log",
                           "delete * Log",
                           "delete from",
                           "delete from Log where",
                           "delete from Log Mhz=1"}) {
    EXPECT_EQ(ErrorOfAction(text), 3075) << text;
  }
}

TEST(MeaningTest, OneStatementIsReadAndNoSecondOne) {
  EXPECT_EQ(ErrorOfSelect("select 1 from Log;"), 0);
  EXPECT_EQ(ErrorOfSelect("select 1 from Log; delete * from Log"), 3142);
  EXPECT_EQ(ErrorOfSelect("select 1 from Log; ;"), 3142);
  EXPECT_EQ(ErrorOfSelect("select 1 from Log delete * from Log"), 3075);
}

TEST(MeaningTest, ANameThatIsNoneIsToldAsWhatItShouldBe) {
  EXPECT_EQ(ErrorOfSelect("select * from Logg"), 3078);
  EXPECT_EQ(ErrorOfSelect("select Calll from Log"), 3061);
  EXPECT_EQ(ErrorOfSelect("select Band.Call from Log"), 3061);
  EXPECT_EQ(ErrorOfSelect("select Band.* from Log"), 3061);
  EXPECT_EQ(ErrorOfSelect("select Log.Call from Log as L"), 3061);
  EXPECT_EQ(ErrorOfSelect("select Punti from Log, Band"), 3079);
  EXPECT_EQ(ErrorOfSelect("select 1 from Log, log"), 3075);
  EXPECT_EQ(ErrorOfSelect("select 1 from Log, log as l"), 0);
  EXPECT_EQ(ErrorOfSelect("select Banda from Log where 1 in (select Punti from Band)"), 3061);
  EXPECT_EQ(ErrorOfValue("soundex(Call)"), 3085);
  EXPECT_EQ(ErrorOfAction("update Logg set Mhz=1"), 3078);
  EXPECT_EQ(ErrorOfAction("update Log set Mh=1"), 3061);
  EXPECT_EQ(ErrorOfAction("update Log set Mhz=Banda"), 3061);
  EXPECT_EQ(ErrorOfAction("delete from Log where Banda=1"), 3061);
  EXPECT_EQ(ErrorOfAction("insert into Band (Band) values (1)"), 3061);
  EXPECT_EQ(ErrorOfAction("insert into Band values (Banda,1)"), 3061);
}

TEST(MeaningTest, ValuesOfAnInsertAreAsManyAsItsColumns) {
  EXPECT_EQ(ErrorOfAction("insert into Band values (1)"), 3346);
  EXPECT_EQ(ErrorOfAction("insert into Band (Punti) values (1,2)"), 3346);
  EXPECT_EQ(ErrorOfAction("insert into Band select Call from Log"), 3346);
}

TEST(MeaningTest, TypesThatDoNotFitAreRefused) {
  for (const char* text : {"Call=1",
                           "Mhz='1'",
                           "DataQso=1",
                           "Call<Mhz",
                           "Mhz between 1 and 'x'",
                           "Mhz in (1,'x')",
                           "Call in (select Punti from Band)",
                           "DataQso like '1*'",
                           "Call like 1",
                           "not Call",
                           "1 and Call",
                           "DataQso or 1",
                           "Call-1",
                           "Call*2",
                           "Mhz/'2'",
                           "-Call",
                           "Call+1",
                           "DataQso+1",
                           "datevalue(Mhz)",
                           "cdate(true)",
                           "len(1)",
                           "left('a','b')",
                           "space('x')",
                           "year(1)",
                           "sum(Call)",
                           "iif(Call,1,2)",
                           "cvdate('x')",
                           "datevalue('x')"}) {
    EXPECT_EQ(ErrorOfValue(text), 3464) << text;
  }
  EXPECT_EQ(ErrorOfSelect("select 1 from Log where Call"), 3464);
  EXPECT_EQ(ErrorOfSelect("select 1 from Log group by Call having Call"), 3464);
  EXPECT_EQ(ErrorOfAction("delete from Log where DataQso"), 3464);
}

TEST(MeaningTest, AFunctionTakesAsManyArgumentsAsItsTableTells) {
  struct Arguments {
    const char* name;
    std::size_t fewest, most;
    const char* each;  // of a type that fits
  };
  constexpr Arguments kFunctions[] = {
      {"Left", 2, 2, "null"},  {"Right", 2, 2, "null"},     {"Mid", 2, 3, "null"},
      {"Len", 1, 1, "Call"},   {"Trim", 1, 1, "Call"},      {"LTrim", 1, 1, "Call"},
      {"RTrim", 1, 1, "Call"}, {"UCase", 1, 1, "Call"},     {"LCase", 1, 1, "Call"},
      {"Space", 1, 1, "1"},    {"Str", 1, 1, "1"},          {"Val", 1, 1, "Call"},
      {"Abs", 1, 1, "1"},      {"DateValue", 1, 1, "null"}, {"CVDate", 1, 1, "null"},
      {"CDate", 1, 1, "null"}, {"Year", 1, 1, "DataQso"},   {"Month", 1, 1, "DataQso"},
      {"Day", 1, 1, "Call"},   {"IIf", 3, 3, "1"},          {"IsNull", 1, 1, "1"},
      {"Count", 1, 1, "1"},    {"Sum", 1, 1, "1"},          {"Avg", 1, 1, "1"},
      {"Max", 1, 1, "1"},      {"Min", 1, 1, "1"},
  };
  for (const Arguments& each : kFunctions) {
    for (std::size_t count = 0; count < 5; ++count) {
      std::string call = std::string(each.name) + "(";
      for (std::size_t i = 0; i < count; ++i) call += std::string(i > 0 ? "," : "") + each.each;
      const bool fits = count >= each.fewest && count <= each.most;
      EXPECT_EQ(ErrorOfValue(call + ")"), fits ? 0 : 3075) << call;
    }
    const bool counts = std::string(each.name) == "Count";
    EXPECT_EQ(ErrorOfValue(std::string(each.name) + "(*)"), counts ? 0 : 3075) << each.name;
  }
}

TEST(MeaningTest, AnAggregateStandsOnlyWhereThereAreGroups) {
  EXPECT_EQ(ErrorOfSelect("select Call from Log where count(*)>1"), 3075);
  EXPECT_EQ(ErrorOfSelect("select Call from Log group by max(Mhz)"), 3075);
  EXPECT_EQ(ErrorOfSelect("select max(count(*)) from Log"), 3075);
  EXPECT_EQ(ErrorOfSelect("select left(max(Call),2) from Log order by max(Call)"), 0);
  EXPECT_EQ(ErrorOfSelect("select distinct Call,count(*) from Log group by Call"), 3075);
  EXPECT_EQ(ErrorOfSelect("select distinct 1+max(Mhz) from Log"), 3075);
  EXPECT_EQ(ErrorOfSelect("select distinct left(Call,2) from Log"), 0);
  EXPECT_EQ(ErrorOfAction("update Log set Mhz=max(Mhz)"), 3075);
  EXPECT_EQ(ErrorOfAction("delete from Log where max(Mhz)>1"), 3075);
  EXPECT_EQ(ErrorOfAction("insert into Band (Punti) values (count(*))"), 3075);
}

TEST(MeaningTest, AnAsteriskStandsForColumnsAndInCountOnly) {
  EXPECT_EQ(ErrorOfValue("1+Log.*"), 3075);
  EXPECT_EQ(ErrorOfSelect("select 1 from Log where Log.*"), 3075);
  EXPECT_EQ(ErrorOfSelect("select count(Log.*) from Log"), 3075);
}

TEST(MeaningTest, ASelectionInBracketsHasOneColumn) {
  EXPECT_EQ(ErrorOfValue("(select Punti,Banda from Band)"), 3075);
  EXPECT_EQ(ErrorOfValue("1 in (select * from Band)"), 3075);
}

TEST(MeaningTest, AnOrderByPlaceNamesAColumnOfTheResult) {
  EXPECT_EQ(ErrorOfSelect("select Call,Mhz from Log order by 0"), 3075);
  EXPECT_EQ(ErrorOfSelect("select Call,Mhz from Log order by 3"), 3075);
}

std::string Nested(int levels, const char* open, const char* close) {
  std::string text;
  for (int i = 0; i < levels; ++i) text += open;
  text += "1";
  for (int i = 0; i < levels; ++i) text += close;
  return text;
}

TEST(MeaningTest, DepthAndLengthHaveTheirBounds) {
  // The SELECT is the first level.
  for (const Case& each :
       {Case{"(", ")"}, Case{"abs(", ")"}, Case{"not ", ""}, Case{"- ", ""}, Case{"1 in (", ")"}}) {
    EXPECT_EQ(ErrorOfValue(Nested(49, each.text, each.meaning)), 0) << each.text;
    EXPECT_EQ(ErrorOfValue(Nested(50, each.text, each.meaning)), 3075) << each.text;
  }
  // What has ended no longer counts.
  EXPECT_EQ(ErrorOfValue(Nested(49, "(", ")") + "+" + Nested(49, "(", ")")), 0);
  std::string chain = "1";
  for (int i = 1; i < 400; ++i) chain += "+1";
  EXPECT_EQ(ErrorOfValue(chain), 0);
  EXPECT_EQ(ErrorOfValue(chain + "+1"), 3075);
  std::string longest = "select 1 from Log";
  longest.resize(65536, ' ');
  EXPECT_EQ(ErrorOfSelect(longest), 0);
  EXPECT_EQ(ErrorOfSelect(longest + " "), 3075);
}

TEST(MeaningTest, AFailureShowsWhereTheTextIsWrong) {
  const auto told = [](const std::string& select) -> std::string {
    try {
      Selected(select);
    } catch (const engine::DatabaseError& failure) {
      return failure.Description;
    }
    return "";
  };
  EXPECT_EQ(told("select Call frm Log"), "Errore di sintassi presso 'frm Log'.");
  EXPECT_EQ(told("select Call from"), "Errore di sintassi: l'istruzione non è completa.");
  EXPECT_EQ(told("select 'è' from Log where x wher 'una riga che finisce dopo i quaranta'"),
            "Errore di sintassi presso 'wher 'una riga che finisce dopo i quaran'.");
  EXPECT_EQ(told("select Band.* from Log"),
            "Parametri insufficienti: 'Band' non è il nome di una colonna.");
  EXPECT_EQ(told("select len() from Log"),
            "La funzione 'Len' ha un numero sbagliato di argomenti.");
}

}  // namespace
}  // namespace brenvo::dialect
