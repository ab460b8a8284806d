#include "dialect/schema.h"

#include <algorithm>

#include "base/text.h"

namespace brenvo::dialect {

ValueType TypeOfColumn(ColumnType type) {
  switch (type) {
    case ColumnType::kText:
      return ValueType::kText;
    case ColumnType::kInteger:
    case ColumnType::kCounter:
      return ValueType::kInteger;
    case ColumnType::kReal:
      return ValueType::kReal;
    case ColumnType::kDateTime:
      return ValueType::kDate;
    case ColumnType::kYesNo:
      return ValueType::kYesNo;
  }
  return ValueType::kAny;
}

std::size_t TableSchema::FindColumn(std::string_view columnName) const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (base::SameText(columns[i].name, columnName)) return i;
  }
  return kNone;
}

const Index* TableSchema::FindIndex(std::string_view indexName) const {
  const auto found = std::find_if(indexes.begin(), indexes.end(), [&](const Index& index) {
    return base::SameText(index.name, indexName);
  });
  return found == indexes.end() ? nullptr : &*found;
}

bool TableSchema::IsIndexed(const IndexPart& part) const {
  return std::any_of(indexes.begin(), indexes.end(), [&](const Index& index) {
    return std::find(index.parts.begin(), index.parts.end(), part) != index.parts.end();
  });
}

bool TableSchema::LeadsAnIndex(const IndexPart& part) const {
  return std::any_of(indexes.begin(), indexes.end(),
                     [&](const Index& index) { return index.parts.front() == part; });
}

std::vector<int> TableSchema::LeadingPrefixes(std::size_t column) const {
  std::vector<int> lengths;
  for (const Index& index : indexes) {
    const IndexPart& part = index.parts.front();
    if (part.column == column && part.prefix > 0) lengths.push_back(part.prefix);
  }
  return lengths;
}

const TableSchema* Schema::FindTable(std::string_view name) const {
  const auto found = std::find_if(tables_.begin(), tables_.end(), [&](const TableSchema& table) {
    return base::SameText(table.name, name);
  });
  return found == tables_.end() ? nullptr : &*found;
}

}  // namespace brenvo::dialect
