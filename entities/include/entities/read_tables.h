// The files that tell of countries by date, read whole or refused.
#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "entities/table.h"

namespace brenvo::entities {

// Why a file is refused, an Italian sentence with the line.
struct TableError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Countries by the names that files give them, for those that tell no number.
struct KnownEntities {
  // Of the main prefix, in capitals ("IS", "3Y/B"); 0 for none.
  std::function<int(std::string_view prefix)> numberOf = [](std::string_view) { return 0; };
};

// The largest file that is looked at, in bytes.
inline constexpr std::size_t kLargestTable = 64 * 1024 * 1024;

// Tells the format by the content: a country file (cty.dat), the same with numbers (cty.csv), a
// file of dated exceptions (cty.xml), a table with "|", or our own (own_table.h). Single lines of a
// table with "|" that cannot be understood are passed over, as long as they are few. `file` is the
// name for messages. Throws TableError.
Table ReadTable(std::string_view text, std::string_view file, const KnownEntities& known);
Table ReadTableFile(const std::filesystem::path& file, const KnownEntities& known);

// Our own format, a CSV table of:
//   Tipo   "E" a country, "L" when it counts listed calls alone; "P" prefixes, "D" those of a
//          country that is no more, "C" calls, "N" calls that count for nothing, "Z" calls in that
//          zone
//   Dxcc   its number; Country, Nome: of a country
//   Continente, CQ, ITU, Area: as in Entity and Rule
//   Dal, Al  the first and the last day, yyyy-mm-dd, or a time, yyyy-mm-dd hh:mm:ss
//   Testi  prefixes or calls with blanks between
Table ReadOwnTable(std::string_view text, std::string_view file);
std::string OwnTableText(const Table& table);

}  // namespace brenvo::entities
