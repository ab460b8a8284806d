// Statistics as tables and drawings: once as a page of HTML, once on paper.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "base/text.h"
#include "core/texts.h"
#include "statistics.h"

namespace brenvo::gara {
namespace {

// Millimetres.
constexpr double kWidth = 180, kHeight = 70, kLetter = 3;

enum class Shade { kEmpty, kLight, kFull };

// Draws in millimetres from the top left corner; texts by their upper edge.
class Ink {
 public:
  virtual ~Ink() = default;
  virtual void Line(double x1, double y1, double x2, double y2) = 0;
  virtual void Box(double x1, double y1, double x2, double y2, Shade shade) = 0;
  virtual void Text(double x, double y, std::string_view text) = 0;
};

std::string Escaped(std::string_view text) {
  std::string safe;
  for (const char c : text) {
    switch (c) {
      case '<':
        safe += "&lt;";
        break;
      case '>':
        safe += "&gt;";
        break;
      case '&':
        safe += "&amp;";
        break;
      case '"':
        safe += "&quot;";
        break;
      default:
        safe += c;
    }
  }
  return safe;
}

class SvgInk : public Ink {
 public:
  explicit SvgInk(double height)
      : out_(fmt::format("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {} {}\" "
                         "width=\"{}mm\" height=\"{}mm\">\r\n",
                         kWidth, height, kWidth, height)) {}
  void Line(double x1, double y1, double x2, double y2) override {
    out_ += fmt::format(
        "<line x1=\"{:.2f}\" y1=\"{:.2f}\" x2=\"{:.2f}\" y2=\"{:.2f}\" stroke=\"#444\" "
        "stroke-width=\"0.25\"/>\r\n",
        x1, y1, x2, y2);
  }
  void Box(double x1, double y1, double x2, double y2, Shade shade) override {
    constexpr std::string_view kFills[] = {"none", "#cfe3f7", "#2f6fb0"};
    out_ += fmt::format(
        "<rect x=\"{:.2f}\" y=\"{:.2f}\" width=\"{:.2f}\" height=\"{:.2f}\" fill=\"{}\" "
        "stroke=\"#444\" stroke-width=\"0.15\"/>\r\n",
        x1, y1, x2 - x1, y2 - y1, kFills[static_cast<std::size_t>(shade)]);
  }
  void Text(double x, double y, std::string_view text) override {
    out_ += fmt::format("<text x=\"{:.2f}\" y=\"{:.2f}\" font-size=\"{}\">{}</text>\r\n", x,
                        y + kLetter * 0.8, kLetter, Escaped(text));
  }
  std::string Drawn() const { return out_ + "</svg>\r\n"; }

 private:
  std::string out_;
};

class PrinterInk : public Ink {
 public:
  PrinterInk(platform::Printer& printer, double top) : printer_(printer), top_(top) {}
  void Line(double x1, double y1, double x2, double y2) override {
    printer_.Line(base::Mm(x1), base::Mm(top_ + y1), base::Mm(x2), base::Mm(top_ + y2));
  }
  void Box(double x1, double y1, double x2, double y2, Shade shade) override {
    printer_.Box(base::Mm(x1), base::Mm(top_ + y1), base::Mm(x2), base::Mm(top_ + y2),
                 shade == Shade::kFull);
  }
  void Text(double x, double y, std::string_view text) override {
    printer_.Text(base::Mm(x), base::Mm(top_ + y), text);
  }

 private:
  platform::Printer& printer_;
  double top_;
};

struct Picture {
  std::string title;
  double height = kHeight;
  std::function<void(Ink&)> draw;
};

struct TextTable {
  std::string title;
  std::vector<std::string> headings;
  std::vector<std::vector<std::string>> rows;
};

// Bars side by side, with words below some of them and the greatest value beside the axis.
void DrawBars(Ink& ink, const std::vector<std::int64_t>& values,
              const std::function<std::string(std::size_t)>& wordsOf) {
  constexpr double kLeft = 12, kTop = 4, kBottom = kHeight - 6;
  if (values.empty()) return;
  const std::int64_t most = std::max<std::int64_t>(1, *std::ranges::max_element(values));
  const double step = (kWidth - kLeft) / static_cast<double>(values.size());
  ink.Line(kLeft, kBottom, kWidth, kBottom);
  ink.Line(kLeft, kTop, kLeft, kBottom);
  ink.Text(0, kTop, std::to_string(most));
  ink.Text(0, kBottom - kLetter, "0");
  // Words need some room each.
  constexpr double kWords = 14;
  const std::size_t every = static_cast<std::size_t>(std::max(1.0, std::ceil(kWords / step)));
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double x = kLeft + step * static_cast<double>(i);
    const double height =
        (kBottom - kTop) * static_cast<double>(values[i]) / static_cast<double>(most);
    if (values[i] > 0) {
      ink.Box(x + step * 0.1, kBottom - height, x + step * 0.9, kBottom, Shade::kFull);
    }
    if (i % every == 0) ink.Text(x, kBottom + 1, wordsOf(i));
  }
}

// Points added up hour by hour, this year's as bars, last year's as a line of steps.
void DrawProgress(Ink& ink, const Statistics& statistics) {
  std::vector<std::int64_t> sums, before;
  std::int64_t sum = 0, sumBefore = 0;
  for (std::size_t i = 0; i < statistics.hours.size(); ++i) {
    sums.push_back(sum += statistics.hours[i].points);
    const auto& points = statistics.before->points;
    before.push_back(sumBefore += i < points.size() ? points[i] : 0);
  }
  constexpr double kLeft = 12, kTop = 4, kBottom = kHeight - 6;
  const std::int64_t most = std::max<std::int64_t>({1, sum, sumBefore});
  const double step = (kWidth - kLeft) / static_cast<double>(std::max<std::size_t>(1, sums.size()));
  const auto heightOf = [&](std::int64_t points) {
    return kBottom - (kBottom - kTop) * static_cast<double>(points) / static_cast<double>(most);
  };
  ink.Line(kLeft, kBottom, kWidth, kBottom);
  ink.Text(0, kTop - 3, std::to_string(most));
  for (std::size_t i = 0; i < sums.size(); ++i) {
    const double x = kLeft + step * static_cast<double>(i);
    if (sums[i] > 0)
      ink.Box(x + step * 0.1, heightOf(sums[i]), x + step * 0.9, kBottom, Shade::kLight);
    ink.Line(x, heightOf(before[i]), x + step, heightOf(before[i]));
    if (i > 0) ink.Line(x, heightOf(before[i - 1]), x, heightOf(before[i]));
  }
  ink.Text(kLeft, kBottom + 1,
           fmt::format("barre: {}, linea: {}", statistics.begin.Year(),
                       statistics.before->begin.Year()));
}

struct SquarePlace {
  int column = 0, row = 0;  // from the west, from the south
};
SquarePlace PlaceOfSquare(std::string_view square) {
  return {(square[0] - 'A') * 10 + (square[2] - '0'), (square[1] - 'A') * 10 + (square[3] - '0')};
}

Picture SquaresPicture(const Statistics& statistics) {
  SquarePlace least{1000, 1000}, most{-1, -1};
  const auto own = statistics.locator.size() >= 4 && IsLocator(statistics.locator.substr(0, 4), 4)
                       ? statistics.locator.substr(0, 4)
                       : std::string();
  const auto take = [&](std::string_view square) {
    const SquarePlace at = PlaceOfSquare(square);
    least = {std::min(least.column, at.column), std::min(least.row, at.row)};
    most = {std::max(most.column, at.column), std::max(most.row, at.row)};
  };
  for (const auto& [square, contacts] : statistics.squares) take(square);
  if (!own.empty()) take(own);
  const int columns = most.column - least.column + 1, rows = most.row - least.row + 1;
  constexpr double kWidest = 14, kShape = 1.4;
  constexpr double kMostHeight = 220;
  const double width =
      std::min({kWidest, kWidth / std::max(1, columns), kShape * kMostHeight / std::max(1, rows)});
  const double height = width / kShape;
  return {"Square", height * rows + 2, [=, &statistics](Ink& ink) {
            constexpr double kNamed = 9;  // a narrower one has no room for its name
            const auto draw = [&](const std::string& square, std::int64_t contacts) {
              const SquarePlace at = PlaceOfSquare(square);
              const double x = width * (at.column - least.column);
              const double y = height * (most.row - at.row);
              ink.Box(x, y, x + width, y + height, square == own ? Shade::kEmpty : Shade::kLight);
              if (width < kNamed) return;
              ink.Text(x + 0.7, y + 0.7, square);
              if (contacts > 0)
                ink.Text(x + 0.7, y + height - kLetter - 0.7, std::to_string(contacts));
            };
            for (const auto& [square, contacts] : statistics.squares) draw(square, contacts);
            if (!own.empty() && !statistics.squares.contains(own)) draw(own, 0);
          }};
}

std::vector<Picture> PicturesOf(const Statistics& statistics) {
  std::vector<Picture> pictures;
  pictures.push_back({"QSO per ora (UTC)", kHeight, [&statistics](Ink& ink) {
                        std::vector<std::int64_t> values;
                        for (const Statistics::Hour& each : statistics.hours) {
                          values.push_back(each.all);
                        }
                        DrawBars(ink, values, [&](std::size_t i) {
                          return core::HourMinute(statistics.hours[i].from);
                        });
                      }});
  if (!statistics.distances.empty()) {
    pictures.push_back({"QSO per distanza (km)", kHeight, [&statistics](Ink& ink) {
                          DrawBars(ink, statistics.distances,
                                   [](std::size_t i) { return std::to_string(i * 100); });
                        }});
  }
  if (statistics.before) {
    pictures.push_back({"Punti ora per ora, e l'altra volta", kHeight,
                        [&statistics](Ink& ink) { DrawProgress(ink, statistics); }});
  }
  if (!statistics.squares.empty()) pictures.push_back(SquaresPicture(statistics));
  return pictures;
}

std::string Number(std::int64_t value) { return std::to_string(value); }

std::vector<TextTable> TablesOf(const Statistics& statistics) {
  std::vector<TextTable> tables;
  TextTable bands{
      "Bande",
      {"Banda", "QSO", "Doppi", "Punti", "Moltiplicatori", "Km in media", "Il migliore", "Km"},
      {}};
  for (const Statistics::BandLine& each : statistics.bands) {
    bands.rows.push_back({each.score.band, Number(each.score.contacts),
                          Number(each.score.duplicates), Number(each.score.points),
                          Number(each.score.multipliers), Number(each.meanKm), each.bestCall,
                          Number(each.bestKm)});
  }
  tables.push_back(std::move(bands));
  if (statistics.before) {
    const Statistics::Before& before = *statistics.before;
    const auto row = [](base::DateTime begin, const Score& score) {
      return std::vector<std::string>{base::DateText(begin),     Number(score.contacts),
                                      Number(score.duplicates),  Number(score.points),
                                      Number(score.multipliers), Number(score.total)};
    };
    tables.push_back({"Questa volta e l'altra",
                      {"Dal", "QSO", "Doppi", "Punti", "Moltiplicatori", "Totale"},
                      {row(statistics.begin, statistics.score), row(before.begin, before.score)}});
  }
  TextTable hours{"Ore e bande (UTC)", {"Ora"}, {}};
  for (const Statistics::BandLine& each : statistics.bands)
    hours.headings.push_back(each.score.band);
  hours.headings.insert(hours.headings.end(), {"Tutte", "Punti"});
  for (const Statistics::Hour& each : statistics.hours) {
    if (each.all == 0) continue;
    std::vector<std::string>& row = hours.rows.emplace_back();
    row.push_back(fmt::format("{:02}/{:02} {}", each.from.Day(), each.from.Month(),
                              core::HourMinute(each.from)));
    for (const std::int64_t contacts : each.contacts) row.push_back(Number(contacts));
    row.push_back(Number(each.all));
    row.push_back(Number(each.points));
  }
  tables.push_back(std::move(hours));
  TextTable best{"I QSO più lontani", {"Call", "Locator", "Banda", "Km", "Punti"}, {}};
  for (const Statistics::Best& each : statistics.best) {
    best.rows.push_back({each.call, each.locator, each.band, Number(each.km), Number(each.points)});
  }
  tables.push_back(std::move(best));
  return tables;
}

std::string TitleOf(const Statistics& statistics) {
  return fmt::format("{}, {}: {} in {}", statistics.name, base::DateText(statistics.begin),
                     statistics.call, statistics.locator);
}

std::string TotalOf(const Statistics& statistics) {
  const Score& score = statistics.score;
  return fmt::format("{} QSO, doppi {}, punti {}, moltiplicatori {}, totale {}, square {}",
                     score.contacts, score.duplicates, score.points, score.multipliers, score.total,
                     statistics.squares.size());
}

// Tables and pictures one below the other, on as many pages as they need.
class Pages {
 public:
  explicit Pages(platform::Printer& printer) : printer_(printer) {
    printer_.SetFont("Times New Roman", kPoints, false);
    bottom_ = printer_.PageHeight().Value() - kBelow;
  }

  void Title(std::string_view title, std::string_view total) {
    printer_.SetFont("Times New Roman", kTitlePoints, true);
    printer_.Text(base::Mm(0), base::Mm(y_), title);
    printer_.SetFont("Times New Roman", kPoints, false);
    y_ += 2 * kRow;
    printer_.Text(base::Mm(0), base::Mm(y_), total);
    y_ += 2 * kRow;
  }

  void Put(const TextTable& table) {
    Need(4 * kRow);
    Heading(table.title);
    const double step =
        std::min(34.0, printer_.PageWidth().Value() / static_cast<double>(table.headings.size()));
    const auto row = [&](const std::vector<std::string>& cells) {
      for (std::size_t i = 0; i < cells.size(); ++i) {
        printer_.Text(base::Mm(step * static_cast<double>(i)), base::Mm(y_), cells[i]);
      }
      y_ += kRow;
    };
    row(table.headings);
    printer_.Line(base::Mm(0), base::Mm(y_),
                  base::Mm(step * static_cast<double>(table.headings.size())), base::Mm(y_));
    y_ += 1;
    for (const auto& cells : table.rows) {
      Need(kRow);
      row(cells);
    }
    y_ += kRow;
  }

  void Put(const Picture& picture) {
    Need(picture.height + 3 * kRow);
    Heading(picture.title);
    PrinterInk ink(printer_, y_);
    picture.draw(ink);
    y_ += picture.height + kRow;
  }

 private:
  static constexpr double kPoints = 9, kTitlePoints = 13, kRow = 4.5, kBelow = 8;

  void Need(double height) {
    if (y_ + height <= bottom_ || y_ == 0) return;
    printer_.NewPage();
    printer_.SetFont("Times New Roman", kPoints, false);
    y_ = 0;
  }
  void Heading(std::string_view title) {
    printer_.SetBold(true);
    printer_.Text(base::Mm(0), base::Mm(y_), title);
    printer_.SetBold(false);
    y_ += kRow + 1;
  }

  platform::Printer& printer_;
  double y_ = 0, bottom_ = 0;
};

}  // namespace

std::string StatisticsPage(const Statistics& statistics) {
  const std::string title = Escaped(TitleOf(statistics));
  std::string page = fmt::format(
      "<!DOCTYPE html>\r\n<html lang=\"it\">\r\n<head>\r\n<meta charset=\"utf-8\">\r\n"
      "<title>{0}</title>\r\n<style>\r\n"
      "body {{ font-family: sans-serif; margin: 1em 2em; }}\r\n"
      "table {{ border-collapse: collapse; }}\r\n"
      "th, td {{ border: 1px solid #bbb; padding: 0.1em 0.6em; text-align: right; }}\r\n"
      "</style>\r\n</head>\r\n<body>\r\n<h1>{0}</h1>\r\n<p>{1}</p>\r\n",
      title, Escaped(TotalOf(statistics)));
  for (const TextTable& table : TablesOf(statistics)) {
    page += fmt::format("<h2>{}</h2>\r\n<table>\r\n<tr>", Escaped(table.title));
    for (const std::string& heading : table.headings) {
      page += fmt::format("<th>{}</th>", Escaped(heading));
    }
    page += "</tr>\r\n";
    for (const auto& row : table.rows) {
      page += "<tr>";
      for (const std::string& cell : row) page += fmt::format("<td>{}</td>", Escaped(cell));
      page += "</tr>\r\n";
    }
    page += "</table>\r\n";
  }
  for (const Picture& picture : PicturesOf(statistics)) {
    SvgInk ink(picture.height);
    picture.draw(ink);
    page += fmt::format("<h2>{}</h2>\r\n{}", Escaped(picture.title), ink.Drawn());
  }
  return page + "</body>\r\n</html>\r\n";
}

void PrintPages(const Statistics& statistics, platform::Printer& printer) {
  Pages pages(printer);
  pages.Title(TitleOf(statistics), TotalOf(statistics));
  for (const TextTable& table : TablesOf(statistics)) pages.Put(table);
  for (const Picture& picture : PicturesOf(statistics)) pages.Put(picture);
  printer.EndDocument();
}

}  // namespace brenvo::gara
