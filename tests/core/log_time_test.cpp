#include "core/log_time.h"

#include <gmock/gmock.h>

#include "core/own_values.h"
#include "tests/core/core_station.h"

namespace brenvo::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

base::DateTime Time(std::string_view iso) { return *base::ParseIso(iso); }
std::string Iso(base::DateTime time) { return base::IsoText(time); }

class LogTimeTest : public CoreStation {
 protected:
  std::vector<std::string> All(std::string_view local) {
    std::vector<std::string> texts;
    for (const base::DateTime each : LocalTime(session).AllUtc(Time(local))) {
      texts.push_back(Iso(each));
    }
    return texts;
  }
};

TEST_F(LogTimeTest, IsAValueOfTheDatabase) {
  EXPECT_EQ(LogTimeOf(session), std::nullopt);
  StoreLogTime(session, LogTime::kLocal);
  EXPECT_EQ(LogTimeOf(session), LogTime::kLocal);
  EXPECT_EQ(OwnValue(session.Db, "Ora"), "Locale");
  StoreLogTime(session, LogTime::kUtc);
  EXPECT_EQ(OwnValue(session.Db, "Ora"), "UTC");
  StoreOwnValue(session.Db, "Ora", "altro");
  EXPECT_EQ(LogTimeOf(session), std::nullopt);
}

TEST_F(LogTimeTest, IsAskedOnceAndNotAgainOnceItIsAnswered) {
  KnowChild("OraDelLog");
  int asked = 0;
  const auto ask = [&](std::function<void()> answer) {
    InDialogs([&, answer](forms::Window& dialog) {
      ++asked;
      answer();
      dialog.Close();
    });
    return AskLogTime(session);
  };
  EXPECT_EQ(ask([] {}), std::nullopt);
  EXPECT_EQ(ask([&] { StoreLogTime(session, LogTime::kLocal); }), LogTime::kLocal);
  EXPECT_EQ(AskLogTime(session), LogTime::kLocal);
  EXPECT_EQ(asked, 2);
}

TEST_F(LogTimeTest, LocalTimeIsAnHourOrTwoAheadInItaly) {
  const LocalTime local(session);
  EXPECT_EQ(Iso(local.OfUtc(Time("2024-01-15 00:00:00"))), "2024-01-15 01:00:00");
  EXPECT_EQ(Iso(local.OfUtc(Time("2024-07-01 23:30:15"))), "2024-07-02 01:30:15");
  EXPECT_EQ(Iso(local.ToUtc(Time("2024-07-02 01:30:15"))), "2024-07-01 23:30:15");
  EXPECT_EQ(Iso(local.ToUtc(Time("2024-01-01 00:00:00"))), "2023-12-31 23:00:00");
}

TEST_F(LogTimeTest, AnHourThatComesTwiceIsTakenAsTheEarlierOne) {
  EXPECT_THAT(All("2024-10-27 02:30:00"),
              ElementsAre("2024-10-27 00:30:00", "2024-10-27 01:30:00"));
  EXPECT_EQ(Iso(LocalTime(session).ToUtc(Time("2024-10-27 02:30:00"))), "2024-10-27 00:30:00");
  EXPECT_THAT(All("2024-10-27 03:00:00"), ElementsAre("2024-10-27 02:00:00"));
}

TEST_F(LogTimeTest, AnHourThatIsLeftOutIsTakenByTheTimeBeforeTheChange) {
  EXPECT_THAT(All("2024-03-31 02:30:00"), IsEmpty());
  EXPECT_EQ(Iso(LocalTime(session).ToUtc(Time("2024-03-31 02:30:00"))), "2024-03-31 01:30:00");
}

TEST_F(LogTimeTest, TheOperatorsZoneCounts) {
  EXPECT_EQ(session.Choices.Set(choice::kZone, "Pacific/Apia"), "");
  const LocalTime local(session);
  EXPECT_EQ(Iso(local.OfUtc(Time("2011-12-30 09:59:59"))), "2011-12-29 23:59:59");
  EXPECT_EQ(Iso(local.OfUtc(Time("2011-12-30 10:00:00"))), "2011-12-31 00:00:00");
  EXPECT_EQ(Iso(local.ToUtc(Time("2011-12-30 12:00:00"))), "2011-12-30 22:00:00");
}

TEST_F(LogTimeTest, ALogInUtcAndOneThatNobodyWasAskedAboutTakeTimesAsTheyAre) {
  const base::DateTime time = Time("2024-07-01 23:30:15");
  EXPECT_EQ(LogTimes(session).FromUtc(time), time);
  StoreLogTime(session, LogTime::kUtc);
  EXPECT_EQ(LogTimes(session).FromUtc(time), time);
  EXPECT_EQ(LogTimes(session).ToUtc(time), time);
  StoreLogTime(session, LogTime::kLocal);
  EXPECT_EQ(Iso(LogTimes(session).FromUtc(time)), "2024-07-02 01:30:15");
  EXPECT_EQ(LogTimes(session).ToUtc(LogTimes(session).FromUtc(time)), time);
}

}  // namespace
}  // namespace brenvo::core
