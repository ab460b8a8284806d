// Links: file
// Arbitrary text as a statement of the dialect: it is refused with a DatabaseError, or becomes SQL
// that SQLite takes.
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>

#include "file/read_schema.h"
#include "file/sqlite_functions.h"
#include "file/translate.h"
#include "tests/support/places.h"

namespace {

using brenvo::engine::DatabaseError;

struct Memory {
  Memory() {
    sqlite3_open(":memory:", &file);
    std::ifstream schemaFile(brenvo::SourceDir() / "data/schema.sql");
    std::ostringstream text;
    text << schemaFile.rdbuf();
    if (sqlite3_exec(file, text.str().c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      std::abort();
    }
    schema = brenvo::file::ReadSchema(file);
    brenvo::file::RegisterFunctions(file, &failure);
    sqlite3_db_config(file, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  }

  // SQLite may refuse what the parser lets through for its meaning or its size, never for its
  // grammar or its names.
  void Prepare(const brenvo::file::Sql& sql) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(file, sql.text.data(), static_cast<int>(sql.text.size()),
                                        &statement, nullptr);
    const bool counted = code != SQLITE_OK || sqlite3_bind_parameter_count(statement) ==
                                                  static_cast<int>(sql.parameters.size());
    sqlite3_finalize(statement);
    const char* const message = sqlite3_errmsg(file);
    const bool allowed = code == SQLITE_OK || std::strstr(message, "misuse of aggregate") ||
                         std::strstr(message, "stack overflow") ||
                         std::strstr(message, "too many") || std::strstr(message, "too large") ||
                         std::strstr(message, "misuse of aliased");
    if (allowed && counted) return;
    std::fprintf(stderr, "%s\n%s\n", message, sql.text.c_str());
    std::abort();
  }

  sqlite3* file = nullptr;
  brenvo::dialect::Schema schema;
  std::optional<brenvo::engine::DatabaseError> failure;
};

template <typename Work>
void Try(Work&& work) {
  try {
    work();
  } catch (const DatabaseError&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Memory memory;
  const std::string text(reinterpret_cast<const char*>(data), size);
  Try([&] { memory.Prepare(brenvo::file::TranslateQuery(memory.schema, text).sql); });
  Try([&] { memory.Prepare(brenvo::file::TranslateAction(memory.schema, text).sql); });
  Try([&] {
    const brenvo::file::Keyset keyset = brenvo::file::TranslateKeyset(memory.schema, text);
    memory.Prepare(keyset.keys);
    brenvo::file::Sql row = keyset.row;
    row.parameters.emplace_back(1);  // the key
    memory.Prepare(row);
  });
  Try([&] {
    memory.Prepare(brenvo::file::TranslateFind(
        memory.schema, "SELECT * FROM Log WHERE Call='a' or Call='b' ORDER By DataQso DESC ,QsoNr",
        text, true));
  });
  return 0;
}
