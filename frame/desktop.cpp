#include "frame/desktop.h"

#include <string>
#include <string_view>

#include "base/text.h"
#include "core/session.h"

namespace brenvo::frame {
namespace {

constexpr std::size_t kTokenWidth = 5;

struct Token {
  std::string_view text;  // five characters
  bool (*isOpen)(const core::Session&);
  std::string_view window;
};

constexpr Token kTokens[] = {
    {"LOG  ", [](const core::Session& s) { return s.LogOpen; }, "LogForm"},
    {"CONTE", [](const core::Session& s) { return s.ContestOpen; }, "Contest"},
    {"FT736", [](const core::Session& s) { return s.FT736Open; }, "FT736"},
    {"HRD  ", [](const core::Session& s) { return s.HrdOpen(); }, "Hrd"},
    {"HRDMO", [](const core::Session& s) { return s.HrdModeOpen(); }, "HrdMode"},
    {"TNC  ", [](const core::Session& s) { return s.TncOpen; }, "TNC"},
    {"TNCTE", [](const core::Session& s) { return s.TncTelnetOpen; }, "TNCtelnet"},
    {"WWCON", [](const core::Session& s) { return s.WWConvOpen; }, "WWConv"},
    {"OLDQS", [](const core::Session& s) { return s.OldQsoForm != nullptr; }, "OldQsoForm"},
    {"OLQSL", [](const core::Session& s) { return s.OldQsoLocator != nullptr; }, "OldQsoLocator"},
};

}  // namespace

void SaveDesktop(core::Session& session) {
  std::string tokens;
  for (const Token& token : kTokens) {
    if (token.isOpen(session)) tokens += token.text;
  }
  session.SaveSetting("Desktop", "Window", tokens);
}

void LoadDesktop(core::Session& session) {
  const std::string tokens = session.GetSetting("Desktop", "Window", "");
  for (std::size_t at = 1; at <= base::Len(tokens); at += kTokenWidth) {
    const std::string text = base::Mid(tokens, at, kTokenWidth);
    for (const Token& token : kTokens) {
      if (token.text != text) continue;
      if (forms::Window* window = session.Windows.LoadSingle(token.window))
        session.Windows.Show(*window);
    }
  }
}

}  // namespace brenvo::frame
