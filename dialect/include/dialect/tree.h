// The shape of a statement of the dialect, as read; names are not yet looked up.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "dialect/schema.h"

namespace brenvo::dialect {

struct Function;
struct SelectTree;

template <typename T>
using TreeList = std::pmr::vector<T>;

enum class NodeKind {
  kText,     // text
  kInteger,  // integer
  kReal,     // real
  kBoolean,  // integer is -1 or 0
  kNull,
  kDate,    // date; made when names are looked up, the dialect has no such literal
  kColumn,  // qualifier.text
  kCall,    // text, function, children; star for Count(*)
  kNegate,  // children[0]
  kNot,
  kOr,
  kAnd,
  kEqual,
  kNotEqual,
  kLess,
  kLessEqual,
  kGreater,
  kGreaterEqual,
  kLike,      // negated
  kBetween,   // children: value, low, high; negated
  kInList,    // children: value, then the list; negated
  kInSelect,  // children[0], select; negated
  kIsNull,    // negated
  kAdd,
  kSubtract,
  kMultiply,
  kDivide,
  kConcatenate,
  kSubselect,  // select
  kExists,     // select
};

struct Node {
  Node(NodeKind nodeKind, std::pmr::memory_resource* memory) : kind(nodeKind), children(memory) {}

  NodeKind kind;
  bool negated = false;
  bool star = false;
  std::string_view text;
  std::string_view qualifier;
  std::int64_t integer = 0;
  double real = 0;
  base::DateTime date;
  TreeList<Node*> children;
  SelectTree* select = nullptr;
  int height = 1;

  // Filled in when names are looked up.
  ValueType type = ValueType::kAny;
  const TableSchema* table = nullptr;  // of kColumn
  std::size_t column = 0;
  const Function* function = nullptr;  // of kCall
};

struct SelectItem {
  Node* value = nullptr;  // null for "*"
  std::string_view alias;
  std::string_view qualifier;  // of "t.*"
};

struct TableReference {
  std::string_view name;
  std::string_view alias;  // empty without one
  const TableSchema* table = nullptr;
};

struct OrderTerm {
  Node* value = nullptr;
  bool descending = false;
};

struct SelectTree {
  explicit SelectTree(std::pmr::memory_resource* memory)
      : items(memory), tables(memory), groupBy(memory), orderBy(memory) {}

  bool distinct = false;
  TreeList<SelectItem> items;
  TreeList<TableReference> tables;
  Node* where = nullptr;
  TreeList<Node*> groupBy;
  Node* having = nullptr;
  TreeList<OrderTerm> orderBy;
};

struct Assignment {
  std::string_view column;
  Node* value = nullptr;
};

enum class StatementKind { kSelect, kInsert, kUpdate, kDelete };

// A statement and the memory that all of it lies in. The text that it was read from must outlive
// it.
class StatementTree {
 public:
  StatementTree() : read(&memory_), columns(&memory_), values(&memory_), assignments(&memory_) {}
  StatementTree(const StatementTree&) = delete;
  StatementTree& operator=(const StatementTree&) = delete;

  std::pmr::memory_resource* Memory() { return &memory_; }
  Node* NewNode(NodeKind nodeKind) {
    return new (memory_.allocate(sizeof(Node), alignof(Node))) Node(nodeKind, &memory_);
  }
  SelectTree* NewSelect() {
    return new (memory_.allocate(sizeof(SelectTree), alignof(SelectTree))) SelectTree(&memory_);
  }
  std::string_view Keep(std::string_view text);

 private:
  std::array<std::byte, 6144> first_;
  std::pmr::monotonic_buffer_resource memory_{first_.data(), first_.size()};

 public:
  StatementKind kind = StatementKind::kSelect;
  SelectTree* select = nullptr;        // of a SELECT, or of INSERT ... SELECT
  std::string_view table;              // written
  TreeList<const TableSchema*> read;   // all tables that are read; filled in with the names
  TreeList<std::string_view> columns;  // of an INSERT; empty means all
  TreeList<Node*> values;              // of INSERT ... VALUES
  TreeList<Assignment> assignments;    // of an UPDATE
  Node* where = nullptr;               // of an UPDATE or DELETE, or a condition alone
};

}  // namespace brenvo::dialect
