// The contest log as contest managers take it: a REG1TEST text.
//
// Some of its lines are the system's own reading of that form, and stand here as managers know
// them from this program; the tests name each.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "contact.h"
#include "contest/contest_header.h"
#include "score.h"

namespace brenvo::contest {

// The text's bytes in Windows-1252, lines ended by CR LF. `contacts` is not empty and `tally` is
// its tally. `bandMhz` is the band's frequency; nothing when the station does not have the band.
std::string Reg1Test(const ContestHeader& header, std::optional<double> bandMhz,
                     const std::vector<Contact>& contacts, const Tally& tally,
                     const CountryOfCall& countryOf);

}  // namespace brenvo::contest
