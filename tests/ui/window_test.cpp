#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <stdexcept>

#include "forms/command.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "tests/ui/screen.h"

namespace brenvo::ui {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

class CommandForm : public forms::Window {
 public:
  explicit CommandForm(forms::WindowHost& host)
      : forms::Window(host, "CommandForm", "Comandi", base::Twips(6000), base::Twips(4000)) {
    cmInsert.SetShortcut("F2");
    cmVista.Toggle = true;
    Toolbar1.Items = {&cmInsert, forms::Separator{}, &cmVista, &menuExport};
    MenuBar = {&bands};
    Banda.Add("Tutte", true);
    Banda.Add("  2 m");
    Banda.OnPick = [this](int entry) { told.push_back("pick " + std::to_string(entry)); };
    cmFail.OnClick = [] { throw std::runtime_error("La porta COM1 non si apre"); };
    cmExit.OnClick = [this] { Close(); };
    DefaultCommand = &cmInsert;
    CancelCommand = &cmExit;
    StatusBar1.SetPanel(1, "pronto");
  }
  void Load() override { told.push_back("load"); }
  void Activate() override { told.push_back("activate"); }
  void Resize() override { told.push_back("resize"); }
  bool QueryUnload() override { return !refuses; }

  forms::TextField CallQso{*this, "CallQso"};
  forms::Command cmInsert{*this, "cmInsert", "&Inserisci", [this] { told.push_back("insert"); }};
  forms::Command cmVista{*this, "cmVista", "Griglia", [this] { told.push_back("vista"); }};
  forms::Command cmFail{*this, "cmFail", "Guasto"};
  forms::Command cmExit{*this, "cmExit", "Esci"};
  forms::Command cmAll{*this, "cmAll", "Tutti", [this] { told.push_back("all"); }};
  forms::Menu menuExport{*this, "menuExport", "Esporta", {&cmAll}};
  forms::EntryArray Banda{*this, "Banda"};
  forms::Menu bands{*this, "MB", "&Bande", {&Banda}};
  forms::ToolBar Toolbar1{*this, "Toolbar1"};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 2};
  bool refuses = false;
  Told told;
};

class LetterForm : public forms::Window {
 public:
  explicit LetterForm(forms::WindowHost& host)
      : forms::Window(host, "LetterForm", "Lettere", base::Twips(6000), base::Twips(4000)) {}
  Told told;
  forms::TextField CallQso{*this, "CallQso"};
  forms::Command cmCheckCall{*this, "cmCheckCall", "&Check call",
                             [this] { told.push_back("check"); }};
  forms::Command cmStatistiche{*this, "cmStatistiche", "&Statistiche",
                               [this] { told.push_back("stat"); }};
  forms::Command cmAutoCall{*this, "cmAutoCall", "&Start call",
                            [this] { told.push_back("start"); }};
  forms::Command cmNew{*this, "cmNew", "&New Qso", [this] { CallQso.SetText(""); }};
};

class WindowScreen : public ScreenTest {
 protected:
  template <class Form>
  Form& OpenHidden() {
    forms::Window* loaded = nullptr;
    windows.RunEvent([&] { loaded = &windows.Adopt(std::make_unique<Form>(host)); });
    return static_cast<Form&>(*loaded);
  }
  QMdiSubWindow* Frame(const char* name) { return Find<QMdiSubWindow>(name); }
};

TEST_F(WindowScreen, AWindowOpensInTheMainFrameUnderItsNameAndCaption) {
  Open<CommandForm>();
  ASSERT_NE(Frame("CommandForm"), nullptr);
  EXPECT_EQ(Frame("CommandForm")->windowTitle(), "Comandi");
  EXPECT_TRUE(Frame("CommandForm")->isVisible());
}

TEST_F(WindowScreen, TheTitleFollowsTheCaption) {
  CommandForm& form = Open<CommandForm>();
  form.SetCaption("Country - 3 confermati su 7");
  EXPECT_EQ(Frame("CommandForm")->windowTitle(), "Country - 3 confermati su 7");
}

TEST_F(WindowScreen, TheCloseButtonUnloadsTheWindow) {
  Open<CommandForm>();
  Frame("CommandForm")->close();
  Settle();
  EXPECT_EQ(windows.Find("CommandForm"), nullptr);
  EXPECT_EQ(host.Main().findChild<QMdiSubWindow*>("CommandForm"), nullptr);
}

TEST_F(WindowScreen, CtrlF4ClosesTheWindowInFront) {
  CommandForm& behind = Open<CommandForm>();
  CommandForm& front = Open<CommandForm>();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F4, Qt::ControlModifier);
  Settle();
  EXPECT_TRUE(windows.IsLoaded(&behind));
  EXPECT_FALSE(windows.IsLoaded(&front));
}

TEST_F(WindowScreen, AWindowThatClosesGivesWayToTheOneBefore) {
  Open<CommandForm>();
  Open<LetterForm>();
  CommandForm& last = Open<CommandForm>();
  windows.RunEvent([&] { windows.Unload(last); });
  Settle();
  EXPECT_EQ(host.Map().activeSubWindow(), Frame("LetterForm"));
}

TEST_F(WindowScreen, AWindowThatRefusesToCloseStays) {
  CommandForm& form = Open<CommandForm>();
  form.refuses = true;
  Frame("CommandForm")->close();
  Settle();
  EXPECT_TRUE(form.Loaded());
  EXPECT_TRUE(Frame("CommandForm")->isVisible());
  form.refuses = false;
}

TEST_F(WindowScreen, AWindowMayCloseItselfFromItsOwnButton) {
  Open<CommandForm>();
  QTest::mouseClick(Find<QPushButton>("cmExit"), Qt::LeftButton);
  Settle();
  EXPECT_EQ(windows.Find("CommandForm"), nullptr);
}

TEST_F(WindowScreen, WhatTheOperatorMovesIsToldInTwips) {
  CommandForm& form = Open<CommandForm>();
  Frame("CommandForm")->setGeometry(10, 20, 500, 400);
  Settle();
  EXPECT_EQ(form.GetBounds().left, base::Twips(150));
  EXPECT_EQ(form.GetBounds().top, base::Twips(300));
  EXPECT_EQ(form.Width(), base::Twips(7500));
  EXPECT_EQ(form.Height(), base::Twips(6000));
  EXPECT_EQ(form.told.back(), "resize");
  EXPECT_LT(form.ScaleHeight(), form.Height());
}

TEST_F(WindowScreen, WhatTheLogicMovesIsSeen) {
  CommandForm& form = Open<CommandForm>();
  form.Move({base::Twips(300), base::Twips(450), base::Twips(9000), base::Twips(6000)});
  EXPECT_EQ(Frame("CommandForm")->geometry(), QRect(20, 30, 600, 400));
}

TEST_F(WindowScreen, AWindowStaysWithinTheMainFrame) {
  CommandForm& form = Open<CommandForm>();
  form.Move({base::Twips(90000), base::Twips(90000), base::Twips(9000), base::Twips(6000)});
  EXPECT_TRUE(host.Map().viewport()->rect().contains(Frame("CommandForm")->geometry()));
}

TEST_F(WindowScreen, TwoWindowsDoNotOpenRightOverEachOther) {
  Open<CommandForm>();
  const QPoint first = Frame("CommandForm")->pos();
  CommandForm& second = Open<CommandForm>();
  EXPECT_NE(QPoint(second.GetBounds().left.Pixels(), second.GetBounds().top.Pixels()), first);
}

TEST_F(WindowScreen, BringingAWindowToTheFrontActivatesItOnce) {
  CommandForm& first = Open<CommandForm>();
  QMdiSubWindow* const frame = Frame("CommandForm");
  Open<CommandForm>();
  first.told.clear();
  host.Map().setActiveSubWindow(frame);
  Settle();
  EXPECT_THAT(first.told, ElementsAre("activate"));
}

TEST_F(WindowScreen, AWindowInTheFullSizeComesBackToTheFieldThatItWasLeftIn) {
  Open<LetterForm>();
  QMdiSubWindow* const letters = Frame("LetterForm");
  auto* const call = letters->findChild<QLineEdit*>("CallQso");
  letters->showMaximized();
  Settle();
  call->setFocus();
  Open<CommandForm>();
  EXPECT_TRUE(Frame("CommandForm")->isMaximized());
  host.Map().setActiveSubWindow(letters);
  Settle();
  EXPECT_TRUE(letters->isMaximized());
  EXPECT_EQ(QApplication::focusWidget(), call);
  letters->showNormal();
  Settle();
  EXPECT_EQ(QApplication::focusWidget(), call);
}

TEST_F(WindowScreen, AClickOnTheTitleLeavesTheFieldAsItIs) {
  CommandForm& form = Open<CommandForm>();
  int left = 0;
  form.CallQso.OnLeave = [&] { ++left; };
  auto* const call = Find<QLineEdit>("CallQso");
  call->setFocus();
  Settle();
  QTest::keyClicks(call, "I2");
  Frame("CommandForm")->setFocus(Qt::MouseFocusReason);
  Settle();
  EXPECT_EQ(QApplication::focusWidget(), call);
  QTest::keyClicks(call, "AB");
  EXPECT_EQ(form.CallQso.Text(), "I2AB");
  EXPECT_EQ(left, 0);
}

TEST_F(WindowScreen, AKeyOfTheToolBarRunsItsCommand) {
  CommandForm& form = Open<CommandForm>();
  form.told.clear();
  auto* bar = Find<QToolBar>("Toolbar1");
  const auto* key = bar->actions().front();
  QTest::mouseClick(bar->widgetForAction(const_cast<QAction*>(key)), Qt::LeftButton);
  Settle();
  EXPECT_THAT(form.told, ElementsAre("insert"));
}

TEST_F(WindowScreen, AToggleOfTheToolBarFlipsOnceAndFollowsTheLogic) {
  CommandForm& form = Open<CommandForm>();
  auto* action = Find<QAction>("cmVista");
  action->trigger();
  Settle();
  EXPECT_TRUE(form.cmVista.Down());
  EXPECT_TRUE(action->isChecked());
  form.cmVista.SetDown(false);
  EXPECT_FALSE(action->isChecked());
}

TEST_F(WindowScreen, ADisabledCommandAnswersNoKey) {
  CommandForm& form = Open<CommandForm>();
  form.told.clear();
  form.cmInsert.SetEnabled(false);
  EXPECT_FALSE(Find<QAction>("cmInsert")->isEnabled());
  Find<QAction>("cmInsert")->trigger();
  Settle();
  EXPECT_THAT(form.told, ElementsAre());
}

TEST_F(WindowScreen, AShortcutReachesOnlyTheWindowInFront) {
  CommandForm& first = Open<CommandForm>();
  CommandForm& second = Open<CommandForm>();
  first.told.clear();
  second.told.clear();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
  Settle();
  EXPECT_THAT(first.told, ElementsAre());
  EXPECT_THAT(second.told, ElementsAre("insert"));
}

TEST_F(WindowScreen, ALetterOfTheWindowInFrontComesBeforeTheMainMenus) {
  host.Main().menuBar()->addMenu("&Contest")->addAction("Nuovo");
  LetterForm& form = Open<LetterForm>();
  for (std::size_t times = 1; times <= 2; ++times) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return form.told.size() == times; }, 2000));
  }
  EXPECT_THAT(form.told, ElementsAre("check", "check"));
}

TEST_F(WindowScreen, AButtonsLetterPressesItBeforeTheNextKeyIsTyped) {
  LetterForm& form = Open<LetterForm>();
  QTest::keyClicks(QApplication::focusWidget(), "a");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_N, Qt::AltModifier);
  QTest::keyClicks(QApplication::focusWidget(), "b");
  EXPECT_EQ(form.CallQso.Text(), "b");
}

TEST_F(WindowScreen, ALetterOfTwoButtonsGoesFromOneToTheOther) {
  host.Main().menuBar()->addMenu("&Statistiche")->addAction("Field");
  LetterForm& form = Open<LetterForm>();
  Told reached;
  for (int i = 0; i < 3; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::AltModifier);
    reached.push_back(QApplication::focusWidget()->objectName().toStdString());
  }
  EXPECT_THAT(reached, ElementsAre("cmStatistiche", "cmAutoCall", "cmStatistiche"));
  EXPECT_THAT(form.told, ElementsAre());
}

TEST_F(WindowScreen, AMenuOfEntriesFollowsThem) {
  CommandForm& form = Open<CommandForm>();
  auto* menu = Find<QMenu>("MB");
  form.Banda.Add(" 70cm");
  form.Banda.SetChecked(1, true);
  QStringList shown;
  for (const QAction* action : menu->actions()) {
    if (action->isVisible()) shown += action->text() + (action->isChecked() ? "*" : "");
  }
  EXPECT_EQ(shown, QStringList({"Tutte*", "  2 m*", " 70cm"}));
}

TEST_F(WindowScreen, PickingAnEntryTellsItsNumber) {
  CommandForm& form = Open<CommandForm>();
  form.told.clear();
  Find<QAction>("Banda_1")->trigger();
  Settle();
  EXPECT_THAT(form.told, ElementsAre("pick 1"));
}

TEST_F(WindowScreen, ThePanelsOfTheStatusBarFollow) {
  CommandForm& form = Open<CommandForm>();
  EXPECT_EQ(Find<QLabel>("StatusBar1_1")->text(), "pronto");
  form.StatusBar1.SetPanel(2, "New Call");
  EXPECT_EQ(Find<QLabel>("StatusBar1_2")->text(), "New Call");
}

TEST_F(WindowScreen, EnterPressesTheDefaultCommandAndEscTheOther) {
  CommandForm& form = Open<CommandForm>();
  form.told.clear();
  QTest::keyClick(Find<QLineEdit>("CallQso"), Qt::Key_Return);
  EXPECT_THAT(form.told, ElementsAre("insert"));
  QTest::keyClick(Find<QLineEdit>("CallQso"), Qt::Key_Escape);
  Settle();
  EXPECT_EQ(windows.Find("CommandForm"), nullptr);
}

TEST_F(WindowScreen, AfterEnterTheNextTextIsTypedOverTheAnsweredOne) {
  CommandForm& form = Open<CommandForm>();
  auto* line = Find<QLineEdit>("CallQso");
  QTest::keyClicks(line, "IK1ABC");
  QTest::keyClick(line, Qt::Key_Return);
  QTest::keyClicks(line, "I2");
  EXPECT_EQ(form.CallQso.Text(), "I2");
}

TEST_F(WindowScreen, EnterThatAFieldHandlesIsNotTheWindows) {
  CommandForm& form = Open<CommandForm>();
  form.told.clear();
  form.CallQso.OnEnter = [&] { form.told.push_back("enter"); };
  QTest::keyClick(Find<QLineEdit>("CallQso"), Qt::Key_Return);
  EXPECT_THAT(form.told, ElementsAre("enter"));
}

TEST_F(WindowScreen, AFailureIsToldInABoxAndTheNextEventRuns) {
  CommandForm& form = Open<CommandForm>();
  form.told.clear();
  QString title, text;
  WhenModal([&](QWidget& modal) {
    title = modal.windowTitle();
    text = static_cast<QMessageBox&>(modal).text();
    modal.close();
  });
  QTest::mouseClick(Find<QPushButton>("cmFail"), Qt::LeftButton);
  EXPECT_EQ(title, "Brenvo");
  EXPECT_EQ(text, "La porta COM1 non si apre");
  form.cmInsert.Press();
  EXPECT_THAT(form.told, ElementsAre("insert"));
}

TEST_F(WindowScreen, AModalWindowReturnsWhenItHides) {
  CommandForm& form = OpenHidden<CommandForm>();
  QString title;
  WhenModal([&](QWidget& modal) {
    title = modal.windowTitle();
    EXPECT_TRUE(qobject_cast<QDialog*>(&modal) != nullptr);
    form.Hide();
  });
  windows.RunEvent([&] { windows.ShowModal(form); });
  EXPECT_EQ(title, "Comandi");
  EXPECT_TRUE(form.Loaded());
  EXPECT_FALSE(form.Visible());
}

TEST_F(WindowScreen, AModalWindowReturnsWhenItUnloads) {
  CommandForm& form = OpenHidden<CommandForm>();
  bool returned = false;
  WhenModal([&](QWidget& modal) { QTest::keyClick(&modal, Qt::Key_Escape); });
  windows.RunEvent([&] {
    windows.ShowModal(form);
    returned = true;
    EXPECT_FALSE(windows.IsLoaded(&form));
  });
  EXPECT_TRUE(returned);
}

TEST_F(WindowScreen, TheFrameOfAModalWindowUnloadsIt) {
  CommandForm& form = OpenHidden<CommandForm>();
  WhenModal([&](QWidget& modal) { modal.close(); });
  windows.RunEvent([&] { windows.ShowModal(form); });
  EXPECT_EQ(windows.Find("CommandForm"), nullptr);
}

TEST_F(WindowScreen, AKeyThatIsStruckWhileADialogComesUpReachesNoCommandBehindIt) {
  CommandForm& behind = Open<CommandForm>();
  LetterForm& dialog = Open<LetterForm>();
  behind.told.clear();
  QAction& insert = *Frame("CommandForm")->findChild<QAction*>("cmInsert");
  WhenModal([&](QWidget& modal) {
    insert.trigger();
    Settle();
    modal.close();
  });
  windows.RunEvent([&] { windows.ShowModal(dialog); });
  EXPECT_THAT(behind.told, Not(Contains("insert")));
}

TEST_F(WindowScreen, AChildMayBeShownAsADialog) {
  CommandForm& form = Open<CommandForm>();
  form.CallQso.SetText("I2ABC");
  QString typed;
  WhenModal([&](QWidget& modal) {
    typed = modal.findChild<QLineEdit*>("CallQso")->text();
    form.Hide();
  });
  windows.RunEvent([&] { windows.ShowModal(form); });
  EXPECT_EQ(typed, "I2ABC");
}

TEST_F(WindowScreen, TheLogicMovesTheFocus) {
  CommandForm& form = Open<CommandForm>();
  Find<QPushButton>("cmExit")->setFocus();
  Settle();
  windows.RunEvent([&] { host.MoveFocus(form.CallQso); });
  EXPECT_EQ(QApplication::focusWidget(), Find<QLineEdit>("CallQso"));
}

TEST_F(WindowScreen, TheBusyPointerShowsAsLongAsItLives) {
  {
    const forms::BusyPointer busy(host);
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
  }
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(WindowScreen, PointingRunsTheHintOfTheInnermostField) {
  CommandForm& form = Open<CommandForm>();
  form.CallQso.OnHover = [&] { form.told.push_back("hover"); };
  form.told.clear();
  for (int i = 0; i < 3; ++i) {
    QTest::mouseMove(Find<QLineEdit>("CallQso"), QPoint(5 + i, 5));
    Settle();
  }
  EXPECT_THAT(form.told, ElementsAre("hover"));
}

}  // namespace
}  // namespace brenvo::ui
