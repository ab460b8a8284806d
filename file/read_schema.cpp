#include "read_schema.h"

#include <sqlite3.h>

#include <charconv>
#include <memory>
#include <optional>
#include <utility>

#include "base/text.h"
#include "engine/database_error.h"
#include "sqlite_file.h"

namespace brenvo::file {
namespace {

struct Finalizer {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Handle = std::unique_ptr<sqlite3_stmt, Finalizer>;

// A structure that is damaged, or not one of ours; what else can happen to a file has its own
// words.
[[noreturn]] void FailToRead(sqlite3* file) {
  const int kind = sqlite3_extended_errcode(file) & 0xFF;
  if (kind != SQLITE_ERROR && kind != SQLITE_CORRUPT && kind != SQLITE_NOTADB) {
    throw LastFailureOf(file);
  }
  throw engine::DatabaseError(
      engine::DatabaseError::kNotADatabase,
      std::string("La struttura del database non si legge: ") + sqlite3_errmsg(file));
}

Handle Prepare(sqlite3* file, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v2(file, sql.c_str(), -1, &statement, nullptr);
  Handle handle(statement);
  if (code != SQLITE_OK) FailToRead(file);
  return handle;
}

bool Step(sqlite3* file, const Handle& handle) {
  const int code = sqlite3_step(handle.get());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  FailToRead(file);
}

std::string TextAt(const Handle& handle, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle.get(), column));
  return text == nullptr
             ? std::string()
             : std::string(text,
                           static_cast<std::size_t>(sqlite3_column_bytes(handle.get(), column)));
}

// Reads the parts of an index out of the statement that made it. Only the forms that this program
// gives its own indexes are understood; an index with any other part does not count.
class IndexReader {
 public:
  IndexReader(const dialect::TableSchema& table, std::string_view sql)
      : table_(table), rest_(sql) {}

  std::optional<std::vector<dialect::IndexPart>> Parts() {
    // The column list is the first bracket behind the table's name, which may hold brackets.
    Skip();
    while (!rest_.empty() && rest_.front() != '(') {
      if (rest_.front() == '"') {
        if (!Name()) return std::nullopt;
      } else {
        rest_.remove_prefix(1);
      }
      Skip();
    }
    if (!Take("(")) return std::nullopt;
    std::vector<dialect::IndexPart> parts;
    do {
      const auto part = Part();
      if (!part) return std::nullopt;
      parts.push_back(*part);
    } while (Take(","));
    if (!Take(")")) return std::nullopt;
    Skip();
    return rest_.empty() ? std::optional(parts) : std::nullopt;
  }

 private:
  void Skip() {
    while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\n' ||
                              rest_.front() == '\t' || rest_.front() == '\r')) {
      rest_.remove_prefix(1);
    }
  }

  bool Take(std::string_view word) {
    Skip();
    if (!base::SameText(rest_.substr(0, word.size()), word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }

  std::optional<std::string> Name() {
    Skip();
    if (!rest_.starts_with('"')) return std::nullopt;
    rest_.remove_prefix(1);
    std::string name;
    while (!rest_.empty()) {
      const char c = rest_.front();
      rest_.remove_prefix(1);
      if (c != '"') {
        name += c;
      } else if (rest_.starts_with('"')) {
        name += c;
        rest_.remove_prefix(1);
      } else {
        return name;
      }
    }
    return std::nullopt;
  }

  std::optional<std::size_t> ColumnNumber() {
    const auto name = Name();
    if (!name) return std::nullopt;
    const std::size_t column = table_.FindColumn(*name);
    return column == dialect::TableSchema::kNone ? std::nullopt : std::optional(column);
  }

  std::optional<dialect::IndexPart> Part() {
    dialect::IndexPart part;
    if (!Take("rtrim(")) {
      const auto column = ColumnNumber();
      // A text column indexed as it stands compares with regard to case, which is no order here.
      if (!column || table_.columns[*column].type == dialect::ColumnType::kText)
        return std::nullopt;
      part.column = *column;
      return part;
    }
    const bool prefix = Take("substr(");
    const auto column = ColumnNumber();
    if (!column) return std::nullopt;
    part.column = *column;
    if (prefix) {
      if (!Take(",") || !Take("1") || !Take(",")) return std::nullopt;
      Skip();
      const auto [end, error] =
          std::from_chars(rest_.data(), rest_.data() + rest_.size(), part.prefix);
      if (error != std::errc() || part.prefix <= 0) return std::nullopt;
      rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
      if (!Take(")")) return std::nullopt;
    }
    if (!Take(")") || !Take("COLLATE") || !Take("NOCASE")) return std::nullopt;
    return part;
  }

  const dialect::TableSchema& table_;
  std::string_view rest_;
};

dialect::ColumnType TypeOf(std::string_view declared, bool counter) {
  if (counter) return dialect::ColumnType::kCounter;
  if (base::SameText(declared, "INTEGER")) return dialect::ColumnType::kInteger;
  if (base::SameText(declared, "REAL")) return dialect::ColumnType::kReal;
  if (base::SameText(declared, "DATETIME")) return dialect::ColumnType::kDateTime;
  if (base::SameText(declared, "YESNO")) return dialect::ColumnType::kYesNo;
  return dialect::ColumnType::kText;
}

bool HoldsWord(std::string_view text, std::string_view word) {
  for (std::size_t at = 0; at + word.size() <= text.size(); ++at) {
    if (base::SameText(text.substr(at, word.size()), word)) return true;
  }
  return false;
}

void ReadColumns(sqlite3* file, dialect::TableSchema& table, bool counts) {
  const Handle columns = Prepare(file, "PRAGMA table_info(" + table.quoted + ")");
  std::size_t keys = 0;
  std::size_t key = dialect::TableSchema::kNone;
  while (Step(file, columns)) {
    const std::string name = TextAt(columns, 1);
    table.columns.push_back({name, QuotedName(name), TypeOf(TextAt(columns, 2), false)});
    if (sqlite3_column_int(columns.get(), 5) == 0) continue;
    ++keys;
    key = table.columns.size() - 1;
  }
  if (keys == 1 && table.columns[key].type == dialect::ColumnType::kInteger) {
    table.keyColumn = key;
    if (counts) table.columns[key].type = dialect::ColumnType::kCounter;
  }
}

// Those of all tables, by the table's name, in the order in which they were made.
struct FoundIndex {
  std::string table, name, sql;
};

std::vector<FoundIndex> FindIndexes(sqlite3* file) {
  std::vector<FoundIndex> found;
  const Handle indexes = Prepare(file,
                                 "SELECT tbl_name, name, sql FROM sqlite_schema "
                                 "WHERE type = 'index' AND sql IS NOT NULL ORDER BY rowid");
  while (Step(file, indexes)) {
    found.push_back({TextAt(indexes, 0), TextAt(indexes, 1), TextAt(indexes, 2)});
  }
  return found;
}

void TakeIndexes(const std::vector<FoundIndex>& found, dialect::TableSchema& table) {
  for (const FoundIndex& index : found) {
    if (index.table != table.name) continue;
    auto parts = IndexReader(table, index.sql).Parts();
    if (!parts) continue;
    std::string name = index.name;
    if (name.size() > table.name.size() + 1 && name[table.name.size()] == '.' &&
        base::SameText(std::string_view(name).substr(0, table.name.size()), table.name)) {
      name.erase(0, table.name.size() + 1);
    }
    // SQLite writes these words itself, however they were given.
    const bool unique = index.sql.starts_with("CREATE UNIQUE ");
    table.indexes.push_back({std::move(name), unique, std::move(*parts)});
  }
}

}  // namespace

dialect::Schema ReadSchema(sqlite3* file) {
  std::vector<dialect::TableSchema> schema;
  const std::vector<FoundIndex> indexes = FindIndexes(file);
  const Handle tables = Prepare(file,
                                "SELECT name, sql FROM sqlite_schema WHERE type = 'table' "
                                "AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY rowid");
  while (Step(file, tables)) {
    dialect::TableSchema table;
    table.name = TextAt(tables, 0);
    table.quoted = QuotedName(table.name);
    ReadColumns(file, table, HoldsWord(TextAt(tables, 1), "AUTOINCREMENT"));
    TakeIndexes(indexes, table);
    schema.push_back(std::move(table));
  }
  return dialect::Schema(std::move(schema));
}

std::string QuotedName(std::string_view name) {
  std::string quoted = "\"";
  for (char c : name) {
    quoted += c;
    if (c == '"') quoted += c;
  }
  quoted += '"';
  return quoted;
}

std::string PartSql(const dialect::TableSchema& table, const dialect::IndexPart& part) {
  const dialect::Column& column = table.columns[part.column];
  if (column.type != dialect::ColumnType::kText) return column.quoted;
  if (part.prefix == 0) return "rtrim(" + column.quoted + ") COLLATE NOCASE";
  return "rtrim(substr(" + column.quoted + ", 1, " + std::to_string(part.prefix) +
         ")) COLLATE NOCASE";
}

}  // namespace brenvo::file
