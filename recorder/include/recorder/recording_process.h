// Other programs that do not run.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/process.h"
#include "recorder/line_sink.h"

namespace brenvo::recorder {

// A start is `process rigctld "arguments"`, with a blank between the arguments; the end of one that
// goes on, `process-stop rigctld`. Outlives its processes.
class RecordingProcesses {
 public:
  explicit RecordingProcesses(LineSink sink) : sink_(std::move(sink)) {}

  std::unique_ptr<platform::Process> Make();

  // How the next start of the program, with these arguments, ends at once; a start with others is
  // refused. Without any, one that goes on until it is stopped does so, and the start of another
  // one is refused.
  void Queue(std::string_view program, std::string_view arguments, platform::ProgramEnd end) {
    queued_[std::string(program)].push_back({std::string(arguments), std::move(end)});
  }
  // The next start finds no such program.
  void FailNext(std::string_view program) { failing_.emplace(program); }
  // A program that goes on ends by itself; refused when it does not run.
  void End(std::string_view program, const platform::ProgramEnd& end);
  bool IsRunning(std::string_view program) const { return FindRunning(program) != nullptr; }

 private:
  class Recorded;
  Recorded* FindRunning(std::string_view program) const;

  LineSink sink_;
  std::vector<Recorded*> all_;
  struct Foreseen {
    std::string arguments;
    platform::ProgramEnd end;
  };
  std::map<std::string, std::deque<Foreseen>, std::less<>> queued_;
  std::set<std::string, std::less<>> failing_;
};

}  // namespace brenvo::recorder
