// Links: links recorder
// Arbitrary text as a menu file: at most eleven entries, one at least, and a command for none
// beyond them.
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "forms/window.h"
#include "links/menu_file.h"
#include "recorder/recording_platform.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brenvo;
  static recorder::RecordingPlatform machine;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  forms::Window window(machine.Host(), "W", "", base::Twips(1), base::Twips(1));
  forms::EntryArray entries(window, "CMI");
  entries.Add("-");
  links::MenuCommands commands;
  try {
    links::FillMenu(text, entries, commands);
  } catch (const std::runtime_error&) {
  }
  const std::size_t count = entries.Entries().size();
  if (count < 1 || count > 11) std::abort();
  for (std::size_t i = count; i < commands.size(); ++i) {
    if (!commands[i].empty()) std::abort();
  }
  links::ListInput input(text);
  std::size_t values = 0;
  while (!input.AtEnd()) {
    input.Next();
    if (++values > size) std::abort();
  }
  return 0;
}
