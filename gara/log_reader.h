// What the readers of both kinds of log do alike.
#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <utility>

#include "gara/log_file.h"
#include "plain_line.h"

namespace brenvo::gara {

// Takes a file line by line: Line for each, then Finish.
class LogReader {
 public:
  virtual ~LogReader() = default;
  ReadContestLog Read(std::string_view bytes) {
    if (bytes.size() > kMostLogBytes) {
      Note(0, fmt::format("il file è più lungo di {} byte: non è stato letto", kMostLogBytes));
      return std::move(log_);
    }
    const std::string text = TextOfBytes(bytes);
    for (const std::string_view each : LinesOf(text)) {
      ++line_;
      Line(each);
    }
    Finish();
    return std::move(log_);
  }

 protected:
  virtual void Line(std::string_view whole) = 0;
  virtual void Finish() = 0;
  void Note(int line, std::string text) {
    if (log_.notes.size() < kMostNotes) {
      log_.notes.push_back({line, std::move(text)});
    } else if (log_.notes.size() == kMostNotes) {
      log_.notes.push_back({0, "altre osservazioni non sono scritte qui"});
    }
  }

  ReadContestLog log_;
  int line_ = 0;

 private:
  static constexpr std::size_t kMostNotes = 5000;
};

}  // namespace brenvo::gara
