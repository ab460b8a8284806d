// What is known of calls beside the log and the contests: where they were, by the files of others.
// Table Nominativi, a row a call.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "core/session.h"

namespace brenvo::core {

struct PlaceOfCall {
  std::string locator;                 // six characters, in capitals
  std::optional<base::DateTime> seen;  // the day of the last time; nothing where none is told
  std::int64_t times = 1;
};

// Where a call is known from; a sum of them.
enum CallSource : int { kFromContestLog = 1, kFromHistory = 2, kFromSuperCheck = 4 };

struct KnownCall {
  std::string call;  // in capitals, without blanks
  // The later one first, no more than kMostPlaces.
  std::vector<PlaceOfCall> places{};
  int sources = 0;
};

inline constexpr std::size_t kMostPlaces = 2;
// Of the table; a call beyond them is not taken.
inline constexpr std::int64_t kMostKnownCalls = 200000;
inline constexpr std::size_t kLongestKnownCall = 15;

// The places of both: one that stands in either once, with its days and times together, the later
// first; no more than kMostPlaces.
std::vector<PlaceOfCall> PlacesTogether(std::vector<PlaceOfCall> some,
                                        const std::vector<PlaceOfCall>& others);

// Of the call as it is written; nothing for one that is not known.
std::optional<KnownCall> FindKnownCall(engine::Database& database, std::string_view call);
// All of them, ascending.
std::vector<std::string> AllKnownCalls(engine::Database& database);

struct LearnedCalls {
  std::int64_t fresh = 0, known = 0, beyond = 0;  // beyond: for which there was no room
  bool stopped = false;                           // by the operator; what was taken stays
};
// Puts them beside what is known.
LearnedCalls LearnCalls(Session& session, const std::vector<KnownCall>& calls,
                        std::int64_t most = kMostKnownCalls);

}  // namespace brenvo::core
