// What the operator waits for on a screen that nobody sees: from the key to the painted answer. A
// contact is typed into the log window, key by key, and read through; nothing of it stands by hand.
#include <fmt/format.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QTableView>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "core/transaction.h"
#include "list/elenco.h"
#include "log/log_form.h"
#include "station/station.h"
#include "ui/qt_platform.h"

namespace brenvo::bench {
namespace {

constexpr int kContacts = 300, kSteps = 300;
constexpr int kOld = 1000, kTyped = 200;

// Everything that waits is done and painted.
void Settle() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

// The station as the operator has it before him, on a log of so many contacts.
class ScreenStation {
 public:
  explicit ScreenStation(std::int64_t contacts) : directory_(contacts) {
    platform_.Attach(&session_);
    if (station::StartStation(session_) == nullptr)
      throw std::runtime_error("the station does not start");
    platform_.Screen().Main().resize(1600, 900);
    Settle();
  }
  ~ScreenStation() {
    session_.Windows.RunEvent([&] { station::StopStation(session_); });
    platform_.Attach(nullptr);
  }

  std::filesystem::path File() const { return directory_.File(); }
  engine::Database& Db() { return session_.Db; }
  forms::Window& Open(const char* name) {
    session_.Windows.RunEvent(
        [&] { session_.Windows.Show(*(log_ = session_.Windows.LoadNew(name))); });
    Settle();
    return *log_;
  }
  log::LogForm& OpenLog() { return static_cast<log::LogForm&>(Open("LogForm")); }
  void CloseLog() {
    session_.Windows.RunEvent([&] { session_.Windows.Unload(*log_); });
    Settle();
  }
  void Press(forms::Command& command) {
    session_.Windows.RunEvent([&] { command.Press(); });
    Settle();
  }
  // A key to the widget that has the focus, and all that follows until it can be seen.
  void Key(int key, const QString& text = {}) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key, Qt::NoModifier, text);
      if (QWidget* focused = QApplication::focusWidget()) QApplication::sendEvent(focused, &event);
    }
    Settle();
  }
  template <class Widget>
  Widget* Find(const char* window, const char* field) {
    auto* frame = platform_.Screen().Main().findChild<QMdiSubWindow*>(QLatin1String(window));
    return frame->findChild<Widget*>(QLatin1String(field));
  }
  // What works beside gets on.
  void Pause() {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    Settle();
  }
  void FocusOn(const char* field) {
    auto* line = Find<QLineEdit>("LogForm", field);
    line->setFocus(Qt::TabFocusReason);
    line->selectAll();
    Settle();
  }

 private:
  BenchDirectory directory_;
  ui::QtPlatform platform_{directory_.Path()};
  core::Session session_{platform_, directory_.Path()};
  forms::Window* log_ = nullptr;
};

// Calls out of the whole log.
std::vector<std::string> CallsIn(const std::filesystem::path& file, std::int64_t contacts) {
  sqlite3* db = nullptr;
  sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  std::vector<std::string> calls;
  {
    std::mt19937_64 random(1);
    Hand contact(db, "SELECT Call FROM Log WHERE QsoNr>=? LIMIT 1");
    while (calls.size() < kContacts) {
      contact.Number(
          1, static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(contacts)) + 1);
      if (contact.Step()) calls.push_back(contact.Cell(0));
      contact.Done();
    }
  }
  sqlite3_close(db);
  return calls;
}

// Contacts with one station, years ago, on many bands.
void AddOldContacts(engine::Database& db, std::string_view call) {
  core::Transaction transaction(db);
  constexpr const char* kBands[] = {"  2 m", " 70cm", " 20 m", " 40 m", " 15 m"};
  for (int i = 0; i < kOld; ++i) {
    db.Execute(fmt::format(
        "insert into Log (DataQso,Call,Prefisso,Country,Locator,Banda,Modo,QslRicevuta) values "
        "('1995-{:02}-{:02} {:02}:00:00','{}','IK9','I','JM77{}','{}','SSB',{})",
        1 + i / 28 % 12, 1 + i % 28, i / 336, call, i % 2 == 0 ? "AA" : "BB", kBands[i % 5],
        i % 3 == 0));
  }
  transaction.Commit();
}

class ScreenTasks {
 public:
  ScreenTasks(const Figures& figures, std::int64_t contacts)
      : figures_(figures), contacts_(contacts), station_(contacts) {}

  void Run() {
    if (figures_.WantsAnyOf(
            {"log window", "a key of the call", "Tab out of the call", "the previous contact"})) {
      Log();
    }
    if (figures_.WantsAnyOf({"grid, painted", "grid, its other end, painted"})) Grid();
    if (figures_.WantsAnyOf({"list, its newest painted", "list, a screen anywhere, painted"})) {
      List();
    }
    if (figures_.WantsAnyOf({kLastKey, kLeavingIt})) OldFriend();
  }

 private:
  static constexpr const char* kLastKey =
      "last key of a call of 1,000 contacts, all windows and the map";
  static constexpr const char* kLeavingIt = "Tab out of the call of 1,000 contacts";

  void Tell(std::string_view task, const Samples& times) {
    if (figures_.Wants(task)) figures_.Line(contacts_, task, times, {});
  }

  void Log() {
    Samples opening;
    for (int i = 0; i < 5; ++i) {
      opening.Measure([&] { station_.OpenLog(); });
      station_.CloseLog();
    }
    Tell("log window, painted", opening);

    const std::vector<std::string> calls = CallsIn(station_.File(), contacts_);
    log::LogForm& log = station_.OpenLog();
    Samples key, leaving;
    for (const std::string& call : calls) {
      station_.Press(log.cmClear);
      station_.FocusOn("CallQso");
      for (const char each : call) {
        key.Measure([&] { station_.Key(each, QString(QLatin1Char(each))); });
      }
      if (log.CallQso.Text() != call) throw std::runtime_error("a key was lost: " + call);
      leaving.Measure([&] { station_.Key(Qt::Key_Tab, QStringLiteral("\t")); });
    }
    Tell("a key of the call, painted", key);
    Tell("Tab out of the call, painted", leaving);

    Samples previous;
    station_.Press(log.cmLast);
    for (int i = 0; i < kSteps; ++i) {
      previous.Measure([&] { station_.Press(log.cmPrevious); });
    }
    Tell("the previous contact, painted", previous);
    station_.CloseLog();
  }

  void Grid() {
    Samples opening, jumps;
    for (int i = 0; i < 5; ++i) {
      log::LogForm& log = station_.OpenLog();
      opening.Measure([&] { station_.Press(log.cmVista); });
      auto* bar = station_.Find<QTableView>("LogForm", "DataGrid1")->verticalScrollBar();
      for (int end = 0; end < 2; ++end) {
        jumps.Measure([&] {
          bar->setValue(bar->value() == bar->maximum() ? 0 : bar->maximum());
          Settle();
        });
      }
      station_.Press(log.cmVista);
      station_.CloseLog();
    }
    Tell("grid, painted", opening);
    Tell("grid, its other end, painted", jumps);
  }

  void List() {
    Samples opening;
    for (int i = 0; i < 5; ++i) {
      opening.Measure([&] { station_.Open("Elenco"); });
      station_.CloseLog();
    }
    Tell("list, its newest painted", opening);
    auto& elenco = static_cast<list::Elenco&>(station_.Open("Elenco"));
    while (elenco.Tabella.Rows() != contacts_ + 1) station_.Pause();
    auto* table = station_.Find<QTableView>("Elenco", "Tabella");
    Samples screen;
    std::mt19937 random(1);
    for (int i = 0; i < kSteps; ++i) {
      const auto place = static_cast<int>(random() % static_cast<unsigned>(contacts_));
      screen.Measure([&] {
        table->verticalScrollBar()->setValue(place);
        Settle();
      });
    }
    Tell("list, a screen anywhere, painted", screen);
    station_.CloseLog();
  }

  // A friend of thirty years is typed, with every window that says something of him, and the map.
  void OldFriend() {
    AddOldContacts(station_.Db(), "IK9ZZZ");
    for (const char* name : {"OldQsoForm", "OldQsoLocator", "Hrd", "HrdMode"}) station_.Open(name);
    log::LogForm& log = station_.OpenLog();
    for (forms::Command* choice : {&log.cmMappa, &log.cmWorked}) {
      if (!choice->Down()) station_.Press(*choice);
    }
    Samples last, leaving;
    for (int i = 0; i < kTyped; ++i) {
      station_.Press(log.cmClear);
      station_.FocusOn("CallQso");
      for (const char each : std::string_view("IK9ZZ")) {
        station_.Key(each, QString(QLatin1Char(each)));
      }
      last.Measure([&] { station_.Key('Z', QStringLiteral("Z")); });
      leaving.Measure([&] { station_.Key(Qt::Key_Tab, QStringLiteral("\t")); });
    }
    if (log.CallQso.Text() != "IK9ZZZ") throw std::runtime_error("a key was lost");
    Tell(kLastKey, last);
    Tell(kLeavingIt, leaving);
  }

  const Figures& figures_;
  std::int64_t contacts_;
  ScreenStation station_;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("screen", argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  for (const std::int64_t size : figures.Sizes()) ScreenTasks(figures, size).Run();
}
