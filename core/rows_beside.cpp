#include "core/rows_beside.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

namespace brenvo::core {
namespace {

// Where no more numbers than so many for each contact lie between the first and the last one, it
// costs less to go through them all than to look for each.
constexpr std::int64_t kLooselyPacked = 4;

}  // namespace

void SeeRowsBeside(engine::Database& database, std::string_view table, std::string_view columns,
                   std::span<const std::int64_t> keys,
                   const std::function<void(std::size_t place, engine::Recordset& row)>& see) {
  if (keys.empty()) return;
  std::vector<std::size_t> byKey(keys.size());
  std::iota(byKey.begin(), byKey.end(), std::size_t{0});
  std::ranges::sort(byKey, {}, [&](std::size_t place) { return keys[place]; });
  const std::int64_t first = keys[byKey.front()], last = keys[byKey.back()];
  const bool packed = last - first < kLooselyPacked * static_cast<std::int64_t>(keys.size());
  const auto rows = database.OpenSnapshot(
      fmt::format("Select QsoNr,{} from {} where {} Order By QsoNr,{}", columns, table,
                  packed ? fmt::format("QsoNr Between {} And {}", first, last)
                         : fmt::format("QsoNr In ({})", fmt::join(keys, ",")),
                  columns.substr(0, columns.find(','))));
  auto at = byKey.begin();
  for (; !rows->EOF_(); rows->MoveNext()) {
    const std::int64_t key = rows->Field(std::size_t{0}).Integer();
    while (at != byKey.end() && keys[*at] < key) ++at;
    if (at == byKey.end()) break;
    if (keys[*at] == key) see(*at, *rows);
  }
}

}  // namespace brenvo::core
