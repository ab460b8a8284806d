// What a cell of an award says to the operator.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "diplomi/count.h"

namespace brenvo::diplomi {

// A contact as lists show it.
struct ShownContact {
  bool exists = false;
  std::string call, when, band, mode;
};
// In the order of the keys; those below 0 are credits without a contact.
std::vector<ShownContact> ShownContacts(core::Session& session,
                                        const std::vector<std::int64_t>& keys);
// "K1ABC 03/02/2001 04:05:06 20 m CW".
std::string TextOf(const ShownContact& contact);
// "confermato da LoTW".
std::string TextOf(const Award& award, State state, int by);

// Which contact fills the cell, why, and what would raise it. `band` is empty for all together.
std::string ExplainCell(core::Session& session, const Award& award, const Unit& unit,
                        std::string_view band, const Cell& cell);

}  // namespace brenvo::diplomi
