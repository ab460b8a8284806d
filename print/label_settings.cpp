#include "label_settings.h"

#include <algorithm>

#include "base/number.h"

namespace brenvo::print {
namespace {

// Half of what the printer cannot print on, tenths of a millimetre: a sheet is measured from the
// edge of the paper. 0 where the paper is no A4.
int Unprintable(int paper, base::Mm printable) {
  constexpr int kMost = 500;
  const int rest = paper - static_cast<int>(base::RoundHalfEven(printable.Value() * 10));
  return rest > 0 && rest < kMost ? rest / 2 : 0;
}

}  // namespace

LabelGeometry StoredGeometry(core::Session& session) {
  LabelGeometry geometry;
  for (const LabelSetting& each : kLabelSettings) {
    const double stored = base::Val(session.GetSetting(kLabelSection, each.key, ""));
    const double least = kSmallestLabels.*each.value, most = kLargestLabels.*each.value;
    geometry.*each.value = static_cast<int>(std::clamp(stored, least, most));
  }
  return geometry;
}

const LabelSheet* StoredSheet(core::Session& session) {
  const std::string name = session.GetSetting(kLabelSection, kSheetKey, "");
  const auto& sheets = LabelSheets();
  const auto at = std::ranges::find(sheets, name, &LabelSheet::name);
  return at == sheets.end() ? nullptr : &*at;
}

LaidLabels LaidOn(platform::Printer& printer, const LabelSheet& sheet) {
  LaidLabels labels{sheet.geometry, ScaleFor(sheet.geometry)};
  labels.geometry.marginLeft -= Unprintable(kA4Width, printer.PageWidth());
  labels.geometry.marginTop -= Unprintable(kA4Height, printer.PageHeight());
  return labels;
}

}  // namespace brenvo::print
