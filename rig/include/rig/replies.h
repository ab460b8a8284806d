// What is said to the programs that lead a transceiver or a rotator, and what they answer: lines of
// text, one request at a time.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/units.h"

namespace brenvo::rig {

// One command with its arguments. None of those here makes a transceiver transmit, switches it on
// or off, or keys it; there is no way to write one that does.
class Request {
 public:
  // The one that is asked without the '+': whether each command wants a VFO named first.
  static Request WantsVfo();
  static Request Frequency() { return {"get_freq", ""}; }
  static Request Mode() { return {"get_mode", ""}; }
  static Request Split() { return {"get_split_vfo", ""}; }
  static Request SplitFrequency() { return {"get_split_freq", ""}; }
  static Request Strength() { return {"get_level", "STRENGTH"}; }
  static Request SetFrequency(base::Hz frequency);
  // The filter stays as it is. Nothing for what is no mode's name.
  static std::optional<Request> SetMode(std::string_view mode);

  static Request RotatorState() { return {"dump_state", "", false}; }
  static Request Position() { return {"get_pos", "", false}; }
  // Degrees.
  static Request SetPosition(double azimuth, double elevation);
  static Request StopTurning() { return {"stop", "", false}; }

  // As it goes over the line.
  std::string Bytes(bool namesVfo) const;
  const std::string& Name() const { return name_; }
  // Its answer is one line and no more.
  bool IsBare() const { return bare_; }

 private:
  Request(std::string_view name, std::string_view arguments, bool ofVfo = true, bool bare = false)
      : name_(name), arguments_(arguments), ofVfo_(ofVfo), bare_(bare) {}

  std::string name_, arguments_;
  bool ofVfo_, bare_;
};

// How a request went.
inline constexpr int kDone = 0;
// It cannot be done with this one, now or later; the line or the device is dead.
bool IsUnknown(int code);
bool IsDead(int code);
// In words, Italian: "non disponibile".
std::string WordsOf(int code);

struct Reply {
  std::vector<std::string> lines;  // without the repeated command and the code
  int code = kDone;
  // What stands behind "Key: "; nothing where no line has it.
  std::optional<std::string> Find(std::string_view key) const;
  // The same as a number, finite; nothing where there is none.
  std::optional<double> Number(std::string_view key) const;
};

// Puts an answer together from what comes in. Once something has come that is no part of the answer
// that is waited for, nothing that follows can be trusted.
class ReplyReader {
 public:
  static constexpr std::size_t kLongestLine = 4000, kMostLines = 400, kMostBytes = 100000;

  // Waits for the answer to this request, and for nothing before.
  void Expect(const Request& request);
  bool Waits() const { return waits_; }
  void Feed(std::string_view bytes);
  // The answer, once all of it is there.
  std::optional<Reply> Take();
  bool IsBroken() const { return broken_; }
  // Begins anew, on another line.
  void Reset();

 private:
  void TakeLine(std::string_view line);

  std::string name_;
  bool bare_ = false, waits_ = false, begun_ = false, broken_ = false;
  std::string partial_;
  std::size_t bytes_ = 0;
  Reply reply_;
  std::optional<Reply> whole_;
};

// True when the answer to Request::WantsVfo says so; nothing for what is no such answer.
std::optional<bool> ReadWantsVfo(std::string_view line);

// Between which angles a rotator turns, degrees. It may reach a direction in two ways.
struct RotatorLimits {
  double minAzimuth = 0, maxAzimuth = 360, minElevation = 0, maxElevation = 0;
  friend bool operator==(const RotatorLimits&, const RotatorLimits&) = default;
};
// Nothing where the answer does not tell them.
std::optional<RotatorLimits> ReadLimits(const Reply& state);
// The angle to turn to, so that the beam looks to a direction (degrees from north) with the least
// turning from `now`; nothing where the limits leave the direction out.
std::optional<double> AngleFor(double direction, double now, const RotatorLimits& limits);
// Where a beam looks that stands at an angle: 0 to below 360.
double DirectionOf(double angle);

// A transceiver or rotator that the library knows.
struct Model {
  int number = 0;
  std::string maker, name, state;
  friend bool operator==(const Model&, const Model&) = default;
};
// The list as the library's own program prints it; lines that are none of it are passed over.
std::vector<Model> ReadModels(std::string_view text);

}  // namespace brenvo::rig
