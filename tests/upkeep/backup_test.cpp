#include "upkeep/backup.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <thread>

#include "core/session.h"
#include "file/online_copy.h"
#include "tests/support/recorded_files.h"
#include "tests/support/threaded_platform.h"
#include "tests/upkeep/backup_station.h"
#include "upkeep/maintenance.h"

namespace brenvo::upkeep {
namespace {

namespace fs = std::filesystem;

std::string Names(const std::vector<BackupCopy>& copies) {
  std::string names;
  for (const BackupCopy& copy : copies) names += copy.file.filename().string() + ";";
  return names;
}

std::vector<base::DateTime> EveryDay(base::DateTime last, int count) {
  std::vector<base::DateTime> days;
  for (int i = 0; i < count; ++i) {
    days.push_back(base::DateTime::FromSeconds(last.Seconds() - std::int64_t{i} * 86400));
  }
  return days;
}

const base::DateTime kToday = base::DateTime::Of(2002, 12, 20);

TEST(DaysToDrop, TenDaysAreAllKept) {
  EXPECT_TRUE(DaysToDrop(EveryDay(kToday, 10), kToday).empty());
}

TEST(DaysToDrop, OfTwoYearsTenDaysAndTheEndOfElevenEarlierMonthsStay) {
  const std::vector<base::DateTime> days = EveryDay(kToday, 720);
  const std::vector<base::DateTime> dropped = DaysToDrop(days, kToday);
  std::vector<std::string> kept;
  for (const base::DateTime day : days) {
    if (std::find(dropped.begin(), dropped.end(), day) == dropped.end()) {
      kept.push_back(base::DateText(day));
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
  std::vector<base::DateTime> days;
  for (int year = 1980; year < 2000; ++year) days.push_back(base::DateTime::Of(year, 5, 1));
  const std::vector<base::DateTime> dropped = DaysToDrop(days, kToday);
  ASSERT_EQ(dropped.size(), 8u);
  EXPECT_EQ(dropped.front(), base::DateTime::Of(1987, 5, 1));
}

TEST(DaysToDrop, DaysAheadOfTheClockStayAndTakeNobodysPlace) {
  std::vector<base::DateTime> days = EveryDay(base::DateTime::Of(2099, 6, 30), 12);
  const std::vector<base::DateTime> past = EveryDay(kToday, 11);
  days.insert(days.end(), past.begin(), past.end());
  EXPECT_EQ(DaysToDrop(days, kToday),
            std::vector<base::DateTime>{base::DateTime::Of(2002, 12, 10)});
}

using BackupTest = BackupStation;

TEST_F(BackupTest, TheDaysCopyIsMadeOnceTheStartIsOver) {
  Store("IK3ABC");
  EXPECT_TRUE(BackupCopies(directory.Path()).empty());
  LetTheCopyBeMade();
  const auto copies = BackupCopies(directory.Path());
  EXPECT_EQ(Names(copies), "Brenvo-2001-02-03.mdb;");
  EXPECT_EQ(ContactsIn(copies[0]), 1);
  EXPECT_EQ(frame->StatusBar1.Panel(1), "Copia di sicurezza del 03/02/2001 fatta");
  EXPECT_FALSE(frame->Backup->Running());
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
  frame->Backup->Start();
  EXPECT_FALSE(frame->Backup->Running());
  EXPECT_EQ(fs::last_write_time(BackupCopies(directory.Path())[0].file), written);
}

TEST_F(BackupTest, ACopyIsOfTheDayOnWhichItBegins) {
  machine.SetNow(base::DateTime::Of(2001, 12, 31, 23, 59, 57));
  LetTheCopyBeMade();
  EXPECT_EQ(Names(BackupCopies(directory.Path())), "Brenvo-2002-01-01.mdb;");
  EXPECT_EQ(frame->StatusBar1.Panel(1), "Copia di sicurezza del 01/01/2002 fatta");
}

TEST_F(BackupTest, ADayThatHasItsCopyByThenKeepsIt) {
  fs::create_directories(BackupDirectory());
  std::ofstream(BackupDirectory() / "Brenvo-2002-01-01.mdb") << "kept";
  machine.SetNow(base::DateTime::Of(2001, 12, 31, 23, 59, 57));
  LetTheCopyBeMade();
  EXPECT_EQ(fs::file_size(BackupDirectory() / "Brenvo-2002-01-01.mdb"), 4u);
  EXPECT_FALSE(frame->Backup->Running());
}

TEST_F(BackupTest, AClockSetBackMakesACopyOfItsOwnDay) {
  LetTheCopyBeMade();
  machine.SetNow(base::DateTime::Of(2001, 1, 1, 12));
  frame->Backup->Start();
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
            "La copia di sicurezza non è riuscita: Errore di accesso a 'Backup' (una "
            "parte del percorso non è una cartella).");
  EXPECT_FALSE(frame->Backup->Running());
  Store("IK3ABC");  // the log goes on
}

TEST_F(BackupTest, ADiskThatFillsUpAtAnyMomentIsToldAndLeavesNoCopy) {
  Store("IK3ABC");
  for (std::int64_t n = 0;; n += 3) {
    SCOPED_TRACE(n);
    RecordedFiles files;  // the copy is opened under it, the log is not
    machine.Advance(20);
    frame->Backup->Start();
    files.FailFrom(n, SQLITE_FULL);
    LetTheCopyBeMade();
    const bool failed = files.HasFailed();
    files.StopFailing();
    EXPECT_FALSE(frame->Backup->Running());
    if (!failed) break;
    ASSERT_EQ(
        frame->StatusBar1.Panel(1),
        "La copia di sicurezza non è riuscita: Spazio su disco insufficiente: liberare spazio "
        "sul disco del database e riprovare.");
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
  frame = &static_cast<frame::MainFrame&>(
      session.Windows.Adopt(std::make_unique<frame::MainFrame>(session)));
  LetTheCopyBeMade();
  EXPECT_EQ(frame->StatusBar1.Panel(1).find(
                "La copia di sicurezza non è riuscita: Il file del database è danneggiato"),
            0u);
  EXPECT_TRUE(BackupCopies(directory.Path()).empty());
  EXPECT_THROW(Store("IK3DEF"), engine::DatabaseError);
  EXPECT_THROW(session.Db.BeginTrans(), engine::DatabaseError);
}

TEST_F(BackupTest, AShutdownGivesTheCopyUp) {
  machine.Advance(5000);
  EXPECT_TRUE(frame->Backup->Running());
  session.Windows.Unload(*frame);
  EXPECT_TRUE(BackupCopies(directory.Path()).empty());
  EXPECT_TRUE(fs::is_empty(BackupDirectory()));
  EXPECT_FALSE(fs::exists(directory.Path() / "Brenvo.mdb-wal"));
}

TEST_F(BackupTest, ACompactionGivesItUpAndBeginsItAgain) {
  machine.Advance(5000);
  Event([&] { CompattaDatabase(session); });
  EXPECT_TRUE(frame->Backup->Running());
  LetTheCopyBeMade();
  EXPECT_EQ(BackupCopies(directory.Path()).size(), 1u);
}

TEST_F(BackupTest, ACheckThatIsInterruptedLeavesNoCopy) {
  session.Db.BeginTrans();
  for (int i = 0; i < 3000; ++i) Store("IK" + std::to_string(i));
  session.Db.CommitTrans();
  const fs::path file = directory.Path() / "Copy.mdb";
  {
    file::OnlineCopy copy(directory.Path() / "Brenvo.mdb", file);
    while (copy.Step(1000)) {
    }
    EXPECT_FALSE(copy.Verify([] { return false; }));
    EXPECT_THROW(copy.Verify([]() -> bool { throw std::runtime_error("asked"); }),
                 std::runtime_error);
    EXPECT_TRUE(fs::exists(file));
  }
  EXPECT_FALSE(fs::exists(file));
}

class BackupOnAThread : public ::testing::Test {
 protected:
  static constexpr int kContacts = 2048;
  BackupOnAThread()
      : backup(
            [&]() -> core::Session& {
              machine.SetApplicationDirectory(directory.Path());
              machine.SetNow(base::DateTime::Of(2001, 2, 3, 4, 5, 6));
              session.Open();
              session.Db.Execute("insert into Log (DataQso,Call) values ('01/01/2001 10:00','A')");
              for (int i = 0; i < 11; ++i) {
                session.Db.Execute("insert into Log (DataQso,Call) select DataQso,Call+'" +
                                   std::string(1, static_cast<char>('A' + i)) + "' from Log");
              }
              return session;
            }(),
            [this](const std::string& text) { told += text; }) {
    backup.Start();
    machine.Advance(5000);  // it begins
  }

  ScratchStationDirectory directory;
  ThreadedPlatform machine;
  core::Session session{machine, directory.Path()};
  std::string told;
  DailyBackup backup;
};

TEST_F(BackupOnAThread, ContactsAreStoredWhileTheCopyIsMade) {
  const auto rows = session.Db.OpenDynaset("select * from Log");
  for (int minute = 0; minute < 200; ++minute) {
    session.Contacts.Add(core::ContactTable::kLog, *rows, [&](engine::EditableRecordset& row) {
      row.Set("DataQso", base::DateTime::Of(2002, 1, 1).Later(60 * minute));
      row.Set("Call", "IK3ABC");
    });
  }
  for (int tries = 0; backup.Running() && tries < 10000; ++tries) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    machine.Advance(100);
  }
  EXPECT_EQ(told, "Copia di sicurezza del 03/02/2001 fatta");
  const auto copies = BackupCopies(directory.Path());
  ASSERT_EQ(copies.size(), 1u);
  EXPECT_EQ(ContactsIn(copies[0]), kContacts);
}

TEST_F(BackupOnAThread, OneThatIsGivenUpLeavesNothing) {
  backup.Stop();
  EXPECT_TRUE(fs::is_empty(directory.Path() / "Backup"));
  session.CloseTables();
  EXPECT_FALSE(fs::exists(directory.Path() / "Brenvo.mdb-wal"));
}

}  // namespace
}  // namespace brenvo::upkeep
