// The transceiver for other programs of this computer, in the words that they know: those of
// rigctld.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/session.h"
#include "rig/transceiver.h"

namespace brenvo::rig {

// What is served. Frequencies are those on the air.
struct ServedRig {
  std::optional<base::Hz> frequency;  // nothing while no transceiver answers
  std::string mode;                   // the transceiver's own word
};
// What a program wants of it.
struct ServedWish {
  std::optional<base::Hz> frequency{};
  std::string mode{};  // empty for none
  bool leaves = false;
};

// The answer to one line, without its end; `wish` gets what it asks to be done. Whatever would
// transmit, key or switch on is refused as not available, as is a split; what is not understood is
// an invalid parameter.
std::string AnswerTo(std::string_view line, const ServedRig& rig, ServedWish& wish);

// Serves as long as the operator has chosen so.
class RigServer {
 public:
  static constexpr std::size_t kLongestLine = 400;  // bytes; who sends more is turned away

  RigServer(core::Session& session, Transceiver& transceiver);
  ~RigServer();
  RigServer(const RigServer&) = delete;
  RigServer& operator=(const RigServer&) = delete;

  void Start();
  // "Offerto sulla porta 4534 a 1 programma"; empty while it does not serve, and why where it was
  // to.
  std::string StateText() const;

  forms::Signal<> Changed;

 private:
  void Follow();
  void Hear(int peer);
  bool TakeLine(int peer, std::string_view line);

  core::Session& session_;
  Transceiver& transceiver_;
  std::unique_ptr<platform::TcpServer> server_;
  std::map<int, std::string> partial_;  // of each program the line that has not ended
  std::string fault_;
  forms::Subscription choices_;
};

}  // namespace brenvo::rig
