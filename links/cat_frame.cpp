#include "links/cat_frame.h"

#include <cmath>

#include "base/number.h"

namespace brenvo::links {
namespace {

constexpr std::size_t kReplySize = 5;
constexpr std::uint8_t kSetFrequency = 0x01;

// Two digits as a hexadecimal number; what stands behind a character that is no digit does not
// count.
std::uint8_t Packed(std::string_view digits) {
  int value = 0;
  for (char c : digits) {
    if (c < '0' || c > '9') break;
    value = value * 16 + (c - '0');
  }
  return static_cast<std::uint8_t>(value);
}

}  // namespace

CatFrame BcdFrequency(base::HundredHz frequency) {
  const double khz = base::ToKhz(frequency).Value();
  const double whole = std::trunc(khz);
  const std::string fraction = base::FormatNumber(khz - whole, ".00");
  const std::string digits =
      base::FormatNumber(whole, "000000") + fraction.substr(fraction.size() - 2);
  const std::string_view all = digits;
  CatFrame frame{};
  for (std::size_t i = 0; i < 4; ++i) frame[i] = Packed(all.substr(2 * i, 2));
  frame[4] = kSetFrequency;
  return frame;
}

std::optional<int> SMeterReading(std::string_view reply) {
  if (reply.size() < kReplySize) return std::nullopt;
  if (static_cast<std::uint8_t>(reply[kReplySize - 1]) != kReadSMeter.back()) return std::nullopt;
  return static_cast<std::uint8_t>(reply.front());
}

std::string Bytes(const CatFrame& frame) { return {frame.begin(), frame.end()}; }

}  // namespace brenvo::links
