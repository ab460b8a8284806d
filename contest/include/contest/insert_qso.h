// How a contact comes into a contest, whoever brings it: its distance, its points, the two markers
// of its note, its columns.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/session.h"
#include "core/typed_contest_qso.h"

namespace brenvo::contest {

struct WorkedOutQso {
  std::string Qrb;  // km from the station's own locator, not from the contest's
  double Punti = 0;
  std::string Note;  // with its markers
};
// The first serial of another contact with that call; nothing where there is none.
std::optional<std::string> DuplicateSerial(core::Session& session,
                                           const core::ContestContext& contest,
                                           std::string_view call, std::string_view serial);
WorkedOutQso WorkOut(core::Session& session, const core::ContestContext& contest,
                     const core::TypedContestQso& typed);
// Through rows that stand on the contact where it is not a new one. A text that is no time, or a
// number that its column cannot hold, throws, and nothing is stored.
void StoreQso(core::Session& session, const core::ContestContext& contest,
              engine::EditableRecordset& rows, bool isNew, const core::TypedContestQso& typed,
              const WorkedOutQso& made, const core::ContactDoor::Beside& beside = {});
// Both, through rows of its own (core::PutContestQso).
void PutQso(core::Session& session, const core::ContestContext& contest,
            std::optional<std::int64_t> replaced, const core::TypedContestQso& typed,
            const core::ContactDoor::Beside& beside);

}  // namespace brenvo::contest
