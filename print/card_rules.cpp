#include "card_rules.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

#include "base/csv.h"
#include "base/number.h"
#include "base/system_reason.h"
#include "base/text.h"
#include "due_cards.h"

namespace brenvo::print {
namespace {

constexpr std::string_view kHome = "CASA", kHomeOfExamples = "I";
constexpr std::string_view kWantedColumn = "QslDaInviare", kReceivedColumn = "QslRicevuta";
constexpr const char* kHeadings[] = {"Regola", "Nome", "Campi", "Valori", "Solo per", "Non per"};

enum class RuleKind { kNote, kNever, kAsked, kFirst, kDigit, kBureau, kExample };
constexpr std::pair<std::string_view, RuleKind> kRuleNames[] = {
    {"Nota", RuleKind::kNote},      {"Mai", RuleKind::kNever},   {"Chiesta", RuleKind::kAsked},
    {"Prima", RuleKind::kFirst},    {"Cifra", RuleKind::kDigit}, {"Bureau", RuleKind::kBureau},
    {"Esempio", RuleKind::kExample}};

constexpr std::pair<std::string_view, CardField> kFieldNames[] = {
    {"Call", CardField::kCall},         {"Manager", CardField::kManager},
    {"Prefisso", CardField::kPrefisso}, {"Country", CardField::kCountry},
    {"Banda", CardField::kBanda},       {"Modo", CardField::kModo},
    {"Gruppo", CardField::kGruppo}};

struct RuleRow {
  std::string where;  // the file and the line
  RuleKind kind = RuleKind::kNote;
  std::string name, fields, values, only, except;
};

[[noreturn]] void Refuse(const RuleRow& row, const std::string& what) {
  throw std::runtime_error(row.where + ": " + what);
}

std::string InCapitals(std::string_view text) { return base::UpperAscii(base::Trim(text)); }

// Trimmed, without empty ones.
std::vector<std::string> Parts(std::string_view text, char between) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(between), text.size());
    std::string part = base::Trim(text.substr(0, end));
    if (!part.empty()) parts.push_back(std::move(part));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parts;
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words = Parts(text, ';');
  for (std::string& word : words) word = base::UpperAscii(word);
  return words;
}

std::vector<RuleRow> RowsIn(std::string_view file, std::string_view text) {
  base::CsvTable table;
  try {
    table = base::ParseCsv(text);
  } catch (const std::runtime_error& failure) {
    // "line 12: ...", in words that the operator does not read.
    const std::string line = base::PlainNumber(base::Val(failure.what() + sizeof "line"));
    throw std::runtime_error(fmt::format(
        "{}, riga {}: non sono sei celle, con una virgola tra l'una e l'altra", file, line));
  }
  if (!std::ranges::equal(table.Headings, kHeadings)) {
    throw std::runtime_error(
        fmt::format("{}, riga 1: le colonne sono {}", file, fmt::join(kHeadings, ",")));
  }
  std::vector<RuleRow> rows;
  for (const base::CsvTable::Row& line : table.Rows) {
    RuleRow row;
    row.where = fmt::format("{}, riga {}", file, line.Line);
    const auto named = std::ranges::find_if(
        kRuleNames, [&](const auto& rule) { return base::SameText(rule.first, line.Cells[0]); });
    if (named == std::end(kRuleNames)) {
      Refuse(row, fmt::format("la regola \"{}\" non esiste", line.Cells[0]));
    }
    row.kind = named->second;
    if (row.kind == RuleKind::kNote) continue;
    row.name = base::Trim(line.Cells[1]);
    row.fields = base::Trim(line.Cells[2]);
    row.values = base::Trim(line.Cells[3]);
    row.only = base::Trim(line.Cells[4]);
    row.except = base::Trim(line.Cells[5]);
    if (row.name.empty()) Refuse(row, "manca il nome");
    const auto again = std::ranges::find_if(rows, [&](const RuleRow& each) {
      return each.kind == row.kind && base::SameText(each.name, row.name);
    });
    if (again != rows.end() && row.kind != RuleKind::kExample) {
      Refuse(row, fmt::format("{} {} è già scritto", line.Cells[0], row.name));
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<CardField> FieldsOf(const RuleRow& row) {
  std::vector<CardField> fields;
  for (const std::string& name : Parts(row.fields, ';')) {
    const auto known = std::ranges::find_if(
        kFieldNames, [&](const auto& field) { return base::SameText(field.first, name); });
    if (known == std::end(kFieldNames)) {
      std::vector<std::string_view> names;
      for (const auto& field : kFieldNames) names.push_back(field.first);
      Refuse(row, fmt::format("\"{}\" non è tra {}", name, fmt::join(names, "; ")));
    }
    fields.push_back(known->second);
  }
  return fields;
}

// A rule without fields is none: so the operator turns one of ours off.
void Read(const RuleRow& row, CardRules& rules) {
  if (row.kind == RuleKind::kExample) return;
  const bool hasCountries = row.kind == RuleKind::kAsked || row.kind == RuleKind::kFirst;
  if (!hasCountries && !(row.only.empty() && row.except.empty())) {
    Refuse(row, "solo Chiesta e Prima hanno Solo per e Non per");
  }
  if (hasCountries && !row.values.empty()) Refuse(row, "Chiesta e Prima non hanno valori");
  if (row.fields.empty()) return;
  if (row.kind == RuleKind::kDigit || row.kind == RuleKind::kBureau) {
    if (!base::SameText(row.fields, "Country")) {
      Refuse(row, "il campo di Cifra e di Bureau è Country");
    }
    std::vector<std::string> countries = Words(row.values);
    if (row.kind == RuleKind::kBureau) {
      rules.oneBureau.push_back(std::move(countries));
    } else {
      std::ranges::move(countries, std::back_inserter(rules.byDigit));
    }
    return;
  }
  CardRules::Reason reason{
      CardRules::Reason::Kind::kFirst, row.name, {}, Words(row.only), Words(row.except)};
  switch (row.kind) {
    case RuleKind::kNever: {
      const std::vector<CardField> fields = FieldsOf(row);
      if (fields.size() != 1) Refuse(row, "Mai ha un campo solo");
      if (row.values.empty()) Refuse(row, "mancano i valori");
      rules.never.push_back({row.name, fields[0], Words(row.values)});
      return;
    }
    case RuleKind::kAsked: {
      const bool wanted = base::SameText(row.fields, kWantedColumn);
      if (!wanted && !base::SameText(row.fields, kReceivedColumn)) {
        Refuse(row, fmt::format("il campo di Chiesta è {} o {}", kWantedColumn, kReceivedColumn));
      }
      reason.kind = wanted ? CardRules::Reason::Kind::kWanted : CardRules::Reason::Kind::kReceived;
      break;
    }
    default:
      reason.fields = FieldsOf(row);
  }
  rules.reasons.push_back(std::move(reason));
}

// "DL1ABC DL 20m CW ricevuta": call, country, band, mode, then what is known of the cards.
CardContact ContactOf(const RuleRow& row, std::string_view text, std::int64_t qsoNr) {
  const std::vector<std::string> words = Parts(text, ' ');
  CardContact contact;
  if (words.size() < 4) Refuse(row, "un qso di esempio è Call Country Banda Modo");
  contact.qsoNr = qsoNr;
  contact.Call = words[0];
  contact.Country = words[1];
  contact.Banda = words[2];
  contact.Modo = words[3];
  for (std::size_t i = 4; i < words.size(); ++i) {
    bool* const flag = base::SameText(words[i], "segnata")    ? &contact.wanted
                       : base::SameText(words[i], "ricevuta") ? &contact.received
                       : base::SameText(words[i], "inviata")  ? &contact.sent
                                                              : nullptr;
    if (flag == nullptr) {
      Refuse(row, fmt::format("\"{}\" non è segnata, ricevuta o inviata", words[i]));
    }
    *flag = true;
  }
  return contact;
}

void Try(const RuleRow& row, const CardRules& rules, const worked::Rules& modes) {
  DueCards cards(rules, modes, kHomeOfExamples);
  std::int64_t count = 0;
  for (const std::string& text : Parts(row.fields, ';')) cards.See(ContactOf(row, text, ++count));
  const auto due = cards.Finish();
  std::string got;
  for (std::int64_t i = 1; i <= count; ++i) {
    got += fmt::format("{}{}", i == 1 ? "" : " ", due.contains(i) ? "sì" : "no");
  }
  if (got != row.values) {
    Refuse(row, fmt::format("l'esempio dice \"{}\", le regole danno \"{}\"", row.values, got));
  }
}

// Rows of `own` take the place of those of `delivered` that are of the same rule and name.
CardRules RulesOf(const worked::Rules& modes, const std::vector<RuleRow>& delivered,
                  const std::vector<RuleRow>& own) {
  std::set<std::pair<RuleKind, std::string>> replaced;
  for (const RuleRow& row : own) replaced.emplace(row.kind, InCapitals(row.name));
  CardRules rules;
  for (const RuleRow& row : delivered) {
    if (!replaced.contains({row.kind, InCapitals(row.name)})) Read(row, rules);
  }
  for (const RuleRow& row : own) Read(row, rules);
  for (const RuleRow& row : own.empty() ? delivered : own) {
    if (row.kind == RuleKind::kExample) Try(row, rules, modes);
  }
  return rules;
}

std::string ContentOf(const std::filesystem::path& file) {
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

std::vector<std::string> HomeOf(const CardRules& rules, std::string_view country) {
  const std::string word = InCapitals(country);
  std::vector<std::string> home = {word};
  for (const std::vector<std::string>& together : rules.oneBureau) {
    if (std::ranges::find(together, word) == together.end()) continue;
    home.insert(home.end(), together.begin(), together.end());
  }
  return home;
}

bool IsInCountries(const std::vector<std::string>& countries, std::string_view country,
                   const std::vector<std::string>& home) {
  const std::string word = InCapitals(country);
  const auto holds = [](const std::vector<std::string>& list, std::string_view each) {
    return std::ranges::find(list, each) != list.end();
  };
  return holds(countries, word) || (holds(countries, kHome) && holds(home, word));
}

CardRules ParseCardRules(const worked::Rules& modes, std::string_view delivered,
                         std::string_view own) {
  const std::vector<RuleRow> ours = RowsIn(kDeliveredCardRules, delivered);
  CardRules rules = RulesOf(modes, ours, {});
  return own.empty() ? rules : RulesOf(modes, ours, RowsIn(kOwnCardRules, own));
}

CardRules LoadCardRules(core::Session& session, const worked::Rules& modes, std::string& fault) {
  const auto own = session.File(kOwnCardRules);
  std::error_code ignored;
  for (const bool withOwn : {true, false}) {
    try {
      return ParseCardRules(modes, ContentOf(session.File(kDeliveredCardRules)),
                            withOwn && std::filesystem::exists(own, ignored) ? ContentOf(own) : "");
    } catch (const std::runtime_error& failure) {
      if (fault.empty()) fault = failure.what();
    }
  }
  return {};
}

}  // namespace brenvo::print
