#include "missing_bands.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <vector>

#include "adif/adif_names.h"
#include "adif/station_tables.h"
#include "base/text.h"
#include "core/station_profile.h"

namespace brenvo::adif {
namespace {

constexpr double kKhzPerMhz = 1000;

}  // namespace

void AddBand(core::Session& session, const std::string& banda) {
  const AdifBand* band = FindAdifBand(PlainBand(banda));
  engine::Table& profile = *session.Tables.TbUserRTX;
  profile.AddNew();
  profile.Set("Banda", banda);
  profile.Set("Frequenza", band == nullptr ? 0 : band->lower);
  profile.Set("FrequenzaI", band == nullptr ? 0 : band->lower * kKhzPerMhz);
  profile.Set("FrequenzaF", band == nullptr ? 0 : band->upper * kKhzPerMhz);
  profile.Set("RST", "59");
  profile.Set("AnnunceDX", false);
  profile.Update();
}

std::set<std::string> MissingBands(core::Session& session, const std::set<std::string>& bands) {
  std::set<std::string> missing;
  for (const std::string& banda : bands) {
    if (!base::Trim(banda).empty() && !core::FindBandProfile(session, banda)) missing.insert(banda);
  }
  return missing;
}

void OfferBands(core::Session& session, std::string_view title,
                const std::set<std::string>& missing) {
  if (missing.empty()) return;
  std::vector<std::string> names;
  for (const std::string& banda : missing) names.push_back(base::Trim(banda));
  const std::string question = fmt::format(
      "Nel profilo della stazione mancano bande dei contatti importati: {}.\nAggiungerle ?",
      fmt::join(names, ", "));
  if (!session.Messages().AskYesNo(title, question)) return;
  for (const std::string& banda : missing) AddBand(session, banda);
  session.Station.ProfileStored();
}

}  // namespace brenvo::adif
