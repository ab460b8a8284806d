// Credits of awards as the standard writes them: "DXCC:LOTW&CARD,DXCC_BAND:LOTW,WAZ".
#pragma once

#include <string>
#include <string_view>

namespace brenvo::conferme {

// Those of both, each once, with the media of both; in the order of the first, then the second.
std::string MergeCredits(std::string_view a, std::string_view b);

}  // namespace brenvo::conferme
