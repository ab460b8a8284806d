// How the toolkit draws.
#pragma once

namespace brenvo::ui {

// Fusion, with marks that are seen on dark desktops too. Called once, before the first window.
void UseStyle();

}  // namespace brenvo::ui
