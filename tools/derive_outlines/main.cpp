#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/csv.h"

namespace {

using Path = std::filesystem::path;

struct Source {
  Path file;
  const char* name;  // property that names a feature; empty for none
  const char* group;
  double step;  // of the grid, degrees
};

// A line of the table: the first vertex in steps from 0, 0, then each from the one before.
class Table {
 public:
  explicit Table(const Path& file) : out_(file, std::ios::binary) {
    if (!out_) throw std::runtime_error(file.string() + ": cannot be written");
    out_ << "Kind,Name,Group,Step,Points\n";
  }

  void WritePoint(const std::string& name, const std::string& group, double step,
                  const QJsonArray& point) {
    QJsonArray vertices;
    vertices.append(point);
    Write("point", name, group, step, vertices);
  }

  void Write(const std::string& kind, const std::string& name, const std::string& group,
             double step, const QJsonArray& vertices) {
    std::vector<std::pair<long, long>> points;
    for (const auto& vertex : vertices) {
      const QJsonArray pair = vertex.toArray();
      const std::pair point(std::lround(pair[0].toDouble() / step),
                            std::lround(pair[1].toDouble() / step));
      if (points.empty() || points.back() != point) points.push_back(point);
    }
    if (kind == "ring" && points.size() < 4) return;
    if (kind == "line" && points.size() < 2) return;
    out_ << kind << ',' << name << ',' << group << ',' << step << ',';
    std::pair<long, long> before(0, 0);
    const char* blank = "";
    for (const auto& point : points) {
      out_ << blank << point.first - before.first << ' ' << point.second - before.second;
      before = point;
      blank = " ";
    }
    out_ << '\n';
  }

 private:
  std::ofstream out_;
};

QJsonArray FeaturesOf(const Path& path) {
  QFile file(QString::fromStdString(path.string()));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error(path.string() + ": no such file");
  return QJsonDocument::fromJson(file.readAll()).object()["features"].toArray();
}

std::string Property(const QJsonObject& feature, const char* name) {
  if (*name == '\0') return {};
  return feature["properties"].toObject()[QLatin1String(name)].toVariant().toString().toStdString();
}

void WriteFeatures(Table& table, const Source& source) {
  for (const auto& each : FeaturesOf(source.file)) {
    const QJsonObject feature = each.toObject();
    const std::string name = Property(feature, source.name);
    const std::string group = Property(feature, source.group);
    const QJsonObject geometry = feature["geometry"].toObject();
    const QString type = geometry["type"].toString();
    const QJsonArray coordinates = geometry["coordinates"].toArray();
    const auto write = [&](const char* kind, const QJsonArray& lines) {
      for (const auto& line : lines) table.Write(kind, name, group, source.step, line.toArray());
    };
    if (type == "Polygon") {
      write("ring", coordinates);
    } else if (type == "MultiPolygon") {
      for (const auto& polygon : coordinates) write("ring", polygon.toArray());
    } else if (type == "MultiLineString") {
      write("line", coordinates);
    } else {
      throw std::runtime_error("unexpected geometry " + type.toStdString());
    }
  }
}

void WriteZones(const Path& from, const Path& to) {
  Table table(to / "zones.csv");
  const Source source{from / "cq_zones.geojson", "zone", "", 0.05};
  WriteFeatures(table, source);
  for (const auto& each : FeaturesOf(source.file)) {
    const QJsonObject feature = each.toObject();
    table.WritePoint(Property(feature, "zone"), "", source.step,
                     feature["properties"].toObject()["label"].toArray());
  }
}

void WriteItaly(const Path& from, const Path& to) {
  Table table(to / "italy.csv");
  WriteFeatures(table, {from / "maps/italy_area_10m_land.geojson", "", "", 0.005});
  WriteFeatures(table, {from / "maps/italy_area_10m_borders.geojson", "", "", 0.005});
  constexpr double kFine = 0.002;
  WriteFeatures(table, {from / "it_provinces_ne10m.geojson", "sigla", "region", kFine});
  const brenvo::base::CsvTable provinces = brenvo::base::ReadCsv(from / "it_provinces.csv");
  for (const auto& row : provinces.Rows) {
    const auto cell = [&](const char* heading) { return row.Cells[provinces.Column(heading)]; };
    const QJsonArray centre{std::stod(cell("centre_lon")), std::stod(cell("centre_lat"))};
    table.WritePoint(cell("sigla"), cell("region"), kFine, centre);
  }
}

void Derive(const Path& from, const Path& data) {
  const Path to = data / "outlines";
  std::filesystem::create_directories(to);
  Table world(to / "world.csv");
  WriteFeatures(world, {from / "maps/world_50m_countries.geojson", "a3", "", 0.01});
  Table lakes(to / "lakes.csv");
  WriteFeatures(lakes, {from / "maps/europe_10m_lakes.geojson", "n", "", 0.02});
  WriteZones(from, to);
  WriteItaly(from, to);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: derive_outlines SOURCES DATA\n", stderr);
    return 2;
  }
  try {
    Derive(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "derive_outlines: %s\n", error.what());
    return 1;
  }
  return 0;
}
