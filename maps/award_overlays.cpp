#include "award_overlays.h"

#include <fmt/format.h>

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/number.h"
#include "base/text.h"
#include "core/entry_key.h"
#include "core/texts.h"
#include "map_view.h"
#include "overlay_geometry.h"

namespace brenvo::maps {
namespace {

// Stripes tell worked from confirmed where red and green look alike.
platform::MapFill FieldFill(bool confirmed) {
  return {confirmed ? base::kGreen : base::kRed, !confirmed};
}
platform::MapFill ProvinceFill(bool confirmed) {
  return {confirmed ? base::kDarkGreen : base::kDarkRed, !confirmed};
}

constexpr const char *kConfirmed = "Confermato", *kWorked = "Lavorato, non confermato";

void ShowLegend(platform::PictureViewer& map, platform::MapFill (*fill)(bool confirmed)) {
  map.ShowLegend({{fill(true), {}, kConfirmed}, {fill(false), {}, kWorked}});
}

// Lets the operator's events run, and tells whether what is being painted on still stands.
class Pause {
 public:
  explicit Pause(core::Session& session) : session_(session), map_(session.Map.CurrentMapPath) {}
  bool GoOn() {
    session_.Host().ProcessEvents();
    return session_.IsOpen() && session_.Map.CurrentMapPath == map_;
  }

 private:
  core::Session& session_;
  std::string map_;
};

// Hands out every entry of a grouped query by the first of its rows, which is a confirmed one if
// there is any. False as soon as `paint` gives false.
template <class Paint>
bool ForEachEntry(engine::Recordset& rows, std::string_view column, Paint paint) {
  std::optional<std::string> before;
  for (; !rows.EOF_(); rows.MoveNext()) {
    const engine::Value key = rows.Field(column);
    if (before && core::SameEntry(*before, key.Text())) continue;
    before = key.Text();
    if (!paint(key, rows.Field("QslRicevuta").Bool())) return false;
  }
  return true;
}

// The place of one entry, from the table that holds it.
struct Spot {
  int x = 0, y = 0;
};
std::optional<Spot> FindSpot(core::Session& session, const std::string& select) {
  const auto row = session.Db.OpenSnapshot(select);
  if (row->EOF_()) return std::nullopt;
  return Spot{static_cast<int>(row->Field("X").Integer()),
              static_cast<int>(row->Field("Y").Integer())};
}

std::string GroupedQuery(std::string_view expression, std::string_view alias,
                         std::string_view selection) {
  return fmt::format(
      "SELECT {0}{1},QslRicevuta FROM Log {2} GROUP BY {0},QslRicevuta ORDER BY {0},QslRicevuta",
      expression, alias, selection);
}

void DrawBox(platform::PictureViewer& map, const MapBox& box, platform::MapFill fill) {
  map.DrawRectangle(box.x, box.y, box.width, box.height, fill);
}

constexpr std::string_view kSampleZone = "15";  // its bitmaps stand in the legend

std::filesystem::path ZoneStamp(core::Session& session, std::string_view zone, bool confirmed) {
  return session.File(fmt::format("\\Zona{}{}.bmp", zone, confirmed ? "c" : "nc"));
}

SquareCalibration DrawGraticule(platform::PictureViewer& map, engine::Recordset& fields) {
  SquareCalibration calibration;
  for (; !fields.EOF_(); fields.MoveNext()) {
    const std::string key = core::FieldText(fields, "Field");
    const double x = fields.Field("X").Number();
    const double y = fields.Field("Y").Number();
    const GraticuleLine drawn = SquareCalibration::LineOf(key, x, y, ViewOf(map));
    map.DrawLine(drawn.line.x, drawn.line.y, drawn.line.width, drawn.line.height);
    calibration.Add(key, x, y);
    map.DrawText(drawn.line.x, drawn.line.y, drawn.letter);
  }
  return calibration;
}

}  // namespace

void DisplayField(core::Session& session) {
  platform::PictureViewer& map = session.Machine.Map();
  Pause pause(session);
  ShowLegend(map, FieldFill);
  const auto rows = session.Db.OpenSnapshot(
      GroupedQuery("Left(Locator,2)", " as Field", session.Handed.QueryText));
  const bool finished = ForEachEntry(*rows, "Field", [&](const engine::Value& key, bool confirmed) {
    DrawBox(map, FieldBox(key.Text(), ViewOf(map)), FieldFill(confirmed));
    return pause.GoOn();
  });
  if (!finished) return;
  map.EndAnnotation();
  map.Refresh();
}

void DisplaySquare(core::Session& session) {
  platform::PictureViewer& map = session.Machine.Map();
  Pause pause(session);
  ShowLegend(map, FieldFill);
  const auto fields = session.Db.OpenSnapshot("Select * from Field order by Field");
  map.SetScroll(0, 0);
  const SquareCalibration calibration = DrawGraticule(map, *fields);
  const auto rows = session.Db.OpenSnapshot(
      GroupedQuery("Left(Locator,4)", " as Square", session.Handed.QueryText));
  const bool finished =
      ForEachEntry(*rows, "Square", [&](const engine::Value& key, bool confirmed) {
        const auto box = calibration.BoxOf(key.Text(), ViewOf(map));
        if (!box) return true;
        DrawBox(map, *box, FieldFill(confirmed));
        return pause.GoOn();
      });
  if (!finished) return;
  map.EndAnnotation();
  map.Refresh();
}

void DisplayZone(core::Session& session) {
  platform::PictureViewer& map = session.Machine.Map();
  Pause pause(session);
  map.ShowLegend({{base::kGreen, ZoneStamp(session, kSampleZone, true), kConfirmed},
                  {base::kRed, ZoneStamp(session, kSampleZone, false), kWorked}});
  const auto rows =
      session.Db.OpenSnapshot(GroupedQuery("[Zona CQ]", "", session.Handed.QueryText));
  const bool finished =
      ForEachEntry(*rows, "Zona CQ", [&](const engine::Value& key, bool confirmed) {
        const std::string number = base::Str(key.Number());
        const auto spot = FindSpot(session, "select X,Y from ZoneCQ where ZonaCQ=" + number);
        if (!spot) return true;
        session.Map.Pointer_X = spot->x;
        session.Map.Pointer_Y = spot->y;
        const MapPoint corner = StampCorner(spot->x, spot->y, ViewOf(map));
        map.DrawStamp(ZoneStamp(session, base::Trim(number), confirmed), corner.x, corner.y);
        return pause.GoOn();
      });
  if (!finished) return;
  map.EndAnnotation();
  map.Refresh();
}

void DisplayItalia(core::Session& session) {
  platform::PictureViewer& map = session.Machine.Map();
  Pause pause(session);
  ShowLegend(map, ProvinceFill);
  const auto rows = session.Db.OpenSnapshot(
      GroupedQuery("Provincia", "", session.Handed.QueryText + " AND Provincia<>''"));
  const bool finished =
      ForEachEntry(*rows, "Provincia", [&](const engine::Value& key, bool confirmed) {
        const auto spot = FindSpot(
            session, "select X,Y from ProvincieItaliane where Provincia='" + key.Text() + "'");
        if (!spot) return true;
        session.Map.Pointer_X = spot->x;
        session.Map.Pointer_Y = spot->y;
        DrawBox(map, ProvinceBox(spot->x, spot->y, ViewOf(map)), ProvinceFill(confirmed));
        return pause.GoOn();
      });
  if (finished) map.EndAnnotation();
}

}  // namespace brenvo::maps
