// Where a call is from, in memory: for whoever asks many times a second.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "base/date.h"
#include "core/place_on_day.h"

namespace brenvo::core {
class Session;
}

namespace brenvo::digital {

// As an import takes it: by the day's rule (core::PlaceOnDay), and by the table of prefixes, as it
// was read, where no rule knows the call.
class CallPlaces {
 public:
  // Valid as long as the session.
  explicit CallPlaces(core::Session& session) : session_(session) {}
  // The tables; before that nothing is resolved.
  void Read();
  // At that moment in UTC. Empty where nothing is known.
  core::CallPlace Of(std::string_view call, base::DateTime utc) const;
  // A country as its table describes it; the code where that has no description.
  std::string TitleOf(const std::string& country) const;

 private:
  core::Session& session_;
  std::unordered_map<std::string, core::CallPlace> byPrefix_;
  std::unordered_map<std::string, std::string> titles_;  // by code
};

}  // namespace brenvo::digital
