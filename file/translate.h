// Plans of the dialect written out as SQLite's SQL.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dialect/output_column.h"
#include "dialect/schema.h"
#include "engine/value.h"

namespace brenvo::file {

struct Sql {
  std::string text;
  std::vector<engine::Value> parameters;
};

// INSERT, UPDATE or DELETE.
struct Action {
  Sql sql;
  const dialect::TableSchema* table = nullptr;
};

// A SELECT as a snapshot runs it.
struct Query {
  Sql sql;
  std::vector<dialect::OutputColumn> columns;
  std::vector<const dialect::TableSchema*> tables;
  // Rows are due in the order of entry, and sql does not ask for it: it ends where that order can
  // be added. Whether there is a row at all is found out faster without.
  bool orderLeftOut = false;
};
inline constexpr std::string_view kOrderOfEntry = " ORDER BY rowid";

// A SELECT over one table as a dynaset runs it.
struct Keyset {
  const dialect::TableSchema* table = nullptr;
  std::vector<const dialect::TableSchema*> tables;  // all that it reads
  Sql keys;                                         // rowids in order
  // Of a whole table: its rowids from the last one to the first, and how many there are. Empty
  // where a condition would have to look at every row anyway.
  Sql backwards, count;
  Sql row;  // the columns; the row's key is the last parameter
  std::vector<dialect::OutputColumn> columns;
};

// The errors of these are those of the plans; and 3421 for a constant that its column cannot store.
Action TranslateAction(const dialect::Schema& schema, std::string_view statement);
Query TranslateQuery(const dialect::Schema& schema, std::string_view select);
Keyset TranslateKeyset(const dialect::Schema& schema, std::string_view select);
// The keys of the rows of `select` that meet a condition: the first one in order, or all in any.
Sql TranslateFind(const dialect::Schema& schema, std::string_view select,
                  std::string_view condition, bool firstInOrder);

}  // namespace brenvo::file
