#include "engine/value.h"

#include <gtest/gtest.h>

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
