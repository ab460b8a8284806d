#include "mkdatabase/database_maker.h"

#include <sqlite3.h>

#include <charconv>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/csv.h"
#include "upkeep/schema_steps.h"

namespace brenvo::mkdatabase {
namespace {

// The tables that the program cannot work without rows in.
constexpr std::string_view kRequiredTables[] = {"Country",      "Prefissi", "Provincie", "Modi",
                                                "Propagazione", "NoteHelp", "User",      "UserRTX"};

// What holds between rows, as a query for the rows that break it and the words for them.
struct Rule {
  const char* BrokenBy;
  const char* Meaning;
};
constexpr Rule kRules[] = {
    {R"(SELECT "Prefisso" || ' ' || "Country" FROM "Prefissi"
            WHERE "Country" NOT IN (SELECT "Country" FROM "Country"))",
     "a prefix of a country that is not in Country"},
    {R"(SELECT "Prefisso" FROM "Prefissi"
            WHERE length("Prefisso") NOT BETWEEN 2 AND 5 OR "Prefisso" NOT GLOB '*[0-9]')",
     "a prefix longer than 5 characters or without its digit"},
    {R"(SELECT "Country" FROM "Country" WHERE length("Country") NOT BETWEEN 1 AND 5)",
     "a country code of other than 1 to 5 characters"},
    {R"(SELECT "Country" || ' ' || "Provincia" FROM "Provincie"
            WHERE "Country" NOT IN (SELECT "Country" FROM "Country"))",
     "a province of a country that is not in Country"},
    {R"(SELECT "Provincia" FROM "Provincie" WHERE length("Provincia") NOT BETWEEN 1 AND 3)",
     "a province code of other than 1 to 3 characters"},
    {R"(SELECT "Banda" FROM "UserRTX"
            WHERE "Modo" <> '' AND "Modo" NOT IN (SELECT "Modo" FROM "Modi"))",
     "a band with a mode that is not in Modi"},
    {R"(SELECT "Banda" FROM "UserRTX" WHERE "FrequenzaI" > "FrequenzaF")",
     "a band whose edges are exchanged"},
    {R"(SELECT count(*) FROM "User" HAVING count(*) <> 1)", "other than one station profile"},
    {R"(SELECT count(*) FROM "Propagazione"
            WHERE "Codice" = (SELECT min("Codice") FROM "Propagazione") AND "Propagazione" = ''
            HAVING count(*) <> 1)",
     "a first propagation that is not empty"},
};

struct CloseFile {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using File = std::unique_ptr<sqlite3, CloseFile>;

// Throws std::runtime_error with the name and `failure` behind it.
File Open(const std::string& name, int flags, const char* failure) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(name.c_str(), &opened, flags, nullptr);
  File file(opened);
  if (result != SQLITE_OK) throw std::runtime_error(name + failure);
  return file;
}

void Execute(sqlite3* database, const std::string& sql) {
  if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(database));
  }
}

class Statement {
 public:
  Statement(sqlite3* database, const std::string& sql) : database_(database) {
    if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(database));
    }
  }
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // True on a row, false when there are no more.
  bool Step() {
    const int result = sqlite3_step(statement_);
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
      const std::string what = sqlite3_errmsg(database_);
      sqlite3_reset(statement_);
      throw std::runtime_error(what);
    }
    return result == SQLITE_ROW;
  }
  void Reset() { sqlite3_reset(statement_); }

  std::string Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    return text == nullptr ? std::string() : text;
  }

  void BindNull(int place) { sqlite3_bind_null(statement_, place); }
  void Bind(int place, std::int64_t value) { sqlite3_bind_int64(statement_, place, value); }
  void Bind(int place, double value) { sqlite3_bind_double(statement_, place, value); }
  void Bind(int place, std::string_view value) {
    sqlite3_bind_text(statement_, place, value.data(), static_cast<int>(value.size()),
                      SQLITE_TRANSIENT);
  }

 private:
  sqlite3* database_;
  sqlite3_stmt* statement_ = nullptr;
};

[[noreturn]] void FailOnNumber(std::string_view cell) {
  throw std::runtime_error("\"" + std::string(cell) + "\" is no number");
}

std::int64_t ParseWhole(std::string_view cell) {
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), value);
  if (error != std::errc() || end != cell.data() + cell.size()) FailOnNumber(cell);
  return value;
}

double ParseReal(const std::string& cell) {
  std::size_t end = 0;
  double value = 0;
  try {
    value = std::stod(cell, &end);
  } catch (const std::logic_error&) {
    FailOnNumber(cell);
  }
  if (end != cell.size()) FailOnNumber(cell);
  return value;
}

std::int64_t ParseYesNo(std::string_view cell) {
  if (cell == "si") return -1;
  if (cell == "no") return 0;
  throw std::runtime_error("\"" + std::string(cell) + "\" is neither si nor no");
}

void BindCell(Statement& insert, int place, std::string_view type, const std::string& cell) {
  if (type == "YESNO") {
    insert.Bind(place, ParseYesNo(cell));
  } else if (type == "TEXT") {
    insert.Bind(place, std::string_view(cell));
  } else if (type != "INTEGER" && type != "REAL") {
    throw std::runtime_error("no cells for a column of type " + std::string(type));
  } else if (cell.empty()) {
    insert.BindNull(place);
  } else if (type == "INTEGER") {
    insert.Bind(place, ParseWhole(cell));
  } else {
    insert.Bind(place, ParseReal(cell));
  }
}

// A name for use in a statement.
std::string Quoted(std::string_view name) {
  std::string quoted = "\"";
  for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + "\"";
}

std::string ContentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error(file.string() + ": cannot be read");
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class Maker {
 public:
  explicit Maker(const std::filesystem::path& file)
      : database_(Open(file.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                       ": cannot be created")) {}

  void Execute(const std::string& sql) { mkdatabase::Execute(database_.get(), sql); }

  std::vector<std::string> Tables() {
    Statement query(database_.get(),
                    "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE "
                    "'sqlite~_%' ESCAPE '~' ORDER BY rowid");
    std::vector<std::string> names;
    while (query.Step()) names.push_back(query.Text(0));
    return names;
  }

  void Fill(const std::string& table, const std::filesystem::path& file) {
    const base::CsvTable facts = base::ReadCsv(file);
    const std::vector<std::string> types = TypesOf(table, facts.Headings, file);
    std::string columns;
    std::string places;
    for (const std::string& heading : facts.Headings) {
      columns += (columns.empty() ? "" : ",") + Quoted(heading);
      places += places.empty() ? "?" : ",?";
    }
    Statement insert(database_.get(),
                     "INSERT INTO " + Quoted(table) + " (" + columns + ") VALUES (" + places + ")");
    for (const base::CsvTable::Row& row : facts.Rows) {
      try {
        for (std::size_t i = 0; i < types.size(); ++i) {
          BindCell(insert, static_cast<int>(i) + 1, types[i], row.Cells[i]);
        }
        insert.Step();
        insert.Reset();
      } catch (const std::runtime_error& error) {
        throw std::runtime_error(file.filename().string() + ", line " + std::to_string(row.Line) +
                                 ": " + error.what());
      }
    }
  }

  void Check() {
    for (const std::string_view table : kRequiredTables) {
      if (!Statement(database_.get(), "SELECT 1 FROM " + Quoted(table) + " LIMIT 1").Step()) {
        throw std::runtime_error(std::string(table) + ": no rows");
      }
    }
    for (const Rule& rule : kRules) {
      Statement query(database_.get(), rule.BrokenBy);
      if (query.Step()) {
        throw std::runtime_error(std::string(rule.Meaning) + ": " + query.Text(0));
      }
    }
  }

 private:
  // The declared type under each heading.
  std::vector<std::string> TypesOf(const std::string& table,
                                   const std::vector<std::string>& headings,
                                   const std::filesystem::path& file) {
    std::vector<std::string> types;
    for (const std::string& heading : headings) {
      Statement query(database_.get(),
                      "SELECT upper(type) FROM pragma_table_info(?1) WHERE name = ?2");
      query.Bind(1, std::string_view(table));
      query.Bind(2, std::string_view(heading));
      if (!query.Step()) {
        throw std::runtime_error(file.filename().string() + ": table " + table +
                                 " has no column \"" + heading + "\"");
      }
      types.push_back(query.Text(0));
    }
    return types;
  }

  File database_;
};

void Make(const std::filesystem::path& schema, const std::filesystem::path& facts,
          const std::filesystem::path& file) {
  Maker maker(file);
  // Nobody reads the file before it is renamed, so no journal is needed to mend it.
  maker.Execute("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; BEGIN");
  maker.Execute(ContentOf(schema));
  for (const upkeep::SchemaStep& step : upkeep::SchemaSteps()) {
    maker.Execute(upkeep::StatementsOf(step, std::nullopt));
  }
  for (const std::string& table : maker.Tables()) {
    const std::filesystem::path rows = facts / (table + ".csv");
    if (std::filesystem::exists(rows)) maker.Fill(table, rows);
  }
  maker.Check();
  maker.Execute("COMMIT");
}

}  // namespace

std::vector<std::string> CompleteDatabase(const std::filesystem::path& directory,
                                          base::DateTime now) {
  struct Unseen : platform::Progress {
    bool Advance(std::int64_t) override { return true; }
  };
  return upkeep::BringUpToDate(
      directory, now, [](std::string_view, std::int64_t) { return std::make_unique<Unseen>(); });
}

void MakeDatabase(const std::filesystem::path& schema, const std::filesystem::path& facts,
                  const std::filesystem::path& out) {
  if (std::filesystem::exists(out)) {
    throw std::runtime_error(out.string() + " exists and is not overwritten");
  }
  std::filesystem::path unfinished = out;
  unfinished += ".new";
  std::filesystem::remove(unfinished);
  try {
    Make(schema, facts, unfinished);
    std::filesystem::rename(unfinished, out);
  } catch (...) {
    std::error_code ignored;
    std::filesystem::remove(unfinished, ignored);
    throw;
  }
}

}  // namespace brenvo::mkdatabase
