#include "rig/rtx.h"

#include "tests/rig/rig_station.h"
#include "tests/support/golden.h"

namespace brenvo::rig {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class RtxTest : public RigStation {
 protected:
  void Enter(forms::TextField& field, std::string_view text) {
    Type(field, text);
    Event([&] { field.TypeKey(forms::kEnter); });
  }
};

TEST_F(RtxTest, ShowsWhereTheTransceiverStands) {
  rig.split = "1";
  Rtx& rtx = OpenRtx();
  EXPECT_EQ(rtx.Stato.Text(), "Collegato: 127.0.0.1:4532");
  EXPECT_EQ(rtx.Frequenza.Text(), "14.250.000");
  EXPECT_EQ(rtx.Modo.Text(), "USB");
  EXPECT_EQ(rtx.Banda.Text(), "20 m");
  EXPECT_EQ(rtx.Split.Text(), "Split: trasmette su 14.255.000");
  After(1000);
  EXPECT_EQ(rtx.SMeter.Value(), -6);
  EXPECT_EQ(rtx.Segnale.Text(), "S8");
  rig.strength = 20;
  rig.mode = "ODD";
  After(1000);
  EXPECT_EQ(rtx.Segnale.Text(), "S9+20");
  EXPECT_EQ(rtx.Modo.Text(), "ODD");
}

TEST_F(RtxTest, ClosingItEndsBothConnections) {
  Rtx& rtx = OpenRtx();
  Event([&] { rtx.Close(); });
  Talk();
  EXPECT_THAT(other, Contains("disconnect RIG"));
  EXPECT_THAT(other, Contains("disconnect ROTOR"));
}

TEST_F(RtxTest, TheWheelTurnsTheDigitUnderIt) {
  Rtx& rtx = OpenRtx();
  const auto turn = [&](std::size_t character, int by) {
    Event([&] { rtx.Frequenza.OnStep(character, by); });
    Talk();
    return rtx.Frequenza.Text();
  };
  EXPECT_EQ(turn(9, 1), "14.250.001");
  EXPECT_EQ(turn(7, -1), "14.249.901");
  EXPECT_EQ(turn(0, -1), "4.249.901");
  EXPECT_EQ(turn(0, -1), "3.249.901");
  EXPECT_EQ(turn(1, 1), "3.249.901") << "a point is no digit";
  EXPECT_EQ(rig.frequency, 3249901);
}

TEST_F(RtxTest, TheDigitThatWasTurnedStaysMarkedForTheNextTurn) {
  rig.frequency = 9999000;
  Rtx& rtx = OpenRtx();
  Event([&] { rtx.Frequenza.OnStep(4, 1); });
  Talk();
  EXPECT_EQ(rtx.Frequenza.Text(), "10.000.000");
  EXPECT_EQ(rtx.Frequenza.SelStart(), 5U);
  EXPECT_EQ(rtx.Frequenza.SelLength(), 1U);
}

TEST_F(RtxTest, AFrequencyThatIsTypedIsLeftAloneAndGoesThereByEnter) {
  Rtx& rtx = OpenRtx();
  Type(rtx.Frequenza, "70");
  rig.frequency = 14260000;
  After(1000);
  EXPECT_EQ(rtx.Frequenza.Text(), "70");
  Event([&] { rtx.Frequenza.Leave(); });
  EXPECT_EQ(rtx.Frequenza.Text(), "14.260.000");
  Enter(rtx.Frequenza, "7050");
  Talk();
  EXPECT_EQ(rig.frequency, 7050000);
  EXPECT_EQ(rtx.Frequenza.Text(), "7.050.000");
  EXPECT_EQ(rtx.Avviso.Text(), "Rtx a 7.050.000");
  Enter(rtx.Frequenza, "..");
  EXPECT_EQ(rtx.Avviso.Text(), "La frequenza si scrive in kHz o in MHz: 14250 o 14.250");
}

TEST_F(RtxTest, AModeThatIsPickedIsTheTransceivers) {
  Rtx& rtx = OpenRtx();
  const auto& modes = rtx.Modo.Items();
  const auto cw = std::find(modes.begin(), modes.end(), "CW") - modes.begin();
  Event([&] { rtx.Modo.Pick(static_cast<int>(cw)); });
  EXPECT_THAT(Talk(), ElementsAre("+\\set_mode CW -1"));
  EXPECT_EQ(rtx.Avviso.Text(), "Rtx in CW");
}

TEST_F(RtxTest, AMemoryBringsBackItsFrequencyAndMode) {
  Rtx& rtx = OpenRtx();
  Press(rtx, "cmRicorda");
  rig.frequency = 7050000;
  rig.mode = "CW";
  After(1000);
  Press(rtx, "cmRicorda");
  EXPECT_EQ(rtx.Memorie.Cell(2, 0), "14.250.000");
  EXPECT_EQ(rtx.Memorie.Cell(2, 2), "20 m");
  Event([&] { rtx.Memorie.DoubleClickCell(2, 0); });
  EXPECT_THAT(Talk(), ElementsAre("+\\set_freq 14250000", "+\\set_mode USB -1"));
  Event([&] {
    rtx.Memorie.SetCurrent(1, 0);
    EXPECT_TRUE(rtx.Memorie.TypeKey(forms::kEnter));
  });
  Talk();
  EXPECT_EQ(rig.frequency, 7050000);
}

TEST_F(RtxTest, TheOperatorSaysWhichModeOfTheLogAModeIs) {
  rig.mode = "PKTUSB";
  Rtx& rtx = OpenRtx();
  std::int64_t row = 1;
  while (row < rtx.Modi.Rows() && rtx.Modi.Cell(row, 1) != "PKTUSB") ++row;
  Event([&] { rtx.Modi.EditCell(row, 2, "FT8"); });
  EXPECT_EQ(rtx.Modi.Cell(row, 2), "FT8");
  EXPECT_EQ(session.Rig.Now()->modo, "FT8");
  EXPECT_EQ(rtx.Avviso.Text(), "Dal rtx PKTUSB: FT8");
  Event([&] { rtx.Modi.EditCell(row, 1, "X"); });
  EXPECT_EQ(rtx.Modi.Cell(row, 1), "PKTUSB");
  Event([&] { rtx.Modi.RemoveRow(row); });
  EXPECT_EQ(rtx.Modi.Cell(row, 1), "PKTUSB");
}

TEST_F(RtxTest, ATransverterIsSetWhereItsBandStands) {
  rig.frequency = 28200000;
  Rtx& rtx = OpenRtx();
  std::int64_t row = 1;
  while (row < rtx.Transverter.Rows() && rtx.Transverter.Cell(row, 0) != "23cm") ++row;
  Event([&] { rtx.Transverter.EditCell(row, 1, "1268"); });
  EXPECT_EQ(rtx.Frequenza.Text(), "28.200.000");
  Event([&] { rtx.Transverter.EditCell(row, 2, "sì"); });
  EXPECT_EQ(rtx.Transverter.Cell(row, 2), "Sì");
  EXPECT_EQ(rtx.Frequenza.Text(), "1296.200.000");
  EXPECT_EQ(rtx.Avviso.Text(), "23cm: l'rtx più 1268 MHz");
  EXPECT_EQ(session.GetSetting("Rtx", "Transverter", ""), "23cm:1268:Y");
}

TEST_F(RtxTest, OneKeyTurnsTheBeamToTheCallInWorkByEitherPath) {
  Rtx& rtx = OpenRtx();
  EXPECT_EQ(rtx.Azimut.Text(), "10°");
  EXPECT_FALSE(rtx.cmCorto.Enabled());
  Event([&] { session.CallTyped({"G4ABC", "IO91AA"}); });
  EXPECT_EQ(rtx.Corrispondente.Text(), "G4ABC: 308° corta, 128° lunga");
  Press(rtx, "cmCorto");
  EXPECT_THAT(Talk(), ElementsAre("+\\set_pos 308.0 0.0"));
  Press(rtx, "cmLungo");
  EXPECT_THAT(Talk(), ElementsAre("+\\set_pos 128.0 0.0"));
  Press(rtx, "cmFermaRotore");
  EXPECT_THAT(Talk(), ElementsAre("+\\stop", "+\\get_pos"));
  Enter(rtx.Verso, "270");
  EXPECT_THAT(Talk(), ElementsAre("+\\set_pos 270.0 0.0"));
  Enter(rtx.Verso, "361");
  EXPECT_EQ(rtx.Avviso.Text(), "I gradi vanno da 0 a 360");
  Event([&] { session.CallTyped({"???", ""}); });
  Press(rtx, "cmCorto");
  EXPECT_EQ(rtx.Avviso.Text(), "Dove sia ??? non si sa: manca il locator");
}

TEST_F(RtxTest, TheModelIsChosenFromTheListOfTheLibrary) {
  machine.Processes().Queue("rigctl", "-l",
                            {0,
                             " Rig #  Mfg      Model      Version    Status   Macro\n"
                             "     1  Hamlib   Dummy      2022       Stable   RIG_MODEL_DUMMY\n"
                             "  3073  Icom     IC-7300    2023       Stable   RIG_MODEL_IC7300\n"});
  Rtx& rtx = OpenRtx();
  InDialogs([&](forms::Window& dialog) {
    auto& models = static_cast<Modelli&>(dialog);
    Type(models.Cerca, "7300");
    EXPECT_EQ(models.Tabella.Rows(), 2);
    models.Porta.SetText("/dev/ttyUSB0");
    models.Velocita.SetText("19200");
    models.Indirizzo.SetText("x");
    Press(models, "cmCollega");
    EXPECT_EQ(models.Avviso.Text(), "L'indirizzo si scrive come 127.0.0.1:4532");
    models.Indirizzo.SetText("127.0.0.1:4536");
    Press(models, "cmCollega");
  });
  other.clear();
  Press(rtx, "cmModello");
  Talk();
  EXPECT_THAT(other, Contains("process rigctld \"-m 3073 -T 127.0.0.1 -t 4536 -r /dev/ttyUSB0 -s "
                              "19200 --set-conf=rts_state=OFF,dtr_state=OFF -P NONE\""));
  EXPECT_EQ(rtx.Stato.Text(), "Collegato: Icom IC-7300");
}

TEST_F(RtxTest, WithoutTheLibraryAProgramAtWorkCanStillBeNamed) {
  machine.Processes().FailNext("rotctl");
  Rtx& rtx = OpenRtx();
  InDialogs([&](forms::Window& dialog) {
    auto& models = static_cast<Modelli&>(dialog);
    EXPECT_EQ(models.Avviso.Text(), "Manca rotctl: installare il pacchetto libhamlib-utils");
    EXPECT_EQ(models.Tabella.Rows(), 2);
    models.Indirizzo.SetText("192.168.1.7:4533");
    Press(models, "cmCollega");
  });
  other.clear();
  Press(rtx, "cmModelloRotore");
  Talk();
  EXPECT_THAT(other, Contains("connect ROTOR \"192.168.1.7\" 4533"));
}

TEST_F(RtxTest, LeavingTheChoiceOfAModelChangesNothing) {
  machine.Processes().Queue("rigctl", "-l", {1, ""});
  Rtx& rtx = OpenRtx();
  InDialogs([&](forms::Window& dialog) {
    EXPECT_EQ(static_cast<Modelli&>(dialog).Avviso.Text(), "rigctl non dice i suoi modelli");
    dialog.Close();
  });
  other.clear();
  Press(rtx, "cmModello");
  EXPECT_THAT(Talk(), IsEmpty());
}

}  // namespace
}  // namespace brenvo::rig
