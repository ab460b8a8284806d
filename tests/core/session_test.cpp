#include "core/session.h"
#include "file/database_file.h"

#include <fstream>
#include <set>

#include "core/shared_windows.h"
#include "forms/field_visit.h"
#include "station/station.h"
#include "tests/core/core_station.h"

namespace brenvo::core {
namespace {

using Texts = std::vector<std::string>;

// Stands for the selection dialog.
class Selection : public SelectionWindow {
 public:
  explicit Selection(Session& session)
      : SelectionWindow(session.Host(), "StatSel", "Selezione", base::Twips(100),
                        base::Twips(100)) {}
  bool ListsAll() const override { return false; }
  void OfferLayouts() override {}
  bool IsVertical() const override { return false; }
};

class SessionTest : public CoreStation {
 protected:
  // The commands of the menu, each with the menu that it stands in, null for the bar itself.
  std::vector<std::pair<const forms::Menu*, forms::Command*>> MenuCommands() const {
    std::vector<std::pair<const forms::Menu*, forms::Command*>> all;
    for (const forms::MenuItem& item : frame->MenuBar) {
      if (auto* const* command = std::get_if<forms::Command*>(&item)) {
        all.emplace_back(nullptr, *command);
      } else {
        const auto* menu = std::get<forms::Menu*>(item);
        for (const forms::MenuItem& inner : menu->Items)
          all.emplace_back(menu, std::get<forms::Command*>(inner));
      }
    }
    return all;
  }
};

TEST_F(SessionTest, OpeningReadsTheOwnLocatorAndOpensEveryTable) {
  EXPECT_EQ(session.Station.MyLocator, "JN65AA");
  for (engine::Table* table :
       {session.Tables.TbLog.get(), session.Tables.TbHrd.get(), session.Tables.TbContest.get(),
        session.Tables.TbContestQso.get(), session.Tables.TbPrefissi.get(),
        session.Tables.TbCountry.get(), session.Tables.TbProvincie.get(),
        session.Tables.TbNoteHelp.get(), session.Tables.TbUser.get(),
        session.Tables.TbUserRTX.get(), session.Tables.TbSquare.get()}) {
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
  session.Windows.LoadNew("One")->Move(
      {base::Twips(11), base::Twips(22), base::Twips(333), base::Twips(444)});
  session.Windows.LoadNew("Two");
  EXPECT_TRUE(session.Windows.Unload(*frame));
  EXPECT_EQ(session.GetSetting("One", "X", ""), "11");
  EXPECT_EQ(session.GetSetting("One", "H", ""), "444");
  EXPECT_EQ(session.GetSetting("Two", "W", ""), "3000");
  EXPECT_EQ(session.GetSetting("Brenvo", "W", ""), "15360");
  EXPECT_FALSE(session.IsOpen());
  EXPECT_EQ(session.Tables.TbLog, nullptr);
}

TEST_F(SessionTest, AChildThatRefusesStopsTheShutdownAndComesToTheFront) {
  KnowChild("One");
  KnowChild("Two");
  KnowChild("Three");
  session.Windows.LoadNew("One");
  forms::Window* stubborn = session.Windows.LoadNew("Two");
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
  forms::Window* window = session.Windows.LoadNew("One");
  window->Moved(window->GetBounds(), forms::WindowState::kMaximised);
  window->Close();
  EXPECT_EQ(session.GetSetting("One", "X", "none"), "none");
}

TEST_F(SessionTest, APlaceThatMakesNoSenseIsPassedOver) {
  KnowChild("One");
  session.SaveSetting("One", "W", "1e99");
  session.SaveSetting("One", "X", "-500");
  forms::Window* window = session.Windows.LoadNew("One");
  EXPECT_EQ(window->Width(), base::Twips(3000));
  EXPECT_EQ(window->GetBounds().left, base::Twips(-500));
}

TEST_F(SessionTest, TheMenuIsWholeAndEveryNameStandsOnce) {
  std::set<std::string> names;
  for (const auto& [menu, command] : MenuCommands()) {
    EXPECT_TRUE(names.insert(command->Name()).second) << command->Name();
    EXPECT_EQ(frame->FindCommand(command->Name()), command);
  }
  EXPECT_EQ(names.size(), 66u);
  EXPECT_EQ(frame->MenuBar.size(), 8u);
  // Every command that the frame has stands in its menu.
  for (forms::Field* field : frame->Fields()) {
    if (forms::FieldAs<forms::Command>(*field) == nullptr) continue;
    EXPECT_TRUE(names.contains(field->Name())) << field->Name();
  }
}

TEST_F(SessionTest, ACommandWhoseWindowDoesNotExistDoesNothing) {
  const std::set<const forms::Command*> withoutWindow = {
      &frame->cmAzzeraLog, &frame->cmAzzeraContest, &frame->cmAssegnaPrefissi, &frame->cmCompatta};
  for (const auto& [menu, command] : MenuCommands()) {
    if (!withoutWindow.contains(command)) Menu(command->Name());
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
  session.Opened.TncOpen = true;
  Menu("cmTNC");
  EXPECT_NE(session.Windows.Find("WWConv"), nullptr);
  session.Opened.WWConvOpen = true;
  Menu("cmTNC");
  EXPECT_EQ(session.Windows.Loaded().size(), 3u);
}

TEST_F(SessionTest, AStatisticAsksForItsSelectionFirst) {
  session.Windows.Register("StatSel", [this] { return std::make_unique<Selection>(session); });
  KnowChild("SField");
  std::string asked;
  InDialogs([&](forms::Window& dialog) {
    asked = dialog.Tag;
    dialog.Tag = "Cancel";
    dialog.Hide();
  });
  session.Handed.QueryText = "before";
  Menu("cmSField");
  EXPECT_EQ(asked, "FIELD");
  EXPECT_EQ(session.Handed.QueryText, "before");
  EXPECT_EQ(session.Windows.Loaded().size(), 1u);
  InDialogs([&](forms::Window& dialog) {
    dialog.Tag = "WHERE Banda='  2 m'";
    dialog.Hide();
  });
  Menu("cmSField");
  Menu("cmSField");
  EXPECT_EQ(session.Handed.QueryText, "WHERE Banda='  2 m'");
  EXPECT_EQ(session.Windows.Loaded().size(), 3u);
  EXPECT_EQ(session.Windows.Find("StatSel"), nullptr);
}

TEST_F(SessionTest, AMapRequestWithinTheSameSecondIsNoneTheSecondTime) {
  int shown = 0;
  frame->OnDisplayMap = [&](std::string_view) { ++shown; };
  session.DisplayMap("FIELD");
  EXPECT_EQ(frame->HDisplayMappa.Text(), "FIELD04:05:06");
  session.DisplayMap("FIELD");
  EXPECT_EQ(shown, 1);
  machine.Advance(1000);
  session.DisplayMap("FIELD");
  EXPECT_EQ(shown, 2);
}

TEST_F(SessionTest, TheFirstStepIsToldUntilTheProfileIsTheOperatorsOwn) {
  EXPECT_NE(frame->PrimoPasso.Text().find("Tabella Utente (Ctrl+U)"), std::string::npos);
  session.Tables.TbUser->Edit();
  session.Tables.TbUser->Set("Call", "IK3XXX");
  session.Tables.TbUser->Update();
  session.Station.ProfileStored();
  EXPECT_EQ(frame->PrimoPasso.Text(), "");
}

TEST_F(SessionTest, AStoredProfileIsToldToWhoeverHasSubscribedAsLongAsHeIsThere) {
  int told = 0;
  {
    const auto listening = session.Station.ProfileStored.Subscribe([&] { ++told; });
    session.Station.ProfileStored();
    frame->PrimoPasso.SetText("");
    session.Station.ProfileStored();
    EXPECT_NE(frame->PrimoPasso.Text(), "") << "the frame listens too";
  }
  session.Station.ProfileStored();
  EXPECT_EQ(told, 2);
}

TEST_F(SessionTest, AStatisticWhoseSelectionIsClosedWithoutAnAnswerOpensNothing) {
  session.Windows.Register("StatSel", [this] { return std::make_unique<Selection>(session); });
  KnowChild("SField");
  InDialogs([&](forms::Window& dialog) { session.Windows.Unload(dialog); });
  session.Handed.QueryText = "before";
  Menu("cmSField");
  EXPECT_EQ(session.Handed.QueryText, "before");
  EXPECT_EQ(session.Windows.Loaded().size(), 1u);
}

TEST_F(SessionTest, ARequestWrittenIntoTheHiddenFieldRunsTheMapAsOneFromWithinDoes) {
  Texts shown;
  frame->OnDisplayMap = [&](std::string_view request) { shown.emplace_back(request); };
  frame->HDisplayMappa.SetText("FIELD");
  session.DisplayMap("FIELD");
  EXPECT_EQ(shown, (Texts{"FIELD", "FIELD04:05:06"}));
  EXPECT_EQ(frame->HDisplayMappa.Text(), "FIELD04:05:06");
}

TEST_F(SessionTest, EveryMenuHasAShortcutAndNoShortcutIsGivenTwice) {
  std::set<std::string> shortcuts;
  std::set<const forms::Menu*> menus, reached;
  for (const auto& [menu, command] : MenuCommands()) {
    menus.insert(menu);
    if (command->Shortcut().empty()) continue;
    EXPECT_TRUE(shortcuts.insert(command->Shortcut()).second) << command->Shortcut();
    reached.insert(menu);
  }
  EXPECT_EQ(reached, menus);
}

class StartTest : public StationTest {
 protected:
  StartTest() : StationTest(false) {}
  std::string Start() {
    EXPECT_EQ(station::StartStation(session), nullptr);
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
  file::OpenDatabaseFile(directory.Path() / "Brenvo.mdb").Execute("delete * from [User]");
  EXPECT_NE(Start().find("User"), std::string::npos);
}

TEST_F(StartTest, AFileOfAnotherKindIsRefused) {
  std::ofstream(directory.Path() / "Brenvo.mdb", std::ios::trunc) << "this is no database at all";
  EXPECT_NE(Start().find("3343"), std::string::npos);
}

TEST_F(StartTest, TheStationStartsAndStops) {
  ASSERT_NE(station::StartStation(session), nullptr);
  EXPECT_TRUE(Lines().empty());
  EXPECT_TRUE(station::StopStation(session));
  EXPECT_FALSE(session.IsOpen());
}

TEST_F(SessionTest, WithoutItsSettingTheManagerPathIsEmpty) {
  EXPECT_EQ(session.Station.ManagerPath, "");
}

}  // namespace
}  // namespace brenvo::core
