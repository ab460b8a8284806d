// Links: links
// Arbitrary replies of the transceiver, and arbitrary frequencies: a reading is a byte of a block
// that ends as it should, and a frame is always five bytes of decimal digits and its opcode.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "links/cat_frame.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brenvo;
  const std::string_view reply(reinterpret_cast<const char*>(data), size);
  const auto reading = links::SMeterReading(reply);
  const bool block = size >= 5 && data[4] == 0xF7;
  if (reading.has_value() != block) std::abort();
  if (reading && *reading != data[0]) std::abort();

  double frequency = 0;
  if (size < sizeof frequency) return 0;
  std::memcpy(&frequency, data, sizeof frequency);
  if (!(frequency > -2e9 && frequency < 2e9)) return 0;
  const links::CatFrame frame = links::BcdFrequency(base::HundredHz(frequency));
  if (frame[4] != 1) std::abort();
  for (std::size_t i = 0; i < 4; ++i) {
    if ((frame[i] & 15) > 9 || (frame[i] >> 4) > 9) std::abort();
  }
  return 0;
}
