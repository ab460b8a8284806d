// The handle that windows hold, over a store that is none of ours.
#include "engine/database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "tests/support/error_of.h"

namespace brenvo::engine {
namespace {

using ::testing::ElementsAre;

// Writes down what is asked of it.
class NotingStore : public Store {
 public:
  explicit NotingStore(std::vector<std::string>& notes) : notes_(notes) {}
  ~NotingStore() override { notes_.push_back("closed"); }

  std::int64_t Execute(std::string_view statement) override {
    Note("execute", statement);
    return 7;
  }
  void BeginTrans() override {
    Note("begin");
    inTransaction_ = true;
  }
  void CommitTrans() override {
    Note("commit");
    inTransaction_ = false;
  }
  void Rollback() override { Note("rollback"); }
  void PutOffIndexes(std::string_view table) override { Note("put off", table); }
  bool InTransaction() const override { return inTransaction_; }
  std::unique_ptr<Table> OpenTable(std::string_view name) override { return Note("table", name); }
  std::unique_ptr<Snapshot> OpenSnapshot(std::string_view select) override {
    return Note("snapshot", select);
  }
  std::unique_ptr<Dynaset> OpenDynaset(std::string_view select) override {
    return Note("dynaset", select);
  }
  std::unique_ptr<RowAppender> OpenAppender(std::string_view table) override {
    return Note("appender", table);
  }
  std::unique_ptr<Reader> OpenReader() override { return Note("reader"); }
  void WhenUnread(std::function<void()>) override { Note("when unread"); }
  bool ReadOn(std::int64_t rows) override {
    Note("read on", std::to_string(rows));
    return true;
  }
  void Watch(std::function<bool()> goOn) override { Note(goOn ? "watch" : "watch no more"); }
  void RefuseWrites() override { Note("refuse"); }
  std::int64_t DataVersion() override { return 7; }
  EngineCounters Counters() const override { return {3, 2, 1}; }
  std::string QueryPlan(std::string_view select) override {
    Note("plan", select);
    return "SCAN";
  }

 private:
  std::nullptr_t Note(const char* what, std::string_view text = "") {
    notes_.push_back(std::string(what) + (text.empty() ? "" : " ") + std::string(text));
    return nullptr;
  }

  std::vector<std::string>& notes_;
  bool inTransaction_ = false;
};

class DatabaseTest : public ::testing::Test {
 protected:
  Database Open() { return Database(std::make_unique<NotingStore>(notes_)); }

  std::vector<std::string> notes_;
};

TEST_F(DatabaseTest, WhateverIsAskedReachesTheStoreBehindIt) {
  Database db = Open();
  db.BeginTrans();
  EXPECT_TRUE(db.InTransaction());
  EXPECT_EQ(db.Execute("delete * from Log"), 7);
  db.CommitTrans();
  EXPECT_FALSE(db.InTransaction());
  db.Rollback();
  db.OpenTable("Log");
  db.OpenSnapshot("s");
  db.OpenDynaset("d");
  db.OpenAppender("Band");
  db.OpenReader();
  db.WhenUnread([] {});
  EXPECT_TRUE(db.ReadOn(5));
  db.Watch([] { return true; });
  db.Watch(nullptr);
  db.RefuseWrites();
  EXPECT_EQ(db.DataVersion(), 7);
  EXPECT_EQ(db.QueryPlan("p"), "SCAN");
  EXPECT_EQ(db.Counters().rowsStepped, 1);
  EXPECT_THAT(notes_,
              ElementsAre("begin", "execute delete * from Log", "commit", "rollback", "table Log",
                          "snapshot s", "dynaset d", "appender Band", "reader", "when unread",
                          "read on 5", "watch", "watch no more", "refuse", "plan p"));
}

TEST_F(DatabaseTest, AClosedOneRefusesEveryUse) {
  Database never;
  Database closed = Open();
  closed.Close();
  for (Database* db : {&never, &closed}) {
    EXPECT_FALSE(db->IsOpen());
    EXPECT_FALSE(db->InTransaction());
    EXPECT_EQ(ErrorOf([&] { db->Execute("delete * from Log"); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->BeginTrans(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->CommitTrans(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->Rollback(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->OpenTable("Log"); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->OpenSnapshot("s"); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->OpenDynaset("d"); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->OpenAppender("Log"); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->OpenReader(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->WhenUnread([] {}); }), 3420);
    EXPECT_FALSE(db->ReadOn(5));
    EXPECT_EQ(ErrorOf([&] { db->RefuseWrites(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->DataVersion(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->QueryPlan("p"); }), 3420);
    EXPECT_EQ(ErrorOf([&] { db->Counters(); }), 3420);
    db->Close();
  }
  EXPECT_THAT(notes_, ElementsAre("closed"));
}

TEST_F(DatabaseTest, TheStoreIsClosedWithTheLastThatHoldsIt) {
  Database db;
  {
    Database opened = Open();
    db = std::move(opened);
    EXPECT_FALSE(opened.IsOpen());
  }
  EXPECT_TRUE(db.IsOpen());
  EXPECT_THAT(notes_, ElementsAre());
  db = Open();
  EXPECT_THAT(notes_, ElementsAre("closed"));
  EXPECT_TRUE(db.IsOpen());
}

}  // namespace
}  // namespace brenvo::engine
