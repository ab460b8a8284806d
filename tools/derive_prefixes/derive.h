// Makes the rows of table Prefissi from a country file.
#pragma once

#include <string>
#include <vector>

#include "measure_prefixes/cty_file.h"
#include "measure_prefixes/prefix_table.h"

namespace brenvo::derive_prefixes {

// The rows, in the order of the table's key. The first row of a prefix is the answer for most of
// its calls: for most of `calls`, each weighing one, and, where these say little, for most of the
// letters that can stand behind the prefix. The other answers of a prefix follow where their zones
// and continent sort behind it; one that would sort before it, or that has the same zones, cannot
// be in the table.
//
// Besides the prefixes of one digit there are those of several digits that are heard in special
// calls, in `calls` or in the file, and the numbers 10 to 99 of the countries that use them most.
[[nodiscard]] std::vector<measure_prefixes::PrefixTable::Row> DerivePrefixes(
    const measure_prefixes::CtyFile& file, const std::vector<std::string>& calls);

}  // namespace brenvo::derive_prefixes
