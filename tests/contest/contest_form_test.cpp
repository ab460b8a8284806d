#include <gmock/gmock.h>

#include "core/help_topics.h"
#include "tests/contest/contest_station.h"
#include "tests/support/golden.h"

namespace brenvo::contest {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kRecordKeys[] = {"cmNext", "cmPrevious", "cmUpdate", "cmDelete", "cmQso"};

class ContestFormTest : public ContestStation {
 protected:
  static void ExpectRecordKeys(ContestForm& contest, bool enabled) {
    for (const char* key : kRecordKeys)
      EXPECT_EQ(contest.FindCommand(key)->Enabled(), enabled) << key;
  }
};

TEST_F(ContestFormTest, AnEmptyTableOpensClearedWithTodaysDate) {
  ContestForm& contest = OpenContest();
  EXPECT_EQ(contest.DataContest.Text(), "03/02/2001");
  EXPECT_EQ(contest.NomeContest.Text(), "0");
  EXPECT_EQ(contest.Banda.Text(), "");
  EXPECT_EQ(contest.Frequenza.Text(), "0");
  EXPECT_TRUE(contest.Fisso.IsOn());
  EXPECT_TRUE(contest.Singolo.IsOn());
  ExpectRecordKeys(contest, false);
  EXPECT_TRUE(contest.cmInsert.Enabled());
}

TEST_F(ContestFormTest, TheFlagFollowsTheWindow) {
  ContestForm& contest = OpenContest();
  EXPECT_TRUE(session.Opened.ContestOpen);
  Press(contest, "cmExit");
  EXPECT_FALSE(session.Opened.ContestOpen);
}

TEST_F(ContestFormTest, BandsStandInOrderOfFrequency) {
  ContestForm& contest = OpenContest();
  EXPECT_EQ(contest.Banda.Items().front(), "160 m");
  EXPECT_EQ(contest.Banda.Items().back(), "  3cm");
}

TEST_F(ContestFormTest, AStoredContestReopensWithEveryField) {
  ContestForm& contest = OpenContest();
  contest.DataContest.SetText("07/09/2024");
  Event([&] { contest.Banda.SetText("  2 m"); });
  contest.NomeContest.SetText("IARU VHF");
  contest.Frequenza.SetText("144.3");
  contest.Categoria.SetText("01");
  contest.Portatile.Press();
  contest.Multi.Press();
  contest.CallContest.SetText("I4ABC/P");
  contest.Qra.SetText("Mario");
  contest.Qth.SetText("Parma");
  contest.Indirizzo.SetText("Via Emilia 1");
  contest.Provincia.SetText("PR");
  contest.SQTH.SetText("Monte Cimone");
  contest.SProvincia.SetText("MO");
  contest.Altezza.SetText("2165");
  contest.Locator.SetText("JN54IE");
  contest.RTX.SetText("FT-736R");
  contest.Antenna.SetText("2x17 el.");
  contest.Potenza.SetText("100");
  contest.Note.SetText("prova");
  contest.Square.Press();
  contest.Exch.Press();
  Press(contest, "cmInsert");
  EXPECT_EQ(Rows("select * from Contest"),
            Texts{"07/09/2024|  2 m|IARU VHF|144.3|01|P|M|I4ABC/P|Mario|Parma|Via Emilia 1|PR|"
                  "Monte Cimone|MO|2165|JN54IE|FT-736R|2x17 el.|100|prova|-1|0|-1"});
  contest.Close();

  ContestForm& again = OpenContest();
  const std::pair<forms::TextField*, std::string> texts[] = {{&again.DataContest, "07/09/2024"},
                                                             {&again.Banda, "  2 m"},
                                                             {&again.NomeContest, "IARU VHF"},
                                                             {&again.Frequenza, "144.3"},
                                                             {&again.Categoria, "01"},
                                                             {&again.CallContest, "I4ABC/P"},
                                                             {&again.Qra, "Mario"},
                                                             {&again.Qth, "Parma"},
                                                             {&again.Indirizzo, "Via Emilia 1"},
                                                             {&again.Provincia, "PR"},
                                                             {&again.SQTH, "Monte Cimone"},
                                                             {&again.SProvincia, "MO"},
                                                             {&again.Altezza, "2165"},
                                                             {&again.Locator, "JN54IE"},
                                                             {&again.RTX, "FT-736R"},
                                                             {&again.Antenna, "2x17 el."},
                                                             {&again.Potenza, "100"},
                                                             {&again.Note, "prova"}};
  for (const auto& [field, text] : texts) EXPECT_EQ(field->Text(), text) << field->Name();
  EXPECT_TRUE(again.Portatile.IsOn());
  EXPECT_FALSE(again.Fisso.IsOn());
  EXPECT_TRUE(again.Multi.IsOn());
  EXPECT_TRUE(again.Square.IsOn());
  EXPECT_FALSE(again.Country.IsOn());
  EXPECT_TRUE(again.Exch.IsOn());
  ExpectRecordKeys(again, true);
}

TEST_F(ContestFormTest, InsertingWithoutACallDoesNothingAndSaysNothing) {
  ContestForm& contest = OpenContest();
  contest.CallContest.SetText("  ");
  Press(contest, "cmInsert");
  EXPECT_EQ(Rows("select count(*) from Contest"), Texts{"0"});
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(ContestFormTest, InsertingAnExistingDateAndBandIsToldAndLeavesTheScreen) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  Press(contest, "cmClear");
  contest.DataContest.SetText("07/09/2024");
  Event([&] { contest.Banda.SetText("  2 m"); });
  contest.NomeContest.SetText("secondo");
  Press(contest, "cmInsert");
  EXPECT_EQ(Lines(), Texts{"message critical \"\" \"Qso gia' caricato\""});
  EXPECT_EQ(contest.NomeContest.Text(), "secondo");
  ExpectRecordKeys(contest, false);
  EXPECT_EQ(Rows("select Nome from Contest"), Texts{"0"});
}

TEST_F(ContestFormTest, ANumberThatAColumnCannotHoldIsRefusedInWordsAndStaysAsTyped) {
  const std::string digits(19, '9');
  ContestForm& contest = OpenContest();
  Press(contest, "cmClear");
  Event([&] { contest.Banda.SetText("  2 m"); });
  contest.CallContest.SetText("I4ABC");
  const std::pair<forms::TextField*, std::string> numbers[] = {{&contest.Altezza, "Altezza"},
                                                               {&contest.Potenza, "Potenza"}};
  for (const auto& [field, column] : numbers) {
    field->SetText(digits);
    Press(contest, "cmInsert");
    EXPECT_EQ(Lines(), Texts{"message exclamation \"\" \"Il valore '" + digits +
                             "' non è adatto alla colonna '" + column + "'\""});
    EXPECT_EQ(field->Text(), digits);
    EXPECT_EQ(contest.CallContest.Text(), "I4ABC");
    EXPECT_TRUE(Rows("select Banda from Contest").empty());
    field->SetText("999999999");
  }
  Press(contest, "cmInsert");
  EXPECT_EQ(Rows("select Altezza,Potenza from Contest"), Texts{"999999999|999999999"});
}

TEST_F(ContestFormTest, UpdatingOntoAnExistingDateAndBandIsToldAndWritesNothing) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  Store(contest, "07/09/2024", " 70cm");
  Event([&] { contest.Banda.SetText("  2 m"); });
  Press(contest, "cmUpdate");
  EXPECT_EQ(Lines(), Texts{"message critical \"\" \"Qso gia' caricato\""});
  EXPECT_EQ(Rows("select Banda from Contest"), (Texts{"  2 m", " 70cm"}));
}

TEST_F(ContestFormTest, UpdatingStoresTheScreen) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  contest.NomeContest.SetText("IARU VHF");
  Press(contest, "cmUpdate");
  EXPECT_EQ(Rows("select Nome from Contest"), Texts{"IARU VHF"});
}

TEST_F(ContestFormTest, AnotherFailureOfTheFileEndsTheProgram) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  session.Db.Execute("DELETE * FROM Contest");
  EXPECT_THROW(contest.ContestUpdate(), forms::ProgramEnded);
  EXPECT_THAT(Lines(),
              ElementsAre(StartsWith("message critical \"Update Qso\" \" 3167 - "), "end-program"));
}

TEST_F(ContestFormTest, DeletingOneBandLeavesTheContactsOfTheOther) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  Store(contest, "07/09/2024", " 70cm");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC");
  AddContact("07/09/2024", " 70cm", 1, "IK3DEF");
  machine.Messages().QueueAnswer(true);
  Press(contest, "cmDelete");
  EXPECT_EQ(Lines(), Texts{"question \"Cancellazione Qso\" \"Confermi l'operazione ?\" yes"});
  EXPECT_EQ(Rows("select Banda from Contest").size(), 1u);
  EXPECT_EQ(Rows("select Call from [Contest Qso]").size(), 1u);
  EXPECT_EQ(Rows("select Banda from Contest"), Rows("select Banda from [Contest Qso]"));
}

TEST_F(ContestFormTest, DeletingAnnouncesThatItsContactsAreGone) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC");
  std::vector<core::ContactsChanged> announced;
  const forms::Subscription subscription = session.Contacts.Subscribe(
      [&](const core::ContactsChanged& change) { announced.push_back(change); });
  machine.Messages().QueueAnswer(true);
  Press(contest, "cmDelete");
  EXPECT_EQ(announced, (std::vector<core::ContactsChanged>{
                           {core::ContactTable::kContestQso, core::ManyContacts()}}));
}

TEST_F(ContestFormTest, DeletingFollowsTheRecordAndNotWhatWasTypedOverIt) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  Store(contest, "07/09/2024", " 70cm");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC");
  AddContact("07/09/2024", " 70cm", 1, "IK3DEF");
  Press(contest, "cmFirst");
  const std::string shown = contest.Banda.Text();
  Event([&] { contest.Banda.SetText(shown == "  2 m" ? " 70cm" : "  2 m"); });
  machine.Messages().QueueAnswer(true);
  Press(contest, "cmDelete");
  EXPECT_EQ(Rows("select Banda from [Contest Qso] where Banda='" + shown + "'"), Texts{});
  EXPECT_EQ(Rows("select Banda from [Contest Qso]").size(), 1u);
}

TEST_F(ContestFormTest, AnAnswerOfNoDeletesNothing) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  machine.Messages().QueueAnswer(false);
  Press(contest, "cmDelete");
  EXPECT_EQ(Rows("select count(*) from Contest"), Texts{"1"});
}

TEST_F(ContestFormTest, DeletingTheLastRecordShowsTheNewLastAndThenAClearedScreen) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  Store(contest, "05/10/2024", "  2 m");
  Press(contest, "cmLast");
  EXPECT_EQ(contest.DataContest.Text(), "05/10/2024");
  machine.Messages().QueueAnswer(true);
  Press(contest, "cmDelete");
  EXPECT_EQ(contest.DataContest.Text(), "07/09/2024");
  ExpectRecordKeys(contest, true);
  machine.Messages().QueueAnswer(true);
  Press(contest, "cmDelete");
  EXPECT_EQ(contest.NomeContest.Text(), "0");
  EXPECT_EQ(contest.CallContest.Text(), "");
  ExpectRecordKeys(contest, false);
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(ContestFormTest, AFailureWhileDeletingLeavesEverythingAndEndsTheProgram) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC");
  session.Db.Execute("UPDATE Contest SET Banda='x''x'");
  machine.Messages().QueueAnswer(true);
  EXPECT_THROW(contest.ContestDelete(), forms::ProgramEnded);
  EXPECT_THAT(Lines(), Contains(StartsWith("message critical \"Delete Qso\" ")));
  EXPECT_FALSE(session.Db.InTransaction());
  EXPECT_EQ(Rows("select count(*) from Contest"), Texts{"1"});
  EXPECT_EQ(Rows("select count(*) from [Contest Qso]"), Texts{"1"});
}

TEST_F(ContestFormTest, MovesStopAtBothEnds) {
  ContestForm& contest = OpenContest();
  for (const char* date : {"01/06/2024", "06/07/2024", "07/09/2024"}) Store(contest, date, "  2 m");
  Press(contest, "cmFirst");
  EXPECT_EQ(contest.DataContest.Text(), "01/06/2024");
  Press(contest, "cmPrevious");
  EXPECT_EQ(contest.DataContest.Text(), "01/06/2024");
  Press(contest, "cmNext");
  EXPECT_EQ(contest.DataContest.Text(), "06/07/2024");
  Press(contest, "cmLast");
  EXPECT_EQ(contest.DataContest.Text(), "07/09/2024");
  Press(contest, "cmNext");
  EXPECT_EQ(contest.DataContest.Text(), "07/09/2024");
}

TEST_F(ContestFormTest, MovesInAnEmptyTableAreHarmless) {
  ContestForm& contest = OpenContest();
  for (void (ContestForm::*move)() : {&ContestForm::GoToFirst, &ContestForm::GoToPrevious,
                                      &ContestForm::GoToNext, &ContestForm::GoToLast}) {
    (contest.*move)();
    EXPECT_EQ(contest.NomeContest.Text(), "0");
  }
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(ContestFormTest, TheScreenKeepsItsRecordWhenAnotherWindowMovesTheTable) {
  ContestForm& contest = OpenContest();
  Store(contest, "01/06/2024", "  2 m");
  Store(contest, "07/09/2024", "  2 m");
  session.Tables.TbContest->MoveFirst();
  contest.NomeContest.SetText("settembre");
  Press(contest, "cmUpdate");
  EXPECT_EQ(Rows("select Nome from Contest order by DataContest"), (Texts{"0", "settembre"}));
}

TEST_F(ContestFormTest, ClearingKeepsTheMultipliers) {
  ContestForm& contest = OpenContest();
  contest.Square.Press();
  contest.Portatile.Press();
  contest.Potenza.SetText("100");
  Press(contest, "cmClear");
  EXPECT_TRUE(contest.Square.IsOn());
  EXPECT_TRUE(contest.Fisso.IsOn());
  EXPECT_FALSE(contest.Portatile.IsOn());
  EXPECT_EQ(contest.Potenza.Text(), "0");
}

TEST_F(ContestFormTest, ChoosingABandFillsInTheStation) {
  session.Db.Execute("UPDATE UserRTX SET RTX='FT-736R',Antenna='17 el.' WHERE Banda='  2 m'");
  session.Db.Execute(
      "UPDATE [User] SET Call='I4ABC',Qra='Mario',Qth='Parma',"
      "Indirizzo='Via Emilia 1',Provincia='PR'");
  ContestForm& contest = OpenContest();
  Event([&] { contest.Banda.SetText("  2 m"); });
  EXPECT_EQ(contest.CallContest.Text(), "I4ABC");
  EXPECT_EQ(contest.Qra.Text(), "Mario");
  EXPECT_EQ(contest.Indirizzo.Text(), "Via Emilia 1");
  EXPECT_EQ(contest.Locator.Text(), "JN65AA");
  EXPECT_EQ(contest.SQTH.Text(), "Parma");
  EXPECT_EQ(contest.SProvincia.Text(), "PR");
  EXPECT_EQ(contest.Frequenza.Text(), "144.3");
  EXPECT_EQ(contest.Potenza.Text(), "50");
  EXPECT_EQ(contest.RTX.Text(), "FT-736R");
  EXPECT_EQ(contest.Antenna.Text(), "17 el.");
}

TEST_F(ContestFormTest, ABandFillsInItsOwnRowWhereverTheBandsAreLedMeanwhile) {
  session.Db.Execute("UPDATE UserRTX SET RTX='FT-736R' WHERE Banda='  2 m'");
  session.Db.Execute("UPDATE UserRTX SET RTX='altro' WHERE Banda='160 m'");
  ContestForm& contest = OpenContest();
  contest.Frequenza.OnChange = [this] { session.Tables.TbUserRTX->MoveFirst(); };
  Event([&] { contest.Banda.SetText("  2 m"); });
  EXPECT_EQ(contest.Frequenza.Text(), "144.3");
  EXPECT_EQ(contest.RTX.Text(), "FT-736R");
}

TEST_F(ContestFormTest, ChoosingTheSameBandAgainFillsInNothing) {
  ContestForm& contest = OpenContest();
  Event([&] { contest.Banda.SetText("  2 m"); });
  contest.CallContest.SetText("I4ABC/P");
  contest.OnBandaChange();
  EXPECT_EQ(contest.CallContest.Text(), "I4ABC/P");
}

TEST_F(ContestFormTest, ABandThatTheStationDoesNotHaveFillsTheProfileAlone) {
  ContestForm& contest = OpenContest();
  session.Db.Execute("DELETE * FROM UserRTX WHERE Banda='  2 m'");
  contest.Frequenza.SetText("1");
  contest.RTX.SetText("mio");
  Event([&] { contest.Banda.SetText("  2 m"); });
  EXPECT_EQ(contest.CallContest.Text(), "I0XXX");
  EXPECT_EQ(contest.Frequenza.Text(), "1");
  EXPECT_EQ(contest.RTX.Text(), "mio");
}

TEST_F(ContestFormTest, BrowsingNeverOverwritesWhatIsStored) {
  ContestForm& contest = OpenContest();
  Store(contest, "01/06/2024", "  2 m", "I4ABC/P");
  Store(contest, "07/09/2024", " 70cm", "I4DEF/P");
  Press(contest, "cmFirst");
  EXPECT_EQ(contest.CallContest.Text(), "I4ABC/P");
  Press(contest, "cmNext");
  EXPECT_EQ(contest.CallContest.Text(), "I4DEF/P");
}

TEST_F(ContestFormTest, ANewEntryIsAlwaysFilledFromTheProfile) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m", "I4ABC/P");
  Press(contest, "cmClear");
  Event([&] { contest.Banda.SetText("  2 m"); });
  EXPECT_EQ(contest.CallContest.Text(), "I0XXX");
}

TEST_F(ContestFormTest, ARecordKeepsABandThatTheStationHasGivenUp) {
  {
    ContestForm& contest = OpenContest();
    Store(contest, "07/09/2024", "  2 m");
    contest.Close();
  }
  session.Db.Execute("DELETE * FROM UserRTX WHERE Banda='  2 m'");
  ContestForm& contest = OpenContest();
  EXPECT_EQ(contest.Banda.Text(), "  2 m");
  Press(contest, "cmUpdate");
  EXPECT_EQ(Rows("select Banda from Contest"), Texts{"  2 m"});
}

TEST_F(ContestFormTest, CallAndLocatorAreUpperCasedWhileTyping) {
  ContestForm& contest = OpenContest();
  for (forms::TextField* field : {&contest.CallContest, &contest.Locator}) {
    field->Focus();
    for (char32_t key : std::u32string(U"i4abc")) field->TypeKey(key);
    EXPECT_EQ(field->Text(), "I4ABC");
  }
}

TEST_F(ContestFormTest, HintsFollowThePointer) {
  ContestForm& contest = OpenContest();
  contest.Exch.Hover();
  EXPECT_EQ(contest.StatusBar1.Panel(1),
            "Moltiplicatore definito di volta in volta (es. Provincia), da indicare nel campo "
            "note del Qso [Exch=MI]");
  contest.Frame1.Hover();
  EXPECT_EQ(contest.StatusBar1.Panel(1), "");
  contest.Exch.Hover();
  contest.Panel3D1.Hover();
  EXPECT_EQ(contest.StatusBar1.Panel(1), "");
}

TEST_F(ContestFormTest, HelpOpensItsPage) {
  ContestForm& contest = OpenContest();
  Press(contest, "cmHelp");
  EXPECT_EQ(Lines(), Texts{"open \"Brenvo.HLP\""});
  EXPECT_EQ(machine.OpenedTopic(), core::kHelpContest);
}

TEST_F(ContestFormTest, AContestIsCalledBackByADoubleClick) {
  ContestForm& contest = OpenContest();
  Store(contest, "01/06/2024", "  2 m", "I4ABC");
  Store(contest, "07/09/2024", " 70cm", "I4DEF");
  Press(contest, "cmClear");
  InDialogs([&](forms::Window& window) {
    auto& search = static_cast<ContestSearch&>(window);
    EXPECT_EQ(search.Caption(), "Contest - Ricerca");
    EXPECT_EQ(search.Spread1.Rows(), 3);
    EXPECT_EQ(search.Spread1.Columns(), 3);
    EXPECT_EQ(search.Spread1.ColumnWidth(0), base::Twips(1115));
    EXPECT_EQ(search.Spread1.ColumnWidth(1), base::Twips(780));
    EXPECT_EQ(search.Spread1.ColumnWidth(2), base::Twips(2730));
    EXPECT_EQ(search.Spread1.Cell(0, 2), "Nome");
    search.Spread1.Hover();
    EXPECT_EQ(search.StatusBar1.Panel(1), "Doppio Click per richiamare i dati del contest");
    EXPECT_EQ(search.Spread1.Cell(1, 0), "01/06/2024");
    Event([&] { search.Spread1.DoubleClickCell(1, 0); });
  });
  Press(contest, "cmSearch");
  EXPECT_EQ(contest.CallContest.Text(), "I4ABC");
  EXPECT_EQ(contest.Banda.Text(), "  2 m");
  ExpectRecordKeys(contest, true);
  EXPECT_EQ(session.Windows.Find("ContestSearch"), nullptr);
}

TEST_F(ContestFormTest, ASearchClosedWithoutAChoiceLeavesTheRecord) {
  ContestForm& contest = OpenContest();
  Store(contest, "01/06/2024", "  2 m", "I4ABC");
  Store(contest, "07/09/2024", " 70cm", "I4DEF");
  InDialogs([&](forms::Window& window) { window.Close(); });
  Press(contest, "cmSearch");
  EXPECT_EQ(contest.CallContest.Text(), "I4DEF");
  InDialogs([&](forms::Window& window) {
    Event([&] { static_cast<ContestSearch&>(window).Spread1.DoubleClickCell(0, 0); });
  });
  Press(contest, "cmSearch");
  EXPECT_EQ(contest.CallContest.Text(), "I4DEF");
  EXPECT_EQ(session.Windows.Find("ContestSearch"), nullptr);
}

TEST_F(ContestFormTest, TheContactsAreOpenedWithWhatTheScreenShows) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  contest.NomeContest.SetText("non salvato");
  contest.Locator.SetText("JN54IE");
  contest.Country.Press();
  Press(contest, "cmQso");
  EXPECT_EQ(session.Handed.CurrentContest.DataContest, "07/09/2024");
  EXPECT_EQ(session.Handed.CurrentContest.Banda, "  2 m");
  EXPECT_EQ(session.Handed.CurrentContest.Nome, "non salvato");
  EXPECT_EQ(session.Handed.CurrentContest.Locator, "JN54IE");
  EXPECT_FALSE(session.Handed.CurrentContest.MoltSquare);
  EXPECT_TRUE(session.Handed.CurrentContest.MoltCountry);
  EXPECT_FALSE(session.Handed.CurrentContest.MoltExch);
  EXPECT_EQ(machine.Host().Front()->Caption(), "Contest Qso - non salvato");
}

class ContestExportTest : public ContestFormTest {
 protected:
  // The contest on screen exports this text.
  std::string Export(ContestForm& contest, std::string_view file = "I4ABC.txt") {
    Press(contest, "cmExport");
    EXPECT_EQ(Lines(), Texts{});
    return ReadBytes(directory.Path() / file);
  }
};

TEST_F(ContestExportTest, WithoutContactsNoFileIsMade) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  Press(contest, "cmExport");
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "I4ABC.txt"));
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(ContestExportTest, TheFileTakesWhatTheScreenShows) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC", "JN65AB", 120);
  contest.NomeContest.SetText("non salvato");
  EXPECT_THAT(Export(contest), HasSubstr("TName=non salvato\r\n"));
}

TEST_F(ContestExportTest, ContactsStandInTheOrderInWhichTheyWereEntered) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  for (int serial : {3, 1, 2}) AddContact("07/09/2024", "  2 m", serial, "IK3ABC");
  const std::string text = Export(contest);
  EXPECT_LT(text.find(";0003;"), text.find(";0001;"));
  EXPECT_LT(text.find(";0001;"), text.find(";0002;"));
}

TEST_F(ContestExportTest, AStrokeInTheCallBecomesAHyphenInTheFilesName) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m", "IK3ABC/P");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC");
  EXPECT_THAT(Export(contest, "IK3ABC-P.txt"), HasSubstr("PCall=IK3ABC/P\r\n"));
}

TEST_F(ContestExportTest, NothingIsWrittenOutsideTheApplicationDirectory) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m", "../../X");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC");
  Press(contest, "cmExport");
  EXPECT_TRUE(std::filesystem::exists(directory.Path() / "..-..-X.txt"));
}

TEST_F(ContestExportTest, ASecondContestOfTheCallReplacesTheFile) {
  ContestForm& contest = OpenContest();
  Store(contest, "01/06/2024", "  2 m");
  AddContact("01/06/2024", "  2 m", 1, "IK3ABC");
  AddContact("01/06/2024", "  2 m", 2, "IK3DEF");
  AddContact("07/09/2024", "  2 m", 1, "IK3GHI");
  Export(contest);
  Store(contest, "07/09/2024", "  2 m");
  const std::string text = Export(contest);
  EXPECT_THAT(text, HasSubstr("TDate=20240907"));
  EXPECT_THAT(text, testing::Not(HasSubstr("IK3DEF")));
}

TEST_F(ContestExportTest, TheExchangeBoxPlaysNoPart) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC", "JN65AB", 120, "[Exc=VE]");
  const std::string without = Export(contest);
  contest.Exch.Press();
  EXPECT_EQ(Export(contest), without);
}

TEST_F(ContestExportTest, EachBoxDrivesTheCountsOfTheFileInItsOwnWay) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC", "JN65AB", 100, "[Exc=VE]");
  AddContact("07/09/2024", "  2 m", 2, "IK3DEF", "JN55AB", 100, "[Exc=TV]");
  AddContact("07/09/2024", "  2 m", 3, "DL1XYZ", "JN58AB", 100, "[Exc=XX]");
  contest.Square.Press();
  EXPECT_THAT(Export(contest), HasSubstr("CWWLs=3;0;1\r\nCWWLB=0\r\nCWWLs=3;0;3\r\nCExcB=0\r\n"
                                         "CDXCs=2;0;1\r\nCDXCB=0\r\nCToSc=900\r\n"));
  contest.Square.Press();
  contest.Country.Press();
  EXPECT_THAT(Export(contest), HasSubstr("CWWLs=3;0;3\r\nCWWLB=0\r\nCWWLs=3;0;1\r\nCExcB=0\r\n"
                                         "CDXCs=2;0;2\r\nCDXCB=0\r\nCToSc=1500\r\n"));
}

TEST_F(ContestExportTest, TheStagingTablesKeepWhatTheRecordsCounted) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  session.Db.Execute("insert into ContestWWL values ('AA00')");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC", "JN65AB", 100, "[Exc=VE]");
  AddContact("07/09/2024", "  2 m", 2, "DL1XYZ", "JN65CD", 100, "[Exc=]");
  Export(contest);
  EXPECT_EQ(Rows("select WWL from ContestWWL"), Texts{"JN65"});
  EXPECT_EQ(Rows("select Country from ContestDXC").size(), 2u);
  EXPECT_EQ(Rows("select Exc from ContestExc"), Texts{"VE"});
}

TEST_F(ContestExportTest, AnApostropheInAnExchangeIsAFailureThatLeavesTheOldFile) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC");
  const std::string before = Export(contest);
  AddContact("07/09/2024", "  2 m", 2, "IK3DEF", "JN65AB", 100, "[Exc=L''AQ]");
  Press(contest, "cmExport");
  EXPECT_THAT(Lines(), ElementsAre(StartsWith("error ")));
  EXPECT_EQ(ReadBytes(directory.Path() / "I4ABC.txt"), before);
  EXPECT_FALSE(session.Db.InTransaction());
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(ContestExportTest, ANullNoteIsAFailure) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC");
  session.Db.Execute("UPDATE [Contest Qso] SET [Note]=Null");
  Press(contest, "cmExport");
  EXPECT_THAT(Lines(), ElementsAre(StartsWith("error ")));
}

TEST_F(ContestFormTest, PrintingTakesTheScreenAndTheSignature) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC");
  contest.NomeContest.SetText("non salvato");
  Press(contest, "cmPrint");
  auto lines = Lines();
  EXPECT_EQ(lines.front(), "print picture \"Logo.bmp\" 3 10");
  EXPECT_THAT(lines, Contains("print text 46 1 left \"Times New Roman\" 10 plain \"non salvato\""));
  EXPECT_THAT(lines, testing::Not(Contains("print picture \"Sign.bmp\" 135 227")));
  EXPECT_EQ(lines.back(), "print end");
  std::ofstream(directory.Path() / "Sign.bmp") << "firma";
  Press(contest, "cmPrint");
  lines = Lines();
  EXPECT_THAT(lines, Contains("print picture \"Sign.bmp\" 135 227"));
  EXPECT_EQ(contest.Sign.Picture(), directory.Path() / "Sign.bmp");
}

TEST_F(ContestFormTest, PrintingWithoutContactsOnlyEndsTheDocument) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  Press(contest, "cmPrint");
  EXPECT_EQ(Lines(), Texts{"print end"});
}

TEST_F(ContestFormTest, AMissingPrinterIsAFailureOfTheEvent) {
  ContestForm& contest = OpenContest();
  Store(contest, "07/09/2024", "  2 m");
  AddContact("07/09/2024", "  2 m", 1, "IK3ABC");
  machine.GetPrinter().FailNext();
  Press(contest, "cmPrint");
  EXPECT_THAT(Lines(), ElementsAre(StartsWith("error ")));
  EXPECT_FALSE(machine.Host().Busy());
}

}  // namespace
}  // namespace brenvo::contest
