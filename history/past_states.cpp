#include "past_states.h"

#include <fmt/format.h>

#include "core/log_contact.h"

namespace brenvo::history {

const std::string& LogColumnNames() {
  static const std::string names = [] {
    std::string text = "QsoNr";
    for (const core::LogColumn& column : core::LogColumns()) {
      text += fmt::format(",[{}]", column.name);
    }
    return text;
  }();
  return names;
}

std::optional<RowValues> FirstRow(engine::Database& database, const std::string& select) {
  const auto rows = database.OpenSnapshot(select);
  if (rows->EOF_()) return std::nullopt;
  RowValues values;
  for (std::size_t i = 0; i < rows->Columns().size(); ++i) values.push_back(rows->Field(i));
  return values;
}

std::optional<RowValues> CurrentState(engine::Database& database, std::int64_t qsoNr) {
  return FirstRow(database,
                  fmt::format("Select {} from Log where QsoNr={}", LogColumnNames(), qsoNr));
}

std::optional<RowValues> StateBehind(engine::Database& database, std::int64_t work,
                                     std::int64_t qsoNr) {
  const auto number = [&](const std::string& select) -> std::int64_t {
    const auto row = FirstRow(database, select);
    return row ? row->front().Integer() : 0;
  };
  const std::int64_t kept = number(fmt::format(
      "Select Lavoro from StoriaLog where QsoNr={} and Lavoro>{} Order By Lavoro", qsoNr, work));
  // What a work has touched was there before it: whoever brings it later brings it back.
  const std::int64_t brought = number(fmt::format(
      "Select Lavoro from StoriaNuovi where Dal={} and Lavoro>{} Order By Lavoro", qsoNr, work));
  if (kept == 0 && brought == 0) return CurrentState(database, qsoNr);
  if (kept == 0 || (brought != 0 && brought < kept)) return std::nullopt;
  return FirstRow(database, fmt::format("Select {} from StoriaLog where Lavoro={} and QsoNr={}",
                                        LogColumnNames(), kept, qsoNr));
}

}  // namespace brenvo::history
