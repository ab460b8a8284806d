#include "checks/similar_call.h"

#include <gmock/gmock.h>

namespace brenvo::checks {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SlipBetween, TellsWhichSlipOfTheHandMakesOneCallOfTheOther) {
  EXPECT_EQ(SlipBetween("IK3ABC", "IK3ABD"), "una lettera cambiata");
  EXPECT_EQ(SlipBetween("IK3ABC", "IK3AC"), "una lettera in meno");
  EXPECT_EQ(SlipBetween("IK3ABC", "IK3ABBC"), "una lettera in più");
  EXPECT_EQ(SlipBetween("IK3ABC", "IK3BAC"), "due lettere scambiate");
  EXPECT_EQ(SlipBetween("IK3ABC", "K3ABC"), "una lettera in meno");
  EXPECT_EQ(SlipBetween("IK3ABC", "IK3ABCD"), "una lettera in più");
}

TEST(SlipBetween, IsNoneForEqualCallsAndForTwoSlips) {
  for (const char* call : {"IK3ABC", "IK3CBA", "IK3A", "IK3ABCDE", "IK3ADE", "", "DL1XYZ"}) {
    EXPECT_EQ(SlipBetween("IK3ABC", call), "") << call;
  }
}

TEST(SimilarCalls, FindsEachCallThatIsOneSlipAwayOnce) {
  const std::vector<std::string_view> calls = {"DL1ABC", "IK3AABC", "IK3ABC", "IK3ABD", "IK3XYZ"};
  const SimilarCalls similar(calls);
  EXPECT_THAT(similar.Of("IK3ABE"), ElementsAre(2, 3));
  EXPECT_THAT(similar.Of("IK3BAC"), ElementsAre(2));
  EXPECT_THAT(similar.Of("IK3AC"), ElementsAre(2));
  EXPECT_THAT(similar.Of("IK3AAABC"), ElementsAre(1));
  EXPECT_THAT(similar.Of("IK3ABC"), ElementsAre(1, 3));
  EXPECT_THAT(similar.Of("OK1AA"), IsEmpty());
}

}  // namespace
}  // namespace brenvo::checks
