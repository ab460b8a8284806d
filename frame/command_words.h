// A window's commands, and how the operator knows them.
#pragma once

#include <string>
#include <vector>

#include "forms/window.h"

namespace brenvo::frame {

struct NamedCommand {
  forms::Command* command = nullptr;
  std::string words;  // "Statistiche > Square": the menus that lead to it, its own caption
};

enum class Commands { kAll, kReady };  // the ready ones are enabled, as are the menus above them

// In the order of its menus, its tool bars and its fields, each once; what is hidden or has no
// words is none of them. `path` stands before all, empty for nothing.
std::vector<NamedCommand> CommandsOf(forms::Window& window, const std::string& path,
                                     Commands which);

}  // namespace brenvo::frame
