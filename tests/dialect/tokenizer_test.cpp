#include "dialect/tokenizer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brenvo::dialect {
namespace {

TEST(TokenizerTest, AWordHasOnePackedFormWhateverItsCase) {
  EXPECT_EQ(PackedForm("select"), PackWord("SELECT"));
  EXPECT_EQ(PackedForm("Distinct"), PackWord("DISTINCT"));
  EXPECT_NE(PackedForm("ASC"), PackWord("DESC"));
}

TEST(TokenizerTest, ANameThatIsNoKeywordHasNone) {
  for (const char* name : {"", "QslRicevuta", "Distincts", "a1", "a_b", "cantù"}) {
    EXPECT_EQ(PackedForm(name), 0U) << name;
  }
}

TEST(TokenizerTest, AStatementFallsIntoItsWords) {
  Tokenizer tokens("Select [Contest Qso].Call,'d''A' from Log where Mhz>=144.3 ;");
  std::vector<std::string> words;
  for (Token token = tokens.Next(); token.kind != TokenKind::kEnd; token = tokens.Next()) {
    ASSERT_NE(token.kind, TokenKind::kBad);
    words.emplace_back(token.text);
  }
  EXPECT_THAT(words, testing::ElementsAre("Select", "Contest Qso", ".", "Call", ",", "d''A", "from",
                                          "Log", "where", "Mhz", ">=", "144.3", ";"));
  EXPECT_EQ(tokens.Next().kind, TokenKind::kEnd);
}

TEST(TokenizerTest, ANameIsOfLettersDigitsAndLinesThatBeginsWithNoDigit) {
  for (const char* name : {"a", "z", "A", "Z", "_", "_x1", "Nr0", "Nr9", "cantù", "\x80x"}) {
    Tokenizer tokens(name);
    const Token token = tokens.Next();
    EXPECT_EQ(token.kind, TokenKind::kName) << name;
    EXPECT_EQ(token.text, name);
    EXPECT_EQ(tokens.Next().kind, TokenKind::kEnd) << name;
  }
  for (const char* text : {"@", "`", "{", "^", "\x7f", "?", ":"}) {
    EXPECT_EQ(Tokenizer(text).Next().kind, TokenKind::kBad) << text;
  }
}

TEST(TokenizerTest, ANumberHasAFractionAndAnExponentOrNone) {
  for (const char* number :
       {"0", "9", "144", "144.", "144.3", ".3", "1e5", "1E5", "1e+5", "1.5e-12", "0.0"}) {
    Tokenizer tokens(number);
    const Token token = tokens.Next();
    EXPECT_EQ(token.kind, TokenKind::kNumber) << number;
    EXPECT_EQ(token.text, number);
    EXPECT_EQ(tokens.Next().kind, TokenKind::kEnd) << number;
  }
  for (const char* text : {"1e", "1e+", "1ex", "1_", "1è", "1e5.", "1.2."}) {
    EXPECT_EQ(Tokenizer(text).Next().kind, TokenKind::kBad) << text;
  }
}

TEST(TokenizerTest, EachWordKnowsWhereItBegins) {
  Tokenizer tokens(" a\t'b'\r\n[c]<>1");
  std::vector<std::size_t> starts;
  for (Token token = tokens.Next(); token.kind != TokenKind::kEnd; token = tokens.Next()) {
    starts.push_back(token.start);
  }
  EXPECT_THAT(starts, testing::ElementsAre(1U, 3U, 8U, 11U, 13U));
}

TEST(TokenizerTest, WhatDoesNotEndIsNoWord) {
  for (const char* text : {"'aperto", "\"aperto", "[aperto", "[]", "1a", "1.2.3", "!"}) {
    EXPECT_EQ(Tokenizer(text).Next().kind, TokenKind::kBad) << text;
  }
}

}  // namespace
}  // namespace brenvo::dialect
