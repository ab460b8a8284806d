// Who a call was on its day, by the table that is delivered and those that the operator has loaded.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "entities/read_tables.h"
#include "entities/resolver.h"
#include "forms/signal.h"

namespace brenvo::engine {
class Database;
}

namespace brenvo::core {

class Session;

inline constexpr std::string_view kEntitiesFile = "Entita.csv";

// A table that the operator has loaded: a row of EntitaCarichi.
struct EntityLoad {
  std::int64_t number = 0;  // rising with the time
  std::string file, format, version;
  base::DateTime when;
  std::int64_t rules = 0;
  bool inUse = false;
  std::int64_t replaces = 0;  // the load whose place it has taken, 0 for none
};
// By their numbers.
std::vector<EntityLoad> EntityLoads(engine::Database& database);

// The session's own. What it answers lives until the tables change or the database is closed.
class CountriesByDate {
 public:
  explicit CountriesByDate(Session& session);

  // The tables are read with the first question.
  entities::Answer Of(std::string_view call, base::DateTime utc);
  const entities::Resolver& Rules();
  // What has gone wrong with the delivered table or one that was loaded; empty when nothing has.
  const std::string& Fault();
  // "Entita.csv, cty.csv (VER20260611)", the one that counts most last.
  std::string TablesText();

  // How files name the countries.
  entities::KnownEntities Known();
  // The rules as they would be with that table in its place.
  entities::Resolver With(const entities::Table& table);
  // All in one step, or nothing. The load that brought a file of the same name goes out of use.
  void Apply(const entities::Table& table);
  // The last load that is in use goes out of it, and what it had replaced comes back. Nothing when
  // there is none.
  std::optional<EntityLoad> TakeBack();

  // Other rules hold than before.
  forms::Signal<> Changed;

 private:
  struct Held;
  Held& All();
  void Forget();

  Session& session_;
  std::shared_ptr<Held> held_;  // null until they are asked for
  forms::Subscription closing_;
};

// Loads that are in use no more go: part of a compaction, within a transaction.
void DropEntityLoads(engine::Database& database);

// The rule that has given a contact its country.
struct AppliedRule {
  std::string country;     // the code that it gave; empty for none
  std::string why;         // in words, with its days
  std::string rule, file;  // its text, and the file that says so; empty without one
  friend bool operator==(const AppliedRule&, const AppliedRule&) = default;
};
AppliedRule AppliedRuleOf(std::string_view call, const entities::Answer& answer);

// What is kept beside a contact: table EntitaQso.
struct EntityOfContact {
  std::optional<int> told;  // the number that a log file has told; 0 for no country
  bool chosen = false;      // the operator leaves his own
  // Where it was not the table of prefixes. Of a contact whose country is another one by now, this
  // tells nothing any more.
  std::optional<AppliedRule> applied;
};
EntityOfContact EntityKeptOf(engine::Database& database, std::int64_t qsoNr);
// Each within a transaction.
void KeepChosenEntity(engine::Database& database, std::int64_t qsoNr, bool chosen);
void KeepToldEntity(engine::Database& database, std::int64_t qsoNr, std::optional<int> number);
void KeepAppliedRule(engine::Database& database, std::int64_t qsoNr, const AppliedRule& applied);

// Why a contact has its country, or who its call was on its day, for the operator; empty where
// nothing is known. `qsoNr` is 0 for none that is stored, `country` the code that it has.
std::string WhyCountry(Session& session, std::int64_t qsoNr, std::string_view call,
                       base::DateTime utc, std::string_view country);

}  // namespace brenvo::core
