#include "awards/html_page.h"

#include <gtest/gtest.h>

namespace brenvo::awards {
namespace {

TEST(HtmlPage, TheSecondRowIsThePatternAndTheHeadingRowStaysInTheHead) {
  const auto pieces = CutTemplate("a<TR>h</TR>b<TR>row</TR>c<TR>d</TR>");
  ASSERT_TRUE(pieces);
  EXPECT_EQ(pieces->head, "a<TR>h</TR>b");
  EXPECT_EQ(pieces->row, "<TR>row</TR>");
  EXPECT_EQ(pieces->tail, "c<TR>d</TR>");
}

TEST(HtmlPage, LowerCaseTagsWork) {
  const auto pieces = CutTemplate("a<tr>h</tr>b<tr>row</tr>c");
  ASSERT_TRUE(pieces);
  EXPECT_EQ(pieces->head, "a<tr>h</tr>b");
  EXPECT_EQ(pieces->row, "<tr>row</tr>");
  EXPECT_EQ(pieces->tail, "c");
}

TEST(HtmlPage, OneUpperCaseAndOneLowerCaseOpeningWork) {
  const auto pieces = CutTemplate("a<TR>h</tr>b<tr>row</TR>c");
  ASSERT_TRUE(pieces);
  EXPECT_EQ(pieces->head, "a<TR>h</tr>b");
  EXPECT_EQ(pieces->row, "<tr>row</TR>");
}

TEST(HtmlPage, TheUpperCaseFormIsTakenWhereverItStands) {
  // The pattern row is found first, as the heading, and no further row follows it.
  EXPECT_FALSE(CutTemplate("a<tr>h</tr>b<TR>row</TR>c"));
  const auto pieces = CutTemplate("<TR>h</TR><tr>row</tr>c<tr>d</TR>");
  ASSERT_TRUE(pieces);
  EXPECT_EQ(pieces->row, "<tr>row</tr>c<tr>d</TR>");
}

TEST(HtmlPage, ATemplateWithoutTwoOpeningsOrTheClosingIsNone) {
  EXPECT_FALSE(CutTemplate(""));
  EXPECT_FALSE(CutTemplate("<p>no table</p>"));
  EXPECT_FALSE(CutTemplate("<TR>h</TR>"));
  EXPECT_FALSE(CutTemplate("<TR>h</TR><TR>row"));
}

TEST(HtmlPage, AnOpeningWithAttributesIsNone) {
  EXPECT_FALSE(CutTemplate("<tr>h</tr><tr class=x>row</tr>"));
}

TEST(HtmlPage, OnlyTheFirstOfATokenIsReplaced) {
  std::string row = "<td>[QSL]</td><td>[QSL]</td>";
  FillToken(row, "[QSL]", "Confermato");
  EXPECT_EQ(row, "<td>Confermato</td><td>[QSL]</td>");
}

TEST(HtmlPage, ATokenThatIsNotThereIsPassedOver) {
  std::string row = "<td>[CALL]</td>";
  FillToken(row, "[QSL]", "Confermato");
  EXPECT_EQ(row, "<td>[CALL]</td>");
}

TEST(HtmlPage, ValuesGoInAsTheyStand) {
  std::string row = "[CALL]";
  FillToken(row, "[CALL]", "<b>Forlì & \"x\"</b>");
  EXPECT_EQ(row, "<b>Forlì & \"x\"</b>");
}

}  // namespace
}  // namespace brenvo::awards
