// What an operator has worked, painted onto a map: green where a QSL has come, else red.
#pragma once

#include "core/session.h"

namespace brenvo::maps {

// Each paints the contacts of the session's QueryText onto the map that is shown, one annotation
// an award entry, and lets the screen go on between them. Failures are thrown. Painting ends
// without a word when another map comes meanwhile, or the session closes.

// Maidenhead fields.
void DisplayField(core::Session& session);
// Squares, with the graticule of table Field. Scrolls the map to its corner.
void DisplaySquare(core::Session& session);
// CQ zones, by their bitmaps; one without a row in ZoneCQ is passed over. Leaves the last zone's
// place in the session's Pointer_X and Pointer_Y.
void DisplayZone(core::Session& session);
// Provinces of Italy; like the zones. The caller refreshes.
void DisplayItalia(core::Session& session);

}  // namespace brenvo::maps
