#include "conferme/match_log.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "adif/dxcc_entities.h"
#include "adif/record_to_contact.h"
#include "adif/station_tables.h"
#include "base/text.h"
#include "core/call_forms.h"
#include "core/note_tag.h"
#include "core/stations.h"
#include "worked/load_rules.h"

namespace brenvo::conferme {
namespace {

constexpr std::int64_t kRowsPerLook = 10'000;
constexpr std::string_view kIgnored = "I";

enum Column : std::size_t {
  kQsoNr,
  kCall,
  kDataQso,
  kBanda,
  kModo,
  kPropagazione,
  kFrequenza,
  kCountry,
  kNote
};
constexpr std::string_view kColumns =
    "select QsoNr,Call,DataQso,Banda,Modo,Propagazione,Frequenza,Country,Note from Log order by "
    "QsoNr";

Settled ReadSettled(engine::Reader& reader) {
  Settled settled;
  reader.ForEach(
      "select LogConferme.QsoNr,Servizio,Record from LogConferme,Log where "
      "LogConferme.QsoNr=Log.QsoNr",
      [&](engine::Reader::Row& row) {
        const std::int64_t key = row.Integer(0);
        std::string service = base::Trim(row.Text(1)), record = base::Trim(row.Text(2));
        settled.contacts.emplace(Settled::KeyOf(service, record), key);
        settled.taken.emplace(std::pair(std::move(service), key), std::move(record));
        return true;
      });
  reader.ForEach("select Servizio,Record,Stato from ConfermeRecord", [&](engine::Reader::Row& row) {
    if (base::Trim(row.Text(2)) == kIgnored) {
      settled.ignored.emplace(Settled::KeyOf(base::Trim(row.Text(0)), base::Trim(row.Text(1))),
                              true);
    }
    return true;
  });
  return settled;
}

// Whose the contacts are: one call for all of them, or by their stations.
class OwnCalls {
 public:
  OwnCalls(engine::Database& database, engine::Reader& reader) {
    std::set<std::string> bases;
    for (const core::StationRow& each : core::AllStations(database)) {
      calls_[each.Stazione] = each.Call;
      bases.insert(core::BaseCall(each.Call));
    }
    if (calls_.empty()) {
      one_ = core::CurrentStationRow(database).Call;
    } else if (bases.size() == 1) {
      one_ = calls_.begin()->second;
    } else {
      reader.ForEach("select QsoNr,Stazione from LogOrigine", [&](engine::Reader::Row& row) {
        stations_.emplace(row.Integer(0), row.Integer(1));
        return true;
      });
    }
    bases.insert(core::BaseCall(one_));
    bases.erase("");
    bases_ = std::move(bases);
  }
  std::string_view Of(std::int64_t key) const {
    const auto station = stations_.find(key);
    if (station == stations_.end()) return one_;
    const auto call = calls_.find(station->second);
    return call == calls_.end() ? std::string_view() : std::string_view(call->second);
  }
  bool Knows(std::string_view call) const {
    return bases_.empty() || bases_.contains(core::BaseCall(call));
  }

 private:
  std::map<std::int64_t, std::string> calls_;
  std::unordered_map<std::int64_t, std::int64_t> stations_;
  std::string one_;
  std::set<std::string> bases_;
};

class Walk {
 public:
  Walk(core::Session& session, engine::Reader& reader, Matcher& matcher, const ModeTable& modes,
       const worked::Rules& rules, const OwnCalls& own, bool satellites)
      : tables_(session), matcher_(matcher), modes_(modes), rules_(rules), own_(own) {
    if (!satellites) return;
    reader.ForEach("select QsoNr,Valore from LogAdif where Campo='SAT_NAME'",
                   [&](engine::Reader::Row& row) {
                     satelliteNames_.emplace(row.Integer(0), base::Trim(row.Text(1)));
                     return true;
                   });
  }

  void See(engine::Reader::Row& row) {
    const std::string_view call = row.Text(kCall);
    if (!matcher_.Wants(call)) return;
    const auto when = row.Date(kDataQso);
    if (!when) return;
    LogEntry entry;
    entry.key = row.Integer(kQsoNr);
    entry.utc = tables_.Times().ToUtc(*when);
    entry.call = call;
    const std::string banda(row.Text(kBanda));
    const adif::AdifBand* const band = tables_.AdifBandOf(banda, base::Mhz(row.Number(kFrequenza)));
    const std::string other = band == nullptr ? adif::PlainBand(banda) : std::string();
    entry.band = band == nullptr ? std::string_view(other) : band->name;
    const std::string modo = base::Trim(row.Text(kModo));
    entry.mode = modo;
    const std::string note(row.Text(kNote));
    entry.bySatellite = rules_.IsSatellite(row.Text(kPropagazione));
    if (rules_.MeaningOf(modo).satellite) {
      entry.bySatellite = true;
      const core::SatelliteNote told = core::ParseSatelliteNote(note);
      entry.mode = told.mode;
      entry.satellite = told.satellite;
    }
    if (const auto named = satelliteNames_.find(entry.key); named != satelliteNames_.end()) {
      entry.satellite = named->second;
    }
    const auto [means, isNew] = meanings_.try_emplace(std::string(entry.mode));
    if (isNew) means->second = modes_.Of(entry.mode, "", rules_);
    entry.means = means->second;
    entry.ownCall = own_.Of(entry.key);
    if (const auto* entity = adif::FindDxccEntityOf(base::Trim(row.Text(kCountry)))) {
      entry.dxcc = entity->number;
    }
    matcher_.See(entry);
  }

 private:
  adif::StationTables tables_;
  Matcher& matcher_;
  const ModeTable& modes_;
  const worked::Rules& rules_;
  const OwnCalls& own_;
  std::unordered_map<std::int64_t, std::string> satelliteNames_;
  std::unordered_map<std::string, ServiceMode> meanings_;
};

}  // namespace

std::optional<MatchedReport> MatchLog(core::Session& session,
                                      const std::vector<ReportRecord>& records,
                                      const MatchProgress& progress) {
  const ModeTable modes = ModeTable::Read(session.File(kModeRules));
  const auto rules =
      worked::LoadRules(session, [](const std::string& text) { throw std::runtime_error(text); });
  const auto reader = session.Db.OpenReader();
  const Settled settled = ReadSettled(*reader);
  const OwnCalls own(session.Db, *reader);
  Matcher matcher(records, modes, *rules, settled);
  Walk walk(session, *reader, matcher, modes, *rules, own,
            std::ranges::any_of(records, &ReportRecord::bySatellite));
  std::int64_t done = 0;
  const bool whole = reader->ForEach(kColumns, [&](engine::Reader::Row& row) {
    walk.See(row);
    return ++done % kRowsPerLook != 0 || !progress || progress(done);
  });
  if (!whole) return std::nullopt;
  MatchedReport matched;
  matched.matches = matcher.Run();
  for (const ReportRecord& record : records) {
    if (record.ownCall.empty() || own.Knows(record.ownCall)) continue;
    ++matched.foreign;
    if (matched.foreignCall.empty() || record.ownCall < matched.foreignCall) {
      matched.foreignCall = record.ownCall;
    }
  }
  return matched;
}

}  // namespace brenvo::conferme
