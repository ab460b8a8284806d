// Bands that contacts came with and that the station's profile does not have.
#pragma once

#include <set>
#include <string>

#include "core/session.h"

namespace brenvo::adif {

// Those of `bands` that table UserRTX lacks.
std::set<std::string> MissingBands(core::Session& session, const std::set<std::string>& bands);
// Gives the profile a row of a band that it lacks, with the frequencies that the standard knows.
void AddBand(core::Session& session, const std::string& banda);
// Asks whether the profile is to have them, under the title, and gives it their rows, with the
// frequencies that the standard knows; nothing for none.
void OfferBands(core::Session& session, std::string_view title,
                const std::set<std::string>& missing);

}  // namespace brenvo::adif
