#include "links/cat_frame.h"

#include <gtest/gtest.h>

#include "recorder/quote.h"

namespace brenvo::links {
namespace {

std::string Hex(const CatFrame& frame) { return recorder::HexBytes(Bytes(frame)); }

TEST(CatFrame, OfEachCommandWithoutAParameter) {
  EXPECT_EQ(Hex(kCatOn), "20 20 20 20 00");
  EXPECT_EQ(Hex(kCatOff), "20 20 20 20 80");
  EXPECT_EQ(Hex(kReadSMeter), "20 20 20 20 F7");
}

TEST(CatFrame, OfEachMode) {
  std::string all;
  for (const CatMode& mode : kCatModes) {
    all += std::string(mode.name) + ": " + Hex(mode.frame) + "\n";
  }
  EXPECT_EQ(all, "USB: 01 20 20 20 07\nLSB: 00 20 20 20 07\nFM: 08 20 20 20 07\n");
}

TEST(BcdFrequency, HoldsTwoDecimalDigitsAByte) {
  const struct {
    double hundredHz;
    const char* bytes;
  } cases[] = {
      {500000, "05 00 00 00 01"},   {500001, "05 00 00 10 01"},   {501000, "05 01 00 00 01"},
      {501100, "05 01 10 00 01"},   {501500, "05 01 50 00 01"},   {503130, "05 03 13 00 01"},
      {519999, "05 19 99 90 01"},   {520000, "05 20 00 00 01"},   {999999, "09 99 99 90 01"},
      {1000000, "10 00 00 00 01"},  {1009999, "10 09 99 90 01"},  {1440000, "14 40 00 00 01"},
      {1440500, "14 40 50 00 01"},  {1441740, "14 41 74 00 01"},  {1442999, "14 42 99 90 01"},
      {1443000, "14 43 00 00 01"},  {1443001, "14 43 00 10 01"},  {1445000, "14 45 00 00 01"},
      {1455000, "14 55 00 00 01"},  {1459750, "14 59 75 00 01"},  {1460000, "14 60 00 00 01"},
      {2200000, "22 00 00 00 01"},  {2229999, "22 29 99 90 01"},  {4300000, "43 00 00 00 01"},
      {4320880, "43 20 88 00 01"},  {4321000, "43 21 00 00 01"},  {4322000, "43 22 00 00 01"},
      {4325001, "43 25 00 10 01"},  {4339250, "43 39 25 00 01"},  {4392750, "43 92 75 00 01"},
      {4400000, "44 00 00 00 01"},  {4500000, "45 00 00 00 01"},  {9999999, "99 99 99 90 01"},
      {10000000, "10 00 00 00 01"}, {12400000, "12 40 00 00 01"}, {12960000, "12 96 00 00 01"},
      {12960500, "12 96 05 00 01"}, {12961000, "12 96 10 00 01"}, {12962000, "12 96 20 00 01"},
      {12962001, "12 96 20 01 01"}, {12965000, "12 96 50 00 01"}, {12968999, "12 96 89 99 01"},
      {12980000, "12 98 00 00 01"}, {13000000, "13 00 00 00 01"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(Hex(BcdFrequency(base::HundredHz(each.hundredHz))), each.bytes) << each.hundredHz;
  }
}

TEST(BcdFrequency, HoldsThePlacesBelowTheStepAsTwoDigits) {
  EXPECT_EQ(Hex(BcdFrequency(base::HundredHz(1443000.5))), "14 43 00 05 01");
  EXPECT_EQ(Hex(BcdFrequency(base::HundredHz(1443000.04))), "14 43 00 00 01");
  // Rounded up to a whole kHz only the places behind the point are seen.
  EXPECT_EQ(Hex(BcdFrequency(base::HundredHz(1443009.99))), "14 43 00 00 01");
}

TEST(BcdFrequency, OfEveryStepAround2mAnd70cmReadsBackAsItself) {
  for (const int first : {1440000, 4300000}) {
    for (int step = first; step < first + 20000; ++step) {
      const CatFrame frame = BcdFrequency(base::HundredHz(step));
      long long digits = 0;
      for (std::size_t i = 0; i < 4; ++i)
        digits = digits * 100 + (frame[i] >> 4) * 10 + (frame[i] & 15);
      ASSERT_EQ(digits, step * 10LL);
    }
  }
}

TEST(BcdFrequency, OfAFrequencyThatIsNoneHasZerosWhereNoDigitStands) {
  EXPECT_EQ(Hex(BcdFrequency(base::HundredHz(0))), "00 00 00 00 01");
  EXPECT_EQ(Hex(BcdFrequency(base::HundredHz(-1443000))), "00 44 30 00 01");
}

TEST(SMeter, ReadsTheFirstByteOfAnAnswer) {
  EXPECT_EQ(SMeterReading("\x64\x01\x02\x03\xF7"), 0x64);
  EXPECT_EQ(SMeterReading("\xFF\x01\x02\x03\xF7"), 255);
  EXPECT_EQ(SMeterReading(std::string("\0\0\0\0\xF7", 5)), 0);
}

TEST(SMeter, ReadsTheFirstBlockWhenSeveralCameAtOnce) {
  EXPECT_EQ(SMeterReading("\x30"
                          "aaa\xF7\x40"
                          "aaa\xF7"),
            0x30);
}

TEST(SMeter, ReadsNothingInAPartOfABlockOrInNoise) {
  EXPECT_EQ(SMeterReading(""), std::nullopt);
  EXPECT_EQ(SMeterReading("\xF7"), std::nullopt);
  EXPECT_EQ(SMeterReading("\x64\x01\x02\xF7"), std::nullopt);
  EXPECT_EQ(SMeterReading("\x64\x01\x02\xF7\x01"), std::nullopt);
  EXPECT_EQ(SMeterReading("noise"), std::nullopt);
}

}  // namespace
}  // namespace brenvo::links
