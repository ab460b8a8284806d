#include "base/number.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace brenvo::base {
namespace {

struct TextCase {
  std::string_view text;
  double value;
};

TEST(Number, ValReadsTheLongestNumberAtTheBeginning) {
  const TextCase cases[] = {
      {"144.300", 144.3}, {"144,300", 144}, {"  7", 7},   {"-3.5x", -3.5}, {"", 0},
      {"abc", 0},         {".5", .5},       {"5.", 5},    {"1E2", 100},    {"1E", 1},
      {"12 34", 12},      {"+4", 4},        {"-", 0},     {".", 0},        {"1e999", 0},
      {"59A", 59},        {"+", 0},         {"-.5", -.5}, {"+.5", .5},     {"..5", 0},
      {"1.2.3", 1.2},     {"--4", 0},       {"+-4", 0},   {"-+4", 0},      {"1e2", 100},
      {"1E+2", 100},      {"15E-1", 1.5},   {"1E+", 1},   {"1Ex", 1},      {"1E2x", 100},
      {"E2", 0},          {"-1e999", 0},    {"0012", 12}, {" - 4", 0},     {"9/0", 9},
      {"8:", 8}};
  for (const TextCase& c : cases) EXPECT_EQ(Val(c.text), c.value) << c.text;
}

TEST(Number, StrLeavesABlankInFrontOfWhatIsNotNegative) {
  EXPECT_EQ(Str(3), " 3");
  EXPECT_EQ(Str(0), " 0");
  EXPECT_EQ(Str(-3), "-3");
  EXPECT_EQ(Str(144.3), " 144.3");
}

TEST(Number, PlainNumberNeverWritesAnExponent) {
  EXPECT_EQ(PlainNumber(1e20), "100000000000000000000");
  EXPECT_EQ(PlainNumber(0.00001), "0.00001");
  EXPECT_EQ(PlainNumber(123456789012345.0), "123456789012345");
  EXPECT_EQ(PlainNumber(0.1 + 0.2), "0.3");
  EXPECT_EQ(PlainNumber(-0.0), "0");
  EXPECT_EQ(PlainNumber(1e15), "1000000000000000");
  EXPECT_EQ(PlainNumber(-1e16), "-10000000000000000");
  EXPECT_EQ(PlainNumber(999999999999999.0), "999999999999999");
  EXPECT_EQ(PlainNumber(0.0001), "0.0001");
  EXPECT_EQ(PlainNumber(-0.000012345), "-0.000012345");
  EXPECT_EQ(PlainNumber(1.5e-10), "0.00000000015");
  EXPECT_EQ(PlainNumber(1.23456789012345e-5), "0.0000123456789012345");
  EXPECT_EQ(PlainNumber(1e-320), "0." + std::string(319, '0') + "1");
  EXPECT_EQ(PlainNumber(4e-321), "0");  // behind the places that are looked at
  EXPECT_EQ(PlainNumber(std::numeric_limits<double>::infinity()), "0");
  EXPECT_EQ(PlainNumber(std::numeric_limits<double>::quiet_NaN()), "0");
}

struct FormatCase {
  double value;
  std::string_view pattern, text;
};

TEST(Number, FormatsByPattern) {
  const FormatCase cases[] = {{144.3, "#####.000", "144.300"},
                              {0, "#####.000", "0.000"},
                              {1296.2, "####.000", "1296.200"},
                              {33.9, "###.0", "33.9"},
                              {0, "###.0", "0.0"},
                              {3, "##", "3"},
                              {7, "00", "07"},
                              {12, "0000", "0012"},
                              {12345, "0000", "12345"},
                              {0, "####", "0"},
                              {1234567, "####,###", "1,234,567"},
                              {0, "####,###", "0"},
                              {999, "####,###,###", "999"},
                              {1000, "####,###,###", "1,000"},
                              {14200.5, "#,###.000", "14,200.500"},
                              {144.3, "#,###.000", "144.300"},
                              {144300, "###,###.0", "144,300.0"},
                              {50110, "###,###.0", "50,110.0"},
                              {1296200, "###,###.0", "1,296,200.0"},
                              {144300, "000000", "144300"},
                              {50110, "000000", "050110"},
                              {0.25, ".00", ".25"},
                              {0, ".00", ".00"},
                              {2.5, "##", "3"},
                              {-2.5, "##", "-3"},
                              {0.0005, "#####.000", "0.001"},
                              {-0.0001, "#####.000", "0.000"},
                              {144.2995, "#####.000", "144.300"},
                              {1.005, "0.00", "1.01"},
                              {1.0049, "0.00", "1.00"},
                              {2.4999999, "##", "2"},
                              {1.5, "0.0##", "1.5"},
                              {1.25, "0.0##", "1.25"},
                              {1.2345, "0.0##", "1.235"},
                              {1, "0.0##", "1.0"},
                              {1, "0.##", "1."},
                              {10.10, "0.##", "10.1"},
                              {0.05, "0.00", "0.05"},
                              {0.05, "#.00", "0.05"},
                              {-0.05, ".00", "-.05"},
                              {-1234.5, "#,###.0", "-1,234.5"},
                              {12345678901.25, "0.00", "12345678901.25"},
                              {12345678901234.5, "0.00", "12345678901234.50"},
                              {1e17, "####,###", "100,000,000,000,000,000"}};
  for (const FormatCase& c : cases) {
    EXPECT_EQ(FormatNumber(c.value, c.pattern), c.text) << c.value << " " << c.pattern;
  }
}

TEST(Number, FormatsTheSmallestNumbersAsZero) {
  EXPECT_EQ(FormatNumber(4.9e-324, "#####.000"), "0.000");
  EXPECT_EQ(FormatNumber(-1e-310, "00"), "00");
}

TEST(Number, FormatsWithAsManyPlacesAsThePatternHoweverMany) {
  const std::string places(400, '0');
  EXPECT_EQ(FormatNumber(0, "0." + places), "0." + places);
  EXPECT_EQ(FormatNumber(0.5, "0." + places), "0.5" + places.substr(1));
  EXPECT_EQ(FormatNumber(144, "0." + places), "144." + places);
}

TEST(Number, RoundsHalvesToEven) {
  EXPECT_EQ(RoundHalfEven(2.5), 2);
  EXPECT_EQ(RoundHalfEven(3.5), 4);
  EXPECT_EQ(RoundHalfEven(-0.5), 0);
}

}  // namespace
}  // namespace brenvo::base
