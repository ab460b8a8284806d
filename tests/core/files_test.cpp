#include "core/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/support/scratch_directory.h"

namespace brenvo {
namespace {

TEST(Files, AStrokeInACallBecomesADash) {
  EXPECT_EQ(SafeFileName("IK3ABC/P.txt"), "IK3ABC-P.txt");
  EXPECT_EQ(SafeFileName("a\\b:c*d?e\"f<g>h|i"), "a-b-c-d-e-f-g-h-i");
  EXPECT_EQ(SafeFileName("Località.txt"), "Località.txt");
}

TEST(Files, NoNameLeavesTheDirectory) {
  for (const char* name : {"..", ".", "", "../x", "\\..\\x", "/etc/passwd", "C:\\x", "..."}) {
    const auto file = FileIn("/tmp/brenvo-no-such-directory", name);
    EXPECT_EQ(file.parent_path(), "/tmp/brenvo-no-such-directory") << name;
    EXPECT_NE(file.filename(), "..") << name;
    EXPECT_NE(file.filename(), ".") << name;
  }
}

TEST(Files, AnExistingFileIsFoundWhateverTheCase) {
  const ScratchDirectory scratch;
  const std::filesystem::path& directory = scratch.Path();
  std::ofstream(directory / "BRENVO.mdb") << "x";
  EXPECT_EQ(FileIn(directory, "\\Brenvo.MDB"), directory / "BRENVO.mdb");
  EXPECT_EQ(FileIn(directory, "\\Other.txt"), directory / "Other.txt");
}

TEST(Files, AFileThatIsPlayedKeepsItsNameButLeavesTheDirectoryByNone) {
  EXPECT_EQ(PlayedFileIn("/tmp/station", "\\:.wav"), "/tmp/station/:.wav");
  EXPECT_EQ(PlayedFileIn("/tmp/station", "\\"), "/tmp/station/");
  EXPECT_EQ(PlayedFileIn("/tmp/station", "\\../x.wav"), "/tmp/station/..-x.wav");
  EXPECT_EQ(PlayedFileIn("/tmp/station", "\\/etc/x.wav"), "/tmp/station/-etc-x.wav");
}

TEST(Files, FilesAreListedByTheEndOfTheirNamesWhateverTheCase) {
  const ScratchDirectory scratch;
  const std::filesystem::path& directory = scratch.Path();
  for (const char* name : {"b.wav", "A.WAV", "c.txt", ".hidden.wav"})
    std::ofstream(directory / name) << "x";
  std::filesystem::create_directory(directory / "d.wav");
  using Names = std::vector<std::string>;
  EXPECT_EQ(FilesOf(directory, ".wav"), (Names{"A.WAV", "b.wav"}));
  EXPECT_EQ(FilesOf(directory, ""), (Names{"A.WAV", "b.wav", "c.txt"}));
  EXPECT_EQ(FilesOf(directory / "none", ""), Names{});
}

}  // namespace
}  // namespace brenvo
