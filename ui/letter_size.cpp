#include "letter_size.h"

#include <algorithm>
#include <QApplication>
#include <QWheelEvent>
#include <QWidget>

#include "base/number.h"
#include "print_preview.h"

namespace brenvo::ui {
namespace {

constexpr std::string_view kSection = "Schermo", kKey = "Lettere";
constexpr int kNotch = 120;

void Use(double points) {
  QFont font = QApplication::font();
  if (points <= 0 || font.pointSizeF() == points) return;
  font.setPointSizeF(points);
  QApplication::setFont(font);
}

// A page that is looked at before it is printed has a size of its own.
bool IsPaper(const QObject* watched) {
  for (; watched != nullptr; watched = watched->parent()) {
    if (watched->objectName() == QLatin1String(kPreviewName)) return true;
  }
  return false;
}

}  // namespace

LetterSize::LetterSize(platform::SettingsStore& settings)
    : settings_(settings), desktops_(QApplication::font().pointSizeF()) {
  const double chosen = base::Val(settings_.GetSetting(kSection, kKey, ""));
  if (chosen >= kSmallest && chosen <= kLargest) Use(chosen);
  QCoreApplication::instance()->installEventFilter(this);
}

LetterSize::~LetterSize() { Use(desktops_); }

void LetterSize::Grow(int points) {
  const double now = QApplication::font().pointSizeF();
  if (now <= 0) return;  // a desktop that counts in pixels
  const double wanted = std::clamp(now + points, kSmallest, kLargest);
  if (wanted == now) return;
  Use(wanted);
  settings_.SaveSetting(kSection, kKey, base::PlainNumber(wanted));
}

bool LetterSize::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel || !watched->isWidgetType()) return false;
  const auto& wheel = static_cast<const QWheelEvent&>(*event);
  if (wheel.modifiers() != Qt::ControlModifier || IsPaper(watched)) return false;
  const int turned = wheel.angleDelta().y();
  if (turned != 0) Grow(std::abs(turned) < kNotch ? (turned > 0 ? 1 : -1) : turned / kNotch);
  return true;
}

}  // namespace brenvo::ui
