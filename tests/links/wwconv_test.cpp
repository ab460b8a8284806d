#include "links/wwconv.h"

#include "tests/links/links_station.h"

namespace brenvo::links {
namespace {

class WWConvTest : public LinksTest {
 protected:
  WWConv& OpenChat() {
    WWConv& chat = Open<WWConv>("WWConv");
    Lines();
    return chat;
  }
  // Each run of one colour: the dark red ones in square brackets.
  static std::string Coloured(const forms::RichText& area) {
    std::string text;
    for (const forms::RichText::Run& run : area.Runs()) {
      if (run.colour == base::kDarkRed) {
        text += "[" + run.text + "]";
      } else {
        EXPECT_EQ(run.colour, base::kBlack);
        text += run.text;
      }
    }
    return text;
  }
};

TEST_F(WWConvTest, ReadsItsMenuAndConnects) {
  WWConv& chat = Open<WWConv>("WWConv");
  EXPECT_EQ(Lines(), Texts{"connect WWConv \"chat.example.org\" 3600"});
  EXPECT_EQ(Captions(chat.CMI), (Texts{"Chi c'è", "Privato"}));
  EXPECT_TRUE(session.Opened.WWConvOpen);
  EXPECT_EQ(chat.Caption(), "WWConv (telnet)");
}

TEST_F(WWConvTest, SaysToWhomItIsConnectedOrWhyNot) {
  EXPECT_EQ(Open<WWConv>("WWConv").Collegamento.Text(), "Collegato a chat.example.org:3600");
  machine.Tcp().FailNext("WWConv");
  EXPECT_EQ(Open<WWConv>("WWConv").Collegamento.Text(),
            "Non collegato a chat.example.org:3600: connessione rifiutata");
}

TEST_F(WWConvTest, AMissingMenuFileEndsTheOpeningBeforeItConnects) {
  std::filesystem::remove(directory.Path() / "wwconv.mnu");
  WWConv& chat = Open<WWConv>("WWConv");
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_EQ(Captions(chat.CMI), Texts{"-"});
}

TEST_F(WWConvTest, AFailedConnectionIsSilentAndLeavesTheWindowUsable) {
  machine.Tcp().FailNext("WWConv");
  WWConv& chat = OpenChat();
  Event([&] { TypeLine(chat.Sended, "ciao"); });
  EXPECT_EQ(chat.Sended.Text(), "");
  Event([&] { chat.Close(); });
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(WWConvTest, PublicTalkShowsItsSpeakerInRed) {
  WWConv& chat = OpenChat();
  Receive("WWConv", "<I2ABC> ciao a tutti\n");
  EXPECT_EQ(Coloured(chat.Received), "[<I2ABC>] ciao a tutti\n");
  EXPECT_EQ(chat.ReceivedPersonal.Length(), 0u);
}

TEST_F(WWConvTest, APersonalMessageShowsItsSpeakerInRedUpToTheStar) {
  WWConv& chat = OpenChat();
  Receive("WWConv", "<*I2ABC*> ciao\n");
  EXPECT_EQ(Coloured(chat.ReceivedPersonal), "[<*I2ABC*]> ciao\n");
  EXPECT_EQ(chat.Received.Length(), 0u);
}

TEST_F(WWConvTest, AnotherChunkKeepsTheColourOfTheEnd) {
  WWConv& chat = OpenChat();
  Receive("WWConv", "*** benvenuto\n");
  Receive("WWConv", "<I2ABC>");
  Receive("WWConv", " ciao\n");
  EXPECT_EQ(Coloured(chat.Received), "*** benvenuto\n[<I2ABC> ciao\n]");
}

TEST_F(WWConvTest, ASpeakerThatIsNotClosedIsShownAsItIs) {
  WWConv& chat = OpenChat();
  Receive("WWConv", "<I2ABC ciao\n");
  EXPECT_EQ(Coloured(chat.Received), "<I2ABC ciao\n");
}

TEST_F(WWConvTest, APersonalChunkCutBeforeItsStarIsUncolouredAndTheRestGoesItsOwnWay) {
  WWConv& chat = OpenChat();
  Receive("WWConv", "<*I2A");
  Receive("WWConv", "BC*> ciao\n");
  Receive("WWConv", "<*I4LCK");
  Receive("WWConv", "<x*> ciao\n");
  EXPECT_EQ(Coloured(chat.ReceivedPersonal), "<*I2A<*I4LCK");
  EXPECT_EQ(Coloured(chat.Received), "BC*> ciao\n[<x*>] ciao\n");
}

TEST_F(WWConvTest, TwoMessagesInOneChunkAreOne) {
  WWConv& chat = OpenChat();
  Receive("WWConv", "<I2ABC> uno\n<*I4LCK*> due\n");
  EXPECT_EQ(Coloured(chat.Received), "[<I2ABC>] uno\n<*I4LCK*> due\n");
}

TEST_F(WWConvTest, BytesAreLatin1) {
  WWConv& chat = OpenChat();
  Receive("WWConv", "<I2ABC> \xE8 cos\xEC\n");
  EXPECT_EQ(chat.Received.Text(), "<I2ABC> è così\n");
  Event([&] { TypeLine(chat.Sended, "perché"); });
  EXPECT_EQ(Lines(), Texts{"sent WWConv \"perché\\r\\n\""});
}

TEST_F(WWConvTest, TheTextLosesItsOldestBeforeAChunkIsJudged) {
  WWConv& chat = OpenChat();
  chat.Received.SetText("a" + std::string(2000, 'b') + std::string(30000, 'c'));
  Receive("WWConv", "<*I2ABC*> ciao");
  EXPECT_EQ(chat.Received.Text(), "a" + std::string(30000, 'c'));
}

TEST_F(WWConvTest, PersonalMessagesHaveNoLimit) {
  WWConv& chat = OpenChat();
  for (int i = 0; i < 50; ++i) Receive("WWConv", "<*I2ABC*>" + std::string(1000, 'x'));
  EXPECT_EQ(chat.ReceivedPersonal.Length(), 50u * 1009);
}

TEST_F(WWConvTest, AFloodOfPublicTalkStaysBounded) {
  WWConv& chat = OpenChat();
  const std::string block(1 << 16, 'x');
  for (int i = 0; i < 30; ++i) {
    Receive("WWConv", block);
    EXPECT_LE(chat.Received.Length(), 100000u + block.size());
  }
}

TEST_F(WWConvTest, TypedTextGoesOutAndIsEchoedWithItsLineEnd) {
  WWConv& chat = OpenChat();
  Event([&] { TypeLine(chat.Sended, "ciao a tutti"); });
  EXPECT_EQ(Lines(), Texts{"sent WWConv \"ciao a tutti\\r\\n\""});
  EXPECT_EQ(chat.Received.Text(), "ciao a tutti\r\n");
  EXPECT_EQ(chat.Sended.Text(), "");
}

TEST_F(WWConvTest, AMenuCommandGoesToTheServer) {
  WWConv& chat = OpenChat();
  Event([&] { chat.CMI.Pick(0); });
  EXPECT_EQ(Lines(), Texts{"sent WWConv \"/who\\r\\n\""});
  EXPECT_EQ(chat.Received.Text(), "/who\r\n");
  EXPECT_EQ(chat.StatusBar1.Panel(1), "Comandi personalizzabili tramite tnc.mnu");
}

TEST_F(WWConvTest, AMenuCommandWithAHashGoesToTheEntryLineAndNotToTheServer) {
  WWConv& chat = OpenChat();
  Event([&] { chat.CMI.Pick(1); });
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_EQ(chat.Sended.Text(), "/msg # ciao");
  EXPECT_EQ(chat.StatusBar1.Panel(1), "Comandi personalizzabili tramite tnc.mnu");
}

TEST_F(WWConvTest, SendPutsTheTextOutExactlyAsItIs) {
  WWConv& chat = OpenChat();
  chat.send("/nick x");
  EXPECT_EQ(Lines(), Texts{"sent WWConv \"/nick x\""});
  EXPECT_EQ(chat.Received.Text(), "/nick x");
}

TEST_F(WWConvTest, ClosingSendsSlashQWithoutALineEnd) {
  WWConv& chat = OpenChat();
  Event([&] { chat.Close(); });
  EXPECT_EQ(Lines(), (Texts{"sent WWConv \"/q\"", "disconnect WWConv"}));
  EXPECT_FALSE(session.Opened.WWConvOpen);
}

TEST_F(WWConvTest, APeerThatClosesTakesTheWindowAlong) {
  OpenChat();
  Event([&] { machine.Tcp().PeerClose("WWConv"); });
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_FALSE(session.Opened.WWConvOpen);
  EXPECT_EQ(session.Windows.Find("WWConv"), nullptr);
}

TEST_F(WWConvTest, PersonalMessagesCanBeHidden) {
  WWConv& chat = OpenChat();
  EXPECT_TRUE(chat.cmMessaggiPersonali.Down());
  EXPECT_TRUE(chat.ReceivedPersonal.Visible());
  Event([&] { chat.cmMessaggiPersonali.Press(); });
  EXPECT_FALSE(chat.ReceivedPersonal.Visible());
  Receive("WWConv", "<*I2ABC*> ciao\n");
  Event([&] { chat.cmMessaggiPersonali.Press(); });
  EXPECT_TRUE(chat.ReceivedPersonal.Visible());
  EXPECT_EQ(chat.ReceivedPersonal.Text(), "<*I2ABC*> ciao\n");
}

TEST_F(WWConvTest, TheMenuOpensIt) {
  Event([&] { frame->FindCommand("cmWWConv")->Press(); });
  EXPECT_TRUE(session.Opened.WWConvOpen);
}

}  // namespace
}  // namespace brenvo::links
