#include "qt_progress.h"

#include <algorithm>
#include <limits>
#include <QApplication>
#include <QPushButton>

#include "ui/text.h"

namespace brenvo::ui {
namespace {

// The bar counts in thousandths: totals may be larger than it can take.
constexpr int kSteps = 1000;
constexpr int kShowAfterMilliseconds = 1000;
constexpr int kHearEachMilliseconds = 50;
constexpr int kNever = std::numeric_limits<int>::max();

// What a window leaves behind when it closes, and what stood beneath it, take a few turns.
void PaintWhatHasChanged() {
  constexpr int kTurns = 3;
  for (int turn = 0; turn < kTurns; ++turn) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                    QEventLoop::ExcludeSocketNotifiers);
  }
}

}  // namespace

QtProgress::QtProgress(EventGate& gate, std::string_view title, std::int64_t total)
    : hold_(gate), title_(title), total_(std::max<std::int64_t>(total, 0)) {
  PaintWhatHasChanged();
  since_.start();
}

QtProgress::~QtProgress() {
  for (const QPointer<QWidget>& each : still_) {
    if (each) each->setUpdatesEnabled(true);
  }
}

void QtProgress::ShowBar() {
  for (QWidget* each : QApplication::topLevelWidgets()) {
    if (!each->isVisible() || !each->updatesEnabled()) continue;
    each->setUpdatesEnabled(false);
    still_.emplace_back(each);
  }
  pointer_.emplace();
  bar_ = std::make_unique<QProgressDialog>(ToQt(title_), QString(), 0, total_ > 0 ? kSteps : 0,
                                           QApplication::activeWindow());
  // Esc and a click only: an Enter or a blank that was struck too often must not undo a long run.
  auto* stop = new QPushButton(QStringLiteral("Interrompi"));
  stop->setAutoDefault(false);
  stop->setFocusPolicy(Qt::NoFocus);
  bar_->setCancelButton(stop);
  bar_->setWindowTitle(QApplication::applicationDisplayName());
  bar_->setWindowModality(Qt::ApplicationModal);
  bar_->setMinimumDuration(kNever);  // it has taken long enough already
  bar_->setAutoReset(false);
  bar_->setAutoClose(false);
  bar_->show();
}

bool QtProgress::Advance(std::int64_t done) {
  if (!bar_) {
    if (since_.elapsed() < kShowAfterMilliseconds) return true;
    ShowBar();
  }
  if (!heard_.isValid() || heard_.elapsed() >= kHearEachMilliseconds) {
    if (total_ > 0) {
      const double part = static_cast<double>(done) / static_cast<double>(total_);
      bar_->setValue(static_cast<int>(std::clamp(part, 0.0, 1.0) * kSteps));
    }
    QCoreApplication::processEvents();
    heard_.start();
  }
  return !bar_->wasCanceled();
}

}  // namespace brenvo::ui
