// What goes out to the services: the contacts that they do not have yet, as log files.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "conferme/services.h"
#include "core/session.h"
#include "core/stations.h"
#include "platform/process.h"

namespace brenvo::conferme {

// The contacts that have not been sent to the service, those that were to be sent again (the field
// of the service says R or Q), and those that have been and were changed since in what the service
// looks at, by number; none that is not to be sent (N and I), nor one that it has refused as it
// stands.
std::vector<std::int64_t> UnsentTo(core::Session& session, Service service);
// They have been sent there today; one work that can be taken back. Gives how many have changed.
std::int64_t MarkSent(core::Session& session, Service service,
                      const std::vector<std::int64_t>& keys);

// What a service has said of a contact that it does not take.
struct Refusal {
  std::int64_t qsoNr = 0;
  std::string words;
};
void KeepRefusals(core::Session& session, Service service, const std::vector<Refusal>& refusals);
// Those whose contact stands as it was refused, by number.
std::vector<Refusal> RefusalsOf(core::Session& session, Service service);
// It is to be sent again.
void ForgetRefusal(core::Session& session, Service service, std::int64_t qsoNr);
// How many contacts were sent and have been changed since.
std::int64_t ChangedSince(core::Session& session, Service service);

// The contacts by the stations that they were made from; those of none are the current one's.
std::vector<std::pair<core::StationRow, std::vector<std::int64_t>>> ByStation(
    core::Session& session, const std::vector<std::int64_t>& keys);

// What the end of tqsl means.
struct SigningEnd {
  bool sent = false;
  std::string told;  // Italian
};
SigningEnd MeaningOf(const platform::ProgramEnd& end);

// Has tqsl sign contacts and send them to LoTW: a run for each station that they were made from,
// with the location of tqsl that bears the station's name. Contacts of a run are marked as sent
// when tqsl says that LoTW has them. No secret goes through here: tqsl asks for its own.
class Signing {
 public:
  explicit Signing(core::Session& session);

  // Begins with all that was not sent; `tell` gets what was done, at the end of each run and where
  // nothing can be done. Nothing while it is at work.
  void Send(std::function<void(const std::string& told)> tell);
  bool IsAtWork() const { return !runs_.empty(); }

 private:
  struct Run {
    std::string location;
    std::vector<std::int64_t> keys;
  };
  void StartNext();
  void Ended(const platform::ProgramEnd& end);

  core::Session& session_;
  std::unique_ptr<platform::Process> tqsl_;
  std::deque<Run> runs_;
  std::function<void(const std::string& told)> tell_;
  std::string told_;  // of the runs that have ended
};

}  // namespace brenvo::conferme
