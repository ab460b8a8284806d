// The views of each room's windows.
#pragma once

#include <vector>

#include "ui/views.h"

namespace brenvo {

const std::vector<View>& LogViews();

}  // namespace brenvo
