#include "ui/map_notes.h"

#include <algorithm>

namespace brenvo::ui {
namespace {

constexpr int kStripeGap = 7;  // pixels of the screen
constexpr int kLegendGap = 6, kLegendMargin = 10;
// How much of a fill is white: the letters below it are read.
constexpr double kLightness = 0.35;

QColor ColourOf(base::Colour colour) { return QColor(colour.red, colour.green, colour.blue); }

QColor Lighter(const QColor& colour) {
  const auto mixed = [](int part) { return static_cast<int>(part + (255 - part) * kLightness); };
  return QColor(mixed(colour.red()), mixed(colour.green()), mixed(colour.blue()));
}

// In pixels of what is painted on, wherever the painter's own transformation leads.
void PaintFill(QPainter& painter, const QRect& place, const platform::MapFill& fill) {
  painter.save();
  painter.setWorldMatrixEnabled(false);
  const QColor colour = ColourOf(fill.colour);
  painter.setCompositionMode(QPainter::CompositionMode_Multiply);
  painter.fillRect(place, Lighter(colour));
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.setClipRect(place, Qt::IntersectClip);
  if (fill.striped) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0, 0, 0, 110), 1.2));
    const int height = place.height();
    for (int x = place.left() - height; x <= place.right(); x += kStripeGap) {
      painter.drawLine(x, place.top() + height, x + height, place.top());
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
  }
  painter.setPen(colour);
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(place.adjusted(0, 0, -1, -1));
  painter.restore();
}

QRect OnScreen(const QPainter& painter, const QRectF& place) {
  const QRectF shown = painter.worldTransform().mapRect(place);
  const QPoint from = shown.topLeft().toPoint(), to = shown.bottomRight().toPoint();
  return {from.x(), from.y(), std::max(1, to.x() - from.x()), std::max(1, to.y() - from.y())};
}

void PaintNote(QPainter& painter, const MapNote& note) {
  switch (note.kind) {
    case MapNote::Kind::kFill:
      PaintFill(painter, OnScreen(painter, note.place), note.fill);
      break;
    case MapNote::Kind::kStamp:
      painter.drawImage(note.place, note.stamp);
      break;
    case MapNote::Kind::kLine: {
      const QRect place = OnScreen(painter, note.place);
      painter.save();
      painter.setWorldMatrixEnabled(false);
      painter.fillRect(place, Qt::black);
      painter.restore();
      break;
    }
    case MapNote::Kind::kText:
      painter.setFont(note.font);
      painter.setPen(Qt::black);
      painter.drawText(note.place, Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, note.words);
      break;
  }
}

}  // namespace

void MapNotes::Add(MapNote note) {
  if (note.kind == MapNote::Kind::kFill) {
    std::erase_if(notes_, [&](const MapNote& each) {
      return each.kind == MapNote::Kind::kFill && each.place == note.place;
    });
  }
  notes_.push_back(std::move(note));
}

void MapNotes::Paint(QPainter& painter, const QRectF& piece) const {
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setRenderHint(QPainter::TextAntialiasing);
  const QRectF reach = piece.adjusted(-2, -2, 2, 2);
  for (const MapNote& note : notes_) {
    if (note.place.intersects(reach)) PaintNote(painter, note);
  }
}

QRect PaintLegend(QPainter& painter, const QRect& area, const std::vector<LegendLine>& lines) {
  if (lines.empty()) return {};
  const QFontMetrics letters(painter.font());
  const int sample = letters.height() + kLegendGap;
  int widest = 0;
  for (const LegendLine& line : lines) {
    widest = std::max(widest, letters.horizontalAdvance(line.words));
  }
  const int step = sample + kLegendGap;
  const QSize size(3 * kLegendGap + 2 * sample + widest,
                   static_cast<int>(lines.size()) * step + kLegendGap);
  const QRect panel(
      QPoint(area.left() + kLegendMargin, area.bottom() - kLegendMargin - size.height()), size);
  painter.fillRect(panel, Qt::white);
  painter.setPen(Qt::darkGray);
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(panel.adjusted(0, 0, -1, -1));
  int top = panel.top() + kLegendGap;
  for (const LegendLine& line : lines) {
    const QRect place(panel.left() + kLegendGap, top, 2 * sample, sample);
    if (line.stamp.isNull()) {
      PaintFill(painter, place, line.fill);
    } else {
      const QSize fitted = line.stamp.size().scaled(place.size(), Qt::KeepAspectRatio);
      QRect shown(QPoint(0, 0), fitted);
      shown.moveCenter(place.center());
      painter.setRenderHint(QPainter::SmoothPixmapTransform);
      painter.drawImage(shown, line.stamp);
    }
    painter.setPen(Qt::black);
    painter.drawText(QRect(place.right() + kLegendGap, top, widest + kLegendGap, sample),
                     Qt::AlignLeft | Qt::AlignVCenter, line.words);
    top += step;
  }
  return panel;
}

}  // namespace brenvo::ui
