#include "history/take_back.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sqlite3.h>

#include <random>

#include "core/contact_origin.h"
#include "core/history.h"
#include "core/own_values.h"
#include "core/qsl_cards.h"
#include "core/stations.h"
#include "core/transaction.h"
#include "tests/support/station.h"
#include "upkeep/maintenance.h"

namespace brenvo::history {
namespace {

using enum core::ContactTable;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace column = core::column;
using Texts = std::vector<std::string>;

class TakeBackTest : public StationTest {
 protected:
  static core::ContactDoor::Fill With(const std::string& call, int minute = 0) {
    return [call, minute](engine::EditableRecordset& row) {
      row.Set(column::kDataQso, base::DateTime::Of(2001, 2, 3, 10, minute));
      row.Set(column::kCall, call);
      row.Set(column::kBanda, "  2 m");
    };
  }
  std::int64_t Add(const std::string& call, int minute = 0) {
    session.Contacts.Add(kLog, Log(), With(call, minute));
    return Log().LastModified().key;
  }
  void Change(std::int64_t qsoNr, std::string_view name, const engine::Value& value) {
    Log().SetBookmark({qsoNr});
    session.Contacts.Change(kLog, Log(),
                            [&](engine::EditableRecordset& row) { row.Set(name, value); });
  }
  void Delete(std::int64_t qsoNr) {
    Log().SetBookmark({qsoNr});
    session.Contacts.Delete(kLog, Log());
  }
  TakenBack Undo() { return TakeBack(session, LastWork(session).value()); }
  TakenBack Undo(std::int64_t work) { return TakeBack(session, FindWork(session, work).value()); }
  Texts Calls() { return Rows("select Call from Log order by QsoNr"); }
  Texts Titles() { return Rows("select Titolo from Storia order by Lavoro"); }
  engine::Table& Log() { return *session.Tables.TbLog; }
  // As another tool would.
  void Other(const std::string& sql) {
    sqlite3* file = nullptr;
    sqlite3_open((directory.Path() / "Brenvo.mdb").c_str(), &file);
    EXPECT_EQ(sqlite3_exec(file, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(file);
  }
  void AddContestQso(int serial, const std::string& call) {
    const auto rows = session.Db.OpenDynaset("select * from [Contest Qso]");
    session.Contacts.Add(kContestQso, *rows, [&](engine::EditableRecordset& row) {
      row.Set("DataContest", base::DateTime::Of(2001, 2, 3));
      row.Set("Banda", "  2 m");
      row.Set("ProgrDato", serial);
      row.Set("Call", call);
      row.Set("InLog", true);
    });
  }
  // All that an operator has, in the order of its keys.
  Texts Contents() {
    Texts all = Rows("select * from Log order by QsoNr");
    for (const char* select :
         {"select * from LogAdif where QsoNr in (select QsoNr from Log) order by QsoNr,Campo",
          "select * from LogOrigine where QsoNr in (select QsoNr from Log) order by QsoNr",
          "select * from LogQsl where QsoNr in (select QsoNr from Log) order by QsoNr,Verso,Via",
          "select * from [Contest Qso] order by DataContest,Banda,ProgrDato",
          "select * from Contest order by DataContest,Banda"}) {
      for (std::string& row : Rows(select)) all.push_back(std::move(row));
    }
    return all;
  }
};

TEST_F(TakeBackTest, AnInsertIsTakenBackAndComesAgainWithItsNumberAndName) {
  Add("IK3ABC");
  const Texts before = Contents();
  EXPECT_EQ(Undo().taken, 1);
  EXPECT_THAT(Calls(), IsEmpty());
  EXPECT_EQ(Undo(2).taken, 1);
  EXPECT_EQ(Contents(), before);
  EXPECT_THAT(Titles(),
              ElementsAre("Nuovo qso", "Ripreso: Nuovo qso", "Ripreso: Ripreso: Nuovo qso"));
}

TEST_F(TakeBackTest, AChangeGivesBackEveryColumnNullsToo) {
  Add("IK3ABC");
  const Texts before = Contents();
  Change(1, column::kQra, "Mario");
  Change(1, column::kPotenza, 100);
  Undo();
  Undo();
  EXPECT_EQ(Contents(), before);
  EXPECT_THAT(Rows("select Count(*) from Log where Qra is null and Potenza is null"),
              ElementsAre("1"));
}

TEST_F(TakeBackTest, ADeletedContactComesBack) {
  Add("IK3ABC");
  Add("IK3DEF", 1);
  const Texts before = Contents();
  Delete(1);
  EXPECT_THAT(Calls(), ElementsAre("IK3DEF"));
  EXPECT_EQ(Undo().taken, 1);
  EXPECT_EQ(Contents(), before);
}

TEST_F(TakeBackTest, TheLastWorkIsTheLastThatStandsAndTakesNothingBack) {
  Add("IK3ABC");
  Add("IK3DEF", 1);
  Undo();
  EXPECT_EQ(LastWork(session)->Lavoro, 1);
  Undo();
  EXPECT_THAT(Calls(), IsEmpty());
  EXPECT_FALSE(LastWork(session));
}

TEST_F(TakeBackTest, AWorkThatIsTakenAgainCanBeTakenBackAgain) {
  Add("IK3ABC");
  Undo();
  Undo(2);
  EXPECT_EQ(LastWork(session)->Lavoro, 1);
  Undo();
  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(TakeBackTest, WhatHasBeenChangedSinceStaysAndIsTold) {
  Add("IK3ABC");
  Add("IK3DEF", 1);
  session.Contacts.ChangeMany("Prova", {kLog}, [&] {
    Change(1, column::kQra, "Mario");
    Change(2, column::kQra, "Luigi");
    return true;
  });
  Change(1, column::kQth, "Padova");
  const auto work = FindWork(session, 3).value();
  const TakenBack result = TakeBack(session, work);
  EXPECT_EQ(result.taken, 1);
  EXPECT_EQ(result.left, 1);
  EXPECT_EQ(Told(work, result), "Ripreso: Prova (1 Qso); 1 cambiati dopo restano come sono");
  EXPECT_THAT(Rows("select Qra,Qth from Log order by QsoNr"), ElementsAre("Mario|Padova", "|"));
}

TEST_F(TakeBackTest, WhatHasBeenChangedSinceAndBackAgainIsTakenBack) {
  Add("IK3ABC");
  Change(1, column::kQra, "Mario");
  Change(1, column::kQth, "Padova");
  Undo();
  EXPECT_EQ(Undo().taken, 1);
  EXPECT_THAT(Rows("select Qra,Qth from Log"), ElementsAre("|"));
}

TEST_F(TakeBackTest, AContactThatHasBeenDeletedSinceIsLeft) {
  Add("IK3ABC");
  Change(1, column::kQra, "Mario");
  Delete(1);
  const TakenBack result = Undo(2);
  EXPECT_EQ(result.taken, 0);
  EXPECT_EQ(result.left, 1);
  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(TakeBackTest, AContactInWhosePlaceAnotherStandsIsLeftAndTheOthersComeBack) {
  Add("IK3ABC");
  Add("IK3DEF", 1);
  session.Contacts.ChangeMany("Prova", {kLog}, [&] {
    Delete(1);
    Delete(2);
    return true;
  });
  Add("IK3ABC");
  const TakenBack result = Undo(3);
  EXPECT_EQ(result.taken, 1);
  EXPECT_EQ(result.left, 1);
  EXPECT_THAT(Rows("select QsoNr,Call from Log order by QsoNr"),
              ElementsAre("2|IK3DEF", "3|IK3ABC"));
}

TEST_F(TakeBackTest, TheRestOfAWorkIsTakenBackOnceNothingIsInItsWay) {
  Add("IK3ABC");
  Add("IK3DEF", 1);
  session.Contacts.ChangeMany("Prova", {kLog}, [&] {
    Change(1, column::kQra, "Mario");
    Change(2, column::kQra, "Luigi");
    return true;
  });
  Change(1, column::kQth, "Padova");
  Undo(3);
  EXPECT_EQ(Undo().taken, 1);
  EXPECT_EQ(LastWork(session)->Lavoro, 3);
  EXPECT_EQ(Undo().taken, 1);
  EXPECT_THAT(Rows("select Qra,Qth from Log order by QsoNr"), ElementsAre("|", "|"));
}

TEST_F(TakeBackTest, OneContactOfAWorkIsTakenBackAlone) {
  session.Contacts.ChangeMany("Prova", {kLog}, [&] {
    Add("IK3ABC");
    Add("IK3DEF", 1);
    Add("IK3GHI", 2);
    return true;
  });
  EXPECT_EQ(TakeBack(session, FindWork(session, 1).value(), 2).taken, 1);
  EXPECT_THAT(Calls(), ElementsAre("IK3ABC", "IK3GHI"));
  EXPECT_EQ(Undo().taken, 2);
  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(TakeBackTest, AWorkOfManyIsOneWorkAndKeepsWhatItFoundFirst) {
  Add("IK3ABC");
  const Texts before = Contents();
  session.Contacts.ChangeMany("Prova", {kLog}, [&] {
    Change(1, column::kQra, "Mario");
    Change(1, column::kQra, "Luigi");
    Change(Add("IK3DEF", 1), column::kQra, "Piero");
    Delete(2);
    Delete(1);
    return true;
  });
  EXPECT_THAT(Titles(), ElementsAre("Nuovo qso", "Prova"));
  Undo();
  EXPECT_EQ(Contents(), before);
}

TEST_F(TakeBackTest, TheEmptiedLogComesBackUntilTheCompaction) {
  FillLog(8);
  const Texts before = Contents();
  machine.Messages().QueueAnswer(true);
  Press(*frame, "cmAzzeraLog");
  EXPECT_THAT(Calls(), IsEmpty());
  EXPECT_EQ(Undo().taken, 256);
  EXPECT_EQ(Contents(), before);
}

TEST_F(TakeBackTest, EmptiedContestsComeBack) {
  Exec("insert into Contest (DataContest,Banda,Nome) values ('03/02/2001','  2 m','Prova')");
  AddContestQso(1, "IK3ABC");
  AddContestQso(2, "IK3DEF");
  const Texts before = Contents();
  machine.Messages().QueueAnswer(true);
  Press(*frame, "cmAzzeraContest");
  EXPECT_THAT(Contents(), IsEmpty());
  EXPECT_EQ(Undo().taken, 3);
  EXPECT_EQ(Contents(), before);
  Undo();
  Undo();
  EXPECT_THAT(Rows("select * from [Contest Qso]"), IsEmpty());
}

TEST_F(TakeBackTest, AContestsContactThatChangedItsSerialGetsItBack) {
  AddContestQso(1, "IK3ABC");
  const Texts before = Contents();
  const auto rows = session.Db.OpenDynaset("select * from [Contest Qso]");
  session.Contacts.Change(kContestQso, *rows, [](engine::EditableRecordset& row) {
    row.Set("ProgrDato", 7);
    row.Set("Call", "IK3XYZ");
  });
  Undo();
  EXPECT_EQ(Contents(), before);
  rows->Requery();
  session.Contacts.Delete(kContestQso, *rows);
  Undo();
  EXPECT_EQ(Contents(), before);
}

TEST_F(TakeBackTest, FieldsBesideAContactAndItsStationAreTakenBack) {
  Add("IK3ABC");
  Exec("insert into LogAdif (QsoNr,Campo,Valore) values (1,'IOTA','EU-001')");
  const Texts before = Contents();
  session.Contacts.ChangeMany("Prova", {kLog}, [&] {
    core::Transaction transaction(session);
    core::History& past = session.Contacts.Past();
    past.KeepField(1, "IOTA");
    Exec("update LogAdif set Valore='EU-002' where QsoNr=1");
    past.KeepField(1, "COMMENT");
    Exec("insert into LogAdif (QsoNr,Campo,Valore) values (1,'COMMENT','ciao')");
    past.KeepStation(1);
    Exec("update LogOrigine set Stazione=9 where QsoNr=1");
    past.KeepValue("Ora");
    core::StoreOwnValue(session.Db, "Ora", "UTC");
    transaction.Commit();
    return true;
  });
  const Texts after = Contents();
  Undo();
  EXPECT_EQ(Contents(), before);
  EXPECT_FALSE(core::OwnValue(session.Db, "Ora"));
  Undo(3);
  EXPECT_EQ(Contents(), after);
  EXPECT_EQ(core::OwnValue(session.Db, "Ora"), "UTC");
}

TEST_F(TakeBackTest, CardsAreTakenBackWithTheColumnsThatTheyHaveSet) {
  Add("IK3ABC");
  Add("DL1ABC", 1);
  Exec("insert into LogQsl (QsoNr,Verso,Via,Data) values (1,'I','B','2001-02-03')");
  const Texts before = Contents();
  using enum core::CardSide;
  const core::QslCard direct{core::CardWay::kDirect, base::DateTime::Of(2001, 3, 4)};
  EXPECT_TRUE(core::MarkCards(session, "Inviate", {1, 2}, kSent, direct));
  EXPECT_THAT(Rows("select * from LogQsl order by QsoNr,Verso,Via"),
              ElementsAre("1|I|B|03/02/2001", "1|I|D|04/03/2001", "2|I|D|04/03/2001"));
  EXPECT_THAT(Rows("select QslInviata from Log"), ElementsAre("-1", "-1"));
  const Texts sent = Contents();
  EXPECT_TRUE(core::ForgetCards(session, "Non inviate", {1}, kSent));
  EXPECT_THAT(Rows("select QsoNr from LogQsl"), ElementsAre("2"));
  EXPECT_EQ(Undo().taken, 1);
  EXPECT_EQ(Contents(), sent);
  EXPECT_EQ(Undo().taken, 2);
  EXPECT_EQ(Contents(), before);
  Delete(1);
  Undo();
  EXPECT_EQ(Contents(), before);
}

TEST_F(TakeBackTest, CardsThatHaveChangedSinceStayAsTheyAre) {
  Add("IK3ABC");
  const core::QslCard bureau{core::CardWay::kBureau, std::nullopt};
  core::MarkCards(session, "Inviate", {1}, core::CardSide::kSent, bureau);
  const std::int64_t first = LastWork(session)->Lavoro;
  const core::QslCard direct{core::CardWay::kDirect, std::nullopt};
  core::MarkCards(session, "Ancora", {1}, core::CardSide::kSent, direct);
  Undo(first);
  EXPECT_THAT(Rows("select Via from LogQsl order by Via"), ElementsAre("B", "D"));
}

TEST_F(TakeBackTest, WhatIsRolledBackLeavesNoHistory) {
  Add("IK3ABC");
  EXPECT_THROW(Add("IK3ABC"), engine::DatabaseError);
  EXPECT_FALSE(session.Contacts.ChangeMany("Prova", {kLog}, [&] {
    core::Transaction transaction(session);
    Add("IK3DEF", 1);
    return false;
  }));
  EXPECT_THAT(Titles(), ElementsAre("Nuovo qso"));
  EXPECT_THAT(Rows("select Dal,Al from Storia"), ElementsAre("1|1"));
  EXPECT_THAT(Rows("select * from StoriaNuovi"), IsEmpty());
  EXPECT_THAT(Rows("select * from LogOrigine"), SizeIs(1));
}

TEST_F(TakeBackTest, TheHistoryGoesOnWithTheNextStart) {
  Add("IK3ABC");
  session.CloseTables();
  session.Open();
  Add("IK3DEF", 1);
  Undo();
  Undo();
  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(TakeBackTest, ACompactionThinsTheHistoryAndKeepsWhatCanComeBack) {
  Add("IK3ABC");
  Add("IK3DEF", 1);
  Exec("insert into LogAdif (QsoNr,Campo,Valore) values (2,'IOTA','EU-001')");
  Delete(2);
  core::ThinHistory(session.Db, session.Now(), 365, 2);
  Event([this] { upkeep::CompattaDatabase(session); });
  EXPECT_THAT(Rows("select Lavoro from Storia order by Lavoro"), ElementsAre("2", "3"));
  EXPECT_THAT(Rows("select QsoNr from LogOrigine"), ElementsAre("1", "2"));
  EXPECT_EQ(Undo().taken, 1);
  EXPECT_THAT(Rows("select Valore from LogAdif"), ElementsAre("EU-001"));
  Delete(2);
  session.SaveSetting("Storia", "Giorni", "30");
  machine.SetNow(base::DateTime::Of(2001, 5, 1));
  Add("IK3GHI", 2);
  Event([this] { upkeep::CompattaDatabase(session); });
  EXPECT_THAT(Rows("select Count(*) from Storia"), ElementsAre("1"));
  EXPECT_THAT(Rows("select QsoNr from LogOrigine"), ElementsAre("1", "3"));
  EXPECT_THAT(Rows("select * from LogAdif"), IsEmpty());
}

TEST_F(TakeBackTest, AStoppedOneLeavesEverything) {
  FillLog(12);
  machine.Messages().QueueAnswer(true);
  Press(*frame, "cmAzzeraLog");
  machine.TakeLines();
  machine.StopProgressAt(0);
  TakenBack result;
  Event([&] { result = Undo(); });
  EXPECT_TRUE(result.stopped);
  EXPECT_THAT(Calls(), IsEmpty());
  EXPECT_THAT(Titles(), SizeIs(1));
}

TEST_F(TakeBackTest, TheContactsOfAWorkAreShownBeforeAndAfterIt) {
  Add("IK3ABC");
  Change(1, column::kQra, "Mario");
  Change(1, column::kQra, "Luigi");
  Delete(1);
  const auto of = [&](std::int64_t work) {
    const auto contacts = ContactsOf(session, work, 0, 10);
    EXPECT_THAT(contacts, SizeIs(1));
    const auto qra = [](const std::optional<core::LogContact>& contact) {
      return contact ? contact->Call + " " + contact->Qra : "none";
    };
    return qra(contacts[0].before) + " > " + qra(contacts[0].after);
  };
  EXPECT_EQ(of(1), "none > IK3ABC ");
  EXPECT_EQ(of(2), "IK3ABC  > IK3ABC Mario");
  EXPECT_EQ(of(3), "IK3ABC Mario > IK3ABC Luigi");
  EXPECT_EQ(of(4), "IK3ABC Luigi > none");
}

TEST_F(TakeBackTest, TheContactsOfALargeWorkAreShownPieceByPiece) {
  session.Contacts.ChangeMany("Prova", {kLog}, [&] {
    for (int i = 0; i < 25; ++i) Add(fmt::format("IK3A{}", i), i);
    return true;
  });
  const auto first = ContactsOf(session, 1, 0, 10);
  ASSERT_THAT(first, SizeIs(10));
  EXPECT_EQ(first.back().qsoNr, 10);
  EXPECT_THAT(ContactsOf(session, 1, 20, 10), SizeIs(5));
}

TEST_F(TakeBackTest, WhatAnotherProgramHasWrittenBetweenTwoOfOursIsAdoptedAndNeverTakenBack) {
  Add("IK3ABC");
  const std::int64_t version = session.Db.DataVersion();
  Add("IK3DEF", 1);
  EXPECT_EQ(session.Db.DataVersion(), version);
  Other(
      "INSERT INTO Log (DataQso, Call, Banda, Modo) VALUES "
      "('2001-02-03 10:30:00', 'G0ABC', '  2 m', 'SSB'), "
      "('2001-02-03 10:31:00', 'G0DEF', '  2 m', 'SSB'); DELETE FROM Log WHERE QsoNr = 1");
  EXPECT_NE(session.Db.DataVersion(), version);
  Add("IK3GHI", 2);
  EXPECT_EQ(session.Contacts.AdoptOthers(), 2);
  EXPECT_EQ(session.Contacts.AdoptOthers(), 0);
  EXPECT_EQ(core::OriginOf(session.Db, 3)->uuid,
            core::DerivedName(core::FindStation(session.Db, 1)->Call, "G0ABC",
                              base::DateTime::Of(2001, 2, 3, 10, 30), "  2 m", "SSB"));
  Undo();
  Undo();
  EXPECT_EQ(Undo(1).taken, 0);  // the contact that the other program has deleted
  EXPECT_THAT(Calls(), ElementsAre("G0ABC", "G0DEF"));
}

// Whatever is done, taking all of it back, the last first, leads to the beginning.
TEST_F(TakeBackTest, RandomWorksTakenBackLeadToTheBeginning) {
  std::mt19937 dice(20261122);
  const auto roll = [&](int faces) {
    return static_cast<int>(dice() % static_cast<unsigned>(faces));
  };
  for (int i = 0; i < 20; ++i) Add(fmt::format("DL{}", i), i);
  for (int i = 1; i < 6; ++i) AddContestQso(i, fmt::format("HB{}", i));
  Exec("insert into LogAdif (QsoNr,Campo,Valore) values (3,'IOTA','EU-001')");
  const Texts beginning = Contents();
  const std::int64_t first = LastWork(session)->Lavoro;

  const auto anyContact = [&]() -> std::int64_t {
    const auto rows = Rows("select QsoNr from Log");
    return rows.empty()
               ? 0
               : std::stoll(rows[static_cast<std::size_t>(roll(static_cast<int>(rows.size())))]);
  };
  const auto step = [&] {
    try {
      switch (roll(8)) {
        case 0:
        case 1:
          Add(fmt::format("DL{}", roll(30)), roll(30));
          break;
        case 2:
          if (const auto qsoNr = anyContact())
            Change(qsoNr, column::kQra, fmt::format("Q{}", roll(9)));
          break;
        case 3:  // the key too
          if (const auto qsoNr = anyContact())
            Change(qsoNr, column::kCall, fmt::format("DL{}", roll(30)));
          break;
        case 4:
          if (const auto qsoNr = anyContact()) Delete(qsoNr);
          break;
        case 5:
          session.Contacts.ChangeMany("Lavoro", {kLog, kContestQso}, [&] {
            core::Transaction transaction(session);
            for (int i = roll(5); i >= 0; --i) {
              if (const auto qsoNr = anyContact())
                Change(qsoNr, column::kQth, fmt::format("T{}", roll(9)));
            }
            session.Contacts.Past().KeepWhere(" where QslDaInviare=False and Qra='Q1'");
            Exec("update Log set QslDaInviare=True where QslDaInviare=False and Qra='Q1'");
            session.Contacts.Past().KeepContestQsos(" where InLog");
            Exec("update [Contest Qso] set InLog=False where InLog");
            transaction.Commit();
            return true;
          });
          break;
        case 6: {
          const auto rows = session.Db.OpenDynaset("select * from [Contest Qso]");
          if (rows->EOF_()) break;
          session.Contacts.Change(kContestQso, *rows, [&](engine::EditableRecordset& row) {
            row.Set("ProgrDato", roll(20) + 1);
            row.Set("InLog", true);
          });
          break;
        }
        case 7: {  // back, or back and forth
          const auto works =
              Rows("select Lavoro from Storia where Lavoro>" + std::to_string(first));
          if (works.empty()) break;
          Undo(std::stoll(works[static_cast<std::size_t>(roll(static_cast<int>(works.size())))]));
          break;
        }
      }
    } catch (const engine::DatabaseError& failure) {
      ASSERT_EQ(failure.Number, engine::DatabaseError::kDuplicateKey);
    }
  };
  for (int i = 0; i < 400; ++i) step();
  int works = 0;
  for (auto last = LastWork(session); last && last->Lavoro > first;
       last = LastWork(session, last->Lavoro)) {
    works += TakeBack(session, *last).taken > 0 ? 1 : 0;
  }
  EXPECT_GT(works, 100);
  EXPECT_EQ(Contents(), beginning);
}

}  // namespace
}  // namespace brenvo::history
