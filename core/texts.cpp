#include "core/texts.h"

#include <fmt/format.h>

#include "base/text.h"
#include "core/log_contact.h"

namespace brenvo::core {

std::string FieldText(engine::Recordset& record, std::string_view column) {
  return record.Field(column).Text();
}

std::string HourMinute(base::DateTime time) {
  return fmt::format("{:02}:{:02}", time.Hour(), time.Minute());
}

std::string Joined(std::initializer_list<std::string_view> texts) {
  std::string joined;
  for (const std::string_view text : texts) {
    const std::string trimmed = base::Trim(text);
    if (!trimmed.empty()) joined += (joined.empty() ? "" : "  ") + trimmed;
  }
  return joined;
}

std::string YesNo(const std::string& text) { return text.empty() || text == "0" ? "No" : "Sì"; }

}  // namespace brenvo::core
