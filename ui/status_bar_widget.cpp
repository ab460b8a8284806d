#include "status_bar_widget.h"

#include <algorithm>

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include "base/units.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

constexpr int kSignSide = 14;
constexpr double kPale = 0.45;

// Told apart by whoever does not see colours too: a star is new, half a disc worked, a tick
// confirmed. The colours keep apart for the colour-blind, and are lighter on a dark bar.
QColor ColourOf(forms::Weight weight, bool dark) {
  switch (weight) {
    case forms::Weight::kPlain:
      break;
    case forms::Weight::kNew:
      return dark ? QColor(0xFF, 0xA2, 0x4D) : QColor(0xB3, 0x45, 0x00);
    case forms::Weight::kWorked:
      return dark ? QColor(0x7F, 0xC4, 0xF5) : QColor(0x00, 0x5C, 0x99);
    case forms::Weight::kConfirmed:
      return dark ? QColor(0x52, 0xD6, 0xA8) : QColor(0x00, 0x70, 0x4F);
  }
  return {};
}

void DrawSign(QPainter& painter, forms::Weight weight, const QColor& colour) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const QPointF centre(kSignSide / 2.0, kSignSide / 2.0);
  constexpr double kRadius = kSignSide / 2.0 - 1.5;
  switch (weight) {
    case forms::Weight::kPlain:
      break;
    case forms::Weight::kNew: {
      QPainterPath star;
      for (int i = 0; i < 10; ++i) {
        const double angle = M_PI * (i / 5.0 - 0.5),
                     radius = i % 2 == 0 ? kRadius + 1 : kRadius / 2;
        const QPointF at = centre + radius * QPointF(std::cos(angle), std::sin(angle));
        i == 0 ? star.moveTo(at) : star.lineTo(at);
      }
      star.closeSubpath();
      painter.setPen(Qt::NoPen);
      painter.setBrush(colour);
      painter.drawPath(star);
      break;
    }
    case forms::Weight::kWorked:
      painter.drawEllipse(centre, kRadius, kRadius);
      painter.setBrush(colour);
      painter.drawPie(QRectF(centre.x() - kRadius, centre.y() - kRadius, 2 * kRadius, 2 * kRadius),
                      90 * 16, 180 * 16);
      break;
    case forms::Weight::kConfirmed:
      painter.drawPolyline(QPolygonF{{2, 7.5}, {5.5, 11}, {12, 3.5}});
      break;
  }
}

QPixmap SignOf(const forms::PanelMark& mark, const QColor& colour, double ratio) {
  QPixmap sign(QSize(kSignSide, kSignSide) * ratio);
  sign.setDevicePixelRatio(ratio);
  sign.fill(Qt::transparent);
  QPainter painter(&sign);
  DrawSign(painter, mark.weight, colour);
  return sign;
}

struct PanelLabels {
  QLabel* sign = nullptr;  // null for the first panel, which only tells
  QLabel* text = nullptr;
};

void ShowMark(const PanelLabels& labels, const forms::PanelMark& mark) {
  const bool plain = mark.weight == forms::Weight::kPlain;
  labels.sign->setVisible(!plain);
  labels.text->setToolTip(ToQt(mark.tip));
  labels.sign->setToolTip(ToQt(mark.tip));
  QFont font = labels.text->parentWidget()->font();
  font.setBold(!plain && !mark.pale);
  labels.text->setFont(font);
  QPalette palette = labels.text->parentWidget()->palette();
  const bool dark = palette.color(QPalette::Window).lightness() < 128;
  QColor colour = plain ? palette.color(QPalette::WindowText) : ColourOf(mark.weight, dark);
  if (mark.pale) {
    const QColor ground = palette.color(QPalette::Window);
    const auto mix = [](int of, int on) { return static_cast<int>(on + (of - on) * kPale); };
    colour = QColor(mix(colour.red(), ground.red()), mix(colour.green(), ground.green()),
                    mix(colour.blue(), ground.blue()));
  }
  palette.setColor(QPalette::WindowText, colour);
  labels.text->setPalette(palette);
  if (!plain) labels.sign->setPixmap(SignOf(mark, colour, labels.sign->devicePixelRatioF()));
}

}  // namespace

QWidget* MakeStatusBar(forms::StatusBar& field, ViewContext& context, QWidget* parent) {
  auto* bar = new QWidget(parent);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(8, 1, 8, 2);
  row->setSpacing(8);
  std::vector<PanelLabels> panels;
  for (int number = 1; number <= field.Panels(); ++number) {
    PanelLabels& panel = panels.emplace_back();
    if (number > 1) {
      auto* line = new QFrame(bar);
      line->setFrameShape(QFrame::VLine);
      line->setFrameShadow(QFrame::Sunken);
      row->addWidget(line);
      panel.sign = new QLabel(bar);
      panel.sign->setObjectName(QStringLiteral("%1_%2_segno").arg(ToQt(field.Name())).arg(number));
      row->addWidget(panel.sign);
    }
    panel.text = new QLabel(bar);
    panel.text->setObjectName(QStringLiteral("%1_%2").arg(ToQt(field.Name())).arg(number));
    panel.text->setTextFormat(Qt::PlainText);
    panel.text->setMinimumHeight(panel.text->fontMetrics().height() + 2);
    // The first panel takes what the others leave, and never keeps a window from being narrowed.
    if (number == 1) {
      panel.text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    } else {
      panel.text->setMinimumWidth(std::max(36, field.MinimumWidth(number).Pixels()));
    }
    row->addWidget(panel.text, number == 1 ? 1 : 0);
  }
  auto* binding = new FieldBinding(field, *bar, context);
  binding->OnShow = [panels, &field] {
    for (int number = 1; number <= field.Panels(); ++number) {
      const PanelLabels& panel = panels[static_cast<std::size_t>(number - 1)];
      const QString text = ToQt(field.Panel(number));
      if (panel.text->text() != text) panel.text->setText(text);
      if (number == 1) {
        panel.text->setToolTip(text);
      } else {
        ShowMark(panel, field.Mark(number));
      }
    }
  };
  binding->Show();
  return bar;
}

}  // namespace brenvo::ui
