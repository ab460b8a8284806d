#include "forms/grid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "forms/window.h"
#include "recorder/recording_host.h"

namespace brenvo::forms {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Three rows of two fields, which write down what is asked of them.
class NotedRows : public GridRows {
 public:
  std::vector<std::string> notes;

  std::int64_t RowCount() override { return 3; }
  std::string CellText(std::int64_t row, std::size_t field) override {
    return "r" + std::to_string(row) + "f" + std::to_string(field);
  }
  void SetCellText(std::int64_t row, std::size_t field, std::string_view text) override {
    notes.push_back("set " + CellText(row, field) + " " + std::string(text));
  }
  void AddRow(std::size_t field, std::string_view text) override {
    notes.push_back("add f" + std::to_string(field) + " " + std::string(text));
  }
  void DeleteRow(std::int64_t row) override { notes.push_back("delete r" + std::to_string(row)); }
};

class GridTest : public testing::Test {
 protected:
  GridTest() {
    data.SetSource(&rows);
    data.SetColumnsOf(
        {{.heading = "Nota", .field = 1, .width = base::Twips(300), .format = {}},
         {.heading = "Call", .field = 0, .width = kOwnSize, .format = [](const std::string& text) {
            return "<" + text + ">";
          }}});
    data.Editable = true;
  }
  bool IsCurrent(Grid& grid, std::int64_t row, int column) const {
    return grid.Row() == row && grid.Column() == column;
  }

  recorder::RecordingHost host{[](const std::string&) {}};
  Window window{host, "W", "W", base::Twips(1), base::Twips(1)};
  CellGrid cells{window, "Cells"};
  DataGrid data{window, "Data"};
  NotedRows rows;
};

TEST_F(GridTest, TheHeadingAnswersAClickItselfAndEveryOtherCellBecomesCurrent) {
  std::vector<std::string> clicks;
  cells.SetRows(3);
  cells.SetColumns(2);
  cells.OnClick = [&] {
    clicks.push_back(std::to_string(cells.Row()) + "/" + std::to_string(cells.Column()));
  };
  cells.ClickCell(0, 1);  // nobody hears the heading: it is a cell like any other
  cells.OnHeading = [&](int column) { clicks.push_back("heading " + std::to_string(column)); };
  cells.ClickCell(0, 0);
  EXPECT_TRUE(IsCurrent(cells, 0, 1));
  cells.ClickCell(2, 1);
  EXPECT_TRUE(IsCurrent(cells, 2, 1));
  EXPECT_THAT(clicks, ElementsAre("0/1", "heading 0", "2/1"));
  cells.OnDoubleClick = [&] { clicks.push_back("double " + std::to_string(cells.Row())); };
  cells.DoubleClickCell(1, 0);
  EXPECT_TRUE(IsCurrent(cells, 1, 0));
  EXPECT_EQ(clicks.back(), "double 1");
}

TEST_F(GridTest, ACellOutsideIsReadAsEmptyAndNotWritten) {
  cells.SetRows(2);
  cells.SetColumns(2);
  cells.SetCell(1, 1, "x");
  cells.SetCell(0, 0, "y");
  EXPECT_EQ(cells.Cell(1, 1), "x");
  EXPECT_EQ(cells.Cell(0, 0), "y");
  EXPECT_EQ(cells.Cell(1, 0), "");
  EXPECT_EQ(cells.Cell(0, 1), "");
  for (const auto& [row, column] :
       {std::pair{-1, 0}, std::pair{0, -1}, std::pair{2, 0}, std::pair{0, 2}}) {
    EXPECT_EQ(cells.Cell(row, column), "") << row << " " << column;
    EXPECT_EQ(cells.BackColour(row, column), base::kWhite);
    EXPECT_EQ(cells.Alignment(row, column), CellAlignment::kLeft);
    EXPECT_FALSE(cells.Bold(row, column));
    EXPECT_THROW(cells.SetCell(row, column, "x"), std::out_of_range) << row << " " << column;
  }
}

TEST_F(GridTest, ACellKeepsWhatItWasGivenUntilItsRowIsClearedOrCutOff) {
  cells.SetRows(3);
  cells.SetColumns(3);
  cells.SetBackColour(1, 1, base::kRed);
  cells.SetCellPicture(1, 1, "i.png");
  cells.SetAlignment(1, 1, CellAlignment::kRight);
  cells.SetBold(1, 1, true);
  cells.SetColumnWidth(2, base::Twips(70));
  cells.SetRowHeight(2, base::Twips(80));
  cells.SetCell(1, 2, "z");
  EXPECT_EQ(cells.BackColour(1, 1), base::kRed);
  EXPECT_EQ(cells.CellPicture(1, 1), "i.png");
  EXPECT_EQ(cells.Alignment(1, 1), CellAlignment::kRight);
  EXPECT_TRUE(cells.Bold(1, 1));
  EXPECT_EQ(cells.BackColour(1, 0), base::kWhite);
  EXPECT_EQ(cells.CellPicture(1, 0), "");
  EXPECT_EQ(cells.ColumnWidth(2), base::Twips(70));
  EXPECT_EQ(cells.ColumnWidth(1), kOwnSize);
  EXPECT_EQ(cells.RowHeight(2), base::Twips(80));
  EXPECT_EQ(cells.RowHeight(1), kOwnSize);
  cells.SetColumns(2);
  cells.SetColumns(3);
  EXPECT_EQ(cells.Cell(1, 2), "");
  EXPECT_TRUE(cells.Bold(1, 1));
  EXPECT_EQ(cells.ColumnWidth(2), kOwnSize);
  cells.SetRows(2);
  EXPECT_TRUE(cells.Bold(1, 1));
  EXPECT_EQ(cells.RowHeight(2), kOwnSize);
  cells.ClearRow(1);
  EXPECT_FALSE(cells.Bold(1, 1));
}

TEST_F(GridTest, TheRowsStandUnderTheHeadingsInTheirColumns) {
  EXPECT_EQ(data.Rows(), 4);
  EXPECT_EQ(data.Columns(), 2);
  EXPECT_EQ(data.Cell(0, 0), "Nota");
  EXPECT_EQ(data.Cell(0, 1), "Call");
  EXPECT_EQ(data.Cell(1, 0), "r0f1");
  EXPECT_EQ(data.Cell(3, 1), "<r2f0>");
  for (const auto& [row, column] :
       {std::pair{-1, 0}, std::pair{4, 0}, std::pair{1, -1}, std::pair{1, 2}, std::pair{0, 2}}) {
    EXPECT_EQ(data.Cell(row, column), "") << row << " " << column;
  }
  EXPECT_EQ(data.ColumnWidth(0), base::Twips(300));
  EXPECT_EQ(data.ColumnWidth(1), kOwnSize);
  EXPECT_EQ(data.ColumnWidth(-1), kOwnSize);
  EXPECT_EQ(data.ColumnWidth(2), kOwnSize);
  data.SetSource(nullptr);
  EXPECT_EQ(data.Rows(), 1);
  EXPECT_EQ(data.Cell(0, 0), "Nota");
  EXPECT_EQ(data.Cell(1, 0), "");
}

TEST_F(GridTest, AnEditedCellIsWrittenAndOnePastTheLastRowAddsOne) {
  std::vector<std::string> after;
  data.OnAfterEdit = [&](std::int64_t row, int column) {
    after.push_back(std::to_string(row) + "/" + std::to_string(column));
  };
  data.EditCell(1, 0, "a");
  data.EditCell(3, 1, "b");
  EXPECT_TRUE(IsCurrent(data, 3, 1));
  data.EditCell(4, 1, "c");
  EXPECT_THAT(rows.notes, ElementsAre("set r0f1 a", "set r2f0 b", "add f0 c"));
  EXPECT_THAT(after, ElementsAre("1/0", "3/1", "4/1"));
}

TEST_F(GridTest, NothingIsEditedOutsideOrWhereItMayNot) {
  for (const auto& [row, column] :
       {std::pair{0, 0}, std::pair{-1, 0}, std::pair{5, 0}, std::pair{1, -1}, std::pair{1, 2}}) {
    data.EditCell(row, column, "x");
  }
  for (const std::int64_t row : {-1, 0, 4}) data.RemoveRow(row);
  data.Editable = false;
  data.EditCell(1, 0, "x");
  data.RemoveRow(1);
  data.Editable = true;
  data.SetSource(nullptr);
  data.EditCell(1, 0, "x");
  data.RemoveRow(1);
  EXPECT_THAT(rows.notes, IsEmpty());
  EXPECT_TRUE(IsCurrent(data, 0, 0));
}

TEST_F(GridTest, WhoIsAskedBeforeAnEditMayChangeItOrForbidIt) {
  data.OnBeforeEdit = [](std::int64_t row, int column, std::string& text) {
    text += std::to_string(row) + std::to_string(column);
    return row != 2;
  };
  data.EditCell(1, 1, "a");
  data.EditCell(2, 1, "b");
  EXPECT_THAT(rows.notes, ElementsAre("set r0f0 a11"));
}

TEST_F(GridTest, ADeletedRowIsCurrentFirstAndWhoIsAskedMayKeepIt) {
  data.SetCurrent(1, 1);
  data.OnBeforeDelete = [&](std::int64_t row) {
    EXPECT_TRUE(IsCurrent(data, row, 1));
    return row != 2;
  };
  data.RemoveRow(2);
  EXPECT_THAT(rows.notes, IsEmpty());
  data.RemoveRow(3);
  data.OnBeforeDelete = nullptr;
  data.RemoveRow(1);
  EXPECT_THAT(rows.notes, ElementsAre("delete r2", "delete r0"));
}

TEST_F(GridTest, TheScreenLearnsOfEachChange) {
  int shown = 0;
  const Subscription ofCells = cells.Shown.Subscribe([&] { ++shown; });
  const Subscription ofData = data.Shown.Subscribe([&] { ++shown; });
  const std::function<void()> changes[] = {
      [&] { cells.SetRows(3); },
      [&] { cells.SetColumns(2); },
      [&] { cells.SetCell(1, 1, "x"); },
      [&] { cells.SetBackColour(1, 1, base::kRed); },
      [&] { cells.SetCellPicture(1, 1, "i"); },
      [&] { cells.SetAlignment(1, 1, CellAlignment::kRight); },
      [&] { cells.SetBold(1, 1, true); },
      [&] { cells.SetColumnWidth(1, base::Twips(1)); },
      [&] { cells.SetRowHeight(1, base::Twips(1)); },
      [&] { cells.ClearRow(1); },
      [&] { cells.SetCurrent(2, 1); },
      [&] { cells.ContentChanged(); },
      [&] { data.SetColumnsOf(data.ColumnsOf()); },
  };
  for (std::size_t i = 0; i < std::size(changes); ++i) {
    shown = 0;
    changes[i]();
    EXPECT_EQ(shown, 1) << i;
  }
  // The cell that becomes current, and what has become of it.
  shown = 0;
  data.EditCell(1, 0, "a");
  EXPECT_EQ(shown, 2);
  shown = 0;
  data.RemoveRow(1);
  EXPECT_EQ(shown, 2);
}

}  // namespace
}  // namespace brenvo::forms
