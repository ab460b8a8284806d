#include "maps/award_overlays.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <fstream>

#include "tests/support/station.h"

namespace brenvo::maps {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class AwardOverlaysTest : public StationTest {
 protected:
  AwardOverlaysTest() {
    machine.Map().FrameSize = [] { return base::ImageSize{640, 480}; };
    session.Handed.QueryText = "WHERE Call<>''";
  }

  struct Contact {
    const char* locator = "JN65AA";
    const char* province = "";
    int zone = 15;
    bool qsl = false;
  };
  void Log(const Contact& contact) {
    session.Db.Execute(fmt::format(
        "INSERT INTO Log (DataQso,Call,Banda,Locator,Provincia,[Zona CQ],QslRicevuta) VALUES "
        "(DateValue('01/01/2001'),'I{}AA','  2 m','{}','{}',{},{})",
        ++number_, contact.locator, contact.province, contact.zone,
        contact.qsl ? "True" : "False"));
  }
  // The only rows of a calibration table.
  void Calibrate(const char* table, const char* columns, std::initializer_list<const char*> rows) {
    session.Db.Execute(fmt::format("DELETE * FROM {}", table));
    for (const char* row : rows) {
      session.Db.Execute(fmt::format("INSERT INTO {} ({}) VALUES ({})", table, columns, row));
    }
  }
  void CalibrateFields() {
    Calibrate("Field", "Field,X,Y",
              {"'H?',3841,0", "'I?',149,0", "'J?',369,0", "'K?',589,0", "'?N',0,500", "'?M',0,640",
               "'?L',0,780"});
  }

 private:
  int number_ = 0;
};

TEST_F(AwardOverlaysTest, AFieldIsGreenWhenConfirmedAndRedWhenWorked) {
  Log({.locator = "JN65AA", .qsl = true});
  Log({.locator = "IO91AA"});
  DisplayField(session);
  EXPECT_THAT(Lines(),
              ElementsAre("map rectangle 574 123 60 28 255 0 0",
                          "map rectangle 638 155 60 28 0 255 0", "map close", "map refresh"));
}

TEST_F(AwardOverlaysTest, EachMapHasALegendWhoseWorkedOnesDifferInMoreThanColour) {
  CalibrateFields();
  const std::pair<void (*)(core::Session&), base::Colour> overlays[] = {
      {DisplayField, base::kGreen},
      {DisplaySquare, base::kGreen},
      {DisplayItalia, base::kDarkGreen}};
  for (const auto& [display, confirmed] : overlays) {
    display(session);
    const auto& legend = machine.Map().Legend();
    ASSERT_EQ(legend.size(), 2u);
    EXPECT_EQ(legend[0].words, "Confermato");
    EXPECT_EQ(legend[0].fill.colour, confirmed);
    EXPECT_FALSE(legend[0].fill.striped);
    EXPECT_EQ(legend[1].words, "Lavorato, non confermato");
    EXPECT_TRUE(legend[1].fill.striped);
  }
  DisplayZone(session);
  ASSERT_EQ(machine.Map().Legend().size(), 2u);
  EXPECT_EQ(machine.Map().Legend()[0].stamp.filename(), "Zona15c.bmp");
  EXPECT_EQ(machine.Map().Legend()[1].stamp.filename(), "Zona15nc.bmp");
}

TEST_F(AwardOverlaysTest, AKeyConfirmedAndWorkedIsPaintedOnceAndGreen) {
  Log({.locator = "JN65AA"});
  Log({.locator = "JN55AA", .qsl = true});
  Log({.locator = "JN45AA"});
  DisplayField(session);
  EXPECT_THAT(Lines(),
              ElementsAre("map rectangle 638 155 60 28 0 255 0", "map close", "map refresh"));
}

TEST_F(AwardOverlaysTest, AKeyInTwoSpellingsIsPaintedOnce) {
  CalibrateFields();
  Log({.locator = "JN65aa", .qsl = true});
  Log({.locator = "JN65AA"});
  DisplaySquare(session);
  EXPECT_THAT(Lines(), Contains(HasSubstr("rectangle")).Times(1));
}

TEST_F(AwardOverlaysTest, ASelectionWithoutContactsOnlyClosesTheOverlay) {
  DisplayField(session);
  EXPECT_THAT(Lines(), ElementsAre("map close", "map refresh"));
  DisplayZone(session);
  EXPECT_THAT(Lines(), ElementsAre("map close", "map refresh"));
  DisplayItalia(session);
  EXPECT_THAT(Lines(), ElementsAre("map close"));
}

TEST_F(AwardOverlaysTest, OverlaysFollowZoomAndScroll) {
  Log({.locator = "JN65AA"});
  machine.Map().SetZoom(50);
  Lines();
  DisplayField(session);
  EXPECT_THAT(Lines(), Contains("map rectangle 319 78 30 14 255 0 0"));
}

TEST_F(AwardOverlaysTest, TheGraticuleComesBeforeTheSquares) {
  Calibrate("Field", "Field,X,Y", {"'J?',369,0", "'K?',589,0", "'?N',0,500", "'?M',0,640"});
  Log({.locator = "JN65AA", .qsl = true});
  DisplaySquare(session);
  EXPECT_THAT(
      Lines(),
      ElementsAre("map scroll 0 0", "map line 70 640 3883 1", "map text 70 640 \"M\"",
                  "map line 70 500 3883 1", "map text 70 500 \"N\"", "map line 369 70 1 2486",
                  "map text 369 70 \"J\"", "map line 589 70 1 2486", "map text 589 70 \"K\"",
                  "map rectangle 501 556 22 14 0 255 0", "map close", "map refresh"));
}

TEST_F(AwardOverlaysTest, ASelectionWithoutSquaresStillShowsTheGraticule) {
  Calibrate("Field", "Field,X,Y", {"'J?',369,0"});
  DisplaySquare(session);
  EXPECT_THAT(Lines(), ElementsAre("map scroll 0 0", "map line 369 70 1 2486",
                                   "map text 369 70 \"J\"", "map close", "map refresh"));
}

TEST_F(AwardOverlaysTest, SquaresOfHmLieAtBothEndsOfTheMap) {
  CalibrateFields();
  Log({.locator = "HM58AA"});
  Log({.locator = "HM49AA"});
  DisplaySquare(session);
  const auto lines = Lines();
  EXPECT_THAT(lines, Contains("map rectangle 47 654 20 14 255 0 0"));
  EXPECT_THAT(lines, Contains("map rectangle 3931 640 22 14 255 0 0"));
}

TEST_F(AwardOverlaysTest, ASquareOfAFieldWithoutCalibrationIsPassedOver) {
  CalibrateFields();
  Log({.locator = "AA00AA"});
  Log({.locator = "JN65AA"});
  DisplaySquare(session);
  EXPECT_THAT(Lines(), Contains(HasSubstr("rectangle")).Times(1));
}

TEST_F(AwardOverlaysTest, ALocatorBeyondTheCalibrationIsAFailureOfTheEvent) {
  CalibrateFields();
  Log({.locator = "5N65AA"});
  Event([&] { DisplaySquare(session); });
  EXPECT_THAT(Lines(), Contains("error \"Un campo della mappa ha una lettera che non c'è\""));
}

TEST_F(AwardOverlaysTest, AnEmptyLocatorIsAFailureOfTheEvent) {
  Log({.locator = ""});
  Event([&] { DisplayField(session); });
  EXPECT_THAT(Lines(), Contains(HasSubstr("error")));
}

TEST_F(AwardOverlaysTest, AZoneIsStampedWithTheBitmapOfItsState) {
  Calibrate("ZoneCQ", "ZonaCQ,X,Y", {"15,600,200", "3,150,180"});
  Log({.zone = 15, .qsl = true});
  Log({.zone = 3});
  DisplayZone(session);
  EXPECT_THAT(Lines(),
              ElementsAre("map stamp \"Zona3nc.bmp\" 123 151", "map stamp \"Zona15c.bmp\" 573 171",
                          "map close", "map refresh"));
}

TEST_F(AwardOverlaysTest, AZoneWithoutItsRowPaintsNothingAndSaysNothing) {
  Calibrate("ZoneCQ", "ZonaCQ,X,Y", {"3,150,180"});
  Log({.zone = 15});
  Event([&] { DisplayZone(session); });
  EXPECT_THAT(Lines(), ElementsAre("map close", "map refresh"));
}

TEST_F(AwardOverlaysTest, ZonesAndProvincesLeaveTheirPlaceInThePointer) {
  Calibrate("ZoneCQ", "ZonaCQ,X,Y", {"15,600,200", "3,150,180"});
  Log({.zone = 15});
  Log({.zone = 3});
  DisplayZone(session);
  EXPECT_EQ(session.Map.Pointer_X, 600);
  EXPECT_EQ(session.Map.Pointer_Y, 200);
  Calibrate("ProvincieItaliane", "Provincia,X,Y", {"'VE',400,300"});
  Log({.province = "VE"});
  DisplayItalia(session);
  EXPECT_EQ(session.Map.Pointer_X, 400);
  EXPECT_EQ(session.Map.Pointer_Y, 300);
}

TEST_F(AwardOverlaysTest, AProvinceIsASmallSquareInDarkColoursAndNothingIsRefreshed) {
  Calibrate("ProvincieItaliane", "Provincia,X,Y", {"'VE',400,300", "'RM',420,700"});
  Log({.province = "VE", .qsl = true});
  Log({.province = "RM"});
  Log({.province = ""});
  Log({.province = "XX"});
  DisplayItalia(session);
  EXPECT_THAT(Lines(), ElementsAre("map rectangle 415 695 10 10 128 0 0",
                                   "map rectangle 395 295 10 10 0 128 0", "map close"));
}

TEST_F(AwardOverlaysTest, AProvinceIsAsLargeAtEveryZoom) {
  Calibrate("ProvincieItaliane", "Provincia,X,Y", {"'VE',400,300"});
  Log({.province = "VE"});
  machine.Map().SetZoom(300);
  Lines();
  DisplayItalia(session);
  EXPECT_THAT(Lines(), Contains("map rectangle 1185 885 10 10 128 0 0"));
}

TEST_F(AwardOverlaysTest, ASelectionThatIsNoConditionFailsTheEvent) {
  session.Handed.QueryText = "Select * from Log";
  Event([&] { DisplayField(session); });
  EXPECT_THAT(Lines(), ElementsAre(HasSubstr("error")));
}

TEST_F(AwardOverlaysTest, AnotherMapMeanwhileEndsThePainting) {
  Log({.locator = "IO91AA"});
  Log({.locator = "JN65AA"});
  machine.Host().WhileWaiting = [&] { session.Map.CurrentMapPath = "ANOTHER.JPG"; };
  DisplayField(session);
  EXPECT_THAT(Lines(), ElementsAre("map rectangle 574 123 60 28 255 0 0"));
}

TEST_F(AwardOverlaysTest, TheEndOfTheSessionMeanwhileEndsThePainting) {
  Log({.locator = "IO91AA"});
  Log({.locator = "JN65AA"});
  machine.Host().WhileWaiting = [&] { session.CloseTables(); };
  Event([&] { DisplayField(session); });
  EXPECT_THAT(Lines(), ElementsAre("map rectangle 574 123 60 28 255 0 0"));
}

TEST_F(AwardOverlaysTest, EveryPlaceIsTakenAtTheScrollOfItsMoment) {
  Log({.locator = "IO91AA"});
  Log({.locator = "JN65AA"});
  machine.Map().SetZoom(100);
  Lines();
  std::ofstream(directory.Path() / "mondo.bmp", std::ios::binary)
      << std::string("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\x10\0\0\0\x10\0", 24);
  machine.Map().SetImage(directory.Path() / "mondo.bmp");
  Lines();
  machine.Host().WhileWaiting = [&] { machine.Map().SetScroll(100, 20); };
  DisplayField(session);
  EXPECT_THAT(Lines(), ElementsAre("map rectangle 574 123 60 28 255 0 0", "map scroll 100 20",
                                   "map rectangle 538 135 60 28 255 0 0", "map scroll 100 20",
                                   "map close", "map refresh"));
}

TEST_F(AwardOverlaysTest, TheSelectionIsReadAndNotChanged) {
  Log({.province = "VE"});
  DisplayItalia(session);
  EXPECT_EQ(session.Handed.QueryText, "WHERE Call<>''");
}

}  // namespace
}  // namespace brenvo::maps
