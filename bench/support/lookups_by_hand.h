// The questions that the log asks while a contact is typed, in plain SQL.
#pragma once

#include <string>
#include <string_view>

#include "bench/support/hand.h"

namespace brenvo::bench {

// On a file with the log's schema; each answer is the text that the status bar would show.
class LookupsByHand {
 public:
  // What is asked on `band`, leaving out one contact.
  LookupsByHand(sqlite3* file, std::string band, std::string qsoNr);

  std::string Call(std::string_view call) { return Status(callStatus_, call, "Call"); }
  std::string Square(std::string_view locator) {
    return Status(squareStatus_, locator.substr(0, 4), "Square");
  }
  // Reads the country's provinces too.
  std::string Country(std::string_view code);
  // All that leaving a call asks; `prefix` is what the call gives. A country that was shown is
  // emptied first.
  std::string CallLeft(std::string_view call, std::string_view prefix, bool countryShown);
  // All that showing a contact asks.
  void Shown(std::string_view call, std::string_view country, std::string_view province,
             std::string_view locator);

 private:
  struct Pair {
    Hand confirmed, worked;
  };
  Pair StatusOf(std::string_view key) const;
  std::string Status(Pair& pair, std::string_view key, std::string_view subject);

  sqlite3* file_;
  std::string band_, qsoNr_;
  Pair callStatus_, squareStatus_, countryStatus_;
  Hand provinces_, known_, prefix_, country_, province_;
};

}  // namespace brenvo::bench
