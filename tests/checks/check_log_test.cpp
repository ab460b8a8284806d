#include "checks/check_log.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>

#include "mklog/log_maker.h"
#include "tests/support/station.h"

namespace brenvo::checks {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class CheckLogTest : public StationTest {
 protected:
  CheckLogTest() { machine.SetNow(base::DateTime::Of(2025, 1, 1, 12, 0, 0)); }

  // What a made-up log gets: contacts of decades, none of them wrong.
  void MakeLog(std::int64_t contacts) { mklog::MakeLog(directory.Path() / "Brenvo.mdb", contacts); }
  void Add(std::string_view columns, std::string_view values) {
    Exec(fmt::format("insert into Log ({}) values ({})", columns, values));
  }
  std::vector<std::string> Check() {
    const auto checked = CheckLog(session, FactsOf(session));
    EXPECT_TRUE(checked.has_value());
    std::vector<std::string> told;
    for (const Finding& each : checked->findings) {
      told.push_back(fmt::format("{}|{}|{}", each.qsoNr, each.rule, each.reason));
    }
    return told;
  }
};

TEST_F(CheckLogTest, FindsOnePlantedErrorOfEachKindAndNothingElse) {
  MakeLog(3000);
  std::vector<std::string> before = Check();
  // Who is worked very often comes again within minutes at times: this is no error of the maker.
  EXPECT_THAT(before, testing::Each(testing::HasSubstr("|Ripetuto|")));
  EXPECT_LT(before.size(), 60u);

  const auto Next = [this] {
    return session.Db.OpenSnapshot("select max(QsoNr) from Log")->Field(0).Integer() + 1;
  };
  const std::int64_t first = Next();
  Add("DataQso,Call,Banda,Modo,Frequenza", "'1970-01-01 10:00','IK3QQQ','  2 m','SSB',144.3");
  Add("DataQso,Call,Banda,Modo", "'1970-01-01 10:05','IK3QQQ','  2 m','FM'");
  for (int day = 2; day < 6; ++day) {
    Add("DataQso,Call,Banda,Modo,Locator",
        fmt::format("'1970-01-0{} 10:00','IK3QQQ','  2 m','SSB','JN55QQ'", day));
  }
  Add("DataQso,Call,Banda,Modo,Locator", "'1970-01-07 10:00','IK3QQA','  2 m','SSB','JN55QQ'");
  Add("DataQso,Call,Banda,Modo,Locator", "'1970-01-08 10:00','IK3QQQ','  2 m','SSB','JN80QQ'");
  Add("DataQso,Call,Country,Locator", "'1970-01-09 10:00','DL9QQQ','DL','JN91AA'");
  Add("DataQso,Call,Banda,Frequenza", "'1970-01-10 10:00','DL8QQQ',' 70cm',144.3");
  Add("DataQso,Call", "'2025-01-01 12:01','DL7QQQ'");
  Add("DataQso,Call,Country,Provincia", "'1970-01-11 10:00','IK7QQZ','I','QQ'");
  Add("DataQso,Call,Country", "'1970-01-12 10:00','DL6QQQ','OE'");

  std::vector<std::string> found = Check();
  std::erase_if(found, [&](const std::string& each) {
    return std::ranges::find(before, each) != before.end();
  });
  const auto Told = [&](int at, std::string_view what) {
    return fmt::format("{}|{}", first + at, what);
  };
  EXPECT_THAT(
      found,
      ElementsAre(
          Told(1,
               fmt::format("Ripetuto|5 minuti dopo il Qso {}, stessa banda e stesso modo", first)),
          Told(6,
               "Call simile|forse IK3QQQ, collegato spesso: una lettera cambiata, stesso locator"),
          Told(7, "Altro locator|JN80QQ è a 738 km da JN55QQ, dato in altri collegamenti"),
          Told(8, "Locator|JN91AA è fuori da DL Germania"),
          Told(9, "Banda|144.3 MHz non è nei 70cm, ma nei 2m"),
          Told(10, "Data|01/01/2025 12:01:00 deve ancora venire"),
          Told(11, "Provincia|QQ non è una provincia di I Italia"),
          Told(12, "Country|DL6QQQ è un nominativo di DL Germania, non di OE Austria")));
}

TEST_F(CheckLogTest, LooksAtTheContactsOfSomeCallsAlone) {
  Add("DataQso,Call,Banda", "'2001-01-01 10:00','IK3ABC','  2 m'");
  Add("DataQso,Call,Banda", "'2001-01-01 10:05','IK3ABC','  2 m'");
  Add("DataQso,Call,Country", "'2001-01-01 10:00','DL1ABC','I'");
  Add("DataQso,Call,Country", "'2001-01-01 10:00','O''CALL','I'");
  const CheckFacts facts = FactsOf(session);
  const CheckedLog one = CheckCalls(session, facts, {"ik3abc "});
  EXPECT_EQ(one.contacts, 2);
  ASSERT_THAT(one.findings, SizeIs(1));
  EXPECT_EQ(one.findings[0].qsoNr, 2);
  const CheckedLog both = CheckCalls(session, facts, {"IK3ABC", "DL1ABC"});
  EXPECT_EQ(both.contacts, 3);
  EXPECT_THAT(both.findings, SizeIs(2));
  EXPECT_EQ(CheckCalls(session, facts, {"O'CALL"}).contacts, 1);
  EXPECT_EQ(CheckCalls(session, facts, {}).contacts, 0);
}

TEST_F(CheckLogTest, TakesTheLatestTimeThatALogMayBeIn) {
  // The computer's clock is an hour ahead of UTC.
  const base::DateTime now = base::DateTime::Of(2025, 1, 1, 12);
  EXPECT_EQ(FactsOf(session).now, now);
  Exec("insert into Valori (Nome,Valore) values ('Ora','UTC')");
  EXPECT_EQ(FactsOf(session).now, now);
  EXPECT_EQ(session.Choices.Set(core::choice::kUtcInLog, "Sì"), "");
  EXPECT_EQ(FactsOf(session).now, session.Machine.GetClock().UtcNow());
  Exec("update Valori set Valore='Locale'");
  EXPECT_EQ(FactsOf(session).now, now);
}

TEST_F(CheckLogTest, ASecondConfirmationBesideTheCardCounts) {
  Exec("insert into LogAdif (QsoNr,Campo,Valore) values (7,'LOTW_QSL_RCVD','Y')");
  Exec("insert into LogAdif (QsoNr,Campo,Valore) values (8,'LOTW_QSL_RCVD','N')");
  const CheckFacts facts = FactsOf(session);
  EXPECT_TRUE(facts.confirmedBeside(7));
  EXPECT_FALSE(facts.confirmedBeside(8));
  EXPECT_FALSE(facts.confirmedBeside(9));
}

TEST_F(CheckLogTest, ComparesNoLocatorWithACountryWhereTheFileIsMissing) {
  Add("DataQso,Call,Country,Locator", "'2001-01-01 10:00','DL9QQQ','DL','JN91AA'");
  EXPECT_THAT(Check(), SizeIs(1));
  std::filesystem::remove(session.File(kExtentsFile));
  EXPECT_FALSE(FactsOf(session).hasExtents);
  EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckLogTest, AFindingThatIsLetStandComesBackWhenItsReasonChanges) {
  const Finding finding{7, rule::kDate, "il motivo dell'altro"};
  EXPECT_FALSE(LetStandFindings(session).Holds(finding));
  LetStand(session, finding);
  LetStand(session, finding);
  EXPECT_THAT(Rows("select QsoNr,Regola,Motivo from Verificati"),
              ElementsAre("7|Data|il motivo dell'altro"));
  EXPECT_TRUE(LetStandFindings(session).Holds(finding));
  EXPECT_FALSE(LetStandFindings(session).Holds({7, rule::kDate, "un altro motivo"}));
  EXPECT_FALSE(LetStandFindings(session).Holds({7, rule::kBand, "il motivo dell'altro"}));
  EXPECT_FALSE(LetStandFindings(session).Holds({8, rule::kDate, "il motivo dell'altro"}));
  LookAgain(session, finding);
  EXPECT_FALSE(LetStandFindings(session).Holds(finding));
}

}  // namespace
}  // namespace brenvo::checks
