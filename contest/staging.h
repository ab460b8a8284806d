// The multipliers of a contest in the file: countries come from the prefix table, and what was
// counted last stays in the staging tables.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "score.h"

namespace brenvo::core {
class Session;
}

namespace brenvo::contest {

// Looks countries up in the prefix table, each prefix once in the life of the function.
CountryOfCall CountriesOf(core::Session& session);

// Empties ContestWWL, ContestDXC and ContestExc and fills them, within the caller's transaction. A
// text that breaks the statement (an apostrophe in an exchange) is a DatabaseError.
void StageMultipliers(engine::Database& database, const std::vector<std::string>& squares,
                      const std::vector<std::string>& countries,
                      const std::vector<std::string>& exchanges);

}  // namespace brenvo::contest
