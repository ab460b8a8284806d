#include "core/backup.h"

#include <fmt/format.h>

#include <fstream>
#include <optional>

#include "core/maintenance.h"
#include "core/ripristina_backup.h"
#include "engine/online_copy.h"
#include "station/station.h"
#include "tests/support/golden.h"
#include "tests/support/recorded_files.h"
#include "tests/support/station.h"

namespace brenvo {
namespace {

namespace fs = std::filesystem;

std::string Names(const std::vector<BackupCopy>& copies) {
  std::string names;
  for (const BackupCopy& copy : copies) names += copy.file.filename().string() + ";";
  return names;
}

std::vector<DateTime> EveryDay(DateTime last, int count) {
  std::vector<DateTime> days;
  for (int i = 0; i < count; ++i) {
    days.push_back(DateTime::FromSeconds(last.Seconds() - std::int64_t{i} * 86400));
  }
  return days;
}

const DateTime kToday = DateTime::Of(2002, 12, 20);

TEST(DaysToDrop, TenDaysAreAllKept) {
  EXPECT_TRUE(DaysToDrop(EveryDay(kToday, 10), kToday).empty());
}

TEST(DaysToDrop, OfTwoYearsTenDaysAndTheEndOfElevenEarlierMonthsStay) {
  const std::vector<DateTime> days = EveryDay(kToday, 720);
  const std::vector<DateTime> dropped = DaysToDrop(days, kToday);
  std::vector<std::string> kept;
  for (const DateTime day : days) {
    if (std::find(dropped.begin(), dropped.end(), day) == dropped.end()) {
      kept.push_back(DateText(day));
    }
  }
  EXPECT_EQ(kept,
            (std::vector<std::string>{
                "20/12/2002", "19/12/2002", "18/12/2002", "17/12/2002", "16/12/2002", "15/12/2002",
                "14/12/2002", "13/12/2002", "12/12/2002", "11/12/2002", "30/11/2002", "31/10/2002",
                "30/09/2002", "31/08/2002", "31/07/2002", "30/06/2002", "31/05/2002", "30/04/2002",
                "31/03/2002", "28/02/2002", "31/01/2002"}));
}

TEST(DaysToDrop, AYearOfPausesCountsMonthsThatHaveACopy) {
  std::vector<DateTime> days;
  for (int year = 1980; year < 2000; ++year) days.push_back(DateTime::Of(year, 5, 1));
  const std::vector<DateTime> dropped = DaysToDrop(days, kToday);
  ASSERT_EQ(dropped.size(), 8u);
  EXPECT_EQ(dropped.front(), DateTime::Of(1987, 5, 1));
}

TEST(DaysToDrop, DaysAheadOfTheClockStayAndTakeNobodysPlace) {
  std::vector<DateTime> days = EveryDay(DateTime::Of(2099, 6, 30), 12);
  const std::vector<DateTime> past = EveryDay(kToday, 11);
  days.insert(days.end(), past.begin(), past.end());
  EXPECT_EQ(DaysToDrop(days, kToday), std::vector<DateTime>{DateTime::Of(2002, 12, 10)});
}

class BackupTest : public StationTest {
 protected:
  fs::path BackupDirectory() const { return directory.Path() / "Backup"; }
  void Store(std::string_view call) {
    session.Db.Execute("insert into Log (DataQso, Call, Banda) values ('2001-02-03 04:05:00', '" +
                       std::string(call) + "', '  2 m')");
  }
  // Long enough for a small database.
  void LetTheCopyBeMade() { machine.Advance(20000); }
  void Damage(const fs::path& file) {
    std::fstream bytes(file, std::ios::in | std::ios::out | std::ios::binary);
    bytes.seekp(static_cast<std::streamoff>(fs::file_size(file) / 2));
    for (int i = 0; i < 4096 * 10; ++i) bytes.put('\x5A');
  }
};

TEST_F(BackupTest, TheDaysCopyIsMadeOnceTheStartIsOver) {
  Store("IK3ABC");
  EXPECT_TRUE(BackupCopies(directory.Path()).empty());
  LetTheCopyBeMade();
  const auto copies = BackupCopies(directory.Path());
  EXPECT_EQ(Names(copies), "Brenvo-2001-02-03.mdb;");
  EXPECT_EQ(ContactsIn(copies[0]), 1);
  EXPECT_EQ(frame->StatusBar1.Panel(1), "Copia di sicurezza del 03/02/2001 fatta");
  EXPECT_FALSE(session.Backup->Running());
}

TEST_F(BackupTest, NothingElseStandsInTheDirectoryAfterwards) {
  LetTheCopyBeMade();
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(BackupDirectory())) {
    names.push_back(entry.path().filename().string());
  }
  EXPECT_EQ(names, std::vector<std::string>{"Brenvo-2001-02-03.mdb"});
}

TEST_F(BackupTest, TheCopyHoldsTheMomentAtWhichItBegan) {
  Store("IK3ABC");
  machine.Advance(5000);  // begun, with nothing of it written
  Store("IK3DEF");
  LetTheCopyBeMade();
  EXPECT_EQ(ContactsIn(BackupCopies(directory.Path())[0]), 1);
  EXPECT_EQ(Rows("select Call from Log").size(), 2u);
}

TEST_F(BackupTest, ADayThatHasItsCopyGetsNoSecondOne) {
  LetTheCopyBeMade();
  const auto written = fs::last_write_time(BackupCopies(directory.Path())[0].file);
  session.Backup->Start();
  EXPECT_FALSE(session.Backup->Running());
  EXPECT_EQ(fs::last_write_time(BackupCopies(directory.Path())[0].file), written);
}

TEST_F(BackupTest, AClockSetBackMakesACopyOfItsOwnDay) {
  LetTheCopyBeMade();
  machine.SetNow(DateTime::Of(2001, 1, 1, 12));
  session.Backup->Start();
  LetTheCopyBeMade();
  EXPECT_EQ(Names(BackupCopies(directory.Path())), "Brenvo-2001-02-03.mdb;Brenvo-2001-01-01.mdb;");
}

TEST_F(BackupTest, ACopyMadeUnderAClockSetBackStaysBesideManyNewerOnes) {
  fs::create_directories(BackupDirectory());
  for (int month = 1; month <= 12; ++month) {
    const auto name = fmt::format("Brenvo-2099-{:02}-01.mdb", month);
    std::ofstream(BackupDirectory() / name) << "of a year that is not yet";
  }
  Store("IK3ABC");
  LetTheCopyBeMade();
  const auto copies = BackupCopies(directory.Path());
  ASSERT_EQ(copies.size(), 13u);
  EXPECT_EQ(ContactsIn(copies.back()), 1);
}

TEST_F(BackupTest, OldCopiesGoOnlyWhenANewOneIsMade) {
  fs::create_directories(BackupDirectory());
  for (int day = 1; day <= 20; ++day) {
    std::ofstream(BackupDirectory() / ("Brenvo-2001-01-" + std::string(day < 10 ? "0" : "") +
                                       std::to_string(day) + ".mdb"));
  }
  std::ofstream(BackupDirectory() / "appunti.txt");
  EXPECT_EQ(BackupCopies(directory.Path()).size(), 20u);
  LetTheCopyBeMade();
  EXPECT_EQ(BackupCopies(directory.Path()).size(), 10u);
  EXPECT_TRUE(fs::exists(BackupDirectory() / "appunti.txt"));
}

TEST_F(BackupTest, ADirectoryThatCannotBeMadeIsTold) {
  std::ofstream(BackupDirectory()) << "a file in its place";
  LetTheCopyBeMade();
  EXPECT_EQ(frame->StatusBar1.Panel(1),
            "La copia di sicurezza non e' riuscita: Errore di accesso a 'Backup' (Not a "
            "directory).");
  EXPECT_FALSE(session.Backup->Running());
  Store("IK3ABC");  // the log goes on
}

TEST_F(BackupTest, ADiskThatFillsUpAtAnyMomentIsToldAndLeavesNoCopy) {
  Store("IK3ABC");
  for (std::int64_t n = 0;; n += 3) {
    SCOPED_TRACE(n);
    RecordedFiles files;  // the copy is opened under it, the log is not
    machine.Advance(20);
    session.Backup->Start();
    files.FailFrom(n, SQLITE_FULL);
    LetTheCopyBeMade();
    const bool failed = files.HasFailed();
    files.StopFailing();
    EXPECT_FALSE(session.Backup->Running());
    if (!failed) break;
    ASSERT_EQ(frame->StatusBar1.Panel(1),
              "La copia di sicurezza non e' riuscita: Spazio su disco insufficiente.");
    ASSERT_TRUE(fs::is_empty(BackupDirectory()));
    Store("IK" + std::to_string(n));  // the log goes on
  }
  EXPECT_EQ(BackupCopies(directory.Path()).size(), 1u);
  EXPECT_EQ(frame->StatusBar1.Panel(1), "Copia di sicurezza del 03/02/2001 fatta");
}

TEST_F(BackupTest, ADamagedDatabaseIsToldAndNotWrittenAnyMore) {
  Store("IK3ABC");
  session.Windows.Unload(*frame);
  Damage(directory.Path() / "Brenvo.mdb");
  frame = &static_cast<MainFrame&>(session.Windows.Adopt(std::make_unique<MainFrame>(session)));
  LetTheCopyBeMade();
  EXPECT_EQ(frame->StatusBar1.Panel(1).find(
                "La copia di sicurezza non e' riuscita: Il file del database e' danneggiato"),
            0u);
  EXPECT_TRUE(BackupCopies(directory.Path()).empty());
  EXPECT_THROW(Store("IK3DEF"), DatabaseError);
  EXPECT_THROW(session.Db.BeginTrans(), DatabaseError);
}

TEST_F(BackupTest, AShutdownGivesTheCopyUp) {
  machine.Advance(5000);
  EXPECT_TRUE(session.Backup->Running());
  session.Windows.Unload(*frame);
  EXPECT_TRUE(BackupCopies(directory.Path()).empty());
  EXPECT_TRUE(fs::is_empty(BackupDirectory()));
  EXPECT_FALSE(fs::exists(directory.Path() / "Brenvo.mdb-wal"));
}

TEST_F(BackupTest, ACompactionGivesItUpAndBeginsItAgain) {
  machine.Advance(5000);
  Event([&] { CompattaDatabase(session); });
  EXPECT_TRUE(session.Backup->Running());
  LetTheCopyBeMade();
  EXPECT_EQ(BackupCopies(directory.Path()).size(), 1u);
}

TEST_F(BackupTest, ACheckThatIsInterruptedLeavesNoCopy) {
  session.Db.BeginTrans();
  for (int i = 0; i < 3000; ++i) Store("IK" + std::to_string(i));
  session.Db.CommitTrans();
  const fs::path file = directory.Path() / "Copy.mdb";
  {
    OnlineCopy copy(directory.Path() / "Brenvo.mdb", file);
    while (copy.Step(1000)) {
    }
    EXPECT_FALSE(copy.Verify([] { return false; }));
    EXPECT_THROW(copy.Verify([]() -> bool { throw std::runtime_error("asked"); }),
                 std::runtime_error);
    EXPECT_TRUE(fs::exists(file));
  }
  EXPECT_FALSE(fs::exists(file));
}

class RestoreTest : public BackupTest {
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
    InDialogs([act](Window& window) { act(static_cast<RipristinaBackup&>(window)); });
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

TEST_F(RestoreTest, TheCopyTakesThePlaceOfTheDatabaseWhichIsSetAside) {
  machine.Messages().QueueAnswer(true);
  InTheWindow([](RipristinaBackup& window) { window.cmRipristina.Press(); });
  Command();
  EXPECT_EQ(Rows("select Call from Log"), std::vector<std::string>{"IK3ABC"});
  EXPECT_EQ(session.MyLocator, "JN65AA");
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
  machine.SetNow(DateTime::Of(2001, 2, 3, 5));
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

TEST_F(RestoreTest, ACopyThatIsDamagedChangesNothing) {
  const BackupCopy copy = BackupCopies(directory.Path())[0];
  Damage(copy.file);
  EXPECT_THROW(RestoreBackup(session, copy), DatabaseError);
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
      } catch (const DatabaseError& failure) {
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
    ASSERT_EQ(told, "Spazio su disco insufficiente.");
    ASSERT_FALSE(fs::exists(directory.Path() / "Brenvo-ripristino.mdb"));
    ASSERT_EQ(BackupCopies(directory.Path()).size(), 1u);
    ASSERT_EQ(Rows("select Call from Log").size(), 2u);
  }
  EXPECT_GT(failures, 0);
  EXPECT_EQ(Rows("select Call from Log").size(), 1u);
}

TEST_F(RestoreTest, ADatabaseThatAnotherProgramHasOpenIsNotReplacedUnderIt) {
  Database other = Database::Open(directory.Path() / "Brenvo.mdb");
  const auto reading = other.OpenSnapshot("select Call from Log");
  std::string told;
  try {
    RestoreBackup(session, BackupCopies(directory.Path())[0]);
  } catch (const DatabaseError& failure) {
    told = failure.Description;
  }
  EXPECT_EQ(told, "Il database e' aperto in un altro programma.");
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

// The start with a database that is gone or damaged.
class RescueTest : public BackupTest {
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
    Database database = Database::Open(File());
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
