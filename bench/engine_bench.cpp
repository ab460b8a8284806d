// Links: engine
// What the engine costs over SQLite itself: each task through the engine, and by hand with
// statements prepared once. The last column of a pair's line is their ratio.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <map>
#include <memory>
#include <random>
#include <string>

#include "tests/support/scratch_database.h"

namespace brenvo {
namespace {

constexpr const char* kBands[] = {" 80 m", " 40 m", " 20 m", "  6 m", "  2 m", " 70cm"};

std::string CallOf(std::int64_t number) {
  std::string call = "I0AAAA";
  call[1] = static_cast<char>('0' + number % 10);
  number /= 10;
  for (std::size_t i = 2; i < 6; ++i, number /= 26) call[i] = static_cast<char>('A' + number % 26);
  return call;
}

// One statement by hand.
class Hand {
 public:
  Hand(sqlite3* file, const std::string& sql) {
    if (sqlite3_prepare_v3(file, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &statement_,
                           nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(file));
    }
  }
  ~Hand() { sqlite3_finalize(statement_); }
  Hand(const Hand&) = delete;
  Hand& operator=(const Hand&) = delete;

  Hand& Text(int at, const std::string& text) {
    sqlite3_bind_text(statement_, at, text.c_str(), static_cast<int>(text.size()),
                      SQLITE_TRANSIENT);
    return *this;
  }
  Hand& Number(int at, std::int64_t number) {
    sqlite3_bind_int64(statement_, at, number);
    return *this;
  }
  bool Step() { return sqlite3_step(statement_) == SQLITE_ROW; }
  std::int64_t Key() const { return sqlite3_column_int64(statement_, 0); }
  // As text, number or date as the program would read it.
  void Touch(int columns) const {
    for (int i = 0; i < columns; ++i) benchmark::DoNotOptimize(sqlite3_column_value(statement_, i));
  }
  void Reset() { sqlite3_reset(statement_); }

 private:
  sqlite3_stmt* statement_ = nullptr;
};

// A log of so many contacts, made once a size.
struct Log {
  explicit Log(std::int64_t size) : contacts(size) {
    sqlite3* maker = nullptr;
    sqlite3_open(scratch.File().c_str(), &maker);
    sqlite3_exec(maker, "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN", nullptr, nullptr,
                 nullptr);
    {
      Hand insert(maker,
                  "INSERT INTO Log (DataQso, Call, Banda, Locator, Country, Prefisso, \"Zona CQ\", "
                  "\"Zona ITU\", Continente, Provincia, Modo, QslRicevuta, Qra, Qth, Note) VALUES "
                  "(?,?,?,?,?,?,15,28,'EU','PD','SSB',?,'MARIO','PADOVA','[Exc=12]')");
      const DateTime first = DateTime::Of(1980, 1, 1);
      for (std::int64_t i = 0; i < size; ++i) {
        std::string square = "JN00AA";
        square[2] = static_cast<char>('0' + i / 7 % 10);
        square[3] = static_cast<char>('0' + i / 70 % 10);
        insert.Text(1, IsoText(DateTime::FromSeconds(first.Seconds() + i * 300)))
            .Text(2, CallOf(i * 7919 % size))
            .Text(3, kBands[i % 6])
            .Text(4, square)
            .Text(5, "C" + std::to_string(i % 300))
            .Text(6, "I" + std::to_string(i % 10))
            .Number(7, -(i % 3 == 0));
        insert.Step();
        insert.Reset();
      }
    }
    sqlite3_exec(maker, "COMMIT; PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
    sqlite3_close(maker);

    engine = scratch.Open();
    sqlite3_open_v2(scratch.File().c_str(), &file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                    nullptr);
    sqlite3_exec(file, "PRAGMA synchronous=FULL; PRAGMA cache_size=-32768", nullptr, nullptr,
                 nullptr);
    sqlite3_busy_timeout(file, 2000);
  }
  ~Log() {
    engine.Close();
    sqlite3_close(file);
  }

  std::int64_t contacts;
  ScratchDatabase scratch;
  Database engine;
  sqlite3* file = nullptr;
};

Log& LogOf(std::int64_t size) {
  static std::map<std::int64_t, std::unique_ptr<Log>> logs;
  auto& log = logs[size];
  if (!log) log = std::make_unique<Log>(size);
  return *log;
}

// The same calls for the engine and by hand.
class Calls {
 public:
  explicit Calls(const Log& log) : any_(0, log.contacts - 1) {}
  std::int64_t Number() { return any_(random_); }
  std::string Call() { return CallOf(Number()); }

 private:
  std::mt19937_64 random_{1};
  std::uniform_int_distribution<std::int64_t> any_;
};

void OneRowEngine(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Calls calls(log);
  for (auto _ : state) {
    const auto rows = log.engine.OpenSnapshot("select Call from Log where Call='" + calls.Call() +
                                              "' and QslRicevuta=true and Banda='  2 m' and "
                                              "QsoNr<> 7");
    benchmark::DoNotOptimize(rows->EOF_());
  }
}

void OneRowHand(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Calls calls(log);
  Hand find(log.file,
            "SELECT \"Call\" FROM \"Log\" WHERE rtrim(\"Call\") COLLATE NOCASE = ? AND "
            "\"QslRicevuta\" = -1 AND rtrim(\"Banda\") COLLATE NOCASE = ? AND \"QsoNr\" <> ?");
  for (auto _ : state) {
    find.Text(1, calls.Call()).Text(2, "  2 m").Number(3, 7);
    benchmark::DoNotOptimize(find.Step());
    find.Reset();
  }
}

void SquareEngine(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Calls calls(log);
  for (auto _ : state) {
    const auto rows = log.engine.OpenSnapshot("select Call from Log where Locator like 'JN" +
                                              std::to_string(10 + calls.Number() % 90) +
                                              "*' and Banda='  2 m' and QsoNr<> 7");
    benchmark::DoNotOptimize(rows->EOF_());
  }
}

void SquareHand(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Calls calls(log);
  Hand find(log.file,
            "SELECT \"Call\" FROM \"Log\" WHERE rtrim(substr(\"Locator\", 1, 4)) COLLATE NOCASE = "
            "? AND rtrim(\"Banda\") COLLATE NOCASE = ? AND \"QsoNr\" <> ?");
  for (auto _ : state) {
    find.Text(1, "JN" + std::to_string(10 + calls.Number() % 90)).Text(2, "  2 m").Number(3, 7);
    benchmark::DoNotOptimize(find.Step());
    find.Reset();
  }
}

void SeekEngine(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Calls calls(log);
  const auto table = log.engine.OpenTable("Log");
  table->SetIndex("Call");
  for (auto _ : state) {
    table->Seek("=", {calls.Call()});
    benchmark::DoNotOptimize(table->NoMatch());
  }
}

void SeekHand(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Calls calls(log);
  Hand find(
      log.file,
      "SELECT * FROM \"Log\" WHERE rtrim(\"Call\") COLLATE NOCASE = ? ORDER BY rowid LIMIT 1");
  for (auto _ : state) {
    find.Text(1, calls.Call());
    benchmark::DoNotOptimize(find.Step());
    find.Touch(25);
    find.Reset();
  }
}

void KeysetEngine(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  for (auto _ : state) {
    const auto rows = log.engine.OpenDynaset("SELECT * FROM Log ORDER By DataQso,QsoNr");
    rows->MoveLast();
    benchmark::DoNotOptimize(rows->Field("Call"));
  }
}

void KeysetHand(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Hand keys(log.file, "SELECT rowid FROM \"Log\" ORDER BY \"DataQso\", rowid");
  Hand row(log.file, "SELECT * FROM \"Log\" WHERE rowid = ?");
  for (auto _ : state) {
    std::vector<std::int64_t> all;
    while (keys.Step()) all.push_back(keys.Key());
    keys.Reset();
    row.Number(1, all.back());
    row.Step();
    row.Touch(25);
    row.Reset();
  }
}

void FindFirstEngine(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Calls calls(log);
  const auto rows = log.engine.OpenDynaset("SELECT * FROM Log ORDER By DataQso,QsoNr");
  rows->MoveLast();
  for (auto _ : state) {
    rows->FindFirst("QsoNr= " + std::to_string(calls.Number() + 1));
    benchmark::DoNotOptimize(rows->Field("Call"));
  }
}

void FindFirstHand(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Calls calls(log);
  std::vector<std::int64_t> all;
  Hand keys(log.file, "SELECT rowid FROM \"Log\" ORDER BY \"DataQso\", rowid");
  while (keys.Step()) all.push_back(keys.Key());
  keys.Reset();
  Hand find(log.file,
            "SELECT rowid FROM \"Log\" WHERE \"QsoNr\" = ? ORDER BY \"DataQso\", rowid LIMIT 1");
  Hand row(log.file, "SELECT * FROM \"Log\" WHERE rowid = ?");
  for (auto _ : state) {
    find.Number(1, calls.Number() + 1);
    find.Step();
    const std::int64_t key = find.Key();
    find.Reset();
    benchmark::DoNotOptimize(std::find(all.begin(), all.end(), key));
    row.Number(1, key);
    row.Step();
    row.Touch(25);
    row.Reset();
  }
}

void GridEngine(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Calls calls(log);
  const auto rows = log.engine.OpenDynaset("SELECT * FROM Log ORDER By DataQso DESC ,QsoNr");
  rows->MoveLast();
  for (auto _ : state) benchmark::DoNotOptimize(rows->RowAt(calls.Number()));
}

void GridHand(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Calls calls(log);
  Hand row(log.file, "SELECT * FROM \"Log\" WHERE rowid = ?");
  for (auto _ : state) {
    row.Number(1, calls.Number() + 1);
    row.Step();
    row.Touch(25);
    row.Reset();
  }
}

// A day far from all others, so that no contact is entered twice.
std::int64_t NextMoment() {
  static std::int64_t next = DateTime::Of(2100, 1, 1).Seconds();
  return next += 60;
}

void AddEngine(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  const auto rows = log.engine.OpenDynaset("SELECT * FROM Log WHERE QsoNr=0");
  for (auto _ : state) {
    rows->AddNew();
    rows->Set("DataQso", DateTime::FromSeconds(NextMoment()));
    rows->Set("Call", "I3ABC");
    rows->Set("Banda", "  2 m");
    rows->Set("Locator", "JN65FR");
    rows->Set("Qrb", 77);
    rows->Update();
  }
}

void AddHand(benchmark::State& state) {
  Log& log = LogOf(state.range(0));
  Hand insert(log.file, "INSERT INTO Log (DataQso, Call, Banda, Locator, Qrb) VALUES (?,?,?,?,?)");
  for (auto _ : state) {
    insert.Text(1, IsoText(DateTime::FromSeconds(NextMoment())))
        .Text(2, "I3ABC")
        .Text(3, "  2 m")
        .Text(4, "JN65FR")
        .Number(5, 77);
    insert.Step();
    insert.Reset();
  }
}

struct Task {
  const char* name;
  void (*engine)(benchmark::State&);
  void (*hand)(benchmark::State&);
};
constexpr Task kTasks[] = {
    {"one-row test", OneRowEngine, OneRowHand},
    {"square test", SquareEngine, SquareHand},
    {"seek", SeekEngine, SeekHand},
    {"open keyset", KeysetEngine, KeysetHand},
    {"find first", FindFirstEngine, FindFirstHand},
    {"grid row", GridEngine, GridHand},
    {"add and update", AddEngine, AddHand},
};

// Prints a line per task and size: both times and their ratio.
class Ratios : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override {
    std::printf("%-16s %10s %14s %14s %8s\n", "task", "contacts", "engine us", "by hand us",
                "ratio");
    return true;
  }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") continue;
      const double time = run.GetAdjustedRealTime();
      std::string name = run.run_name.function_name;
      const std::string size = run.run_name.args;
      const auto mark = name.rfind(' ');
      const bool engine = name.substr(mark + 1) == "E";
      name.resize(mark);
      if (engine) {
        engine_ = time;
        continue;
      }
      std::printf("%-16s %10s %14.2f %14.2f %8.2f\n", name.c_str(), size.c_str(), engine_, time,
                  engine_ / time);
      std::fflush(stdout);
    }
  }

 private:
  double engine_ = 0;
};

}  // namespace
}  // namespace brenvo

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  for (const std::int64_t size : {10'000, 1'000'000}) {
    for (const brenvo::Task& task : brenvo::kTasks) {
      for (const auto& [mark, work] : {std::pair{" E", task.engine}, {" H", task.hand}}) {
        benchmark::RegisterBenchmark((task.name + std::string(mark)).c_str(), work)
            ->Arg(size)
            ->Unit(benchmark::kMicrosecond)
            ->MinTime(0.2)
            ->Repetitions(3);
      }
    }
  }
  brenvo::Ratios ratios;
  benchmark::RunSpecifiedBenchmarks(&ratios);
  return 0;
}
