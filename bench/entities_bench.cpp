// Who calls were on their days: a question, the whole log verified, and what the tables hold in
// memory. By hand: the same columns read by number and nothing done with them; and the plainest
// method known, a hash table of prefixes that knows no days, asked from the longest on.
#include <fmt/format.h>
#include <malloc.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "checks/entity_check.h"
#include "entities/read_tables.h"
#include "entities/resolver.h"
#include "tests/support/places.h"

namespace brenvo::bench {
namespace {

constexpr std::size_t kQuestions = 100'000;

// What the program holds from the system's allocator, MB.
double Allocated() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd) / 1e6;
}

struct Question {
  std::string call;
  base::DateTime utc;
};

int ByHand(const std::unordered_map<std::string_view, int>& prefixes, std::string_view call) {
  for (std::size_t length = call.size(); length > 0; --length) {
    const auto found = prefixes.find(call.substr(0, length));
    if (found != prefixes.end()) return found->second;
  }
  return 0;
}

void Ask(const Figures& figures, std::int64_t contacts, const std::vector<Question>& questions) {
  const entities::Table table =
      entities::ReadTableFile(SourceDir() / "data" / "rules" / "Entita.csv", {});
  const entities::Table* const tables[] = {&table};
  const double before = Allocated();
  const entities::Resolver resolver(tables);
  figures.Value(contacts, "entities: memory", fmt::format("{:.1f} MB", Allocated() - before));
  std::unordered_map<std::string_view, int> prefixes;
  for (const entities::Rule& rule : table.rules) prefixes.emplace(rule.text, rule.entity);
  std::int64_t sum = 0, byHand = 0;
  figures.Compare(
      contacts, fmt::format("entities: {} questions", questions.size()), 5,
      [&] {
        for (const Question& asked : questions)
          sum += resolver.Resolve(asked.call, asked.utc).entity;
      },
      [&] {
        for (const Question& asked : questions) byHand += ByHand(prefixes, asked.call);
      });
  if (sum == 0 || byHand == 0) throw std::runtime_error("nothing was answered");
}

void Verify(const Figures& figures, std::int64_t contacts) {
  const BenchDirectory directory(contacts);
  QuietPlatform platform;
  core::Session session(platform, directory.Path());
  session.Open();
  std::vector<Question> questions;
  session.Db.OpenReader()->ForEach("select Call,DataQso from Log order by QsoNr", [&](auto& row) {
    questions.push_back({std::string(row.Text(0)), row.Date(1).value_or(base::DateTime())});
    return questions.size() < kQuestions;
  });
  Ask(figures, contacts, questions);
  sqlite3* file = nullptr;
  if (sqlite3_open(directory.File().c_str(), &file) != SQLITE_OK) {
    throw std::runtime_error("no database");
  }
  std::optional<Hand> rows(std::in_place, file,
                           "SELECT QsoNr,DataQso,Call,Banda,Country,\"Zona CQ\",\"Zona ITU\","
                           "Continente FROM Log ORDER BY QsoNr");
  std::optional<checks::CheckedEntities> checked;
  figures.Compare(
      contacts, "entities: verify the log", 3, [&] { checked = checks::CheckEntities(session); },
      [&] { rows->ReadAll(); });
  figures.Value(contacts, "entities: findings", std::to_string(checked->count));
  session.CloseTables();
  rows.reset();
  sqlite3_close(file);
}

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("entities", argc, argv);
  if (!figures.WantsAnyOf(
          {"entities: memory", "entities: questions", "entities: verify the log"})) {
    return 0;
  }
  for (const std::int64_t size : figures.Sizes()) Verify(figures, size);
}
