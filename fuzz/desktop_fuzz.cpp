// Links: station recorder database_maker
// Arbitrary text as the saved desktop: it opens windows that a desktop may hold, each once, and
// what is saved then opens the same ones again.
#include <array>
#include <cstdint>
#include <set>

#include "base/text.h"
#include "frame/desktop.h"
#include "fuzz/station.h"

namespace {

using namespace brenvo;
using namespace brenvo::fuzz;

std::set<std::string> OpenWindows(fuzz::FuzzStation& station) {
  static const std::set<std::string> kOnDesktop = {
      "LogForm", "Contest",   "FT736",  "Hrd",        "HrdMode",
      "TNC",     "TNCtelnet", "WWConv", "OldQsoForm", "OldQsoLocator"};
  std::set<std::string> names;
  for (forms::Window* window : station.session.Windows.Loaded()) {
    if (window == station.Frame) continue;
    Require(kOnDesktop.contains(window->Name()));
    Require(names.insert(window->Name()).second);
  }
  return names;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static FuzzStation station;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  station.session.SaveSetting("Desktop", "Window", base::ValidUtf8(bytes));
  const auto load = [] { frame::LoadDesktop(station.session); };
  station.Event(load);
  const auto opened = OpenWindows(station);
  station.Event([] { frame::SaveDesktop(station.session); });
  fuzz::Require(base::Len(station.session.GetSetting("Desktop", "Window", "")) ==
                5 * opened.size());
  station.CloseAll();
  // What is saved depends on what is open alone, so each choice of windows is tried once.
  static std::set<std::set<std::string>> tried;
  if (!tried.insert(opened).second) return 0;
  station.Event(load);
  Require(OpenWindows(station) == opened);
  station.CloseAll();
  return 0;
}
