#include "maps/heading_overlay.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "maps/map_viewer.h"
#include "tests/support/station.h"

namespace brenvo::maps {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr double kDegree = std::numbers::pi / 180;

TEST(BeamPathTest, TheBeamGoesTheWayThatItLooks) {
  const auto north = BeamPath({12 * kDegree, 45 * kDegree}, 0);
  EXPECT_NEAR(north[5].longitude, 12 * kDegree, 1e-9);
  EXPECT_NEAR(north[5].latitude, 45 * kDegree + 1000 / 6371.0, 1e-9);
  const auto east = BeamPath({0, 0}, 90);
  EXPECT_NEAR(east[50].longitude, 10000 / 6371.0, 1e-9);
  EXPECT_NEAR(east[50].latitude, 0, 1e-9);
}

TEST(BeamPathTest, BeyondTheDateLineItGoesOnAtTheOtherSide) {
  for (const geo::Position& place : BeamPath({170 * kDegree, 10 * kDegree}, 90)) {
    EXPECT_LE(std::fabs(place.longitude), std::numbers::pi + 1e-9);
    EXPECT_LE(std::fabs(place.latitude), std::numbers::pi / 2);
  }
}

TEST(BeamPathTest, TheSquaresThatItCrossesStandOnceEach) {
  const auto squares = SquaresOf(BeamPath({12.1 * kDegree, 45.1 * kDegree}, 0));
  EXPECT_EQ(squares.at(0), "JN65");
  EXPECT_EQ(squares.at(1), "JN66");
  EXPECT_EQ(squares.at(2), "JN68");
  EXPECT_EQ(std::adjacent_find(squares.begin(), squares.end()), squares.end());
}

class HeadingOverlayTest : public StationTest {
 protected:
  HeadingOverlayTest() { AttachMapViewer(session, *frame); }
  std::vector<std::string> Draw() {
    session.Map.MapFile = "wm.jpg";
    Event([&] { DisplayHeading(session); });
    return Lines();
  }
};

TEST_F(HeadingOverlayTest, WithoutADirectionNothingIsDrawn) { EXPECT_TRUE(Draw().empty()); }

TEST_F(HeadingOverlayTest, TheBeamIsALineOfDotsFromTheOwnPlaceOn) {
  session.Map.Heading = 90;
  const auto lines = Draw();
  EXPECT_THAT(lines, Contains(HasSubstr("230 90 0")));
  int lastX = -1;
  int dots = 0;
  for (const std::string& line : lines) {
    if (!line.starts_with("map rectangle ")) continue;
    const int x = std::stoi(line.substr(14));
    if (++dots < 20) {
      EXPECT_GT(x, lastX) << "to the east";
    }
    lastX = x;
  }
  EXPECT_GT(dots, 60);
}

TEST_F(HeadingOverlayTest, AStationWithoutALocatorHasNoBeam) {
  session.Map.Heading = 90;
  session.Station.MyLocator = "";
  EXPECT_TRUE(Draw().empty());
}

}  // namespace
}  // namespace brenvo::maps
