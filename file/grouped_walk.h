// Groups that an index can tell apart without a look at the rows.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "dialect/schema.h"
#include "dialect/tree.h"

namespace brenvo::file {

// A selection of one table, grouped by parts of one index, the first of them among these. Each
// group needs one row that meets the conditions: they are found by walking along the index, one
// step a combination of its first parts. Where the groups are all of these, a row is looked for in
// each with the conditions, which further parts may lead to; else the walk goes on through the
// parts that the conditions ask for.
struct GroupedWalk {
  const dialect::TableSchema* table = nullptr;
  const dialect::Index* index = nullptr;
  std::size_t parts = 0;  // as many of them tell all that is asked
  // The conditions, all of which hold: those that the parts answer, the last of them at this place,
  // and those that want a row.
  struct OfParts {
    const dialect::Node* condition;
    std::size_t last;
  };
  std::vector<OfParts> ofParts;
  std::vector<const dialect::Node*> ofRows;
  // Asks for a first part that is not empty.
  bool firstPartFilled = false;
  // Asks for a column that is not empty, of which the first part holds the beginning: true where
  // that is not empty, else a question for the row.
  const dialect::Node* beginningFilled = nullptr;
};

// Nothing where the index would not answer, or a condition on dates, patterns or other tables is
// better met first.
std::optional<GroupedWalk> PlanGroupedWalk(const dialect::SelectTree& select);

}  // namespace brenvo::file
