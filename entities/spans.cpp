#include <fmt/format.h>

#include "entities/table.h"

namespace brenvo::entities {
namespace {

constexpr std::int64_t kLastSecond = 24 * 60 * 60 - 1;

base::DateTime At(std::int64_t second) { return base::DateTime::FromSeconds(second); }

}  // namespace

Span DaysFrom(std::optional<base::DateTime> first, std::optional<base::DateTime> last) {
  Span span;
  if (first) span.from = first->DatePart().Seconds();
  if (last) span.to = last->DatePart().Seconds() + kLastSecond;
  return span;
}

std::string SpanText(const Span& span) {
  if (span.IsOpen()) return {};
  if (!span.HasFrom()) return "fino al " + base::DateText(At(span.to));
  const base::DateTime from = At(span.from);
  if (!span.HasTo()) return "dal " + base::DateText(from);
  const base::DateTime to = At(span.to);
  if (from.DatePart() == to.DatePart()) return "il " + base::DateText(from);
  if (from.Year() != to.Year()) {
    return fmt::format("dal {} al {}", base::DateText(from), base::DateText(to));
  }
  return fmt::format("dal {:02}/{:02} al {}", from.Day(), from.Month(), base::DateText(to));
}

}  // namespace brenvo::entities
