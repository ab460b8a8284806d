#include "gara/rule.h"

#include <algorithm>

namespace brenvo::gara {
namespace {

constexpr std::int64_t kMinute = 60, kDay = 24 * 60 * 60;

// 0 Sunday: day zero, 30/12/1899, is a Saturday.
int WeekdayOf(base::DateTime day) {
  const std::int64_t days = day.DatePart().Seconds() / kDay;
  return static_cast<int>(((days + 6) % 7 + 7) % 7);
}

int DaysIn(int year, int month) {
  const base::DateTime first = base::DateTime::Of(year, month, 1);
  const base::DateTime next =
      month == 12 ? base::DateTime::Of(year + 1, 1, 1) : base::DateTime::Of(year, month + 1, 1);
  return static_cast<int>((next.Seconds() - first.Seconds()) / kDay);
}

}  // namespace

const ExchangePart* Rule::Part(PartKind kind) const {
  const auto at = std::ranges::find(exchange, kind, &ExchangePart::kind);
  return at == exchange.end() ? nullptr : &*at;
}

std::optional<Period> PeriodOf(const RuleWindow& window, int year) {
  base::DateTime day = window.day;
  if (window.month == 0) {
    if (day.Year() != year) return std::nullopt;
  } else {
    const int last = DaysIn(year, window.month);
    int number = 0;
    if (window.which > 0) {
      const int first = WeekdayOf(base::DateTime::Of(year, window.month, 1));
      number = 1 + (window.weekday - first + 7) % 7 + 7 * (window.which - 1);
    } else {
      const int end = WeekdayOf(base::DateTime::Of(year, window.month, last));
      number = last - (end - window.weekday + 7) % 7;
    }
    if (number > last) return std::nullopt;
    day = base::DateTime::Of(year, window.month, number);
  }
  const base::DateTime begin = day.DatePart().Later(window.beginMinute * kMinute);
  return Period{begin, begin.Later(window.lengthMinutes * kMinute)};
}

std::vector<Period> PeriodsOf(const Rule& rule, int year) {
  std::vector<Period> periods;
  for (const RuleWindow& window : rule.windows) {
    if (const auto period = PeriodOf(window, year)) periods.push_back(*period);
  }
  std::ranges::sort(periods, {}, &Period::begin);
  return periods;
}

std::optional<base::DateTime> DeadlineOf(const Rule& rule, const Period& period) {
  if (!rule.deadline) return std::nullopt;
  const base::DateTime end = period.end.Later(-1).DatePart();
  std::int64_t days = rule.deadline->days;
  if (rule.deadline->weekday >= 0) {
    days = (rule.deadline->weekday - WeekdayOf(end) + 7) % 7;
    if (days == 0) days = 7;
  }
  return end.Later(days * kDay + rule.deadline->minute * kMinute + kMinute - 1);
}

}  // namespace brenvo::gara
