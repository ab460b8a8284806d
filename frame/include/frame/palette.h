// All commands, found by some letters.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/window.h"

namespace brenvo::frame {

// A command that can be pressed, and how the operator knows it.
struct KnownCommand {
  forms::Window* window = nullptr;
  forms::Command* command = nullptr;
  std::string words;  // "Statistiche > Square (SSQuare)"; the window's name before one of its own
};

// Those of the main menu, then those of each open window, the one that opened last first. What is
// hidden, disabled or without words is no command.
std::vector<KnownCommand> KnownCommands(core::Session& session);

// Those whose words hold everything that is typed, whatever the case and the accents, the nearest
// first; a single word may also be given by some of its letters. All of them for an empty text.
std::vector<KnownCommand> CommandsFor(core::Session& session, std::string_view text);

// Brings the command's window to the front and presses it.
void PressCommand(core::Session& session, const KnownCommand& chosen);

// Modal. It hides with what was chosen, and presses nothing itself: its caller does, when it is
// gone.
class Palette : public forms::Window {
 public:
  explicit Palette(core::Session& session);

  void Load() override;
  void Unload() override;

  forms::TextField Cerca{*this, "Cerca", {.caption = "Comando", .characters = 30}};
  forms::ListField Comandi{*this, "Comandi", forms::ListStyle::kOpen, {.caption = "Comandi"}};
  forms::Command cmEsegui{*this,
                          "cmEsegui",
                          "&Esegui",
                          {.tip = "Esegue il comando scelto", .run = [this] { Choose(); }}};
  forms::Command cmExit{
      *this, "cmExit", "&Chiudi", {.tip = "Chiude senza eseguire", .run = [this] { Close(); }}};

  const std::optional<KnownCommand>& Chosen() const { return chosen_; }

 private:
  void Seek();
  void Choose();

  core::Session& session_;
  std::vector<KnownCommand> found_;
  std::optional<KnownCommand> chosen_;
};

}  // namespace brenvo::frame
