#include "maps/mappa_square.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <cstdint>
#include <fstream>

#include "tests/support/station.h"

namespace brenvo::maps {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MappaSquareTest : public StationTest {
 protected:
  MappaSquareTest() {
    Know<MappaSquare>("MappaSquare");
    std::filesystem::remove(directory.Path() / "Square.jpg");
    std::string picture = "BM" + std::string(12, '\0');
    for (const std::uint32_t value : {40, 1066, 900}) {
      for (int shift = 0; shift < 32; shift += 8)
        picture += static_cast<char>(value >> shift & 255);
    }
    std::ofstream(directory.Path() / "Square.jpg", std::ios::binary) << picture;
    session.Db.Execute("DELETE * FROM Square");
    Place("JN65", 500, 300);
    Place("IO91", 300, 100);
    session.Handed.QueryText = "WHERE Call<>''";
  }

  void Place(const char* square, int x, int y) {
    session.Db.Execute(
        fmt::format("INSERT INTO Square (Square,X,Y) VALUES ('{}',{},{})", square, x, y));
  }
  void Log(const char* locator, bool qsl) {
    session.Db.Execute(
        fmt::format("INSERT INTO Log (DataQso,Call,Banda,Locator,QslRicevuta) VALUES "
                    "(DateValue('01/01/2001'),'I{}AA','  2 m','{}',{})",
                    ++number_, locator, qsl ? "True" : "False"));
  }
  MappaSquare& OpenMap() { return Open<MappaSquare>("MappaSquare"); }

 private:
  int number_ = 0;
};

TEST_F(MappaSquareTest, AConfirmedSquareIsDarkGreenAndAWorkedOneDarkRed) {
  Log("JN65AA", true);
  Log("IO91AA", false);
  OpenMap();
  EXPECT_THAT(Lines(), ElementsAre("circle 4500 1500 105 128 0 0", "circle 7500 4500 105 0 128 0"));
}

TEST_F(MappaSquareTest, WhereTheAntennaLooksIsALineOfSmallCirclesUnderTheOthers) {
  Log("JN65AA", true);
  session.Map.Heading = 308;
  Place("JN66", 500, 280);
  Place("JN37", 420, 240);
  OpenMap();
  const auto lines = Lines();
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines.front(), "circle 7500 4500 30 230 90 0") << "from the own square on";
  EXPECT_EQ(lines.back(), "circle 7500 4500 105 0 128 0");
  EXPECT_GT(lines.size(), 2U);
}

TEST_F(MappaSquareTest, AWorkedSquareIsBarredAsTheLegendSays) {
  Log("JN65AA", true);
  Log("IO91AA", false);
  MappaSquare& map = OpenMap();
  ASSERT_EQ(map.PicBuf1.Circles().size(), 2u);
  EXPECT_TRUE(map.PicBuf1.Circles()[0].barred);
  EXPECT_FALSE(map.PicBuf1.Circles()[1].barred);
  EXPECT_EQ(map.Legenda.Text(),
            "Cerchio verde: confermato. Cerchio rosso sbarrato: lavorato, non confermato");
}

TEST_F(MappaSquareTest, ASquareWithBothKindsOfContactIsGreen) {
  Log("JN65AA", false);
  Log("JN65BB", true);
  Log("JN65CC", false);
  OpenMap();
  EXPECT_THAT(Lines(), ElementsAre("circle 7500 4500 105 0 128 0"));
}

TEST_F(MappaSquareTest, ASquareThatIsNotInTheTableDrawsNothing) {
  Log("AA00AA", true);
  Log("IO91AA", true);
  OpenMap();
  EXPECT_THAT(Lines(), ElementsAre("circle 4500 1500 105 0 128 0"));
}

TEST_F(MappaSquareTest, AContactWithoutLocatorDrawsNothing) {
  Log("", true);
  Log("IO91AA", true);
  OpenMap();
  EXPECT_THAT(Lines(), ElementsAre("circle 4500 1500 105 0 128 0"));
}

TEST_F(MappaSquareTest, AMissingPictureLeavesAnEmptyWindowAndNoMessage) {
  std::filesystem::remove(directory.Path() / "Square.jpg");
  Log("JN65AA", true);
  Event([&] { OpenMap(); });
  EXPECT_THAT(Lines(), IsEmpty());
  EXPECT_TRUE(session.Windows.Find("MappaSquare")->Visible());
}

TEST_F(MappaSquareTest, APictureThatIsNoneLeavesAnEmptyWindowAndNoMessage) {
  std::ofstream(directory.Path() / "Square.jpg") << "niente";
  Log("JN65AA", true);
  Event([&] { OpenMap(); });
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(MappaSquareTest, AWholeSelectLeavesAnEmptyWindowAndNoMessage) {
  session.Handed.QueryText = "Select * from Log WHERE Call<>'' And left(Locator,4)= 'JN65'";
  Log("JN65AA", true);
  Event([&] { OpenMap(); });
  EXPECT_THAT(Lines(), IsEmpty());
  // Its own FROM stands where a condition should; nothing has been opened.
  auto& map = static_cast<MappaSquare&>(*session.Windows.Find("MappaSquare"));
  EXPECT_TRUE(map.PicBuf1.Picture().empty());
  Event([&] { map.cmOnlySquare.Press(); });
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(MappaSquareTest, AnEmptySelectionLeavesAnEmptyWindow) {
  session.Handed.QueryText = "";
  Log("JN65AA", true);
  Event([&] { OpenMap(); });
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(MappaSquareTest, APlaceBeyondThePictureEndsTheLoadInSilence) {
  session.Db.Execute("UPDATE Square SET X=40000 WHERE Square='JN65'");
  Log("IO91AA", true);
  Log("JN65AA", true);
  Event([&] { OpenMap(); });
  EXPECT_THAT(Lines(), ElementsAre("circle 4500 1500 105 0 128 0"));
}

TEST_F(MappaSquareTest, OnlySquareDropsTheMapAndDrawsTheSquaresAgain) {
  Log("JN65AA", true);
  MappaSquare& map = OpenMap();
  EXPECT_EQ(map.PicBuf1.Picture().filename(), "Square.jpg");
  Lines();
  Event([&] { map.cmOnlySquare.Press(); });
  EXPECT_TRUE(map.PicBuf1.Picture().empty());
  EXPECT_THAT(Lines(), ElementsAre("circle 7500 4500 105 0 128 0"));
  EXPECT_EQ(map.PicBuf1.Circles().size(), 1u);
}

TEST_F(MappaSquareTest, TheSelectionIsReadOnceAtLoad) {
  Log("JN65AA", true);
  MappaSquare& map = OpenMap();
  Lines();
  session.Handed.QueryText = "WHERE Call='NIENTE'";
  Event([&] { map.cmOnlySquare.Press(); });
  EXPECT_THAT(Lines(), ElementsAre("circle 7500 4500 105 0 128 0"));
}

TEST_F(MappaSquareTest, PrintingPrintsAnEmptyLineAndTheWindow) {
  MappaSquare& map = OpenMap();
  Lines();
  Event([&] { map.cmStampa.Press(); });
  EXPECT_THAT(Lines(), ElementsAre("print text 0 0 left \"Arial\" 10 plain \"\"",
                                   "print picture \"MappaSquare\" 0 0", "print end"));
}

TEST_F(MappaSquareTest, APrinterThatFailsEndsTheEvent) {
  MappaSquare& map = OpenMap();
  Lines();
  machine.GetPrinter().FailNext();
  Event([&] { map.cmStampa.Press(); });
  EXPECT_THAT(Lines(), ElementsAre("error \"La stampante non risponde\""));
}

TEST_F(MappaSquareTest, TheBarScrollsByAsMuchAsThePictureIsHigher) {
  MappaSquare& map = OpenMap();
  map.SetScale(base::Twips::FromPixels(800), base::Twips::FromPixels(500));
  EXPECT_EQ(map.VScroll.Maximum(), 400 * 15);
  map.VScroll.SetValue(3000);
  EXPECT_EQ(map.PicBuf1.Top(), base::Twips(-3000));
}

TEST_F(MappaSquareTest, TheBarScrollsFromTheOpeningOn) {
  MappaSquare& map = OpenMap();
  EXPECT_EQ(map.VScroll.Maximum(), 900 * 15 - map.ScaleHeight().Value());
  EXPECT_GT(map.VScroll.Maximum(), 0);
}

TEST_F(MappaSquareTest, AnotherSizeBringsThePictureBackToItsTop) {
  MappaSquare& map = OpenMap();
  map.SetScale(base::Twips::FromPixels(800), base::Twips::FromPixels(500));
  map.VScroll.SetValue(3000);
  map.SetScale(base::Twips::FromPixels(800), base::Twips::FromPixels(600));
  EXPECT_EQ(map.VScroll.Value(), 0);
  EXPECT_EQ(map.PicBuf1.Top(), base::Twips(0));
  EXPECT_EQ(map.VScroll.Maximum(), 300 * 15);
}

TEST_F(MappaSquareTest, AWindowHigherThanThePictureHasNothingToScroll) {
  MappaSquare& map = OpenMap();
  map.SetScale(base::Twips::FromPixels(800), base::Twips::FromPixels(1200));
  EXPECT_EQ(map.VScroll.Maximum(), 0);
  EXPECT_EQ(map.PicBuf1.Top(), base::Twips(0));
}

}  // namespace
}  // namespace brenvo::maps
