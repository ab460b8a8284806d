// The table of figures: what a task costs through the program, the same way by hand, and at the
// limit, the best way that is known to have done with it, and the ratios.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::bench {

// Processor time of this thread, milliseconds: what else the machine does is not counted.
double ProcessorTime();

// Milliseconds of each run.
class Samples {
 public:
  void Measure(const std::function<void()>& work) {
    const double start = ProcessorTime();
    work();
    Add(ProcessorTime() - start);
  }
  void Add(double milliseconds) { times_.push_back(milliseconds); }
  bool Empty() const { return times_.empty(); }
  // So many that a hundredth of them is more than one.
  bool Many() const { return times_.size() >= 200; }
  // The one that a share of all do not exceed.
  double At(double share) const;
  double Median() const { return At(0.5); }

 private:
  std::vector<double> times_;
};

// One program of the suite. Its arguments: a text that the names of the tasks to run must hold
// (all, when empty), then how many contacts the log holds, in as many sizes as wanted (10,000,
// 100,000 and 1,000,000 by default).
class Figures {
 public:
  Figures(std::string program, int argc, char** argv);

  const std::vector<std::int64_t>& Sizes() const { return sizes_; }
  bool Wants(std::string_view task) const;
  bool WantsAnyOf(std::initializer_list<std::string_view> tasks) const;

  // A line of the table; without times by hand or at the limit, or with the note, where there is
  // something to say.
  void Line(std::int64_t contacts, std::string_view task, const Samples& program,
            const Samples& hand, std::string_view note = "", const Samples& limit = {}) const;
  // Measures one after the other, so that all meet the same machine: `runs` times each.
  void Compare(std::int64_t contacts, std::string_view task, int runs,
               const std::function<void()>& program, const std::function<void()>& hand,
               const std::function<void()>& limit = {}) const;
  // A figure that is no time.
  void Value(std::int64_t contacts, std::string_view task, std::string_view value) const;

 private:
  void Print(std::int64_t contacts, std::string_view task, const std::array<std::string, 7>& cells,
             std::string_view note) const;

  std::string program_, filter_;
  std::vector<std::int64_t> sizes_;
};

}  // namespace brenvo::bench
