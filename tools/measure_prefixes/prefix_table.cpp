#include "measure_prefixes/prefix_table.h"

#include <sqlite3.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace brenvo::measure_prefixes {
namespace {

constexpr std::string_view kDigits = "0123456789";

auto Key(const PrefixTable::Row& row) {
  return std::tie(row.Prefix, row.Tells.ZoneCq, row.Tells.ZoneItu, row.Tells.Continent);
}

std::string Text(sqlite3_stmt* statement, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return text == nullptr ? std::string() : text;
}

}  // namespace

std::string_view PrefixOf(std::string_view call) {
  const std::size_t first = call.find_first_of(kDigits, 1);
  if (first == std::string_view::npos) return {};
  const std::size_t behind = call.find_first_not_of(kDigits, first);
  return behind == std::string_view::npos ? std::string_view() : call.substr(0, behind);
}

PrefixTable::PrefixTable(std::vector<Row> rows) : rows_(std::move(rows)) {
  std::sort(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) { return Key(a) < Key(b); });
}

PrefixTable PrefixTable::Load(const std::filesystem::path& database) {
  sqlite3* opened = nullptr;
  const int result =
      sqlite3_open_v2(database.string().c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> owner(opened, sqlite3_close);
  sqlite3_stmt* prepared = nullptr;
  if (result != SQLITE_OK ||
      sqlite3_prepare_v2(
          opened,
          R"(SELECT "Prefisso", "Country", "Zona CQ", "Zona ITU", "Continente" FROM "Prefissi")",
          -1, &prepared, nullptr) != SQLITE_OK) {
    throw std::runtime_error(database.string() + ": " + sqlite3_errmsg(opened));
  }
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> query(prepared, sqlite3_finalize);
  std::vector<Row> rows;
  while (sqlite3_step(prepared) == SQLITE_ROW) {
    rows.push_back({Text(prepared, 0),
                    {Text(prepared, 1), sqlite3_column_int(prepared, 2),
                     sqlite3_column_int(prepared, 3), Text(prepared, 4)}});
  }
  return PrefixTable(std::move(rows));
}

std::optional<Answer> PrefixTable::Resolve(std::string_view call) const {
  const std::string_view prefix = PrefixOf(call);
  if (prefix.empty()) return std::nullopt;
  const Row sought{std::string(prefix), {}};
  const auto found = std::lower_bound(rows_.begin(), rows_.end(), sought,
                                      [](const Row& a, const Row& b) { return Key(a) < Key(b); });
  if (found == rows_.end() || found->Prefix != prefix) return std::nullopt;
  return found->Tells;
}

}  // namespace brenvo::measure_prefixes
