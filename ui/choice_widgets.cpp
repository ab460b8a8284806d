#include "choice_widgets.h"

#include <algorithm>

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSlider>
#include <QTabBar>

#include "command_widgets.h"
#include "ui/text.h"
#include "unfinished_input.h"

namespace brenvo::ui {
namespace {

// The field says what a press makes of it, the box only shows it.
class Box : public QCheckBox {
 public:
  using QCheckBox::QCheckBox;

 protected:
  void nextCheckState() override {}
};

class Radio : public QRadioButton {
 public:
  using QRadioButton::QRadioButton;

 protected:
  void nextCheckState() override {}
};

Qt::CheckState StateOf(forms::CheckState state) {
  switch (state) {
    case forms::CheckState::kOn:
      return Qt::Checked;
    case forms::CheckState::kGrey:
      return Qt::PartiallyChecked;
    case forms::CheckState::kOff:
      break;
  }
  return Qt::Unchecked;
}

void FollowSlider(QAbstractSlider& widget, const forms::Slider& field) {
  const QSignalBlocker quiet(&widget);
  widget.setRange(field.Minimum(), field.Maximum());
  widget.setValue(field.Value());
}

void TellSlider(QAbstractSlider& widget, forms::Slider& field, ViewContext& context) {
  QObject::connect(&widget, &QAbstractSlider::valueChanged, &widget, [&field, &context](int value) {
    context.Run([&field, value] { field.SetValue(value); });
  });
}

}  // namespace

QWidget* MakeCheckBox(forms::CheckBox& field, ViewContext& context, QWidget* parent) {
  auto* box = new Box(ToQt(field.Caption()), parent);
  box->setTristate(field.ThreeStates());
  auto* binding = new FieldBinding(field, *box, context);
  binding->OnShow = [box, &field] {
    box->setText(ToQt(field.Caption()));
    box->setCheckState(StateOf(field.State()));
  };
  binding->Show();
  QObject::connect(box, &QCheckBox::clicked, box,
                   [&field, &context] { context.Run([&field] { field.Press(); }); });
  return box;
}

QWidget* MakeOptionButton(forms::OptionButton& field, ViewContext& context, QWidget* parent) {
  auto* option = new Radio(ToQt(field.Caption()), parent);
  option->setAutoExclusive(false);
  auto* binding = new FieldBinding(field, *option, context);
  binding->OnShow = [option, &field] {
    option->setText(ToQt(field.Caption()));
    option->setChecked(field.IsOn());
  };
  binding->Show();
  QObject::connect(option, &QRadioButton::clicked, option,
                   [&field, &context] { context.Run([&field] { field.Press(); }); });
  return option;
}

QWidget* MakeOptionGroup(forms::OptionGroup& field, ViewContext& context, QWidget* parent,
                         int columns) {
  auto* panel = new QWidget(parent);
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(0, 0, 0, 0);
  auto* group = new QButtonGroup(panel);
  auto* binding = new FieldBinding(field, *panel, context);
  int number = 0;
  for (const std::string& caption : field.Captions()) {
    auto* option = new QRadioButton(ToQt(caption), panel);
    option->setObjectName(QStringLiteral("%1_%2").arg(ToQt(field.Name())).arg(number));
    binding->Watch(*option);
    group->addButton(option, number);
    grid->addWidget(option, number / columns, number % columns);
    ++number;
  }
  binding->OnShow = [group, &field] {
    if (auto* option = group->button(field.Index())) option->setChecked(true);
  };
  binding->Show();
  QObject::connect(group, &QButtonGroup::idClicked, panel, [&field, &context](int index) {
    context.Run([&field, index] { field.Press(index); });
  });
  return panel;
}

QWidget* MakeTabs(forms::OptionGroup& field, ViewContext& context, QWidget* parent) {
  auto* tabs = new QTabBar(parent);
  tabs->setExpanding(false);
  for (const std::string& caption : field.Captions()) tabs->addTab(ToQt(caption));
  auto* binding = new FieldBinding(field, *tabs, context);
  binding->OnShow = [tabs, &field] {
    const QSignalBlocker quiet(tabs);
    tabs->setCurrentIndex(field.Index());
  };
  binding->Show();
  QObject::connect(tabs, &QTabBar::currentChanged, tabs, [&field, &context](int index) {
    context.Run([&field, index] { field.Press(index); });
  });
  return tabs;
}

QWidget* MakeSlider(forms::Slider& field, ViewContext& context, QWidget* parent, bool vertical) {
  auto* slider = new QSlider(vertical ? Qt::Vertical : Qt::Horizontal, parent);
  auto* binding = new FieldBinding(field, *slider, context);
  binding->OnShow = [slider, &field] { FollowSlider(*slider, field); };
  binding->Show();
  TellSlider(*slider, field, context);
  return slider;
}

QWidget* MakeScrollBar(forms::Slider& field, ViewContext& context, QWidget* parent) {
  auto* bar = new QScrollBar(Qt::Vertical, parent);
  auto* binding = new FieldBinding(field, *bar, context);
  binding->OnShow = [bar, &field] {
    FollowSlider(*bar, field);
    bar->setPageStep(std::max(1, (field.Maximum() - field.Minimum()) / 4));
    bar->setSingleStep(std::max(1, (field.Maximum() - field.Minimum()) / 40));
  };
  binding->Show();
  TellSlider(*bar, field, context);
  return bar;
}

QWidget* MakeGauge(forms::Gauge& field, ViewContext& context, QWidget* parent) {
  auto* bar = new QProgressBar(parent);
  bar->setTextVisible(false);
  bar->setMaximumHeight(bar->fontMetrics().height());
  auto* binding = new FieldBinding(field, *bar, context);
  binding->OnShow = [bar, &field] {
    bar->setRange(field.Minimum(), field.Maximum());
    bar->setValue(std::clamp(field.Value(), field.Minimum(), field.Maximum()));
  };
  binding->Show();
  return bar;
}

QWidget* MakeLabel(forms::Label& field, ViewContext& context, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::NoTextInteraction);
  auto* binding = new FieldBinding(field, *label, context);
  binding->WatchDoubleClicks();
  binding->OnShow = [label, &field] { label->setText(ToQt(field.Text())); };
  binding->Show();
  return label;
}

QWidget* MakeButton(forms::Command& field, ViewContext& context, QWidget* parent) {
  field.Refresh();
  auto* button = new QPushButton(parent);
  button->setAutoDefault(false);
  button->setCheckable(field.Toggle);
  auto* binding = new FieldBinding(field, *button, context);
  binding->OnShow = [button, &field] {
    button->setText(ToQt(field.Caption()));
    button->setToolTip(ToQt(field.Tip));
    // The letter that its words mark stays where it has no key.
    if (!field.Shortcut().empty()) button->setShortcut(QKeySequence(ToQt(field.Shortcut())));
    if (field.Toggle) button->setChecked(field.Down());
  };
  binding->Show();
  QObject::connect(button, &QPushButton::pressed, button, &FinishInput);
  QObject::connect(button, &QPushButton::clicked, button, [button, &field, &context] {
    // The toolkit has flipped a toggle already; the field flips itself.
    if (context.Alive() && field.Toggle) button->setChecked(field.Down());
    context.Run([&] { PressOnScreen(field, context); });
  });
  return button;
}

}  // namespace brenvo::ui
