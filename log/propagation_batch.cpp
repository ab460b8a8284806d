#include "log/propagation_batch.h"

#include <string>
#include <string_view>

#include "base/text.h"
#include "core/long_run.h"
#include "core/session.h"

namespace brenvo {
namespace {

struct Shorthand {
  std::string_view token, propagation;
};

constexpr Shorthand kShorthands[] = {
    {"[E.S.]", "E sporadico"}, {"[F2]", "F2"}, {"[M.S.]", "Meteor Scatter"}, {"[T.E.P.]", "TEP"}};

}  // namespace

void AssignPropagations(Session& session) {
  const auto rows = session.Db.OpenDynaset("select * from Log ");
  const auto assign = [&rows] {
    const Value value = rows->Field("Note");
    if (value.IsNull()) return;
    const std::string note = value.Text();
    for (const auto& [token, propagation] : kShorthands) {
      const std::size_t at = InStr(note, token);
      if (at == 0) continue;
      rows->Edit();
      rows->Set("Propagazione", propagation);
      rows->Set("Note", Trim(Left(note, at - 1) + Mid(note, at + Len(token))));
      rows->Update();
      break;
    }
  };
  ChangeManyContacts(session, "Propagazione", session.TbLog->RecordCount(), [&](LongRun& run) {
    for (; !rows->EOF_() && run.Next(); rows->MoveNext()) assign();
  });
}

}  // namespace brenvo
