#include <fmt/format.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <map>
#include <random>
#include <sstream>

#include "digital/contact_intake.h"
#include "digital/programs.h"
#include "file/database_file.h"
#include "frame/main_frame.h"
#include "tests/support/integrity.h"
#include "tests/support/station.h"
#include "tests/support/thoroughly.h"

namespace brenvo::digital {
namespace {

std::string NumberedCall(int n) {
  return fmt::format("IK{}AB{}", n / 10, static_cast<char>('A' + n % 10));
}

std::string NumberedRecord(int n) {
  const std::string call = NumberedCall(n);
  return fmt::format(
      "<call:{}>{} <qso_date:8>20240510 <time_on:6>{:02}{:02}{:02} <band:3>20m <mode:3>FT8 <eor>",
      call.size(), call, n / 3600 % 24, n / 60 % 60, n % 60);
}

// The station listening in a process of its own.
class Listener {
 public:
  explicit Listener(const std::filesystem::path& directory) : session_(machine_, directory) {
    machine_.SetNow(base::DateTime::Of(2024, 5, 10, 4, 5, 6));
    machine_.SetApplicationDirectory(directory);
    auto& frame = static_cast<frame::MainFrame&>(
        session_.Windows.Adopt(std::make_unique<frame::MainFrame>(session_)));
    session_.Windows.Show(frame);
    if (!session_.IsOpen()) _exit(4);
    programs_ = std::make_unique<Programs>(session_, *frame.Worked);
    programs_->WindowOpened(true);
  }
  void Hear(int n) {
    session_.Windows.RunEvent([&] {
      machine_.Udp().Receive("ADIF", {"127.0.0.1", 60001}, NumberedRecord(n));
    });
  }
  void TryAgain() {
    session_.Windows.RunEvent([&] { programs_->TryAgain(); });
  }
  void Wait(int milliseconds) {
    session_.Windows.RunEvent([&] { machine_.Advance(milliseconds); });
  }

 private:
  recorder::RecordingPlatform machine_{[](std::string_view) {}};
  core::Session session_;
  std::unique_ptr<Programs> programs_;
};

// Hears contact after contact; of each ten the last three while somebody else holds the file. Says
// the number of each that it has dealt with.
[[noreturn]] void HearOn(const std::filesystem::path& directory, int first, int out) {
  Listener listener(directory);
  std::optional<engine::Database> other;
  for (int n = first;; ++n) {
    if (n % 10 >= 7 && !other) {
      other.emplace(file::OpenDatabaseFile(directory / "Brenvo.mdb"));
      other->BeginTrans();
      other->Execute("update [User] set Qth='x'");
    }
    listener.Hear(n);
    if (write(out, &n, sizeof n) != sizeof n) _exit(2);
    if (n % 10 == 9) {
      other->Rollback();
      other.reset();
      listener.Wait(ContactIntake::kRetry);
    }
    listener.Wait(1000);
  }
}

void InAChild(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    work();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_EQ(status, 0);
}

// How often each call stands in the log.
std::map<std::string, int> CallsIn(const std::filesystem::path& file) {
  std::map<std::string, int> calls;
  engine::Database database = file::OpenDatabaseFile(file);
  const auto rows = database.OpenSnapshot("select Call from Log");
  for (; !rows->EOF_(); rows->MoveNext()) ++calls[rows->Field(std::size_t{0}).Text()];
  return calls;
}

TEST(Killed, BetweenADatagramAndTheStoreNothingIsLostAndNothingStoredTwice) {
  const int kills = Thoroughly(3, 100);
  ScratchStationDirectory directory;
  const std::filesystem::path file = directory.Path() / "Brenvo.mdb";
  const std::filesystem::path waiting = directory.Path() / ContactIntake::kWaitingFile;
  std::mt19937 random(1);
  std::uniform_int_distribution<useconds_t> moment(0, 200000);
  int next = 0, waited = 0;
  for (int kill = 0; kill < kills; ++kill) {
    SCOPED_TRACE(kill);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
      close(ends[0]);
      HearOn(directory.Path(), next, ends[1]);
    }
    close(ends[1]);
    int said = -1, last = -1;
    // Once for certain while some wait.
    do {
      ASSERT_EQ(read(ends[0], &last, sizeof last), static_cast<ssize_t>(sizeof last));
    } while (kill == 0 && last % 10 != 8);
    usleep(kill == 0 ? 0 : moment(random));
    ::kill(child, SIGKILL);
    while (read(ends[0], &said, sizeof said) == static_cast<ssize_t>(sizeof said)) last = said;
    close(ends[0]);
    waitpid(child, nullptr, 0);

    ASSERT_EQ(IntegrityOf(file), "ok");
    // What was dealt with stands in the log or in the file of those that wait.
    std::map<std::string, int> calls = CallsIn(file);
    const std::string left = std::filesystem::exists(waiting) ? ReadBytes(waiting) : "";
    waited += !left.empty();
    for (int n = 0; n <= last; ++n) {
      const std::string call = NumberedCall(n);
      ASSERT_TRUE(calls[call] == 1 || left.find(">" + call + " ") != std::string::npos ||
                  left.find(">" + call + "<") != std::string::npos)
          << call;
    }
    // The next start stores what waits; all told again, with one that nobody had heard yet.
    next = last + 2;
    InAChild([&] {
      Listener again(directory.Path());
      again.TryAgain();
      for (int n = std::max(0, next - 40); n < next; ++n) again.Hear(n), again.Wait(1000);
    });
    calls = CallsIn(file);
    ASSERT_EQ(static_cast<int>(calls.size()), next);
    for (const auto& [call, times] : calls) ASSERT_EQ(times, 1) << call;
    ASSERT_FALSE(std::filesystem::exists(waiting));
  }
  std::printf("%d kills, %d with contacts that waited, %d contacts\n", kills, waited, next);
  EXPECT_GT(waited, 0);
}

}  // namespace
}  // namespace brenvo::digital
