// The desktop with the station's own windows.
#include <algorithm>
#include <string>

#include "station/station.h"
#include "tests/support/station.h"

namespace brenvo::station {
namespace {

class Desktop : public StationTest {
 protected:
  Desktop() : StationTest(false) { frame = StartStation(session); }
  void Menu(const char* command) {
    Event([&] { frame->FindCommand(command)->Press(); });
  }
  std::string Saved() { return session.GetSetting("Desktop", "Window", "none"); }
  std::ptrdiff_t Open(std::string_view name) {
    const auto& loaded = session.Windows.Loaded();
    return std::count_if(loaded.begin(), loaded.end(),
                         [&](const forms::Window* window) { return window->Name() == name; });
  }
};

TEST_F(Desktop, SeveralWindowsOfAKindAreSavedAsOneToken) {
  Menu("cmLog");
  Menu("cmLog");
  Menu("cmContest");
  Menu("cmContest");
  Menu("cmSaveDesktop");
  EXPECT_EQ(Saved(), "LOG  CONTE");
}

TEST_F(Desktop, TokensStandInTheOrderOfTheTableWhateverWasOpenedFirst) {
  Menu("cmOldQso");
  Menu("cmWWConv");
  Menu("cmHrd");
  Menu("cmLog");
  Menu("cmSaveDesktop");
  EXPECT_EQ(Saved(), "LOG  HRD  WWCONOLDQS");
}

TEST_F(Desktop, AWindowThatHasNoTokenIsNotSaved) {
  Menu("cmUtente");
  Menu("cmPrefissi");
  Menu("cmSaveDesktop");
  EXPECT_EQ(Saved(), "");
}

TEST_F(Desktop, LoadingTwiceShowsTheSameWindows) {
  session.SaveSetting("Desktop", "Window", "LOG  HRD  OLDQS");
  Menu("cmLoadDesktop");
  const std::vector<forms::Window*> first = session.Windows.Loaded();
  Menu("cmLoadDesktop");
  EXPECT_EQ(session.Windows.Loaded(), first);
  EXPECT_EQ(first.size(), 4u);
}

TEST_F(Desktop, TheLogOfTheMenuIsAnotherThanTheDesktops) {
  session.SaveSetting("Desktop", "Window", "LOG  ");
  Menu("cmLog");
  Menu("cmLoadDesktop");
  EXPECT_EQ(Open("LogForm"), 2);
  Menu("cmLoadDesktop");
  EXPECT_EQ(Open("LogForm"), 2);
}

TEST_F(Desktop, AWindowThatWasClosedComesBack) {
  session.SaveSetting("Desktop", "Window", "HRD  ");
  Menu("cmLoadDesktop");
  Event([&] { session.Windows.Unload(*session.Windows.Find("Hrd")); });
  EXPECT_EQ(Open("Hrd"), 0);
  Menu("cmLoadDesktop");
  EXPECT_EQ(Open("Hrd"), 1);
}

TEST_F(Desktop, AClosedWindowIsNoLongerSaved) {
  Menu("cmLog");
  Menu("cmHrd");
  Event([&] { session.Windows.Unload(*session.Windows.Find("LogForm")); });
  Menu("cmSaveDesktop");
  EXPECT_EQ(Saved(), "HRD  ");
}

TEST_F(Desktop, SavingAsksAndTellsNothing) {
  Lines();
  Menu("cmSaveDesktop");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Saved(), "");
}

}  // namespace
}  // namespace brenvo::station
