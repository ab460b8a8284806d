// Copies put back while the station runs.
#include <stdlib.h>

#include <fstream>
#include <functional>
#include <optional>
#include <system_error>

#include "file/database_file.h"
#include "tests/support/recorded_files.h"
#include "tests/upkeep/backup_station.h"
#include "upkeep/ripristina_backup.h"

namespace brenvo::upkeep {
namespace {

namespace fs = std::filesystem;

class RestoreTest : public BackupStation {
 protected:
  RestoreTest() {
    Know<RipristinaBackup>("RipristinaBackup");
    Store("IK3ABC");
    LetTheCopyBeMade();
    Store("IK3DEF");
  }
  void Command() {
    Event([&] { frame->FindCommand("cmRipristinaBackup")->Press(); });
  }
  // A new directory in memory, where that is another file system than the scratch directory's.
  fs::path OnAnotherDisk() const {
    std::string name = "/dev/shm/brenvo-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) return {};
    const fs::path probe = directory.Path() / "probe";
    std::ofstream(probe) << "of this disk";
    std::error_code error;
    fs::rename(probe, fs::path(name) / "probe", error);
    fs::remove(probe);
    if (error == std::errc::cross_device_link) return name;
    fs::remove_all(name);
    return {};
  }
  // What the operator does while the window is open.
  void InTheWindow(std::function<void(RipristinaBackup&)> act) {
    InDialogs([act](forms::Window& window) { act(static_cast<RipristinaBackup&>(window)); });
  }
};

TEST_F(RestoreTest, TheListShowsEachCopyWithItsContacts) {
  Store("IK3GHI");
  fs::copy_file(BackupCopies(directory.Path())[0].file,
                BackupDirectory() / "Brenvo-2001-02-01.mdb");
  Damage(BackupDirectory() / "Brenvo-2001-02-01.mdb");
  std::ofstream(BackupDirectory() / "Brenvo-2001-02-02.mdb") << "no database";
  RipristinaBackup& window = Open<RipristinaBackup>("RipristinaBackup");
  EXPECT_EQ(window.LBCopie.Items()[0], "del 03/02/2001   1 QSO");
  EXPECT_EQ(window.LBCopie.Items()[1], "del 02/02/2001   non leggibile");
  EXPECT_EQ(window.LBCopie.Items().size(), 3u);
}

TEST_F(RestoreTest, CopiesAreListedUncountedOnceTheOperatorHasStoppedTheCounting) {
  fs::copy_file(BackupCopies(directory.Path())[0].file,
                BackupDirectory() / "Brenvo-2001-02-01.mdb");
  machine.StopProgressAt(1);
  RipristinaBackup& window = Open<RipristinaBackup>("RipristinaBackup");
  EXPECT_EQ(window.LBCopie.Items(),
            (std::vector<std::string>{"del 03/02/2001   1 QSO", "del 01/02/2001"}));
}

TEST_F(RestoreTest, TheCopyTakesThePlaceOfTheDatabaseWhichIsSetAside) {
  machine.Messages().QueueAnswer(true);
  InTheWindow([](RipristinaBackup& window) { window.cmRipristina.Press(); });
  Command();
  EXPECT_EQ(Rows("select Call from Log"), std::vector<std::string>{"IK3ABC"});
  EXPECT_EQ(session.Station.MyLocator, "JN65AA");
  const auto copies = BackupCopies(directory.Path());
  ASSERT_EQ(copies.size(), 2u);
  EXPECT_TRUE(copies[0].setAside);
  EXPECT_EQ(ContactsIn(copies[0]), 2);
  EXPECT_FALSE(fs::exists(directory.Path() / "BrenvoNEW.MDB"));
  Store("IK3XYZ");
}

// Copies are best kept on another disk, which the system shows under the same name.
TEST_F(RestoreTest, CopiesMayBeOnAnotherDisk) {
  const fs::path elsewhere = OnAnotherDisk();
  if (elsewhere.empty()) GTEST_SKIP() << "this machine has no second file system";
  fs::copy(BackupDirectory(), elsewhere);
  fs::remove_all(BackupDirectory());
  fs::create_directory_symlink(elsewhere, BackupDirectory());
  RestoreBackup(session, BackupCopies(directory.Path())[0]);
  EXPECT_EQ(Rows("select Call from Log"), std::vector<std::string>{"IK3ABC"});
  const auto copies = BackupCopies(directory.Path());
  ASSERT_EQ(copies.size(), 2u);
  EXPECT_TRUE(copies[0].setAside);
  EXPECT_EQ(ContactsIn(copies[0]), 2);
  fs::remove_all(elsewhere);
}

TEST_F(RestoreTest, ARestoreIsTakenBackByRestoringWhatWasSetAside) {
  RestoreBackup(session, BackupCopies(directory.Path())[0]);
  machine.SetNow(base::DateTime::Of(2001, 2, 3, 5));
  RestoreBackup(session, BackupCopies(directory.Path())[0]);
  EXPECT_EQ(Rows("select Call from Log").size(), 2u);
}

TEST_F(RestoreTest, AnsweredWithNoNothingChanges) {
  machine.Messages().QueueAnswer(false);
  InTheWindow([](RipristinaBackup& window) {
    window.cmRipristina.Press();
    window.cmExit.Press();
  });
  Command();
  EXPECT_EQ(Rows("select Call from Log").size(), 2u);
  EXPECT_EQ(BackupCopies(directory.Path()).size(), 1u);
}

TEST_F(RestoreTest, StoppedWhileItCopiesOrChecksItLeavesEverythingAsItWasAndSaysSo) {
  const std::string stopped =
      "message exclamation \"Ripristina backup\" \"Ripristino interrotto: il database è rimasto "
      "com'era.\"";
  for (const std::int64_t at : {0, 500, 1000}) {  // 1000 is the end of the copying
    SCOPED_TRACE(at);
    machine.StopProgressAt(at);
    machine.Messages().QueueAnswer(true);
    InTheWindow([](RipristinaBackup& window) { window.cmRipristina.Press(); });
    Command();
    EXPECT_EQ(Lines().back(), stopped);
    EXPECT_FALSE(machine.Host().Busy());
    EXPECT_EQ(Rows("select Call from Log").size(), 2u);
    EXPECT_EQ(BackupCopies(directory.Path()).size(), 1u);
    EXPECT_FALSE(fs::exists(directory.Path() / "Brenvo-ripristino.mdb"));
  }
  machine.StopProgressAt(1001);
  machine.Messages().QueueAnswer(true);
  InTheWindow([](RipristinaBackup& window) { window.cmRipristina.Press(); });
  Command();
  EXPECT_EQ(Rows("select Call from Log").size(), 1u);
}

TEST_F(RestoreTest, ACopyThatIsDamagedChangesNothing) {
  const BackupCopy copy = BackupCopies(directory.Path())[0];
  Damage(copy.file);
  EXPECT_THROW(RestoreBackup(session, copy), engine::DatabaseError);
  EXPECT_EQ(Rows("select Call from Log").size(), 2u);
  EXPECT_EQ(BackupCopies(directory.Path()).size(), 1u);
  EXPECT_FALSE(fs::exists(directory.Path() / "BrenvoNEW.MDB"));
}

TEST_F(RestoreTest, ADiskThatFillsUpAtAnyMomentChangesNothing) {
  const BackupCopy copy = BackupCopies(directory.Path())[0];
  int failures = 0;
  for (std::int64_t n = 0;; n += 3) {
    SCOPED_TRACE(n);
    std::optional<RecordedFiles> files(std::in_place);
    files->FailFrom(n, SQLITE_FULL);
    std::string told;
    Event([&] {
      try {
        RestoreBackup(session, copy);
      } catch (const engine::DatabaseError& failure) {
        told = failure.Description;
      }
    });
    const bool failed = files->HasFailed();
    files->StopFailing();
    // The database that was opened through these files is closed before they go.
    session.CloseForCompaction();
    files.reset();
    session.ReopenAfterCompaction();
    if (told.empty()) {
      EXPECT_FALSE(failed);
      break;
    }
    ++failures;
    ASSERT_EQ(told,
              "Spazio su disco insufficiente: liberare spazio sul disco del database e riprovare.");
    ASSERT_FALSE(fs::exists(directory.Path() / "Brenvo-ripristino.mdb"));
    ASSERT_EQ(BackupCopies(directory.Path()).size(), 1u);
    ASSERT_EQ(Rows("select Call from Log").size(), 2u);
  }
  EXPECT_GT(failures, 0);
  EXPECT_EQ(Rows("select Call from Log").size(), 1u);
}

TEST_F(RestoreTest, ADatabaseThatAnotherProgramHasOpenIsNotReplacedUnderIt) {
  engine::Database other = file::OpenDatabaseFile(directory.Path() / "Brenvo.mdb");
  const auto reading = other.OpenSnapshot("select Call from Log");
  std::string told;
  try {
    RestoreBackup(session, BackupCopies(directory.Path())[0]);
  } catch (const engine::DatabaseError& failure) {
    told = failure.Description;
  }
  EXPECT_EQ(told, "Il database è aperto in un altro programma.");
  EXPECT_EQ(Rows("select Call from Log").size(), 2u);
  EXPECT_EQ(BackupCopies(directory.Path()).size(), 1u);
}

TEST_F(RestoreTest, ASecondFileSetAsideInTheSameSecondDoesNotTakeTheFirstOnesPlace) {
  const BackupCopy daily = BackupCopies(directory.Path())[0];
  RestoreBackup(session, daily);
  RestoreBackup(session, daily);
  const auto copies = BackupCopies(directory.Path());
  ASSERT_EQ(copies.size(), 3u);
  EXPECT_EQ(ContactsIn(copies[0]), 1);
  EXPECT_EQ(ContactsIn(copies[1]), 2);
}

}  // namespace
}  // namespace brenvo::upkeep
