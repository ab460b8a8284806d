#include <gtest/gtest.h>

#include <map>
#include <random>

#include "file/journal.h"
#include "tests/file/contacts.h"
#include "tests/support/integrity.h"
#include "tests/support/recorded_files.h"
#include "tests/support/scratch_database.h"
#include "tests/support/thoroughly.h"

namespace brenvo::file {
namespace {

namespace fs = std::filesystem;

std::set<std::string> Calls(engine::Database& database) {
  std::set<std::string> calls;
  const auto rows = database.OpenSnapshot("select Call from Log");
  for (; !rows->EOF_(); rows->MoveNext()) calls.insert(rows->Field("Call").Text());
  return calls;
}

void Store(engine::Database& database, const std::string& call) {
  AddContact(database, 5, call.c_str());
}

constexpr int kTransferred = 30;  // of a transfer

class PowerCut : public testing::Test {
 protected:
  // After every operation, with nothing, all, and several random parts of what was not yet synced.
  // `check` gets the opened database and the marks set before the cut. What is left is never taken
  // for a journal of another file.
  void CutEverywhere(
      const RecordedFiles& files, const RecordedFiles::Files& before,
      const std::function<void(engine::Database&, const std::set<std::string>&)>& check,
      std::size_t from = 0, std::size_t to = SIZE_MAX,
      const std::vector<double>& shares = {0, 1, 0.5, 0.5, 0.9, 0.1}) {
    std::mt19937 random(1);
    // What opens the files that are left is watched too.
    const std::size_t all = std::min(to, files.Operations().size());
    // Cuts are many and slow.
    const std::size_t step = std::max<std::size_t>(1, (all - from) / Thoroughly(12u, 2000u));
    for (std::size_t count = from; count <= all; count += step) {
      std::set<std::string> marks;
      for (std::size_t i = 0; i < count; ++i) {
        const auto& operation = files.Operations()[i];
        if (operation.kind == RecordedFiles::Kind::kMark) marks.insert(operation.file);
      }
      for (const double share : shares) {
        SCOPED_TRACE(testing::Message() << count << " of " << all << ", " << share << " landed");
        RecordedFiles::Write(files.AfterPowerCut(before, count, share, random), rest_.Path());
        ASSERT_NE(JudgeJournal(rest_.Path() / "Brenvo.mdb"), Journal::kForeign);
        ASSERT_NO_THROW({
          engine::Database database = OpenDatabaseFile(rest_.Path() / "Brenvo.mdb");
          check(database, marks);
        });
        ASSERT_EQ(IntegrityOf(rest_.Path() / "Brenvo.mdb"), "ok");
        ++cuts_;
      }
    }
    RecordProperty("cuts", cuts_);
  }

  ScratchDatabase scratch_;
  ScratchDirectory rest_;
  int cuts_ = 0;
};

TEST_F(PowerCut, AContactWhoseUpdateReturnedIsThereAndAnotherIsWholeOrNotThere) {
  RecordedFiles::Files before;
  RecordedFiles files;
  {
    engine::Database database = scratch_.Open();
    before = RecordedFiles::FilesIn(scratch_.Path());
    before.erase(scratch_.File().string() + "-shm");
    for (int i = 0; i < 6; ++i) {
      Store(database, "IK" + std::to_string(i));
      files.Mark("IK" + std::to_string(i));
    }
  }
  // Closing writes everything back; after that nothing else is left.
  files.Mark("closed");
  CutEverywhere(files, before, [](engine::Database& database, const std::set<std::string>& marks) {
    const std::set<std::string> calls = Calls(database);
    for (const std::string& mark : marks) {
      if (mark != "closed") {
        EXPECT_TRUE(calls.contains(mark)) << mark;
      }
    }
    EXPECT_LE(calls.size(), marks.size() + 1);
  });
}

TEST_F(PowerCut, AChangeAndADeleteAreDoneOrNotDone) {
  RecordedFiles::Files before;
  {
    engine::Database database = scratch_.Open();
    Store(database, "IK3ABC");
    Store(database, "IK3DEF");
  }
  RecordedFiles files;
  {
    engine::Database database = scratch_.Open();
    before = RecordedFiles::FilesIn(scratch_.Path());
    before.erase(scratch_.File().string() + "-shm");
    auto rows = database.OpenDynaset("select * from Log order by Call");
    rows->Edit();
    rows->Set("Qra", std::string(300, 'A'));
    rows->Update();
    files.Mark("changed");
    rows->MoveNext();
    rows->Delete();
    files.Mark("deleted");
  }
  CutEverywhere(files, before, [](engine::Database& database, const std::set<std::string>& marks) {
    const auto first = database.OpenSnapshot("select Qra from Log where Call='IK3ABC'");
    ASSERT_FALSE(first->EOF_());
    const std::string qra = first->Field("Qra").Text();
    EXPECT_TRUE(qra.empty() || qra == std::string(300, 'A'));
    if (marks.contains("changed")) {
      EXPECT_FALSE(qra.empty());
    }
    const bool second = Calls(database).contains("IK3DEF");
    if (marks.contains("deleted")) {
      EXPECT_FALSE(second);
    }
    if (!marks.contains("changed")) {
      EXPECT_TRUE(second);
    }
  });
}

TEST_F(PowerCut, OfATransferAllContactsAreThereAndUnmarkedOrNoneIs) {
  RecordedFiles::Files before;

  {
    engine::Database database = scratch_.Open();
    for (int i = 0; i < kTransferred; ++i) {
      database.Execute(
          "insert into [Contest Qso] (DataContest, Banda, ProgrDato, Call, InLog) values "
          "('2001-02-03 00:00:00','  2 m'," +
          std::to_string(i + 1) + ",'IK" + std::to_string(i) + "',true)");
    }
  }
  RecordedFiles files;
  {
    engine::Database database = scratch_.Open();
    before = RecordedFiles::FilesIn(scratch_.Path());
    before.erase(scratch_.File().string() + "-shm");
    database.BeginTrans();
    for (int i = 0; i < kTransferred; ++i) Store(database, "IK" + std::to_string(i));
    database.Execute("update [Contest Qso] set InLog=false");
    database.CommitTrans();
    files.Mark("transferred");
  }
  CutEverywhere(files, before, [](engine::Database& database, const std::set<std::string>& marks) {
    const auto marked =
        database.OpenSnapshot("select count(*) from [Contest Qso] where InLog")->Field(0).Integer();
    const std::size_t calls = Calls(database).size();
    EXPECT_TRUE((calls == 0 && marked == kTransferred) || (calls == kTransferred && marked == 0))
        << calls << " in the log, " << marked << " marked";
    if (marks.contains("transferred")) {
      EXPECT_EQ(calls, kTransferred);
    }
  });
}

TEST_F(PowerCut, AJournalThatIsWrittenBackAndBeginsAnewIsTheFilesOwn) {
  constexpr int kMany = 1100;  // a page each: more than wait to be written back
  RecordedFiles::Files before;
  {
    engine::Database database = scratch_.Open();
    database.BeginTrans();
    for (int i = 0; i < kMany; ++i) Store(database, "IK" + std::to_string(i));
    database.CommitTrans();
  }
  RecordedFiles files;
  std::size_t writtenBack = 0, all = 0;
  {
    engine::Database database = scratch_.Open();
    before = RecordedFiles::FilesIn(scratch_.Path());
    before.erase(scratch_.File().string() + "-shm");
    database.Execute("update Log set Qra='" + std::string(3500, 'A') + "'");
    files.Mark("changed");
    writtenBack = files.Operations().size();
    Store(database, "IK3ABC");
    files.Mark("stored");
    all = files.Operations().size();
  }
  const auto check = [](engine::Database& database, const std::set<std::string>& marks) {
    const auto rows = database.OpenSnapshot(
        "select Call, Qra from Log where Call like 'IK3ABC' or "
        "Call='IK7'");
    std::map<std::string, std::string> names;
    for (; !rows->EOF_(); rows->MoveNext()) {
      names[rows->Field("Call").Text()] = rows->Field("Qra").Text();
    }
    EXPECT_TRUE(!marks.contains("changed") || !names.at("IK7").empty());
    EXPECT_TRUE(!marks.contains("stored") || names.contains("IK3ABC"));
  };
  CutEverywhere(files, before, check, writtenBack / 2, writtenBack, {0, 1, 0.5});
  CutEverywhere(files, before, check, writtenBack, all, {0, 1, 0.5});
}

TEST_F(PowerCut, ACompactionNeverTouchesItsSource) {
  {
    engine::Database database = scratch_.Open();
    for (int i = 0; i < 200; ++i) Store(database, "IK" + std::to_string(i));
  }
  const RecordedFiles::Files before = RecordedFiles::FilesIn(scratch_.Path());
  RecordedFiles files;
  CompactDatabase(scratch_.File(), scratch_.Path() / "BrenvoNEW.MDB");
  CutEverywhere(files, before, [](engine::Database& database, const std::set<std::string>&) {
    EXPECT_EQ(Calls(database).size(), 200u);
  });
}

}  // namespace
}  // namespace brenvo::file
