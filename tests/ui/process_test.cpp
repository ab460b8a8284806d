// Other programs, run for real.
#include <gmock/gmock.h>

#include <QElapsedTimer>

#include "base/text.h"
#include "platform/device_error.h"
#include "tests/ui/screen.h"
#include "ui/qt_process.h"

namespace brenvo::ui {
namespace {

using testing::HasSubstr;

struct ProcessTest : ScreenTest {
  bool RunsUntil(const std::function<bool()>& met, int milliseconds = 10000) {
    QElapsedTimer timer;
    timer.start();
    while (!met()) {
      if (timer.elapsed() > milliseconds) return false;
      QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
  }
  QtProcess process{gate};
  std::vector<platform::ProgramEnd> ends;

  ProcessTest() {
    process.OnEnd = [this](const platform::ProgramEnd& end) { ends.push_back(end); };
  }
};

TEST_F(ProcessTest, WhatAProgramWritesAndHowItEndsIsTold) {
  process.Start({"sh", {"-c", "echo out; echo err >&2; exit 3"}, 10000});
  EXPECT_TRUE(process.IsRunning());
  ASSERT_TRUE(RunsUntil([&] { return !ends.empty(); }));
  EXPECT_FALSE(process.IsRunning());
  EXPECT_EQ(ends[0].status, 3);
  EXPECT_THAT(ends[0].output, HasSubstr("out\n"));
  EXPECT_THAT(ends[0].output, HasSubstr("err\n"));
}

TEST_F(ProcessTest, ArgumentsAreTakenAsTheyAreByNoShell) {
  process.Start({"printf", {"%s|", "a b", "$HOME; exit", "*"}, 10000});
  ASSERT_TRUE(RunsUntil([&] { return !ends.empty(); }));
  EXPECT_EQ(ends[0].output, "a b|$HOME; exit|*|");
}

TEST_F(ProcessTest, OneThatTakesTooLongIsStopped) {
  process.Start({"sleep", {"60"}, 200});
  ASSERT_TRUE(RunsUntil([&] { return !ends.empty(); }));
  EXPECT_EQ(ends[0].status, platform::ProgramEnd::kStopped);
}

TEST_F(ProcessTest, OneThatIsStoppedTellsNothing) {
  process.Start({"sleep", {"60"}, 0});
  process.Stop();
  EXPECT_FALSE(process.IsRunning());
  RunsUntil([] { return false; }, 100);
  EXPECT_TRUE(ends.empty());
}

TEST_F(ProcessTest, OfAFloodTheLastMegabyteIsKept) {
  process.Start({"sh", {"-c", "head -c 3000000 /dev/zero | tr '\\0' x; echo end"}, 20000});
  ASSERT_TRUE(RunsUntil([&] { return !ends.empty(); }, 20000));
  EXPECT_EQ(ends[0].output.size(), platform::Process::kMostOutput);
  EXPECT_TRUE(ends[0].output.ends_with("xend\n"));
}

TEST_F(ProcessTest, AProgramThatIsNotThereIsAFailure) {
  EXPECT_THROW(process.Start({"no-such-program-anywhere", {}, 100}), platform::DeviceError);
  EXPECT_FALSE(process.IsRunning());
}

}  // namespace
}  // namespace brenvo::ui
