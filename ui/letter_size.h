// The size of all letters, which grows and shrinks with Ctrl and the wheel.
#pragma once

#include <QObject>

#include "platform/settings_store.h"

namespace brenvo::ui {

// Begins with the size that was chosen before, else with the desktop's, which it gives back when it
// goes.
class LetterSize : public QObject {
 public:
  explicit LetterSize(platform::SettingsStore& settings);
  ~LetterSize() override;

  static constexpr double kSmallest = 7, kLargest = 28;  // points
  // By so many points, within what is readable.
  void Grow(int points);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  platform::SettingsStore& settings_;
  double desktops_;
};

}  // namespace brenvo::ui
