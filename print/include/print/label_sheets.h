// Sheets of labels as they are sold, on A4.
#pragma once

#include <array>
#include <string_view>

#include "print/qsl_labels.h"

namespace brenvo::print {

// Tenths of a millimetre.
inline constexpr int kA4Width = 2100, kA4Height = 2970;

struct LabelSheet {
  std::string_view name;  // as its package says it
  LabelGeometry geometry;
};

// A maker's sheet is known by the size of its labels and by how many stand on it. What the labels
// leave free lies in equal parts at both sides, and above and below.
const std::array<LabelSheet, 5>& LabelSheets();

// How far labels reach beyond a page, tenths of a millimetre; 0 where they do not. A row that
// begins inside the page counts.
struct LabelOverrun {
  int right = 0, bottom = 0;
};
LabelOverrun OverrunOf(const LabelGeometry& geometry, int pageWidth, int pageHeight);

// Labels that stand on a page as a whole.
int WholeLabelsOn(const LabelGeometry& geometry, int pageWidth, int pageHeight);

// What a label's data are made smaller by: 1 where they fit as they are.
double ScaleFor(const LabelGeometry& geometry);

}  // namespace brenvo::print
