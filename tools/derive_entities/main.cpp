// Makes the table of countries by date that is delivered.
#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <map>
#include <set>
#include <stdexcept>
#include <string>

#include "adif/dxcc_entities.h"
#include "base/csv.h"
#include "base/text.h"
#include "entities/read_tables.h"

namespace {

using namespace brenvo;

// The day from which the list of dated countries counts; it tells nothing of those from then on.
constexpr std::string_view kFirstDay = "1945-11-15";

std::map<std::string, std::string> NamesIn(const char* countries) {
  const base::CsvTable table = base::ReadCsv(countries);
  const std::size_t code = table.Column("Country"), name = table.Column("Descrizione");
  std::map<std::string, std::string> names;
  for (const auto& row : table.Rows) names[row.Cells[code]] = row.Cells[name];
  return names;
}

// Told of countries that are no more: zones and continents. Several zones are none.
void TakeZones(const char* file, std::map<int, entities::Entity>& all) {
  const base::CsvTable table = base::ReadCsv(file);
  const std::size_t number = table.Column("adif_dxcc"), continent = table.Column("continent"),
                    cq = table.Column("cq_zone"), itu = table.Column("itu_zone");
  const auto zone = [](const std::string& text) {
    return text.find('/') == std::string::npos ? std::stoi(text) : 0;
  };
  for (const auto& row : table.Rows) {
    entities::Entity& entity = all[std::stoi(row.Cells[number])];
    entity.continent = row.Cells[continent];
    entity.cq = zone(row.Cells[cq]);
    entity.itu = zone(row.Cells[itu]);
  }
}

// "02:01,03:01": a zone that is not the same in all of these is none.
void TakePairs(const std::string& pairs, entities::Entity& entity) {
  std::set<std::string> itu, cq;
  for (std::size_t start = 0; start < pairs.size();) {
    const std::size_t end = std::min(pairs.find(',', start), pairs.size());
    const std::string pair = pairs.substr(start, end - start);
    itu.insert(pair.substr(0, pair.find(':')));
    cq.insert(pair.substr(pair.find(':') + 1));
    start = end + 1;
  }
  if (itu.size() > 1) entity.itu = 0;
  if (cq.size() > 1) entity.cq = 0;
}

// The day of an end is told as the first one on which it is no more.
void TakeTimes(const char* file, std::map<int, entities::Entity>& all) {
  constexpr std::int64_t kDay = 24 * 60 * 60;
  const base::CsvTable table = base::ReadCsv(file);
  const std::size_t number = table.Column("adif"), from = table.Column("valid_from"),
                    to = table.Column("valid_to"), pairs = table.Column("itu_cq_pairs");
  for (const auto& row : table.Rows) {
    const auto found = all.find(std::stoi(row.Cells[number]));
    if (found == all.end()) continue;
    TakePairs(row.Cells[pairs], found->second);
    const auto day = [](const std::string& text) { return base::ParseIso(text); };
    if (row.Cells[from] != kFirstDay) found->second.valid.from = day(row.Cells[from])->Seconds();
    if (!row.Cells[to].empty()) {
      found->second.valid.to = entities::DaysFrom({}, day(row.Cells[to])->Later(-kDay)).to;
    }
  }
}

int NumberOf(std::string_view prefix) {
  const adif::DxccEntity* entity = adif::FindDxccEntityOf(prefix);
  return entity == nullptr ? 0 : entity->number;
}

entities::Table Derive(const char* const* files) {
  const entities::Table today =
      entities::ReadTableFile(files[0], entities::KnownEntities{.numberOf = NumberOf});
  const entities::Table history = entities::ReadTableFile(files[1], {});
  const std::map<std::string, std::string> names = NamesIn(files[4]);
  std::map<int, entities::Entity> all;
  TakeZones(files[3], all);
  TakeTimes(files[2], all);
  entities::Table made;
  for (const entities::Entity& told : history.entities) all[told.number].valid = told.valid;
  for (auto& [number, entity] : all) {
    const adif::DxccEntity* known = adif::FindDxccEntity(number);
    if (known == nullptr) throw std::runtime_error(fmt::format("no country {}", number));
    entity.number = number;
    entity.country = known->country;
    entity.name = names.at(entity.country);
    made.entities.push_back(entity);
  }
  // What is told with its days is not told without.
  std::set<std::string> dated;
  for (const entities::Rule& rule : history.rules) {
    if (rule.kind == entities::RuleKind::kCall) dated.insert(rule.text);
    made.rules.push_back(rule);
  }
  for (entities::Rule rule : today.rules) {
    if (rule.kind == entities::RuleKind::kCall && dated.contains(rule.text)) continue;
    const entities::Entity& entity = all.at(rule.entity);
    if (rule.continent == entity.continent) rule.continent.clear();
    if (rule.cq == entity.cq) rule.cq = 0;
    if (rule.itu == entity.itu) rule.itu = 0;
    made.rules.push_back(std::move(rule));
  }
  return made;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 6) {
    std::fputs(
        "usage: derive_entities COUNTRY_FILE HISTORY DATED_ENTITIES ENTITIES Country.csv"
        " > Entita.csv\n",
        stderr);
    return 2;
  }
  try {
    const std::string text = brenvo::entities::OwnTableText(Derive(argv + 1));
    std::fwrite(text.data(), 1, text.size(), stdout);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "derive_entities: %s\n", error.what());
    return 1;
  }
  return 0;
}
