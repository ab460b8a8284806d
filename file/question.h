// Asks from within SQLite whether its work is to go on.
#pragma once

#include <sqlite3.h>

#include <exception>
#include <functional>
#include <utility>

namespace brenvo::file {

// While it lives it is asked every few milliseconds of the file's work. No exception may cross
// SQLite: what the question throws stops the work and is kept. A no stays a no.
class Question {
 public:
  Question(sqlite3* file, std::function<bool()> goOn) : file_(file), goOn_(std::move(goOn)) {
    constexpr int kStepsBetween = 20000;  // of SQLite's machine
    sqlite3_progress_handler(file_, kStepsBetween, Ask, this);
  }
  ~Question() { sqlite3_progress_handler(file_, 0, nullptr, nullptr); }
  Question(const Question&) = delete;
  Question& operator=(const Question&) = delete;

  bool Stopped() const { return stopped_; }
  // It is being asked at this moment: the file may not be used until it has answered.
  bool Open() const { return open_; }
  void RethrowFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  static int Ask(void* question) {
    Question& self = *static_cast<Question*>(question);
    if (self.stopped_) return 1;
    self.open_ = true;
    try {
      self.stopped_ = !self.goOn_();
    } catch (...) {
      self.stopped_ = true;
      self.failure_ = std::current_exception();
    }
    self.open_ = false;
    return self.stopped_ ? 1 : 0;
  }

  sqlite3* file_;
  std::function<bool()> goOn_;
  bool stopped_ = false, open_ = false;
  std::exception_ptr failure_;
};

}  // namespace brenvo::file
