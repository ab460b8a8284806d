#include "log/log_search.h"

#include <gmock/gmock.h>

#include "tests/log/log_station.h"

namespace brenvo::log {
namespace {

class LogSearchTest : public LogStation {
 protected:
  LogSearchTest() { Know<LogSearch>("LogSearch"); }

  LogSearch& OpenSearch() { return Open<LogSearch>("LogSearch"); }
  // Presses the log's search key and does something in the dialog.
  void Search(LogForm& log, const std::function<void(LogSearch&)>& inDialog) {
    InDialogs([&](forms::Window& dialog) { inDialog(static_cast<LogSearch&>(dialog)); });
    Press(log, "cmSearch");
  }
};

TEST_F(LogSearchTest, AllFieldsEmptyAskForTheWholeLogByDate) {
  EXPECT_EQ(OpenSearch().Statement(), "SELECT * FROM Log  ORDER BY DataQso");
}

TEST_F(LogSearchTest, DateAndCallMakeTheirConditions) {
  LogSearch& search = OpenSearch();
  Type(search.DataQso, "01022001");
  Press(search, "cmTipoData");
  Type(search.CallQso, "i3*");
  EXPECT_EQ(search.Statement(),
            "SELECT * FROM Log WHERE DateValue(DataQso)>= cvdate('01/02/2001') AND Call LIKE 'I3*' "
            "ORDER BY DataQso");
}

TEST_F(LogSearchTest, TheOperatorOfTheDateGoesRound) {
  LogSearch& search = OpenSearch();
  Type(search.DataQso, "01022001");
  for (const char* next : {">=", "<=", "=", ">="}) {
    Press(search, "cmTipoData");
    EXPECT_EQ(search.cmTipoData.Caption(), next);
    EXPECT_THAT(search.Statement(),
                testing::HasSubstr("(DataQso)" + std::string(next) + " cvdate("));
  }
}

TEST_F(LogSearchTest, EveryFieldAddsItsConditionInOrder) {
  LogSearch& search = OpenSearch();
  Type(search.DataQso, "01022001");
  Type(search.CallQso, "I3*");
  Type(search.Country, "I");
  Event([&] { search.Provincia.Pick(0); });
  Type(search.Locator, "jn65*");
  Pick(search.Banda, "  2 m");
  search.QslDaInviare.SetOn(true);
  search.QslRicevuta.SetOn(false);
  search.QslInviata.SetOn(true);
  Pick(search.Modo, "SSB");
  Pick(search.Propagazione, "Tropo");
  Type(search.Note, " nota ");
  EXPECT_EQ(search.Statement(),
            "SELECT * FROM Log WHERE DateValue(DataQso)= cvdate('01/02/2001') AND Call LIKE 'I3*' "
            "AND Country='I' AND Provincia='AG' AND Locator LIKE 'JN65*' AND Banda='  2 m' AND "
            "QsldaInviare=true AND QslRicevuta=false AND QslInviata=true AND Modo='SSB' AND "
            "Propagazione='Tropo' AND Note LIKE '*nota*' ORDER BY DataQso");
}

TEST_F(LogSearchTest, AGreyBoxAddsNothingAndAClearedOneAddsFalse) {
  LogSearch& search = OpenSearch();
  EXPECT_EQ(search.QslRicevuta.State(), forms::CheckState::kGrey);
  Event([&] { search.QslRicevuta.Press(); });
  EXPECT_EQ(search.Statement(), "SELECT * FROM Log WHERE QslRicevuta=false ORDER BY DataQso");
  Event([&] { search.QslRicevuta.Press(); });
  EXPECT_EQ(search.Statement(), "SELECT * FROM Log WHERE QslRicevuta=true ORDER BY DataQso");
  Event([&] { search.QslRicevuta.Press(); });
  EXPECT_EQ(search.Statement(), "SELECT * FROM Log  ORDER BY DataQso");
}

TEST_F(LogSearchTest, EachOrderSortsByItsColumnAndRuns) {
  LogSearch& search = OpenSearch();
  const Texts columns = {"DataQso",   "Call",    "Prefisso",    "Country",
                         "Provincia", "Locator", "QslRicevuta", "Qrb"};
  ASSERT_EQ(search.SortOrder.Captions().size(), columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    Event([&] { search.SortOrder.Press(static_cast<int>(i)); });
    EXPECT_EQ(search.Statement(), "SELECT * FROM Log  ORDER BY " + columns[i]);
    EXPECT_NO_THROW(session.Db.OpenDynaset(search.Statement()));
  }
}

TEST_F(LogSearchTest, ItOpensEmptyEachTime) {
  LogSearch& first = OpenSearch();
  EXPECT_EQ(first.DataQso.Text(), "__/__/____");
  EXPECT_EQ(first.Country.Text(), "");
  EXPECT_TRUE(first.Provincia.Items().empty());
  EXPECT_EQ(first.SortOrder.Index(), 0);
  Type(first.CallQso, "I3*");
  Event([&] { first.SortOrder.Press(3); });
  Press(first, "cmExit");
  EXPECT_EQ(OpenSearch().Statement(), "SELECT * FROM Log  ORDER BY DataQso");
}

TEST_F(LogSearchTest, ACountryIsCompletedWhileItIsTypedAndBringsItsProvinces) {
  LogSearch& search = OpenSearch();
  Type(search.Country, "I");
  EXPECT_EQ(search.Country.Text(), "I    Italia");
  ASSERT_FALSE(search.Provincia.Items().empty());
  Event([&] { search.Provincia.Pick(0); });
  Type(search.Country, "F");
  EXPECT_EQ(search.Country.Text(), "F    Francia");
  EXPECT_EQ(search.Provincia.Text(), "");
}

TEST_F(LogSearchTest, BackspaceEmptiesCountryAndProvince) {
  LogSearch& search = OpenSearch();
  Type(search.Country, "I");
  Event([&] { search.Provincia.Pick(0); });
  Event([&] { search.Provincia.TypeKey(forms::kBackspace); });
  EXPECT_EQ(search.Provincia.Text(), "");
  EXPECT_EQ(search.Country.Text(), "I    Italia");
  Event([&] { search.Provincia.Pick(0); });
  Event([&] { search.Country.TypeKey(forms::kBackspace); });
  EXPECT_EQ(search.Country.Text(), "");
  EXPECT_EQ(search.Provincia.Text(), "");
}

TEST_F(LogSearchTest, AFoundSelectionIsShownByTheLogFromItsLast) {
  Store("I3AAA", "  2 m");
  Store("IK1BBB", "  2 m");
  Store("I3CCC", "  2 m");
  LogForm& log = OpenLog();
  Search(log, [&](LogSearch& search) {
    Type(search.CallQso, "I3*");
    Press(search, "cmSearch");
  });
  EXPECT_EQ(log.Selection, "SELECT * FROM Log WHERE Call LIKE 'I3*' ORDER BY DataQso");
  EXPECT_EQ(log.CallQso.Text(), "I3CCC");
  EXPECT_EQ(log.QsoTotali.Text(), "2");
  EXPECT_TRUE(log.cmSearch.Down());
  EXPECT_EQ(log.DataGrid1.Rows(), 3);
  Press(log, "cmPrevious");
  EXPECT_EQ(log.CallQso.Text(), "I3AAA");
}

TEST_F(LogSearchTest, ReleasingTheKeyDropsTheSelection) {
  Store("I3AAA", "  2 m");
  Store("IK1BBB", "  2 m");
  LogForm& log = OpenLog();
  Search(log, [&](LogSearch& search) {
    Type(search.CallQso, "I3*");
    Press(search, "cmSearch");
  });
  EXPECT_EQ(log.QsoTotali.Text(), "1");
  Press(log, "cmSearch");
  EXPECT_FALSE(log.cmSearch.Down());
  EXPECT_EQ(log.QsoTotali.Text(), "2");
  EXPECT_EQ(log.CallQso.Text(), "IK1BBB");
}

TEST_F(LogSearchTest, ASearchThatFindsNothingShowsEmptyFields) {
  Store("I3AAA", "  2 m");
  LogForm& log = OpenLog();
  Search(log, [&](LogSearch& search) {
    Type(search.CallQso, "ZZ*");
    Press(search, "cmSearch");
  });
  EXPECT_EQ(log.CallQso.Text(), "");
  EXPECT_FALSE(log.cmUpdate.Enabled());
  EXPECT_TRUE(log.cmSearch.Down());
}

TEST_F(LogSearchTest, LeavingWithoutASearchLeavesTheLogAsItWas) {
  Store("I3AAA", "  2 m");
  Store("IK1BBB", "  2 m");
  LogForm& log = OpenLog();
  Press(log, "cmPrevious");
  const std::function<void(LogSearch&)> ways[] = {
      [&](LogSearch& search) { Press(search, "cmExit"); },
      [&](LogSearch& search) { Event([&] { search.Close(); }); }};  // by its frame
  for (const auto& leave : ways) {
    Search(log, [&](LogSearch& search) {
      Type(search.CallQso, "IK1*");
      leave(search);
      EXPECT_FALSE(search.SearchText);
    });
    EXPECT_FALSE(log.cmSearch.Down());
    EXPECT_EQ(log.CallQso.Text(), "I3AAA");
    Press(log, "cmNext");
    EXPECT_EQ(log.CallQso.Text(), "IK1BBB");
    Press(log, "cmFirst");
  }
}

TEST_F(LogSearchTest, ASearchThatFailsLeavesTheDialogOpenAndTheSelectionAsItWas) {
  Store("I3AAA", "  2 m");
  LogForm& log = OpenLog();
  Search(log, [&](LogSearch& search) {
    Lines();
    Type(search.CallQso, "I3'A");
    Press(search, "cmSearch");
    Texts lines = Lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].starts_with("error \"")) << lines[0];
    EXPECT_TRUE(search.Visible());
    // Half a date is no date.
    Type(search.CallQso, "");
    Event([&] { search.CallQso.SetText(""); });
    Type(search.DataQso, "0102");
    Press(search, "cmSearch");
    EXPECT_EQ(Lines().size(), 1u);
    EXPECT_FALSE(search.SearchText);
    Press(search, "cmExit");
  });
  EXPECT_EQ(log.CallQso.Text(), "I3AAA");
  EXPECT_EQ(log.QsoTotali.Text(), "1");
  Press(log, "cmLast");
  EXPECT_EQ(log.CallQso.Text(), "I3AAA");
}

TEST_F(LogSearchTest, AStatementWithinANoteDoesNoHarm) {
  Store("I3AAA", "  2 m");
  LogForm& log = OpenLog();
  Search(log, [&](LogSearch& search) {
    Event([&] { search.Note.SetText("x'; delete * from Log where Note like '"); });
    Press(search, "cmSearch");
    EXPECT_EQ(Lines().size(), 1u);
    Press(search, "cmExit");
  });
  EXPECT_EQ(Rows("select Call from Log"), Texts{"I3AAA"});
}

TEST_F(LogSearchTest, TheOperatorsWildcardsWorkInCallLocatorAndNote) {
  Store("I3AAA", "  2 m", ",Locator,Note", ",'JN65AB','prima [x] nota'");
  Store("IK3BB", "  2 m", ",Locator,Note", ",'JN55AB','altra'");
  LogSearch& search = OpenSearch();
  struct Case {
    forms::TextField* field;
    std::string text;
    Texts calls;
  };
  const Case cases[] = {{&search.CallQso, "I#*", {"I3AAA"}},
                        {&search.CallQso, "?K3*", {"IK3BB"}},
                        {&search.CallQso, "I[K3]*", {"I3AAA", "IK3BB"}},
                        {&search.CallQso, "I3", {}},
                        {&search.Locator, "JN?5*", {"I3AAA", "IK3BB"}},
                        {&search.Note, "NOTA", {"I3AAA"}},
                        {&search.Note, "a*t", {"I3AAA", "IK3BB"}},
                        {&search.Note, "[[]x", {"I3AAA"}}};
  for (const Case& c : cases) {
    for (forms::TextField* field : {&search.CallQso, &search.Locator, &search.Note})
      field->SetText("");
    c.field->SetText(c.text);
    Texts calls;
    for (auto rows = session.Db.OpenDynaset(search.Statement()); !rows->EOF_(); rows->MoveNext()) {
      calls.push_back(rows->Field("Call").Text());
    }
    EXPECT_EQ(calls, c.calls) << c.text;
  }
}

TEST_F(LogSearchTest, ThePickedNoteIsAppended) {
  class FakeHelp : public core::NotePicker {
   public:
    explicit FakeHelp(core::Session& session)
        : core::NotePicker(session.Host(), "Help", "Help", base::Twips(1), base::Twips(1)) {}
  };
  Know<FakeHelp>("Help");
  LogSearch& search = OpenSearch();
  Type(search.Note, "prima");
  InDialogs([&](forms::Window& dialog) {
    static_cast<FakeHelp&>(dialog).NoteChoice = "[F2]";
    dialog.Close();
  });
  Event([&] { search.Note.DoubleClick(); });
  EXPECT_EQ(search.Note.Text(), "prima[F2]");
}

TEST_F(LogSearchTest, HelpOpensItsOwnTopic) {
  LogSearch& search = OpenSearch();
  Press(search, "cmHelp");
  EXPECT_EQ(Lines(), Texts{"open \"Brenvo.HLP\""});
  EXPECT_EQ(machine.OpenedTopic(), 110);
}

TEST_F(LogSearchTest, TheKeyboardAloneSearchesAndLeaves) {
  LogSearch& search = OpenSearch();
  EXPECT_EQ(search.DefaultCommand, &search.cmSearch);
  EXPECT_EQ(search.CancelCommand, &search.cmExit);
  EXPECT_EQ(search.Caption(), "Log - Ricerca");
}

TEST_F(LogSearchTest, ItKeepsItsPlace) {
  LogSearch& search = OpenSearch();
  search.Move({base::Twips(150), base::Twips(300), base::Twips(9000), base::Twips(6000)});
  Press(search, "cmExit");
  EXPECT_EQ(session.GetSetting("LogSearch", "X", ""), "150");
  EXPECT_EQ(OpenSearch().GetBounds().top, base::Twips(300));
}

}  // namespace
}  // namespace brenvo::log
