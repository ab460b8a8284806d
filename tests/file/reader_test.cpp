#include "engine/reader.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ReaderTest : public testing::Test {
 protected:
  // The first column as texts.
  static std::vector<std::string> Read(engine::Reader& reader, std::string_view select) {
    std::vector<std::string> texts;
    EXPECT_TRUE(reader.ForEach(select, [&](engine::Reader::Row& row) {
      texts.emplace_back(row.Text(0));
      return true;
    }));
    return texts;
  }

  ScratchDatabase scratch_;
  engine::Database database_ = scratch_.Open();
};

TEST_F(ReaderTest, SeesWhatWasStoredWhenItWasMadeAndNothingLater) {
  AddContact(database_, 1, "I1AAA");
  database_.BeginTrans();
  AddContact(database_, 2, "I2BBB");
  const auto early = database_.OpenReader();
  database_.CommitTrans();
  const auto late = database_.OpenReader();
  database_.Execute("DELETE * FROM Log");
  EXPECT_THAT(Read(*early, "select Call from Log"), ElementsAre("I1AAA"));
  EXPECT_THAT(Read(*late, "select Call from Log"), ElementsAre("I1AAA", "I2BBB"));
  EXPECT_THAT(Read(*database_.OpenReader(), "select Call from Log"), IsEmpty());
}

TEST_F(ReaderTest, ADateIsReadAsOneAndWhatIsNoneAsNothing) {
  database_.Execute("insert into Log (DataQso,Call) values ('03/02/2001 10:15:20','I1AAA')");
  database_.Execute("insert into Log (Call) values ('I2BBB')");
  std::vector<std::optional<base::DateTime>> dates;
  const auto reader = database_.OpenReader();
  reader->ForEach("select DataQso,Call from Log order by QsoNr", [&](engine::Reader::Row& row) {
    dates.push_back(row.Date(0));
    return true;
  });
  EXPECT_THAT(dates, ElementsAre(base::DateTime::Of(2001, 2, 3, 10, 15, 20), std::nullopt));
}

TEST_F(ReaderTest, ReadsOnAnotherThreadWhileTheDatabaseIsWritten) {
  constexpr int kContacts = 300;
  database_.BeginTrans();
  for (int minute = 0; minute < kContacts; ++minute) AddContact(database_, minute, "I1AAA");
  database_.CommitTrans();
  const auto reader = database_.OpenReader();
  std::atomic<int> runs = 0;
  std::jthread thread([&](const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      int seen = 0;
      reader->ForEach("select Call from Log", [&](engine::Reader::Row& row) {
        seen += row.Text(0) == "I1AAA";
        return true;
      });
      if (seen != kContacts) return;
      ++runs;
    }
  });
  for (int minute = 0; minute < kContacts || (runs < 3 && minute < 100 * kContacts); ++minute) {
    AddContact(database_, kContacts + minute, "I2BBB");
  }
  thread.request_stop();
  thread.join();
  EXPECT_GE(runs, 3);
}

TEST_F(ReaderTest, GivesTheValuesOfASnapshotsCells) {
  scratch_.Sql(
      "INSERT INTO Log (DataQso, Call, Banda, \"Zona CQ\", Frequenza, QslRicevuta, Note) VALUES "
      "('2001-02-03 04:05:06', 'Łódź', NULL, 15, 144.3, -1, 12),"
      "('ieri', x'4131', ' 20 m', 'ovest', '14.2 MHz', 'boh', ''),"
      "(NULL, '', 5, 15.5, 7, 2, NULL)");
  constexpr std::size_t kDate = 1;  // which is no number
  const char* const select =
      "select QsoNr,DataQso,Call,Banda,[Zona CQ],Frequenza,QslRicevuta,Note from Log";
  const auto snapshot = database_.OpenSnapshot(select);
  const bool whole = database_.OpenReader()->ForEach(select, [&](engine::Reader::Row& row) {
    for (std::size_t column = 0; column < 8; ++column) {
      const engine::Value value = snapshot->Field(column);
      EXPECT_EQ(row.Text(column), value.Text()) << column;
      if (column != kDate) {
        EXPECT_EQ(row.Number(column), value.Number()) << column;
        EXPECT_EQ(row.Integer(column), value.Integer()) << column;
      }
      EXPECT_EQ(row.Bool(column), value.ReadableBool().value_or(false)) << column;
    }
    snapshot->MoveNext();
    return true;
  });
  EXPECT_TRUE(whole);
  EXPECT_TRUE(snapshot->EOF_());
}

TEST_F(ReaderTest, EndsWhenItIsTold) {
  for (int minute = 0; minute < 5; ++minute) AddContact(database_, minute, "I1AAA");
  int seen = 0;
  EXPECT_FALSE(database_.OpenReader()->ForEach("select Call from Log",
                                               [&](engine::Reader::Row&) { return ++seen < 3; }));
  EXPECT_EQ(seen, 3);
}

TEST_F(ReaderTest, TakesOneSelectAndNothingElse) {
  const auto reader = database_.OpenReader();
  const auto errorOf = [&](const char* statement) {
    return ErrorOf([&] { Read(*reader, statement); });
  };
  EXPECT_EQ(errorOf("delete * from Log"), engine::DatabaseError::kInvalidOperation);
  EXPECT_EQ(errorOf("select * from Nessuna"), engine::DatabaseError::kUnknownTable);
  EXPECT_EQ(errorOf("select Call from Log; select 1"), engine::DatabaseError::kCharactersAfterEnd);
}

TEST_F(ReaderTest, LeavesNoFileBehindAndTheDatabaseFreeToBeRewritten) {
  AddContact(database_, 1, "I1AAA");
  {
    const auto reader = database_.OpenReader();
    EXPECT_THAT(Read(*reader, "select Call from Log"), ElementsAre("I1AAA"));
  }
  database_.Close();
  EXPECT_FALSE(std::filesystem::exists(scratch_.Path() / "Brenvo.mdb-wal"));
  EXPECT_FALSE(std::filesystem::exists(scratch_.Path() / "Brenvo.mdb-shm"));
  CompactDatabase(scratch_.File(), scratch_.Path() / "New.mdb");
}

TEST_F(ReaderTest, ThatOutlivesTheDatabaseTakesTheJournalWithIt) {
  AddContact(database_, 1, "I1AAA");
  auto reader = database_.OpenReader();
  database_.Close();
  EXPECT_THAT(Read(*reader, "select Call from Log"), ElementsAre("I1AAA"));
  reader.reset();
  EXPECT_FALSE(std::filesystem::exists(scratch_.Path() / "Brenvo.mdb-wal"));
  database_ = scratch_.Open();
  EXPECT_THAT(Select(database_, "select Call from Log"), ElementsAre("I1AAA"));
}

TEST_F(ReaderTest, OfAClosedDatabaseThereIsNone) {
  database_.Close();
  EXPECT_EQ(ErrorOf([&] { database_.OpenReader(); }), engine::DatabaseError::kObjectClosed);
}

}  // namespace
}  // namespace brenvo::file
