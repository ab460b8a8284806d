#include "core/texts.h"
#include "core/log_contact.h"

#include <fmt/format.h>

namespace brenvo::core {

std::string FieldText(engine::Recordset& record, std::string_view column) {
  return record.Field(column).Text();
}

std::string HourMinute(base::DateTime time) {
  return fmt::format("{:02}:{:02}", time.Hour(), time.Minute());
}

std::string YesNo(const std::string& text) { return text.empty() || text == "0" ? "No" : "Sì"; }

}  // namespace brenvo::core
