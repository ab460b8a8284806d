#include "base/encoding.h"

#include <gtest/gtest.h>

namespace brenvo::base {
namespace {

TEST(Encoding, Windows1252HoldsTheEuroAndTheAccents) {
  EXPECT_EQ(ToWindows1252("Forlì €"), "Forl\xEC \x80");
  EXPECT_EQ(FromWindows1252("Forl\xEC \x80"), "Forlì €");
}

TEST(Encoding, ACharacterOutsideTheCodePageBecomesAQuestionMark) {
  EXPECT_EQ(ToWindows1252("Ж1\u0081"), "?1?");
  EXPECT_EQ(ToLatin1("€1"), "?1");
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
