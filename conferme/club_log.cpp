#include "club_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "adif/adif_names.h"
#include "base/text.h"
#include "record_reading.h"

namespace brenvo::conferme {
namespace {

using Json = nlohmann::json;

std::string TextOf(const Json& cell) {
  if (cell.is_string()) return base::Trim(cell.get_ref<const std::string&>());
  if (cell.is_number_integer()) return std::to_string(cell.get<std::int64_t>());
  return {};
}

std::string Named(const Json& row, std::initializer_list<const char*> names) {
  for (const char* const name : names) {
    if (const auto at = row.find(name); at != row.end()) return TextOf(*at);
  }
  return {};
}

bool HasLetter(std::string_view text) {
  return std::ranges::any_of(
      text, [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); });
}

// "20" and "20m".
std::string BandOf(const std::string& text) {
  const adif::AdifBand* band = adif::FindAdifBand(text);
  if (band == nullptr) band = adif::FindAdifBand(text + "m");
  return band == nullptr ? std::string() : std::string(band->name);
}

void TakeTime(ReportRecord& record, const std::string& text) {
  const auto when = base::ParseIso(text);
  if (!when) return;
  record.when = *when;
  record.hasDay = true;
  record.hasTime = record.hasSeconds = text.size() > std::string_view("2001-02-03").size();
}

// A row without names: the call is the first text with a letter that is neither day, band nor mode.
ReportRecord OfCells(const Json& row) {
  ReportRecord record;
  for (const Json& cell : row) {
    const std::string text = TextOf(cell);
    if (text.empty()) continue;
    if (!record.hasDay && base::ParseIso(text)) {
      TakeTime(record, text);
    } else if (!record.call.empty() && record.band.empty() && !BandOf(text).empty()) {
      record.band = BandOf(text);
    } else if (record.call.empty() && HasLetter(text)) {
      record.call = text;
    } else if (!record.call.empty() && record.mode.empty() && HasLetter(text)) {
      record.mode = base::UpperAscii(text);
    }
  }
  return record;
}

ReportRecord OfNames(const Json& row) {
  ReportRecord record;
  record.call = Named(row, {"call", "callsign", "CALL"});
  record.mode = base::UpperAscii(Named(row, {"mode", "MODE"}));
  record.band = BandOf(Named(row, {"band", "BAND"}));
  TakeTime(record, Named(row, {"date", "datetime", "qso_date", "DATE"}));
  return record;
}

}  // namespace

void ReadMatches(std::string_view text, Report& report) {
  Json rows = Json::parse(text, nullptr, false);
  if (rows.is_discarded()) {
    throw ReportError("Il file di Club Log non è JSON intero; nulla è cambiato");
  }
  if (rows.is_object()) {
    for (const char* const name : {"matches", "qsos", "data"}) {
      if (const auto at = rows.find(name); at != rows.end() && at->is_array()) {
        Json inner = std::move(*at);
        rows = std::move(inner);
        break;
      }
    }
  }
  if (!rows.is_array()) {
    throw ReportError("Il file di Club Log non ha un elenco di riscontri; nulla è cambiato");
  }
  RecordKeeper keeper(report);
  for (const Json& row : rows) {
    ++report.read;
    if (!row.is_array() && !row.is_object()) {
      keeper.Fault(report.read, "non è un riscontro");
      continue;
    }
    ReportRecord record = row.is_array() ? OfCells(row) : OfNames(row);
    record.service = Service::kClubLog;
    record.line = report.read;
    keeper.Take(std::move(record));
  }
}

}  // namespace brenvo::conferme
