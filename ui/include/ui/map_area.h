// The main frame's inside: child windows over the map.
#pragma once

#include <functional>
#include <QImage>
#include <QMdiArea>
#include <QRubberBand>
#include <QScrollBar>

#include "platform/picture_viewer.h"
#include "ui/map_notes.h"

namespace brenvo::ui {

// Left drag draws a rectangle, right or middle drag moves the picture, the wheel zooms at the
// pointer, with Shift it moves the picture sideways. Annotations are drawn at the zoom in force, so
// that they stay sharp; what is below a filled area shows through.
class MapArea : public QMdiArea, public platform::PictureViewer {
 public:
  explicit MapArea(QWidget* parent = nullptr);

  // The rectangle that the operator drew, viewport pixels.
  std::function<void(int x, int y, int width, int height)> OnRectangle;
  // The picture with its annotations is to be printed.
  std::function<void(const QImage&)> OnPrint;
  // The inside has another size.
  std::function<void()> OnResized;

  void SetImage(const std::filesystem::path& file) override;
  int ImageWidth() override { return image_.width(); }
  int ImageHeight() override { return image_.height(); }
  double Zoom() override { return zoom_; }
  void SetZoom(double percent) override;
  int ScrollX() override { return across_->value(); }
  int ScrollY() override { return down_->value(); }
  void SetScroll(int x, int y) override;
  int ViewWidth() override { return viewport()->width(); }
  int ViewHeight() override { return viewport()->height(); }
  void DrawRectangle(int x, int y, int width, int height, platform::MapFill fill) override;
  void DrawStamp(const std::filesystem::path& image, int x, int y) override;
  void DrawLine(int x, int y, int width, int height) override;
  void DrawText(int x, int y, std::string_view text) override;
  void ShowLegend(const std::vector<platform::MapSign>& signs) override;
  void EndAnnotation() override {}
  void Refresh() override;
  void ZoomToRectangle(int x, int y, int width, int height) override;
  void Print() override;

  // Words below the name while there is no picture.
  void SetWelcome(const QString& words);

  // The picture with its annotations and its legend, at zoom 100. Drawn when it is asked for.
  QImage Picture() const;

 protected:
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ArrangeScrollBars();
  void PaintEmpty(QPainter& painter) const;
  // Takes an annotation in, its place in viewport pixels, and shows that piece of the screen. One
  // fill takes the place of another.
  void Annotate(const QRect& piece, MapNote note);
  bool Press(QMouseEvent& event);
  bool Drag(QMouseEvent& event);
  bool Release(QMouseEvent& event);
  bool Wheel(QWheelEvent& event);
  void ZoomAround(double percent, QPoint centre);

  // The fine one where more than the image's own pixels are shown, and it is there; else the image.
  const QImage& Ground(double scale);

  QImage image_;
  // The same map with twice as many pixels a side, beside the image as NAME@2x; read when somebody
  // looks closely.
  QImage fine_;
  std::filesystem::path fineFile_;  // empty once it was looked for
  MapNotes notes_;
  std::vector<LegendLine> legend_;
  QString welcome_;
  double zoom_ = 100;
  QScrollBar* across_;
  QScrollBar* down_;
  QRubberBand* rectangle_;
  QPoint pressedAt_, scrollAtPress_;
  Qt::MouseButton dragging_ = Qt::NoButton;
};

}  // namespace brenvo::ui
