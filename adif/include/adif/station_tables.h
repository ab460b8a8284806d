// What the station's own tables say of bands, modes, propagations, prefixes and provinces, held in
// memory for the length of one import or export.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "adif/adif_names.h"
#include "core/log_time.h"
#include "core/place_on_day.h"
#include "core/session.h"

namespace brenvo::adif {

// " 20 m" and "70cm" as the standard writes them.
std::string PlainBand(std::string_view banda);

class StationTables {
 public:
  explicit StationTables(core::Session& session);

  // The station's name of a band of the standard; in the style of the delivered names where it has
  // none.
  std::string BandaOf(std::string_view adifBand) const;
  std::string BandaAt(base::Mhz frequency) const;  // empty where there is no band
  base::Mhz FrequencyOf(std::string_view banda) const;
  // Null where the standard has no such band.
  const AdifBand* AdifBandOf(std::string_view banda, base::Mhz frequency) const;

  const std::string& ModoOf(std::string_view mode, std::string_view submode);
  std::string PropagazioneOf(std::string_view adif) const;  // empty when it means nothing here

  // By the table of prefixes; nothing is known of a call that it does not resolve.
  const core::CallPlace& Prefix(std::string_view call);
  // Who the call was then.
  entities::Answer OnDay(std::string_view call, base::DateTime utc) const {
    return session_.ByDate.Of(call, utc);
  }
  // Zones and continent of a country whatever the prefix: what all its prefixes agree on, 0 and
  // empty elsewhere.
  const core::CallPlace& OfCountry(std::string_view country);
  bool IsCountry(std::string_view code) const { return countries_.contains(std::string(code)); }
  // The code under which table Country lists a name; empty for none.
  std::string CountryNamed(std::string_view name) const;
  bool IsProvince(std::string_view country, std::string_view province) const;

  // Whole km from the own locator to a locator of 4 characters (the middle of its square) or of
  // 6 and more; 0 where the own one is missing.
  double Distance(std::string_view locator) const;

  // Log files tell UTC; the log has its own time.
  const core::LogTimes& Times() const { return times_; }

 private:
  struct Band {
    std::string banda, plain;
    double frequency = 0, lower = 0, upper = 0;  // MHz
  };

  std::string FindModo(std::string_view mode, std::string_view submode) const;

  core::Session& session_;
  core::LogTimes times_;
  std::vector<Band> bands_;
  std::vector<std::string> modes_, propagations_;
  std::unordered_set<std::string> countries_, provinces_;
  std::unordered_map<std::string, std::string> countryNames_;
  std::unordered_map<std::string, core::CallPlace> prefixes_;
  std::unordered_map<std::string, core::CallPlace> ofCountries_;  // empty until it is asked for
  std::unordered_map<std::string, std::string> foundModes_;       // by mode and submode
};

// Two letters, two digits, and again up to eight characters; case counts.
bool IsGridSquare(std::string_view text);

}  // namespace brenvo::adif
