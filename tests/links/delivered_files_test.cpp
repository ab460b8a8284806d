// What the links find in the delivered directory.
#include <gtest/gtest.h>

#include <set>

#include "base/csv.h"
#include "base/text.h"
#include "links/menu_file.h"
#include "links/spelling.h"
#include "tests/links/links_station.h"
#include "tests/support/places.h"

namespace brenvo::links {
namespace {

std::set<std::string> SpokenFiles() {
  const base::CsvTable table = base::ReadCsv(SourceDir() / "tools/mkwaves/waves.csv");
  std::set<std::string> files{"pause.wav"};  // made without a voice
  for (const base::CsvTable::Row& row : table.Rows) {
    EXPECT_FALSE(row.Cells[table.Column("Testo")].empty());
    files.insert(row.Cells[table.Column("File")]);
  }
  return files;
}

TEST(DeliveredWaves, SpeakEveryBand) {
  const std::set<std::string> files = SpokenFiles();
  const base::CsvTable bands = base::ReadCsv(SourceDir() / "data/UserRTX.csv");
  for (const base::CsvTable::Row& row : bands.Rows) {
    const std::string& file = row.Cells[bands.Column("FilenameDX")];
    EXPECT_TRUE(files.contains(file)) << file;
  }
}

TEST(DeliveredWaves, SpeakEveryLetterDigitAndSign) {
  const std::set<std::string> files = SpokenFiles();
  std::string call = "/";
  for (char c = 'A'; c <= 'Z'; ++c) call += c;
  for (char c = '0'; c <= '9'; ++c) call += c;
  SpellCall(call, [&](std::string_view name) {
    EXPECT_TRUE(files.contains(std::string(name.substr(1)))) << name;
  });
  EXPECT_TRUE(files.contains(std::string(kPauseWave.substr(1))));
}

class DeliveredMenus : public LinksTest {};

TEST_F(DeliveredMenus, FillAMenuEach) {
  for (const char* name : {"tnc.mnu", "wwconv.mnu"}) {
    forms::Window window(machine.Host(), "W", "", base::Twips(1), base::Twips(1));
    forms::EntryArray entries(window, "CMI");
    entries.Add("-");
    MenuCommands commands;
    FillMenuFromFile(SourceDir() / "data" / name, entries, commands);
    EXPECT_GE(entries.Entries().size(), 5u) << name;
    for (std::size_t i = 0; i < entries.Entries().size(); ++i) {
      EXPECT_NE(entries.Entries()[i].caption, "") << name;
      EXPECT_NE(commands[i], "") << name;
    }
  }
}

// A call is spelled in upper case, and the files bear its characters in any case.
TEST_F(DeliveredMenus, AWaveFileIsFoundWhateverItsCase) {
  WriteFile("a.WAV", "");
  EXPECT_EQ(session.File("\\A.wav").filename(), "a.WAV");
}

}  // namespace
}  // namespace brenvo::links
