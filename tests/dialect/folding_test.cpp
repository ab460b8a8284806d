#include "dialect/folding.h"

#include <gtest/gtest.h>

namespace brenvo::dialect {
namespace {

TEST(FoldingTest, AllLettersFoldAndNotThoseOfAsciiAlone) {
  EXPECT_EQ(CompareFolded("Cantù", "CANTÙ"), 0);
  EXPECT_LT(CompareFolded("cant", "CANTÙ"), 0);
  EXPECT_GT(CompareFolded("Ù", "é"), 0);
  EXPECT_LT(CompareFolded("B", "c"), 0);
  EXPECT_EQ(CompareFolded("", ""), 0);
}

TEST(FoldingTest, OnlyLettersBeyondAsciiThatHaveTwoCasesNeedIt) {
  EXPECT_TRUE(NeedsFolding("Cantù"));
  EXPECT_TRUE(NeedsFolding("È"));
  EXPECT_FALSE(NeedsFolding("Cantu"));
  EXPECT_FALSE(NeedsFolding("5 €"));
  EXPECT_FALSE(NeedsFolding(""));
}

}  // namespace
}  // namespace brenvo::dialect
