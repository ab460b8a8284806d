// The log window: opening it, moving through its contacts, its grid, the search, and what is
// written. By hand the same rows are asked for, with all that showing a contact looks up.
#include <fmt/format.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/lookups_by_hand.h"
#include "log/log_form.h"
#include "log/log_search.h"
#include "log/old_qso.h"

namespace brenvo::bench {
namespace {

constexpr const char* kRow =
    "SELECT QsoNr,Call,Country,Provincia,Locator,DataQso,* FROM Log WHERE QsoNr=?";
constexpr int kPage = 30;  // rows of the grid on the screen

class LogByHand {
 public:
  explicit LogByHand(sqlite3* file) : file_(file) {}

  // The keys in the log's order, as a window keeps them that knows how many there are.
  std::vector<std::int64_t> Keys() { return KeysOf(keys_); }
  std::vector<std::int64_t> KeysOfGrid() { return KeysOf(gridKeys_); }
  void Show(std::int64_t key) {
    row_.Number(1, key);
    if (!row_.Step()) return row_.Done();
    row_.Touch();
    const std::string call = row_.Cell(1), country = row_.Cell(2), province = row_.Cell(3),
                      locator = row_.Cell(4);
    row_.Done();
    lookups_.Shown(call, country, province, locator);
  }
  void Page(const std::vector<std::int64_t>& keys, std::size_t first) {
    for (std::size_t i = first; i < first + kPage && i < keys.size(); ++i) {
      row_.Number(1, keys[i]);
      if (row_.Step()) row_.Touch();
      row_.Done();
    }
  }
  // The lists of the dialog, the keys that a search finds, once for the window and once for its
  // grid, and the last of its contacts shown.
  void Search(const std::string& where) {
    for (Hand* list : {&countries_, &bands_, &modes_, &propagations_}) {
      std::vector<std::string> entries;
      while (list->Step()) entries.push_back(list->Cell(0));
      list->Done();
    }
    Hand found(file_, "SELECT QsoNr FROM Log WHERE " + where + " ORDER BY DataQso,QsoNr");
    std::int64_t last = 0;
    for (int reader = 0; reader < 2; ++reader) {
      std::vector<std::int64_t> keys;
      while (found.Step()) keys.push_back(found.Key());
      found.Done();
      last = keys.back();
    }
    Show(last);
  }
  void Write(const char* sql, std::int64_t key, std::string_view date) {
    Hand write(file_, sql);
    write.Number(1, key).Text(2, date);
    write.Step();
    write.Done();
  }

 private:
  static std::vector<std::int64_t> KeysOf(Hand& hand) {
    std::vector<std::int64_t> keys;
    while (hand.Step()) keys.push_back(hand.Key());
    hand.Done();
    return keys;
  }

  sqlite3* file_;
  Hand keys_{file_, "SELECT QsoNr FROM Log ORDER BY DataQso,QsoNr"};
  Hand gridKeys_{file_, "SELECT QsoNr FROM Log ORDER BY DataQso DESC,QsoNr"};
  Hand row_{file_, kRow};
  Hand countries_{file_, "SELECT substr(Country || '     ', 1, 5) || Descrizione FROM Country"};
  Hand bands_{file_, "SELECT Banda FROM UserRTX ORDER BY Frequenza"};
  Hand modes_{file_, "SELECT Modo FROM Modi ORDER BY Codice"};
  Hand propagations_{file_, "SELECT Propagazione FROM Propagazione ORDER BY Codice"};
  LookupsByHand lookups_{file_, "  2 m", "0"};
};

class LogTasks {
 public:
  LogTasks(const Figures& figures, BenchStation& station)
      : figures_(figures), station_(station), hand_(station.file) {}

  void Run() {
    Open();
    log_ = &station_.Open<log::LogForm>("LogForm");
    keys_ = hand_.Keys();
    Move();
    Grid();
    Search();
    Write();
    station_.Close(*log_);
  }

 private:
  using Work = std::function<void()>;
  void Compare(std::string_view task, int runs, const Work& program, const Work& hand) {
    figures_.Compare(station_.contacts, task, runs, program, hand);
  }
  void Press(const char* key) {
    station_.session.Windows.RunEvent([&] { log_->FindCommand(key)->Press(); });
  }

  void Open() {
    forms::Window* window = nullptr;
    Compare(
        "open the window", 5,
        [&] {
          window = station_.session.Windows.LoadNew("LogForm");
          station_.session.Windows.Show(*window);
        },
        [&] {
          hand_.Show(hand_.Keys().back());
          station_.Close(*window);
        });
  }

  void Move() {
    bool atFirst = false;
    Compare(
        "first and last", 100, [&] { Press((atFirst = !atFirst) ? "cmFirst" : "cmLast"); },
        [&] { hand_.Show(atFirst ? keys_.front() : keys_.back()); });
    Press("cmFirst");
    std::size_t at = 0;
    Compare(
        "next", 500, [&] { Press("cmNext"); }, [&] { hand_.Show(keys_[++at]); });
    Compare(
        "previous", 500, [&] { Press("cmPrevious"); }, [&] { hand_.Show(keys_[--at]); });
  }

  void ReadPage(std::int64_t first) {
    forms::DataGrid& grid = log_->DataGrid1;
    for (std::int64_t row = first; row < first + kPage; ++row) {
      for (int column = 0; column < grid.Columns(); ++column) {
        static_cast<void>(grid.Cell(row, column));
      }
    }
  }

  void Grid() {
    if (!figures_.WantsAnyOf({"grid, opened and closed", "grid, a page further", "grid, any page"}))
      return;
    forms::Command& key = log_->cmVista;
    const auto show = [&] {
      key.Press();
      static_cast<void>(log_->DataGrid1.Rows());
      ReadPage(1);
      key.Press();
    };
    Compare("grid, opened and closed", 5, show, [&] { hand_.Page(hand_.KeysOfGrid(), 0); });
    key.Press();
    const std::int64_t rows = log_->DataGrid1.Rows();
    std::int64_t page = 1;
    Compare(
        "grid, a page further", 200, [&] { ReadPage(page); },
        [&] {
          hand_.Page(keys_, keys_.size() - static_cast<std::size_t>(page) - kPage);
          page = (page + kPage) % (rows - kPage);
        });
    std::mt19937_64 random(5);
    Compare(
        "grid, any page", 200, [&] { ReadPage(page); },
        [&] {
          hand_.Page(keys_, keys_.size() - static_cast<std::size_t>(page) - kPage);
          page = 1 +
                 static_cast<std::int64_t>(random() % static_cast<unsigned long>(rows - kPage - 1));
        });
    key.Press();
  }

  // The dialog opened, filled in and searched, the last contact found shown.
  void SearchFor(std::string_view task, const std::function<void(log::LogSearch&)>& fill,
                 const std::string& where) {
    station_.machine.Host().InModal = [&](forms::Window& dialog) {
      fill(static_cast<log::LogSearch&>(dialog));
      static_cast<log::LogSearch&>(dialog).cmSearch.Press();
    };
    Samples program, hand;
    if (!figures_.Wants(task)) return;
    for (int i = 0; i < 10; ++i) {
      program.Measure([&] { Press("cmSearch"); });
      hand.Measure([&] { hand_.Search(where); });
      Press("cmSearch");  // drops the selection
    }
    figures_.Line(station_.contacts, task, program, hand, fmt::format("{} contacts", Count(where)));
  }
  std::int64_t Count(const std::string& where) {
    Hand count(station_.file, "SELECT count(*) FROM Log WHERE " + where);
    count.Step();
    const std::int64_t rows = count.Key();
    count.Done();
    return rows;
  }

  void Search() {
    Hand middle(station_.file,
                "SELECT Call,Locator,DataQso FROM Log WHERE QsoNr>=? AND Locator<>''");
    middle.Number(1, station_.contacts / 2);
    middle.Step();
    const std::string call = middle.Cell(0), locator = middle.Cell(1).substr(0, 4),
                      day = middle.Cell(2).substr(0, 10);
    middle.Done();
    const std::string date = day.substr(8, 2) + "/" + day.substr(5, 2) + "/" + day.substr(0, 4);
    SearchFor(
        "search a call", [&](log::LogSearch& search) { search.CallQso.SetText(call); },
        "rtrim(\"Call\") COLLATE NOCASE='" + call + "'");
    SearchFor(
        "search a square", [&](log::LogSearch& search) { search.Locator.SetText(locator + "*"); },
        "rtrim(substr(\"Locator\", 1, 4)) COLLATE NOCASE='" + locator + "'");
    SearchFor(
        "search a day", [&](log::LogSearch& search) { search.DataQso.SetText(date); },
        fmt::format("DataQso>='{0}' AND DataQso<'{0}~'", day));
    SearchFor(
        "search a word in the notes",
        [&](log::LogSearch& search) { search.Note.SetText("portatile"); },
        "Note LIKE '%portatile%'");
    Press("cmSearch");
    if (log_->cmSearch.Down()) Press("cmSearch");
  }

  // A contact typed for each write, a minute later each time.
  void Write() {
    if (!figures_.WantsAnyOf({"insert", "update", "delete"})) return;
    std::int64_t minute = 1;
    const auto when = [&](int year) {
      return base::DateTime::FromSeconds(base::DateTime::Of(year, 1, 1).Seconds() + minute * 60);
    };
    Press("cmLast");
    constexpr int kKeysATime = 16'384;
    Samples rest;
    rest.Measure([&] {
      while (station_.session.Db.ReadOn(kKeysATime)) {
      }
    });
    if (figures_.Wants("insert")) {
      figures_.Line(station_.contacts, "insert, keys read before it, in the background", rest, {});
    }
    std::int64_t made = 0;
    Samples first, program, hand;
    constexpr int kWrites = 100;
    for (int i = 0; i < kWrites; ++i) {
      ++minute;
      log_->DataQso.SetText(base::DateText(when(2026)));
      log_->Qtr.SetText(base::TimeText(when(2026)).substr(0, 5));
      (i == 0 ? first : program).Measure([&] { Press("cmInsert"); });
      hand.Measure([&] {
        hand_.Write(
            "INSERT INTO Log (DataQso,Call,Manager,Qra,Qth,Prefisso,\"Zona CQ\",\"Zona "
            "ITU\",Continente,Country,Provincia,Locator,Qrb,Banda,Frequenza,Potenza,Modo,"
            "Propagazione,QrkDato,QrkRicevuto,QslDaInviare,QslRicevuta,QslInviata,Note) "
            "SELECT ?2,Call,Manager,Qra,Qth,Prefisso,\"Zona CQ\",\"Zona ITU\",Continente,"
            "Country,Provincia,Locator,Qrb,Banda,Frequenza,Potenza,Modo,Propagazione,"
            "QrkDato,QrkRicevuto,QslDaInviare,QslRicevuta,QslInviata,Note FROM Log WHERE "
            "QsoNr=?1",
            keys_.back(), base::IsoText(when(2027)));
      });
      made = sqlite3_last_insert_rowid(station_.file);
    }
    if (figures_.Wants("insert")) {
      figures_.Line(station_.contacts, "insert", program, hand);
      figures_.Line(station_.contacts, "insert, the first after opening", first, hand);
    }
    Press("cmLast");
    Samples updates, updatesByHand;
    for (int i = 0; i < kWrites; ++i) {
      log_->Note.SetText(fmt::format("nota {}", i));
      updates.Measure([&] { Press("cmUpdate"); });
      updatesByHand.Measure([&] {
        hand_.Write(
            "UPDATE Log SET (DataQso,Call,Manager,Qra,Qth,Prefisso,\"Zona CQ\",\"Zona "
            "ITU\",Continente,Country,Provincia,Locator,Qrb,Banda,Frequenza,Potenza,Modo,"
            "Propagazione,QrkDato,QrkRicevuto,QslDaInviare,QslRicevuta,QslInviata,Note)="
            "(DataQso,Call,Manager,Qra,Qth,Prefisso,\"Zona CQ\",\"Zona ITU\",Continente,"
            "Country,Provincia,Locator,Qrb,Banda,Frequenza,Potenza,Modo,Propagazione,"
            "QrkDato,QrkRicevuto,QslDaInviare,QslRicevuta,QslInviata,?2) WHERE QsoNr=?1",
            made, log_->Note.Text());
      });
    }
    if (figures_.Wants("update"))
      figures_.Line(station_.contacts, "update", updates, updatesByHand);
    Samples deletes, deletesByHand;
    for (int i = 0; i < kWrites; ++i) {
      station_.machine.Messages().QueueAnswer(true);
      deletes.Measure([&] { Press("cmDelete"); });
      deletesByHand.Measure([&] {
        hand_.Write("DELETE FROM Log WHERE QsoNr=?1 AND ?2<>''", made--, "x");
        hand_.Show(keys_.back());
      });
    }
    if (figures_.Wants("delete"))
      figures_.Line(station_.contacts, "delete", deletes, deletesByHand);
  }

  const Figures& figures_;
  BenchStation& station_;
  LogByHand hand_;
  log::LogForm* log_ = nullptr;
  std::vector<std::int64_t> keys_;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("log", argc, argv);
  for (const std::int64_t size : figures.Sizes()) {
    BenchStation station(size);
    LogTasks(figures, station).Run();
  }
}
