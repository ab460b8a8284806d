// The application directory and the names in it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo {

// The file that the system calls `name` ("\Brenvo.mdb", "Log.ADI", a call and ".txt"): always one
// directly in `directory`. A leading backslash is the separator; a character that a file name
// cannot hold is written as "-". An existing file is found whatever the case of its name.
std::filesystem::path FileIn(const std::filesystem::path& directory, std::string_view name);

// The files directly in `directory` whose names end with `suffix` (".wav", empty for all), whatever
// the case, sorted by name, without hidden ones. None when the directory cannot be read.
std::vector<std::string> FilesOf(const std::filesystem::path& directory, std::string_view suffix);

// A file name that every platform can hold, and that leads nowhere else.
std::string SafeFileName(std::string_view name);

}  // namespace brenvo
