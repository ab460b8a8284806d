#include <fmt/format.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <random>
#include <set>
#include <sstream>

#include "contest/transfer.h"
#include "file/journal.h"
#include "log/log_form.h"
#include "station/station.h"
#include "tests/support/integrity.h"
#include "tests/support/station.h"
#include "tests/support/thoroughly.h"
#include "upkeep/maintenance.h"

namespace brenvo::station {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDate = "07/09/2024", kBand = "  2 m";
constexpr int kTransferred = 5;  // contacts a contest

// The station at work in a process of its own. It says a line for each thing that has returned:
// what has been said must be found again, whenever the process is killed.
class Operator {
 public:
  Operator(const fs::path& directory, int out) : out_(out), session_(machine_, directory) {
    machine_.SetNow(base::DateTime::Of(2001, 2, 3, 4, 5, 6));
    machine_.SetApplicationDirectory(directory);
    if (StartStation(session_) == nullptr) _exit(2);
  }

  [[noreturn]] void Work(int first) {
    Say("R");
    for (int n = first;; ++n) {
      session_.Windows.RunEvent([&] {
        if (n % 13 == 12) {
          Compact();
        } else if (n % 11 == 10) {
          Transfer(n);
        } else {
          Store(n);
        }
      });
    }
  }

 private:
  void Say(const std::string& line) {
    const std::string text = line + "\n";
    if (write(out_, text.data(), text.size()) < 0) _exit(3);
  }

  log::LogForm& Log() {
    if (log_ == nullptr) {
      log_ = static_cast<log::LogForm*>(session_.Windows.LoadNew("LogForm"));
      session_.Windows.Show(*log_);
    }
    return *log_;
  }

  // A contact by the window's own fields, and every third one changed after it.
  void Store(int n) {
    log::LogForm& log = Log();
    log.ClearQso();
    log.CallQso.SetText(fmt::format("IK{}ABC", n));
    log.Banda.SetText(kBand);
    log.Locator.SetText("JN65AB");
    log.InsertQso();
    Say(fmt::format("I {}", n));
    if (n % 3 != 0) return;
    log.GoToLast();
    log.Qra.SetText(fmt::format("NOME {}", n));
    log.UpdateQso();
    Say(fmt::format("U {}", n));
  }

  void Transfer(int n) {
    if (session_.Db.OpenSnapshot("select Banda from Contest")->EOF_()) {
      session_.Db.Execute(
          fmt::format("insert into Contest (DataContest, Banda, Nome, Call, Frequenza) values "
                      "('{}','{}','PROVA','I3ABC',144.3)",
                      kDate, kBand));
    }
    session_.Db.Execute("delete * from [Contest Qso]");
    for (int i = 0; i < kTransferred; ++i) {
      session_.Db.Execute(fmt::format(
          "insert into [Contest Qso] (DataContest,Banda,ProgrDato,ProgrRicevuto,Giorno,Qtr,Call,"
          "QrkDato,QrkRicevuto,Locator,Modo,Qrb,Punti,[Note],Qsl,InLog) values "
          "('{}','{}',{},1,7,'14:00','IQ{}X{}',59,59,'JN65AB','USB',1,1,'',False,True)",
          kDate, kBand, i + 1, n, static_cast<char>('A' + i)));
    }
    contest::TransferToLog(session_, kDate, kBand);
    Say(fmt::format("T {}", n));
  }

  void Compact() {
    if (log_ != nullptr) session_.Windows.Unload(*log_);
    log_ = nullptr;
    upkeep::CompattaDatabase(session_);
    Say("C");
  }

  int out_;
  recorder::RecordingPlatform machine_{[](std::string_view) {}};
  core::Session session_;
  log::LogForm* log_ = nullptr;
};

// What a station that was killed had said.
struct Said {
  std::set<int> stored, changed, transferred;
  int compactions = 0;
  int last = 0;

  void Read(const std::string& text) {
    std::istringstream lines(text.substr(0, text.rfind('\n') + 1));
    std::string what;
    for (int n = 0; lines >> what;) {
      if (what == "C") ++compactions;
      if (what == "C" || what == "R") continue;
      lines >> n;
      (what == "I" ? stored : what == "U" ? changed : transferred).insert(n);
      last = std::max(last, n);
    }
  }
};

// Starts a station, kills it a while after it has said so many things, and returns what it said.
std::string RunAndKill(const fs::path& directory, int first, int things, useconds_t microseconds) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("pipe");
  const pid_t child = fork();
  if (child == 0) {
    close(ends[0]);
    Operator(directory, ends[1]).Work(first);
  }
  close(ends[1]);
  std::string said;
  char buffer[4096];
  const auto take = [&] {
    const ssize_t count = read(ends[0], buffer, sizeof buffer);
    if (count > 0) said.append(buffer, static_cast<std::size_t>(count));
    return count > 0;
  };
  while (std::count(said.begin(), said.end(), '\n') <= things && take()) {
  }
  usleep(microseconds);
  kill(child, SIGKILL);
  while (take()) {
  }
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself";
  return said;
}

TEST(Killed, AtAnyMomentWhatHasBeenStoredChangedAndTransferredIsThere) {
  const int kills = Thoroughly(20, 1000);
  ScratchStationDirectory directory;
  const fs::path file = directory.Path() / "Brenvo.mdb";
  std::mt19937 random(1);
  std::uniform_int_distribution<int> things(0, 14);
  std::uniform_int_distribution<useconds_t> moment(0, 10000);
  Said said;
  int lost = 0, journals = 0;
  for (int kill = 0; kill < kills; ++kill) {
    SCOPED_TRACE(kill);
    said.Read(RunAndKill(directory.Path(), said.last + 1, things(random), moment(random)));
    if (!fs::exists(file)) {
      // Killed between the two renames of a compaction: all of it is in both named files.
      ++lost;
      ASSERT_TRUE(fs::exists(directory.Path() / "BrenvoNEW.MDB"));
      fs::rename(directory.Path() / "Brenvo.BAK", file);
    }
    // What it has left beside the file is the file's own, whatever it was at.
    const file::Journal journal = file::JudgeJournal(file);
    ASSERT_NE(journal, file::Journal::kForeign);
    if (journal == file::Journal::kOwn) ++journals;
    ASSERT_NO_THROW(file::RequireSoundJournal(file));
    ASSERT_EQ(IntegrityOf(file), "ok");
    engine::Database database = file::OpenDatabaseFile(file);
    std::set<std::string> calls, names;
    const auto rows = database.OpenSnapshot("select Call, Qra from Log");
    for (; !rows->EOF_(); rows->MoveNext()) {
      calls.insert(rows->Field("Call").Text());
      names.insert(rows->Field("Qra").Text());
    }
    for (const int n : said.stored) ASSERT_TRUE(calls.contains(fmt::format("IK{}ABC", n))) << n;
    for (const int n : said.changed) ASSERT_TRUE(names.contains(fmt::format("NOME {}", n))) << n;
    for (const int n : said.transferred) ASSERT_TRUE(calls.contains(fmt::format("IQ{}XA", n))) << n;
    // Said or not, a transfer is whole or not there.
    for (const std::string& call : calls) {
      if (!call.starts_with("IQ") || !call.ends_with("XA")) continue;
      for (int i = 0; i < kTransferred; ++i) {
        std::string other = call;
        other.back() = static_cast<char>('A' + i);
        ASSERT_TRUE(calls.contains(other)) << other;
      }
    }
    // Next time numbers go on behind what may have been stored without a word.
    said.last += 2;
  }
  std::printf(
      "%d kills: %zu stored, %zu changed, %zu transfers, %d compactions, %d between names, %d "
      "journals\n",
      kills, said.stored.size(), said.changed.size(), said.transferred.size(), said.compactions,
      lost, journals);
  EXPECT_GT(journals, kills / 2);
  EXPECT_GT(said.stored.size(), 0u);
  EXPECT_GT(said.transferred.size(), 0u);
  EXPECT_GT(said.compactions, 0);
}

}  // namespace
}  // namespace brenvo::station
