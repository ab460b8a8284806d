#include "log/old_qso.h"

#include "tests/log/log_station.h"

namespace brenvo::log {
namespace {

class OldQsoTest : public LogStation {
 protected:
  OldQsoTest() { KnowOldQsoBrowsers(session); }
  OldQso& OpenByCall() { return Open<OldQso>("OldQsoForm"); }
  OldQso& OpenByLocator() { return Open<OldQso>("OldQsoLocator"); }
  // The calls of the grid's rows.
  static Texts Calls(OldQso& browser) {
    Texts calls;
    for (std::int64_t row = 1; row < browser.DataGrid1.Rows(); ++row) {
      calls.push_back(browser.DataGrid1.Cell(row, 2));
    }
    return calls;
  }
};

TEST_F(OldQsoTest, EachOpensEmptyUnderItsTitleAndIsFound) {
  Store("IK3ABC", "  2 m");
  OldQso& byCall = OpenByCall();
  OldQso& byLocator = OpenByLocator();
  EXPECT_EQ(byCall.Caption(), "Old Qso");
  EXPECT_EQ(byLocator.Caption(), "Old Qso with Locator");
  EXPECT_EQ(session.Opened.OldQsoForm, &byCall);
  EXPECT_EQ(session.Opened.OldQsoLocator, &byLocator);
  EXPECT_EQ(byCall.DataLog.RecordSource,
            "SELECT * FROM Log where Call='YYZZYYZZ' ORDER By DataQso,QsoNr");
  EXPECT_EQ(byCall.DataGrid1.Rows(), 1);
  byCall.Close();
  EXPECT_EQ(session.Opened.OldQsoForm, nullptr);
  EXPECT_EQ(session.Opened.OldQsoLocator, &byLocator);
}

TEST_F(OldQsoTest, TheGridShowsItsEightColumns) {
  Store("IK3ABC", "  2 m", ",Qra,Qth,Locator,QslInviata", ",'ANNA','ROMA','JN61FV',true");
  OldQso& byCall = OpenByCall();
  byCall.SetRecordSource("SELECT * FROM Log");
  Texts headings, cells;
  for (int column = 0; column < byCall.DataGrid1.Columns(); ++column) {
    headings.push_back(byCall.DataGrid1.Cell(0, column));
    cells.push_back(byCall.DataGrid1.Cell(1, column));
  }
  EXPECT_EQ(headings, (Texts{"Data Qso", "Banda", "Call", "Qra", "Qth", "Locator", "Qsl Inviata",
                             "Qsl Ricevuta"}));
  EXPECT_EQ(cells[0].substr(0, 10), "01/01/2001");
  EXPECT_EQ(Texts(cells.begin() + 1, cells.end()),
            (Texts{"  2 m", "IK3ABC", "ANNA", "ROMA", "JN61FV", "Sì", "No"}));
}

TEST_F(OldQsoTest, ACallFeedsTheFirstAndALocatorTheSecond) {
  Store("IK3ABC", "  2 m", ",Locator", ",'JN65AB'");
  Store("IK3XYZ", "  2 m", ",Locator", ",'JN65ZZ'");
  Store("IK3XYZ", " 70cm", ",Locator", ",'JN65ZZ'");
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  Pick(log.Banda, "  2 m");
  OldQso& byCall = OpenByCall();
  OldQso& byLocator = OpenByLocator();
  Type(log.CallQso, "IK3XYZ");
  EXPECT_EQ(Calls(byCall), (Texts{"IK3XYZ", "IK3XYZ"}));
  EXPECT_EQ(Calls(byLocator), Texts{});
  EXPECT_EQ(byCall.DataLog.RecordSource,
            "SELECT * FROM Log where Call='IK3XYZ' ORDER By DataQso DESC,QsoNr");
  Type(log.Locator, "JN65MM");
  EXPECT_EQ(Calls(byLocator), (Texts{"IK3XYZ", "IK3ABC"}));
  EXPECT_EQ(Calls(byCall), (Texts{"IK3XYZ", "IK3XYZ"}));
  EXPECT_EQ(byLocator.DataLog.RecordSource,
            "SELECT * FROM Log where Locator like 'JN65*' and Banda='  2 m' ORDER By DataQso "
            "DESC,QsoNr");
}

TEST_F(OldQsoTest, ADoubleClickTakesTheLogToTheContact) {
  Store("IK3ABC", "  2 m");
  Store("IK3ABC", " 70cm");
  Store("IK3XYZ", "  2 m");
  LogForm& log = OpenLog();
  OldQso& byCall = OpenByCall();
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  ASSERT_EQ(byCall.DataGrid1.Rows(), 3);
  Event([&] { byCall.DataGrid1.DoubleClickCell(2, 0); });
  EXPECT_EQ(session.Handed.QueryText, "Select * from Log where QsoNr=1");
  EXPECT_EQ(log.QsoNr.Text(), "1");
  EXPECT_EQ(log.Banda.Text(), "  2 m");
  EXPECT_EQ(log.QsoTotali.Text(), "1");
  EXPECT_TRUE(log.cmSearch.Down());
}

TEST_F(OldQsoTest, WithoutALogTheGridStaysEmptyAndADoubleClickDoesNothing) {
  Store("IK3ABC", "  2 m");
  OldQso& byCall = OpenByCall();
  EXPECT_EQ(byCall.DataGrid1.Rows(), 1);
  byCall.SetRecordSource("SELECT * FROM Log");
  Event([&] { byCall.DataGrid1.DoubleClickCell(1, 0); });
  EXPECT_EQ(session.Handed.QueryText, "");
  EXPECT_TRUE(Lines().empty());
}

TEST_F(OldQsoTest, ADoubleClickBesideTheRowsDoesNothing) {
  LogForm& log = OpenLog();
  OldQso& byCall = OpenByCall();
  for (const int row : {0, 1, 7}) Event([&] { byCall.DataGrid1.DoubleClickCell(row, 0); });
  EXPECT_EQ(session.Handed.QueryText, "");
  EXPECT_FALSE(log.cmSearch.Down());
}

TEST_F(OldQsoTest, AFeedThatFailsKeepsTheRowsAndTheWindow) {
  Store("IK3ABC", "  2 m");
  LogForm& log = OpenLog();
  OldQso& byCall = OpenByCall();
  Event([&] { log.CallQso.SetText("IK3AB"); });
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  EXPECT_EQ(Calls(byCall), Texts{"IK3ABC"});
  Event([&] { log.CallQso.SetText("IK3'"); });
  EXPECT_EQ(Lines().size(), 1u);
  EXPECT_EQ(Calls(byCall), Texts{"IK3ABC"});
  Event([&] { log.CallQso.SetText("IK3"); });
  EXPECT_EQ(Calls(byCall), Texts{});
}

TEST_F(OldQsoTest, EachKeepsItsPlaceUnderItsOwnKey) {
  OldQso& byCall = OpenByCall();
  OldQso& byLocator = OpenByLocator();
  byCall.Move({base::Twips(15), base::Twips(30), base::Twips(9600), base::Twips(3000)});
  byLocator.Move({base::Twips(45), base::Twips(60), base::Twips(9600), base::Twips(3000)});
  byCall.Close();
  byLocator.Close();
  EXPECT_EQ(session.GetSetting("OldQso", "X", ""), "15");
  EXPECT_EQ(session.GetSetting("OldQsoLocator", "X", ""), "45");
  EXPECT_EQ(OpenByCall().GetBounds().top, base::Twips(30));
}

}  // namespace
}  // namespace brenvo::log
