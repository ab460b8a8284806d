// The line to a program that leads a transceiver or a rotator: one request at a time, and whatever
// surprises on it is answered by a new line.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/platform.h"
#include "rig/replies.h"

namespace brenvo::rig {

// Where the program is, and how it is started where it is to be started by us.
struct LineTarget {
  std::string host = "127.0.0.1";
  int port = 0;
  bool isOurs = false;
  int model = 0;
  std::string device;  // of a serial line; empty for a model that has none
  int speed = 0;       // baud; 0 for the model's own
  friend bool operator==(const LineTarget&, const LineTarget&) = default;
};

// How our own program is started: on this computer alone, with the lines of the port at rest and
// no way to transmit.
platform::ProgramStart StartOf(std::string_view program, const LineTarget& target);

class HamlibLine {
 public:
  // Milliseconds until an answer must be there; between two tries to connect, from the first one
  // on; and between the first ones to a program that we have just started.
  static constexpr int kPatience = 3000;
  static constexpr int kBackOff[] = {1000, 2000, 5000, 10000, 30000};
  static constexpr int kStartUp = 400, kStartUpTries = 8;

  // `name` is the connection's and `program` the one that leads it.
  HamlibLine(platform::Platform& machine, std::string_view name, std::string_view program);

  // Connects, and again after whatever ends it, until it is stopped.
  void Start(const LineTarget& target);
  void Stop();
  bool Wanted() const { return wanted_; }
  bool Stands() const { return stands_; }
  // It stands, to a program that was at work on the port already, as ours could not be.
  bool IsServedByOther() const { return stands_ && triesOther_; }
  // Why it does not stand; empty while it does or was never wanted.
  const std::string& Fault() const { return fault_; }

  // Sends it once the others before it are answered; `then` gets the answer, and nothing when the
  // line falls first.
  void Ask(const Request& request, std::function<void(const Reply& reply)> then);
  bool IsIdle() const { return waiting_.empty(); }
  // Whoever takes the answer finds that it cannot be one.
  void Surprised(std::string_view why) { Fall(why); }
  // Each command names the VFO in use first.
  void NameVfo(bool names) { namesVfo_ = names; }
  // What it was told to do has gone well: the next try after a fall is soon again.
  void GoesWell() { tries_ = 0; }

  // It stands, or no longer does.
  std::function<void()> OnStands, OnFalls;

 private:
  struct Asked {
    Request request;
    std::function<void(const Reply& reply)> then;
  };
  void Connect();
  void SendNext();
  void Hear();
  void Fall(std::string_view why);
  void ProgramEnded(const platform::ProgramEnd& end);

  std::string program_;
  std::unique_ptr<platform::TcpClient> socket_;
  std::unique_ptr<platform::Process> process_;
  std::unique_ptr<platform::Timer> patience_, again_;
  LineTarget target_;
  bool wanted_ = false, stands_ = false, namesVfo_ = false, inFlight_ = false;
  int tries_ = 0, startTries_ = 0;
  bool triesOther_ = false;
  std::string fault_, lastWords_;
  ReplyReader reader_;
  std::deque<Asked> waiting_;  // the first one may be on its way
};

}  // namespace brenvo::rig
