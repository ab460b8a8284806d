#include "upkeep/time_conversion.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <map>
#include <random>

#include "core/log_time.h"
#include "core/own_values.h"
#include "history/take_back.h"
#include "tests/support/station.h"

namespace brenvo::upkeep {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

class TimeConversionTest : public StationTest {
 protected:
  TimeConversionTest() { core::StoreLogTime(session, core::LogTime::kLocal); }

  void Log(std::string_view iso, std::string_view call, std::string_view banda = " 20 m") {
    Exec(fmt::format("insert into Log (DataQso,Call,Banda) values ('{}','{}','{}')", iso, call,
                     banda));
  }
  TimeConversion Plan() {
    return PlanConversion(session, [](std::int64_t) { return true; }).value_or(TimeConversion());
  }
  bool Convert() {
    return ConvertLog(session, Plan(), [](std::int64_t) { return true; });
  }
  Texts Times() {
    Texts texts;
    const auto rows = session.Db.OpenSnapshot("select Call,DataQso from Log order by QsoNr");
    for (; !rows->EOF_(); rows->MoveNext()) {
      texts.push_back(rows->Field(0).Text() + ' ' + base::IsoText(rows->Field(1).Date()));
    }
    return texts;
  }
};

TEST_F(TimeConversionTest, ThePlanTellsHowManyAndFromWhenToWhenAndTouchesNothing) {
  Log("2024-07-01 12:00:00", "IK3AAA");
  Log("2024-01-15 12:00:00", "IK3BBB");
  const Texts before = Times();
  const TimeConversion plan = Plan();
  EXPECT_EQ(plan.contacts, 2);
  EXPECT_EQ(base::IsoText(*plan.first), "2024-01-15 12:00:00");
  EXPECT_EQ(base::IsoText(*plan.last), "2024-07-01 12:00:00");
  EXPECT_THAT(plan.doubtful, IsEmpty());
  EXPECT_EQ(Times(), before);
  EXPECT_EQ(core::LogTimeOf(session), core::LogTime::kLocal);
}

TEST_F(TimeConversionTest, AnEmptyLogOnlyBecomesOneInUtc) {
  EXPECT_EQ(Plan().contacts, 0);
  EXPECT_EQ(Plan().first, std::nullopt);
  EXPECT_TRUE(Convert());
  EXPECT_EQ(core::LogTimeOf(session), core::LogTime::kUtc);
}

TEST_F(TimeConversionTest, SecondsAndMidnightAreKept) {
  Log("2024-01-15 01:00:00", "IK3AAA");
  Log("2024-07-02 01:30:15", "IK3BBB");
  EXPECT_TRUE(Convert());
  EXPECT_THAT(Times(), ElementsAre("IK3AAA 2024-01-15 00:00:00", "IK3BBB 2024-07-01 23:30:15"));
}

// The same call on the same band, an hour and two apart: each goes where another one stood.
TEST_F(TimeConversionTest, NoTwoContactsMeetOnTheWay) {
  for (int hour = 0; hour < 24; ++hour) {
    Log(fmt::format("2024-03-30 {:02}:00:00", hour), "IK3AAA");
    if (hour != 2) Log(fmt::format("2024-03-31 {:02}:00:00", hour), "IK3AAA");
  }
  EXPECT_TRUE(Convert());
  const Texts times = Times();
  EXPECT_EQ(times.front(), "IK3AAA 2024-03-29 23:00:00");
  EXPECT_EQ(times.back(), "IK3AAA 2024-03-31 21:00:00");
}

TEST_F(TimeConversionTest, TheHourThatIsLeftOutIsListedAndKeptApartFromTheOneThatItLeadsTo) {
  Log("2024-03-31 03:10:00", "IK3AAA");
  Log("2024-03-31 03:10:01", "ik3aaa ", " 20 m  ");
  Log("2024-03-31 02:10:00", "IK3AAA");
  Log("2024-03-31 02:10:00", "IK3BBB");
  const TimeConversion plan = Plan();
  ASSERT_EQ(plan.doubtful.size(), 2u);
  EXPECT_EQ(plan.doubtful[0].call, "IK3AAA");
  EXPECT_EQ(plan.doubtful[0].kind, DoubtfulTime::Kind::kMoved);
  EXPECT_EQ(plan.doubtful[1].kind, DoubtfulTime::Kind::kMissing);
  EXPECT_TRUE(Convert());
  EXPECT_THAT(Times(), ElementsAre("IK3AAA 2024-03-31 01:10:00", "ik3aaa  2024-03-31 01:10:01",
                                   "IK3AAA 2024-03-31 01:10:02", "IK3BBB 2024-03-31 01:10:00"));
}

TEST_F(TimeConversionTest, TheHourThatComesTwiceIsListedAndIsTheOneThatIsChosen) {
  Log("2024-10-27 02:30:00", "IK3AAA");
  Log("2024-10-27 02:30:00", "IK3BBB");
  TimeConversion plan = Plan();
  ASSERT_EQ(plan.doubtful.size(), 2u);
  EXPECT_EQ(plan.doubtful[0].kind, DoubtfulTime::Kind::kTwice);
  EXPECT_EQ(base::IsoText(plan.doubtful[0].utc), "2024-10-27 00:30:00");
  std::swap(plan.doubtful[1].utc, *plan.doubtful[1].other);
  EXPECT_TRUE(ConvertLog(session, plan, [](std::int64_t) { return true; }));
  EXPECT_THAT(Times(), ElementsAre("IK3AAA 2024-10-27 00:30:00", "IK3BBB 2024-10-27 01:30:00"));
}

TEST_F(TimeConversionTest, WhatALogFileHasToldOfAnHourThatComesTwiceCounts) {
  Log("2024-10-27 02:30:00", "IK3AAA");
  Log("2024-10-27 02:30:00", "IK3BBB");
  Exec("insert into LogAdif (QsoNr,Campo,Valore) select QsoNr,'TIME_ON','0130' from Log");
  Exec(
      "update LogAdif set Valore='003000' where QsoNr in (select QsoNr from Log where "
      "Call='IK3AAA')");
  EXPECT_TRUE(Convert());
  EXPECT_THAT(Times(), ElementsAre("IK3AAA 2024-10-27 00:30:00", "IK3BBB 2024-10-27 01:30:00"));
}

TEST_F(TimeConversionTest, WhatIsNoMomentStaysAsItIs) {
  Exec("insert into Log (Call,Banda) values ('IK3AAA',' 20 m')");
  Exec("insert into Log (DataQso,Call,Banda) values ('12:00:00','IK3BBB',' 20 m')");
  Log("2024-01-15 12:00:00", "IK3CCC");
  const auto texts = [&] { return Rows("select Call,DataQso from Log order by QsoNr"); };
  const Texts before = texts();
  EXPECT_EQ(Plan().contacts, 1);
  EXPECT_TRUE(Convert());
  EXPECT_EQ(texts()[0], before[0]);
  EXPECT_EQ(texts()[1], before[1]);
  EXPECT_EQ(texts()[2], "IK3CCC|15/01/2024 11:00:00");
}

TEST_F(TimeConversionTest, ZonesThatAreBehindUtcGoTheOtherWayRound) {
  EXPECT_EQ(session.Choices.Set(core::choice::kZone, "Pacific/Apia"), "");
  for (int hour = 0; hour < 24; hour += 2) {
    Log(fmt::format("2010-05-01 {:02}:00:00", hour), "IK3AAA");
  }
  EXPECT_TRUE(Convert());
  EXPECT_EQ(Times().front(), "IK3AAA 2010-05-01 10:00:00");
  EXPECT_EQ(Times().back(), "IK3AAA 2010-05-02 08:00:00");
}

// On both sides of a day that was left out: contacts go towards each other.
TEST_F(TimeConversionTest, TimesThatGoBothWaysDoNotMeetEither) {
  EXPECT_EQ(session.Choices.Set(core::choice::kZone, "Pacific/Apia"), "");
  for (const int day : {28, 29, 31}) {
    for (int hour = 0; hour < 24; ++hour) {
      Log(fmt::format("2011-12-{} {:02}:00:00", day, hour), "IK3AAA");
    }
  }
  EXPECT_TRUE(Convert());
  const Texts times = Times();
  for (std::size_t i = 1; i < times.size(); ++i) {
    const auto at = [&](std::size_t n) { return base::ParseIso(times[n].substr(7))->Seconds(); };
    ASSERT_EQ(at(i), at(i - 1) + 3600) << times[i];
  }
  EXPECT_EQ(times.front(), "IK3AAA 2011-12-28 10:00:00");
}

// Whatever the log holds, each contact gets its moment, and none gets lost.
TEST_F(TimeConversionTest, AnyLogIsTurnedAsAPlainLoopWould) {
  std::mt19937 dice(20241027);
  const auto one = [&](int most) { return std::uniform_int_distribution<int>(0, most - 1)(dice); };
  std::map<std::string, std::string> stored;
  for (int i = 0; i < 600; ++i) {
    const char* const days[] = {"2024-03-30", "2024-03-31", "2024-10-26", "2024-10-27"};
    const std::string time = fmt::format("{} {:02}:{:02}:00", days[one(4)], one(5), 10 * one(6));
    const std::string call = fmt::format("IK{}", one(4));
    if (stored.emplace(call + time, "").second) Log(time, call);
  }
  const core::LocalTime local(session);
  std::map<std::int64_t, base::DateTime> expected;
  const auto rows = session.Db.OpenSnapshot("select QsoNr,DataQso from Log");
  for (; !rows->EOF_(); rows->MoveNext()) {
    expected[rows->Field(0).Integer()] = local.ToUtc(rows->Field(1).Date());
  }
  std::map<std::int64_t, bool> moved;
  for (const DoubtfulTime& each : Plan().doubtful) {
    if (each.kind == DoubtfulTime::Kind::kMoved) moved[each.qsoNr] = true;
  }
  EXPECT_FALSE(moved.empty());
  ASSERT_TRUE(Convert());
  const auto after = session.Db.OpenSnapshot("select QsoNr,DataQso from Log");
  for (; !after->EOF_(); after->MoveNext()) {
    const std::int64_t qsoNr = after->Field(0).Integer();
    const std::int64_t late = after->Field(1).Date().Seconds() - expected[qsoNr].Seconds();
    if (moved.contains(qsoNr)) {
      EXPECT_GT(late, 0);
      EXPECT_LT(late, 60);
    } else {
      EXPECT_EQ(late, 0);
    }
    expected.erase(qsoNr);
  }
  EXPECT_THAT(expected, IsEmpty());
}

TEST_F(TimeConversionTest, IsOneWorkThatAnnouncesItself) {
  Log("2024-01-15 01:00:00", "IK3AAA");
  Log("2024-01-15 02:00:00", "IK3AAA");
  int told = 0;
  const auto heard = session.Contacts.Subscribe([&](const core::ContactsChanged& change) {
    EXPECT_TRUE(change.Many());
    ++told;
  });
  EXPECT_TRUE(Convert());
  EXPECT_EQ(told, 1);
  EXPECT_THAT(Rows("select Titolo,Qso from Storia"), ElementsAre("Converti ora|2"));
}

TEST_F(TimeConversionTest, TakenBackItIsALogInLocalTimeAgainWithTheTimesOfBefore) {
  Log("2024-03-31 03:10:00", "IK3AAA");
  Log("2024-03-31 02:10:00", "IK3AAA");
  Log("2024-03-31 04:10:00", "IK3AAA");
  const Texts before = Times();
  EXPECT_TRUE(Convert());
  const Texts after = Times();
  EXPECT_EQ(history::TakeBack(session, history::LastWork(session).value()).left, 0);
  EXPECT_EQ(Times(), before);
  EXPECT_EQ(core::LogTimeOf(session), core::LogTime::kLocal);
  EXPECT_TRUE(Convert());
  EXPECT_EQ(Times(), after);
}

TEST_F(TimeConversionTest, OneThatIsStoppedLeavesEverythingAsItWas) {
  for (int i = 0; i < 600; ++i) {
    Log(fmt::format("2024-01-{:02} {:02}:{:02}:00", 1 + i / 60, i % 24, i % 60),
        fmt::format("IK{}", i));
  }
  const Texts before = Times();
  const TimeConversion plan = Plan();
  for (const std::int64_t stopAt : {0, 250, 500}) {
    EXPECT_FALSE(ConvertLog(session, plan, [&](std::int64_t done) { return done < stopAt; }));
    EXPECT_EQ(Times(), before);
    EXPECT_EQ(core::LogTimeOf(session), core::LogTime::kLocal);
    EXPECT_THAT(Rows("select Lavoro from Storia"), IsEmpty());
  }
  EXPECT_FALSE(PlanConversion(session, [](std::int64_t) { return false; }));
}

}  // namespace
}  // namespace brenvo::upkeep
