#include "ui/field_widgets.h"

#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>

#include "forms/tab_strip.h"
#include "ui/choice_widgets.h"
#include "ui/grid_widget.h"
#include "ui/list_widgets.h"
#include "ui/memo_widget.h"
#include "ui/picture_widget.h"
#include "ui/rich_text_widget.h"
#include "ui/status_bar_widget.h"
#include "ui/text_widgets.h"

namespace brenvo {
namespace {

QWidget* Make(Field& field, ViewContext& context, QWidget* parent, Look look) {
  if (auto* list = dynamic_cast<ListField*>(&field)) return MakeListWidget(*list, context, parent);
  if (auto* date = dynamic_cast<DatePicker*>(&field)) return MakeDateEdit(*date, context, parent);
  if (auto* text = dynamic_cast<TextField*>(&field)) {
    return look == Look::kLines ? MakeMemo(*text, context, parent)
                                : MakeTextEdit(*text, context, parent);
  }
  if (auto* box = dynamic_cast<CheckBox*>(&field)) return MakeCheckBox(*box, context, parent);
  if (auto* option = dynamic_cast<OptionButton*>(&field)) {
    return MakeOptionButton(*option, context, parent);
  }
  if (auto* group = dynamic_cast<OptionGroup*>(&field)) {
    if (look == Look::kTabs || dynamic_cast<TabStrip*>(group) != nullptr)
      return MakeTabs(*group, context, parent);
    const int columns = look == Look::kFourAcross ? 4 : look == Look::kTwoAcross ? 2 : 1;
    return MakeOptionGroup(*group, context, parent, columns);
  }
  if (auto* slider = dynamic_cast<Slider*>(&field)) {
    if (look == Look::kScrollBar) return MakeScrollBar(*slider, context, parent);
    return MakeSlider(*slider, context, parent, look == Look::kVertical);
  }
  if (auto* gauge = dynamic_cast<Gauge*>(&field)) return MakeGauge(*gauge, context, parent);
  if (auto* grid = dynamic_cast<Grid*>(&field)) return MakeGridWidget(*grid, context, parent);
  if (auto* area = dynamic_cast<RichText*>(&field)) {
    return MakeRichTextWidget(*area, context, parent);
  }
  if (auto* picture = dynamic_cast<PictureBox*>(&field)) {
    return look == Look::kSmall ? MakeSmallPicture(*picture, context, parent)
                                : MakePictureWidget(*picture, context, parent);
  }
  if (auto* bar = dynamic_cast<StatusBar*>(&field)) return MakeStatusBar(*bar, context, parent);
  if (auto* label = dynamic_cast<Label*>(&field)) return MakeLabel(*label, context, parent);
  if (auto* command = dynamic_cast<Command*>(&field)) return MakeButton(*command, context, parent);
  return nullptr;
}

// What comes and goes with the transceiver's power moves nothing about.
void KeepRoom(QWidget& widget) {
  QSizePolicy policy = widget.sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget.setSizePolicy(policy);
}

void MakeDisplay(QWidget& widget) {
  QFont large = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  large.setPointSizeF(widget.font().pointSizeF() * 1.9);
  large.setBold(true);
  widget.setFont(large);
  widget.setMinimumHeight(QFontMetrics(large).height());  // while it is empty, too
  KeepRoom(widget);
  if (auto* label = qobject_cast<QLabel*>(&widget)) label->setAlignment(Qt::AlignCenter);
  if (auto* line = qobject_cast<QLineEdit*>(&widget)) line->setAlignment(Qt::AlignCenter);
}

}  // namespace

QWidget* MakeFieldWidget(Field& field, ViewContext& context, QWidget* parent, Look look) {
  QWidget* widget = Make(field, context, parent, look);
  if (widget != nullptr && look == Look::kDisplay) MakeDisplay(*widget);
  if (widget != nullptr && look == Look::kLasting) KeepRoom(*widget);
  return widget;
}

bool FillsRoom(const Field& field) {
  if (const auto* list = dynamic_cast<const ListField*>(&field)) {
    return list->Style() == ListStyle::kOpen || list->Style() == ListStyle::kMulti;
  }
  return dynamic_cast<const Grid*>(&field) != nullptr ||
         dynamic_cast<const RichText*>(&field) != nullptr ||
         dynamic_cast<const PictureBox*>(&field) != nullptr;
}

bool ShowsOwnCaption(const Field& field) {
  return dynamic_cast<const CheckBox*>(&field) != nullptr ||
         dynamic_cast<const OptionButton*>(&field) != nullptr ||
         dynamic_cast<const OptionGroup*>(&field) != nullptr ||
         dynamic_cast<const Command*>(&field) != nullptr ||
         dynamic_cast<const Label*>(&field) != nullptr ||
         dynamic_cast<const Grid*>(&field) != nullptr ||
         dynamic_cast<const RichText*>(&field) != nullptr ||
         dynamic_cast<const PictureBox*>(&field) != nullptr;
}

}  // namespace brenvo
