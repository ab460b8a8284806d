#include "frame/desktop.h"

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "base/text.h"
#include "core/session.h"

namespace brenvo::frame {
namespace {

constexpr std::size_t kTokenWidth = 5;

struct Token {
  std::string_view text;  // five characters
  bool (*isOpen)(const core::OpenWindows&);
  std::string_view window;
};

constexpr Token kTokens[] = {
    {"LOG  ", [](const core::OpenWindows& open) { return open.LogOpen; }, "LogForm"},
    {"CONTE", [](const core::OpenWindows& open) { return open.ContestOpen; }, "Contest"},
    {"FT736", [](const core::OpenWindows& open) { return open.FT736Open; }, "FT736"},
    {"HRD  ", [](const core::OpenWindows& open) { return open.HrdOpen(); }, "Hrd"},
    {"HRDMO", [](const core::OpenWindows& open) { return open.HrdModeOpen(); }, "HrdMode"},
    {"TNC  ", [](const core::OpenWindows& open) { return open.TncOpen; }, "TNC"},
    {"TNCTE", [](const core::OpenWindows& open) { return open.TncTelnetOpen; }, "TNCtelnet"},
    {"WWCON", [](const core::OpenWindows& open) { return open.WWConvOpen; }, "WWConv"},
    {"OLDQS", [](const core::OpenWindows& open) { return open.OldQsoForm != nullptr; },
     "OldQsoForm"},
    {"OLQSL", [](const core::OpenWindows& open) { return open.OldQsoLocator != nullptr; },
     "OldQsoLocator"},
};

// The windows that came behind these have a list of their own, names with a blank between. None of
// them is a dialog.
constexpr std::string_view kNewWindows[] = {
    "Preferenze",  "Stazioni",       "Storia",   "Elenco", "Corrispondente", "VerificaLog", "Tasti",
    "GestioneQsl", "VerificaEntita", "Digitale", "Rtx",    "GaraContest",    "Conferme",
    "Diplomi"};
constexpr std::string_view kNewList = "Finestre";

std::string OpenNewWindows(core::Session& session) {
  std::string names;
  for (const std::string_view name : kNewWindows) {
    if (session.Windows.Find(name) == nullptr) continue;
    if (!names.empty()) names += ' ';
    names += name;
  }
  return names;
}

void ShowWindow(core::Session& session, std::string_view name) {
  if (forms::Window* window = session.Windows.LoadSingle(name)) session.Windows.Show(*window);
}

}  // namespace

void SaveDesktop(core::Session& session) {
  std::string tokens;
  for (const Token& token : kTokens) {
    if (token.isOpen(session.Opened)) tokens += token.text;
  }
  session.SaveSetting("Desktop", "Window", tokens);
  session.SaveSetting("Desktop", kNewList, OpenNewWindows(session));
}

void LoadDesktop(core::Session& session) {
  const std::string tokens = session.GetSetting("Desktop", "Window", "");
  for (std::size_t at = 1; at <= base::Len(tokens); at += kTokenWidth) {
    const std::string text = base::Mid(tokens, at, kTokenWidth);
    for (const Token& token : kTokens) {
      if (token.text == text) ShowWindow(session, token.window);
    }
  }
  const std::string names = ' ' + session.GetSetting("Desktop", kNewList, "") + ' ';
  for (const std::string_view name : kNewWindows) {
    if (names.find(fmt::format(" {} ", name)) != std::string::npos) ShowWindow(session, name);
  }
}

}  // namespace brenvo::frame
