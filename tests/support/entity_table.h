// A table of countries by date for a test.
#pragma once

#include <string>
#include <string_view>

#include "entities/table.h"

namespace brenvo {

inline void AddCallRule(entities::Table& table, std::string_view call, int entity) {
  entities::Rule& rule = table.rules.emplace_back();
  rule.kind = entities::RuleKind::kCall;
  rule.text = call;
  rule.entity = entity;
}

// One whose only rule is that this call is of this country.
inline entities::Table TableOfCall(std::string_view file, std::string_view call, int entity) {
  entities::Table table;
  table.file = file;
  AddCallRule(table, call, entity);
  return table;
}

}  // namespace brenvo
