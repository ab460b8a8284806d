#include "report_layout.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/number.h"
#include "base/text.h"

namespace brenvo::print {
namespace {

// Lines and fields that a sane layout stays well below.
constexpr std::size_t kMostColumns = 60;

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  std::size_t from = 0;
  for (;;) {
    const std::size_t to = text.find(separator, from);
    pieces.push_back(base::Trim(text.substr(from, to - from)));
    if (to == std::string_view::npos) return pieces;
    from = to + 1;
  }
}

[[noreturn]] void Refuse(std::size_t line, const std::string& why) {
  throw LayoutError("Riga " + std::to_string(line) + " del formato di stampa: " + why);
}

// A tenth of a millimetre at least, which is less than anybody can see.
base::Mm Measured(std::size_t line, const std::string& text, double most) {
  constexpr double kLeast = 0.1;
  const double value = base::Val(text);
  if (!(value >= kLeast && value <= most)) Refuse(line, "misura non valida \"" + text + "\"");
  return base::Mm(value);
}

ReportColumn ParseColumn(std::size_t line, const std::string& text) {
  const auto fields = Split(text, ';');
  if (fields.size() < 4) Refuse(line, "una colonna vuole titolo; campo; larghezza; allineamento");
  ReportColumn column;
  column.heading = fields[0];
  column.column = fields[1];
  column.width = Measured(line, fields[2], 1000);
  const std::string side = base::Lower(fields[3]);
  if (side == "destra") {
    column.alignment = ReportAlignment::kRight;
  } else if (side == "centro") {
    column.alignment = ReportAlignment::kCentre;
  } else if (side != "sinistra") {
    Refuse(line, "allineamento sconosciuto \"" + fields[3] + "\"");
  }
  if (fields.size() > 4) column.format = fields[4];
  return column;
}

void ParseFonts(std::size_t line, const std::string& text, ReportLayout& layout) {
  const auto fields = Split(text, ',');
  if (!fields[0].empty()) layout.font = fields[0];
  double* const sizes[] = {&layout.rowPoints, &layout.headingPoints, &layout.titlePoints};
  for (std::size_t i = 0; i < std::size(sizes) && i + 1 < fields.size(); ++i) {
    *sizes[i] = Measured(line, fields[i + 1], 100).Value();
  }
}

}  // namespace

ReportLayout ParseReportLayout(std::string_view text) {
  ReportLayout layout;
  std::size_t number = 0;
  for (std::string_view rest = base::WithoutByteOrderMark(text); !rest.empty();) {
    ++number;
    const std::size_t end = rest.find('\n');
    std::string line = base::ValidUtf8(rest.substr(0, end));
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    line = base::Trim(line);
    if (line.empty() || line.front() == '#') continue;
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) Refuse(number, "manca il segno =");
    const std::string name = base::Lower(base::Trim(line.substr(0, equals)));
    const std::string value = base::Trim(line.substr(equals + 1));
    if (name == "orientamento") {
      layout.landscape = base::Lower(value) == "orizzontale";
      if (!layout.landscape && base::Lower(value) != "verticale")
        Refuse(number, "orientamento sconosciuto");
    } else if (name == "margine") {
      layout.margin = Measured(number, value, 100);
    } else if (name == "titolo") {
      layout.title = value;
    } else if (name == "intestazione") {
      layout.header = value;
    } else if (name == "piede") {
      layout.footer = value;
    } else if (name == "carattere") {
      ParseFonts(number, value, layout);
    } else if (name == "ordine") {
      layout.order = value;
    } else if (name == "colonna") {
      if (layout.columns.size() == kMostColumns) Refuse(number, "troppe colonne");
      layout.columns.push_back(ParseColumn(number, value));
    } else {
      Refuse(number, "voce sconosciuta \"" + name + "\"");
    }
  }
  if (layout.columns.empty()) throw LayoutError("Il formato di stampa non ha colonne");
  return layout;
}

std::string FormatReportCell(const engine::Value& value, std::string_view format) {
  if (value.IsNull()) return {};
  if (format == "data" || format == "ora" || format == "data e ora") {
    const std::optional<base::DateTime> date = value.ReadableDate();
    if (!date) return {};
    const std::string time = base::Left(base::TimeText(*date), 5);
    if (format == "ora") return time;
    return base::DateText(*date) + (format == "data" ? "" : " " + time);
  }
  if (format == "si/no") return value.ReadableBool().value_or(false) ? "Sì" : "";
  if (!format.empty()) return base::FormatNumber(value.Number(), format);
  return value.Text();
}

}  // namespace brenvo::print
