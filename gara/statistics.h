// What a contest was: its hours, distances, squares and best contacts, against the one before.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "gara/count.h"
#include "platform/printer.h"

namespace brenvo::gara {

// A contest as it stands, for counting.
struct WorkedContest {
  std::string name;
  base::DateTime begin, end;  // UTC
  OwnEntry own;
  std::span<const Contact> contacts;  // by time
};

struct Statistics {
  struct BandLine {
    BandScore score;
    std::int64_t meanKm = 0, bestKm = 0;  // of contacts that are no duplicates; 0 for none
    std::string bestCall;
  };
  struct Hour {
    base::DateTime from;
    std::vector<std::int64_t> contacts;  // by band
    std::int64_t all = 0, points = 0;
  };
  struct Best {
    std::string band, call, locator;
    std::int64_t km = 0, points = 0;
  };
  struct Before {
    std::string name;
    base::DateTime begin;
    Score score;
    std::vector<std::int64_t> points;  // by hour, of that hour
  };
  std::string name, call, locator;
  base::DateTime begin;
  Score score;
  std::vector<BandLine> bands;
  std::vector<Hour> hours;                      // from the first one of the contest to its last
  std::vector<std::int64_t> distances;          // contacts, by hundreds of km
  std::vector<Best> best;                       // the farthest, no more than kMostBest
  std::map<std::string, std::int64_t> squares;  // contacts in each, duplicates left out
  std::optional<Before> before;
};

inline constexpr std::size_t kMostBest = 10;

// `before` is the same contest of another year; null for none.
Statistics MakeStatistics(const Rule& rule, const WorkedContest& contest,
                          const WorkedContest* before);

// The same as a page of HTML, with its pictures in it.
std::string StatisticsPage(const Statistics& statistics);
// The same on paper; DeviceError as the printer has it.
void PrintPages(const Statistics& statistics, platform::Printer& printer);

}  // namespace brenvo::gara
