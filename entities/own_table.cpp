#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <tuple>

#include "base/csv.h"
#include "entities/read_tables.h"
#include "table_text.h"

namespace brenvo::entities {
namespace {

constexpr std::string_view kHeadings[] = {"Tipo", "Dxcc", "Country", "Nome", "Continente", "CQ",
                                          "ITU",  "Area", "Dal",     "Al",   "Testi"};
enum Heading : std::size_t {
  kTipo,
  kDxcc,
  kCountry,
  kNome,
  kContinente,
  kCq,
  kItu,
  kArea,
  kDal,
  kAl,
  kTesti
};

class OwnRow {
 public:
  OwnRow(const base::CsvTable::Row& row, const std::vector<std::size_t>& columns)
      : row_(row), columns_(columns), line_(static_cast<std::int64_t>(row.Line)) {}

  const std::string& Cell(Heading heading) const { return row_.Cells[columns_[heading]]; }
  int Number(Heading heading, int most) const {
    if (Cell(heading).empty()) return 0;
    const auto number = WholeNumber(Cell(heading), 0, most);
    if (!number)
      Refuse(line_, fmt::format("\"{}\" in {}", Shown(Cell(heading)), kHeadings[heading]));
    return *number;
  }
  std::optional<base::DateTime> Day(Heading heading) const {
    if (Cell(heading).empty()) return std::nullopt;
    const auto day = DayIn(Cell(heading));
    if (!day) Refuse(line_, fmt::format("\"{}\" non è un giorno", Shown(Cell(heading))));
    return day;
  }
  Span When() const {
    const Span when = DaysFrom(Day(kDal), Day(kAl));
    if (when.from > when.to) Refuse(line_, "finisce prima di cominciare");
    return when;
  }

  void TakeInto(Table& table, RuleTaker& rules) const {
    const std::string& kind = Cell(kTipo);
    if (kind == "E") {
      if (table.entities.size() == kMostEntities) Refuse(line_, "troppi country");
      Entity entity;
      entity.number = Number(kDxcc, kLargestNumber);
      if (entity.number == 0) Refuse(line_, "un country senza numero");
      entity.country = Cell(kCountry);
      entity.name = Cell(kNome);
      entity.continent = Continent();
      entity.cq = Number(kCq, 40);
      entity.itu = Number(kItu, 90);
      entity.valid = When();
      table.entities.push_back(std::move(entity));
      return;
    }
    Rule rule;
    if (kind == "C") {
      rule.kind = RuleKind::kCall;
    } else if (kind == "N") {
      rule.kind = RuleKind::kInvalid;
    } else if (kind != "P") {
      Refuse(line_, fmt::format("\"{}\" in {}", Shown(kind), kHeadings[kTipo]));
    }
    rule.line = line_;
    rule.entity = Number(kDxcc, kLargestNumber);
    rule.cq = Number(kCq, 40);
    rule.itu = Number(kItu, 90);
    rule.continent = Continent();
    rule.area = Cell(kArea);
    rule.when = When();
    for (const std::string_view text : SplitAt(Cell(kTesti), ' ')) {
      if (text.empty()) continue;
      rule.text = text;
      rules.Take(rule);
    }
  }

 private:
  std::string Continent() const {
    const std::string& continent = Cell(kContinente);
    if (!continent.empty() && !IsContinent(continent)) {
      Refuse(line_, fmt::format("\"{}\" non è un continente", Shown(continent)));
    }
    return continent;
  }

  const base::CsvTable::Row& row_;
  const std::vector<std::size_t>& columns_;
  std::int64_t line_;
};

std::string DayText(std::int64_t second, bool told) {
  constexpr std::size_t kDay = 10;
  return told ? base::IsoText(base::DateTime::FromSeconds(second)).substr(0, kDay) : std::string();
}

std::string NumberText(int number) { return number == 0 ? std::string() : std::to_string(number); }

}  // namespace

Table ReadOwnTable(std::string_view text, std::string_view file) {
  try {
    const base::CsvTable csv = base::ParseCsv(text);
    std::vector<std::size_t> columns;
    for (const std::string_view heading : kHeadings) columns.push_back(csv.Column(heading));
    Table table;
    table.file = file;
    table.format = "Entita.csv";
    RuleTaker rules(table);
    for (const base::CsvTable::Row& row : csv.Rows) OwnRow(row, columns).TakeInto(table, rules);
    return table;
  } catch (const std::runtime_error& fault) {
    throw TableError(fmt::format("{}: {}", file, fault.what()));
  }
}

std::string OwnTableText(const Table& table) {
  std::string text = base::CsvLine({std::begin(kHeadings), std::end(kHeadings)});
  for (const Entity& each : table.entities) {
    text += base::CsvLine({"E", NumberText(each.number), each.country, each.name, each.continent,
                           NumberText(each.cq), NumberText(each.itu), "",
                           DayText(each.valid.from, each.valid.HasFrom()),
                           DayText(each.valid.to, each.valid.HasTo()), ""});
  }
  // Rules that say the same stand in one line.
  using Same =
      std::tuple<int, std::string, int, int, std::string, std::string, std::int64_t, std::int64_t>;
  std::map<Same, std::vector<std::string>> lines;
  for (const Rule& rule : table.rules) {
    constexpr std::string_view kKinds[] = {"P", "C", "N", "N"};
    lines[{rule.entity, std::string(kKinds[static_cast<std::size_t>(rule.kind)]), rule.cq, rule.itu,
           rule.continent, rule.area, rule.when.from, rule.when.to}]
        .push_back(rule.text);
  }
  for (auto& [same, texts] : lines) {
    const auto& [entity, kind, cq, itu, continent, area, from, to] = same;
    std::ranges::sort(texts);
    std::string joined;
    for (const std::string& each : texts) joined += (joined.empty() ? "" : " ") + each;
    const Span when{from, to};
    text +=
        base::CsvLine({kind, NumberText(entity), "", "", continent, NumberText(cq), NumberText(itu),
                       area, DayText(from, when.HasFrom()), DayText(to, when.HasTo()), joined});
  }
  return text;
}

}  // namespace brenvo::entities
