// Counts an award over the log: which units are worked, confirmed and credited, on which band, and
// which contact says so.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "diplomi/award.h"
#include "diplomi/log_image.h"
#include "entities/table.h"
#include "worked/rules.h"

namespace brenvo::diplomi {

// What there is to be worked, whether it was or not.
struct WorldCountry {
  std::string code, name, continent;
  entities::Span valid;
};
struct WorldProvince {
  std::string country, code, name;
};
struct World {
  std::vector<WorldCountry> countries;
  std::vector<WorldProvince> provinces;
  std::vector<std::string> bands;  // in their order, without blanks
  base::DateTime today;
  std::map<std::string, std::vector<ListedReference>> lists;  // by the award's file
};

// The operator's own place.
struct OwnPlace {
  std::int64_t station = 0;
  std::string country, locator;
};

// The rising states of a unit; each holds those below it.
enum class State : std::uint8_t { kNone, kWorked, kConfirmed, kCredited };
// "lavorato"; empty for kNone.
std::string_view NameOf(State state);

struct Choice {
  std::string mode;          // a group of the award's; empty for all
  std::int64_t station = 0;  // 0 for all; of an award that binds the own places, the first of them
};

// The contact that fills a cell: of those of the highest state the earliest, a credit without a
// contact last.
struct Cell {
  State state = State::kNone;
  std::int8_t by = -1;   // the place among the award's services that confirms it
  std::int64_t key = 0;  // of the log; below 0 a credit without a contact
  std::int64_t seconds = 0;
  friend bool operator==(const Cell&, const Cell&) = default;
};

struct Unit {
  std::string code, name;
  bool former = false;  // counts apart
};

struct Totals {
  int worked = 0, confirmed = 0, credited = 0;  // each with those above it
  friend bool operator==(const Totals&, const Totals&) = default;
};

// Contacts that bring nothing, by why.
struct LeftOut {
  std::int64_t notThen = 0;     // the country was none on that day
  std::int64_t otherPlace = 0;  // made from a place that does not go with the others
};

struct Counted {
  std::vector<Unit> units;         // by their codes, the former ones behind
  std::vector<std::string> bands;  // of the columns, from 1 on; column 0 is all of them together
  std::vector<Cell> cells;         // a row a unit
  std::vector<Totals> totals;      // a column; without the former units
  std::vector<Totals> former;
  LeftOut left;
  std::vector<std::int64_t> stations;  // whose contacts count; empty for all

  std::size_t Columns() const { return bands.size() + 1; }
  const Cell& At(std::size_t unit, std::size_t column) const {
    return cells[unit * Columns() + column];
  }
};

// One walk over the image.
Counted Count(const Award& award, const LogImage& log, const World& world,
              std::span<const OwnPlace> places, const worked::Rules& rules, const Choice& choice);

// What a contact brings to one cell.
struct Filling {
  std::int64_t key = 0, seconds = 0;
  State state = State::kNone;
  std::int8_t by = -1;
};
// All contacts of a cell, the one that fills it first, no more than `most`.
std::vector<Filling> FillingsOf(const Award& award, const LogImage& log, const World& world,
                                std::span<const OwnPlace> places, const worked::Rules& rules,
                                const Choice& choice, std::string_view unit, std::string_view band,
                                std::size_t most);

// How far a goal is.
struct Reached {
  const Goal* goal = nullptr;
  std::string band;  // of a goal on each band
  Totals now;
  std::optional<int> next;  // the next count above what is confirmed; nothing behind the last one
};
std::vector<Reached> GoalsOf(const Award& award, const Counted& counted);

// The stations of whose contacts an award that binds the own places takes notice, around the first
// one: each goes with all before it. Rising by distance; all where the award binds none.
std::vector<std::int64_t> StationsThatGoTogether(const Award& award,
                                                 std::span<const OwnPlace> places,
                                                 std::int64_t first);

// Where the file's examples come out otherwise than they say, for the operator.
std::vector<AwardFault> FailedExamples(const Award& award, const worked::Rules& rules,
                                       const World& world);

// The fields that are to be read beside contacts for these awards, for LogImage.
std::vector<std::string> WantedFields(std::span<const Award> awards);

}  // namespace brenvo::diplomi
