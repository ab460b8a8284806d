#include <QAbstractItemModel>
#include <QAction>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <set>
#include <stdexcept>

#include "forms/command.h"
#include "forms/grid.h"
#include "tests/ui/screen.h"

namespace brenvo::ui {
namespace {

using ::testing::ElementsAre;

// A million rows, of which it is remembered which were asked for.
class ManyRows : public forms::GridRows {
 public:
  std::int64_t RowCount() override { return count; }
  std::string CellText(std::int64_t row, std::size_t field) override {
    if (fails) throw std::runtime_error("Il database non risponde");
    asked.insert(row);
    return std::to_string(row) + "/" + std::to_string(field);
  }
  void SetCellText(std::int64_t row, std::size_t, std::string_view text) override {
    written.push_back(std::to_string(row) + " " + std::string(text));
  }
  void AddRow(std::size_t, std::string_view text) override {
    written.push_back("new " + std::string(text));
    ++count;
  }
  void DeleteRow(std::int64_t row) override {
    written.push_back("delete " + std::to_string(row));
    --count;
  }
  std::int64_t count = 3;
  std::set<std::int64_t> asked;
  bool fails = false;
  Told written;
};

class GridForm : public forms::Window {
 public:
  explicit GridForm(forms::WindowHost& host)
      : forms::Window(host, "GridForm", "", base::Twips(9000), base::Twips(9000)) {
    Rows.SetSource(&many);
    Rows.SetColumnsOf({{"Call", 0, base::Twips(1500), {}},
                       {"Hidden", 1, base::Twips(0), {}},
                       {"Note", 2, forms::kOwnSize, {}}});
    const auto tell = [this](const char* what, forms::Grid& grid) {
      told.push_back(std::string(what) + " " + std::to_string(grid.Row()) + "," +
                     std::to_string(grid.Column()));
    };
    for (forms::Grid* grid :
         {static_cast<forms::Grid*>(&Rows), static_cast<forms::Grid*>(&Cells)}) {
      grid->OnClick = [=] { tell("click", *grid); };
      grid->OnDoubleClick = [=] { tell("double", *grid); };
      grid->OnHeading = [this](int column) { told.push_back("heading " + std::to_string(column)); };
    }
    Cells.SetRows(3);
    Cells.SetColumns(2);
    Cells.SetCell(0, 0, "Country");
    Cells.SetCell(1, 1, "Confermato");
    Cells.SetBackColour(1, 1, base::kGreen);
    Cells.SetColumnWidth(0, base::Twips(3000));
    Cells.SetRowHeight(1, base::Twips(600));
    Toolbar1.Items = {&cmUpdate};
  }
  ManyRows many;
  forms::DataGrid Rows{*this, "Rows"};
  forms::CellGrid Cells{*this, "Cells"};
  forms::Command cmUpdate{*this, "cmUpdate", "Aggiorna",
                          [this] { many.written.push_back("update"); }};
  forms::ToolBar Toolbar1{*this, "Toolbar1"};
  Told told;
};

class GridWidgets : public ScreenTest {
 protected:
  GridForm& form = Open<GridForm>();
  QTableView& rows = *Find<QTableView>("Rows");
  QTableView& cells = *Find<QTableView>("Cells");
  void LetRowsBeEdited() {
    form.Rows.Editable = true;
    form.Rows.ContentChanged();
    Settle();
  }
  static QPoint Place(QTableView& view, int row, int column) {
    return view.visualRect(view.model()->index(row, column)).center();
  }
};

TEST_F(GridWidgets, TheGridsHeadingRowIsTheHeading) {
  EXPECT_EQ(rows.model()->headerData(0, Qt::Horizontal).toString(), "Call");
  EXPECT_EQ(rows.model()->rowCount(), 3);
  EXPECT_EQ(rows.model()->index(0, 2).data().toString(), "0/2");
}

TEST_F(GridWidgets, AClickTellsRowAndColumnOfTheGrid) {
  QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, Place(rows, 1, 2));
  Settle();
  EXPECT_THAT(form.told, ElementsAre("click 2,2"));
}

TEST_F(GridWidgets, ADoubleClickFollowsTheClick) {
  QTest::mouseClick(cells.viewport(), Qt::LeftButton, {}, Place(cells, 0, 1));
  QTest::mouseDClick(cells.viewport(), Qt::LeftButton, {}, Place(cells, 0, 1));
  Settle();
  ASSERT_FALSE(form.told.empty());
  EXPECT_EQ(form.told.front(), "click 1,1");
  EXPECT_EQ(form.told.back(), "double 1,1");
}

TEST_F(GridWidgets, EnterOpensTheCurrentRowAsADoubleClickDoes) {
  cells.setCurrentIndex(cells.model()->index(1, 0));
  QTest::keyClick(&cells, Qt::Key_Return);
  Settle();
  EXPECT_THAT(form.told, ElementsAre("double 2,0"));
}

TEST_F(GridWidgets, AnArrowChoosesARowAsAClickDoes) {
  rows.setCurrentIndex(rows.model()->index(0, 0));
  QTest::keyClick(&rows, Qt::Key_Down);
  Settle();
  EXPECT_THAT(form.told, ElementsAre("click 2,0"));
}

TEST_F(GridWidgets, AClickOnAHeadingTellsTheColumn) {
  QHeaderView& heading = *rows.horizontalHeader();
  QTest::mouseClick(heading.viewport(), Qt::LeftButton, {},
                    QPoint(heading.sectionViewportPosition(2) + 5, 5));
  Settle();
  EXPECT_THAT(form.told, ElementsAre("heading 2"));
}

TEST_F(GridWidgets, WidthsAreTwipsAndZeroHidesAColumn) {
  EXPECT_EQ(rows.columnWidth(0), 100);
  EXPECT_TRUE(rows.isColumnHidden(1));
  EXPECT_EQ(cells.columnWidth(0), 200);
  EXPECT_EQ(cells.rowHeight(0), 40);
}

TEST_F(GridWidgets, AColumnToldTooNarrowForItsCodesShowsThemWhole) {
  form.Cells.SetColumnWidth(0, base::Twips(300));
  form.Cells.SetCell(0, 0, "");
  form.Cells.SetCell(1, 0, "EU-131");
  Settle();
  EXPECT_GE(cells.columnWidth(0), cells.fontMetrics().horizontalAdvance("EU-131"));
}

TEST_F(GridWidgets, AColumnWidensForALongerCodeThatComesLater) {
  form.Cells.SetColumnWidth(0, base::Twips(300));
  form.Cells.SetCell(0, 0, "");
  form.Cells.SetCell(1, 0, "");
  Settle();
  const int before = cells.columnWidth(0);
  form.Cells.SetCell(1, 0, "EU-131");
  Settle();
  EXPECT_GE(cells.columnWidth(0), cells.fontMetrics().horizontalAdvance("EU-131"));
  form.Cells.SetCell(1, 0, "");
  Settle();
  EXPECT_GT(cells.columnWidth(0), before);
}

TEST_F(GridWidgets, AWidthDrawnByTheOperatorStaysWhateverComes) {
  cells.horizontalHeader()->resizeSection(0, 30);
  form.Cells.SetCell(1, 0, "EU-131");
  Settle();
  EXPECT_EQ(cells.columnWidth(0), 30);
}

TEST_F(GridWidgets, ALongTextDoesNotWidenItsColumnBeyondACode) {
  form.Cells.SetColumnWidth(0, base::Twips(300));
  form.Cells.SetCell(0, 0, "");
  form.Cells.SetCell(1, 0, std::string(200, 'M'));
  Settle();
  EXPECT_LT(cells.columnWidth(0), 100);
}

TEST_F(GridWidgets, ColoursAreShownAndWhiteIsThePaper) {
  EXPECT_EQ(cells.model()->index(0, 1).data(Qt::BackgroundRole).value<QBrush>().color(),
            QColor(0, 255, 0));
  EXPECT_FALSE(cells.model()->index(1, 1).data(Qt::BackgroundRole).isValid());
}

TEST_F(GridWidgets, CellsWrittenOneByOneAreShown) {
  form.Cells.SetRows(4);
  form.Cells.SetCell(3, 0, "Italia");
  Settle();
  EXPECT_EQ(cells.model()->rowCount(), 3);
  EXPECT_EQ(cells.model()->index(2, 0).data().toString(), "Italia");
}

TEST_F(GridWidgets, MovingByKeyboardMovesTheGridsCurrentRowWithoutAClick) {
  rows.setCurrentIndex(rows.model()->index(0, 0));
  QTest::keyClick(&rows, Qt::Key_Down);
  EXPECT_EQ(form.Rows.Row(), 2);
  EXPECT_TRUE(form.told.empty());
}

TEST_F(GridWidgets, AMillionRowsFetchOnlyWhatIsSeen) {
  form.many.count = 1000000;
  QElapsedTimer clock;
  clock.start();
  form.Rows.ContentChanged();
  Settle();
  rows.verticalScrollBar()->setValue(rows.verticalScrollBar()->maximum());
  form.many.asked.clear();
  rows.grab();
  RecordProperty("milliseconds", static_cast<int>(clock.elapsed()));
  EXPECT_LT(form.many.asked.size(), 200u);
  EXPECT_TRUE(form.many.asked.contains(999999));
}

TEST_F(GridWidgets, TypingEditsACellWhereTheGridAllowsIt) {
  LetRowsBeEdited();
  rows.setFocus();
  rows.setCurrentIndex(rows.model()->index(0, 2));
  QTest::keyClicks(&rows, "7");
  auto* editor = rows.findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  QTest::keyClicks(editor, "3");
  QTest::keyClick(editor, Qt::Key_Return);
  Settle();
  EXPECT_THAT(form.many.written, ElementsAre("0 73"));
}

TEST_F(GridWidgets, WhereRowsAreOnlyDeletedADoubleClickRunsItsEventAndNoCellOpens) {
  form.Rows.Editable = true;
  form.Rows.DeletesOnly = true;
  form.Rows.ContentChanged();
  Settle();
  EXPECT_EQ(rows.model()->rowCount(), 3);
  QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, Place(rows, 1, 0));
  QTest::mouseDClick(rows.viewport(), Qt::LeftButton, {}, Place(rows, 1, 0));
  Settle();
  EXPECT_EQ(form.told.back(), "double 2,0");
  form.told.clear();
  QTest::keyClicks(&rows, "7");
  EXPECT_EQ(rows.findChild<QLineEdit*>(), nullptr);
  rows.setCurrentIndex(rows.model()->index(1, 0));
  QTest::keyClick(&rows, Qt::Key_Return);
  Settle();
  EXPECT_EQ(form.told.back(), "double 2,0");
  QTest::keyClick(&rows, Qt::Key_Delete);
  Settle();
  EXPECT_THAT(form.many.written, ElementsAre("delete 1"));
}

TEST_F(GridWidgets, EnterOpensTheCellThatIsWrittenIn) {
  form.Rows.Editable = true;
  form.Rows.ContentChanged();
  Settle();
  rows.setFocus();
  rows.setCurrentIndex(rows.model()->index(0, 2));
  EXPECT_EQ(rows.selectionModel()->selectedIndexes().size(), 1);
  QTest::keyClick(&rows, Qt::Key_Return);
  auto* editor = rows.findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  QTest::keyClicks(editor, "3");
  QTest::keyClick(editor, Qt::Key_Return);
  Settle();
  EXPECT_THAT(form.many.written, ElementsAre("0 3"));
}

TEST_F(GridWidgets, ACommandComesBehindTheCellThatIsStillOpen) {
  LetRowsBeEdited();
  rows.setFocus();
  rows.setCurrentIndex(rows.model()->index(0, 2));
  QTest::keyClicks(&rows, "7");
  Find<QAction>("cmUpdate")->trigger();
  Settle();
  EXPECT_THAT(form.many.written, ElementsAre("0 7", "update"));
}

TEST_F(GridWidgets, TheRowBehindTheLastAddsOne) {
  LetRowsBeEdited();
  ASSERT_EQ(rows.model()->rowCount(), 4);
  rows.model()->setData(rows.model()->index(3, 0), "  6 m");
  Settle();
  EXPECT_THAT(form.many.written, ElementsAre("new   6 m"));
  EXPECT_EQ(rows.model()->rowCount(), 5);
}

TEST_F(GridWidgets, LinesPastedIntoACellBecomeOne) {
  LetRowsBeEdited();
  rows.model()->setData(rows.model()->index(0, 2), "uno\r\ndue\n");
  Settle();
  EXPECT_THAT(form.many.written, ElementsAre("0 uno due"));
}

TEST_F(GridWidgets, AKeyThatTheGridAnswersOpensNoEditor) {
  form.Rows.Editable = true;
  Told keys;
  form.Rows.OnKey = [&](char32_t key) {
    keys.push_back(std::to_string(static_cast<int>(key)));
    return true;
  };
  form.Rows.ContentChanged();
  Settle();
  rows.setFocus();
  rows.setCurrentIndex(rows.model()->index(0, 2));
  QTest::keyClick(&rows, Qt::Key_Backspace);
  QTest::keyClicks(&rows, "a");
  EXPECT_THAT(keys, ElementsAre("8", "97"));
  EXPECT_EQ(rows.findChild<QLineEdit*>(), nullptr);
}

TEST_F(GridWidgets, DeleteRemovesTheCurrentRow) {
  LetRowsBeEdited();
  rows.setCurrentIndex(rows.model()->index(1, 0));
  QTest::keyClick(&rows, Qt::Key_Delete);
  Settle();
  EXPECT_THAT(form.many.written, ElementsAre("delete 1"));
}

TEST_F(GridWidgets, RowsThatFailAreToldOnceAndLeaveTheWindowStanding) {
  form.many.fails = true;
  int boxes = 0;
  WhenModal([&](QWidget& box) {
    ++boxes;
    box.close();
  });
  form.Rows.ContentChanged();
  Settle();
  rows.grab();
  QTest::qWait(120);
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_TRUE(form.Visible());
}

}  // namespace
}  // namespace brenvo::ui
