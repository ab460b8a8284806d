// What the list of contacts costs: opened with its first rows, scrolled by screens, sorted,
// filtered letter by letter, marked; and what is read behind it in the background, here in the same
// thread. By hand: the keys of the same contacts by one statement, and their rows by their keys.
#include <fmt/format.h>

#include <algorithm>
#include <random>
#include <string>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "list/elenco.h"

namespace brenvo::bench {
namespace {

constexpr std::int64_t kScreen = 40;  // rows
constexpr int kScrolls = 500;

class ListTasks {
 public:
  ListTasks(const Figures& figures, BenchStation& station)
      : figures_(figures),
        station_(station),
        row_(station.file, "SELECT * FROM Log WHERE QsoNr=?1") {}

  void Run() {
    // What the station itself reads behind its start is none of the list's.
    station_.machine.Advance(3000);
    if (figures_.Wants("opened")) Opened();
    if (!figures_.WantsAnyOf(
            {"rest", "a screen", "column", "filter", "words", "sort", "all marked"})) {
      return;
    }
    Open();
    Rest();
    Scroll();
    Filters();
    Sorts();
    Marks();
    station_.Close(*list_);
  }

 private:
  void Open() { list_ = &station_.Open<list::Elenco>("Elenco"); }
  // Whatever waits in the background is done.
  void Wait() {
    for (int i = 0; i < 3; ++i) station_.machine.Advance(50);
  }
  void Event(const std::function<void()>& event) { station_.session.Windows.RunEvent(event); }
  forms::GridArranger& Arranger() { return *list_->Tabella.Arranger(); }
  int ColumnOf(std::string_view heading) {
    for (int i = 0; i < list_->Tabella.Columns(); ++i) {
      if (list_->Tabella.Cell(0, i).starts_with(heading)) return i;
    }
    throw std::runtime_error("no such column");
  }
  void Filter(std::string_view heading, std::string_view text) {
    Event([&] { Arranger().SetFilterText(ColumnOf(heading), text); });
  }
  // Every cell of a screen's rows.
  void Show(std::int64_t first) {
    forms::DataGrid& table = list_->Tabella;
    const std::int64_t rows = table.Rows();
    for (std::int64_t row = first; row < std::min(first + kScreen, rows); ++row) {
      for (int column = 0; column < table.Columns(); ++column) table.Cell(row, column);
    }
  }
  void ShowByHand(const std::vector<std::int64_t>& keys, std::size_t first) {
    for (std::size_t i = first; i < std::min(first + kScreen, keys.size()); ++i) {
      row_.Done();
      row_.Number(1, keys[i]);
      if (row_.Step()) row_.Touch();
    }
  }
  std::vector<std::int64_t> Keys(const std::string& select) {
    std::vector<std::int64_t> keys;
    Hand hand(station_.file, select);
    while (hand.Step()) keys.push_back(hand.Key());
    return keys;
  }

  void Opened() {
    Samples program, hand;
    for (int i = 0; i < 20; ++i) {
      program.Measure([&] {
        Open();
        Show(1);
      });
      station_.Close(*list_);
      hand.Measure([&] {
        ShowByHand(Keys("SELECT QsoNr FROM Log ORDER BY DataQso DESC,QsoNr DESC LIMIT 40"), 0);
      });
    }
    figures_.Line(station_.contacts, "opened, first screen", program, hand);
  }

  void Rest() {
    Samples program, hand;
    program.Measure([&] { Wait(); });
    hand.Measure([&] { keys_ = Keys("SELECT QsoNr FROM Log ORDER BY DataQso DESC,QsoNr DESC"); });
    if (list_->Tabella.Rows() != std::ssize(keys_) + 1)
      throw std::runtime_error("rows are missing");
    figures_.Line(station_.contacts, "rest, in the background", program, hand);
  }

  void Scroll() {
    std::mt19937 dice(1);
    Samples program, hand;
    for (int i = 0; i < kScrolls; ++i) {
      const auto first = static_cast<std::int64_t>(dice() % keys_.size());
      program.Measure([&] { Show(first + 1); });
      hand.Measure([&] { ShowByHand(keys_, static_cast<std::size_t>(first)); });
    }
    figures_.Line(station_.contacts, "a screen anywhere", program, hand);
  }

  void Filters() {
    Samples column, columnByHand;
    column.Measure([&] {
      Filter("Call", "D");
      Wait();
    });
    columnByHand.Measure([&] {
      Hand all(station_.file, "SELECT QsoNr,Call FROM Log");
      all.ReadAll();
    });
    figures_.Line(station_.contacts, "column read, in the background", column, columnByHand);
    Samples program, hand;
    std::size_t found = 0;
    for (int i = 0; i < 10; ++i) {
      for (const char* text : {"=D", "DL", "DL1", "DL1A", "DL1A*"}) {
        program.Measure([&] {
          Filter("Call", text);
          Show(1);
        });
      }
      hand.Measure([&] {
        found =
            Keys("SELECT QsoNr FROM Log WHERE Call LIKE 'DL1A%' ORDER BY DataQso DESC,QsoNr DESC")
                .size();
      });
    }
    if (list_->Tabella.Rows() != static_cast<std::int64_t>(found) + 1) {
      throw std::runtime_error(
          fmt::format("{} contacts, by hand {}", list_->Tabella.Rows() - 1, found));
    }
    figures_.Line(station_.contacts, "filter, a letter", program, hand);
    Filter("Call", "");
    Samples words, wordsByHand;
    const auto search = [&](std::string_view text) {
      Event([&] { list_->Cerca.SetText(text); });
      Show(1);
    };
    words.Measure([&] {
      search("dl");
      Wait();
    });
    figures_.Line(station_.contacts, "words, all columns read", words, {});
    Samples again;
    for (int i = 0; i < 5; ++i) {
      again.Measure([&] { search("dl1"); });
      again.Measure([&] { search("dl1a 20"); });
      wordsByHand.Measure([&] {
        Keys(
            "SELECT QsoNr FROM Log WHERE Call LIKE '%dl1a%' OR Qra LIKE '%dl1a%' OR Qth LIKE "
            "'%dl1a%' OR Note LIKE '%dl1a%' OR Locator LIKE '%dl1a%' ORDER BY DataQso DESC");
      });
    }
    figures_.Line(station_.contacts, "words, a letter", again, wordsByHand, "by hand five columns");
    search("");
  }

  void Sorts() {
    const std::pair<const char*, const char*> kSorts[] = {
        {"Call", "SELECT QsoNr FROM Log ORDER BY Call COLLATE NOCASE"},
        {"Banda", "SELECT QsoNr FROM Log ORDER BY Banda"},
        {"DataQso", "SELECT QsoNr FROM Log ORDER BY DataQso"}};
    for (const auto& [heading, select] : kSorts) {
      const std::string column = heading, byHand = select;
      const auto sort = [&] { Event([&] { Arranger().SortBy(ColumnOf(column), false); }); };
      sort();
      Wait();
      Samples program, hand;
      for (int i = 0; i < 6; ++i) {
        program.Measure([&] {
          sort();
          Show(1);
        });
        hand.Measure([&] { Keys(byHand); });
      }
      figures_.Line(station_.contacts, fmt::format("sort by {}", heading), program, hand);
      Event([&] { list_->cmTogliFiltri.Press(); });
    }
  }

  void Marks() {
    Samples program;
    for (int i = 0; i < 4; ++i) {
      program.Measure([&] { Event([&] { list_->cmSegnaTutti.Press(); }); });
    }
    figures_.Line(station_.contacts, "all marked", program, {});
  }

  const Figures& figures_;
  BenchStation& station_;
  Hand row_;
  list::Elenco* list_ = nullptr;
  std::vector<std::int64_t> keys_;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("list", argc, argv);
  for (const std::int64_t contacts : figures.Sizes()) {
    BenchStation station(contacts);
    ListTasks(figures, station).Run();
  }
}
