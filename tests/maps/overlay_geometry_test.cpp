#include "maps/overlay_geometry.h"

#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>

namespace brenvo::maps {

void PrintTo(const MapBox& box, std::ostream* out) {
  *out << box.x << ' ' << box.y << ' ' << box.width << ' ' << box.height;
}
void PrintTo(const MapPoint& point, std::ostream* out) { *out << point.x << ' ' << point.y; }

namespace {

TEST(StampCorner, PutsTheTipOnThePixel) {
  EXPECT_EQ(StampCorner(500, 300, {100, 0, 0}), (MapPoint{473, 271}));
}

TEST(StampCorner, GrowsWithTheZoomAndMovesWithTheScroll) {
  EXPECT_EQ(StampCorner(500, 300, {150, 40, 30}), (MapPoint{670, 376}));  // 669.5, 376.5
  EXPECT_EQ(StampCorner(500, 300, {25, 0, 0}), (MapPoint{118, 68}));      // 118.25, 67.75
}

TEST(PointerInView, TakesWhatLiesWithin) {
  EXPECT_TRUE(PointerInView(500, 300, {100, 0, 0}, {640, 480}));
  EXPECT_TRUE(PointerInView(700, 300, {100, 100, 0}, {640, 480}));
}

TEST(PointerInView, APixelExactlyOnAnEdgeIsOutside) {
  EXPECT_FALSE(PointerInView(100, 300, {100, 100, 0}, {640, 480}));
  EXPECT_TRUE(PointerInView(101, 300, {100, 100, 0}, {640, 480}));
  EXPECT_FALSE(PointerInView(740, 300, {100, 100, 0}, {640, 480}));
  EXPECT_TRUE(PointerInView(739, 300, {100, 100, 0}, {640, 480}));
  EXPECT_FALSE(PointerInView(500, 50, {100, 0, 50}, {640, 480}));
  EXPECT_TRUE(PointerInView(500, 51, {100, 0, 50}, {640, 480}));
  EXPECT_FALSE(PointerInView(500, 530, {100, 0, 50}, {640, 480}));
  EXPECT_TRUE(PointerInView(500, 529, {100, 0, 50}, {640, 480}));
}

TEST(PointerInView, MeasuresThePictureAtItsZoom) {
  EXPECT_FALSE(PointerInView(500, 300, {200, 0, 0}, {640, 480}));
  EXPECT_TRUE(PointerInView(500, 300, {50, 0, 0}, {640, 480}));
}

TEST(ScrollToCentre, TakesHalfTheFrameOffBeforeItZooms) {
  EXPECT_EQ(ScrollToCentre(1000, 700, {100, 0, 0}, {640, 480}), (MapPoint{680, 460}));
  EXPECT_EQ(ScrollToCentre(1000, 700, {50, 0, 0}, {640, 480}), (MapPoint{340, 230}));
}

TEST(ScrollToCentre, GoesBelowZeroNearTheCorner) {
  EXPECT_EQ(ScrollToCentre(0, 0, {100, 0, 0}, {640, 480}), (MapPoint{-320, -240}));
}

TEST(ScrollToCentre, HalvesAnOddFrameWithoutLosingTheHalf) {
  EXPECT_EQ(ScrollToCentre(100, 100, {100, 0, 0}, {3, 5}), (MapPoint{98, 98}));  // 98.5, 97.5
}

TEST(FieldBox, FieldJnLandsWhereItsCornerSays) {
  EXPECT_EQ(FieldBox("JN", {100, 0, 0}), (MapBox{638, 155, 60, 28}));
}

TEST(FieldBox, EveryFieldLandsOnItsOwnCellOfTheGrid) {
  for (char column = 'A'; column <= 'R'; ++column) {
    for (char row = 'A'; row <= 'R'; ++row) {
      const char key[] = {column, row, '\0'};
      const MapBox expected{62 + 64 * (column - 'A'), 571 - 32 * (row - 'A'), 60, 28};
      EXPECT_EQ(FieldBox(key, {100, 0, 0}), expected) << key;
    }
  }
}

TEST(FieldBox, FollowsZoomAndScroll) {
  EXPECT_EQ(FieldBox("JN", {50, 0, 0}), (MapBox{319, 78, 30, 14}));  // 77.5 goes to the even one
  EXPECT_EQ(FieldBox("JN", {200, 100, 60}), (MapBox{1176, 250, 120, 56}));
  EXPECT_EQ(FieldBox("JN", {175, 7, 3}), (MapBox{1110, 268, 105, 49}));  // 1109.5, 268.25
}

TEST(FieldBox, AShorterKeyIsAnError) {
  EXPECT_THROW(FieldBox("J", {}), std::out_of_range);
  EXPECT_THROW(FieldBox("", {}), std::out_of_range);
}

TEST(ProvinceBox, IsTenPixelsAtEveryZoom) {
  EXPECT_EQ(ProvinceBox(200, 100, {100, 0, 0}), (MapBox{195, 95, 10, 10}));
  EXPECT_EQ(ProvinceBox(200, 100, {50, 10, 20}), (MapBox{88, 28, 10, 10}));  // 87.5, 27.5
  EXPECT_EQ(ProvinceBox(200, 100, {300, 0, 0}), (MapBox{585, 285, 10, 10}));
}

TEST(GraticuleLine, AColumnRunsDownFromTheTop) {
  const GraticuleLine drawn = SquareCalibration::LineOf("J?", 365, 0, {100, 0, 0});
  EXPECT_TRUE(drawn.column);
  EXPECT_EQ(drawn.letter, "J");
  EXPECT_EQ(drawn.line, (MapBox{365, 70, 1, 2486}));
}

TEST(GraticuleLine, ARowRunsRightFromTheLeftEdge) {
  const GraticuleLine drawn = SquareCalibration::LineOf("?N", 0, 600, {100, 0, 0});
  EXPECT_FALSE(drawn.column);
  EXPECT_EQ(drawn.letter, "N");
  EXPECT_EQ(drawn.line, (MapBox{70, 600, 3883, 1}));
}

TEST(GraticuleLine, FollowsZoomAndScroll) {
  EXPECT_EQ(SquareCalibration::LineOf("J?", 365, 0, {50, 10, 5}).line,
            (MapBox{172, 30, 1, 1243}));  // 172.5
  EXPECT_EQ(SquareCalibration::LineOf("?N", 0, 600, {150, 10, 5}).line,
            (MapBox{95, 895, 5824, 1}));  // 5824.5
}

// Columns I to K and H, rows K to N of a map with round numbers.
class Squares : public testing::Test {
 protected:
  Squares() {
    calibration.Add("H?", 3841, 0);
    calibration.Add("I?", 149, 0);
    calibration.Add("J?", 369, 0);
    calibration.Add("K?", 589, 0);
    calibration.Add("?N", 0, 500);
    calibration.Add("?M", 0, 640);
    calibration.Add("?L", 0, 780);
  }
  SquareCalibration calibration;
};

TEST_F(Squares, TheFirstSquareLiesInTheSouthWestCorner) {
  EXPECT_EQ(calibration.BoxOf("JN00", {}), (MapBox{369, 626, 22, 14}));
}

TEST_F(Squares, DigitsRunEastAndNorth) {
  EXPECT_EQ(calibration.BoxOf("JN65", {}), (MapBox{501, 556, 22, 14}));
  EXPECT_EQ(calibration.BoxOf("JN99", {}), (MapBox{567, 500, 22, 14}));
}

TEST_F(Squares, FollowZoomAndScroll) {
  EXPECT_EQ(calibration.BoxOf("JN65", {50, 100, 60}), (MapBox{150, 218, 11, 7}));  // 150.5
}

TEST_F(Squares, DigitsFiveToNineOfHmLieAtTheFarLeft) {
  EXPECT_EQ(calibration.BoxOf("HM50", {}), (MapBox{47, 766, 20, 14}));   // 20.4 wide
  EXPECT_EQ(calibration.BoxOf("HM99", {}), (MapBox{129, 640, 20, 14}));  // 128.6
}

TEST_F(Squares, DigitsNoughtToFourOfHmLieAtTheRight) {
  EXPECT_EQ(calibration.BoxOf("HM00", {}), (MapBox{3841, 766, 22, 14}));
  EXPECT_EQ(calibration.BoxOf("HM49", {}), (MapBox{3931, 640, 22, 14}));  // 3930.6
}

TEST_F(Squares, TheFarLeftOfHmNeedsNoColumn) {
  SquareCalibration rows;
  rows.Add("?M", 0, 640);
  rows.Add("?L", 0, 780);
  EXPECT_EQ(rows.BoxOf("HM50", {}), (MapBox{47, 766, 20, 14}));
  EXPECT_EQ(rows.BoxOf("HM40", {}), std::nullopt);
}

TEST_F(Squares, OtherFieldsOfColumnHRunBackwards) {
  // (149 - 3841) / 10 a square: no viewer paints a width below 0.
  EXPECT_EQ(calibration.BoxOf("HN00", {}), (MapBox{3841, 626, -369, 14}));
}

TEST_F(Squares, AFieldWithAnEdgeAtNoughtIsPassedOver) {
  EXPECT_EQ(calibration.BoxOf("AN00", {}), std::nullopt);  // neither A nor B
  EXPECT_EQ(calibration.BoxOf("KN00", {}), std::nullopt);  // no L to the right
  EXPECT_EQ(calibration.BoxOf("JL00", {}), std::nullopt);  // no K below
  EXPECT_EQ(calibration.BoxOf("JO00", {}), std::nullopt);  // no O above
}

TEST_F(Squares, TheLastColumnAndTheLastRowNeedARowBeyondThem) {
  calibration.Add("R?", 2100, 0);
  calibration.Add("?A", 0, 2400);
  EXPECT_EQ(calibration.BoxOf("RA00", {}), std::nullopt);
  calibration.Add("S?", 2320, 0);
  calibration.Add("?@", 0, 2550);
  EXPECT_EQ(calibration.BoxOf("RA00", {}), (MapBox{2100, 2535, 22, 15}));
}

TEST_F(Squares, WhatIsNoDigitCountsAsNought) {
  EXPECT_EQ(calibration.BoxOf("JNXX", {}), calibration.BoxOf("JN00", {}));
  EXPECT_EQ(calibration.BoxOf("JN", {}), calibration.BoxOf("JN00", {}));
}

TEST_F(Squares, ALetterBeyondAllCalibrationIsAnError) {
  EXPECT_THROW(calibration.BoxOf("5N00", {}), std::out_of_range);  // below the first column
  EXPECT_THROW(calibration.BoxOf("J\x7F"
                                 "00",
                                 {}),
               std::out_of_range);
  EXPECT_THROW(calibration.BoxOf("\xC3\x89N00", {}), std::out_of_range);  // "É"
  EXPECT_THROW(calibration.BoxOf("", {}), std::out_of_range);
  EXPECT_THROW(calibration.BoxOf("J", {}), std::out_of_range);
}

TEST_F(Squares, ALowerCaseColumnIsNotCalibratedAndALowerCaseRowIsAnError) {
  EXPECT_EQ(calibration.BoxOf("jN65", {}), std::nullopt);
  EXPECT_THROW(calibration.BoxOf("Jn65", {}), std::out_of_range);
}

TEST_F(Squares, ACalibrationRowBeyondTheArraysIsAnError) {
  EXPECT_THROW(calibration.Add("5?", 1, 0), std::out_of_range);
  EXPECT_THROW(calibration.Add("?\x7F", 0, 1), std::out_of_range);
  EXPECT_THROW(calibration.Add("?", 0, 1), std::out_of_range);
}

}  // namespace
}  // namespace brenvo::maps
