// Values on their way into columns and out of them, and texts that are to be numbers or dates.
#pragma once

#include <optional>
#include <string_view>

#include "dialect/schema.h"
#include "engine/value.h"

namespace brenvo::dialect {

// The form in which a column of this type stores the value: Null, int64, double or text. Null in a
// yes/no column is "no". DatabaseError 3421 when the value has no such form; `column` names it.
engine::Value ToColumn(const engine::Value& value, ColumnType type, std::string_view column);
// The value to look for in an index part of this type: texts lose their trailing blanks, and a
// text asked of a number column counts by its leading number.
engine::Value ToKey(const engine::Value& value, ColumnType type);
// What a cell as it is stored (Null, int64, double or text) means in a column.
engine::Value FromRaw(engine::Value raw, ValueType type);

// The number or the date that a text is as a whole, blanks around it aside.
std::optional<double> NumberOfText(std::string_view text);
std::optional<base::DateTime> DateOfText(std::string_view text);
// The date of a text as DateValue and CVDate read it; DatabaseError 3464 when it is none.
base::DateTime DateOfLiteral(std::string_view text);

}  // namespace brenvo::dialect
