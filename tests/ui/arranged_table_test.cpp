#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <set>

#include "forms/grid.h"
#include "forms/text_field.h"
#include "tests/ui/screen.h"

namespace brenvo::ui {
namespace {

using ::testing::ElementsAre;

// Four rows of three columns that are arranged, and what was asked for.
class ArrangedForm : public forms::Window, private forms::GridRows, private forms::GridArranger {
 public:
  explicit ArrangedForm(forms::WindowHost& host)
      : forms::Window(host, "ArrangedForm", "", base::Twips(9000), base::Twips(6000)) {
    Rows.SetSource(this);
    Rows.SetArranger(this);
    Rows.OnHeading = [this](int column) { SortBy(column, false); };
    Rows.OnClick = [this] { told.push_back("click " + std::to_string(Rows.Row())); };
    ShowColumns();
  }
  void ShowColumns() {
    std::vector<forms::DataGrid::ColumnOf> columns;
    for (std::size_t i = 0; i < names.size(); ++i) columns.push_back({names[i], i, widths[i], {}});
    Rows.SetColumnsOf(std::move(columns));
  }

  forms::TextField Above{*this, "Above"};
  forms::DataGrid Rows{*this, "Rows"};
  std::vector<std::string> names{"Call", "Banda", "Nota"};
  std::vector<base::Twips> widths{base::Twips(1500), base::Twips(1500), forms::kOwnSize};
  std::vector<std::string> filters{"", "", ""};
  std::set<std::int64_t> marked;
  Told told;

 private:
  std::int64_t RowCount() override { return 4; }
  std::string CellText(std::int64_t row, std::size_t field) override {
    return std::to_string(row) + "/" + std::to_string(field);
  }
  void SetCellText(std::int64_t, std::size_t, std::string_view) override {}
  void AddRow(std::size_t, std::string_view) override {}
  void DeleteRow(std::int64_t) override {}

  void SortBy(int column, bool add) override {
    told.push_back("sort " + std::to_string(column) + (add ? " add" : ""));
  }
  std::string FilterText(int column) override { return filters[static_cast<std::size_t>(column)]; }
  void SetFilterText(int column, std::string_view text) override {
    std::string& filter = filters[static_cast<std::size_t>(column)];
    if (filter == text) return;
    filter = text;
    told.push_back("filter " + std::to_string(column) + " " + filter);
  }
  std::string FilterHint(int) override { return "Filtro"; }
  std::string FilterFault(int column) override {
    return FilterText(column) == "?" ? "non capisco" : "";
  }
  void MoveColumn(int from, int to) override {
    told.push_back("move " + std::to_string(from) + " " + std::to_string(to));
    const auto at = names.begin() + from;
    const std::string name = *at;
    names.erase(at);
    names.insert(names.begin() + to, name);
    ShowColumns();
  }
  void SetColumnWidth(int column, base::Twips width) override {
    widths[static_cast<std::size_t>(column)] = width;
    ShowColumns();
  }
  bool IsMarked(std::int64_t row) override { return marked.contains(row); }
  void Mark(std::int64_t from, std::int64_t to, bool mark) override {
    if (from > to) std::swap(from, to);
    for (; from <= to; ++from) {
      if (mark) {
        marked.insert(from);
      } else {
        marked.erase(from);
      }
    }
    Rows.ContentChanged();
  }
};

class ArrangedTable : public ScreenTest {
 protected:
  ArrangedForm& form = Open<ArrangedForm>();
  QTableView& rows = *Find<QTableView>("Rows");
  QHeaderView& heading = *rows.horizontalHeader();

  std::vector<QLineEdit*> Filters() {
    const QList<QLineEdit*> all = heading.findChildren<QLineEdit*>(Qt::FindDirectChildrenOnly);
    return {all.begin(), all.end()};
  }
  QPoint HeadingAt(int column) { return {heading.sectionViewportPosition(column) + 20, 5}; }
  QPoint RowAt(int row) { return rows.visualRect(rows.model()->index(row, 0)).center(); }
  void Click(int row, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(rows.viewport(), Qt::LeftButton, keys, RowAt(row));
    Settle();
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    QTest::keyClick(&rows, key, keys);
    Settle();
  }
};

TEST_F(ArrangedTable, AClickOnAHeadingSortsAndShiftAdds) {
  QTest::mouseClick(heading.viewport(), Qt::LeftButton, {}, HeadingAt(0));
  Settle();
  QTest::mouseClick(heading.viewport(), Qt::LeftButton, Qt::ShiftModifier, HeadingAt(1));
  Settle();
  EXPECT_THAT(form.told, ElementsAre("sort 0", "sort 1 add"));
}

TEST_F(ArrangedTable, AFilterStandsUnderEachHeadingAndIsFollowedWhileItIsTyped) {
  ASSERT_EQ(Filters().size(), 3u);
  for (int i = 0; i < 3; ++i) {
    const QRect place = Filters()[static_cast<std::size_t>(i)]->geometry();
    EXPECT_EQ(place.left(), heading.sectionViewportPosition(i));
    EXPECT_EQ(place.width(), heading.sectionSize(i));
    EXPECT_GE(place.top(), heading.viewport()->height());
    EXPECT_TRUE(Filters()[static_cast<std::size_t>(i)]->isVisible());
  }
  QTest::keyClicks(Filters()[1], "2 m");
  EXPECT_THAT(form.told, ElementsAre("filter 1 2", "filter 1 2 ", "filter 1 2 m"));
}

TEST_F(ArrangedTable, AFilterThatIsNotUnderstoodShowsIt) {
  const QString usual = Filters()[0]->styleSheet();
  QTest::keyClicks(Filters()[0], "?");
  EXPECT_NE(Filters()[0]->styleSheet(), usual);
  EXPECT_THAT(Filters()[0]->styleSheet().toStdString(), ::testing::HasSubstr("dashed"));
  QTest::keyClick(Filters()[0], Qt::Key_Backspace);
  EXPECT_EQ(Filters()[0]->styleSheet(), usual);
}

TEST_F(ArrangedTable, FiltersThatTheProgramEmptiesAreSeenEmpty) {
  QTest::keyClicks(Filters()[0], "dl");
  form.filters[0] = "";
  form.ShowColumns();
  Settle();
  EXPECT_EQ(Filters()[0]->text(), "");
}

TEST_F(ArrangedTable, TheKeyboardGoesDownFromAFilterAndUpToItAgain) {
  Filters()[0]->setFocus();
  QTest::keyClick(Filters()[0], Qt::Key_Return);
  EXPECT_TRUE(rows.hasFocus());
  rows.setCurrentIndex(rows.model()->index(0, 1));
  Key(Qt::Key_Up);
  EXPECT_TRUE(Filters()[1]->hasFocus());
  QTest::keyClick(Filters()[1], Qt::Key_Down);
  EXPECT_TRUE(rows.hasFocus());
}

TEST_F(ArrangedTable, EscEmptiesAFilterBeforeItClosesAnything) {
  QTest::keyClicks(Filters()[0], "dl");
  QTest::keyClick(Filters()[0], Qt::Key_Escape);
  EXPECT_EQ(form.filters[0], "");
  EXPECT_TRUE(windows.IsLoaded(&form));
}

TEST_F(ArrangedTable, AMovedColumnIsTheTablesOwn) {
  heading.moveSection(2, 0);
  Settle();
  EXPECT_THAT(form.told, ElementsAre("move 2 0"));
  EXPECT_EQ(heading.visualIndex(2), 2);
  EXPECT_EQ(rows.model()->headerData(0, Qt::Horizontal).toString(), "Nota");
}

TEST_F(ArrangedTable, ADrawnWidthIsTheTablesOwnAndItsFilterFollows) {
  heading.resizeSection(0, 40);
  Settle();
  EXPECT_EQ(rows.columnWidth(0), 40);
  EXPECT_EQ(Filters()[0]->width(), 40);
  EXPECT_NEAR(form.widths[0].Pixels(), 40, 1);
  EXPECT_EQ(form.widths[2], forms::kOwnSize);
}

TEST_F(ArrangedTable, AHeadingHasRoomForTheSignOfItsOrder) {
  for (int i = 0; i < 2; ++i) {
    form.widths[static_cast<std::size_t>(i)] = forms::kOwnSize;
  }
  form.ShowColumns();
  Settle();
  const int before = rows.columnWidth(0);
  form.names[0] = "Call ▼2";
  form.ShowColumns();
  Settle();
  EXPECT_EQ(rows.columnWidth(0), before);
  EXPECT_GE(before, heading.sectionSizeHint(0));
}

TEST_F(ArrangedTable, CtrlAndShiftMarkByTheMouse) {
  Click(0);
  EXPECT_THAT(form.marked, ElementsAre());
  Click(1, Qt::ControlModifier);
  EXPECT_THAT(form.marked, ElementsAre(2));
  Click(3, Qt::ShiftModifier);
  EXPECT_THAT(form.marked, ElementsAre(2, 3, 4));
  Click(2, Qt::ControlModifier);
  EXPECT_THAT(form.marked, ElementsAre(2, 4));
  EXPECT_TRUE(rows.model()->index(1, 0).data(Qt::BackgroundRole).isValid());
  EXPECT_FALSE(rows.model()->index(2, 0).data(Qt::BackgroundRole).isValid());
}

TEST_F(ArrangedTable, SpaceMarksAndGoesOnAndShiftWithArrowsMarksARun) {
  rows.setFocus();
  rows.setCurrentIndex(rows.model()->index(0, 0));
  Key(Qt::Key_Space);
  EXPECT_THAT(form.marked, ElementsAre(1));
  EXPECT_EQ(rows.currentIndex().row(), 1);
  Key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_THAT(form.marked, ElementsAre(1, 2, 3));
  Key(Qt::Key_Space);
  EXPECT_THAT(form.marked, ElementsAre(1, 2));
  EXPECT_EQ(form.told.back(), "click 4");
}

}  // namespace
}  // namespace brenvo::ui
