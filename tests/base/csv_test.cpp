#include "base/csv.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace brenvo::base {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string FailureOf(std::string_view text) {
  try {
    (void)ParseCsv(text);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "no failure";
}

TEST(Csv, TheFirstLineHoldsTheHeadings) {
  const CsvTable table = ParseCsv("A,B\n1,2\n3,4\n");
  EXPECT_THAT(table.Headings, ElementsAre("A", "B"));
  ASSERT_EQ(table.Rows.size(), 2U);
  EXPECT_THAT(table.Rows[0].Cells, ElementsAre("1", "2"));
  EXPECT_THAT(table.Rows[1].Cells, ElementsAre("3", "4"));
  EXPECT_EQ(table.Column("B"), 1U);
}

TEST(Csv, BlanksBelongToTheirCell) {
  EXPECT_THAT(ParseCsv("A,B\n  2 m, x \n").Rows[0].Cells, ElementsAre("  2 m", " x "));
}

TEST(Csv, AQuotedCellHoldsCommasQuotesAndLineEnds) {
  const CsvTable table = ParseCsv("A,B\n\"a,\"\"b\"\"\nc\",2\n3,4\n");
  EXPECT_THAT(table.Rows[0].Cells, ElementsAre("a,\"b\"\nc", "2"));
  EXPECT_EQ(table.Rows[1].Line, 4U);
}

TEST(Csv, QuotedCellsStandSideBySideAndAreMeasuredToTheByte) {
  const CsvTable table = ParseCsv("\"A\",\"B\"\r\n\"1\",\"\"\r\n\"\"\"\",x\n");
  EXPECT_THAT(table.Headings, ElementsAre("A", "B"));
  EXPECT_THAT(table.Rows[0].Cells, ElementsAre("1", ""));
  EXPECT_THAT(table.Rows[1].Cells, ElementsAre("\"", "x"));
}

TEST(Csv, ARowKnowsItsLineBehindEmptyOnes) {
  const CsvTable table = ParseCsv("\n\nA\n\n\n1\n\"2\n3\"\n4\n");
  ASSERT_EQ(table.Rows.size(), 3U);
  EXPECT_EQ(table.Rows[0].Line, 6U);
  EXPECT_EQ(table.Rows[1].Line, 7U);
  EXPECT_EQ(table.Rows[2].Line, 9U);
}

TEST(Csv, ACarriageReturnThatEndsNoLineBelongsToItsCell) {
  EXPECT_THAT(ParseCsv("A,B\n1\r2,3\r\n").Rows[0].Cells, ElementsAre("1\r2", "3"));
  EXPECT_THAT(ParseCsv("A,B\n1,\r\n").Rows[0].Cells, ElementsAre("1", ""));
}

TEST(Csv, EmptyCellsAreKept) {
  EXPECT_THAT(ParseCsv("A,B,C\n,,\n").Rows[0].Cells, ElementsAre("", "", ""));
}

TEST(Csv, BothLineEndsAndAMissingLastOneAreRead) {
  const CsvTable table = ParseCsv(
      "\xEF\xBB\xBF"
      "A,B\r\n1,2\r\n\r\n3,4");
  EXPECT_THAT(table.Headings, ElementsAre("A", "B"));
  ASSERT_EQ(table.Rows.size(), 2U);
  EXPECT_THAT(table.Rows[1].Cells, ElementsAre("3", "4"));
}

TEST(Csv, AWrittenLineGivesItsCellsBack) {
  EXPECT_EQ(CsvLine({"a", "", "c d"}), "a,,c d\r\n");
  const std::vector<std::string> cells = {"a,b", "\"c\"", "d\r\ne", "", " f "};
  EXPECT_EQ(ParseCsv("A,B,C,D,E\n" + CsvLine(cells)).Rows[0].Cells, cells);
  // One empty cell is a row all the same.
  ASSERT_EQ(ParseCsv("A\n" + CsvLine({""})).Rows.size(), 1U);
  EXPECT_THAT(ParseCsv("A\n" + CsvLine({""})).Rows[0].Cells, ElementsAre(""));
}

TEST(Csv, ARowOfAnotherLengthIsAnErrorWithItsLine) {
  EXPECT_EQ(FailureOf("A,B\n1,2\n3\n"), "line 3: 1 cells under 2 headings");
}

TEST(Csv, AnOpenQuoteIsAnErrorWithItsLine) {
  EXPECT_EQ(FailureOf("A\n\"x\n\n"), "line 2: a quote is not closed");
}

TEST(Csv, TextBehindAClosingQuoteIsAnError) {
  EXPECT_THAT(FailureOf("A\n\"x\"y\n"), HasSubstr("behind a closing quote"));
}

TEST(Csv, AHeadingThatComesTwiceIsAnError) {
  EXPECT_THAT(FailureOf("A,A\n1,2\n"), HasSubstr("comes twice"));
}

TEST(Csv, TextWithoutHeadingsIsAnError) { EXPECT_EQ(FailureOf(""), "line 1: no headings"); }

TEST(Csv, AnUnknownColumnIsAnError) {
  EXPECT_THROW((void)ParseCsv("A\n1\n").Column("B"), std::runtime_error);
}

TEST(Csv, AFileThatCannotBeReadIsAnError) {
  EXPECT_THROW((void)ReadCsv("no such file.csv"), std::runtime_error);
}

}  // namespace
}  // namespace brenvo::base
