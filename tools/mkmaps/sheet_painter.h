// One manner of drawing for all maps.
#pragma once

#include <filesystem>
#include <functional>
#include <QColor>
#include <QPainter>
#include <QPen>
#include <QPicture>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <vector>

#include "mkmaps/outlines.h"
#include "mkmaps/sheets.h"

namespace brenvo::mkmaps {

// Calm enough for green and red marks to stand out.
namespace map_colours {
inline const QColor kSea(203, 223, 235), kShallows(224, 238, 245), kLand(246, 240, 224),
    kOtherLand(233, 229, 217), kCoast(112, 142, 161), kBorder(190, 170, 137),
    kGraticule(84, 120, 146, 70), kWords(74, 92, 108), kPaleWords(74, 92, 108, 95),
    kPaper(250, 248, 242), kFrame(92, 116, 134);
}  // namespace map_colours

// Where a sheet shows a position, and which outlines it can show at all.
struct Projection {
  std::function<QPointF(const GeoPoint&)> at;
  std::function<bool(const GeoLine&)> shows = [](const GeoLine&) { return true; };
};

class SheetPainter {
 public:
  // A sheet of paper.
  explicit SheetPainter(const SheetSize& size);

  // Everything until the next call stays within the area, and the sea fills it.
  void BeginArea(const QRectF& area);
  // The same, on what is there already.
  void Clip(const QRectF& area);
  void EndArea();

  // A light edge of the sea along coasts.
  void Shallows(const std::vector<GeoLine>& coasts, const Projection& projection, double width);
  void Fill(const std::vector<Outline>& outlines, const Projection& projection,
            const QColor& colour);
  void Lines(const std::vector<GeoLine>& lines, const Projection& projection, const QPen& pen);
  // Meridians and parallels within the limits, as lines of short pieces.
  void Graticule(const Projection& projection, const QRectF& degrees, double stepX, double stepY,
                 const QPen& pen);

  struct Words {
    double size = 12;  // pixels
    bool bold = false;
    QColor colour = map_colours::kWords;
    QColor halo = Qt::transparent;
  };
  void Write(const QPointF& centre, const QString& text, const Words& words);
  // Where Write would put them.
  static QRectF Extent(const QPointF& centre, const QString& text, const Words& words);
  // A title on a plate in the upper left corner of an area.
  void Title(const QRectF& area, const QString& text);
  void Frame(const QRectF& area);

  QPainter& Painter() { return painter_; }
  // JPEG. Throws std::runtime_error.
  void Save(const std::filesystem::path& file) { SaveAt(1, file); }
  // The same, and beside it NAME@2x with twice as many pixels a side, for who looks closely.
  void SaveTwice(const std::filesystem::path& file);

 private:
  void SaveAt(int density, const std::filesystem::path& file);

  SheetSize size_;
  // Drawn when it is saved, at any density.
  QPicture picture_;
  QPainter painter_;
};

}  // namespace brenvo::mkmaps
