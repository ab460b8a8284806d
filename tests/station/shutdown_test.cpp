// The end of a session with the station's own windows.
#include <map>
#include <string>

#include "station/station.h"
#include "tests/support/station.h"

namespace brenvo::station {
namespace {

// A window that the main menu opens by itself, and the section of its place in the settings.
struct OpenWindow {
  const char* command;
  const char* window;
  const char* section;
};
constexpr OpenWindow kTwelve[] = {
    {"cmLog", "LogForm", "Log"},
    {"cmContest", "Contest", "Contest"},
    {"cmHrd", "Hrd", "Hrd"},
    {"cmHrdMode", "HrdMode", "HrdMode"},
    {"cmOldQso", "OldQsoForm", "OldQso"},
    {"cmOldQsoLocator", "OldQsoLocator", "OldQsoLocator"},
    {"cmTNC", "TNC", "TNC"},
    {"cmDXClusterTelnet", "TNCtelnet", "TNCTelnet"},
    {"cmWWConv", "WWConv", "WWConv"},
    {"cmFT736", "FT736", "FT736"},
    {"cmPrefissi", "TabellaPrefissi", "Prefissi"},
    {"cmUtente", "User", "User"},
};

class Shutdown : public StationTest {
 protected:
  Shutdown() : StationTest(false) {
    frame = StartStation(session);
    for (const OpenWindow& each : kTwelve) {
      Event([&] { frame->FindCommand(each.command)->Press(); });
    }
    Lines();
  }
};

TEST_F(Shutdown, WithTwelveOpenWindowsSavesTwelvePositions) {
  ASSERT_EQ(session.Windows.Loaded().size(), 1 + std::size(kTwelve));
  // Each stands somewhere of its own.
  std::map<std::string, int> places;
  int place = 100;
  for (const OpenWindow& each : kTwelve) {
    forms::Window* const window = session.Windows.Find(each.window);
    ASSERT_NE(window, nullptr) << each.window;
    Event([&] {
      window->Moved({base::Twips(place), base::Twips(place + 1), base::Twips(place + 4000),
                     base::Twips(place + 3000)},
                    forms::WindowState::kNormal);
    });
    places[each.section] = place;
    place += 10;
  }
  Event([&] { EXPECT_TRUE(StopStation(session)); });
  EXPECT_TRUE(session.Windows.Loaded().empty());
  EXPECT_EQ(places.size(), 12u);
  for (const auto& [section, left] : places) {
    EXPECT_EQ(session.GetSetting(section, "X", ""), std::to_string(left)) << section;
    EXPECT_EQ(session.GetSetting(section, "Y", ""), std::to_string(left + 1)) << section;
    EXPECT_EQ(session.GetSetting(section, "W", ""), std::to_string(left + 4000)) << section;
    EXPECT_EQ(session.GetSetting(section, "H", ""), std::to_string(left + 3000)) << section;
  }
}

TEST_F(Shutdown, WindowsComeBackWhereTheyWere) {
  Event([&] {
    session.Windows.Find("Hrd")->Moved(
        {base::Twips(300), base::Twips(450), base::Twips(9000), base::Twips(6000)},
        forms::WindowState::kNormal);
  });
  Event([&] { frame->FindCommand("cmSaveDesktop")->Press(); });
  Event([&] { StopStation(session); });
  core::Session next(machine, directory.Path());
  frame::MainFrame* const again = StartStation(next);
  next.Windows.RunEvent([&] { again->FindCommand("cmLoadDesktop")->Press(); });
  // The tables and the profile are no part of a desktop.
  EXPECT_EQ(next.Windows.Loaded().size(), 1 + std::size(kTwelve) - 2);
  EXPECT_EQ(
      next.Windows.Find("Hrd")->GetBounds(),
      (forms::Bounds{base::Twips(300), base::Twips(450), base::Twips(9000), base::Twips(6000)}));
  next.Windows.RunEvent([&] { StopStation(next); });
}

}  // namespace
}  // namespace brenvo::station
