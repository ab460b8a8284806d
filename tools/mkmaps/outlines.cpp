#include "mkmaps/outlines.h"

#include <cmath>
#include <map>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "base/csv.h"

namespace brenvo::mkmaps {
namespace {

OutlineKind KindOf(const std::string& word) {
  if (word == "ring") return OutlineKind::kRing;
  if (word == "line") return OutlineKind::kLine;
  if (word == "point") return OutlineKind::kPoint;
  throw std::runtime_error("\"" + word + "\" is no kind of outline");
}

GeoLine PointsOf(const std::string& text, double step) {
  GeoLine points;
  std::istringstream in(text);
  long x = 0, y = 0, dx = 0, dy = 0;
  while (in >> dx >> dy) {
    x += dx;
    y += dy;
    points.push_back({static_cast<double>(x) * step, static_cast<double>(y) * step});
  }
  if (!in.eof() || points.empty()) throw std::runtime_error("an outline that is no row of numbers");
  return points;
}

bool IsCut(const GeoPoint& a, const GeoPoint& b) {
  constexpr double kPole = -89.9;
  return OnDateLine(a, b) || (a.latitude < kPole && b.latitude < kPole);
}

// Vertices of neighbours are rounded alike, so an edge is known by its ends.
using Edge = std::pair<std::pair<long, long>, std::pair<long, long>>;
Edge EdgeOf(const GeoPoint& a, const GeoPoint& b) {
  constexpr double kFinest = 1000;
  const auto whole = [](const GeoPoint& point) {
    return std::pair(std::lround(point.longitude * kFinest), std::lround(point.latitude * kFinest));
  };
  const auto first = whole(a), second = whole(b);
  return first < second ? Edge(first, second) : Edge(second, first);
}

enum class Side { kNone, kCoast, kBorder };

struct Use {
  int rings = 0;
  bool written = false;
};

}  // namespace

std::vector<Outline> ReadOutlines(const std::filesystem::path& file) {
  const base::CsvTable table = base::ReadCsv(file);
  const std::size_t kind = table.Column("Kind"), name = table.Column("Name"),
                    group = table.Column("Group"), step = table.Column("Step"),
                    points = table.Column("Points");
  std::vector<Outline> outlines;
  for (const base::CsvTable::Row& row : table.Rows) {
    outlines.push_back({KindOf(row.Cells[kind]), row.Cells[name], row.Cells[group],
                        PointsOf(row.Cells[points], std::stod(row.Cells[step]))});
  }
  return outlines;
}

bool Encloses(const GeoLine& ring, const GeoPoint& position) {
  bool inside = false;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const GeoPoint& a = ring[i - 1];
    const GeoPoint& b = ring[i];
    if ((a.latitude > position.latitude) == (b.latitude > position.latitude)) continue;
    const double crossing = a.longitude + (position.latitude - a.latitude) /
                                              (b.latitude - a.latitude) *
                                              (b.longitude - a.longitude);
    if (position.longitude < crossing) inside = !inside;
  }
  return inside;
}

bool Contains(const std::vector<Outline>& outlines, const GeoPoint& position,
              const std::string& name) {
  std::map<std::string, bool> inside;
  for (const Outline& outline : outlines) {
    if (outline.kind != OutlineKind::kRing || (!name.empty() && outline.name != name)) continue;
    if (Encloses(outline.points, position)) inside[outline.name] = !inside[outline.name];
  }
  for (const auto& area : inside) {
    if (area.second) return true;
  }
  return false;
}

bool OnDateLine(const GeoPoint& a, const GeoPoint& b) {
  constexpr double kDateLine = 179.995;
  return std::abs(a.longitude) > kDateLine && std::abs(b.longitude) > kDateLine;
}

Edges EdgesOf(const std::vector<Outline>& outlines) {
  std::map<Edge, Use> uses;
  for (const Outline& outline : outlines) {
    if (outline.kind != OutlineKind::kRing) continue;
    for (std::size_t i = 1; i < outline.points.size(); ++i) {
      ++uses[EdgeOf(outline.points[i - 1], outline.points[i])].rings;
    }
  }

  Edges edges;
  for (const Outline& outline : outlines) {
    if (outline.kind != OutlineKind::kRing) continue;
    Side before = Side::kNone;
    for (std::size_t i = 1; i < outline.points.size(); ++i) {
      const GeoPoint& from = outline.points[i - 1];
      const GeoPoint& to = outline.points[i];
      Use& use = uses[EdgeOf(from, to)];
      const Side side = IsCut(from, to) || use.written ? Side::kNone
                        : use.rings == 1               ? Side::kCoast
                                                       : Side::kBorder;
      use.written = true;
      if (side != Side::kNone) {
        auto& lines = side == Side::kCoast ? edges.coasts : edges.borders;
        if (side != before) lines.push_back({from});
        lines.back().push_back(to);
      }
      before = side;
    }
  }
  return edges;
}

}  // namespace brenvo::mkmaps
