#include "command_words.h"

#include <set>
#include <utility>
#include <variant>

#include "base/match.h"
#include "base/text.h"
#include "forms/field_visit.h"

namespace brenvo::frame {
namespace {

std::string WithoutMark(std::string text) {
  std::erase(text, '&');
  return text;
}

class Gathering {
 public:
  explicit Gathering(Commands which) : which_(which) {}

  std::vector<NamedCommand> Of(forms::Window& window, const std::string& path) {
    Items(window.MenuBar, path);
    for (forms::Field* field : window.Fields()) {
      if (const auto* bar = forms::FieldAs<forms::ToolBar>(*field)) Items(bar->Items, path);
    }
    for (forms::Field* field : window.Fields()) {
      if (auto* command = forms::FieldAs<forms::Command>(*field)) Add(*command, path);
    }
    return std::move(commands_);
  }

 private:
  bool Stands(const forms::Field& field) const {
    return field.Visible() && (which_ == Commands::kAll || field.Enabled());
  }
  void Items(const std::vector<forms::MenuItem>& items, const std::string& path) {
    for (const forms::MenuItem& item : items) {
      std::visit(base::Match{[&](forms::Command* command) { Add(*command, path); },
                             [&](forms::Menu* menu) {
                               if (Stands(*menu)) {
                                 Items(menu->Items, Joined(path, menu->Caption()));
                               } else {
                                 Skip(menu->Items);
                               }
                             },
                             [](forms::EntryArray*) {}, [](forms::Separator) {}},
                 item);
    }
  }
  // What a hidden menu holds is hidden with it.
  void Skip(const std::vector<forms::MenuItem>& items) {
    for (const forms::MenuItem& item : items) {
      if (auto* const* command = std::get_if<forms::Command*>(&item)) seen_.insert(*command);
      if (auto* const* menu = std::get_if<forms::Menu*>(&item)) Skip((*menu)->Items);
    }
  }
  void Add(forms::Command& command, const std::string& path) {
    if (!seen_.insert(&command).second) return;
    if (!Stands(command) || command.Caption().empty()) return;
    commands_.push_back({&command, Joined(path, command.Caption())});
  }
  static std::string Joined(const std::string& path, const std::string& caption) {
    const std::string words = base::Trim(WithoutMark(caption));
    return path.empty() ? words : path + " > " + words;
  }

  Commands which_;
  std::vector<NamedCommand> commands_;
  std::set<const forms::Command*> seen_;
};

}  // namespace

std::vector<NamedCommand> CommandsOf(forms::Window& window, const std::string& path,
                                     Commands which) {
  return Gathering(which).Of(window, path);
}

}  // namespace brenvo::frame
