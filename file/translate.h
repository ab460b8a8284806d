// Plans of the dialect written out as SQLite's SQL.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dialect/output_column.h"
#include "dialect/schema.h"
#include "engine/value.h"

namespace brenvo {

struct Sql {
  std::string text;
  std::vector<Value> parameters;
};

// INSERT, UPDATE or DELETE.
struct Action {
  Sql sql;
  const TableSchema* table = nullptr;
};

// A SELECT as a snapshot runs it.
struct Query {
  Sql sql;
  std::vector<OutputColumn> columns;
  std::vector<const TableSchema*> tables;
  // Rows are due in the order of entry, and sql does not ask for it: it ends where that order can
  // be added. Whether there is a row at all is found out faster without.
  bool orderLeftOut = false;
};
inline constexpr std::string_view kOrderOfEntry = " ORDER BY rowid";

// A SELECT over one table as a dynaset runs it.
struct Keyset {
  const TableSchema* table = nullptr;
  std::vector<const TableSchema*> tables;  // all that it reads
  Sql keys;                                // rowids in order
  Sql row;                                 // the columns; the row's key is the last parameter
  std::vector<OutputColumn> columns;
};

// The errors of these are those of the plans; and 3421 for a constant that its column cannot store.
Action TranslateAction(const Schema& schema, std::string_view statement);
Query TranslateQuery(const Schema& schema, std::string_view select);
Keyset TranslateKeyset(const Schema& schema, std::string_view select);
// The keys of the rows of `select` that meet a condition: the first one in order, or all in any.
Sql TranslateFind(const Schema& schema, std::string_view select, std::string_view condition,
                  bool firstInOrder);

}  // namespace brenvo
