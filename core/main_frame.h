// The main frame: the station's menu, the map behind it, and the session's life.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "forms/command.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

// What a command of the main menu does.
enum class Opening {
  kAction,          // runs an action hung in by its room; nothing while there is none
  kNewInstance,     // a fresh window at each click
  kSingleInstance,  // the one window, brought forward when it is open
  kModal,           // the one window, and the command returns when it has gone
  kSelectionFirst,  // StatSel under a mode word, then a fresh window on what it gave
};

struct MainCommand {
  std::string_view menu;  // caption of the menu, empty for the bar itself
  std::string_view caption;
  std::string_view name;
  Opening opening = Opening::kAction;
  std::string_view window{};  // the window's name
  std::string_view word{};    // kSelectionFirst: the mode word
  bool keepsElenca = false;   // kSelectionFirst: takes the mark "Elenca tutto" over
  std::string_view shortcut{};
};

// The whole menu, in the order in which it stands.
const std::vector<MainCommand>& MainMenu();

// A command whose window does not exist does nothing.
class MainFrame : public Window {
 public:
  explicit MainFrame(Session& session);
  ~MainFrame() override;

  // Opens the session; throws what fails, and the start is then over.
  void Load() override;
  // Closes every child in the order of loading; false as soon as one refuses, which then comes to
  // the front.
  bool QueryUnload() override;
  void Unload() override;

  // The map's door: its change runs the map viewer.
  TextField HDisplayMappa{*this, "HDisplayMappa"};
  // What the station has to say by itself.
  StatusBar StatusBar1{*this, "StatusBar1", 1};
  // What to do first, on the empty map, as long as the profile is the delivered one.
  Label PrimoPasso{*this, "PrimoPasso"};
  // The rectangle that the operator drew on the map, viewport pixels.
  void MapRectangleDrawn(int left, int top, int width, int height);

  // Commands with logic of their own.
  void cmTNC();
  void cmAssegnaPrefissi();
  void cmRipristinaBackup();

  // Hung in by the rooms that own them.
  void SetAction(std::string_view command, std::function<void()> action);
  std::function<void()> OnDisplayMap;
  std::function<void(int left, int top, int width, int height)> OnMapRectangle;

 private:
  void Run(const MainCommand& command);
  void SelectThenOpen(const MainCommand& command);
  void ShowFirstStep();

  Session& session_;
  std::vector<std::unique_ptr<Command>> commands_;
  std::vector<std::unique_ptr<Menu>> menus_;
  std::map<std::string, std::function<void()>, std::less<>> actions_;
};

}  // namespace brenvo
