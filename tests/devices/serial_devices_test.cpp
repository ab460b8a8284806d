// The radio terminal and the transceiver's panel on a pseudo-terminal.
#include "tests/devices/real_station.h"

namespace brenvo::ui {
namespace {

std::string Frame(std::initializer_list<int> bytes) {
  std::string frame;
  for (int byte : bytes) frame += static_cast<char>(byte);
  return frame;
}
const std::string kOn = Frame({0x20, 0x20, 0x20, 0x20, 0x00});
const std::string kOff = Frame({0x20, 0x20, 0x20, 0x20, 0x80});
const std::string kUsb = Frame({0x01, 0x20, 0x20, 0x20, 0x07});
const std::string kLsb = Frame({0x00, 0x20, 0x20, 0x20, 0x07});
const std::string kFm = Frame({0x08, 0x20, 0x20, 0x20, 0x07});
const std::string kPoll = Frame({0x20, 0x20, 0x20, 0x20, 0xF7});

class SerialDevice : public RealStation {
 protected:
  SerialDevice() {
    session.SaveSetting("Porte", "COM1", line.Device());
    Profile("TNCPort='COM1', TNCBaud=9600, ClusterNode='IK4GRO-6'");
    machine.TakeLines();
  }
  // Before the line goes.
  void TearDown() override {
    for (const char* name : {"TNC", "FT736"}) {
      if (forms::Window* window = session.Windows.Find(name)) {
        Event([&] {
          if (auto* rig = dynamic_cast<links::FT736*>(window); rig != nullptr && rig->RigAcceso) {
            rig->Accensione.Press();
          }
          window->Close();
        });
      }
    }
  }
  SerialLine line;
};

TEST_F(SerialDevice, AnOperatorCallsANodeAndWatchesSpots) {
  links::TNC& tnc = Open<links::TNC>("TNC");
  EXPECT_EQ(tnc.Banda.Entries().size(), 19u);
  Event([&] { tnc.cmConnect.Press(); });
  EXPECT_TRUE(line.Hears("c IK4GRO-6\r\n"));
  line.Say("cmd:*** CONNECTED to IK4GRO-6\r\nDX de I4LCK:     14195.0  VP8ORK   tnx\x07\r\n");
  EXPECT_TRUE(Shows(tnc.Received,
                    "cmd:*** CONNECTED to IK4GRO-6\nDX de I4LCK:     14195.0  VP8ORK   tnx\n"));
  const auto lines = machine.TakeLines();
  EXPECT_EQ(lines, (std::vector<std::string>{"beep", "wave \"20m.wav\""}));
  TypeLine(tnc.Sended, "sh/dx");
  EXPECT_TRUE(line.Hears("sh/dx\r"));
  Event([&] { tnc.cmCommandMode.Press(); });
  EXPECT_TRUE(line.Hears("\x03"));
}

TEST_F(SerialDevice, ALineMayComeByteByByte) {
  links::TNC& tnc = Open<links::TNC>("TNC");
  for (char c : std::string("DX de I4LCK: 14195.0 VP8ORK tnx\r\n")) {
    line.Say(std::string(1, c));
    Pass(1);
  }
  EXPECT_TRUE(Shows(tnc.Received, "DX de I4LCK: 14195.0 VP8ORK tnx\n"));
}

TEST_F(SerialDevice, ABurstLosesNothing) {
  links::TNC& tnc = Open<links::TNC>("TNC");
  Event([&] { tnc.cmMDX.Press(); });
  int shown = 0;
  const forms::Subscription edited = tnc.Received.Edited.Subscribe(
      [&](const forms::RichText::Edit& edit) { shown += !edit.inserted.empty(); });
  std::string burst;
  for (int i = 0; i < 2000; ++i) {
    burst += "DX de I4LCK:     13195.0  Z" + std::to_string(i) + "A   tnx 1423Z\r\n";
  }
  line.Say(burst);
  EXPECT_TRUE(Until([&] { return shown == 2000; }, 60000)) << shown;
}

TEST_F(SerialDevice, APortThatIsNotThereLeavesASilentTerminal) {
  session.SaveSetting("Porte", "COM1", "/dev/no-such-port");
  links::TNC& tnc = Open<links::TNC>("TNC");
  EXPECT_EQ(machine.TakeLines(), std::vector<std::string>{});
  EXPECT_EQ(tnc.Banda.Entries().size(), 1u);
}

TEST_F(SerialDevice, ThePanelTunesTheTransceiver) {
  links::FT736& rig = Open<links::FT736>("FT736");
  Event([&] { rig.cmFM.Press(); });
  EXPECT_TRUE(line.Hears(kFm));
  Event([&] { rig.Accensione.Press(); });
  EXPECT_TRUE(line.Hears(kOn + Frame({0x05, 0x01, 0x10, 0x00, 0x01}) + kUsb));
  EXPECT_TRUE(line.Hears(kPoll));

  const auto without = [&](const std::string& polls) {
    std::string heard;
    for (std::size_t at = 0; at + 5 <= polls.size(); at += 5) {
      if (polls.substr(at, 5) != kPoll) heard += polls.substr(at, 5);
    }
    return heard;
  };
  const auto sent = [&](const std::function<void()>& action) {
    line.Heard.clear();
    Event(action);
    Pass(150);
    line.Listen();
    EXPECT_EQ(line.Heard.size() % 5, 0u);
    return without(line.Heard);
  };
  EXPECT_EQ(sent([&] { rig.SliderFrequenza.SetValue(501505); }),
            Frame({0x05, 0x01, 0x50, 0x50, 0x01}));
  EXPECT_EQ(sent([&] {
              rig.DFrequenza.DoubleClick();
              rig.Frequenza.SetText("144300");
              rig.Frequenza.Leave();
            }),
            Frame({0x14, 0x42, 0x00, 0x00, 0x01, 0x14, 0x43, 0x00, 0x00, 0x01}));
  EXPECT_EQ(sent([&] { rig.cmLSB.Press(); }), kLsb);
  // The slider's limits close in on the other frequency from above.
  EXPECT_EQ(sent([&] { rig.cmVFOB.Press(); }),
            Frame({0x05, 0x02, 0x10, 0x00, 0x01, 0x05, 0x01, 0x10, 0x00, 0x01}) + kUsb);
  EXPECT_EQ(sent([&] { rig.cmVFOA.Press(); }),
            Frame({0x14, 0x42, 0x00, 0x00, 0x01, 0x14, 0x43, 0x00, 0x00, 0x01}) + kLsb);
  EXPECT_EQ(sent([&] { rig.Accensione.Press(); }), kOff);
  EXPECT_EQ(machine.TakeLines(), std::vector<std::string>{"focus FT736.Frequenza"});
}

TEST_F(SerialDevice, TheMeterFollowsAnswersAndNothingElse) {
  links::FT736& rig = Open<links::FT736>("FT736");
  Event([&] { rig.Accensione.Press(); });
  const auto reads = [&](int value) { return Until([&] { return rig.SMeter.Value() == value; }); };
  line.Say("\x64...\xF7");
  EXPECT_TRUE(reads(100));
  line.Say("\x50...\xF7");
  EXPECT_TRUE(reads(80));
  for (const char* noise : {"\x40", "\x40..", "noise and more", "....\xF6"}) {
    line.Say(noise);
    Pass(120);
    EXPECT_EQ(rig.SMeter.Value(), 80);
  }
  line.Say("\x90...\xF7");
  EXPECT_TRUE(reads(144));
  EXPECT_EQ(machine.TakeLines(), std::vector<std::string>{});
}

TEST_F(SerialDevice, APortThatIsNotThereIsTold) {
  session.SaveSetting("Porte", "COM1", "/dev/no-such-port");
  links::FT736& rig = Open<links::FT736>("FT736");
  EXPECT_EQ(machine.TakeLines(),
            std::vector<std::string>{"message exclamation \"FT-736R\" \"La porta COM1 "
                                     "(/dev/no-such-port) non si apre: non esiste\""});
  session.SaveSetting("Porte", "COM1", line.Device());
  Event([&] { rig.Accensione.Press(); });
  EXPECT_TRUE(rig.RigAcceso);
  EXPECT_TRUE(line.Hears(kOn));
}

}  // namespace
}  // namespace brenvo::ui
