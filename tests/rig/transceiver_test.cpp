#include "rig/transceiver.h"

#include "tests/rig/rig_station.h"

namespace brenvo::rig {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Optional;
using testing::StartsWith;

class TransceiverTest : public RigStation {
 protected:
  Texts Connect() {
    Event([&] { transceiver->WindowOpened(true); });
    return Talk();
  }
};

TEST_F(TransceiverTest, NothingIsConnectedUntilAWindowOrTheOperatorsChoiceWantsIt) {
  EXPECT_EQ(Talk(), Texts());
  EXPECT_THAT(other, IsEmpty());
  EXPECT_EQ(session.Choices.Set(core::choice::kRigConnects, "Sì"), "");
  Talk();
  EXPECT_THAT(other, ElementsAre("connect RIG \"127.0.0.1\" 4532"));
  EXPECT_EQ(session.Choices.Set(core::choice::kRigConnects, "No"), "");
  Talk();
  EXPECT_THAT(other, Contains("disconnect RIG"));
  EXPECT_EQ(transceiver->StateText(), "Non collegato");
}

TEST_F(TransceiverTest, OneThatWasNeverChosenIsNotLookedFor) {
  session.SaveSetting("Rtx", "Dove", "");
  Connect();
  EXPECT_THAT(other, IsEmpty());
  EXPECT_EQ(transceiver->StateText(), "Nessun rtx scelto");
}

TEST_F(TransceiverTest, ConnectingSendsTheseQuestionsAndNoOtherByte) {
  EXPECT_THAT(Connect(), ElementsAre("\\chk_vfo", "+\\get_freq", "+\\get_mode", "+\\get_split_vfo",
                                     "+\\get_freq"));
  EXPECT_EQ(transceiver->StateText(), "Collegato: 127.0.0.1:4532");
  EXPECT_EQ(session.Rig.Now()->frequency, base::Hz(14250000));
  EXPECT_EQ(base::Trim(session.Rig.Now()->banda), "20 m");
  EXPECT_EQ(session.Rig.Now()->modo, "SSB");
}

TEST_F(TransceiverTest, ASecondOnItAsksForFrequencyModeAndSignalAlone) {
  Connect();
  rig.frequency = 7050000;
  rig.mode = "LSB";
  EXPECT_THAT(After(1000), ElementsAre("+\\get_freq", "+\\get_mode", "+\\get_level STRENGTH"));
  EXPECT_EQ(base::Trim(session.Rig.Now()->banda), "40 m");
  EXPECT_EQ(transceiver->Strength(), -6);
  Event([&] { transceiver->WindowOpened(false); });
  EXPECT_EQ(session.Choices.Set(core::choice::kRigConnects, "Sì"), "");
  Talk();
  EXPECT_THAT(After(1000), ElementsAre("+\\get_freq", "+\\get_mode"));
}

TEST_F(TransceiverTest, WhatItDoesNotKnowItIsAskedOnce) {
  rig.codes = {{"get_level", -11}, {"get_split_vfo", -4}, {"get_mode", -11}};
  Connect();
  After(1000);
  EXPECT_THAT(After(1000), ElementsAre("+\\get_freq"));
}

TEST_F(TransceiverTest, WhereCommandsNameAVfoTheOneInUseIsNamed) {
  rig.namesVfo = true;
  EXPECT_THAT(Connect(), Contains("+\\get_freq currVFO"));
  EXPECT_TRUE(transceiver->Frequency());
}

TEST_F(TransceiverTest, TheSplitIsShownAndAskedAgainOfAProgramOfOurOwnAlone) {
  rig.split = "1";
  EXPECT_THAT(Connect(), Contains("+\\get_split_freq"));
  EXPECT_THAT(transceiver->Sends(), Optional(base::Hz(14255000)));
  for (int i = 0; i < 10; ++i) EXPECT_THAT(After(1000), Not(Contains("+\\get_split_vfo")));
  session.SaveSetting("Rtx", "Dove", "nostro");
  session.SaveSetting("Rtx", "Modello", "3073");
  Event([&] { transceiver->SetUpChanged(); });
  Talk();
  Texts asked;
  for (int i = 0; i < Transceiver::kBetweenSplits; ++i) {
    for (std::string& each : After(1000)) asked.push_back(std::move(each));
  }
  EXPECT_THAT(asked, Contains("+\\get_split_vfo").Times(1));
}

TEST_F(TransceiverTest, OneThatGoesToItsOtherVfoWhenAskedForTheSplitIsNotAskedAgain) {
  session.SaveSetting("Rtx", "Dove", "nostro");
  session.SaveSetting("Rtx", "Modello", "2003");
  Event([&] { transceiver->WindowOpened(true); });
  for (const char* answer :
       {"0\n", "get_freq:\nFrequency: 14250000\nRPRT 0\n", "get_mode:\nMode: USB\nRPRT 0\n",
        "get_split_vfo:\nSplit: 0\nTX VFO: VFOA\nRPRT 0\n",
        "get_freq:\nFrequency: 7000000\nRPRT 0\n"}) {
    Receive("RIG", answer);
  }
  Lines();
  for (int i = 0; i < 10; ++i) EXPECT_THAT(After(1000), Not(Contains("+\\get_split_vfo")));
}

TEST_F(TransceiverTest, OurOwnProgramIsStartedWithItsLinesAtRestAndNoWayToTransmit) {
  session.SaveSetting("Rtx", "Dove", "nostro");
  session.SaveSetting("Rtx", "Modello", "3073");
  session.SaveSetting("Rtx", "Porta", "/dev/ttyUSB0");
  session.SaveSetting("Rtx", "Velocita", "19200");
  Connect();
  EXPECT_THAT(other, ElementsAre("process rigctld \"-m 3073 -T 127.0.0.1 -t 4532 -r /dev/ttyUSB0 "
                                 "-s 19200 --set-conf=rts_state=OFF,dtr_state=OFF -P NONE\"",
                                 "connect RIG \"127.0.0.1\" 4532"));
  Event([&] { transceiver->WindowOpened(false); });
  Talk();
  EXPECT_THAT(other, Contains("process-stop rigctld"));
}

TEST_F(TransceiverTest, APortOfTheSettingsIsMeantByItsName) {
  session.SaveSetting("Rtx", "Dove", "nostro");
  session.SaveSetting("Rtx", "Modello", "1");
  session.SaveSetting("Rtx", "Porta", "com2");
  session.SaveSetting("Porte", "COM2", "/dev/ttyS7");
  Connect();
  EXPECT_THAT(other, Contains(HasSubstr("-r /dev/ttyS7 ")));
}

TEST_F(TransceiverTest, ThePackageIsNamedThatBringsAMissingProgram) {
  session.SaveSetting("Rtx", "Dove", "nostro");
  session.SaveSetting("Rtx", "Modello", "1");
  machine.Processes().FailNext("rigctld");
  Connect();
  EXPECT_EQ(transceiver->StateText(),
            "Non collegato: manca rigctld: installare il pacchetto libhamlib-utils");
}

TEST_F(TransceiverTest, AProgramOfOurOwnThatEndsIsStartedAgainAndItsLastWordsAreTold) {
  session.SaveSetting("Rtx", "Dove", "nostro");
  session.SaveSetting("Rtx", "Modello", "1");
  Connect();
  Event([&] {
    machine.Processes().End("rigctld", {2, "debug\nrig_open: error = Invalid configuration \n\n"});
  });
  EXPECT_EQ(transceiver->StateText(),
            "Non collegato: rigctld si è fermato: rig_open: error = Invalid configuration");
  EXPECT_FALSE(session.Rig.Now());
  other.clear();
  After(1000);
  EXPECT_THAT(other, Contains(StartsWith("process rigctld")));
  EXPECT_TRUE(session.Rig.Now());
}

TEST_F(TransceiverTest, WhereOurOwnProgramFindsItsPortTakenTheOneThereIsUsed) {
  session.SaveSetting("Rtx", "Dove", "nostro");
  session.SaveSetting("Rtx", "Modello", "1");
  machine.Processes().Queue("rigctld", "-m 1 -T 127.0.0.1 -t 4532 -P NONE", {1, ""});
  Connect();
  EXPECT_TRUE(session.Rig.Now());
  EXPECT_EQ(transceiver->StateText(), "Collegato a un rigctld già al lavoro sulla sua porta");
}

TEST_F(TransceiverTest, WhatOurOwnProgramSaidIsToldWhereNobodyElseIsThere) {
  session.SaveSetting("Rtx", "Dove", "nostro");
  session.SaveSetting("Rtx", "Modello", "1");
  machine.Processes().Queue("rigctld", "-m 1 -T 127.0.0.1 -t 4532 -P NONE", {2, "no such model"});
  machine.Tcp().FailNext("RIG");
  Connect();
  EXPECT_EQ(transceiver->StateText(), "Non collegato: rigctld si è fermato: no such model");
  After(1000);
  EXPECT_EQ(transceiver->StateText(), "Collegato: ");
}

TEST_F(TransceiverTest, WhileOurOwnProgramStartsItIsTriedAgainSoon) {
  session.SaveSetting("Rtx", "Dove", "nostro");
  session.SaveSetting("Rtx", "Modello", "1");
  machine.Tcp().FailNext("RIG");
  Connect();
  EXPECT_EQ(transceiver->StateText(), "Non collegato: rigctld parte");
  After(400);
  EXPECT_TRUE(session.Rig.Now());
}

TEST_F(TransceiverTest, AnAnswerThatDoesNotComeIsANewLineAfterAWhile) {
  Connect();
  other.clear();
  Event([&] { machine.Advance(1000); });
  Lines();  // asked, and not answered
  Event([&] { machine.Advance(3000); });
  EXPECT_EQ(transceiver->StateText(), "Non collegato: nessuna risposta");
  EXPECT_FALSE(session.Rig.Now());
  Talk();
  EXPECT_THAT(other, ElementsAre("disconnect RIG"));
  After(1000);
  EXPECT_THAT(other, Contains("connect RIG \"127.0.0.1\" 4532"));
  EXPECT_TRUE(session.Rig.Now());
}

TEST_F(TransceiverTest, AnySurpriseOnTheLineIsANewLine) {
  for (const char* surprise : {"\n", "get_mode:\nMode: USB\nRPRT 0\n", "get_freq:\nRPRT 0\n",
                               "get_freq:\nFrequency: nan\nRPRT 0\n", "RPRT -1\nRPRT -18\n",
                               "get_freq:\nFrequency: 14250000\nRPRT 0\nget_freq:\n"}) {
    Event([&] { transceiver->SetUpChanged(); });
    Connect();
    Event([&] { machine.Advance(1000); });
    Lines();
    Receive("RIG", surprise);
    EXPECT_FALSE(transceiver->Stands()) << surprise;
    EXPECT_FALSE(session.Rig.Now()) << surprise;
  }
}

TEST_F(TransceiverTest, WhatIsNoSuchProgramIsLeftAtItsFirstLine) {
  Event([&] { transceiver->WindowOpened(true); });
  Lines();
  Receive("RIG", "SSH-2.0-OpenSSH_9.2\r\n");
  EXPECT_EQ(transceiver->StateText(), "Non collegato: chi risponde non è rigctld");
}

TEST_F(TransceiverTest, TriesToConnectComeLessAndLessOften) {
  Event([&] {
    machine.Tcp().FailNext("RIG");
    transceiver->WindowOpened(true);
  });
  EXPECT_EQ(transceiver->StateText(), "Non collegato: connessione rifiutata");
  for (const int wait : {1000, 2000, 5000, 10000, 30000, 30000}) {
    machine.Tcp().FailNext("RIG");
    Lines();
    Event([&] { machine.Advance(wait - 1); });
    EXPECT_THAT(Lines(), IsEmpty()) << wait;
    Event([&] { machine.Advance(1); });
    EXPECT_THAT(Lines(), ElementsAre("connect RIG \"127.0.0.1\" 4532")) << wait;
  }
  After(30000);
  EXPECT_TRUE(session.Rig.Now());
  Event([&] { machine.Tcp().PeerClose("RIG"); });
  EXPECT_EQ(transceiver->StateText(), "Non collegato: collegamento chiuso");
  After(1000);
  EXPECT_TRUE(session.Rig.Now()) << "after it went well the first try is soon";
}

TEST_F(TransceiverTest, ADeadTransceiverIsToldAndAskedLessOften) {
  Connect();
  rig.codes = {{"get_freq", -5}};
  After(1000);
  EXPECT_EQ(transceiver->StateText(), "L'rtx non risponde: nessuna risposta dall'apparato");
  EXPECT_FALSE(session.Rig.Now());
  EXPECT_THAT(After(1000), ElementsAre("+\\get_freq"));
  EXPECT_THAT(After(1000), IsEmpty());
  EXPECT_THAT(After(1000), ElementsAre("+\\get_freq"));
  rig.codes.clear();
  After(5000);
  EXPECT_TRUE(session.Rig.Now());
  EXPECT_THAT(After(1000), Contains("+\\get_mode"));
}

TEST_F(TransceiverTest, AFrequencyAndItsModeGoThereInTheWordsOfTheTransceiver) {
  Connect();
  EXPECT_EQ(session.Rig.Tune(base::Hz(7050000), "SSB"), "Rtx a 7.050.000 LSB");
  EXPECT_THAT(Talk(), ElementsAre("+\\set_freq 7050000", "+\\set_mode LSB -1"));
  EXPECT_EQ(rig.mode, "LSB");
  EXPECT_EQ(session.Rig.Now()->frequency, base::Hz(7050000));
  EXPECT_EQ(session.Rig.Tune(base::Hz(14074000), "FT8"), "Rtx a 14.074.000 PKTUSB");
  EXPECT_THAT(Talk(), ElementsAre("+\\set_freq 14074000", "+\\set_mode PKTUSB -1"));
  EXPECT_EQ(session.Rig.Now()->modo, "") << "which digital mode it is, it does not know";
}

TEST_F(TransceiverTest, WithoutATransceiverTuningSaysSo) {
  EXPECT_EQ(session.Rig.Tune(base::Hz(7050000), "SSB"), "Rtx: Non collegato");
  End();
  EXPECT_EQ(session.Rig.Tune(base::Hz(7050000), "SSB"), core::RigDoor::kNone);
}

TEST_F(TransceiverTest, WhatItRefusesIsToldAndItsOwnFrequencyIsShownAgain) {
  Connect();
  rig.codes = {{"set_freq", -9}, {"set_mode", -1}};
  session.Rig.Tune(base::Hz(7050000), "");
  Talk();
  EXPECT_EQ(transceiver->LastNews(), "L'rtx non va su questa frequenza: rifiutato");
  EXPECT_EQ(session.Rig.Now()->frequency, base::Hz(14250000));
  transceiver->TakeModeOfRig("FM");
  Talk();
  EXPECT_EQ(transceiver->LastNews(), "L'rtx non prende il modo FM: valore non valido");
}

TEST_F(TransceiverTest, AKnobThatIsTurnedFastSendsTheLastOfWhatItWanted) {
  Connect();
  for (int i = 1; i <= 100; ++i) session.Rig.Tune(base::Hz(14250000 + i * 10), "");
  EXPECT_THAT(Talk(), ElementsAre("+\\set_freq 14250010", "+\\set_freq 14251000"));
  EXPECT_EQ(session.Rig.Now()->frequency, base::Hz(14251000));
}

TEST_F(TransceiverTest, AnAnswerThatWasOnItsWayDoesNotTurnTheKnobBack) {
  Connect();
  Event([&] { machine.Advance(1000); });
  Lines();
  session.Rig.Tune(base::Hz(14260000), "");
  Receive("RIG", "get_freq:\nFrequency: 14250000\nRPRT 0\n");
  EXPECT_EQ(session.Rig.Now()->frequency, base::Hz(14260000));
}

TEST_F(TransceiverTest, AnotherSetUpIsTriedSoonHoweverOftenTheOneBeforeFailed) {
  Event([&] {
    machine.Tcp().FailNext("RIG");
    transceiver->WindowOpened(true);
  });
  machine.Tcp().FailNext("RIG");
  After(1000);
  machine.Tcp().FailNext("RIG");
  Event([&] { transceiver->SetUpChanged(); });
  Lines();
  Event([&] { machine.Advance(1000); });
  EXPECT_THAT(Lines(), Contains("connect RIG \"127.0.0.1\" 4532"));
}

TEST_F(TransceiverTest, ATransverterIsAddedToWhatIsShownAndTakenFromWhatIsSent) {
  session.SaveSetting("Rtx", "Transverter", "23cm:1268:Y, 2 m:116:N");
  rig.frequency = 28200000;
  End();
  Begin();
  Connect();
  EXPECT_EQ(session.Rig.Now()->frequency, base::Hz(1296200000));
  EXPECT_EQ(base::Trim(session.Rig.Now()->banda), "23cm");
  session.Rig.Tune(base::Hz(1296300000), "");
  EXPECT_THAT(Talk(), ElementsAre("+\\set_freq 28300000"));
  session.Rig.Tune(base::Hz(14250000), "");
  EXPECT_THAT(Talk(), ElementsAre("+\\set_freq 14250000"));
}

TEST_F(TransceiverTest, AFrequencyOnWhichOneRestsIsRememberedBeyondTheEndOfTheProgram) {
  Connect();
  for (int i = 0; i < 9; ++i) After(1000);
  EXPECT_THAT(transceiver->Remembered(), IsEmpty());
  for (int i = 0; i < 3; ++i) After(1000);
  EXPECT_THAT(transceiver->Remembered(),
              ElementsAre(RememberedFrequency{base::Hz(14250000), "USB"}));
  for (int n = 0; n < 12; ++n) {
    session.Rig.Tune(base::Hz(7000000 + n * 10000), "");
    Talk();
    transceiver->Remember();
  }
  EXPECT_EQ(transceiver->Remembered().size(), Transceiver::kMostRemembered);
  EXPECT_EQ(transceiver->Remembered().front().frequency, base::Hz(7110000));
  End();
  Begin();
  EXPECT_EQ(transceiver->Remembered().size(), Transceiver::kMostRemembered);
  EXPECT_EQ(transceiver->Remembered().front(), (RememberedFrequency{base::Hz(7110000), "USB"}));
}

TEST_F(TransceiverTest, WhatStandsInTheSettingsWronglyIsNoMemory) {
  session.SaveSetting("Rtx", "Memorie", "x, -5 USB, 1e999, 14250000 USB,,");
  End();
  Begin();
  EXPECT_THAT(transceiver->Remembered(),
              ElementsAre(RememberedFrequency{base::Hz(14250000), "USB"}));
}

}  // namespace
}  // namespace brenvo::rig
