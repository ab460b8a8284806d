// A contact of a contest as it is typed, on its way into table Contest Qso.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "core/contact_door.h"
#include "core/session.h"

namespace brenvo::core {

// Numbers as the operator has typed them.
struct TypedContestQso {
  std::string Giorno, Qtr, Call, QrkDato, ProgrDato, QrkRicevuto, ProgrRicevuto, Locator, Modo, Exc,
      Note;
  bool Qsl = false, InLog = false;
};

// Stores one of that contest: a new one, or in the place of the one with the serial. `beside`
// writes in the transaction of a new one what stands beside it.
using PutContestQso =
    std::function<void(const ContestContext& contest, std::optional<std::int64_t> replaced,
                       const TypedContestQso& typed, const ContactDoor::Beside& beside)>;

}  // namespace brenvo::core
