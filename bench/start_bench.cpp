// The start: from nothing to the main frame, with its log as large as told, and how much memory
// the log window and its grid take. Each start is a process of its own. Screens are not in it.
#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <functional>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "log/log_form.h"
#include "station/station.h"

namespace brenvo::bench {
namespace {

double Clock() {
  return std::chrono::duration<double, std::milli>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

// What `work` returns in a process of its own, and the most memory that this took, megabytes.
struct Outcome {
  double value = 0;
  double megabytes = 0;
};
Outcome Apart(const std::function<double()>& work) {
  int pipes[2];
  if (pipe(pipes) != 0) std::exit(1);
  const pid_t child = fork();
  if (child == 0) {
    const double value = work();
    const bool written = write(pipes[1], &value, sizeof value) == sizeof value;
    _exit(written ? 0 : 1);
  }
  Outcome outcome;
  if (read(pipes[0], &outcome.value, sizeof outcome.value) != sizeof outcome.value) std::exit(1);
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  outcome.megabytes = static_cast<double>(usage.ru_maxrss) / 1024;
  close(pipes[0]);
  close(pipes[1]);
  return outcome;
}

void Run(const Figures& figures, std::int64_t contacts) {
  const BenchDirectory directory(contacts);
  const auto start = [&](const std::function<void(core::Session&)>& then) {
    return Apart([&] {
      QuietPlatform machine;
      const double began = Clock();
      core::Session session(machine, directory.Path());
      if (station::StartStation(session) == nullptr) std::exit(1);
      const double took = Clock() - began;
      then(session);
      station::StopStation(session);
      return took;
    });
  };
  Samples starts;
  for (int i = 0; i < 10; ++i) starts.Add(start([](core::Session&) {}).value);
  if (figures.Wants("to the main frame")) {
    figures.Line(contacts, "to the main frame", starts, {}, "by the clock");
  }
  const auto memory = [&](const char* task, const std::function<void(core::Session&)>& then) {
    if (!figures.Wants(task)) return;
    figures.Value(contacts, task, fmt::format("{:.0f} MB", start(then).megabytes));
  };
  memory("memory of the main frame", [](core::Session&) {});
  const auto openGrid = [](core::Session& session) {
    auto& log = static_cast<log::LogForm&>(*session.Windows.LoadNew("LogForm"));
    session.Windows.Show(log);
    log.cmVista.Press();
    for (std::int64_t row = 1; row < log.DataGrid1.Rows(); row += 97) {
      for (int column = 0; column < log.DataGrid1.Columns(); ++column) {
        static_cast<void>(log.DataGrid1.Cell(row, column));
      }
    }
    log.cmVista.Press();
  };
  memory("memory, log window and grid scrolled through", openGrid);
  memory("memory, Log.ADI of all too", [&](core::Session& session) {
    openGrid(session);
    static_cast<QuietPlatform&>(session.Machine).Messages().QueueAnswer(false);
    static_cast<log::LogForm*>(session.Opened.CurrentLogForm)->cmAllQso.Press();
  });
}

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("start", argc, argv);
  if (!figures.WantsAnyOf({"to the main frame", "memory of the main frame",
                           "memory, log window and grid scrolled through",
                           "memory, Log.ADI of all too"})) {
    return 0;
  }
  for (const std::int64_t size : figures.Sizes()) Run(figures, size);
}
