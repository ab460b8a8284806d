// The province that the log knows of a station, in memory.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/session.h"
#include "platform/background.h"
#include "platform/clock.h"

namespace brenvo::digital {

// A decode tells no province: that of the newest contact with the same call counts. The log is read
// in the background; a contact that is stored is looked at at once.
class CallProvinces {
 public:
  // Valid as long as the session. `read` is run when the log has been read.
  CallProvinces(core::Session& session, std::function<void()> read);
  ~CallProvinces();
  CallProvinces(const CallProvinces&) = delete;
  CallProvinces& operator=(const CallProvinces&) = delete;

  // Empty where none is known within that country, a code; until the log has been read, too.
  std::string_view Of(std::string_view call, std::string_view country) const;

 private:
  struct Province {
    std::string country, code;
  };
  using ByCall = std::unordered_map<std::string, Province>;
  struct Reading;

  void Heard(const core::ContactsChanged& announced);
  void Read();
  void LookWhetherRead();
  void LookAt(const std::string& call);

  core::Session& session_;
  std::function<void()> read_;
  ByCall byCall_;
  std::unique_ptr<platform::Timer> watching_;
  std::shared_ptr<Reading> reading_;  // null for nothing
  std::unique_ptr<platform::BackgroundWork> work_;
  std::vector<std::string> during_;  // calls of contacts that were stored since it began
  bool due_ = false;                 // to be read again
  forms::Subscription contacts_, closing_, reopened_;
};

}  // namespace brenvo::digital
