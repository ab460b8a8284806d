#include "frame/desktop.h"

#include "core/shared_windows.h"
#include "tests/core/core_station.h"

namespace brenvo::frame {
namespace {

using Texts = std::vector<std::string>;
using DesktopTest = core::CoreStation;

TEST_F(DesktopTest, ASavedDesktopIsARowOfTokens) {
  session.Opened.LogOpen = session.Opened.FT736Open = session.Opened.WWConvOpen = true;
  Menu("cmSaveDesktop");
  EXPECT_EQ(session.GetSetting("Desktop", "Window", ""), "LOG  FT736WWCON");
  EXPECT_TRUE(Lines().empty());
}

TEST_F(DesktopTest, EveryKindOfWindowHasItsToken) {
  session.Opened.LogOpen = session.Opened.ContestOpen = session.Opened.FT736Open =
      session.Opened.TncOpen = session.Opened.TncTelnetOpen = session.Opened.WWConvOpen = true;
  session.Opened.Hrd = session.Opened.HrdMode = reinterpret_cast<core::MatrixWindow*>(1);
  session.Opened.OldQsoForm = session.Opened.OldQsoLocator = reinterpret_cast<core::FeedWindow*>(1);
  SaveDesktop(session);
  session.Opened.Hrd = session.Opened.HrdMode = nullptr;
  session.Opened.OldQsoForm = session.Opened.OldQsoLocator = nullptr;
  const std::string tokens = session.GetSetting("Desktop", "Window", "");
  EXPECT_EQ(tokens, "LOG  CONTEFT736HRD  HRDMOTNC  TNCTEWWCONOLDQSOLQSL");
  const Texts windows = {"LogForm", "Contest",   "FT736",  "Hrd",        "HrdMode",
                         "TNC",     "TNCtelnet", "WWConv", "OldQsoForm", "OldQsoLocator"};
  for (const std::string& name : windows) KnowChild(name);
  LoadDesktop(session);
  Texts loaded;
  for (forms::Window* window : session.Windows.Loaded()) loaded.push_back(window->Name());
  loaded.erase(loaded.begin());
  EXPECT_EQ(loaded, windows);
}

TEST_F(DesktopTest, WithoutASavedDesktopLoadingDoesNothing) {
  KnowChild("LogForm");
  Menu("cmLoadDesktop");
  EXPECT_EQ(session.Windows.Loaded().size(), 1u);
}

TEST_F(DesktopTest, LoadingTheDesktopTwiceOpensNoSecondCopy) {
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

TEST_F(DesktopTest, UnknownAndShortTokensArePassedOver) {
  KnowChild("LogForm");
  session.SaveSetting("Desktop", "Window", "èèèèèXXXXXLOG  LOG");
  Menu("cmLoadDesktop");
  EXPECT_EQ(session.Windows.Loaded().size(), 2u);
}

TEST_F(DesktopTest, TheWindowsThatCameLaterStandInAListOfTheirOwn) {
  KnowChild("Preferenze");
  KnowChild("LogForm");
  Menu("cmPreferenze");
  Menu("cmSaveDesktop");
  EXPECT_EQ(session.GetSetting("Desktop", "Window", "none"), "");
  EXPECT_EQ(session.GetSetting("Desktop", "Finestre", "none"), "Preferenze");
  session.Windows.Unload(*session.Windows.Find("Preferenze"));
  Menu("cmLoadDesktop");
  Menu("cmLoadDesktop");
  EXPECT_EQ(session.Windows.Loaded().size(), 2u);
  EXPECT_NE(session.Windows.Find("Preferenze"), nullptr);
}

TEST_F(DesktopTest, ANameThatIsNoneOfTheseIsPassedOver) {
  KnowChild("Preferenze");
  KnowChild("LogForm");
  session.SaveSetting("Desktop", "Finestre", "LogForm Preferenze2 preferenze");
  Menu("cmLoadDesktop");
  EXPECT_EQ(session.Windows.Loaded().size(), 1u);
}

}  // namespace
}  // namespace brenvo::frame
