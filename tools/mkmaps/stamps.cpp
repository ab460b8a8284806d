#include "mkmaps/stamps.h"

#include <fstream>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QtEndian>
#include <stdexcept>
#include <string>

namespace brenvo::mkmaps {
namespace {

// The middle of the pixel that lies on the marked spot.
constexpr double kSpotX = 27.5, kSpotY = 29.5;

// A bitmap of 32 bits a pixel whose header (version 4) says where its transparency is. Readers
// that know none show white there.
void SaveBitmap(const QImage& picture, const std::filesystem::path& file) {
  const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
  constexpr std::uint32_t kHeader = 14 + 108;
  const auto width = static_cast<std::uint32_t>(image.width());
  const auto height = static_cast<std::uint32_t>(image.height());
  const std::uint32_t bytes = width * height * 4;
  std::string data = "BM";
  const auto add = [&](std::uint32_t value, int size = 4) {
    for (int i = 0; i < size; ++i) data += static_cast<char>(value >> (8 * i) & 255);
  };
  add(kHeader + bytes);
  add(0);
  add(kHeader);
  add(108);
  add(width);
  add(height);
  add(1, 2);
  add(32, 2);
  add(3);  // the masks below tell the channels
  add(bytes);
  add(2835);  // 72 dots an inch
  add(2835);
  add(0);
  add(0);
  for (const std::uint32_t mask : {0x00FF0000U, 0x0000FF00U, 0x000000FFU, 0xFF000000U}) add(mask);
  add(0x73524742);  // sRGB
  data.append(48, '\0');
  for (int y = image.height() - 1; y >= 0; --y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      add(qAlpha(pixel) == 0 ? 0x00FFFFFFU : pixel);
    }
  }
  std::ofstream out(file, std::ios::binary);
  if (!out.write(data.data(), static_cast<std::streamsize>(data.size()))) {
    throw std::runtime_error(file.string() + ": cannot be written");
  }
}

QImage Blank(int width, int height) {
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  return image;
}

// A full disc for a confirmed zone, a ring for another: they differ in more than their colour.
void DrawZoneStamp(int zone, const QColor& colour, bool full, const std::filesystem::path& file) {
  QImage image = Blank(55, 59);
  QPainter painter(&image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  const QPointF spot(kSpotX, kSpotY);
  painter.setPen(QPen(colour.darker(190), 1));
  painter.setBrush(Qt::white);
  painter.drawEllipse(spot, 14.5, 14.5);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawEllipse(spot, 12.5, 12.5);
  if (!full) {
    painter.setBrush(Qt::white);
    painter.drawEllipse(spot, 9, 9);
  }
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(13);
  font.setBold(true);
  painter.setFont(font);
  painter.setPen(full ? QColor(Qt::white) : colour);
  painter.drawText(QRectF(spot.x() - 14, spot.y() - 14, 28, 28), Qt::AlignCenter,
                   QString::number(zone));
  painter.end();
  SaveBitmap(image, file);
}

}  // namespace

void DrawPointerStamp(const std::filesystem::path& out) {
  QImage image = Blank(55, 32);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPointF tip(kSpotX, kSpotY + 0.5);
  const QPointF head(kSpotX, 10.5);
  constexpr double kRadius = 9;
  QPainterPath pin(tip);
  pin.cubicTo(tip.x() - 1.5, 23, head.x() - kRadius, 18, head.x() - kRadius, head.y());
  pin.arcTo(QRectF(head.x() - kRadius, head.y() - kRadius, 2 * kRadius, 2 * kRadius), 180, -180);
  pin.cubicTo(head.x() + kRadius, 18, tip.x() + 1.5, 23, tip.x(), tip.y());
  pin.closeSubpath();
  QRadialGradient red(head - QPointF(3, 3), 16);
  red.setColorAt(0, QColor(238, 86, 72));
  red.setColorAt(1, QColor(190, 28, 24));
  painter.setPen(QPen(QColor(104, 14, 12), 1));
  painter.setBrush(red);
  painter.drawPath(pin);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  painter.drawEllipse(head, 3.6, 3.6);
  painter.end();
  SaveBitmap(image, out / "Pointer.bmp");
}

void DrawZoneStamps(int zone, const std::filesystem::path& out) {
  const std::string name = "Zona" + std::to_string(zone);
  DrawZoneStamp(zone, QColor(0, 128, 0), true, out / (name + "c.bmp"));
  DrawZoneStamp(zone, QColor(200, 0, 0), false, out / (name + "nc.bmp"));
}

}  // namespace brenvo::mkmaps
