#include "base/image_size.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

#include "tests/support/scratch_directory.h"

namespace brenvo::base {
namespace {

using namespace std::string_literals;

std::optional<ImageSize> SizeOf(std::string_view bytes) {
  const ScratchDirectory directory;
  const auto file = directory.Path() / "picture";
  std::ofstream(file, std::ios::binary) << bytes;
  return ReadImageSize(file);
}

std::string BigEndian(std::uint32_t value, int count) {
  std::string bytes;
  for (int i = count - 1; i >= 0; --i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
  return bytes;
}

std::string LittleEndian(std::uint32_t value) {
  const std::string bytes = BigEndian(value, 4);
  return {bytes.rbegin(), bytes.rend()};
}

std::string Png(std::uint32_t width, std::uint32_t height) {
  return "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"s + BigEndian(width, 4) + BigEndian(height, 4);
}

std::string Bmp(std::uint32_t width, std::uint32_t height) {
  return "BM" + std::string(12, '\0') + LittleEndian(40) + LittleEndian(width) +
         LittleEndian(height);
}

std::string Segment(int marker, std::string_view content) {
  return "\xFF"s + static_cast<char>(marker) +
         BigEndian(static_cast<std::uint32_t>(content.size() + 2), 2) + std::string(content);
}

std::string Frame(int marker, std::uint32_t width, std::uint32_t height) {
  return Segment(marker, "\x08"s + BigEndian(height, 2) + BigEndian(width, 2) + "\x03"s);
}

TEST(ImageSizeTest, EveryByteOfASizeCounts) {
  EXPECT_EQ(SizeOf(Png(0x010203, 0x040506)), (ImageSize{0x010203, 0x040506}));
  EXPECT_EQ(SizeOf(Bmp(0x010203, 0x040506)), (ImageSize{0x010203, 0x040506}));
  EXPECT_EQ(SizeOf("\xFF\xD8" + Frame(0xC0, 0x0102, 0x0304)), (ImageSize{0x0102, 0x0304}));
}

TEST(ImageSizeTest, ABmpWhoseRowsRunFromTheTopHasANegativeHeight) {
  EXPECT_EQ(SizeOf(Bmp(27, static_cast<std::uint32_t>(-29))), (ImageSize{27, 29}));
}

TEST(ImageSizeTest, NothingIsAPictureWithoutASizeOrBeyondAMillion) {
  for (const auto make : {Png, Bmp}) {
    EXPECT_EQ(SizeOf(make(1, 1)), (ImageSize{1, 1}));
    EXPECT_EQ(SizeOf(make(1 << 20, 1)), (ImageSize{1 << 20, 1}));
    EXPECT_EQ(SizeOf(make(1, 1 << 20)), (ImageSize{1, 1 << 20}));
    EXPECT_EQ(SizeOf(make((1 << 20) + 1, 1)), std::nullopt);
    EXPECT_EQ(SizeOf(make(1, (1 << 20) + 1)), std::nullopt);
    EXPECT_EQ(SizeOf(make(0, 1)), std::nullopt);
    EXPECT_EQ(SizeOf(make(1, 0)), std::nullopt);
    EXPECT_EQ(SizeOf(make(0xFFFFFFFF, 1)), std::nullopt);
    EXPECT_EQ(SizeOf(make(1, 0x80000000)), std::nullopt);
  }
}

TEST(ImageSizeTest, AJpegsFrameIsEachOfItsKindsBehindAnyOtherSegment) {
  for (int marker = 0xC0; marker <= 0xCF; ++marker) {
    const bool table = marker == 0xC4 || marker == 0xC8 || marker == 0xCC;
    const std::string bytes =
        "\xFF\xD8" + Segment(0xE0, "xx") + Frame(marker, 800, 600) + Frame(0xC2, 40, 30);
    EXPECT_EQ(SizeOf(bytes), (table ? ImageSize{40, 30} : ImageSize{800, 600})) << marker;
  }
  for (const int other : {0xBF, 0xD0, 0xDB, 0xFE}) {
    EXPECT_EQ(SizeOf("\xFF\xD8" + Frame(other, 800, 600) + Frame(0xC0, 40, 30)),
              (ImageSize{40, 30}))
        << other;
  }
  EXPECT_EQ(SizeOf("\xFF\xD8" + Segment(0xE0, "") + Frame(0xC0, 40, 30)), (ImageSize{40, 30}));
  EXPECT_EQ(SizeOf("\xFF\xD8\xFF\xFF\xFF" + Frame(0xC0, 40, 30)), (ImageSize{40, 30}));
  // Behind the beginning of the picture itself there is no frame any more.
  EXPECT_EQ(SizeOf("\xFF\xD8" + Segment(0xDA, "x") + Frame(0xC0, 40, 30)), std::nullopt);
}

TEST(ImageSizeTest, AFileThatEndsTooEarlyHasNoSize) {
  for (const std::string& whole :
       {Png(40, 30), Bmp(40, 30), "\xFF\xD8" + Segment(0xE0, "xx") + Frame(0xC0, 40, 30)}) {
    const std::size_t needed = whole.front() == '\xFF' ? whole.size() - 1 : whole.size();
    EXPECT_EQ(SizeOf(whole.substr(0, needed)), (ImageSize{40, 30}));
    for (std::size_t length = 0; length < needed; ++length) {
      EXPECT_EQ(SizeOf(whole.substr(0, length)), std::nullopt) << length;
    }
  }
}

TEST(ImageSizeTest, WhatBeginsOtherwiseIsNoPicture) {
  for (const std::string& picture : {Png(40, 30), Bmp(40, 30), "\xFF\xD8" + Frame(0xC0, 40, 30)}) {
    std::string other = picture;
    other[1] = 'x';
    EXPECT_EQ(SizeOf(other), std::nullopt);
  }
  std::string noHeader = Png(40, 30);
  noHeader[12] = 'x';
  EXPECT_EQ(SizeOf(noHeader), std::nullopt);
  EXPECT_EQ(SizeOf("\xFF\xD8x" + Frame(0xC0, 40, 30)), std::nullopt);
  EXPECT_EQ(SizeOf("\xFF\xD8\xFF\xE0\0\1"s + Frame(0xC0, 40, 30)), std::nullopt);
  EXPECT_EQ(ReadImageSize("no such picture"), std::nullopt);
}

}  // namespace
}  // namespace brenvo::base
