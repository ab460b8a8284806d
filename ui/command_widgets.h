// Commands as menus and tool bars.
#pragma once

#include <functional>
#include <map>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <vector>

#include "forms/command.h"
#include "view_context.h"

namespace brenvo::ui {

// The operator's press: the command's action, then the keyboard goes where the command says. A key
// that came in while a dialog was on its way to the screen is for nobody.
void PressOnScreen(forms::Command& command, const ViewContext& context);

// Makes the actions of one window: one for each command, wherever it appears.
class CommandWidgets {
 public:
  // Actions and menus are children of `owner`, where their shortcuts work.
  CommandWidgets(ViewContext& context, QWidget& owner) : context_(context), owner_(owner) {}

  void Fill(QMenuBar& bar, const std::vector<forms::MenuItem>& items);
  QWidget* MakeToolBar(forms::ToolBar& field, QWidget* parent);
  QMenu* MakeMenu(forms::Menu& field);
  // True when a menu or tool bar already shows the command.
  bool Shows(const forms::Field& field) const;

 private:
  QAction* ActionOf(forms::Command& command);
  void FillMenu(QMenu& menu, const std::vector<forms::MenuItem>& items);
  void AddEntries(QMenu& menu, forms::EntryArray& entries);
  // Runs `show` now and at each change of the field that can be seen.
  void Follow(forms::Field& field, const std::function<void()>& show);

  ViewContext& context_;
  QWidget& owner_;
  std::map<const forms::Field*, QAction*> actions_;
  std::map<const forms::Field*, QMenu*> menus_;
  std::vector<forms::Subscription> subscriptions_;
};

}  // namespace brenvo::ui
