#include "command_widgets.h"

#include <memory>
#include <QToolBar>
#include <QToolButton>

#include "base/match.h"
#include "forms/window.h"
#include "ui/icons.h"
#include "ui/text.h"
#include "unfinished_input.h"

namespace brenvo::ui {
namespace {

// With few keys there is room for their words.
constexpr std::size_t kMostKeysWithWords = 6;
constexpr int kKeySize = 20;

QString WithoutMark(const std::string& caption) { return ToQt(caption).remove('&'); }

}  // namespace

void PressOnScreen(forms::Command& command, const ViewContext& context) {
  const forms::Window& window = command.Owner();
  if (context.BehindDialog(window)) return;
  command.Press();
  if (command.FocusAfter != nullptr && window.Loaded())
    window.Host().MoveFocus(*command.FocusAfter);
}

bool CommandWidgets::Shows(const forms::Field& field) const {
  return actions_.contains(&field) || menus_.contains(&field);
}

QAction* CommandWidgets::ActionOf(forms::Command& command) {
  if (const auto at = actions_.find(&command); at != actions_.end()) return at->second;
  auto* action = new QAction(&owner_);
  actions_[&command] = action;
  command.Refresh();
  action->setObjectName(ToQt(command.Name()));
  action->setCheckable(command.Toggle);
  const auto follow = [action, &command] {
    action->setText(ToQt(command.Caption()));
    action->setShortcut(QKeySequence(ToQt(command.Shortcut())));
    QString tip = command.Tip.empty() ? WithoutMark(command.Caption()) : ToQt(command.Tip);
    if (!action->shortcut().isEmpty()) {
      tip += QStringLiteral(" (%1)").arg(action->shortcut().toString(QKeySequence::NativeText));
    }
    action->setToolTip(tip);
    action->setVisible(command.Visible());
    action->setEnabled(command.Enabled());
    if (command.Toggle) action->setChecked(command.Down());
  };
  Follow(command, follow);
  QObject::connect(action, &QAction::triggered, action, [this, action, &command] {
    // A menu closes, and the toolkit's flip of a toggle is undone, before the command runs.
    if (!context_.Alive()) return;
    if (command.Toggle) action->setChecked(command.Down());
    FinishInput();
    context_.Later(action, [this, &command] { PressOnScreen(command, context_); });
  });
  QObject::connect(action, &QAction::hovered, action, [this, &command] {
    if (context_.Alive()) context_.Hover(command);
  });
  return action;
}

void CommandWidgets::Fill(QMenuBar& bar, const std::vector<forms::MenuItem>& items) {
  for (const forms::MenuItem& item : items) {
    std::visit(base::Match{[&](forms::Command* command) { bar.addAction(ActionOf(*command)); },
                           [&](forms::Menu* menu) { bar.addMenu(MakeMenu(*menu)); },
                           [&](forms::EntryArray* entries) {
                             QMenu* menu = bar.addMenu(ToQt(entries->Caption()));
                             AddEntries(*menu, *entries);
                           },
                           [](forms::Separator) {}},
               item);
  }
}

QMenu* CommandWidgets::MakeMenu(forms::Menu& field) {
  if (const auto at = menus_.find(&field); at != menus_.end()) return at->second;
  auto* menu = new QMenu(ToQt(field.Caption()), &owner_);
  menus_[&field] = menu;
  menu->setObjectName(ToQt(field.Name()));
  menu->setToolTipsVisible(false);
  FillMenu(*menu, field.Items);
  const auto follow = [menu, &field] {
    menu->setTitle(ToQt(field.Caption()));
    menu->menuAction()->setVisible(field.Visible());
    menu->menuAction()->setEnabled(field.Enabled());
  };
  Follow(field, follow);
  return menu;
}

void CommandWidgets::FillMenu(QMenu& menu, const std::vector<forms::MenuItem>& items) {
  for (const forms::MenuItem& item : items) {
    std::visit(base::Match{[&](forms::Command* command) { menu.addAction(ActionOf(*command)); },
                           [&](forms::Menu* inner) { menu.addMenu(MakeMenu(*inner)); },
                           [&](forms::EntryArray* entries) { AddEntries(menu, *entries); },
                           [&](forms::Separator) { menu.addSeparator(); }},
               item);
  }
}

void CommandWidgets::AddEntries(QMenu& menu, forms::EntryArray& entries) {
  // An invisible mark holds the entries' place among the menu's other items.
  QAction* mark = menu.addAction(QString());
  mark->setVisible(false);
  auto shown = std::make_shared<std::vector<QAction*>>();
  const auto follow = [this, &menu, &entries, mark, shown] {
    const auto& now = entries.Entries();
    while (shown->size() > now.size()) {
      shown->back()->deleteLater();
      menu.removeAction(shown->back());
      shown->pop_back();
    }
    while (shown->size() < now.size()) {
      const int number = static_cast<int>(shown->size());
      auto* action = new QAction(&menu);
      action->setObjectName(QStringLiteral("%1_%2").arg(ToQt(entries.Name())).arg(number));
      menu.insertAction(mark, action);
      QObject::connect(action, &QAction::triggered, action, [this, action, &entries, number] {
        if (!context_.Alive()) return;
        action->setChecked(entries.Entries()[static_cast<std::size_t>(number)].checked);
        FinishInput();
        context_.Later(&owner_, [&entries, number] { entries.Pick(number); });
      });
      shown->push_back(action);
    }
    for (std::size_t i = 0; i < now.size(); ++i) {
      QAction& action = *(*shown)[i];
      action.setText(ToQt(now[i].caption));
      action.setCheckable(now[i].checked);
      action.setChecked(now[i].checked);
      action.setVisible(entries.Visible());
      action.setEnabled(entries.Enabled());
    }
  };
  Follow(entries, follow);
}

void CommandWidgets::Follow(forms::Field& field, const std::function<void()>& show) {
  subscriptions_.push_back(context_.Follow(field.Shown, show));
  show();
}

QWidget* CommandWidgets::MakeToolBar(forms::ToolBar& field, QWidget* parent) {
  auto* bar = new QToolBar(parent);
  bar->setObjectName(ToQt(field.Name()));
  bar->setMovable(false);
  bar->setIconSize(QSize(kKeySize, kKeySize));
  bar->setToolButtonStyle(field.Items.size() <= kMostKeysWithWords ? Qt::ToolButtonTextBesideIcon
                                                                   : Qt::ToolButtonIconOnly);
  for (const forms::MenuItem& item : field.Items) {
    std::visit(
        base::Match{[&](forms::Command* command) {
                      QAction* action = ActionOf(*command);
                      // Only here: a menu bar would show the picture instead of the words.
                      action->setIcon(CommandIcon(command->Name()));
                      action->setIconVisibleInMenu(false);
                      bar->addAction(action);
                    },
                    [&](forms::Menu* menu) {
                      auto* key = new QToolButton(bar);
                      key->setObjectName(ToQt(menu->Name()));
                      key->setMenu(MakeMenu(*menu));
                      key->setPopupMode(QToolButton::InstantPopup);
                      key->setText(WithoutMark(menu->Caption()));
                      const QIcon icon = CommandIcon(menu->Name());
                      // One that is named as those of a menu bar shows its words.
                      if (!menu->Name().starts_with("menu")) {
                        key->setIcon(icon.isNull() ? CommandIcon("cmExport") : icon);
                      }
                      key->setToolTip(WithoutMark(menu->Caption()));
                      bar->addWidget(key);
                    },
                    [](forms::EntryArray*) {}, [&](forms::Separator) { bar->addSeparator(); }},
        item);
  }
  const auto follow = [bar, &field] {
    bar->setVisible(field.Visible());
    bar->setEnabled(field.Enabled());
  };
  Follow(field, follow);
  return bar;
}

}  // namespace brenvo::ui
