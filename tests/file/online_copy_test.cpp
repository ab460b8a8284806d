#include "file/online_copy.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>

#include "file/file_check.h"
#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

class OnlineCopyTest : public ::testing::Test {
 protected:
  OnlineCopyTest() {
    engine::Database db = scratch_.Open();
    db.BeginTrans();
    for (int minute = 0; minute < 2000; ++minute) AddContact(db, minute, "I1AAA");
    db.CommitTrans();
  }

  ScratchDatabase scratch_;
  const std::filesystem::path to_ = scratch_.Path() / "Copy.mdb";
};

TEST_F(OnlineCopyTest, WhatIsCopiedGrowsFromNothingToAllOfIt) {
  OnlineCopy copy(scratch_.File(), to_);
  double part = copy.PartCopied();
  EXPECT_EQ(part, 0);
  int steps = 0;
  while (copy.Step(10)) {
    EXPECT_GT(copy.PartCopied(), part);
    EXPECT_LT(copy.PartCopied(), 1);
    part = copy.PartCopied();
    ++steps;
  }
  EXPECT_GT(steps, 10);
  EXPECT_EQ(copy.PartCopied(), 1);
}

TEST_F(OnlineCopyTest, OnlyAWholeOneThatWasFoundSoundIsKept) {
  {
    OnlineCopy copy(scratch_.File(), to_);
    EXPECT_TRUE(copy.Step(10));
  }
  EXPECT_FALSE(std::filesystem::exists(to_));
  {
    OnlineCopy copy(scratch_.File(), to_);
    while (copy.Step(1000)) {
    }
  }
  EXPECT_FALSE(std::filesystem::exists(to_));
  {
    OnlineCopy copy(scratch_.File(), to_);
    while (copy.Step(1000)) {
    }
    EXPECT_TRUE(copy.Verify([] { return true; }));
  }
  EXPECT_EQ(RowsIn(to_, "Log"), 2000);
  EXPECT_EQ(ErrorOf([&] { RowsIn(to_, "Contatti"); }), engine::DatabaseError::kNotADatabase);
}

TEST_F(OnlineCopyTest, OneThatHasNoPlaceLeavesNoFileOpen) {
  const auto opened = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  std::filesystem::create_directories(to_ / "something in it");
  const auto before = opened();
  EXPECT_NE(ErrorOf([&] { OnlineCopy(scratch_.File(), to_); }), 0);
  EXPECT_EQ(opened(), before);
}

}  // namespace
}  // namespace brenvo::file
