#include <fmt/format.h>

#include <algorithm>

#include "base/encoding.h"
#include "base/text.h"
#include "entities/read_tables.h"
#include "table_text.h"

// Tables with "|": patterns, name, continent, time, latitude, longitude, ITU, CQ, number, kind, and
// the days with the number of the country: "2024/05/01-2024/05/28=279".
namespace brenvo::entities {
namespace {

enum Column : std::size_t {
  kPatterns,
  kName,
  kContinent,
  kItu = 6,
  kCq = 7,
  kNumber = 8,
  kKind = 9,
  kDays = 10,
  kColumns = 11,
};

// What is told in one line is all or nothing.
class Row {
 public:
  Row(std::string_view text, std::int64_t line) : cells_(SplitAt(text, '|')), line_(line) {
    if (cells_.size() != kColumns) {
      Refuse(line, fmt::format("ha {} colonne e non {}", cells_.size(), std::size_t{kColumns}));
    }
    ReadDays();
    rule_.line = line;
    rule_.deletedEntity = Trimmed(cells_[kKind]) == "D";
    const std::string_view continent = Trimmed(cells_[kContinent]);
    if (!continent.empty() && !IsContinent(continent)) {
      Refuse(line, fmt::format("\"{}\" non è un continente", Shown(continent)));
    }
    rule_.continent = continent;
    rule_.cq = Zone(cells_[kCq], 40);
    rule_.itu = Zone(cells_[kItu], 90);
  }

  // A row of a country, and not of what belongs to one.
  bool IsCountry() const { return Trimmed(cells_[kKind]) != "R" && rule_.entity > 0; }
  Entity Told() const {
    Entity entity;
    entity.number = rule_.entity;
    entity.name = base::ValidUtf8(Trimmed(cells_[kName]));
    entity.continent = rule_.continent;
    entity.cq = rule_.cq;
    entity.itu = rule_.itu;
    entity.valid = rule_.when;
    return entity;
  }

  template <class See>
  void EachRule(const See& see) {
    for (std::string_view text : SplitAt(cells_[kPatterns], ' ')) {
      // "3D2(C)" is a name for a part of 3D2, and no pattern.
      if (text.empty() || text.find('(') != std::string_view::npos) continue;
      Rule rule = rule_;
      const bool call = text.starts_with('=');
      if (call) text.remove_prefix(1);
      rule.text = Capitals(text);
      rule.kind = !call              ? RuleKind::kPrefix
                  : rule.entity == 0 ? RuleKind::kInvalid
                                     : RuleKind::kCall;
      see(std::move(rule));
    }
  }

 private:
  void ReadDays() {
    std::string_view days = Trimmed(cells_[kDays]);
    const std::size_t equals = days.find('=');
    const std::string_view number =
        equals == std::string_view::npos ? cells_[kNumber] : days.substr(equals + 1);
    const auto entity = WholeNumber(number, 0, kLargestNumber);
    if (!entity) Refuse(line_, fmt::format("\"{}\" non è il numero di un country", Shown(number)));
    rule_.entity = *entity;
    days = Trimmed(days.substr(0, equals));
    if (days.empty() || days == "-") return;
    const std::size_t dash = days.find('-');
    const std::string_view first = days.substr(0, dash);
    const std::string_view last = dash == std::string_view::npos ? first : days.substr(dash + 1);
    rule_.when = DaysFrom(Day(first), Day(last));
    if (rule_.when.from > rule_.when.to) {
      Refuse(line_, fmt::format("\"{}\" finisce prima di cominciare", Shown(days)));
    }
  }
  std::optional<base::DateTime> Day(std::string_view text) const {
    if (Trimmed(text).empty()) return std::nullopt;
    const auto day = DayIn(text);
    if (!day) Refuse(line_, fmt::format("\"{}\" non è un giorno", Shown(text)));
    return day;
  }
  // "47;52" are several: none.
  int Zone(std::string_view text, int most) const {
    text = Trimmed(text);
    if (text.empty() || text.find_first_of(";,-") != std::string_view::npos) return 0;
    const auto zone = WholeNumber(text, 0, most);
    if (!zone) Refuse(line_, fmt::format("\"{}\" non è una zona", Shown(text)));
    return *zone;
  }

  std::vector<std::string_view> cells_;
  std::int64_t line_;
  Rule rule_;
};

}  // namespace

Table ReadBarTable(std::string_view text) {
  // So many wrong lines are somebody's slips; more of them, and it is another kind of file.
  constexpr std::int64_t kSlips = 20, kOneIn = 50;
  constexpr std::size_t kShownFaults = 20;
  Table table;
  table.format = "tabella |";
  RuleTaker rules(table);
  std::int64_t line = 0, rows = 0;
  for (std::string_view row : SplitAt(text, '\n')) {
    ++line;
    row = Trimmed(row);
    if (row.empty() || row.starts_with('#')) continue;
    ++rows;
    const std::size_t kept = table.rules.size();
    try {
      Row read(row, line);
      read.EachRule([&](Rule rule) { rules.Take(std::move(rule)); });
      if (read.IsCountry() && table.entities.size() < kMostEntities) {
        table.entities.push_back(read.Told());
      }
    } catch (const TableError& fault) {
      if (table.rules.size() >= kMostRules) throw;
      table.rules.resize(kept);
      ++table.faultCount;
      if (table.faults.size() < kShownFaults) table.faults.emplace_back(fault.what());
    }
  }
  if (table.faultCount > kSlips && table.faultCount * kOneIn > rows) {
    throw TableError(fmt::format("{} righe su {} non si capiscono; {}", table.faultCount, rows,
                                 table.faults.front()));
  }
  if (rows > 0 && table.rules.empty()) {
    throw TableError(table.faults.empty() ? "nessuna regola" : table.faults.front());
  }
  return table;
}

}  // namespace brenvo::entities
