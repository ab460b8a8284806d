// Every word that stands on a window before anything is typed: captions, tips, keys and hints of
// all fields, beside the table words.tsv that somebody has read.
#include <fmt/format.h>

#include "forms/field_visit.h"
#include "tests/station/all_windows.h"
#include "tests/support/golden.h"

namespace brenvo::station {
namespace {

// A line of the table holds no line ends.
std::string OnOneLine(std::string text) {
  for (std::size_t at; (at = text.find('\n')) != std::string::npos;) text.replace(at, 1, "\\n");
  return text;
}

class Words : public AllWindowsTest {
 protected:
  std::string TableOf(forms::Window& window) {
    std::string table = fmt::format("{}\t{}\n", window.Name(), window.Caption());
    forms::StatusBar* bar = nullptr;
    for (forms::Field* field : window.Fields()) {
      if (bar == nullptr) bar = forms::FieldAs<forms::StatusBar>(*field);
    }
    for (forms::Field* field : window.Fields()) {
      const auto* command = forms::FieldAs<forms::Command>(*field);
      std::string hint;
      if (field->HasHint() && bar != nullptr) {
        field->Hover();
        hint = bar->Panel(1);
      }
      const std::string tip = command != nullptr ? command->Tip : "";
      const std::string key = command != nullptr ? command->Shortcut() : "";
      if (field->Caption().empty() && hint.empty()) continue;
      table += fmt::format("{}.{}\t{}\t{}\t{}\t{}\n", window.Name(), field->Name(),
                           OnOneLine(field->Caption()), tip, key, hint);
    }
    return table;
  }
};

TEST_F(Words, OfAllWindowsAreThoseThatAnOperatorHasRead) {
  std::string table = TableOf(*frame);
  for (const std::string& name : session.Windows.KnownNames()) {
    if (name == frame->Name()) continue;
    session.Windows.RunEvent([&] {
      forms::Window* const window = session.Windows.LoadNew(name);
      ASSERT_NE(window, nullptr) << name;
      table += TableOf(*window);
      session.Windows.Unload(*window);
    });
  }
  ExpectGolden("station/words.tsv", table);
}

}  // namespace
}  // namespace brenvo::station
