#include "ui/map_area.h"

#include <algorithm>
#include <cmath>
#include <QApplication>
#include <QImageReader>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPaintEvent>
#include <stdexcept>
#include <utility>

#include "ui/text.h"

namespace brenvo::ui {
namespace {

constexpr double kSmallestZoom = 5, kLargestZoom = 1600;
// What a picture may take in memory: 8,000 by 8,000 pixels.
constexpr int kMostMegabytes = 256;
// A shorter drag is a click that trembled.
constexpr int kShortestDrag = 4;
constexpr int kTextPoints = 18;
constexpr double kWheelStep = 1.15;

// Null where there is none.
QImage Read(QImageReader& reader) {
  reader.setAutoTransform(true);
  // Charts are larger than the guard that readers put on pictures from strangers.
  reader.setAllocationLimit(kMostMegabytes);
  QImage image = reader.read();
  if (image.isNull()) return image;
  image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                          : QImage::Format_RGB32);
  image.setDevicePixelRatio(1);
  return image;
}

}  // namespace

MapArea::MapArea(QWidget* parent)
    : QMdiArea(parent),
      across_(new QScrollBar(Qt::Horizontal, this)),
      down_(new QScrollBar(Qt::Vertical, this)),
      rectangle_(new QRubberBand(QRubberBand::Rectangle, viewport())) {
  setObjectName(QStringLiteral("PicBuf1"));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFrameShape(QFrame::NoFrame);
  for (QScrollBar* bar : {across_, down_}) {
    bar->hide();
    connect(bar, &QScrollBar::valueChanged, this, [this] { viewport()->update(); });
  }
}

void MapArea::SetImage(const std::filesystem::path& file) {
  QImageReader reader(PathToQt(file));
  QImage image = Read(reader);
  if (image.isNull()) {
    throw std::runtime_error(FromQt(QStringLiteral("L'immagine %1 non si legge: %2")
                                        .arg(PathToQt(file), reader.errorString())));
  }
  image_ = std::move(image);
  fine_ = QImage();
  fineFile_ = file.parent_path() / (file.stem().string() + "@2x" + file.extension().string());
  notes_.Clear();
  legend_.clear();
  ArrangeScrollBars();
  SetScroll(0, 0);
  viewport()->update();
}

void MapArea::SetZoom(double percent) {
  const double zoom = std::clamp(percent, kSmallestZoom, kLargestZoom);
  if (zoom == zoom_) return;
  zoom_ = zoom;
  ArrangeScrollBars();
  viewport()->update();
}

void MapArea::SetScroll(int x, int y) {
  across_->setValue(x);
  down_->setValue(y);
}

// A bar takes room from the other direction, so each may call for its fellow.
void MapArea::ArrangeScrollBars() {
  const QSize picture = (QSizeF(image_.size()) * (zoom_ / 100)).toSize();
  const QSize room = contentsRect().size();
  const int thickness = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  bool needAcross = false, needDown = false;
  for (int turn = 0; turn < 2; ++turn) {
    needAcross = picture.width() > room.width() - (needDown ? thickness : 0);
    needDown = picture.height() > room.height() - (needAcross ? thickness : 0);
  }
  setViewportMargins(0, 0, needDown ? thickness : 0, needAcross ? thickness : 0);
  const QSize view(room.width() - (needDown ? thickness : 0),
                   room.height() - (needAcross ? thickness : 0));
  across_->setRange(0, std::max(0, picture.width() - view.width()));
  across_->setPageStep(view.width());
  across_->setSingleStep(40);
  across_->setGeometry(0, view.height(), view.width(), thickness);
  across_->setVisible(needAcross);
  down_->setRange(0, std::max(0, picture.height() - view.height()));
  down_->setPageStep(view.height());
  down_->setSingleStep(40);
  down_->setGeometry(view.width(), 0, thickness, view.height());
  down_->setVisible(needDown);
}

void MapArea::resizeEvent(QResizeEvent* event) {
  QMdiArea::resizeEvent(event);
  ArrangeScrollBars();
  if (OnResized) OnResized();
}

void MapArea::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.setClipRegion(event->region());
  if (image_.isNull()) {
    PaintEmpty(painter);
    return;
  }
  painter.fillRect(event->rect(), palette().color(QPalette::Window).darker(115));
  const double scale = zoom_ / 100;
  painter.setRenderHint(QPainter::SmoothPixmapTransform, scale < 4);
  const QRectF shown(event->rect());
  const QRectF source(shown.topLeft() / scale + QPointF(ScrollX(), ScrollY()) / scale,
                      shown.size() / scale);
  const QImage& ground = Ground(scale * devicePixelRatioF());
  const double density = static_cast<double>(ground.width()) / image_.width();
  painter.drawImage(shown, ground, QRectF(source.topLeft() * density, source.size() * density));
  painter.save();
  painter.translate(-ScrollX(), -ScrollY());
  painter.scale(scale, scale);
  notes_.Paint(painter, source);
  painter.restore();
  PaintLegend(painter, viewport()->rect(), legend_);
}

const QImage& MapArea::Ground(double scale) {
  if (scale <= 1) return image_;
  if (!fineFile_.empty()) {
    QImageReader reader(PathToQt(std::exchange(fineFile_, {})));
    const QImage fine = reader.canRead() ? Read(reader) : QImage();
    // Another picture of that name would lie beside the places that are told.
    if (fine.size() == 2 * image_.size()) fine_ = fine;
  }
  return fine_.isNull() ? image_ : fine_;
}

QImage MapArea::Picture() const {
  QImage picture = image_;
  if (picture.isNull()) return picture;
  QPainter painter(&picture);
  notes_.Paint(painter, picture.rect());
  painter.setFont(font());
  PaintLegend(painter, picture.rect(), legend_);
  return picture;
}

void MapArea::SetWelcome(const QString& words) {
  welcome_ = words;
  viewport()->update();
}

void MapArea::PaintEmpty(QPainter& painter) const {
  const QPalette colours = palette();
  const QRect area = viewport()->rect();
  const QColor base = colours.color(QPalette::Window);
  const QColor tint = colours.color(QPalette::Highlight);
  const auto mixed = [&](double share) {
    return QColor::fromRgbF(static_cast<float>(base.redF() * (1 - share) + tint.redF() * share),
                            static_cast<float>(base.greenF() * (1 - share) + tint.greenF() * share),
                            static_cast<float>(base.blueF() * (1 - share) + tint.blueF() * share));
  };
  QLinearGradient ground(area.topLeft(), area.bottomLeft());
  ground.setColorAt(0, mixed(0.05));
  ground.setColorAt(1, mixed(0.16));
  painter.fillRect(area, ground);

  painter.setRenderHint(QPainter::Antialiasing);
  // Waves that leave an aerial, below the name.
  const QPointF foot(area.width() / 2.0, area.height() * 0.62);
  painter.setBrush(Qt::NoBrush);
  for (int ring = 1; ring <= 5; ++ring) {
    painter.setPen(QPen(mixed(0.30 - 0.04 * ring), 2));
    const double radius = area.height() * 0.085 * ring;
    painter.drawArc(QRectF(foot.x() - radius, foot.y() - radius, 2 * radius, 2 * radius), 25 * 16,
                    130 * 16);
  }
  QFont name = font();
  name.setPointSizeF(font().pointSizeF() * 3.2);
  name.setLetterSpacing(QFont::PercentageSpacing, 118);
  painter.setFont(name);
  painter.setPen(mixed(0.5));
  painter.drawText(QRectF(0, foot.y() + 8, area.width(), QFontMetricsF(name).height()),
                   Qt::AlignHCenter | Qt::AlignTop, QApplication::applicationDisplayName());
  QFont words = font();
  words.setPointSizeF(font().pointSizeF() * 1.15);
  painter.setFont(words);
  painter.setPen(colours.color(QPalette::WindowText));
  const double below = foot.y() + 8 + QFontMetricsF(name).height() * 1.15;
  painter.drawText(QRectF(12, below, area.width() - 24, area.height() - below),
                   Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, welcome_);
}

void MapArea::Annotate(const QRect& piece, MapNote note) {
  if (image_.isNull()) return;
  const double scale = zoom_ / 100;
  note.place = QRectF((piece.x() + ScrollX()) / scale, (piece.y() + ScrollY()) / scale,
                      piece.width() / scale, piece.height() / scale);
  notes_.Add(std::move(note));
  viewport()->update(piece.adjusted(-2, -2, 2, 2));
}

void MapArea::DrawRectangle(int x, int y, int width, int height, platform::MapFill fill) {
  if (width <= 0 || height <= 0) return;
  MapNote note;
  note.fill = fill;
  Annotate({x, y, width, height}, std::move(note));
}

void MapArea::DrawStamp(const std::filesystem::path& file, int x, int y) {
  MapNote note;
  note.kind = MapNote::Kind::kStamp;
  note.stamp = QImage(PathToQt(file));
  if (note.stamp.isNull()) return;
  // The stamp grows with the picture, so that its tip stays on its spot.
  const QSize size = (QSizeF(note.stamp.size()) * (zoom_ / 100)).toSize();
  Annotate({QPoint(x, y), size}, std::move(note));
}

void MapArea::DrawLine(int x, int y, int width, int height) {
  if (width == 0 && height == 0) return;
  MapNote note;
  note.kind = MapNote::Kind::kLine;
  Annotate({x, y, std::max(width, 1), std::max(height, 1)}, std::move(note));
}

void MapArea::DrawText(int x, int y, std::string_view text) {
  MapNote note;
  note.kind = MapNote::Kind::kText;
  note.words = ToQt(text);
  note.font = font();
  note.font.setBold(true);
  note.font.setPointSizeF(kTextPoints);
  const QSize size = QFontMetrics(note.font).size(0, note.words);
  note.font.setPointSizeF(kTextPoints * 100 / zoom_);
  Annotate({QPoint(x, y), size}, std::move(note));
}

void MapArea::ShowLegend(const std::vector<platform::MapSign>& signs) {
  legend_.clear();
  for (const platform::MapSign& sign : signs) {
    legend_.push_back({sign.fill, sign.stamp.empty() ? QImage() : QImage(PathToQt(sign.stamp)),
                       ToQt(sign.words)});
  }
  viewport()->update();
}

void MapArea::Refresh() { viewport()->update(); }

void MapArea::ZoomToRectangle(int x, int y, int width, int height) {
  if (image_.isNull() || width <= 0 || height <= 0) return;
  const double scale = zoom_ / 100;
  const QPointF corner((x + ScrollX()) / scale, (y + ScrollY()) / scale);
  SetZoom(zoom_ * std::min(double(ViewWidth()) / width, double(ViewHeight()) / height));
  SetScroll(qRound(corner.x() * zoom_ / 100), qRound(corner.y() * zoom_ / 100));
}

void MapArea::Print() {
  if (!image_.isNull() && OnPrint) OnPrint(Picture());
}

bool MapArea::viewportEvent(QEvent* event) {
  // What a child window leaves unanswered bubbles up to here, and is not meant for the map.
  const auto* pointer = event->isPointerEvent() ? static_cast<QPointerEvent*>(event) : nullptr;
  const bool onMap =
      dragging_ != Qt::NoButton ||
      (pointer != nullptr && pointer->pointCount() > 0 &&
       viewport()->childAt(pointer->points().first().position().toPoint()) == nullptr);
  if (!image_.isNull() && onMap) {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
        if (Press(*static_cast<QMouseEvent*>(event))) return true;
        break;
      case QEvent::MouseMove:
        if (Drag(*static_cast<QMouseEvent*>(event))) return true;
        break;
      case QEvent::MouseButtonRelease:
        if (Release(*static_cast<QMouseEvent*>(event))) return true;
        break;
      case QEvent::Wheel:
        if (Wheel(*static_cast<QWheelEvent*>(event))) return true;
        break;
      default:
        break;
    }
  }
  return QMdiArea::viewportEvent(event);
}

bool MapArea::Press(QMouseEvent& event) {
  if (dragging_ != Qt::NoButton) return true;
  dragging_ = event.button();
  pressedAt_ = event.position().toPoint();
  scrollAtPress_ = QPoint(ScrollX(), ScrollY());
  if (dragging_ != Qt::LeftButton) viewport()->setCursor(Qt::ClosedHandCursor);
  return true;
}

bool MapArea::Drag(QMouseEvent& event) {
  if (dragging_ == Qt::NoButton) return false;
  const QPoint here = event.position().toPoint();
  if (dragging_ != Qt::LeftButton) {
    const QPoint to = scrollAtPress_ + pressedAt_ - here;
    SetScroll(to.x(), to.y());
    return true;
  }
  const QRect drawn = QRect(pressedAt_, here).normalized() & viewport()->rect();
  rectangle_->setGeometry(drawn);
  rectangle_->setVisible(drawn.width() > kShortestDrag && drawn.height() > kShortestDrag);
  return true;
}

bool MapArea::Release(QMouseEvent& event) {
  if (event.button() != dragging_) return dragging_ != Qt::NoButton;
  const bool drew = dragging_ == Qt::LeftButton && rectangle_->isVisible();
  dragging_ = Qt::NoButton;
  viewport()->unsetCursor();
  rectangle_->hide();
  const QRect drawn = rectangle_->geometry();
  if (drew && OnRectangle) OnRectangle(drawn.x(), drawn.y(), drawn.width(), drawn.height());
  return true;
}

bool MapArea::Wheel(QWheelEvent& event) {
  if (event.modifiers() & Qt::ShiftModifier) {
    const QPoint by = event.angleDelta();
    SetScroll(ScrollX() - (by.x() != 0 ? by.x() : by.y()), ScrollY());
    return true;
  }
  const double steps = event.angleDelta().y() / 120.0;
  ZoomAround(zoom_ * std::pow(kWheelStep, steps), event.position().toPoint());
  return true;
}

void MapArea::ZoomAround(double percent, QPoint centre) {
  const QPointF spot((centre.x() + ScrollX()) / zoom_, (centre.y() + ScrollY()) / zoom_);
  SetZoom(percent);
  SetScroll(qRound(spot.x() * zoom_) - centre.x(), qRound(spot.y() * zoom_) - centre.y());
}

}  // namespace brenvo::ui
