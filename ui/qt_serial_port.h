// A serial line over the machine's devices.
#pragma once

#include <QSerialPort>

#include "platform/serial_port.h"
#include "platform/settings_store.h"
#include "ui/event_gate.h"

namespace brenvo {

// The device behind COM1 to COM4 where the settings name none.
QString DefaultSerialDevice(int number);

class QtSerialPort : public SerialPort {
 public:
  QtSerialPort(EventGate& gate, SettingsStore& settings);
  ~QtSerialPort() override;
  void SetSettings(std::string_view settings) override;
  void SetPortNumber(int number) override { number_ = number; }
  void Open() override;
  void Close() override;
  bool IsOpen() const override { return port_->isOpen(); }
  std::size_t BytesWaiting() const override;
  std::string Read(std::size_t most) override;
  void Write(std::string_view bytes) override;

 private:
  QString Device() const;

  SettingsStore& settings_;
  QSerialPort* port_;
  QObject guard_;
  int number_ = 1;
};

}  // namespace brenvo
