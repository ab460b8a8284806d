// A data source behind a grid or a list: a SELECT and its rows.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/session.h"
#include "forms/grid.h"

namespace brenvo {

// Nothing is read before Refresh. A statement that fails throws from Refresh and leaves the rows
// that stood there.
class DataSource : public GridRows {
 public:
  explicit DataSource(Session& session) : session_(session) {}

  std::string RecordSource;
  void Refresh();
  void Close();

  // The rows; null before the first Refresh.
  Dynaset* Rows() const { return rows_.get(); }
  // True when there is no row, or none before the current position's end.
  bool AtEnd() const;
  std::string Text(std::int64_t row, std::string_view column);

  std::int64_t RowCount() override;
  std::string CellText(std::int64_t row, std::size_t field) override;
  void SetCellText(std::int64_t row, std::size_t field, std::string_view text) override;
  void AddRow(std::size_t field, std::string_view text) override;
  void DeleteRow(std::int64_t row) override;

 private:
  Session& session_;
  std::unique_ptr<Dynaset> rows_;
  // The row fetched last: a grid asks for a row cell by cell.
  std::int64_t cachedRow_ = -1;
  std::vector<Value> cache_;
};

}  // namespace brenvo
