// The station's bands by frequency, and the transverters before some of them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/units.h"
#include "core/session.h"

namespace brenvo::rig {

struct Band {
  std::string banda;  // as contacts have it
  base::Khz from, to;
};

class Bands {
 public:
  Bands() = default;
  explicit Bands(std::vector<Band> all) : all_(std::move(all)) {}
  // Those of UserRTX.
  static Bands Read(core::Session& session);

  const std::vector<Band>& All() const { return all_; }
  // Null where the frequency lies in none; blanks around a name do not count.
  const Band* At(base::Hz frequency) const;
  const Band* Find(std::string_view banda) const;

 private:
  std::vector<Band> all_;
};

// What is added to the transceiver's frequency to be on the band.
struct Transverter {
  std::string banda;  // without blanks around
  base::Mhz adds;     // below 0 where it is taken away
  bool inUse = false;
  friend bool operator==(const Transverter&, const Transverter&) = default;
};

// As the settings keep them: "23cm:1268:Y, 13cm:2160:N". What cannot be read is left out.
std::vector<Transverter> ReadTransverters(std::string_view text);
std::string TextOf(const std::vector<Transverter>& transverters);

// On the air, where the transceiver stands there, by the first transverter in use that leads into
// its band; and where it must stand to be on the air there.
base::Hz OnAir(base::Hz rig, const std::vector<Transverter>& transverters, const Bands& bands);
base::Hz OnRig(base::Hz air, const std::vector<Transverter>& transverters, const Bands& bands);

// A frequency as the operator writes it: "14.250", "14250", "14250.5" or "14.250.500"; as MHz or
// as kHz, whatever lies in one of the bands, and else as kHz. Nothing for what is no frequency.
std::optional<base::Hz> ReadFrequency(std::string_view text, const Bands& bands);
// "14.250.500": MHz, kHz and Hz.
std::string FrequencyText(base::Hz frequency);

}  // namespace brenvo::rig
