#include "ui/qt_progress.h"

#include <algorithm>
#include <QApplication>
#include <QPushButton>

#include "ui/text.h"

namespace brenvo {
namespace {

// The bar counts in thousandths: totals may be larger than it can take.
constexpr int kSteps = 1000;
constexpr int kShowAfterMilliseconds = 400;

}  // namespace

QtProgress::QtProgress(EventGate& gate, std::string_view title, std::int64_t total)
    : hold_(gate),
      dialog_(ToQt(title), {}, 0, kSteps, QApplication::activeWindow()),
      total_(std::max<std::int64_t>(total, 1)) {
  // Esc and a click only: an Enter or a blank that was struck too often must not undo a long run.
  auto* stop = new QPushButton(QStringLiteral("Interrompi"));
  stop->setAutoDefault(false);
  stop->setFocusPolicy(Qt::NoFocus);
  dialog_.setCancelButton(stop);
  dialog_.setWindowTitle(QApplication::applicationDisplayName());
  dialog_.setWindowModality(Qt::ApplicationModal);
  dialog_.setMinimumDuration(kShowAfterMilliseconds);
  dialog_.setAutoReset(false);
  dialog_.setAutoClose(false);
}

QtProgress::~QtProgress() = default;

bool QtProgress::Advance(std::int64_t done) {
  const int step = static_cast<int>(std::clamp<std::int64_t>(done * kSteps / total_, 0, kSteps));
  if (step != dialog_.value()) dialog_.setValue(step);
  return !dialog_.wasCanceled();
}

}  // namespace brenvo
