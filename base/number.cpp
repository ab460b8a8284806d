#include "base/number.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace brenvo::base {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Digits of |value| with `decimals` places, halves away from zero as they stand in 15 digits:
// 144.2995 rounds up although its binary value lies a little below.
std::string FixedDigits(double value, int decimals) {
  const double scale = std::pow(10.0, decimals);
  const double magnitude = std::fabs(value);
  double scaled = magnitude * scale;
  // So many digits, or more places than a double can shift by, and 0 by them is no number.
  if (!(scaled < 1e15)) return fmt::format("{:.{}f}", magnitude, decimals);
  // Only near a half, or where they are few for the number, do fifteen digits decide.
  if (scaled > 1e10 || std::fabs(scaled - std::floor(scaled) - 0.5) < 1e-3) {
    const std::string rounded = fmt::format("{:.15g}", scaled);
    scaled = 0;  // what is too small for a double stays so
    std::from_chars(rounded.data(), rounded.data() + rounded.size(), scaled);
  }
  std::string digits = fmt::format_int(static_cast<std::int64_t>(std::floor(scaled + 0.5))).str();
  if (decimals == 0) return digits;
  const auto places = static_cast<std::size_t>(decimals);
  if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
  digits.insert(digits.size() - places, ".");
  return digits;
}

void InsertThousands(std::string& whole) {
  for (std::size_t at = whole.size(); at > 3; at -= 3) whole.insert(at - 3, ",");
}

}  // namespace

double Val(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && text[at] == ' ') ++at;
  const std::size_t begin = at;
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  const std::size_t digits = at;
  std::size_t count = 0;
  while (at < text.size() && IsDigit(text[at])) ++at, ++count;
  if (at < text.size() && text[at] == '.') {
    ++at;
    while (at < text.size() && IsDigit(text[at])) ++at, ++count;
  }
  if (count == 0) return 0;
  if (at < text.size() && (text[at] == 'E' || text[at] == 'e')) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
    if (exponent < text.size() && IsDigit(text[exponent])) {
      while (exponent < text.size() && IsDigit(text[exponent])) ++exponent;
      at = exponent;
    }
  }
  double result = 0;
  const auto [end, error] = std::from_chars(text.data() + digits, text.data() + at, result);
  if (error == std::errc::result_out_of_range || !std::isfinite(result)) return 0;
  return text[begin] == '-' ? -result : result;
}

std::string PlainNumber(double value) {
  if (value == 0 || !std::isfinite(value)) return "0";
  constexpr double kAllDigits = 1e15;
  if (std::fabs(value) < kAllDigits && value == std::floor(value)) {
    return std::to_string(static_cast<long long>(value));
  }
  std::string text = fmt::format("{:.15g}", value);
  if (text.find('e') == std::string::npos) return text;
  const double magnitude = std::fabs(value);
  if (magnitude >= 1) return fmt::format("{:.0f}", value);
  const int decimals = std::min(320, 15 - static_cast<int>(std::floor(std::log10(magnitude))));
  text = fmt::format("{:.{}f}", value, decimals);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::string Str(double value) {
  std::string text = PlainNumber(value);
  return text.front() == '-' ? text : " " + text;
}

long long RoundHalfEven(double value) { return std::llrint(value); }

std::string FormatNumber(double value, std::string_view pattern) {
  const auto point = pattern.find('.');
  const std::string_view wholePattern = pattern.substr(0, point);
  const std::string_view decimalPattern =
      point == std::string_view::npos ? std::string_view() : pattern.substr(point + 1);

  std::string digits = FixedDigits(value, static_cast<int>(decimalPattern.size()));
  const bool negative = value < 0 && std::any_of(digits.begin(), digits.end(),
                                                 [](char c) { return c >= '1' && c <= '9'; });
  const auto digitPoint = digits.find('.');
  std::string whole = digits.substr(0, digitPoint);
  std::string decimals = digitPoint == std::string::npos ? "" : digits.substr(digitPoint + 1);

  const auto zeros =
      static_cast<std::size_t>(std::count(wholePattern.begin(), wholePattern.end(), '0'));
  if (whole.size() < zeros) whole.insert(0, zeros - whole.size(), '0');
  if (wholePattern.empty() && whole == "0") whole.clear();
  if (wholePattern.find(',') != std::string_view::npos) InsertThousands(whole);

  // "#" places at the end of the decimals show no trailing zero.
  for (std::size_t i = decimalPattern.size(); i > 0 && decimalPattern[i - 1] == '#'; --i) {
    if (decimals.size() == i && decimals.back() == '0') decimals.pop_back();
  }
  std::string result = negative ? "-" : "";
  result += whole;
  if (point != std::string_view::npos) result += "." + decimals;
  return result;
}

}  // namespace brenvo::base
