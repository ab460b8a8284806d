#include <algorithm>
#include <cmath>
#include <functional>
#include <QString>
#include <utility>
#include <vector>

#include "mkmaps/maps.h"
#include "mkmaps/sheet_painter.h"

namespace brenvo::mkmaps {
namespace {

using namespace map_colours;

QPen Stroke(const QColor& colour, double width) {
  return QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

std::vector<GeoLine> LinesOf(const std::vector<Outline>& outlines) {
  std::vector<GeoLine> lines;
  for (const Outline& outline : outlines) {
    if (outline.kind == OutlineKind::kLine) lines.push_back(outline.points);
  }
  return lines;
}

// Those with a name, or those without.
std::vector<Outline> Named(const std::vector<Outline>& outlines, bool named) {
  std::vector<Outline> chosen;
  std::copy_if(outlines.begin(), outlines.end(), std::back_inserter(chosen),
               [&](const Outline& outline) {
                 return outline.kind == OutlineKind::kRing && outline.name.empty() != named;
               });
  return chosen;
}

using Project = std::function<QPointF(const GeoPoint&)>;

// What lies wholly off the sheet need not be drawn.
bool Touches(const QRectF& area, const Project& at, const GeoLine& line) {
  const QRectF wide = area.adjusted(-60, -60, 60, 60);
  double left = 1e9, right = -1e9, top = 1e9, bottom = -1e9;
  for (const GeoPoint& point : line) {
    const QPointF p = at(point);
    left = std::min(left, p.x());
    right = std::max(right, p.x());
    top = std::min(top, p.y());
    bottom = std::max(bottom, p.y());
  }
  return left <= wide.right() && right >= wide.left() && top <= wide.bottom() &&
         bottom >= wide.top();
}

Projection FlatOn(const QRectF& area, SheetPoint (*at)(const GeoPoint&)) {
  const Project project = [at](const GeoPoint& position) {
    const SheetPoint point = at(position);
    return QPointF(point.x, point.y);
  };
  return {project, [=](const GeoLine& line) { return Touches(area, project, line); }};
}

Projection AzimuthalOn(const QRectF& area, const Region& region) {
  const Project project = [region](const GeoPoint& position) {
    const SheetPoint point = region.At(position);
    return QPointF(point.x, point.y);
  };
  // The far side of the earth lies beyond every sheet, but its shapes are turned inside out there.
  const auto near = [region](const GeoPoint& point) { return region.Distance(point) < 100; };
  return {project, [=](const GeoLine& line) {
            return std::any_of(line.begin(), line.end(), near) && Touches(area, project, line);
          }};
}

// The borders of the provinces with each other: within a region, and between two. Neighbours do
// not follow quite the same line, so what lies behind an edge is looked up a little way off.
struct ProvinceBorders {
  std::vector<GeoLine> inner, regional;
};
ProvinceBorders BordersOf(const std::vector<Outline>& provinces) {
  constexpr double kBehind = 0.008;
  ProvinceBorders borders;
  for (const Outline& province : provinces) {
    for (std::size_t i = 1; i < province.points.size(); ++i) {
      const GeoPoint& a = province.points[i - 1];
      const GeoPoint& b = province.points[i];
      const double length = std::hypot(b.longitude - a.longitude, b.latitude - a.latitude);
      const double side = kBehind / length;
      for (const double sign : {side, -side}) {
        const GeoPoint behind{(a.longitude + b.longitude) / 2 - (b.latitude - a.latitude) * sign,
                              (a.latitude + b.latitude) / 2 + (b.longitude - a.longitude) * sign};
        const Outline* other = nullptr;
        for (const Outline& each : provinces) {
          if (each.name != province.name && Encloses(each.points, behind)) other = &each;
        }
        if (other == nullptr || other->name < province.name) continue;
        (other->group == province.group ? borders.inner : borders.regional).push_back({a, b});
      }
    }
  }
  return borders;
}

// Words beside spots: below one if there is room, else above it or at its sides; words that find no
// room at all are left out.
class Labels {
 public:
  explicit Labels(SheetPainter& sheet) : sheet_(sheet) {}
  void Reserve(const QPointF& spot, double radius) {
    spots_.push_back(QRectF(spot.x() - radius, spot.y() - radius, 2 * radius, 2 * radius));
  }
  void Write(const QPointF& spot, double radius, const QString& text,
             const SheetPainter::Words& words) {
    const QSizeF size = SheetPainter::Extent({0, 0}, text, words).size();
    const double down = radius + size.height() / 2 + 3, aside = radius + size.width() / 2 + 3;
    for (const QPointF& by : {QPointF(0, down), QPointF(0, -down), QPointF(aside, 0),
                              QPointF(-aside, 0), QPointF(aside, down), QPointF(-aside, down)}) {
      const QRectF extent = SheetPainter::Extent(spot + by, text, words);
      if (Meets(spots_, extent) || Meets(words_, extent.adjusted(-2, -2, 2, 2))) continue;
      words_.push_back(extent);
      sheet_.Write(spot + by, text, words);
      return;
    }
  }

 private:
  static bool Meets(const std::vector<QRectF>& taken, const QRectF& extent) {
    return std::any_of(taken.begin(), taken.end(),
                       [&](const QRectF& each) { return each.intersects(extent); });
  }
  SheetPainter& sheet_;
  std::vector<QRectF> spots_, words_;
};

}  // namespace

void DrawItaly(const MapSources& sources, const std::filesystem::path& out) {
  using I = ItalySheet;
  SheetPainter sheet(I::kSize);
  const QRectF area(I::kMargin, I::kMargin, I::kSize.width - 2 * I::kMargin,
                    I::kSize.height - 2 * I::kMargin);
  const Projection projection = FlatOn(area, I::At);
  const std::vector<Outline> provinces = Named(sources.italy, true);
  const std::vector<Outline> others = Named(sources.italy, false);
  const Edges otherEdges = EdgesOf(others);

  sheet.BeginArea(area);
  sheet.Shallows(otherEdges.coasts, projection, 22);
  sheet.Fill(others, projection, kOtherLand);
  sheet.Fill(provinces, projection, kLand);
  const ProvinceBorders borders = BordersOf(provinces);
  sheet.Lines(borders.inner, projection, Stroke(QColor(208, 192, 162), 1));
  sheet.Lines(borders.regional, projection, Stroke(QColor(163, 134, 94), 1.7));
  sheet.Lines(LinesOf(sources.italy), projection, Stroke(QColor(128, 102, 72), 1.7));
  sheet.Lines(otherEdges.coasts, projection, Stroke(kCoast, 1.1));
  sheet.Graticule(projection, QRectF(4, 34, 16, 15), 2, 1, QPen(kGraticule, 1));
  constexpr double kHalf = 5;
  Labels labels(sheet);
  sheet.Painter().setPen(QPen(QColor(74, 92, 108, 130), 1));
  sheet.Painter().setBrush(QColor(255, 255, 255, 160));
  std::vector<std::pair<QPointF, QString>> spots;
  for (const Outline& outline : sources.italy) {
    if (outline.kind != OutlineKind::kPoint) continue;
    const QPointF at = projection.at(outline.points.front());
    spots.emplace_back(at, QString::fromStdString(outline.name));
    labels.Reserve(at, kHalf);
    sheet.Painter().drawRect(QRectF(at.x() - kHalf, at.y() - kHalf, 2 * kHalf, 2 * kHalf));
  }
  for (const auto& [at, code] : spots) labels.Write(at, kHalf, code, {10, true, kWords, kLand});
  sheet.Title(area, QStringLiteral("Italia - provincie"));
  sheet.EndArea();
  sheet.Frame(area);
  sheet.SaveTwice(out / I::kFile);
}

void DrawEurope(const MapSources& sources, const std::filesystem::path& out) {
  using E = EuropeSheet;
  SheetPainter sheet(E::kSize);
  const QRectF area(E::kMargin, E::kMargin, E::kSize.width - 2 * E::kMargin,
                    E::kSize.height - 2 * E::kMargin);
  const Projection projection = FlatOn(area, E::At);
  sheet.BeginArea(area);
  sheet.Shallows(sources.worldEdges.coasts, projection, 14);
  sheet.Fill(sources.world, projection, kLand);
  sheet.Fill(sources.lakes, projection, kShallows);
  sheet.Lines(sources.lakeEdges.coasts, projection, Stroke(kCoast, 0.7));
  sheet.Lines(sources.worldEdges.borders, projection, Stroke(kBorder, 1));
  sheet.Lines(sources.worldEdges.coasts, projection, Stroke(kCoast, 1));
  const QRectF degrees(E::kWest, E::kSouth, E::kEast - E::kWest, E::kNorth - E::kSouth);
  sheet.Graticule(projection, degrees, 2, 1, QPen(QColor(84, 120, 146, 55), 0.8));
  sheet.Graticule(projection, QRectF(-40, 20, 100, 60), 20, 10,
                  QPen(QColor(84, 120, 146, 190), 1.5));
  for (int column = 7; column <= 11; ++column) {
    for (int row = 11; row <= 16; ++row) {
      const double west = std::max(column * 20 - 180, E::kWest);
      const double east = std::min(column * 20 - 160, E::kEast);
      const double south = std::max(row * 10 - 90, E::kSouth);
      const double north = std::min(row * 10 - 80, E::kNorth);
      sheet.Write(projection.at({(west + east) / 2, (south + north) / 2}),
                  QString(QChar('A' + column)) + QChar('A' + row),
                  {34, true, QColor(74, 92, 108, 60)});
    }
  }
  sheet.EndArea();
  // The digits of the squares along the edges.
  for (int west = E::kWest; west < E::kEast; west += 2) {
    const double x = projection.at({west + 1.0, 0}).x();
    const QString digit = QString::number((west + 180) % 20 / 2);
    for (const double y : {area.top() - 12, area.bottom() + 12})
      sheet.Write({x, y}, digit, {12, true});
  }
  for (int south = E::kSouth; south < E::kNorth; ++south) {
    const double y = projection.at({0, south + 0.5}).y();
    const QString digit = QString::number((south + 90) % 10);
    for (const double x : {area.left() - 13, area.right() + 13})
      sheet.Write({x, y}, digit, {12, true});
  }
  sheet.Frame(area);
  sheet.Save(out / E::kFile);
}

void DrawRegion(const MapSources& sources, const Region& region, const std::filesystem::path& out) {
  SheetPainter sheet(region.size);
  const QRectF area(10, 10, region.size.width - 20, region.size.height - 20);
  const Projection projection = AzimuthalOn(area, region);
  sheet.BeginArea(area);
  sheet.Shallows(sources.worldEdges.coasts, projection, 14);
  sheet.Fill(sources.world, projection, kLand);
  sheet.Fill(sources.lakes, projection, kShallows);
  sheet.Lines(sources.worldEdges.borders, projection, Stroke(kBorder, 0.9));
  sheet.Lines(sources.worldEdges.coasts, projection, Stroke(kCoast, 0.9));
  sheet.Graticule(projection, QRectF(-180, -80, 360, 160), 10, 10, QPen(kGraticule, 0.8));
  constexpr double kDot = 2.2;
  Labels labels(sheet);
  std::vector<const CountryMark*> shown;
  for (const CountryMark& country : sources.countries) {
    if (region.Shows(country.position)) shown.push_back(&country);
  }
  sheet.Painter().setPen(Qt::NoPen);
  sheet.Painter().setBrush(QColor(176, 58, 46));
  for (const CountryMark* country : shown) {
    const QPointF at = projection.at(country->position);
    sheet.Painter().drawEllipse(at, kDot, kDot);
    labels.Reserve(at, kDot);
  }
  for (const CountryMark* country : shown) {
    labels.Write(projection.at(country->position), kDot, QString::fromStdString(country->code),
                 {11, true, kWords, QColor(250, 248, 242, 200)});
  }
  sheet.Title(area,
              QString::fromUtf8(region.title.data(), static_cast<qsizetype>(region.title.size())));
  sheet.EndArea();
  sheet.Frame(area);
  sheet.SaveTwice(out / region.file);
}

}  // namespace brenvo::mkmaps
