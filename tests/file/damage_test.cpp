#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <vector>

#include "file/database_file.h"
#include "tests/support/golden.h"
#include "tests/support/scratch_database.h"
#include "tests/support/thoroughly.h"

namespace brenvo::file {
namespace {

namespace fs = std::filesystem;

constexpr int kDamaged = 300;

// A log of some hundred contacts, as bytes.
const std::string& SoundFile() {
  static const std::string bytes = [] {
    ScratchDatabase scratch;
    {
      engine::Database database = scratch.Open();
      for (int i = 0; i < kDamaged; ++i) {
        database.Execute(
            "insert into Log (DataQso, Call, Banda, Locator, Country, Qra) values "
            "('2001-02-03 04:05:00','IK" +
            std::to_string(i) + "ABC','  2 m','JN65AB','I','MARIO')");
      }
    }
    return ReadBytes(scratch.File());
  }();
  return bytes;
}

// One way of being damaged; the same for the same number.
std::string Damaged(unsigned number) {
  std::mt19937 random(number);
  const auto below = [&](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  std::string bytes = SoundFile();
  const std::size_t page = 4096, pages = bytes.size() / page;
  switch (number % 8) {
    case 0:  // some bytes changed
      for (std::size_t i = below(50) + 1; i > 0; --i) {
        bytes[below(bytes.size())] = static_cast<char>(below(256));
      }
      break;
    case 1:  // one bit, somewhere in the first pages
      bytes[below(page * 4)] ^= static_cast<char>(1 << below(8));
      break;
    case 2:  // cut
      bytes.resize(below(bytes.size()));
      break;
    case 3:  // zeroed pages
      for (std::size_t i = below(6) + 1; i > 0; --i) {
        bytes.replace(below(pages) * page, page, page, '\0');
      }
      break;
    case 4:  // pages in each other's place
      for (std::size_t i = below(6) + 1; i > 0; --i) {
        const std::size_t a = below(pages) * page, b = below(pages) * page;
        const std::string one = bytes.substr(a, page);
        bytes.replace(a, page, bytes, b, page);
        bytes.replace(b, page, one);
      }
      break;
    case 5:  // the heads of pages
      for (std::size_t i = below(10) + 1; i > 0; --i) {
        bytes[below(pages) * page + below(12)] = static_cast<char>(below(256));
      }
      break;
    case 6:  // the header of the file
      for (std::size_t i = below(4) + 1; i > 0; --i) {
        bytes[below(100)] = static_cast<char>(below(256));
      }
      break;
    default:  // another file
      bytes.resize(below(20000));
      for (char& byte : bytes) byte = static_cast<char>(below(256));
      if (number % 16 == 15) bytes.replace(0, 16, std::string("SQLite format 3\0", 16));
      break;
  }
  return bytes;
}

// Everything that a station does to its log, as far as it comes.
void UseAll(engine::Database& database) {
  for (const char* name : {"Log", "Contest", "Contest Qso", "Prefissi", "Country", "User"}) {
    const auto table = database.OpenTable(name);
    for (table->MoveFirst(); !table->EOF_(); table->MoveNext()) table->Field(0);
  }
  for (const char* select :
       {"select * from Log order by DataQso desc", "select * from Log where Call='IK7ABC'",
        "select * from Log where Locator like 'JN65*' and Banda='  2 m'",
        "select Country, count(*) from Log group by Country"}) {
    const auto rows = database.OpenSnapshot(select);
    for (; !rows->EOF_(); rows->MoveNext()) rows->Field(0);
  }
  auto log = database.OpenDynaset("select * from Log order by Call");
  log->MoveLast();
  log->Edit();
  log->Set("Qra", "LUIGI");
  log->Update();
  log->AddNew();
  log->Set("DataQso", base::DateTime::Of(2002, 2, 3, 4, 5));
  log->Set("Call", "IK3NEW");
  log->Set("Banda", "  2 m");
  log->Update();
  log->MoveFirst();
  log->Delete();
}

TEST(Damage, WhateverHappenedToTheFileTheOutcomeIsAClearErrorOrCorrectWork) {
  std::vector<unsigned> numbers(Thoroughly(150u, 2000u));
  std::iota(numbers.begin(), numbers.end(), 0u);
  // Tables whose order leads back to where a walk has been: they once went round for ever.
  for (const unsigned found : {341u, 765u, 885u}) numbers.push_back(found);
  unsigned refused = 0, stopped = 0, worked = 0;
  for (const unsigned number : numbers) {
    SCOPED_TRACE(number);
    ScratchDirectory scratch;
    const fs::path file = scratch.Path() / "Brenvo.mdb";
    const std::string bytes = Damaged(number);
    std::ofstream(file, std::ios::binary) << bytes;
    engine::Database database;
    try {
      database = OpenDatabaseFile(file);
    } catch (const engine::DatabaseError& failure) {
      // Refused at once: in Italian, and nothing written.
      EXPECT_FALSE(failure.Description.empty());
      EXPECT_EQ(ReadBytes(file), bytes);
      ++refused;
      continue;
    }
    try {
      UseAll(database);
      ++worked;
    } catch (const engine::DatabaseError& failure) {
      EXPECT_FALSE(failure.Description.empty());
      ++stopped;
      // What has been seen damaged is not written again.
      if (failure.Number == engine::DatabaseError::kNotADatabase) {
        EXPECT_THROW(database.Execute("insert into Log (Call) values ('IK3NO')"),
                     engine::DatabaseError);
        EXPECT_THROW(database.BeginTrans(), engine::DatabaseError);
      }
    }
  }
  std::printf("%zu files: %u refused, %u stopped at the damage, %u worked\n", numbers.size(),
              refused, stopped, worked);
  EXPECT_GT(refused, 0u);
  EXPECT_GT(stopped, 0u);
}

TEST(Damage, AnEmptyFileIsRefusedAndItsJournalKept) {
  ScratchDirectory scratch;
  const fs::path file = scratch.Path() / "Brenvo.mdb";
  std::ofstream(file).close();
  std::ofstream(file.string() + "-wal") << "contacts";
  EXPECT_THROW(OpenDatabaseFile(file), engine::DatabaseError);
  EXPECT_EQ(ReadBytes(file.string() + "-wal"), "contacts");
}

TEST(Damage, ADatabaseOfAnotherProgramIsRefusedByName) {
  ScratchDirectory scratch;
  const fs::path file = scratch.Path() / "Altro.mdb";
  sqlite3* handle = nullptr;
  sqlite3_open(file.c_str(), &handle);
  sqlite3_exec(handle, "CREATE TABLE Log (Call TEXT)", nullptr, nullptr, nullptr);
  sqlite3_close(handle);
  const std::string bytes = ReadBytes(file);
  try {
    OpenDatabaseFile(file);
    FAIL();
  } catch (const engine::DatabaseError& failure) {
    EXPECT_EQ(failure.Number, engine::DatabaseError::kNotADatabase);
    EXPECT_EQ(failure.Description, "Il file 'Altro.mdb' non è un database di questo programma.");
  }
  EXPECT_EQ(ReadBytes(file), bytes);
}

}  // namespace
}  // namespace brenvo::file
