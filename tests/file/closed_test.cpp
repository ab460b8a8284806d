// What is left of recordsets when they, or the database under them, are closed.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

class ClosedTest : public ::testing::Test {
 protected:
  ClosedTest() {
    for (int minute = 1; minute < 4; ++minute) AddContact(db_, minute, "I1AAA");
  }
  // The numbers of what each use reports, one behind the other.
  template <typename Rows>
  static std::string Reported(const std::function<void(Rows&)> (&uses)[16], Rows& rows) {
    std::string numbers;
    for (const auto& use : uses) {
      if (use) numbers += std::to_string(ErrorOf([&] { use(rows); })) + " ";
    }
    return numbers;
  }

  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

std::string Many(const char* number, int count) {
  std::string numbers;
  for (int i = 0; i < count; ++i) numbers += std::string(number) + " ";
  return numbers;
}

TEST_F(ClosedTest, EveryUseOfADynasetIsAnError) {
  using Rows = engine::Dynaset;
  const std::function<void(Rows&)> uses[16] = {
      [](Rows& rows) { rows.MoveFirst(); },    [](Rows& rows) { rows.MoveLast(); },
      [](Rows& rows) { rows.MoveNext(); },     [](Rows& rows) { rows.MovePrevious(); },
      [](Rows& rows) { rows.BOF(); },          [](Rows& rows) { rows.EOF_(); },
      [](Rows& rows) { rows.RecordCount(); },  [](Rows& rows) { rows.Field("Call"); },
      [](Rows& rows) { rows.GetBookmark(); },  [](Rows& rows) { rows.SetBookmark({1}); },
      [](Rows& rows) { rows.AddNew(); },       [](Rows& rows) { rows.Edit(); },
      [](Rows& rows) { rows.CancelUpdate(); }, [](Rows& rows) { rows.Delete(); },
      [](Rows& rows) { rows.LastModified(); }, [](Rows& rows) { rows.FindFirst("QsoNr=1"); }};
  const auto closed = db_.OpenDynaset("select * from Log"),
             open = db_.OpenDynaset("select * from Log");
  open->MoveNext();
  closed->MoveNext();
  closed->Close();
  EXPECT_EQ(Reported(uses, *closed), Many("3420", 16));
  EXPECT_EQ(ErrorOf([&] { closed->Requery(); }), 3420);
  EXPECT_EQ(ErrorOf([&] { closed->RowAt(0); }), 3420);
  EXPECT_EQ(ErrorOf([&] { closed->BookmarkAt(0); }), 3420);
  EXPECT_EQ(ErrorOf([&] { closed->TotalRows(); }), 3420);
  EXPECT_EQ(ErrorOf([&] { closed->Set("Call", "x"); }), 3420);
  EXPECT_EQ(ErrorOf([&] { closed->Update(); }), 3420);
  db_.Close();
  EXPECT_EQ(Reported(uses, *open), Many("3420", 16));
}

TEST_F(ClosedTest, EveryUseOfATableIsAnError) {
  using Rows = engine::Table;
  const std::function<void(Rows&)> uses[16] = {
      [](Rows& rows) { rows.MoveFirst(); },    [](Rows& rows) { rows.MoveLast(); },
      [](Rows& rows) { rows.MoveNext(); },     [](Rows& rows) { rows.MovePrevious(); },
      [](Rows& rows) { rows.BOF(); },          [](Rows& rows) { rows.EOF_(); },
      [](Rows& rows) { rows.RecordCount(); },  [](Rows& rows) { rows.Field("Call"); },
      [](Rows& rows) { rows.GetBookmark(); },  [](Rows& rows) { rows.SetBookmark({1}); },
      [](Rows& rows) { rows.AddNew(); },       [](Rows& rows) { rows.Edit(); },
      [](Rows& rows) { rows.CancelUpdate(); }, [](Rows& rows) { rows.Delete(); },
      [](Rows& rows) { rows.LastModified(); }, [](Rows& rows) { rows.SetIndex(""); }};
  const auto closed = db_.OpenTable("Log"), open = db_.OpenTable("Log");
  closed->Close();
  EXPECT_EQ(Reported(uses, *closed), Many("3420", 16));
  EXPECT_EQ(ErrorOf([&] { closed->Seek("=", {1}); }), 3420);
  EXPECT_EQ(ErrorOf([&] { closed->Set("Call", "x"); }), 3420);
  EXPECT_EQ(ErrorOf([&] { closed->Update(); }), 3420);
  db_.Close();
  EXPECT_EQ(Reported(uses, *open), Many("3420", 16));
}

TEST_F(ClosedTest, EveryUseOfASnapshotIsAnError) {
  using Rows = engine::Snapshot;
  const std::function<void(Rows&)> uses[16] = {
      [](Rows& rows) { rows.MoveFirst(); },   [](Rows& rows) { rows.MoveLast(); },
      [](Rows& rows) { rows.MoveNext(); },    [](Rows& rows) { rows.MovePrevious(); },
      [](Rows& rows) { rows.BOF(); },         [](Rows& rows) { rows.EOF_(); },
      [](Rows& rows) { rows.RecordCount(); }, [](Rows& rows) { rows.Field("Call"); },
      [](Rows& rows) { rows.GetBookmark(); }, [](Rows& rows) { rows.SetBookmark({1}); }};
  const auto closed = db_.OpenSnapshot("select * from Log"),
             open = db_.OpenSnapshot("select * from Log");
  closed->Close();
  EXPECT_EQ(Reported(uses, *closed), Many("3420", 10));
  db_.Close();
  EXPECT_EQ(Reported(uses, *open), Many("3420", 10));
}

}  // namespace
}  // namespace brenvo::file
