#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabBar>
#include <QWheelEvent>

#include "forms/choice_fields.h"
#include "forms/list_field.h"
#include "forms/tab_strip.h"
#include "tests/ui/screen.h"

namespace brenvo::ui {
namespace {

using ::testing::ElementsAre;

class ChoiceForm : public forms::Window {
 public:
  explicit ChoiceForm(forms::WindowHost& host)
      : forms::Window(host, "ChoiceForm", "", base::Twips(9000), base::Twips(9000)) {
    Banda.SetItems({"160 m", " 80 m", " 40 m", "  2 m"});
    Country.SetItems({"I    Italia", "F    Francia"});
    LBNote.SetItems({"PROP  F2", "PROP  M.S.", "SAT   AO-7"});
    Modo.SetItems({"SSB", "CW", "RTTY"});
    for (forms::ListField* list : {&Banda, &Country, &LBNote, &Modo}) {
      list->OnChange = [this, list] { told.push_back("change " + list->Text()); };
      list->OnClick = [this, list] { told.push_back("click " + list->Text()); };
    }
    LBNote.OnDoubleClick = [this] { told.push_back("double " + LBNote.Text()); };
    LBNote.ContextMenu = &popup;
    LBNote.OnContextMenu = [this] { told.push_back("context"); };
    Fisso.JoinWith(Portatile);
    cmToggle.Toggle = true;
    Tabs.SetPage(0, First, {});
    Tabs.SetPage(1, Second, {});
  }
  forms::ListField Banda{*this, "Banda", forms::ListStyle::kDropDown};
  forms::ListField Country{*this, "Country", forms::ListStyle::kCombo};
  forms::ListField LBNote{*this, "LBNote", forms::ListStyle::kOpen};
  forms::ListField Modo{*this, "Modo", forms::ListStyle::kMulti};
  forms::CheckBox QslRicevuta{*this, "QslRicevuta", {}, true};
  forms::OptionButton Fisso{*this, "Fisso"};
  forms::OptionButton Portatile{*this, "Portatile"};
  forms::OptionGroup SortOrder{*this, "SortOrder", {"Data", "Call", "Qrb"}};
  forms::Slider Altezza{*this, "Altezza", 0, 700, 339};
  forms::Gauge SMeter{*this, "SMeter", 20, 175};
  forms::Command cmToggle{*this, "cmToggle", "&Tasto", [this] { told.push_back("press"); }};
  forms::Command cmAll{*this, "cmAll", "Tutto"};
  forms::Menu popup{*this, "popup", "", {&cmAll}};
  forms::Panel First{*this, "First"}, Second{*this, "Second"};
  forms::TabStrip Tabs{*this, "Tabs", {"RTX", "Multimedia"}};
  Told told;
};

class ChoiceWidgets : public ScreenTest {
 protected:
  ChoiceForm& form = Open<ChoiceForm>();
};

TEST_F(ChoiceWidgets, AnArrowKeyTakesTheNextEntryOfADropDownList) {
  QTest::keyClick(Find<QComboBox>("Banda"), Qt::Key_Down);
  EXPECT_EQ(form.Banda.ListIndex(), 0);
  EXPECT_THAT(form.told, ElementsAre("change 160 m", "click 160 m"));
}

TEST_F(ChoiceWidgets, DeleteEmptiesTheChoiceOfADropDownList) {
  form.Banda.SetListIndex(1);
  QTest::keyClick(Find<QComboBox>("Banda"), Qt::Key_Delete);
  EXPECT_EQ(form.Banda.ListIndex(), -1);
  EXPECT_EQ(Find<QComboBox>("Banda")->currentIndex(), -1);
}

TEST_F(ChoiceWidgets, WhatIsTypedAtAClosedListFindsItsEntryWhateverTheBlanks) {
  auto* list = Find<QComboBox>("Banda");
  QTest::keyClicks(list, "40");
  EXPECT_EQ(form.Banda.Text(), " 40 m");
  QTest::keyClicks(list, "8");
  EXPECT_EQ(form.Banda.Text(), " 80 m");
}

TEST_F(ChoiceWidgets, TheSameLetterGoesOnToTheNextEntryThatBeginsWithIt) {
  form.Banda.SetItems({" 20 m", "  2 m", " 23cm"});
  auto* list = Find<QComboBox>("Banda");
  Told taken;
  for (int i = 0; i < 4; ++i) {
    QTest::keyClicks(list, "2");
    taken.push_back(form.Banda.Text());
  }
  EXPECT_THAT(taken, ElementsAre(" 20 m", "  2 m", " 23cm", " 20 m"));
}

TEST_F(ChoiceWidgets, ALetterThatBeginsNoEntryChangesNothing) {
  form.Banda.SetListIndex(0);
  QTest::keyClicks(Find<QComboBox>("Banda"), "x");
  EXPECT_EQ(form.Banda.ListIndex(), 0);
}

TEST_F(ChoiceWidgets, WhatIsTypedAtADroppedDownListFindsItsFirstEntryAndEnterTakesIt) {
  form.Banda.SetItems({"160 m", " 20 m", "  2 m", " 23cm"});
  form.told.clear();
  auto* list = Find<QComboBox>("Banda");
  list->showPopup();
  QTest::keyClicks(list->view(), " 2 m");
  EXPECT_EQ(list->view()->currentIndex().data().toString(), "  2 m");
  EXPECT_THAT(form.told, ElementsAre());
  QTest::keyClick(list->view(), Qt::Key_Return);
  Settle();
  EXPECT_THAT(form.told, ElementsAre("change   2 m", "click   2 m"));
}

TEST_F(ChoiceWidgets, ADroppedDownListIsSoughtFromItsBeginning) {
  form.Banda.SetItems({" 20 m", "  2 m", " 23cm"});
  form.Banda.SetListIndex(2);
  auto* list = Find<QComboBox>("Banda");
  list->showPopup();
  QTest::keyClicks(list->view(), "2");
  EXPECT_EQ(list->view()->currentIndex().data().toString(), " 20 m");
  QTest::keyClicks(list->view(), "2");
  EXPECT_EQ(list->view()->currentIndex().data().toString(), "  2 m");
  list->hidePopup();
}

TEST_F(ChoiceWidgets, WhatIsTypedAtAListThatStandsOpenFindsItsEntryWhateverTheBlanks) {
  form.LBNote.SetItems({"160 m", " 20 m", "  2 m"});
  form.Modo.SetItems({"160 m", " 20 m", "  2 m"});
  Settle();
  QTest::keyClicks(Find<QListView>("LBNote"), "2m");
  EXPECT_EQ(form.LBNote.Text(), "  2 m");
  auto* several = Find<QListView>("Modo");
  QTest::keyClicks(several, "2m");
  EXPECT_EQ(several->currentIndex().row(), 2);
  EXPECT_FALSE(form.Modo.Selected(2));
  QTest::keyClick(several, Qt::Key_Space);
  EXPECT_TRUE(form.Modo.Selected(2));
}

TEST_F(ChoiceWidgets, EnterGoesOnFromABoxAndTheBlankTicksIt) {
  auto* box = Find<QCheckBox>("QslRicevuta");
  form.QslRicevuta.SetOn(false);
  box->setFocus();
  QTest::keyClick(box, Qt::Key_Return);
  EXPECT_EQ(form.QslRicevuta.State(), forms::CheckState::kOff);
  EXPECT_NE(QApplication::focusWidget(), box);
  QTest::keyClick(box, Qt::Key_Space);
  EXPECT_EQ(form.QslRicevuta.State(), forms::CheckState::kOn);
}

// Of the lightness of the desktop, from 0 to 255.
int EdgeContrast(QWidget& box, const QPalette& desktop) {
  box.setPalette(desktop);
  box.resize(40, 24);
  QImage image(box.size(), QImage::Format_RGB32);
  image.fill(desktop.color(QPalette::Window));
  box.render(&image, {}, {}, QWidget::DrawChildren);
  const int ground = qGray(desktop.color(QPalette::Window).rgb());
  int most = 0;
  for (int x = 0; x < image.width(); ++x) {
    most = std::max(most, std::abs(qGray(image.pixel(x, image.height() / 2)) - ground));
  }
  return most;
}

TEST_F(ChoiceWidgets, AnEmptyBoxIsSeenOnADarkDesktop) {
  QPalette dark(QColor(62, 66, 71), QColor(45, 48, 52));
  dark.setColor(QPalette::WindowText, QColor(225, 226, 228));
  dark.setColor(QPalette::Base, QColor(30, 32, 35));
  QCheckBox box;
  QRadioButton option;
  EXPECT_GT(EdgeContrast(box, dark), 80);
  EXPECT_GT(EdgeContrast(option, dark), 80);
}

TEST_F(ChoiceWidgets, TheWheelOnlyTurnsAListThatHasTheKeyboard) {
  form.Banda.SetListIndex(0);
  auto* list = Find<QComboBox>("Banda");
  Find<QComboBox>("Country")->lineEdit()->setFocus();
  Roll(*list);
  EXPECT_EQ(form.Banda.ListIndex(), 0);
  list->setFocus();
  Roll(*list);
  EXPECT_EQ(form.Banda.ListIndex(), 1);
}

TEST_F(ChoiceWidgets, AnAssignedEntryIsShownWithoutAnEventOfTheScreen) {
  form.Banda.SetListIndex(2);
  EXPECT_EQ(Find<QComboBox>("Banda")->currentText(), " 40 m");
  EXPECT_THAT(form.told, ElementsAre("change  40 m"));
}

TEST_F(ChoiceWidgets, AListWithATextTypesThroughItsField) {
  form.Country.Filter = [](char32_t key) { return key == 'x' ? U'F' : key; };
  QTest::keyClicks(Find<QComboBox>("Country"), "x");
  EXPECT_EQ(form.Country.Text(), "F");
  EXPECT_EQ(Find<QComboBox>("Country")->currentText(), "F");
}

TEST_F(ChoiceWidgets, AnEntryTypedInFullIsNoClick) {
  form.Country.SetText("I    Itali");
  Find<QComboBox>("Country")->lineEdit()->setCursorPosition(10);
  QTest::keyClicks(Find<QComboBox>("Country"), "a");
  QTest::keyClick(Find<QComboBox>("Country"), Qt::Key_Return);
  EXPECT_THAT(form.told, ElementsAre("change I    Itali", "change I    Italia"));
}

TEST_F(ChoiceWidgets, AnArrowKeyTakesTheNextEntryOfAListWithAText) {
  form.Country.SetText("I    Italia");
  form.Country.SetListIndex(0);
  form.told.clear();
  auto* combo = Find<QComboBox>("Country");
  combo->lineEdit()->setFocus();
  Settle();
  QTest::keyClick(combo, Qt::Key_Down);
  EXPECT_EQ(combo->currentText(), "F    Francia");
  EXPECT_THAT(form.told, ElementsAre("change F    Francia", "click F    Francia"));
}

TEST_F(ChoiceWidgets, AnEntryChosenInItsListReplacesATextThatIsNone) {
  form.Country.SetText("PD  Padova");
  form.told.clear();
  auto* combo = Find<QComboBox>("Country");
  combo->lineEdit()->setFocus();
  Settle();
  combo->showPopup();
  Settle();
  QTest::keyClick(combo->view(), Qt::Key_End);
  QTest::keyClick(combo->view(), Qt::Key_Return);
  Settle();
  EXPECT_EQ(combo->currentText(), "F    Francia");
  EXPECT_THAT(form.told, ElementsAre("change F    Francia", "click F    Francia"));
}

TEST_F(ChoiceWidgets, WhatIsTypedAfterAChoiceReplacesIt) {
  auto* combo = Find<QComboBox>("Country");
  combo->lineEdit()->setFocus();
  Settle();
  QTest::keyClick(combo, Qt::Key_Down);
  QTest::keyClicks(combo, "f");
  EXPECT_EQ(form.Country.Text(), "f");
}

TEST_F(ChoiceWidgets, OpeningItsListLeavesNoField) {
  form.Country.OnLeave = [this] { form.told.push_back("leave"); };
  auto* combo = Find<QComboBox>("Country");
  combo->lineEdit()->setFocus();
  Settle();
  combo->showPopup();
  Settle();
  EXPECT_THAT(form.told, ElementsAre());
  combo->hidePopup();
  Settle();
  Find<QComboBox>("Banda")->setFocus();
  Settle();
  EXPECT_THAT(form.told, ElementsAre("leave"));
}

TEST_F(ChoiceWidgets, CodesBeforeADescriptionStandInAFixedFontInEveryList) {
  const auto fontOf = [](const QAbstractItemView& list) {
    return list.model()->index(0, 0).data(Qt::FontRole);
  };
  const QFont country = fontOf(*Find<QComboBox>("Country")->view()).value<QFont>();
  EXPECT_EQ(country.family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
  EXPECT_EQ(fontOf(*Find<QListView>("LBNote")).value<QFont>(), country);
  EXPECT_FALSE(fontOf(*Find<QComboBox>("Banda")->view()).isValid());
}

TEST_F(ChoiceWidgets, AClickTakesTheEntryOfAnOpenList) {
  auto* list = Find<QListView>("LBNote");
  const QRect place = list->visualRect(list->model()->index(1, 0));
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
  EXPECT_EQ(form.LBNote.ListIndex(), 1);
  EXPECT_THAT(form.told, ElementsAre("change PROP  M.S.", "click PROP  M.S."));
}

TEST_F(ChoiceWidgets, ALetterSearchesAnOpenList) {
  QTest::keyClicks(Find<QListView>("LBNote"), "s");
  EXPECT_EQ(form.LBNote.Text(), "SAT   AO-7");
}

TEST_F(ChoiceWidgets, ADoubleClickIsTheFieldsBehindItsClick) {
  auto* list = Find<QListView>("LBNote");
  const QPoint place = list->visualRect(list->model()->index(0, 0)).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
  Settle();
  ASSERT_FALSE(form.told.empty());
  EXPECT_EQ(form.told.back(), "double PROP  F2");
}

TEST_F(ChoiceWidgets, EscClosesAListThatCameUpAndNotItsWindow) {
  form.cmAll.OnClick = [this] { form.told.push_back("cancel"); };
  form.CancelCommand = &form.cmAll;
  form.LBNote.PicksOnEnter = true;
  form.LBNote.OnLeave = [this] { form.LBNote.SetVisible(false); };
  form.LBNote.SetVisible(false);
  Find<QComboBox>("Banda")->setFocus();
  form.LBNote.SetVisible(true);
  Settle();
  ASSERT_EQ(QApplication::focusWidget(), Find<QListView>("LBNote"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  Settle();
  EXPECT_FALSE(form.LBNote.Visible());
  EXPECT_EQ(QApplication::focusWidget(), Find<QComboBox>("Banda"));
  EXPECT_THAT(form.told, ElementsAre());
}

TEST_F(ChoiceWidgets, TheMenuUnderTheRightButtonOpensBehindTheFieldsEvent) {
  auto* list = Find<QListView>("LBNote");
  emit list->customContextMenuRequested(QPoint(4, 4));
  Settle();
  EXPECT_THAT(form.told, ElementsAre("context"));
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(QApplication::activePopupWidget()->objectName(), "popup");
  QApplication::activePopupWidget()->close();
}

TEST_F(ChoiceWidgets, EntriesAddedOneByOneAreShown) {
  form.LBNote.AddItem("SAT   FO-29");
  Settle();
  EXPECT_EQ(Find<QListView>("LBNote")->model()->rowCount(), 4);
}

TEST_F(ChoiceWidgets, SpaceMarksAndUnmarksInAListOfSeveralChoices) {
  auto* list = Find<QListView>("Modo");
  list->setFocus();
  list->setCurrentIndex(list->model()->index(1, 0));
  QTest::keyClick(list, Qt::Key_Space);
  EXPECT_TRUE(form.Modo.Selected(1));
  QTest::keyClick(list, Qt::Key_Space);
  EXPECT_FALSE(form.Modo.Selected(1));
}

TEST_F(ChoiceWidgets, ATriStateBoxGoesTheFieldsRound) {
  auto* box = Find<QCheckBox>("QslRicevuta");
  EXPECT_EQ(box->checkState(), Qt::PartiallyChecked);
  QTest::keyClick(box, Qt::Key_Space);
  EXPECT_EQ(form.QslRicevuta.State(), forms::CheckState::kOff);
  QTest::keyClick(box, Qt::Key_Space);
  EXPECT_EQ(form.QslRicevuta.State(), forms::CheckState::kOn);
  EXPECT_EQ(box->checkState(), Qt::Checked);
}

TEST_F(ChoiceWidgets, OneOptionClearsItsFellow) {
  QTest::keyClick(Find<QRadioButton>("Fisso"), Qt::Key_Space);
  QTest::keyClick(Find<QRadioButton>("Portatile"), Qt::Key_Space);
  EXPECT_FALSE(form.Fisso.IsOn());
  EXPECT_FALSE(Find<QRadioButton>("Fisso")->isChecked());
  EXPECT_TRUE(Find<QRadioButton>("Portatile")->isChecked());
}

TEST_F(ChoiceWidgets, AnOptionOfAGroupIsPressedByItsNumber) {
  QTest::keyClick(Find<QRadioButton>("SortOrder_2"), Qt::Key_Space);
  EXPECT_EQ(form.SortOrder.Index(), 2);
}

TEST_F(ChoiceWidgets, ASliderTellsItsValueAndFollowsItsLimits) {
  auto* slider = Find<QSlider>("Altezza");
  slider->setValue(400);
  EXPECT_EQ(form.Altezza.Value(), 400);
  form.Altezza.SetMaximum(350);
  EXPECT_EQ(slider->maximum(), 350);
  EXPECT_EQ(slider->value(), 350);
}

// As a dial is turned: by the finest step, by ten of them, by the wheel in between.
TEST_F(ChoiceWidgets, ASliderMovesByKeysAndByTheWheel) {
  auto* slider = Find<QSlider>("Altezza");
  QTest::keyClick(slider, Qt::Key_Right);
  EXPECT_EQ(form.Altezza.Value(), 340);
  QTest::keyClick(slider, Qt::Key_PageUp);
  EXPECT_EQ(form.Altezza.Value(), 350);
  QTest::keyClick(slider, Qt::Key_Left);
  QTest::keyClick(slider, Qt::Key_PageDown);
  EXPECT_EQ(form.Altezza.Value(), 339);
  const QPoint at = slider->rect().center();
  QWheelEvent wheel(at, slider->mapToGlobal(at), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(slider, &wheel);
  EXPECT_GT(form.Altezza.Value(), 339);
  EXPECT_LT(form.Altezza.Value(), 349);
}

TEST_F(ChoiceWidgets, AReadingBeyondTheScaleShowsAsItsEnd) {
  form.SMeter.SetValue(255);
  EXPECT_EQ(Find<QProgressBar>("SMeter")->value(), 175);
}

TEST_F(ChoiceWidgets, AToggleFlipsOnceAPress) {
  auto* button = Find<QPushButton>("cmToggle");
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_TRUE(form.cmToggle.Down());
  EXPECT_TRUE(button->isChecked());
  form.cmToggle.SetDown(false);
  EXPECT_FALSE(button->isChecked());
  EXPECT_THAT(form.told, ElementsAre("press"));
}

TEST_F(ChoiceWidgets, ATabShowsItsPage) {
  Find<QTabBar>("Tabs")->setCurrentIndex(1);
  EXPECT_EQ(form.Tabs.Index(), 1);
  EXPECT_TRUE(form.Second.Visible());
  EXPECT_FALSE(form.First.Visible());
}

TEST_F(ChoiceWidgets, ADisabledFieldIsDisabledOnTheScreen) {
  form.Banda.SetEnabled(false);
  EXPECT_FALSE(Find<QComboBox>("Banda")->isEnabled());
}

}  // namespace
}  // namespace brenvo::ui
