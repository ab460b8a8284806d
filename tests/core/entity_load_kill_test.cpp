#include <fmt/format.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>
#include <set>

#include "core/countries_by_date.h"
#include "frame/main_frame.h"
#include "tests/support/entity_table.h"
#include "tests/support/integrity.h"
#include "tests/support/station.h"
#include "tests/support/thoroughly.h"

namespace brenvo::core {
namespace {

constexpr int kRulesOfALoad = 4000;

entities::Table BigTable() {
  entities::Table table;
  table.file = "prova.tbl";
  for (int i = 0; i < kRulesOfALoad; ++i) {
    AddCallRule(table, fmt::format("IK{}ABC", i), 225);
  }
  return table;
}

// Says each thing that has returned: "A" a load that is in use, "T" one that was taken back.
[[noreturn]] void ApplyAndTakeBack(const std::filesystem::path& directory, int out) {
  recorder::RecordingPlatform machine([](std::string_view) {});
  machine.SetNow(base::DateTime::Of(2001, 2, 3, 4, 5, 6));
  Session session(machine, directory);
  session.Windows.Show(session.Windows.Adopt(std::make_unique<frame::MainFrame>(session)));
  const entities::Table table = BigTable();
  for (;;) {
    session.ByDate.Apply(table);
    if (write(out, "A", 1) != 1) _exit(2);
    session.ByDate.TakeBack();
    if (write(out, "T", 1) != 1) _exit(2);
  }
}

TEST(Killed, ALoadOfCountriesIsInUseWholeOrNotAtAll) {
  const int kills = Thoroughly(8, 200);
  ScratchStationDirectory directory;
  const std::filesystem::path file = directory.Path() / "Brenvo.mdb";
  std::mt19937 random(1);
  std::uniform_int_distribution<useconds_t> moment(0, 300000);
  std::set<int> inUse;
  // Until kills have met the load both in use and not: how long it takes is the machine's affair.
  for (int kill = 0; kill < kills || (inUse.size() < 2 && kill < 30 * kills); ++kill) {
    SCOPED_TRACE(kill);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
      close(ends[0]);
      ApplyAndTakeBack(directory.Path(), ends[1]);
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
    int used = 0;
    std::int64_t lines = 0;
    for (const EntityLoad& load : EntityLoads(database)) {
      used += load.inUse;
      EXPECT_EQ(load.rules, kRulesOfALoad);
      const auto there = database.OpenSnapshot(
          fmt::format("select count(*) from EntitaRighe where Carico={}", load.number));
      const std::int64_t count = there->Field(0).Integer();
      EXPECT_TRUE(lines == 0 || count == lines) << count;
      lines = count;
    }
    EXPECT_LE(used, 1);
    inUse.insert(used);
    // The next work may have been done, and not been said.
    EXPECT_TRUE(last == 'A' || last == 'T');
    // Nothing grows from kill to kill but the table of loads.
    database.Execute("delete * from EntitaCarichi");
    database.Execute("delete * from EntitaRighe");
  }
  EXPECT_EQ(inUse, (std::set<int>{0, 1}));
}

}  // namespace
}  // namespace brenvo::core
