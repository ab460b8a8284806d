// Another program at work on the database.
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>

namespace brenvo {

// Holds the file locked on a thread of its own, for a short while or for as long as the object
// lives, with a change that it stores at the end. By the time it is made the lock stands; by the
// time it goes nothing is open.
class OtherProgram {
 public:
  static constexpr std::chrono::hours kAsLongAsItLives{1};

  OtherProgram(const std::filesystem::path& file, const std::string& change,
               std::chrono::milliseconds held = std::chrono::milliseconds(300)) {
    if (sqlite3_open(file.c_str(), &file_) != SQLITE_OK) throw std::runtime_error("no database");
    Run("BEGIN IMMEDIATE");
    Run(change.c_str());
    thread_ = std::thread([this, held] {
      left_.get_future().wait_for(held);
      sqlite3_exec(file_, "COMMIT", nullptr, nullptr, nullptr);
      sqlite3_close(file_);
    });
  }
  ~OtherProgram() {
    left_.set_value();
    thread_.join();
  }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

 private:
  void Run(const char* sql) {
    if (sqlite3_exec(file_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(file_));
    }
  }

  sqlite3* file_ = nullptr;
  std::promise<void> left_;
  std::thread thread_;
};

}  // namespace brenvo
