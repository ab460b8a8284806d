// The tables that tell the program where things lie on the sheets.
#pragma once

#include <filesystem>

namespace brenvo::mkmaps {

// Writes Field.csv, Square.csv, ZoneCQ.csv and ProvincieItaliane.csv into the directory of the
// facts, and fills the columns Mappa, Pointer_X and Pointer_Y of its Country.csv. Reads the
// outlines there. Throws std::runtime_error for what is missing or can be on no sheet.
void WriteCalibration(const std::filesystem::path& facts);

}  // namespace brenvo::mkmaps
