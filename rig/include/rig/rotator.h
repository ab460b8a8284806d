// The station's rotator: where the beam looks, and where it is to look.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/session.h"
#include "rig/replies.h"

namespace brenvo::rig {

class HamlibLine;

// Lives as long as the main frame. It is connected while a window wants it, or as long as the
// operator has chosen so; then the session's map knows where the beam looks. Nothing turns but at
// the operator's word.
class Rotator {
 public:
  // Milliseconds between two questions, at rest and while it turns.
  static constexpr int kPoll = 5000, kTurningPoll = 1000;
  // Degrees within which it has arrived.
  static constexpr double kArrived = 3;

  explicit Rotator(core::Session& session);
  ~Rotator();
  Rotator(const Rotator&) = delete;
  Rotator& operator=(const Rotator&) = delete;

  void Start();
  void WindowOpened(bool open);
  void SetUpChanged();

  std::string StateText() const;
  bool Stands() const;
  const std::string& LastNews() const { return news_; }
  // As the rotator counts, degrees; nothing while nobody knows.
  const std::optional<double>& Angle() const { return angle_; }
  // The direction from north, 0 to below 360.
  std::optional<double> Direction() const;
  // Where it is turning to, as it counts.
  const std::optional<double>& Target() const { return target_; }
  const std::optional<RotatorLimits>& Limits() const { return limits_; }

  // Degrees from north; within the limits, and with the least turning where two angles lead there.
  // In words what becomes of it.
  std::string TurnTo(double direction);
  std::string StopTurning();

  forms::Signal<> Changed;

 private:
  void Follow();
  void Connected();
  void Poll();
  void TakePosition(const Reply& reply);
  void Say(std::string text);

  core::Session& session_;
  std::unique_ptr<HamlibLine> line_;
  std::unique_ptr<platform::Timer> poll_;
  forms::Subscription choices_;
  bool windowOpen_ = false;
  std::string name_, news_, dead_;
  int deadTries_ = 0;
  std::optional<double> angle_, target_;
  double elevation_ = 0;
  std::optional<RotatorLimits> limits_;
};

// The way to a station, degrees from north.
struct Beam {
  std::string locator;
  int shortPath = 0, longPath = 0;
};
// To a call, by its locator or else by its country's; nothing where nobody knows where it is, or
// where it is here.
std::optional<Beam> BeamTo(core::Session& session, std::string_view call, std::string_view locator);

}  // namespace brenvo::rig
