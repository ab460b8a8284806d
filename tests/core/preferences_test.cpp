#include "core/preferences.h"

#include <gmock/gmock.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "tests/core/core_station.h"
#include "tests/support/places.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kColours[] = {"Rosso", "Verde"};

constexpr Choice kNumber{"Prova", "Numero", "Numero", "", NumberKind{5, 1, 10}};
constexpr Choice kWord{"Prova", "Colore", "Colore", "", WordKind{kColours}};
constexpr Choice kAnyText{"Prova", "Testo", "Testo", "", TextKind{"scritto"}};
constexpr Choice kFlag{"Prova", "Segno", "Segno", "", YesNoKind{true}};

class PreferencesTest : public CoreStation {
 protected:
  Preferences& choices = session.Choices;
};

TEST_F(PreferencesTest, WhatWasNeverChosenIsTheStandard) {
  EXPECT_EQ(choices.Get<kNumber>(), 5);
  EXPECT_EQ(choices.Get<kWord>(), "Rosso");
  EXPECT_EQ(choices.Get<kAnyText>(), "scritto");
  EXPECT_TRUE(choices.Get<kFlag>());
}

TEST_F(PreferencesTest, WhatIsChosenStandsInTheSettings) {
  EXPECT_EQ(choices.Set(kNumber, " 10 "), "");
  EXPECT_EQ(choices.Set(kWord, "verde"), "");
  EXPECT_EQ(choices.Set(kAnyText, " due parole "), "");
  EXPECT_EQ(choices.Set(kFlag, "no"), "");
  EXPECT_EQ(session.GetSetting("Prova", "Numero", ""), "10");
  EXPECT_EQ(session.GetSetting("Prova", "Colore", ""), "Verde");
  EXPECT_EQ(session.GetSetting("Prova", "Testo", ""), "due parole");
  EXPECT_EQ(session.GetSetting("Prova", "Segno", ""), "N");
  EXPECT_EQ(choices.Get<kNumber>(), 10);
  EXPECT_EQ(choices.Get<kWord>(), "Verde");
  EXPECT_EQ(choices.Get<kAnyText>(), "due parole");
  EXPECT_FALSE(choices.Get<kFlag>());
}

TEST_F(PreferencesTest, WhatIsNoValueIsRefusedWithWhatMayBeWritten) {
  for (const char* text : {"0", "11", "", "3x", "99999999999"}) {
    EXPECT_EQ(choices.Set(kNumber, text), "un numero da 1 a 10") << text;
  }
  EXPECT_EQ(choices.Set(kWord, "Blu"), "una di queste: Rosso, Verde");
  EXPECT_EQ(choices.Set(kFlag, "forse"), "Sì o No");
  EXPECT_EQ(choices.Get<kNumber>(), 5);
  EXPECT_EQ(session.GetSetting("Prova", "Numero", "none"), "none");
}

TEST_F(PreferencesTest, WhatStandsInTheSettingsAndIsNoValueIsTheStandard) {
  session.SaveSetting("Prova", "Numero", "11");
  session.SaveSetting("Prova", "Colore", "Blu");
  session.SaveSetting("Prova", "Segno", "x");
  session.SaveSetting("Ora", "Zona", "Europa/Roma");
  EXPECT_EQ(choices.Get<kNumber>(), 5);
  EXPECT_EQ(choices.Get<kWord>(), "Rosso");
  EXPECT_TRUE(choices.Get<kFlag>());
  EXPECT_EQ(choices.Get<choice::kZone>(), "");
}

TEST_F(PreferencesTest, AnotherValueIsReportedAndTheSameIsNot) {
  std::vector<std::string> told;
  const auto heard = choices.Changed.Subscribe(
      [&](const Choice& choice) { told.push_back(std::string(choice.key)); });
  EXPECT_EQ(choices.Set(kNumber, "5"), "");
  EXPECT_EQ(choices.Set(kNumber, "6"), "");
  EXPECT_EQ(choices.Set(kNumber, "77"), "un numero da 1 a 10");
  EXPECT_EQ(choices.Set(kFlag, "No"), "");
  EXPECT_THAT(told, testing::ElementsAre("Numero", "Segno"));
}

TEST(Choices, HaveAPlaceOfTheirOwnAndWordsForTheOperator) {
  std::set<std::pair<std::string_view, std::string_view>> places;
  for (const Choice* each : AllChoices()) {
    EXPECT_TRUE(places.insert({each->section, each->key}).second) << each->key;
    EXPECT_FALSE(each->name.empty()) << each->key;
    EXPECT_FALSE(each->what.empty()) << each->key;
    EXPECT_EQ(each->what.find('\n'), std::string::npos) << each->key;
  }
}

std::string ContentsOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// The sources of all rooms, but for those that say what the choices are.
std::string SourcesOfTheRooms() {
  std::string all;
  for (const auto& room : std::filesystem::directory_iterator(SourceDir())) {
    const std::string name = room.path().filename().string();
    if (!room.is_directory() || name.starts_with('.') || name == "build" || name == "tests") {
      continue;
    }
    for (const auto& file : std::filesystem::recursive_directory_iterator(room)) {
      if (file.path().extension() != ".cpp" || file.path().stem() == "preferences") continue;
      all += ContentsOf(file.path());
    }
  }
  return all;
}

TEST(Choices, AreEachReadSomewhere) {
  const std::string header = ContentsOf(SourceDir() / "core/include/core/preferences.h");
  const std::string sources = SourcesOfTheRooms();
  const std::regex declared("inline constexpr Choice (k\\w+)(\\[\\])?");
  std::size_t count = 0;
  for (auto at = std::sregex_iterator(header.begin(), header.end(), declared);
       at != std::sregex_iterator(); ++at) {
    const std::string name = (*at)[1];
    const bool several = (*at)[2].matched;  // one a key
    EXPECT_TRUE(sources.find("Get<core::choice::" + name + ">") != std::string::npos ||
                sources.find("Get<choice::" + name + ">") != std::string::npos ||
                (several && sources.find("choice::" + name) != std::string::npos))
        << name << " has no effect";
    EXPECT_EQ(several, name == "kContestKeys");
    count += several ? std::size(choice::kContestKeys) : 1;
  }
  EXPECT_EQ(count, AllChoices().size());
}

}  // namespace
}  // namespace brenvo::core
