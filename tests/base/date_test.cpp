#include "base/date.h"

#include <gtest/gtest.h>

namespace brenvo::base {
namespace {

TEST(Date, KnowsItsParts) {
  const DateTime value = DateTime::Of(2001, 2, 3, 4, 5, 6);
  EXPECT_EQ(value.Year(), 2001);
  EXPECT_EQ(value.Month(), 2);
  EXPECT_EQ(value.Day(), 3);
  EXPECT_EQ(value.Hour(), 4);
  EXPECT_EQ(value.Minute(), 5);
  EXPECT_EQ(value.Second(), 6);
  EXPECT_EQ(value.DatePart() + value.TimePart(), value);
  EXPECT_EQ(DateTime::Of(1850, 1, 1, 13, 0, 0).Hour(), 13);
  EXPECT_EQ(DateTime::Of(1850, 1, 1, 13, 0, 0).Year(), 1850);
}

TEST(Date, ReadsTheFormsThatOperatorsWrite) {
  const DateTime day = DateTime::Of(2001, 2, 3);
  for (const char* text : {"03/02/2001", "3/2/2001", "3-2-2001", "3.2.2001", " 03/02/01 "}) {
    EXPECT_EQ(ParseDate(text), day) << text;
  }
  EXPECT_EQ(ParseDate("3/2/99"), DateTime::Of(1999, 2, 3));
  EXPECT_EQ(ParseDate("03/02/2001 14:05"), DateTime::Of(2001, 2, 3, 14, 5));
  EXPECT_EQ(ParseDate("03/02/2001 14:05:09"), DateTime::Of(2001, 2, 3, 14, 5, 9));
  EXPECT_EQ(ParseDate("29/02/2000"), DateTime::Of(2000, 2, 29));
}

TEST(Date, AYearOfTwoDigitsLiesBetween1930And2029) {
  const std::pair<const char*, int> years[] = {{"00", 2000}, {"0", 2000},  {"29", 2029},
                                               {"30", 1930}, {"31", 1931}, {"99", 1999}};
  for (const auto& [text, year] : years) {
    EXPECT_EQ(ParseDate(std::string("3/2/") + text), DateTime::Of(year, 2, 3)) << text;
  }
}

TEST(Date, RefusesWhatIsNoDate) {
  for (const char* text : {"",
                           "__/__/____",
                           "31/02/2001",
                           "29/02/2001",
                           "1/13/2001",
                           "0/1/2001",
                           "03/02",
                           "3/2-2001",
                           "abc",
                           "03/02/2001x",
                           "03/02/201",
                           "03/02/2001 25:00",
                           "03/02/20011",
                           "003/02/2001",
                           "03/002/2001",
                           "/02/2001",
                           "03//2001",
                           "03/02/",
                           "0/0/0000",
                           "01/01/0099",
                           "3 2 2001",
                           "03/02/2001 x",
                           "03/02/2001-14:05"}) {
    EXPECT_FALSE(ParseDate(text)) << text;
  }
}

TEST(Date, ReadsTimes) {
  EXPECT_EQ(ParseTime("00:01"), DateTime::FromSeconds(60));
  EXPECT_EQ(ParseTime("23:59:59"), DateTime::FromSeconds(86399));
  EXPECT_EQ(ParseTime("7.30"), DateTime::FromSeconds(27000));
  EXPECT_EQ(ParseTime("00:00:00"), DateTime());
  EXPECT_EQ(ParseTime("23:59"), DateTime::FromSeconds(86340));
  EXPECT_EQ(ParseTime(" 1:2:3 "), DateTime::FromSeconds(3723));
  EXPECT_EQ(ParseTime("12.34.56"), DateTime::FromSeconds(45296));
  for (const char* text :
       {"", "24:00", "12:60", "__:__", "1_:3_", "12", "12:", "12:00x", "12:00:", "12:00:60",
        "012:00", "12:000", "12:00:000", "12-00", ":00", "12:00:00:00", "1200"}) {
    EXPECT_FALSE(ParseTime(text)) << text;
  }
}

TEST(Date, EverySecondOfTheDaysAroundDayZeroHasItsPlace) {
  EXPECT_EQ(DateTime::Of(1899, 12, 30), DateTime());
  EXPECT_EQ(DateTime::Of(1899, 12, 31).Seconds(), 86400);
  EXPECT_EQ(DateTime::Of(1899, 12, 29).Seconds(), -86400);
  EXPECT_EQ(DateTime::Of(1899, 12, 29, 23, 59, 59).Seconds(), -1);
  const DateTime before = DateTime::FromSeconds(-1);
  EXPECT_EQ(before.Day(), 29);
  EXPECT_EQ(before.DatePart().Seconds(), -86400);
  EXPECT_EQ(before.TimePart().Seconds(), 86399);
  EXPECT_EQ(before.Hour(), 23);
  EXPECT_EQ(before.Minute(), 59);
  EXPECT_EQ(before.Second(), 59);
  EXPECT_EQ(DateTime::FromSeconds(-86400).DatePart().Seconds(), -86400);
  EXPECT_EQ(DateTime::FromSeconds(-86400).TimePart().Seconds(), 0);
  EXPECT_EQ(DateTime::FromSeconds(86399).Day(), 30);
}

TEST(Date, WritesDatesAndTimes) {
  const DateTime value = DateTime::Of(2001, 2, 3, 4, 5, 6);
  EXPECT_EQ(DateText(value), "03/02/2001");
  EXPECT_EQ(TimeText(value), "04:05:06");
  EXPECT_EQ(DateTimeText(value), "03/02/2001 04:05:06");
  EXPECT_EQ(DateTimeText(value.DatePart()), "03/02/2001");
  EXPECT_EQ(DateTimeText(value.TimePart()), "04:05:06");
  EXPECT_EQ(IsoText(value), "2001-02-03 04:05:06");
  EXPECT_EQ(ParseIso("2001-02-03 04:05:06"), value);
  EXPECT_EQ(ParseIso("2001-02-03"), value.DatePart());
  EXPECT_EQ(ParseIso("2001-02-03T04:05"), DateTime::Of(2001, 2, 3, 4, 5));
  EXPECT_EQ(ParseIso("2001-2-3"), value.DatePart());
  EXPECT_EQ(ParseIso("0099-12-31"), DateTime::Of(99, 12, 31));
  for (const char* text :
       {"", "03/02/2001", "2001/02/03", "2001-02/03", "201-02-03", "20011-02-03", "2001-02-",
        "2001-13-03", "2001-02-30", "2001-00-03", "2001-02-00", "2001-02-03x", "2001-02-03 ",
        "2001-02-03 25:00", "2001-02-03T", "2001-002-03", "2001-02-003", "2001--03"}) {
    EXPECT_FALSE(ParseIso(text)) << text;
  }
  EXPECT_EQ(IsoText(DateTime::Of(99, 1, 2)), "0099-01-02 00:00:00");
  const char* const months[] = {"gennaio",   "febbraio", "marzo",    "aprile",
                                "maggio",    "giugno",   "luglio",   "agosto",
                                "settembre", "ottobre",  "novembre", "dicembre"};
  for (int month = 1; month <= 12; ++month) EXPECT_EQ(MonthName(month), months[month - 1]);
}

}  // namespace
}  // namespace brenvo::base
