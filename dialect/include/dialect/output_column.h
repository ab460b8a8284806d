// A column of a result.
#pragma once

#include <cstddef>
#include <string>

#include "dialect/schema.h"

namespace brenvo::dialect {

struct OutputColumn {
  std::string name;
  ValueType type = ValueType::kAny;
  std::size_t tableColumn = TableSchema::kNone;  // none when it is worked out
};

}  // namespace brenvo::dialect
