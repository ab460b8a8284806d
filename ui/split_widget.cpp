#include "split_widget.h"

#include <QEvent>

#include "base/units.h"

namespace brenvo::ui {
namespace {

// Each of two areas gives 25 twips of its half.
constexpr base::Twips kBorder(50);
constexpr base::Twips kLowest(500);

}  // namespace

SplitWidget::SplitWidget(QWidget* parent) : QSplitter(Qt::Vertical, parent) {
  setChildrenCollapsible(false);
  setHandleWidth(kBorder.Pixels());
}

void SplitWidget::Add(QWidget& area) {
  area.setMinimumHeight(kLowest.Pixels() + 1);
  addWidget(&area);
}

bool SplitWidget::event(QEvent* event) {
  const bool done = QSplitter::event(event);
  if (event->type() == QEvent::LayoutRequest && ShownAreas() != shared_) Share();
  return done;
}

void SplitWidget::resizeEvent(QResizeEvent* event) {
  QSplitter::resizeEvent(event);
  Share();
}

int SplitWidget::ShownAreas() const {
  int shown = 0;
  for (int i = 0; i < count(); ++i) shown += widget(i)->isHidden() ? 0 : 1;
  return shown;
}

void SplitWidget::Share() {
  shared_ = ShownAreas();
  setSizes(QList<int>(count(), height()));
}

}  // namespace brenvo::ui
