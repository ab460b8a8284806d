#include "core/entry.h"

#include "tests/support/station.h"

namespace brenvo::core {
namespace {

using Texts = std::vector<std::string>;
using EntryTest = StationTest;

TEST_F(EntryTest, BlanksAloneAreAnEmptyField) {
  EXPECT_TRUE(IsEmptyField(""));
  EXPECT_TRUE(IsEmptyField("   "));
  EXPECT_FALSE(IsEmptyField(" x "));
  EXPECT_FALSE(IsEmptyField("__:__"));
}

TEST_F(EntryTest, ATextThatIsNoDateIsTold) {
  EXPECT_TRUE(IsValidDate(session, "03/02/2001"));
  EXPECT_TRUE(Lines().empty());
  EXPECT_FALSE(IsValidDate(session, "31/02/2001"));
  EXPECT_EQ(Lines(), Texts{"message exclamation \"\" \"Data errata\""});
}

TEST_F(EntryTest, KeyFiltersLetTheirKeysThrough) {
  EXPECT_EQ(DigitsOnlyKey('7'), U'7');
  EXPECT_EQ(DigitsOnlyKey(forms::kBackspace), forms::kBackspace);
  EXPECT_EQ(DigitsOnlyKey('.'), 0u);
  EXPECT_EQ(DigitsOnlyKey('a'), 0u);
  for (char32_t key : {U'-', U'.', U',', U'0', forms::kBackspace}) EXPECT_EQ(NumericKey(key), key);
  EXPECT_EQ(NumericKey('e'), 0u);
  EXPECT_EQ(UpperKey(U'ò'), U'Ò');
}

}  // namespace
}  // namespace brenvo::core
