// Reads statements of the dialect: SELECT, INSERT, UPDATE and DELETE, one a text.
#pragma once

#include <cstddef>
#include <string_view>

#include "dialect/tree.h"

namespace brenvo::dialect {

// Bytes of a statement, and how deep its brackets and chains may go.
inline constexpr std::size_t kLongestStatement = 65536;
inline constexpr int kDeepestBrackets = 50;
inline constexpr int kTallestExpression = 400;

// DatabaseError 3075 for what is no statement, 3142 when a second one follows. The tree refers to
// `statement`.
void ParseStatement(std::string_view statement, StatementTree& tree);
// A condition like that of a WHERE; it becomes `tree.where`.
void ParseCondition(std::string_view condition, StatementTree& tree);

}  // namespace brenvo::dialect
