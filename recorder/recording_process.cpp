#include "recorder/recording_process.h"

#include <algorithm>

#include "platform/device_error.h"
#include "recorder/quote.h"
#include "recorder/refused.h"

namespace brenvo::recorder {

class RecordingProcesses::Recorded : public platform::Process {
 public:
  explicit Recorded(RecordingProcesses& processes) : processes_(processes) {
    processes_.all_.push_back(this);
  }
  ~Recorded() override {
    Recorded::Stop();
    std::erase(processes_.all_, this);
  }

  void Start(const platform::ProgramStart& start) override {
    Stop();
    std::string arguments;
    for (const std::string& each : start.arguments) {
      arguments += (arguments.empty() ? "" : " ") + each;
    }
    processes_.sink_("process " + start.program + ' ' + Quoted(arguments));
    if (processes_.failing_.erase(start.program) > 0) {
      throw platform::DeviceError("Il programma " + start.program + " non c'è");
    }
    auto& queued = processes_.queued_[start.program];
    if (queued.empty()) {
      if (start.limit > 0) throw Refused{"nobody says how " + start.program + " ends"};
      program_ = start.program;
      return;
    }
    const Foreseen next = std::move(queued.front());
    queued.pop_front();
    if (next.arguments != arguments) {
      throw Refused{start.program + " was foreseen with \"" + next.arguments + '"'};
    }
    if (OnEnd) OnEnd(next.end);
  }

  bool IsRunning() const override { return !program_.empty(); }

  void Stop() override {
    if (program_.empty()) return;
    processes_.sink_("process-stop " + program_);
    program_.clear();
  }

  const std::string& Program() const { return program_; }
  void End(const platform::ProgramEnd& end) {
    program_.clear();
    // A copy: its owner may go with what it does.
    const auto handler = OnEnd;
    if (handler) handler(end);
  }

 private:
  RecordingProcesses& processes_;
  std::string program_;  // while it runs
};

std::unique_ptr<platform::Process> RecordingProcesses::Make() {
  return std::make_unique<Recorded>(*this);
}

void RecordingProcesses::End(std::string_view program, const platform::ProgramEnd& end) {
  Recorded* const running = FindRunning(program);
  if (running == nullptr) throw Refused{std::string(program) + " does not run"};
  running->End(end);
}

RecordingProcesses::Recorded* RecordingProcesses::FindRunning(std::string_view program) const {
  const auto at = std::find_if(all_.begin(), all_.end(),
                               [&](const Recorded* each) { return each->Program() == program; });
  return at == all_.end() ? nullptr : *at;
}

}  // namespace brenvo::recorder
