#include "core/help_topics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "frame/help_file.h"
#include "station/station.h"
#include "tests/support/places.h"
#include "tests/support/station.h"

namespace brenvo::frame {
namespace {

std::vector<HelpPage> Manual() {
  std::ifstream file(SourceDir() / "data/Brenvo.HLP", std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return ParseHelp(text.str());
}

bool HasPage(const std::vector<HelpPage>& pages, int topic) {
  return std::any_of(pages.begin(), pages.end(),
                     [&](const HelpPage& page) { return page.topic == topic; });
}

TEST(HelpTopics, EveryWindowHasAPageOfItsOwnInTheManual) {
  const std::vector<HelpPage> pages = Manual();
  std::set<int> topics;
  for (const auto& [window, topic] : core::kWindowTopics) {
    EXPECT_TRUE(HasPage(pages, topic)) << window;
    EXPECT_TRUE(topics.insert(topic).second) << window;
  }
}

TEST(HelpTopics, NoTwoPagesOfTheManualBearOneNumber) {
  std::set<int> topics;
  for (const HelpPage& page : Manual()) {
    EXPECT_TRUE(topics.insert(page.topic).second) << page.topic;
    EXPECT_FALSE(page.title.empty()) << page.topic;
    EXPECT_FALSE(page.text.empty()) << page.topic;
  }
}

TEST(HelpTopics, EveryPictureOfTheManualIsThere) {
  int pictures = 0;
  for (const HelpPage& page : Manual()) {
    for (std::size_t at = 0; (at = page.text.find("](manuale/", at)) != std::string::npos; ++at) {
      const std::string name = page.text.substr(at + 10, page.text.find(')', at) - at - 10);
      EXPECT_TRUE(std::filesystem::exists(SourceDir() / "docs/screens" / name)) << name;
      ++pictures;
    }
  }
  EXPECT_GE(pictures, 33);
}

class WindowHelp : public StationTest {
 protected:
  WindowHelp() : StationTest(false) { frame = station::StartStation(session); }
};

TEST_F(WindowHelp, IsKnownForEveryWindowOfTheStation) {
  for (const std::string& window : session.Windows.KnownNames()) {
    EXPECT_NE(core::HelpTopicOf(window), core::kHelpFirstDay) << window;
  }
  EXPECT_EQ(core::HelpTopicOf("Brenvo"), core::kHelpFirstDay);
}

}  // namespace
}  // namespace brenvo::frame
