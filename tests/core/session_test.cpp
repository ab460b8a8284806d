#include "core/session.h"

#include <sqlite3.h>

#include <fstream>
#include <optional>
#include <set>

#include "core/desktop.h"
#include "core/files.h"
#include "core/maintenance.h"
#include "core/modules.h"
#include "core/prefix.h"
#include "core/shared_windows.h"
#include "station/station.h"
#include "tests/support/station.h"

namespace brenvo {
namespace {

using Texts = std::vector<std::string>;

// A child that saves its place, and can refuse to close.
class Child : public Window {
 public:
  Child(Session& session, std::string name)
      : Window(session.Host(), name, name, Twips(3000), Twips(2000)), session_(session) {}
  void Load() override { RestoreWindow(session_, *this, Name()); }
  bool QueryUnload() override { return !Tag.starts_with("refuse"); }
  void Unload() override { SaveWindow(session_, *this, Name()); }

 private:
  Session& session_;
};

class SessionTest : public StationTest {
 protected:
  void KnowChild(const std::string& name) {
    session.Windows.Register(name, [this, name] { return std::make_unique<Child>(session, name); });
  }
  void Menu(std::string_view command) {
    Event([&] { frame->FindCommand(command)->Press(); });
  }
};

TEST_F(SessionTest, OpeningReadsTheOwnLocatorAndOpensEveryTable) {
  EXPECT_EQ(session.MyLocator, "JN65AA");
  for (Table* table : {session.TbLog.get(), session.TbHrd.get(), session.TbContest.get(),
                       session.TbContestQso.get(), session.TbPrefissi.get(),
                       session.TbCountry.get(), session.TbProvincie.get(), session.TbNoteHelp.get(),
                       session.TbUser.get(), session.TbUserRTX.get(), session.TbSquare.get()}) {
    EXPECT_NE(table, nullptr);
  }
}

TEST_F(SessionTest, OnlyTheExactDevelopmentPathIsReplaced) {
  const std::string path = "D:\\Programmi\\Radioamatori\\BrenvoSviluppo";
  EXPECT_EQ(Session(machine, path).AppPath, "D:\\Programmi\\Radioamatori\\Brenvo");
  for (const char* other : {"D:\\programmi\\Radioamatori\\BrenvoSviluppo",
                            "D:\\Programmi\\Radioamatori\\BrenvoSviluppo\\",
                            "C:\\Programmi\\Radioamatori\\BrenvoSviluppo"}) {
    EXPECT_EQ(Session(machine, other).AppPath, other);
  }
}

TEST_F(SessionTest, ClosingTheFrameUnloadsEveryChildFirstAndSavesItsPlace) {
  KnowChild("One");
  KnowChild("Two");
  session.Windows.LoadNew("One")->Move({Twips(11), Twips(22), Twips(333), Twips(444)});
  session.Windows.LoadNew("Two");
  EXPECT_TRUE(session.Windows.Unload(*frame));
  EXPECT_EQ(session.GetSetting("One", "X", ""), "11");
  EXPECT_EQ(session.GetSetting("One", "H", ""), "444");
  EXPECT_EQ(session.GetSetting("Two", "W", ""), "3000");
  EXPECT_EQ(session.GetSetting("Brenvo", "W", ""), "15360");
  EXPECT_FALSE(session.IsOpen());
  EXPECT_EQ(session.TbLog, nullptr);
}

TEST_F(SessionTest, AChildThatRefusesStopsTheShutdownAndComesToTheFront) {
  KnowChild("One");
  KnowChild("Two");
  KnowChild("Three");
  session.Windows.LoadNew("One");
  Window* stubborn = session.Windows.LoadNew("Two");
  stubborn->Tag = "refuse";
  session.Windows.LoadNew("Three");
  EXPECT_FALSE(session.Windows.Unload(*frame));
  EXPECT_EQ(session.Windows.Find("One"), nullptr);
  EXPECT_NE(session.Windows.Find("Three"), nullptr);
  EXPECT_EQ(machine.Host().Front(), stubborn);
  EXPECT_TRUE(session.IsOpen());
  stubborn->Tag.clear();
  EXPECT_TRUE(session.Windows.Unload(*frame));
}

TEST_F(SessionTest, OnlyANormalWindowSavesItsPlace) {
  KnowChild("One");
  Window* window = session.Windows.LoadNew("One");
  window->Moved(window->GetBounds(), WindowState::kMaximised);
  window->Close();
  EXPECT_EQ(session.GetSetting("One", "X", "none"), "none");
}

TEST_F(SessionTest, APlaceThatMakesNoSenseIsPassedOver) {
  KnowChild("One");
  session.SaveSetting("One", "W", "1e99");
  session.SaveSetting("One", "X", "-500");
  Window* window = session.Windows.LoadNew("One");
  EXPECT_EQ(window->Width(), Twips(3000));
  EXPECT_EQ(window->GetBounds().left, Twips(-500));
}

TEST_F(SessionTest, TheMenuIsWholeAndEveryNameStandsOnce) {
  std::set<std::string_view> names;
  for (const MainCommand& command : MainMenu()) {
    EXPECT_TRUE(names.insert(command.name).second) << command.name;
    ASSERT_NE(frame->FindCommand(command.name), nullptr) << command.name;
    EXPECT_EQ(frame->FindCommand(command.name)->Caption(), command.caption);
  }
  EXPECT_EQ(names.size(), 49u);
  EXPECT_EQ(frame->MenuBar.size(), 8u);
}

TEST_F(SessionTest, ACommandWhoseWindowDoesNotExistDoesNothing) {
  for (const MainCommand& command : MainMenu()) {
    if (command.name.starts_with("cmAzzera") || command.name == "cmAssegnaPrefissi" ||
        command.name == "cmCompatta") {
      continue;
    }
    Menu(command.name);
  }
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(session.Windows.Loaded().size(), 1u);
}

TEST_F(SessionTest, LogAndContestOpenAFreshWindowEachTimeAndTheOthersOnce) {
  KnowChild("LogForm");
  KnowChild("User");
  Menu("cmLog");
  Menu("cmLog");
  Menu("cmUtente");
  Menu("cmUtente");
  EXPECT_EQ(session.Windows.Loaded().size(), 4u);
}

TEST_F(SessionTest, TheRadioTerminalsCommandLeadsOnToTheChatAndThenNowhere) {
  KnowChild("TNC");
  KnowChild("WWConv");
  Menu("cmTNC");
  EXPECT_NE(session.Windows.Find("TNC"), nullptr);
  session.TncOpen = true;
  Menu("cmTNC");
  EXPECT_NE(session.Windows.Find("WWConv"), nullptr);
  session.WWConvOpen = true;
  Menu("cmTNC");
  EXPECT_EQ(session.Windows.Loaded().size(), 3u);
}

TEST_F(SessionTest, AStatisticAsksForItsSelectionFirst) {
  KnowChild("StatSel");
  KnowChild("SField");
  std::string asked;
  InDialogs([&](Window& dialog) {
    asked = dialog.Tag;
    dialog.Tag = "Cancel";
    dialog.Hide();
  });
  session.QueryText = "before";
  Menu("cmSField");
  EXPECT_EQ(asked, "FIELD");
  EXPECT_EQ(session.QueryText, "before");
  EXPECT_EQ(session.Windows.Loaded().size(), 1u);
  InDialogs([&](Window& dialog) {
    dialog.Tag = "WHERE Banda='  2 m'";
    dialog.Hide();
  });
  Menu("cmSField");
  Menu("cmSField");
  EXPECT_EQ(session.QueryText, "WHERE Banda='  2 m'");
  EXPECT_EQ(session.Windows.Loaded().size(), 3u);
  EXPECT_EQ(session.Windows.Find("StatSel"), nullptr);
}

TEST_F(SessionTest, AMapRequestWithinTheSameSecondIsNoneTheSecondTime) {
  int shown = 0;
  frame->OnDisplayMap = [&] { ++shown; };
  session.DisplayMap("FIELD");
  EXPECT_EQ(frame->HDisplayMappa.Text(), "FIELD04:05:06");
  session.DisplayMap("FIELD");
  EXPECT_EQ(shown, 1);
  machine.Advance(1000);
  session.DisplayMap("FIELD");
  EXPECT_EQ(shown, 2);
}

TEST_F(SessionTest, PrefixesAreAssignedToTheWholeLogAndOthersKeepTheirs) {
  session.Db.Execute("insert into Log (DataQso,Call,Country) values ('05/01/2001','IK3ABC','XX')");
  session.Db.Execute(
      "insert into Log (DataQso,Call,Prefisso,[Zona CQ],Continente) values "
      "('05/01/2001','NODIGIT','OLD',7,'SA')");
  machine.Messages().QueueAnswer(false);
  Menu("cmAssegnaPrefissi");
  EXPECT_EQ(Lines(), Texts{"question \"Assegnazione Prefissi\" \"Confermi l'operazione ?\" no"});
  EXPECT_EQ(Rows("select Prefisso from Log where Call='IK3ABC'"), Texts{""});
  machine.Messages().QueueAnswer(true);
  Menu("cmAssegnaPrefissi");
  EXPECT_EQ(Rows("select Prefisso,[Zona CQ],[Zona ITU],Continente,Country from Log order by QsoNr"),
            (Texts{"IK3  |15|28|EU|XX", "OLD|7||SA|"}));
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(SessionTest, ThePrefixesOfContactsThatHaveThemAreNotWrittenAgain) {
  session.Db.Execute("insert into Log (DataQso,Call,Banda) values ('01/02/2001','IK3ABC','  2 m')");
  const std::string changes = "select count(*) from Log where Prefisso='IK3'";
  for (int i = 0; i < 2; ++i) {
    machine.Messages().QueueAnswer(true);
    Menu("cmAssegnaPrefissi");
  }
  EXPECT_EQ(Rows(changes), Texts{"1"});
  const auto before = session.Db.Counters().rowsStepped;
  machine.Messages().QueueAnswer(true);
  Menu("cmAssegnaPrefissi");
  // The contact, how many there are, and the row of the prefix, twice.
  EXPECT_LE(session.Db.Counters().rowsStepped - before, 6);
}

TEST_F(SessionTest, ThePrefixesThatWereAssignedBeforeTheOperatorStoppedStay) {
  session.Db.BeginTrans();
  for (int i = 0; i < 2500; ++i) {
    session.Db.Execute("insert into Log (DataQso,Call,Banda) values ('01/02/2001','IK3A" +
                       std::to_string(i) + "','  2 m')");
  }
  session.Db.CommitTrans();
  machine.StopProgressAt(2000);
  machine.Messages().QueueAnswer(true);
  Menu("cmAssegnaPrefissi");
  EXPECT_EQ(Rows("select count(*) from Log where [Zona CQ]=15"), Texts{"2000"});
  EXPECT_FALSE(session.Db.InTransaction());
}

TEST_F(SessionTest, ThePrefixesThatWereAssignedBeforeAFailureStay) {
  for (const char* call : {"IK3ABC", "IK4ABC", "IK3DEF", "IK5ABC"}) {
    session.Db.Execute(std::string("insert into Log (DataQso,Call,Banda) values ('01/02/2001','") +
                       call + "','  2 m')");
  }
  sqlite3* beside = nullptr;
  ASSERT_EQ(sqlite3_open((directory.Path() / "Brenvo.mdb").c_str(), &beside), SQLITE_OK);
  ASSERT_EQ(
      sqlite3_exec(beside, "CREATE UNIQUE INDEX Once ON Log (Prefisso)", nullptr, nullptr, nullptr),
      SQLITE_OK);
  sqlite3_close(beside);
  machine.Messages().QueueAnswer(true);
  Menu("cmAssegnaPrefissi");
  EXPECT_EQ(Rows("select Call from Log where [Zona CQ]=15"), (Texts{"IK3ABC", "IK4ABC"}));
  EXPECT_FALSE(session.Db.InTransaction());
}

TEST_F(SessionTest, AnEmptyLogTakesThePrefixesInItsStride) {
  machine.Messages().QueueAnswer(true);
  Menu("cmAssegnaPrefissi");
  EXPECT_EQ(Lines().size(), 1u);
}

TEST_F(SessionTest, ACallResolvesThroughTheFirstRowOfItsPrefix) {
  Table& prefissi = *session.TbPrefissi;
  EXPECT_EQ(ResolvePrefix(session, "IK3ABC").Country, "I");
  EXPECT_EQ(prefissi.Field("Zona CQ").Integer(), 15);
  EXPECT_EQ(ResolvePrefix(session, "IK3ABC").Prefisso, "IK3");
  EXPECT_EQ(ResolvePrefix(session, "DL/K1ABC").Prefisso, "");
  EXPECT_EQ(ResolvePrefix(session, "ZZ9ZZZ999ZZ").Country, ResolvePrefix(session, "ZZ9Z").Country);
}

TEST_F(SessionTest, ACandidateBehindEveryPrefixFindsNothing) {
  EXPECT_EQ(ResolvePrefix(session, "ŽŽ9A").Prefisso, "");
}

TEST_F(SessionTest, ACandidateThatBeginsALongerPrefixIsNotThatPrefix) {
  session.Db.Execute("delete * from Prefissi where Prefisso like 'DL1*'");
  session.Db.Execute("insert into Prefissi values ('DL10','DL',14,28,'EU')");
  EXPECT_EQ(ResolvePrefix(session, "DL1ABC").Prefisso, "");
  EXPECT_EQ(ResolvePrefix(session, "DL10ABC").Prefisso, "DL10");
}

TEST_F(SessionTest, OfSeveralRowsOfAPrefixTheLowestZonesComeFirst) {
  session.Db.Execute("insert into Prefissi values ('QQ1','A',20,30,'EU')");
  session.Db.Execute("insert into Prefissi values ('QQ1','B',15,40,'EU')");
  session.Db.Execute("insert into Prefissi values ('QQ1','C',15,28,'EU')");
  EXPECT_EQ(ResolvePrefix(session, "QQ1A").Country, "C");
}

TEST_F(SessionTest, ARowWithoutAZoneIsNotTheFirstOfItsPrefix) {
  session.Db.Execute("insert into Prefissi (Prefisso,Country) values ('QQ1','A')");
  EXPECT_EQ(ResolvePrefix(session, "QQ1A").Prefisso, "");
  session.Db.Execute("insert into Prefissi values ('QQ1','B',0,0,'EU')");
  EXPECT_EQ(ResolvePrefix(session, "QQ1A").Country, "B");
}

TEST_F(SessionTest, ACountryOfNullResolvesToAnEmptyText) {
  session.Db.Execute(
      "insert into Prefissi (Prefisso,[Zona CQ],[Zona ITU],Continente) values "
      "('QQ1',1,1,'EU')");
  const ResolvedPrefix resolved = ResolvePrefix(session, "QQ1A");
  EXPECT_EQ(resolved.Prefisso, "QQ1");
  EXPECT_EQ(resolved.Country, "");
}

TEST_F(SessionTest, ASavedDesktopIsARowOfTokens) {
  session.LogOpen = session.FT736Open = session.WWConvOpen = true;
  Menu("cmSaveDesktop");
  EXPECT_EQ(session.GetSetting("Desktop", "Window", ""), "LOG  FT736WWCON");
  EXPECT_TRUE(Lines().empty());
}

TEST_F(SessionTest, EveryKindOfWindowHasItsToken) {
  session.LogOpen = session.ContestOpen = session.FT736Open = session.TncOpen =
      session.TncTelnetOpen = session.WWConvOpen = true;
  session.Hrd = session.HrdMode = reinterpret_cast<MatrixWindow*>(1);
  session.OldQsoForm = session.OldQsoLocator = reinterpret_cast<FeedWindow*>(1);
  SaveDesktop(session);
  session.Hrd = session.HrdMode = nullptr;
  session.OldQsoForm = session.OldQsoLocator = nullptr;
  const std::string tokens = session.GetSetting("Desktop", "Window", "");
  EXPECT_EQ(tokens, "LOG  CONTEFT736HRD  HRDMOTNC  TNCTEWWCONOLDQSOLQSL");
  const Texts windows = {"LogForm", "Contest",   "FT736",  "Hrd",        "HrdMode",
                         "TNC",     "TNCtelnet", "WWConv", "OldQsoForm", "OldQsoLocator"};
  for (const std::string& name : windows) KnowChild(name);
  LoadDesktop(session);
  Texts loaded;
  for (Window* window : session.Windows.Loaded()) loaded.push_back(window->Name());
  loaded.erase(loaded.begin());
  EXPECT_EQ(loaded, windows);
}

TEST_F(SessionTest, WithoutASavedDesktopLoadingDoesNothing) {
  KnowChild("LogForm");
  Menu("cmLoadDesktop");
  EXPECT_EQ(session.Windows.Loaded().size(), 1u);
}

TEST_F(SessionTest, LoadingTheDesktopTwiceOpensNoSecondCopy) {
  KnowChild("LogForm");
  KnowChild("User");
  session.SaveSetting("Desktop", "Window", "LOG  ");
  Menu("cmLoadDesktop");
  Menu("cmLoadDesktop");
  EXPECT_EQ(session.Windows.Loaded().size(), 2u);
  // The menu's log is another window than the desktop's.
  Menu("cmLog");
  EXPECT_EQ(session.Windows.Loaded().size(), 3u);
}

TEST_F(SessionTest, UnknownAndShortTokensArePassedOver) {
  KnowChild("LogForm");
  session.SaveSetting("Desktop", "Window", "èèèèèXXXXXLOG  LOG");
  Menu("cmLoadDesktop");
  EXPECT_EQ(session.Windows.Loaded().size(), 2u);
}

TEST_F(SessionTest, EmptyingTheLogAsksFirst) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','A')");
  machine.Messages().QueueAnswer(false);
  Menu("cmAzzeraLog");
  EXPECT_EQ(Rows("select Call from Log").size(), 1u);
  machine.Messages().QueueAnswer(true);
  Menu("cmAzzeraLog");
  EXPECT_TRUE(Rows("select Call from Log").empty());
  EXPECT_EQ(Lines(), (Texts{"question \"Azzeramento Log\" \"Confermi l'operazione ?\" no",
                            "question \"Azzeramento Log\" \"Confermi l'operazione ?\" yes"}));
}

TEST_F(SessionTest, EmptyingTheContestsTakesContactsAndHeaders) {
  session.Db.Execute("insert into Contest (DataContest,Banda) values ('05/01/2001','  2 m')");
  session.Db.Execute(
      "insert into [Contest Qso] (DataContest,Banda,ProgrDato) values "
      "('05/01/2001','  2 m',1)");
  machine.Messages().QueueAnswer(true);
  Menu("cmAzzeraContest");
  EXPECT_TRUE(Rows("select Banda from Contest").empty());
  EXPECT_TRUE(Rows("select Banda from [Contest Qso]").empty());
  EXPECT_EQ(Lines(), Texts{"question \"Azzeramento Contest\" \"Confermi l'operazione ?\" yes"});
}

TEST_F(SessionTest, TheFirstCompactionMakesABackupAndTheSecondReplacesIt) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','A')");
  Menu("cmCompatta");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Rows("select Call from Log"), Texts{"A"});
  const auto contacts = [&](const char* file) {
    Database db = Database::Open(directory.Path() / file);
    return db.OpenSnapshot("select Count(*) as N from Log")->Field(0).Integer();
  };
  EXPECT_EQ(contacts("Brenvo.BAK"), 1);
  session.Db.Execute("insert into Log (DataQso,Call) values ('06/01/2001','B')");
  Menu("cmCompatta");
  EXPECT_EQ(contacts("Brenvo.BAK"), 2);
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "BrenvoNEW.MDB"));
  // Every handle serves again.
  EXPECT_EQ(session.MyLocator, "JN65AA");
  EXPECT_EQ(ResolvePrefix(session, "IK3ABC").Country, "I");
}

TEST_F(SessionTest, ACompactionThatFailsEndsTheProgramUnderItsTitle) {
  std::filesystem::create_directory(directory.Path() / "BrenvoNEW.MDB");
  std::ofstream(directory.Path() / "BrenvoNEW.MDB" / "x") << "x";
  EXPECT_THROW(Menu("cmCompatta"), ProgramEnded);
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[0].starts_with("message critical \"Compact Database\" \" ")) << lines[0];
  EXPECT_EQ(lines[1], "end-program");
}

// The number of contacts in a file of the directory; none where there is no such file.
std::optional<std::int64_t> ContactsIn(const std::filesystem::path& file) {
  if (!std::filesystem::exists(file)) return std::nullopt;
  Database db = Database::Open(file);
  return db.OpenSnapshot("select Count(*) as N from Log")->Field(0).Integer();
}

// The power goes after the first n steps of a compaction, for each n.
class InterruptedCompaction : public StationTest, public testing::WithParamInterface<std::size_t> {
 protected:
  InterruptedCompaction() : StationTest(false) {
    std::ofstream(directory.Path() / "Brenvo.BAK") << "the backup of last month";
    Session interrupted(machine, directory.Path());
    interrupted.Open();
    interrupted.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','A')");
    for (std::size_t i = 0; i < GetParam(); ++i) CompactionSteps()[i](interrupted);
  }
};

TEST_P(InterruptedCompaction, LeavesTheDataInOneOfItsFiles) {
  const std::optional<std::int64_t> database = ContactsIn(directory.Path() / "Brenvo.mdb");
  if (database) {
    EXPECT_EQ(database, 1);
    return;
  }
  EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.BAK"), 1);
  EXPECT_EQ(ContactsIn(directory.Path() / "BrenvoNEW.MDB"), 1);
}

TEST_P(InterruptedCompaction, TheNextStartOpensTheDataOrSaysWhereItIs) {
  const bool present = std::filesystem::exists(directory.Path() / "Brenvo.mdb");
  if (!present) machine.Messages().QueueAnswer(false);  // the backup is offered, and not wanted
  EXPECT_EQ(StartStation(session) != nullptr, present);
  if (present) {
    EXPECT_TRUE(Lines().empty());
    EXPECT_EQ(Rows("select Call from Log"), Texts{"A"});
    // And the next compaction is not disturbed by what the last one left.
    Event([&] { session.Windows.Find("Brenvo")->FindCommand("cmCompatta")->Press(); });
    EXPECT_TRUE(Lines().empty());
    EXPECT_EQ(Rows("select Call from Log"), Texts{"A"});
    EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.BAK"), 1);
    return;
  }
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_NE(lines[0].find("C'e' Brenvo.BAK, di una compattazione interrotta, con 1 QSO."),
            std::string::npos)
      << lines[0];
  EXPECT_NE(lines[1].find("BrenvoNEW.MDB: rinominarlo in Brenvo.mdb."), std::string::npos)
      << lines[1];
}

INSTANTIATE_TEST_SUITE_P(EachStep, InterruptedCompaction,
                         testing::Range<std::size_t>(0, CompactionSteps().size() + 1));

TEST_F(SessionTest, ABackupThatCannotGoStopsTheCompactionWithTheDataInPlace) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','A')");
  std::filesystem::create_directory(directory.Path() / "Brenvo.BAK");
  std::ofstream(directory.Path() / "Brenvo.BAK" / "x") << "x";
  EXPECT_THROW(Menu("cmCompatta"), ProgramEnded);
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[0].starts_with("message critical \"Compact Database\" \" 75 - ")) << lines[0];
  EXPECT_EQ(lines[1], "end-program");
  EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.mdb"), 1);
}

TEST_F(SessionTest, ADatabaseThatAnotherProgramHasOpenIsNotRenamedUnderIt) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','A')");
  Database other = Database::Open(directory.Path() / "Brenvo.mdb");
  const auto reading = other.OpenSnapshot("select Call from Log");
  EXPECT_THROW(Menu("cmCompatta"), ProgramEnded);
  EXPECT_EQ(Lines().front(),
            "message critical \"Compact Database\" "
            "\" 3260 - Il database e' aperto in un altro programma.\"");
  EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.mdb"), 1);
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "Brenvo.BAK"));
}

TEST_F(SessionTest, ACompactionLeavesTheHandleOfHrdAlone) {
  const Table* const before = session.TbHrd.get();
  Menu("cmCompatta");
  EXPECT_EQ(session.TbHrd.get(), before);
}

TEST_F(SessionTest, EmptyingTheContestsTakesTheContactsBeforeTheirHeaders) {
  // With neither table in the file, the failure names the one that is emptied first.
  sqlite3* file = nullptr;
  ASSERT_EQ(sqlite3_open((directory.Path() / "Brenvo.mdb").c_str(), &file), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(file, "DROP TABLE \"Contest Qso\"; DROP TABLE \"Contest\"", nullptr,
                         nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(file);
  machine.Messages().QueueAnswer(true);
  Menu("cmAzzeraContest");
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[1].starts_with("error ")) << lines[1];
  EXPECT_NE(lines[1].find("Contest Qso"), std::string::npos) << lines[1];
}

TEST_F(SessionTest, TheFirstStepIsToldUntilTheProfileIsTheOperatorsOwn) {
  EXPECT_NE(frame->PrimoPasso.Text().find("Tabella Utente (Ctrl+U)"), std::string::npos);
  session.TbUser->Edit();
  session.TbUser->Set("Call", "IK3XXX");
  session.TbUser->Update();
  session.OnProfileStored();
  EXPECT_EQ(frame->PrimoPasso.Text(), "");
}

TEST_F(SessionTest, EveryMenuHasAShortcutAndNoShortcutIsGivenTwice) {
  std::set<std::string_view> shortcuts, menus, reached;
  for (const MainCommand& command : MainMenu()) {
    menus.insert(command.menu);
    if (command.shortcut.empty()) continue;
    EXPECT_TRUE(shortcuts.insert(command.shortcut).second) << command.shortcut;
    reached.insert(command.menu);
  }
  EXPECT_EQ(reached, menus);
}

class StartTest : public StationTest {
 protected:
  StartTest() : StationTest(false) {}
  std::string Start() {
    EXPECT_EQ(StartStation(session), nullptr);
    const Texts lines = Lines();
    return lines.empty() ? std::string() : lines.front();
  }
};

TEST_F(StartTest, AMissingDatabaseIsNamed) {
  std::filesystem::remove(directory.Path() / "Brenvo.mdb");
  const std::string told = Start();
  EXPECT_TRUE(told.starts_with("message critical \"Brenvo\" \"3024 - ")) << told;
  EXPECT_NE(told.find("Brenvo.mdb"), std::string::npos) << told;
}

TEST_F(StartTest, AnEmptyUserTableIsNamed) {
  Database::Open(directory.Path() / "Brenvo.mdb").Execute("delete * from [User]");
  EXPECT_NE(Start().find("User"), std::string::npos);
}

TEST_F(StartTest, AFileOfAnotherKindIsRefused) {
  std::ofstream(directory.Path() / "Brenvo.mdb", std::ios::trunc) << "this is no database at all";
  EXPECT_NE(Start().find("3343"), std::string::npos);
}

TEST_F(StartTest, TheStationStartsAndStops) {
  ASSERT_NE(StartStation(session), nullptr);
  EXPECT_TRUE(Lines().empty());
  EXPECT_TRUE(StopStation(session));
  EXPECT_FALSE(session.IsOpen());
}

TEST_F(SessionTest, WithoutItsSettingTheManagerPathIsEmpty) { EXPECT_EQ(session.ManagerPath, ""); }

}  // namespace
}  // namespace brenvo
