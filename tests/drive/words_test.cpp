#include "tools/drive/words.h"

#include <gmock/gmock.h>

#include "recorder/refused.h"
#include "tools/drive/numbers.h"

namespace brenvo::drive {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Words, StandApartByBlanks) {
  EXPECT_THAT(SplitWords("  set \t LogForm.CallQso  I3XYZ "),
              ElementsAre("set", "LogForm.CallQso", "I3XYZ"));
}

TEST(Words, TextsWithBlanksStandInQuotes) {
  EXPECT_THAT(SplitWords("set W.F \" 20 m\""), ElementsAre("set", "W.F", " 20 m"));
  EXPECT_THAT(SplitWords("set W.F \"\""), ElementsAre("set", "W.F", ""));
}

TEST(Words, QuotesHoldEscapes) {
  EXPECT_THAT(SplitWords(R"(x "a\r\nb\tc\"d\\e\x03\xe0")"),
              ElementsAre("x", "a\r\nb\tc\"d\\e\x03\xC3\xA0"));
}

TEST(Words, ABackslashOutsideQuotesIsItself) {
  EXPECT_THAT(SplitWords("echo \\Log.ADI"), ElementsAre("echo", "\\Log.ADI"));
}

TEST(Words, AWordThatBeginsWithTheSignBeginsAComment) {
  EXPECT_THAT(SplitWords("# all of it"), IsEmpty());
  EXPECT_THAT(SplitWords("get LogForm#2.Call # the second"), ElementsAre("get", "LogForm#2.Call"));
  EXPECT_THAT(SplitWords("echo \"# no\""), ElementsAre("echo", "# no"));
}

TEST(Words, AnEmptyLineHasNone) {
  EXPECT_THAT(SplitWords(""), IsEmpty());
  EXPECT_THAT(SplitWords(" \r"), IsEmpty());
}

TEST(Words, WhatDoesNotCloseIsRefused) {
  EXPECT_THROW(SplitWords("echo \"a"), recorder::Refused);
  EXPECT_THROW(SplitWords("echo \"a\\"), recorder::Refused);
  EXPECT_THROW(SplitWords("echo \"\\x4"), recorder::Refused);
  EXPECT_THROW(SplitWords("echo \"\\xG0\""), recorder::Refused);
  EXPECT_THROW(SplitWords("echo \"\\q\""), recorder::Refused);
  EXPECT_THROW(SplitWords("echo \"a\"b"), recorder::Refused);
}

TEST(Words, TheRestOfALineKeepsItsBlanks) {
  EXPECT_EQ(RestOfLine("sql select *  from Log where Banda='  2 m'  # 2 m"),
            "select *  from Log where Banda='  2 m'");
  EXPECT_EQ(RestOfLine("sql \"a  \\x41\" # comment"), "a  A");
  EXPECT_EQ(RestOfLine("echo"), "");
  EXPECT_EQ(RestOfLine("echo  # nothing"), "");
  EXPECT_EQ(RestOfLine(""), "");
}

TEST(Words, NumbersAreWholeNumbersAndNothingElse) {
  EXPECT_EQ(WholeNumber("-12"), -12);
  EXPECT_THROW(WholeNumber("1.5"), recorder::Refused);
  EXPECT_THROW(WholeNumber("1a"), recorder::Refused);
  EXPECT_THROW(WholeNumber(""), recorder::Refused);
  EXPECT_THROW(WholeNumber("99999999999999999999"), recorder::Refused);
}

}  // namespace
}  // namespace brenvo::drive
