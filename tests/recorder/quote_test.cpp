#include "recorder/quote.h"

#include <gtest/gtest.h>

namespace brenvo::recorder {
namespace {

TEST(Quote, ControlCharactersBecomeEscapes) {
  EXPECT_EQ(Quoted("c I3XYZ\r\n"), "\"c I3XYZ\\r\\n\"");
  EXPECT_EQ(Quoted("a\tb\x03\x7F"), "\"a\\tb\\x03\\x7F\"");
  EXPECT_EQ(Quoted("\xC2\x85"), "\"\\x85\"");
}

TEST(Quote, QuotesAndBackslashesAreProtected) { EXPECT_EQ(Quoted("a\"b\\c"), "\"a\\\"b\\\\c\""); }

TEST(Quote, AccentsStandAsTheyAre) { EXPECT_EQ(Quoted("Cantù"), "\"Cantù\""); }

TEST(Quote, AnEscapedCellKeepsItsQuotes) { EXPECT_EQ(Escaped("5\" x\t"), "5\" x\\t"); }

TEST(Quote, BytesAreHexadecimalPairs) {
  EXPECT_EQ(HexBytes(std::string("\x20\xF7\x00", 3)), "20 F7 00");
  EXPECT_EQ(HexBytes(""), "");
}

TEST(Quote, MillimetresHaveAtMostTwoDecimals) {
  EXPECT_EQ(ShortNumber(12), "12");
  EXPECT_EQ(ShortNumber(12.5), "12.5");
  EXPECT_EQ(ShortNumber(38.1049), "38.1");
  EXPECT_EQ(ShortNumber(1.005 + 0.001), "1.01");
  EXPECT_EQ(ShortNumber(-0.001), "0");
}

TEST(Quote, FilesAreNamedFromTheApplicationDirectory) {
  FileNames names;
  names.SetDirectory("/home/op/brenvo");
  EXPECT_EQ(names.Of("/home/op/brenvo/waves/A.wav"), "waves/A.wav");
  EXPECT_EQ(names.Of("/home/op/brenvo/./x/../OUT_Zone.html"), "OUT_Zone.html");
}

TEST(Quote, AFileElsewhereKeepsItsWholeName) {
  FileNames names;
  names.SetDirectory("/home/op/brenvo");
  EXPECT_EQ(names.Of("/home/op/other.wav"), "/home/op/other.wav");
  EXPECT_EQ(names.Of("/home/op/brenvo2/x.wav"), "/home/op/brenvo2/x.wav");
}

}  // namespace
}  // namespace brenvo::recorder
