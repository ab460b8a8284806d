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

TEST(FoldingTest, CharactersOfEveryLengthAreTakenWhole) {
  EXPECT_EQ(CompareFolded("xÙ1", "XÙ1"), 0);
  EXPECT_LT(CompareFolded("Ж1", "ж2"), 0);  // two bytes each
  EXPECT_LT(CompareFolded("€1", "€2"), 0);  // three
  EXPECT_LT(CompareFolded("😀1", "😀2"), 0);  // four
  EXPECT_LT(CompareFolded("ÿ", "€"), 0);
  EXPECT_LT(CompareFolded("€", "😀"), 0);
  EXPECT_LT(CompareFolded("😀", "😁"), 0);
  EXPECT_LT(CompareFolded("ؿ", "ࠀ"), 0);  // the last of two bytes' kind before three
  EXPECT_GT(CompareFolded("Cantù", "Cant"), 0);
  EXPECT_LT(CompareFolded("Cant", "Cantù"), 0);
}

TEST(FoldingTest, ATextThatIsCutWithinACharacterIsReadToItsEnd) {
  EXPECT_NE(CompareFolded("a\xE2\x82", "a"), 0);
  EXPECT_EQ(CompareFolded("a\xE2\x82", "A\xE2\x82"), 0);
  EXPECT_FALSE(NeedsFolding("\x80"));
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
