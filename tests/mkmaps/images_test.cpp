// The images as they were drawn.
#include <gtest/gtest.h>

#include <filesystem>
#include <QColor>
#include <QImage>
#include <string>

#include "tests/mkmaps/known_places.h"
#include "tests/support/places.h"
#include "tools/mkmaps/sheets.h"

namespace brenvo::mkmaps {
namespace {

QImage Delivered(std::string_view name) {
  const auto file = BuildDir() / "delivered" / name;
  QImage image(QString::fromStdString(file.string()));
  EXPECT_FALSE(image.isNull()) << name;
  return image;
}

void ExpectSize(std::string_view name, const SheetSize& size) {
  const QImage image = Delivered(name);
  EXPECT_EQ(image.width(), size.width) << name;
  EXPECT_EQ(image.height(), size.height) << name;
}

// Land is warm, the sea is cold; lines and letters are outvoted.
bool LooksLikeLand(const QImage& image, const SheetPoint& at) {
  int warm = 0, cold = 0;
  for (int dy = -4; dy <= 4; ++dy) {
    for (int dx = -4; dx <= 4; ++dx) {
      const QColor colour =
          image.pixelColor(static_cast<int>(at.x) + dx, static_cast<int>(at.y) + dy);
      ++(colour.red() > colour.blue() ? warm : cold);
    }
  }
  return warm > cold;
}

TEST(Images, AreAsLargeAsTheirSheets) {
  ExpectSize(FieldSheet::kFile, FieldSheet::kSize);
  ExpectSize(SquareSheet::kFile, SquareSheet::kSize);
  ExpectSize(ZoneSheet::kFile, ZoneSheet::kSize);
  ExpectSize(ItalySheet::kFile, ItalySheet::kSize);
  ExpectSize(EuropeSheet::kFile, EuropeSheet::kSize);
  for (const Region& region : Regions()) ExpectSize(region.file, region.size);
}

TEST(Images, HaveAFinePictureBesideThemForWhoLooksClosely) {
  const auto fine = [](std::string_view file) {
    return std::string(file.substr(0, file.rfind('.'))) + "@2x.jpg";
  };
  const auto twice = [](const SheetSize& size) {
    return SheetSize{2 * size.width, 2 * size.height};
  };
  ExpectSize(fine(FieldSheet::kFile), twice(FieldSheet::kSize));
  ExpectSize(fine(ZoneSheet::kFile), twice(ZoneSheet::kSize));
  ExpectSize(fine(ItalySheet::kFile), twice(ItalySheet::kSize));
  for (const Region& region : Regions()) ExpectSize(fine(region.file), twice(region.size));
}

TEST(Images, ShowLandAndSeaWhereTheyAre) {
  const auto expect = [](std::string_view file, const auto& sheet) {
    const QImage image = Delivered(file);
    for (const KnownPlace& place : kKnownPlaces) {
      // An island of a few pixels is lost between its shores.
      if (place.name == std::string("Sao Miguel") || !sheet.Shows(place.position)) continue;
      EXPECT_EQ(LooksLikeLand(image, sheet.At(place.position)), place.land)
          << file << ' ' << place.name;
    }
  };
  struct WholeWorld {
    static bool Shows(const GeoPoint&) { return true; }
    static SheetPoint At(const GeoPoint& position) { return SquareSheet::At(position); }
  };
  expect(SquareSheet::kFile, WholeWorld());
  for (const Region& region : Regions()) expect(region.file, region);
}

TEST(Images, ThePointersTipIsWhereTheMapViewerExpectsIt) {
  const QImage pointer = Delivered("Pointer.bmp");
  EXPECT_GT(qAlpha(pointer.pixel(27, 29)), 200);
  for (int x = 0; x < pointer.width(); ++x) {
    if (x != 27) {
      EXPECT_LT(qAlpha(pointer.pixel(x, 29)), 200) << x;
    }
    for (int y = 31; y < pointer.height(); ++y) EXPECT_EQ(qAlpha(pointer.pixel(x, y)), 0);
  }
  EXPECT_EQ(qAlpha(pointer.pixel(0, 0)), 0);
}

TEST(Images, EveryZoneHasAGreenAndARedDiscAroundTheSameSpot) {
  for (int zone = 1; zone <= 40; ++zone) {
    for (const bool confirmed : {true, false}) {
      const std::string name = "Zona" + std::to_string(zone) + (confirmed ? "c" : "nc") + ".bmp";
      const QImage stamp = Delivered(name);
      ASSERT_FALSE(stamp.isNull()) << name;
      EXPECT_EQ(qAlpha(stamp.pixel(0, 0)), 0) << name;
      EXPECT_EQ(qAlpha(stamp.pixel(27, 29)), 255) << name;
      // Above the number, within the disc.
      const QColor colour = stamp.pixelColor(27, 20);
      EXPECT_EQ(colour.green() > colour.red(), confirmed) << name;
      int left = 0, right = 0;
      while (qAlpha(stamp.pixel(left, 29)) < 128) ++left;
      while (qAlpha(stamp.pixel(54 - right, 29)) < 128) ++right;
      EXPECT_EQ(left, right) << name;
    }
  }
}

// Whoever sees red and green alike sees how much of the disc is white.
TEST(Images, AConfirmedZoneIsAFullDiscAndAnotherOneARing) {
  const auto whites = [](const std::string& name) {
    const QImage stamp = Delivered(name);
    int count = 0;
    for (int y = 0; y < stamp.height(); ++y) {
      for (int x = 0; x < stamp.width(); ++x) {
        const QRgb pixel = stamp.pixel(x, y);
        if (qAlpha(pixel) == 255 && qGray(pixel) > 240) ++count;
      }
    }
    return count;
  };
  for (int zone = 1; zone <= 40; ++zone) {
    const std::string name = "Zona" + std::to_string(zone);
    EXPECT_GT(whites(name + "nc.bmp"), whites(name + "c.bmp") + 60) << zone;
  }
}

}  // namespace
}  // namespace brenvo::mkmaps
