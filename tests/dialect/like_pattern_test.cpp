#include "dialect/like_pattern.h"

#include <gtest/gtest.h>

#include "tests/support/error_of.h"

namespace brenvo::dialect {
namespace {

struct LikeCase {
  const char* pattern;
  const char* text;
  bool matches;
};

constexpr LikeCase kLikeCases[] = {
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
    {"[a-]", "a", true},
    {"[a-]", "b", false},
    {"[-a]", "-", true},
    {"[-a]", "b", false},
    {"[a-cx]", "x", true},
    {"[a-cx]", "-", false},
    {"[a-cx-z5]", "Y", true},
    {"[a-cx-z5]", "5", true},
    {"[a-cx-z5]", "w", false},
    {"[abc]", "b", true},
    {"[abc]", "c", true},
    {"[a-a]", "a", true},
    {"[a!]", "!", true},
    {"[!a-c]x", "dx", true},
    {"[!a-c]x", "bx", false},
    {"[!]b", "b", true},
    {"[!]b", "!b", false},
    {"[ab][cd]", "bd", true},
    {"[ab][cd]", "db", false},
    {"#", "0", true},
    {"#", "9", true},
    {"#", "/", false},
    {"#", ":", false},
    {"a*b", "aXbYb", true},
    {"a*bc", "abbc", true},
    {"*?", "", false},
    {"A**", "A", true},
    {"A*?", "A", false},
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
  for (const LikeCase& c : kLikeCases) {
    EXPECT_EQ(LikePattern(c.pattern).Matches(c.text), c.matches) << c.pattern << " / " << c.text;
  }
}

TEST(LikePatternTest, ItKnowsItsShape) {
  EXPECT_EQ(LikePattern("JN65*").GetShape(), LikePattern::Shape::kPrefix);
  EXPECT_EQ(LikePattern("JN65*  ").Literal(), "JN65");
  EXPECT_EQ(LikePattern("JN65").GetShape(), LikePattern::Shape::kText);
  EXPECT_EQ(LikePattern("JN65").Literal(), "JN65");
  EXPECT_EQ(LikePattern("").GetShape(), LikePattern::Shape::kText);
  EXPECT_EQ(LikePattern("**").GetShape(), LikePattern::Shape::kPrefix);
  EXPECT_EQ(LikePattern("*5").GetShape(), LikePattern::Shape::kOther);
  EXPECT_EQ(LikePattern("J?").GetShape(), LikePattern::Shape::kOther);
  EXPECT_EQ(LikePattern("*5").Literal(), "");
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

}  // namespace
}  // namespace brenvo::dialect
