#include <gmock/gmock.h>

#include "tests/contest/contest_station.h"

namespace brenvo::contest {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

class ContestQsoTest : public ContestLogStation {};

TEST_F(ContestQsoTest, TheFirstContactTakesSerialDayModeAndReports) {
  ContestQso& log = OpenLog();
  InEntry(log, [](ContestNewQso& entry) {
    EXPECT_EQ(entry.Caption(), "Contest - Nuovo Qso");
    EXPECT_EQ(entry.ProgrD.Text(), "1");
    EXPECT_EQ(entry.Giorno.Text(), "7");
    EXPECT_EQ(entry.Modo.Text(), "USB");
    EXPECT_EQ(entry.QrkD.Text(), "59");
    EXPECT_EQ(entry.QrkR.Text(), "59");
    EXPECT_EQ(entry.Qtr.Text(), "04:05");
    EXPECT_EQ(entry.CallQso.Text(), "");
    EXPECT_EQ(entry.Qrb.Text(), "");
  });
}

TEST_F(ContestQsoTest, TheModeComesFromTheTransceiverWhereTheOperatorWantsThat) {
  session.Rig.Put(core::RigNow{base::Hz(144050000), "  2 m", "CW", {}});
  ContestQso& log = OpenLog();
  InEntry(log, [](ContestNewQso& entry) { EXPECT_EQ(entry.Modo.Text(), "USB"); });
  EXPECT_EQ(session.Choices.Set(core::choice::kRigInContest, "Sì"), "");
  InEntry(log, [](ContestNewQso& entry) { EXPECT_EQ(entry.Modo.Text(), "CW"); });
  session.Rig.Put(core::RigNow{base::Hz(144050000), "  2 m", "", {}});
  InEntry(log, [](ContestNewQso& entry) { EXPECT_EQ(entry.Modo.Text(), "USB"); });
}

TEST_F(ContestQsoTest, TheLogsCellsAreNotWrittenInPlace) {
  EXPECT_FALSE(OpenLog().QC.WritesCells());
}

TEST_F(ContestQsoTest, TheEntryGoesOnFromTheHighestSerial) {
  Add(12, "IK3ABC");
  Add(11, "IK3DEF");
  session.Db.Execute("UPDATE [Contest Qso] SET Giorno=8,Modo='CW' WHERE ProgrDato=12");
  ContestQso& log = OpenLog();
  InEntry(log, [](ContestNewQso& entry) {
    EXPECT_EQ(entry.ProgrD.Text(), "13");
    EXPECT_EQ(entry.Giorno.Text(), "8");
    EXPECT_EQ(entry.Modo.Text(), "CW");
  });
}

TEST_F(ContestQsoTest, AContactIsStoredColumnByColumn) {
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC/P", "12", "JN65AB", " ciao ", "VE");
    entry.QrkR.SetText("57");
    entry.Qtr.SetText("14:30");
    entry.Qsl.Press();
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_EQ(Rows("select DataContest,Banda,ProgrDato,Qtr,Call,Giorno,QrkDato,QrkRicevuto,"
                 "ProgrRicevuto,Locator,Modo,[Note],Qrb,Punti,Qsl,InLog from [Contest Qso]"),
            Texts{"07/09/2024|  2 m|1|14:30:00|IK3ABC/P|7|59|57|12|JN65AB|USB|[Exc=VE] ciao |5|5|"
                  "-1|0"});
  EXPECT_EQ(log.QC.Rows(), 2);
}

TEST_F(ContestQsoTest, InsertAndStayPreparesTheNextContact) {
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "1", "JN65AB", "nota", "VE");
    entry.Giorno.SetText("8");
    entry.Modo.SetText("CW");
    entry.InLog.Press();
    Press(entry, "cmInsertR");
    EXPECT_EQ(entry.ProgrD.Text(), "2");
    for (const forms::TextField* field :
         {&entry.CallQso, &entry.ProgrR, &entry.Locator, &entry.Qrb, &entry.Note}) {
      EXPECT_EQ(field->Text(), "") << field->Name();
    }
    EXPECT_FALSE(entry.InLog.IsOn());
    // These carry over.
    EXPECT_EQ(entry.Exc.Text(), "VE");
    EXPECT_EQ(entry.Giorno.Text(), "8");
    EXPECT_EQ(entry.Modo.Text(), "CW");
    Type(entry, "IK3DEF", "2", "JN65AB");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select Call from [Contest Qso] order by ProgrDato"), (Texts{"IK3ABC", "IK3DEF"}));
  EXPECT_EQ(log.QC.Row(), 2);
}

TEST_F(ContestQsoTest, TheEntrySaysWhatItHasStoredAndWhatItHasNot) {
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "1", "JN65AB");
    Press(entry, "cmInsertR");
    EXPECT_THAT(entry.Avviso.Text(), StartsWith("Qso inserito: 1  IK3ABC  JN65AB"));
    Type(entry, "IK3DEF", "1", "JN");
    Press(entry, "cmInsertR");
    EXPECT_EQ(entry.Avviso.Text(), "Qso non inserito: Locator errato");
    Press(entry, "cmInsertE");
  });
  Lines();
}

TEST_F(ContestQsoTest, TheEntrySaysWhoseCallItIsOnTheDayOfTheContact) {
  ContestQso& log = OpenLog("28/05/2024");
  InEntry(log, [this](ContestNewQso& entry) {
    const auto told = [&](std::string_view call, std::string_view day) {
      entry.CallQso.SetText(call);
      entry.Giorno.SetText(day);
      Event([&] { entry.CallQso.Leave(); });
      return entry.Avviso.Text();
    };
    EXPECT_EQ(told("GB6WW", "28"), "GB6WW: Scozia dal 01/05 al 28/05/2024");
    EXPECT_EQ(told("IK3ABC", "28"), "");
    EXPECT_EQ(told("GB6WW", "29"), "");
    EXPECT_EQ(told("IK3ABC/MM", "28"), "IK3ABC/MM: in mare o in volo non conta per nessun country");
    Type(entry, "IK3ABC", "1", "JN65AB");
    Press(entry, "cmInsertR");
    // What was stored stays to be read while the next call is typed.
    EXPECT_THAT(told("IK3DEF", "28"), StartsWith("Qso inserito: 1  IK3ABC"));
    Press(entry, "cmInsertE");
  });
  Lines();
}

TEST_F(ContestQsoTest, ASecondContactWithACallWarnsAndIsStoredForNoPoints) {
  Add(1, "IK3ABC");
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "9", "JN65AB", " ciao ");
    Event([&] { entry.CallQso.Leave(); });
    EXPECT_EQ(entry.CallQso.Text(), "IK3ABC");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Lines(), Texts{"question \"Qso doppio (1)\" \"Confermi call ?\" yes"});
  EXPECT_EQ(Rows("select Qrb,Punti,[Note] from [Contest Qso] where ProgrDato=2"),
            Texts{"5|0|Qso doppio (1) ciao"});
}

TEST_F(ContestQsoTest, TheExchangeStandsAheadOfTheDuplicatesText) {
  Add(1, "IK3ABC");
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC ", "9", "JN65AB", "", " MI ");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select [Note] from [Contest Qso] where ProgrDato=2"),
            Texts{"[Exc=MI]Qso doppio (1) "});
}

TEST_F(ContestQsoTest, ARefusedDuplicateLosesItsCall) {
  Add(1, "IK3ABC");
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(false);
  InEntry(log, [this](ContestNewQso& entry) {
    entry.CallQso.SetText("IK3ABC");
    Event([&] { entry.CallQso.Leave(); });
    EXPECT_EQ(entry.CallQso.Text(), "");
  });
}

TEST_F(ContestQsoTest, ADuplicateIsOneOfTheSameDateAndBandOnly) {
  AddContact(kDate, " 70cm", 1, "IK3ABC");
  AddContact("06/07/2024", kBand, 1, "IK3ABC");
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    entry.CallQso.SetText("IK3ABC");
    Event([&] { entry.CallQso.Leave(); });
  });
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(ContestQsoTest, AContactIsNotItsOwnDuplicate) {
  Add(1, "IK3ABC");
  ContestQso& log = OpenLog();
  InRow(log, 1, [this](ContestNewQso& entry) {
    Event([&] { entry.CallQso.Leave(); });
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_EQ(Rows("select Punti,[Note] from [Contest Qso]"), Texts{"5|"});
}

TEST_F(ContestQsoTest, ADoubleClickLoadsTheRowToChange) {
  Add(1, "IK3ABC");
  Add(2, "IK3DEF", "JN54IE", 77, "[Exc=VE]nota", true);
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(false);  // the transfer
  InRow(log, 2, [this](ContestNewQso& entry) {
    EXPECT_EQ(entry.Operation.Text(), "U");
    EXPECT_EQ(entry.CallQso.Text(), "IK3DEF");
    EXPECT_EQ(entry.Giorno.Text(), "7");
    EXPECT_EQ(entry.Qtr.Text(), "14:02");
    EXPECT_EQ(entry.QrkD.Text(), "59");
    EXPECT_EQ(entry.QrkR.Text(), "57");
    EXPECT_EQ(entry.ProgrD.Text(), "2");
    EXPECT_EQ(entry.ProgrR.Text(), "102");
    EXPECT_EQ(entry.Locator.Text(), "JN54IE");
    EXPECT_EQ(entry.Qrb.Text(), "77");
    EXPECT_EQ(entry.Note.Text(), "[Exc=VE]nota");
    EXPECT_EQ(entry.Exc.Text(), "");
    EXPECT_TRUE(entry.InLog.IsOn());
    EXPECT_FALSE(entry.Qsl.IsOn());
    entry.CallQso.SetText("IK3XYZ");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select ProgrDato,Call from [Contest Qso] order by ProgrDato"),
            (Texts{"1|IK3ABC", "2|IK3XYZ"}));
  EXPECT_EQ(Rows("select [Note] from [Contest Qso] where ProgrDato=2"), Texts{"[Exc=VE]nota"});
  log.Close();
}

TEST_F(ContestQsoTest, ChangingADuplicateMarksItOnceMore) {
  Add(1, "IK3ABC");
  Add(2, "IK3ABC", "JN65AB", 100, "[Exc=VE]Qso doppio (1) ");
  ContestQso& log = OpenLog();
  InRow(log, 2, [this](ContestNewQso& entry) {
    entry.Exc.SetText("VE");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select [Note] from [Contest Qso] where ProgrDato=2"),
            Texts{"[Exc=VE]Qso doppio (1) [Exc=VE]Qso doppio (1)"});
}

TEST_F(ContestQsoTest, AfterAChangeInsertAndStayGoesOnWithANewContact) {
  Add(1, "IK3ABC");
  ContestQso& log = OpenLog();
  InRow(log, 1, [this](ContestNewQso& entry) {
    Press(entry, "cmInsertR");
    EXPECT_EQ(entry.Operation.Text(), "I");
    EXPECT_EQ(entry.ProgrD.Text(), "2");
    EXPECT_EQ(entry.CallQso.Text(), "");
  });
}

TEST_F(ContestQsoTest, ADoubleClickOnAnEmptyLogOrOnTheHeadingOpensNothing) {
  ContestQso& log = OpenLog();
  Event([&] { log.QC.DoubleClickCell(1, 0); });
  Add(1, "IK3ABC");
  log.Data1.Refresh();
  Event([&] { log.QC.DoubleClickCell(0, 0); });
  EXPECT_EQ(session.Windows.Find("ContestNewQso"), nullptr);
}

TEST_F(ContestQsoTest, LeavingTheLocatorShowsTheDistanceFromTheContestsOwn) {
  ContestForm& contest = OpenContest();
  Store(contest, kDate, kBand);
  contest.Locator.SetText("JN54IE");
  Press(contest, "cmQso");
  auto& log = *static_cast<ContestQso*>(machine.Host().Front());
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "1", "JN54IE");
    Event([&] { entry.Locator.Leave(); });
    EXPECT_EQ(entry.Qrb.Text(), "1");
    Press(entry, "cmInsertE");
  });
  // The stored distance is from the station's profile.
  EXPECT_EQ(Rows("select Qrb=Punti,Qrb>100 from [Contest Qso]"), Texts{"-1|-1"});
}

TEST_F(ContestQsoTest, AShortLocatorShowsNoDistanceAndIsRefused) {
  ContestQso& log = OpenLog();
  for (const char* locator : {"JN", "JN65"}) {
    InEntry(log, [&](ContestNewQso& entry) {
      Type(entry, "IK3ABC", "1", locator);
      Event([&] { entry.Locator.Leave(); });
      EXPECT_EQ(entry.Qrb.Text(), "0");
      Press(entry, "cmInsertE");
    });
    EXPECT_EQ(Lines(), Texts{"message critical \"\" \"Locator errato\""});
  }
  EXPECT_EQ(Rows("select count(*) from [Contest Qso]"), Texts{"0"});
}

TEST_F(ContestQsoTest, AContactInTheOwnLocatorIsOneKilometreAndOnePoint) {
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "1", "JN65AA");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select Qrb,Punti from [Contest Qso]"), Texts{"1|1"});
}

TEST_F(ContestQsoTest, EachMissingFieldIsToldInItsTurn) {
  ContestQso& log = OpenLog();
  struct Case {
    forms::TextField ContestNewQso::*field;
    std::string_view message;
  };
  const Case cases[] = {{&ContestNewQso::Giorno, "Giorno obbligatorio"},
                        {&ContestNewQso::CallQso, "Call obbligatorio"},
                        {&ContestNewQso::QrkD, "Rapporti obbligatori"},
                        {&ContestNewQso::QrkR, "Rapporti obbligatori"},
                        {&ContestNewQso::ProgrR, "Rapporti obbligatori"},
                        {&ContestNewQso::ProgrD, "Rapporti obbligatori"},
                        {&ContestNewQso::Locator, "Locator errato"}};
  for (const Case& each : cases) {
    InEntry(log, [&](ContestNewQso& entry) {
      Type(entry, "IK3ABC", "1", "JN65AB");
      (entry.*each.field).SetText("  ");
      Event([&] { entry.InsertQso(); });
      EXPECT_EQ(Lines(), Texts{fmt::format("message critical \"\" \"{}\"", each.message)});
    });
  }
  InEntry(log, [&](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "1", "JN65AB");
    entry.Qtr.SetText("");
    Event([&] { entry.InsertQso(); });
    EXPECT_EQ(Lines(), Texts{"message critical \"\" \"Qtr obbligatorio\""});
  });
}

TEST_F(ContestQsoTest, AnEmptyTimeMaskIsNotEmptyButNoTimeEither) {
  ContestQso& log = OpenLog();
  InEntry(log, [&](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "1", "JN65AB");
    entry.Qtr.SetText("__:__");
    Press(entry, "cmInsertR");
    EXPECT_THAT(Lines(), ElementsAre(StartsWith("error ")));
    EXPECT_EQ(entry.CallQso.Text(), "IK3ABC");
  });
}

TEST_F(ContestQsoTest, ARefusedContactIsLostAndItsSerialSkipped) {
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "1", "JN");
    Press(entry, "cmInsertR");
    EXPECT_EQ(entry.CallQso.Text(), "");
    EXPECT_EQ(entry.ProgrD.Text(), "2");
    Type(entry, "IK3ABC", "1", "JN");
    Press(entry, "cmInsertE");
    EXPECT_FALSE(entry.Loaded());
  });
  EXPECT_EQ(Rows("select count(*) from [Contest Qso]"), Texts{"0"});
}

TEST_F(ContestQsoTest, ASerialInUseIsAFailureThatKeepsTheEntryAsTyped) {
  Add(1, "IK3ABC");
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3DEF", "9", "JN65AB", "nota", "VE");
    entry.ProgrD.SetText("1");
    Press(entry, "cmInsertE");
    EXPECT_THAT(Lines(), ElementsAre(StartsWith("error \"3022")));
    EXPECT_TRUE(entry.Visible());
    EXPECT_EQ(entry.CallQso.Text(), "IK3DEF");
    EXPECT_EQ(entry.Note.Text(), "nota");
    entry.ProgrD.SetText("2");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select ProgrDato,Call,[Note] from [Contest Qso]"),
            (Texts{"1|IK3ABC|", "2|IK3DEF|[Exc=VE]nota"}));
}

TEST_F(ContestQsoTest, ANumberThatAColumnCannotHoldIsToldAndKeepsTheEntryAsTyped) {
  const std::string digits(19, '9');
  ContestQso& log = OpenLog();
  InEntry(log, [&](ContestNewQso& entry) {
    Type(entry, "IK3DEF", "9", "JN65AB");
    for (forms::TextField* field :
         {&entry.ProgrD, &entry.ProgrR, static_cast<forms::TextField*>(&entry.Giorno)}) {
      const std::string before = field->Text();
      field->SetText(digits);
      Press(entry, "cmInsertE");
      EXPECT_THAT(Lines(), ElementsAre(StartsWith("error \"Il valore '" + digits + "' non è")));
      EXPECT_TRUE(entry.Visible());
      EXPECT_EQ(field->Text(), digits);
      EXPECT_EQ(entry.CallQso.Text(), "IK3DEF");
      field->SetText(before);
    }
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select ProgrDato,Call from [Contest Qso]"), Texts{"1|IK3DEF"});
}

TEST_F(ContestQsoTest, ABatchIsSeenAndTheRowAndTheContactInWorkStay) {
  Add(1, "IK3ABC");
  Add(3, "IK3DEF");
  ContestQso& log = OpenLog();
  InRow(log, 2, [this](ContestNewQso& entry) {
    Add(2, "IK3XYZ");
    Event([this] {
      session.Contacts.ChangeMany("Prova", {core::ContactTable::kContestQso}, [] { return true; });
    });
    entry.Note.SetText("mio");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select Call,[Note] from [Contest Qso] order by ProgrDato"),
            (Texts{"IK3ABC|", "IK3XYZ|", "IK3DEF|mio"}));
  EXPECT_EQ(log.QC.Row(), 3);
}

TEST_F(ContestQsoTest, StoringAndDeletingAnnounceTheirContact) {
  Texts changes;
  const forms::Subscription subscription =
      session.Contacts.Subscribe([&](const core::ContactsChanged& change) {
        const auto& one = std::get<core::OneContact>(change.which);
        const auto key = [](const std::optional<core::StoredContact>& contact) {
          return contact ? std::to_string(contact->key) : "none";
        };
        changes.push_back(key(one.before) + " > " + key(one.after));
      });
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "9", "JN65AB");
    Press(entry, "cmInsertE");
  });
  InRow(log, 1, [this](ContestNewQso& entry) { Press(entry, "cmInsertE"); });
  machine.Messages().QueueAnswer(true);
  Event([&] { log.QC.RemoveRow(1); });
  EXPECT_THAT(changes, ElementsAre("none > 1", "1 > 1", "1 > none"));
}

TEST_F(ContestQsoTest, AfterTheLastRowIsDeletedItsSerialIsHandedOutAgain) {
  Add(1, "IK3ABC");
  Add(2, "IK3DEF");
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  Event([&] { log.QC.RemoveRow(2); });
  EXPECT_EQ(Lines(), Texts{"question \"Contest\" \"Confermi cancellazione Qso ?\" yes"});
  EXPECT_EQ(log.QC.Rows(), 2);
  InEntry(log, [](ContestNewQso& entry) { EXPECT_EQ(entry.ProgrD.Text(), "2"); });
}

TEST_F(ContestQsoTest, ARefusedDeletionKeepsTheRow) {
  Add(1, "IK3ABC");
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(false);
  Event([&] { log.QC.RemoveRow(1); });
  EXPECT_EQ(Rows("select count(*) from [Contest Qso]"), Texts{"1"});
}

TEST_F(ContestQsoTest, ADataErrorOfTheGridIsNotTold) {
  Add(1, "IK3ABC");
  ContestQso& log = OpenLog();
  session.Db.Execute("DELETE * FROM [Contest Qso]");
  machine.Messages().QueueAnswer(true);
  Event([&] { log.QC.RemoveRow(1); });
  EXPECT_EQ(log.QC.Cell(1, 2), "");
  EXPECT_THAT(Lines(), Not(Contains(StartsWith("error"))));
}

TEST_F(ContestQsoTest, TheGridIsNotWrittenInto) {
  Add(1, "IK3ABC");
  ContestQso& log = OpenLog();
  Event([&] { log.QC.EditCell(1, 2, "X"); });
  EXPECT_EQ(Rows("select Call from [Contest Qso]"), Texts{"IK3ABC"});
}

TEST_F(ContestQsoTest, TheGridShowsTheLogBySerialAndStandsOnTheLast) {
  Add(2, "IK3DEF", "JN54IE", 1234, "nota", true);
  Add(1, "IK3ABC");
  AddContact(kDate, " 70cm", 1, "OTHER");
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(false);
  Texts cells;
  for (std::int64_t row = 0; row < log.QC.Rows(); ++row) {
    std::string text;
    for (int column = 0; column < log.QC.Columns(); ++column) {
      text += log.QC.Cell(row, column) + "|";
    }
    cells.push_back(text);
  }
  EXPECT_EQ(cells, (Texts{"Giorno|Qtr|Call|Qrk Dato|Progr Dato|Qrk Ricevuto|Progr Ricevuto|"
                          "Locator|Qrb|Punti|Modo|Qsl|In Log|Note|",
                          "7|14:01|IK3ABC|59|1|57|101|JN65AB|100|100|USB|No|No||",
                          "7|14:02|IK3DEF|59|2|57|102|JN54IE|1234|1234|USB|No|Sì|nota|"}));
  EXPECT_EQ(log.QC.Row(), 2);
  log.QC.Hover();
  EXPECT_EQ(log.StatusBar1.Panel(1), "Doppio click per aggiornare");
  log.Close();
}

TEST_F(ContestQsoTest, EnteringTheSerialWithoutACallLeadsBackToTheCall) {
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Event([&] { entry.ProgrR.Focus(); });
    EXPECT_EQ(Lines(), Texts{"focus ContestNewQso.CallQso"});
    entry.CallQso.SetText("IK3ABC");
    Event([&] { entry.ProgrR.Focus(); });
    EXPECT_EQ(Lines(), Texts{});
  });
}

TEST_F(ContestQsoTest, EnterLeadsFromTheCallToTheExchangeAndStoresThere) {
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "1", "JN65AB", "", "VE");
    for (forms::TextField* field :
         {&entry.CallQso, &entry.QrkD, &entry.QrkR, &entry.ProgrR, &entry.Locator, &entry.Exc}) {
      Event([&] { field->TypeKey(forms::kEnter); });
    }
    EXPECT_EQ(Lines(), (Texts{"focus ContestNewQso.QrkD", "focus ContestNewQso.QrkR",
                              "focus ContestNewQso.ProgrR", "focus ContestNewQso.Locator",
                              "focus ContestNewQso.Exc", "focus ContestNewQso.CallQso"}));
    EXPECT_EQ(entry.ProgrD.Text(), "2");
  });
  EXPECT_EQ(Rows("select Call from [Contest Qso]"), Texts{"IK3ABC"});
}

TEST_F(ContestQsoTest, EnterOnTheLastFieldLeadsToWhatIsMissingInsteadOfLosingTheContact) {
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "", "JN65AB");
    Event([&] { entry.Exc.TypeKey(forms::kEnter); });
    EXPECT_EQ(Lines(), Texts{"focus ContestNewQso.ProgrR"});
    EXPECT_EQ(entry.CallQso.Text(), "IK3ABC");
  });
}

TEST_F(ContestQsoTest, FieldsFollowEachOtherAsAContactIsSpoken) {
  ContestQso& log = OpenLog();
  InEntry(log, [](ContestNewQso& entry) {
    Texts names;
    for (std::size_t i = 0; i < 6; ++i) names.push_back(entry.Fields()[i]->Name());
    EXPECT_EQ(names, (Texts{"CallQso", "QrkD", "QrkR", "ProgrR", "Locator", "Exc"}));
    EXPECT_EQ(entry.cmInsertR.FocusAfter, &entry.CallQso);
  });
}

TEST_F(ContestQsoTest, KeysAreFilteredWhileTyping) {
  ContestQso& log = OpenLog();
  InEntry(log, [](ContestNewQso& entry) {
    const auto typed = [](forms::TextField& field) {
      field.Focus();
      for (char32_t key : std::u32string(U"a1b2")) field.TypeKey(key);
      return field.Text();
    };
    for (forms::TextField* field :
         {&entry.Giorno, &entry.QrkD, &entry.QrkR, &entry.ProgrD, &entry.ProgrR}) {
      EXPECT_EQ(typed(*field), "12") << field->Name();
    }
    for (forms::TextField* field : {&entry.CallQso, &entry.Locator, &entry.Exc}) {
      EXPECT_EQ(typed(*field), "A1B2") << field->Name();
    }
  });
}

TEST_F(ContestQsoTest, TheTimeButtonTakesTheClock) {
  ContestQso& log = OpenLog();
  InEntry(log, [this](ContestNewQso& entry) {
    machine.SetNow(base::DateTime::Of(2024, 9, 7, 23, 59, 30));
    Press(entry, "cmQtr");
    EXPECT_EQ(entry.Qtr.Text(), "23:59");
  });
}

TEST_F(ContestQsoTest, SeveralLogsKeepTheirOwnContest) {
  ContestForm& contest = OpenContest();
  Store(contest, kDate, kBand);
  Press(contest, "cmQso");
  auto& twoMetres = *static_cast<ContestQso*>(machine.Host().Front());
  Store(contest, kDate, " 70cm");
  Press(contest, "cmQso");
  ASSERT_NE(machine.Host().Front(), &twoMetres);
  InEntry(twoMetres, [this](ContestNewQso& entry) {
    Type(entry, "IK3ABC", "1", "JN65AB");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select Banda from [Contest Qso]"), Texts{"  2 m"});
}

TEST_F(ContestQsoTest, EveryWindowKeepsItsPlaceUnderItsOwnKey) {
  ContestForm& contest = OpenContest();
  ContestQso& log = OpenLog();
  Press(log, "cmCheckCall");
  const auto moveAway = [](forms::Window& window) {
    forms::Bounds bounds = window.GetBounds();
    bounds.left = base::Twips(4321);
    window.Moved(bounds, forms::WindowState::kNormal);
    window.Close();
  };
  InDialogs(moveAway);
  Press(log, "cmNew");
  Press(contest, "cmSearch");
  moveAway(*session.Windows.Find("CheckCallContest"));
  moveAway(log);
  moveAway(contest);
  for (const char* key : {"Contest", "ContestSearch", "ContestQso", "ContestNewQso", "CheckCall"}) {
    EXPECT_EQ(session.GetSetting(key, "X", ""), "4321") << key;
  }
  EXPECT_EQ(OpenContest().GetBounds().left, base::Twips(4321));
}

TEST_F(ContestQsoTest, AFailedPreparationLeavesNoHiddenEntryBehind) {
  ContestForm& contest = OpenContest();
  Store(contest, kDate, kBand);
  session.Handed.CurrentContest = {"07/09/2024", "x'x", "", "", false, false, false};
  auto& log = Open<ContestQso>("ContestQso");
  Press(log, "cmNew");
  EXPECT_THAT(Lines(), ElementsAre(StartsWith("error ")));
  EXPECT_EQ(session.Windows.Find("ContestNewQso"), nullptr);
}

}  // namespace
}  // namespace brenvo::contest
