// The transceiver as windows see it, whoever leads it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/units.h"
#include "forms/signal.h"

namespace brenvo::core {

// Frequencies are those on the air, with a transverter's part.
struct RigNow {
  base::Hz frequency;
  std::string banda;              // of the station's bands; empty where it lies in none
  std::string modo;               // as contacts have it; empty where nobody knows
  std::optional<base::Hz> sends;  // where it transmits, if that is elsewhere
  friend bool operator==(const RigNow&, const RigNow&) = default;
};

class RigDoor {
 public:
  // Nothing while no transceiver answers.
  const std::optional<RigNow>& Now() const { return now_; }
  // It is, or does, something else than before.
  forms::Signal<> Changed;
  // Wants the transceiver there, in a mode of contacts; an empty one leaves the mode. What became
  // of it, in one line for the operator.
  std::string Tune(base::Hz frequency, std::string_view modo) const {
    return OnTune ? OnTune(frequency, modo) : std::string(kNone);
  }
  static constexpr std::string_view kNone = "Nessun rtx collegato: Comunication > Rtx";

  // For who leads it.
  void Put(std::optional<RigNow> now) {
    if (now == now_) return;
    now_ = std::move(now);
    Changed();
  }
  std::function<std::string(base::Hz frequency, std::string_view modo)> OnTune;

 private:
  std::optional<RigNow> now_;
};

}  // namespace brenvo::core
