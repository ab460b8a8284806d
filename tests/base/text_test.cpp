#include "base/text.h"

#include <gtest/gtest.h>

namespace brenvo::base {
namespace {

TEST(Text, CountsCharactersAndNotBytes) {
  EXPECT_EQ(Len("Cantù"), 5u);
  EXPECT_EQ(Left("Cantù è", 5), "Cantù");
  EXPECT_EQ(Mid("èàù", 2, 1), "à");
  EXPECT_EQ(Right("Forlì", 2), "lì");
}

TEST(Text, IsAsciiWhereEveryByteIsACharacter) {
  EXPECT_TRUE(IsAscii(""));
  EXPECT_TRUE(IsAscii(std::string_view("a\0\x7F", 3)));
  EXPECT_FALSE(IsAscii("Cant\u00F9"));
  EXPECT_FALSE(IsAscii("\x80"));
}

TEST(Text, LeftOfAShortTextIsTheWholeText) { EXPECT_EQ(Left("I", 5), "I"); }

TEST(Text, MidPastTheEndIsEmpty) { EXPECT_EQ(Mid("abc", 9), ""); }

TEST(Text, TrimDropsBlanksAndNoOtherWhiteSpace) {
  EXPECT_EQ(Trim("  \tI3 ABC\t "), "\tI3 ABC\t");
  EXPECT_EQ(LTrim("  a "), "a ");
  EXPECT_EQ(RTrim("  a "), "  a");
  EXPECT_EQ(Trim("   "), "");
}

TEST(Text, PadRightGivesExactlyTheWidth) {
  EXPECT_EQ(PadRight("IS0", 5), "IS0  ");
  EXPECT_EQ(PadRight("è", 3), "è  ");
  EXPECT_EQ(PadRight("ABCDEFG", 5), "ABCDE");
}

TEST(Text, UpperAndLowerKnowAccentsGreekAndCyrillic) {
  EXPECT_EQ(Upper("cantù è čšž ß"), "CANTÙ È ČŠŽ ß");
  EXPECT_EQ(Lower("CANTÙ È ČŠŽ"), "cantù è čšž");
  EXPECT_EQ(Upper("αθήνα москва"), "ΑΘΉΝΑ МОСКВА");
  EXPECT_EQ(Lower("ΑΘΉΝΑ МОСКВА"), "αθήνα москва");
  EXPECT_EQ(Upper("×÷ÿ"), "×÷Ÿ");
}

TEST(Text, EveryUpperCaseLetterComesBackFromItsLowerCase) {
  for (char32_t c = 0x41; c < 0x530; ++c) {
    const char32_t lower = LowerChar(c);
    if (lower != c) {
      EXPECT_EQ(UpperChar(lower), c) << std::hex << static_cast<unsigned>(c);
    }
  }
}

TEST(Text, InStrCountsFromOneAndGivesZeroForNothing) {
  EXPECT_EQ(InStr("è [F2]", "[F2]"), 3u);
  EXPECT_EQ(InStr("abc", "x"), 0u);
  EXPECT_EQ(InStr(2, "aXaX", "X"), 2u);
  EXPECT_EQ(InStr(3, "aXaX", "X"), 4u);
}

TEST(Text, BytesThatAreNoTextBecomeReplacementCharacters) {
  EXPECT_EQ(ValidUtf8("a\xFF"
                      "b"),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(Characters("a\xFF").size(), 2u);
}

}  // namespace
}  // namespace brenvo::base
