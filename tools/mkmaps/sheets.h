// The sheets: each map image's size, and where a position on earth lies on it.
//
// What the overlays of the map viewer expect of an image, and what the tables of the database tell
// about it, both come from here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mkmaps/outlines.h"

namespace brenvo::mkmaps {

// Pixels of a sheet, from its upper left corner.
struct SheetPoint {
  double x = 0, y = 0;
};
struct SheetSize {
  int width = 0, height = 0;
};

// fieldmap.jpg: a cell of 64 by 32 pixels a field. The cell of the field that begins at longitude
// -180 and latitude 0 has its upper left corner at 62, 283.
struct FieldSheet {
  static constexpr std::string_view kFile = "fieldmap.jpg";
  static constexpr SheetSize kSize{1276, 640};
  static constexpr double kPixelsPerDegree = 3.2;
  static SheetPoint At(const GeoPoint& position);
};

// wm.jpg: the world from longitude -30 eastwards round to it again, so that the field HM lies at
// both ends. Every field is drawn at a scale of its own between whole pixels, which the table Field
// holds. Between the fields R and A a strip stands for the date line alone: the right edge of R
// and the left edge of A both have a label there.
struct SquareSheet {
  static constexpr std::string_view kFile = "wm.jpg";
  static constexpr SheetSize kSize{4000, 2626};
  static constexpr int kLeft = 47, kRight = 3953, kTop = 70, kBottom = 2556;
  static constexpr double kCut = -30;
  // Left edge of a column "A" to "R", and "S", the right edge of R.
  static int ColumnX(char letter);
  // Upper edge of a row "R" to "A", and "@", the lower edge of A.
  static int RowY(char letter);

  static SheetPoint At(const GeoPoint& position);
  // The same, as if that half went on beyond the cut and the date line.
  static double WestX(double longitude);  // of the left half: longitudes -30 to 180
  static double EastX(double longitude);  // of the right half: longitudes -180 to -30
  static double Y(double latitude);
};

// wazmap.jpg: the world from longitude -170 eastwards, in a compact Miller projection.
struct ZoneSheet {
  static constexpr std::string_view kFile = "wazmap.jpg";
  static constexpr SheetSize kSize{1560, 898};
  static constexpr int kLeft = 24, kTop = 24;
  static constexpr double kPixelsPerDegree = 4.2;
  static constexpr double kCut = -170, kNorth = 85, kSouth = -84.8;
  static SheetPoint At(const GeoPoint& position);
  static double X(double longitude);  // that goes on beyond the cut
};

// italia.jpg.
struct ItalySheet {
  static constexpr std::string_view kFile = "italia.jpg";
  static constexpr SheetSize kSize{980, 1240};
  static constexpr int kMargin = 20;
  static constexpr double kWest = 6.2, kNorth = 47.3;
  static constexpr double kPixelsPerDegreeX = 74, kPixelsPerDegreeY = 100;
  static SheetPoint At(const GeoPoint& position);
};

// Square.jpg: Europe, a cell of 26 by 20 pixels a square.
struct EuropeSheet {
  static constexpr std::string_view kFile = "Square.jpg";
  static constexpr SheetSize kSize{1134, 988};
  static constexpr int kMargin = 34;
  static constexpr int kSquareWidth = 26, kSquareHeight = 20;
  static constexpr int kWest = -32, kEast = 50, kSouth = 27, kNorth = 73;
  static SheetPoint At(const GeoPoint& position);
};

// The map of a part of the world, seen from above its centre, areas true.
struct Region {
  std::string_view file, title;
  GeoPoint centre;
  double kmPerPixel = 1;
  SheetSize size;

  SheetPoint At(const GeoPoint& position) const;
  // Angle between a position and the centre, degrees.
  double Distance(const GeoPoint& position) const;
  // Whether a pointer at the position stands well within the sheet.
  bool Shows(const GeoPoint& position) const;
};

// The closer a look, the further in front.
const std::vector<Region>& Regions();
// The closest look at a position.
const Region& RegionOf(const GeoPoint& position);

// The middle of the subsquare, square or field that a locator of 6, 4 or 2 characters names.
GeoPoint PositionOf(const std::string& locator);

}  // namespace brenvo::mkmaps
