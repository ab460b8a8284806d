// What stands on a printed page, kept apart from where it is drawn: on paper, in a file, on a
// screen.
#pragma once

#include <QDataStream>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QString>

namespace brenvo::ui {

inline constexpr double kMmPerInch = 25.4;

struct PageOperation {
  enum class Kind : quint8 { kFont, kText, kTextRight, kLine, kBox, kFilledBox, kPicture };
  Kind kind = Kind::kText;
  // Millimetres: both ends of a line, two corners of a box or picture, a text's top left (or right)
  // corner alone.
  QPointF from, to;
  QString text;  // a font's family, or the text
  double points = 0;
  bool bold = false;
  QImage picture;
};

QDataStream& operator<<(QDataStream& stream, const PageOperation& operation);
QDataStream& operator>>(QDataStream& stream, PageOperation& operation);

// The font of the following texts. It measures alike wherever the page is drawn.
class PageFont {
 public:
  PageFont(const QString& family, double points, bool bold);
  const QFont& Font() const { return font_; }
  double Width(const QString& text) const;  // millimetres
  double Ascent() const;                    // millimetres

 private:
  QFont font_;
  QFontMetricsF metrics_;
};

// Draws a page with the painter's origin as its top left corner.
class PagePainter {
 public:
  PagePainter(QPainter& painter, double dotsPerMm);
  // A font's operation stays in force, over new pages of the painter's device too.
  void Draw(const PageOperation& operation);

 private:
  QPainter& painter_;
  PageFont font_;
};

}  // namespace brenvo::ui
