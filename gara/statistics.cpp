#include "statistics.h"

#include <algorithm>
#include <cmath>

namespace brenvo::gara {
namespace {

constexpr std::int64_t kHour = 3600;
constexpr std::size_t kMostHours = 24 * 15;
constexpr std::size_t kMostHundreds = 200;

// Nothing for a contact outside the contest.
std::optional<std::size_t> HourOf(const WorkedContest& contest, const Contact& contact) {
  if (contact.time < contest.begin || !(contact.time < contest.end)) return std::nullopt;
  return static_cast<std::size_t>((contact.time.Seconds() - contest.begin.Seconds()) / kHour);
}

std::size_t HoursOf(const WorkedContest& contest) {
  const std::int64_t seconds = contest.end.Seconds() - contest.begin.Seconds();
  return std::min(kMostHours, static_cast<std::size_t>(
                                  std::max<std::int64_t>(1, (seconds + kHour - 1) / kHour)));
}

Statistics::Before CountBefore(const Rule& rule, const WorkedContest& contest) {
  Statistics::Before before{contest.name, contest.begin, {}, {}};
  before.points.resize(HoursOf(contest));
  Count count(rule, contest.own);
  for (const Contact& contact : contest.contacts) {
    const std::int64_t points = count.Add(contact).points;
    const auto hour = HourOf(contest, contact);
    if (hour && *hour < before.points.size()) before.points[*hour] += points;
  }
  before.score = count.Total();
  return before;
}

}  // namespace

Statistics MakeStatistics(const Rule& rule, const WorkedContest& contest,
                          const WorkedContest* before) {
  Statistics made;
  made.name = contest.name;
  made.call = contest.own.call;
  made.locator = contest.own.locator;
  made.begin = contest.begin;
  Count count(rule, contest.own);
  for (const Contact& contact : contest.contacts) count.Add(contact);
  made.score = count.Total();
  for (const BandScore& each : made.score.bands) made.bands.push_back({each, 0, 0, {}});
  made.hours.resize(HoursOf(contest));
  for (std::size_t i = 0; i < made.hours.size(); ++i) {
    made.hours[i].from = contest.begin.Later(static_cast<std::int64_t>(i) * kHour);
    made.hours[i].contacts.resize(made.bands.size());
  }
  std::vector<std::pair<double, std::int64_t>> sums(made.bands.size());  // km, and of how many
  for (std::size_t i = 0; i < contest.contacts.size(); ++i) {
    const Contact& contact = contest.contacts[i];
    const Worth& worth = count.Worths()[i];
    const auto band = std::ranges::find_if(made.bands, [&](const Statistics::BandLine& each) {
      return each.score.band == contact.band;
    });
    const std::size_t place = static_cast<std::size_t>(band - made.bands.begin());
    const auto hour = HourOf(contest, contact);
    if (hour && *hour < made.hours.size()) {
      ++made.hours[*hour].all;
      ++made.hours[*hour].contacts[place];
      made.hours[*hour].points += worth.points;
    }
    if (worth.duplicateOf) continue;
    if (contact.locator.size() >= 4 && IsLocator(contact.locator.substr(0, 4), 4)) {
      ++made.squares[contact.locator.substr(0, 4)];
    }
    const auto km = DistanceKm(contest.own.locator, contact.locator, rule.points.kmPerDegree);
    if (!km) continue;
    const std::int64_t whole = static_cast<std::int64_t>(*km);
    sums[place].first += *km;
    ++sums[place].second;
    if (whole > band->bestKm) {
      band->bestKm = whole;
      band->bestCall = contact.call;
    }
    const std::size_t hundred = std::min(kMostHundreds, static_cast<std::size_t>(whole / 100));
    if (made.distances.size() <= hundred) made.distances.resize(hundred + 1);
    ++made.distances[hundred];
    made.best.push_back({contact.band, contact.call, contact.locator, whole, worth.points});
  }
  for (std::size_t i = 0; i < sums.size(); ++i) {
    if (sums[i].second > 0) {
      made.bands[i].meanKm = std::llround(sums[i].first / static_cast<double>(sums[i].second));
    }
  }
  std::ranges::stable_sort(made.best, std::ranges::greater(), &Statistics::Best::km);
  if (made.best.size() > kMostBest) made.best.resize(kMostBest);
  if (before != nullptr) made.before = CountBefore(rule, *before);
  return made;
}

}  // namespace brenvo::gara
