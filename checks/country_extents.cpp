#include "checks/country_extents.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include "base/csv.h"
#include "base/text.h"

namespace brenvo::checks {
namespace {

constexpr int kAllAround = 360;  // degrees
constexpr int kSquareWidth = 2, kSquareHeight = 1;

int Degrees(const std::string& text) {
  int degrees = 0;
  const char* const end = text.data() + text.size();
  const auto [at, error] = std::from_chars(text.data(), end, degrees);
  if (error != std::errc() || at != end) throw std::runtime_error(text + " is no degrees");
  return degrees;
}

}  // namespace

CountryExtents CountryExtents::Parse(std::string_view text) {
  const base::CsvTable table = base::ParseCsv(text);
  const std::size_t country = table.Column("Country"), south = table.Column("Sud"),
                    north = table.Column("Nord"), west = table.Column("Ovest"),
                    east = table.Column("Est");
  CountryExtents extents;
  for (const base::CsvTable::Row& row : table.Rows) {
    extents.boxes_[base::UpperAscii(row.Cells[country])].push_back(
        {Degrees(row.Cells[south]), Degrees(row.Cells[north]), Degrees(row.Cells[west]),
         Degrees(row.Cells[east])});
  }
  return extents;
}

bool CountryExtents::MayHold(std::string_view country, std::string_view square) const {
  const auto found = boxes_.find(base::UpperAscii(base::Trim(country)));
  if (found == boxes_.end() || square.size() < 4) return true;
  const int west = (square[0] - 'A') * 20 - 180 + (square[2] - '0') * kSquareWidth;
  const int south = (square[1] - 'A') * 10 - 90 + (square[3] - '0') * kSquareHeight;
  return std::ranges::any_of(found->second, [&](const Box& box) {
    if (south >= box.north || south + kSquareHeight <= box.south) return false;
    for (const int turn : {-kAllAround, 0, kAllAround}) {
      if (west + turn < box.east && west + turn + kSquareWidth > box.west) return true;
    }
    return false;
  });
}

}  // namespace brenvo::checks
