// The labels that the operator has stored for his printer (screen StampaQsl).
#pragma once

#include <string_view>

#include "core/session.h"
#include "platform/printer.h"
#include "print/label_sheets.h"

namespace brenvo::print {

inline constexpr std::string_view kLabelSection = "StampaQsl", kSheetKey = "Foglio";

// In the order of reading and storing; tenths of a millimetre, the last one labels.
struct LabelSetting {
  const char* key;
  int LabelGeometry::*value;
};
inline constexpr LabelSetting kLabelSettings[7] = {
    {"AltezzaEtichette", &LabelGeometry::height},
    {"LarghezzaEtichette", &LabelGeometry::width},
    {"SpaziaturaOrizzontale", &LabelGeometry::spaceAcross},
    {"SpaziaturaVerticale", &LabelGeometry::spaceDown},
    {"MargineSuperiore", &LabelGeometry::marginTop},
    {"MargineSinistro", &LabelGeometry::marginLeft},
    {"EtichettePerFila", &LabelGeometry::perRow},
};
// What may stand there.
inline constexpr LabelGeometry kSmallestLabels = {339, 800, 0, 0, 0, 0, 1},
                               kLargestLabels = {700, 1200, 300, 300, 200, 1000, 3};

// The stored labels, each value within what may stand there.
LabelGeometry StoredGeometry(core::Session& session);
// The stored sheet, as it is sold; null where the geometry holds.
const LabelSheet* StoredSheet(core::Session& session);

// Labels as they come to lie on this printer's page: a sheet is measured from the edge of the
// paper, and its labels may be smaller than what stands on them.
struct LaidLabels {
  LabelGeometry geometry;
  double scale = 1;
};
LaidLabels LaidOn(platform::Printer& printer, const LabelSheet& sheet);

}  // namespace brenvo::print
