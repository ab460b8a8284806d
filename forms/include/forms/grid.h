// Grids of text.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/units.h"
#include "forms/field.h"

namespace brenvo::forms {

class Menu;

// A column or row that the screen measures itself.
constexpr base::Twips kOwnSize(-1);

enum class CellAlignment { kLeft, kCentre, kRight };

// What an operator may do with the rows and columns of a grid that has somebody to arrange them.
// Columns count from 0 as the grid shows them, rows from 1.
class GridArranger {
 public:
  // A click on a heading; `add` keeps the order by the other headings before it.
  virtual void SortBy(int column, bool add) = 0;
  // The line under the headings: what is written there, what may be, and why that is not
  // understood; empty when it is.
  virtual std::string FilterText(int column) = 0;
  virtual void SetFilterText(int column, std::string_view text) = 0;
  virtual std::string FilterHint(int column) = 0;
  virtual std::string FilterFault(int column) = 0;
  // Puts a column where another one stands.
  virtual void MoveColumn(int from, int to) = 0;
  virtual void SetColumnWidth(int column, base::Twips width) = 0;
  virtual bool IsMarked(std::int64_t row) = 0;
  // All rows from the one to the other.
  virtual void Mark(std::int64_t from, std::int64_t to, bool mark) = 0;

 protected:
  ~GridArranger() = default;
};

// Row 0 is the heading, column 0 the first column. What a screen needs to show any grid, and what
// an operator can do to it.
class Grid : public Field {
 public:
  using Field::Field;
  FieldKind Kind() override { return this; }
  virtual std::int64_t Rows() = 0;  // heading included
  virtual int Columns() = 0;
  virtual std::string Cell(std::int64_t row, int column) = 0;
  virtual base::Colour BackColour(std::int64_t row, int column);
  virtual std::string CellPicture(std::int64_t row, int column);  // a file; empty for none
  virtual CellAlignment Alignment(std::int64_t row, int column);
  virtual bool Bold(std::int64_t row, int column);
  // 0 hides a column, negative leaves it to the screen.
  virtual base::Twips ColumnWidth(int column);
  virtual base::Twips RowHeight(std::int64_t row);
  // Null where nobody arranges it.
  virtual GridArranger* Arranger() { return nullptr; }

  std::int64_t Row() const { return row_; }
  int Column() const { return column_; }
  void SetCurrent(std::int64_t row, int column);

  // The operator's: a click on the heading runs OnHeading, any other one the click event with
  // Row() and Column() set before it.
  void ClickCell(std::int64_t row, int column);
  void DoubleClickCell(std::int64_t row, int column);
  std::function<void(int column)> OnHeading;
  // Right button, or the keyboard's menu key; then the screen opens ContextMenu there, if any.
  std::function<void()> OnContextMenu;
  Menu* ContextMenu = nullptr;

  // A key pressed on the current cell: true when it has done its work, and edits nothing.
  bool TypeKey(char32_t key) { return OnKey && OnKey(key); }
  std::function<bool(char32_t key)> OnKey;

  // The keyboard chooses cells and not rows: a step along the row is a click too.
  bool ChoosesCells = false;

  // Editing; a row one past the last adds one.
  bool Editable = false;
  // Rows are deleted here but written elsewhere: no cell opens, a double click runs its event.
  bool DeletesOnly = false;
  bool WritesCells() const { return Editable && !DeletesOnly; }
  virtual void EditCell(std::int64_t row, int column, std::string_view text);
  virtual void RemoveRow(std::int64_t row);

  void ContentChanged() { ShowChanged(); }

 private:
  std::int64_t row_ = 0;
  int column_ = 0;
};

// A grid whose cells are written one by one.
class CellGrid : public Grid {
 public:
  using Grid::Grid;
  std::int64_t Rows() override { return rows_; }
  int Columns() override { return columns_; }
  std::string Cell(std::int64_t row, int column) override;
  base::Colour BackColour(std::int64_t row, int column) override;
  std::string CellPicture(std::int64_t row, int column) override;
  CellAlignment Alignment(std::int64_t row, int column) override;
  bool Bold(std::int64_t row, int column) override;
  base::Twips ColumnWidth(int column) override;
  base::Twips RowHeight(std::int64_t row) override;

  void SetRows(std::int64_t rows);  // cells beyond are dropped
  void SetColumns(int columns);
  // Writing a cell outside the grid throws std::out_of_range.
  void SetCell(std::int64_t row, int column, std::string_view text);
  void SetBackColour(std::int64_t row, int column, base::Colour colour);
  void SetCellPicture(std::int64_t row, int column, std::string_view file);
  void SetAlignment(std::int64_t row, int column, CellAlignment alignment);
  void SetBold(std::int64_t row, int column, bool bold);
  void SetColumnWidth(int column, base::Twips width);
  void SetRowHeight(std::int64_t row, base::Twips height);
  void ClearRow(std::int64_t row);

 private:
  struct Content {
    std::string text, picture;
    base::Colour back = base::kWhite;
    CellAlignment alignment = CellAlignment::kLeft;
    bool bold = false;
  };
  Content& At(std::int64_t row, int column);
  const Content* Find(std::int64_t row, int column) const;

  std::int64_t rows_ = 0;
  int columns_ = 0;
  std::map<std::int64_t, std::vector<Content>> cells_;
  std::map<int, base::Twips> widths_;
  std::map<std::int64_t, base::Twips> heights_;
};

// Rows that come from elsewhere, each fetched when it is shown.
class GridRows {
 public:
  virtual ~GridRows() = default;
  virtual std::int64_t RowCount() = 0;
  virtual std::string CellText(std::int64_t row, std::size_t field) = 0;
  virtual void SetCellText(std::int64_t row, std::size_t field, std::string_view text) = 0;
  virtual void AddRow(std::size_t field, std::string_view text) = 0;
  virtual void DeleteRow(std::int64_t row) = 0;
};

// A grid over such rows: it sets the heading and field of each column, the rest is theirs.
class DataGrid : public Grid {
 public:
  struct ColumnOf {
    std::string heading;
    std::size_t field = 0;  // column of the rows
    base::Twips width = kOwnSize;
    std::function<std::string(const std::string&)> format;  // of the text; may be empty
  };
  using Grid::Grid;
  FieldKind Kind() override { return this; }
  void SetSource(GridRows* rows) { source_ = rows; }
  void SetColumnsOf(std::vector<ColumnOf> columns);
  const std::vector<ColumnOf>& ColumnsOf() const { return columns_; }
  // Who arranges it lives as long as the grid. A marked row shows in bold
  // letters on a colour of its own.
  void SetArranger(GridArranger* arranger) { arranger_ = arranger; }
  GridArranger* Arranger() override { return arranger_; }
  base::Colour BackColour(std::int64_t row, int column) override;
  bool Bold(std::int64_t row, int column) override;
  // The colour of a row that is not marked, from 1 on; may be empty.
  std::function<base::Colour(std::int64_t row)> RowColour;

  std::int64_t Rows() override;
  int Columns() override { return static_cast<int>(columns_.size()); }
  std::string Cell(std::int64_t row, int column) override;
  base::Twips ColumnWidth(int column) override;

  // Asked before; false leaves everything as it was.
  std::function<bool(std::int64_t row, int column, std::string& text)> OnBeforeEdit;
  std::function<void(std::int64_t row, int column)> OnAfterEdit;
  std::function<bool(std::int64_t row)> OnBeforeDelete;
  void EditCell(std::int64_t row, int column, std::string_view text) override;
  void RemoveRow(std::int64_t row) override;

 private:
  bool IsMarked(std::int64_t row);

  GridRows* source_ = nullptr;
  GridArranger* arranger_ = nullptr;
  std::vector<ColumnOf> columns_;
};

}  // namespace brenvo::forms
