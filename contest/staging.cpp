#include "staging.h"

#include <fmt/format.h>

#include <memory>
#include <unordered_map>
#include <utility>

#include "core/prefix.h"
#include "core/session.h"

namespace brenvo::contest {

CountryOfCall CountriesOf(core::Session& session) {
  auto known = std::make_shared<std::unordered_map<std::string, std::string>>();
  return [&session, known](std::string_view call) {
    const std::string prefix = core::PrefixCandidate(call);
    const auto at = known->find(prefix);
    if (at != known->end()) return at->second;
    return known->emplace(prefix, core::ResolvePrefix(session, call).Country).first->second;
  };
}

void StageMultipliers(engine::Database& database, const std::vector<std::string>& squares,
                      const std::vector<std::string>& countries,
                      const std::vector<std::string>& exchanges) {
  const std::pair<std::string_view, const std::vector<std::string>&> tables[] = {
      {"ContestWWL", squares}, {"ContestDXC", countries}, {"ContestExc", exchanges}};
  for (const auto& [table, texts] : tables) database.Execute(fmt::format("delete from {}", table));
  for (const auto& [table, texts] : tables) {
    for (const std::string& text : texts) {
      database.Execute(fmt::format("Insert into {} values ('{}')", table, text));
    }
  }
}

}  // namespace brenvo::contest
