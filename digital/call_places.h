// Where a call is from, in memory: for whoever asks many times a second.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/date.h"

namespace brenvo::core {
class Session;
}

namespace brenvo::digital {

struct CallPlace {
  std::string Prefisso, Country, Continente;
  std::string title;  // of the country, as its table describes it
  double ZonaCQ = 0, ZonaITU = 0;
};

// As core::ResolvePrefix tells it, of the tables as they were read.
class CallPlaces {
 public:
  void Read(core::Session& session);
  // On that day; null when nothing is resolved.
  const CallPlace* Of(std::string_view call, base::DateTime day) const;

 private:
  std::unordered_map<std::string, CallPlace> byPrefix_;
};

}  // namespace brenvo::digital
