#include "base/uuid.h"

#include <openssl/sha.h>

#include <algorithm>
#include <array>

namespace brenvo::base {
namespace {

using Bytes = std::array<unsigned char, 16>;

// Drawn once, for this program.
constexpr Bytes kNameSpace = {0x5b, 0x0e, 0x8c, 0x41, 0x9a, 0x27, 0x4d, 0x63,
                              0xb8, 0x1f, 0x02, 0xd6, 0x7e, 0x94, 0x3a, 0xc5};

std::string Written(Bytes bytes, unsigned version) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | version << 4);
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
  std::string text;
  text.reserve(36);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += kDigits[bytes[i] >> 4];
    text += kDigits[bytes[i] & 0x0F];
  }
  return text;
}

void Put(Bytes& bytes, std::size_t at, std::size_t size, std::uint64_t value) {
  for (std::size_t i = size; i-- > 0; value >>= 8) bytes[at + i] = value & 0xFF;
}

}  // namespace

std::string NameUuid(std::string_view text) {
  std::string named(kNameSpace.begin(), kNameSpace.end());
  named += text;
  std::array<unsigned char, SHA_DIGEST_LENGTH> digest;
  SHA1(reinterpret_cast<const unsigned char*>(named.data()), named.size(), digest.data());
  Bytes bytes;
  std::copy_n(digest.begin(), bytes.size(), bytes.begin());
  return Written(bytes, 5);
}

std::string TimeUuid(std::uint64_t milliseconds, Chance chance) {
  Bytes bytes;
  Put(bytes, 0, 6, milliseconds);
  Put(bytes, 6, 2, chance.high);
  Put(bytes, 8, 8, chance.low);
  return Written(bytes, 7);
}

bool IsUuid(std::string_view text) {
  if (text.size() != 36) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
    const bool digit = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    if (dash ? c != '-' : !digit) return false;
  }
  return true;
}

}  // namespace brenvo::base
