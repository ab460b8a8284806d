// The stations that a log works with.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "mklog/dice.h"

namespace brenvo::mklog {

struct OtherStation {
  std::string call, qra, qth, manager, prefisso, continente, country, provincia, locator;
  int zonaCq = 0, zonaItu = 0;
  int qrb = 0;          // km
  bool answers = true;  // sends a QSL when he got one
};

// A population without end: each station is made anew from its number, always the same.
class OtherStations {
 public:
  // Reads the reference tables of an open database. Throws std::runtime_error when they are empty.
  OtherStations(sqlite3* file, std::uint64_t seed);

  OtherStation Make(std::uint64_t number) const;

 private:
  struct Prefix {
    std::string prefisso, continente;
    int zonaCq, zonaItu;
  };
  struct Country {
    std::string code, locator;
    std::vector<Prefix> prefixes;
    std::vector<std::string> provinces;
  };

  const Country& CountryOf(Dice& dice) const;
  void PlaceInItaly(Dice& dice, OtherStation& station) const;

  std::uint64_t seed_;
  std::string myLocator_;
  std::vector<Country> countries_;
  std::map<std::string, std::size_t> places_;  // of a code in countries_
};

}  // namespace brenvo::mklog
