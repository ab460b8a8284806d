// A serial line.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/device_error.h"

namespace brenvo::platform {

class SerialPort {
 public:
  virtual ~SerialPort() = default;
  // "9600,N,8,1": baud, parity, data bits, stop bits.
  virtual void SetSettings(std::string_view settings) = 0;
  // 1 to 4 for COM1 to COM4; the settings store's section "Porte" maps them to devices.
  virtual void SetPortNumber(int number) = 0;
  // DeviceError when the port is missing or busy.
  virtual void Open() = 0;
  virtual void Close() = 0;  // harmless when closed
  virtual bool IsOpen() const = 0;
  virtual std::size_t BytesWaiting() const = 0;
  // Takes up to `most` of the waiting bytes.
  virtual std::string Read(std::size_t most) = 0;
  // DeviceError when the port is closed or gone.
  virtual void Write(std::string_view bytes) = 0;

  // Bytes have come. Not called again for the same bytes.
  std::function<void()> OnReceive;
};

}  // namespace brenvo::platform
