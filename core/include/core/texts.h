// Values as grids and fields show them.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "base/date.h"
#include "engine/recordset.h"

namespace brenvo::core {

// The column's value as text, empty for Null.
std::string FieldText(engine::Recordset& record, std::string_view column);
// "hh:nn" of a time.
std::string HourMinute(base::DateTime time);
// Without the blanks around them, and those that hold something only: "DL1ABC  2 m  SSB".
std::string Joined(std::initializer_list<std::string_view> texts);
// "Sì" and "No" for a yes/no column's text, as grids show it.
std::string YesNo(const std::string& text);

}  // namespace brenvo::core
