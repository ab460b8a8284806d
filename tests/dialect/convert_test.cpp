#include "dialect/convert.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/support/error_of.h"

namespace brenvo::dialect {
namespace {

using engine::Value;

const base::DateTime kDay = base::DateTime::Of(2001, 2, 3);
const base::DateTime kMoment = base::DateTime::Of(2001, 2, 3, 4, 5, 6);
constexpr double kInfinity = std::numeric_limits<double>::infinity();

Value Whole(std::int64_t number) { return Value(number); }
int ErrorOfColumn(const Value& value, ColumnType type) {
  return ErrorOf([&] { ToColumn(value, type, "Colonna"); });
}

TEST(ConvertTest, ATextIsANumberOnlyAsAWhole) {
  struct Case {
    const char* text;
    double number;
  };
  for (const Case& c : {Case{"0", 0},
                        {"9", 9},
                        {"144.3", 144.3},
                        {" 7 ", 7},
                        {"-7", -7},
                        {"+7", 7},
                        {".5", 0.5},
                        {"5.", 5},
                        {"1e3", 1000},
                        {"1E+3", 1000},
                        {"15e-1", 1.5}}) {
    EXPECT_EQ(NumberOfText(c.text), c.number) << c.text;
  }
  for (const char* text : {"", " ", "-", "+", ".", "-.", "1e", "1e+", "e3", "1x", "x1", "1 2",
                           "1.2.3", "--1", "1,5", "1e3.5"}) {
    EXPECT_EQ(NumberOfText(text), std::nullopt) << text;
  }
}

TEST(ConvertTest, ATextIsADateInEachOfItsForms) {
  EXPECT_EQ(DateOfText("03/02/2001"), kDay);
  EXPECT_EQ(DateOfText("03/02/2001 04:05:06"), kMoment);
  EXPECT_EQ(DateOfText("2001-02-03 04:05:06"), kMoment);
  EXPECT_EQ(DateOfText("04:05:06"), kMoment.TimePart());
  EXPECT_EQ(DateOfText("ieri"), std::nullopt);
  EXPECT_EQ(DateOfLiteral("03/02/2001"), kDay);
  EXPECT_EQ(DateOfLiteral("04:05:06"), kMoment.TimePart());
  EXPECT_EQ(ErrorOf([] { DateOfLiteral("2001-02-03"); }), 3464);
  EXPECT_EQ(ErrorOf([] { DateOfLiteral(""); }), 3464);
}

TEST(ConvertTest, ATextColumnTakesEverythingAsItsText) {
  EXPECT_EQ(ToColumn("I3 ", ColumnType::kText, ""), Value("I3 "));
  EXPECT_EQ(ToColumn("Cantù", ColumnType::kText, ""), Value("Cantù"));
  EXPECT_EQ(ToColumn("Cant\xF9", ColumnType::kText, ""), Value("Cant\xEF\xBF\xBD"));
  EXPECT_EQ(ToColumn(144.3, ColumnType::kText, ""), Value("144.3"));
  EXPECT_EQ(ToColumn(true, ColumnType::kText, ""), Value("-1"));
  EXPECT_EQ(ToColumn(kMoment, ColumnType::kText, ""), Value("03/02/2001 04:05:06"));
}

TEST(ConvertTest, ANumberColumnTakesNumbersAndTextsThatAreOne) {
  for (const ColumnType type : {ColumnType::kInteger, ColumnType::kCounter}) {
    EXPECT_EQ(ToColumn(7, type, ""), Whole(7));
    EXPECT_EQ(ToColumn(2.5, type, ""), Whole(2));
    EXPECT_EQ(ToColumn("3.5", type, ""), Whole(4));
    EXPECT_EQ(ToColumn(true, type, ""), Whole(-1));
    EXPECT_EQ(ToColumn(9.1e18, type, ""), Whole(9100000000000000000));
    EXPECT_EQ(ToColumn(std::numeric_limits<std::int64_t>::max(), type, ""),
              Whole(std::numeric_limits<std::int64_t>::max()));
    EXPECT_EQ(ErrorOfColumn(9.2e18, type), 3421);
    EXPECT_EQ(ErrorOfColumn(-9.2e18, type), 3421);
  }
  EXPECT_EQ(ToColumn("144.3", ColumnType::kReal, ""), Value(144.3));
  EXPECT_EQ(ToColumn(7, ColumnType::kReal, ""), Value(7.0));
  EXPECT_EQ(ToColumn(1e300, ColumnType::kReal, ""), Value(1e300));
  for (const ColumnType type : {ColumnType::kInteger, ColumnType::kReal}) {
    EXPECT_EQ(ErrorOfColumn("7 MHz", type), 3421);
    EXPECT_EQ(ErrorOfColumn("", type), 3421);
    EXPECT_EQ(ErrorOfColumn(kDay, type), 3421);
    EXPECT_EQ(ErrorOfColumn(kInfinity, type), 3421);
  }
}

TEST(ConvertTest, ADateColumnTakesDatesOfYearsThatSortAsTheirText) {
  EXPECT_EQ(ToColumn(kMoment, ColumnType::kDateTime, ""), Value("2001-02-03 04:05:06"));
  EXPECT_EQ(ToColumn("03/02/2001", ColumnType::kDateTime, ""), Value("2001-02-03 00:00:00"));
  EXPECT_EQ(ToColumn(base::DateTime::Of(100, 1, 1), ColumnType::kDateTime, ""),
            Value("0100-01-01 00:00:00"));
  EXPECT_EQ(ToColumn(base::DateTime::Of(9999, 12, 31), ColumnType::kDateTime, ""),
            Value("9999-12-31 00:00:00"));
  EXPECT_EQ(ErrorOfColumn(base::DateTime::Of(99, 12, 31), ColumnType::kDateTime), 3421);
  EXPECT_EQ(ErrorOfColumn(base::DateTime::Of(10000, 1, 1), ColumnType::kDateTime), 3421);
  EXPECT_EQ(ErrorOfColumn("ieri", ColumnType::kDateTime), 3421);
  EXPECT_EQ(ErrorOfColumn(7, ColumnType::kDateTime), 3421);
  EXPECT_EQ(ErrorOfColumn(true, ColumnType::kDateTime), 3421);
}

TEST(ConvertTest, AYesNoColumnTakesNumbersAndTheTwoWords) {
  const Value yes = Whole(-1), no = Whole(0);
  EXPECT_EQ(ToColumn(true, ColumnType::kYesNo, ""), yes);
  EXPECT_EQ(ToColumn(false, ColumnType::kYesNo, ""), no);
  EXPECT_EQ(ToColumn(1, ColumnType::kYesNo, ""), yes);
  EXPECT_EQ(ToColumn(0.0, ColumnType::kYesNo, ""), no);
  EXPECT_EQ(ToColumn(" True ", ColumnType::kYesNo, ""), yes);
  EXPECT_EQ(ToColumn("FALSE", ColumnType::kYesNo, ""), no);
  EXPECT_EQ(ToColumn("2", ColumnType::kYesNo, ""), yes);
  EXPECT_EQ(ToColumn("0", ColumnType::kYesNo, ""), no);
  EXPECT_EQ(ErrorOfColumn("si", ColumnType::kYesNo), 3421);
  EXPECT_EQ(ErrorOfColumn(kDay, ColumnType::kYesNo), 3421);
}

TEST(ConvertTest, NullStaysNullAndIsNoInAYesNoColumn) {
  for (const ColumnType type : {ColumnType::kText, ColumnType::kInteger, ColumnType::kReal,
                                ColumnType::kDateTime, ColumnType::kCounter}) {
    EXPECT_TRUE(ToColumn(Value(), type, "").IsNull());
    EXPECT_TRUE(ToKey(Value(), type).IsNull());
  }
  EXPECT_EQ(ToColumn(Value(), ColumnType::kYesNo, ""), Whole(0));
  EXPECT_TRUE(ToKey(Value(), ColumnType::kYesNo).IsNull());
}

TEST(ConvertTest, AValueThatDoesNotFitIsToldWithItsColumn) {
  const auto told = [](const Value& value, ColumnType type) -> std::string {
    try {
      ToColumn(value, type, "Mhz");
    } catch (const engine::DatabaseError& failure) {
      return failure.Description;
    }
    return "";
  };
  EXPECT_EQ(told("sette", ColumnType::kReal), "Il valore 'sette' non è adatto alla colonna 'Mhz'.");
  EXPECT_EQ(told(kDay, ColumnType::kInteger),
            "Il valore '03/02/2001' non è adatto alla colonna 'Mhz'.");
  EXPECT_EQ(told(7, ColumnType::kDateTime), "Il valore '7' non è adatto alla colonna 'Mhz'.");
}

TEST(ConvertTest, WhatIsLookedForHasTheFormOfTheIndex) {
  EXPECT_EQ(ToKey("I3ABC  ", ColumnType::kText), Value("I3ABC"));
  EXPECT_EQ(ToKey(" I3", ColumnType::kText), Value(" I3"));
  EXPECT_EQ(ToKey("Cant\xF9", ColumnType::kText), Value("Cant\xEF\xBF\xBD"));
  EXPECT_EQ(ToKey(7, ColumnType::kInteger), Whole(7));
  EXPECT_EQ(ToKey("7 MHz", ColumnType::kReal), Value(7.0));
  EXPECT_EQ(ToKey("MHz", ColumnType::kCounter), Value(0.0));
  EXPECT_EQ(ToKey("03/02/2001", ColumnType::kDateTime), Value("2001-02-03 00:00:00"));
  EXPECT_EQ(ToKey(true, ColumnType::kYesNo), Whole(-1));
  EXPECT_EQ(ToKey(1, ColumnType::kYesNo), Whole(-1));
  EXPECT_EQ(ToKey("0", ColumnType::kYesNo), Whole(0));
}

TEST(ConvertTest, ACellMeansWhatItsColumnIs) {
  EXPECT_EQ(FromRaw(Whole(7), ValueType::kText), Value("7"));
  EXPECT_EQ(FromRaw("7", ValueType::kText), Value("7"));
  EXPECT_TRUE(FromRaw(Value(), ValueType::kText).IsNull());
  EXPECT_EQ(FromRaw("2001-02-03 04:05:06", ValueType::kDate), Value(kMoment));
  EXPECT_EQ(FromRaw("ieri", ValueType::kDate), Value("ieri"));
  EXPECT_EQ(FromRaw(Whole(7), ValueType::kDate), Whole(7));
  EXPECT_EQ(FromRaw(Whole(-1), ValueType::kYesNo), Value(true));
  EXPECT_EQ(FromRaw(Whole(1), ValueType::kYesNo), Value(true));
  EXPECT_EQ(FromRaw(0.0, ValueType::kYesNo), Value(false));
  EXPECT_EQ(FromRaw("x", ValueType::kYesNo), Value("x"));
  EXPECT_TRUE(FromRaw(Value(), ValueType::kYesNo).IsNull());
  EXPECT_EQ(FromRaw(Whole(7), ValueType::kReal), Value(7.0));
  EXPECT_EQ(FromRaw("x", ValueType::kReal), Value("x"));
  EXPECT_EQ(FromRaw(7.5, ValueType::kInteger), Value(7.5));
  EXPECT_EQ(FromRaw("x", ValueType::kAny), Value("x"));
}

}  // namespace
}  // namespace brenvo::dialect
