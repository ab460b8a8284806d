#include "dialect/schema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brenvo::dialect {
namespace {

using ::testing::ElementsAre;

TableSchema Log() {
  TableSchema log;
  log.name = "Log";
  log.columns = {{"QsoNr", "", ColumnType::kCounter},
                 {"Call", "", ColumnType::kText},
                 {"Locator", "", ColumnType::kText},
                 {"Banda", "", ColumnType::kText}};
  log.indexes = {{"Numero", true, {{0, 0}}},
                 {"Call", false, {{1, 0}, {3, 0}}},
                 {"Square", false, {{2, 4}, {1, 0}}},
                 {"Field", false, {{2, 2}}}};
  return log;
}

TEST(SchemaTest, NamesAreFoundWhateverTheirCase) {
  const TableSchema log = Log();
  EXPECT_EQ(log.FindColumn("QSONR"), 0U);
  EXPECT_EQ(log.FindColumn("banda"), 3U);
  EXPECT_EQ(log.FindColumn("Band"), TableSchema::kNone);
  ASSERT_NE(log.FindIndex("SQUARE"), nullptr);
  EXPECT_EQ(log.FindIndex("SQUARE")->name, "Square");
  EXPECT_EQ(log.FindIndex("Squar"), nullptr);
  const Schema schema({log});
  EXPECT_EQ(schema.FindTable("LOG"), &schema.Tables()[0]);
  EXPECT_EQ(schema.FindTable("Logg"), nullptr);
}

TEST(SchemaTest, APartIsLookedForInEveryPlaceOfAnIndex) {
  const TableSchema log = Log();
  EXPECT_TRUE(log.IsIndexed({3, 0}));
  EXPECT_TRUE(log.IsIndexed({2, 2}));
  EXPECT_FALSE(log.IsIndexed({2, 0}));
  EXPECT_FALSE(log.IsIndexed({3, 2}));
}

TEST(SchemaTest, OnlyItsFirstPartLeadsAnIndex) {
  const TableSchema log = Log();
  EXPECT_TRUE(log.LeadsAnIndex({0, 0}));
  EXPECT_TRUE(log.LeadsAnIndex({1, 0}));
  EXPECT_FALSE(log.LeadsAnIndex({3, 0}));
  EXPECT_THAT(log.LeadingPrefixes(2), ElementsAre(4, 2));
  EXPECT_THAT(log.LeadingPrefixes(1), ElementsAre());
}

TEST(SchemaTest, EachColumnHasItsTypeOfValue) {
  EXPECT_EQ(TypeOfColumn(ColumnType::kText), ValueType::kText);
  EXPECT_EQ(TypeOfColumn(ColumnType::kInteger), ValueType::kInteger);
  EXPECT_EQ(TypeOfColumn(ColumnType::kCounter), ValueType::kInteger);
  EXPECT_EQ(TypeOfColumn(ColumnType::kReal), ValueType::kReal);
  EXPECT_EQ(TypeOfColumn(ColumnType::kDateTime), ValueType::kDate);
  EXPECT_EQ(TypeOfColumn(ColumnType::kYesNo), ValueType::kYesNo);
}

}  // namespace
}  // namespace brenvo::dialect
