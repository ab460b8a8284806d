#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <QPolygonF>
#include <QString>
#include <set>
#include <utility>

#include "mkmaps/maps.h"
#include "mkmaps/sheet_painter.h"

namespace brenvo::mkmaps {
namespace {

using namespace map_colours;

QString FieldName(int column, int row) { return QString(QChar('A' + column)) + QChar('A' + row); }

Projection Plain(SheetPoint (*at)(const GeoPoint&)) {
  return {[at](const GeoPoint& position) {
    const SheetPoint point = at(position);
    return QPointF(point.x, point.y);
  }};
}

struct Strokes {
  double shallows = 10, coast = 0.9, border = 0.8;
};

void DrawLand(SheetPainter& sheet, const MapSources& sources, const Projection& projection,
              const Strokes& strokes) {
  sheet.Shallows(sources.worldEdges.coasts, projection, strokes.shallows);
  sheet.Fill(sources.world, projection, kLand);
  sheet.Lines(sources.worldEdges.borders, projection, QPen(kBorder, strokes.border));
  sheet.Lines(sources.worldEdges.coasts, projection,
              QPen(kCoast, strokes.coast, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  sheet.Fill(sources.lakes, projection, kShallows);
}

// What the date line cuts in two, across the strip that stands for it.
void BridgeDateLine(SheetPainter& sheet, const MapSources& sources) {
  const double left = SquareSheet::ColumnX('S'), right = SquareSheet::ColumnX('A');
  for (const Outline& outline : sources.world) {
    for (std::size_t i = 1; i < outline.points.size(); ++i) {
      const GeoPoint& a = outline.points[i - 1];
      const GeoPoint& b = outline.points[i];
      if (!OnDateLine(a, b) || a.longitude < 0 || b.longitude < 0) continue;
      const double top = SquareSheet::Y(std::max(a.latitude, b.latitude));
      const double bottom = SquareSheet::Y(std::min(a.latitude, b.latitude));
      sheet.Painter().fillRect(QRectF(left - 1, top, right - left + 2, bottom - top), kLand);
      sheet.Painter().setPen(QPen(kCoast, 1.2));
      sheet.Painter().drawLine(QPointF(left, top), QPointF(right, top));
      if (b.latitude > -89 && a.latitude > -89) {
        sheet.Painter().drawLine(QPointF(left, bottom), QPointF(right, bottom));
      }
    }
  }
  sheet.Painter().setPen(QPen(kFrame, 1.4, Qt::DashLine));
  const double middle = (left + right) / 2;
  sheet.Painter().drawLine(QPointF(middle, SquareSheet::kTop),
                           QPointF(middle, SquareSheet::kBottom));
}

// A tint a zone, unlike its neighbours' and clear enough for land and sea to show through.
std::map<std::string, QColor> ZoneTints(const std::vector<Outline>& zones) {
  static const QColor kTints[] = {{222, 158, 92, 74},  {126, 170, 96, 74}, {120, 140, 200, 74},
                                  {204, 128, 140, 74}, {216, 200, 96, 74}, {112, 176, 176, 74}};
  std::map<std::pair<long, long>, std::set<std::string>> atVertex;
  for (const Outline& zone : zones) {
    for (const GeoPoint& point : zone.points) {
      atVertex[{std::lround(point.longitude * 10), std::lround(point.latitude * 10)}].insert(
          zone.name);
    }
  }
  std::map<std::string, std::set<std::string>> neighbours;
  for (const auto& [vertex, names] : atVertex) {
    for (const std::string& name : names) neighbours[name].insert(names.begin(), names.end());
  }
  std::map<std::string, std::size_t> chosen;
  std::map<std::string, QColor> tints;
  for (const auto& [name, others] : neighbours) {
    std::set<std::size_t> taken;
    for (const std::string& other : others) {
      if (chosen.contains(other)) taken.insert(chosen[other]);
    }
    std::size_t tint = 0;
    while (taken.contains(tint) && tint + 1 < std::size(kTints)) ++tint;
    chosen[name] = tint;
    tints[name] = kTints[tint];
  }
  return tints;
}

void TintZones(SheetPainter& sheet, const std::vector<Outline>& zones,
               const Projection& projection) {
  const auto tints = ZoneTints(zones);
  for (const Outline& zone : zones) {
    if (zone.kind != OutlineKind::kRing) continue;
    QPolygonF area;
    for (const GeoPoint& point : zone.points) area.append(projection.at(point));
    sheet.Painter().setPen(Qt::NoPen);
    sheet.Painter().setBrush(tints.at(zone.name));
    sheet.Painter().drawPolygon(area);
  }
}

}  // namespace

void DrawFieldMap(const MapSources& sources, const std::filesystem::path& out) {
  SheetPainter sheet(FieldSheet::kSize);
  const Projection projection = Plain(FieldSheet::At);
  const QRectF area(projection.at({-180, 90}), projection.at({180, -90}));
  sheet.BeginArea(area);
  DrawLand(sheet, sources, projection, {6, 0.7, 0.6});
  sheet.Graticule(projection, QRectF(-180, -90, 360, 180), 20, 10, QPen(kGraticule, 1.2));
  sheet.EndArea();
  for (int column = 0; column < 18; ++column) {
    for (int row = 0; row < 18; ++row) {
      sheet.Write(projection.at({column * 20 - 170.0, row * 10 - 85.0}), FieldName(column, row),
                  {11, true, kPaleWords});
    }
    const double x = projection.at({column * 20 - 170.0, 0}).x();
    const double y = projection.at({0, column * 10 - 85.0}).y();
    const QString letter(QChar('A' + column));
    for (const double edge : {area.top() - 13, area.bottom() + 15}) {
      sheet.Write({x, edge}, letter, {14, true});
    }
    for (const double edge : {area.left() - 20, area.right() + 20}) {
      sheet.Write({edge, y}, letter, {14, true});
    }
  }
  sheet.Frame(area);
  sheet.SaveTwice(out / FieldSheet::kFile);
}

void DrawSquareMap(const MapSources& sources, const std::filesystem::path& out) {
  using S = SquareSheet;
  SheetPainter sheet(S::kSize);
  const QRectF area(S::kLeft, S::kTop, S::kRight - S::kLeft, S::kBottom - S::kTop);
  const Projection west{
      [](const GeoPoint& at) { return QPointF(S::WestX(at.longitude), S::Y(at.latitude)); }};
  const Projection east{
      [](const GeoPoint& at) { return QPointF(S::EastX(at.longitude), S::Y(at.latitude)); }};
  const double middle = (S::ColumnX('S') + S::ColumnX('A')) / 2.0;
  const QRectF westArea(area.left(), area.top(), middle - area.left(), area.height());
  const QRectF eastArea(middle, area.top(), area.right() - middle, area.height());
  const auto half = [&](const Projection& projection, const QRectF& part, double from, double to) {
    sheet.BeginArea(part);
    DrawLand(sheet, sources, projection, {22, 1.3, 1.1});
    // Squares faintly, fields plainly.
    sheet.Graticule(projection, QRectF(from, -90, to - from, 180), 2, 1,
                    QPen(QColor(84, 120, 146, 26), 1));
    sheet.Graticule(projection, QRectF(from, -90, to - from, 180), 10, 10,
                    QPen(QColor(84, 120, 146, 60), 1));
    sheet.EndArea();
  };
  half(west, westArea, -30, 180);
  half(east, eastArea, -180, -30);
  sheet.Clip(area);
  BridgeDateLine(sheet, sources);
  for (int row = 0; row < 18; ++row) {
    for (int column = 0; column < 18; ++column) {
      const GeoPoint centre{column * 20 - 170.0, row * 10 - 85.0};
      const SheetPoint at = S::At(centre);
      sheet.Write({column == 7 ? S::EastX(-35) : at.x, at.y}, FieldName(column, row),
                  {34, true, QColor(74, 92, 108, 70)});
    }
  }
  sheet.EndArea();
  sheet.Frame(area);
  sheet.Save(out / S::kFile);
}

void DrawZoneMap(const MapSources& sources, const std::filesystem::path& out) {
  SheetPainter sheet(ZoneSheet::kSize);
  const Projection plain = Plain(ZoneSheet::At);
  const double left = ZoneSheet::X(ZoneSheet::kCut), right = ZoneSheet::X(ZoneSheet::kCut + 360);
  const double top = plain.at({0, ZoneSheet::kNorth}).y(),
               bottom = plain.at({0, ZoneSheet::kSouth}).y();
  const QRectF area(left, top, right - left, bottom - top);
  // The world as it is cut, and its beginning once more at the right end.
  const auto turned = [&](double by) {
    return Projection{[&plain, by](const GeoPoint& at) {
      return QPointF(ZoneSheet::X(at.longitude + by), plain.at({0, at.latitude}).y());
    }};
  };
  const double dateLine = ZoneSheet::X(180);
  const QRectF halves[] = {{left, top, dateLine - left, bottom - top},
                           {dateLine, top, right - dateLine, bottom - top}};
  const Projection projections[] = {turned(0), turned(360)};
  for (int i = 0; i < 2; ++i) {
    sheet.BeginArea(halves[i]);
    DrawLand(sheet, sources, projections[i], {8, 0.8, 0.6});
    sheet.Graticule(projections[i], QRectF(-180, -90, 360, 175), 30, 30, QPen(kGraticule, 0.8));
    TintZones(sheet, sources.zones, projections[i]);
    const QPen zone(QColor(150, 96, 64), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    sheet.Lines(sources.zoneEdges.coasts, projections[i], zone);
    sheet.Lines(sources.zoneEdges.borders, projections[i], zone);
    sheet.EndArea();
  }
  for (const Outline& outline : sources.zones) {
    if (outline.kind != OutlineKind::kPoint) continue;
    const QPointF at = plain.at(outline.points.front());
    sheet.Painter().setPen(QPen(kFrame, 1));
    sheet.Painter().setBrush(QColor(250, 248, 242, 215));
    sheet.Painter().drawEllipse(at, 12.5, 12.5);
    sheet.Write(at, QString::fromStdString(outline.name), {13, true});
  }
  sheet.Frame(area);
  sheet.SaveTwice(out / ZoneSheet::kFile);
}

}  // namespace brenvo::mkmaps
