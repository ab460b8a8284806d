#include "base/uuid.h"

#include <gtest/gtest.h>

namespace brenvo::base {
namespace {

TEST(Uuid, TheNameOfATextIsTheSameEachTimeAndOfNoOther) {
  const std::string name = NameUuid("IK3ABC");
  EXPECT_EQ(NameUuid("IK3ABC"), name);
  EXPECT_NE(NameUuid("IK3ABD"), name);
  EXPECT_NE(NameUuid(""), NameUuid(std::string_view("\0", 1)));
  // Worked out by another program from the same name space: version 5 of "IK3ABC" in
  // 5b0e8c41-9a27-4d63-b81f-02d67e943ac5.
  EXPECT_EQ(name, "f6ee851a-8ea1-5a85-a0c6-f6b8e242033c");
}

TEST(Uuid, ANameSaysItsVersionAndVariant) {
  EXPECT_EQ(NameUuid("a")[14], '5');
  const std::string timed = TimeUuid(0x0123456789AB, {~0ULL, ~0ULL});
  EXPECT_EQ(timed, "01234567-89ab-7fff-bfff-ffffffffffff");
  EXPECT_EQ(TimeUuid(0, {0, 0}), "00000000-0000-7000-8000-000000000000");
}

TEST(Uuid, NamesGivenLaterSortBehind) {
  EXPECT_LT(TimeUuid(999, {~0ULL, ~0ULL}), TimeUuid(1000, {0, 0}));
}

TEST(Uuid, OnlyWhatIsWrittenAsOneIsOne) {
  EXPECT_TRUE(IsUuid(NameUuid("a")));
  EXPECT_TRUE(IsUuid("01234567-89AB-7fff-bfff-ffffffffffff"));
  EXPECT_FALSE(IsUuid(""));
  EXPECT_FALSE(IsUuid("0123456789ab7fffbfffffffffffffff0000"));
  EXPECT_FALSE(IsUuid("01234567-89ab-7fff-bfff-fffffffffffg"));
  EXPECT_FALSE(IsUuid("01234567-89ab-7fff-bfff-ffffffffffff "));
}

}  // namespace
}  // namespace brenvo::base
