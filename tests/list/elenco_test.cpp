#include "list/elenco.h"

#include "tests/list/list_station.h"

namespace brenvo::list {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ElencoTest : public ListStation {
 protected:
  Elenco& OpenList() { return Open<Elenco>("Elenco"); }
  // More contacts than are read at once: A0, A1 ..., the last one the newest.
  void AddMany(int count) {
    session.Contacts.ChangeMany("Prova", {core::ContactTable::kLog}, [&] {
      for (int i = 0; i < count; ++i)
        Add(fmt::format("A{}", i), i % 1200, fmt::format("{:3} m", i / 1200 + 1));
      return true;
    });
  }
};

TEST_F(ElencoTest, ListsAllContactsNewestFirst) {
  Add("IK3AAA", 1);
  Add("IK3CCC", 3);
  Add("IK3BBB", 2);
  Add("IK3DDD", 3);
  Elenco& list = OpenList();
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3DDD", "IK3CCC", "IK3BBB", "IK3AAA"));
  EXPECT_EQ(list.Tabella.Cell(1, 0), "03/02/2001 10:03");
  EXPECT_EQ(list.Conteggi.Text(), "4");
}

TEST_F(ElencoTest, AnEmptyLogIsAnEmptyList) {
  Elenco& list = OpenList();
  EXPECT_THAT(Column(list.Tabella), IsEmpty());
  EXPECT_FALSE(list.cmApri.Enabled());
  EXPECT_EQ(list.Conteggi.Text(), "0");
}

TEST_F(ElencoTest, FiltersOfEachKindNarrowAsTheyAreTyped) {
  Add("IK3AAA", 1, "  2 m", [](auto& row) { row.Set("Frequenza", 144.3); });
  Add("DL1ABC", 2, " 20 m", [](auto& row) {
    row.Set("Frequenza", 14.2);
    row.Set("QslRicevuta", true);
  });
  Add("DL2ABC", 3, " 70cm", [](auto& row) { row.Set("QslInviata", true); });
  Elenco& list = OpenList();
  Filter(list.Tabella, "Call", "dl");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL2ABC", "DL1ABC"));
  EXPECT_EQ(list.Conteggi.Text(), "2 di 3");
  Filter(list.Tabella, "QslRicevuta", "s");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL1ABC"));
  Press(list, "cmTogliFiltri");
  Filter(list.Tabella, "DataQso", ">=3/2/2001 10:02");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL2ABC", "DL1ABC"));
  Type(list.Cerca, "20");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL2ABC", "DL1ABC"));  // of the year
  Type(list.Cerca, "20 dl1");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL1ABC"));
  Type(list.Cerca, "70cm 03/02");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL2ABC"));
}

TEST_F(ElencoTest, HeadingsSortByWhatTheColumnIs) {
  Add("b", 1, " 20 m", [](auto& row) { row.Set("Qrb", 90); });
  Add("A", 2, "  2 m", [](auto& row) { row.Set("Qrb", 1000); });
  Add("c", 3, "  2 m");
  session.SaveSetting("Elenco", "Colonne", "Call:,Banda:,Qrb:,DataQso:,QsoNr:");
  Elenco& list = OpenList();
  Sort(list.Tabella, "Qrb");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("c", "b", "A"));
  Sort(list.Tabella, "Call");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("A", "b", "c"));
  Sort(list.Tabella, "Banda");
  Sort(list.Tabella, "Call", true);
  Sort(list.Tabella, "Call", true);
  EXPECT_THAT(Column(list.Tabella), ElementsAre("c", "A", "b"));
  Sort(list.Tabella, "DataQso");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("b", "A", "c"));
  Sort(list.Tabella, "QsoNr");
  Sort(list.Tabella, "QsoNr");
  EXPECT_THAT(Column(list.Tabella, "QsoNr"), ElementsAre("3", "2", "1"));
}

TEST_F(ElencoTest, StationNameAndKeptFieldsAreColumnsOfTheirOwn) {
  Add("IK3AAA", 1);
  Add("IK3BBB", 2);
  Exec("insert into LogAdif (QsoNr,Campo,Valore) values (1,'SAT_NAME','AO-7')");
  session.SaveSetting("Elenco", "Colonne", "Call:,SAT_NAME:,Stazione:,Uuid:");
  Elenco& list = OpenList();
  EXPECT_THAT(Column(list.Tabella, "SAT_NAME"), ElementsAre("", "AO-7"));
  EXPECT_THAT(Column(list.Tabella, "Stazione"), ElementsAre("Casa", "Casa"));
  EXPECT_EQ(Column(list.Tabella, "Uuid")[0].size(), 36u);
  Filter(list.Tabella, "SAT_NAME", "<>");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3AAA"));
  Filter(list.Tabella, "SAT_NAME", "");
  Filter(list.Tabella, "Stazione", "casa");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3BBB", "IK3AAA"));
  Filter(list.Tabella, "Uuid", "=x");
  EXPECT_THAT(Column(list.Tabella), IsEmpty());
}

TEST_F(ElencoTest, CardsAreColumnsThatAreFilteredAndSortedBy) {
  Add("IK3AAA", 1);
  Add("IK3BBB", 2);
  Exec("insert into LogQsl (QsoNr,Verso,Via,Data) values (1,'I','D','2001-02-03')");
  Exec("insert into LogQsl (QsoNr,Verso,Via) values (1,'I','B')");
  Exec("insert into LogQsl (QsoNr,Verso,Via) values (2,'R','M')");
  session.SaveSetting("Elenco", "Colonne", "Call:,Qsl inviate:,Qsl ricevute:");
  Elenco& list = OpenList();
  EXPECT_THAT(Column(list.Tabella, "Qsl inviate"), ElementsAre("", "bureau, diretta 03/02/2001"));
  EXPECT_THAT(Column(list.Tabella, "Qsl ricevute"), ElementsAre("manager", ""));
  Filter(list.Tabella, "Qsl inviate", "bureau, diretta 03");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3AAA"));
  Filter(list.Tabella, "Qsl inviate", "");
  Sort(list.Tabella, "Qsl ricevute");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3AAA", "IK3BBB"));
}

TEST_F(ElencoTest, AllKeptFieldsAreOfferedWhereColumnsAreChosen) {
  Add("IK3AAA", 1);
  Exec("insert into LogAdif (QsoNr,Campo,Valore) values (1,'SAT_NAME','AO-7')");
  Exec("insert into LogAdif (QsoNr,Campo,Valore) values (1,'SRX','7')");
  Elenco& list = OpenList();
  InDialogs([&](forms::Window& dialog) {
    auto& columns = static_cast<core::Colonne&>(dialog);
    EXPECT_THAT(Column(columns.Tabella, "Colonna"), testing::Contains("SAT_NAME"));
    Type(columns.Cerca, "srx");
    Event([&] { columns.Tabella.DoubleClickCell(1, 0); });
    Press(columns, "cmApplica");
  });
  Press(list, "cmColonne");
  EXPECT_THAT(Column(list.Tabella, "SRX"), ElementsAre("7"));
  Filter(list.Tabella, "SRX", "8");
  EXPECT_THAT(Column(list.Tabella), IsEmpty());
}

TEST_F(ElencoTest, RowsAreReadWhenTheyAreSeenAndTheNewestByTheirIndex) {
  AddMany(600);
  Elenco& list = OpenList();
  Wait();
  const auto screen = [&](std::int64_t first) {
    const auto before = session.Db.Counters().rowsStepped;
    for (std::int64_t row = first; row < first + 40; ++row) {
      for (int column = 0; column < list.Tabella.Columns(); ++column)
        list.Tabella.Cell(row, column);
    }
    return session.Db.Counters().rowsStepped - before;
  };
  screen(100);  // opens the table
  EXPECT_EQ(screen(300), 40);
  EXPECT_EQ(screen(300), 0);
  EXPECT_EQ(
      session.Db.QueryPlan("Select QsoNr from Log Order By DataQso Desc,QsoNr Desc").find("TEMP"),
      std::string::npos);
}

TEST_F(ElencoTest, ANewAChangedAndADeletedContactAreFollowedWhereTheyBelong) {
  Add("IK3AAA", 1);
  Add("IK3CCC", 3);
  Elenco& list = OpenList();
  ClickRow(list.Tabella, 2);
  Add("IK3BBB", 2);
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3CCC", "IK3BBB", "IK3AAA"));
  EXPECT_EQ(list.Tabella.Row(), 3);
  Change(1, "DataQso", base::DateTime::Of(2001, 2, 3, 11, 0));
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3AAA", "IK3CCC", "IK3BBB"));
  EXPECT_EQ(list.Tabella.Row(), 1);
  Change(2, "Call", "IK3XXX");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3AAA", "IK3XXX", "IK3BBB"));
  // The next one is chosen in the place of one that is gone.
  Delete(1);
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3XXX", "IK3BBB"));
  EXPECT_EQ(list.Tabella.Row(), 1);
  ClickRow(list.Tabella, 2);
  Delete(3);
  EXPECT_EQ(list.Tabella.Row(), 1);
  Delete(2);
  EXPECT_THAT(Column(list.Tabella), IsEmpty());
}

TEST_F(ElencoTest, WhoStoresDoesNotWaitForTheListAndManyComeInOneTurn) {
  Add("IK3AAA", 1);
  Elenco& list = OpenList();
  const auto add = [&](const std::string& call) {
    session.Contacts.Add(core::ContactTable::kLog, *session.Tables.TbLog,
                         [&](engine::EditableRecordset& row) {
                           row.Set("DataQso", base::DateTime::Of(2001, 2, 3, 11, 0));
                           row.Set("Call", call);
                         });
  };
  add("IK3BBB");
  machine.Advance(core::ContactsLater::kPause - 1);
  add("IK3CCC");
  machine.Advance(core::ContactsLater::kPause - 1);
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3AAA"));
  machine.Advance(1);
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3CCC", "IK3BBB", "IK3AAA"));
  add("IK3DDD");
  session.Windows.Show(list);  // whoever turns to it sees it as it is
  EXPECT_EQ(Column(list.Tabella).front(), "IK3DDD");
}

TEST_F(ElencoTest, WhatIsStoredObeysTheFilterAndTheOrder) {
  Add("IK3AAA", 1);
  Add("DL1CCC", 3);
  Elenco& list = OpenList();
  Filter(list.Tabella, "Call", "dl");
  Sort(list.Tabella, "Call");
  Add("DL1BBB", 2);
  Add("IK3DDD", 4);
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL1BBB", "DL1CCC"));
  Change(1, "Call", "DL1AAA");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL1AAA", "DL1BBB", "DL1CCC"));
  Change(2, "Call", "IK3CCC");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL1AAA", "DL1BBB"));
}

TEST_F(ElencoTest, AfterManyContactsRowMarksAndFilterStay) {
  Add("DL1AAA", 1);
  Add("DL1BBB", 2);
  Add("DL1CCC", 3);
  Elenco& list = OpenList();
  Filter(list.Tabella, "Call", "dl");
  ClickRow(list.Tabella, 2);
  Mark(list.Tabella, 2, 2);
  session.Contacts.ChangeMany("Prova", {core::ContactTable::kLog}, [&] {
    Add("DL1DDD", 4);
    Add("IK3DDD", 4);
    Delete(1);
    return true;
  });
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL1DDD", "DL1CCC", "DL1BBB"));
  EXPECT_EQ(list.Tabella.Row(), 3);
  EXPECT_EQ(list.Conteggi.Text(), "3 di 4, segnati 1");
  EXPECT_TRUE(list.Tabella.Arranger()->IsMarked(3));
}

TEST_F(ElencoTest, ALongLogShowsItsNewestAtOnceAndTheRestWhenItHasBeenRead) {
  AddMany(1300);
  Elenco& list = OpenList();
  EXPECT_EQ(list.Tabella.Rows(), 501);
  EXPECT_EQ(list.Tabella.Cell(1, ColumnOf(list.Tabella, "Call")), "A1199");
  EXPECT_EQ(list.Conteggi.Text(), "500 ...");
  ClickRow(list.Tabella, 3);
  Wait();
  EXPECT_EQ(list.Tabella.Rows(), 1301);
  EXPECT_EQ(list.Conteggi.Text(), "1,300");
  EXPECT_EQ(list.Tabella.Row(), 3);
}

TEST_F(ElencoTest, ALongLogIsFilteredAndSortedOnceTheColumnHasBeenRead) {
  AddMany(1300);
  Elenco& list = OpenList();
  Filter(list.Tabella, "Call", "=a129");
  EXPECT_EQ(list.Conteggi.Text(), "500 ...");
  Wait();
  EXPECT_THAT(Column(list.Tabella), ElementsAre("A129"));
  EXPECT_EQ(list.Conteggi.Text(), "1 di 1,300");
  // By now the column is there.
  Filter(list.Tabella, "Call", "a129*");
  EXPECT_EQ(list.Tabella.Rows(), 12);
  Sort(list.Tabella, "Call");
  EXPECT_EQ(Column(list.Tabella)[1], "A1290");
}

TEST_F(ElencoTest, WhatIsStoredWhileALongLogIsReadIsNotLost) {
  AddMany(1300);
  Elenco& list = OpenList();
  Add("DL1NEW", 1199, "  3 m");
  Delete(1);
  Change(2, "Call", "DL1OLD");
  EXPECT_EQ(Column(list.Tabella)[0], "DL1NEW");
  Wait();
  EXPECT_EQ(list.Tabella.Rows(), 1301);
  EXPECT_EQ(Column(list.Tabella)[0], "DL1NEW");
  Filter(list.Tabella, "Call", "DL1");
  Add("DL1TOO", 1199, "  4 m");
  Change(3, "Call", "DL1ANY");
  Wait();
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL1TOO", "DL1NEW", "DL1ANY", "DL1OLD"));
  session.Contacts.ChangeMany("Prova", {core::ContactTable::kLog}, [&] {
    Delete(2);
    return true;
  });
  Add("DL1END", 1199, "  5 m");
  Wait();
  Wait();
  EXPECT_THAT(Column(list.Tabella), ElementsAre("DL1END", "DL1TOO", "DL1NEW", "DL1ANY"));
}

TEST_F(ElencoTest, EnterShowsTheContactInTheLogAndOpensThatWhereItIsClosed) {
  Add("IK3AAA", 1);
  Add("IK3BBB", 2);
  Elenco& list = OpenList();
  Event([&] { list.Tabella.DoubleClickCell(2, 0); });
  auto* log = static_cast<LogStandIn*>(session.Windows.Find("LogForm"));
  ASSERT_NE(log, nullptr);
  // Two within one second.
  ClickRow(list.Tabella, 1);
  Press(list, "cmApri");
  EXPECT_THAT(log->shown,
              ElementsAre("Select * from Log where QsoNr=1", "Select * from Log where QsoNr=2"));
}

TEST_F(ElencoTest, AnyOtherWindowMayShowASelectionInIt) {
  Add("IK3AAA", 1);
  Add("IK3BBB", 2);
  Add("IK3CCC", 3);
  Event([&] { ShowInElenco(session, "Doppi", {1, 3, 99, 1}); });
  auto& list = static_cast<Elenco&>(*session.Windows.Find("Elenco"));
  EXPECT_TRUE(list.Visible());
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3CCC", "IK3AAA"));
  EXPECT_EQ(list.Titolo.Text(), "Doppi");
  // What comes later is none of it, what goes comes back.
  Add("IK3DDD", 4);
  Delete(3);
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3AAA"));
  Filter(list.Tabella, "Call", "xyz");
  Event([&] { ShowInElenco(session, "Altri", {2}); });
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3BBB"));
  Press(list, "cmTutti");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3DDD", "IK3BBB", "IK3AAA"));
  EXPECT_FALSE(list.cmTutti.Enabled());
}

TEST_F(ElencoTest, TheMarkedContactsAndTheLogsOwnSelectionAreSelectionsToo) {
  Add("IK3AAA", 1);
  Add("IK3BBB", 2);
  Add("IK3CCC", 3);
  Elenco& list = OpenList();
  EXPECT_FALSE(list.cmSoloSegnati.Enabled());
  EXPECT_FALSE(list.cmDelLog.Enabled());
  Mark(list.Tabella, 2, 3);
  Press(list, "cmSoloSegnati");
  EXPECT_EQ(list.Titolo.Text(), "2 Qso segnati");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3BBB", "IK3AAA"));
  EXPECT_EQ(list.Conteggi.Text(), "2");
  Open<LogStandIn>("LogForm").Selection = "SELECT * FROM Log WHERE Call<>'IK3BBB'";
  Press(list, "cmDelLog");
  EXPECT_EQ(list.Titolo.Text(), "Selezione della finestra Log");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3CCC", "IK3AAA"));
}

TEST_F(ElencoTest, ALargeSelectionOfALongLogIsReadInTheBackground) {
  AddMany(1300);
  std::vector<std::int64_t> keys;
  for (std::int64_t key = 1; key <= 600; ++key) keys.push_back(key);
  Event([&] { ShowInElenco(session, "Primi", keys); });
  Wait();
  auto& list = static_cast<Elenco&>(*session.Windows.Find("Elenco"));
  EXPECT_EQ(list.Conteggi.Text(), "600");
  EXPECT_EQ(Column(list.Tabella)[0], "A599");
}

TEST_F(ElencoTest, TheListSurvivesTheCompaction) {
  Add("IK3AAA", 1);
  Elenco& list = OpenList();
  Event([&] {
    session.CloseForCompaction();
    session.ReopenAfterCompaction();
  });
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3AAA"));
  Filter(list.Tabella, "Call", "aaa");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3AAA"));
}

}  // namespace
}  // namespace brenvo::list
