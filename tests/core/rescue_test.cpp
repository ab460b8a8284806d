// The start with a database that is gone or damaged.
#include <fstream>

#include "file/database_file.h"
#include "station/station.h"
#include "tests/core/backup_station.h"
#include "tests/support/golden.h"

namespace brenvo {
namespace {

namespace fs = std::filesystem;

class RescueTest : public BackupStation {
 protected:
  RescueTest() {
    Store("IK3ABC");
    LetTheCopyBeMade();
    session.Windows.Unload(*frame);
    machine.TakeLines();
  }
  fs::path File() const { return directory.Path() / "Brenvo.mdb"; }
  MainFrame* Start() {
    MainFrame* started = nullptr;
    Event([&] { started = StartStation(again); });
    return started;
  }
  Session again{machine, directory.Path()};
};

TEST_F(RescueTest, AMissingDatabaseIsPutBackFromTheNewestCopyWhenTheOperatorAgrees) {
  fs::remove(File());
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_EQ(again.Db.OpenSnapshot("select count(*) from Log")->Field(0).Integer(), 1);
}

TEST_F(RescueTest, AnsweredWithNoTheStartFailsAndNothingIsTouched) {
  std::ofstream(File(), std::ios::trunc) << "another file";
  machine.Messages().QueueAnswer(false);
  EXPECT_EQ(Start(), nullptr);
  EXPECT_EQ(ReadBytes(File()), "another file");
  EXPECT_EQ(BackupCopies(directory.Path()).size(), 1u);
}

TEST_F(RescueTest, AnotherFileInItsPlaceIsSetAsideWithWhatBelongsToIt) {
  std::ofstream(File(), std::ios::trunc) << "another file";
  std::ofstream(directory.Path() / "Brenvo.mdb-wal") << "of the old one";
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  const auto copies = BackupCopies(directory.Path());
  ASSERT_EQ(copies.size(), 2u);
  EXPECT_EQ(ReadBytes(copies[0].file), "another file");
  EXPECT_EQ(ReadBytes(copies[0].file.string() + "-wal"), "of the old one");
}

TEST_F(RescueTest, ACompactionThatWasInterruptedBetweenTheNamesIsEndedFromItsBackup) {
  fs::copy_file(File(), directory.Path() / "Brenvo.BAK");
  fs::rename(File(), directory.Path() / "BrenvoNEW.MDB");
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_EQ(again.Db.OpenSnapshot("select count(*) from Log")->Field(0).Integer(), 1);
  EXPECT_FALSE(fs::exists(directory.Path() / "BrenvoNEW.MDB"));
  EXPECT_EQ(machine.TakeLines()[0].find("question \"Ripristina backup\" \"Il file "), 0u);
}

TEST_F(RescueTest, ACompactionWhoseBackupIsDamagedIsEndedFromItsResult) {
  std::ofstream(directory.Path() / "Brenvo.BAK") << "damaged";
  fs::rename(File(), directory.Path() / "BrenvoNEW.MDB");
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_EQ(again.Db.OpenSnapshot("select count(*) from Log")->Field(0).Integer(), 1);
}

TEST_F(RescueTest, ARestoreThatWasInterruptedBetweenTheNamesIsTakenBack) {
  const fs::path aside = BackupDirectory() / "Brenvo-prima-2001-02-03 04-05-06.mdb";
  {
    Database database = OpenDatabaseFile(File());
    database.Execute("insert into Log (DataQso, Call) values ('2001-02-03 04:06:00', 'IK3DEF')");
  }
  fs::copy_file(BackupCopies(directory.Path())[0].file, directory.Path() / "Brenvo-ripristino.mdb");
  fs::rename(File(), aside);
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_EQ(again.Db.OpenSnapshot("select count(*) from Log")->Field(0).Integer(), 2);
  EXPECT_NE(machine.TakeLines()[0].find("C'e' il database del 03/02/2001 alle 04:05:06, messa da "
                                        "parte con 2 QSO"),
            std::string::npos);
  EXPECT_FALSE(fs::exists(directory.Path() / "Brenvo-ripristino.mdb"));
}

TEST_F(RescueTest, ARestoreThatWasInterruptedBeforeTheNamesHasChangedNothing) {
  std::ofstream(directory.Path() / "Brenvo-ripristino.mdb") << "half of a copy";
  ASSERT_NE(Start(), nullptr);
  EXPECT_TRUE(machine.TakeLines().empty());
  RestoreBackup(again, BackupCopies(directory.Path())[0]);
  EXPECT_FALSE(fs::exists(directory.Path() / "Brenvo-ripristino.mdb"));
}

TEST_F(RescueTest, TheBackupOfAnOldCompactionComesBehindTheDaysCopies) {
  fs::copy_file(File(), directory.Path() / "Brenvo.BAK");
  fs::remove(File());
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_NE(machine.TakeLines()[0].find("C'e' una copia del 03/02/2001 con 1 QSO"),
            std::string::npos);
}

TEST_F(RescueTest, WithoutACopyTheBackupOfAnOldCompactionIsOffered) {
  fs::remove_all(BackupDirectory());
  fs::rename(File(), directory.Path() / "Brenvo.BAK");
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_EQ(again.Db.OpenSnapshot("select count(*) from Log")->Field(0).Integer(), 1);
}

TEST_F(RescueTest, ACopyOfTheFutureIsOfferedLast) {
  fs::copy_file(BackupCopies(directory.Path())[0].file,
                BackupDirectory() / "Brenvo-2099-01-01.mdb");
  fs::remove(File());
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_NE(machine.TakeLines()[0].find("C'e' una copia del 03/02/2001 con"), std::string::npos);
}

TEST_F(RescueTest, WithoutACopyTheStartFailsAsEver) {
  fs::remove_all(BackupDirectory());
  fs::remove(File());
  EXPECT_EQ(Start(), nullptr);
}

}  // namespace
}  // namespace brenvo
