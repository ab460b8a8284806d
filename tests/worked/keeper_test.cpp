#include "worked/keeper.h"

#include <gmock/gmock.h>

#include <fstream>
#include <random>

#include "core/log_contact.h"
#include "file/database_file.h"
#include "tests/support/station.h"
#include "tests/support/threaded_platform.h"
#include "tests/worked/plain_answers.h"
#include "upkeep/backup.h"
#include "upkeep/maintenance.h"

namespace brenvo::worked {
namespace {

using core::ContactTable;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kUntilRead = 400;     // milliseconds after the start
constexpr int kUntilOthers = 2100;  // after another program's change

base::DateTime Minute(int number) {
  constexpr int kSeconds = 60;
  return base::DateTime::FromSeconds(base::DateTime::Of(2001, 2, 3).Seconds() + kSeconds * number);
}

// Writes as another program does, with nothing of the engine.
void WriteBeside(const std::filesystem::path& directory, const std::string& sql) {
  sqlite3* file = nullptr;
  char* message = nullptr;
  int code = sqlite3_open((directory / "Brenvo.mdb").c_str(), &file);
  if (code == SQLITE_OK) code = sqlite3_exec(file, sql.c_str(), nullptr, nullptr, &message);
  const std::string error = message == nullptr ? "sqlite" : message;
  sqlite3_free(message);
  sqlite3_close(file);
  if (code != SQLITE_OK) throw std::runtime_error(error);
}

class KeeperTest : public StationTest {
 protected:
  // The frame's own keeper sees to contacts that another program wrote.
  KeeperTest() { frame->Worked->Stop(); }
  void StartAndRead() {
    keeper.Start();
    machine.Advance(kUntilRead);
  }
  void AddContact(const char* call, const char* band = "  2 m") {
    const auto rows = session.Db.OpenDynaset("select * from Log");
    session.Contacts.Add(ContactTable::kLog, *rows, [&](engine::EditableRecordset& row) {
      row.Set("DataQso", Minute(++minutes_));
      row.Set("Call", call);
      row.Set("Banda", band);
      row.Set("Modo", "SSB");
      row.Set("Country", "I");
    });
  }
  State Asked(const Subject& subject) const {
    EXPECT_NE(keeper.Index(), nullptr);
    return keeper.Index() == nullptr ? State::kNew : keeper.Index()->Ask(subject).state;
  }

  std::vector<std::string> told;
  Keeper keeper{session, [this](const std::string& text) { told.push_back(text); }};
  int reads = 0;
  forms::Subscription read_ = keeper.Read.Subscribe([this](const LogRead&) { ++reads; });

 private:
  int minutes_ = 0;
};

TEST_F(KeeperTest, TheLogIsReadALittleAfterTheStart) {
  AddContact("IK3ABC");
  keeper.Start();
  EXPECT_EQ(keeper.Index(), nullptr);
  machine.Advance(kUntilRead);
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kWorked);
  EXPECT_EQ(reads, 1);
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(KeeperTest, ASingleContactIsCountedAtOnceWithoutReadingTheLog) {
  StartAndRead();
  int renewed = 0;
  const auto subscription = keeper.Renewed.Subscribe([&] { ++renewed; });
  AddContact("IK3ABC");
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kWorked);
  EXPECT_EQ(renewed, 1);
  const auto rows = session.Db.OpenDynaset("select * from Log");
  session.Contacts.Change(ContactTable::kLog, *rows, [](auto& row) {
    row.Set("Call", "IK3DEF");
    row.Set("QslRicevuta", true);
  });
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kNew);
  EXPECT_EQ(Asked(Subject::Call("IK3DEF")), State::kConfirmed);
  session.Contacts.Delete(ContactTable::kLog, *rows);
  EXPECT_EQ(Asked(Subject::Call("IK3DEF")), State::kNew);
  machine.Advance(kUntilOthers);
  EXPECT_EQ(reads, 1);
}

TEST_F(KeeperTest, WhatIsKeptBesideAContactConfirmsItAndIsRememberedAsItWasCounted) {
  AddContact("IK3ABC");
  Exec("insert into LogAdif (QsoNr,Campo,Valore) values (1,'LOTW_QSL_RCVD','Y')");
  StartAndRead();
  EXPECT_EQ(Asked(Subject::Country("I")), State::kConfirmed);
  // Taken back, unannounced; then the contact itself changes.
  Exec("delete * from LogAdif");
  const auto rows = session.Db.OpenDynaset("select * from Log");
  session.Contacts.Change(ContactTable::kLog, *rows, [](auto& row) { row.Set("Qra", "Mario"); });
  EXPECT_EQ(Asked(Subject::Country("I")), State::kWorked);
  EXPECT_EQ(keeper.Index()->Contacts(), 1);
  EXPECT_EQ(reads, 1);
}

TEST_F(KeeperTest, AfterManyContactsTheLogIsReadAnewAndTheOldIndexAnswersUntilThen) {
  AddContact("IK3ABC");
  StartAndRead();
  session.Contacts.ChangeMany("Prova", {ContactTable::kLog}, [&] {
    Exec("update Log set Call='IK3DEF'");
    return true;
  });
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kWorked);
  machine.Advance(kUntilRead);
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kNew);
  EXPECT_EQ(Asked(Subject::Call("IK3DEF")), State::kWorked);
  EXPECT_EQ(reads, 2);
}

TEST_F(KeeperTest, ContactsOfAContestAreNoneOfTheLog) {
  StartAndRead();
  session.Contacts.ChangeMany("Prova", {ContactTable::kContestQso}, [] { return true; });
  machine.Advance(kUntilOthers);
  EXPECT_EQ(reads, 1);
}

TEST_F(KeeperTest, WhatAnotherProgramWritesIsFound) {
  StartAndRead();
  WriteBeside(directory.Path(),
              "INSERT INTO Log (DataQso, Call, Banda) VALUES ('2001-02-03 04:05:00', 'IK3ABC', "
              "'  2 m')");
  machine.Advance(kUntilOthers);
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kWorked);
  WriteBeside(directory.Path(), "DELETE FROM Log");
  machine.Advance(kUntilOthers);
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kNew);
  EXPECT_EQ(reads, 3);
  machine.Advance(5 * kUntilOthers);
  EXPECT_EQ(reads, 3) << "what has been found is not looked for again";
}

TEST_F(KeeperTest, WhatIsAnnouncedWhileTheLogIsReadIsNotLost) {
  AddContact("IK3ABC");
  keeper.Start();
  machine.Advance(305);  // the reading has begun
  AddContact("IK3DEF");
  const auto rows = session.Db.OpenDynaset("select * from Log");
  session.Contacts.Delete(ContactTable::kLog, *rows);
  EXPECT_EQ(keeper.Index(), nullptr);
  machine.Advance(100);
  EXPECT_EQ(Asked(Subject::Call("IK3DEF")), State::kWorked);
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kNew);
  EXPECT_EQ(keeper.Index()->Contacts(), 1);
}

TEST_F(KeeperTest, ManyContactsWhileTheLogIsReadHaveItReadOnceMore) {
  keeper.Start();
  machine.Advance(305);
  session.Contacts.ChangeMany("Prova", {ContactTable::kLog}, [&] {
    FillLog(3);
    return true;
  });
  machine.Advance(100);
  EXPECT_EQ(keeper.Index()->Contacts(), 8);
  EXPECT_EQ(reads, 2);
}

TEST_F(KeeperTest, WhoeverNeedsItAtOnceWaits) {
  AddContact("IK3ABC");
  keeper.Start();
  keeper.WaitUntilRead();
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kWorked);
  WriteBeside(directory.Path(), "UPDATE Log SET Call='IK3DEF'");
  keeper.WaitUntilRead();
  EXPECT_EQ(Asked(Subject::Call("IK3DEF")), State::kWorked);
}

TEST_F(KeeperTest, ACompactionMeetsNoReaderAndTheLogIsReadAgainAfterIt) {
  AddContact("IK3ABC");
  keeper.Start();
  machine.Advance(305);  // the reading has begun
  Event([&] { upkeep::CompattaDatabase(session); });
  EXPECT_EQ(keeper.Index(), nullptr);
  Lines();
  machine.Advance(kUntilRead);
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kWorked);
}

TEST_F(KeeperTest, OnceTheTablesAreClosedNothingOfTheFileIsLeftOpen) {
  AddContact("IK3ABC");
  keeper.Start();
  machine.Advance(305);
  session.CloseTables();
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "Brenvo.mdb-wal"));
  machine.Advance(kUntilOthers);
  keeper.WaitUntilRead();
  EXPECT_EQ(keeper.Index(), nullptr);
  session.Open();
}

TEST_F(KeeperTest, RulesThatCannotBeUnderstoodAreToldAndOursCount) {
  std::ofstream(directory.Path() / "Lavorati propri.csv")
      << "Regola,Nome,Vale,Campo,Valori,Non per\nModo,SSB\n";
  StartAndRead();
  EXPECT_THAT(told, ElementsAre(HasSubstr("Lavorati propri.csv, riga 2: non sono sei celle")));
  EXPECT_TRUE(keeper.Index()->TheRules().FindGroup("Fonia").has_value());
}

TEST_F(KeeperTest, WithoutRulesItIsToldAndContactsAreWorkedAllTheSame) {
  std::filesystem::remove(directory.Path() / "Lavorati.csv");
  AddContact("IK3ABC");
  StartAndRead();
  ASSERT_FALSE(told.empty());
  EXPECT_THAT(told[0], HasSubstr("Lavorati.csv: "));
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), State::kWorked);
}

TEST_F(KeeperTest, ALogThatCannotBeReadIsTold) {
  AddContact("IK3ABC");
  WriteBeside(directory.Path(),
              "PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql=replace(sql,'\"Note\"',"
              "'\"Nota\"') WHERE name='Log'");
  StartAndRead();
  EXPECT_THAT(told, ElementsAre(HasSubstr("Lavorati e confermati non si possono leggere: ")));
  EXPECT_EQ(keeper.Index(), nullptr);
}

// The names of contacts may stand beside them in a table of their own.
TEST_F(KeeperTest, ContactsThatHaveNoOriginAndOriginsWithoutContactAreHandedBack) {
  WriteBeside(directory.Path(),
              "INSERT INTO Log (QsoNr, Call) VALUES (2,'A'), (3,'B'), (5,'C'), (9,'D');"
              "INSERT INTO LogOrigine (QsoNr) VALUES (1), (3), (4), (9), (11), (12)");
  LogRead found;
  const auto subscription = keeper.Read.Subscribe([&](const LogRead& log) { found = log; });
  StartAndRead();
  EXPECT_THAT(found.withoutOrigin, ElementsAre(2, 5));
  EXPECT_THAT(found.withoutContact, ElementsAre(1, 4, 11, 12));
}

// Contacts drawn from so few values that they meet often, as texts come: padded, in small letters,
// empty, of other letters.
class RandomWork {
 public:
  explicit RandomWork(std::uint64_t seed) : random_(seed) {}

  std::size_t Below(std::size_t end) { return random_() % end; }
  core::LogContact Contact() {
    core::LogContact contact;
    contact.DataQso = Minute(++minutes_);
    contact.Call = OneOf({"IK3ABC", "ik3abc ", "K1AA", "DL1BB/P", "", "JA1ÀÀ", "VK9X"});
    contact.Prefisso = OneOf({"IK3", "K1", "DL1", ""});
    contact.Country = OneOf({"I", "IS0", "K", "dl", "  "});
    contact.Continente = OneOf({"EU", "NA", ""});
    contact.Provincia = OneOf({"TV", "CA", "", "tv"});
    contact.Locator = OneOf({"JN65DP", "jn65", "FN20", "", "JN6", "JN65DQ99"});
    contact.Banda = OneOf({"  2 m", " 20 m", "  2 M ", "", "24 GHz"});
    contact.Modo = OneOf({"SSB", "USB", "CW", "FT8", "Satellite", "", "Parola"});
    contact.Propagazione = OneOf({"", "EME", "Satellite", ""});
    contact.Note = OneOf({"", "[AO-7/B/CW]", "ciao"});
    contact.ZonaCQ = static_cast<double>(Below(3)) * 7;
    contact.ZonaITU = static_cast<double>(Below(3)) * 14;
    contact.QslRicevuta = Below(4) == 0;
    return contact;
  }
  std::string OneOf(std::initializer_list<const char*> texts) {
    return *(texts.begin() + Below(texts.size()));
  }

 private:
  std::mt19937_64 random_;
  int minutes_ = 0;
};

void Write(engine::EditableRecordset& row, const core::LogContact& contact) {
  for (const core::LogColumn& column : core::LogColumns()) core::WriteColumn(row, contact, column);
}

class RandomWorkTest : public KeeperTest {
 protected:
  void ExpectPlainAnswers(const std::string& when) {
    const WorkedIndex* const index = keeper.Index();
    ASSERT_NE(index, nullptr) << when;
    const PlainAnswers plain(session, index->TheRules());
    ASSERT_EQ(index->Contacts(), plain.Contacts()) << when;
    // What was worked once is asked about when it no longer is, too.
    questions_.merge(plain.Questions());
    for (const PlainQuestion& question : questions_) {
      for (const Filter& filter : filters_) {
        ASSERT_EQ(index->Ask(question.AsSubject(), filter), plain.Ask(question, filter))
            << when << ": " << NameOf(question.kind) << " '" << question.value << "' "
            << question.country << question.zone << ", band " << filter.band.value_or("any");
      }
    }
  }

  // One piece of work, as whoever is at the station does it.
  void Work(RandomWork& random) {
    const auto rows = session.Db.OpenDynaset("select * from Log order by QsoNr");
    const auto any = [&] {
      const std::int64_t count = rows->TotalRows();
      if (count == 0) return false;
      rows->SetBookmark(rows->BookmarkAt(
          static_cast<std::int64_t>(random.Below(static_cast<std::size_t>(count)))));
      return true;
    };
    const core::LogContact contact = random.Contact();
    const auto fill = [&](engine::EditableRecordset& row) { Write(row, contact); };
    const auto number = [&] { return rows->Field("QsoNr").Text(); };
    switch (random.Below(11)) {
      case 0:
      case 1:
      case 2:
        return session.Contacts.Add(ContactTable::kLog, *rows, fill);
      case 3:
      case 4:
        if (any()) session.Contacts.Change(ContactTable::kLog, *rows, fill);
        return;
      case 5:
        if (any()) session.Contacts.Delete(ContactTable::kLog, *rows);
        return;
      case 6:  // a batch
        session.Contacts.ChangeMany("Prova", {ContactTable::kLog}, [&] {
          session.Db.BeginTrans();
          for (int i = 0; i < 3; ++i) {
            const core::LogContact each = random.Contact();
            rows->AddNew();
            Write(*rows, each);
            rows->Update();
          }
          Exec("update Log set QslRicevuta=true where QsoNr<" + std::to_string(random.Below(60)));
          session.Db.CommitTrans();
          return true;
        });
        return;
      case 7:  // one that fails
        try {
          session.Contacts.ChangeMany("Prova", {ContactTable::kLog}, [&]() -> bool {
            session.Db.BeginTrans();
            Exec("delete * from Log");
            session.Db.Rollback();
            throw std::runtime_error("no");
          });
        } catch (const std::runtime_error&) {
        }
        return;
      case 8:  // confirmations come in
        if (!any()) return;
        session.Contacts.ChangeMany("Prova", {ContactTable::kLog}, [&] {
          Exec("delete * from LogAdif where QsoNr=" + number());
          Exec("insert into LogAdif (QsoNr,Campo,Valore) values (" + number() + ",'" +
               random.OneOf({"LOTW_QSL_RCVD", "eqsl_qsl_rcvd", "NAME"}) + "','" +
               random.OneOf({"Y", "N", "v"}) + "')");
          return true;
        });
        return;
      case 9:
        return WriteBeside(directory.Path(),
                           "INSERT INTO Log (DataQso, Call, Banda, Country, QslRicevuta) VALUES "
                           "(NULL, 'K1AA', ' 20 m', 'K', " +
                               std::to_string(random.Below(2)) + ")");
      default:
        return WriteBeside(directory.Path(),
                           "DELETE FROM Log WHERE QsoNr % 7 = " + std::to_string(random.Below(7)) +
                               "; UPDATE Log SET Locator = 'FN20aa' WHERE QsoNr % 9 = 1");
    }
  }

  std::set<PlainQuestion> questions_;
  std::vector<Filter> filters_ = {{},
                                  {.band = "  2 m"},
                                  {.band = "24 ghz  "},
                                  {.group = Group{2}},
                                  {.group = kNoGroup, .satellite = true},
                                  {.satellite = false},
                                  {.band = " 20 m", .group = Group{1}, .satellite = false},
                                  {.services = 2}};
};

TEST_F(RandomWorkTest, TheIndexAnswersAsTheLogDoesAfterAnyWork) {
  constexpr int kSteps = 400;
  RandomWork random(20261122);
  StartAndRead();
  for (int step = 0; step < kSteps; ++step) {
    Work(random);
    // Mostly the next work comes while the log is still being read, or before others are found.
    constexpr int kPauses[] = {0, 0, 5, 25, 500, 2500};
    machine.Advance(kPauses[random.Below(std::size(kPauses))]);
    if (step % 5 != 0) continue;
    keeper.WaitUntilRead();
    ExpectPlainAnswers("step " + std::to_string(step));
    if (HasFatalFailure()) return;
  }
  EXPECT_THAT(told, IsEmpty());
  EXPECT_GT(questions_.size(), 20u);
}

TEST(KeeperOnAThreadTest, ContactsAreEnteredWhileTheLogIsRead) {
  ScratchStationDirectory directory;
  ThreadedPlatform machine;
  machine.SetApplicationDirectory(directory.Path());
  core::Session session(machine, directory.Path());
  session.Open();
  session.Db.Execute("insert into Log (DataQso,Call) values ('01/01/2001 10:00','A')");
  for (int i = 0; i < 12; ++i) {
    session.Db.Execute("insert into Log (DataQso,Call) select DataQso,Call+'" +
                       std::string(1, static_cast<char>('A' + i)) + "' from Log");
  }
  Keeper keeper(session, [](const std::string& text) { ADD_FAILURE() << text; });
  keeper.Start();
  machine.Advance(305);
  const auto rows = session.Db.OpenDynaset("select * from Log");
  for (int minute = 0; minute < 200; ++minute) {
    session.Contacts.Add(ContactTable::kLog, *rows, [&](engine::EditableRecordset& row) {
      row.Set("DataQso", Minute(minute));
      row.Set("Call", "IK3ABC");
    });
  }
  keeper.WaitUntilRead();
  ASSERT_NE(keeper.Index(), nullptr);
  EXPECT_EQ(keeper.Index()->Contacts(), 4096 + 200);
  EXPECT_EQ(keeper.Index()->Ask(Subject::Call("IK3ABC")).contacts, 200);
  // A reading that is under way ends with the tables.
  session.Contacts.ChangeMany("Prova", {ContactTable::kLog}, [] { return true; });
  session.CloseTables();
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "Brenvo.mdb-wal"));
}

}  // namespace
}  // namespace brenvo::worked
