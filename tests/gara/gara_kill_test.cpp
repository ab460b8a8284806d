#include <fmt/format.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "contest/insert_qso.h"
#include "file/database_file.h"
#include "gara/contest_log.h"
#include "gara/gara_contest.h"
#include "tests/gara/gara_station.h"
#include "tests/support/integrity.h"
#include "tests/support/station.h"
#include "tests/support/thoroughly.h"

namespace brenvo::gara {
namespace {

std::string KilledCall(int n) {
  return fmt::format("DL{}{}{}{}", n % 10, static_cast<char>('A' + n / 10 % 26),
                     static_cast<char>('A' + n / 260 % 26), static_cast<char>('A' + n / 6760 % 26));
}

// The contest worked in a process of its own.
class WorkedStation {
 public:
  explicit WorkedStation(const std::filesystem::path& directory) : session_(machine_, directory) {
    machine_.SetNow(base::DateTime::Of(2024, 9, 7, 16, 0, 0));
    machine_.SetApplicationDirectory(directory);
    auto& frame = static_cast<frame::MainFrame&>(
        session_.Windows.Adopt(std::make_unique<frame::MainFrame>(session_)));
    session_.Windows.Show(frame);
    if (!session_.IsOpen()) _exit(4);
    session_.Windows.Register("GaraContest", [this] {
      return std::make_unique<GaraContest>(session_, PutInto(session_));
    });
    window_ = static_cast<GaraContest*>(session_.Windows.LoadNew("GaraContest"));
    session_.Windows.Show(*window_);
    if (window_->Gara.Items().empty()) {
      Event([&] { window_->Regole.SetText("IARU Region 1 145 MHz"); });
      Event([&] { window_->Dal.SetText("07/09/2024"); });
      Event([&] { window_->cmNuova.Press(); });
    }
  }
  void Work(int n) {
    Event([&] {
      window_->Call.SetText(KilledCall(n));
      window_->SerialeRicevuto.SetText(std::to_string(n + 1));
      window_->Locator.SetText("JN48QT");
    });
    Event([&] { window_->cmInserisci.Press(); });
  }
  // Some are corrected behind others.
  void CorrectOne() {
    Event([&] { window_->Qso.SetCurrent(2, 0); });
    Event([&] { window_->cmCorreggi.Press(); });
    Event([&] { window_->Locator.SetText("JN86DT"); });
    Event([&] { window_->cmInserisci.Press(); });
  }

 private:
  void Event(const std::function<void()>& event) { session_.Windows.RunEvent(event); }
  recorder::RecordingPlatform machine_{[](std::string_view) {}};
  core::Session session_;
  GaraContest* window_ = nullptr;
};

[[noreturn]] void WorkOn(const std::filesystem::path& directory, int first, int out) {
  WorkedStation station(directory);
  for (int n = first;; ++n) {
    station.Work(n);
    if (n % 5 == 4) station.CorrectOne();
    if (write(out, &n, sizeof n) != sizeof n) _exit(2);
  }
}

TEST(GaraKilled, NoContactIsLostAndEachSerialIsGivenOnce) {
  const int kills = Thoroughly(3, 100);
  ScratchStationDirectory directory;
  std::filesystem::copy(DeliveredRules(), directory.Path() / "Contest");
  const std::filesystem::path file = directory.Path() / "Brenvo.mdb";
  {
    engine::Database database = file::OpenDatabaseFile(file);
    database.Execute("UPDATE [User] SET Call='IK4ABC',Locator='JN54MN'");
  }
  std::mt19937 random(26);
  std::uniform_int_distribution<useconds_t> moment(0, 300000);
  int next = 0;
  for (int kill = 0; kill < kills; ++kill) {
    SCOPED_TRACE(kill);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
      close(ends[0]);
      WorkOn(directory.Path(), next, ends[1]);
    }
    close(ends[1]);
    int last = -1, said = -1;
    ASSERT_EQ(read(ends[0], &last, sizeof last), static_cast<ssize_t>(sizeof last));
    usleep(moment(random));
    ::kill(child, SIGKILL);
    while (read(ends[0], &said, sizeof said) == static_cast<ssize_t>(sizeof said)) last = said;
    close(ends[0]);
    waitpid(child, nullptr, 0);

    ASSERT_EQ(IntegrityOf(file), "ok");
    engine::Database database = file::OpenDatabaseFile(file);
    const auto count = [&](const std::string& select) {
      return database.OpenSnapshot(select)->Field(std::size_t{0}).Integer();
    };
    const std::int64_t stored = count("Select Count(*) from [Contest Qso]");
    ASSERT_GE(stored, last + 1);
    ASSERT_LE(stored, last + 2);  // the one that was under way
    // Contact, what stands beside it and the highest serial are there together.
    ASSERT_EQ(count("Select Count(*) from GareQso"), stored);
    ASSERT_EQ(count("Select max(ProgrDato) from [Contest Qso]"), stored);
    ASSERT_EQ(count("Select UltimoProgr from GareBande"), stored);
    for (int n = 0; n < stored; ++n) {
      ASSERT_EQ(count(fmt::format("Select Count(*) from [Contest Qso] where Call='{}' and "
                                  "ProgrDato={}",
                                  KilledCall(n), n + 1)),
                1);
    }
    next = static_cast<int>(stored);
  }
  std::printf("%d kills, %d contacts\n", kills, next);
}

}  // namespace
}  // namespace brenvo::gara
