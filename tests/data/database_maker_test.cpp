#include "tools/mkdatabase/database_maker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>
#include <stdexcept>

#include "tests/data/sqlite_query.h"
#include "tests/support/places.h"

namespace brenvo {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const base::DateTime kToday = base::DateTime::Of(2001, 2, 3);

// A folder with the smallest facts that make a database.
class MakingADatabase : public testing::Test {
 protected:
  void SetUp() override {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    folder_ = BuildDir() / "scratch" / test->name();
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    Write("Country.csv", "Country,Descrizione,Mappa,Pointer_X,Pointer_Y\nI,Italia,,,12\n");
    Write("Prefissi.csv", "Prefisso,Country,Zona CQ,Zona ITU,Continente\nIK3,I,15,28,EU\n");
    Write("Provincie.csv", "Country,Provincia,Descrizione\nI,VE,Venezia\n");
    Write("Modi.csv", "Codice,Modo\n1,SSB\n");
    Write("Propagazione.csv", "Codice,Propagazione\n0,\n1,Tropo\n");
    Write("NoteHelp.csv", "TipoNota,Nota\nPROP,F2\n");
    Write("User.csv", "Call,TNCEcho\nI0XXX,no\n");
    Write(
        "UserRTX.csv",
        "Banda,Frequenza,FrequenzaI,FrequenzaF,Modo,AnnunceDX\n  2 m,144.3,144000,146000,SSB,si\n");
  }
  void TearDown() override { fs::remove_all(folder_); }

  void Write(const std::string& name, const std::string& text) {
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
  fs::path Out() const { return folder_ / "Brenvo.mdb"; }
  void Make() { mkdatabase::MakeDatabase(SourceDir() / "data" / "schema.sql", folder_, Out()); }
  std::string FailureOfMake() {
    try {
      Make();
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "no failure";
  }
  // The files in the folder that are no facts.
  std::vector<std::string> Leavings() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_)) {
      if (entry.path().extension() != ".csv") names.push_back(entry.path().filename().string());
    }
    return names;
  }

  fs::path folder_;
};

TEST_F(MakingADatabase, LeavesNothingButTheDatabase) {
  Make();
  EXPECT_THAT(Leavings(), ElementsAre("Brenvo.mdb"));
  EXPECT_THAT(Query(Out(), "PRAGMA integrity_check"), ElementsAre(ElementsAre("ok")));
}

TEST_F(MakingADatabase, KeepsBlanksOfTextAndTurnsYesAndNoIntoNumbers) {
  Make();
  EXPECT_THAT(Query(Out(), "SELECT Banda, Frequenza, typeof(Frequenza), AnnunceDX FROM UserRTX"),
              ElementsAre(ElementsAre("  2 m", "144.3", "real", "-1")));
  EXPECT_THAT(Query(Out(), "SELECT TNCEcho FROM User"), ElementsAre(ElementsAre("0")));
}

TEST_F(MakingADatabase, StoresAnEmptyCellAsEmptyTextOrAsNoNumber) {
  Make();
  EXPECT_THAT(Query(Out(), "SELECT Mappa, Pointer_X, Pointer_Y, Flag FROM Country"),
              ElementsAre(ElementsAre("", "NULL", "12", "NULL")));
}

TEST_F(MakingADatabase, RefusesToOverwriteADatabase) {
  Write("Brenvo.mdb", "a log of ten years");
  EXPECT_THAT(FailureOfMake(), HasSubstr("is not overwritten"));
  EXPECT_EQ(fs::file_size(Out()), 18U);
}

TEST_F(MakingADatabase, FailsOnARepeatedKeyAndLeavesNoFile) {
  Write("Country.csv", "Country,Descrizione\nI,Italia\nK,Stati Uniti\ni,Islanda\n");
  EXPECT_THAT(FailureOfMake(), HasSubstr("Country.csv, line 4: UNIQUE constraint failed"));
  EXPECT_THAT(Leavings(), IsEmpty());
}

TEST_F(MakingADatabase, FailsOnTextInANumberColumn) {
  Write("Modi.csv", "Codice,Modo\n1,SSB\n2a,CW\n");
  EXPECT_EQ(FailureOfMake(), "Modi.csv, line 3: \"2a\" is no number");
}

TEST_F(MakingADatabase, FailsOnAFractionWithSomethingBehindIt) {
  for (const std::string cell : {"144,3", "x", "144.3x"}) {
    Write("UserRTX.csv", "Banda,Frequenza,AnnunceDX\n  2 m,\"" + cell + "\",si\n");
    EXPECT_EQ(FailureOfMake(), "UserRTX.csv, line 2: \"" + cell + "\" is no number");
  }
}

TEST_F(MakingADatabase, FailsOnAWordOtherThanYesOrNo) {
  Write("User.csv", "Call,TNCEcho\nI0XXX,\n");
  EXPECT_EQ(FailureOfMake(), "User.csv, line 2: \"\" is neither si nor no");
}

TEST_F(MakingADatabase, FailsOnAColumnThatTheTableDoesNotHave) {
  Write("Modi.csv", "Codice,Nome\n1,SSB\n");
  EXPECT_EQ(FailureOfMake(), "Modi.csv: table Modi has no column \"Nome\"");
}

TEST_F(MakingADatabase, FailsWithoutAReferenceTable) {
  fs::remove(folder_ / "Provincie.csv");
  EXPECT_EQ(FailureOfMake(), "Provincie: no rows");
}

TEST_F(MakingADatabase, FailsOnAPrefixOfAnUnknownCountry) {
  Write("Prefissi.csv", "Prefisso,Country,Zona CQ,Zona ITU,Continente\nK1,K,5,8,NA\n");
  EXPECT_THAT(FailureOfMake(), HasSubstr("not in Country: K1 K"));
}

TEST_F(MakingADatabase, FailsOnAPrefixThatNoCallCanHave) {
  for (const std::string prefix : {"IK", "IK1234", "IK3A"}) {
    Write("Prefissi.csv",
          "Prefisso,Country,Zona CQ,Zona ITU,Continente\n" + prefix + ",I,15,28,EU\n");
    EXPECT_THAT(FailureOfMake(), HasSubstr(": " + prefix));
  }
}

TEST_F(MakingADatabase, FailsOnAProvinceOfAnUnknownCountry) {
  Write("Provincie.csv", "Country,Provincia,Descrizione\nK,NY,New York\n");
  EXPECT_THAT(FailureOfMake(), HasSubstr("not in Country: K NY"));
}

TEST_F(MakingADatabase, FailsOnABandWithAnUnknownMode) {
  Write("Modi.csv", "Codice,Modo\n1,CW\n");
  EXPECT_THAT(FailureOfMake(), HasSubstr("not in Modi:   2 m"));
}

TEST_F(MakingADatabase, FailsOnASecondStationProfile) {
  Write("User.csv", "Call,TNCEcho\nI0XXX,no\nI0YYY,no\n");
  EXPECT_THAT(FailureOfMake(), HasSubstr("station profile: 2"));
}

TEST_F(MakingADatabase, FailsWhenTheFirstPropagationIsNotTheEmptyOne) {
  Write("Propagazione.csv", "Codice,Propagazione\n0,Tropo\n1,\n");
  EXPECT_THAT(FailureOfMake(), HasSubstr("first propagation"));
}

TEST_F(MakingADatabase, FailsWithoutASchema) {
  EXPECT_THROW(mkdatabase::MakeDatabase(folder_ / "none.sql", folder_, Out()), std::runtime_error);
  EXPECT_THAT(Leavings(), IsEmpty());
}

TEST_F(MakingADatabase, HasTakenAllStepsAlready) {
  Make();
  EXPECT_THAT(mkdatabase::CompleteDatabase(folder_, kToday), IsEmpty());
  EXPECT_THAT(Query(Out(), "SELECT Call FROM Stazioni"), IsEmpty());
}

TEST_F(MakingADatabase, ADatabaseInUseTakesTheStepsThatItLacks) {
  Make();
  sqlite3* file = nullptr;
  sqlite3_open(Out().c_str(), &file);
  for (const char* table :
       {"Storia", "StoriaNuovi", "StoriaLog", "StoriaCampi", "StoriaContestQso", "StoriaContest",
        "StoriaScelta", "NoteStazioni", "Verificati", "LogQsl", "EntitaCarichi", "EntitaRighe",
        "EntitaQso", "Gare", "GareBande", "GareQso", "LogConferme", "ConfermeRecord"}) {
    const std::string drop = std::string("DROP TABLE ") + table;
    EXPECT_EQ(sqlite3_exec(file, drop.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
  }
  sqlite3_exec(file, "DELETE FROM Passi WHERE Passo >= 3", nullptr, nullptr, nullptr);
  sqlite3_close(file);
  EXPECT_THAT(mkdatabase::CompleteDatabase(folder_, kToday),
              ElementsAre("Storia dei contatti", "Note delle stazioni e verifiche",
                          "Qsl inviate e ricevute, con via e data", "Country per data",
                          "La regola che ha dato il country", "Contest con le regole",
                          "Conferme dei servizi", "Indici dei diplomi"));
  EXPECT_EQ(Query(Out(), "SELECT Descrizione FROM Country")[0][0], "Italia");
  EXPECT_THAT(Query(Out(), "SELECT Lavoro FROM Storia"), IsEmpty());
}

TEST_F(MakingADatabase, WhatIsNoDatabaseIsNotCompleted) {
  const std::ofstream empty(Out());
  EXPECT_THROW((void)mkdatabase::CompleteDatabase(folder_, kToday), std::runtime_error);
}

TEST_F(MakingADatabase, ATableIsNotAddedThroughAJournalOfAnotherFile) {
  Make();
  const fs::path journal = Out().string() + "-wal";
  std::ofstream(journal, std::ios::binary) << std::string(5000, 'x');
  EXPECT_THROW((void)mkdatabase::CompleteDatabase(folder_, kToday), std::runtime_error);
  EXPECT_EQ(fs::file_size(journal), 5000u);
}

}  // namespace
}  // namespace brenvo
