// A call taken to pieces: what tells the station, what tells the place, and what tells neither.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace brenvo::entities {

// In capitals, without blanks; empty when it is no call: other characters than letters, digits and
// strokes, or too long.
std::string CallText(std::string_view call);

// The prefix of a part that some country has; empty for none.
using PrefixIn = std::function<std::string_view(std::string_view part)>;

struct CallParts {
  std::string_view base;   // the station's own call
  std::string_view place;  // another prefix that tells the place; empty for none
  char digit = 0;          // another district: "/5"; 0 for none
  char province = 0;       // of Argentina: "/V"; 0 for none
  bool mobile = false;     // at sea or in the air
};

// `call` is a CallText.
CallParts PartsOf(std::string_view call, const PrefixIn& prefixIn);

// The prefix of such a call in another district: "IK0XYZ" and '5' give "IK5"; empty without one.
std::string InDistrict(std::string_view base, char digit, const PrefixIn& prefixIn);

// Calls of Guantanamo have two letters behind KG4, the others are given in the United States.
bool IsKg4OfTheStates(std::string_view base);

}  // namespace brenvo::entities
