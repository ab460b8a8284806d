// The start with a database that is gone or damaged.
#include <sqlite3.h>

#include <fstream>

#include "file/database_file.h"
#include "station/station.h"
#include "tests/support/golden.h"
#include "tests/upkeep/backup_station.h"

namespace brenvo::upkeep {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

class RescueTest : public BackupStation {
 protected:
  RescueTest() {
    Store("IK3ABC");
    LetTheCopyBeMade();
    session.Windows.Unload(*frame);
    machine.TakeLines();
  }
  fs::path File() const { return directory.Path() / "Brenvo.mdb"; }
  frame::MainFrame* Start() {
    frame::MainFrame* started = nullptr;
    Event([&] { started = station::StartStation(again); });
    return started;
  }
  core::Session again{machine, directory.Path()};
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
    engine::Database database = file::OpenDatabaseFile(File());
    database.Execute("insert into Log (DataQso, Call) values ('2001-02-03 04:06:00', 'IK3DEF')");
  }
  fs::copy_file(BackupCopies(directory.Path())[0].file, directory.Path() / "Brenvo-ripristino.mdb");
  fs::rename(File(), aside);
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_EQ(again.Db.OpenSnapshot("select count(*) from Log")->Field(0).Integer(), 2);
  EXPECT_NE(machine.TakeLines()[0].find("C'è il database del 03/02/2001 alle 04:05:06, messa da "
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
  EXPECT_NE(machine.TakeLines()[0].find("C'è una copia del 03/02/2001 con 1 QSO"),
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
  EXPECT_NE(machine.TakeLines()[0].find("C'è una copia del 03/02/2001 con"), std::string::npos);
}

// The start after an unclean end, with another file under the database's name.
class JournalRescueTest : public RescueTest {
 protected:
  fs::path Journal() const { return File().string() + "-wal"; }
  // What was stored last has not left the journal when the machine stops.
  void EndUncleanly() {
    const fs::path file = directory.Path() / "file", journal = directory.Path() / "journal";
    {
      engine::Database database = file::OpenDatabaseFile(File());
      database.Execute("insert into Log (DataQso, Call) values ('2001-02-03 04:06:00', 'IK3DEF')");
      fs::copy_file(File(), file);
      fs::copy_file(Journal(), journal);
    }
    fs::rename(file, File());
    fs::rename(journal, Journal());
  }
  void PutTheCopyInPlaceByHand() {
    fs::copy_file(BackupCopies(directory.Path())[0].file, File(),
                  fs::copy_options::overwrite_existing);
  }
  Texts Calls() {
    Texts calls;
    const auto rows = again.Db.OpenSnapshot("select Call from Log order by Call");
    for (; !rows->EOF_(); rows->MoveNext()) calls.push_back(rows->Field(0).Text());
    return calls;
  }
  std::string FirstLine() { return machine.TakeLines().at(0); }
};

TEST_F(JournalRescueTest, TheDatabasesOwnJournalIsAppliedWithoutAWord) {
  EndUncleanly();
  ASSERT_NE(Start(), nullptr);
  EXPECT_TRUE(machine.TakeLines().empty());
  EXPECT_EQ(Calls(), (Texts{"IK3ABC", "IK3DEF"}));
}

TEST_F(JournalRescueTest, BesideACopyThatWasPutInPlaceByHandItIsNotAppliedAndAllIsSetAside) {
  EndUncleanly();
  PutTheCopyInPlaceByHand();
  const std::string file = ReadBytes(File()), journal = ReadBytes(Journal());
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_EQ(FirstLine(),
            "question \"Ripristina backup\" \"Accanto a 'Brenvo.mdb' c'è il giornale "
            "'Brenvo.mdb-wal', che è di un altro file: il database è stato sostituito. Nulla del "
            "giornale è stato applicato.\\nIl database senza il giornale ha 1 QSO. Usarlo così ? "
            "(Database e giornale vengono messi da parte nella cartella Backup.)\" yes");
  EXPECT_EQ(Calls(), Texts{"IK3ABC"});
  const auto copies = BackupCopies(directory.Path());
  ASSERT_EQ(copies.size(), 2u);
  ASSERT_TRUE(copies[0].setAside);
  EXPECT_EQ(ReadBytes(copies[0].file), file);
  EXPECT_EQ(ReadBytes(copies[0].file.string() + "-wal"), journal);
  EXPECT_FALSE(fs::exists(directory.Path() / "Brenvo-senza-giornale.mdb"));
}

TEST_F(JournalRescueTest, WhoDoesNotWantTheDatabaseWithoutItIsOfferedTheCopies) {
  EndUncleanly();
  PutTheCopyInPlaceByHand();
  machine.Messages().QueueAnswer(false);
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_NE(machine.TakeLines().at(1).find("C'è una copia del 03/02/2001 con 1 QSO"),
            std::string::npos);
  EXPECT_EQ(Calls(), Texts{"IK3ABC"});
}

TEST_F(JournalRescueTest, WhoWantsNeitherFindsAllAsItWas) {
  EndUncleanly();
  PutTheCopyInPlaceByHand();
  const std::string file = ReadBytes(File()), journal = ReadBytes(Journal());
  machine.Messages().QueueAnswer(false);
  machine.Messages().QueueAnswer(false);
  EXPECT_EQ(Start(), nullptr);
  EXPECT_EQ(ReadBytes(File()), file);
  EXPECT_EQ(ReadBytes(Journal()), journal);
  EXPECT_EQ(BackupCopies(directory.Path()).size(), 1u);
  EXPECT_FALSE(fs::exists(directory.Path() / "Brenvo-senza-giornale.mdb"));
}

TEST_F(JournalRescueTest, OneThatDamagesTheDatabaseIsNotApplied) {
  const fs::path saved = directory.Path() / "journal", file = directory.Path() / "file";
  fs::copy_file(File(), file);
  sqlite3* tool = nullptr;
  sqlite3_open(File().c_str(), &tool);
  sqlite3_exec(tool,
               "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = (SELECT rootpage "
               "FROM sqlite_schema WHERE name = 'Log') WHERE name = 'Country'",
               nullptr, nullptr, nullptr);
  fs::copy_file(Journal(), saved);
  sqlite3_close(tool);
  fs::rename(file, File());
  fs::rename(saved, Journal());
  machine.Messages().QueueAnswer(true);
  ASSERT_NE(Start(), nullptr);
  EXPECT_NE(FirstLine().find("che lo danneggia"), std::string::npos);
  EXPECT_EQ(Calls(), Texts{"IK3ABC"});
}

TEST_F(RescueTest, WithoutACopyTheStartFailsAsEver) {
  fs::remove_all(BackupDirectory());
  fs::remove(File());
  EXPECT_EQ(Start(), nullptr);
}

}  // namespace
}  // namespace brenvo::upkeep
