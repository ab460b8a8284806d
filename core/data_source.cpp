#include "core/data_source.h"

#include <algorithm>

#include "base/text.h"

namespace brenvo {

void DataSource::Refresh() {
  auto fresh = session_.Db.OpenDynaset(RecordSource);
  rows_ = std::move(fresh);
  cachedRow_ = -1;
}

void DataSource::Close() {
  rows_.reset();
  cachedRow_ = -1;
}

bool DataSource::AtEnd() const { return rows_ == nullptr || rows_->EOF_(); }

std::int64_t DataSource::RowCount() { return rows_ == nullptr ? 0 : rows_->TotalRows(); }

std::string DataSource::CellText(std::int64_t row, std::size_t field) {
  if (rows_ == nullptr) return {};
  if (row != cachedRow_) {
    try {
      cache_ = rows_->RowAt(row);
    } catch (const DatabaseError& failure) {
      // A row that another window has deleted meanwhile shows empty until the next refresh.
      if (failure.Number != DatabaseError::kRecordDeleted) throw;
      cache_.clear();
    }
    cachedRow_ = row;
  }
  return field < cache_.size() ? cache_[field].Text() : std::string();
}

std::size_t DataSource::FieldOf(std::string_view column) const {
  const auto& columns = rows_->Columns();
  const auto at = std::find_if(columns.begin(), columns.end(), [&](const std::string& each) {
    return Upper(each) == Upper(column);
  });
  return static_cast<std::size_t>(at - columns.begin());
}

std::string DataSource::Text(std::int64_t row, std::string_view column) {
  return rows_ == nullptr ? std::string() : CellText(row, FieldOf(column));
}

DataGrid::ColumnOf DataSource::GridColumn(
    std::string heading, std::string_view column,
    std::function<std::string(const std::string&)> format) const {
  const std::size_t field = FieldOf(column);
  if (field == rows_->Columns().size()) {
    throw DatabaseError(DatabaseError::kItemNotFound,
                        "Elemento non trovato: " + std::string(column));
  }
  return {std::move(heading), field, kOwnSize, std::move(format)};
}

void DataSource::SetCell(std::size_t field, std::string_view text) {
  const std::string& column = rows_->Columns().at(field);
  try {
    rows_->Set(column, text);
  } catch (const DatabaseError& failure) {
    // A number or date that was emptied.
    if (failure.Number != DatabaseError::kConversion || !Trim(text).empty()) throw;
    rows_->Set(column, Value());
  }
}

void DataSource::SetCellText(std::int64_t row, std::size_t field, std::string_view text) {
  rows_->SetBookmark(rows_->BookmarkAt(row));
  rows_->Edit();
  SetCell(field, text);
  rows_->Update();
  cachedRow_ = -1;
}

void DataSource::AddRow(std::size_t field, std::string_view text) {
  rows_->AddNew();
  SetCell(field, text);
  rows_->Update();
  cachedRow_ = -1;
}

void DataSource::DeleteRow(std::int64_t row) {
  rows_->SetBookmark(rows_->BookmarkAt(row));
  rows_->Delete();
  cachedRow_ = -1;
}

}  // namespace brenvo
