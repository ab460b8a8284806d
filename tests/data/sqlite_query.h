// Rows of a database file, read past the program's own engine.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace brenvo {

using TextRow = std::vector<std::string>;

// What `sql` selects, each value as text, Null as "NULL". Throws std::runtime_error on any failure.
[[nodiscard]] std::vector<TextRow> Query(const std::filesystem::path& database,
                                         const std::string& sql);

// The database that the build delivers.
[[nodiscard]] std::vector<TextRow> Delivered(const std::string& sql);
// The same for a query of one column.
[[nodiscard]] std::vector<std::string> DeliveredColumn(const std::string& sql);

}  // namespace brenvo
