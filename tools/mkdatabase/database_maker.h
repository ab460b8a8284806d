// Builds the database that a new operator gets.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/date.h"

namespace brenvo::mkdatabase {

// Creates the database `out` from the statements of the file `schema` and fills each table that
// has a file of its name (Country.csv for Country) in the folder `facts`. Columns are found by
// their headings; a column without a heading stays Null. A cell becomes what its column is
// declared as: a number, "si" or "no" for a yes/no column, text otherwise; an empty cell is empty
// text, and Null where a number is declared.
//
// Throws std::runtime_error, naming file and line where there is one, and leaves no file behind:
// when `out` exists, when a reference table has no file, when a cell does not fit its column, when
// a row repeats a unique key, or when a row breaks a rule that the program relies on (a prefix
// whose country is unknown, a band whose mode is unknown, other than one station profile).
void MakeDatabase(const std::filesystem::path& schema, const std::filesystem::path& facts,
                  const std::filesystem::path& out);

// Brings the database of an application directory up to date (upkeep/schema_steps.h), and tells
// what it lacked. Throws engine::DatabaseError when the file is no database of this version or
// another program holds it.
std::vector<std::string> CompleteDatabase(const std::filesystem::path& directory,
                                          base::DateTime now);

}  // namespace brenvo::mkdatabase
