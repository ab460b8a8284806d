// The blocks on the CAT line of a Yaesu FT-736R: five bytes each, the last one the opcode.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/units.h"

namespace brenvo::links {

using CatFrame = std::array<std::uint8_t, 5>;

// Parameters without a meaning are blanks.
inline constexpr CatFrame kCatOn{0x20, 0x20, 0x20, 0x20, 0x00};
inline constexpr CatFrame kCatOff{0x20, 0x20, 0x20, 0x20, 0x80};
inline constexpr CatFrame kReadSMeter{0x20, 0x20, 0x20, 0x20, 0xF7};

struct CatMode {
  std::string_view name;
  CatFrame frame;
};
inline constexpr std::array<CatMode, 3> kCatModes{{
    {"USB", {0x01, 0x20, 0x20, 0x20, 0x07}},
    {"LSB", {0x00, 0x20, 0x20, 0x20, 0x07}},
    {"FM", {0x08, 0x20, 0x20, 0x20, 0x07}},
}};

// Sets the frequency: two decimal digits a byte, from the hundreds of MHz down to the 10 Hz. From
// 1 GHz on the digits begin with the thousands of MHz and the last one is dropped. A frequency
// that is no such number of digits (a negative one) gives 0 where no digit stands.
CatFrame BcdFrequency(base::HundredHz frequency);

// The reading, 0 to 255, in what the transceiver has answered; nothing when that is no reply.
std::optional<int> SMeterReading(std::string_view reply);

std::string Bytes(const CatFrame& frame);

}  // namespace brenvo::links
