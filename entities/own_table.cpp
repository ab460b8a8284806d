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
  std::optional<base::DateTime> Time(Heading heading) const {
    if (Cell(heading).empty()) return std::nullopt;
    const auto time = base::ParseIso(Cell(heading));
    if (!time) Refuse(line_, fmt::format("\"{}\" non è un giorno", Shown(Cell(heading))));
    return time;
  }
  Span When() const {
    constexpr std::size_t kDay = 10;
    Span when;
    if (const auto from = Time(kDal)) when.from = from->Seconds();
    if (const auto to = Time(kAl)) {
      when.to = Cell(kAl).size() == kDay ? DaysFrom({}, to).to : to->Seconds();
    }
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
    if (kind == "L") {
      if (table.entities.empty() || table.entities.back().number != Number(kDxcc, kLargestNumber)) {
        Refuse(line_, "non è del country che sta sopra");
      }
      table.entities.back().listedOnly = When();
      return;
    }
    Rule rule;
    rule.deletedEntity = kind == "D";
    if (kind == "C") {
      rule.kind = RuleKind::kCall;
    } else if (kind == "N") {
      rule.kind = RuleKind::kInvalid;
    } else if (kind == "Z") {
      rule.kind = RuleKind::kZone;
    } else if (kind != "P" && kind != "D") {
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

// Its day alone where it is that day's first or last second.
std::string TimeText(std::int64_t second, bool told, std::string_view ofDay) {
  if (!told) return {};
  constexpr std::size_t kDay = 10;
  const std::string text = base::IsoText(base::DateTime::FromSeconds(second));
  return text.ends_with(ofDay) ? text.substr(0, kDay) : text;
}
std::string FromText(const Span& when) { return TimeText(when.from, when.HasFrom(), " 00:00:00"); }
std::string ToText(const Span& when) { return TimeText(when.to, when.HasTo(), " 23:59:59"); }

std::string_view KindText(const Rule& rule) {
  switch (rule.kind) {
    case RuleKind::kPrefix:
      return rule.deletedEntity ? "D" : "P";
    case RuleKind::kCall:
      return "C";
    case RuleKind::kInvalid:
      return "N";
    case RuleKind::kZone:
      break;
  }
  return "Z";
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
                           NumberText(each.cq), NumberText(each.itu), "", FromText(each.valid),
                           ToText(each.valid), ""});
    if (each.listedOnly) {
      text += base::CsvLine({"L", NumberText(each.number), "", "", "", "", "", "",
                             FromText(*each.listedOnly), ToText(*each.listedOnly), ""});
    }
  }
  // Rules that say the same stand in one line.
  using Same =
      std::tuple<int, std::string, int, int, std::string, std::string, std::int64_t, std::int64_t>;
  std::map<Same, std::vector<std::string>> lines;
  for (const Rule& rule : table.rules) {
    lines[{rule.entity, std::string(KindText(rule)), rule.cq, rule.itu, rule.continent, rule.area,
           rule.when.from, rule.when.to}]
        .push_back(rule.text);
  }
  for (auto& [same, texts] : lines) {
    const auto& [entity, kind, cq, itu, continent, area, from, to] = same;
    std::ranges::sort(texts);
    std::string joined;
    for (const std::string& each : texts) joined += (joined.empty() ? "" : " ") + each;
    const Span when{from, to};
    text += base::CsvLine({kind, NumberText(entity), "", "", continent, NumberText(cq),
                           NumberText(itu), area, FromText(when), ToText(when), joined});
  }
  return text;
}

}  // namespace brenvo::entities
