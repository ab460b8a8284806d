#include "maps/map_viewer.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <fstream>

#include "tests/support/station.h"

namespace brenvo::maps {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class MapViewerTest : public StationTest {
 protected:
  MapViewerTest() {
    AttachMapViewer(session, *frame);
    MakeImage("mondo.jpg", 4000, 2600);
    machine.Map().FrameSize = [] { return base::ImageSize{640, 480}; };
  }

  // As much of a picture as the recorded viewer reads.
  void MakeImage(const std::string& name, std::uint32_t width, std::uint32_t height) {
    std::string bytes = "BM" + std::string(12, '\0');
    for (const std::uint32_t value : {std::uint32_t{40}, width, height}) {
      for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 255);
    }
    std::ofstream(directory.Path() / name, std::ios::binary) << bytes;
  }
  void Ask(const std::string& file, int x, int y, std::string_view word = "") {
    session.Map.MapFile = file;
    session.Map.Pointer_X = x;
    session.Map.Pointer_Y = y;
    Event([&] { session.DisplayMap(word); });
    machine.Advance(1000);
  }
  void Press(const char* command) {
    Event([&] { frame->FindCommand(command)->Press(); });
  }
};

TEST_F(MapViewerTest, ANewImageIsShownAtItsOwnSizeWithThePointerInTheMiddle) {
  Ask("mondo.jpg", 1000, 700);
  EXPECT_THAT(Lines(), ElementsAre("map image \"mondo.jpg\"", "map zoom 100",
                                   "map stamp \"Pointer.bmp\" 973 671", "map close",
                                   "map scroll 680 460", "map refresh"));
}

TEST_F(MapViewerTest, APointerInViewLeavesTheMapWhereItIs) {
  Ask("mondo.jpg", 300, 200);
  EXPECT_THAT(Lines(),
              ElementsAre("map image \"mondo.jpg\"", "map zoom 100",
                          "map stamp \"Pointer.bmp\" 273 171", "map close", "map refresh"));
}

TEST_F(MapViewerTest, APointerExactlyOnTheEdgeCountsAsOutside) {
  Ask("mondo.jpg", 640, 200);
  EXPECT_THAT(Lines(), Contains("map scroll 320 0"));
  Ask("mondo.jpg", 320, 200);  // the left edge now
  EXPECT_THAT(Lines(), Contains("map scroll 0 0"));
}

TEST_F(MapViewerTest, APointerWithANoughtIsNotDrawn) {
  Ask("mondo.jpg", 300, 0);
  EXPECT_THAT(Lines(), Not(Contains(testing::HasSubstr("stamp"))));
  Ask("mondo.jpg", 0, 200);
  EXPECT_THAT(Lines(), Not(Contains(testing::HasSubstr("stamp"))));
}

TEST_F(MapViewerTest, WithoutAPointerTheMapGoesToItsCorner) {
  Ask("mondo.jpg", 1000, 700);
  Lines();
  Ask("mondo.jpg", 0, 700);
  EXPECT_THAT(Lines(), ElementsAre("map scroll 0 460", "map refresh"));
}

TEST_F(MapViewerTest, TheSameMapIsNotLoadedAgainAndKeepsItsZoom) {
  Ask("mondo.jpg", 300, 200);
  Press("cmZoom50");
  Lines();
  Ask("MONDO.JPG", 400, 200);
  EXPECT_THAT(Lines(), ElementsAre("map stamp \"Pointer.bmp\" 280 128", "map close",
                                   "map refresh"));  // 279.75, 128.25
}

TEST_F(MapViewerTest, AnotherMapReplacesIt) {
  MakeImage("Italia.bmp", 500, 400);
  Ask("mondo.jpg", 300, 200);
  Press("cmZoom150");
  Lines();
  Ask("Italia.bmp", 300, 200);
  EXPECT_THAT(Lines(),
              ElementsAre("map image \"Italia.bmp\"", "map zoom 100",
                          "map stamp \"Pointer.bmp\" 273 171", "map close", "map refresh"));
}

TEST_F(MapViewerTest, ASecondRequestWithinTheSameSecondDoesNothing) {
  session.Map.MapFile = "mondo.jpg";
  Event([&] { session.DisplayMap("XX"); });
  Lines();
  session.Map.Pointer_X = session.Map.Pointer_Y = 100;
  Event([&] { session.DisplayMap("XX"); });
  EXPECT_THAT(Lines(), IsEmpty());
}

class Entry : public forms::Window {
 public:
  explicit Entry(core::Session& session)
      : forms::Window(session.Host(), "Entry", "Entry", base::Twips(1500), base::Twips(1500)) {}
  void Activate() override { ++activations; }
  int activations = 0;
};

TEST_F(MapViewerTest, TheWindowInFrontStaysInFrontWhenAMapComes) {
  Know<Entry>("Entry");
  Entry& entry = Open<Entry>("Entry");
  Ask("mondo.jpg", 300, 200);
  session.Windows.Activated(entry);
  EXPECT_EQ(entry.activations, 1);
}

TEST_F(MapViewerTest, AMissingImageIsPassedOverInSilence) {
  Ask("mondo.jpg", 300, 200);
  Lines();
  Ask("manca.jpg", 1000, 700);
  EXPECT_THAT(Lines(), ElementsAre("map refresh"));
}

TEST_F(MapViewerTest, AMissingImageIsNotLookedForTwice) {
  Ask("mondo.jpg", 300, 200);
  Ask("manca.jpg", 300, 200);
  Lines();
  Ask("manca.jpg", 300, 200);
  EXPECT_THAT(Lines(),
              ElementsAre("map stamp \"Pointer.bmp\" 273 171", "map close", "map refresh"));
}

TEST_F(MapViewerTest, AFileThatIsNoPictureIsPassedOverInSilence) {
  std::ofstream(directory.Path() / "testo.jpg") << "niente";
  Ask("testo.jpg", 300, 200);
  EXPECT_THAT(Lines(), ElementsAre("map refresh"));
}

TEST_F(MapViewerTest, NoMapFileAtAllIsPassedOverInSilence) {
  Ask("", 300, 200);
  EXPECT_THAT(Lines(), ElementsAre("map refresh"));
}

TEST_F(MapViewerTest, AnOverlayRunsOverWhateverIsShown) {
  Ask("mondo.jpg", 300, 200);
  Lines();
  session.Handed.QueryText = "WHERE Locator<>''";
  Ask("manca.jpg", 0, 0, "FIELD");
  EXPECT_THAT(Lines(), ElementsAre("map refresh", "map close", "map refresh"));
}

TEST_F(MapViewerTest, AWordThatNoOverlayBearsShowsTheMapAlone) {
  Ask("mondo.jpg", 300, 200, "FIEL");
  EXPECT_THAT(Lines(),
              ElementsAre("map image \"mondo.jpg\"", "map zoom 100",
                          "map stamp \"Pointer.bmp\" 273 171", "map close", "map refresh"));
}

TEST_F(MapViewerTest, ThePointerIsDrawnAgainOnTheSamePicture) {
  Ask("mondo.jpg", 300, 200);
  Ask("mondo.jpg", 310, 200);
  const auto lines = Lines();
  EXPECT_THAT(lines, Contains("map stamp \"Pointer.bmp\" 273 171"));
  EXPECT_THAT(lines, Contains("map stamp \"Pointer.bmp\" 283 171"));
}

TEST_F(MapViewerTest, ZoomingInAddsAQuarter) {
  Press("cmZoom150");
  Press("cmZoom150");
  EXPECT_THAT(Lines(), ElementsAre("map zoom 125", "map refresh", "map zoom 150", "map refresh"));
}

TEST_F(MapViewerTest, ZoomingOutTakesAQuarterAndStopsAtTwentyFive) {
  for (int press = 0; press < 3; ++press) Press("cmZoom50");
  EXPECT_THAT(Lines(), ElementsAre("map zoom 75", "map refresh", "map zoom 50", "map refresh",
                                   "map zoom 25", "map refresh"));
  Press("cmZoom50");
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(MapViewerTest, OneToOneIsAHundredPerCent) {
  Press("cmZoom150");
  Lines();
  Press("cmZoom1");
  EXPECT_THAT(Lines(), ElementsAre("map zoom 100", "map refresh"));
}

TEST_F(MapViewerTest, FittingTheWindowFitsTheWidth) {
  Ask("mondo.jpg", 300, 200);
  Lines();
  Press("cmFitWindow");
  EXPECT_THAT(Lines(), ElementsAre("map zoom 16", "map refresh"));
}

TEST_F(MapViewerTest, FittingTheWindowWithoutAMapIsAFailure) {
  Press("cmFitWindow");
  EXPECT_THAT(Lines(), ElementsAre("error \"Nessuna mappa da adattare alla finestra\""));
}

TEST_F(MapViewerTest, PrintingIgnoresAPrinterThatFails) {
  Press("cmPrint");
  machine.GetPrinter().FailNext();
  Press("cmPrint");
  EXPECT_THAT(Lines(), ElementsAre("map print"));
}

TEST_F(MapViewerTest, ARectangleZoomsToWhatItHolds) {
  Ask("mondo.jpg", 300, 200);
  Lines();
  Event([&] { frame->MapRectangleDrawn(100, 50, 320, 240); });
  EXPECT_THAT(Lines(), ElementsAre("map zoom 200", "map scroll 200 100"));
}

TEST_F(MapViewerTest, WithTheCheckMarkARectangleTellsItsCornerAndTheZoomStays) {
  Ask("mondo.jpg", 1000, 700);
  Press("cmCoordinate");
  EXPECT_TRUE(frame->FindCommand("cmCoordinate")->Down());
  Lines();
  Event([&] { frame->MapRectangleDrawn(100, 50, 320, 240); });
  EXPECT_THAT(Lines(), ElementsAre("message none \"\" \" 780/ 510\""));
}

TEST_F(MapViewerTest, TheCheckMarkGoesWithASecondPress) {
  Press("cmCoordinate");
  Press("cmCoordinate");
  EXPECT_FALSE(frame->FindCommand("cmCoordinate")->Down());
}

}  // namespace
}  // namespace brenvo::maps
