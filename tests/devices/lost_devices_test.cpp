// Devices that go while they are in use: a serial adapter is pulled out, a connection is reset.
#include <ctime>

#include "tests/devices/real_station.h"

namespace brenvo::ui {
namespace {

using Lines = std::vector<std::string>;

class LostDevice : public RealStation {
 protected:
  Lines Told() { return machine.TakeLines(); }
  void Close(forms::Window& window) {
    Event([&] { EXPECT_TRUE(window.Close()); });
  }
};

// The adapter.

class PulledOut : public LostDevice {
 protected:
  PulledOut() {
    Map(line);
    Profile("TNCPort='COM1', TNCBaud=9600, ClusterNode='IK4GRO-6'");
    Told();
  }
  void Map(const SerialLine& each) { session.SaveSetting("Porte", "COM1", each.Device()); }
  links::FT736& SwitchedOn() {
    links::FT736& rig = Open<links::FT736>("FT736");
    Event([&] { rig.Accensione.Press(); });
    EXPECT_TRUE(line.Hears(std::string("\x20\x20\x20\x20\x00", 5)));
    return rig;
  }
  // Seconds of the processor that the station takes while nothing happens.
  static double Idle(int milliseconds) {
    const std::clock_t start = std::clock();
    Pass(milliseconds);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  }
  SerialLine line, another;
};

TEST_F(PulledOut, TheTerminalStandsSilentAndTellsItWhenSomethingIsSent) {
  links::TNC& tnc = Open<links::TNC>("TNC");
  line.Say("hello\r\nhalf a li");
  EXPECT_TRUE(Shows(tnc.Received, "hello\nhalf a li"));
  line.PullOut();
  Pass(200);
  EXPECT_EQ(Told(), Lines{});
  EXPECT_TRUE(session.Opened.TncOpen);
  TypeLine(tnc.Sended, "sh/dx");
  EXPECT_EQ(Told(), Lines{"error \"La porta COM1 non riceve: non c'è più\""});
  EXPECT_EQ(tnc.Sended.Text(), "sh/dx");
  Close(tnc);
  EXPECT_EQ(Told(), Lines{});
}

TEST_F(PulledOut, NothingTurnsInVain) {
  Open<links::TNC>("TNC");
  Pass(50);
  line.PullOut();
  EXPECT_LT(Idle(500), 0.25);
}

TEST_F(PulledOut, TheTerminalOpenedAgainUsesWhatIsThereNow) {
  Close(Open<links::TNC>("TNC"));
  links::TNC& lost = Open<links::TNC>("TNC");
  line.PullOut();
  Pass(50);
  Close(lost);
  Map(another);
  links::TNC& tnc = Open<links::TNC>("TNC");
  another.Say("welcome back\r\n");
  EXPECT_TRUE(Shows(tnc.Received, "welcome back\n"));
  TypeLine(tnc.Sended, "sh/dx");
  EXPECT_TRUE(another.Hears("sh/dx\r"));
  EXPECT_EQ(Told(), Lines{});
}

TEST_F(PulledOut, ThePanelTellsItOnceAndSwitchesOff) {
  links::FT736& rig = SwitchedOn();
  line.PullOut();
  Pass(500);
  const Lines told = Told();
  ASSERT_EQ(told.size(), 1u);
  EXPECT_TRUE(told[0].starts_with("error \"La porta COM1 non riceve: ")) << told[0];
  Event([&] { rig.Accensione.Press(); });
  EXPECT_FALSE(rig.RigAcceso);
  EXPECT_EQ(rig.DVFO.Text() + rig.DModo.Text(), "");
  Close(rig);
  EXPECT_EQ(Told(), Lines{});
}

TEST_F(PulledOut, ThePanelComesBackWithItsLine) {
  links::FT736& rig = SwitchedOn();
  line.PullOut();
  Pass(200);
  Event([&] { rig.Accensione.Press(); });
  Told();
  Event([&] { rig.Accensione.Press(); });
  const Lines told = Told();
  ASSERT_EQ(told.size(), 1u);
  EXPECT_TRUE(told[0].starts_with("message exclamation \"FT-736R\" \"La porta COM1")) << told[0];
  EXPECT_FALSE(rig.RigAcceso);
  Map(another);
  Event([&] { rig.Accensione.Press(); });
  EXPECT_TRUE(rig.RigAcceso);
  EXPECT_TRUE(another.Hears(std::string("\x20\x20\x20\x20\x00", 5)));
  Event([&] { rig.Accensione.Press(); });
  Close(rig);
  EXPECT_EQ(Told(), Lines{});
}

// The connection.

constexpr std::string_view kWholeSession =
    "login: \r\nDX de I4LCK: 14195.0 VP8ORK tnx 1423Z\r\n<I2ABC> ciao\r\n";

// The lines that had ended.
std::string WholeLines(std::string_view bytes) {
  std::string lines(bytes.substr(0, bytes.rfind('\n') + 1));
  std::erase(lines, '\r');
  return lines;
}

class Reset : public LostDevice {
 protected:
  template <class Terminal>
  Terminal& Connect(const char* name) {
    Terminal& terminal = Open<Terminal>(name);
    EXPECT_TRUE(Until([&] { return node.Connected(); }));
    return terminal;
  }
  bool Gone(const char* name) {
    return Until([&] { return session.Windows.Find(name) == nullptr; });
  }
  LoopbackServer node;
};

TEST_F(Reset, AtAnyByteItClosesTheTerminalBehindTheLastWholeLine) {
  Profile("TelnetCluster='" + node.Address() + "'");
  Told();
  for (std::size_t said = 0; said <= kWholeSession.size(); ++said) {
    auto& telnet = Connect<links::TNCtelnet>("TNCtelnet");
    std::string shown;
    const forms::Subscription edited =
        telnet.Received.Edited.Subscribe([&](const forms::RichText::Edit& edit) {
          for (const forms::RichText::Run& run : edit.inserted) shown += run.text;
        });
    const std::string_view bytes = kWholeSession.substr(0, said);
    node.Say(bytes);
    ASSERT_TRUE(Until([&] { return shown == WholeLines(bytes); })) << said << " " << shown;
    node.Reset();
    ASSERT_TRUE(Gone("TNCtelnet")) << said;
    ASSERT_FALSE(session.Opened.TncTelnetOpen);
    ASSERT_EQ(Told(), Lines{}) << said;
  }
}

TEST_F(Reset, BeforeTheBytesAreReadItClosesTheTerminalToo) {
  Profile("TelnetCluster='" + node.Address() + "'");
  Told();
  for (std::size_t said = 0; said <= kWholeSession.size(); ++said) {
    Connect<links::TNCtelnet>("TNCtelnet");
    node.Say(kWholeSession.substr(0, said));
    node.Reset();
    ASSERT_TRUE(Gone("TNCtelnet")) << said;
    ASSERT_EQ(Told(), Lines{}) << said;
  }
}

TEST_F(Reset, AtAnyByteItClosesTheChatBehindWhatWasSaid) {
  Profile("TelnetWWConv='" + node.Address() + "'");
  Told();
  for (std::size_t said = 0; said <= kWholeSession.size(); ++said) {
    auto& chat = Connect<links::WWConv>("WWConv");
    std::string shown;
    const forms::Subscription edited =
        chat.Received.Edited.Subscribe([&](const forms::RichText::Edit& edit) {
          for (const forms::RichText::Run& run : edit.inserted) shown += run.text;
        });
    const std::string bytes(kWholeSession.substr(0, said));
    node.Say(bytes);
    ASSERT_TRUE(Until([&] { return shown == bytes; })) << said << " " << shown;
    node.Reset();
    ASSERT_TRUE(Gone("WWConv")) << said;
    ASSERT_FALSE(session.Opened.WWConvOpen);
    ASSERT_EQ(Told(), Lines{}) << said;
  }
}

TEST_F(Reset, WhileTheOperatorSendsItClosesTheWindow) {
  Profile("TelnetCluster='" + node.Address() + "', TelnetWWConv='" + node.Address() + "'");
  Told();
  auto& telnet = Connect<links::TNCtelnet>("TNCtelnet");
  node.Reset();
  for (int line = 0; line < 50 && session.Opened.TncTelnetOpen; ++line)
    TypeLine(telnet.Sended, "sh/dx");
  EXPECT_TRUE(Gone("TNCtelnet"));
  auto& chat = Connect<links::WWConv>("WWConv");
  node.Reset();
  for (int line = 0; line < 50 && session.Opened.WWConvOpen; ++line) TypeLine(chat.Sended, "ciao");
  EXPECT_TRUE(Gone("WWConv"));
  EXPECT_EQ(Told(), Lines{});
}

TEST_F(Reset, WhileTheWindowClosesItIsNothing) {
  Profile("TelnetCluster='" + node.Address() + "'");
  Told();
  auto& telnet = Connect<links::TNCtelnet>("TNCtelnet");
  node.Reset();
  Close(telnet);
  Pass(50);
  EXPECT_FALSE(session.Opened.TncTelnetOpen);
  EXPECT_EQ(Told(), Lines{});
}

TEST_F(Reset, TheNextConnectionIsSound) {
  Profile("TelnetCluster='" + node.Address() + "'");
  Connect<links::TNCtelnet>("TNCtelnet");
  node.Reset();
  EXPECT_TRUE(Gone("TNCtelnet"));
  auto& telnet = Connect<links::TNCtelnet>("TNCtelnet");
  node.Say("welcome back\r\n");
  EXPECT_TRUE(Shows(telnet.Received, "welcome back\n"));
  TypeLine(telnet.Sended, "sh/dx");
  EXPECT_TRUE(node.Hears("sh/dx\r\n"));
}

// While a sound is spoken nobody reads: what a flood brings waits at the node's side.
TEST_F(Reset, AFloodThatNobodyReadsWaitsOutsideTheStation) {
  Profile("TelnetCluster='" + node.Address() + "'");
  Connect<links::TNCtelnet>("TNCtelnet");
  {
    const EventGate::Hold spoken(machine.Gate);
    node.Say(std::string(64 << 20, 'x'));
    Pass(500);
    EXPECT_GT(node.Unsaid(), 40 << 20);
  }
  node.Reset();
  EXPECT_TRUE(Gone("TNCtelnet"));
}

}  // namespace
}  // namespace brenvo::ui
