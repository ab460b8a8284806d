// Contacts sent to the services that take them on the net: eQSL, QRZ and Club Log.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "conferme/account.h"
#include "core/session.h"
#include "platform/web_client.h"

namespace brenvo::conferme {

// All that a service does not have yet, from each station under its own call. Contacts are marked
// as sent as the service says that it has them; those that it refuses are kept with its words.
class Upload {
 public:
  struct Ears {
    std::function<void(std::int64_t done, std::int64_t all)> progress;
    // All is over, and what was done, in Italian.
    std::function<void(const std::string& told)> ended;
  };
  Upload(core::Session& session, Addresses addresses);

  // Not of LoTW, which takes signed files alone (sending.h).
  void Start(Service service, Ears ears);
  bool IsAtWork() const { return web_ != nullptr; }
  // Ends it: what the service has taken by then is marked. Gives what was done.
  std::string Stop();

 private:
  struct Run {
    Account account;
    std::vector<std::int64_t> keys;
  };
  void Next();
  void Ended(const platform::WebEnd& end);
  void Mark();
  void Finish(const std::string& why);
  std::string Told(const std::string& why) const;

  core::Session& session_;
  Addresses addresses_;
  Service service_ = Service::kEqsl;
  Ears ears_;
  std::unique_ptr<platform::WebClient> web_;
  std::deque<Run> runs_;
  std::vector<std::int64_t> asked_;  // of the question in work
  std::vector<std::int64_t> taken_;  // not marked yet
  std::string answer_, lastWords_;
  std::int64_t all_ = 0, done_ = 0, sent_ = 0, refused_ = 0;
};

}  // namespace brenvo::conferme
