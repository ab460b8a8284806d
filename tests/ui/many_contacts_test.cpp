// The main job, done by hand: more than two hundred contacts typed into the real log window by key
// events, compared with what is stored, before and after a restart.
#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "station/station.h"
#include "tests/support/station.h"
#include "ui/qt_platform.h"

namespace brenvo::ui {
namespace {

// Calls of as many countries as a good year brings.
constexpr const char* kCalls[] = {
    "IK3ABC", "IS0XYZ", "F5ABC",  "DL1ABC", "G3XYZ",  "EA3ABC", "EA8XYZ", "EA6ABC", "CT1ABC",
    "CU2ABC", "CT3ABC", "HB9ABC", "OE1XYZ", "9A2AA",  "S51ABC", "OK1ABC", "OM3ABC", "HA5ABC",
    "YO3ABC", "LZ1ABC", "YU1ABC", "E71ABC", "Z31ABC", "ZA1ABC", "SV1ABC", "SV9ABC", "SV5ABC",
    "TA1ABC", "5B4ABC", "4X1ABC", "OD5ABC", "SU1ABC", "CN8ABC", "7X2ABC", "EA9ABC", "ZB2ABC",
    "9H1ABC", "TK5ABC", "HV0A",   "T77ABC", "3A2MW",  "LX1ABC", "ON4ABC", "PA3ABC", "OZ1ABC",
    "SM5ABC", "LA1ABC", "OH2ABC", "OH0ABC", "ES1ABC", "YL2ABC", "LY2ABC", "SP5ABC", "UA3ABC",
    "UA2FAB", "UA9ABC", "UR5ABC", "EW1ABC", "ER1ABC", "EI3ABC", "GM3ABC", "GW3ABC", "GI3ABC",
    "TF3ABC", "OY1ABC", "JA1ABC", "K1ABC",  "VE3ABC", "PY2ABC", "LU1ABC", "ZS6ABC", "VK3ABC",
    "ZL1ABC", "HL1ABC", "BY1ABC"};
constexpr const char* kBands[] = {"  2 m", " 70cm", "  6 m", " 20 m", " 40 m"};
constexpr const char* kModes[] = {"SSB", "CW", "FM"};
constexpr const char* kNames[] = {"Nicolò", "José",  "Jürgen", "Šárka",
                                  "Żaneta", "Mario", "Øystein"};
constexpr const char* kTowns[] = {"Cantù", "Forlì", "Zürich", "Köln", "São Paulo", "Roma"};
constexpr const char* kLocators[] = {"JN65AA", "JN45CD", "IO91WM", "KM17UW", ""};
constexpr int kRounds = 3;

struct Typed {
  std::string call, band, mode, name, town, locator, time, note;
  std::string Row() const {
    return call + "|" + band + "|" + mode + "|" + name + "|" + town + "|" + locator + "|" + note;
  }
};

std::string UpperText(const char* text) { return QString::fromUtf8(text).toUpper().toStdString(); }

class ManyContacts : public ::testing::Test {
 protected:
  ManyContacts() { Start(); }
  ~ManyContacts() override { Stop(); }

  void Start() {
    platform = std::make_unique<QtPlatform>(directory.Path());
    session = std::make_unique<core::Session>(*platform, directory.Path());
    platform->Attach(session.get());
    ASSERT_NE(station::StartStation(*session), nullptr);
    platform->Screen().Main().activateWindow();
    QTest::qWait(1);
    Press(platform->Screen().Main(), Qt::Key_L, Qt::ControlModifier);
    QTest::qWait(1);
    log = platform->Screen().Main().findChild<QMdiSubWindow*>(QStringLiteral("LogForm"));
    ASSERT_NE(log, nullptr);
  }
  void Stop() {
    session->Windows.RunEvent([&] { station::StopStation(*session); });
    QCoreApplication::processEvents();
    platform->Attach(nullptr);
    session.reset();
    platform.reset();
  }

  static void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(&widget, key, with);
    QCoreApplication::processEvents();
  }
  template <class Widget>
  Widget& Field(const char* name) {
    auto* widget = log->findChild<Widget*>(QLatin1String(name));
    if (widget == nullptr) throw std::runtime_error(std::string("no field ") + name);
    return *widget;
  }
  void Type(const char* field, const std::string& text) {
    auto& edit = Field<QLineEdit>(field);
    edit.setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    if (text.empty()) {
      Press(edit, Qt::Key_Backspace);
    } else {
      for (const QChar key : QString::fromStdString(text)) {
        // A letter that no plain key gives comes as its text alone.
        QTest::sendKeyEvent(QTest::Click, &edit,
                            key.unicode() < 0x7F ? Qt::Key(key.toUpper().unicode()) : Qt::Key(0),
                            QString(key), Qt::NoModifier);
      }
    }
    QCoreApplication::processEvents();
  }
  void Choose(const char* field, const char* entry) {
    auto& list = Field<QComboBox>(field);
    list.setFocus(Qt::TabFocusReason);
    const int wanted = list.findText(QString::fromUtf8(entry));
    ASSERT_GE(wanted, 0) << entry;
    Press(list, Qt::Key_Home);
    for (int i = list.currentIndex(); i < wanted; ++i) Press(list, Qt::Key_Down);
    ASSERT_EQ(list.currentIndex(), wanted) << field;
  }
  // Enters a contact; the text of the box that came up, if any.
  std::string Enter(const Typed& contact) {
    QWidget& window = *log;
    // Without a window manager nobody brings the window back when a box has gone.
    platform->Screen().Main().activateWindow();
    QCoreApplication::processEvents();
    Press(window, Qt::Key_F5);
    Type("CallQso", QString::fromStdString(contact.call).toLower().toStdString());
    Choose("Banda", contact.band.c_str());
    Choose("Modo", contact.mode.c_str());
    Type("Qra", contact.name);
    Type("Qth", contact.town);
    Type("Locator", contact.locator);
    Type("Qtr", contact.time);
    Type("Note", contact.note);
    Field<QLineEdit>("CallQso").setFocus(Qt::TabFocusReason);
    std::string told;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      told += box->text().toStdString();
      box->buttons().front()->click();
    });
    watch.start(1);
    Press(window, Qt::Key_F2);
    watch.stop();
    return told;
  }
  std::vector<std::string> Stored() {
    std::vector<std::string> rows;
    const auto all = session->Db.OpenSnapshot(
        "select Call,Banda,Modo,Qra,Qth,Locator,Note from Log order by QsoNr");
    for (; !all->EOF_(); all->MoveNext()) {
      std::string row;
      for (std::size_t i = 0; i < 7; ++i) row += (i == 0 ? "" : "|") + all->Field(i).Text();
      rows.push_back(row);
    }
    return rows;
  }

  ScratchStationDirectory directory;
  std::unique_ptr<QtPlatform> platform;
  std::unique_ptr<core::Session> session;
  QMdiSubWindow* log = nullptr;
};

TEST_F(ManyContacts, WhatIsTypedIsStoredAndStillThereAfterARestart) {
  std::vector<std::string> expected;
  std::set<std::string> countries;
  int number = 0;
  for (int round = 0; round < kRounds; ++round) {
    for (const char* call : kCalls) {
      Typed contact{call,
                    kBands[(number + round) % 5],
                    kModes[number % 3],
                    UpperText(kNames[number % 7]),
                    UpperText(kTowns[number % 6]),
                    kLocators[number % 5],
                    (number % 60 < 10 ? "100" : "10") + std::to_string(number % 60),
                    "nota nr. " + std::to_string(number) + " è"};
      // Round and band keep one call's contacts apart; the minute alone would not.
      ASSERT_EQ(Enter(contact), "") << contact.Row();
      expected.push_back(contact.Row());
      ++number;
      if (number % 45 == 0) {
        EXPECT_EQ(Enter(contact), "Qso gia' caricato");
        contact.locator = "JN6";
        EXPECT_EQ(Enter(contact), "Locator non valido");
        contact.locator = "";
        contact.time = "0000";
        EXPECT_EQ(Enter(contact), "");  // midnight is refused without a word
      }
    }
  }
  EXPECT_GE(expected.size(), 200u);
  EXPECT_EQ(Stored(), expected);
  const auto found = session->Db.OpenSnapshot("select Country from Log group by Country");
  for (; !found->EOF_(); found->MoveNext()) countries.insert(found->Field(0).Text());
  countries.erase("");
  EXPECT_GE(countries.size(), 60u);

  Stop();
  Start();
  EXPECT_EQ(Stored(), expected);
  EXPECT_EQ(Field<QLineEdit>("QsoTotali").text().toStdString(), std::to_string(expected.size()));
}

}  // namespace
}  // namespace brenvo::ui
