// Serial lines with nothing at their other end.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "platform/serial_port.h"
#include "recorder/line_sink.h"

namespace brenvo::recorder {

// COM1 to COM4, by their numbers. Each write is a line: `sent COM1 20 20 F7`. Outlives its ports.
class RecordingSerialLines {
 public:
  explicit RecordingSerialLines(LineSink sink) : sink_(std::move(sink)) {}

  std::unique_ptr<platform::SerialPort> MakePort();

  // Bytes come in, all of them in one event. Refused when nobody has the port open.
  void Receive(int number, std::string_view bytes);
  // The next opening or writing of the port throws DeviceError.
  void FailNext(int number);
  bool IsOpen(int number) const;
  // As the window set them: "9600,N,8,1"; empty while the port is closed.
  std::string Settings(int number) const;

 private:
  class Port;
  struct Line {
    Port* port = nullptr;  // the one that is open
    bool failNext = false;
  };
  Line* Find(int number);
  const Line* Find(int number) const;

  LineSink sink_;
  std::array<Line, 4> lines_;
};

}  // namespace brenvo::recorder
