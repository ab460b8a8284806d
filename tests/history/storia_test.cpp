#include "history/storia.h"

#include <gmock/gmock.h>

#include "tests/support/grid_rows.h"
#include "tests/support/station.h"

namespace brenvo::history {
namespace {

using enum core::ContactTable;
using testing::ElementsAre;
namespace column = core::column;

class StoriaTest : public StationTest {
 protected:
  StoriaTest() { Know<Storia>("Storia"); }
  void Add(const std::string& call, int minute) {
    session.Contacts.Add(kLog, *session.Tables.TbLog, [&](engine::EditableRecordset& row) {
      row.Set(column::kDataQso, base::DateTime::Of(2001, 2, 3, 10, minute));
      row.Set(column::kCall, call);
    });
  }
  void Name(std::int64_t qsoNr, const std::string& qra) {
    session.Tables.TbLog->SetBookmark({qsoNr});
    session.Contacts.Change(kLog, *session.Tables.TbLog,
                            [&](engine::EditableRecordset& row) { row.Set(column::kQra, qra); });
  }
};

TEST_F(StoriaTest, ListsTheWorksNewestFirstWithWhatStoodBeforeAndAfter) {
  Add("IK3ABC", 0);
  Name(1, "Mario");
  Storia& window = Open<Storia>("Storia");
  EXPECT_THAT(RowsOf(window.Tabella), ElementsAre("2|03/02/2001 04:05:06|Qso modificato|1|",
                                                 "1|03/02/2001 04:05:06|Nuovo qso|1|"));
  EXPECT_THAT(RowsOf(window.Cambiamenti), ElementsAre("1|IK3ABC|Qra||Mario"));
  EXPECT_EQ(window.Contatti.Text(), "I contatti del lavoro");
}

TEST_F(StoriaTest, TakesTheMarkedWorkBackAndSaysSo) {
  Add("IK3ABC", 0);
  Name(1, "Mario");
  Storia& window = Open<Storia>("Storia");
  Press(window, "cmRiprendi");
  EXPECT_EQ(window.Avviso.Text(), "Ripreso: Qso modificato (1 Qso)");
  EXPECT_THAT(Rows("select Qra from Log"), ElementsAre(""));
  EXPECT_THAT(RowsOf(window.Tabella),
              ElementsAre("3|03/02/2001 04:05:06|Ripreso: Qso modificato|1|riprende il lavoro 2",
                          "2|03/02/2001 04:05:06|Qso modificato|1|ripreso dal lavoro 3",
                          "1|03/02/2001 04:05:06|Nuovo qso|1|"));
  // The mark stays on its work.
  EXPECT_EQ(window.Tabella.Row(), 2);
}

TEST_F(StoriaTest, TakesOneContactOfAWorkBack) {
  session.Contacts.ChangeMany("Prova", {kLog}, [&] {
    Add("IK3ABC", 0);
    Add("IK3DEF", 1);
    return true;
  });
  Storia& window = Open<Storia>("Storia");
  EXPECT_THAT(RowsOf(window.Cambiamenti),
              ElementsAre("1|IK3ABC|DataQso||03/02/2001 10:00:00", "1|IK3ABC|Call||IK3ABC",
                          "2|IK3DEF|DataQso||03/02/2001 10:01:00", "2|IK3DEF|Call||IK3DEF"));
  window.Cambiamenti.SetCurrent(3, 0);
  Press(window, "cmRiprendiQso");
  EXPECT_THAT(Rows("select Call from Log"), ElementsAre("IK3ABC"));
}

TEST_F(StoriaTest, ASingleContactIsListedAMomentAfterItWasStored) {
  Storia& window = Open<Storia>("Storia");
  Add("IK3ABC", 0);
  Add("IK3DEF", 1);
  EXPECT_THAT(RowsOf(window.Tabella), ElementsAre());
  machine.Advance(Storia::kRenewAfter);
  EXPECT_THAT(RowsOf(window.Tabella), ElementsAre("2|03/02/2001 04:05:06|Nuovo qso|1|",
                                                 "1|03/02/2001 04:05:06|Nuovo qso|1|"));
}

TEST_F(StoriaTest, WithoutWorksThereIsNothingToTakeBack) {
  Storia& window = Open<Storia>("Storia");
  EXPECT_FALSE(window.cmRiprendi.Enabled());
  EXPECT_FALSE(window.cmRiprendiQso.Enabled());
}

TEST_F(StoriaTest, ALargeWorkShowsItsFirstContacts) {
  FillLog(8);
  machine.Messages().QueueAnswer(true);
  Press(*frame, "cmAzzeraLog");
  Storia& window = Open<Storia>("Storia");
  EXPECT_EQ(window.Contatti.Text(), "I primi 200 contatti del lavoro");
  EXPECT_EQ(window.Tabella.Cell(1, 2), "Azzeramento Log");
  Lines();
}

}  // namespace
}  // namespace brenvo::history
