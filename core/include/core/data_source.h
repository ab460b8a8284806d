// A data source behind a grid or a list: a SELECT and its rows.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/session.h"
#include "forms/grid.h"

namespace brenvo::core {

// Runs the rows' SELECT again, counts them to the end and stands on the same record as before.
// False when that is gone, or there was none: they then stand behind their last one.
bool RequeryInPlace(engine::Dynaset& rows);

// Nothing is read before Refresh. A statement that fails throws from Refresh and leaves the rows
// that stood there.
class DataSource : public forms::GridRows {
 public:
  explicit DataSource(Session& session) : session_(session) {}

  std::string RecordSource;
  void Refresh();
  // The rows were changed elsewhere: they are read again, and the rows and the grid over them stay
  // on their records. A record that is gone leaves the grid's mark at its height. Nothing where
  // nothing was read yet.
  void Renew(forms::DataGrid& grid);
  // The current rows were written through Rows(): cells are read from the file again.
  void RowsWritten() { cachedRow_ = -1; }
  void Close();

  // The rows; null before the first Refresh.
  engine::Dynaset* Rows() const { return rows_.get(); }
  // True when the rows stand behind their last one, have none, or were never read.
  bool AtEnd() const;
  // A cell by its column's name; empty when the rows have no such column.
  std::string Text(std::int64_t row, std::string_view column);
  // A grid's column over a column of the rows; DatabaseError 3265 when they have none of the name.
  forms::DataGrid::ColumnOf GridColumn(
      std::string heading, std::string_view column,
      std::function<std::string(const std::string&)> format = {}) const;

  std::int64_t RowCount() override;
  std::string CellText(std::int64_t row, std::size_t field) override;
  void SetCellText(std::int64_t row, std::size_t field, std::string_view text) override;
  void AddRow(std::size_t field, std::string_view text) override;
  void DeleteRow(std::int64_t row) override;

 protected:
  // The current row goes.
  virtual void DeleteCurrent() { rows_->Delete(); }

  Session& session_;

 private:
  // The place of a column among the rows' columns, whatever its case; their number for none.
  std::size_t FieldOf(std::string_view column) const;

  // A cell of the record being written; a blank one of a number or date is Null.
  void SetCell(std::size_t field, std::string_view text);

  std::unique_ptr<engine::Dynaset> rows_;
  // The row fetched last: a grid asks for a row cell by cell.
  std::int64_t cachedRow_ = -1;
  std::vector<engine::Value> cache_;
};

}  // namespace brenvo::core
