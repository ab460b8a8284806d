// The main frame: the station's menu, the map behind it, and the session's life.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "forms/command.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

// Runs what the menu's commands name. A command whose window does not exist does nothing.
class MainFrame : public Window {
 public:
  explicit MainFrame(Session& session);
  ~MainFrame() override;

  // Opens the session; throws what fails, and the start is then over.
  void Load() override;
  void Resize() override;
  bool QueryUnload() override;
  void Unload() override;

  // The map's door: its change runs the map viewer.
  TextField HDisplayMappa{*this, "HDisplayMappa"};
  // The rectangle that the operator drew on the map, viewport pixels.
  void MapRectangleDrawn(int left, int top, int width, int height);

  // The commands that have logic of their own.
  void cmTNC();
  void cmAssegnaPrefissi();

  // Hung in by the rooms that own them: what a command runs, and what a map request runs.
  void SetAction(std::string_view command, std::function<void()> action);
  std::function<void()> OnDisplayMap;
  std::function<void(int left, int top, int width, int height)> OnMapRectangle;

 private:
  struct Entry;
  Session& session_;
  std::vector<std::unique_ptr<Command>> commands_;
  std::vector<std::unique_ptr<Menu>> menus_;
};

}  // namespace brenvo
