#include "file_reader.h"

#include <string>
#include <utility>
#include <vector>

#include "translate.h"

namespace brenvo::file {
namespace {

// Cells of the row on which a run stands, without a copy where the file holds what is asked for.
class RunningRow final : public engine::Reader::Row {
 public:
  RunningRow(const Running& run, const std::vector<dialect::OutputColumn>& columns)
      : run_(run), columns_(columns), texts_(columns.size()) {}

  std::string_view Text(std::size_t column) override {
    const int at = Place(column);
    sqlite3_stmt* const handle = run_.Handle();
    // A column of texts holds no numbers: SQLite makes texts of them when they are stored.
    if (columns_[column].type != dialect::ValueType::kText) {
      return texts_[column] = Cell(column).Text();
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle, at));
    if (text == nullptr) return {};
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(handle, at))};
  }

  double Number(std::size_t column) override {
    const int at = Place(column);
    if (columns_[column].type != dialect::ValueType::kYesNo) {
      switch (sqlite3_column_type(run_.Handle(), at)) {
        case SQLITE_INTEGER:
          return static_cast<double>(sqlite3_column_int64(run_.Handle(), at));
        case SQLITE_FLOAT:
          return sqlite3_column_double(run_.Handle(), at);
        case SQLITE_NULL:
          return 0;
        default:
          break;
      }
    }
    return Cell(column).Number();
  }

  bool Bool(std::size_t column) override {
    const int at = Place(column);
    if (sqlite3_column_type(run_.Handle(), at) == SQLITE_INTEGER) {
      return sqlite3_column_int64(run_.Handle(), at) != 0;
    }
    return Cell(column).ReadableBool().value_or(false);
  }

  std::int64_t Integer(std::size_t column) override {
    const int at = Place(column);
    if (sqlite3_column_type(run_.Handle(), at) == SQLITE_INTEGER &&
        columns_[column].type != dialect::ValueType::kYesNo) {
      return sqlite3_column_int64(run_.Handle(), at);
    }
    return Cell(column).Integer();
  }

  std::optional<base::DateTime> Date(std::size_t column) override {
    if (sqlite3_column_type(run_.Handle(), Place(column)) == SQLITE_NULL) return std::nullopt;
    return Cell(column).ReadableDate();
  }

 private:
  int Place(std::size_t column) const { return static_cast<int>(column); }
  engine::Value Cell(std::size_t column) const {
    return run_.Cell(Place(column), columns_.at(column).type);
  }

  const Running& run_;
  const std::vector<dialect::OutputColumn>& columns_;
  std::vector<std::string> texts_;  // those that do not stand in the file
};

}  // namespace

FileReader::FileReader(const std::filesystem::path& file, const dialect::Schema& tables)
    : connection_(file, ToRead{tables}) {}

bool FileReader::ForEach(std::string_view select,
                         const std::function<bool(engine::Reader::Row& row)>& see) {
  Query query = TranslateQuery(connection_.Tables(), select);
  if (query.orderLeftOut) query.sql.text += kOrderOfEntry;
  Running run(connection_, query.sql.text, std::move(query.sql.parameters));
  RunningRow row(run, query.columns);
  while (run.Step()) {
    if (!see(row)) return false;
  }
  return true;
}

}  // namespace brenvo::file
