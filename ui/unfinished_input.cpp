#include "unfinished_input.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QHeaderView>

namespace brenvo::ui {

void FinishInput() {
  QWidget* const focus = QApplication::focusWidget();
  if (focus == nullptr) return;
  if (auto* date = qobject_cast<QAbstractSpinBox*>(focus)) {
    date->interpretText();
    return;
  }
  for (QWidget* above = focus->parentWidget(); above != nullptr; above = above->parentWidget()) {
    // The editor of a cell closes when its grid takes the keyboard back.
    if (qobject_cast<QHeaderView*>(above) != nullptr) return;  // a filter is never unfinished
    if (auto* grid = qobject_cast<QAbstractItemView*>(above)) {
      grid->setFocus();
      return;
    }
  }
}

}  // namespace brenvo::ui
