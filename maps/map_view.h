// The picture viewer's state as the overlays' arithmetic takes it.
#pragma once

#include "overlay_geometry.h"
#include "platform/picture_viewer.h"

namespace brenvo {

inline MapView ViewOf(PictureViewer& map) { return {map.Zoom(), map.ScrollX(), map.ScrollY()}; }
inline FrameSize FrameOf(PictureViewer& map) { return {map.ViewWidth(), map.ViewHeight()}; }

}  // namespace brenvo
