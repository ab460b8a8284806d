#include "bench/support/figures.h"

#include <fmt/format.h>
#include <time.h>

#include <algorithm>
#include <cstdio>

#include "base/number.h"

namespace brenvo::bench {
namespace {

std::string TimeText(double milliseconds) {
  if (milliseconds < 1) return fmt::format("{:.1f} us", milliseconds * 1000);
  if (milliseconds < 10000) return fmt::format("{:.1f} ms", milliseconds);
  return fmt::format("{:.1f} s", milliseconds / 1000);
}

}  // namespace

double ProcessorTime() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double Samples::At(double share) const {
  if (times_.empty()) return 0;
  std::vector<double> sorted = times_;
  std::sort(sorted.begin(), sorted.end());
  return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
}

Figures::Figures(std::string program, int argc, char** argv) : program_(std::move(program)) {
  if (argc > 1) filter_ = argv[1];
  for (int i = 2; i < argc; ++i) sizes_.push_back(std::stoll(argv[i]));
  if (sizes_.empty()) sizes_ = {10'000, 100'000, 1'000'000};
}

bool Figures::Wants(std::string_view task) const {
  return fmt::format("{}: {}", program_, task).find(filter_) != std::string::npos;
}

bool Figures::WantsAnyOf(std::initializer_list<std::string_view> tasks) const {
  return std::any_of(tasks.begin(), tasks.end(),
                     [this](std::string_view task) { return Wants(task); });
}

void Figures::Line(std::int64_t contacts, std::string_view task, const Samples& program,
                   const Samples& hand, std::string_view note, const Samples& limit) const {
  const auto median = [](const Samples& samples) {
    return samples.Empty() ? std::string() : TimeText(samples.Median());
  };
  const auto tail = [](const Samples& samples) {
    return samples.Many() ? TimeText(samples.At(0.99)) : std::string();
  };
  const auto ratio = [&](const Samples& samples) {
    return samples.Empty() ? std::string()
                           : fmt::format("{:.2f}", program.Median() / samples.Median());
  };
  Print(contacts, task,
        {median(program), tail(program), median(hand), tail(hand), ratio(hand), median(limit),
         ratio(limit)},
        note);
}

void Figures::Compare(std::int64_t contacts, std::string_view task, int runs,
                      const std::function<void()>& program, const std::function<void()>& hand,
                      const std::function<void()>& limit) const {
  if (!Wants(task)) return;
  Samples ours, theirs, best;
  for (int run = 0; run < runs; ++run) {
    ours.Measure(program);
    if (hand) theirs.Measure(hand);
    if (limit) best.Measure(limit);
  }
  Line(contacts, task, ours, theirs, "", best);
}

void Figures::Value(std::int64_t contacts, std::string_view task, std::string_view value) const {
  if (Wants(task)) Print(contacts, task, {std::string(value), "", "", "", "", "", ""}, "");
}

void Figures::Print(std::int64_t contacts, std::string_view task,
                    const std::array<std::string, 7>& cells, std::string_view note) const {
  fmt::print("| {:>9} | {:<44} |", base::FormatNumber(static_cast<double>(contacts), "#,###"),
             fmt::format("{}: {}", program_, task));
  constexpr std::array<int, 7> kWidths = {9, 9, 9, 9, 6, 9, 6};
  for (std::size_t i = 0; i < cells.size(); ++i) fmt::print(" {:>{}} |", cells[i], kWidths[i]);
  fmt::print("{}{}\n", note.empty() ? "" : " ", note);
  std::fflush(stdout);
}

}  // namespace brenvo::bench
