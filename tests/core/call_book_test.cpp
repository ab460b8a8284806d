#include "core/call_book.h"

#include <gmock/gmock.h>

#include "tests/support/station.h"

namespace brenvo::core {
namespace {

using ::testing::ElementsAre;

base::DateTime DayIn(int year) { return base::DateTime::Of(year, 7, 6); }

class CallBook : public StationTest {
 protected:
  std::vector<std::string> Known() {
    return Rows(
        "Select Call,Locator,Visto,Volte,Locator2,Visto2,Volte2,Fonti from Nominativi "
        "Order By Call");
  }
};

TEST_F(CallBook, WhatIsLearnedStandsBesideWhatIsKnown) {
  const LearnedCalls first = LearnCalls(
      session, {{"IK4ABC", {{"JN54MN", DayIn(2023), 1}}, kFromContestLog}, {"W1AW", {}, 4}});
  EXPECT_EQ(first.fresh, 2);
  const LearnedCalls second =
      LearnCalls(session, {{"IK4ABC", {{"JN54MN", DayIn(2024), 2}, {"JN63AA", {}, 1}}, 2}});
  EXPECT_EQ(second.fresh, 0);
  EXPECT_EQ(second.known, 1);
  EXPECT_THAT(Known(), ElementsAre("IK4ABC|JN54MN|06/07/2024|3|JN63AA||1|3", "W1AW|||||||4"));
  const auto known = FindKnownCall(session.Db, "ik4abc");
  ASSERT_TRUE(known);
  ASSERT_EQ(known->places.size(), 2u);
  EXPECT_EQ(known->places[0].seen, DayIn(2024));
  EXPECT_FALSE(known->places[1].seen);
  EXPECT_FALSE(FindKnownCall(session.Db, "IK4AB"));
  EXPECT_THAT(AllKnownCalls(session.Db), ElementsAre("IK4ABC", "W1AW"));
}

TEST_F(CallBook, OfMoreThanTwoPlacesTheLaterOnesStay) {
  LearnCalls(session, {{"IK4ABC", {{"JN54MN", DayIn(2020), 5}}, 1}});
  LearnCalls(session, {{"IK4ABC", {{"JN63AA", DayIn(2022), 1}}, 1}});
  LearnCalls(session, {{"IK4ABC", {{"JN70AA", DayIn(2024), 1}}, 1}});
  LearnCalls(session, {{"IK4ABC", {{"JN99AA", {}, 1}}, 1}});
  EXPECT_THAT(Known(), ElementsAre("IK4ABC|JN70AA|06/07/2024|1|JN63AA|06/07/2022|1|1"));
}

TEST_F(CallBook, ItHoldsNoMoreThanItsBoundAndTellsWhatIsLeftOut) {
  const LearnedCalls learned =
      LearnCalls(session, {{"A1A", {}, 4}, {"B1B", {}, 4}, {"C1C", {}, 4}}, 2);
  EXPECT_EQ(learned.fresh, 2);
  EXPECT_EQ(learned.beyond, 1);
  // A known one learns all the same.
  EXPECT_EQ(LearnCalls(session, {{"A1A", {{"JN54MN", {}, 1}}, 1}}, 2).known, 1);
  EXPECT_EQ(LearnCalls(session, {{std::string(40, 'A'), {}, 1}, {"", {}, 1}}).fresh, 0);
}

}  // namespace
}  // namespace brenvo::core
