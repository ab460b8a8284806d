#include "links/ft736.h"

#include "tests/links/links_station.h"

namespace brenvo::links {
namespace {

constexpr const char* kOn = "sent COM1 20 20 20 20 00";
constexpr const char* kOff = "sent COM1 20 20 20 20 80";
constexpr const char* kUsb = "sent COM1 01 20 20 20 07";
constexpr const char* kLsb = "sent COM1 00 20 20 20 07";
constexpr const char* kFm = "sent COM1 08 20 20 20 07";
constexpr const char* kPoll = "sent COM1 20 20 20 20 F7";

class Ft736Test : public LinksTest {
 protected:
  FT736& OpenRig() { return Open<FT736>("FT736"); }
  FT736& OpenSwitchedOn() {
    FT736& rig = OpenRig();
    Press(rig.Accensione);
    Lines();
    return rig;
  }
  void Press(forms::Command& key) {
    Event([&] { key.Press(); });
  }
  void TypeFrequency(FT736& rig, std::string_view khz) {
    Event([&] { rig.DFrequenza.DoubleClick(); });
    Event([&] {
      for (char c : khz) rig.Frequenza.TypeKey(static_cast<char32_t>(c));
    });
    Event([&] { rig.Frequenza.Leave(); });
  }
  static int Centre(const FT736& rig) {
    return (rig.SliderFrequenza.Minimum() + rig.SliderFrequenza.Maximum()) / 2;
  }
};

TEST_F(Ft736Test, OpensThePortAndWaitsSwitchedOff) {
  FT736& rig = OpenRig();
  EXPECT_TRUE(session.Opened.FT736Open);
  EXPECT_EQ(machine.Serial().Settings(1), "4800,N,8,2");
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_FALSE(rig.RigAcceso);
  EXPECT_EQ(rig.Accensione.Caption(), "ON");
  EXPECT_EQ(rig.DVFO.Text(), "");
  EXPECT_EQ(rig.DModo.Text(), "");
  EXPECT_FALSE(rig.DFrequenza.Visible());
  EXPECT_FALSE(rig.Frequenza.Visible());
  EXPECT_FALSE(rig.SMeter.Visible());
  EXPECT_EQ(rig.SliderFrequenza.Minimum(), 500000);
  EXPECT_EQ(rig.SliderFrequenza.Maximum(), 502500);
  EXPECT_EQ(rig.SliderFrequenza.Value(), 500001);
  EXPECT_EQ(rig.FreqA, base::HundredHz(501100));
  EXPECT_EQ(rig.FreqB, base::HundredHz(501100));
  machine.Advance(1000);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(Ft736Test, SwitchingOnSendsTheDefaultFrequencyAndUsb) {
  FT736& rig = OpenRig();
  Lines();
  Press(rig.Accensione);
  EXPECT_EQ(Lines(), (Texts{kOn, "sent COM1 05 01 10 00 01", kUsb}));
  EXPECT_TRUE(rig.RigAcceso);
  EXPECT_EQ(rig.Accensione.Caption(), "OFF");
  EXPECT_EQ(rig.DVFO.Text(), "VFO-A");
  EXPECT_EQ(rig.DModo.Text(), "USB");
  EXPECT_EQ(rig.DFrequenza.Text(), "50,110.0");
  EXPECT_TRUE(rig.DFrequenza.Visible());
  EXPECT_TRUE(rig.SMeter.Visible());
}

TEST_F(Ft736Test, SwitchingOnCopiesAIntoB) {
  FT736& rig = OpenRig();
  rig.FreqB = base::HundredHz(1443000);
  Press(rig.Accensione);
  EXPECT_EQ(rig.FreqB, base::HundredHz(501100));
}

TEST_F(Ft736Test, SwitchingOnReturnsToVfoAFromAnyBand) {
  FT736& rig = OpenSwitchedOn();
  Press(rig.cmVFOB);
  TypeFrequency(rig, "144300");
  Press(rig.Accensione);
  Lines();
  Press(rig.Accensione);
  EXPECT_EQ(Lines(), (Texts{kOn, "sent COM1 05 01 10 00 01", kUsb}));
  EXPECT_EQ(rig.DFrequenza.Text(), "50,110.0");
  EXPECT_EQ(rig.FreqB, base::HundredHz(501100));
  Event([&] { rig.SliderFrequenza.Focus(); });
  EXPECT_EQ(rig.SliderFrequenza.Minimum(), 500100);
  EXPECT_EQ(rig.SliderFrequenza.Maximum(), 502100);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(Ft736Test, AVfoKeyWithCatOffReachesAnyBandToo) {
  FT736& rig = OpenSwitchedOn();
  TypeFrequency(rig, "144300");
  Press(rig.Accensione);
  rig.FreqB = base::HundredHz(4322000);
  Lines();
  Press(rig.cmVFOB);
  EXPECT_EQ(LinesOf(Lines(), "sent COM1 43"), Texts{"sent COM1 43 22 00 00 01"});
  EXPECT_EQ(rig.FreqB, base::HundredHz(4322000));
  EXPECT_EQ(rig.FreqA, base::HundredHz(1443000));
}

TEST_F(Ft736Test, SwitchingOnWithTheSliderThereSendsNoFrequency) {
  FT736& rig = OpenSwitchedOn();
  Press(rig.Accensione);
  Lines();
  Press(rig.Accensione);
  EXPECT_EQ(Lines(), (Texts{kOn, kUsb}));
}

TEST_F(Ft736Test, SwitchingOnShowsVfoAInUsbWhateverWasActive) {
  FT736& rig = OpenSwitchedOn();
  Press(rig.cmFM);
  Press(rig.cmVFOB);
  Press(rig.Accensione);
  Press(rig.Accensione);
  EXPECT_EQ(rig.DVFO.Text(), "VFO-A");
  EXPECT_EQ(rig.DModo.Text(), "USB");
}

TEST_F(Ft736Test, SwitchingOffEmptiesThePanelAndKeepsThePort) {
  FT736& rig = OpenSwitchedOn();
  Press(rig.Accensione);
  EXPECT_EQ(Lines(), Texts{kOff});
  EXPECT_FALSE(rig.RigAcceso);
  EXPECT_EQ(rig.Accensione.Caption(), "ON");
  EXPECT_EQ(rig.DVFO.Text(), "");
  EXPECT_EQ(rig.DModo.Text(), "");
  EXPECT_FALSE(rig.DFrequenza.Visible());
  EXPECT_FALSE(rig.SMeter.Visible());
  EXPECT_TRUE(machine.Serial().IsOpen(1));
  machine.Advance(500);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(Ft736Test, TheVfoMemoriesSurviveOffAndOn) {
  FT736& rig = OpenSwitchedOn();
  TypeFrequency(rig, "50150");
  Press(rig.Accensione);
  EXPECT_EQ(rig.FreqA, base::HundredHz(501500));
  Press(rig.Accensione);
  EXPECT_EQ(rig.FreqA, base::HundredHz(501500));
}

// Tuning.

TEST_F(Ft736Test, DraggingTheSliderSendsABlockForEachNewValue) {
  FT736& rig = OpenSwitchedOn();
  for (int value : {501101, 501102, 501102, 501150}) {
    Event([&] { rig.SliderFrequenza.SetValue(value); });
  }
  EXPECT_EQ(Lines(), (Texts{"sent COM1 05 01 10 10 01", "sent COM1 05 01 10 20 01",
                            "sent COM1 05 01 15 00 01"}));
  EXPECT_EQ(rig.DFrequenza.Text(), "50,115.0");
  EXPECT_EQ(rig.FreqA, base::HundredHz(501150));
}

TEST_F(Ft736Test, TuningGoesIntoTheActiveVfo) {
  FT736& rig = OpenSwitchedOn();
  Press(rig.cmVFOB);
  Event([&] { rig.SliderFrequenza.SetValue(501150); });
  EXPECT_EQ(rig.FreqB, base::HundredHz(501150));
  EXPECT_EQ(rig.FreqA, base::HundredHz(501100));
}

TEST_F(Ft736Test, TheSameTextOnTheDisplaySendsNothing) {
  FT736& rig = OpenSwitchedOn();
  Press(rig.cmVFOB);
  EXPECT_EQ(Lines(), Texts{kUsb});
  EXPECT_EQ(rig.DFrequenza.Text(), "50,110.0");
}

TEST_F(Ft736Test, TheFocusOnTheSliderCentresIt) {
  FT736& rig = OpenSwitchedOn();
  Event([&] { rig.SliderFrequenza.SetValue(501900); });
  Lines();
  Event([&] { rig.SliderFrequenza.Focus(); });
  EXPECT_EQ(rig.SliderFrequenza.Minimum(), 500900);
  EXPECT_EQ(rig.SliderFrequenza.Maximum(), 502900);
  EXPECT_EQ(rig.SliderFrequenza.Value(), 501900);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(Ft736Test, TheSliderIsNotCentredWhileCatIsOff) {
  FT736& rig = OpenRig();
  Event([&] { rig.SliderFrequenza.Focus(); });
  EXPECT_EQ(rig.SliderFrequenza.Minimum(), 500000);
  EXPECT_EQ(rig.SliderFrequenza.Maximum(), 502500);
}

// Typing.

TEST_F(Ft736Test, ATypedFrequencyIsShownSentAndCentresTheSlider) {
  FT736& rig = OpenSwitchedOn();
  TypeFrequency(rig, "144300");
  EXPECT_EQ(rig.DFrequenza.Text(), "144,300.0");
  EXPECT_EQ(rig.FreqA, base::HundredHz(1443000));
  EXPECT_EQ(Centre(rig), 1443000);
  EXPECT_EQ(rig.SliderFrequenza.Minimum(), 1442000);
  EXPECT_EQ(rig.SliderFrequenza.Maximum(), 1444000);
  EXPECT_EQ(rig.SliderFrequenza.Value(), 1443000);
  EXPECT_EQ(Lines().back(), "sent COM1 14 43 00 00 01");
  EXPECT_FALSE(rig.Frequenza.Visible());
}

TEST_F(Ft736Test, TypingDownwardsArrivesToo) {
  FT736& rig = OpenSwitchedOn();
  TypeFrequency(rig, "1296200");
  EXPECT_EQ(rig.DFrequenza.Text(), "1,296,200.0");
  EXPECT_EQ(Lines().back(), "sent COM1 12 96 20 00 01");
  TypeFrequency(rig, "50110.5");
  EXPECT_EQ(rig.DFrequenza.Text(), "50,110.5");
  EXPECT_EQ(Lines().back(), "sent COM1 05 01 10 50 01");
  EXPECT_EQ(Centre(rig), 501105);
}

TEST_F(Ft736Test, ADoubleClickOnTheDisplayShowsTheFieldWithTheFrequencyInIt) {
  FT736& rig = OpenSwitchedOn();
  Event([&] { rig.DFrequenza.DoubleClick(); });
  EXPECT_TRUE(rig.Frequenza.Visible());
  EXPECT_EQ(Lines(), Texts{"focus FT736.Frequenza"});
  EXPECT_EQ(rig.Frequenza.Text(), "50110");
  EXPECT_EQ(rig.Frequenza.SelText(), "50110");
  Event([&] { rig.Frequenza.Leave(); });
  EXPECT_EQ(rig.FreqA, base::HundredHz(501100));
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(Ft736Test, TheFieldTakesNumbersOnly) {
  FT736& rig = OpenSwitchedOn();
  TypeFrequency(rig, "1x4 4300e.");
  EXPECT_EQ(rig.Frequenza.Text(), "144300.");
  EXPECT_EQ(rig.FreqA, base::HundredHz(1443000));
}

TEST_F(Ft736Test, EnterEndsTheTypingAndLeadsToTheSlider) {
  FT736& rig = OpenSwitchedOn();
  Event([&] { rig.DFrequenza.DoubleClick(); });
  Lines();
  Event([&] { TypeLine(rig.Frequenza, "144300"); });
  EXPECT_EQ(rig.FreqA, base::HundredHz(1443000));
  EXPECT_FALSE(rig.Frequenza.Visible());
  EXPECT_EQ(LinesOf(Lines(), "focus"), Texts{"focus FT736.SliderFrequenza"});
}

TEST_F(Ft736Test, AFrequencyOffEveryScaleIsRefused) {
  FT736& rig = OpenSwitchedOn();
  TypeFrequency(rig, "999999999999999");
  EXPECT_EQ(LinesOf(Lines(), "error").size(), 1u);
  EXPECT_EQ(rig.FreqA, base::HundredHz(501100));
  EXPECT_FALSE(rig.Frequenza.Visible());
}

TEST_F(Ft736Test, AnEmptyFieldIsFrequencyZero) {
  FT736& rig = OpenSwitchedOn();
  Event([&] { rig.DFrequenza.DoubleClick(); });
  rig.Frequenza.SetText("");
  Event([&] { rig.Frequenza.Leave(); });
  EXPECT_EQ(rig.FreqA, base::HundredHz(0));
  EXPECT_EQ(Lines().back(), "sent COM1 00 00 00 00 01");
}

// VFO and mode.

TEST_F(Ft736Test, EachModeKeySendsItsBlockAndShowsItsMode) {
  FT736& rig = OpenSwitchedOn();
  Press(rig.cmLSB);
  EXPECT_EQ(rig.DModo.Text(), "LSB");
  Press(rig.cmFM);
  EXPECT_EQ(rig.DModo.Text(), "FM");
  Press(rig.cmUSB);
  EXPECT_EQ(rig.DModo.Text(), "USB");
  EXPECT_EQ(Lines(), (Texts{kLsb, kFm, kUsb}));
}

TEST_F(Ft736Test, AModeKeySendsWithCatOffToo) {
  FT736& rig = OpenRig();
  Lines();
  Press(rig.cmFM);
  EXPECT_EQ(Lines(), Texts{kFm});
  EXPECT_EQ(rig.DModo.Text(), "FM");
}

TEST_F(Ft736Test, BackOnVfoAItsFrequencyAndModeReturn) {
  FT736& rig = OpenSwitchedOn();
  TypeFrequency(rig, "144300");
  Press(rig.cmFM);
  Press(rig.cmVFOB);
  EXPECT_EQ(rig.DVFO.Text(), "VFO-B");
  EXPECT_EQ(rig.DFrequenza.Text(), "50,110.0");
  EXPECT_EQ(rig.ModoA, "FM");
  EXPECT_EQ(rig.DModo.Text(), "USB");
  Press(rig.cmLSB);
  TypeFrequency(rig, "432200");
  Lines();
  Press(rig.cmVFOA);
  EXPECT_EQ(rig.DVFO.Text(), "VFO-A");
  EXPECT_EQ(rig.DFrequenza.Text(), "144,300.0");
  EXPECT_EQ(rig.DModo.Text(), "FM");
  EXPECT_EQ(rig.ModoB, "LSB");
  EXPECT_EQ(rig.FreqA, base::HundredHz(1443000));
  EXPECT_EQ(rig.FreqB, base::HundredHz(4322000));
  EXPECT_EQ(Centre(rig), 1443000);
  const Texts lines = Lines();
  EXPECT_EQ(lines[lines.size() - 2], "sent COM1 14 43 00 00 01");
  EXPECT_EQ(lines.back(), kFm);
}

TEST_F(Ft736Test, TheKeyOfTheActiveVfoCopiesTheModeIntoTheOther) {
  FT736& rig = OpenSwitchedOn();
  Press(rig.cmFM);
  Press(rig.cmVFOA);
  EXPECT_EQ(rig.ModoB, "FM");
  EXPECT_EQ(rig.DModo.Text(), "USB");
}

TEST_F(Ft736Test, AVfoKeyWithCatOffForgetsTheOthersMode) {
  FT736& rig = OpenRig();
  Lines();
  Press(rig.cmVFOA);
  EXPECT_EQ(rig.DVFO.Text(), "VFO-A");
  EXPECT_EQ(rig.ModoB, "");
  EXPECT_EQ(Lines(), (Texts{"sent COM1 05 01 10 00 01", kUsb}));
  Press(rig.cmVFOB);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(Ft736Test, TheBandKeyDoesNothing) {
  FT736& rig = OpenSwitchedOn();
  EXPECT_EQ(rig.cmBand.Caption(), "Banda");
  Press(rig.cmBand);
  EXPECT_EQ(Lines(), Texts{});
}

// S-meter.

TEST_F(Ft736Test, PollsTenTimesASecondWhileOn) {
  OpenSwitchedOn();
  machine.Advance(1000);
  EXPECT_EQ(Lines(), Texts(10, kPoll));
}

TEST_F(Ft736Test, ShowsTheReadingOfAnAnswer) {
  FT736& rig = OpenSwitchedOn();
  Receive("TNC", "\x64...\xF7");
  EXPECT_NE(rig.SMeter.Value(), 100);
  machine.Advance(100);
  EXPECT_EQ(rig.SMeter.Value(), 100);
}

TEST_F(Ft736Test, KeepsTheReadingThroughPartsOfBlocksAndNoise) {
  FT736& rig = OpenSwitchedOn();
  Receive("TNC", "\x64...\xF7");
  machine.Advance(100);
  for (const std::string bytes : {"\x50", "\x50..", "noise and more", "....\xF6", "\xF7\xF7\xF7"}) {
    Receive("TNC", bytes);
    machine.Advance(100);
    EXPECT_EQ(rig.SMeter.Value(), 100);
  }
  machine.Advance(100);
  EXPECT_EQ(rig.SMeter.Value(), 100);
  EXPECT_EQ(LinesOf(Lines(), "error"), Texts{});
}

TEST_F(Ft736Test, NothingKeepsAReadingOffTheScale) {
  FT736& rig = OpenSwitchedOn();
  Receive("TNC", "\xFF...\xF7");
  machine.Advance(100);
  EXPECT_EQ(rig.SMeter.Value(), 255);
  EXPECT_EQ(rig.SMeter.Minimum(), 20);
  EXPECT_EQ(rig.SMeter.Maximum(), 175);
}

// Closing and failures.

TEST_F(Ft736Test, CannotBeClosedWhileCatIsOn) {
  FT736& rig = OpenSwitchedOn();
  Event([&] { EXPECT_FALSE(rig.Close()); });
  EXPECT_TRUE(session.Opened.FT736Open);
  EXPECT_TRUE(machine.Serial().IsOpen(1));
  Press(rig.Accensione);
  Event([&] { EXPECT_TRUE(rig.Close()); });
  EXPECT_FALSE(session.Opened.FT736Open);
  EXPECT_FALSE(machine.Serial().IsOpen(1));
}

TEST_F(Ft736Test, TheMainFrameStaysOpenWhileCatIsOn) {
  OpenSwitchedOn();
  Event([&] { EXPECT_FALSE(frame->Close()); });
  EXPECT_TRUE(session.IsOpen());
}

TEST_F(Ft736Test, RestoresAndSavesItsPlace) {
  session.SaveSetting("FT736", "X", "900");
  FT736& rig = OpenRig();
  EXPECT_EQ(rig.GetBounds().left, base::Twips(900));
  Event([&] { rig.Close(); });
  EXPECT_EQ(session.GetSetting("FT736", "X", ""), "900");
}

TEST_F(Ft736Test, APortThatDoesNotOpenIsToldAndTriedAgainByThePowerKey) {
  machine.Serial().FailNext(1);
  FT736& rig = OpenRig();
  EXPECT_EQ(Lines(), Texts{"message exclamation \"FT-736R\" \"La porta COM1 non risponde\""});
  machine.Serial().FailNext(1);
  Press(rig.Accensione);
  EXPECT_EQ(LinesOf(Lines(), "message").size(), 1u);
  EXPECT_FALSE(rig.RigAcceso);
  Press(rig.cmFM);
  EXPECT_EQ(Lines(), Texts{});
  Press(rig.Accensione);
  EXPECT_TRUE(rig.RigAcceso);
  EXPECT_EQ(Lines().front(), kOn);
}

TEST_F(Ft736Test, ALineThatIsGoneIsToldOnce) {
  FT736& rig = OpenSwitchedOn();
  machine.Serial().FailNext(1);
  machine.Advance(1000);
  EXPECT_EQ(Lines(), Texts{"error \"La porta COM1 non risponde\""});
  EXPECT_TRUE(rig.RigAcceso);
}

TEST_F(Ft736Test, ThePowerKeyLeavesALineThatIsGoneAndFindsItAgain) {
  FT736& rig = OpenSwitchedOn();
  machine.Serial().FailNext(1);
  Press(rig.cmFM);
  EXPECT_EQ(Lines(), Texts{"error \"La porta COM1 non risponde\""});
  Press(rig.cmUSB);
  machine.Advance(1000);
  EXPECT_EQ(Lines(), Texts{});
  Press(rig.Accensione);
  EXPECT_FALSE(rig.RigAcceso);
  EXPECT_EQ(rig.DVFO.Text() + rig.DModo.Text(), "");
  EXPECT_EQ(Lines(), Texts{});
  Press(rig.Accensione);
  EXPECT_TRUE(rig.RigAcceso);
  EXPECT_EQ(Lines().front(), kOn);
}

TEST_F(Ft736Test, ALineThatGoesAtTheLastCommandLeavesThePanelDark) {
  FT736& rig = OpenSwitchedOn();
  machine.Serial().FailNext(1);
  Press(rig.Accensione);
  EXPECT_EQ(Lines(), Texts{"error \"La porta COM1 non risponde\""});
  EXPECT_FALSE(rig.RigAcceso);
  EXPECT_EQ(rig.DVFO.Text() + rig.DModo.Text(), "");
  EXPECT_FALSE(rig.DFrequenza.Visible() || rig.SMeter.Visible());
  Event([&] { EXPECT_TRUE(rig.Close()); });
}

TEST_F(Ft736Test, OpenedAgainItStartsFromTheStart) {
  FT736& rig = OpenSwitchedOn();
  TypeFrequency(rig, "144300");
  Press(rig.Accensione);
  Event([&] { rig.Close(); });
  FT736& again = OpenRig();
  EXPECT_EQ(again.FreqA, base::HundredHz(501100));
  EXPECT_EQ(again.ModoA, "USB");
}

}  // namespace
}  // namespace brenvo::links
