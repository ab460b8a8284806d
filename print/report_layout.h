// A report's layout: what stands on each page, as the operator writes it down in a text file.
//
// Lines "name = value"; "#" begins a comment. Names, and what they take:
//   orientamento   verticale | orizzontale
//   margine        millimetres on every side
//   titolo, intestazione, piede    texts; {call} {qra} {data} {pagina} {pagine} {contatti} in them
//   carattere      font; points of rows | headings | title, as "Times New Roman, 9, 9, 14"
//   ordine         columns of the order by which the rows print, as in a statement; may be empty
//   colonna        heading; column; millimetres; sinistra | destra | centro [; format]
// Formats: data, ora, data e ora, si/no, or a number's pattern such as #####.000.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/units.h"
#include "engine/value.h"

namespace brenvo::print {

enum class ReportAlignment { kLeft, kRight, kCentre };

struct ReportColumn {
  std::string heading, column, format;
  base::Mm width;
  ReportAlignment alignment = ReportAlignment::kLeft;
};

struct ReportLayout {
  bool landscape = false;
  base::Mm margin{10};
  std::string title, header, footer;
  std::string font = "Times New Roman";
  double rowPoints = 9, headingPoints = 9, titlePoints = 14;
  std::string order;
  std::vector<ReportColumn> columns;
};

// A layout that cannot be used; the text names the line, in Italian.
class LayoutError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

ReportLayout ParseReportLayout(std::string_view text);

// A cell by the column's format.
std::string FormatReportCell(const engine::Value& value, std::string_view format);

}  // namespace brenvo::print
