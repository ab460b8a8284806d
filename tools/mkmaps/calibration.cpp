#include "mkmaps/calibration.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/csv.h"
#include "mkmaps/outlines.h"
#include "mkmaps/sheets.h"

namespace brenvo::mkmaps {
namespace {

using Path = std::filesystem::path;

// Provinces of earlier logs, at their capitals of then.
struct FormerProvince {
  const char* code;
  GeoPoint position;
};
constexpr FormerProvince kFormer[] = {
    {"FO", {12.04, 44.22}}, {"PS", {12.91, 43.91}}, {"SU", {8.52, 39.17}}};

class Writer {
 public:
  explicit Writer(const Path& file) : file_(file), out_(file, std::ios::binary) {}
  void Row(const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) out_ << (i == 0 ? "" : ",") << Quoted(cells[i]);
    out_ << '\n';
  }
  void Close() {
    out_.close();
    if (!out_) throw std::runtime_error(file_.string() + ": cannot be written");
  }

 private:
  static std::string Quoted(const std::string& cell) {
    if (cell.find_first_of(",\"\n") == std::string::npos) return cell;
    std::string quoted = "\"";
    for (const char c : cell) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
  }
  Path file_;
  std::ofstream out_;
};

std::string Pixel(double value) { return std::to_string(std::lround(value)); }

void WriteFields(const Path& facts) {
  Writer table(facts / "Field.csv");
  table.Row({"Field", "X", "Y"});
  for (char letter = 'A'; letter <= 'S'; ++letter) {
    table.Row({std::string{letter, '?'}, std::to_string(SquareSheet::ColumnX(letter)), "0"});
  }
  for (char letter = '@'; letter <= 'R'; ++letter) {
    table.Row({std::string{'?', letter}, "0", std::to_string(SquareSheet::RowY(letter))});
  }
  table.Close();
}

std::string SquareAt(int west, int south) {
  const int east = west + 180, north = south + 90;
  return {static_cast<char>('A' + east / 20), static_cast<char>('A' + north / 10),
          static_cast<char>('0' + east % 20 / 2), static_cast<char>('0' + north % 10)};
}

void WriteSquares(const Path& facts) {
  Writer table(facts / "Square.csv");
  table.Row({"Square", "X", "Y"});
  for (int west = EuropeSheet::kWest; west < EuropeSheet::kEast; west += 2) {
    for (int south = EuropeSheet::kSouth; south < EuropeSheet::kNorth; ++south) {
      const SheetPoint at = EuropeSheet::At({west + 1.0, south + 0.5});
      table.Row({SquareAt(west, south), Pixel(at.x), Pixel(at.y)});
    }
  }
  table.Close();
}

void WriteZones(const Path& facts) {
  Writer table(facts / "ZoneCQ.csv");
  table.Row({"ZonaCQ", "X", "Y"});
  for (const Outline& outline : ReadOutlines(facts / "outlines" / "zones.csv")) {
    if (outline.kind != OutlineKind::kPoint) continue;
    const SheetPoint at = ZoneSheet::At(outline.points.front());
    table.Row({outline.name, Pixel(at.x), Pixel(at.y)});
  }
  table.Close();
}

void WriteProvinces(const Path& facts) {
  Writer table(facts / "ProvincieItaliane.csv");
  table.Row({"Provincia", "X", "Y"});
  const auto write = [&](const std::string& code, const GeoPoint& position) {
    const SheetPoint at = ItalySheet::At(position);
    table.Row({code, Pixel(at.x), Pixel(at.y)});
  };
  for (const Outline& outline : ReadOutlines(facts / "outlines" / "italy.csv")) {
    if (outline.kind == OutlineKind::kPoint) write(outline.name, outline.points.front());
  }
  for (const FormerProvince& former : kFormer) write(former.code, former.position);
  table.Close();
}

void WriteCountries(const Path& facts) {
  constexpr std::array kOurs = {"Mappa", "Pointer_X", "Pointer_Y"};
  base::CsvTable countries = base::ReadCsv(facts / "Country.csv");
  for (const char* heading : kOurs) {
    if (std::find(countries.Headings.begin(), countries.Headings.end(), heading) !=
        countries.Headings.end()) {
      continue;
    }
    countries.Headings.emplace_back(heading);
    for (base::CsvTable::Row& row : countries.Rows) row.Cells.emplace_back();
  }
  const std::size_t locator = countries.Column("Locator");
  Writer table(facts / "Country.csv");
  table.Row(countries.Headings);
  for (base::CsvTable::Row& row : countries.Rows) {
    const GeoPoint position = PositionOf(row.Cells[locator]);
    const Region& region = RegionOf(position);
    const SheetPoint at = region.At(position);
    row.Cells[countries.Column("Mappa")] = region.file;
    row.Cells[countries.Column("Pointer_X")] = Pixel(at.x);
    row.Cells[countries.Column("Pointer_Y")] = Pixel(at.y);
    table.Row(row.Cells);
  }
  table.Close();
}

}  // namespace

void WriteCalibration(const Path& facts) {
  WriteFields(facts);
  WriteSquares(facts);
  WriteZones(facts);
  WriteProvinces(facts);
  WriteCountries(facts);
}

}  // namespace brenvo::mkmaps
