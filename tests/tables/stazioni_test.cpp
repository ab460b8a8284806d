#include "tables/stazioni.h"

#include <gmock/gmock.h>

#include "core/contact_origin.h"
#include "tests/support/station.h"

namespace brenvo::tables {
namespace {

using testing::ElementsAre;

class StazioniTest : public StationTest {
 protected:
  StazioniTest() {
    Exec("UPDATE [User] SET Call='IK3ABC'");
    Know<Stazioni>("Stazioni");
  }
  Stazioni& OpenWindow() { return Open<Stazioni>("Stazioni"); }
  static std::vector<std::string> Calls(Stazioni& window) {
    std::vector<std::string> calls;
    for (std::int64_t row = 1; row < window.Tabella.Rows(); ++row) {
      calls.push_back(window.Tabella.Cell(row, 0) + "|" + window.Tabella.Cell(row, 3) + "|" +
                      window.Tabella.Cell(row, 13));
    }
    return calls;
  }
  void StoreNew(Stazioni& window, std::string_view call) {
    Press(window, "cmClear");
    window.CallQso.SetText(call);
    Press(window, "cmUpdate");
  }
  std::int64_t Add(const std::string& call) {
    session.Contacts.Add(core::ContactTable::kLog, *session.Tables.TbLog,
                         [&](engine::EditableRecordset& row) {
                           row.Set(core::column::kDataQso, session.Now());
                           row.Set(core::column::kCall, call);
                         });
    return session.Tables.TbLog->LastModified().key;
  }
};

TEST_F(StazioniTest, BeginsWithTheProfilesStationAsTheCurrentOne) {
  Stazioni& window = OpenWindow();
  EXPECT_THAT(Calls(window), ElementsAre("Sì|IK3ABC|0"));
  EXPECT_EQ(window.CallQso.Text(), "IK3ABC");
  EXPECT_EQ(window.Tipo.Text(), "Casa");
}

TEST_F(StazioniTest, ANewStationIsStoredAndMadeCurrentForTheNextContacts) {
  Stazioni& window = OpenWindow();
  Add("DL1ABC");
  StoreNew(window, "IK3ABC/P");
  EXPECT_EQ(window.Avviso.Text(), "Salvata: IK3ABC/P JN65AA");
  EXPECT_EQ(window.Tipo.Text(), "Portatile");
  Press(window, "cmCorrente");
  EXPECT_EQ(window.Avviso.Text(), "I prossimi contatti sono di IK3ABC/P JN65AA");
  EXPECT_EQ(frame->Stazione.Text(), "IK3ABC/P JN65AA");
  EXPECT_EQ(core::OriginOf(session.Db, Add("DL2ABC"))->station, 2);
  EXPECT_THAT(Calls(window), ElementsAre("|IK3ABC|1", "Sì|IK3ABC/P|0"));
}

TEST_F(StazioniTest, AStationIsChangedWhereItStands) {
  Stazioni& window = OpenWindow();
  window.Altezza.SetText("120");
  window.Dal.SetText("01/02/2001");
  Press(window, "cmUpdate");
  EXPECT_EQ(window.Avviso.Text(), "Salvata: Casa IK3ABC JN65AA");
  EXPECT_THAT(Rows("select Altezza,Dal from Stazioni"), ElementsAre("120|01/02/2001"));
}

TEST_F(StazioniTest, WhatIsNoStationIsRefusedInTheLineBelow) {
  Stazioni& window = OpenWindow();
  const auto refusal = [&](forms::TextField& field, std::string_view text) {
    const std::string before = field.Text();
    field.SetText(text);
    Press(window, "cmUpdate");
    field.SetText(before);
    machine.TakeLines();
    return window.Avviso.Text();
  };
  EXPECT_EQ(refusal(window.CallQso, " "), "Manca il nominativo");
  EXPECT_EQ(refusal(window.Locator, "XX"), "Locator non valido");
  window.Dal.SetText("02/02/2001");
  EXPECT_EQ(refusal(window.Al, "01/02/2001"), "L'ultimo giorno viene prima del primo");
  EXPECT_THAT(Rows("select Count(*) from Stazioni"), ElementsAre("1"));
}

TEST_F(StazioniTest, ContactsStoredWhileItIsOpenAreCounted) {
  Stazioni& window = OpenWindow();
  Add("DL1ABC");
  Press(window, "cmCorrente");
  EXPECT_THAT(Calls(window), ElementsAre("Sì|IK3ABC|1"));
  Lines();
}

TEST_F(StazioniTest, OnlyAStationWithoutContactsThatIsNotCurrentIsDeleted) {
  Stazioni& window = OpenWindow();
  Press(window, "cmDelete");
  EXPECT_EQ(window.Avviso.Text(), "Casa IK3ABC JN65AA è la stazione corrente e resta");
  Add("DL1ABC");
  Press(window, "cmDelete");
  EXPECT_EQ(window.Avviso.Text(), "Casa IK3ABC JN65AA ha contatti e resta");
  StoreNew(window, "IK3ABC/P");
  machine.Messages().QueueAnswer(false);
  Press(window, "cmDelete");
  machine.Messages().QueueAnswer(true);
  Press(window, "cmDelete");
  EXPECT_EQ(window.Avviso.Text(), "Cancellata: IK3ABC/P JN65AA");
  EXPECT_THAT(Rows("select Call from Stazioni"), ElementsAre("IK3ABC"));
  Lines();
}

}  // namespace
}  // namespace brenvo::tables
