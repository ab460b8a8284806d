// Groups that are found along an index are those that all rows give.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>

#include <random>
#include <span>

#include "base/text.h"
#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

// Each with what stands behind its conditions.
struct Award {
  const char *columns, *own, *groups, *order;
};
constexpr const char* kSelections[] = {
    "",
    "Banda='  2 m' AND ",
    "Banda='  2 m' AND Modo in ('SSB','CW') AND ",
    "Modo in ('SSB') AND Propagazione in ('','TEP') AND ",
    "Propagazione in ('F2') AND ",
    "QslInviata=True AND Banda=' 70cm' AND ",
    "QslRicevuta=True AND ",
    "(Country='I' OR Country='IS0') AND ",
    "Banda<>'  2 m' AND QslInviata AND ",
};

class GroupedWalkTest : public ::testing::Test {
 protected:
  // Contacts as they come, those of other tools among them: Nulls, small letters, blanks at either
  // end, a yes that is 1.
  void Fill(int count, unsigned seed) {
    std::mt19937 chance(seed);
    const auto one = [&](std::initializer_list<const char*> words) {
      return *(words.begin() + chance() % words.size());
    };
    std::string rows = "BEGIN;";
    for (int i = 0; i < count; ++i) {
      rows += fmt::format(
          "INSERT INTO Log (DataQso,Call,Country,Locator,Continente,[Zona CQ],Prefisso,Provincia,"
          "Banda,Modo,Propagazione,QslRicevuta,QslInviata) VALUES ('2001-02-03 {:02}:{:02}:00',"
          "'A{}S{}',{},{},{},{},{},{},{},{},{},{},{});",
          i / 60 % 24, i % 60, i, seed,
          one({"'I'", "'i  '", "'DL'", "'OE'", "''", "' '", "NULL", "'IS0'"}),
          one({"'JN65AA'", "'jn65'", "'JN65FR'", "'JO'", "''", "NULL", "'    X'", "'KO1'"}),
          one({"'EU'", "'AS'", "''", "NULL", "'eu '"}), one({"15", "33", "0", "NULL", "14"}),
          one({"'I3'", "'DL1'", "'i3'", "NULL"}), one({"'PD'", "'VE'", "NULL", "''", "'pd'"}),
          one({"'  2 m'", "' 70cm'", "' 20 m'", "NULL"}), one({"'SSB'", "'CW'", "''", "NULL"}),
          one({"''", "'TEP'", "'F2'", "NULL"}), one({"-1", "0", "0", "1"}), one({"-1", "0"}));
    }
    scratch_.Sql(rows + "COMMIT");
  }
  // Keys and flags of the groups, in their order.
  std::vector<std::string> Groups(const std::string& select) {
    std::vector<std::string> groups;
    const auto rows = db_.OpenSnapshot(select);
    for (; !rows->EOF_(); rows->MoveNext()) {
      std::string group;
      for (std::size_t i = 0; i < rows->Columns().size(); ++i) {
        group += base::Upper(base::RTrim(rows->Field(i).Text())) + "|";
      }
      groups.push_back(group);
    }
    return groups;
  }
  void ExpectGroupsOfAllRows(std::span<const Award> awards) {
    for (const Award& award : awards) {
      for (const char* selection : kSelections) {
        const auto select = [&](const char* more) {
          return fmt::format("SELECT {} FROM Log WHERE {}{}{} GROUP BY {} ORDER BY {}",
                             award.columns, selection, award.own, more, award.groups, award.order);
        };
        // Two constants are no question for an index.
        const std::string all = select(" AND 1=1");
        EXPECT_THAT(db_.QueryPlan(all), ::testing::Not(::testing::HasSubstr("MATERIALIZE")));
        EXPECT_THAT(db_.QueryPlan(select("")), ::testing::HasSubstr("level0"));
        EXPECT_EQ(Groups(select("")), Groups(all)) << all;
      }
    }
  }

  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

constexpr Award kAwards[] = {
    {"Country,QslRicevuta", "Country<>''", "Country,QslRicevuta", "Country,QslRicevuta"},
    {"Left(Locator,4) as Square,QslRicevuta", "Locator<>''", "Left(Locator,4),QslRicevuta",
     "Left(Locator,4),QslRicevuta"},
    {"Continente,QslRicevuta", "Continente<>''", "Continente,QslRicevuta",
     "Continente,QslRicevuta"},
    {"[Zona CQ],QslRicevuta", "[Zona CQ]<>0", "[Zona CQ],QslRicevuta", "[Zona CQ],QslRicevuta"},
    {"Prefisso,Banda", "Prefisso<>''", "Banda,Prefisso", "Prefisso,Banda"},
    {"Provincia,QslRicevuta", "Provincia<>''", "Provincia,QslRicevuta", "Provincia,QslRicevuta"},
    {"Country", "Country<>'I'", "Country", "Country DESC"},
};
TEST_F(GroupedWalkTest, GivesTheGroupsThatAllRowsGive) {
  for (const unsigned seed : {1U, 2U, 3U}) {
    Fill(150, seed);
    ExpectGroupsOfAllRows(kAwards);
  }
}

// Indexes that hold the groups alone, and behind them what conditions ask for.
constexpr const char* kOfGroups = R"(
CREATE INDEX "Log.FieldQsl" ON "Log" (
  rtrim(substr("Locator", 1, 2)) COLLATE NOCASE, "QslRicevuta",
  rtrim("Banda") COLLATE NOCASE, rtrim("Modo") COLLATE NOCASE);
CREATE INDEX "Log.SquareQsl" ON "Log" (
  rtrim(substr("Locator", 1, 4)) COLLATE NOCASE, "QslRicevuta",
  rtrim("Banda") COLLATE NOCASE, rtrim("Modo") COLLATE NOCASE);
CREATE INDEX "Log.PrefissoQsl" ON "Log" (
  rtrim("Prefisso") COLLATE NOCASE, "QslRicevuta", rtrim("Country") COLLATE NOCASE,
  rtrim("Banda") COLLATE NOCASE, rtrim("Modo") COLLATE NOCASE);
)";
constexpr Award kAwardsOfGroups[] = {
    {"Left(Locator,2) as Field,QslRicevuta", "Locator<>''", "Left(Locator,2),QslRicevuta",
     "Left(Locator,2),QslRicevuta"},
    {"Left(Locator,4) as Square,QslRicevuta", "Locator<>''", "Left(Locator,4),QslRicevuta",
     "Left(Locator,4),QslRicevuta"},
    {"Prefisso,QslRicevuta,Country", "Prefisso<>''", "Prefisso,QslRicevuta,Country",
     "Prefisso,QslRicevuta,Country"},
};

TEST_F(GroupedWalkTest, AnIndexOfTheGroupsAloneIsWalkedWithARowLookedForInEach) {
  scratch_.Sql(kOfGroups);
  db_ = scratch_.Open();
  for (const unsigned seed : {5U, 6U}) {
    Fill(150, seed);
    ExpectGroupsOfAllRows(kAwardsOfGroups);
  }
  const std::string plan = db_.QueryPlan(
      "SELECT Prefisso,QslRicevuta,Country FROM Log WHERE Banda='  2 m' AND Modo='SSB' AND "
      "Prefisso<>'' GROUP BY Prefisso,QslRicevuta,Country");
  EXPECT_THAT(plan, ::testing::HasSubstr("level2"));
  EXPECT_THAT(plan, ::testing::Not(::testing::HasSubstr("level3")));
  EXPECT_THAT(plan, ::testing::HasSubstr("Log.PrefissoQsl (<expr>=? AND QslRicevuta=? AND "
                                         "<expr>=? AND <expr>=? AND <expr>=?)"));
}

TEST_F(GroupedWalkTest, AGroupWithoutConditionsHoldsTheNullsToo) {
  Fill(60, 4);
  const std::string groups =
      "SELECT Country,QslRicevuta FROM Log {}GROUP BY Country,QslRicevuta "
      "ORDER BY Country,QslRicevuta";
  EXPECT_EQ(Groups(fmt::format(fmt::runtime(groups), "")),
            Groups(fmt::format(fmt::runtime(groups), "WHERE 1=1 ")));
}

TEST_F(GroupedWalkTest, AnEmptyLogHasNoGroups) {
  EXPECT_TRUE(Groups("SELECT Country FROM Log WHERE Country<>'' GROUP BY Country").empty());
}

TEST_F(GroupedWalkTest, WhatAnIndexCannotAnswerIsAskedOfTheRows) {
  for (const char* select :
       {"SELECT Country,Count(*) FROM Log GROUP BY Country",
        "SELECT Country FROM Log WHERE Note LIKE '*x*' GROUP BY Country",
        "SELECT Country FROM Log WHERE DateValue(DataQso)>=DateValue('01/01/2001') GROUP BY "
        "Country",
        "SELECT Qra FROM Log GROUP BY Qra", "SELECT Country,Qra FROM Log GROUP BY Country,Qra",
        "SELECT Country FROM Log GROUP BY Country HAVING Country='I'",
        "SELECT Country FROM Log WHERE Log.Banda='  2 m' GROUP BY Country"}) {
    EXPECT_THAT(db_.QueryPlan(select), ::testing::Not(::testing::HasSubstr("MATERIALIZE")))
        << select;
  }
}

}  // namespace
}  // namespace brenvo::file
