#include <fmt/format.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>
#include <set>
#include <sstream>

#include "conferme/taking.h"
#include "frame/main_frame.h"
#include "tests/conferme/reports.h"
#include "tests/support/integrity.h"
#include "tests/support/station.h"
#include "tests/support/thoroughly.h"

namespace brenvo::conferme {
namespace {

constexpr int kContactsOfKill = 300;

// Says "R" when it is ready, and "T" when the report has been taken.
[[noreturn]] void TakeAll(const std::filesystem::path& directory, const Report& report, int out) {
  recorder::RecordingPlatform machine([](std::string_view) {});
  machine.SetNow(base::DateTime::Of(2001, 2, 3, 4, 5, 6));
  core::Session session(machine, directory);
  session.Windows.Show(session.Windows.Adopt(std::make_unique<frame::MainFrame>(session)));
  const auto matched = MatchLog(session, report.records);
  if (write(out, "R", 1) != 1) _exit(2);
  std::ostringstream told;
  TakeReport(session, "prova", report, *matched, told);
  if (write(out, "T", 1) != 1) _exit(2);
  for (;;) pause();
}

TEST(Killed, AReportIsTakenWholeOrNotAtAll) {
  const int kills = Thoroughly(6, 100);
  ScratchStationDirectory directory;
  const std::filesystem::path file = directory.Path() / "Brenvo.mdb";
  std::vector<std::string> records;
  {
    engine::Database database = file::OpenDatabaseFile(file);
    database.Execute("update [User] set Call='IK0XYZ'");
    for (int i = 0; i < kContactsOfKill; ++i) {
      const std::string call = fmt::format("IK{}AAA", i);
      database.Execute(
          fmt::format("insert into Log (DataQso,Call,Banda,Modo) values ('01/01/2001 "
                      "10:{:02}','{}',' 20 m','CW')",
                      i % 60, call));
      records.push_back(LotwRecord(call, "20M", "CW", "20010101", fmt::format("10{:02}00", i % 60),
                                   {{"GRIDSQUARE", "JN65AA"}}));
    }
  }
  const Report report = ReportOf(LotwReport(records));
  std::mt19937 random(1);
  std::uniform_int_distribution<useconds_t> moment(0, 400000);
  for (int kill = 0; kill < kills; ++kill) {
    SCOPED_TRACE(kill);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
      close(ends[0]);
      TakeAll(directory.Path(), report, ends[1]);
    }
    close(ends[1]);
    char said = 0, last = 0;
    ASSERT_EQ(read(ends[0], &last, 1), 1);
    usleep(moment(random));
    ::kill(child, SIGKILL);
    while (read(ends[0], &said, 1) == 1) last = said;
    close(ends[0]);
    waitpid(child, nullptr, 0);

    ASSERT_EQ(IntegrityOf(file), "ok");
    engine::Database database = file::OpenDatabaseFile(file);
    const auto count = [&](const char* select) {
      return database.OpenSnapshot(select)->Field(std::size_t{0}).Integer();
    };
    const std::int64_t told = count("select count(*) from LogConferme");
    EXPECT_TRUE(told == 0 || told == kContactsOfKill) << told;
    if (last == 'T') {
      EXPECT_EQ(told, kContactsOfKill);
    }
    EXPECT_EQ(count("select count(*) from LogAdif where Campo='LOTW_QSL_RCVD'"), told);
    EXPECT_EQ(count("select count(*) from Log where Locator='JN65AA'"), told);
    EXPECT_EQ(count("select count(*) from StoriaLog"), told);
    for (const char* each :
         {"delete * from LogConferme", "delete * from LogAdif", "delete * from StoriaLog",
          "delete * from StoriaCampi", "delete * from Storia", "update Log set Locator=Null"}) {
      database.Execute(each);
    }
  }
}

}  // namespace
}  // namespace brenvo::conferme
