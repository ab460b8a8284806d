#include "engine/value.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/support/error_of.h"

namespace brenvo::engine {
namespace {

const Value kDay = base::DateTime::Of(2001, 2, 3);

TEST(ValueTest, NullReadsAsNothing) {
  EXPECT_TRUE(Value().IsNull());
  EXPECT_EQ(Value().Text(), "");
  EXPECT_EQ(Value().Number(), 0);
  EXPECT_FALSE(Value().Bool());
  EXPECT_EQ(Value().Date(), base::DateTime());
}

TEST(ValueTest, YesIsMinusOne) {
  EXPECT_EQ(Value(true).Text(), "-1");
  EXPECT_EQ(Value(true).Number(), -1);
  EXPECT_EQ(Value(false).Text(), "0");
}

TEST(ValueTest, ATextCountsByItsLeadingNumber) {
  EXPECT_EQ(Value("144.3 MHz").Number(), 144.3);
  EXPECT_EQ(Value("MHz").Number(), 0);
  EXPECT_TRUE(Value("-1").Bool());
}

TEST(ValueTest, WholeNumbersRoundHalvesToEven) {
  EXPECT_EQ(Value(2.5).Integer(), 2);
  EXPECT_EQ(Value(3.5).Integer(), 4);
  EXPECT_EQ(Value("1.6").Integer(), 2);
}

TEST(ValueTest, ATextIsReadAsADateInEachOfItsForms) {
  EXPECT_EQ(Value("03/02/2001").Date(), kDay.Date());
  EXPECT_EQ(Value("2001-02-03").Date(), kDay.Date());
}

TEST(ValueTest, YesIsWhateverCountsAsANumberButNought) {
  EXPECT_TRUE(Value(1).Bool());
  EXPECT_TRUE(Value(-1).Bool());
  EXPECT_TRUE(Value(0.5).Bool());
  EXPECT_TRUE(Value("1").Bool());
  EXPECT_FALSE(Value(0).Bool());
  EXPECT_FALSE(Value("0").Bool());
  EXPECT_FALSE(Value("no").Bool());
}

TEST(ValueTest, EachKindHasItsText) {
  EXPECT_EQ(Value(-7).Text(), "-7");
  EXPECT_EQ(Value(144.3).Text(), "144.3");
  EXPECT_EQ(Value(" I3 ").Text(), " I3 ");
  EXPECT_EQ(kDay.Text(), "03/02/2001");
  EXPECT_EQ(Value(base::DateTime::Of(2001, 2, 3, 4, 5, 6)).Text(), "03/02/2001 04:05:06");
}

TEST(ValueTest, AWholeNumberHasSixtyThreeBits) {
  const std::int64_t most = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(Value(most).Integer(), most);
  EXPECT_EQ(Value(9.1e18).Integer(), 9100000000000000000);
  EXPECT_EQ(Value(-9.1e18).Integer(), -9100000000000000000);
  EXPECT_EQ(Value(true).Integer(), -1);
  for (const double beyond : {9.2e18, -9.2e18, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(ErrorOf([&] { Value(beyond).Integer(); }), 3421) << beyond;
  }
}

TEST(ValueTest, WhatAnotherToolMayHaveWrittenIsReadOrIsNothing) {
  EXPECT_EQ(Value().ReadableBool(), false);
  EXPECT_EQ(Value("-1").ReadableBool(), true);
  EXPECT_EQ(Value("").ReadableBool(), std::nullopt);
  EXPECT_EQ(kDay.ReadableBool(), std::nullopt);
  EXPECT_EQ(Value().ReadableDate(), base::DateTime());
  EXPECT_EQ(kDay.ReadableDate(), kDay.Date());
  EXPECT_EQ(Value("04:05").ReadableDate(), base::DateTime::FromSeconds(4 * 3600 + 5 * 60));
  EXPECT_EQ(Value("ieri").ReadableDate(), std::nullopt);
  EXPECT_EQ(Value(1.5).ReadableDate(), std::nullopt);
}

TEST(ValueTest, WhatHasNoSenseIsTold) {
  const auto told = [](auto&& read) -> std::string {
    try {
      read();
    } catch (const DatabaseError& failure) {
      return failure.Description;
    }
    return "";
  };
  EXPECT_EQ(told([] { Value("ieri").Date(); }), "Conversione di tipo non valida: 'ieri'.");
  EXPECT_EQ(told([] { Value(true).Date(); }), "Conversione di tipo non valida: 'si/no'.");
  EXPECT_EQ(told([] { kDay.Number(); }), "Conversione di tipo non valida: '03/02/2001'.");
  EXPECT_EQ(told([] { kDay.Bool(); }), "Conversione di tipo non valida: '03/02/2001'.");
}

TEST(ValueTest, WhatHasNoSenseIsAConversionError) {
  EXPECT_EQ(ErrorOf([] { kDay.Number(); }), 3421);
  EXPECT_EQ(ErrorOf([] { Value(1).Date(); }), 3421);
  EXPECT_EQ(ErrorOf([] { Value(true).Date(); }), 3421);
  EXPECT_EQ(ErrorOf([] { Value("ieri").Date(); }), 3421);
  EXPECT_EQ(ErrorOf([] { Value("").Bool(); }), 3421);
  EXPECT_EQ(ErrorOf([] { Value(1e30).Integer(); }), 3421);
}

}  // namespace
}  // namespace brenvo::engine
