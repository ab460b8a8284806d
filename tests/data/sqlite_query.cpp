#include "tests/data/sqlite_query.h"
#include "tests/support/places.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>

namespace brenvo {

std::vector<TextRow> Query(const std::filesystem::path& database, const std::string& sql) {
  sqlite3* opened = nullptr;
  const int result =
      sqlite3_open_v2(database.string().c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> owner(opened, sqlite3_close);
  if (result != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(opened));
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare_v2(opened, sql.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(opened));
  }
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> query(prepared, sqlite3_finalize);
  std::vector<TextRow> rows;
  while (sqlite3_step(prepared) == SQLITE_ROW) {
    TextRow row;
    for (int column = 0; column < sqlite3_column_count(prepared); ++column) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, column));
      row.emplace_back(text == nullptr ? "NULL" : text);
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<TextRow> Delivered(const std::string& sql) {
  return Query(BuildDir() / "delivered" / "Brenvo.mdb", sql);
}

std::vector<std::string> DeliveredColumn(const std::string& sql) {
  std::vector<std::string> values;
  for (const TextRow& row : Delivered(sql)) values.push_back(row.at(0));
  return values;
}

}  // namespace brenvo
