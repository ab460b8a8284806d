#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QWheelEvent>

#include "tests/ui/screen.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

class MapScreen : public ScreenTest {
 protected:
  MapScreen() {
    QImage image(2000, 1500, QImage::Format_RGB32);
    image.fill(QColor(200, 220, 255));
    image.save(directory.filePath("wm.png"));
    map.SetImage(PathFromQt(directory.filePath("wm.png")));
    Settle();
  }
  QTemporaryDir directory;
  MapArea& map = host.Map();
};

TEST_F(MapScreen, TellsTheImageAndTheView) {
  EXPECT_EQ(map.ImageWidth(), 2000);
  EXPECT_EQ(map.ImageHeight(), 1500);
  EXPECT_EQ(map.ViewWidth(), map.viewport()->width());
  EXPECT_EQ(map.Zoom(), 100);
}

TEST_F(MapScreen, AFileThatIsNoPictureIsAFailureAndLeavesTheOldOne) {
  EXPECT_THROW(map.SetImage(PathFromQt(directory.filePath("no.png"))), std::runtime_error);
  EXPECT_EQ(map.ImageWidth(), 2000);
}

// The header promises 6.4 GB; nothing of that is asked for.
TEST_F(MapScreen, AHugePictureIsAFailureAndLeavesTheOldOne) {
  QFile file(directory.filePath("huge.ppm"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("P6 40000 40000 255\n");
  file.close();
  EXPECT_THROW(map.SetImage(PathFromQt(file.fileName())), std::runtime_error);
  EXPECT_EQ(map.ImageWidth(), 2000);
}

// What a decoder makes of the half that is there may be shown; the interface goes on in any case.
TEST_F(MapScreen, ATruncatedPictureHarmsNothing) {
  for (const char* format : {"jpg", "png", "bmp"}) {
    QBuffer whole;
    map.Picture().scaled(400, 300).save(&whole, format);
    QFile file(directory.filePath("half") + "." + format);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(whole.data().left(whole.size() / 2));
    file.close();
    try {
      map.SetImage(PathFromQt(file.fileName()));
    } catch (const std::runtime_error&) {
      EXPECT_EQ(map.ImageWidth(), 2000) << format;
    }
    map.DrawRectangle(10, 10, 20, 20, base::kRed);
    Settle();
    EXPECT_EQ(map.Picture().pixelColor(15, 15), QColor(255, 0, 0)) << format;
    map.SetImage(PathFromQt(directory.filePath("wm.png")));
  }
}

// Every annotation goes into the one picture: nothing is copied.
TEST_F(MapScreen, AnnotationsAreDrawnIntoThePictureThatIsShown) {
  const uchar* pixels = map.Picture().constBits();
  for (int i = 0; i < 50; ++i) map.DrawRectangle(10 * i, 10, 5, 5, base::kGreen);
  map.DrawText(50, 50, "J");
  EXPECT_EQ(map.Picture().constBits(), pixels);
}

TEST_F(MapScreen, ScrollingStaysWithinThePicture) {
  map.SetScroll(-20, 100000);
  EXPECT_EQ(map.ScrollX(), 0);
  EXPECT_EQ(map.ScrollY(), 1500 - map.ViewHeight());
}

TEST_F(MapScreen, ScrollPositionsArePixelsAtTheZoomInForce) {
  map.SetZoom(200);
  map.SetScroll(100000, 0);
  EXPECT_EQ(map.ScrollX(), 4000 - map.ViewWidth());
  map.SetZoom(25);
  EXPECT_EQ(map.ScrollX(), 0);
}

TEST_F(MapScreen, AnAnnotationStaysOnItsSpotOfThePicture) {
  map.SetZoom(200);
  map.SetScroll(400, 200);
  map.DrawRectangle(100, 60, 20, 20, base::kGreen);
  map.SetZoom(100);
  map.SetScroll(0, 0);
  EXPECT_EQ(map.Picture().pixelColor(255, 135), QColor(0, 255, 0));
  EXPECT_EQ(map.Picture().pixelColor(249, 135), QColor(200, 220, 255));
  EXPECT_EQ(map.Picture().pixelColor(261, 135), QColor(200, 220, 255));
}

TEST_F(MapScreen, PrintingHandsOutThePictureWithItsAnnotationsWhateverTheZoom) {
  QImage printed;
  map.OnPrint = [&](const QImage& image) { printed = image; };
  map.DrawRectangle(100, 60, 20, 20, base::kGreen);
  map.SetZoom(50);
  map.Print();
  EXPECT_EQ(printed.size(), QSize(2000, 1500));
  EXPECT_EQ(printed.pixelColor(110, 70), QColor(0, 255, 0));
}

TEST_F(MapScreen, AnnotationsGoWithTheirPicture) {
  map.DrawRectangle(10, 10, 20, 20, base::kRed);
  EXPECT_EQ(map.Picture().pixelColor(15, 15), QColor(255, 0, 0));
  map.SetImage(PathFromQt(directory.filePath("wm.png")));
  EXPECT_EQ(map.Picture().pixelColor(15, 15), QColor(200, 220, 255));
}

TEST_F(MapScreen, AStampIsTransparentWhereItsImageIs) {
  QImage stamp(10, 10, QImage::Format_ARGB32);
  stamp.fill(Qt::transparent);
  stamp.setPixelColor(5, 5, Qt::red);
  stamp.save(directory.filePath("pointer.png"));
  map.DrawStamp(PathFromQt(directory.filePath("pointer.png")), 40, 40);
  EXPECT_EQ(map.Picture().pixelColor(45, 45), QColor(255, 0, 0));
  EXPECT_EQ(map.Picture().pixelColor(41, 41), QColor(200, 220, 255));
}

TEST_F(MapScreen, ALineWithoutLengthDrawsNothing) {
  map.DrawLine(0, 0, 0, 0);
  EXPECT_EQ(map.Picture().pixelColor(0, 0), QColor(200, 220, 255));
  map.DrawLine(5, 0, 1, 40);
  EXPECT_EQ(map.Picture().pixelColor(5, 20), QColor(0, 0, 0));
}

TEST_F(MapScreen, ALeftDragDrawsTheRectangleThatIsTold) {
  QRect told;
  map.OnRectangle = [&](int x, int y, int w, int h) { told = QRect(x, y, w, h); };
  QTest::mousePress(map.viewport(), Qt::LeftButton, {}, QPoint(50, 40));
  QTest::mouseMove(map.viewport(), QPoint(150, 100));
  QTest::mouseRelease(map.viewport(), Qt::LeftButton, {}, QPoint(150, 100));
  EXPECT_EQ(told.topLeft(), QPoint(50, 40));
  EXPECT_NEAR(told.width(), 100, 1);
  EXPECT_NEAR(told.height(), 60, 1);
}

TEST_F(MapScreen, AClickDrawsNothing) {
  bool told = false;
  map.OnRectangle = [&](int, int, int, int) { told = true; };
  QTest::mouseClick(map.viewport(), Qt::LeftButton, {}, QPoint(50, 40));
  EXPECT_FALSE(told);
}

TEST_F(MapScreen, ARightDragMovesThePicture) {
  QTest::mousePress(map.viewport(), Qt::RightButton, {}, QPoint(300, 200));
  QTest::mouseMove(map.viewport(), QPoint(250, 180));
  QTest::mouseRelease(map.viewport(), Qt::RightButton, {}, QPoint(250, 180));
  EXPECT_EQ(map.ScrollX(), 50);
  EXPECT_EQ(map.ScrollY(), 20);
}

TEST_F(MapScreen, CtrlAndTheWheelZoomAroundThePointer) {
  const QPointF at(200, 100);
  QWheelEvent wheel(at, map.viewport()->mapToGlobal(at), {}, {0, 120}, Qt::NoButton,
                    Qt::ControlModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(map.viewport(), &wheel);
  EXPECT_NEAR(map.Zoom(), 115, 0.01);
  EXPECT_EQ(map.ScrollX(), 30);
  EXPECT_EQ(map.ScrollY(), 15);
}

TEST_F(MapScreen, ARectangleFillsTheView) {
  map.ZoomToRectangle(100, 50, 200, 100);
  EXPECT_NEAR(map.Zoom(), 100.0 * std::min(map.ViewWidth() / 200.0, map.ViewHeight() / 100.0), 10);
  EXPECT_NEAR(map.ScrollX(), map.Zoom(), 1);
  EXPECT_NEAR(map.ScrollY(), map.Zoom() / 2, 1);
}

TEST_F(MapScreen, WithoutAnImageNothingIsDrawn) {
  MapArea empty;
  empty.DrawRectangle(0, 0, 5, 5, base::kRed);
  empty.ZoomToRectangle(0, 0, 5, 5);
  EXPECT_EQ(empty.ImageWidth(), 0);
  EXPECT_TRUE(empty.Picture().isNull());
}

}  // namespace
}  // namespace brenvo::ui
