#include "rig/transceiver.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/number.h"
#include "base/text.h"
#include "hamlib_line.h"
#include "line_target.h"
#include "rig/replies.h"

namespace brenvo::rig {
namespace {

namespace choice = core::choice;

constexpr std::string_view kSection = kRigKind.section, kTransverters = "Transverter",
                           kRemembered = "Memorie";
constexpr double kHighest = 1e12;  // Hz
constexpr double kLowestStrength = -100, kHighestStrength = 200;
constexpr std::size_t kLongestMode = 12;

// As the settings keep them: "14250000 USB, 7100000 LSB".
std::deque<RememberedFrequency> ReadRemembered(std::string_view text) {
  std::deque<RememberedFrequency> all;
  while (!text.empty() && all.size() < Transceiver::kMostRemembered) {
    const std::size_t end = std::min(text.find(','), text.size());
    const std::string part = base::Trim(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    const double hz = std::round(base::Val(part));
    if (hz <= 0 || hz > kHighest) continue;
    const std::size_t blank = std::min(part.find(' '), part.size());
    all.push_back({base::Hz(hz), base::Left(base::Trim(part.substr(blank)), kLongestMode)});
  }
  return all;
}

std::string TextOf(const std::deque<RememberedFrequency>& all) {
  std::string text;
  for (const RememberedFrequency& each : all) {
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ",
                        base::PlainNumber(each.frequency.Value()), each.mode);
  }
  return text;
}

bool IsNear(base::Hz a, base::Hz b) {
  return std::fabs(a.Value() - b.Value()) <= Transceiver::kNear;
}

}  // namespace

Transceiver::Transceiver(core::Session& session)
    : session_(session),
      line_(std::make_unique<HamlibLine>(session.Machine, kRigKind.line, kRigKind.program)),
      poll_(session.Machine.MakeTimer()) {
  line_->OnStands = [this] { Connected(); };
  line_->OnFalls = [this] {
    poll_->SetEnabled(false);
    rig_ = sendsRig_ = wanted_ = std::nullopt;
    setting_ = false;
    mode_.clear();
    strength_.reset();
    dead_.clear();
    Publish();
  };
  poll_->OnTick = [this] { Poll(); };
  session.Rig.OnTune = [this](base::Hz air, std::string_view modo) { return Tune(air, modo); };
  choices_ = session.Choices.Changed.Subscribe([this](const core::Choice& changed) {
    if (changed.section == kSection) Follow();
  });
  reopened_ = session.Reopened.Subscribe([this] { ReadTables(); });
  profileStored_ = session.Station.ProfileStored.Subscribe([this] { ReadTables(); });
}

Transceiver::~Transceiver() {
  line_->OnFalls = nullptr;
  session_.Rig.OnTune = nullptr;
  session_.Rig.Put(std::nullopt);
}

void Transceiver::Start() {
  transverters_ = ReadTransverters(session_.GetSetting(kSection, kTransverters, ""));
  remembered_ = ReadRemembered(session_.GetSetting(kSection, kRemembered, ""));
  modes_ = LoadModes(session_, [this](const std::string& failure) { news_ = failure; });
  ReadTables();
  Follow();
}

void Transceiver::ReadTables() {
  if (!session_.IsOpen()) return;
  bands_ = Bands::Read(session_);
  Publish();
}

void Transceiver::WindowOpened(bool open) {
  windowOpen_ = open;
  strength_.reset();
  Follow();
}

void Transceiver::Follow() {
  const SetUp setUp = ReadSetUp(session_, kRigKind);
  const bool wanted =
      setUp.IsMade() && (windowOpen_ || session_.Choices.Get<choice::kRigConnects>());
  if (wanted && !line_->Wanted()) {
    isOurs_ = !setUp.isElsewhere;
    name_ = setUp.isElsewhere ? setUp.address : setUp.name;
    line_->Start(TargetOf(session_, kRigKind, setUp));
  } else if (!wanted && line_->Wanted()) {
    line_->Stop();
  }
  Changed();
}

void Transceiver::SetUpChanged() {
  line_->Stop();
  Follow();
}

bool Transceiver::Stands() const { return line_->Stands(); }

std::string Transceiver::StateText() const {
  if (!line_->Wanted()) {
    return ReadSetUp(session_, kRigKind).IsMade() ? "Non collegato" : "Nessun rtx scelto";
  }
  if (!line_->Stands()) {
    return line_->Fault().empty() ? "In connessione con " + name_
                                  : fmt::format("Non collegato: {}", line_->Fault());
  }
  if (!dead_.empty()) return "L'rtx non risponde: " + dead_;
  if (line_->IsServedByOther()) return "Collegato a un rigctld già al lavoro sulla sua porta";
  return "Collegato: " + name_;
}

std::optional<base::Hz> Transceiver::Frequency() const {
  if (!rig_) return std::nullopt;
  return OnAir(*rig_, transverters_, bands_);
}

std::optional<base::Hz> Transceiver::Sends() const {
  if (!sendsRig_ || sendsRig_ == rig_) return std::nullopt;
  return OnAir(*sendsRig_, transverters_, bands_);
}

void Transceiver::Connected() {
  tellsMode_ = tellsStrength_ = tellsSplit_ = true;
  deadTries_ = polls_ = 0;
  line_->Ask(Request::WantsVfo(), [this](const Reply& reply) {
    const auto names = ReadWantsVfo(reply.lines.empty() ? "" : reply.lines.front());
    if (!names) {
      line_->Surprised("chi risponde non è rigctld");
      return;
    }
    line_->NameVfo(*names);
    Probe();
  });
  Changed();
}

// Some transceivers tell of their split by going to the other VFO: one whose frequency is another
// one behind the question is not asked again.
void Transceiver::Probe() {
  AskFrequency();
  line_->Ask(Request::Mode(), [this](const Reply& reply) { TakeMode(reply); });
  line_->Ask(Request::Split(), [this](const Reply& reply) {
    beforeSplit_ = rig_;
    TakeSplit(reply);
  });
  AskFrequency([this] {
    if (rig_ == beforeSplit_) return;
    tellsSplit_ = false;
    sendsRig_.reset();
    Publish();
  });
  poll_->SetInterval(kPoll);
  poll_->SetEnabled(true);
}

void Transceiver::AskFrequency(std::function<void()> then) {
  line_->Ask(Request::Frequency(), [this, then = std::move(then)](const Reply& reply) {
    TakeFrequency(reply);
    if (then) then();
  });
}

void Transceiver::Poll() {
  if (!line_->IsIdle()) return;
  Rest();
  AskFrequency();
  if (!dead_.empty()) return;
  if (tellsMode_) {
    line_->Ask(Request::Mode(), [this](const Reply& reply) { TakeMode(reply); });
  }
  if (windowOpen_ && tellsStrength_) {
    line_->Ask(Request::Strength(), [this](const Reply& reply) {
      tellsStrength_ = !IsUnknown(reply.code) && reply.code != -1;
      const auto strength =
          reply.lines.empty() ? std::nullopt : std::optional(base::Val(reply.lines.front()));
      strength_.reset();
      if (reply.code == kDone && strength) {
        strength_ =
            static_cast<int>(std::clamp(std::round(*strength), kLowestStrength, kHighestStrength));
      }
      Changed();
    });
  }
  // Another program that shares it may be amidst a change of its own.
  if (isOurs_ && !line_->IsServedByOther() && tellsSplit_ && ++polls_ % kBetweenSplits == 0) {
    line_->Ask(Request::Split(), [this](const Reply& reply) { TakeSplit(reply); });
  }
}

void Transceiver::Dead(int code) {
  dead_ = WordsOf(code);
  strength_.reset();
  const auto step =
      static_cast<std::size_t>(std::min<int>(deadTries_++, std::ssize(HamlibLine::kBackOff) - 1));
  poll_->SetInterval(HamlibLine::kBackOff[step]);
  Publish();
}

void Transceiver::TakeFrequency(const Reply& reply) {
  if (reply.code != kDone) {
    Dead(reply.code);
    return;
  }
  const auto hz = reply.Number("Frequency");
  if (!hz || *hz < 0 || *hz > kHighest) {
    line_->Surprised("risposta senza frequenza");
    return;
  }
  line_->GoesWell();
  if (!dead_.empty()) {
    dead_.clear();
    deadTries_ = 0;
    poll_->SetInterval(kPoll);
  }
  // What was wanted since the question is on its way.
  if (!setting_) rig_ = base::Hz(std::round(*hz));
  Publish();
}

void Transceiver::TakeMode(const Reply& reply) {
  tellsMode_ = tellsMode_ && !IsUnknown(reply.code);
  if (reply.code != kDone) return;
  mode_ = base::Left(base::ValidUtf8(reply.Find("Mode").value_or("")), kLongestMode);
  Publish();
}

void Transceiver::TakeSplit(const Reply& reply) {
  tellsSplit_ = tellsSplit_ && !IsUnknown(reply.code) && reply.code != -1;
  if (reply.code != kDone) return;
  if (!tellsSplit_ || reply.Find("Split") != "1") {
    sendsRig_.reset();
    Publish();
    return;
  }
  line_->Ask(Request::SplitFrequency(), [this](const Reply& answer) {
    const auto hz = answer.Number("TX Frequency");
    sendsRig_.reset();
    if (answer.code == kDone && hz && *hz > 0 && *hz <= kHighest) sendsRig_ = base::Hz(*hz);
    Publish();
  });
}

std::string Transceiver::Tune(base::Hz air, std::string_view modo) {
  return TuneTo({air, modes_.ToRig(modo, air)});
}

std::string Transceiver::TuneTo(const RememberedFrequency& where) {
  if (!Stands()) return "Rtx: " + StateText();
  const base::Hz rig = OnRig(where.frequency, transverters_, bands_);
  if (rig.Value() < 1 || rig.Value() > kHighest) return "Rtx: frequenza fuori scala";
  wanted_ = base::Hz(std::round(rig.Value()));
  wantedMode_ = where.mode;
  SendWanted();
  return fmt::format("Rtx a {}{}{}", FrequencyText(where.frequency), where.mode.empty() ? "" : " ",
                     where.mode);
}

// A knob that is turned fast wants more than goes over the line: what counts is the last.
void Transceiver::SendWanted() {
  if (setting_ || !wanted_) return;
  setting_ = true;
  rig_ = std::exchange(wanted_, std::nullopt);
  Publish();
  line_->Ask(Request::SetFrequency(*rig_), [this](const Reply& reply) {
    setting_ = false;
    if (reply.code != kDone) {
      wanted_.reset();
      wantedMode_.clear();
      Say(fmt::format("L'rtx non va su questa frequenza: {}", WordsOf(reply.code)));
      AskFrequency();
    } else if (wanted_) {
      SendWanted();
    } else if (const std::string mode = std::exchange(wantedMode_, {});
               !mode.empty() && mode != mode_) {
      SendMode(mode);
    }
  });
}

std::string Transceiver::TakeModeOfRig(std::string_view mode) {
  if (!Stands()) return "Rtx: " + StateText();
  SendMode(mode);
  return fmt::format("Rtx in {}", mode);
}

void Transceiver::SendMode(std::string_view mode) {
  const auto request = Request::SetMode(mode);
  if (!request) return;
  line_->Ask(*request, [this, mode = std::string(mode)](const Reply& reply) {
    if (reply.code == kDone) {
      mode_ = mode;
      Publish();
    } else {
      Say(fmt::format("L'rtx non prende il modo {}: {}", mode, WordsOf(reply.code)));
    }
  });
}

void Transceiver::Publish() {
  const auto air = Frequency();
  if (air && dead_.empty()) {
    const Band* const band = bands_.At(*air);
    session_.Rig.Put(core::RigNow{*air, band == nullptr ? std::string() : band->banda,
                                  modes_.ToLog(mode_, *air), Sends()});
  } else {
    session_.Rig.Put(std::nullopt);
  }
  Changed();
}

void Transceiver::Rest() {
  const auto air = Frequency();
  const std::int64_t now = session_.Machine.GetClock().UtcNow().Seconds();
  if (!air || !restsAt_ || !IsNear(*air, *restsAt_)) {
    restsAt_ = air;
    restsSince_ = now;
  } else if (now - restsSince_ >= kRests) {
    Remember();
  }
}

void Transceiver::Remember() {
  if (!rig_) return;
  const RememberedFrequency here{*Frequency(), mode_};
  if (!remembered_.empty() && IsNear(remembered_.front().frequency, here.frequency) &&
      remembered_.front().mode == here.mode) {
    return;
  }
  std::erase_if(remembered_, [&](const RememberedFrequency& each) {
    return IsNear(each.frequency, here.frequency);
  });
  remembered_.push_front(here);
  if (remembered_.size() > kMostRemembered) remembered_.pop_back();
  session_.SaveSetting(kSection, kRemembered, TextOf(remembered_));
  Changed();
}

void Transceiver::SetTransverters(std::vector<Transverter> transverters) {
  transverters_ = std::move(transverters);
  session_.SaveSetting(kSection, kTransverters, TextOf(transverters_));
  Publish();
}

void Transceiver::SetMode(const ModeRule& rule) {
  StoreOwnMode(session_, rule);
  modes_ = LoadModes(session_, [this](const std::string& failure) { Say(failure); });
  Publish();
}

void Transceiver::Say(std::string text) {
  news_ = std::move(text);
  Changed();
}

}  // namespace brenvo::rig
