// The rules of a contest, as a file tells them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "base/json_fields.h"

namespace brenvo::gara {

// When the contest is: a day by rule or a fixed one, a time and a length.
struct RuleWindow {
  std::string name;     // of this one of a series; empty: the contest's
  int month = 0;        // 1 to 12, of a day by rule; 0 with a fixed day
  int which = 0;        // 1 to 5, or -1 for the last
  int weekday = 0;      // 0 Sunday to 6 Saturday
  base::DateTime day;   // the fixed one
  int beginMinute = 0;  // of the day, UTC
  int lengthMinutes = 0;
  std::vector<std::string> bands;  // empty: all of the contest
};

struct Period {
  base::DateTime begin, end;  // UTC; the end is no part of it
};

// An entry's class, in the words that the sponsor wants in a log.
struct Category {
  std::string words;
  std::string meaning;  // for the operator
  // Of one that counts only so long, from its first contact on; 0 hours: the whole contest. The
  // time falls into no more than so many periods, with a pause of so many minutes or more between.
  int hours = 0;
  int periods = 1, pauseMinutes = 0;
};

enum class PartKind : std::uint8_t { kReport, kSerial, kLocator, kProvince, kOwn };

// What is exchanged, in its order.
struct ExchangePart {
  PartKind kind = PartKind::kReport;
  bool serialPerBand = true;  // of kSerial
  std::string name;           // of kOwn
  std::string pattern;        // of kOwn: what it looks like, "L" a letter, "N" a digit, or both "*"
  bool mayLack = false;       // some stations send none
};

enum class PointKind : std::uint8_t { kKm, kRings, kFixed, kTable };
enum class Nearness : std::uint8_t {
  kAny,
  kOwnCountry,
  kOwnContinent,
  kOtherContinent,
  kCountries
};

struct TableRow {
  Nearness when = Nearness::kAny;
  std::vector<std::string> countries;  // of kCountries
  double points = 0;
};

struct Points {
  PointKind kind = PointKind::kFixed;
  double kmPerDegree = 111.2;  // of kKm
  bool truncates = true;       // of kKm: to whole km, then `added` more
  double added = 1;            // of kKm
  double ownSquare = 1;        // of kRings; each ring further gives one more
  double fixed = 1;
  std::vector<TableRow> table;               // the first row that fits
  std::map<std::string, double> modeFactor;  // CW, SSB, ...; 1 for one that is not named
  // By what is exchanged (a province): the greater of the two stations' factors; 1 for one that is
  // not named.
  std::map<std::string, double> zoneFactor;
};

enum class MultiplierKind : std::uint8_t { kSquare, kPrefix, kProvince, kCountry, kExchange };
enum class Per : std::uint8_t { kContest, kBand, kBandAndMode };

struct Multiplier {
  MultiplierKind kind = MultiplierKind::kSquare;
  Per per = Per::kBand;
  std::vector<std::string> without;  // values that are none
};

enum class LogFormat : std::uint8_t { kEdi, kCabrillo };

struct Deadline {
  int weekday = -1;  // the first such day behind the contest, 0 Sunday; -1: `days` behind its end
  int days = 0;
  int minute = 0;  // of that day, UTC, the last one that counts
};

struct ExampleContact {
  int line = 0;
  std::string band, mode, call, locator, exchange, country, continent;
  std::int64_t points = 0;
  std::vector<std::string> multipliers;  // that are new with it
  bool isDuplicate = false;
};

struct Example {
  int line = 0;
  std::string call, locator, exchange, country, continent;
  std::vector<ExampleContact> contacts;
  std::int64_t points = 0, multipliers = 0, score = 0;
};

struct Rule {
  std::string file;  // its name without ".json"
  std::string name, sponsor, page;
  std::string contestId;          // in a log's head: TName, CONTEST
  int year = 0;                   // of the rules
  std::vector<std::string> open;  // what the rules as known leave open; a log is not sent then
  std::vector<RuleWindow> windows;
  std::vector<std::string> bands;  // as the log calls them, without blanks around
  std::vector<std::string> modes;  // CW, SSB, FM, AM, RTTY, DIGI
  std::vector<Category> categories;
  std::vector<ExchangePart> exchange;
  Points points;
  std::vector<Multiplier> multipliers;
  bool scorePerBand = false;  // points times multipliers of each band, added up
  Per duplicates = Per::kBand;
  LogFormat format = LogFormat::kEdi;
  std::string fileName;  // of the log: {CALL}, {BANDA}, {CATEGORIA}
  std::optional<Deadline> deadline;
  std::string sendTo;
  std::vector<Example> examples;

  bool IsComplete() const { return open.empty(); }
  const ExchangePart* Part(PartKind kind) const;
};

using RuleFault = base::FieldFault;

struct ReadRule {
  Rule rule;  // as far as it was understood
  std::vector<RuleFault> faults;
};

// Bounds of a file: bytes, things within one another, values in all.
inline constexpr std::size_t kMostRuleBytes = 1 << 20;
inline constexpr int kMostRuleDepth = 12;
inline constexpr std::size_t kMostRuleValues = 50000;

// Of any bytes. A rule with faults is not to be used.
ReadRule ReadRuleText(std::string_view bytes);

// The periods of a year, in their order; a fixed day belongs to its own year alone.
std::vector<Period> PeriodsOf(const Rule& rule, int year);
// Of one window; nothing in a year that has no such day.
std::optional<Period> PeriodOf(const RuleWindow& window, int year);
// The last moment at which a log of that period is taken.
std::optional<base::DateTime> DeadlineOf(const Rule& rule, const Period& period);

}  // namespace brenvo::gara
