#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include "file/database_file.h"
#include "log/log_form.h"
#include "station/station.h"
#include "tests/support/golden.h"
#include "tests/support/recorded_files.h"
#include "tests/support/station.h"
#include "upkeep/backup.h"

namespace brenvo::station {
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

sqlite3* holder = nullptr;  // another program's connection

const Fault kFaults[] = {
    {"TheDiskIsFull", [](RecordedFiles& files, const fs::path&) { files.FailFrom(0, SQLITE_FULL); },
     " 3026 - Spazio su disco insufficiente: liberare spazio sul disco del database e riprovare."},
    {"TheDiskFails",
     [](RecordedFiles& files, const fs::path&) { files.FailFrom(1, SQLITE_IOERR_FSYNC); },
     " 3146 - Errore del disco (disk I/O error): controllare il disco su cui sta il database, e il "
     "suo collegamento."},
    {"TheFileBecomesReadOnly",
     [](RecordedFiles& files, const fs::path&) { files.FailFrom(0, SQLITE_READONLY); },
     " 3027 - Il database è di sola lettura: dare all'utente il permesso di scrivere il file e la "
     "sua cartella."},
    {"AnotherProgramLocksIt",
     [](RecordedFiles&, const fs::path& directory) {
       sqlite3_open((directory / "Brenvo.mdb").c_str(), &holder);
       sqlite3_exec(holder, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
     },
     " 3260 - Il database è bloccato da un altro programma: chiuderlo e riprovare."},
    {"TheDirectoryVanishes",
     [](RecordedFiles&, const fs::path& directory) {
       fs::rename(directory, directory.string() + "-away");
     },
     " 3024 - Il file del database è stato spostato o cancellato."},
    {"TheFileIsDeleted",
     [](RecordedFiles&, const fs::path& directory) {
       fs::create_hard_link(directory / "Brenvo.mdb", directory / "kept");
       fs::create_hard_link(directory / "Brenvo.mdb-wal", directory / "kept-wal");
       fs::remove(directory / "Brenvo.mdb");
     },
     " 3024 - Il file del database è stato spostato o cancellato."},
};

void Store(log::LogForm& log, std::string_view call) {
  log.ClearQso();
  log.CallQso.SetText(call);
  log.Banda.SetText("  2 m");
  log.InsertQso();
}

class DatabaseFault : public testing::TestWithParam<Fault> {
 protected:
  ~DatabaseFault() override {
    std::error_code ignored;
    fs::remove_all(directory.Path().string() + "-away", ignored);
  }
  // Where the data is afterwards.
  fs::path File() const {
    for (const fs::path& file : {directory.Path() / "Brenvo.mdb", directory.Path() / "kept",
                                 fs::path(directory.Path().string() + "-away") / "Brenvo.mdb"}) {
      if (fs::exists(file)) return file;
    }
    return {};
  }
  ScratchStationDirectory directory;
};

TEST_P(DatabaseFault, IsToldUnderTheOperationsNameAndLosesNothing) {
  RecordedFiles files;
  recorder::RecordingPlatform machine;
  machine.SetNow(base::DateTime::Of(2001, 2, 3, 4, 5, 6));
  {
    core::Session session(machine, directory.Path());
    ASSERT_NE(StartStation(session), nullptr);
    auto& log = static_cast<log::LogForm&>(*session.Windows.LoadNew("LogForm"));
    session.Windows.Show(log);
    session.Windows.RunEvent([&] { Store(log, "IK3ABC"); });
    machine.TakeLines();
    GetParam().strike(files, directory.Path());
    EXPECT_THROW(session.Windows.RunEvent([&] { Store(log, "IK3DEF"); }), forms::ProgramEnded);
    files.StopFailing();
    const std::vector<std::string> lines = machine.TakeLines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2],
              fmt::format("message critical \"Insert Qso\" \"{}\"", GetParam().told));
    EXPECT_EQ(lines.back(), "end-program");
    sqlite3_close(holder);
    holder = nullptr;
  }
  engine::Database database = file::OpenDatabaseFile(File());
  const auto rows = database.OpenSnapshot("select Call from Log");
  ASSERT_FALSE(rows->EOF_());
  EXPECT_EQ(rows->Field("Call").Text(), "IK3ABC");
  rows->MoveNext();
  EXPECT_TRUE(rows->EOF_());
}

INSTANTIATE_TEST_SUITE_P(All, DatabaseFault, testing::ValuesIn(kFaults),
                         [](const auto& each) { return std::string(each.param.name); });

// What a station tells that starts in `directory` without a superuser's rights, stores a contact,
// and lives until the day's copy is due.
std::string ToldWithoutRights(const fs::path& directory) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("pipe");
  const pid_t child = fork();
  if (child == 0) {
    constexpr int kNobody = 65534;
    if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(1);
    std::string told;
    recorder::RecordingPlatform machine([&](const std::string& line) { told += line + '\n'; });
    machine.SetNow(base::DateTime::Of(2001, 2, 3, 4, 5, 6));
    core::Session session(machine, directory);
    if (frame::MainFrame* const frame = StartStation(session)) {
      auto& log = static_cast<log::LogForm&>(*session.Windows.LoadNew("LogForm"));
      session.Windows.Show(log);
      session.Windows.RunEvent([&] { Store(log, "IK3ABC"); });
      machine.Advance(20000);
      told += frame->StatusBar1.Panel(1) + '\n';
    }
    _exit(write(ends[1], told.data(), told.size()) < 0 ? 1 : 0);
  }
  close(ends[1]);
  std::string told;
  char buffer[4096];
  for (ssize_t count; (count = read(ends[0], buffer, sizeof buffer)) > 0;) {
    told.append(buffer, static_cast<std::size_t>(count));
  }
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  return told;
}

class ReadOnlyDirectory : public testing::Test {
 protected:
  static constexpr char kReadOnly[] =
      "message critical \"Brenvo\" \"3027 - Il database è di sola lettura: dare all'utente il "
      "permesso di scrivere il file e la sua cartella.\"\n";
  static constexpr auto kAll = fs::perms::owner_all | fs::perms::group_all | fs::perms::others_all;
  static constexpr auto kWrite =
      fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

  ReadOnlyDirectory() {
    fs::permissions(File(), kAll);
    fs::permissions(directory.Path(), kAll);
  }
  ~ReadOnlyDirectory() override { fs::permissions(directory.Path(), kAll); }
  fs::path File() const { return directory.Path() / "Brenvo.mdb"; }
  static void TakeWriting(const fs::path& path) {
    fs::permissions(path, kWrite, fs::perm_options::remove);
  }
  ScratchStationDirectory directory;
};

TEST_F(ReadOnlyDirectory, IsToldAtTheFirstStart) {
  TakeWriting(directory.Path());
  EXPECT_EQ(ToldWithoutRights(directory.Path()), kReadOnly);
}

TEST_F(ReadOnlyDirectory, IsToldAtALaterStart) {
  file::OpenDatabaseFile(File()).Close();
  const std::string before = ReadBytes(File());
  TakeWriting(directory.Path());
  EXPECT_EQ(ToldWithoutRights(directory.Path()), kReadOnly);
  EXPECT_EQ(ReadBytes(File()), before);
}

TEST_F(ReadOnlyDirectory, AFileThatMayNotBeWrittenIsToldAtTheStart) {
  TakeWriting(File());
  EXPECT_EQ(ToldWithoutRights(directory.Path()), kReadOnly);
}

TEST_F(ReadOnlyDirectory, OfTheDailyCopiesIsToldAndTheLogGoesOn) {
  fs::create_directory(directory.Path() / "Backup");
  TakeWriting(directory.Path() / "Backup");
  EXPECT_EQ(ToldWithoutRights(directory.Path()),
            "La copia di sicurezza non è riuscita: Nella directory del file non si può "
            "scrivere: dare all'utente il permesso di scrivervi.\n");
  EXPECT_EQ(file::OpenDatabaseFile(File()).OpenSnapshot("select Call from Log")->Field(0).Text(),
            "IK3ABC");
}

// What a station tells on a small disk of its own with `files` files and `megabytes`, filled up by
// `fill` behind the delivered database. Nothing where nobody may make such a disk.
std::optional<std::string> ToldOnASmallDisk(const std::string& options,
                                            void (*fill)(const fs::path& directory)) {
  const ScratchStationDirectory given;
  const ScratchDirectory place;
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("pipe");
  const pid_t child = fork();
  constexpr int kNoDisk = 77;
  if (child == 0) {
    // The disk is this process's alone and goes with it.
    const fs::path disk = place.Path();
    if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) _exit(kNoDisk);
    mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    if (mount("none", disk.c_str(), "tmpfs", 0, options.c_str()) != 0) _exit(kNoDisk);
    fs::copy_file(given.Path() / "Brenvo.mdb", disk / "Brenvo.mdb");
    fs::create_directory(disk / "Backup");
    fs::create_hard_link(disk / "Brenvo.mdb", disk / "Backup" / "Brenvo-2001-02-03.mdb");
    fill(disk);
    std::string told;
    recorder::RecordingPlatform machine([&](const std::string& line) { told += line + '\n'; });
    machine.SetNow(base::DateTime::Of(2001, 2, 3, 4, 5, 6));
    core::Session session(machine, disk);
    if (StartStation(session) != nullptr) told += "started\n";
    told += upkeep::ContentsOf(upkeep::BackupCopies(disk).at(0)) + '\n';
    _exit(write(ends[1], told.data(), told.size()) < 0 ? 1 : 0);
  }
  close(ends[1]);
  std::string told;
  char buffer[4096];
  for (ssize_t count; (count = read(ends[0], buffer, sizeof buffer)) > 0;) {
    told.append(buffer, static_cast<std::size_t>(count));
  }
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFEXITED(status) && WEXITSTATUS(status) == kNoDisk) return std::nullopt;
  EXPECT_EQ(status, 0);
  return told;
}

TEST(SmallDisk, ThatIsFullAtTheStartIsToldAsFullAndCopiesCanBeRead) {
  const auto told = ToldOnASmallDisk("size=8m", [](const fs::path& disk) {
    std::ofstream full(disk / "full", std::ios::binary);
    while (full << std::string(4096, 'x') << std::flush) {
    }
  });
  if (!told) GTEST_SKIP() << "no disk of one's own here";
  EXPECT_EQ(*told,
            "message critical \"Brenvo\" \"3026 - Spazio su disco insufficiente: liberare spazio "
            "sul disco del database e riprovare.\"\n0 QSO\n");
}

TEST(SmallDisk, ThatTakesNoFurtherFileIsToldAndCopiesCanBeRead) {
  const auto told = ToldOnASmallDisk("size=8m,nr_inodes=10", [](const fs::path& disk) {
    for (int i = 0; std::ofstream(disk / std::to_string(i)); ++i) {
    }
  });
  if (!told) GTEST_SKIP() << "no disk of one's own here";
  EXPECT_EQ(*told,
            "message critical \"Brenvo\" \"3026 - Spazio su disco insufficiente: accanto al "
            "database non si può creare un file, perché il disco è pieno o non vi stanno altri "
            "file. Cancellare dei file e riprovare.\"\n0 QSO\n");
}

TEST(ClockSetBack, ContactsAreStoredAtTheTimeThatTheClockShowsAndNumbersGoOn) {
  ScratchStationDirectory directory;
  recorder::RecordingPlatform machine;
  machine.SetNow(base::DateTime::Of(2001, 2, 3, 4, 5, 6));
  core::Session session(machine, directory.Path());
  ASSERT_NE(StartStation(session), nullptr);
  auto& log = static_cast<log::LogForm&>(*session.Windows.LoadNew("LogForm"));
  session.Windows.Show(log);
  for (const char* call : {"IK3ABC", "IK3DEF"}) {
    session.Windows.RunEvent([&] { Store(log, call); });
    machine.SetNow(base::DateTime::Of(1999, 12, 31, 23, 59, 0));
  }
  const auto rows = session.Db.OpenSnapshot("select * from Log order by QsoNr");
  EXPECT_EQ(rows->Field("DataQso").Text(), "03/02/2001 04:05:00");
  rows->MoveNext();
  EXPECT_EQ(rows->Field("DataQso").Text(), "31/12/1999 23:59:00");
}

}  // namespace
}  // namespace brenvo::station
