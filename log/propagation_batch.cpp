#include "log/propagation_batch.h"

#include <string>
#include <string_view>

#include "base/text.h"
#include "core/log_contact.h"
#include "core/long_run.h"
#include "core/session.h"

namespace brenvo::log {
namespace {

struct Shorthand {
  std::string_view token, propagation;
};

constexpr Shorthand kShorthands[] = {
    {"[E.S.]", "E sporadico"}, {"[F2]", "F2"}, {"[M.S.]", "Meteor Scatter"}, {"[T.E.P.]", "TEP"}};

}  // namespace

void AssignPropagations(core::Session& session) {
  const auto rows = session.Db.OpenDynaset("select * from Log ");
  const auto assign = [&session, &rows] {
    const engine::Value value = rows->Field(core::column::kNote);
    if (value.IsNull()) return;
    const std::string note = value.Text();
    for (const auto& [token, propagation] : kShorthands) {
      const std::size_t at = base::InStr(note, token);
      if (at == 0) continue;
      session.Contacts.Change(core::ContactTable::kLog, *rows, [&](engine::EditableRecordset& row) {
        row.Set(core::column::kPropagazione, propagation);
        row.Set(core::column::kNote,
                base::Trim(base::Left(note, at - 1) + base::Mid(note, at + base::Len(token))));
      });
      break;
    }
  };
  core::ChangeManyContacts(session, "Propagazione", session.Tables.TbLog->RecordCount(),
                           [&](core::LongRun& run) {
                             for (; !rows->EOF_() && run.Next(); rows->MoveNext()) assign();
                           });
}

}  // namespace brenvo::log
