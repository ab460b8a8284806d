// The contest's log as a file for its manager.
#pragma once

#include <vector>

#include "contact.h"
#include "contest/contest_header.h"

namespace brenvo::core {
class Session;
}

namespace brenvo::contest {

// Writes the REG1TEST file, named after the contest's call, in the application directory over one
// of that name. Without contacts nothing is written. Throws what ExchangeOf throws, DatabaseError,
// and std::runtime_error when the file cannot be written.
void WriteReg1Test(core::Session& session, const ContestHeader& header,
                   const std::vector<Contact>& contacts);

}  // namespace brenvo::contest
