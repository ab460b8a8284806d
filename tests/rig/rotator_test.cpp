#include "rig/rotator.h"

#include "tests/rig/rig_station.h"

namespace brenvo::rig {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class RotatorTest : public RigStation {
 protected:
  Texts Turnable() {
    Event([&] { rotator->WindowOpened(true); });
    return Talk();
  }
};

TEST_F(RotatorTest, ConnectingAsksForItsLimitsAndWhereItStandsAndTurnsNothing) {
  EXPECT_THAT(Turnable(), ElementsAre("+\\dump_state", "+\\get_pos"));
  EXPECT_EQ(rotator->StateText(), "Collegato: 127.0.0.1:4533");
  EXPECT_EQ(rotator->Limits()->maxAzimuth, 450);
  EXPECT_EQ(rotator->Direction(), 10);
  EXPECT_EQ(session.Map.Heading, 10);
  Event([&] { rotator->WindowOpened(false); });
  EXPECT_FALSE(session.Map.Heading);
}

TEST_F(RotatorTest, ItIsAskedOftenOnlyWhileItTurns) {
  Turnable();
  EXPECT_THAT(After(1000), IsEmpty());
  EXPECT_THAT(After(4000), ElementsAre("+\\get_pos"));
  EXPECT_EQ(rotator->TurnTo(45), "Antenna verso 45°");
  EXPECT_THAT(Talk(), ElementsAre("+\\set_pos 45.0 0.0"));
  EXPECT_EQ(rotator->StateText(), "Gira verso 45°");
  rotor.azimuth = 30;
  EXPECT_THAT(After(1000), ElementsAre("+\\get_pos"));
  EXPECT_EQ(rotator->StateText(), "Gira verso 45°");
  rotor.azimuth = 44;
  After(1000);
  EXPECT_EQ(rotator->StateText(), "Collegato: 127.0.0.1:4533");
  EXPECT_THAT(After(1000), IsEmpty());
}

TEST_F(RotatorTest, TheOverlapIsUsedWhereItTurnsLess) {
  rotor.azimuth = 350;
  Turnable();
  rotator->TurnTo(10);
  EXPECT_THAT(Talk(), ElementsAre("+\\set_pos 370.0 0.0"));
  EXPECT_EQ(rotator->StateText(), "Gira verso 10°");
}

TEST_F(RotatorTest, BeyondItsLimitsItIsNotSent) {
  rotor.maxAzimuth = 180;
  Turnable();
  EXPECT_EQ(rotator->TurnTo(270), "270° è fuori dai limiti del rotore (0°-180°)");
  EXPECT_THAT(Talk(), IsEmpty());
}

TEST_F(RotatorTest, ItStopsAtAWord) {
  Turnable();
  rotator->TurnTo(200);
  Talk();
  rotator->StopTurning();
  EXPECT_THAT(Talk(), ElementsAre("+\\stop", "+\\get_pos"));
  EXPECT_EQ(rotator->LastNews(), "Rotore fermo");
  EXPECT_FALSE(rotator->Target());
}

TEST_F(RotatorTest, WhatItRefusesIsTold) {
  rotor.codes = {{"set_pos", -1}, {"stop", -4}};
  Turnable();
  rotator->TurnTo(200);
  Talk();
  EXPECT_EQ(rotator->LastNews(), "Il rotore non gira: valore non valido");
  rotator->StopTurning();
  Talk();
  EXPECT_EQ(rotator->LastNews(), "Il rotore non si ferma: non previsto");
}

TEST_F(RotatorTest, ADeadOneIsToldAndStandsNowhere) {
  Turnable();
  rotor.codes = {{"get_pos", -6}};
  After(5000);
  EXPECT_EQ(rotator->StateText(), "Il rotore non risponde: errore di linea");
  EXPECT_FALSE(rotator->Direction());
  rotor.codes.clear();
  After(5000);
  EXPECT_TRUE(rotator->Direction());
}

TEST_F(RotatorTest, WhatTellsNoLimitsOrNoAngleIsNoRotator) {
  Event([&] { rotator->WindowOpened(true); });
  Lines();
  Receive("ROTOR", "dump_state:\nRPRT 0\n");
  EXPECT_EQ(rotator->StateText(), "Non collegato: chi risponde non è rotctld");
  After(1000);
  EXPECT_TRUE(rotator->Direction());
  Event([&] { machine.Advance(5000); });
  Lines();
  Receive("ROTOR", "get_pos:\nAzimuth: 1e300\nRPRT 0\n");
  EXPECT_EQ(rotator->StateText(), "Non collegato: risposta senza angolo");
}

TEST_F(RotatorTest, TheWayToACallIsKnownByItsLocatorOrElseByItsCountry) {
  const auto exact = BeamTo(session, "G4ABC", "IO91AA");
  ASSERT_TRUE(exact);
  EXPECT_EQ(exact->shortPath, 308);
  EXPECT_EQ(exact->longPath, 128);
  const auto country = BeamTo(session, "JA1ABC", "");
  ASSERT_TRUE(country);
  EXPECT_NEAR(country->shortPath, 40, 15);
  EXPECT_FALSE(BeamTo(session, "???", ""));
  EXPECT_FALSE(BeamTo(session, "I3ABC", "JN65AA")) << "it is here";
}

}  // namespace
}  // namespace brenvo::rig
