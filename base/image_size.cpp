#include "base/image_size.h"

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

namespace brenvo::base {
namespace {

class Bytes {
 public:
  explicit Bytes(const std::filesystem::path& file) : in_(file, std::ios::binary) {}

  bool Skip(std::streamoff count) { return static_cast<bool>(in_.seekg(count, std::ios::cur)); }
  bool Is(std::string_view expected) {
    std::string found(expected.size(), '\0');
    return in_.read(found.data(), static_cast<std::streamsize>(found.size())) && found == expected;
  }
  void Rewind() {
    in_.clear();
    in_.seekg(0);
  }
  std::optional<std::uint32_t> BigEndian(int count) {
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) {
      const int byte = in_.get();
      if (byte < 0) return std::nullopt;
      value = value << 8 | static_cast<std::uint32_t>(byte);
    }
    return value;
  }
  std::optional<std::uint32_t> LittleEndian() {
    std::uint32_t value = 0;
    for (int shift = 0; shift < 32; shift += 8) {
      const int byte = in_.get();
      if (byte < 0) return std::nullopt;
      value |= static_cast<std::uint32_t>(byte) << shift;
    }
    return value;
  }

 private:
  std::ifstream in_;
};

std::optional<ImageSize> Checked(std::optional<std::uint32_t> width,
                                 std::optional<std::uint32_t> height) {
  if (!width || !height) return std::nullopt;
  // A BMP whose rows run from the top has a negative height.
  const ImageSize size{
      static_cast<int>(*width),
      static_cast<int>(std::abs(static_cast<std::int64_t>(static_cast<std::int32_t>(*height))))};
  constexpr int kMost = 1 << 20;
  if (size.width <= 0 || size.height <= 0 || size.width > kMost || size.height > kMost) {
    return std::nullopt;
  }
  return size;
}

std::optional<ImageSize> Png(Bytes& bytes) {
  if (!bytes.Is("\x89PNG\r\n\x1A\n") || !bytes.Skip(4) || !bytes.Is("IHDR")) return std::nullopt;
  const auto width = bytes.BigEndian(4);
  return Checked(width, bytes.BigEndian(4));
}

std::optional<ImageSize> Bmp(Bytes& bytes) {
  if (!bytes.Is("BM") || !bytes.Skip(16)) return std::nullopt;
  const auto width = bytes.LittleEndian();
  return Checked(width, bytes.LittleEndian());
}

// The size stands in the frame header, the first segment of a kind from C0 to CF but for the
// tables C4, C8 and CC.
std::optional<ImageSize> Jpeg(Bytes& bytes) {
  if (!bytes.Is("\xFF\xD8")) return std::nullopt;
  while (true) {
    auto marker = bytes.BigEndian(1);
    if (marker != 0xFF) return std::nullopt;
    while (marker == 0xFF) marker = bytes.BigEndian(1);
    if (!marker) return std::nullopt;
    const auto length = bytes.BigEndian(2);
    if (!length || *length < 2) return std::nullopt;
    const bool frame =
        *marker >= 0xC0 && *marker <= 0xCF && *marker != 0xC4 && *marker != 0xC8 && *marker != 0xCC;
    if (frame) {
      bytes.Skip(1);
      const auto height = bytes.BigEndian(2);
      return Checked(bytes.BigEndian(2), height);
    }
    if (*marker == 0xDA || !bytes.Skip(*length - 2)) return std::nullopt;
  }
}

}  // namespace

std::optional<ImageSize> ReadImageSize(const std::filesystem::path& file) {
  Bytes bytes(file);
  for (const auto read : {Png, Bmp, Jpeg}) {
    bytes.Rewind();
    if (const auto size = read(bytes)) return size;
  }
  return std::nullopt;
}

}  // namespace brenvo::base
