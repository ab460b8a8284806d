// Links: contest recorder database_maker
// A contest of 3,000 contacts, among eleven in the file: what an operator waits for at each contact
// and at the end, and the plain queries alone.
#include <fmt/format.h>
#include <sqlite3.h>

#include <fstream>
#include <string>

#include "bench/pairs.h"
#include "contest/contest_form.h"
#include "contest/contest_new_qso.h"
#include "contest/stat_contest.h"
#include "recorder/recording_platform.h"
#include "tests/support/scratch_database.h"
#include "tools/mkdatabase/database_maker.h"

namespace brenvo {
namespace {

constexpr int kContacts = 3000;
constexpr const char* kDay = "2024-09-07 00:00:00";
constexpr const char* kWhere =
    " WHERE DataContest>='2024-09-07 00:00:00' AND DataContest<'2024-09-08 00:00:00' AND "
    "rtrim(Banda) COLLATE NOCASE='  2 m'";

std::string CallOf(int number) {
  constexpr const char* kPrefixes[] = {"IK3", "DL1", "F6", "S51", "OE5", "HB9", "9A1", "OK1"};
  return fmt::format("{}{}{}{}", kPrefixes[number % 8], static_cast<char>('A' + number / 676 % 26),
                     static_cast<char>('A' + number / 26 % 26),
                     static_cast<char>('A' + number % 26));
}

// Steps through everything that a statement gives.
class Hand {
 public:
  Hand(sqlite3* file, const std::string& sql) {
    if (sqlite3_prepare_v2(file, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(file));
    }
  }
  ~Hand() { sqlite3_finalize(statement_); }
  Hand(const Hand&) = delete;
  Hand& operator=(const Hand&) = delete;
  void Run() {
    const int columns = sqlite3_column_count(statement_);
    while (sqlite3_step(statement_) == SQLITE_ROW) {
      for (int i = 0; i < columns; ++i) {
        benchmark::DoNotOptimize(sqlite3_column_text(statement_, i));
      }
    }
    sqlite3_reset(statement_);
  }

 private:
  sqlite3_stmt* statement_ = nullptr;
};

struct Station {
  Station() {
    const auto source = std::filesystem::path(SOURCE_DIR) / "data";
    const auto database = directory.Path() / "Brenvo.mdb";
    MakeDatabase(source / "schema.sql", source, database);
    sqlite3_open(database.c_str(), &file);
    std::string fill = "BEGIN;INSERT INTO Contest (DataContest,Banda,Nome,Call) VALUES ('" +
                       std::string(kDay) + "','  2 m','IARU VHF','I4ABC');";
    for (int contest = 0; contest < 11; ++contest) {
      const std::string day = contest == 0 ? kDay : fmt::format("2024-{:02}-01 00:00:00", contest);
      for (int i = 0; i < kContacts; ++i) {
        fill += fmt::format(
            "INSERT INTO \"Contest Qso\" VALUES ('{}','  2 m',{},{},7,'1899-12-30 14:00:00','{}',"
            "59,59,'J{}{}{}AB','USB',{},{},'[Exc=P{}]',0,0);",
            day, i + 1, i + 1, CallOf(i), static_cast<char>('L' + i % 4), i / 10 % 10, i % 10,
            i % 900, i % 900, i % 110);
      }
    }
    sqlite3_exec(file, (fill + "COMMIT").c_str(), nullptr, nullptr, nullptr);
    session.Open();
    session.Windows.Register("ContestNewQso",
                             [this] { return std::make_unique<ContestNewQso>(session); });
    session.Windows.Register("Contest", [this] { return std::make_unique<ContestForm>(session); });
    session.Windows.Register("StatContest",
                             [this] { return std::make_unique<StatContest>(session); });
    session.CurrentContest = {"07/09/2024", "  2 m", "IARU VHF", "JN61FV", true, true, true};
  }
  ~Station() {
    session.CloseTables();
    sqlite3_close(file);
  }

  ScratchDirectory directory;
  RecordingPlatform machine{[](const std::string&) {}};
  Session session{machine, directory.Path()};
  sqlite3* file = nullptr;
};

Station& TheStation() {
  static Station station;
  return station;
}

ContestNewQso& TheEntry() {
  static auto& entry =
      static_cast<ContestNewQso&>(*TheStation().session.Windows.LoadNew("ContestNewQso"));
  return entry;
}

void PrepareEntry(benchmark::State& state) {
  ContestNewQso& entry = TheEntry();
  entry.Operation.SetText("I");
  for (auto _ : state) {
    entry.UltimoProgr = 0;
    entry.Activate();
  }
  if (entry.ProgrD.Text() != std::to_string(kContacts + 1)) state.SkipWithError("wrong serial");
}

void PrepareByHand(benchmark::State& state) {
  sqlite3* file = TheStation().file;
  Hand last(file, std::string("SELECT max(ProgrDato) FROM \"Contest Qso\"") + kWhere);
  Hand row(file, std::string("SELECT * FROM \"Contest Qso\"") + kWhere + " AND ProgrDato=3000");
  for (auto _ : state) {
    last.Run();
    row.Run();
  }
}

void CheckDuplicate(benchmark::State& state) {
  ContestNewQso& entry = TheEntry();
  entry.ProgrD.SetText(std::to_string(kContacts + 1));
  entry.CallQso.SetText("IK3NEW");
  for (auto _ : state) entry.CallQso.Leave();
}

void DuplicateByHand(benchmark::State& state) {
  Hand find(TheStation().file, std::string("SELECT ProgrDato FROM \"Contest Qso\"") + kWhere +
                                   " AND rtrim(Call) COLLATE NOCASE='IK3NEW' AND ProgrDato<>3001");
  for (auto _ : state) find.Run();
}

void Statistics(benchmark::State& state) {
  Session& session = TheStation().session;
  for (auto _ : state) session.Windows.Unload(*session.Windows.LoadNew("StatContest"));
}

void StatisticsByHand(benchmark::State& state) {
  Hand rows(
      TheStation().file,
      std::string("SELECT ProgrDato,Call,Locator,Qrb,Punti,Note FROM \"Contest Qso\"") + kWhere);
  for (auto _ : state) rows.Run();
}

void Export(benchmark::State& state) {
  Session& session = TheStation().session;
  auto& contest = static_cast<ContestForm&>(*session.Windows.LoadNew("Contest"));
  for (auto _ : state) contest.cmExport();
  const auto bytes = std::filesystem::file_size(session.File("I4ABC.txt"));
  if (bytes < kContacts * 40) state.SkipWithError("short file");
  session.Windows.Unload(contest);
}

void ExportByHand(benchmark::State& state) {
  Hand rows(TheStation().file, std::string("SELECT * FROM \"Contest Qso\"") + kWhere);
  for (auto _ : state) rows.Run();
}

constexpr PairOfTasks kTasks[] = {
    {"prepare an entry", PrepareEntry, PrepareByHand},
    {"check a duplicate", CheckDuplicate, DuplicateByHand},
    {"statistics", Statistics, StatisticsByHand},
    {"export", Export, ExportByHand},
};

}  // namespace
}  // namespace brenvo

int main(int argc, char** argv) { return brenvo::RunPairs(argc, argv, brenvo::kTasks); }
