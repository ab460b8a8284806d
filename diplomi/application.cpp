#include "application.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/csv.h"
#include "base/file_bytes.h"
#include "base/text.h"

namespace brenvo::diplomi {
namespace {

constexpr std::size_t kColumns = 8;
constexpr std::array<std::string_view, kColumns> kHeadings = {
    "Nr", "Unità", "Nome", "Call", "Data e ora", "Banda", "Modo", "Confermato da"};

std::array<std::string, kColumns> CellsOf(std::size_t number, const ApplicationLine& line) {
  return {std::to_string(number),
          line.unit,
          line.name,
          line.call,
          line.when,
          line.band,
          line.mode,
          line.by};
}

template <class See>
void EachRow(const Application& application, const See& see) {
  for (std::size_t i = 0; i < application.lines.size(); ++i) {
    see(CellsOf(i + 1, application.lines[i]));
  }
}

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string CountText(const Application& application) {
  return fmt::format("Qso: {}", application.lines.size());
}

}  // namespace

std::vector<Cell> CellsToApplyFor(const Award& award, const Counted& counted, std::size_t column,
                                  std::vector<std::size_t>& units) {
  std::vector<Cell> cells;
  units.clear();
  const auto take = [&](std::size_t unit, std::size_t at) {
    const Cell& cell = counted.At(unit, at);
    if (cell.state != State::kConfirmed || cell.key <= 0) return false;
    cells.push_back(cell);
    units.push_back(unit);
    return true;
  };
  for (std::size_t unit = 0; unit < counted.units.size(); ++unit) {
    bool onBands = false;
    if (column == 0 && !award.creditBand.empty()) {
      for (std::size_t band = 1; band < counted.Columns(); ++band) {
        if (take(unit, band)) onBands = true;
      }
    }
    // Whatever is confirmed on a band stands for all of them together too.
    if (!onBands) take(unit, column);
  }
  return cells;
}

std::string TextOfApplication(const Application& application) {
  std::array<std::size_t, kColumns> widths{};
  const auto measure = [&](const auto& cells) {
    for (std::size_t i = 0; i < kColumns; ++i) widths[i] = std::max(widths[i], base::Len(cells[i]));
  };
  measure(kHeadings);
  EachRow(application, measure);
  std::string text = application.title + "\r\n" + application.subtitle + "\r\n" +
                     CountText(application) + "\r\n\r\n";
  const auto put = [&](const auto& cells) {
    std::string line;
    for (std::size_t i = 0; i < kColumns; ++i) line += base::PadRight(cells[i], widths[i] + 2);
    text += base::RTrim(line) + "\r\n";
  };
  put(kHeadings);
  EachRow(application, put);
  return text;
}

std::string PageOfApplication(const Application& application) {
  std::string page = fmt::format(
      "<!DOCTYPE html>\r\n<html lang=\"it\">\r\n<head>\r\n<meta charset=\"utf-8\">\r\n"
      "<title>{0}</title>\r\n</head>\r\n<body>\r\n<h1>{0}</h1>\r\n<p>{1}<br>{2}</p>\r\n"
      "<table border=\"1\">\r\n",
      Escaped(application.title), Escaped(application.subtitle), CountText(application));
  const auto put = [&](const auto& cells, std::string_view tag) {
    page += "<tr>";
    for (const auto& cell : cells) page += fmt::format("<{0}>{1}</{0}>", tag, Escaped(cell));
    page += "</tr>\r\n";
  };
  put(kHeadings, "th");
  EachRow(application, [&](const auto& cells) { put(cells, "td"); });
  return page + "</table>\r\n</body>\r\n</html>\r\n";
}

std::string CsvOfApplication(const Application& application) {
  std::string text = base::CsvLine({kHeadings.begin(), kHeadings.end()});
  EachRow(application, [&](const auto& cells) {
    text += base::CsvLine({cells.begin(), cells.end()});
  });
  return text;
}

void WriteApplication(const Application& application, const std::filesystem::path& file) {
  const std::string ending = base::Lower(file.extension().string());
  base::WriteBytesTo(file, ending == ".html" || ending == ".htm" ? PageOfApplication(application)
                           : ending == ".csv"                    ? CsvOfApplication(application)
                                                                 : TextOfApplication(application));
}

namespace {

// Millimetres.
constexpr std::string_view kFont = "Times New Roman";
constexpr double kTitleSize = 12, kSize = 9;
constexpr double kTop = 4, kBelowTitle = 10, kHeadingsAt = 17, kFirstRow = 23, kRowHeight = 4.5,
                 kBelow = 8;
constexpr double kShares[kColumns] = {0.05, 0.09, 0.26, 0.14, 0.18, 0.08, 0.08, 0.12};

class Pages {
 public:
  Pages(const Application& application, platform::Printer& printer)
      : application_(application), printer_(printer) {}

  void Print() {
    printer_.SetLandscape(false);
    printer_.SetFont(kFont, kSize, false);
    const double rows = (printer_.PageHeight().Value() - kFirstRow - kBelow) / kRowHeight;
    const std::size_t onPage = rows < 1 ? 1 : static_cast<std::size_t>(rows);
    const std::size_t pages =
        std::max<std::size_t>(1, (application_.lines.size() + onPage - 1) / onPage);
    for (std::size_t page = 0; page < pages; ++page) {
      if (page > 0) printer_.NewPage();
      Headings(page + 1, pages);
      const std::size_t end = std::min((page + 1) * onPage, application_.lines.size());
      for (std::size_t i = page * onPage; i < end; ++i) {
        Row(kFirstRow + static_cast<double>(i - page * onPage) * kRowHeight,
            CellsOf(i + 1, application_.lines[i]));
      }
    }
    printer_.EndDocument();
  }

 private:
  void Headings(std::size_t page, std::size_t pages) {
    printer_.SetFont(kFont, kTitleSize, true);
    printer_.Text(base::Mm(0), base::Mm(kTop), application_.title);
    printer_.SetFont(kFont, kSize, false);
    printer_.Text(base::Mm(0), base::Mm(kBelowTitle), application_.subtitle);
    printer_.TextRight(printer_.PageWidth(), base::Mm(kTop), fmt::format("{} di {}", page, pages));
    printer_.SetBold(true);
    Row(kHeadingsAt, kHeadings);
    printer_.SetBold(false);
    printer_.Line(base::Mm(0), base::Mm(kFirstRow - 1), printer_.PageWidth(),
                  base::Mm(kFirstRow - 1));
  }
  template <class Cells>
  void Row(double y, const Cells& cells) {
    double x = 0;
    for (std::size_t i = 0; i < kColumns; ++i) {
      const double width = kShares[i] * printer_.PageWidth().Value();
      std::string text(cells[i]);
      while (!text.empty() && printer_.TextWidth(text).Value() > width - 1) {
        text = base::Left(text, base::Len(text) - 1);
      }
      if (!text.empty()) printer_.Text(base::Mm(x), base::Mm(y), text);
      x += width;
    }
  }

  const Application& application_;
  platform::Printer& printer_;
};

}  // namespace

void PrintApplication(const Application& application, platform::Printer& printer) {
  Pages(application, printer).Print();
}

}  // namespace brenvo::diplomi
