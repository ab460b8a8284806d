#include "checks/check_facts.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "adif/adif_names.h"
#include "adif/station_tables.h"
#include "base/text.h"
#include "core/log_time.h"
#include "core/prefix.h"
#include "worked/load_rules.h"

namespace brenvo::checks {
namespace {

constexpr double kKhzPerMhz = 1000;

void ReadExtents(core::Session& session, CheckFacts& facts) {
  std::ifstream file(session.File(kExtentsFile), std::ios::binary);
  if (!file) return;
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  try {
    facts.extents = CountryExtents::Parse(text);
    facts.hasExtents = true;
  } catch (const std::runtime_error&) {
    // As a file that is missing: the window says that there are none.
  }
}

template <class See>
void EachRow(core::Session& session, std::string_view select, const See& see) {
  const auto rows = session.Db.OpenSnapshot(select);
  for (; !rows->EOF_(); rows->MoveNext()) {
    see([&](std::size_t column) { return rows->Field(column); });
  }
}

// A station in another region may be heard where nobody may send here.
void ReadBands(core::Session& session, CheckFacts& facts) {
  EachRow(session, "select Banda,FrequenzaI,FrequenzaF from UserRTX", [&](const auto& field) {
    const std::string name = field(0).Text();
    auto& edges = facts.bands[CheckFacts::Name(name)];
    const CheckFacts::Edges own{field(1).Number() / kKhzPerMhz, field(2).Number() / kKhzPerMhz};
    if (own.upper > 0) edges.push_back(own);
    if (const adif::AdifBand* band = adif::FindAdifBand(adif::PlainBand(name))) {
      edges.push_back({band->lower, band->upper});
    }
  });
}

}  // namespace

std::string CheckFacts::Name(std::string_view text) { return base::UpperAscii(base::Trim(text)); }

std::vector<std::string> CheckFacts::CountriesOf(std::string_view call) const {
  const auto found = prefixes.find(core::PrefixCandidate(Name(call)));
  return found == prefixes.end() ? std::vector<std::string>() : found->second;
}

std::string CheckFacts::TitleOf(std::string_view country) const {
  const auto found = countries.find(Name(country));
  if (found == countries.end()) return base::Trim(country);
  return fmt::format("{} {}", base::Trim(country), found->second);
}

base::DateTime LatestNow(core::Session& session) {
  const base::DateTime proposed = core::ProposedTime(session);
  if (core::LogTimeOf(session) == core::LogTime::kLocal) return proposed;
  return std::max(proposed, session.Machine.GetClock().UtcNow());
}

CheckFacts FactsOf(core::Session& session) {
  CheckFacts facts;
  facts.now = LatestNow(session);
  // What is wrong with the rules the main frame tells at the start.
  if (auto rules = worked::LoadRules(session, [](const std::string&) {})) {
    facts.rules = std::move(rules);
  }
  ReadExtents(session, facts);
  ReadBands(session, facts);
  EachRow(session, "select Country,Descrizione,Deleted from Country", [&](const auto& field) {
    const std::string code = CheckFacts::Name(field(0).Text());
    facts.countries[code] = base::Trim(field(1).Text());
    if (!base::Trim(field(2).Text()).empty()) facts.deleted.insert(code);
  });
  EachRow(session, "select Country,Provincia from Provincie", [&](const auto& field) {
    const std::string country = CheckFacts::Name(field(0).Text());
    facts.provinces.insert(country + '|' + CheckFacts::Name(field(1).Text()));
    facts.withProvinces.insert(country);
  });
  EachRow(session,
          "select Prefisso,Country from Prefissi order by Prefisso,[Zona CQ],[Zona ITU],Continente",
          [&](const auto& field) {
            facts.prefixes[CheckFacts::Name(field(0).Text())].push_back(
                CheckFacts::Name(field(1).Text()));
          });
  facts.confirmedBeside = [&session, rules = facts.rules](std::int64_t qsoNr) {
    bool confirmed = false;
    EachRow(session, fmt::format("select Campo,Valore from LogAdif where QsoNr={}", qsoNr),
            [&](const auto& field) {
              confirmed = confirmed || rules->ByField(field(0).Text(), field(1).Text()) != 0;
            });
    return confirmed;
  };
  return facts;
}

}  // namespace brenvo::checks
