// The file of a configurable menu: captions and the commands behind them.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "forms/command.h"

namespace brenvo::links {

// The command behind each entry of a configurable menu.
using MenuCommands = std::array<std::string, 16>;

// A file fills no more entries than this, though there is room for more commands.
inline constexpr int kMenuFileEntries = 11;

// Values of a text file, one by one: commas and line ends part them, blanks before a value are
// dropped, and a value in double quotes may hold commas, blanks and line ends.
class ListInput {
 public:
  explicit ListInput(std::string_view text) : text_(text) {}
  // True when nothing but blanks and line ends is left.
  bool AtEnd() const;
  // Throws std::runtime_error (Italian) behind the last value.
  std::string Next();

 private:
  void SkipBlanks();
  void PassSeparator();

  std::string_view text_;
  std::size_t at_ = 0;
};

// Reads pairs of caption and command text: a command goes to its place in Comandi, a caption to
// the entry of that number. Entry 0 exists from the start and gets another caption, later ones are
// added. Throws std::runtime_error (Italian) when a command is missing at the end; the pairs before
// it stay.
void FillMenu(std::string_view text, forms::EntryArray& CMI, MenuCommands& Comandi);

// The same from a file, of UTF-8 (with its mark or without) or Windows-1252. A file that cannot be
// read is an error.
void FillMenuFromFile(const std::filesystem::path& file, forms::EntryArray& CMI,
                      MenuCommands& Comandi);

}  // namespace brenvo::links
