// The small devices: clock, timer, message box, settings.
#pragma once

#include <QPointer>
#include <QSettings>
#include <QTimer>
#include <QTimeZone>

#include "platform/clock.h"
#include "platform/message_box.h"
#include "platform/settings_store.h"
#include "ui/event_gate.h"

namespace brenvo::ui {

class QtClock : public platform::Clock {
 public:
  base::DateTime Now() override;
  base::DateTime UtcNow() override;
  bool KnowsZone(std::string_view zone) override;
  int OffsetOfUtc(base::DateTime utc, std::string_view zone) override;
  std::vector<int> OffsetsOfLocal(base::DateTime local, std::string_view zone) override;

 private:
  const QTimeZone& ZoneOf(std::string_view name);

  // The zone that was asked for last: to make one reads a file.
  std::string zoneName_;
  QTimeZone zone_ = QTimeZone::systemTimeZone();
};

class QtTimer : public platform::Timer {
 public:
  explicit QtTimer(EventGate& gate);
  ~QtTimer() override;
  void SetInterval(int milliseconds) override;
  void SetEnabled(bool enabled) override;
  bool Enabled() const override { return enabled_; }

 private:
  void StartOrStop();
  // A tick may destroy its own timer, so the timer goes by deleteLater.
  QTimer* timer_;
  int interval_ = 0;
  bool enabled_ = false;
};

class QtMessageBox : public platform::MessageBox {
 public:
  void Show(platform::MessageIcon icon, std::string_view title, std::string_view text) override;
  bool AskYesNo(std::string_view title, std::string_view text) override;
};

// An ini file; every change is on disk when SaveSetting returns.
class QtSettings : public platform::SettingsStore {
 public:
  explicit QtSettings(const std::filesystem::path& file);
  std::string GetSetting(std::string_view section, std::string_view key,
                         std::string_view defaultValue) override;
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override;

 private:
  QSettings settings_;
};

}  // namespace brenvo::ui
