#include "base/date.h"

#include <fmt/format.h>

#include <array>
#include <chrono>

#include "base/text.h"

namespace brenvo::base {
namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::int64_t kDay = 86400;
constexpr sys_days kDayZero = sys_days(std::chrono::year(1899) / 12 / 30);

std::int64_t DayOf(std::int64_t seconds) {
  return seconds >= 0 ? seconds / kDay : -((-seconds + kDay - 1) / kDay);
}

year_month_day Civil(std::int64_t seconds) {
  return year_month_day(kDayZero + std::chrono::days(DayOf(seconds)));
}

// Takes up to `most` digits off the front; -1 when there is none.
int TakeNumber(std::string_view& text, std::size_t most, std::size_t* taken = nullptr) {
  std::size_t count = 0;
  int number = 0;
  while (count < text.size() && count < most && text[count] >= '0' && text[count] <= '9') {
    number = number * 10 + (text[count] - '0');
    ++count;
  }
  if (taken != nullptr) *taken = count;
  text.remove_prefix(count);
  return count == 0 ? -1 : number;
}

bool TakeOneOf(std::string_view& text, std::string_view choices) {
  if (text.empty() || choices.find(text.front()) == std::string_view::npos) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

DateTime DateTime::Of(int year, int month, int day, int hour, int minute, int second) {
  const sys_days date = sys_days(std::chrono::year(year) / month / day);
  return DateTime((date - kDayZero).count() * kDay + hour * 3600 + minute * 60 + second);
}

int DateTime::Year() const { return static_cast<int>(Civil(seconds_).year()); }
int DateTime::Month() const {
  return static_cast<int>(static_cast<unsigned>(Civil(seconds_).month()));
}
int DateTime::Day() const { return static_cast<int>(static_cast<unsigned>(Civil(seconds_).day())); }
int DateTime::Hour() const { return static_cast<int>(TimePart().seconds_ / 3600); }
int DateTime::Minute() const { return static_cast<int>(TimePart().seconds_ / 60 % 60); }
int DateTime::Second() const { return static_cast<int>(TimePart().seconds_ % 60); }
DateTime DateTime::DatePart() const { return DateTime(DayOf(seconds_) * kDay); }
DateTime DateTime::TimePart() const { return DateTime(seconds_ - DayOf(seconds_) * kDay); }

std::optional<DateTime> ParseDate(std::string_view text) {
  const std::string trimmed = Trim(text);
  std::string_view rest = trimmed;
  std::size_t yearDigits = 0;
  const int day = TakeNumber(rest, 2);
  if (day < 0 || rest.empty()) return std::nullopt;
  const char separator = rest.front();
  if (!TakeOneOf(rest, "/-.")) return std::nullopt;
  const int month = TakeNumber(rest, 2);
  if (month < 0 || !TakeOneOf(rest, std::string_view(&separator, 1))) return std::nullopt;
  int year = TakeNumber(rest, 4, &yearDigits);
  if (year < 0 || yearDigits == 3) return std::nullopt;
  if (yearDigits <= 2) year += year < 30 ? 2000 : 1900;
  const year_month_day date{std::chrono::year(year),
                            std::chrono::month(static_cast<unsigned>(month)),
                            std::chrono::day(static_cast<unsigned>(day))};
  if (!date.ok() || year < 100) return std::nullopt;
  const DateTime result = DateTime::Of(year, month, day);
  if (rest.empty()) return result;
  if (rest.front() != ' ') return std::nullopt;
  const auto time = ParseTime(rest);
  if (!time) return std::nullopt;
  return result + *time;
}

std::optional<DateTime> ParseTime(std::string_view text) {
  const std::string trimmed = Trim(text);
  std::string_view rest = trimmed;
  const int hour = TakeNumber(rest, 2);
  if (hour < 0 || !TakeOneOf(rest, ":.")) return std::nullopt;
  const int minute = TakeNumber(rest, 2);
  if (minute < 0) return std::nullopt;
  int second = 0;
  if (TakeOneOf(rest, ":.")) second = TakeNumber(rest, 2);
  if (second < 0 || !rest.empty() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return DateTime::FromSeconds(hour * 3600 + minute * 60 + second);
}

std::string DateText(DateTime value) {
  return fmt::format("{:02}/{:02}/{:04}", value.Day(), value.Month(), value.Year());
}

std::string TimeText(DateTime value) {
  return fmt::format("{:02}:{:02}:{:02}", value.Hour(), value.Minute(), value.Second());
}

std::string DateTimeText(DateTime value) {
  if (value.DatePart() == DateTime()) return TimeText(value);
  if (value.TimePart() == DateTime()) return DateText(value);
  return DateText(value) + " " + TimeText(value);
}

std::string IsoText(DateTime value) {
  const int numbers[] = {value.Year(), value.Month(),  value.Day(),
                         value.Hour(), value.Minute(), value.Second()};
  constexpr int kLastOfFourDigits = 9999;
  if (numbers[0] < 0 || numbers[0] > kLastOfFourDigits) {
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", numbers[0], numbers[1], numbers[2],
                       numbers[3], numbers[4], numbers[5]);
  }
  std::string text = "0000-00-00 00:00:00";
  constexpr std::size_t kLastDigits[] = {3, 6, 9, 12, 15, 18};
  for (std::size_t i = 0; i < std::size(numbers); ++i) {
    std::size_t at = kLastDigits[i];
    for (int rest = numbers[i]; rest > 0; rest /= 10)
      text[at--] = static_cast<char>('0' + rest % 10);
  }
  return text;
}

std::optional<DateTime> ParseIso(std::string_view text) {
  std::string_view rest = text;
  std::size_t yearDigits = 0;
  const int year = TakeNumber(rest, 4, &yearDigits);
  if (yearDigits != 4 || !TakeOneOf(rest, "-")) return std::nullopt;
  const int month = TakeNumber(rest, 2);
  if (month < 0 || !TakeOneOf(rest, "-")) return std::nullopt;
  const int day = TakeNumber(rest, 2);
  const year_month_day date{std::chrono::year(year),
                            std::chrono::month(static_cast<unsigned>(month)),
                            std::chrono::day(static_cast<unsigned>(day < 0 ? 0 : day))};
  if (!date.ok()) return std::nullopt;
  const DateTime result = DateTime::Of(year, month, day);
  if (rest.empty()) return result;
  if (!TakeOneOf(rest, " T")) return std::nullopt;
  const auto time = ParseTime(rest);
  if (!time) return std::nullopt;
  return result + *time;
}

std::string_view MonthName(int month) {
  static constexpr std::array<std::string_view, 12> kNames = {
      "gennaio", "febbraio", "marzo",     "aprile",  "maggio",   "giugno",
      "luglio",  "agosto",   "settembre", "ottobre", "novembre", "dicembre"};
  return kNames.at(static_cast<std::size_t>(month - 1));
}

}  // namespace brenvo::base
