#include "status_bar_widget.h"

#include <QHBoxLayout>
#include <QLabel>

#include "base/units.h"
#include "ui/text.h"

namespace brenvo::ui {

QWidget* MakeStatusBar(forms::StatusBar& field, ViewContext& context, QWidget* parent) {
  auto* bar = new QWidget(parent);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(8, 2, 8, 3);
  row->setSpacing(8);
  std::vector<QLabel*> panels;
  for (int number = 1; number <= field.Panels(); ++number) {
    if (number > 1) {
      auto* line = new QFrame(bar);
      line->setFrameShape(QFrame::VLine);
      line->setFrameShadow(QFrame::Sunken);
      row->addWidget(line);
    }
    auto* panel = new QLabel(bar);
    panel->setObjectName(QStringLiteral("%1_%2").arg(ToQt(field.Name())).arg(number));
    panel->setTextFormat(Qt::PlainText);
    panel->setMinimumHeight(panel->fontMetrics().height() + 2);
    // The first panel takes what the others leave, and never keeps a window from being narrowed.
    if (number == 1) {
      panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    } else {
      panel->setMinimumWidth(std::max(36, field.MinimumWidth(number).Pixels()));
    }
    row->addWidget(panel, number == 1 ? 1 : 0);
    panels.push_back(panel);
  }
  auto* binding = new FieldBinding(field, *bar, context);
  binding->OnShow = [panels, &field] {
    for (int number = 1; number <= field.Panels(); ++number) {
      QLabel* const panel = panels[static_cast<std::size_t>(number - 1)];
      const QString text = ToQt(field.Panel(number));
      if (panel->text() == text) continue;
      panel->setText(text);
      panel->setToolTip(number == 1 ? text : QString());
    }
  };
  binding->Show();
  return bar;
}

}  // namespace brenvo::ui
