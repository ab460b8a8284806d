#include "core/log_contact.h"

#include <gmock/gmock.h>

#include "core/session.h"
#include "tests/support/station.h"

namespace brenvo::core {
namespace {

class LogContactTest : public StationTest {};

TEST_F(LogContactTest, ItsColumnsAreThoseOfTheTableInTheirOrder) {
  const auto rows = session.Db.OpenSnapshot("select * from Log");
  std::vector<std::string> columns = {std::string(column::kQsoNr)};
  for (const LogColumn& each : LogColumns()) columns.emplace_back(each.name);
  EXPECT_EQ(columns, rows->Columns());
}

TEST_F(LogContactTest, AColumnIsFoundByItsName) {
  EXPECT_TRUE(LogColumnOf(column::kDataQso).Holds<base::DateTime>());
  EXPECT_TRUE(LogColumnOf(column::kCall).Holds<std::string>());
  EXPECT_TRUE(LogColumnOf(column::kZonaCQ).Holds<double>());
  EXPECT_TRUE(LogColumnOf(column::kQslInviata).Holds<bool>());
  EXPECT_THROW(LogColumnOf("ZonaCQ"), std::logic_error);
}

TEST_F(LogContactTest, TheTextOfAColumnIsTakenBack) {
  LogContact contact;
  contact.DataQso = base::DateTime::Of(2001, 2, 3, 4, 5, 6);
  contact.Call = "IK3ABC";
  contact.Frequenza = 144.3;
  contact.QslRicevuta = true;
  LogContact back;
  for (const LogColumn& each : LogColumns()) SetColumnText(back, each, ColumnText(contact, each));
  EXPECT_EQ(back, contact);
}

}  // namespace
}  // namespace brenvo::core
