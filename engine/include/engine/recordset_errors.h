// What recordsets of every store report alike.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::engine {

[[noreturn]] void FailClosed();           // DatabaseError 3420
[[noreturn]] void FailNoCurrentRecord();  // DatabaseError 3021
[[noreturn]] void FailRecordDeleted();    // DatabaseError 3167

// The column's place, its name without regard to case; DatabaseError 3265 when there is none of it.
std::size_t PlaceOf(const std::vector<std::string>& columns, std::string_view name);

}  // namespace brenvo::engine
