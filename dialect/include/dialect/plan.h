// What a statement means: read, its names looked up, and what follows from its shape. A plan knows
// no store; a store writes it out in a language of its own. It stands where it was made, and refers
// to the schema.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dialect/output_column.h"
#include "dialect/schema.h"
#include "dialect/tree.h"

namespace brenvo::dialect {

// Whether each row of the result is a row of one table: only then has it an order of entry.
bool IsOfOneTable(const SelectTree& select);
// Whether the order of entry is due where the statement's own order leaves it open: among all rows
// when it asks for none. False when the rows have none, or that order ends with the key.
bool FollowsEntry(const SelectTree& select);

// A statement's text as valid UTF-8, whatever bytes it was pasted from.
class StatementText {
 public:
  explicit StatementText(std::string_view text);
  StatementText(const StatementText&) = delete;
  StatementText& operator=(const StatementText&) = delete;
  operator std::string_view() const { return text_; }

 private:
  std::string owned_;
  std::string_view text_;
};

// The errors of all plans are those of ParseStatement and BindStatement, and what stands there.

// A SELECT; DatabaseError 3219 for a statement of another kind.
class SelectPlan {
 public:
  SelectPlan(const Schema& schema, std::string_view select);

  const SelectTree& Select() const { return *tree_.select; }
  std::vector<OutputColumn> Columns() const;
  // All that it reads, in subselects too.
  std::vector<const TableSchema*> TablesRead() const;

 protected:
  StatementText text_;
  StatementTree tree_;
};

// A SELECT whose rows are known by their keys and can be written: DatabaseError 3219 when it is
// over more than one table, with DISTINCT or with groups.
class KeysetPlan : public SelectPlan {
 public:
  KeysetPlan(const Schema& schema, std::string_view select);

  const TableSchema& Table() const { return *Select().tables[0].table; }
};

// The rows of a keyset that also meet a condition like that of a WHERE.
class FindPlan : public KeysetPlan {
 public:
  FindPlan(const Schema& schema, std::string_view select, std::string_view condition);

  // The SELECT with both conditions, in the order of the keyset.
  const SelectTree& Found() const { return found_; }

 private:
  StatementText conditionText_;
  StatementTree condition_;
  SelectTree found_;
};

// An INSERT, UPDATE or DELETE; DatabaseError 3065 for a SELECT.
class ActionPlan {
 public:
  ActionPlan(const Schema& schema, std::string_view statement);

  const StatementTree& Statement() const { return tree_; }
  // Which is written.
  const TableSchema& Table() const { return *table_; }

 private:
  StatementText text_;
  StatementTree tree_;
  const TableSchema* table_ = nullptr;
};

}  // namespace brenvo::dialect
