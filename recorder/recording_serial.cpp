#include "recorder/recording_serial.h"

#include <algorithm>
#include <utility>

#include "recorder/quote.h"
#include "recorder/refused.h"

namespace brenvo::recorder {

class RecordingSerialLines::Port : public platform::SerialPort {
 public:
  explicit Port(RecordingSerialLines& lines) : lines_(lines) {}
  ~Port() override { Port::Close(); }

  void SetSettings(std::string_view settings) override { settings_ = settings; }
  void SetPortNumber(int number) override { number_ = number; }

  void Open() override {
    Line* line = lines_.Find(number_);
    if (line == nullptr) throw platform::DeviceError("La porta " + Name() + " non esiste");
    Use(*line);
    if (line->port != nullptr) throw platform::DeviceError("La porta " + Name() + " è occupata");
    line->port = this;
    open_ = line;
  }

  void Close() override {
    if (open_ == nullptr) return;
    open_->port = nullptr;
    open_ = nullptr;
    waiting_.clear();
  }

  bool IsOpen() const override { return open_ != nullptr; }
  std::size_t BytesWaiting() const override { return waiting_.size(); }

  std::string Read(std::size_t most) override {
    most = std::min(most, waiting_.size());
    std::string bytes = waiting_.substr(0, most);
    waiting_.erase(0, most);
    return bytes;
  }

  void Write(std::string_view bytes) override {
    if (open_ == nullptr) throw platform::DeviceError("La porta " + Name() + " è chiusa");
    Use(*open_);
    lines_.sink_("sent " + Name() + (bytes.empty() ? "" : " ") + HexBytes(bytes));
  }

  void Arrive(std::string_view bytes) {
    waiting_ += bytes;
    if (OnReceive) OnReceive();
  }

  const std::string& Settings() const { return settings_; }

 private:
  std::string Name() const { return "COM" + std::to_string(number_); }
  // Fails where the script wants it.
  void Use(Line& line) const {
    if (!std::exchange(line.failNext, false)) return;
    throw platform::DeviceError("La porta " + Name() + " non risponde");
  }

  RecordingSerialLines& lines_;
  std::string settings_;
  int number_ = 1;
  Line* open_ = nullptr;
  std::string waiting_;
};

std::unique_ptr<platform::SerialPort> RecordingSerialLines::MakePort() {
  return std::make_unique<Port>(*this);
}

void RecordingSerialLines::Receive(int number, std::string_view bytes) {
  Line* line = Find(number);
  if (line == nullptr || line->port == nullptr) {
    throw Refused{"COM" + std::to_string(number) + " is not open"};
  }
  line->port->Arrive(bytes);
}

void RecordingSerialLines::FailNext(int number) {
  Line* line = Find(number);
  if (line == nullptr) throw Refused{"there is no COM" + std::to_string(number)};
  line->failNext = true;
}

bool RecordingSerialLines::IsOpen(int number) const {
  const Line* line = Find(number);
  return line != nullptr && line->port != nullptr;
}

std::string RecordingSerialLines::Settings(int number) const {
  return IsOpen(number) ? Find(number)->port->Settings() : std::string();
}

RecordingSerialLines::Line* RecordingSerialLines::Find(int number) {
  return number < 1 || number > 4 ? nullptr : &lines_[static_cast<std::size_t>(number - 1)];
}

const RecordingSerialLines::Line* RecordingSerialLines::Find(int number) const {
  return number < 1 || number > 4 ? nullptr : &lines_[static_cast<std::size_t>(number - 1)];
}

}  // namespace brenvo::recorder
