#include <fmt/format.h>

#include <algorithm>

#include "base/encoding.h"
#include "base/text.h"
#include "entities/read_tables.h"
#include "table_text.h"

// Country files, in their two forms: prefixes and calls of today, without dates.
namespace brenvo::entities {
namespace {

// Names of main prefixes that stand for European awards alone, and the country that they are in.
struct Award {
  std::string_view prefix, area;
  int entity;
};
constexpr Award kAwards[] = {
    {"4U1V", "4U1V", 206}, {"GM/S", "GM/S", 279}, {"IG9", "IG9", 248},
    {"IT9", "IT9", 248},   {"JW/B", "JW/B", 259}, {"TA1", "TA1", 390},
};

// A version stands among the calls: "=VER20260311".
constexpr std::string_view kVersion = "VER";
bool IsVersion(std::string_view call) {
  return call.size() == kVersion.size() + 8 && call.starts_with(kVersion) &&
         WholeNumber(call.substr(kVersion.size()), 19000101, 29991231).has_value();
}

// "=GB6WW(14)[27]{EU}": the text, then what differs from the country.
class Alias {
 public:
  Alias(std::string_view text, const Rule& country, std::int64_t line) : rule_(country) {
    rule_.line = line;
    rule_.kind = RuleKind::kPrefix;
    if (text.starts_with('=')) {
      rule_.kind = RuleKind::kCall;
      text.remove_prefix(1);
    }
    const std::size_t end = std::min(text.find_first_of("([<{~"), text.size());
    rule_.text = Capitals(Trimmed(text.substr(0, end)));
    text.remove_prefix(end);
    while (!text.empty()) text = TakeOverride(text);
  }
  Rule& Told() { return rule_; }

 private:
  std::string_view TakeOverride(std::string_view text) {
    constexpr std::string_view kOpen = "([<{~", kClose = ")]>}~";
    const std::size_t kind = kOpen.find(text.front());
    if (kind == std::string_view::npos) {
      Refuse(rule_.line, fmt::format("\"{}\" dietro {}", Shown(text), Shown(rule_.text)));
    }
    const std::size_t end = text.find(kClose[kind], 1);
    if (end == std::string_view::npos) {
      Refuse(rule_.line, fmt::format("manca \"{}\" dietro {}", kClose[kind], Shown(rule_.text)));
    }
    const std::string_view within = text.substr(1, end - 1);
    switch (text.front()) {
      case '(':
        rule_.cq = Zone(within, 40);
        break;
      case '[':
        rule_.itu = Zone(within, 90);
        break;
      case '{':
        if (!IsContinent(within)) {
          Refuse(rule_.line, fmt::format("\"{}\" non è un continente", Shown(within)));
        }
        rule_.continent = within;
        break;
      default:  // where it lies, and its time
        break;
    }
    return text.substr(end + 1);
  }
  int Zone(std::string_view text, int most) const {
    const auto zone = WholeNumber(text, 1, most);
    if (!zone) Refuse(rule_.line, fmt::format("\"{}\" non è una zona", Shown(text)));
    return *zone;
  }

  Rule rule_;
};

void TakeAlias(std::string_view text, const Rule& country, std::int64_t line, Table& table,
               RuleTaker& rules) {
  Alias alias(text, country, line);
  Rule& rule = alias.Told();
  if (IsVersion(rule.text)) {
    table.version = rule.text;
    return;
  }
  rules.Take(std::move(rule));
}

// What all prefixes and calls of a country have of it, and the country itself.
Rule TakeCountry(Table& table, int number, std::string_view prefix, std::string_view area,
                 std::string_view name, std::string_view continent, std::string_view cq,
                 std::string_view itu, std::int64_t line) {
  Rule rule;
  rule.line = line;
  rule.entity = number;
  rule.area = area;
  rule.continent = Trimmed(continent);
  if (!IsContinent(rule.continent)) {
    Refuse(line, fmt::format("\"{}\" non è un continente", Shown(continent)));
  }
  const auto zoneCq = WholeNumber(cq, 1, 40), zoneItu = WholeNumber(itu, 1, 90);
  if (!zoneCq) Refuse(line, fmt::format("\"{}\" non è una zona CQ", Shown(cq)));
  if (!zoneItu) Refuse(line, fmt::format("\"{}\" non è una zona ITU", Shown(itu)));
  rule.cq = *zoneCq;
  rule.itu = *zoneItu;
  if (!area.empty()) return rule;
  if (table.entities.size() == kMostEntities) Refuse(line, "troppi country");
  Entity entity;
  entity.number = number;
  entity.country = Capitals(prefix) == "IS" ? "IS0" : Capitals(prefix);
  entity.name = base::IsAscii(name) ? std::string(name) : base::ValidUtf8(name);
  entity.continent = rule.continent;
  entity.cq = rule.cq;
  entity.itu = rule.itu;
  table.entities.push_back(std::move(entity));
  return rule;
}

std::int64_t LinesIn(std::string_view text) { return std::ranges::count(text, '\n'); }

std::string AreaOf(std::string_view starred) {
  const std::string prefix = Capitals(starred.substr(1));
  const auto* award = std::ranges::find(kAwards, prefix, &Award::prefix);
  return std::string(award == std::end(kAwards) ? std::string_view(prefix) : award->area);
}

}  // namespace

Table ReadCtyDat(std::string_view text, const KnownEntities& known) {
  Table table;
  table.format = "cty.dat";
  RuleTaker rules(table);
  std::int64_t line = 1;
  while (!Trimmed(text).empty()) {
    const std::size_t end = text.find(';');
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    line += LinesIn(text.substr(0, begin));
    if (end == std::string_view::npos) Refuse(line, "il file finisce a metà di un country");
    const std::string_view record = text.substr(begin, end - begin);
    text.remove_prefix(end + 1);
    const std::size_t header = record.find('\n');
    if (header == std::string_view::npos) Refuse(line, "un country senza prefissi");
    const std::vector<std::string_view> facts = SplitAt(record.substr(0, header), ':');
    if (facts.size() < 8) {
      Refuse(line, fmt::format("\"{}\" non è l'inizio di un country", Shown(record)));
    }
    const std::string_view prefix = Trimmed(facts[7]);
    int number = 0;
    std::string area;
    if (prefix.starts_with('*')) {
      area = AreaOf(prefix);
      const auto* award = std::ranges::find(kAwards, area, &Award::area);
      if (award != std::end(kAwards)) number = award->entity;
    } else {
      const std::string code = Capitals(prefix);
      number = known.numberOf(code == "IS" ? "IS0" : code);
    }
    if (number == 0) {
      Refuse(line, fmt::format("il country {} ({}) non è noto: serve il file cty.csv, che ne dà il "
                               "numero",
                               Shown(facts[0]), Shown(prefix)));
    }
    const Rule country = TakeCountry(table, number, prefix, area, Trimmed(facts[0]), facts[3],
                                     facts[1], facts[2], line);
    std::int64_t at = line;
    for (std::string_view alias : SplitAt(record.substr(header), ',')) {
      const std::size_t first = std::min(alias.find_first_not_of(" \t\r\n"), alias.size());
      at += LinesIn(alias.substr(0, first));
      if (!Trimmed(alias).empty()) TakeAlias(Trimmed(alias), country, at, table, rules);
      at += LinesIn(alias.substr(first));
    }
    line += LinesIn(record);
  }
  return table;
}

Table ReadCtyCsv(std::string_view text) {
  Table table;
  table.format = "cty.csv";
  RuleTaker rules(table);
  std::int64_t line = 0;
  for (std::string_view row : SplitAt(text, '\n')) {
    ++line;
    row = Trimmed(row);
    if (row.empty()) continue;
    const std::vector<std::string_view> cells = SplitAt(row, ',');
    if (cells.size() < 10) Refuse(line, fmt::format("\"{}\" non è un country", Shown(row)));
    if (!row.ends_with(';')) Refuse(line, "manca \";\" alla fine");
    // A name may hold a comma; what stands behind it never does.
    const std::size_t behind = cells.size() - 10;
    const auto number = WholeNumber(cells[2 + behind], 1, kLargestNumber);
    if (!number) {
      Refuse(line, fmt::format("\"{}\" non è il numero di un country", Shown(cells[2 + behind])));
    }
    const bool starred = cells[0].starts_with('*');
    const Rule country =
        TakeCountry(table, *number, cells[0], starred ? AreaOf(cells[0]) : "", Trimmed(cells[1]),
                    cells[3 + behind], cells[4 + behind], cells[5 + behind], line);
    std::string_view aliases = cells.back();
    aliases.remove_suffix(1);
    for (const std::string_view alias : SplitAt(aliases, ' ')) {
      if (!alias.empty()) TakeAlias(alias, country, line, table, rules);
    }
  }
  return table;
}

}  // namespace brenvo::entities
