// Numbers in scripts.
#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "recorder/refused.h"

namespace brenvo::drive {

// A whole number and nothing else; Refused otherwise.
inline std::int64_t WholeNumber(std::string_view word) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error != std::errc() || end != word.data() + word.size()) {
    throw recorder::Refused{'"' + std::string(word) + "\" is no whole number"};
  }
  return number;
}

}  // namespace brenvo::drive
