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
  EXPECT_EQ(PlaceOf({"QsoNr", "Call"}, "CALL"), 1U);
  EXPECT_EQ(ErrorOf([] { PlaceOf({"QsoNr", "Call"}, "Cal"); }), 3265);
}

}  // namespace
}  // namespace brenvo::engine
