// The application directory and the names in it.
#pragma once

#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::core {

// The file that the system calls `name` ("\Brenvo.mdb", "Log.ADI", a call and ".txt"): always one
// directly in `directory`. A leading backslash is the separator; a character that a file name
// cannot hold is written as "-". An existing file is found whatever the case of its name.
std::filesystem::path FileIn(const std::filesystem::path& directory, std::string_view name);

// The file that is only played under that name, an empty one included: nothing is written to it, so
// that a character which a file name should not hold stands as it is, and a ":" that is spelled
// does not find the file of a "-". What the platform takes for a way to another directory goes by
// its safe name.
std::filesystem::path PlayedFileIn(const std::filesystem::path& directory, std::string_view name);

// The files directly in `directory` whose names end with `suffix` (".wav", empty for all), whatever
// the case, sorted by name, without hidden ones. None when the directory cannot be read.
std::vector<std::string> FilesOf(const std::filesystem::path& directory, std::string_view suffix);

// Why nobody can work in this directory, as a sentence for the operator: it has no name, is not
// there, is none, is called by too long a name, or may not be entered. Empty when it can be looked
// into; whether it can be written in is another matter.
std::string WhyNotEntered(const std::filesystem::path& directory);

// What failed, in the operator's language where the system said it.
std::string FailureText(const std::exception& failure);

// A file name that every platform can hold, and that leads nowhere else.
std::string SafeFileName(std::string_view name);

}  // namespace brenvo::core
