#include "adif/station_tables.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "adif/dxcc_entities.h"
#include "base/text.h"
#include "core/prefix.h"
#include "geo/locator.h"
#include "plain_name.h"

namespace brenvo::adif {
namespace {

// Prefixes remembered at a time.
constexpr std::size_t kMostPrefixes = 20000;
// Modes likewise.
constexpr std::size_t kMostWords = 1000;
constexpr double kKhzPerMhz = 1000;
// Of a name that neither the station nor the standard knows; no further than a letter may be cut.
constexpr std::size_t kLongestBand = 10;

std::vector<std::string> ColumnOf(core::Session& session, std::string_view select) {
  std::vector<std::string> texts;
  const auto rows = session.Db.OpenSnapshot(select);
  for (; !rows->EOF_(); rows->MoveNext()) texts.push_back(rows->Field(0).Text());
  return texts;
}

std::string InList(const std::vector<std::string>& list, std::string_view word) {
  const auto at = std::find_if(list.begin(), list.end(), [&](const std::string& each) {
    return base::SameText(base::Trim(each), word);
  });
  return at == list.end() || word.empty() ? std::string() : *at;
}

// In the style of the delivered names: three places for the number, then the unit.
std::string MadeUpBanda(std::string_view adifBand) {
  const std::size_t digits = adifBand.find_first_not_of("0123456789");
  const std::string_view unit = adifBand.substr(std::min(digits, adifBand.size()));
  if (digits > 3 || (unit != "m" && unit != "cm")) return std::string(adifBand);
  return fmt::format("{:>3}{:>2}", adifBand.substr(0, digits), unit);
}

}  // namespace

std::string PlainBand(std::string_view banda) {
  std::string plain;
  for (const char c : banda) {
    if (c != ' ') plain += c;
  }
  return plain;
}

StationTables::StationTables(core::Session& session) : session_(session), times_(session) {
  const auto bands = session.Db.OpenSnapshot(
      "Select Banda,Frequenza,FrequenzaI,FrequenzaF from UserRTX Order By Frequenza");
  for (; !bands->EOF_(); bands->MoveNext()) {
    const std::string banda = bands->Field(0).Text();
    bands_.push_back({banda, PlainBand(banda), bands->Field(1).Number(),
                      bands->Field(2).Number() / kKhzPerMhz,
                      bands->Field(3).Number() / kKhzPerMhz});
  }
  modes_ = ColumnOf(session, "select Modo from Modi order by Codice");
  propagations_ = ColumnOf(session, "select Propagazione from Propagazione order by Codice");
  const auto countries = session.Db.OpenSnapshot("select Country,Descrizione from Country");
  for (; !countries->EOF_(); countries->MoveNext()) {
    const std::string code = base::Trim(countries->Field(0).Text());
    countries_.insert(code);
    countryNames_.emplace(PlainName(countries->Field(1).Text()), code);
  }
  const auto provinces = session.Db.OpenSnapshot("select Country,Provincia from Provincie");
  for (; !provinces->EOF_(); provinces->MoveNext()) {
    provinces_.insert(base::Trim(provinces->Field(0).Text()) + '|' +
                      base::Trim(provinces->Field(1).Text()));
  }
}

std::string StationTables::BandaOf(std::string_view adifBand) const {
  const auto named = std::find_if(bands_.begin(), bands_.end(), [&](const Band& band) {
    return base::SameText(band.plain, adifBand);
  });
  if (named != bands_.end()) return named->banda;
  const AdifBand* wanted = FindAdifBand(adifBand);
  if (wanted == nullptr) return base::Left(Stripped(adifBand), kLongestBand);
  for (const Band& band : bands_) {
    if (band.frequency >= wanted->lower && band.frequency <= wanted->upper) return band.banda;
  }
  return MadeUpBanda(wanted->name);
}

std::string StationTables::BandaAt(base::Mhz frequency) const {
  for (const Band& band : bands_) {
    if (frequency.Value() >= band.lower && frequency.Value() <= band.upper) return band.banda;
  }
  const AdifBand* band = AdifBandAt(frequency);
  return band == nullptr ? std::string() : BandaOf(band->name);
}

base::Mhz StationTables::FrequencyOf(std::string_view banda) const {
  for (const Band& band : bands_) {
    if (base::SameText(band.banda, banda)) return base::Mhz(band.frequency);
  }
  const AdifBand* band = FindAdifBand(PlainBand(banda));
  return base::Mhz(band == nullptr ? 0 : band->lower);
}

const AdifBand* StationTables::AdifBandOf(std::string_view banda, base::Mhz frequency) const {
  if (const AdifBand* named = FindAdifBand(PlainBand(banda))) return named;
  for (const Band& band : bands_) {
    if (base::SameText(band.banda, banda)) return AdifBandAt(base::Mhz(band.frequency));
  }
  return AdifBandAt(frequency);
}

const std::string& StationTables::ModoOf(std::string_view mode, std::string_view submode) {
  std::string key(mode);
  key.append("|").append(submode);
  if (const auto known = foundModes_.find(key); known != foundModes_.end()) return known->second;
  if (foundModes_.size() >= kMostWords) foundModes_.clear();
  return foundModes_.emplace(std::move(key), FindModo(mode, submode)).first->second;
}

std::string StationTables::FindModo(std::string_view mode, std::string_view submode) const {
  for (const std::string_view word : {submode, mode}) {
    for (const std::string_view name : {ModeOfAdifWord(word), word}) {
      const std::string listed = InList(modes_, name);
      if (!listed.empty()) return listed;
    }
  }
  return base::UpperAscii(submode.empty() ? mode : submode);
}

std::string StationTables::PropagazioneOf(std::string_view adif) const {
  if (adif.empty()) return {};
  const std::string_view meant = PropagationOf(adif);
  const std::string listed = InList(propagations_, meant.empty() ? adif : meant);
  return listed.empty() ? std::string(meant) : listed;
}

const core::CallPlace& StationTables::Prefix(std::string_view call) {
  std::string candidate = core::PrefixCandidate(call);
  if (const auto known = prefixes_.find(candidate); known != prefixes_.end()) return known->second;
  if (prefixes_.size() >= kMostPrefixes) prefixes_.clear();
  core::CallPlace facts;
  const core::ResolvedPrefix resolved = core::ResolvePrefix(session_, call);
  if (!resolved.Prefisso.empty()) {
    facts = {resolved.Prefisso, resolved.Country, resolved.Continente.Text(),
             resolved.ZonaCQ.Number(), resolved.ZonaITU.Number()};
  }
  return prefixes_.emplace(std::move(candidate), std::move(facts)).first->second;
}

const core::CallPlace& StationTables::OfCountry(std::string_view country) {
  if (ofCountries_.empty()) {
    const auto rows =
        session_.Db.OpenSnapshot("Select Country,[Zona CQ],[Zona ITU],Continente from Prefissi");
    for (; !rows->EOF_(); rows->MoveNext()) {
      const double cq = rows->Field(1).Number(), itu = rows->Field(2).Number();
      const std::string continent = base::Trim(rows->Field(3).Text());
      const auto [at, isNew] = ofCountries_.try_emplace(
          base::Trim(rows->Field(0).Text()), core::CallPlace{"", "", continent, cq, itu});
      if (isNew) continue;
      core::CallPlace& facts = at->second;
      if (facts.ZonaCQ != cq) facts.ZonaCQ = 0;
      if (facts.ZonaITU != itu) facts.ZonaITU = 0;
      if (facts.Continente != continent) facts.Continente.clear();
    }
  }
  const auto [at, isNew] = ofCountries_.try_emplace(base::Trim(country));
  const DxccZones* zones = isNew ? FindDxccZones(at->first) : nullptr;
  if (zones != nullptr) {
    at->second = {"", "", std::string(zones->continent), static_cast<double>(zones->cq),
                  static_cast<double>(zones->itu)};
  }
  return at->second;
}

std::string StationTables::CountryNamed(std::string_view name) const {
  const auto found = countryNames_.find(PlainName(name));
  return found == countryNames_.end() ? std::string() : found->second;
}

bool StationTables::IsProvince(std::string_view country, std::string_view province) const {
  return provinces_.contains(std::string(country) + '|' + std::string(province));
}

double StationTables::Distance(std::string_view locator) const {
  constexpr std::size_t kSquare = 4, kSubsquare = 6;
  if (!geo::IsValidLocator(session_.Station.MyLocator)) return 0;
  std::string there(locator.substr(0, kSubsquare));
  if (there.size() == kSquare) there += "MM";
  if (!geo::IsValidLocator(there)) return 0;
  try {
    return geo::QrbKm(session_.Station.MyLocator.substr(0, kSubsquare), there);
  } catch (const std::domain_error&) {
    return 1;  // the same place by rounding
  }
}

bool IsGridSquare(std::string_view text) {
  if (text.size() != 4 && text.size() != 6 && text.size() != 8) return false;
  const auto within = [&](std::size_t at, char first, char last) {
    return at >= text.size() ||
           (text[at] >= first && text[at] <= last && text[at + 1] >= first && text[at + 1] <= last);
  };
  return within(0, 'A', 'R') && within(2, '0', '9') && within(4, 'A', 'X') && within(6, '0', '9');
}

}  // namespace brenvo::adif
