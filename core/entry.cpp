#include "core/entry.h"

#include "base/date.h"
#include "base/text.h"
#include "forms/window.h"

namespace brenvo::core {

bool IsEmptyField(std::string_view value) {
  return value.find_first_not_of(' ') == std::string_view::npos;
}

bool IsValidDate(Session& session, std::string_view text) {
  if (base::ParseDate(text)) return true;
  session.Messages().Show(platform::MessageIcon::kExclamation, "", "Data errata");
  return false;
}

char32_t DigitsOnlyKey(char32_t key) {
  return (key >= '0' && key <= '9') || key == forms::kBackspace ? key : 0;
}

char32_t NumericKey(char32_t key) {
  return key == '-' || key == '.' || key == ',' ? key : DigitsOnlyKey(key);
}

char32_t UpperKey(char32_t key) { return base::UpperChar(key); }

}  // namespace brenvo::core
