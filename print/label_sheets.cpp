#include "print/label_sheets.h"

#include <algorithm>

namespace brenvo::print {
namespace {

// What a contact's data need.
constexpr double kDataWidth = 800;

// Height, width, space across and down, top and left margin, labels a row, rows.
constexpr std::array<LabelSheet, 5> kSheets = {{
    {"70 x 37 mm, 24 per foglio", {370, 700, 0, 0, 5, 0, 3, 8}},
    {"70 x 36 mm, 24 per foglio", {360, 700, 0, 0, 45, 0, 3, 8}},
    {"63,5 x 38,1 mm, 21 per foglio", {381, 635, 25, 0, 151, 72, 3, 7}},
    {"99,1 x 38,1 mm, 14 per foglio", {381, 991, 25, 0, 151, 46, 2, 7}},
    {"105 x 48 mm, 12 per foglio", {480, 1050, 0, 0, 45, 0, 2, 6}},
}};

// Rows that are printed before the page is turned.
int RowsOn(const LabelGeometry& geometry, int pageHeight) {
  if (geometry.rows > 0) return geometry.rows;
  return 1 + std::max(0, pageHeight - geometry.marginTop) / (geometry.height + geometry.spaceDown);
}

}  // namespace

const std::array<LabelSheet, 5>& LabelSheets() { return kSheets; }

LabelOverrun OverrunOf(const LabelGeometry& geometry, int pageWidth, int pageHeight) {
  const int rows = RowsOn(geometry, pageHeight);
  const int right = geometry.marginLeft + geometry.perRow * geometry.width +
                    (geometry.perRow - 1) * geometry.spaceAcross;
  const int bottom = geometry.marginTop + rows * geometry.height + (rows - 1) * geometry.spaceDown;
  return {std::max(0, right - pageWidth), std::max(0, bottom - pageHeight)};
}

int WholeLabelsOn(const LabelGeometry& geometry, int pageWidth, int pageHeight) {
  const auto whole = [](int room, int size, int space) {
    return std::max(0, (room + space) / (size + space));
  };
  const int across = whole(pageWidth - geometry.marginLeft, geometry.width, geometry.spaceAcross);
  const int down = whole(pageHeight - geometry.marginTop, geometry.height, geometry.spaceDown);
  return std::min(across, geometry.perRow) *
         (geometry.rows > 0 ? std::min(down, geometry.rows) : down);
}

double ScaleFor(const LabelGeometry& geometry) {
  return std::min(1.0, geometry.width / kDataWidth);
}

}  // namespace brenvo::print
