#include "diplomi/count.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <set>
#include <stdexcept>
#include <tuple>

#include "base/text.h"
#include "geo/locator.h"
#include "judge.h"

namespace brenvo::diplomi {
namespace {

constexpr std::string_view kStateNames[] = {"", "lavorato", "confermato", "accreditato"};

// Whether the first one fills a cell rather than the second.
template <class A, class B>
bool FillsBefore(const A& a, const B& b) {
  if (a.state != b.state) return a.state > b.state;
  return std::tuple(a.key < 0, a.seconds, a.key) < std::tuple(b.key < 0, b.seconds, b.key);
}

bool Binds(const Award& award) { return award.ownWithinKm > 0 || award.ownCountry; }

// Of four characters the middle of the square; empty for what is none.
std::string SixSigns(std::string_view locator) {
  std::string text = base::UpperAscii(base::Trim(locator)).substr(0, 6);
  if (text.size() == 4) text += "LL";
  return text.size() == 6 && geo::IsValidLocator(text) ? text : std::string();
}

int DistanceKm(const std::string& from, const std::string& to) {
  if (from == to) return 0;
  try {
    return geo::QrbKm(from, to);
  } catch (const std::domain_error&) {
    return 0;  // one and the same place
  }
}

void Sum(Totals& totals, State state) {
  totals.worked += state >= State::kWorked;
  totals.confirmed += state >= State::kConfirmed;
  totals.credited += state >= State::kCredited;
}

}  // namespace

std::string_view NameOf(State state) { return kStateNames[static_cast<std::size_t>(state)]; }

std::vector<std::int64_t> StationsThatGoTogether(const Award& award,
                                                 std::span<const OwnPlace> places,
                                                 std::int64_t first) {
  std::vector<std::int64_t> together;
  const auto chosen = std::ranges::find(places, first, &OwnPlace::station);
  if (!Binds(award) || chosen == places.end()) {
    for (const OwnPlace& each : places) together.push_back(each.station);
    if (Binds(award)) together.clear();
    return together;
  }
  struct Near {
    int km;
    std::int64_t station;
    std::string locator;
  };
  const std::string here = SixSigns(chosen->locator);
  std::vector<Near> near;
  for (const OwnPlace& each : places) {
    if (each.station == first) continue;
    if (award.ownCountry && !base::SameText(each.country, chosen->country)) continue;
    const std::string there = SixSigns(each.locator);
    int km = 0;
    if (award.ownWithinKm > 0) {
      if (here.empty() || there.empty()) continue;
      km = DistanceKm(here, there);
      if (km > award.ownWithinKm) continue;
    }
    near.push_back({km, each.station, there});
  }
  std::ranges::sort(near, {}, [](const Near& each) { return std::pair(each.km, each.station); });
  // Two that are both near the first one may be too far from each other: the nearer one stays.
  std::vector<std::string> taken;
  together.push_back(first);
  for (const Near& each : near) {
    const bool goes = award.ownWithinKm == 0 || std::ranges::all_of(taken, [&](const auto& other) {
                        return DistanceKm(each.locator, other) <= award.ownWithinKm;
                      });
    if (!goes) continue;
    together.push_back(each.station);
    taken.push_back(each.locator);
  }
  return together;
}

Counted Count(const Award& award, const LogImage& log, const World& world,
              std::span<const OwnPlace> places, const worked::Rules& rules, const Choice& choice) {
  Judge judge(award, log, world, places, rules, choice);
  Counted counted;
  counted.bands = judge.Bands();
  const std::size_t columns = counted.Columns();
  std::vector<Cell> cells(judge.Units().size() * columns);
  for (const ImageRow& row : log.Rows()) {
    judge.Of(row, [&](const Judge::Brought& brought) {
      const std::size_t at = brought.unit * columns + brought.column;
      if (at >= cells.size()) cells.resize(judge.Units().size() * columns);
      const Cell filled{brought.state, brought.by, row.key, row.seconds};
      if (FillsBefore(filled, cells[at])) cells[at] = filled;
    });
  }
  cells.resize(judge.Units().size() * columns);

  const std::vector<Unit>& units = judge.Units();
  std::vector<std::size_t> order(units.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  // What is no more and was never worked needs no row.
  std::erase_if(order, [&](std::size_t unit) {
    return units[unit].former && cells[unit * columns].state == State::kNone;
  });
  std::ranges::sort(order, [&](std::size_t a, std::size_t b) {
    return std::tie(units[a].former, units[a].code) < std::tie(units[b].former, units[b].code);
  });
  counted.totals.resize(columns);
  counted.former.resize(columns);
  counted.cells.reserve(order.size() * columns);
  for (const std::size_t unit : order) {
    counted.units.push_back(units[unit]);
    for (std::size_t column = 0; column < columns; ++column) {
      const Cell& cell = cells[unit * columns + column];
      counted.cells.push_back(cell);
      Sum(units[unit].former ? counted.former[column] : counted.totals[column], cell.state);
    }
  }
  counted.left = judge.Left();
  counted.stations = judge.Stations();
  return counted;
}

std::vector<Filling> FillingsOf(const Award& award, const LogImage& log, const World& world,
                                std::span<const OwnPlace> places, const worked::Rules& rules,
                                const Choice& choice, std::string_view unit, std::string_view band,
                                std::size_t most) {
  Judge judge(award, log, world, places, rules, choice);
  std::size_t column = 0;
  if (!band.empty()) {
    const auto at = std::ranges::find(judge.Bands(), band);
    if (at == judge.Bands().end()) return {};
    column = static_cast<std::size_t>(at - judge.Bands().begin()) + 1;
  }
  std::vector<Filling> fillings;
  for (const ImageRow& row : log.Rows()) {
    judge.Of(row, [&](const Judge::Brought& brought) {
      if (brought.column != column || judge.Units()[brought.unit].code != unit) return;
      fillings.push_back({row.key, row.seconds, brought.state, brought.by});
    });
  }
  const std::size_t shown = std::min(most, fillings.size());
  std::partial_sort(fillings.begin(), fillings.begin() + static_cast<std::ptrdiff_t>(shown),
                    fillings.end(), FillsBefore<Filling, Filling>);
  fillings.resize(shown);
  return fillings;
}

std::vector<Reached> GoalsOf(const Award& award, const Counted& counted) {
  std::vector<Reached> reached;
  const auto add = [&](const Goal& goal, std::string band, const Totals& now) {
    Reached& made = reached.emplace_back();
    made.goal = &goal;
    made.band = std::move(band);
    made.now = now;
    const auto next = std::ranges::upper_bound(goal.counts, now.confirmed);
    if (next != goal.counts.end()) made.next = *next;
  };
  for (const Goal& goal : award.goals) {
    Totals sum;
    for (std::size_t i = 0; i < counted.bands.size(); ++i) {
      const std::string& band = counted.bands[i];
      const bool counts =
          goal.bands.empty() || std::ranges::find(goal.bands, band) != goal.bands.end();
      if (!counts) continue;
      const Totals& here = counted.totals[i + 1];
      if (goal.of == LevelOf::kBand) add(goal, band, here);
      sum.worked += here.worked;
      sum.confirmed += here.confirmed;
      sum.credited += here.credited;
    }
    if (goal.of == LevelOf::kAll) add(goal, "", counted.totals.front());
    if (goal.of == LevelOf::kSlots) add(goal, "", sum);
  }
  return reached;
}

std::vector<std::string> WantedFields(std::span<const Award> awards) {
  std::set<std::string> wanted;
  for (const Award& award : awards) {
    if (!award.creditAll.empty() || !award.creditBand.empty() || !award.creditMode.empty()) {
      wanted.emplace(kCreditField);
    }
    if (award.unit == UnitKind::kSquare || award.unit == UnitKind::kField) {
      wanted.emplace(kSquaresField);
    }
    wanted.insert(award.fields.begin(), award.fields.end());
    for (const Counting& each : award.counting) {
      if (!each.field.empty()) wanted.insert(each.field);
    }
  }
  // Their places leave room for what records tell.
  std::vector<std::string> fields(wanted.begin(), wanted.end());
  if (fields.size() > kRecordLocator) fields.resize(kRecordLocator);
  return fields;
}

}  // namespace brenvo::diplomi
