// Where each country roughly lies: the file Estensioni.csv, boxes in whole degrees.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brenvo::checks {

inline constexpr std::string_view kExtentsFile = "Estensioni.csv";

class CountryExtents {
 public:
  // Of a text with the columns Country, Sud, Nord, Ovest, Est. A box may reach beyond 180 degrees.
  // Throws std::runtime_error when it is no such table.
  static CountryExtents Parse(std::string_view text);

  // False only where the country is known and the square, the first four characters of a locator,
  // lies beside all its boxes.
  bool MayHold(std::string_view country, std::string_view square) const;

 private:
  struct Box {
    int south, north, west, east;  // degrees
  };
  std::unordered_map<std::string, std::vector<Box>> boxes_;  // by code in capitals
};

}  // namespace brenvo::checks
