// A serial line over the machine's devices.
#pragma once

#include <QSerialPort>

#include "platform/serial_port.h"
#include "platform/settings_store.h"
#include "ui/event_gate.h"

namespace brenvo::ui {

// The device behind COM1 to COM4 where the settings name none.
QString DefaultSerialDevice(int number);

class QtSerialPort : public platform::SerialPort {
 public:
  QtSerialPort(EventGate& gate, platform::SettingsStore& settings);
  ~QtSerialPort() override;
  void SetSettings(std::string_view settings) override;
  void SetPortNumber(int number) override { number_ = number; }
  void Open() override;
  void Close() override;
  // Also when the device has gone since, until it is closed.
  bool IsOpen() const override { return open_; }
  std::size_t BytesWaiting() const override;
  std::string Read(std::size_t most) override;
  void Write(std::string_view bytes) override;

 private:
  QString Device() const;
  void NoteError(QSerialPort::SerialPortError error);

  platform::SettingsStore& settings_;
  QSerialPort* port_;
  QObject guard_;
  int number_ = 1;
  bool open_ = false;
  QString lost_;  // why the device of an open port is gone
};

}  // namespace brenvo::ui
