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

TEST(TokenizerTest, WhatDoesNotEndIsNoWord) {
  for (const char* text : {"'aperto", "\"aperto", "[aperto", "[]", "1a", "1.2.3", "!"}) {
    EXPECT_EQ(Tokenizer(text).Next().kind, TokenKind::kBad) << text;
  }
}

}  // namespace
}  // namespace brenvo::dialect
