// Looks up the names of a statement, and finds the type of each of its values.
#pragma once

#include "dialect/schema.h"
#include "dialect/tree.h"

namespace brenvo::dialect {

// Fills in the tree. DatabaseError 3078 for an unknown table, 3061 for a name that is no column,
// 3079 for one of two tables, 3085 for an unknown function, 3464 where types do not fit or a text
// is no date, 3075 for an aggregate where none may stand and for a wrong number of arguments,
// 3346 where an INSERT's values do not match its columns. Dates and sums of constants are
// worked out.
void BindStatement(const Schema& schema, StatementTree& tree);
// A condition on the rows of one table.
void BindCondition(const Schema& schema, const TableSchema& table, StatementTree& tree);

// Whether a SELECT gives groups rather than rows of its tables.
bool IsGrouped(const SelectTree& select);

}  // namespace brenvo::dialect
