#include "selection_words.h"

#include <fmt/format.h>

#include <cstdint>
#include <vector>

#include "base/text.h"

namespace brenvo::awards {
namespace {

constexpr std::string_view kWhere = "WHERE ", kAnd = " AND ";
constexpr std::size_t kMostNamed = 4;

// The conditions; what stands in quotes is not looked at.
std::vector<std::string> Conditions(std::string_view where) {
  if (where.starts_with(kWhere)) where.remove_prefix(kWhere.size());
  std::vector<std::string> conditions;
  bool quoted = false;
  std::size_t from = 0;
  for (std::size_t at = 0; at < where.size(); ++at) {
    if (where[at] == '\'') quoted = !quoted;
    if (quoted || !where.substr(at).starts_with(kAnd)) continue;
    conditions.emplace_back(where.substr(from, at - from));
    from = at + kAnd.size();
    at = from - 1;
  }
  if (from < where.size()) conditions.emplace_back(where.substr(from));
  return conditions;
}

// What stands in quotes, piece by piece.
std::vector<std::string> Quoted(std::string_view condition) {
  std::vector<std::string> values;
  for (std::size_t open = condition.find('\''); open != condition.npos;) {
    const std::size_t close = condition.find('\'', open + 1);
    if (close == condition.npos) break;
    values.emplace_back(condition.substr(open + 1, close - open - 1));
    open = condition.find('\'', close + 1);
  }
  return values;
}

std::int64_t CountOf(core::Session& session, std::string_view table) {
  return session.Db.OpenSnapshot(fmt::format("select Count(*) from {}", table))
      ->Field(std::size_t{0})
      .Integer();
}

// The chosen entries; `all` where they are as many as the table has.
std::string Chosen(core::Session& session, std::string_view condition, std::string_view table,
                   std::string_view all) {
  const std::vector<std::string> values = Quoted(condition);
  if (static_cast<std::int64_t>(values.size()) == CountOf(session, table)) return std::string(all);
  std::string words;
  for (std::size_t i = 0; i < values.size() && i < kMostNamed; ++i) {
    const std::string value = base::Trim(values[i]);
    words += (words.empty() ? "" : " ") + (value.empty() ? "nessuna" : value);
  }
  if (values.size() > kMostNamed) words += fmt::format(" e altre {}", values.size() - kMostNamed);
  return words;
}

std::string Join(const std::vector<std::string>& values, std::string_view between) {
  std::string words;
  for (const std::string& value : values) {
    words += words.empty() ? "" : between;
    words += value;
  }
  return words;
}

}  // namespace

std::string SelectionInWords(core::Session& session, std::string_view where) {
  std::string band = "tutte le bande", modes = "tutti i modi", kinds = "tutte le propagazioni";
  std::vector<std::string> rest;
  for (const std::string& condition : Conditions(where)) {
    const std::vector<std::string> values = Quoted(condition);
    const std::string value = values.empty() ? std::string() : base::Trim(values.front());
    if (condition.starts_with("Banda=")) {
      band = value;
    } else if (condition.starts_with("Modo in ")) {
      modes = Chosen(session, condition, "Modi", modes);
    } else if (condition.starts_with("Propagazione in ")) {
      kinds = Chosen(session, condition, "Propagazione", kinds);
      if (kinds != "tutte le propagazioni") kinds = "propagazione " + kinds;
    } else if (condition.starts_with("DateValue(DataQso)>=")) {
      rest.push_back("dal " + value);
    } else if (condition.starts_with("DateValue(DataQso)<=")) {
      rest.push_back("fino al " + value);
    } else if (condition.starts_with("Country=") || condition.starts_with("(Country=")) {
      rest.push_back("country " + Join(values, " e "));
    } else if (condition == "QsldaInviare=True") {
      rest.emplace_back("Qsl da inviare");
    } else if (condition == "QslRicevuta=True") {
      rest.emplace_back("Qsl ricevuta");
    } else if (condition == "QslInviata=True") {
      rest.emplace_back("Qsl inviata");
    } else if (condition.starts_with("Note LIKE ") && value.size() >= 2) {
      rest.push_back("nota con " + value.substr(1, value.size() - 2));
    } else {
      rest.push_back(condition);
    }
  }
  rest.insert(rest.begin(), {band, modes, kinds});
  return Join(rest, ", ");
}

}  // namespace brenvo::awards
