// What is drawn onto a map, kept as what it is, so that it is sharp at every zoom.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QString>
#include <vector>

#include "platform/picture_viewer.h"

namespace brenvo::ui {

// One annotation. Places are pixels of the picture.
struct MapNote {
  enum class Kind { kFill, kStamp, kLine, kText };
  Kind kind = Kind::kFill;
  QRectF place;
  platform::MapFill fill = base::kWhite;
  QImage stamp;
  QString words;
  QFont font;  // as large as the words are at zoom 100
};

class MapNotes {
 public:
  void Clear() { notes_.clear(); }
  // One fill takes the place of another.
  void Add(MapNote note);
  // Those that meet `piece` (pixels of the picture). The painter's transformation brings pixels of
  // the picture to where they are shown.
  void Paint(QPainter& painter, const QRectF& piece) const;

 private:
  std::vector<MapNote> notes_;
};

// A line of the legend, its sample in memory.
struct LegendLine {
  platform::MapFill fill = base::kWhite;
  QImage stamp;
  QString words;
};

// Draws the legend into the left lower corner of the area, and gives back the rectangle that it
// takes; empty where there is nothing to draw.
QRect PaintLegend(QPainter& painter, const QRect& area, const std::vector<LegendLine>& lines);

}  // namespace brenvo::ui
