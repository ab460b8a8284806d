#include "letter_keys.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QShortcutEvent>

namespace brenvo::ui {

LetterKeys::LetterKeys(QMdiArea& area) : QObject(&area), area_(area) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool LetterKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Shortcut) return false;
  const auto& pressed = static_cast<const QShortcutEvent&>(*event);
  auto* const alone = pressed.isAmbiguous() ? nullptr : qobject_cast<QPushButton*>(watched);
  if (alone != nullptr) {
    alone->click();
    return true;
  }
  const QMdiSubWindow* const front = area_.activeSubWindow();
  if (!pressed.isAmbiguous() || front == nullptr || !area_.isActiveWindow()) return false;
  for (QAction* each : front->findChildren<QAction*>()) {
    if (each->shortcut() != pressed.key() || !each->isVisible() || !each->isEnabled()) continue;
    each->trigger();
    return true;
  }
  QList<QAbstractButton*> own;
  for (QAbstractButton* each : front->findChildren<QAbstractButton*>()) {
    if (each->shortcut() == pressed.key() && each->isVisible() && each->isEnabled()) own += each;
  }
  if (own.isEmpty()) return false;
  if (own.size() == 1) {
    own.front()->click();
    return true;
  }
  const auto at = own.indexOf(qobject_cast<QAbstractButton*>(QApplication::focusWidget()));
  own[(at + 1) % own.size()]->setFocus(Qt::ShortcutFocusReason);
  return true;
}

}  // namespace brenvo::ui
