// What plans say of statements, over tables that no store holds.
#include "dialect/plan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/error_of.h"

namespace brenvo::dialect {
namespace {

using ::testing::ElementsAre;
using ::testing::Pointee;

class PlanTest : public ::testing::Test {
 protected:
  static Schema Tables() {
    TableSchema log;
    log.name = "Log";
    log.columns = {{"QsoNr", "", ColumnType::kCounter},
                   {"Call", "", ColumnType::kText},
                   {"DataQso", "", ColumnType::kDateTime},
                   {"Mhz", "", ColumnType::kReal},
                   {"QslRicevuta", "", ColumnType::kYesNo}};
    log.keyColumn = 0;
    TableSchema bands;
    bands.name = "Band";
    bands.columns = {{"Banda", "", ColumnType::kText}};
    return Schema({log, bands});
  }
  bool Follows(const char* select) const {
    return FollowsEntry(SelectPlan(schema_, select).Select());
  }

  const Schema schema_ = Tables();
  const TableSchema* const log_ = schema_.FindTable("log");
  const TableSchema* const band_ = schema_.FindTable("BAND");
};

TEST_F(PlanTest, ColumnsHaveTheNamesAndTypesOfTheResult) {
  const auto columns =
      SelectPlan(schema_, "select call, Mhz*2, Mhz as F, count(*) from Log group by call, Mhz")
          .Columns();
  ASSERT_EQ(columns.size(), 4U);
  EXPECT_EQ(columns[0].name, "Call");
  EXPECT_EQ(columns[0].type, ValueType::kText);
  EXPECT_EQ(columns[0].tableColumn, 1U);
  EXPECT_EQ(columns[1].name, "Expr1001");
  EXPECT_EQ(columns[1].type, ValueType::kReal);
  EXPECT_EQ(columns[1].tableColumn, TableSchema::kNone);
  EXPECT_EQ(columns[2].name, "F");
  EXPECT_EQ(columns[2].tableColumn, 3U);
  EXPECT_EQ(columns[3].type, ValueType::kInteger);
}

TEST_F(PlanTest, TablesThatASubselectReadsAreReadToo) {
  const SelectPlan plan(schema_, "select * from Log where Call in (select Banda from Band)");
  EXPECT_THAT(plan.TablesRead(), ElementsAre(log_, band_));
}

TEST_F(PlanTest, RowsOfOneTableFollowEntryWhereTheirOrderLeavesItOpen) {
  EXPECT_TRUE(Follows("select * from Log"));
  EXPECT_TRUE(Follows("select * from Log order by DataQso desc"));
  EXPECT_FALSE(Follows("select * from Log order by DataQso, QsoNr"));
  EXPECT_FALSE(Follows("select distinct Call from Log"));
  EXPECT_FALSE(Follows("select max(Mhz) from Log"));
  EXPECT_FALSE(Follows("select Call, Banda from Log, Band"));
}

TEST_F(PlanTest, AKeysetIsOfOneTable) {
  EXPECT_EQ(&KeysetPlan(schema_, "select Call from Log").Table(), log_);
  for (const char* select : {"select Call from Log, Band", "select distinct Call from Log",
                             "select count(*) from Log"}) {
    EXPECT_EQ(ErrorOf([&] { KeysetPlan(schema_, select); }), 3219) << select;
  }
}

TEST_F(PlanTest, WhatIsFoundMeetsBothConditions) {
  const FindPlan both(schema_, "select * from Log where Mhz>1 order by Call", "Call='I1AAA'");
  EXPECT_EQ(both.Found().where->kind, NodeKind::kAnd);
  EXPECT_THAT(
      both.Found().where->children,
      ElementsAre(both.Select().where, Pointee(testing::Field(&Node::kind, NodeKind::kEqual))));
  EXPECT_EQ(both.Found().orderBy.size(), 1U);
  const FindPlan alone(schema_, "select * from Log", "QslRicevuta");
  EXPECT_EQ(alone.Found().where->kind, NodeKind::kColumn);
}

TEST_F(PlanTest, AnActionKnowsItsTable) {
  EXPECT_EQ(&ActionPlan(schema_, "delete * from log where QsoNr=1").Table(), log_);
  const ActionPlan copied(schema_, "insert into Band select Call from Log");
  EXPECT_EQ(&copied.Table(), band_);
  EXPECT_THAT(copied.Statement().columns, ElementsAre("Banda"));
}

TEST_F(PlanTest, AStatementOfAnotherKindIsRefused) {
  EXPECT_EQ(ErrorOf([&] { SelectPlan(schema_, "delete * from Log"); }), 3219);
  EXPECT_EQ(ErrorOf([&] { ActionPlan(schema_, "select * from Log"); }), 3065);
}

TEST_F(PlanTest, ADateThatIsWrittenOutIsWorkedOut) {
  const SelectPlan plan(schema_,
                        "select * from Log where DateValue(DataQso)=DateValue('03/02/2001')");
  const Node& day = *plan.Select().where->children[1];
  EXPECT_EQ(day.kind, NodeKind::kDate);
  EXPECT_EQ(day.date, base::DateTime::Of(2001, 2, 3));
  EXPECT_EQ(ErrorOf([&] { SelectPlan(schema_, "select * from Log where DataQso=cvdate('x')"); }),
            3464);
}

}  // namespace
}  // namespace brenvo::dialect
