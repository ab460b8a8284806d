#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <random>

#include <fmt/format.h>

#include "list/change_column.h"
#include "tests/support/integrity.h"
#include "tests/support/station.h"
#include "tests/support/thoroughly.h"

namespace brenvo::list {
namespace {

constexpr int kDoublings = 13;

// Says that it begins, then changes a column of all contacts, and says so.
[[noreturn]] void ChangeAll(const std::filesystem::path& directory, const std::string& text,
                            int out) {
  recorder::RecordingPlatform machine([](std::string_view) {});
  machine.SetNow(base::DateTime::Of(2001, 2, 3, 4, 5, 6));
  core::Session session(machine, directory);
  session.Windows.Show(session.Windows.Adopt(std::make_unique<frame::MainFrame>(session)));
  std::vector<std::int64_t> keys;
  for (const auto rows = session.Db.OpenSnapshot("select QsoNr from Log"); !rows->EOF_();
       rows->MoveNext()) {
    keys.push_back(rows->Field(std::size_t{0}).Integer());
  }
  if (write(out, "B", 1) != 1) _exit(2);
  ChangeColumn(session, "Note: " + text, keys, core::LogColumnOf(core::column::kNote), text);
  if (write(out, "E", 1) != 1) _exit(2);
  for (;;) pause();
}

TEST(Killed, DuringABulkChangeAllContactsAreChangedOrNone) {
  const int kills = Thoroughly(12, 200);
  ScratchStationDirectory directory;
  const std::filesystem::path file = directory.Path() / "Brenvo.mdb";
  {
    engine::Database database = file::OpenDatabaseFile(file);
    database.Execute("insert into Log (DataQso,Call,Note) values ('01/01/2001 10:00','A','-')");
    for (int i = 0; i < kDoublings; ++i) {
      database.Execute(fmt::format(
          "insert into Log (DataQso,Call,Note) select DataQso,Call+'{}',Note from Log", i));
    }
  }
  const std::string all = std::to_string(1 << kDoublings);
  std::mt19937 random(1);
  std::uniform_int_distribution<useconds_t> moment(0, 400000);
  std::string before = "-";
  int done = 0, undone = 0;
  for (int kill = 0; kill < kills; ++kill) {
    SCOPED_TRACE(kill);
    const std::string text = std::to_string(kill);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
      close(ends[0]);
      ChangeAll(directory.Path(), text, ends[1]);
    }
    close(ends[1]);
    char said = 0;
    ASSERT_EQ(read(ends[0], &said, 1), 1);
    usleep(moment(random));
    ::kill(child, SIGKILL);
    const bool ended = read(ends[0], &said, 1) == 1;
    close(ends[0]);
    waitpid(child, nullptr, 0);

    ASSERT_EQ(IntegrityOf(file), "ok");
    engine::Database database = file::OpenDatabaseFile(file);
    const auto count = [&](const std::string& select) {
      return database.OpenSnapshot(select)->Field(std::size_t{0}).Text();
    };
    const std::string changed = count("select count(*) from Log where Note='" + text + "'");
    const std::string works =
        count("select count(*) from Storia where Titolo='Note: " + text + "'");
    if (changed == all) {
      ++done;
      EXPECT_EQ(works, "1");
      before = text;
    } else {
      ++undone;
      ASSERT_FALSE(ended) << "what it said is lost";
      ASSERT_EQ(changed, "0");
      EXPECT_EQ(works, "0");
      ASSERT_EQ(count("select count(*) from Log where Note='" + before + "'"), all);
    }
  }
  std::printf("%d kills: %d done, %d undone\n", kills, done, undone);
  EXPECT_GT(undone, 0);
}

}  // namespace
}  // namespace brenvo::list
