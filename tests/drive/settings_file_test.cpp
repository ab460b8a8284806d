#include "tools/drive/settings_file.h"

#include <gmock/gmock.h>

#include <fstream>

#include "recorder/refused.h"
#include "tests/support/scratch_directory.h"

namespace brenvo::drive {
namespace {

using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

class SettingsFile : public testing::Test {
 protected:
  std::filesystem::path File() const { return directory.Path() / "Brenvo.ini"; }
  recorder::MemorySettings::Values Read(const char* text) {
    std::ofstream(File(), std::ios::binary) << text;
    return ReadSettings(File());
  }

  const ScratchDirectory directory;
};

std::pair<std::string, std::string> Place(const char* section, const char* key) {
  return {section, key};
}

TEST_F(SettingsFile, NoFileHoldsNoSettings) { EXPECT_THAT(ReadSettings(File()), IsEmpty()); }

TEST_F(SettingsFile, WhatIsWrittenIsReadAgain) {
  const recorder::MemorySettings::Values values = {
      {Place("Desktop", "Window"), "LOG  CONTEHRD  "},
      {Place("Log", "ManagerZX9TOK"), "c:\\dati\\\"qsl\", così;\n\tfine\r"},
      {Place("Log", "LookupWorked"), ""},
      {Place("Sezione è", "Chiave / 100%"), "@prima"}};
  WriteSettings(File(), values);
  EXPECT_EQ(ReadSettings(File()), values);
}

TEST_F(SettingsFile, TheScreensFormsAreUnderstood) {
  EXPECT_THAT(Read("[Desktop]\r\nWindow=\"LOG  \"\r\n\r\n; detto\r\n[Porte]\nCOM%201=/dev/ttyS0\n"
                   "COM2=caff\\xe8\nCOM3=@@a\nsenza\n"),
              UnorderedElementsAre(Pair(Place("Desktop", "Window"), "LOG  "),
                                   Pair(Place("Porte", "COM 1"), "/dev/ttyS0"),
                                   Pair(Place("Porte", "COM2"), "caffè"),
                                   Pair(Place("Porte", "COM3"), "@a")));
}

TEST_F(SettingsFile, APlaceThatCannotBeWrittenIsToldByName) {
  try {
    WriteSettings(directory.Path() / "none" / "Brenvo.ini", {});
    FAIL();
  } catch (const recorder::Refused& refused) {
    EXPECT_EQ(refused.reason, "Brenvo.ini cannot be written");
  }
}

}  // namespace
}  // namespace brenvo::drive
