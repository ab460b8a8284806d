#include "forms/grid.h"

#include <stdexcept>

namespace brenvo::forms {
namespace {

constexpr base::Colour kMarkedRow{255, 236, 160};

}  // namespace

base::Colour Grid::BackColour(std::int64_t, int) { return base::kWhite; }
std::string Grid::CellPicture(std::int64_t, int) { return {}; }
CellAlignment Grid::Alignment(std::int64_t, int) { return CellAlignment::kLeft; }
bool Grid::Bold(std::int64_t, int) { return false; }
base::Twips Grid::ColumnWidth(int) { return kOwnSize; }
base::Twips Grid::RowHeight(std::int64_t) { return kOwnSize; }

void Grid::SetCurrent(std::int64_t row, int column) {
  row_ = row;
  column_ = column;
  ShowChanged();
}

void Grid::ClickCell(std::int64_t row, int column) {
  if (row == 0 && OnHeading) {
    OnHeading(column);
    return;
  }
  SetCurrent(row, column);
  Click();
}

void Grid::DoubleClickCell(std::int64_t row, int column) {
  SetCurrent(row, column);
  DoubleClick();
}

void Grid::EditCell(std::int64_t, int, std::string_view) {}
void Grid::RemoveRow(std::int64_t) {}

CellGrid::Content& CellGrid::At(std::int64_t row, int column) {
  if (row < 0 || row >= rows_ || column < 0 || column >= columns_) {
    throw std::out_of_range("La griglia non ha questa cella");
  }
  auto& cells = cells_[row];
  if (cells.size() <= static_cast<std::size_t>(column)) {
    cells.resize(static_cast<std::size_t>(column) + 1);
  }
  return cells[static_cast<std::size_t>(column)];
}

const CellGrid::Content* CellGrid::Find(std::int64_t row, int column) const {
  const auto at = cells_.find(row);
  if (at == cells_.end() || column < 0 || at->second.size() <= static_cast<std::size_t>(column)) {
    return nullptr;
  }
  return &at->second[static_cast<std::size_t>(column)];
}

std::string CellGrid::Cell(std::int64_t row, int column) {
  const Content* content = Find(row, column);
  return content == nullptr ? std::string() : content->text;
}

base::Colour CellGrid::BackColour(std::int64_t row, int column) {
  const Content* content = Find(row, column);
  return content == nullptr ? base::kWhite : content->back;
}

std::string CellGrid::CellPicture(std::int64_t row, int column) {
  const Content* content = Find(row, column);
  return content == nullptr ? std::string() : content->picture;
}

CellAlignment CellGrid::Alignment(std::int64_t row, int column) {
  const Content* content = Find(row, column);
  return content == nullptr ? CellAlignment::kLeft : content->alignment;
}

bool CellGrid::Bold(std::int64_t row, int column) {
  const Content* content = Find(row, column);
  return content != nullptr && content->bold;
}

base::Twips CellGrid::ColumnWidth(int column) {
  const auto at = widths_.find(column);
  return at == widths_.end() ? kOwnSize : at->second;
}

base::Twips CellGrid::RowHeight(std::int64_t row) {
  const auto at = heights_.find(row);
  return at == heights_.end() ? kOwnSize : at->second;
}

void CellGrid::SetRows(std::int64_t rows) {
  rows_ = rows;
  cells_.erase(cells_.lower_bound(rows), cells_.end());
  heights_.erase(heights_.lower_bound(rows), heights_.end());
  ShowChanged();
}

void CellGrid::SetColumns(int columns) {
  columns_ = columns;
  for (auto& [row, cells] : cells_) {
    if (cells.size() > static_cast<std::size_t>(columns)) {
      cells.resize(static_cast<std::size_t>(columns));
    }
  }
  widths_.erase(widths_.lower_bound(columns), widths_.end());
  ShowChanged();
}

void CellGrid::SetCell(std::int64_t row, int column, std::string_view text) {
  At(row, column).text = text;
  ShowChanged();
}

void CellGrid::SetBackColour(std::int64_t row, int column, base::Colour colour) {
  At(row, column).back = colour;
  ShowChanged();
}

void CellGrid::SetCellPicture(std::int64_t row, int column, std::string_view file) {
  At(row, column).picture = file;
  ShowChanged();
}

void CellGrid::SetAlignment(std::int64_t row, int column, CellAlignment alignment) {
  At(row, column).alignment = alignment;
  ShowChanged();
}

void CellGrid::SetBold(std::int64_t row, int column, bool bold) {
  At(row, column).bold = bold;
  ShowChanged();
}

void CellGrid::SetColumnWidth(int column, base::Twips width) {
  widths_[column] = width;
  ShowChanged();
}

void CellGrid::SetRowHeight(std::int64_t row, base::Twips height) {
  heights_[row] = height;
  ShowChanged();
}

void CellGrid::ClearRow(std::int64_t row) {
  cells_.erase(row);
  ShowChanged();
}

void DataGrid::SetColumnsOf(std::vector<ColumnOf> columns) {
  columns_ = std::move(columns);
  ShowChanged();
}

std::int64_t DataGrid::Rows() { return 1 + (source_ == nullptr ? 0 : source_->RowCount()); }

std::string DataGrid::Cell(std::int64_t row, int column) {
  if (column < 0 || column >= Columns()) return {};
  const ColumnOf& of = columns_[static_cast<std::size_t>(column)];
  if (row == 0) return of.heading;
  if (source_ == nullptr || row < 0 || row > source_->RowCount()) return {};
  std::string text = source_->CellText(row - 1, of.field);
  return of.format ? of.format(text) : text;
}

bool DataGrid::IsMarked(std::int64_t row) {
  return row > 0 && arranger_ != nullptr && arranger_->IsMarked(row);
}

base::Colour DataGrid::BackColour(std::int64_t row, int) {
  if (IsMarked(row)) return kMarkedRow;
  return row > 0 && RowColour ? RowColour(row) : base::kWhite;
}

bool DataGrid::Bold(std::int64_t row, int) { return IsMarked(row); }

base::Twips DataGrid::ColumnWidth(int column) {
  return column < 0 || column >= Columns() ? kOwnSize
                                           : columns_[static_cast<std::size_t>(column)].width;
}

void DataGrid::EditCell(std::int64_t row, int column, std::string_view text) {
  if (!Editable || source_ == nullptr || row < 1 || row > Rows() || column < 0 ||
      column >= Columns()) {
    return;
  }
  SetCurrent(row, column);
  std::string value(text);
  if (OnBeforeEdit && !OnBeforeEdit(row, column, value)) return;
  const std::size_t field = columns_[static_cast<std::size_t>(column)].field;
  if (row == Rows()) {
    source_->AddRow(field, value);
  } else {
    source_->SetCellText(row - 1, field, value);
  }
  if (OnAfterEdit) OnAfterEdit(row, column);
  ShowChanged();
}

void DataGrid::RemoveRow(std::int64_t row) {
  if (!Editable || source_ == nullptr || row < 1 || row >= Rows()) return;
  SetCurrent(row, Column());
  if (OnBeforeDelete && !OnBeforeDelete(row)) return;
  source_->DeleteRow(row - 1);
  ShowChanged();
}

}  // namespace brenvo::forms
