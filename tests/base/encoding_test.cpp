#include "base/encoding.h"

#include <gtest/gtest.h>

namespace brenvo::base {
namespace {

TEST(Encoding, Windows1252HoldsTheEuroAndTheAccents) {
  EXPECT_EQ(ToWindows1252("Forlì €"), "Forl\xEC \x80");
  EXPECT_EQ(FromWindows1252("Forl\xEC \x80"), "Forlì €");
}

TEST(Encoding, EachByteOfWindows1252IsItsCharacter) {
  EXPECT_EQ(FromWindows1252("\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E"),
            "€‚ƒ„…†‡ˆ‰Š‹ŒŽ");
  EXPECT_EQ(FromWindows1252("\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F"),
            "‘’“”•–—˜™š›œžŸ");
  EXPECT_EQ(FromWindows1252("\x7F\xA0\xFF"), "\x7F\u00A0ÿ");
  std::string bytes;
  for (int code = 1; code < 256; ++code) {
    if (code == 0x81 || code == 0x8D || code == 0x8F || code == 0x90 || code == 0x9D) continue;
    bytes += static_cast<char>(code);
  }
  EXPECT_EQ(ToWindows1252(FromWindows1252(bytes)), bytes);
  EXPECT_EQ(FromWindows1252("\x81\x8D\x8F\x90\x9D"), "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(Encoding, ACharacterOutsideTheCodePageBecomesAQuestionMark) {
  EXPECT_EQ(ToWindows1252("Ж1\u0081"), "?1?");
  EXPECT_EQ(ToLatin1("€1"), "?1");
  EXPECT_EQ(ToLatin1("ÿĀ"), "\xFF?");
}

TEST(Encoding, TheMarkOfUtf8IsPassedOverAtTheBeginningAlone) {
  EXPECT_EQ(WithoutByteOrderMark("\xEF\xBB\xBF\xEF\xBB\xBFx"), "\xEF\xBB\xBFx");
  EXPECT_EQ(WithoutByteOrderMark("\xEF\xBB"), "\xEF\xBB");
  EXPECT_EQ(WithoutByteOrderMark(""), "");
}

TEST(Encoding, EveryLatin1ByteSurvivesARoundTrip) {
  std::string bytes;
  for (int code = 0; code < 256; ++code) bytes += static_cast<char>(code);
  EXPECT_EQ(ToLatin1(FromLatin1(bytes)), bytes);
}

}  // namespace
}  // namespace brenvo::base
