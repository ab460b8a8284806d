#include <gtest/gtest.h>

#include "core/prefix.h"

namespace brenvo {
namespace {

struct Case {
  const char* call;
  const char* candidate;
};

TEST(PrefixCandidate, IsEverythingUpToTheFirstRunOfDigitsBehindTheFirstCharacter) {
  const Case cases[] = {{"IK3ABC", "IK3"},   {"4U1ITU", "4U1"},     {"9A2AA", "9A2"},
                        {"OE20XYZ", "OE20"}, {"DL/K1ABC", "DL/K1"}, {"IW1A", "IW1"},
                        {"3A2MW", "3A2"},    {"K1ABC2", "K1"},      {"IK33A", "IK33"}};
  for (const Case& c : cases) EXPECT_EQ(PrefixCandidate(c.call), c.candidate);
}

TEST(PrefixCandidate, IsNothingWithoutADigitOrWhenTheCallEndsWithIt) {
  for (const char* call : {"", "I", "I1", "IW1", "3A", "IK33", "ABC", "1", "11", "1A"}) {
    EXPECT_EQ(PrefixCandidate(call), "") << call;
  }
}

}  // namespace
}  // namespace brenvo
