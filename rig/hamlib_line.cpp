#include "hamlib_line.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"

namespace brenvo::rig {
namespace {

constexpr std::size_t kBlock = 4096, kLongestLastWords = 120;

// The last line of what a program has written, for the operator.
std::string LastWords(std::string_view output) {
  while (!output.empty()) {
    const std::size_t start = output.find_last_not_of("\r\n");
    if (start == output.npos) return {};
    output = output.substr(0, start + 1);
    const std::size_t begin = output.rfind('\n') + 1;  // npos + 1 is 0
    const std::string line = base::Trim(output.substr(begin));
    if (!line.empty()) return base::Left(base::ValidUtf8(line), kLongestLastWords);
    output = output.substr(0, begin);
  }
  return {};
}

}  // namespace

platform::ProgramStart StartOf(std::string_view program, const LineTarget& target) {
  platform::ProgramStart start;
  start.program = program;
  start.arguments = {"-m", std::to_string(target.model), "-T", "127.0.0.1",
                     "-t", std::to_string(target.port)};
  const bool isRig = program == "rigctld";
  if (!target.device.empty()) {
    start.arguments.insert(start.arguments.end(), {"-r", target.device});
    if (target.speed > 0) {
      start.arguments.insert(start.arguments.end(), {"-s", std::to_string(target.speed)});
    }
    // Interfaces transmit on these lines. A model without a serial line does not know them.
    if (isRig) start.arguments.emplace_back("--set-conf=rts_state=OFF,dtr_state=OFF");
  }
  if (isRig) start.arguments.insert(start.arguments.end(), {"-P", "NONE"});
  return start;
}

HamlibLine::HamlibLine(platform::Platform& machine, std::string_view name, std::string_view program)
    : program_(program),
      socket_(machine.MakeTcpClient(name)),
      process_(machine.MakeProcess()),
      patience_(machine.MakeTimer()),
      again_(machine.MakeTimer()) {
  socket_->OnConnected = [this] {
    stands_ = true;
    startTries_ = kStartUpTries;
    fault_.clear();
    reader_.Reset();
    namesVfo_ = false;
    if (OnStands) OnStands();
  };
  socket_->OnData = [this] { Hear(); };
  socket_->OnFail = [this](std::string_view reason) {
    const bool wasOther = triesOther_ && !stands_;
    Fall(wasOther ? std::string_view(lastWords_) : reason);
  };
  socket_->OnPeerClose = [this] { Fall("collegamento chiuso"); };
  process_->OnEnd = [this](const platform::ProgramEnd& end) { ProgramEnded(end); };
  patience_->SetInterval(kPatience);
  patience_->OnTick = [this] { Fall("nessuna risposta"); };
  again_->OnTick = [this] {
    again_->SetEnabled(false);
    Connect();
  };
}

void HamlibLine::Start(const LineTarget& target) {
  Stop();
  target_ = target;
  wanted_ = true;
  Connect();
}

void HamlibLine::Stop() {
  wanted_ = false;
  again_->SetEnabled(false);
  patience_->SetEnabled(false);
  waiting_.clear();
  inFlight_ = false;
  socket_->Close();
  process_->Stop();
  fault_.clear();
  tries_ = startTries_ = 0;
  if (std::exchange(stands_, false) && OnFalls) OnFalls();
}

void HamlibLine::Connect() {
  if (target_.isOurs && !process_->IsRunning()) {
    startTries_ = 0;
    triesOther_ = false;
    try {
      process_->Start(StartOf(program_, target_));
    } catch (const platform::DeviceError&) {
      Fall(fmt::format("manca {}: installare il pacchetto libhamlib-utils", program_));
      return;
    }
    // One that has ended at once has said so.
    if (!process_->IsRunning()) return;
  }
  socket_->Connect(target_.host, target_.port);
}

void HamlibLine::Ask(const Request& request, std::function<void(const Reply& reply)> then) {
  if (!stands_) return;
  waiting_.push_back({request, std::move(then)});
  SendNext();
}

void HamlibLine::SendNext() {
  if (waiting_.empty() || inFlight_) return;
  inFlight_ = true;
  const Request& request = waiting_.front().request;
  reader_.Expect(request);
  patience_->SetEnabled(false);  // begins to count anew
  patience_->SetEnabled(true);
  try {
    socket_->Send(request.Bytes(namesVfo_));
  } catch (const platform::DeviceError&) {
    Fall("la connessione non risponde");
  }
}

void HamlibLine::Hear() {
  while (stands_ && socket_->BytesWaiting() > 0) {
    reader_.Feed(socket_->Read(kBlock));
    if (reader_.IsBroken()) {
      Fall("risposta inattesa");
      return;
    }
    const auto reply = reader_.Take();
    if (!reply || waiting_.empty()) continue;
    patience_->SetEnabled(false);
    const Asked answered = std::move(waiting_.front());
    waiting_.pop_front();
    inFlight_ = false;
    // First what it brings: that may let the line fall.
    if (answered.then) answered.then(*reply);
    if (stands_) SendNext();
  }
}

void HamlibLine::Fall(std::string_view why) {
  patience_->SetEnabled(false);
  waiting_.clear();
  inFlight_ = false;
  socket_->Close();
  stands_ = false;
  if (wanted_) {
    const bool startsUp = target_.isOurs && process_->IsRunning() && startTries_ < kStartUpTries;
    const auto step = static_cast<std::size_t>(std::min<int>(tries_, std::ssize(kBackOff) - 1));
    again_->SetInterval(startsUp ? kStartUp : kBackOff[step]);
    startsUp ? ++startTries_ : ++tries_;
    again_->SetEnabled(true);
    fault_ = startsUp ? fmt::format("{} parte", program_) : std::string(why);
  }
  if (OnFalls) OnFalls();
}

// One that ends before it was ever reached may have found its port taken: by a program like it that
// outlived an earlier evening, or that another one has started.
void HamlibLine::ProgramEnded(const platform::ProgramEnd& end) {
  const std::string words = LastWords(end.output);
  lastWords_ = fmt::format("{} si è fermato{}{}", program_, words.empty() ? "" : ": ", words);
  if (startTries_ < kStartUpTries && !triesOther_) {
    again_->SetEnabled(false);
    triesOther_ = true;
    socket_->Connect(target_.host, target_.port);
  } else {
    Fall(lastWords_);
  }
}

}  // namespace brenvo::rig
