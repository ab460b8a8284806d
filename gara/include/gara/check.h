// What is looked at before a log is sent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gara/count.h"
#include "gara/log_file.h"
#include "gara/rule.h"

namespace brenvo::gara {

enum class Weight : std::uint8_t { kError, kWarning, kHint };

struct Finding {
  Weight weight = Weight::kError;
  std::optional<std::size_t> row;  // of the rows looked at; nothing for the log as a whole
  std::string text;
};

struct LogToCheck {
  const Rule& rule;
  const LogHead& head;
  OwnEntry own;
  Period period;
  base::DateTime now;            // UTC
  std::span<const LogRow> rows;  // of all bands, by time; each with the worth that is stored
  std::int64_t score = 0;        // as the entry shows it
  // The locators under which a call was known before; may be empty.
  std::function<std::vector<std::string>(std::string_view call)> locatorsOf{};
  // Of a call that nobody knows, those that are known and one letter away; may be empty.
  std::function<std::vector<std::string>(std::string_view call)> likelierThan{};
};

// Errors first, then warnings and hints; within each in the order of the rows. Points, multipliers
// and score are counted anew by the slow way.
std::vector<Finding> CheckLog(const LogToCheck& log);

// "Scade mercoledì 11/09/2024 alle 23:59 UTC, fra 2 g 4 h"; empty without a deadline.
std::string DeadlineText(const Rule& rule, const Period& period, base::DateTime now);
// Whether two calls differ by one letter, put in, left out or another.
bool DifferByOne(std::string_view a, std::string_view b);

}  // namespace brenvo::gara
