#include "report_engine.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "platform/device_error.h"

namespace brenvo::print {
namespace {

constexpr double kMmPerPoint = 25.4 / 72;
constexpr double kLineSpacing = 1.35;  // of the font's height
constexpr double kCellGap = 1;         // millimetres between a text and its column's edge
constexpr std::int64_t kRowsBetweenSteps = 50;

base::Mm LineHeight(double points) { return base::Mm(points * kMmPerPoint * kLineSpacing); }

base::Mm HeadHeight(const ReportLayout& layout) {
  return LineHeight(layout.titlePoints) + LineHeight(layout.rowPoints) +
         LineHeight(layout.headingPoints) + base::Mm(2);
}

std::string Fill(std::string text, const ReportTexts& texts) {
  for (const auto& [name, value] : texts) {
    const std::string token = "{" + name + "}";
    for (std::size_t at = text.find(token); at != std::string::npos;
         at = text.find(token, at + value.size())) {
      text.replace(at, token.size(), value);
    }
  }
  return text;
}

class Sheet {
 public:
  // `places` are those of the layout's columns in a row.
  Sheet(const ReportLayout& layout, std::vector<std::size_t> places, ReportTexts texts,
        platform::Printer& printer)
      : layout_(layout), places_(std::move(places)), texts_(std::move(texts)), printer_(printer) {}

  void BeginPage() {
    if (++page_ > 1) printer_.NewPage();
    texts_["pagina"] = std::to_string(page_);
    const base::Mm left = layout_.margin;
    const base::Mm right = printer_.PageWidth() - layout_.margin;
    y_ = layout_.margin;
    printer_.SetFont(layout_.font, layout_.titlePoints, true);
    printer_.Text(left, y_, Fill(layout_.title, texts_));
    y_ += LineHeight(layout_.titlePoints);
    printer_.SetFont("", layout_.rowPoints, false);
    printer_.Text(left, y_, Fill(layout_.header, texts_));
    const base::Mm foot = printer_.PageHeight() - layout_.margin - LineHeight(layout_.rowPoints);
    printer_.Line(left, foot, right, foot);
    printer_.Text(left, foot + base::Mm(0.5), Fill(layout_.footer, texts_));
    printer_.TextRight(right, foot + base::Mm(0.5),
                       "Pagina " + texts_["pagina"] + " di " + texts_["pagine"]);
    y_ += LineHeight(layout_.rowPoints);
    printer_.SetFont("", layout_.headingPoints, true);
    Row([](const ReportColumn& column, std::size_t) { return column.heading; });
    y_ += LineHeight(layout_.headingPoints);
    printer_.Line(left, y_, right, y_);
    y_ += base::Mm(2) - base::Mm(0.5);
    printer_.SetFont("", layout_.rowPoints, false);
  }

  void Print(engine::Recordset& row) {
    Row([&](const ReportColumn& column, std::size_t place) {
      return FormatReportCell(row.Field(place), column.format);
    });
    y_ += LineHeight(layout_.rowPoints);
  }

 private:
  // The longest beginning of the text that fits with its dots.
  std::string Cut(const std::string& text, base::Mm room) {
    std::size_t fits = 0, tooLong = base::Len(text) + 1;
    while (tooLong - fits > 1) {
      const std::size_t middle = (fits + tooLong) / 2;
      (printer_.TextWidth(base::Left(text, middle) + "...") > room ? tooLong : fits) = middle;
    }
    return base::Left(text, fits) + "...";
  }

  template <class Text>
  void Row(Text text) {
    base::Mm x = layout_.margin;
    for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
      const ReportColumn& column = layout_.columns[i];
      Cell(x, column, text(column, places_[i]));
      x += column.width;
    }
  }

  void Cell(base::Mm x, const ReportColumn& column, std::string text) {
    if (text.empty()) return;
    // A line of the report is one line.
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, ' ');
    const base::Mm room = column.width - base::Mm(kCellGap);
    if (printer_.TextWidth(text) > room) text = Cut(text, room);
    switch (column.alignment) {
      case ReportAlignment::kLeft:
        printer_.Text(x, y_, text);
        break;
      case ReportAlignment::kRight:
        printer_.TextRight(x + room, y_, text);
        break;
      case ReportAlignment::kCentre:
        printer_.Text(x + (room - printer_.TextWidth(text)) / 2, y_, text);
        break;
    }
  }

  const ReportLayout& layout_;
  const std::vector<std::size_t> places_;
  ReportTexts texts_;
  platform::Printer& printer_;
  base::Mm y_;
  int page_ = 0;
};

// Where the layout's columns stand in a row: asked once, not at each row.
std::vector<std::size_t> PlacesOf(const ReportLayout& layout, engine::Recordset& rows) {
  const std::vector<std::string>& names = rows.Columns();
  std::vector<std::size_t> places;
  for (const ReportColumn& column : layout.columns) {
    const auto at = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
      return base::Upper(name) == base::Upper(column.column);
    });
    if (at == names.end()) {
      throw LayoutError("Il formato di stampa nomina la colonna sconosciuta " + column.column);
    }
    places.push_back(static_cast<std::size_t>(at - names.begin()));
  }
  return places;
}

}  // namespace

int RowsPerPage(const ReportLayout& layout, base::Mm pageHeight) {
  const base::Mm room = pageHeight - layout.margin * 2 - HeadHeight(layout) -
                        LineHeight(layout.rowPoints) - base::Mm(1);
  return std::max(1, static_cast<int>(room.Value() / LineHeight(layout.rowPoints).Value()));
}

void PrintRows(engine::Database& database, const ReportLayout& layout, const ReportTexts& texts,
               platform::Printer& printer, const ReportAdvance& advance) {
  const auto rows = database.OpenDynaset(
      "SELECT * FROM SLog" + (layout.order.empty() ? std::string() : " ORDER BY " + layout.order));
  std::vector<std::size_t> places = PlacesOf(layout, *rows);
  printer.SetLandscape(layout.landscape);
  const std::int64_t total = rows->TotalRows();
  const int perPage = RowsPerPage(layout, printer.PageHeight());
  ReportTexts all = texts;
  all["contatti"] = std::to_string(total);
  all["pagine"] = std::to_string(std::max<std::int64_t>(1, (total + perPage - 1) / perPage));
  Sheet sheet(layout, std::move(places), std::move(all), printer);
  sheet.BeginPage();
  std::int64_t done = 0;
  const auto goOn = [&] {
    if (!advance(done, total)) throw platform::DeviceError("Stampa interrotta");
  };
  for (; !rows->EOF_(); rows->MoveNext()) {
    if (done > 0 && done % perPage == 0) sheet.BeginPage();
    sheet.Print(*rows);
    if (++done % kRowsBetweenSteps == 0 && done < total) goOn();
  }
  goOn();
  printer.EndDocument();
}

}  // namespace brenvo::print
