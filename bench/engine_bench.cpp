// What the engine costs over SQLite itself: each task through the engine, and by hand with
// statements compiled once.
#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"

namespace brenvo::bench {
namespace {

constexpr const char* kInOrder = "SELECT * FROM Log ORDER By DataQso,QsoNr";
constexpr const char* kBand = "  2 m";

class EngineTasks {
 public:
  EngineTasks(const Figures& figures, BenchStation& station)
      : figures_(figures),
        station_(station),
        engine_(station.session.Db),
        file_(station.file),
        row_(file_, "SELECT * FROM \"Log\" WHERE rowid = ?") {
    Hand contact(file_, "SELECT Call,substr(Locator,1,4) FROM Log WHERE QsoNr=?");
    for (int i = 0; i < 2000; ++i) {
      contact.Number(1, AnyKey());
      contact.Step();
      calls_.push_back(contact.Cell(0));
      squares_.push_back(contact.Cell(1));
      contact.Done();
    }
  }

  void Run() {
    OneRow();
    Square();
    Seek();
    Keyset();
    FindFirst();
    GridRow();
    Add();
  }

 private:
  void Compare(std::string_view task, int runs, const std::function<void()>& program,
               const std::function<void()>& hand) {
    figures_.Compare(station_.contacts, task, runs, program, hand);
  }
  std::int64_t AnyKey() {
    return 1 + static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(station_.contacts));
  }
  const std::string& Next(const std::vector<std::string>& texts) {
    return texts[at_++ % texts.size()];
  }
  void ReadRow(std::int64_t key) {
    row_.Number(1, key);
    if (row_.Step()) row_.Touch();
    row_.Done();
  }

  void OneRow() {
    Hand find(file_,
              "SELECT \"Call\" FROM \"Log\" WHERE rtrim(\"Call\") COLLATE NOCASE = ? AND "
              "\"QslRicevuta\" = -1 AND rtrim(\"Banda\") COLLATE NOCASE = ? AND \"QsoNr\" <> 7");
    Compare(
        "one-row test", 5000,
        [&] {
          static_cast<void>(
              engine_
                  .OpenSnapshot(fmt::format("select Call from Log where Call='{}' and "
                                            "QslRicevuta=true and Banda='{}' and QsoNr<> 7",
                                            Next(calls_), kBand))
                  ->EOF_());
        },
        [&] {
          find.Finds({Next(calls_), kBand});
          find.Done();
        });
  }

  void Square() {
    Hand find(file_,
              "SELECT \"Call\" FROM \"Log\" WHERE rtrim(substr(\"Locator\", 1, 4)) COLLATE NOCASE "
              "= ? AND rtrim(\"Banda\") COLLATE NOCASE = ? AND \"QsoNr\" <> 7");
    Compare(
        "square test", 5000,
        [&] {
          static_cast<void>(
              engine_
                  .OpenSnapshot(fmt::format("select Call from Log where Locator like '{}*' and "
                                            "Banda='{}' and QsoNr<> 7",
                                            Next(squares_), kBand))
                  ->EOF_());
        },
        [&] {
          find.Finds({Next(squares_), kBand});
          find.Done();
        });
  }

  void Seek() {
    const auto table = engine_.OpenTable("Log");
    table->SetIndex("Call");
    Hand find(file_,
              "SELECT * FROM \"Log\" WHERE rtrim(\"Call\") COLLATE NOCASE = ? ORDER BY rowid "
              "LIMIT 1");
    Compare(
        "seek", 5000, [&] { table->Seek("=", {Next(calls_)}); },
        [&] {
          if (find.Finds({Next(calls_)})) find.Touch();
          find.Done();
        });
  }

  std::vector<std::int64_t> Keys() {
    Hand keys(file_, "SELECT rowid FROM \"Log\" ORDER BY \"DataQso\", rowid");
    std::vector<std::int64_t> all;
    while (keys.Step()) all.push_back(keys.Key());
    keys.Done();
    return all;
  }

  void Keyset() {
    Compare(
        "open keyset, last row", 5,
        [&] {
          const auto rows = engine_.OpenDynaset(kInOrder);
          rows->MoveLast();
          static_cast<void>(rows->Field("Call"));
        },
        [&] { ReadRow(Keys().back()); });
  }

  void FindFirst() {
    if (!figures_.Wants("find first")) return;
    const auto rows = engine_.OpenDynaset(kInOrder);
    rows->MoveLast();
    const std::vector<std::int64_t> keys = Keys();
    Hand find(file_, "SELECT rowid FROM \"Log\" WHERE \"QsoNr\" = ? ORDER BY \"DataQso\", rowid");
    Compare(
        "find first", 300,
        [&] {
          rows->FindFirst(fmt::format("QsoNr= {}", AnyKey()));
          static_cast<void>(rows->Field("Call"));
        },
        [&] {
          find.Number(1, AnyKey());
          find.Step();
          const std::int64_t key = find.Key();
          find.Done();
          ReadRow(*std::find(keys.begin(), keys.end(), key));
        });
  }

  void GridRow() {
    if (!figures_.Wants("grid row")) return;
    const auto rows = engine_.OpenDynaset("SELECT * FROM Log ORDER By DataQso DESC ,QsoNr");
    rows->MoveLast();
    Compare(
        "grid row", 5000, [&] { static_cast<void>(rows->RowAt(AnyKey() - 1)); },
        [&] { ReadRow(AnyKey()); });
  }

  void Add() {
    const auto rows = engine_.OpenDynaset("SELECT * FROM Log WHERE QsoNr=0");
    Hand insert(file_, "INSERT INTO Log (DataQso, Call, Banda, Locator, Qrb) VALUES (?,?,?,?,?)");
    // A day far from all others, so that no contact is entered twice.
    std::int64_t seconds = base::DateTime::Of(2100, 1, 1).Seconds();
    const auto moment = [&] { return base::DateTime::FromSeconds(seconds += 60); };
    Compare(
        "add and update", 100,
        [&] {
          rows->AddNew();
          rows->Set("DataQso", moment());
          rows->Set("Call", "I3ABC");
          rows->Set("Banda", kBand);
          rows->Set("Locator", "JN65FR");
          rows->Set("Qrb", 77);
          rows->Update();
        },
        [&] {
          insert.Text(1, base::IsoText(moment())).Text(2, "I3ABC").Text(3, kBand).Text(4, "JN65FR");
          insert.Number(5, 77);
          insert.Step();
          insert.Done();
        });
  }

  const Figures& figures_;
  BenchStation& station_;
  engine::Database& engine_;
  sqlite3* file_;
  Hand row_;
  std::mt19937_64 random_{1};
  std::vector<std::string> calls_, squares_;
  std::size_t at_ = 0;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("engine", argc, argv);
  for (const std::int64_t size : figures.Sizes()) {
    BenchStation station(size);
    EngineTasks(figures, station).Run();
  }
}
