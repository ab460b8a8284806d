#include "core/data_source.h"

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "core/log_contact.h"

namespace brenvo::core {
namespace {

// The place of a record, counted from 0; -1 when the rows do not have it.
std::int64_t PlaceOf(engine::Dynaset& rows, engine::Bookmark record) {
  const std::int64_t count = rows.TotalRows();
  for (std::int64_t place = 0; place < count; ++place) {
    if (rows.BookmarkAt(place) == record) return place;
  }
  return -1;
}

std::optional<engine::Bookmark> CurrentOf(engine::Dynaset& rows) {
  if (rows.BOF() || rows.EOF_()) return std::nullopt;
  try {
    return rows.GetBookmark();
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kRecordDeleted) throw;
    return std::nullopt;
  }
}

bool StandOn(engine::Dynaset& rows, engine::Bookmark record) {
  try {
    rows.SetBookmark(record);
    return true;
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kRecordDeleted) throw;
    return false;
  }
}

}  // namespace

bool RequeryInPlace(engine::Dynaset& rows) {
  const std::optional<engine::Bookmark> current = CurrentOf(rows);
  rows.Requery();
  rows.MoveLast();
  if (current && StandOn(rows, *current)) return true;
  if (!rows.EOF_()) rows.MoveNext();
  return false;
}

void DataSource::Refresh() {
  auto fresh = session_.Db.OpenDynaset(RecordSource);
  rows_ = std::move(fresh);
  cachedRow_ = -1;
}

void DataSource::Renew(forms::DataGrid& grid) {
  if (rows_ == nullptr) return;
  std::optional<engine::Bookmark> marked;
  if (grid.Row() >= 1 && grid.Row() <= RowCount()) marked = rows_->BookmarkAt(grid.Row() - 1);
  RequeryInPlace(*rows_);
  cachedRow_ = -1;
  const std::int64_t place = marked ? PlaceOf(*rows_, *marked) : -1;
  grid.SetCurrent(place >= 0 ? place + 1 : std::min(grid.Row(), RowCount()), grid.Column());
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
    } catch (const engine::DatabaseError& failure) {
      // A row that another window has deleted meanwhile shows empty until the next refresh.
      if (failure.Number != engine::DatabaseError::kRecordDeleted) throw;
      cache_.clear();
    }
    cachedRow_ = row;
  }
  return field < cache_.size() ? cache_[field].Text() : std::string();
}

std::size_t DataSource::FieldOf(std::string_view column) const {
  const auto& columns = rows_->Columns();
  const auto at = std::find_if(columns.begin(), columns.end(), [&](const std::string& each) {
    return base::Upper(each) == base::Upper(column);
  });
  return static_cast<std::size_t>(at - columns.begin());
}

std::string DataSource::Text(std::int64_t row, std::string_view column) {
  return rows_ == nullptr ? std::string() : CellText(row, FieldOf(column));
}

forms::DataGrid::ColumnOf DataSource::GridColumn(
    std::string heading, std::string_view column,
    std::function<std::string(const std::string&)> format) const {
  const std::size_t field = FieldOf(column);
  if (field == rows_->Columns().size()) {
    throw engine::DatabaseError(engine::DatabaseError::kItemNotFound,
                                "Elemento non trovato: " + std::string(column));
  }
  return {std::move(heading), field, forms::kOwnSize, std::move(format)};
}

void DataSource::SetCell(std::size_t field, std::string_view text) {
  const std::string& column = rows_->Columns().at(field);
  try {
    rows_->Set(column, text);
  } catch (const engine::DatabaseError& failure) {
    // A number or date that was emptied.
    if (failure.Number != engine::DatabaseError::kConversion || !base::Trim(text).empty()) {
      rows_->CancelUpdate();  // else the record half written would be read as if it were stored
      throw;
    }
    rows_->Set(column, engine::Value());
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
  cachedRow_ = -1;
  DeleteCurrent();
}

}  // namespace brenvo::core
