// The awards of the station's directory, and the session's log as they look at it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/session.h"
#include "diplomi/count.h"

namespace brenvo::diplomi {

// Where they lie; ours are replaced by each delivery, the operator's own stay.
inline constexpr const char* kAwardFolder = "Diplomi";

// By their names. `tell` gets what is wrong with each file that is not used, in Italian.
std::vector<Award> LoadAwards(core::Session& session, const worked::Rules& rules, World& world,
                              const std::function<void(const std::string& text)>& tell);

// Countries, provinces and bands of the tables; no lists yet.
World ReadWorld(core::Session& session);
// All stations, the current one first.
std::vector<OwnPlace> ReadPlaces(core::Session& session);

// Reads the log, or single contacts of it again, with what stands beside them.
class LogReading {
 public:
  // `awards` say what is wanted beside contacts. All live longer.
  LogReading(core::Session& session, const std::vector<Award>& awards, const worked::Rules& rules);

  // Asked now and then with the contacts that are read; false stops.
  using Progress = std::function<bool(std::int64_t done)>;
  // Nothing when it was stopped.
  std::optional<LogImage> Read(const Progress& progress);
  // The contact as it is stored by now, or nothing where it is gone.
  void ReadAgain(LogImage& log, std::int64_t key);
  // The credits that have no contact.
  void ReadCredits(LogImage& log);

 private:
  class Walk;
  core::Session& session_;
  const worked::Rules& rules_;
  std::vector<std::string> fields_;
  std::vector<std::string> notePatterns_;
  std::vector<std::string> areaCountries_;
};

}  // namespace brenvo::diplomi
