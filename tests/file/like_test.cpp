#include "dialect/like_pattern.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "engine/database_error.h"
#include "tests/file/contacts.h"

namespace brenvo {
namespace {

struct Case {
  const char* pattern;
  const char* text;
  bool matches;
};

constexpr Case kCases[] = {
    {"I3*", "I3ABC", true},
    {"i3*", "I3ABC", true},
    {"I3*", "I3", true},
    {"I3*", "IK3", false},
    {"*", "", true},
    {"", "", true},
    {"", "A", false},
    {"*ABC", "I3ABC", true},
    {"*B*", "I3ABC", true},
    {"*X*", "I3ABC", false},
    {"I?ABC", "I3ABC", true},
    {"I?ABC", "IABC", false},
    {"I#ABC", "I3ABC", true},
    {"I#ABC", "IKABC", false},
    {"[IK]3*", "k3x", true},
    {"[IK]3*", "W3X", false},
    {"[a-k]*", "I3", true},
    {"[a-h]*", "I3", false},
    {"[!I]*", "K1", true},
    {"[!I]*", "i1", false},
    {"[*]", "*", true},
    {"[*]", "x", false},
    {"a[]b", "ab", true},
    {"[a-]", "-", true},
    {"*a*b*c*", "xxaxxbxxcxx", true},
    {"*a*b*c*", "xxaxxcxxbxx", false},
    {"**", "x", true},
    {"CANT?", "cantù", true},
    {"cantù", "CANTÙ", true},
    {"CANT[à-û]", "Cantù", true},
    {"]", "]", true},
    {"I3  ", "I3", true},
    {"I3", "I3   ", true},
    {"I3 *", "I3", false},
    {"*3", "I3  ", true},
    {"?", "è", true},
    {"??", "è", false},
};

TEST(LikePatternTest, MatchesAsTheTableTells) {
  for (const Case& c : kCases) {
    EXPECT_EQ(LikePattern(c.pattern).Matches(c.text), c.matches) << c.pattern << " / " << c.text;
  }
}

TEST(LikePatternTest, ItKnowsItsShape) {
  EXPECT_EQ(LikePattern("JN65*").GetShape(), LikePattern::Shape::kPrefix);
  EXPECT_EQ(LikePattern("JN65*  ").Literal(), "JN65");
  EXPECT_EQ(LikePattern("JN65").GetShape(), LikePattern::Shape::kText);
  EXPECT_EQ(LikePattern("J*5").GetShape(), LikePattern::Shape::kOther);
  EXPECT_EQ(LikePattern("JN6#*").GetShape(), LikePattern::Shape::kOther);
}

TEST(LikePatternTest, ABracketThatDoesNotCloseIsAnError) {
  EXPECT_EQ(ErrorOf([] { LikePattern("I[3"); }), 93);
  EXPECT_EQ(ErrorOf([] { LikePattern("[z-a]"); }), 93);
}

TEST(LikePatternTest, ManyStarsTakeNoTimeToSpeakOf) {
  std::string pattern;
  for (int i = 0; i < 1000; ++i) pattern += "*a";
  EXPECT_FALSE(LikePattern(pattern + "b").Matches(std::string(5000, 'a')));
}

// A statement with a pattern gives the rows that the pattern matches, however it is served.
TEST(LikeStatementTest, EveryPatternGivesTheRowsThatItMatches) {
  ScratchDatabase scratch;
  Database db = scratch.Open();
  const char* const texts[] = {"JN65", "JN65FR", "jn65fr ", "JN6",   "JN66AA", "JN",   "J",
                               "",     "JN65 X", "JN6Z",    "Cantù", "CANTÙ",  "K@1",  "K[1",
                               "Ka",   "KZ",     "K{",      "a*b",   "A?B",    "12",   "JN65F",
                               "JM",   "JO",     "CANTO",   "@",     "K@",     "k@zz", "  JN65"};
  int minute = 0;
  db.BeginTrans();
  for (const char* text : texts) AddContact(db, ++minute, text, "  2 m", text);
  db.CommitTrans();
  for (const char* pattern :
       {"JN65*",  "jn65*", "JN6*",   "J*",        "*",   "JN65F*",  "JN65FR*", "JN65 *",
        "JN65",   "JN65 ", "",       "K@*",       "@*",  "K*",      "KZ*",     "Kz*",
        "Cantù",  "Cant*", "CantÙ*", "?N*",       "*R",  "a[*]b",   "a?b",     "##",
        "[J-K]*", "[!J]*", "*65*",   "JN65FR  *", "  *", "JN65 X*", "JN6 *"}) {
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < std::size(texts); ++i) {
      if (LikePattern(pattern).Matches(texts[i])) expected.push_back(std::to_string(i + 1));
    }
    for (const char* column : {"Locator", "Call", "Left(Locator,4)", "Locator & ''"}) {
      std::vector<std::string> wanted = expected;
      if (std::string_view(column).starts_with("Left")) {
        wanted.clear();
        for (std::size_t i = 0; i < std::size(texts); ++i) {
          if (LikePattern(pattern).Matches(Left(texts[i], 4))) {
            wanted.push_back(std::to_string(i + 1));
          }
        }
      }
      const std::string where = std::string(column) + " like '" + pattern + "'";
      EXPECT_EQ(Select(db, "select QsoNr from Log where " + where), wanted) << where;
      EXPECT_EQ(Select(db, "select QsoNr from Log where not (" + where + ")").size(),
                std::size(texts) - wanted.size())
          << where;
      EXPECT_EQ(Select(db, "select QsoNr from Log where " + std::string(column) + " not like '" +
                               pattern + "'")
                    .size(),
                std::size(texts) - wanted.size())
          << where;
    }
  }
}

}  // namespace
}  // namespace brenvo
