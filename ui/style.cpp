#include "ui/style.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

namespace brenvo::ui {
namespace {

// Fusion draws the edge of a box as a darker shade of the window: on a dark one it is hardly there.
class Style : public QProxyStyle {
 public:
  Style() : QProxyStyle(QStringLiteral("Fusion")) {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
    const bool round = element == PE_IndicatorRadioButton;
    if ((!box && !round) || option->palette.color(QPalette::Base).lightnessF() >= 0.5F) return;
    QColor edge = option->palette.color(QPalette::WindowText);
    edge.setAlphaF(option->state & State_Enabled ? 0.75F : 0.4F);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(edge);
    painter->setBrush(Qt::NoBrush);
    const QRectF around = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (box) {
      painter->drawRoundedRect(around, 2, 2);
    } else {
      painter->drawEllipse(around);
    }
    painter->restore();
  }
};

}  // namespace

void UseStyle() { QApplication::setStyle(new Style); }

}  // namespace brenvo::ui
