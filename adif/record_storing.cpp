#include "record_storing.h"

#include <fmt/format.h>

namespace brenvo::adif {

void KeepTime(MappedRecord& mapped, base::DateTime told) {
  for (const AdifField& field : mapped.kept) {
    if (field.name == "TIME_ON") return;
  }
  mapped.kept.push_back(
      {"TIME_ON", fmt::format("{:02}{:02}{:02}", told.Hour(), told.Minute(), told.Second())});
}

void KeepEntity(engine::RowAppender& rows, std::int64_t qsoNr, const MappedRecord& mapped) {
  if (!mapped.country && !mapped.applied) return;
  const auto told = mapped.country ? engine::Value(*mapped.country) : engine::Value();
  const auto text = [&](const std::string core::AppliedRule::*part) {
    return mapped.applied ? engine::Value((*mapped.applied).*part) : engine::Value();
  };
  rows.Append({qsoNr, told, false, text(&core::AppliedRule::country), text(&core::AppliedRule::why),
               text(&core::AppliedRule::rule), text(&core::AppliedRule::file)});
}

std::vector<const core::LogColumn*> ColumnsToFill(const core::LogContact& present,
                                                  const core::LogContact& contact) {
  std::vector<const core::LogColumn*> empty;
  for (const core::LogColumn& column : core::LogColumns()) {
    if (!core::IsColumnEmpty(present, column) || core::IsColumnEmpty(contact, column)) continue;
    // A card that went out is not to be sent again.
    if (column.name == core::column::kQslDaInviare && present.QslInviata) continue;
    empty.push_back(&column);
  }
  return empty;
}

}  // namespace brenvo::adif
