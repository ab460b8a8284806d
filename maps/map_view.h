// The picture viewer's state as the overlays' arithmetic takes it.
#pragma once

#include "overlay_geometry.h"
#include "platform/picture_viewer.h"

namespace brenvo::maps {

inline MapView ViewOf(platform::PictureViewer& map) {
  return {map.Zoom(), map.ScrollX(), map.ScrollY()};
}
inline FrameSize FrameOf(platform::PictureViewer& map) {
  return {map.ViewWidth(), map.ViewHeight()};
}

}  // namespace brenvo::maps
