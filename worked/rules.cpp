#include "worked/rules.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <utility>

#include "base/csv.h"
#include "base/number.h"
#include "base/system_reason.h"
#include "folding.h"

namespace brenvo::worked {
namespace {

constexpr std::string_view kCardColumn = "QslRicevuta", kModeColumn = "Modo",
                           kPropagationColumn = "Propagazione";
constexpr std::string_view kYes = "si", kNo = "no", kConfirmed = "confermato", kWorked = "lavorato";

constexpr std::array<std::string_view, kKinds> kKindNames = {"Call",      "Prefisso", "Country",
                                                             "Zona CQ",   "Zona ITU", "Continente",
                                                             "Provincia", "Square",   "Square 6"};

enum class RuleKind { kNote, kMode, kSatellite, kProvince, kConfirmation, kExample };
constexpr std::pair<std::string_view, RuleKind> kRuleNames[] = {
    {"Nota", RuleKind::kNote},
    {"Modo", RuleKind::kMode},
    {"Satellite", RuleKind::kSatellite},
    {"Provincia", RuleKind::kProvince},
    {"Conferma", RuleKind::kConfirmation},
    {"Esempio", RuleKind::kExample}};

struct Row {
  std::string where;  // the file and the line
  RuleKind kind = RuleKind::kNote;
  std::string name, means, field, values, notFor;
};

[[noreturn]] void Fail(const Row& row, const std::string& what) {
  throw std::runtime_error(row.where + ": " + what);
}

std::vector<std::string> Pieces(std::string_view text, char between) {
  std::vector<std::string> pieces;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(between), text.size());
    std::string piece = base::Trim(text.substr(0, end));
    if (!piece.empty()) pieces.push_back(std::move(piece));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pieces;
}

std::vector<Row> RowsOf(std::string_view file, std::string_view text) {
  base::CsvTable table;
  try {
    table = base::ParseCsv(text);
  } catch (const std::runtime_error& failure) {
    // "line 12: ...", in words that the operator does not read.
    const std::string line = base::PlainNumber(base::Val(failure.what() + sizeof "line"));
    throw std::runtime_error(fmt::format(
        "{}, riga {}: non sono sei celle, con una virgola tra l'una e l'altra", file, line));
  }
  static constexpr const char* kHeadings[] = {"Regola", "Nome",   "Vale",
                                              "Campo",  "Valori", "Non per"};
  if (!std::ranges::equal(table.Headings, kHeadings)) {
    throw std::runtime_error(
        fmt::format("{}, riga 1: le colonne sono Regola,Nome,Vale,Campo,Valori,Non per", file));
  }
  std::vector<Row> rows;
  for (const base::CsvTable::Row& line : table.Rows) {
    Row row;
    row.where = fmt::format("{}, riga {}", file, line.Line);
    const auto named = std::ranges::find_if(
        kRuleNames, [&](const auto& rule) { return base::SameText(rule.first, line.Cells[0]); });
    if (named == std::end(kRuleNames)) {
      Fail(row, fmt::format("la regola \"{}\" non esiste", line.Cells[0]));
    }
    row.kind = named->second;
    if (row.kind == RuleKind::kNote) continue;
    row.name = base::Trim(line.Cells[1]);
    row.means = base::Trim(line.Cells[2]);
    row.field = base::Trim(line.Cells[3]);
    row.values = base::Trim(line.Cells[4]);
    row.notFor = base::Trim(line.Cells[5]);
    if (row.name.empty()) Fail(row, "manca il nome");
    rows.push_back(std::move(row));
  }
  return rows;
}

std::optional<Kind> FindKind(std::string_view name) {
  const auto at = std::ranges::find_if(
      kKindNames, [&](std::string_view each) { return base::SameText(each, name); });
  if (at == kKindNames.end()) return std::nullopt;
  return static_cast<Kind>(at - kKindNames.begin());
}

}  // namespace

std::string_view NameOf(Kind kind) { return kKindNames[static_cast<std::size_t>(kind)]; }

Rules::Rules() : groups_(1) {}

std::optional<Group> Rules::FindGroup(std::string_view name) const {
  for (std::size_t i = 1; i < groups_.size(); ++i) {
    if (base::SameText(groups_[i], WithoutTrailingBlanks(name))) return static_cast<Group>(i);
  }
  return std::nullopt;
}

ModeMeaning Rules::MeaningOf(std::string_view mode) const {
  const std::string folded = Folded(mode);
  if (const auto found = modes_.find(folded); found != modes_.end()) return found->second;
  for (const auto& [beginning, meaning] : modeBeginnings_) {
    if (folded.starts_with(beginning)) return meaning;
  }
  return {};
}

bool Rules::IsSatellite(std::string_view propagation) const {
  return std::ranges::find(satellitePropagations_, Folded(propagation)) !=
         satellitePropagations_.end();
}

std::string_view Rules::CountryOfProvinces(std::string_view country) const {
  if (countriesOfProvinces_.empty()) return country;
  const auto found = countriesOfProvinces_.find(Folded(country));
  return found == countriesOfProvinces_.end() ? country : std::string_view(found->second);
}

ServiceSet Rules::ByField(std::string_view field, std::string_view value) const {
  ServiceSet services = 0;
  for (const Confirming& each : confirming_) {
    if (base::SameText(each.field, WithoutTrailingBlanks(field)) &&
        base::SameText(each.value, base::Trim(value))) {
      services |= each.service;
    }
  }
  return services;
}

class RulesReader {
 public:
  // Rows of `own` take the place of those of `delivered` that are of the same name.
  static Rules Read(const std::vector<Row>& delivered, const std::vector<Row>& own) {
    std::set<std::pair<RuleKind, std::string>> replaced;
    for (const Row& row : own) replaced.emplace(row.kind, Folded(row.name));
    RulesReader reader;
    for (const Row& row : delivered) {
      if (!replaced.contains({row.kind, Folded(row.name)})) reader.Read(row);
    }
    for (const Row& row : own) reader.Read(row);
    std::ranges::sort(reader.rules_.modeBeginnings_,
                      [](const auto& a, const auto& b) { return a.first.size() > b.first.size(); });
    const auto& examples = own.empty() ? delivered : own;
    for (const Row& row : examples) {
      if (row.kind == RuleKind::kExample) reader.Try(row);
    }
    return reader.rules_;
  }

 private:
  void Read(const Row& row) {
    switch (row.kind) {
      case RuleKind::kMode:
        return ReadMode(row);
      case RuleKind::kSatellite:
        return ReadSatellite(row);
      case RuleKind::kProvince:
        if (row.means.empty()) Fail(row, "manca il country per cui valgono le provincie");
        rules_.countriesOfProvinces_[Folded(row.name)] = row.means;
        return;
      case RuleKind::kConfirmation:
        return ReadConfirmation(row);
      case RuleKind::kNote:
      case RuleKind::kExample:
        return;
    }
  }

  Group GroupNamed(const Row& row) {
    if (row.means.empty()) return kNoGroup;
    if (const auto known = rules_.FindGroup(row.means)) return *known;
    if (rules_.groups_.size() > Rules::kMostGroups) {
      Fail(row, fmt::format("i gruppi di modi sono più di {}", Rules::kMostGroups));
    }
    rules_.groups_.push_back(row.means);
    return static_cast<Group>(rules_.groups_.size() - 1);
  }

  void ReadMode(const Row& row) {
    const ModeMeaning meaning{GroupNamed(row), false};
    const std::string name = Folded(row.name);
    if (name.ends_with('*')) {
      rules_.modeBeginnings_.emplace_back(name.substr(0, name.size() - 1), meaning);
    } else if (!rules_.modes_.emplace(name, meaning).second) {
      Fail(row, fmt::format("il modo {} è già scritto", row.name));
    }
  }

  void ReadSatellite(const Row& row) {
    if (base::SameText(row.field, kPropagationColumn)) {
      rules_.satellitePropagations_.push_back(Folded(row.name));
    } else if (base::SameText(row.field, kModeColumn)) {
      rules_.modes_[Folded(row.name)] = {kNoGroup, true};
    } else {
      Fail(row, fmt::format("il campo di un satellite è {} o {}", kModeColumn, kPropagationColumn));
    }
  }

  void ReadConfirmation(const Row& row) {
    if (row.field.empty()) return;  // a service that confirms nothing
    auto& names = rules_.serviceNames_;
    auto at = std::ranges::find_if(
        names, [&](const std::string& name) { return base::SameText(name, row.name); });
    if (at == names.end()) {
      if (names.size() == Rules::kMostServices) {
        Fail(row, fmt::format("i servizi sono più di {}", Rules::kMostServices));
      }
      names.push_back(row.name);
      at = names.end() - 1;
      for (ServiceSet& counting : rules_.counting_) counting |= BitOf(at - names.begin());
    }
    const ServiceSet service = BitOf(at - names.begin());
    if (base::SameText(row.field, kCardColumn)) {
      if (!row.values.empty()) Fail(row, fmt::format("{} non ha valori", kCardColumn));
      rules_.byCard_ |= service;
    } else {
      const auto values = Pieces(row.values, ' ');
      if (values.empty()) Fail(row, "mancano i valori che confermano");
      const std::string field = Folded(row.field);
      if (std::ranges::find(rules_.fieldNames_, field) == rules_.fieldNames_.end()) {
        rules_.fieldNames_.push_back(field);
      }
      for (const std::string& value : values) rules_.confirming_.push_back({field, value, service});
    }
    for (const std::string& name : Pieces(row.notFor, ';')) {
      const auto kind = FindKind(name);
      if (!kind) Fail(row, fmt::format("\"{}\" non è tra {}", name, fmt::join(kKindNames, "; ")));
      rules_.counting_[static_cast<std::size_t>(*kind)] &= static_cast<ServiceSet>(~service);
    }
  }

  static ServiceSet BitOf(std::ptrdiff_t place) { return static_cast<ServiceSet>(1U << place); }

  // What an example says comes out, or it fails with what comes out instead.
  void Try(const Row& row) const {
    const std::string got = OutcomeOf(row);
    if (!base::SameText(got, row.means)) {
      Fail(row, fmt::format("l'esempio dice \"{}\", le regole danno \"{}\"", row.means, got));
    }
  }

  std::string OutcomeOf(const Row& row) const {
    const auto yes = [](bool is) { return std::string(is ? kYes : kNo); };
    if (base::SameText(row.name, "Gruppo")) {
      if (!base::SameText(row.field, kModeColumn)) Fail(row, "il gruppo è di un Modo");
      return rules_.groups_[rules_.MeaningOf(row.values).group];
    }
    if (base::SameText(row.name, "Satellite")) {
      return yes(base::SameText(row.field, kModeColumn) ? rules_.MeaningOf(row.values).satellite
                                                        : rules_.IsSatellite(row.values));
    }
    if (base::SameText(row.name, "Provincie di")) {
      return std::string(rules_.CountryOfProvinces(row.values));
    }
    const auto kind = FindKind(row.name);
    if (!kind) {
      Fail(row, fmt::format("un esempio è di Gruppo; Satellite; Provincie di; {}",
                            fmt::join(kKindNames, "; ")));
    }
    const ServiceSet services = base::SameText(row.field, kCardColumn)
                                    ? rules_.ByCard()
                                    : rules_.ByField(row.field, row.values);
    return std::string((services & rules_.CountingFor(*kind)) != 0 ? kConfirmed : kWorked);
  }

  Rules rules_;
};

namespace {

std::string TextOf(const std::filesystem::path& file) {
  errno = 0;
  std::ifstream in(file, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(in), {}};
  if (!in) {
    throw std::runtime_error(fmt::format("{}: {}", file.filename().string(),
                                         base::ReasonText({errno, std::generic_category()})));
  }
  return text;
}

}  // namespace

Rules ParseRules(std::string_view delivered, std::string_view own) {
  const std::vector<Row> ours = RowsOf(kDeliveredRules, delivered);
  Rules rules = RulesReader::Read(ours, {});
  if (own.empty()) return rules;
  return RulesReader::Read(ours, RowsOf(kOwnRules, own));
}

Rules ReadRules(const std::filesystem::path& delivered, const std::filesystem::path& own) {
  const std::string text = TextOf(delivered);
  std::error_code ignored;
  return ParseRules(text, std::filesystem::exists(own, ignored) ? TextOf(own) : "");
}

}  // namespace brenvo::worked
