// Links: entities
// Arbitrary bytes as a table of countries by date: read or refused in words; what was read is
// written and read again as the same, and any call of it is answered.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "entities/read_tables.h"
#include "entities/resolver.h"

namespace {

using namespace brenvo;

int NumberOf(std::string_view prefix) { return prefix == "I" ? 248 : 0; }

void Ask(const entities::Table& table) {
  const entities::Table* const tables[] = {&table};
  const entities::Resolver resolver(tables);
  constexpr std::size_t kMostAsked = 50;
  std::size_t asked = 0;
  for (const entities::Rule& rule : table.rules) {
    if (++asked > kMostAsked) break;
    for (const std::string& call :
         {rule.text, rule.text + "/P", "I/" + rule.text, rule.text + "/5"}) {
      for (const std::int64_t second :
           {rule.when.from, rule.when.to, std::int64_t{4'000'000'000}}) {
        const entities::Answer answer = resolver.Resolve(call, base::DateTime::FromSeconds(second));
        if ((answer.what == nullptr) != (answer.entity == 0)) std::abort();
        if (answer.what != nullptr && resolver.Find(answer.entity) == nullptr) std::abort();
      }
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  try {
    const entities::Table table = entities::ReadTable(bytes, "f", {.numberOf = NumberOf});
    if (table.rules.empty()) std::abort();
    const std::string text = entities::OwnTableText(table);
    const entities::Table again = entities::ReadTable(text, "f", {});
    if (again.rules.size() != table.rules.size()) std::abort();
    if (entities::OwnTableText(again) != text) std::abort();
    Ask(table);
  } catch (const entities::TableError& fault) {
    if (std::string_view(fault.what()).empty()) std::abort();
  }
  return 0;
}
