// The small pictures that the map viewer puts onto a map.
#pragma once

#include <filesystem>

namespace brenvo::mkmaps {

// Pointer.bmp: a pin with its tip at 27, 29; the bitmap is transparent around it.
void DrawPointerStamp(const std::filesystem::path& out);
// Zona<zone>c.bmp and Zona<zone>nc.bmp: a disc around 27, 29 with the zone's number, green for
// confirmed and red for not.
void DrawZoneStamps(int zone, const std::filesystem::path& out);

}  // namespace brenvo::mkmaps
