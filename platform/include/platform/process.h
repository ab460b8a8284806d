// Another program at work beside this one.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::platform {

struct ProgramStart {
  std::string program;  // by its name, as the system finds it; no shell is between
  std::vector<std::string> arguments;
  // How long it may run, milliseconds; 0 for one that goes on until it is stopped.
  int limit = 0;
};

struct ProgramEnd {
  static constexpr int kStopped = -1;
  int status = 0;  // kStopped when it did not end by itself
  // What it wrote to both its outputs. Of what is longer than Process::kMostOutput the last of it.
  std::string output;
};

class Process {
 public:
  static constexpr std::size_t kMostOutput = 1 << 20;  // bytes

  // The program does not outlive it.
  virtual ~Process() = default;
  // Returns at once; one that it runs already is stopped first. DeviceError when there is no such
  // program.
  virtual void Start(const ProgramStart& start) = 0;
  virtual bool IsRunning() const = 0;
  // Ends it without OnEnd; harmless when it does not run.
  virtual void Stop() = 0;

  std::function<void(const ProgramEnd& end)> OnEnd;
};

}  // namespace brenvo::platform
