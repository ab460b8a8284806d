#include "file/online_copy.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <thread>

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

TEST_F(OnlineCopyTest, WhoeverWaitsForTheCheckIsAskedOnHisOwnThreadAndEndsIt) {
  const auto copied = [&] {
    auto copy = std::make_unique<OnlineCopy>(scratch_.File(), to_);
    while (copy->Step(1000)) {
    }
    return copy;
  };
  const auto here = std::this_thread::get_id();
  EXPECT_FALSE(copied()->VerifyBeside([] { return false; }));
  EXPECT_FALSE(std::filesystem::exists(to_));
  EXPECT_THROW(copied()->VerifyBeside([]() -> bool { throw std::runtime_error("over"); }),
               std::runtime_error);
  EXPECT_FALSE(std::filesystem::exists(to_));
  int asked = 0;
  EXPECT_TRUE(copied()->VerifyBeside([&] {
    EXPECT_EQ(std::this_thread::get_id(), here);
    ++asked;
    return true;
  }));
  EXPECT_GT(asked, 0);
  EXPECT_EQ(RowsIn(to_, "Log"), 2000);
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

// Whether another process sees a lock of this one's on the bytes by which SQLite says that a
// database is in use.
bool IsSeenInUse(const std::filesystem::path& database) {
  const pid_t child = fork();
  if (child == 0) {
    constexpr off_t kShared = 0x40000002, kSize = 510;
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kShared;
    lock.l_len = kSize;
    const int file = open(database.c_str(), O_RDWR);
    _exit(fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK ? 1 : 0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 1;
}

TEST_F(OnlineCopyTest, WhatIsCopiedStaysInUseForOtherProgramsWhichWouldElseDropItsJournal) {
  engine::Database database = scratch_.Open();
  AddContact(database, 2001, "I1AAA");
  EXPECT_TRUE(IsSeenInUse(scratch_.File()));
  {
    OnlineCopy copy(scratch_.File(), to_);
    while (copy.Step(1000)) {
    }
  }
  EXPECT_TRUE(IsSeenInUse(scratch_.File()));
  RequireOurFile(scratch_.File());
  EXPECT_TRUE(IsSeenInUse(scratch_.File()));
  database.Close();
  EXPECT_FALSE(IsSeenInUse(scratch_.File()));
}

}  // namespace
}  // namespace brenvo::file
