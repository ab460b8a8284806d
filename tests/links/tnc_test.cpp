#include "links/tnc.h"

#include "tests/links/links_station.h"

namespace brenvo::links {
namespace {

constexpr std::string_view kSpotLine = "DX de I4LCK:     14195.0  VP8ORK   tnx 1423Z\r\n";
constexpr std::string_view kSelect = "Selezionare il Call o il Locator ed eseguire il check";

class TncTest : public LinksTest {
 protected:
  TNC& OpenTnc() { return Open<TNC>("TNC"); }
};

// Opening.

TEST_F(TncTest, OpensThePortAsTheProfileSays) {
  Profile("TNCPort='COM4', TNCBaud=9600");
  OpenTnc();
  EXPECT_TRUE(session.Opened.TncOpen);
  EXPECT_TRUE(machine.Serial().IsOpen(4));
  EXPECT_EQ(machine.Serial().Settings(4), "9600,N,8,1");
}

TEST_F(TncTest, SaysThatItsPortIsOpenOrWhyNot) {
  Profile("TNCPort='COM4'");
  EXPECT_EQ(OpenTnc().Collegamento.Text(), "Porta COM4 aperta");
  Profile("TNCPort='COM2'");
  machine.Serial().FailNext(2);
  EXPECT_EQ(OpenTnc().Collegamento.Text(), "La porta COM2 non risponde");
}

TEST_F(TncTest, ReadsItsMenuAndTheBandsInTableOrder) {
  TNC& tnc = OpenTnc();
  EXPECT_EQ(Captions(tnc.CMI), (Texts{"Ultimi DX", "Meteo, sole"}));
  EXPECT_EQ(tnc.Comandi[0], "sh/dx 10");
  EXPECT_EQ(tnc.Comandi[1], "sh/wwv");
  Texts bands{"Tutte"};
  for (const std::string& band : Rows("select Banda from UserRTX")) bands.push_back(band);
  EXPECT_EQ(Captions(tnc.Banda), bands);
  EXPECT_GT(bands.size(), 15u);
  EXPECT_TRUE(tnc.Banda.Entries()[0].checked);
  EXPECT_FALSE(tnc.Banda.Entries()[1].checked);
}

TEST_F(TncTest, StartsWithItsMarksAtTheirStart) {
  TNC& tnc = OpenTnc();
  EXPECT_TRUE(tnc.cmMTutto.Down());
  for (forms::Command* mark :
       {&tnc.cmMDX, &tnc.cmMAnnounce, &tnc.cmAutoSpelling, &tnc.cmAutoCheck}) {
    EXPECT_FALSE(mark->Down()) << mark->Name();
  }
}

TEST_F(TncTest, MonitorMarksReturnToTheirStartEachTimeItOpens) {
  Event([&] { OpenTnc().cmMDX.Press(); });
  Event([&] { session.Windows.Find("TNC")->Close(); });
  TNC& tnc = OpenTnc();
  EXPECT_TRUE(tnc.cmMTutto.Down());
  EXPECT_FALSE(tnc.cmMDX.Down());
}

TEST_F(TncTest, APortThatDoesNotOpenEndsTheOpeningWithoutAWord) {
  machine.Serial().FailNext(1);
  TNC& tnc = OpenTnc();
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_TRUE(session.Opened.TncOpen);
  EXPECT_EQ(Captions(tnc.CMI), Texts{"-"});
  EXPECT_EQ(Captions(tnc.Banda), Texts{"Tutte"});
}

TEST_F(TncTest, APortThatIsMissingEndsTheOpeningWithoutAWord) {
  Profile("TNCPort=''");
  OpenTnc();
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(TncTest, AMissingMenuFileEndsTheOpeningWithThePortOpenAndNoBands) {
  std::filesystem::remove(directory.Path() / "tnc.mnu");
  TNC& tnc = OpenTnc();
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_TRUE(machine.Serial().IsOpen(1));
  EXPECT_EQ(Captions(tnc.CMI), Texts{"-"});
  EXPECT_EQ(Captions(tnc.Banda), Texts{"Tutte"});
}

TEST_F(TncTest, AMenuFileThatEndsInACaptionEndsTheOpeningWithTheEntriesBeforeIt) {
  WriteFile("tnc.mnu", "a,b\r\nc,d\r\ne");
  TNC& tnc = OpenTnc();
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_EQ(Captions(tnc.CMI), (Texts{"a", "c"}));
  EXPECT_EQ(Captions(tnc.Banda), Texts{"Tutte"});
}

TEST_F(TncTest, RestoresAndSavesItsPlace) {
  session.SaveSetting("TNC", "X", "300");
  TNC& tnc = OpenTnc();
  EXPECT_EQ(tnc.GetBounds().left, base::Twips(300));
  tnc.Move({base::Twips(450), base::Twips(150), base::Twips(6000), base::Twips(4500)});
  Event([&] { tnc.Close(); });
  EXPECT_EQ(session.GetSetting("TNC", "X", ""), "450");
  EXPECT_EQ(session.GetSetting("TNC", "W", ""), "6000");
}

TEST_F(TncTest, ClosingClosesThePortAndSendsNothing) {
  TNC& tnc = OpenTnc();
  Lines();
  Event([&] { tnc.Close(); });
  EXPECT_FALSE(session.Opened.TncOpen);
  EXPECT_FALSE(machine.Serial().IsOpen(1));
  EXPECT_EQ(LinesOf(Lines(), "sent"), Texts{});
}

TEST_F(TncTest, ChosenTwiceFromTheMenuOpensTheChatAtTheSecondTime) {
  const auto choose = [&] { Event([&] { frame->FindCommand("cmTNC")->Press(); }); };
  choose();
  EXPECT_TRUE(session.Opened.TncOpen);
  EXPECT_FALSE(session.Opened.WWConvOpen);
  choose();
  EXPECT_TRUE(session.Opened.WWConvOpen);
  const std::size_t windows = session.Windows.Loaded().size();
  choose();
  EXPECT_EQ(session.Windows.Loaded().size(), windows);
}

// Commands.

TEST_F(TncTest, ConnectCallsTheNodeAndWatchesEverything) {
  TNC& tnc = OpenTnc();
  tnc.cmMDX.Press();
  tnc.cmMAnnounce.Press();
  Lines();
  Event([&] { tnc.cmConnect.Press(); });
  // "c IK4GRO-6", CR, LF.
  EXPECT_EQ(Lines(), Texts{"sent COM1 63 20 49 4B 34 47 52 4F 2D 36 0D 0A"});
  EXPECT_TRUE(tnc.cmMTutto.Down());
  EXPECT_FALSE(tnc.cmMDX.Down());
  EXPECT_FALSE(tnc.cmMAnnounce.Down());
}

TEST_F(TncTest, AMenuEntrySendsItsCommandAndTellsWhereItComesFrom) {
  TNC& tnc = OpenTnc();
  Lines();
  Event([&] { tnc.CMI.Pick(1); });
  EXPECT_EQ(Lines(), Texts{"sent COM1 73 68 2F 77 77 76 0D 0A"});  // sh/wwv
  EXPECT_EQ(tnc.StatusBar1.Panel(1), "Comandi personalizzabili tramite tnc.mnu");
}

TEST_F(TncTest, CommandModeSendsCharacterThreeAlone) {
  TNC& tnc = OpenTnc();
  Lines();
  Event([&] { tnc.cmCommandMode.Press(); });
  EXPECT_EQ(Lines(), Texts{"sent COM1 03"});
}

TEST_F(TncTest, ATypedLineEndsInCarriageReturnAloneAndLeavesTheFieldEmpty) {
  TNC& tnc = OpenTnc();
  Lines();
  Event([&] { TypeLine(tnc.Sended, "sh\xC3\xA0"); });
  EXPECT_EQ(Lines(), Texts{"sent COM1 73 68 E0 0D"});
  EXPECT_EQ(tnc.Sended.Text(), "");
}

TEST_F(TncTest, AnEmptyTypedLineIsACarriageReturn) {
  TNC& tnc = OpenTnc();
  Lines();
  Event([&] { tnc.Sended.TypeKey(forms::kEnter); });
  EXPECT_EQ(Lines(), Texts{"sent COM1 0D"});
}

TEST_F(TncTest, SendsWhatTheDialogGives) {
  TNC& tnc = OpenTnc();
  Lines();
  tnc.Move({base::Twips(300), base::Twips(450), tnc.Width(), tnc.Height()});
  InDialogs([&](forms::Window& window) {
    auto& dialog = static_cast<DxDialog&>(window);
    EXPECT_EQ(dialog.GetBounds().left, base::Twips(310));
    EXPECT_EQ(dialog.GetBounds().top, base::Twips(460));
    dialog.Frequenza.SetText("7.1");
    dialog.CallQso.SetText("ZL9");
    dialog.cmInvia.Press();
  });
  Event([&] { tnc.cmDX.Press(); });
  EXPECT_EQ(Lines(), Texts{"sent COM1 44 58 20 37 2E 31 20 5A 4C 39 0D 0A"});  // DX 7.1 ZL9
  EXPECT_EQ(session.Windows.Find("DX"), nullptr);
}

TEST_F(TncTest, SendsNothingWhenTheDialogIsCancelled) {
  TNC& tnc = OpenTnc();
  Lines();
  InDialogs([](forms::Window& window) { static_cast<DxDialog&>(window).cmCancel.Press(); });
  Event([&] { tnc.cmDX.Press(); });
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_EQ(session.Windows.Find("DX"), nullptr);
}

TEST_F(TncTest, SendsAnEmptyLineWhenTheDialogIsClosedByItsFrame) {
  TNC& tnc = OpenTnc();
  Lines();
  InDialogs([](forms::Window& window) { window.Close(); });
  Event([&] { tnc.cmDX.Press(); });
  EXPECT_EQ(Lines(), Texts{"sent COM1 0D 0A"});
}

TEST_F(TncTest, AnAnnouncementThatCannotGoOutLeavesNoDialogBehind) {
  TNC& tnc = OpenTnc();
  Lines();
  InDialogs([](forms::Window& window) { window.Close(); });
  machine.Serial().FailNext(1);
  Event([&] { tnc.cmDX.Press(); });
  EXPECT_EQ(LinesOf(Lines(), "error").size(), 1u);
  EXPECT_EQ(session.Windows.Find("DX"), nullptr);
}

TEST_F(TncTest, ALineThatIsGoneIsToldAtTheNextCommand) {
  TNC& tnc = OpenTnc();
  Lines();
  machine.Serial().FailNext(1);
  Event([&] { TypeLine(tnc.Sended, "x"); });
  EXPECT_EQ(LinesOf(Lines(), "error").size(), 1u);
  EXPECT_EQ(tnc.Sended.Text(), "x");
}

// Traffic.

TEST_F(TncTest, ASpotIsShownHeardSpelledAndChecked) {
  TNC& tnc = OpenTnc();
  tnc.cmAutoSpelling.Press();
  tnc.cmAutoCheck.Press();
  Lines();
  Receive("TNC", "DX de I4-1: 14195.0 z9/p tnx\r\n");
  EXPECT_EQ(tnc.Received.Text(), "DX de I4-1: 14195.0 z9/p tnx\n");
  EXPECT_EQ(Lines(),
            (Texts{"wave \"20m.wav\"", "wave \"I.wav\"", "wave \"4.wav\"", "wave \"pause.wav\"",
                   "wave \"Z.wav\"", "wave \"9.wav\"", "wave \"stroke.wav\"", "wave \"P.wav\""}));
  EXPECT_EQ(searches, (Texts{"open", "Z9/P||busy"}));
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(TncTest, ASpelledSignThatNamesNoFileKeepsItsOwnName) {
  TNC& tnc = OpenTnc();
  tnc.cmAutoSpelling.Press();
  Lines();
  Receive("TNC", "DX de I4: 14195.0 Z* tnx\r\n");
  EXPECT_EQ(Lines(),
            (Texts{"wave \"20m.wav\"", "wave \"I.wav\"", "wave \"4.wav\"", "wave \":.wav\"",
                   "wave \" .wav\"", "wave \"pause.wav\"", "wave \"Z.wav\"", "wave \"*.wav\""}));
}

TEST_F(TncTest, AWaveFileOfABandStaysInTheApplicationDirectory) {
  OpenTnc();
  for (const auto& [name, played] : {std::pair("", ""), std::pair("/tmp/x.wav", "-tmp-x.wav"),
                                     std::pair("../x.wav", "..-x.wav")}) {
    session.Db.Execute("update UserRTX set FilenameDX='" + std::string(name) +
                       "' where Banda=' 20 m'");
    Lines();
    Receive("TNC", kSpotLine);
    EXPECT_EQ(Lines(), Texts{"wave \"" + std::string(played) + "\""});
  }
}

TEST_F(TncTest, TheFirstSpotOpensTheMatrixAndLaterOnesReuseIt) {
  TNC& tnc = OpenTnc();
  tnc.cmAutoCheck.Press();
  Receive("TNC", "DX de I4: 14195.0 ZL9HR tnx\r\nDX de I4: 14196.0 VP8ORK tnx\r\n");
  EXPECT_EQ(searches, (Texts{"open", "ZL9HR||busy", "VP8ORK||busy"}));
}

TEST_F(TncTest, ACallCheckedAgainIsSearchedForAgain) {
  TNC& tnc = OpenTnc();
  tnc.cmAutoCheck.Press();
  Receive("TNC", "DX de I4: 14195.0 ZL9HR tnx\r\n");
  session.Opened.Hrd->CallQso.SetText("BY HAND");
  Receive("TNC", "DX de I4: 14196.0 ZL9HR tnx\r\n");
  EXPECT_EQ(searches, (Texts{"open", "ZL9HR||busy", "ZL9HR||busy"}));
}

TEST_F(TncTest, ASpotAtEitherEdgeFindsItsBandAndOneBetweenBandsNone) {
  OpenTnc();
  Lines();
  for (const char* khz : {"14000.0", "14000", "14350.0", "14174.9"}) {
    Receive("TNC", "DX de I4: " + std::string(khz) + " ZL9HR tnx\r\n");
    EXPECT_EQ(Lines(), Texts{"wave \"20m.wav\""}) << khz;
  }
  for (const char* khz : {"13999.9", "14350.1", "0", "-14200", "14,200", "14.2"}) {
    Receive("TNC", "DX de I4: " + std::string(khz) + " ZL9HR tnx\r\n");
    EXPECT_EQ(Lines(), Texts{}) << khz;
  }
}

TEST_F(TncTest, TheFirstOfTwoOverlappingBandsDecides) {
  session.Db.Execute(
      "insert into UserRTX (Banda,FrequenzaI,FrequenzaF,AnnunceDX,FilenameDX) "
      "values ('due',14100,14200,True,'due.wav')");
  TNC& tnc = OpenTnc();
  const std::string first = Rows(
      "select Banda,FilenameDX from UserRTX where 14195 >=FrequenzaI and 14195 "
      "<=FrequenzaF")[0];
  Lines();
  Receive("TNC", kSpotLine);
  EXPECT_EQ(Lines(), Texts{"wave \"" + first.substr(first.find('|') + 1) + "\""});
  EXPECT_EQ(tnc.Received.Text().size(), kSpotLine.size() - 1);
}

TEST_F(TncTest, TheBandQueryReadsTheTableAsItStands) {
  OpenTnc();
  Lines();
  Receive("TNC", kSpotLine);
  EXPECT_EQ(Lines(), Texts{"wave \"20m.wav\""});
  session.Db.Execute("update UserRTX set AnnunceDX=False where Banda=' 20 m'");
  Receive("TNC", kSpotLine);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(TncTest, ABellBeeps) {
  OpenTnc();
  Lines();
  Receive("TNC", "a\x07");
  EXPECT_EQ(Lines(), Texts{"beep"});
}

TEST_F(TncTest, AnEscapeReachesIntoTheWaitingCharacters) {
  TNC& tnc = OpenTnc();
  Receive("TNC", "ab!0xycd\n!");
  Receive("TNC", "1zw\n");
  EXPECT_EQ(tnc.Received.Text(), "abcd\n1zw\n");
}

TEST_F(TncTest, TheMonitorMarksWork) {
  TNC& tnc = OpenTnc();
  tnc.cmMDX.Press();
  EXPECT_FALSE(tnc.cmMTutto.Down());
  Receive("TNC", "hello\r\n" + std::string(kSpotLine));
  EXPECT_EQ(tnc.Received.Text(), "DX DE I4LCK:     14195.0  VP8ORK   TNX 1423Z\n");
  tnc.cmMTutto.Press();
  EXPECT_FALSE(tnc.cmMDX.Down());
}

TEST_F(TncTest, TheBandMarksWork) {
  TNC& tnc = OpenTnc();
  tnc.Banda.Pick(1);
  EXPECT_FALSE(tnc.Banda.Entries()[0].checked);
  Receive("TNC", kSpotLine);
  EXPECT_EQ(tnc.Received.Text(), "");
}

TEST_F(TncTest, AQuoteInASpottedCallStaysInsideItsCheck) {
  TNC& tnc = OpenTnc();
  tnc.cmAutoCheck.Press();
  Receive("TNC", "DX de I4: 14195.0 X';DELETE tnx\r\n");
  EXPECT_EQ(searches, (Texts{"open", "X';DELETE||busy"}));
  EXPECT_FALSE(Rows("select * from [User]").empty());
}

TEST_F(TncTest, AFailureInTheMiddleOfABurstCostsOneLine) {
  TNC& tnc = OpenTnc();
  session.Db.Execute("update UserRTX set FilenameDX='x.wav' where Banda=' 20 m'");
  tnc.cmAutoCheck.Press();
  Receive("TNC", "DX de I4: 14195.0 ZL9HR tnx\r\n");
  static_cast<FakeHrd*>(session.Opened.Hrd)->Fails = true;
  Lines();
  Receive("TNC", "DX de I4: 14195.0 AAA tnx\r\nhello\r\nDX de I4: 14195.0 BBB tnx\r\n");
  EXPECT_EQ(Lines(), (Texts{"wave \"x.wav\"", "error \"no\"", "wave \"x.wav\"", "error \"no\""}));
  EXPECT_EQ(tnc.Received.Text(),
            "DX de I4: 14195.0 ZL9HR tnx\nDX de I4: 14195.0 AAA tnx\nhello\n"
            "DX de I4: 14195.0 BBB tnx\n");
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(TncTest, WithoutAMatrixACheckIsNothing) {
  core::Session other(machine, directory.Path());
  other.Open();
  other.Windows.Register("TNC", [&] { return std::make_unique<TNC>(other); });
  TNC& tnc = static_cast<TNC&>(*other.Windows.LoadNew("TNC"));
  tnc.cmAutoCheck.Press();
  Lines();
  Receive("TNC", kSpotLine);
  EXPECT_EQ(Lines(), Texts{"wave \"20m.wav\""});
}

// Manual checks.

TEST_F(TncTest, CheckCallCarriesTheSelectionInUpperCase) {
  TNC& tnc = OpenTnc();
  Receive("TNC", "wkd ik4gro/p today\n");
  tnc.Received.Select(4, 8);
  Event([&] { tnc.cmCheckCall.Press(); });
  EXPECT_EQ(searches, (Texts{"open", "IK4GRO/P||busy"}));
}

TEST_F(TncTest, CheckCallWithoutASelectionAsksForOne) {
  TNC& tnc = OpenTnc();
  Receive("TNC", "a    b\n");
  for (std::size_t length : {0u, 3u}) {
    tnc.StatusBar1.SetPanel(1, "");
    tnc.Received.Select(1, length);
    Event([&] { tnc.cmCheckCall.Press(); });
    EXPECT_EQ(tnc.StatusBar1.Panel(1), kSelect);
  }
  EXPECT_EQ(searches, Texts{});
}

TEST_F(TncTest, CheckLocatorCarriesAWholeLocatorAsItIs) {
  TNC& tnc = OpenTnc();
  Receive("TNC", "in jn54mm now\n");
  tnc.Received.Select(3, 6);
  Event([&] { tnc.cmCheckLocator.Press(); });
  EXPECT_EQ(searches, (Texts{"open", "|JN54MM|busy"}));
}

TEST_F(TncTest, CheckLocatorTurnsAShortOneIntoABeginning) {
  TNC& tnc = OpenTnc();
  Receive("TNC", "in jn54 now\n");
  tnc.Received.Select(3, 5);
  Event([&] { tnc.cmCheckLocator.Press(); });
  EXPECT_EQ(searches, (Texts{"open", "|JN54*|busy"}));
}

TEST_F(TncTest, CheckLocatorRefusesALongOrABlankSelection) {
  TNC& tnc = OpenTnc();
  Receive("TNC", "jn54mm7   \n");
  for (const auto& [start, length] : {std::pair<std::size_t, std::size_t>{0, 7}, {7, 3}, {0, 0}}) {
    tnc.StatusBar1.SetPanel(1, "");
    tnc.Received.Select(start, length);
    Event([&] { tnc.cmCheckLocator.Press(); });
    EXPECT_EQ(tnc.StatusBar1.Panel(1), kSelect);
  }
  EXPECT_EQ(searches, Texts{});
}

TEST_F(TncTest, AClickOnTheTextTellsHowToCheck) {
  TNC& tnc = OpenTnc();
  Event([&] { tnc.Received.Click(); });
  EXPECT_EQ(tnc.StatusBar1.Panel(1), kSelect);
  tnc.StatusBar1.SetPanel(1, "");
  Event([&] { tnc.Received.DoubleClick(); });
  EXPECT_EQ(tnc.StatusBar1.Panel(1), kSelect);
}

TEST_F(TncTest, ItsMenusAreThose) {
  TNC& tnc = OpenTnc();
  Texts captions;
  for (const forms::MenuItem& item : tnc.MenuBar)
    captions.push_back(std::get<forms::Menu*>(item)->Caption());
  EXPECT_EQ(captions, (Texts{"Comandi TNC", "Automatismi", "Monitor", "Bande"}));
}

TEST_F(TncTest, ABurstOfTenThousandLinesLosesNone) {
  TNC& tnc = OpenTnc();
  tnc.cmMDX.Press();
  std::string burst;
  for (int i = 0; i < 10000; ++i) {
    burst += "DX de I4LCK:     13195.0  Z" + std::to_string(i) + "A   tnx\r\n";
  }
  int shown = 0;
  const forms::Subscription edited = tnc.Received.Edited.Subscribe(
      [&](const forms::RichText::Edit& edit) { shown += !edit.inserted.empty(); });
  Receive("TNC", burst);
  EXPECT_EQ(shown, 10000);
  EXPECT_LE(tnc.Received.Length(), 32100u);
}

}  // namespace
}  // namespace brenvo::links
