// Fills a database with contacts as a VHF and HF station makes them in decades.
#pragma once

#include <cstdint>
#include <filesystem>

namespace brenvo::mklog {

// Appends `contacts` contacts to the table Log of a delivered database, in the order of their
// dates, from 1975 on. Calls, prefixes, zones, countries and provinces are those of the database's
// own tables; who is worked how often, on which band, in which mode, confirmed or not, and what
// the notes hold, is spread as in a real log. The same database, number and seed give the same
// rows.
//
// Throws std::runtime_error when the file cannot be written or lacks the reference rows.
void MakeLog(const std::filesystem::path& database, std::int64_t contacts, std::uint64_t seed = 1);

}  // namespace brenvo::mklog
