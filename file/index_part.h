// What of an index a value is.
#pragma once

#include "dialect/schema.h"
#include "dialect/tree.h"

namespace brenvo::file {

// The index part that the node is the same as: a column, or the first characters of one. No table
// where it is neither.
struct PartOfNode {
  const dialect::TableSchema* table = nullptr;
  dialect::IndexPart part;
};
PartOfNode PartOf(const dialect::Node& node);

}  // namespace brenvo::file
