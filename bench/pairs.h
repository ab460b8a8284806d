// Measures tasks in pairs: through the program, and by hand with plain queries.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <span>
#include <string>

namespace brenvo {

struct PairOfTasks {
  const char* name;
  void (*program)(benchmark::State&);
  void (*hand)(benchmark::State&);
};

// A line a pair: the medians of the processor's time, and their ratio.
class PairReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override {
    std::printf("%-20s %14s %14s %8s\n", "task", "program us", "by hand us", "ratio");
    return true;
  }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") continue;
      const double time = run.GetAdjustedCPUTime();
      if (!second_) {
        program_ = time;
      } else {
        std::printf("%-20s %14.2f %14.2f %8.2f\n", run.run_name.function_name.c_str(), program_,
                    time, program_ / time);
        std::fflush(stdout);
      }
      second_ = !second_;
    }
  }

 private:
  bool second_ = false;
  double program_ = 0;
};

inline int RunPairs(int argc, char** argv, std::span<const PairOfTasks> tasks) {
  benchmark::Initialize(&argc, argv);
  for (const PairOfTasks& task : tasks) {
    for (const auto work : {task.program, task.hand}) {
      benchmark::RegisterBenchmark(task.name, work)
          ->Unit(benchmark::kMicrosecond)
          ->MinTime(0.3)
          ->Repetitions(3);
    }
  }
  PairReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return 0;
}

}  // namespace brenvo
