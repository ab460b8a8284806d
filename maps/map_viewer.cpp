#include "maps/map_viewer.h"

#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>

#include "award_overlays.h"
#include "base/number.h"
#include "base/text.h"
#include "heading_overlay.h"
#include "map_view.h"
#include "overlay_geometry.h"

namespace brenvo::maps {
namespace {

constexpr double kZoomStep = 25, kSmallestZoom = 25, kWholeSize = 100;

struct Overlay {
  std::string_view word;
  void (*paint)(core::Session&);
};
constexpr Overlay kOverlays[] = {{"SQUARE", DisplaySquare},
                                 {"WAZ", DisplayZone},
                                 {"FIELD", DisplayField},
                                 {"ITALIA", DisplayItalia},
                                 {"ROTORE", DisplayHeading}};

std::string PathText(const std::filesystem::path& file) {
  const auto text = file.u8string();
  return {text.begin(), text.end()};
}

void RequireFile(const std::filesystem::path& file) {
  if (!std::ifstream(file)) throw std::runtime_error("Il file " + PathText(file) + " non si apre");
}

void DrawPointer(core::Session& session, platform::PictureViewer& map) {
  if (session.Map.Pointer_X == 0 || session.Map.Pointer_Y == 0) return;
  const MapPoint corner = StampCorner(session.Map.Pointer_X, session.Map.Pointer_Y, ViewOf(map));
  map.DrawStamp(session.File("\\Pointer.bmp"), corner.x, corner.y);
  map.EndAnnotation();
}

// A pointer that is not drawn, at 0, counts too: its map goes to the corner.
void BringPointerIntoView(const core::Session& session, platform::PictureViewer& map) {
  const MapView view = ViewOf(map);
  const FrameSize frame = FrameOf(map);
  if (PointerInView(session.Map.Pointer_X, session.Map.Pointer_Y, view, frame)) return;
  const MapPoint scroll = ScrollToCentre(session.Map.Pointer_X, session.Map.Pointer_Y, view, frame);
  map.SetScroll(scroll.x, scroll.y);
}

void Zoom(platform::PictureViewer& map, double percent) {
  map.SetZoom(percent);
  map.Refresh();
}

void FitWindow(platform::PictureViewer& map) {
  if (map.ImageWidth() == 0) throw std::domain_error("Nessuna mappa da adattare alla finestra");
  Zoom(map, static_cast<double>(map.ViewWidth()) / map.ImageWidth() * 100);
}

void RectangleDrawn(core::Session& session, const frame::MainFrame& frame, const MapBox& drawn) {
  platform::PictureViewer& map = session.Machine.Map();
  if (frame.cmCoordinate.Down()) {
    session.Messages().Show(
        platform::MessageIcon::kNone, "",
        base::Str(map.ScrollX() + drawn.x) + "/" + base::Str(map.ScrollY() + drawn.y));
    return;
  }
  try {
    map.ZoomToRectangle(drawn.x, drawn.y, drawn.width, drawn.height);
  } catch (const std::exception&) {
  }
}

}  // namespace

void ShowMapImage(core::Session& session, std::string_view fileName) {
  platform::PictureViewer& map = session.Machine.Map();
  std::optional<forms::BusyPointer> busy;
  try {
    const std::filesystem::path file = session.File("\\" + std::string(fileName));
    const std::string path = base::Upper(PathText(file));
    if (path != session.Map.CurrentMapPath) {
      session.Map.CurrentMapPath = path;
      RequireFile(file);
      busy.emplace(session.Host());
      session.Host().ProcessEvents();
      map.SetImage(file);
      map.SetZoom(kWholeSize);
    }
    DrawPointer(session, map);
    BringPointerIntoView(session, map);
  } catch (const std::exception&) {
  }
  map.Refresh();
  busy.reset();
  session.Host().ProcessEvents();
}

void DisplayMappa(core::Session& session, frame::MainFrame& frame, std::string_view request) {
  // The frame alone: the child that stands in front in it has not left, and is not activated anew.
  session.Host().Show(frame);
  ShowMapImage(session, session.Map.MapFile);
  for (const Overlay& overlay : kOverlays) {
    if (request.starts_with(overlay.word)) overlay.paint(session);
  }
}

void AttachMapViewer(core::Session& session, frame::MainFrame& frame) {
  platform::PictureViewer& map = session.Machine.Map();
  frame.cmZoom150.OnClick = [&map] { Zoom(map, map.Zoom() + kZoomStep); };
  frame.cmZoom1.OnClick = [&map] { Zoom(map, kWholeSize); };
  frame.cmZoom50.OnClick = [&map] {
    if (map.Zoom() > kSmallestZoom) Zoom(map, map.Zoom() - kZoomStep);
  };
  frame.cmFitWindow.OnClick = [&map] { FitWindow(map); };
  frame.cmPrint.OnClick = [&map] { map.Print(); };
  frame.OnDisplayMap = [&session, &frame](std::string_view request) {
    // The field may hold another one before this is painted.
    DisplayMappa(session, frame, std::string(request));
  };
  frame.OnMapRectangle = [&session, &frame](int left, int top, int width, int height) {
    RectangleDrawn(session, frame, {left, top, width, height});
  };
}

}  // namespace brenvo::maps
