#include "print/qsl_labels.h"

#include <algorithm>
#include <iterator>

#include "base/number.h"
#include "base/text.h"

namespace brenvo::print {
namespace {

constexpr std::string_view kFont = "Times New Roman";

struct FixedLine {
  double x1, y1, x2, y2;  // millimetres from the label's corner
};
// The second and the last stand on each other: the form has always been drawn so.
constexpr FixedLine kFormLines[] = {
    {37, 12, 78.5, 12}, {51.5, 2, 51.5, 22}, {64, 2, 64, 22}, {51.5, 2, 51.5, 22}};

struct FixedText {
  double x, y;
  std::string_view text;
};
constexpr FixedText kHeadings[] = {{38, 2.5, "Date"},  {52.5, 2.5, "Qtr"},   {65, 2.5, "RST"},
                                   {38, 12.5, "Mc/s"}, {52.5, 12.5, "Band"}, {65, 12.5, "2x"}};

// Of a card's lines, millimetres from the label's corner.
constexpr double kHeadingLine = 7, kFirstLine = 10.5, kLineHeight = 3.5, kBelowLines = 2;
constexpr double kAlmost = 1e-9;
constexpr double kCallColumn = 61;
constexpr FixedText kLineHeadings[] = {{1, kHeadingLine, "Date"},
                                       {17, kHeadingLine, "Qtr"},
                                       {27, kHeadingLine, "Band"},
                                       {38, kHeadingLine, "2x"},
                                       {52, kHeadingLine, "RST"}};

}  // namespace

void DrawStationLabel(platform::Printer& printer, base::Mm x, base::Mm y, const StationLabel& label,
                      double scale) {
  struct Item {
    double x, y, points;
    bool bold;
    std::string text;
  };
  const Item items[] = {
      {1, 2, 9, true, "From Radio"},        {18, 1, 12, true, label.Call},
      {42, 1, 9, false, label.Qra},         {18, 6, 9, false, label.Locator},
      {42, 4.5, 9, false, label.Indirizzo}, {42, 8, 9, false, label.Qth + " " + label.Provincia}};
  for (const Item& item : items) {
    printer.SetFont(kFont, item.points * scale, item.bold);
    printer.Text(x + base::Mm(item.x * scale), y + base::Mm(item.y * scale), item.text);
  }
}

void DrawQsoLabel(platform::Printer& printer, base::Mm x, base::Mm y, const QsoLabel& label,
                  double scale) {
  const auto atX = [&](double dx) { return x + base::Mm(dx * scale); };
  const auto atY = [&](double dy) { return y + base::Mm(dy * scale); };
  const auto text = [&](double dx, double dy, std::string_view words) {
    printer.Text(atX(dx), atY(dy), words);
  };
  printer.SetBold(true);
  text(1, 2, "To Radio");
  printer.SetFontSize(12 * scale);
  text(1, 8, label.Call);
  printer.Box(atX(37), atY(2), atX(78.5), atY(22), false);
  for (const FixedLine& line : kFormLines) {
    printer.Line(atX(line.x1), atY(line.y1), atX(line.x2), atY(line.y2));
  }
  printer.SetFontSize(8 * scale);
  for (const FixedText& heading : kHeadings) text(heading.x, heading.y, heading.text);
  printer.SetBold(false);
  const auto [band, mode] = BandAndMode(label);
  text(38, 8, label.DataQso ? base::DateText(*label.DataQso) : "");
  text(52.5, 8, label.DataQso ? base::Left(base::TimeText(*label.DataQso), 5) : "");
  text(65, 8, label.QrkDato);
  text(38, 18, base::FormatNumber(label.Frequenza, "#,###.000"));
  text(52.5, 18, band);
  text(65, 18, mode);
  printer.SetBold(true);
  text(1, 18, label.QslRicevuta ? "QSL Tnx" : "QSL PSE");
}

int CardLinesOn(int height, double scale) {
  const double room = height / 10.0 / scale - kFirstLine - kBelowLines;
  return std::max(1, static_cast<int>(room / kLineHeight + kAlmost));
}

void DrawCardLabel(platform::Printer& printer, base::Mm x, base::Mm y, const CardLabel& label,
                   double scale) {
  const auto text = [&](double dx, double dy, std::string_view words) {
    printer.Text(x + base::Mm(dx * scale), y + base::Mm(dy * scale), words);
  };
  const auto isOther = [&](const CardLabel::Line& line) { return line.qso.Call != label.to; };
  const bool calls = std::ranges::any_of(label.lines, isOther);
  const bool pse = std::ranges::any_of(
      label.lines, [](const CardLabel::Line& line) { return !line.qso.QslRicevuta; });
  printer.SetFont(kFont, 9 * scale, true);
  text(1, 2, label.manager ? "Via" : "To Radio");
  printer.SetFontSize(12 * scale);
  text(18, 1, label.to);
  printer.SetFontSize(8 * scale);
  text(64, 2, pse ? "QSL PSE" : "QSL Tnx");
  for (const FixedText& heading : kLineHeadings) text(heading.x, heading.y, heading.text);
  if (calls) text(kCallColumn, kHeadingLine, "Call");
  printer.SetBold(false);
  double dy = kFirstLine;
  for (const CardLabel::Line& line : label.lines) {
    const auto [band, mode] = BandAndMode(line.qso);
    const auto& when = line.qso.DataQso;
    const std::string cells[] = {when ? base::DateText(*when) : "",
                                 when ? base::Left(base::TimeText(*when), 5) : "", base::Trim(band),
                                 mode, line.qso.QrkDato};
    for (std::size_t i = 0; i < std::size(cells); ++i) text(kLineHeadings[i].x, dy, cells[i]);
    if (calls) text(kCallColumn, dy, line.qso.Call);
    dy += kLineHeight;
  }
}

std::pair<std::string, std::string> BandAndMode(const QsoLabel& label) {
  const std::pair<std::string, std::string> plain{label.Banda, label.Modo};
  if (label.Modo != "Satellite") return plain;
  const std::string& note = label.Note;
  const std::size_t bracket = base::InStr(note, "[");
  if (bracket == 0) return plain;
  const std::size_t first = base::InStr(bracket + 1, note, "/");
  if (first == 0) return plain;
  const std::size_t second = base::InStr(first + 1, note, "/");
  if (second == 0) return plain;
  const std::string up = first > 2 ? base::Mid(note, 2, first - 2) : std::string();
  if (up.empty()) return plain;
  const std::size_t last = base::Len(note);
  return {up, last > second + 1 ? base::Mid(note, second + 1, last - second - 1) : std::string()};
}

LabelGrid::LabelGrid(const LabelGeometry& geometry)
    : geometry_(geometry),
      posX_(geometry.marginLeft),
      posY_(geometry.marginTop),
      posYFila_(posY_) {}

void LabelGrid::Next(platform::Printer& printer) {
  ++colonna_;
  if (colonna_ <= geometry_.perRow) {
    posX_ += geometry_.width + geometry_.spaceAcross;
    posY_ = posYFila_;
    return;
  }
  colonna_ = 1;
  posX_ = geometry_.marginLeft;
  posY_ += geometry_.height + geometry_.spaceDown;
  ++row_;
  const bool full = geometry_.rows > 0 ? row_ > geometry_.rows : Y() > printer.PageHeight();
  if (full) {
    printer.NewPage();
    posY_ = geometry_.marginTop;
    row_ = 1;
  }
  posYFila_ = posY_;
}

}  // namespace brenvo::print
