#include "core/desktop.h"

#include <string>
#include <string_view>

#include "base/text.h"
#include "core/session.h"

namespace brenvo::core {
namespace {

constexpr std::size_t kTokenWidth = 5;

struct Token {
  std::string_view text;  // five characters
  bool (*isOpen)(const Session&);
  std::string_view window;
};

constexpr Token kTokens[] = {
    {"LOG  ", [](const Session& s) { return s.LogOpen; }, "LogForm"},
    {"CONTE", [](const Session& s) { return s.ContestOpen; }, "Contest"},
    {"FT736", [](const Session& s) { return s.FT736Open; }, "FT736"},
    {"HRD  ", [](const Session& s) { return s.HrdOpen(); }, "Hrd"},
    {"HRDMO", [](const Session& s) { return s.HrdModeOpen(); }, "HrdMode"},
    {"TNC  ", [](const Session& s) { return s.TncOpen; }, "TNC"},
    {"TNCTE", [](const Session& s) { return s.TncTelnetOpen; }, "TNCtelnet"},
    {"WWCON", [](const Session& s) { return s.WWConvOpen; }, "WWConv"},
    {"OLDQS", [](const Session& s) { return s.OldQsoForm != nullptr; }, "OldQsoForm"},
    {"OLQSL", [](const Session& s) { return s.OldQsoLocator != nullptr; }, "OldQsoLocator"},
};

}  // namespace

void SaveDesktop(Session& session) {
  std::string tokens;
  for (const Token& token : kTokens) {
    if (token.isOpen(session)) tokens += token.text;
  }
  session.SaveSetting("Desktop", "Window", tokens);
}

void LoadDesktop(Session& session) {
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

}  // namespace brenvo::core
