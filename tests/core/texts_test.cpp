#include "core/texts.h"

#include "tests/support/station.h"

namespace brenvo::core {
namespace {

using TextsTest = StationTest;

TEST_F(TextsTest, FieldTextOfNullIsEmpty) {
  session.Db.Execute("insert into Log (Call) values ('A')");
  const auto row = session.Db.OpenSnapshot("select Qra,Call from Log");
  EXPECT_EQ(FieldText(*row, "Qra"), "");
  EXPECT_EQ(FieldText(*row, "Call"), "A");
}

}  // namespace
}  // namespace brenvo::core
