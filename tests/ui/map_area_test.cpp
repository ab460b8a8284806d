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
    EXPECT_EQ(map.Picture().pixelColor(10, 15), QColor(255, 0, 0)) << format;
    map.SetImage(PathFromQt(directory.filePath("wm.png")));
  }
}

TEST_F(MapScreen, WhatIsBelowAFillIsRead) {
  QImage letters(400, 300, QImage::Format_RGB32);
  letters.fill(Qt::white);
  letters.setPixelColor(110, 70, Qt::black);
  letters.save(directory.filePath("letters.png"));
  map.SetImage(PathFromQt(directory.filePath("letters.png")));
  map.DrawRectangle(100, 60, 20, 20, base::kRed);
  EXPECT_EQ(map.Picture().pixelColor(110, 70), QColor(0, 0, 0));
  const QColor beside = map.Picture().pixelColor(112, 70);
  EXPECT_EQ(beside.red(), 255);
  EXPECT_LT(beside.green(), 120);
  EXPECT_EQ(map.Picture().pixelColor(100, 70), QColor(255, 0, 0));
}

// A printer's grey shows it too.
TEST_F(MapScreen, StripesTellWorkedFromConfirmedWithoutAColour) {
  const auto lightness = [&](int left) {
    const QImage picture = map.Picture();
    int darkest = 255, lightest = 0;
    for (int x = left + 2; x < left + 28; ++x) {
      const int grey = qGray(picture.pixel(x, 75));
      darkest = std::min(darkest, grey);
      lightest = std::max(lightest, grey);
    }
    return lightest - darkest;
  };
  map.DrawRectangle(100, 60, 30, 30, {base::kGreen, false});
  map.DrawRectangle(200, 60, 30, 30, {base::kGreen, true});
  EXPECT_EQ(lightness(100), 0);
  EXPECT_GT(lightness(200), 40);
}

TEST_F(MapScreen, AFillTakesThePlaceOfTheOneBelowIt) {
  map.DrawRectangle(100, 60, 20, 20, {base::kRed, true});
  map.DrawRectangle(100, 60, 20, 20, base::kGreen);
  const QImage one = map.Picture();
  map.SetImage(PathFromQt(directory.filePath("wm.png")));
  map.DrawRectangle(100, 60, 20, 20, base::kGreen);
  EXPECT_EQ(one, map.Picture());
}

TEST_F(MapScreen, AnnotationsAreDrawnAtTheZoomInForce) {
  map.DrawRectangle(20, 20, 50, 50, base::kGreen);
  map.DrawLine(10, 10, 1, 100);
  map.SetZoom(400);
  Settle();
  const QImage shown = map.viewport()->grab().toImage();
  ASSERT_EQ(shown.devicePixelRatio(), 1);
  // An edge of one pixel, whatever the zoom.
  EXPECT_EQ(shown.pixelColor(80, 180), QColor(0, 255, 0));
  EXPECT_NE(shown.pixelColor(81, 180), QColor(0, 255, 0));
  EXPECT_NE(shown.pixelColor(79, 180), QColor(0, 255, 0));
  // No grey between the line and the map.
  EXPECT_EQ(shown.pixelColor(39, 100), QColor(200, 220, 255));
  EXPECT_EQ(shown.pixelColor(40, 100), QColor(0, 0, 0));
  EXPECT_EQ(shown.pixelColor(43, 100), QColor(0, 0, 0));
  EXPECT_EQ(shown.pixelColor(44, 100), QColor(200, 220, 255));
}

TEST_F(MapScreen, LookedAtCloselyAMapIsDrawnWithAllThePixelsThatItsFinePictureHas) {
  QImage fine(4000, 3000, QImage::Format_RGB32);
  fine.fill(QColor(200, 220, 255));
  for (int y = 0; y < 3000; ++y) fine.setPixelColor(401, y, Qt::black);
  fine.save(directory.filePath("wm@2x.png"));
  map.SetImage(PathFromQt(directory.filePath("wm.png")));
  map.SetZoom(200);
  const QImage shown = map.viewport()->grab().toImage();
  EXPECT_EQ(shown.pixelColor(401, 50), QColor(Qt::black));
  EXPECT_EQ(shown.pixelColor(400, 50), QColor(200, 220, 255));
  EXPECT_EQ(shown.pixelColor(402, 50), QColor(200, 220, 255));
  map.SetZoom(100);
  EXPECT_EQ(map.viewport()->grab().toImage().pixelColor(200, 50), QColor(200, 220, 255));
  EXPECT_EQ(map.ImageWidth(), 2000);
}

TEST_F(MapScreen, AFinePictureOfAnotherSizeIsPassedOver) {
  QImage other(3000, 3000, QImage::Format_RGB32);
  other.fill(Qt::black);
  other.save(directory.filePath("wm@2x.png"));
  map.SetImage(PathFromQt(directory.filePath("wm.png")));
  map.SetZoom(200);
  EXPECT_EQ(map.viewport()->grab().toImage().pixelColor(100, 50), QColor(200, 220, 255));
}

TEST_F(MapScreen, TheLegendStandsInItsCornerUntilAnotherMapComes) {
  map.ShowLegend({{base::kGreen, {}, "Confermato"}, {{base::kRed, true}, {}, "Lavorato"}});
  const QPoint corner(12, map.ViewHeight() - 13);
  EXPECT_EQ(map.viewport()->grab().toImage().pixelColor(corner), QColor(Qt::white));
  map.SetScroll(300, 200);
  EXPECT_EQ(map.viewport()->grab().toImage().pixelColor(corner), QColor(Qt::white));
  EXPECT_EQ(map.Picture().pixelColor(12, 1500 - 13), QColor(Qt::white));
  map.SetImage(PathFromQt(directory.filePath("wm.png")));
  EXPECT_EQ(map.viewport()->grab().toImage().pixelColor(corner), QColor(200, 220, 255));
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
  EXPECT_EQ(map.Picture().pixelColor(250, 135), QColor(0, 255, 0));
  EXPECT_EQ(map.Picture().pixelColor(259, 135), QColor(0, 255, 0));
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
  EXPECT_EQ(printed.pixelColor(100, 70), QColor(0, 255, 0));
}

TEST_F(MapScreen, AnnotationsGoWithTheirPicture) {
  map.DrawRectangle(10, 10, 20, 20, base::kRed);
  EXPECT_EQ(map.Picture().pixelColor(10, 15), QColor(255, 0, 0));
  map.SetImage(PathFromQt(directory.filePath("wm.png")));
  EXPECT_EQ(map.Picture().pixelColor(10, 15), QColor(200, 220, 255));
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

TEST_F(MapScreen, TheWheelZoomsAroundThePointerAndWithShiftMovesThePicture) {
  const QPointF at(200, 100);
  const auto roll = [&](Qt::KeyboardModifiers held, int by) {
    QWheelEvent wheel(at, map.viewport()->mapToGlobal(at), {}, {0, by}, Qt::NoButton, held,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(map.viewport(), &wheel);
  };
  roll(Qt::NoModifier, 120);
  EXPECT_NEAR(map.Zoom(), 115, 0.01);
  EXPECT_EQ(map.ScrollX(), 30);
  EXPECT_EQ(map.ScrollY(), 15);
  roll(Qt::ShiftModifier, -120);
  EXPECT_NEAR(map.Zoom(), 115, 0.01);
  EXPECT_EQ(map.ScrollX(), 150);
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
