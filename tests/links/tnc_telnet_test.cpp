#include "links/tnc_telnet.h"

#include <fmt/format.h>

#include "tests/links/links_station.h"

namespace brenvo::links {
namespace {

constexpr std::string_view kSpot20 = "DX de I4LCK:     14195.0  VP8ORK   tnx 1423Z\r\n";

class TelnetTest : public LinksTest {
 protected:
  TNCtelnet& OpenTelnet() { return Open<TNCtelnet>("TNCtelnet"); }
};

TEST_F(TelnetTest, ConnectsToTheHostAndPortOfTheProfile) {
  OpenTelnet();
  EXPECT_TRUE(session.Opened.TncTelnetOpen);
  EXPECT_EQ(Lines(), Texts{"connect TNCtelnet \"dxc.example.org\" 7300"});
}

TEST_F(TelnetTest, ConnectsToThatHostWhereverTheProfilesTableWasLeft) {
  session.Tables.TbUser->MoveLast();
  session.Tables.TbUser->MoveNext();
  OpenTelnet();
  EXPECT_EQ(Lines(), Texts{"connect TNCtelnet \"dxc.example.org\" 7300"});
}

TEST_F(TelnetTest, WithoutAColonConnectsWithNoPort) {
  Profile("TelnetCluster='dxc.example.org'");
  OpenTelnet();
  EXPECT_EQ(Lines(), Texts{"connect TNCtelnet \"dxc.example.org\" 23"});
}

TEST_F(TelnetTest, ReadsTheMenuOfTheRadioTerminalAndTheBands) {
  TNCtelnet& telnet = OpenTelnet();
  EXPECT_EQ(Captions(telnet.CMI), (Texts{"Ultimi DX", "Meteo, sole"}));
  EXPECT_EQ(telnet.Banda.Entries().size(), Rows("select Banda from UserRTX").size() + 1);
}

TEST_F(TelnetTest, SaysThatItIsConnectingAndToWhomItIsConnected) {
  Texts told;
  auto window = std::make_unique<TNCtelnet>(session);
  const TNCtelnet& telnet = *window;
  const forms::Subscription shown =
      window->Collegamento.Shown.Subscribe([&] { told.push_back(telnet.Collegamento.Text()); });
  Event([&] { session.Windows.Adopt(std::move(window)); });
  EXPECT_EQ(told, (Texts{"In connessione con dxc.example.org:7300...",
                         "Collegato a dxc.example.org:7300"}));
}

TEST_F(TelnetTest, SaysWhyItIsNotConnected) {
  machine.Tcp().FailNext("TNCtelnet");
  EXPECT_EQ(OpenTelnet().Collegamento.Text(),
            "Non collegato a dxc.example.org:7300: connessione rifiutata");
}

TEST_F(TelnetTest, SaysThatTheProfileHoldsNoAddressOrAPortThatIsNone) {
  Profile("TelnetCluster='dxc.example.org:99999'");
  EXPECT_EQ(OpenTelnet().Collegamento.Text(),
            "Non collegato a dxc.example.org:99999: Porta non valida");
  Profile("TelnetCluster=''");
  machine.Tcp().FailNext("TNCtelnet");
  EXPECT_EQ(OpenTelnet().Collegamento.Text(),
            "Non collegato: manca l'indirizzo (Tabella Utente, Multimedia)");
}

TEST_F(TelnetTest, AConnectionThatFallsLeavesTheWindowWhichSaysWhy) {
  TNCtelnet& telnet = OpenTelnet();
  Event([&] { machine.Tcp().Fall("TNCtelnet", "nessuna risposta"); });
  EXPECT_EQ(telnet.Collegamento.Text(),
            "Collegamento con dxc.example.org:7300 caduto: nessuna risposta");
  EXPECT_NE(session.Windows.Find("TNCtelnet"), nullptr);
}

TEST_F(TelnetTest, TheMainFrameSaysWhichClusterHasClosed) {
  OpenTelnet();
  Event([&] { machine.Tcp().PeerClose("TNCtelnet"); });
  EXPECT_EQ(frame->StatusBar1.Panel(1),
            "DX cluster telnet: dxc.example.org:7300 ha chiuso il collegamento");
}

TEST_F(TelnetTest, APromptWithoutALineEndShowsAfterASilence) {
  TNCtelnet& telnet = OpenTelnet();
  Receive("TNCtelnet", "Welcome\r\nlog");
  machine.GetClock().Advance(200);
  Receive("TNCtelnet", "in: ");
  machine.GetClock().Advance(299);
  EXPECT_EQ(telnet.InArrivo.Text(), "");
  machine.GetClock().Advance(1);
  EXPECT_EQ(telnet.InArrivo.Text(), "login: ");
  EXPECT_EQ(telnet.Received.Text(), "Welcome\n");
}

TEST_F(TelnetTest, APromptGoesWithItsLine) {
  TNCtelnet& telnet = OpenTelnet();
  Receive("TNCtelnet", "login: ");
  machine.GetClock().Advance(300);
  Receive("TNCtelnet", "I0XXX");
  EXPECT_EQ(telnet.InArrivo.Text(), "login: ");
  Receive("TNCtelnet", "\r\npass");
  EXPECT_EQ(telnet.InArrivo.Text(), "");
  EXPECT_EQ(telnet.Received.Text(), "login: I0XXX\n");
  machine.GetClock().Advance(300);
  EXPECT_EQ(telnet.InArrivo.Text(), "pass");
}

TEST_F(TelnetTest, AFailedConnectionIsSilentAndLeavesTheWindowUsable) {
  machine.Tcp().FailNext("TNCtelnet");
  TNCtelnet& telnet = OpenTelnet();
  Lines();
  EXPECT_EQ(Captions(telnet.CMI).size(), 2u);
  Event([&] { TypeLine(telnet.Sended, "sh/dx"); });
  EXPECT_EQ(telnet.Sended.Text(), "");
  Event([&] { telnet.Close(); });
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_FALSE(session.Opened.TncTelnetOpen);
}

TEST_F(TelnetTest, APortThatIsNoneEndsTheOpeningWithoutAWord) {
  Profile("TelnetCluster='dxc.example.org:99999'");
  TNCtelnet& telnet = OpenTelnet();
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_EQ(Captions(telnet.Banda), Texts{"Tutte"});
}

TEST_F(TelnetTest, AMissingMenuFileLeavesTheConnectionAndNoBands) {
  std::filesystem::remove(directory.Path() / "tnc.mnu");
  TNCtelnet& telnet = OpenTelnet();
  EXPECT_TRUE(machine.Tcp().IsConnected("TNCtelnet"));
  EXPECT_EQ(Captions(telnet.Banda), Texts{"Tutte"});
  Receive("TNCtelnet", kSpot20);
  EXPECT_NE(telnet.Received.Text(), "");
}

TEST_F(TelnetTest, HasNoMonitor) {
  TNCtelnet& telnet = OpenTelnet();
  for (const char* name : {"CMMF", "cmMDX", "cmMAnnounce", "cmMTutto"}) {
    EXPECT_EQ(telnet.FindField(name), nullptr) << name;
  }
  EXPECT_EQ(telnet.MenuBar.size(), 3u);
}

TEST_F(TelnetTest, ALineThatIsNoSpotIsShownAsItArrived) {
  TNCtelnet& telnet = OpenTelnet();
  Receive("TNCtelnet", "Hello Mario, this is DB0SUE-7\r\n");
  EXPECT_EQ(telnet.Received.Text(), "Hello Mario, this is DB0SUE-7\n");
}

TEST_F(TelnetTest, ALineMayArriveInSeveralPieces) {
  TNCtelnet& telnet = OpenTelnet();
  for (char c : kSpot20) Receive("TNCtelnet", std::string(1, c));
  EXPECT_EQ(telnet.Received.Text(), "DX de I4LCK:     14195.0  VP8ORK   tnx 1423Z\n");
}

TEST_F(TelnetTest, TelnetOptionsAreOrdinaryCharacters) {
  TNCtelnet& telnet = OpenTelnet();
  Receive("TNCtelnet", "\xFF\xFB\x01login\n");
  EXPECT_EQ(telnet.Received.Text(), "ÿû\x01login\n");
}

TEST_F(TelnetTest, OneEventFeedsAllThatWaits) {
  TNCtelnet& telnet = OpenTelnet();
  telnet.cmAutoCheck.Press();
  Receive("TNCtelnet", "one\r\n" + std::string(kSpot20) + "two\r\n");
  EXPECT_EQ(telnet.Received.Text(), "one\nDX de I4LCK:     14195.0  VP8ORK   tnx 1423Z\ntwo\n");
  EXPECT_EQ(searches, (Texts{"open", "VP8ORK||busy"}));
}

TEST_F(TelnetTest, InABurstOfCheckedSpotsTheOperatorIsListenedToAfterEachCheck) {
  TNCtelnet& telnet = OpenTelnet();
  Event([&] { telnet.cmAutoCheck.Press(); });
  searches.clear();
  std::size_t unheard = 0, most = 0;
  machine.Host().WhileWaiting = [&] { unheard = searches.size(); };
  std::string burst;
  for (int i = 0; i < 50; ++i) {
    burst += "DX de I4LCK:     14195.0  IK" + std::to_string(i % 10) + "ABC   tnx 1423Z\r\n";
  }
  const forms::Subscription edits = telnet.Received.Edited.Subscribe(
      [&](const forms::RichText::Edit&) { most = std::max(most, searches.size() - unheard); });
  Receive("TNCtelnet", burst);
  EXPECT_GE(searches.size(), 50u);
  // A check fills the call, and may open the window before.
  EXPECT_LE(most, 3u);
}

TEST_F(TelnetTest, ABandThatIsNotTickedIsHeard) {
  TNCtelnet& telnet = OpenTelnet();
  telnet.Banda.Pick(1);
  Lines();
  Receive("TNCtelnet", kSpot20);
  EXPECT_EQ(Lines(), Texts{"wave \"20m.wav\""});
  EXPECT_EQ(telnet.Received.Text(), "");
}

TEST_F(TelnetTest, ConnectSendsItsTextAndThenFails) {
  TNCtelnet& telnet = OpenTelnet();
  Lines();
  Event([&] { telnet.cmConnect.Press(); });
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], "sent TNCtelnet \"c IK4GRO-6\\r\\n\"");
  EXPECT_TRUE(lines[1].starts_with("error ")) << lines[1];
}

TEST_F(TelnetTest, CommandModeFailsAndSendsNothing) {
  TNCtelnet& telnet = OpenTelnet();
  Lines();
  Event([&] { telnet.cmCommandMode.Press(); });
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines[0].starts_with("error ")) << lines[0];
}

TEST_F(TelnetTest, AMenuEntrySendsItsCommand) {
  TNCtelnet& telnet = OpenTelnet();
  Lines();
  Event([&] { telnet.CMI.Pick(0); });
  EXPECT_EQ(Lines(), Texts{"sent TNCtelnet \"sh/dx 10\\r\\n\""});
  EXPECT_EQ(telnet.StatusBar1.Panel(1), "Comandi personalizzabili tramite tnc.mnu");
}

TEST_F(TelnetTest, ATypedLineEndsInCarriageReturnAndLineFeed) {
  TNCtelnet& telnet = OpenTelnet();
  Lines();
  Event([&] { TypeLine(telnet.Sended, "I0XXX"); });
  EXPECT_EQ(Lines(), Texts{"sent TNCtelnet \"I0XXX\\r\\n\""});
  EXPECT_EQ(telnet.Sended.Text(), "");
}

TEST_F(TelnetTest, SendsWhatTheDialogGives) {
  TNCtelnet& telnet = OpenTelnet();
  Lines();
  InDialogs([](forms::Window& window) {
    auto& dialog = static_cast<DxDialog&>(window);
    dialog.Frequenza.SetText("14195");
    dialog.CallQso.SetText("VP8ORK");
    dialog.Note.SetText("up 2");
    dialog.cmInvia.Press();
  });
  Event([&] { telnet.cmDX.Press(); });
  EXPECT_EQ(Lines(), Texts{"sent TNCtelnet \"DX 14195 VP8ORK up 2\\r\\n\""});
}

TEST_F(TelnetTest, ClosingWhileConnectedSendsQuitAndNoLineEnd) {
  TNCtelnet& telnet = OpenTelnet();
  Lines();
  Event([&] { telnet.Close(); });
  EXPECT_EQ(Lines(), (Texts{"sent TNCtelnet \"quit\"", "disconnect TNCtelnet"}));
  EXPECT_FALSE(session.Opened.TncTelnetOpen);
}

TEST_F(TelnetTest, APeerThatClosesTakesTheWindowAlongAndNothingIsSent) {
  OpenTelnet();
  Lines();
  Receive("TNCtelnet", "bye, half a li");
  Event([&] { machine.Tcp().PeerClose("TNCtelnet"); });
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_FALSE(session.Opened.TncTelnetOpen);
  EXPECT_EQ(session.Windows.Find("TNCtelnet"), nullptr);
}

TEST_F(TelnetTest, APeerThatClosesUnderTheDialogLeavesTheDialogInOrder) {
  TNCtelnet& telnet = OpenTelnet();
  Lines();
  InDialogs([&](forms::Window& window) {
    Event([&] { machine.Tcp().PeerClose("TNCtelnet"); });
    auto& dialog = static_cast<DxDialog&>(window);
    dialog.Frequenza.SetText("14195");
    dialog.CallQso.SetText("VP8ORK");
    dialog.cmInvia.Press();
  });
  Event([&] { telnet.cmDX.Press(); });
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_EQ(session.Windows.Loaded().size(), 1u);
}

TEST_F(TelnetTest, RestoresAndSavesItsPlaceUnderItsOwnKey) {
  session.SaveSetting("TNCTelnet", "Y", "600");
  TNCtelnet& telnet = OpenTelnet();
  EXPECT_EQ(telnet.GetBounds().top, base::Twips(600));
  Event([&] { telnet.Close(); });
  EXPECT_EQ(session.GetSetting("TNCTelnet", "Y", ""), "600");
}

TEST_F(TelnetTest, TheMenuBringsTheOpenWindowUp) {
  const auto choose = [&] { Event([&] { frame->FindCommand("cmDXClusterTelnet")->Press(); }); };
  choose();
  choose();
  EXPECT_EQ(session.Windows.Loaded().size(), 2u);
}

TEST_F(TelnetTest, TheLastSpotsStationIsTheOneOfItsDay) {
  TNCtelnet& telnet = OpenTelnet();
  const auto spotted = [&](base::DateTime now, std::string_view call) {
    machine.SetNow(now);
    Receive("TNCtelnet", fmt::format("DX de I4LCK:     14195.0  {}   tnx 1423Z\r\n", call));
    return telnet.Entita.Text();
  };
  EXPECT_EQ(telnet.Entita.Text(), "");
  EXPECT_EQ(spotted(base::DateTime::Of(2024, 5, 10, 12), "GB6WW"),
            "GB6WW: Scozia dal 01/05 al 28/05/2024");
  EXPECT_EQ(spotted(base::DateTime::Of(2024, 6, 10, 12), "GB6WW"), "GB6WW: Inghilterra");
  EXPECT_EQ(spotted(base::DateTime::Of(2024, 6, 10, 12), "K0ABC/MM"),
            "K0ABC/MM: in mare o in volo non conta per nessun country");
  EXPECT_EQ(spotted(base::DateTime::Of(2024, 6, 10, 12), "QQQ"), "");
}

}  // namespace
}  // namespace brenvo::links
