// The telnet terminal and the chat against a server on loopback.
#include "tests/devices/real_station.h"

namespace brenvo::ui {
namespace {

constexpr std::string_view kSpot = "DX de I4LCK:     14195.0  VP8ORK   tnx 1423Z\r\n";
constexpr std::string_view kShown = "DX de I4LCK:     14195.0  VP8ORK   tnx 1423Z\n";

class TelnetDevice : public RealStation {
 protected:
  links::TNCtelnet& Connect() {
    Profile("ClusterNode='IK4GRO-6', TelnetCluster='" + node.Address() + "'");
    links::TNCtelnet& telnet = Open<links::TNCtelnet>("TNCtelnet");
    EXPECT_TRUE(Until([&] { return node.Connected(); }));
    Pass(20);
    machine.TakeLines();
    return telnet;
  }
  LoopbackServer node;
};

TEST_F(TelnetDevice, AnOperatorLogsInAndWatchesSpots) {
  links::TNCtelnet& telnet = Connect();
  node.Say("Welcome to the node\r\nlogin:\r\n");
  EXPECT_TRUE(Shows(telnet.Received, "Welcome to the node\nlogin:\n"));
  TypeLine(telnet.Sended, "I0XXX");
  EXPECT_TRUE(node.Hears("I0XXX\r\n"));
  Event([&] { telnet.CMI.Pick(0); });
  EXPECT_TRUE(node.Hears(telnet.Comandi[0] + "\r\n"));
  Event([&] { telnet.cmAutoCheck.Press(); });
  Event([&] { telnet.Received.SetText(""); });
  node.Say(kSpot);
  EXPECT_TRUE(Shows(telnet.Received, std::string(kShown)));
  ASSERT_NE(session.Opened.Hrd, nullptr);
  EXPECT_EQ(session.Opened.Hrd->CallQso.Text(), "VP8ORK");
}

TEST_F(TelnetDevice, APromptShowsWhileTheNodeWaitsForItsAnswer) {
  links::TNCtelnet& telnet = Connect();
  EXPECT_EQ(telnet.Collegamento.Text(), "Collegato a " + node.Address());
  node.Say("login: ");
  EXPECT_TRUE(Until([&] { return telnet.InArrivo.Text() == "login: "; }));
  EXPECT_EQ(telnet.Received.Text(), "");
}

TEST_F(TelnetDevice, ALineMayComeByteByByte) {
  links::TNCtelnet& telnet = Connect();
  for (char c : kSpot) {
    node.Say(std::string(1, c));
    Pass(1);
  }
  EXPECT_TRUE(Shows(telnet.Received, std::string(kShown)));
}

TEST_F(TelnetDevice, ABurstOfTenThousandLinesLosesNone) {
  links::TNCtelnet& telnet = Connect();
  std::string burst;
  for (int i = 0; i < 10000; ++i) {
    burst += "DX de I4LCK:     14195.0  Z" + std::to_string(i) + "A   tnx 1423Z\r\n";
  }
  int shown = 0;
  bool inOrder = true;
  const forms::Subscription edited =
      telnet.Received.Edited.Subscribe([&](const forms::RichText::Edit& edit) {
        if (edit.inserted.empty()) return;
        inOrder &= edit.inserted.front().text.find(" Z" + std::to_string(shown) + "A ") !=
                   std::string::npos;
        ++shown;
      });
  node.Say(burst);
  EXPECT_TRUE(Until([&] { return shown == 10000; }, 120000)) << shown;
  EXPECT_TRUE(inOrder);
  EXPECT_LE(telnet.Received.Length(), 32100u);
}

TEST_F(TelnetDevice, ClosingTheWindowSendsFourCharactersAndHangsUp) {
  links::TNCtelnet& telnet = Connect();
  Event([&] { telnet.Close(); });
  EXPECT_TRUE(Until([&] { return node.Gone; }));
  EXPECT_EQ(node.Heard, "quit");
}

TEST_F(TelnetDevice, ANodeThatHangsUpInMidLineTakesTheWindowAlong) {
  Connect();
  node.Say("bye, half a li");
  node.HangUp();
  EXPECT_TRUE(Until([&] { return session.Windows.Find("TNCtelnet") == nullptr; }));
  EXPECT_FALSE(session.Opened.TncTelnetOpen);
  EXPECT_TRUE(Until([&] { return node.Gone; }));
  EXPECT_EQ(node.Heard, "");
  EXPECT_EQ(machine.TakeLines(), std::vector<std::string>{});
}

TEST_F(TelnetDevice, ARefusedConnectionIsSilentAndTheWindowUsable) {
  node.Stop();
  Profile("TelnetCluster='" + node.Address() + "'");
  links::TNCtelnet& telnet = Open<links::TNCtelnet>("TNCtelnet");
  Pass(200);
  EXPECT_EQ(telnet.Collegamento.Text(),
            "Non collegato a " + node.Address() + ": connessione rifiutata");
  EXPECT_TRUE(session.Opened.TncTelnetOpen);
  EXPECT_EQ(telnet.Banda.Entries().size(), 19u);
  TypeLine(telnet.Sended, "hello");
  EXPECT_EQ(telnet.Sended.Text(), "");
  Event([&] { telnet.Close(); });
  EXPECT_FALSE(session.Opened.TncTelnetOpen);
  EXPECT_EQ(machine.TakeLines(), std::vector<std::string>{});
}

TEST_F(TelnetDevice, ASilentNodeHoldsNothingUp) {
  links::TNCtelnet& telnet = Connect();
  Pass(100);
  EXPECT_EQ(telnet.Received.Text(), "");
  Event([&] { telnet.cmConnect.Press(); });
  EXPECT_TRUE(node.Hears("c IK4GRO-6\r\n"));
  EXPECT_EQ(machine.TakeLines(),
            std::vector<std::string>{"error \"Il terminale telnet non ha il menu Monitor\""});
}

class ChatDevice : public RealStation {
 protected:
  links::WWConv& Connect() {
    Profile("TelnetWWConv='" + server.Address() + "'");
    links::WWConv& chat = Open<links::WWConv>("WWConv");
    EXPECT_TRUE(Until([&] { return server.Connected(); }));
    Pass(20);
    machine.TakeLines();
    return chat;
  }
  LoopbackServer server;
};

TEST_F(ChatDevice, TalkAndMessagesGoToTheirAreas) {
  links::WWConv& chat = Connect();
  server.Say("<I2ABC> ciao a tutti\n");
  EXPECT_TRUE(Shows(chat.Received, "<I2ABC> ciao a tutti\n"));
  server.Say("<*I4LCK*> solo per te\n");
  EXPECT_TRUE(Shows(chat.ReceivedPersonal, "<*I4LCK*> solo per te\n"));
  TypeLine(chat.Sended, "perché no");
  EXPECT_TRUE(server.Hears("perch\xE9 no\r\n"));
  EXPECT_TRUE(Shows(chat.Received, "<I2ABC> ciao a tutti\nperché no\r\n"));
}

TEST_F(ChatDevice, ClosingTheWindowSaysGoodbye) {
  links::WWConv& chat = Connect();
  Event([&] { chat.Close(); });
  EXPECT_TRUE(Until([&] { return server.Gone; }));
  EXPECT_EQ(server.Heard, "/q");
}

TEST_F(ChatDevice, AServerThatHangsUpTakesTheWindowAlong) {
  Connect();
  server.HangUp();
  EXPECT_TRUE(Until([&] { return session.Windows.Find("WWConv") == nullptr; }));
  EXPECT_FALSE(session.Opened.WWConvOpen);
}

TEST_F(ChatDevice, ARefusedConnectionIsSilent) {
  server.Stop();
  Profile("TelnetWWConv='" + server.Address() + "'");
  Open<links::WWConv>("WWConv");
  Pass(200);
  EXPECT_TRUE(session.Opened.WWConvOpen);
  EXPECT_EQ(machine.TakeLines(), std::vector<std::string>{});
}

}  // namespace
}  // namespace brenvo::ui
