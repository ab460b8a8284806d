// What an open log window does when contacts change beside it.
#include <gmock/gmock.h>

#include "log/log_search.h"
#include "log/old_qso.h"
#include "log/propagation_batch.h"
#include "tests/log/log_station.h"
#include "upkeep/maintenance.h"

namespace brenvo::log {
namespace {

using testing::ElementsAre;

class LogRenewalTest : public LogStation {
 protected:
  LogRenewalTest() {
    Know<LogSearch>("LogSearch");
    KnowOldQsoBrowsers(session);
  }
  // What an import does, at its end.
  void AnnounceBatch() {
    Event([this] {
      session.Contacts.ChangeMany("Prova", {core::ContactTable::kLog}, [] { return true; });
    });
  }
  // The column of the grid's row, counted from 1.
  static std::string Call(LogForm& log, std::int64_t row) { return log.DataGrid1.Cell(row, 2); }
  void ShowGrid(LogForm& log) { Press(log, "cmVista"); }
};

TEST_F(LogRenewalTest, AnOpenLogCountsAndReachesTheContactsOfABatchAndStaysOnItsOwn) {
  Store("IK1AAA", "  2 m");
  Store("IK1BBB", "  2 m");
  LogForm& log = OpenLog();
  Press(log, "cmFirst");
  Exec("insert into Log (DataQso,Call) values ('31/12/2000','IK0OLD')");
  Exec("insert into Log (DataQso,Call) values ('31/12/2001','IK9NEW')");
  AnnounceBatch();
  EXPECT_EQ(log.CallQso.Text(), "IK1AAA");
  EXPECT_EQ(log.QsoTotali.Text(), "4");
  Press(log, "cmNext");
  EXPECT_EQ(log.CallQso.Text(), "IK1BBB");
  Press(log, "cmNext");
  EXPECT_EQ(log.CallQso.Text(), "IK9NEW");
  Press(log, "cmFirst");
  EXPECT_EQ(log.CallQso.Text(), "IK0OLD");
}

TEST_F(LogRenewalTest, WhatIsBeingTypedStaysAndItsStatusIsToldAnew) {
  Store("IK1AAA", "  2 m");
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  Pick(log.Banda, "  2 m");
  Type(log.CallQso, "IK9NEW");
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
  Store("IK9NEW", "  2 m");
  AnnounceBatch();
  EXPECT_EQ(log.CallQso.Text(), "IK9NEW");
  EXPECT_EQ(log.CallQso.SelStart(), 6u);
  EXPECT_EQ(log.StatusBar1.Panel(2), "Call Worked");
  EXPECT_FALSE(log.cmUpdate.Enabled());
}

TEST_F(LogRenewalTest, WhereTheContactOnScreenIsGoneItsCommandsWaitAndTheScreenStays) {
  Store("IK1AAA", "  2 m");
  Store("IK1BBB", "  2 m");
  LogForm& log = OpenLog();
  EXPECT_EQ(log.CallQso.Text(), "IK1BBB");
  Exec("delete * from Log where Call='IK1BBB'");
  AnnounceBatch();
  EXPECT_EQ(log.CallQso.Text(), "IK1BBB");
  for (const char* name : {"cmUpdate", "cmDelete", "cmNext", "cmPrevious"}) {
    EXPECT_FALSE(log.FindCommand(name)->Enabled()) << name;
  }
  EXPECT_EQ(log.QsoTotali.Text(), "1");
  Press(log, "cmLast");
  EXPECT_EQ(log.CallQso.Text(), "IK1AAA");
  EXPECT_TRUE(log.cmUpdate.Enabled());
}

TEST_F(LogRenewalTest, AnExportOfAllBeforeTheBatchIsNoReasonToLoseThePlace) {
  Store("IK1AAA", "  2 m");
  Store("IK1BBB", "  2 m");
  LogForm& log = OpenLog();
  Press(log, "cmFirst");
  machine.Messages().QueueAnswer(true);
  Press(log, "cmAllQso");
  AnnounceBatch();
  Press(log, "cmNext");
  EXPECT_EQ(log.CallQso.Text(), "IK1BBB");
}

TEST_F(LogRenewalTest, ASelectionStaysTheSelection) {
  Store("IK1AAA", "  2 m");
  LogForm& log = OpenLog();
  Event([&] { session.ShowInLog("SELECT * FROM Log WHERE Banda='  2 m' ORDER BY Call"); });
  Store("IK1BBB", "  2 m");
  Store("IK1CCC", " 70cm");
  AnnounceBatch();
  EXPECT_EQ(log.QsoTotali.Text(), "2");
  Press(log, "cmLast");
  EXPECT_EQ(log.CallQso.Text(), "IK1BBB");
}

TEST_F(LogRenewalTest, TheGridStaysOnItsContact) {
  Store("IK1AAA", "  2 m");
  Store("IK1BBB", "  2 m");
  LogForm& log = OpenLog();
  ShowGrid(log);
  Event([&] { log.DataGrid1.SetCurrent(2, 1); });
  EXPECT_EQ(Call(log, 2), "IK1AAA");
  Exec("insert into Log (DataQso,Call) values ('31/12/2001','IK9NEW')");
  AnnounceBatch();
  EXPECT_EQ(log.DataGrid1.Rows(), 4);
  EXPECT_EQ(Call(log, 1), "IK9NEW");
  EXPECT_EQ(log.DataGrid1.Row(), 3);
  EXPECT_EQ(Call(log, 3), "IK1AAA");
  EXPECT_EQ(log.DataGrid1.Column(), 1);
}

TEST_F(LogRenewalTest, ARowOfAContactThatTheLogDidNotHaveShowsThatContact) {
  Store("IK1AAA", "  2 m");
  LogForm& log = OpenLog();
  Exec("insert into Log (DataQso,Call) values ('31/12/2001','IK9NEW')");  // nobody announces it
  ShowGrid(log);
  EXPECT_EQ(Call(log, 1), "IK9NEW");
  Event([&] { log.DataGrid1.DoubleClickCell(1, 0); });
  EXPECT_EQ(log.CallQso.Text(), "IK9NEW");
  EXPECT_FALSE(log.PanelGriglia.Visible());
  machine.Messages().QueueAnswer(true);
  Press(log, "cmDelete");
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK1AAA"});
}

TEST_F(LogRenewalTest, ARowOfAnEmptyLogThatIsNoLongerEmptyShowsItsContact) {
  LogForm& log = OpenLog();
  Store("IK1AAA", "  2 m");
  ShowGrid(log);
  Event([&] { log.DataGrid1.DoubleClickCell(1, 0); });
  EXPECT_EQ(log.CallQso.Text(), "IK1AAA");
}

TEST_F(LogRenewalTest, ARowWhoseContactIsGoneSaysSoAndShowsNothingElse) {
  Store("IK1AAA", "  2 m");
  Store("IK1BBB", "  2 m");
  LogForm& log = OpenLog();
  ShowGrid(log);
  EXPECT_EQ(Call(log, 2), "IK1AAA");
  Exec("delete * from Log where Call='IK1AAA'");
  Event([&] { log.DataGrid1.DoubleClickCell(2, 0); });
  EXPECT_EQ(log.StatusBar1.Panel(1), "Il Qso della riga non c'è più nel log");
  EXPECT_EQ(log.CallQso.Text(), "IK1BBB");
  EXPECT_TRUE(log.PanelGriglia.Visible());
  EXPECT_TRUE(Lines().empty());
}

TEST_F(LogRenewalTest, ASingleContactOfOneWindowLeavesTheOtherAsItWas) {
  LogForm& first = OpenLog();
  LogForm& second = OpenLog();
  Press(first, "cmClear");
  Type(first.CallQso, "IK1AAA");
  Press(first, "cmInsert");
  EXPECT_EQ(second.QsoTotali.Text(), "");
  Press(second, "cmLast");
  EXPECT_EQ(second.CallQso.Text(), "");
}

TEST_F(LogRenewalTest, InsertUpdateAndDeleteAnnounceTheirContact) {
  std::vector<std::string> changes;
  const forms::Subscription subscription =
      session.Contacts.Subscribe([&](const core::ContactsChanged& change) {
        const auto& one = std::get<core::OneContact>(change.which);
        changes.push_back((one.before ? one.before->contact.Call : "none") + " > " +
                          (one.after ? one.after->contact.Call : "none"));
      });
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  Type(log.CallQso, "IK1AAA");
  Press(log, "cmInsert");
  Press(log, "cmInsert");  // a repeated one is not stored
  Press(log, "cmUpdate");
  machine.Messages().QueueAnswer(true);
  Press(log, "cmDelete");
  EXPECT_THAT(changes, ElementsAre("none > IK1AAA", "IK1AAA > IK1AAA", "IK1AAA > none"));
  Lines();
}

TEST_F(LogRenewalTest, ThePropagationBatchAndTheEmptyingOfTheLogAreSeenAtOnce) {
  Store("IK1AAA", "  2 m", ",Note", ",'[F2] buono'");
  LogForm& log = OpenLog();
  ShowGrid(log);
  Event([this] { AssignPropagations(session); });
  int note = 0;
  while (log.DataGrid1.Cell(0, note) != "Note") ++note;
  EXPECT_EQ(log.DataGrid1.Cell(1, note), "buono");
  machine.Messages().QueueAnswer(true);
  Event([this] { upkeep::AzzeraLog(session); });
  EXPECT_EQ(log.DataGrid1.Rows(), 1);
  EXPECT_EQ(log.QsoTotali.Text(), "0");
}

TEST_F(LogRenewalTest, ABatchWhileTheSearchIsOpenCountsWhenItIsLeft) {
  Store("IK1AAA", "  2 m");
  LogForm& log = OpenLog();
  InDialogs([this](forms::Window& search) {
    Store("IK1BBB", "  2 m");
    AnnounceBatch();
    Press(search, "cmExit");
  });
  Press(log, "cmSearch");
  EXPECT_EQ(log.QsoTotali.Text(), "2");
}

TEST_F(LogRenewalTest, AWindowThatIsClosedHearsNothing) {
  LogForm& log = OpenLog();
  Event([&] {
    log.Close();
    session.Contacts.ChangeMany("Prova", {core::ContactTable::kLog}, [] { return true; });
  });
  EXPECT_TRUE(Lines().empty());
}

TEST_F(LogRenewalTest, ABrowserOfEarlierContactsShowsTheBatchAndKeepsItsRow) {
  Store("IK1AAA", "  2 m");
  forms::Window& window = *session.Windows.LoadNew("OldQsoForm");
  session.Windows.Show(window);
  auto& old = static_cast<OldQso&>(window);
  old.SetRecordSource("SELECT * FROM Log where Call='IK1AAA' ORDER By DataQso DESC,QsoNr");
  Event([&] { old.DataGrid1.SetCurrent(1, 0); });
  Exec("insert into Log (DataQso,Call) values ('31/12/2001','IK1AAA')");
  AnnounceBatch();
  EXPECT_EQ(old.DataGrid1.Rows(), 3);
  EXPECT_EQ(old.DataGrid1.Row(), 2);
}

}  // namespace
}  // namespace brenvo::log
