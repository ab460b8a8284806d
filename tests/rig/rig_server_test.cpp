#include "rig/rig_server.h"

#include "tests/rig/rig_station.h"

namespace brenvo::rig {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const ServedRig kRig{base::Hz(14250000), "USB"};

std::string Served(std::string_view line, const ServedRig& rig = kRig) {
  ServedWish wish;
  return AnswerTo(line, rig, wish);
}

TEST(ServedWords, ItAnswersAsTheProgramWhosePlaceItTakes) {
  EXPECT_EQ(Served("\\chk_vfo"), "0");
  EXPECT_EQ(Served("f"), "14250000");
  EXPECT_EQ(Served("+f"), "get_freq:\nFrequency: 14250000\nRPRT 0");
  EXPECT_EQ(Served("m"), "USB\n0");
  EXPECT_EQ(Served("\\get_mode"), "USB\n0");
  EXPECT_EQ(Served("v"), "VFOA");
  EXPECT_EQ(Served("s"), "0\nVFOA");
  EXPECT_EQ(Served("t"), "0");
  EXPECT_EQ(Served("V VFOA"), "RPRT 0");
  EXPECT_EQ(Served("+\\set_split_vfo 0 VFOA"), "set_split_vfo: 0 VFOA\nRPRT 0");
  EXPECT_EQ(Served("\\get_powerstat"), "1");
  EXPECT_EQ(Served("\\get_lock_mode"), "0");
  EXPECT_THAT(Served("\\dump_state"), StartsWith("1\n2\n0\n"));
  EXPECT_EQ(Served(""), "");
}

TEST(ServedWords, NothingThatTransmitsKeysOrSwitchesOnIsTaken) {
  for (const char* line :
       {"T 1", "\\set_ptt 1", "+T 3", "b CQ TEST", "\\send_morse X", "\\set_powerstat 1",
        "S 1 VFOB", "L RFPOWER 1", "U TUNER 1", "w x", "\\send_voice_mem 1"}) {
    ServedWish wish;
    EXPECT_THAT(AnswerTo(line, kRig, wish), testing::EndsWith("RPRT -11")) << line;
    EXPECT_FALSE(wish.frequency) << line;
    EXPECT_EQ(wish.mode, "") << line;
  }
}

TEST(ServedWords, AFrequencyAndAModeAreWished) {
  ServedWish wish;
  EXPECT_EQ(AnswerTo("F 14074000.000000", kRig, wish), "RPRT 0");
  EXPECT_EQ(wish.frequency, base::Hz(14074000));
  EXPECT_EQ(AnswerTo("M PKTUSB -1", kRig, wish), "RPRT 0");
  EXPECT_EQ(wish.mode, "PKTUSB");
  for (const char* line : {"F abc", "F", "F -1", "F nan", "F 1e99", "M", "M usb"}) {
    ServedWish none;
    EXPECT_EQ(AnswerTo(line, kRig, none), "RPRT -1") << line;
    EXPECT_FALSE(none.frequency) << line;
    EXPECT_EQ(none.mode, "") << line;
  }
}

TEST(ServedWords, WithoutATransceiverThereIsAnErrorOfTheLine) {
  EXPECT_EQ(Served("f", {}), "RPRT -6");
  EXPECT_EQ(Served("F 14074000", {}), "RPRT -6");
}

class RigServerTest : public RigStation {
 protected:
  RigServerTest() { OpenRtx(); }
  // Its lines alone.
  Texts Ask(int peer, const std::string& bytes) {
    other.clear();
    Event([&] { machine.Servers().Receive("RIGSERVER", peer, bytes); });
    Texts lines = Lines();
    Texts told;
    std::ranges::copy_if(lines, std::back_inserter(told), [](const std::string& line) {
      return line.find("RIGSERVER") != line.npos;
    });
    return told;
  }
  void Choose() {
    Event([&] { EXPECT_EQ(session.Choices.Set(core::choice::kRigServes, "Sì"), ""); });
  }
};

TEST_F(RigServerTest, NothingListensUntilItIsChosen) {
  EXPECT_FALSE(machine.Servers().IsListening("RIGSERVER"));
  Choose();
  EXPECT_THAT(Lines(), ElementsAre("serve RIGSERVER 4534"));
  EXPECT_EQ(server->StateText(), "Offerto sulla porta 4534 (0 programmi)");
  Event([&] { EXPECT_EQ(session.Choices.Set(core::choice::kRigServes, "No"), ""); });
  EXPECT_THAT(Lines(), ElementsAre("unserve RIGSERVER"));
  EXPECT_EQ(server->StateText(), "");
}

TEST_F(RigServerTest, APortThatIsTakenIsTold) {
  machine.Servers().FailNext("RIGSERVER");
  Choose();
  EXPECT_EQ(server->StateText(), "La porta 4534 è occupata");
}

TEST_F(RigServerTest, ProgramsHearAndTuneTheTransceiverThroughIt) {
  Choose();
  Lines();
  EXPECT_THAT(Ask(1, "f\nm"), ElementsAre("sent RIGSERVER 1 \"14250000\\n\""));
  EXPECT_THAT(Ask(1, "\n"), ElementsAre("sent RIGSERVER 1 \"USB\\n0\\n\""));
  Event([&] { machine.Servers().Receive("RIGSERVER", 2, "F 14074000\r\n"); });
  Talk();
  EXPECT_EQ(rig.frequency, 14074000);
  EXPECT_EQ(server->StateText(), "Offerto sulla porta 4534 (2 programmi)");
  Event([&] { machine.Servers().PeerClose("RIGSERVER", 1); });
  EXPECT_EQ(server->StateText(), "Offerto sulla porta 4534 (1 programma)");
  EXPECT_THAT(Ask(2, "q\n"), ElementsAre("sent RIGSERVER 2 \"RPRT 0\\n\"", "drop RIGSERVER 2"));
}

TEST_F(RigServerTest, WhoSendsALineWithoutEndIsTurnedAway) {
  Choose();
  Lines();
  EXPECT_THAT(Ask(1, std::string(RigServer::kLongestLine + 1, 'x')),
              ElementsAre("drop RIGSERVER 1"));
  EXPECT_THAT(Ask(2, std::string(RigServer::kLongestLine + 1, 'x') + "\nf\n"),
              ElementsAre("drop RIGSERVER 2"));
}

}  // namespace
}  // namespace brenvo::rig
