#include "rig/rotator.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "base/number.h"
#include "base/text.h"
#include "core/places.h"
#include "geo/locator.h"
#include "hamlib_line.h"
#include "line_target.h"

namespace brenvo::rig {
namespace {

namespace choice = core::choice;

constexpr double kFurthest = 3600;  // degrees that a rotator may count to

}  // namespace

Rotator::Rotator(core::Session& session)
    : session_(session),
      line_(std::make_unique<HamlibLine>(session.Machine, kRotorKind.line, kRotorKind.program)),
      poll_(session.Machine.MakeTimer()) {
  line_->OnStands = [this] { Connected(); };
  line_->OnFalls = [this] {
    poll_->SetEnabled(false);
    angle_ = target_ = std::nullopt;
    limits_.reset();
    dead_.clear();
    session_.Map.Heading.reset();
    Changed();
  };
  poll_->OnTick = [this] { Poll(); };
  choices_ = session.Choices.Changed.Subscribe([this](const core::Choice& changed) {
    if (changed.section == kRotorKind.section) Follow();
  });
}

Rotator::~Rotator() {
  line_->OnFalls = nullptr;
  session_.Map.Heading.reset();
}

void Rotator::Start() { Follow(); }

void Rotator::WindowOpened(bool open) {
  windowOpen_ = open;
  Follow();
}

void Rotator::SetUpChanged() {
  line_->Stop();
  Follow();
}

void Rotator::Follow() {
  const SetUp setUp = ReadSetUp(session_, kRotorKind);
  const bool wanted =
      setUp.IsMade() && (windowOpen_ || session_.Choices.Get<choice::kRotorConnects>());
  if (wanted && !line_->Wanted()) {
    name_ = setUp.isElsewhere ? setUp.address : setUp.name;
    line_->Start(TargetOf(session_, kRotorKind, setUp));
  } else if (!wanted && line_->Wanted()) {
    line_->Stop();
  }
  Changed();
}

bool Rotator::Stands() const { return line_->Stands(); }

std::string Rotator::StateText() const {
  if (!line_->Wanted()) {
    return ReadSetUp(session_, kRotorKind).IsMade() ? "Non collegato" : "Nessun rotore scelto";
  }
  if (!line_->Stands()) {
    return line_->Fault().empty() ? "In connessione con " + name_
                                  : fmt::format("Non collegato: {}", line_->Fault());
  }
  if (!dead_.empty()) return "Il rotore non risponde: " + dead_;
  if (target_) return fmt::format("Gira verso {:.0f}°", DirectionOf(*target_));
  if (line_->IsServedByOther()) return "Collegato a un rotctld già al lavoro sulla sua porta";
  return "Collegato: " + name_;
}

std::optional<double> Rotator::Direction() const {
  if (!angle_) return std::nullopt;
  return DirectionOf(*angle_);
}

void Rotator::Connected() {
  deadTries_ = 0;
  line_->Ask(Request::RotatorState(), [this](const Reply& reply) {
    limits_ = ReadLimits(reply);
    if (!limits_) {
      line_->Surprised("chi risponde non è rotctld");
      return;
    }
    line_->Ask(Request::Position(), [this](const Reply& position) { TakePosition(position); });
    poll_->SetInterval(kPoll);
    poll_->SetEnabled(true);
  });
  Changed();
}

void Rotator::Poll() {
  if (!line_->IsIdle()) return;
  line_->Ask(Request::Position(), [this](const Reply& reply) { TakePosition(reply); });
}

void Rotator::TakePosition(const Reply& reply) {
  if (reply.code != kDone) {
    dead_ = WordsOf(reply.code);
    angle_.reset();
    session_.Map.Heading.reset();
    const auto step =
        static_cast<std::size_t>(std::min<int>(deadTries_++, std::ssize(HamlibLine::kBackOff) - 1));
    poll_->SetInterval(std::max(HamlibLine::kBackOff[step], target_ ? kTurningPoll : kPoll));
    Changed();
    return;
  }
  const auto azimuth = reply.Number("Azimuth");
  if (!azimuth || std::fabs(*azimuth) > kFurthest) {
    line_->Surprised("risposta senza angolo");
    return;
  }
  line_->GoesWell();
  dead_.clear();
  deadTries_ = 0;
  angle_ = azimuth;
  session_.Map.Heading = Direction();
  elevation_ = reply.Number("Elevation").value_or(0);
  if (target_ && std::fabs(*target_ - *azimuth) <= kArrived) target_.reset();
  poll_->SetInterval(target_ ? kTurningPoll : kPoll);
  Changed();
}

std::string Rotator::TurnTo(double direction) {
  if (!Stands() || !limits_) return "Rotore: " + StateText();
  const auto angle = AngleFor(direction, angle_.value_or(0), *limits_);
  if (!angle) {
    return fmt::format("{:.0f}° è fuori dai limiti del rotore ({:.0f}°-{:.0f}°)",
                       DirectionOf(direction), limits_->minAzimuth, limits_->maxAzimuth);
  }
  const double elevation = std::clamp(elevation_, std::min(limits_->minElevation, 0.0),
                                      std::max(limits_->maxElevation, 0.0));
  target_ = angle;
  line_->Ask(Request::SetPosition(*angle, elevation), [this](const Reply& reply) {
    if (reply.code == kDone) return;
    target_.reset();
    Say(fmt::format("Il rotore non gira: {}", WordsOf(reply.code)));
  });
  poll_->SetInterval(kTurningPoll);
  Changed();
  return fmt::format("Antenna verso {:.0f}°", DirectionOf(direction));
}

std::string Rotator::StopTurning() {
  if (!Stands()) return "Rotore: " + StateText();
  target_.reset();
  line_->Ask(Request::StopTurning(), [this](const Reply& reply) {
    Say(reply.code == kDone ? "Rotore fermo"
                            : fmt::format("Il rotore non si ferma: {}", WordsOf(reply.code)));
    Poll();
  });
  Changed();
  return "Chiesto al rotore di fermarsi";
}

void Rotator::Say(std::string text) {
  news_ = std::move(text);
  Changed();
}

std::optional<Beam> BeamTo(core::Session& session, std::string_view call,
                           std::string_view locator) {
  const std::string to =
      geo::IsValidLocator(locator) ? std::string(locator) : core::LocatorOfCall(session, call);
  const std::string& own = session.Station.MyLocator;
  if (to.empty() || !geo::IsValidLocator(own) || to.substr(0, 6) == own.substr(0, 6)) {
    return std::nullopt;
  }
  try {
    const geo::Bearing bearing = geo::BearingSpLp(own, to);
    return Beam{to, bearing.shortPath, bearing.longPath};
  } catch (const std::domain_error&) {
    return std::nullopt;
  }
}

}  // namespace brenvo::rig
