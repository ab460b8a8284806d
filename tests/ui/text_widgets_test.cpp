#include <QClipboard>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>

#include "base/text.h"
#include "forms/command.h"
#include "forms/text_field.h"
#include "tests/ui/screen.h"

namespace brenvo::ui {
namespace {

using ::testing::ElementsAre;

class TextForm : public forms::Window {
 public:
  explicit TextForm(forms::WindowHost& host)
      : forms::Window(host, "TextForm", "", base::Twips(6000), base::Twips(4000)) {
    CallQso.Filter = base::UpperChar;
    CallQso.OnChange = [this] { told.push_back("change " + CallQso.Text()); };
    CallQso.OnFocus = [this] { told.push_back("focus"); };
    CallQso.OnLeave = [this] {
      told.push_back("leave");
      Qra.SetText("MARIO");
    };
    Digits.Filter = [](char32_t key) {
      return key == forms::kBackspace || (key >= '0' && key <= '9') ? key : 0;
    };
    Digits.MaxLength = 4;
    Dial.SetText("14.250.000");
    Dial.OnStep = [this](std::size_t character, int by) {
      told.push_back(std::to_string(character) + (by > 0 ? " up" : " down"));
    };
    File.BackspaceClears = true;
    File.OnDrop = [this](std::string_view text) { File.SetText(text); };
    cmInsert.SetShortcut("F2");
    Toolbar1.Items = {&cmInsert};
  }
  forms::TextField CallQso{*this, "CallQso"};
  forms::TextField Qra{*this, "Qra"};
  forms::TextField Digits{*this, "Digits"};
  forms::TextField File{*this, "File"};
  forms::MaskedField Qtr{*this, "Qtr", "##:##"};
  forms::DatePicker DataQso{*this, "DataQso"};
  forms::TextField Dial{*this, "Dial"};
  forms::Command cmInsert{*this, "cmInsert", "Inserisci",
                          [this] { told.push_back("insert " + DataQso.Text()); }};
  forms::ToolBar Toolbar1{*this, "Toolbar1"};
  Told told;
};

class TextWidgets : public ScreenTest {
 protected:
  TextForm& form = Open<TextForm>();
  QLineEdit* Line(const char* name) { return Find<QLineEdit>(name); }
};

TEST_F(TextWidgets, TypedLettersPassTheFilterAndRunTheChangeEventOnceEach) {
  form.told.clear();
  QTest::keyClicks(Line("CallQso"), "i2a");
  EXPECT_THAT(form.told, ElementsAre("change I", "change I2", "change I2A"));
  EXPECT_EQ(Line("CallQso")->text(), "I2A");
}

TEST_F(TextWidgets, TheWheelAndTheArrowsStepTheCharacterThatTheyStandAt) {
  QLineEdit* const line = Line("Dial");
  line->setFocus();
  Settle();
  form.told.clear();
  line->setCursorPosition(4);
  QTest::keyClick(line, Qt::Key_Up);
  QTest::keyClick(line, Qt::Key_Down);
  line->setSelection(7, 1);
  QTest::keyClick(line, Qt::Key_Up);
  line->selectAll();
  QTest::keyClick(line, Qt::Key_Up);  // nobody knows which
  EXPECT_THAT(form.told, ElementsAre("4 up", "4 down", "7 up"));
  form.told.clear();
  for (const int character : {0, 4, 9}) {
    line->setCursorPosition(character);
    const int left = line->inputMethodQuery(Qt::ImCursorRectangle).toRect().center().x();
    line->setCursorPosition(character + 1);
    const int right = line->inputMethodQuery(Qt::ImCursorRectangle).toRect().center().x();
    const QPoint at((left + right) / 2, line->height() / 2);
    for (const int turn : {60, 60, -120}) {
      QWheelEvent wheel(at, line->mapToGlobal(at), {}, {0, turn}, Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(line, &wheel);
    }
  }
  EXPECT_THAT(form.told, ElementsAre("0 up", "0 down", "4 up", "4 down", "9 up", "9 down"));
}

TEST_F(TextWidgets, AKeyThatTheFilterSwallowsDoesNothing) {
  QTest::keyClicks(Line("Digits"), "1x2");
  EXPECT_EQ(form.Digits.Text(), "12");
  EXPECT_EQ(Line("Digits")->text(), "12");
}

TEST_F(TextWidgets, AFieldThatTakesKeysWritesTheirNamesAndPressesNoCommand) {
  form.Qra.WritesKeys = true;
  int entered = 0;
  form.Qra.OnEnter = [&] { ++entered; };
  QLineEdit* const line = Line("Qra");
  line->setFocus();
  Settle();
  form.told.clear();
  const auto press = [&](Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(line, key, held);
    return form.Qra.Text();
  };
  EXPECT_EQ(press(Qt::Key_F2), "F2");
  EXPECT_EQ(press(Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier), "Ctrl+Shift+B");
  EXPECT_EQ(press(Qt::Key_A, Qt::ControlModifier), "Ctrl+A");
  EXPECT_EQ(press(Qt::Key_Delete), "Del");
  EXPECT_EQ(press(Qt::Key_PageDown), "PgDown");
  EXPECT_EQ(press(Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier), "Ctrl++");
  EXPECT_EQ(press(Qt::Key_Control, Qt::ControlModifier), "Ctrl++");
  EXPECT_EQ(press(Qt::Key_Backspace), "");
  EXPECT_EQ(press(Qt::Key_Q), "Q");
  EXPECT_EQ(press(Qt::Key_Return), "Q");
  EXPECT_EQ(entered, 1);
  EXPECT_THAT(form.told, ElementsAre());
  QTest::keyClick(line, Qt::Key_Tab);
  EXPECT_FALSE(line->hasFocus());
}

TEST_F(TextWidgets, ControlAndALetterIsACommandsThoughTheCaretStandsInAField) {
  QLineEdit* const line = Line("CallQso");
  for (const char letter : std::string("BDEFGHIJKLMNOPQRSTUW")) {
    form.cmInsert.SetShortcut(std::string("Ctrl+") + letter);
    form.told.clear();
    QTest::keyClick(line, static_cast<Qt::Key>(letter), Qt::ControlModifier);
    Settle();
    EXPECT_EQ(form.told.size(), 1U) << letter;
  }
  form.Qra.WritesKeys = true;
  Line("Qra")->setFocus();
  Settle();
  form.told.clear();
  QTest::keyClick(Line("Qra"), Qt::Key_W, Qt::ControlModifier);
  EXPECT_EQ(form.Qra.Text(), "Ctrl+W");
  EXPECT_THAT(form.told, ElementsAre());
  form.cmInsert.SetShortcut(std::nullopt);
}

TEST_F(TextWidgets, ACommandThatGetsAnotherKeyAnswersToThatOne) {
  form.cmInsert.SetShortcut("Ctrl+F9");
  form.told.clear();
  QTest::keyClick(Line("CallQso"), Qt::Key_F2);
  Settle();
  EXPECT_THAT(form.told, ElementsAre());
  QTest::keyClick(Line("CallQso"), Qt::Key_F9, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(form.told.size(), 1U);
  form.cmInsert.SetShortcut(std::nullopt);
  EXPECT_EQ(form.cmInsert.Shortcut(), "");
}

TEST_F(TextWidgets, AClickThatBringsTheKeyboardSelectsAllAndASecondPutsTheCaret) {
  form.Qra.SetText("MARIO");
  Line("CallQso")->setFocus();
  Settle();
  QTest::mouseClick(Line("Qra"), Qt::LeftButton);
  Settle();
  EXPECT_EQ(Line("Qra")->selectedText(), "MARIO");
  EXPECT_EQ(form.Qra.SelText(), "MARIO");
  QTest::mouseClick(Line("Qra"), Qt::LeftButton);
  Settle();
  EXPECT_EQ(Line("Qra")->selectedText(), "");
}

TEST_F(TextWidgets, TypingReplacesWhatIsSelected) {
  form.CallQso.SetText("IK1ABC");
  Line("CallQso")->setSelection(3, 3);
  QTest::keyClicks(Line("CallQso"), "z");
  EXPECT_EQ(form.CallQso.Text(), "IK1Z");
}

TEST_F(TextWidgets, TypingInTheMiddleGoesOnInTheMiddle) {
  form.CallQso.SetText("IKABC");
  Line("CallQso")->setCursorPosition(2);
  QTest::keyClicks(Line("CallQso"), "10");
  EXPECT_EQ(form.CallQso.Text(), "IK10ABC");
}

TEST_F(TextWidgets, BackspaceClearsTheWholeFieldWhereTheFieldSaysSo) {
  form.File.SetText("italia.jpg");
  QTest::keyClick(Line("File"), Qt::Key_Backspace);
  EXPECT_EQ(form.File.Text(), "");
}

TEST_F(TextWidgets, DeleteRemovesTheNextCharacter) {
  form.CallQso.SetText("IK1ABC");
  Line("CallQso")->setCursorPosition(0);
  QTest::keyClick(Line("CallQso"), Qt::Key_Delete);
  EXPECT_EQ(form.CallQso.Text(), "K1ABC");
}

TEST_F(TextWidgets, PastedTextIsFilteredAndKeepsToTheLongestLength) {
  QApplication::clipboard()->setText("a1b2c3d4e5");
  QTest::keyClick(Line("Digits"), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(form.Digits.Text(), "1234");
  EXPECT_EQ(Line("Digits")->text(), "1234");
}

TEST_F(TextWidgets, APasteIsOneChange) {
  form.told.clear();
  QApplication::clipboard()->setText("ik1abc");
  QTest::keyClick(Line("CallQso"), Qt::Key_V, Qt::ControlModifier);
  EXPECT_THAT(form.told, ElementsAre("change IK1ABC"));
}

TEST_F(TextWidgets, APasteOfSeveralLinesBecomesOne) {
  QApplication::clipboard()->setText("Via Roma 1\r\nPadova\t(PD)\a\n");
  QTest::keyClick(Line("Qra"), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(form.Qra.Text(), "Via Roma 1 Padova (PD)");
  EXPECT_EQ(Line("Qra")->text(), "Via Roma 1 Padova (PD)");
}

TEST_F(TextWidgets, APasteKeepsItsOwnBlanks) {
  QApplication::clipboard()->setText("  2 m ");
  QTest::keyClick(Line("Qra"), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(form.Qra.Text(), "  2 m ");
}

TEST_F(TextWidgets, AltAndAKeyThatNobodyAnswersWriteNothing) {
  QTest::keyClick(Line("CallQso"), 'n', Qt::AltModifier);
  QTest::keyClick(Line("CallQso"), '-', Qt::AltModifier);
  QTest::keyClick(Line("CallQso"), '2', Qt::AltModifier);
  EXPECT_EQ(form.CallQso.Text(), "");
  // The third level of many keyboards.
  QTest::keyClick(Line("Qra"), '@', Qt::AltModifier | Qt::ControlModifier);
  EXPECT_EQ(form.Qra.Text(), "@");
}

TEST_F(TextWidgets, AFieldThatRefusesKeystrokesTakesNone) {
  form.Qra.ReadOnly = true;
  form.Qra.SetText("12");
  QTest::keyClicks(Line("Qra"), "3");
  EXPECT_EQ(form.Qra.Text(), "12");
}

TEST_F(TextWidgets, AccentedLettersCountAsOne) {
  for (const QChar letter : QStringLiteral("Forlì")) {
    QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, letter);
    QApplication::sendEvent(Line("Qra"), &key);
  }
  EXPECT_EQ(base::Len(form.Qra.Text()), 5u);
  EXPECT_EQ(Line("Qra")->text(), QStringLiteral("Forlì"));
}

TEST_F(TextWidgets, ReceivingTheFocusSelectsEverything) {
  form.Qra.SetText("MARIO");
  Line("CallQso")->setFocus();
  Settle();
  QTest::keyClick(Line("CallQso"), Qt::Key_Tab);
  Settle();
  EXPECT_EQ(QApplication::focusWidget(), Line("Qra"));
  EXPECT_EQ(Line("Qra")->selectedText(), "MARIO");
}

TEST_F(TextWidgets, LeavingIsOverBeforeTheNextKeyIsTyped) {
  Line("CallQso")->setFocus();
  Settle();
  // Nothing waits in between, as when somebody types fast.
  QTest::keyClicks(Line("CallQso"), "i2a");
  QTest::keyClick(Line("CallQso"), Qt::Key_Tab);
  QTest::keyClicks(QApplication::focusWidget(), "B");
  EXPECT_EQ(form.told.back(), "leave");
  EXPECT_EQ(form.Qra.Text(), "B");
}

TEST_F(TextWidgets, ABoxOverTheWindowDoesNotLeaveTheField) {
  Line("CallQso")->setFocus();
  Settle();
  form.told.clear();
  QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QFocusEvent in(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
  QApplication::sendEvent(Line("CallQso"), &out);
  Settle();
  QApplication::sendEvent(Line("CallQso"), &in);
  Settle();
  EXPECT_THAT(form.told, ElementsAre());
}

TEST_F(TextWidgets, ALookIntoAMenuKeepsTheSelection) {
  form.Qra.SetText("MARIO");
  Line("Qra")->setFocus();
  Settle();
  host.Main().menuBar()->addMenu("&Utility")->addAction("Compatta");
  host.Main().menuBar()->setFocus(Qt::MenuBarFocusReason);
  Settle();
  Line("Qra")->setFocus(Qt::MenuBarFocusReason);
  Settle();
  EXPECT_EQ(form.Qra.SelText(), "MARIO");
  QTest::keyClicks(Line("Qra"), "B");
  EXPECT_EQ(form.Qra.Text(), "B");
}

TEST_F(TextWidgets, TheKeyboardFollowsTheOrderOfDeclaration) {
  Line("CallQso")->setFocus();
  Told order;
  for (int i = 0; i < 5; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    order.push_back(QApplication::focusWidget()->objectName().toStdString());
  }
  EXPECT_THAT(order, ElementsAre("Qra", "Digits", "File", "Qtr", "DataQso"));
}

TEST_F(TextWidgets, AnAssignedTextIsShown) {
  form.CallQso.SetText("I0XXX");
  EXPECT_EQ(Line("CallQso")->text(), "I0XXX");
}

TEST_F(TextWidgets, AMaskTakesDigitsIntoItsPlaces) {
  form.Qtr.SetText(form.Qtr.EmptyText());
  form.Qtr.Select(0, 0);
  QTest::keyClicks(Line("Qtr"), "1x830");
  EXPECT_EQ(form.Qtr.Text(), "18:30");
}

TEST_F(TextWidgets, DeleteBlanksOnePlaceOfAMask) {
  form.Qtr.SetText("18:30");
  Line("Qtr")->setCursorPosition(1);
  QTest::keyClick(Line("Qtr"), Qt::Key_Delete);
  EXPECT_EQ(form.Qtr.Text(), "1_:30");
}

TEST_F(TextWidgets, APasteIntoAMaskFillsItsPlaces) {
  form.Qtr.SetText(form.Qtr.EmptyText());
  Line("Qtr")->selectAll();
  QApplication::clipboard()->setText("0730");
  QTest::keyClick(Line("Qtr"), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(form.Qtr.Text(), "07:30");
}

TEST_F(TextWidgets, ADateIsShownAndTypedAsDayMonthYear) {
  form.DataQso.SetText("03/02/2001");
  auto* date = Find<QDateEdit>("DataQso");
  EXPECT_EQ(date->text(), "03/02/2001");
  date->setCurrentSection(QDateTimeEdit::DaySection);
  QTest::keyClick(date, Qt::Key_Up);
  EXPECT_EQ(form.DataQso.Text(), "04/02/2001");
}

TEST_F(TextWidgets, ADateIsOneStepOfTheKeyboard) {
  Line("Qtr")->setFocus();
  QTest::keyClick(Line("Qtr"), Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget(), Find<QDateEdit>("DataQso"));
  EXPECT_EQ(Find<QDateEdit>("DataQso")->currentSection(), QDateTimeEdit::DaySection);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_NE(QApplication::focusWidget(), Find<QDateEdit>("DataQso"));
}

TEST_F(TextWidgets, ADateIsTypedWithItsStrokesToo) {
  auto* date = Find<QDateEdit>("DataQso");
  for (const auto& [typed, read] : {std::pair("08/11/2025", "08/11/2025"),
                                    {"8/1/2025", "08/01/2025"},
                                    {"8-11-25", "08/11/2025"},
                                    {"31/12/98", "31/12/1998"}}) {
    form.DataQso.SetText("21/10/2026");
    date->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(date, typed);
    EXPECT_EQ(QApplication::focusWidget(), date) << typed;
    QTest::keyClick(date, Qt::Key_Tab);
    Settle();
    EXPECT_EQ(form.DataQso.Text(), read) << typed;
  }
}

TEST_F(TextWidgets, ADateIsTypedAnewFromTheCaretToo) {
  auto* date = Find<QDateEdit>("DataQso");
  for (const char* typed : {"08/11/2025", "08112025"}) {
    form.DataQso.SetText("21/10/2026");
    date->setFocus(Qt::TabFocusReason);
    QTest::keyClick(date, Qt::Key_Home);
    QTest::keyClicks(date, typed);
    QTest::keyClick(date, Qt::Key_Tab);
    Settle();
    EXPECT_EQ(form.DataQso.Text(), "08/11/2025") << typed;
  }
}

TEST_F(TextWidgets, TheWheelOnlyTurnsADateThatHasTheKeyboard) {
  form.DataQso.SetText("03/02/2001");
  auto* date = Find<QDateEdit>("DataQso");
  Line("CallQso")->setFocus();
  Roll(*date);
  EXPECT_EQ(form.DataQso.Text(), "03/02/2001");
  date->setFocus(Qt::TabFocusReason);
  Roll(*date);
  EXPECT_EQ(form.DataQso.Text(), "02/02/2001");
}

TEST_F(TextWidgets, AYearOfTwoDigitsIsOfThisCenturyOrTheLast) {
  auto* date = Find<QDateEdit>("DataQso");
  for (const auto& [typed, read] : {std::pair("050124", "05/01/2024"), {"311298", "31/12/1998"}}) {
    form.DataQso.SetText("21/11/2026");
    date->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(date, typed);
    QTest::keyClick(date, Qt::Key_Tab);
    Settle();
    EXPECT_EQ(form.DataQso.Text(), read);
  }
}

TEST_F(TextWidgets, TheLastDayOfAMonthIsKeptWhateverMonthStoodThere) {
  auto* date = Find<QDateEdit>("DataQso");
  for (const auto& [typed, read] : {std::pair("31121998", "31/12/1998"),
                                    {"29022024", "29/02/2024"},
                                    {"290224", "29/02/2024"},
                                    {"31022025", "28/02/2025"}}) {
    form.DataQso.SetText("21/11/2026");
    date->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(date, typed);
    QTest::keyClick(date, Qt::Key_Tab);
    Settle();
    EXPECT_EQ(form.DataQso.Text(), read) << typed;
  }
}

TEST_F(TextWidgets, ADateThatMayBeEmptyIsShownAsNothingAndTypedAnew) {
  form.DataQso.MayBeEmpty = true;
  auto* date = Find<QDateEdit>("DataQso");
  form.DataQso.SetText("21/11/2026");
  form.DataQso.SetText("");
  EXPECT_EQ(date->text().trimmed(), "");
  // The keyboard that only passes by leaves it so.
  date->setFocus(Qt::TabFocusReason);
  QTest::keyClick(date, Qt::Key_Tab);
  Settle();
  EXPECT_EQ(date->text().trimmed(), "");
  EXPECT_EQ(form.DataQso.Text(), "");
  date->setFocus(Qt::TabFocusReason);
  QTest::keyClicks(date, "05121998");
  Settle();
  EXPECT_EQ(form.DataQso.Text(), "05/12/1998");
  form.DataQso.SetText("");
  form.DataQso.SetText("03/02/2001");
  EXPECT_EQ(date->text(), "03/02/2001");
}

TEST_F(TextWidgets, ADateThatIsAlwaysOneKeepsTheOneBefore) {
  form.DataQso.SetText("21/11/2026");
  form.DataQso.SetText("");
  EXPECT_EQ(Find<QDateEdit>("DataQso")->text(), "21/11/2026");
}

TEST_F(TextWidgets, ADateSelectedWholeIsTypedAnew) {
  form.DataQso.SetText("21/11/2026");
  auto* date = Find<QDateEdit>("DataQso");
  date->setFocus(Qt::TabFocusReason);
  date->setCurrentSection(QDateTimeEdit::YearSection);
  date->selectAll();
  QTest::keyClicks(date, "05121998");
  Settle();
  EXPECT_EQ(form.DataQso.Text(), "05/12/1998");
}

TEST_F(TextWidgets, DigitsThatADateRefusesCountForNothing) {
  form.DataQso.SetText("04/11/2026");
  auto* date = Find<QDateEdit>("DataQso");
  date->setFocus(Qt::TabFocusReason);
  date->setCurrentSection(QDateTimeEdit::DaySection);
  QTest::keyClicks(date, "3" + QString(12, '9'));
  QTest::keyClick(date, Qt::Key_Tab);
  Settle();
  EXPECT_EQ(form.DataQso.Text(), "03/11/2026");
}

TEST_F(TextWidgets, ADateThatIsNoneGoesBackToTheOneBefore) {
  form.DataQso.SetText("21/11/2026");
  auto* date = Find<QDateEdit>("DataQso");
  date->setFocus(Qt::TabFocusReason);
  QTest::keyClicks(date, "0");
  QTest::keyClick(date, Qt::Key_Tab);
  Settle();
  EXPECT_EQ(date->text(), "21/11/2026");
  EXPECT_EQ(form.DataQso.Text(), "21/11/2026");
}

TEST_F(TextWidgets, ACommandFindsTheDateThatIsTypedSoFar) {
  form.DataQso.SetText("21/11/2026");
  auto* date = Find<QDateEdit>("DataQso");
  date->setFocus(Qt::TabFocusReason);
  QTest::keyClicks(date, "051224");
  QTest::keyClick(date, Qt::Key_F2);
  Settle();
  EXPECT_EQ(form.told.back(), "insert 05/12/2024");
  EXPECT_EQ(date->text(), "05/12/2024");
}

TEST_F(TextWidgets, ADroppedNameReachesTheFieldThatTakesOne) {
  QMimeData data;
  data.setText("wm.jpg");
  QDragEnterEvent enter(QPoint(4, 4), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(Line("File"), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(4, 4), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(Line("File"), &drop);
  EXPECT_EQ(form.File.Text(), "wm.jpg");
}

TEST_F(TextWidgets, AHiddenFieldHidesItsLabelToo) {
  auto labels = host.Main().findChildren<QLabel*>();
  const auto label = std::find_if(labels.begin(), labels.end(),
                                  [&](QLabel* each) { return each->buddy() == Line("Digits"); });
  ASSERT_NE(label, labels.end());
  EXPECT_TRUE((*label)->isVisible());
  form.Digits.SetVisible(false);
  EXPECT_FALSE((*label)->isVisible());
  EXPECT_FALSE(Line("Digits")->isVisible());
}

}  // namespace
}  // namespace brenvo::ui
