// What is worked and confirmed, in memory: how long the index takes to make and how much memory,
// and a question to it. By hand: the same question put to SQLite with a statement compiled once;
// and the best method known, a hash table of exactly what is asked.
#include <fmt/format.h>
#include <malloc.h>

#include <cstdio>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "file/database_file.h"
#include "tests/support/places.h"
#include "worked/build.h"

namespace brenvo::bench {
namespace {

constexpr int kQuestions = 20'000;

double Megabytes(std::size_t bytes) { return static_cast<double>(bytes) / 1e6; }

// What the program holds from the system's allocator.
std::size_t Allocated() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

struct Question {
  std::string call, country, square, band;
};

class WorkedTasks {
 public:
  WorkedTasks(const Figures& figures, std::int64_t contacts)
      : figures_(figures), contacts_(contacts), directory_(contacts) {
    database_ = file::OpenDatabaseFile(directory_.File());
    if (sqlite3_open(directory_.File().c_str(), &file_) != SQLITE_OK) {
      throw std::runtime_error("no database");
    }
    RunByHand(file_, "PRAGMA cache_size = -32768");
  }
  ~WorkedTasks() {
    database_.Close();
    sqlite3_close(file_);
  }
  WorkedTasks(const WorkedTasks&) = delete;
  WorkedTasks& operator=(const WorkedTasks&) = delete;

  void Run() {
    Build();
    DrawQuestions();
    Ask();
    AddAndRemove();
  }

 private:
  void Build() {
    const std::size_t before = Allocated();
    figures_.Compare(
        contacts_, "the index made", 3,
        [&] {
          built_.reset();
          built_ = worked::BuildIndex(*database_.OpenReader(), rules_);
        },
        [&] {
          Hand rows(
              file_,
              "SELECT QsoNr,Call,Prefisso,Country,Continente,Provincia,Locator,Banda,Modo,"
              "Propagazione,\"Zona CQ\",\"Zona ITU\",QslRicevuta,Note FROM Log ORDER BY QsoNr");
          rows.ReadAll();
        });
    figures_.Value(
        contacts_, "the index, memory",
        fmt::format("{:.1f} MB, of these the table {:.1f} MB", Megabytes(Allocated() - before),
                    Megabytes(built_->index.Bytes() + built_->kept.Bytes())));
  }

  // Half of what is asked is in the log, half is not.
  void DrawQuestions() {
    std::vector<Question> drawn;
    Hand rows(file_, "SELECT Call,Country,substr(Locator,1,4),Banda FROM Log");
    while (rows.Step()) drawn.push_back({rows.Cell(0), rows.Cell(1), rows.Cell(2), rows.Cell(3)});
    std::mt19937_64 random(1);
    for (int i = 0; i < kQuestions; ++i) {
      Question question = drawn[random() % drawn.size()];
      question.band = drawn[random() % drawn.size()].band;
      if (i % 2 == 0) question.call += "/P";
      questions_.push_back(std::move(question));
    }
    for (const Question& each : drawn) ++known_[each.call + '|' + each.band];
  }

  void Ask() {
    const worked::WorkedIndex& index = built_->index;
    std::int64_t found = 0, foundByHand = 0;
    Ask(
        "a call on a band",
        [&](const Question& asked) {
          found += index.Ask(worked::Subject::Call(asked.call), {.band = asked.band}).contacts > 0;
        },
        "SELECT 1 FROM Log WHERE rtrim(Call) COLLATE NOCASE = rtrim(?) AND rtrim(Banda) COLLATE "
        "NOCASE = rtrim(?) LIMIT 1",
        [&](Hand& hand, const Question& asked) {
          foundByHand += hand.Finds({asked.call, asked.band});
        });
    Compare(found, foundByHand);
    Ask(
        "a country, ever",
        [&](const Question& asked) {
          found += index.Ask(worked::Subject::Country(asked.country)).contacts > 0;
        },
        "SELECT 1 FROM Log WHERE rtrim(Country) COLLATE NOCASE = rtrim(?) "
        "LIMIT 1",
        [&](Hand& hand, const Question& asked) { foundByHand += hand.Finds({asked.country}); });
    Compare(found, foundByHand);
    Ask(
        "a square on a band",
        [&](const Question& asked) {
          found +=
              index.Ask(worked::Subject::Square(asked.square), {.band = asked.band}).contacts > 0;
        },
        "SELECT 1 FROM Log WHERE rtrim(substr(Locator,1,4)) COLLATE NOCASE = rtrim(?) AND "
        "rtrim(Banda) COLLATE NOCASE = rtrim(?) AND length(?1) = 4 LIMIT 1",
        [&](Hand& hand, const Question& asked) {
          foundByHand += hand.Finds({asked.square, asked.band});
        });
    Compare(found, foundByHand);

    Samples table;
    std::int64_t there = 0;
    table.Measure([&] {
      std::string key;
      for (const Question& asked : questions_) {
        key = asked.call;
        key += '|';
        key += asked.band;
        there += known_.contains(key);
      }
    });
    figures_.Value(contacts_, "one, by a table of nothing else",
                   fmt::format("{:.3f} us", table.Median() * 1000 / kQuestions));
  }

  template <class Program, class ByHand>
  void Ask(std::string_view what, const Program& program, std::string_view sql,
           const ByHand& byHand) {
    Hand hand(file_, sql);
    figures_.Compare(
        contacts_, fmt::format("20,000 questions, {}", what), 3,
        [&] {
          for (const Question& asked : questions_) program(asked);
        },
        [&] {
          for (const Question& asked : questions_) byHand(hand, asked);
        });
  }

  static void Compare(std::int64_t& found, std::int64_t& foundByHand) {
    if (found != foundByHand) {
      std::printf("the answers differ: %lld and %lld\n", static_cast<long long>(found),
                  static_cast<long long>(foundByHand));
    }
    found = foundByHand = 0;
  }

  void AddAndRemove() {
    Samples samples;
    samples.Measure([&] {
      for (const Question& asked : questions_) {
        worked::Contact contact;
        contact.Call = asked.call;
        contact.Country = asked.country;
        contact.Locator = asked.square;
        contact.Banda = asked.band;
        contact.Modo = "SSB";
        built_->index.Add(contact);
        if (!built_->index.Remove(contact)) std::abort();
      }
    });
    figures_.Value(contacts_, "a contact added and taken away",
                   fmt::format("{:.2f} us", samples.Median() * 1000 / kQuestions));
  }

  const Figures& figures_;
  std::int64_t contacts_;
  BenchDirectory directory_;
  engine::Database database_;
  sqlite3* file_ = nullptr;
  std::shared_ptr<const worked::Rules> rules_ = std::make_shared<const worked::Rules>(
      worked::ReadRules(SourceDir() / "data" / "rules" / "Lavorati.csv", ""));
  std::optional<worked::Built> built_;
  std::vector<Question> questions_;
  std::unordered_map<std::string, int> known_;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("worked", argc, argv);
  for (const std::int64_t size : figures.Sizes()) WorkedTasks(figures, size).Run();
}
