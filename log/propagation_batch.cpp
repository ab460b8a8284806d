#include "log/propagation_batch.h"

#include <string>
#include <string_view>

#include "base/text.h"
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
  const auto assign = [&rows] {
    const engine::Value value = rows->Field("Note");
    if (value.IsNull()) return;
    const std::string note = value.Text();
    for (const auto& [token, propagation] : kShorthands) {
      const std::size_t at = base::InStr(note, token);
      if (at == 0) continue;
      rows->Edit();
      rows->Set("Propagazione", propagation);
      rows->Set("Note",
                base::Trim(base::Left(note, at - 1) + base::Mid(note, at + base::Len(token))));
      rows->Update();
      break;
    }
  };
  core::ChangeManyContacts(session, "Propagazione", session.Tables.TbLog->RecordCount(),
                           [&](core::LongRun& run) {
                             for (; !rows->EOF_() && run.Next(); rows->MoveNext()) assign();
                           });
}

}  // namespace brenvo::log
