#include "grouped_walk.h"

#include <algorithm>
#include <set>
#include <utility>

#include "dialect/functions.h"
#include "dialect/plan.h"
#include "index_part.h"

namespace brenvo::file {
namespace {

using dialect::Node;
using dialect::NodeKind;

bool IsLiteral(const Node& node) {
  return node.kind == NodeKind::kText || node.kind == NodeKind::kInteger ||
         node.kind == NodeKind::kReal || node.kind == NodeKind::kBoolean;
}

bool IsComparison(NodeKind kind) {
  return kind >= NodeKind::kEqual && kind <= NodeKind::kGreaterEqual;
}

// The column that a condition compares with constants; null for a condition of another shape.
const Node* ComparedColumn(const Node& node) {
  const auto isPlain = [](const Node& each) {
    return each.kind == NodeKind::kColumn && each.qualifier.empty();
  };
  if (isPlain(node) && node.type == dialect::ValueType::kYesNo) return &node;
  if (!IsComparison(node.kind) && node.kind != NodeKind::kInList) return nullptr;
  const Node* column = nullptr;
  for (const Node* child : node.children) {
    if (IsLiteral(*child)) continue;
    if (column != nullptr || !isPlain(*child)) return nullptr;
    column = child;
  }
  return column == nullptr || column->type == dialect::ValueType::kDate ? nullptr : column;
}

// Calls `see` with each compared column; false where the condition has another shape.
template <class See>
bool EachColumn(const Node& node, const See& see) {
  if (node.kind == NodeKind::kOr) {
    return std::ranges::all_of(node.children,
                               [&](const Node* child) { return EachColumn(*child, see); });
  }
  const Node* const column = ComparedColumn(node);
  if (column != nullptr) see(*column);
  return column != nullptr;
}

void Conjuncts(const Node& node, std::vector<const Node*>& all) {
  if (node.kind != NodeKind::kAnd) return all.push_back(&node);
  for (const Node* child : node.children) Conjuncts(*child, all);
}

// Null for any other condition.
const Node* ColumnThatIsFilled(const Node& node) {
  if (node.kind != NodeKind::kNotEqual) return nullptr;
  const Node &column = *node.children[0], &text = *node.children[1];
  const bool empty = text.kind == NodeKind::kText && text.text.empty();
  return empty && column.kind == NodeKind::kColumn && column.type == dialect::ValueType::kText
             ? &column
             : nullptr;
}

std::size_t PlaceOf(const dialect::Index& index, const dialect::IndexPart& part) {
  const auto at = std::ranges::find(index.parts, part);
  return at == index.parts.end() ? dialect::TableSchema::kNone
                                 : static_cast<std::size_t>(at - index.parts.begin());
}

class Planner {
 public:
  Planner(const dialect::SelectTree& select, const dialect::Index& index) : select_(select) {
    walk_.table = select.tables[0].table;
    walk_.index = &index;
  }

  // How many of the walk's parts are no group.
  std::size_t Between() const { return walk_.parts - groups_; }

  std::optional<GroupedWalk> Plan() {
    bool first = false;
    std::set<std::size_t> places;
    for (const Node* key : select_.groupBy) {
      const PartOfNode part = PartOf(*key);
      if (part.table == nullptr) return std::nullopt;
      const std::size_t place = PlaceOf(*walk_.index, part.part);
      if (!Needs(place)) return std::nullopt;
      first = first || place == 0;
      places.insert(place);
    }
    if (!first) return std::nullopt;
    groups_ = places.size();
    groupsAlone_ = walk_.parts == groups_;
    std::vector<const Node*> conditions;
    if (select_.where != nullptr) Conjuncts(*select_.where, conditions);
    for (const Node* each : conditions) {
      if (!Take(*each)) return std::nullopt;
    }
    return walk_;
  }

 private:
  bool Needs(std::size_t place) {
    if (place == dialect::TableSchema::kNone) return false;
    walk_.parts = std::max(walk_.parts, place + 1);
    return true;
  }
  bool Take(const Node& condition) {
    if (const Node* filled = ColumnThatIsFilled(condition)) {
      const dialect::IndexPart& first = walk_.index->parts[0];
      if (filled->column == first.column && first.prefix > 0) {
        walk_.beginningFilled = &condition;
        return true;
      }
      if (filled->column == first.column) walk_.firstPartFilled = true;
    }
    std::size_t last = 0;
    bool ofParts = true;
    const bool compares = EachColumn(condition, [&](const Node& column) {
      const std::size_t place = PlaceOf(*walk_.index, {column.column, 0});
      ofParts =
          ofParts && place != dialect::TableSchema::kNone && (!groupsAlone_ || place < walk_.parts);
      if (ofParts) last = std::max(last, place);
    });
    if (!compares) return false;
    if (!ofParts) {
      walk_.ofRows.push_back(&condition);
      return true;
    }
    walk_.ofParts.push_back({&condition, last});
    return Needs(last);
  }

  const dialect::SelectTree& select_;
  GroupedWalk walk_;
  std::size_t groups_ = 0;
  bool groupsAlone_ = false;  // tell the walk's parts
};

}  // namespace

std::optional<GroupedWalk> PlanGroupedWalk(const dialect::SelectTree& select) {
  if (select.groupBy.empty() || select.tables.size() != 1 || !select.tables[0].alias.empty()) {
    return std::nullopt;
  }
  // Without its groups it must be rows of the table: nothing is counted or summed.
  dialect::SelectTree rows = select;
  rows.groupBy.clear();
  if (!dialect::IsOfOneTable(rows)) return std::nullopt;
  std::optional<GroupedWalk> best;
  std::size_t between = 0;
  for (const dialect::Index& index : select.tables[0].table->indexes) {
    Planner planner(select, index);
    auto walk = planner.Plan();
    if (!walk || (best && planner.Between() >= between)) continue;
    best = std::move(walk);
    between = planner.Between();
  }
  return best;
}

}  // namespace brenvo::file
