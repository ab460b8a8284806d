#include "picture_widget.h"

#include <QLabel>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <span>

#include "ui/text.h"

namespace brenvo::ui {
namespace {

constexpr QSize kRoom(200, 64);  // of a small picture

// The picture at its own size, with the circles over it.
class Canvas : public QWidget {
 public:
  Canvas(forms::PictureBox& field, ViewContext& context) : field_(field), context_(context) {
    drawn_ = context.Follow(field.Drawn, [this](const forms::PictureBox::Circle& circle) {
      if (picture_.isNull()) FitCircles({&circle, 1});
      update(AreaOf(circle));
    });
  }

  void Follow() {
    const QString file = PathToQt(field_.Picture());
    if (file != file_) {
      file_ = file;
      picture_ = file.isEmpty() ? QPixmap() : QPixmap(file);
      // A cleared picture leaves its area, so that the circles stay where they were.
      if (!picture_.isNull()) setFixedSize(picture_.size());
    }
    if (picture_.isNull()) FitCircles(field_.Circles());
    update();
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::white);
    painter.drawPixmap(0, 0, picture_);
    if (!context_.Alive()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    for (const forms::PictureBox::Circle& circle : field_.Circles()) {
      if (!event->rect().intersects(AreaOf(circle))) continue;
      const QColor colour(circle.colour.red, circle.colour.green, circle.colour.blue);
      painter.setPen(QPen(colour, 2));
      painter.setBrush(Qt::NoBrush);
      const int radius = circle.radius.Pixels();
      const QPoint centre(circle.x.Pixels(), circle.y.Pixels());
      painter.drawEllipse(centre, radius, radius);
      if (!circle.barred) continue;
      const QPoint reach(radius * 7 / 10, -radius * 7 / 10);
      painter.drawLine(centre - reach, centre + reach);
    }
  }

 private:
  // What a circle paints, with its pen.
  static QRect AreaOf(const forms::PictureBox::Circle& circle) {
    const int reach = circle.radius.Pixels() + 2;
    return {circle.x.Pixels() - reach, circle.y.Pixels() - reach, 2 * reach + 1, 2 * reach + 1};
  }

  // Without a picture the circles alone say how large the area is.
  void FitCircles(std::span<const forms::PictureBox::Circle> circles) {
    QSize needed = size();
    for (const forms::PictureBox::Circle& circle : circles) {
      needed = needed.expandedTo({circle.x.Pixels() + 2 * circle.radius.Pixels(),
                                  circle.y.Pixels() + 2 * circle.radius.Pixels()});
    }
    if (needed != size()) setFixedSize(needed);
  }

  forms::PictureBox& field_;
  ViewContext& context_;
  forms::Subscription drawn_;
  QString file_;
  QPixmap picture_;
};

// A drawing in grey is ink on paper: it is drawn with the desktop's ink and leaves its paper out.
QImage InInk(QImage picture, const QColor& ink) {
  if (picture.isNull() || !picture.allGray()) return picture;
  picture.convertTo(QImage::Format_ARGB32);
  for (int y = 0; y < picture.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < picture.width(); ++x) {
      const int covered = (255 - qGray(line[x])) * qAlpha(line[x]) / 255;
      line[x] = qRgba(ink.red(), ink.green(), ink.blue(), covered);
    }
  }
  return picture;
}

class SmallPicture : public QLabel {
 public:
  using QLabel::QLabel;
  void Show(QImage picture) {
    picture_ = std::move(picture);
    const bool fits = picture_.width() <= kRoom.width() && picture_.height() <= kRoom.height();
    if (!picture_.isNull() && !fits) {
      picture_ = picture_.scaled(kRoom, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    Draw();
  }

 protected:
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) Draw();
    QLabel::changeEvent(event);
  }

 private:
  void Draw() {
    setPixmap(QPixmap::fromImage(InInk(picture_, palette().color(QPalette::WindowText))));
  }

  QImage picture_;
};

}  // namespace

QWidget* MakeSmallPicture(forms::PictureBox& field, ViewContext& context, QWidget* parent) {
  auto* label = new SmallPicture(parent);
  auto* binding = new FieldBinding(field, *label, context);
  binding->OnShow = [label, &field] { label->Show(QImage(PathToQt(field.Picture()))); };
  binding->Show();
  return label;
}

QWidget* MakePictureWidget(forms::PictureBox& field, ViewContext& context, QWidget* parent) {
  auto* area = new QScrollArea(parent);
  auto* canvas = new Canvas(field, context);
  area->setWidget(canvas);
  area->setFrameShape(QFrame::NoFrame);
  auto* binding = new FieldBinding(field, *area, context);
  binding->Watch(*canvas);
  binding->OnShow = [area, canvas, &field] {
    canvas->Follow();
    area->verticalScrollBar()->setValue(-field.Top().Pixels());
  };
  binding->Show();
  return area;
}

}  // namespace brenvo::ui
