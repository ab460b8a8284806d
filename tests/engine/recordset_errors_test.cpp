#include "engine/recordset_errors.h"

#include <gtest/gtest.h>

#include "tests/support/error_of.h"

namespace brenvo::engine {
namespace {

TEST(RecordsetErrorsTest, EachHasItsNumber) {
  EXPECT_EQ(ErrorOf([] { FailClosed(); }), 3420);
  EXPECT_EQ(ErrorOf([] { FailNoCurrentRecord(); }), 3021);
  EXPECT_EQ(ErrorOf([] { FailRecordDeleted(); }), 3167);
}

TEST(RecordsetErrorsTest, AColumnIsFoundWhateverItsCase) {
  EXPECT_EQ(PlaceOf({"QsoNr", "Call", "Banda"}, "qsonr"), 0U);
  EXPECT_EQ(PlaceOf({"QsoNr", "Call", "Banda"}, "CALL"), 1U);
  EXPECT_EQ(PlaceOf({"QsoNr", "Call", "Banda"}, "Banda"), 2U);
}

TEST(RecordsetErrorsTest, AColumnThatIsNoneIsNamed) {
  const auto told = [](const std::vector<std::string>& columns) -> std::string {
    try {
      PlaceOf(columns, "Cal");
    } catch (const DatabaseError& failure) {
      return std::to_string(failure.Number) + " " + failure.Description;
    }
    return "";
  };
  EXPECT_EQ(told({"QsoNr", "Call"}), "3265 La colonna 'Cal' non c'è.");
  EXPECT_EQ(told({}), "3265 La colonna 'Cal' non c'è.");
}

}  // namespace
}  // namespace brenvo::engine
