#include <fmt/format.h>
#include <gtest/gtest.h>

#include "log/log_form.h"
#include "station/station.h"
#include "tests/support/recorded_files.h"
#include "tests/support/station.h"

namespace brenvo {
namespace {

namespace fs = std::filesystem;

// What can happen to the database under a running station, and what the operator is told. The
// program ends with each, for a database in an unknown state is not written further; nothing that
// was stored before is lost.
struct Fault {
  const char* name;
  void (*strike)(RecordedFiles& files, const fs::path& directory);
  const char* told;
};

sqlite3* other = nullptr;  // another program's connection

const Fault kFaults[] = {
    {"TheDiskIsFull",
     [](RecordedFiles& files, const fs::path&) { files.FailFrom(0, SQLITE_FULL); },
     " 3026 - Spazio su disco insufficiente."},
    {"TheDiskFails",
     [](RecordedFiles& files, const fs::path&) { files.FailFrom(1, SQLITE_IOERR_FSYNC); },
     " 3146 - Errore del database (disk I/O error)."},
    {"TheFileBecomesReadOnly",
     [](RecordedFiles& files, const fs::path&) { files.FailFrom(0, SQLITE_READONLY); },
     " 3027 - Il database e' di sola lettura."},
    {"AnotherProgramLocksIt",
     [](RecordedFiles&, const fs::path& directory) {
       sqlite3_open((directory / "Brenvo.mdb").c_str(), &other);
       sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
     },
     " 3260 - Il database e' bloccato da un altro programma."},
    {"TheDirectoryVanishes",
     [](RecordedFiles&, const fs::path& directory) {
       fs::rename(directory, directory.string() + "-away");
     },
     " 3024 - Il file del database e' stato spostato o cancellato."},
    {"TheFileIsDeleted",
     [](RecordedFiles&, const fs::path& directory) {
       fs::create_hard_link(directory / "Brenvo.mdb", directory / "kept");
       fs::create_hard_link(directory / "Brenvo.mdb-wal", directory / "kept-wal");
       fs::remove(directory / "Brenvo.mdb");
     },
     " 3024 - Il file del database e' stato spostato o cancellato."},
};

void Store(LogForm& log, std::string_view call) {
  log.cmClear();
  log.CallQso.SetText(call);
  log.Banda.SetText("  2 m");
  log.cmInsert();
}

class DatabaseFault : public testing::TestWithParam<Fault> {
 protected:
  ~DatabaseFault() override {
    std::error_code ignored;
    fs::remove_all(directory.Path().string() + "-away", ignored);
  }
  // Where the data is afterwards.
  fs::path File() const {
    for (const fs::path& file :
         {directory.Path() / "Brenvo.mdb", directory.Path() / "kept",
          fs::path(directory.Path().string() + "-away") / "Brenvo.mdb"}) {
      if (fs::exists(file)) return file;
    }
    return {};
  }
  ScratchStationDirectory directory;
};

TEST_P(DatabaseFault, IsToldUnderTheOperationsNameAndLosesNothing) {
  RecordedFiles files;
  RecordingPlatform machine;
  machine.SetNow(DateTime::Of(2001, 2, 3, 4, 5, 6));
  {
    Session session(machine, directory.Path());
    ASSERT_NE(StartStation(session), nullptr);
    auto& log = static_cast<LogForm&>(*session.Windows.LoadNew("LogForm"));
    session.Windows.Show(log);
    session.Windows.RunEvent([&] { Store(log, "IK3ABC"); });
    machine.TakeLines();
    GetParam().strike(files, directory.Path());
    EXPECT_THROW(session.Windows.RunEvent([&] { Store(log, "IK3DEF"); }), ProgramEnded);
    files.StopFailing();
    const std::vector<std::string> lines = machine.TakeLines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2],
              fmt::format("message critical \"Insert Qso\" \"{}\"", GetParam().told));
    EXPECT_EQ(lines.back(), "end-program");
    sqlite3_close(other);
    other = nullptr;
  }
  Database database = Database::Open(File());
  const auto rows = database.OpenSnapshot("select Call from Log");
  ASSERT_FALSE(rows->EOF_());
  EXPECT_EQ(rows->Field("Call").Text(), "IK3ABC");
  rows->MoveNext();
  EXPECT_TRUE(rows->EOF_());
}

INSTANTIATE_TEST_SUITE_P(All, DatabaseFault, testing::ValuesIn(kFaults),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(ClockSetBack, ContactsAreStoredAtTheTimeThatTheClockShowsAndNumbersGoOn) {
  ScratchStationDirectory directory;
  RecordingPlatform machine;
  machine.SetNow(DateTime::Of(2001, 2, 3, 4, 5, 6));
  Session session(machine, directory.Path());
  ASSERT_NE(StartStation(session), nullptr);
  auto& log = static_cast<LogForm&>(*session.Windows.LoadNew("LogForm"));
  session.Windows.Show(log);
  for (const char* call : {"IK3ABC", "IK3DEF"}) {
    session.Windows.RunEvent([&] { Store(log, call); });
    machine.SetNow(DateTime::Of(1999, 12, 31, 23, 59, 0));
  }
  const auto rows = session.Db.OpenSnapshot("select * from Log order by QsoNr");
  EXPECT_EQ(rows->Field("DataQso").Text(), "03/02/2001 04:05:00");
  rows->MoveNext();
  EXPECT_EQ(rows->Field("DataQso").Text(), "31/12/1999 23:59:00");
}

}  // namespace
}  // namespace brenvo
