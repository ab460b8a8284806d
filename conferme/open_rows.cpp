#include "conferme/open_rows.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "adif/dxcc_entities.h"
#include "adif/station_tables.h"
#include "base/number.h"
#include "base/text.h"
#include "conferme/matching.h"
#include "conferme/mode_table.h"
#include "conferme/sending.h"
#include "contact_state.h"
#include "core/call_forms.h"
#include "core/quoted.h"
#include "worked/load_rules.h"

namespace brenvo::conferme {
namespace {

// Rows of one country that are looked through.
constexpr std::int64_t kMostLookedAt = 20'000;

// A number that no record of the table has, for rows that stand beside them.
std::int64_t NumberOf(std::int64_t qsoNr, Service service, bool refused) {
  const std::int64_t services = std::ssize(Services());
  return -(qsoNr * services * 2 + static_cast<int>(service) * 2 + (refused ? 1 : 0)) - 1;
}

// The contact's own columns, from `first`: the date, the call, the band and the mode.
OpenRecord RowOf(std::int64_t qsoNr, Service service, const char* state, engine::Recordset& row,
                 std::size_t first) {
  OpenRecord open;
  open.state = state;
  open.candidates = {qsoNr};
  open.record.service = service;
  open.record.call = base::Trim(row.Field(first + 1).Text());
  open.record.band = base::Trim(row.Field(first + 2).Text());
  open.record.mode = base::Trim(row.Field(first + 3).Text());
  if (const auto when = row.Field(first).ReadableDate()) {
    open.record.when = *when;
    open.record.hasDay = true;
  }
  return open;
}

}  // namespace

std::vector<OpenRecord> RefusedContacts(core::Session& session) {
  std::vector<OpenRecord> rows;
  for (const ServiceFacts& facts : Services()) {
    for (const Refusal& each : RefusalsOf(session, facts.service)) {
      const auto row = session.Db.OpenSnapshot(
          fmt::format("select DataQso,Call,Banda,Modo from Log where QsoNr={}", each.qsoNr));
      if (row->EOF_()) continue;
      OpenRecord open = RowOf(each.qsoNr, facts.service, "R", *row, 0);
      open.number = NumberOf(each.qsoNr, facts.service, true);
      open.why = each.words;
      rows.push_back(std::move(open));
    }
  }
  return rows;
}

std::vector<OpenRecord> Contradictions(core::Session& session) {
  std::vector<OpenRecord> rows;
  const auto told = session.Db.OpenSnapshot(
      "select Log.QsoNr,Servizio,LogConferme.Locator,ZonaCQ,ZonaITU,Dedotti,Log.Locator,[Zona CQ],"
      "[Zona ITU],DataQso,Call,Banda,Log.Modo from LogConferme,Log where "
      "LogConferme.QsoNr=Log.QsoNr order by Log.QsoNr");
  for (; !told->EOF_() && rows.size() < kMostContradictions; told->MoveNext()) {
    const auto text = [&](std::size_t at) { return base::Trim(told->Field(at).Text()); };
    const auto service = ServiceNamed(text(1));
    if (!service) continue;
    std::vector<std::string> why;
    const std::string place(FirstPlace(text(2))), here = text(6);
    if (!place.empty() && !here.empty() && !AgreeOnPlace(here, place)) {
      why.push_back(fmt::format("Locator {}, {} dice {}", here, text(1), place));
    }
    struct Zone {
      std::string_view name, inferred;
      std::size_t there, mine;
    };
    for (const Zone& zone : {Zone{"Zona CQ", "CQ", 3, 7}, Zone{"Zona ITU", "ITU", 4, 8}}) {
      const double there = told->Field(zone.there).Number(), mine = told->Field(zone.mine).Number();
      if (there == 0 || mine == 0 || there == mine || IsInferred(text(5), zone.inferred)) continue;
      why.push_back(fmt::format("{} {}, {} dice {}", zone.name, base::PlainNumber(mine), text(1),
                                base::PlainNumber(there)));
    }
    if (why.empty()) continue;
    OpenRecord open = RowOf(told->Field(std::size_t{0}).Integer(), *service, "X", *told, 9);
    open.number = NumberOf(open.candidates.front(), *service, false);
    open.why = fmt::format("{}", fmt::join(why, "; "));
    rows.push_back(std::move(open));
  }
  return rows;
}

std::vector<std::int64_t> SimilarTo(core::Session& session, const ReportRecord& credit) {
  const ModeTable modes = ModeTable::Read(session.File(kModeRules));
  const auto rules =
      worked::LoadRules(session, [](const std::string& text) { throw std::runtime_error(text); });
  const adif::StationTables tables(session);
  const ModeGroup group = GroupNamed(credit.modeGroup);
  std::vector<std::int64_t> same, others;
  const std::string base = core::BaseCall(credit.call);
  std::int64_t seen = 0;
  const auto look = [&](const std::string& where) {
    const auto rows = session.Db.OpenSnapshot(
        "select QsoNr,Call,Banda,Modo,Frequenza from Log where " + where + " order by QsoNr");
    for (; !rows->EOF_() && seen < kMostLookedAt; rows->MoveNext(), ++seen) {
      if (same.size() + others.size() >= kMostCandidates) break;
      const std::string banda = rows->Field(2).Text();
      const adif::AdifBand* const band =
          tables.AdifBandOf(banda, base::Mhz(rows->Field(4).Number()));
      const std::string_view name = band == nullptr ? std::string_view() : band->name;
      if (!credit.band.empty() && !base::SameText(name, credit.band)) continue;
      const std::string modo = base::Trim(rows->Field(3).Text());
      if (group != ModeGroup::kUnknown && modes.Of(modo, "", *rules).group != group) continue;
      const std::int64_t key = rows->Field(std::size_t{0}).Integer();
      if (core::BaseCall(rows->Field(1).Text()) == base) {
        if (std::ranges::find(same, key) == same.end()) same.push_back(key);
      } else {
        others.push_back(key);
      }
    }
  };
  look("Call=" + core::Quoted(credit.call));
  if (const adif::DxccEntity* const entity = adif::FindDxccEntity(credit.dxcc)) {
    look("Country=" + core::Quoted(entity->country));
  }
  same.insert(same.end(), others.begin(), others.end());
  return same;
}

}  // namespace brenvo::conferme
