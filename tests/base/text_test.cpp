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

// All letters of the alphabets that callbooks bring, the upper case over the lower.
constexpr std::pair<std::string_view, std::string_view> kAlphabets[] = {
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ", "abcdefghijklmnopqrstuvwxyz"},
    {"ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŸ", "àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿ"},
    {"ĀĂĄĆĈĊČĎĐĒĔĖĘĚĜĞĠĢĤĦĨĪĬĮĲĴĶĹĻĽĿŁŃŅŇŊŌŎŐŒŔŖŘŚŜŞŠŢŤŦŨŪŬŮŰŲŴŶŹŻŽ",
     "āăąćĉċčďđēĕėęěĝğġģĥħĩīĭįĳĵķĺļľŀłńņňŋōŏőœŕŗřśŝşšţťŧũūŭůűųŵŷźżž"},
    {"ȀȂȘȚȞȢȤȲ", "ȁȃșțȟȣȥȳ"},
    {"ΆΈΉΊΌΎΏΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩΪΫ", "άέήίόύώαβγδεζηθικλμνξοπρστυφχψωϊϋ"},
    {"ЀЁЂЃЄЅІЇЈЉЊЋЌЍЎЏАБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ",
     "ѐёђѓєѕіїјљњћќѝўџабвгдежзийклмнопрстуфхцчшщъыьэюя"},
    {"ѠҀҊҐҾӐӢԮ", "ѡҁҋґҿӑӣԯ"},
    {"ḀṀẔẠẾỲỸỾ", "ḁṁẕạếỳỹỿ"},
};

TEST(Text, EachLetterOfTheAlphabetsHasItsOtherCase) {
  for (const auto& [upper, lower] : kAlphabets) {
    EXPECT_EQ(Lower(upper), lower);
    EXPECT_EQ(Upper(lower), upper);
    EXPECT_EQ(Lower(lower), lower);
    EXPECT_EQ(Upper(upper), upper);
  }
}

TEST(Text, WhatIsNoLetterOrHasNoOtherCaseStays) {
  const std::string_view kept =
      "@[`{0/9:\x7F \u00A0\u00BF×÷ß\u0138\u0149\u017F\u0180\u0390\u03A2\u03B0\u0482\u0483\u0489"
      "\u04C0\u1E96\u1E9F\u1F00€東😀";
  for (const char32_t c : Characters(kept)) {
    EXPECT_EQ(UpperChar(c), c) << std::hex << static_cast<unsigned>(c);
    EXPECT_EQ(LowerChar(c), c) << std::hex << static_cast<unsigned>(c);
  }
  EXPECT_EQ(Upper("ς"), "Σ");
  EXPECT_EQ(Lower("Σ"), "σ");
}

TEST(Text, CaseOfAsciiTextsIsTurnedByteByByte) {
  EXPECT_EQ(Upper("az@[`{AZ09"), "AZ@[`{AZ09");
  EXPECT_EQ(Lower("AZ@[`{az09"), "az@[`{az09");
  EXPECT_EQ(UpperAscii("azè@`{"), "AZè@`{");
  EXPECT_TRUE(SameText("aZ09", "Az09"));
  EXPECT_FALSE(SameText("a", "ab"));
  EXPECT_FALSE(SameText("@", "`"));
  EXPECT_FALSE(SameText("[", "{"));
  EXPECT_FALSE(SameText("è", "È"));
}

TEST(Text, CharactersThatAreNoneAreReplaced) {
  EXPECT_EQ(FromCharacters(U"a\xD7FF"), "a\xED\x9F\xBF");
  for (const char32_t none : {0xD800, 0xDFFF, 0x110000}) {
    EXPECT_EQ(FromCharacters(std::u32string(1, none)), "\xEF\xBF\xBD");
  }
  EXPECT_EQ(FromCharacters(U"\xE000"), "\xEE\x80\x80");
  EXPECT_EQ(FromCharacters(U"\x10FFFF"), "\xF4\x8F\xBF\xBF");
}

TEST(Text, PlacesAreCountedFromOne) {
  EXPECT_EQ(Mid("èàù", 0), "èàù");
  EXPECT_EQ(Mid("èàù", 1), "èàù");
  EXPECT_EQ(Mid("èàù", 3), "ù");
  EXPECT_EQ(Mid("èàù", 4), "");
  EXPECT_EQ(Mid("èàù", 1, 2), "èà");
  EXPECT_EQ(Right("èàù", 3), "èàù");
  EXPECT_EQ(Right("èàù", 4), "èàù");
  EXPECT_EQ(Right("èàù", 0), "");
  EXPECT_EQ(Left("èàù", 0), "");
  EXPECT_EQ(InStr(0, "èXX", "X"), 2u);
  EXPECT_EQ(InStr(4, "èXX", "X"), 0u);
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
