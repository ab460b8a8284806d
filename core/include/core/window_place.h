// Where a window stood, kept from one day to the next.
#pragma once

#include <string_view>

#include "core/session.h"
#include "forms/window.h"

namespace brenvo::core {

// Place and size by section `key` of the settings store; what is not stored stays.
void RestoreWindow(Session& session, forms::Window& window, std::string_view key);
// Only of a window that is neither minimised nor maximised.
void SaveWindow(Session& session, const forms::Window& window, std::string_view key);

}  // namespace brenvo::core
