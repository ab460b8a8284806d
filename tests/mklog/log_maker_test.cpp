#include "tools/mklog/log_maker.h"

#include <gtest/gtest.h>

#include <string>

#include "geo/locator.h"
#include "tests/support/places.h"
#include "tests/support/scratch_database.h"

namespace brenvo::mklog {
namespace {

constexpr int kContacts = 3000;

// A delivered database with a made log in it.
class Made {
 public:
  explicit Made(std::uint64_t seed = 1) {
    std::filesystem::copy_file(BuildDir() / "delivered/Brenvo.mdb", file_);
    MakeLog(file_, kContacts, seed);
    sqlite3_open(file_.string().c_str(), &handle_);
  }
  ~Made() { sqlite3_close(handle_); }

  // All cells of all rows, a row a line.
  std::string Ask(const std::string& sql) const {
    std::string rows;
    sqlite3_exec(
        handle_, sql.c_str(),
        [](void* out, int count, char** cells, char**) {
          for (int i = 0; i < count; ++i) {
            static_cast<std::string*>(out)->append(cells[i] == nullptr ? "NULL" : cells[i]) += '|';
          }
          static_cast<std::string*>(out)->back() = '\n';
          return 0;
        },
        &rows, nullptr);
    return rows;
  }
  int Count(const std::string& condition) const {
    return std::stoi(Ask("SELECT count(*) FROM Log WHERE " + condition));
  }

  void Append(std::int64_t contacts) { MakeLog(file_, contacts, 2); }

 private:
  ScratchDirectory directory_;
  std::filesystem::path file_ = directory_.Path() / "Brenvo.mdb";
  sqlite3* handle_ = nullptr;
};

TEST(LogMakerTest, TheSameSeedGivesTheSameRowsAndAnotherGivesOthers) {
  const std::string rows = Made().Ask("SELECT * FROM Log ORDER BY QsoNr");
  EXPECT_EQ(Made().Ask("SELECT * FROM Log ORDER BY QsoNr"), rows);
  EXPECT_NE(Made(2).Ask("SELECT * FROM Log ORDER BY QsoNr"), rows);
}

TEST(LogMakerTest, AsManyContactsAsAskedForInTheOrderOfTheirDates) {
  Made log;
  EXPECT_EQ(log.Count("1"), kContacts);
  EXPECT_EQ(log.Ask("SELECT count(*) FROM Log a JOIN Log b ON b.QsoNr=a.QsoNr+1 WHERE "
                    "b.DataQso<a.DataQso"),
            "0\n");
  EXPECT_EQ(log.Count("DataQso<'1975-01-01' OR DataQso>='2026-01-01'"), 0);
  log.Append(50);
  EXPECT_EQ(log.Count("1"), kContacts + 50);
}

TEST(LogMakerTest, EachContactFitsTheReferenceTables) {
  const Made log;
  EXPECT_EQ(log.Count("NOT EXISTS (SELECT 1 FROM Prefissi p WHERE p.Prefisso=Log.Prefisso AND "
                      "p.Country=Log.Country AND p.\"Zona CQ\"=Log.\"Zona CQ\" AND "
                      "p.\"Zona ITU\"=Log.\"Zona ITU\" AND p.Continente=Log.Continente)"),
            0);
  EXPECT_EQ(log.Count("Country NOT IN (SELECT Country FROM Country)"), 0);
  EXPECT_EQ(log.Count("Banda NOT IN (SELECT Banda FROM UserRTX)"), 0);
  EXPECT_EQ(log.Count("Modo NOT IN (SELECT Modo FROM Modi)"), 0);
  EXPECT_EQ(log.Count("Propagazione NOT IN (SELECT Propagazione FROM Propagazione)"), 0);
  EXPECT_EQ(log.Count("Provincia<>'' AND NOT EXISTS (SELECT 1 FROM Provincie p WHERE "
                      "p.Country=Log.Country AND p.Provincia=Log.Provincia)"),
            0);
  EXPECT_EQ(log.Count("substr(Call,1,length(Prefisso))<>Prefisso"), 0);
}

TEST(LogMakerTest, EachLocatorIsOneAndItsDistanceIsRight) {
  const Made log;
  EXPECT_EQ(log.Count("Locator='' AND Qrb<>0"), 0);
  std::string places = log.Ask("SELECT Locator||Qrb FROM Log WHERE Locator<>''");
  int seen = 0;
  for (std::size_t at = 0; at < places.size(); at = places.find('\n', at) + 1, ++seen) {
    const std::string locator = places.substr(at, 6);
    ASSERT_TRUE(geo::IsValidLocator(locator)) << locator;
    EXPECT_EQ(geo::QrbKm("JN61EV", locator), std::stoi(places.substr(at + 6))) << locator;
  }
  EXPECT_GT(seen, kContacts / 2);
}

TEST(LogMakerTest, ItIsSpreadAsARealLogIs) {
  const Made log;
  EXPECT_GT(log.Count("Banda='  2 m'"), kContacts / 5);
  EXPECT_GT(log.Count("Banda=' 20 m'"), kContacts / 12);
  EXPECT_GT(log.Count("Country='I'"), kContacts / 8);
  EXPECT_GT(log.Count("Continente<>'EU'"), kContacts / 20);
  EXPECT_GT(log.Count("Modo='SSB'"), log.Count("Modo='CW'"));
  EXPECT_EQ(log.Count("Modo='FT8' AND DataQso<'2017-01-01'"), 0);
  EXPECT_GT(log.Count("QslRicevuta=-1"), kContacts / 5);
  EXPECT_GT(log.Count("QslRicevuta=0"), kContacts / 3);
  EXPECT_GT(log.Count("Note LIKE '[E.S.]%'"), 0);
  EXPECT_GT(std::stoi(log.Ask("SELECT max(n) FROM (SELECT count(*) n FROM Log GROUP BY Call)")), 5);
}

TEST(LogMakerTest, ADatabaseWithoutReferenceRowsIsRefusedAndStaysAsItWas) {
  ScratchDatabase empty;
  EXPECT_THROW(MakeLog(empty.File(), 10), std::runtime_error);
  EXPECT_THROW(MakeLog(empty.Path() / "Nothing.mdb", 10), std::runtime_error);
  EXPECT_FALSE(std::filesystem::exists(empty.Path() / "Nothing.mdb"));
}

}  // namespace
}  // namespace brenvo::mklog
