// The points, duplicates and multipliers of a contest, by its rules.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "gara/rule.h"

namespace brenvo::gara {

// Where a call counts as being; empty for not known.
struct Place {
  std::string country, continent;
};

struct OwnEntry {
  std::string call, locator, exchange;
  Place place;
};

struct Contact {
  std::string band;     // as the log calls it, without blanks around
  base::DateTime time;  // UTC
  std::string call;
  std::string mode;  // as the log has it: USB, CW, FM ...
  std::string reportSent, reportReceived;
  std::int64_t serialSent = 0, serialReceived = 0;  // 0 for none
  std::string locator, exchange;
  Place place;
};

// What a contact is worth.
struct Worth {
  std::int64_t points = 0;
  std::optional<std::size_t> duplicateOf;  // its place among all
  std::vector<std::string> multipliers;    // new with it, in the order of the rule
  friend bool operator==(const Worth&, const Worth&) = default;
};

struct BandScore {
  std::string band;
  std::int64_t contacts = 0, duplicates = 0, points = 0, multipliers = 0;
  friend bool operator==(const BandScore&, const BandScore&) = default;
};

struct Score {
  std::int64_t contacts = 0, duplicates = 0, points = 0, multipliers = 0, total = 0;
  std::vector<BandScore> bands;  // in the order of the rule, those with contacts
  friend bool operator==(const Score&, const Score&) = default;
};

// CW, SSB, FM, AM, RTTY, DIGI: the family of a mode of the log.
std::string_view ModeFamily(std::string_view mode);
bool IsLocator(std::string_view text, std::size_t characters);
// Kilometres between the centres of two locators of six characters, by the sphere's formula with so
// many to a degree; nothing where one is none.
std::optional<double> DistanceKm(std::string_view from, std::string_view to, double kmPerDegree);
// How many squares lie between two locators' squares, straight or slanting: 0 within one.
std::optional<int> SquareRing(std::string_view from, std::string_view to);
// Points of a contact that is no duplicate.
std::int64_t PointsOf(const Rule& rule, const OwnEntry& own, const Contact& contact);

// Counts as contacts come: a new one costs the same whatever stands there.
class Count {
 public:
  Count(const Rule& rule, OwnEntry own);
  ~Count();
  Count(Count&&) noexcept;
  Count& operator=(Count&&) noexcept;

  const Worth& Add(const Contact& contact);
  // What it would be worth as the next one.
  Worth Try(const Contact& contact) const;
  // All anew, when one in the middle is another.
  void Reset(std::span<const Contact> contacts);
  const std::vector<Worth>& Worths() const;
  Score Total() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

struct Recounted {
  std::vector<Worth> worths;
  Score score;
};
// The same by looking at every contact before each one; written apart, for proof.
Recounted Recount(const Rule& rule, const OwnEntry& own, std::span<const Contact> contacts);

// Where the file's examples come out otherwise than they say, for the operator.
std::vector<RuleFault> FailedExamples(const Rule& rule);

}  // namespace brenvo::gara
