#include "adif/adif_values.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "base/number.h"
#include "plain_name.h"

namespace brenvo::adif {
namespace {

std::string DigitsOf(std::string_view text, std::string_view separators) {
  std::string digits;
  for (const char c : text) {
    if (c >= '0' && c <= '9') {
      digits += c;
    } else if (separators.find(c) == std::string_view::npos) {
      return {};
    }
  }
  return digits;
}

int Part(const std::string& digits, std::size_t at, std::size_t count) {
  return static_cast<int>(base::Val(digits.substr(at, count)));
}

}  // namespace

std::optional<double> NumberIn(std::string_view text) {
  std::string plain(Stripped(text));
  std::replace(plain.begin(), plain.end(), ',', '.');
  double value = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
  if (error != std::errc() || end == plain.data() || !std::isfinite(value)) return std::nullopt;
  // A unit may follow ("100 W"), but no further number.
  const std::string_view rest = Stripped(std::string_view(end, plain.data() + plain.size()));
  const bool digits = rest.find_first_of("0123456789") != std::string_view::npos;
  return digits || value < 0 ? std::nullopt : std::optional(value);
}

std::optional<int> WholeIn(std::string_view text, int least, int most) {
  const auto number = NumberIn(text);
  if (!number || *number < least || *number > most || *number != std::floor(*number)) {
    return std::nullopt;
  }
  return static_cast<int>(*number);
}

std::optional<base::DateTime> DateIn(std::string_view text) {
  const std::string digits = DigitsOf(text, "-/.");
  // Before the year 100 no column holds a date.
  if (digits.size() != 8 || digits.starts_with("00")) return std::nullopt;
  return base::ParseIso(fmt::format("{}-{}-{} 00:00:00", digits.substr(0, 4), digits.substr(4, 2),
                                    digits.substr(6, 2)));
}

std::optional<base::DateTime> TimeIn(std::string_view text) {
  std::string digits = DigitsOf(text, ":. ");
  if (digits.size() == 3 || digits.size() == 5) digits.insert(0, "0");  // "930"
  if (digits.size() == 4) digits += "00";
  if (digits.size() != 6) return std::nullopt;
  const int hour = Part(digits, 0, 2), minute = Part(digits, 2, 2), second = Part(digits, 4, 2);
  if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return base::DateTime::FromSeconds((hour * 60 + minute) * 60 + second);
}

}  // namespace brenvo::adif
