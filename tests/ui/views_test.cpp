// The station's own windows on the screen.
#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTabBar>
#include <QTableView>

#include "core/preferences.h"
#include "core/texts.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "station/station.h"
#include "tests/support/station.h"
#include "tests/ui/screen.h"
#include "ui/layout.h"
#include "ui/qt_platform.h"
#include "ui/text.h"
#include "ui/views.h"
#include "ui/window_builder.h"

namespace brenvo::ui {
namespace {

class StationScreen : public ::testing::Test {
 protected:
  StationScreen() {
    platform.Attach(&session);
    frame = station::StartStation(session);
    QTest::qWait(1);
  }
  ~StationScreen() override {
    session.Windows.RunEvent([&] { station::StopStation(session); });
    QTest::qWait(1);
    platform.Attach(nullptr);
  }

  forms::Window* Open(const char* name) {
    forms::Window* window = nullptr;
    session.Windows.RunEvent([&] {
      window = session.Windows.LoadNew(name);
      if (window != nullptr) session.Windows.Show(*window);
    });
    QTest::qWait(1);
    return window;
  }
  // A window may tell of a device that is not there.
  void CloseBoxes() {
    QObject::connect(&boxes, &QTimer::timeout, [] {
      if (QWidget* box = QApplication::activeModalWidget()) box->close();
    });
    boxes.start(20);
  }
  QWidget& Outer(const char* name) {
    auto* outer = platform.Screen().Main().findChild<QMdiSubWindow*>(QLatin1String(name));
    if (outer != nullptr) return *outer;
    return platform.Screen().Main();
  }

  ScratchStationDirectory directory;
  QtPlatform platform{directory.Path()};
  core::Session session{platform, directory.Path()};
  frame::MainFrame* frame = nullptr;
  QTimer boxes;
};

// Hidden triggers and what stands in bars have no place in a layout.
bool WantsAPlace(forms::Field& field) {
  return PlaceOf(field) != Place::kBar && PlaceOf(field) != Place::kAround;
}

TEST_F(StationScreen, StartsWithItsMenuAndItsMap) {
  ASSERT_NE(frame, nullptr);
  EXPECT_TRUE(platform.Screen().Main().isVisible());
  auto* log = platform.Screen().Main().findChild<QAction*>("cmLog");
  ASSERT_NE(log, nullptr);
  log->trigger();
  QTest::qWait(1);
  EXPECT_NE(session.Windows.Find("LogForm"), nullptr);
}

TEST_F(StationScreen, AContactIsLoggedWithTheKeyboard) {
  ASSERT_NE(Open("LogForm"), nullptr);
  QWidget& log = Outer("LogForm");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  ASSERT_EQ(QApplication::focusWidget()->objectName(), "CallQso");
  QTest::keyClicks(QApplication::focusWidget(), "ik1abc");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  QTest::qWait(1);
  EXPECT_EQ(log.findChild<QLineEdit*>("ZonaCQ")->text(), "15");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
  QTest::qWait(1);
  const auto rows = session.Db.OpenSnapshot("SELECT Call,Country FROM Log");
  ASSERT_EQ(rows->RecordCount(), 1);
  EXPECT_EQ(rows->Field("Call").Text(), "IK1ABC");
  EXPECT_EQ(rows->Field("Country").Text(), "I");
}

TEST_F(StationScreen, TheKeyThatTakesBackTakesTheLastContactBackWhileOneTypes) {
  ASSERT_NE(Open("LogForm"), nullptr);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
  QTest::keyClicks(QApplication::focusWidget(), "ik1abc");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
  QTest::qWait(1);
  const auto contacts = [&] {
    return session.Db.OpenSnapshot("SELECT Count(*) FROM Log")->Field(std::size_t{0}).Integer();
  };
  ASSERT_EQ(contacts(), 1);
  ASSERT_EQ(QApplication::focusWidget()->objectName(), "CallQso");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
  QTest::qWait(1);
  EXPECT_EQ(contacts(), 0);
  // What was typed stays, to be corrected and stored again.
  EXPECT_EQ(Outer("LogForm").findChild<QLineEdit*>("CallQso")->text(), "IK1ABC");
  EXPECT_EQ(Outer("LogForm").findChild<QLabel*>("Avviso")->text(), "Ripreso: Nuovo qso (1 Qso)");
}

TEST_F(StationScreen, WithAllThatSavesKeysAKnownStationCostsItsCallAndOneKey) {
  for (const core::Choice* choice : core::AllChoices()) {
    if (choice->section != "Log") continue;
    EXPECT_EQ(session.Choices.Set(*choice, "Sì"), "");
  }
  session.Db.Execute(
      "insert into Log (DataQso,Call,Banda,Modo,Frequenza,Locator) values "
      "('05/01/2001','IK1XYZ','  2 m','SSB',144.3,'JN45AA')");
  ASSERT_NE(Open("LogForm"), nullptr);
  int keys = 0;
  const auto press = [&](int key) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
    QTest::qWait(1);
    ++keys;
  };
  const auto type = [&](const char* text) {
    for (const char* at = text; *at != 0; ++at) {
      QTest::keyClick(QApplication::focusWidget(), *at);
      ++keys;
    }
    QTest::qWait(1);
  };
  const auto focus = [] { return QApplication::focusWidget()->objectName(); };
  press(Qt::Key_F5);
  keys = 0;
  type("ik1xyz");
  press(Qt::Key_Return);
  EXPECT_EQ(keys, 7);
  const auto stored = session.Db.OpenSnapshot(
      "SELECT Call,Banda,Modo,QrkDato,QrkRicevuto,Locator FROM Log ORDER BY QsoNr DESC");
  EXPECT_EQ(session.Db.OpenSnapshot("SELECT Count(*) FROM Log")->Field(std::size_t{0}).Integer(),
            2);
  EXPECT_EQ(core::Joined({stored->Field(std::size_t{0}).Text(), stored->Field(1).Text(),
                          stored->Field(2).Text(), stored->Field(3).Text(), stored->Field(4).Text(),
                          stored->Field(5).Text()}),
            "IK1XYZ  2 m  SSB  59  59  JN45AA");
  EXPECT_EQ(focus(), "CallQso");
  EXPECT_EQ(Outer("LogForm").findChild<QLineEdit*>("CallQso")->text(), "");
  EXPECT_EQ(Outer("LogForm").findChild<QLabel*>("Avviso")->text(),
            "Qso inserito: IK1XYZ  2 m  SSB");
}

TEST_F(StationScreen, AStatusWordBearsItsSignAndIsPaleOnAnotherBand) {
  ASSERT_NE(Open("LogForm"), nullptr);
  QTest::keyClicks(QApplication::focusWidget(), "ik1abc");
  QTest::qWait(1);
  auto* const word = Outer("LogForm").findChild<QLabel*>("StatusBar1_2");
  auto* const sign = Outer("LogForm").findChild<QLabel*>("StatusBar1_2_segno");
  EXPECT_EQ(word->text(), "New Call");
  EXPECT_FALSE(word->font().bold());
  EXPECT_EQ(word->toolTip(), "Nessuna banda scelta: vale per i Qso senza banda");
  const auto signs = [&] { return sign->pixmap(Qt::ReturnByValue).toImage(); };
  EXPECT_TRUE(sign->isVisible());
  const QImage pale = signs();
  session.Windows.RunEvent([&] {
    static_cast<forms::ListField*>(session.Windows.Find("LogForm")->FindField("Banda"))
        ->SetText("  2 m");
  });
  QTest::keyClicks(QApplication::focusWidget(), "d");
  QTest::qWait(1);
  EXPECT_TRUE(word->font().bold());
  EXPECT_EQ(word->toolTip(), "Vale per 2 m");
  EXPECT_NE(signs(), pale);
}

TEST_F(StationScreen, TheKeyboardFollowsTheLogIntoItsGridAndBack) {
  ASSERT_NE(Open("LogForm"), nullptr);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F7);
  QTest::qWait(1);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "DataGrid1");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F7);
  QTest::qWait(1);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "CallQso");
}

TEST_F(StationScreen, ATerminalOpensWhereOneWrites) {
  ASSERT_NE(Open("TNC"), nullptr);
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "Sended");
}

TEST_F(StationScreen, TheSearchBeginsOnTheCallAndTabGoesOnAsTheFieldsStand) {
  forms::Window* search = Open("LogSearch");
  ASSERT_NE(search, nullptr);
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "CallQso");
  QWidget& outer = Outer("LogSearch");
  auto* date = outer.findChild<QWidget*>("DataQso");
  auto* before = outer.findChild<QWidget*>("cmTipoData");
  ASSERT_LT(before->mapTo(&outer, QPoint()).x(), date->mapTo(&outer, QPoint()).x());
  before->setFocus();
  QTest::keyClick(before, Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), date);
  session.Windows.RunEvent([&] { session.Windows.Unload(*search); });
}

TEST_F(StationScreen, TheNumberOfAContactIsNotTakenForItsPlaceAmongAll) {
  ASSERT_NE(Open("LogForm"), nullptr);
  QStringList words;
  for (const QLabel* label : Outer("LogForm").findChildren<QLabel*>()) words += label->text();
  EXPECT_TRUE(words.contains("Qso nr."));
  EXPECT_TRUE(words.contains("Qso totali"));
  EXPECT_FALSE(words.contains("di"));
}

TEST_F(StationScreen, ADrawingInGreyTakesTheDesktopsInkAndLeavesItsPaperOut) {
  QImage drawing(20, 20, QImage::Format_Grayscale8);
  drawing.fill(Qt::white);
  for (int x = 5; x < 15; ++x) drawing.setPixelColor(x, 10, Qt::black);
  ASSERT_TRUE(drawing.save(PathToQt(directory.Path() / "Logo.bmp")));
  forms::Window* contest = Open("Contest");
  ASSERT_NE(contest, nullptr);
  auto* logo = Outer("Contest").findChild<QLabel*>("Logo");
  ASSERT_NE(logo, nullptr);
  for (const QColor& ink : {QColor(Qt::black), QColor(225, 226, 228)}) {
    QPalette desktop = logo->palette();
    desktop.setColor(QPalette::WindowText, ink);
    logo->setPalette(desktop);
    const QImage shown = logo->pixmap().toImage();
    EXPECT_EQ(shown.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(shown.pixelColor(10, 10), ink);
  }
}

TEST_F(StationScreen, WithLargeLettersAnAwardsColumnsAreSeenWhole) {
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPointSizeF(14);
  QApplication::setFont(large);
  session.Handed.QueryText = "WHERE QsoNr>0";
  for (const std::string area : {"3", "4"}) {
    session.Db.Execute(
        "insert into Log (DataQso,Call,Banda,Locator,Prefisso,Country,Provincia,QslRicevuta) "
        "values (cvdate('01/02/2001'),'I" +
        area + "XYZ','  2 m','JN65DF','I" + area + "','I','VE',True)");
  }
  for (const char* name : {"SCountry", "SProvincie", "SPrefissi", "SSQuare"}) {
    forms::Window* award = Open(name);
    ASSERT_NE(award, nullptr);
    QTest::qWait(1);
    auto* grid = Outer(name).findChild<QTableView*>();
    ASSERT_NE(grid, nullptr);
    EXPECT_LE(grid->horizontalHeader()->length(), grid->viewport()->width()) << name;
    EXPECT_GE(grid->columnWidth(name == std::string("SSQuare") ? 1 : 2),
              grid->fontMetrics().horizontalAdvance("Confermato") + 6)
        << name;
    session.Windows.RunEvent([&] { session.Windows.Unload(*award); });
  }
  QApplication::setFont(before);
}

// 14 points, on a screen of 1280 by 800.
TEST_F(StationScreen, WithLargeLettersContestAndMultimediaDoNotScroll) {
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPointSizeF(14);
  QApplication::setFont(large);
  platform.Screen().Main().resize(1280, 800);
  QTest::qWait(1);
  for (const auto& [name, field] : {std::pair("Contest", "Note"), {"User", "CallInterval"}}) {
    forms::Window* window = Open(name);
    ASSERT_NE(window, nullptr);
    if (auto* tabs = Outer(name).findChild<QTabBar*>()) tabs->setCurrentIndex(1);
    QTest::qWait(1);
    const auto* body = Outer(name).findChild<QScrollArea*>();
    ASSERT_NE(body, nullptr);
    EXPECT_TRUE(body->isAncestorOf(Outer(name).findChild<QWidget*>(field)));
    EXPECT_FALSE(body->verticalScrollBar()->isVisible()) << name;
    EXPECT_FALSE(body->horizontalScrollBar()->isVisible()) << name;
    session.Windows.RunEvent([&] { session.Windows.Unload(*window); });
  }
  QApplication::setFont(before);
}

TEST_F(StationScreen, EscClosesTheEntryOfAContestContact) {
  session.Handed.CurrentContest.DataContest = "03/03/2001";
  session.Handed.CurrentContest.Banda = "  2 m";
  forms::Window* log = Open("ContestQso");
  ASSERT_NE(log, nullptr);
  bool came = false;
  ScreenTest::WhenModal([&](QWidget& dialog) {
    came = dialog.objectName() == "ContestNewQso";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  });
  QTimer late;
  late.setSingleShot(true);
  QObject::connect(&late, &QTimer::timeout, [] {
    ADD_FAILURE() << "still open";
    if (QWidget* left = QApplication::activeModalWidget()) left->close();
  });
  late.start(10000);
  session.Windows.RunEvent([&] { log->FindCommand("cmNew")->Press(); });
  EXPECT_TRUE(came);
  session.Windows.RunEvent([&] { session.Windows.Unload(*log); });
}

TEST_F(StationScreen, AltAndALetterInTheContestsLogMeetItsOwnKeysAndNotTheMenu) {
  session.Handed.CurrentContest.DataContest = "03/03/2001";
  session.Handed.CurrentContest.Banda = "  2 m";
  forms::Window* log = Open("ContestQso");
  ASSERT_NE(log, nullptr);
  for (const char* name : {"cmStatistiche", "cmAutoCall", "cmStatistiche"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), name);
  }
  session.Windows.RunEvent([&] { session.Windows.Unload(*log); });
}

TEST_F(StationScreen, ANewEntryBeginsInItsFirstFieldWhereverTheCaretStood) {
  for (const auto& [window, first] :
       {std::pair("LogForm", "CallQso"), {"Contest", "DataContest"}}) {
    forms::Window* opened = Open(window);
    ASSERT_NE(opened, nullptr);
    opened->Host().MoveFocus(*opened->FindField("Locator"));
    ASSERT_EQ(QApplication::focusWidget()->objectName(), "Locator");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
    QTest::qWait(1);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), first);
  }
}

TEST_F(StationScreen, TheKeysOfTheFirstAndTheLastRecordWorkFromWithinAField) {
  ASSERT_NE(Open("LogForm"), nullptr);
  auto* line = Outer("LogForm").findChild<QLineEdit*>("CallQso");
  for (const char* call : {"IK1AA", "IK2BB"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
    QTest::qWait(1);
    QTest::keyClicks(line, call);
    QTest::keyClick(line, Qt::Key_F2);
    QTest::qWait(1);
  }
  QTest::keyClick(line, Qt::Key_Home, Qt::ControlModifier);
  QTest::qWait(1);
  const QString first = line->text();
  QTest::keyClick(line, Qt::Key_End, Qt::ControlModifier);
  QTest::qWait(1);
  EXPECT_NE(line->text(), first);
}

TEST_F(StationScreen, ClosingTheMainFrameEndsEverything) {
  Open("LogForm");
  platform.Screen().Main().close();
  QTest::qWait(1);
  EXPECT_TRUE(session.Windows.Loaded().empty());
  EXPECT_FALSE(session.IsOpen());
}

class EachWindow : public StationScreen, public ::testing::WithParamInterface<const char*> {
 protected:
  EachWindow() {
    engine::Table& contests = *session.Tables.TbContest;
    contests.AddNew();
    contests.Set("DataContest", base::DateTime::Of(2001, 3, 3));
    contests.Set("Banda", "  2 m");
    contests.Update();
    session.Handed.CurrentContest.DataContest = "03/03/2001";
    session.Handed.CurrentContest.Banda = "  2 m";
    session.Handed.CurrentContest.Locator = "JN65AA";
  }
};

TEST_P(EachWindow, HasAViewThatShowsEveryField) {
  CloseBoxes();
  forms::Window* window = Open(GetParam());
  ASSERT_NE(window, nullptr);
  const View* view = FindView(GetParam());
  ASSERT_NE(view, nullptr);
  const std::vector<std::string> placed = FieldsIn(view->layout());
  QWidget& outer = Outer(GetParam());
  for (forms::Field* field : window->Fields()) {
    if (!field->Visible() || !WantsAPlace(*field)) continue;
    const QString name = QString::fromStdString(field->Name());
    if (name.startsWith("Frame") || name == "VScroll")
      continue;  // titles; a picture scrolls itself
    EXPECT_TRUE(outer.findChild<QWidget*>(name) != nullptr ||
                outer.findChild<QAction*>(name) != nullptr)
        << field->Name();
  }
  for (const std::string& name : placed) {
    EXPECT_NE(window->FindField(name), nullptr) << name << " is not a field of the window";
  }
  session.Windows.RunEvent([&] { session.Windows.Unload(*window); });
}

TEST_F(StationScreen, TheTransceiversKeysStayWhereTheyAreWhenItsFieldsCome) {
  CloseBoxes();
  forms::Window* panel = Open("FT736");
  ASSERT_NE(panel, nullptr);
  auto* key = Outer("FT736").findChild<QPushButton*>("cmVFOA");
  ASSERT_NE(key, nullptr);
  const QPoint before = key->pos();
  session.Windows.RunEvent([&] {
    for (const char* name : {"DFrequenza", "Frequenza", "SMeter"}) {
      panel->FindField(name)->SetVisible(true);
    }
  });
  QTest::qWait(1);
  EXPECT_EQ(key->pos(), before);
  session.Windows.RunEvent([&] { session.Windows.Unload(*panel); });
}

INSTANTIATE_TEST_SUITE_P(
    Station, EachWindow,
    ::testing::Values("LogForm", "LogSearch", "OldQsoForm", "OldQsoLocator", "Contest",
                      "ContestQso", "ContestNewQso", "CheckCallContest", "ContestSearch", "StatSel",
                      "SField", "SSQuare", "SPrefissi", "SContinenti", "SZone", "SCountry",
                      "SProvincie", "SNote", "Hrd", "HrdMode", "MappaSquare", "StampaQsl", "TNC",
                      "TNCtelnet", "WWConv", "FT736", "DX", "User", "TabellaPrefissi",
                      "TabellaCountry", "TabellaProvincie", "TabellaNote", "Help", "Preferenze",
                      "Stazioni", "Storia", "OraDelLog", "ConvertiOra", "Elenco", "Colonne",
                      "VerificaLog", "VerificaEntita", "GestioneQsl", "Corrispondente",
                      "CambiaColonna", "ContaQso", "Tasti", "Digitale", "Rtx", "Modelli",
                      "GaraContest", "Conferme", "Diplomi"),
    [](const auto& parameter) { return std::string(parameter.param); });

// A window of the family: the keys are those of all of them.
class TheTableWindow : public StationScreen {
 protected:
  TheTableWindow() : window(*Open("Preferenze")) {}
  ~TheTableWindow() override {
    session.Windows.RunEvent([&] {
      if (session.Windows.IsLoaded(&window)) session.Windows.Unload(window);
    });
  }
  static void Key(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, with);
    QTest::qWait(1);
  }
  static std::string Focused() { return QApplication::focusWidget()->objectName().toStdString(); }
  std::string Notice() { return dynamic_cast<forms::Label&>(*window.FindField("Avviso")).Text(); }
  forms::Window& window;
};

TEST_F(TheTableWindow, BeginsInTheSearchAndGoesOnThroughItsFields) {
  std::vector<std::string> names = {Focused()};
  for (int i = 0; i < 3; ++i) {
    Key(Qt::Key_Tab);
    names.push_back(Focused());
  }
  EXPECT_THAT(names, ::testing::ElementsAre("Cerca", "SoloCambiate", "Tabella", "Valore"));
}

TEST_F(TheTableWindow, ItsSearchKeyIsItsOwnThoughTheMainMenuHasTheSame) {
  Key(Qt::Key_Return);
  ASSERT_EQ(Focused(), "Tabella");
  Key(Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(Focused(), "Cerca");
  EXPECT_EQ(session.Windows.Find("FT736"), nullptr);
}

TEST_F(TheTableWindow, EnterAndSpaceChangeTheRowThatTheArrowsMarked) {
  Key(Qt::Key_Return);
  Key(Qt::Key_Down);
  Key(Qt::Key_Space);
  EXPECT_EQ(Notice(), "Secondi negli orologi: No");
  Key(Qt::Key_Return);
  EXPECT_EQ(Notice(), "Secondi negli orologi: Sì");
  Key(Qt::Key_Down);
  Key(Qt::Key_Return);
  EXPECT_EQ(Focused(), "Valore");
  QTest::keyClicks(QApplication::focusWidget(), "UTC");
  Key(Qt::Key_F2);
  EXPECT_EQ(Notice(), "Fuso orario: UTC");
}

TEST_F(TheTableWindow, DelBelongsToTheTextWhileOneTypesAndElseToTheRow) {
  EXPECT_EQ(session.Choices.Set(core::choice::kClocks, "No"), "");
  Key(Qt::Key_Delete);
  EXPECT_EQ(Notice(), "");
  Key(Qt::Key_Return);
  Key(Qt::Key_Delete);
  EXPECT_EQ(Notice(), "Orologi: Sì");
}

TEST_F(TheTableWindow, EscClosesIt) {
  Key(Qt::Key_Escape);
  EXPECT_EQ(session.Windows.Find("Preferenze"), nullptr);
}

TEST_F(StationScreen, TheClocksStandInTheStatusBarBesideThePanel) {
  QWidget& bar = *platform.Screen().Main().findChild<QStatusBar*>();
  auto* clocks = bar.findChild<QLabel*>("Orologi");
  ASSERT_NE(clocks, nullptr);
  EXPECT_TRUE(clocks->isVisible());
  EXPECT_EQ(clocks->text().toStdString(), frame->Orologi.Text());
  EXPECT_NE(bar.findChild<QWidget*>("StatusBar1"), nullptr);
}

// The left button goes down on a border, moves so many pixels and comes up.
void Drag(QWidget& border, int down) {
  const QPoint from = border.rect().center();
  QTest::mousePress(&border, Qt::LeftButton, {}, from);
  const QPoint to = from + QPoint(0, down);
  QMouseEvent move(QEvent::MouseMove, to, border.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
  QApplication::sendEvent(&border, &move);
  QTest::mouseRelease(&border, Qt::LeftButton, {}, to);
}

TEST_F(StationScreen, TheTwoAreasOfTheChatShareItsHeight) {
  constexpr int kBorder = 3, kLowest = 34;
  forms::Window& chat = *Open("WWConv");
  Outer("WWConv").resize(600, 500);
  QTest::qWait(1);
  auto* areas = Outer("WWConv").findChild<QSplitter*>();
  ASSERT_NE(areas, nullptr);
  const auto heights = [&] { return std::pair(areas->sizes()[0], areas->sizes()[1]); };
  const int room = areas->height() - kBorder;
  EXPECT_NEAR(heights().first, heights().second, 1);
  EXPECT_EQ(heights().first + heights().second, room);

  Drag(*areas->handle(1), 2 * room);
  EXPECT_EQ(heights(), std::pair(room - kLowest, kLowest));
  Drag(*areas->handle(1), -2 * room);
  EXPECT_EQ(heights(), std::pair(kLowest, room - kLowest));

  forms::Command& personal = *chat.FindCommand("cmMessaggiPersonali");
  session.Windows.RunEvent([&] { personal.Press(); });
  QTest::qWait(1);
  EXPECT_EQ(heights(), std::pair(room + kBorder, 0));
  session.Windows.RunEvent([&] { personal.Press(); });
  QTest::qWait(1);
  EXPECT_NEAR(heights().first, heights().second, 1);
  session.Windows.RunEvent([&] { session.Windows.Unload(chat); });
}

class ManyFields : public forms::Window {
 public:
  explicit ManyFields(forms::WindowHost& host)
      : forms::Window(host, "ManyFields", "", base::Twips(6000), base::Twips(4000)) {
    Call.SetCaption("Call");
  }
  forms::TextField Call{*this, "Call"};
  forms::TextField Qra{*this, "Qra"};
  forms::CheckBox Qsl{*this, "Qsl"};
  forms::Command cmOk{*this, "cmOk", "Ok"};
};

TEST(DefaultLayout, PlacesEveryFieldInTheOrderOfDeclaration) {
  recorder::RecordingPlatform machine;
  const ManyFields form(machine.Host());
  EXPECT_THAT(FieldsIn(LayoutOf(form)), ::testing::ElementsAre("Call", "Qra", "Qsl", "cmOk"));
}

}  // namespace
}  // namespace brenvo::ui
