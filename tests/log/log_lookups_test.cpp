#include <gmock/gmock.h>

#include "geo/locator.h"
#include "log/old_qso.h"
#include "tests/log/log_station.h"
#include "tests/support/entity_table.h"

namespace brenvo::log {
namespace {

constexpr std::string_view kItaly = "I    Italia";

// A matrix that notes what it was asked for.
class FakeMatrix : public core::MatrixWindow {
 public:
  explicit FakeMatrix(core::Session& session)
      : core::MatrixWindow(session.Host(), "Hrd", "Hrd", base::Twips(1), base::Twips(1)) {}
  void Search() override { searches.push_back(CallQso.Text() + "/" + Locator.Text()); }
  Texts searches;
};

// Pick dialogs that hand back what the test has told them to.
class FakePrefixes : public core::PrefixPicker {
 public:
  explicit FakePrefixes(core::Session& session)
      : core::PrefixPicker(session.Host(), "Pick", "Pick", base::Twips(1), base::Twips(1)) {}
};
class FakeNotes : public core::NotePicker {
 public:
  explicit FakeNotes(core::Session& session)
      : core::NotePicker(session.Host(), "Pick", "Pick", base::Twips(1), base::Twips(1)) {}
};

class LookupTest : public LogStation {
 protected:
  LogForm& NewContact(std::string_view band = "  2 m") {
    LogForm& log = OpenLog();
    Press(log, "cmClear");
    Pick(log.Banda, band);
    return log;
  }
};

TEST_F(LookupTest, ACallIsNewWorkedOrConfirmedOnTheBandAlone) {
  Store("IK3ABC", "  2 m");
  Store("IK3XYZ", "  2 m", ",QslRicevuta", ",true");
  LogForm& log = NewContact();
  log.QsoNr.SetText("");
  Type(log.CallQso, "IK3ABC");
  EXPECT_EQ(log.StatusBar1.Panel(2), "Call Worked");
  Type(log.CallQso, "IK3XYZ");
  EXPECT_EQ(log.StatusBar1.Panel(2), "Call Conf");
  Type(log.CallQso, "IK3NEW");
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
  Pick(log.Banda, " 70cm");
  Type(log.CallQso, "IK3XYZ");
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
}

TEST_F(LookupTest, EachKeyOfTheCallAsksAgain) {
  Store("IK3", "  2 m");
  LogForm& log = NewContact();
  log.QsoNr.SetText("");
  Type(log.CallQso, "IK3");
  EXPECT_EQ(log.StatusBar1.Panel(2), "Call Worked");
  Event([&] { log.CallQso.TypeKey('A'); });
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
  Event([&] { log.CallQso.TypeKey(forms::kBackspace); });
  EXPECT_EQ(log.StatusBar1.Panel(2), "Call Worked");
}

TEST_F(LookupTest, WithoutABandNearlyEveryCallShowsAsNew) {
  Store("IK3ABC", "  2 m");
  Store("IK3XYZ", "");
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  log.QsoNr.SetText("");
  Type(log.CallQso, "IK3ABC");
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
  Type(log.CallQso, "IK3XYZ");
  EXPECT_EQ(log.StatusBar1.Panel(2), "Call Worked");
}

TEST_F(LookupTest, ChangingTheBandAloneDoesNotRefreshThePanels) {
  Store("IK3ABC", "  2 m");
  LogForm& log = NewContact(" 70cm");
  log.QsoNr.SetText("");
  Type(log.CallQso, "IK3AB");
  Type(log.CallQso, "IK3ABC");
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
  Pick(log.Banda, "  2 m");
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
  Event([&] { log.CallQso.TypeKey(forms::kBackspace); });
  Event([&] { log.CallQso.TypeKey('C'); });
  EXPECT_EQ(log.StatusBar1.Panel(2), "Call Worked");
}

TEST_F(LookupTest, TheRecordOnScreenDoesNotSeeItself) {
  Store("IK3ABC", "  2 m", ",QslRicevuta,Country,Locator", ",true,'I','JN65AB'");
  LogForm& log = OpenLog();
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
  EXPECT_EQ(log.StatusBar1.Panel(3), "New Country");
  EXPECT_EQ(log.StatusBar1.Panel(4), "New Square");
}

TEST_F(LookupTest, AfterClearingTheOldNumberStillDoesNotCount) {
  Store("IK3ABC", "  2 m");
  LogForm& log = NewContact();
  EXPECT_EQ(log.QsoNr.Text(), "1");
  Type(log.CallQso, "IK3ABC");
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
}

TEST_F(LookupTest, OnAnEmptyLogTheFirstContactCanBeTyped) {
  LogForm& log = NewContact();
  EXPECT_EQ(log.QsoNr.Text(), "");
  Type(log.CallQso, "IK3ABC");
  Type(log.Locator, "JN65AB");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
  EXPECT_EQ(log.StatusBar1.Panel(4), "New Square");
}

TEST_F(LookupTest, BlanksAroundACallDoNotCount) {
  Store("IK3ABC", "  2 m");
  LogForm& log = NewContact();
  log.QsoNr.SetText("");
  Event([&] { log.CallQso.SetText("  IK3ABC "); });
  EXPECT_EQ(log.StatusBar1.Panel(2), "Call Worked");
}

TEST_F(LookupTest, LeavingACallFillsWhatTheLogKnowsOfIt) {
  Store("IK3ABC", "  2 m", ",Qra,Qth,Locator,Qrb,Prefisso,Country,[Zona CQ],Provincia,Note",
        ",'GIOVANNI','CANTÙ','JN45NR',77,'XX9','F',9,'PD','nota'");
  LogForm& log = NewContact(" 70cm");
  Enter(log.CallQso, "ik3abc");
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
  EXPECT_EQ(log.Qra.Text(), "GIOVANNI");
  EXPECT_EQ(log.Qth.Text(), "CANTÙ");
  EXPECT_EQ(log.Locator.Text(), "JN45NR");
  EXPECT_EQ(log.Qrb.Text(), "77");  // as stored, not computed
  // Prefix data come from the table, never from the old contact.
  EXPECT_EQ(log.Prefisso.Text(), "IK3  ");
  EXPECT_EQ(log.ZonaCQ.Text(), "15");
  EXPECT_EQ(log.ZonaITU.Text(), "28");
  EXPECT_EQ(log.Continente.Text(), "EU");
  EXPECT_EQ(log.Country.Text(), kItaly);
  EXPECT_EQ(log.Provincia.Text(), "");
  EXPECT_EQ(log.Note.Text(), "");
  EXPECT_EQ(log.PrevCall, "IK3ABC");
  EXPECT_EQ(log.PrevLocator, "JN45NR");
  EXPECT_EQ(log.PrevCountry, kItaly);
}

TEST_F(LookupTest, LeavingACallFillsItsOwnZonesWhereverTheTablesAreLedMeanwhile) {
  LogForm& log = NewContact();
  log.Prefisso.OnChange = [&] { session.Tables.TbPrefissi->MoveFirst(); };
  Enter(log.CallQso, "IK3ABC");
  EXPECT_EQ(log.Prefisso.Text(), "IK3  ");
  EXPECT_EQ(log.ZonaCQ.Text(), "15");
  EXPECT_EQ(log.ZonaITU.Text(), "28");
  EXPECT_EQ(log.Country.Text(), kItaly);
}

TEST_F(LookupTest, LeavingACallSetsTheCountryStatusWithIt) {
  Store("IK3ABC", "  2 m", ",Country,QslRicevuta", ",'I',true");
  LogForm& log = NewContact();
  log.QsoNr.SetText("");
  Enter(log.CallQso, "IK1NEW");
  EXPECT_EQ(log.StatusBar1.Panel(3), "Country Conf");
  Enter(log.CallQso, "F1ABC");
  EXPECT_EQ(log.StatusBar1.Panel(3), "New Country");
}

TEST_F(LookupTest, LeavingAnUnchangedCallASecondTimeRunsNothing) {
  LogForm& log = NewContact();
  Enter(log.CallQso, "IK3ABC");
  log.Qra.SetText("A MANO");
  Event([&] { log.Country.SetText(""); });
  const engine::EngineCounters second = Counted([&] { Leave(log.CallQso); });
  EXPECT_EQ(second.statements, 0);
  EXPECT_EQ(log.Qra.Text(), "A MANO");
  EXPECT_EQ(log.Country.Text(), "");
}

TEST_F(LookupTest, AKnownCallWithoutAPrefixFillsOnlyNamePlaceAndLocator) {
  Store("1234", "  2 m", ",Qra,Qth,Locator,Qrb,Prefisso,[Zona CQ],[Zona ITU],Continente,Country",
        ",'ANNA','ROMA','JN61FV',399,'Q1',1,2,'XX','I'");
  LogForm& log = NewContact();
  Enter(log.CallQso, "1234");
  EXPECT_EQ(log.Qra.Text(), "ANNA");
  EXPECT_EQ(log.Qth.Text(), "ROMA");
  EXPECT_EQ(log.Locator.Text(), "JN61FV");
  EXPECT_EQ(log.Qrb.Text(), "399");
  EXPECT_EQ(log.Prefisso.Text(), "");
  EXPECT_EQ(log.ZonaCQ.Text(), "");
  EXPECT_EQ(log.ZonaITU.Text(), "");
  EXPECT_EQ(log.Continente.Text(), "");
  EXPECT_EQ(log.Country.Text(), "");
  EXPECT_EQ(log.PrevCall, "1234");
}

TEST_F(LookupTest, AnUnknownCallKeepsNamePlaceAndLocator) {
  LogForm& log = NewContact();
  Type(log.Qra, "ANNA");
  Type(log.Locator, "JN61FV");
  Enter(log.CallQso, "IK3ABC");
  EXPECT_EQ(log.Qra.Text(), "ANNA");
  EXPECT_EQ(log.Locator.Text(), "JN61FV");
}

TEST_F(LookupTest, ACallOfAnotherCountryEmptiesTheProvince) {
  LogForm& log = NewContact();
  Enter(log.CallQso, "IK3ABC");
  Enter(log.Provincia, "VE");
  EXPECT_EQ(log.Provincia.Text(), "VE  Venezia");
  Enter(log.CallQso, "F1ABC");
  EXPECT_EQ(log.Provincia.Text(), "");
  EXPECT_EQ(log.PrevCountry, "F    Francia");
}

TEST_F(LookupTest, LeavingACallLeavesTheLogTableOnItsCallIndex) {
  Store("IK3B", "  2 m");
  Store("IK3A", "  2 m");
  LogForm& log = NewContact();
  Enter(log.CallQso, "IK3A");
  session.Tables.TbLog->MoveNext();
  EXPECT_EQ(session.Tables.TbLog->Field("Call").Text(), "IK3B");
}

TEST_F(LookupTest, TheManagerIsTheOneOfTheContactsYear) {
  Exec("insert into qmgr (call,mgr,active) values ('A41KJ','OLD',1999)");
  Exec("insert into qmgr (call,mgr,active) values ('A41KJ','LATER',2002)");
  session.Station.ManagerPath = "C:\\qmgr";
  LogForm& log = NewContact();
  log.DataQso.SetText("31/12/2001");
  Type(log.CallQso, "A41KJ");
  EXPECT_EQ(log.Manager.Text(), "OLD");
  log.DataQso.SetText("01/01/2002");
  Type(log.CallQso, "A41KJ");
  EXPECT_EQ(log.Manager.Text(), "LATER");
  // A manager whose first year is after the contact does not count.
  log.DataQso.SetText("01/01/1998");
  Type(log.CallQso, "A41KJ");
  EXPECT_EQ(log.Manager.Text(), "");
}

TEST_F(LookupTest, WithoutAManagerPathNothingIsAskedAndTheManagerStays) {
  Exec("insert into qmgr (call,mgr,active) values ('A41KJ','OLD',1999)");
  LogForm& log = NewContact();
  log.Manager.SetText("A MANO");
  const engine::EngineCounters counted =
      Counted([&] { Event([&] { log.CallQso.SetText("A41KJ"); }); });
  EXPECT_EQ(counted.statements, 2);
  EXPECT_EQ(log.Manager.Text(), "A MANO");
}

TEST_F(LookupTest, ASquareIsNewWorkedOrConfirmedByItsFirstFourCharacters) {
  Store("IK3ABC", "  2 m", ",Locator", ",'JN65AB'");
  Store("IK3XYZ", "  2 m", ",Locator,QslRicevuta", ",'JN55AB',true");
  LogForm& log = NewContact();
  log.QsoNr.SetText("");
  Type(log.Locator, "jn65xx");
  EXPECT_EQ(log.StatusBar1.Panel(4), "Square Worked");
  Type(log.Locator, "JN55XX");
  EXPECT_EQ(log.StatusBar1.Panel(4), "Square Conf");
  Type(log.Locator, "JN45XX");
  EXPECT_EQ(log.StatusBar1.Panel(4), "New Square");
  Pick(log.Banda, " 70cm");
  Type(log.Locator, "JN55XX");
  EXPECT_EQ(log.StatusBar1.Panel(4), "New Square");
}

TEST_F(LookupTest, ALocatorOfFourCharactersShowsNoDistanceAndNoStatus) {
  LogForm& log = NewContact();
  Type(log.Locator, "JN61FV");
  EXPECT_EQ(log.Qrb.Text(), std::to_string(geo::QrbKm("JN65AA", "JN61FV")));
  EXPECT_EQ(log.StatusBar1.Panel(4), "New Square");
  Type(log.Locator, "JN61");
  EXPECT_EQ(log.Qrb.Text(), "0");
  EXPECT_EQ(log.StatusBar1.Panel(4), "");
}

TEST_F(LookupTest, RetypingTheLocatorActedOnLastDoesNotComputeTheDistanceAgain) {
  LogForm& log = NewContact();
  Type(log.Locator, "JN61FV");
  Event([&] { log.Locator.TypeKey(forms::kBackspace); });
  EXPECT_EQ(log.Qrb.Text(), "0");
  EXPECT_EQ(log.PrevLocator, "JN61FV");
  Event([&] { log.Locator.TypeKey('V'); });
  EXPECT_EQ(log.Qrb.Text(), "0");
  EXPECT_EQ(log.StatusBar1.Panel(4), "New Square");
  Type(log.Locator, "JN61FW");
  EXPECT_EQ(log.Qrb.Text(), std::to_string(geo::QrbKm("JN65AA", "JN61FW")));
}

TEST_F(LookupTest, ACountryTypedByItsCodeIsCompletedOnLeaving) {
  LogForm& log = NewContact();
  Enter(log.Country, "i");
  EXPECT_EQ(log.Country.Text(), kItaly);
  EXPECT_EQ(log.PrevCountry, kItaly);
  EXPECT_FALSE(log.Provincia.Items().empty());
  EXPECT_EQ(log.Provincia.Items()[0], "AG   Agrigento");
}

TEST_F(LookupTest, AnUnknownCountryIsEmptiedOnLeaving) {
  LogForm& log = NewContact();
  Enter(log.Country, "I");
  Enter(log.Provincia, "VE");
  Enter(log.Country, "QQQ");
  EXPECT_EQ(log.Country.Text(), "");
  EXPECT_EQ(log.Provincia.Text(), "");
  EXPECT_EQ(log.PrevCountry, "");
}

TEST_F(LookupTest, ACountryIsNewWorkedOrConfirmedOnTheBand) {
  Store("IK3ABC", "  2 m", ",Country", ",'I'");
  Store("F1ABC", "  2 m", ",Country,QslRicevuta", ",'F',true");
  LogForm& log = NewContact();
  log.QsoNr.SetText("");
  Enter(log.Country, "I");
  EXPECT_EQ(log.StatusBar1.Panel(3), "Country Worked");
  Enter(log.Country, "F");
  EXPECT_EQ(log.StatusBar1.Panel(3), "Country Conf");
  Enter(log.Country, "DL");
  EXPECT_EQ(log.StatusBar1.Panel(3), "New Country");
}

TEST_F(LookupTest, AProvinceIsCompletedOnLeavingAndAnUnknownOneEmptied) {
  LogForm& log = NewContact();
  Enter(log.Country, "I");
  Enter(log.Provincia, "ve");
  EXPECT_EQ(log.Provincia.Text(), "VE  Venezia");
  Enter(log.Provincia, "ZZZ");
  EXPECT_EQ(log.Provincia.Text(), "");
  Event([&] { log.Provincia.Pick(0); });
  EXPECT_EQ(log.Provincia.Text(), "AG   Agrigento");
  Leave(log.Provincia);
  EXPECT_EQ(log.Provincia.Text(), "AG  Agrigento");
}

TEST_F(LookupTest, BackspaceClearsTheCountryAndWithItTheProvince) {
  LogForm& log = NewContact();
  Enter(log.Country, "I");
  Enter(log.Provincia, "VE");
  Event([&] { log.Country.TypeKey(forms::kBackspace); });
  EXPECT_EQ(log.Country.Text(), "");
  EXPECT_EQ(log.Provincia.Text(), "");
  // Even where the country is empty already.
  Type(log.Provincia, "VE");
  Event([&] { log.Country.TypeKey(forms::kBackspace); });
  EXPECT_EQ(log.Provincia.Text(), "");
}

TEST_F(LookupTest, BackspaceClearsTheProvinceAlone) {
  LogForm& log = NewContact();
  Enter(log.Country, "I");
  Enter(log.Provincia, "VE");
  Event([&] { log.Provincia.TypeKey(forms::kBackspace); });
  EXPECT_EQ(log.Provincia.Text(), "");
  EXPECT_EQ(log.Country.Text(), kItaly);
}

TEST_F(LookupTest, HintsStandInTheFirstPanel) {
  LogForm& log = OpenLog();
  const std::pair<forms::Field*, std::string> hints[] = {
      {&log.Country, "Doppio Click per tabella country"},
      {&log.Prefisso, "Doppio Click per la tabella prefissi"},
      {&log.Note, "Doppio Click per l' help note"},
      {&log.cmQtr, "Imposta l'ora attuale"},
      {&log.Panel3D1, ""}};
  for (const auto& [field, hint] : hints) {
    Hover(*field);
    EXPECT_EQ(log.StatusBar1.Panel(1), hint) << field->Name();
  }
}

TEST_F(LookupTest, TheMatricesFollowOnlyWhileTheKeyIsDown) {
  FakeMatrix byBand(session), byMode(session);
  session.Opened.Hrd = &byBand;
  LogForm& log = NewContact();
  Type(log.CallQso, "I");
  EXPECT_TRUE(byBand.searches.empty());
  Press(log, "cmWorked");
  EXPECT_EQ(byBand.searches, Texts{"I/"});
  session.Opened.HrdMode = &byMode;
  Event([&] { log.CallQso.SetText(" IK3ABC "); });
  EXPECT_EQ(byBand.searches.back(), "IK3ABC/");
  EXPECT_EQ(byMode.searches, Texts{"IK3ABC/"});
  Event([&] { log.Locator.SetText("JN6"); });
  EXPECT_EQ(byMode.searches.size(), 1u);
  Event([&] { log.Locator.SetText("JN65AB"); });
  EXPECT_EQ(byBand.searches.back(), "IK3ABC/JN65AB");
  EXPECT_EQ(byMode.searches.back(), "IK3ABC/JN65AB");
  Press(log, "cmWorked");
  const std::size_t asked = byBand.searches.size();
  Event([&] { log.CallQso.SetText("IK3XYZ"); });
  EXPECT_EQ(byBand.searches.size(), asked);
  session.Opened.Hrd = session.Opened.HrdMode = nullptr;
}

TEST_F(LookupTest, ThePrefixDialogIsAskedAsAPickAndFillsZonesAndCountry) {
  Know<FakePrefixes>("TabellaPrefissi");
  std::string asked;
  InDialogs([&](forms::Window& dialog) {
    asked = dialog.Tag;
    static_cast<FakePrefixes&>(dialog).Chosen = {"F1", "F", "14", "27", "EU"};
    dialog.Close();
  });
  LogForm& log = NewContact();
  Event([&] { log.Prefisso.DoubleClick(); });
  EXPECT_EQ(asked, "LOG");
  EXPECT_EQ(log.Prefisso.Text(), "F1   ");
  EXPECT_EQ(log.ZonaCQ.Text(), "14");
  EXPECT_EQ(log.ZonaITU.Text(), "27");
  EXPECT_EQ(log.Continente.Text(), "EU");
  EXPECT_EQ(log.Country.Text(), "F    Francia");
  EXPECT_EQ(log.StatusBar1.Panel(3), "New Country");
}

TEST_F(LookupTest, ACancelledPrefixDialogChangesNothing) {
  Know<FakePrefixes>("TabellaPrefissi");
  InDialogs([&](forms::Window& dialog) { dialog.Close(); });
  LogForm& log = NewContact();
  Enter(log.CallQso, "IK3ABC");
  Event([&] { log.Prefisso.DoubleClick(); });
  EXPECT_EQ(log.Prefisso.Text(), "IK3  ");
  EXPECT_EQ(log.Country.Text(), kItaly);
}

TEST_F(LookupTest, APickedPrefixThatHasLeftTheTableFillsZonesAndNoCountry) {
  Know<FakePrefixes>("TabellaPrefissi");
  InDialogs([&](forms::Window& dialog) {
    static_cast<FakePrefixes&>(dialog).Chosen = {"QQ9", "F", "14", "27", "EU"};
    dialog.Close();
  });
  LogForm& log = NewContact();
  Event([&] { log.Prefisso.DoubleClick(); });
  EXPECT_EQ(log.Prefisso.Text(), "QQ9  ");
  EXPECT_EQ(log.ZonaCQ.Text(), "14");
  EXPECT_EQ(log.Country.Text(), "");
}

TEST_F(LookupTest, ANotePickedIsAppendedWithoutSeparator) {
  Know<FakeNotes>("Help");
  InDialogs([&](forms::Window& dialog) {
    static_cast<FakeNotes&>(dialog).NoteChoice = "[E.S.]";
    dialog.Close();
  });
  LogForm& log = NewContact();
  log.Note.SetText("nota");
  Event([&] { log.Note.DoubleClick(); });
  EXPECT_EQ(log.Note.Text(), "nota[E.S.]");
  InDialogs([&](forms::Window& dialog) { dialog.Close(); });
  Event([&] { log.Note.DoubleClick(); });
  EXPECT_EQ(log.Note.Text(), "nota[E.S.]");
}

TEST_F(LookupTest, WhatIsTypedAfterAPickedNoteStandsBehindIt) {
  Know<FakeNotes>("Help");
  InDialogs([&](forms::Window& dialog) {
    static_cast<FakeNotes&>(dialog).NoteChoice = "[F2]";
    dialog.Close();
  });
  LogForm& log = NewContact();
  log.Note.SetText("nota ");
  Event([&] { log.Note.DoubleClick(); });
  Event([&] { log.Note.TypeKey(U'!'); });
  EXPECT_EQ(log.Note.Text(), "nota [F2]!");
}

TEST_F(LookupTest, TheMapOfACountryIsAskedForOnlyWhereItHasOne) {
  Exec("update Country set Mappa='europa.jpg',Pointer_X=12,Pointer_Y=34 where Country='I'");
  Exec("update Country set Mappa='' where Country='F'");
  Store("IK3ABC", "  2 m", ",Country", ",'I'");
  Store("F1ABC", "  2 m", ",Country", ",'F'");
  LogForm& log = OpenLog();
  Press(log, "cmMappa");
  EXPECT_EQ(session.Map.MapFile, "");
  Press(log, "cmPrevious");
  EXPECT_EQ(session.Map.MapFile, "europa.jpg");
  EXPECT_EQ(session.Map.Pointer_X, 12);
  EXPECT_EQ(session.Map.Pointer_Y, 34);
  EXPECT_EQ(frame->HDisplayMappa.Text(), "04:05:06");
}

TEST_F(LookupTest, AQuoteIsAFailureOfItsEventAndTheWindowGoesOn) {
  Store("IK3ABC", "  2 m");
  LogForm& log = NewContact();
  log.QsoNr.SetText("");
  const std::pair<forms::TextField*, std::string> typed[] = {{&log.CallQso, "IK3'ABC"},
                                                             {&log.Country, "I'"}};
  for (const auto& [field, text] : typed) {
    Lines();
    Event([&, field = field, text = text] { field->SetText(text); });
    const Texts lines = Lines();
    ASSERT_EQ(lines.size(), 1u) << text;
    EXPECT_TRUE(lines[0].starts_with("error \"")) << lines[0];
  }
  Type(log.CallQso, "IK3ABC");
  EXPECT_EQ(log.StatusBar1.Panel(2), "Call Worked");
  Enter(log.Country, "I");
  EXPECT_EQ(log.Country.Text(), kItaly);
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3ABC"});
}

TEST_F(LookupTest, AWildcardInACallIsOnlyACharacter) {
  Store("IK3ABC", "  2 m");
  LogForm& log = NewContact();
  log.QsoNr.SetText("");
  Type(log.CallQso, "IK3*");
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
  EXPECT_TRUE(Lines().empty());
}

TEST_F(LookupTest, ASecondStatementInACallIsRefused) {
  Store("IK3ABC", "  2 m");
  LogForm& log = NewContact();
  Event([&] { log.CallQso.SetText("X'; delete * from Log where Call='IK3ABC"); });
  ASSERT_EQ(Lines().size(), 1u);
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3ABC"});
}

TEST_F(LookupTest, AKeystrokeStepsAtMostOneRowAStatement) {
  for (int i = 0; i < 20; ++i) {
    Store("IK3ABC", "  2 m", ",Country,Locator", ",'I','JN65AB'");
    Store("IK3XYZ", "  2 m", ",Country,Locator,QslRicevuta", ",'F','JN55AB',true");
  }
  LogForm& log = NewContact();
  const auto change = [&](forms::TextField& field, std::string_view text) {
    return Counted([&] { Event([&] { field.SetText(text); }); });
  };
  change(log.CallQso, "A");
  struct Case {
    forms::TextField* field;
    std::string text;
    std::int64_t statements, rows;
  };
  // Confirmed: one statement decides; worked: two; new: two and no row at all.
  const Case cases[] = {{&log.CallQso, "IK3XYZ", 1, 1}, {&log.CallQso, "IK3ABC", 2, 1},
                        {&log.CallQso, "IK3NEW", 2, 0}, {&log.Locator, "JN55XX", 1, 1},
                        {&log.Locator, "JN65XX", 2, 1}, {&log.Locator, "JN45XX", 2, 0},
                        {&log.Locator, "JN4", 0, 0}};
  for (const Case& c : cases) {
    const engine::EngineCounters counted = change(*c.field, c.text);
    EXPECT_EQ(counted.statements, c.statements) << c.text;
    EXPECT_LE(counted.rowsStepped, c.rows) << c.text;
  }
  // A country's list of provinces is the only longer answer, and only where the country has one:
  // it is looked for once, and then read in its order.
  EXPECT_EQ(change(log.Country, "QQ").rowsStepped, 0);
  const engine::EngineCounters known = change(log.Country, kItaly);
  EXPECT_EQ(known.statements, 4);
  EXPECT_LE(known.rowsStepped, 3 + static_cast<std::int64_t>(log.Provincia.Items().size()));
}

TEST_F(LookupTest, AKeystrokeCompilesNoStatementAnew) {
  LogForm& log = NewContact();
  Type(log.CallQso, "IK3AB");
  Type(log.Locator, "JN65AB");
  const engine::EngineCounters counted = Counted([&] {
    Type(log.CallQso, "IK4XYZ");
    Type(log.Locator, "JN45XY");
  });
  EXPECT_EQ(counted.prepared, 0);
}

TEST_F(LookupTest, LeavingACallStepsOneRowASearch) {
  for (int i = 0; i < 20; ++i) Store("IK3ABC", "  2 m", ",Locator", ",'JN65AB'");
  LogForm& log = NewContact();
  Type(log.CallQso, "IK3ABC");
  const engine::EngineCounters counted = Counted([&] { Leave(log.CallQso); });
  // The country's list of provinces is the only longer answer.
  EXPECT_LE(counted.rowsStepped, 10 + static_cast<std::int64_t>(log.Provincia.Items().size()));
}

TEST_F(LookupTest, TheStatusStatementsAreServedByIndexes) {
  const std::pair<std::string, std::string> plans[] = {
      {"select Call from Log where Call='X' and QslRicevuta=true and Banda='  2 m' and QsoNr<> 1",
       "INDEX Log.CallBanda (<expr>=? AND <expr>=? AND QslRicevuta=?)"},
      {"select Call from Log where Call='X' and Banda='  2 m' and QsoNr<> 1",
       "INDEX Log.CallBanda (<expr>=? AND <expr>=?)"},
      {"select Call from Log where Country='I' and QslRicevuta=true and Banda='  2 m' and QsoNr<> "
       "1",
       "INDEX Log.CountryBanda (<expr>=? AND <expr>=? AND QslRicevuta=?)"},
      {"select Call from Log where Country='I' and Banda='  2 m' and QsoNr<> 1",
       "INDEX Log.CountryBanda (<expr>=? AND <expr>=?)"},
      {"select Call from Log where Locator like 'JN65*' and QslRicevuta=true and Banda='  2 m' and "
       "QsoNr<> 1",
       "INDEX Log.SquareQsl (<expr>=? AND QslRicevuta=? AND <expr>=?)"},
      {"select Call from Log where Locator like 'JN65*' and Banda='  2 m' and QsoNr<> 1",
       "INDEX Log.SquareBanda (<expr>=? AND <expr>=?)"},
      {"SELECT * FROM Log where Call='X' ORDER By DataQso DESC,QsoNr", "INDEX Log.Call (<expr>=?)"},
      {"SELECT * FROM Log where Locator like 'JN65*' and Banda='  2 m' ORDER By DataQso DESC,QsoNr",
       "INDEX Log.SquareBanda (<expr>=? AND <expr>=?)"},
      {"select mgr from qmgr where call='X' and active=(select max(active) from qmgr where "
       "call='X' and active<= 2001)",
       "INDEX qmgr.call (<expr>=? AND active=?)"}};
  for (const auto& [select, index] : plans) {
    EXPECT_THAT(session.Db.QueryPlan(select), testing::HasSubstr(index)) << select;
  }
}

TEST_F(LookupTest, TellsThatACallWasOfAnotherCountryOnItsDayAndRewritesNothing) {
  LogForm& log = OpenLog();
  const auto toldOn = [&](std::string_view call, std::string_view day) {
    Press(log, "cmClear");
    Event([&] {
      log.Avviso.SetText("");
      log.DataQso.SetText(day);
      log.Qtr.SetText("12:00");
      log.CallQso.SetText(call);
    });
    Event([&] { log.CallQso.Leave(); });
    return log.Avviso.Text();
  };
  EXPECT_EQ(toldOn("GB6WW", "10/05/2024"), "GB6WW: Scozia dal 01/05 al 28/05/2024");
  EXPECT_THAT(log.Country.Text(), testing::StartsWith("G "));
  EXPECT_EQ(toldOn("GB6WW", "10/06/2024"), "");
  EXPECT_EQ(toldOn("Y21XX", "01/06/1985"),
            "Y21XX: Germania Orientale (DDR) dal 17/09/1973 al 02/10/1990");
  EXPECT_EQ(toldOn("IK0ABC/MM", "10/05/2024"),
            "IK0ABC/MM: in mare o in volo non conta per nessun country");
  EXPECT_EQ(toldOn("IK0ABC", "10/05/2024"), "");
  EXPECT_EQ(toldOn("IK0ABC", "senza senso"), "");
}

TEST_F(LookupTest, WhatIsToldOfTheCallFollowsTheRules) {
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  Event([&] { log.CallQso.SetText("IK0ABC"); });
  Event([&] { log.CallQso.Leave(); });
  Event([&] { log.Avviso.SetText(""); });
  const entities::Table table = TableOfCall("prova.csv", "IK0ABC", 225);
  Event([&] { session.ByDate.Apply(table); });
  EXPECT_EQ(log.Avviso.Text(), "IK0ABC: Sardegna");
  Event([&] { session.ByDate.TakeBack(); });
  EXPECT_EQ(log.Avviso.Text(), "");
  // What was told since stays.
  Event([&] { log.Avviso.SetText("altro"); });
  Event([&] { session.ByDate.Apply(table); });
  EXPECT_EQ(log.Avviso.Text(), "altro");
}

}  // namespace
}  // namespace brenvo::log
