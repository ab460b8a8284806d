// Dates and times as the station writes them.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brenvo::base {

// A date and time to the second, proleptic Gregorian, no time zone: what the operator's clock
// shows. A value without a date part stands on day zero, 30/12/1899, and is a time of day alone.
class DateTime {
 public:
  constexpr DateTime() = default;
  // Month 1-12, day 1-31, hour 0-23, minute and second 0-59; the caller has checked them.
  static DateTime Of(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
  static constexpr DateTime FromSeconds(std::int64_t seconds) { return DateTime(seconds); }

  // Seconds since 30/12/1899 00:00:00.
  constexpr std::int64_t Seconds() const { return seconds_; }
  int Year() const;
  int Month() const;
  int Day() const;
  int Hour() const;
  int Minute() const;
  int Second() const;

  DateTime DatePart() const;  // at midnight
  DateTime TimePart() const;  // on day zero
  // A date plus a time of day.
  constexpr DateTime Later(std::int64_t seconds) const { return DateTime(seconds_ + seconds); }
  friend constexpr DateTime operator+(DateTime a, DateTime b) {
    return DateTime(a.seconds_ + b.seconds_);
  }
  friend constexpr auto operator<=>(DateTime, DateTime) = default;

 private:
  constexpr explicit DateTime(std::int64_t seconds) : seconds_(seconds) {}
  std::int64_t seconds_ = 0;
};

// The date in a text: dd/mm/yyyy, with "/", "-" or "." between, a year of one or two digits being
// 2000-2029 or 1930-1999; a time may follow after a blank. Nothing when it is no date.
std::optional<DateTime> ParseDate(std::string_view text);
// The time of day in a text: hh:mm or hh:mm:ss, "." allowed as separator. Nothing when it is none.
std::optional<DateTime> ParseTime(std::string_view text);

// "dd/mm/yyyy".
std::string DateText(DateTime value);
// "hh:mm:ss".
std::string TimeText(DateTime value);
// What a date and time converts to: the date, then the time unless it is midnight; the time alone
// when there is no date part.
std::string DateTimeText(DateTime value);
// "yyyy-mm-dd hh:mm:ss", the form of the database file.
std::string IsoText(DateTime value);
// That form, its date alone, or with a "T" for the blank; nothing when it is none of these.
std::optional<DateTime> ParseIso(std::string_view text);

// Month name in Italian, lower case; month 1-12.
std::string_view MonthName(int month);

}  // namespace brenvo::base
