#include "core/files.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/support/scratch_directory.h"

namespace brenvo::core {
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

class WorkingDirectory : public testing::Test {
 protected:
  std::filesystem::path In(const std::string& name) const { return directory_.Path() / name; }
  std::string Named(const std::string& name) const { return "La cartella " + In(name).string(); }
  ScratchDirectory directory_;
};

TEST_F(WorkingDirectory, ThatCanBeEnteredIsNotTalkedOf) {
  EXPECT_EQ(WhyNotEntered(directory_.Path()), "");
}

TEST_F(WorkingDirectory, ThatCannotBeEnteredIsToldWithItsCause) {
  EXPECT_EQ(WhyNotEntered(""), "Manca il nome della cartella di lavoro.");
  EXPECT_EQ(WhyNotEntered(In("manca")), Named("manca") + " non esiste.");
  std::ofstream(In("file")) << "text";
  EXPECT_EQ(WhyNotEntered(In("file")), Named("file") + " non è una cartella.");
  EXPECT_EQ(WhyNotEntered(In("file/in")), Named("file/in") + " non esiste.");
  const std::string longest(300, 'a');
  EXPECT_EQ(WhyNotEntered(In(longest)),
            Named(longest) + " non si apre: nome o percorso troppo lungo.");
  std::filesystem::create_symlink(In("giro"), In("giro"));
  EXPECT_EQ(WhyNotEntered(In("giro")),
            Named("giro") + " non si apre: collegamenti che rimandano l'uno all'altro.");
}

TEST_F(WorkingDirectory, ThatMayNotBeEnteredIsToldWithItsCause) {
  std::filesystem::create_directory(In("chiusa"));
  std::filesystem::permissions(In("chiusa"), std::filesystem::perms::none);
  std::filesystem::permissions(directory_.Path(), std::filesystem::perms::all);
  std::string told(1000, '\0');
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  if (child == 0) {
    constexpr int kNobody = 65534;
    if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(1);
    const std::string why = WhyNotEntered(In("chiusa"));
    _exit(write(ends[1], why.data(), why.size()) < 0 ? 1 : 0);
  }
  close(ends[1]);
  const ssize_t size = read(ends[0], told.data(), told.size());
  close(ends[0]);
  waitpid(child, nullptr, 0);
  told.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
  EXPECT_EQ(told, Named("chiusa") + " non si apre: permesso negato.");
}

TEST(Failures, OfTheFileSystemAreToldInItalian) {
  const std::filesystem::filesystem_error failure(
      "cannot copy", "/log/Brenvo.mdb", std::make_error_code(std::errc::no_space_on_device));
  EXPECT_EQ(FailureText(failure),
            "/log/Brenvo.mdb: sul disco non c'è più spazio o non vi stanno altri file.");
  EXPECT_EQ(FailureText(std::runtime_error("Disco rotto")), "Disco rotto");
}

}  // namespace
}  // namespace brenvo::core
