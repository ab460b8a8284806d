#include "record_reading.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"

namespace brenvo::conferme {
namespace {

constexpr std::size_t kLongestCall = 24, kLongestText = 200, kLongestCredits = 2000;

bool IsCall(std::string_view call) {
  if (call.size() < 3 || call.size() > kLongestCall) return false;
  return std::ranges::all_of(
      call, [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/'; });
}

std::string Shown(std::string_view text) {
  constexpr std::size_t kShown = 30;
  std::string shown = base::Left(base::ValidUtf8(text), kShown);
  std::ranges::replace_if(
      shown, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return shown;
}

// ISO, with what is not known left out.
std::string Moment(const ReportRecord& record) {
  if (!record.hasDay) return "-";
  const std::string iso = base::IsoText(record.when);
  constexpr std::size_t kDay = 10, kMinutes = 16;
  return iso.substr(0, !record.hasTime ? kDay : record.hasSeconds ? iso.size() : kMinutes);
}

}  // namespace

void RecordKeeper::Fault(std::int64_t line, std::string_view what) {
  ++report_.faulty;
  if (report_.faults.size() >= kMostFaults) return;
  report_.faults.push_back(fmt::format("riga {}: {}", line, what));
}

void RecordKeeper::Take(ReportRecord record) {
  record.call = base::UpperAscii(base::Trim(record.call));
  record.ownCall = base::UpperAscii(base::Trim(record.ownCall));
  if (record.call.empty()) return Fault(record.line, "manca il nominativo");
  if (!IsCall(record.call)) {
    return Fault(record.line, fmt::format("\"{}\" non è un nominativo", Shown(record.call)));
  }
  if (!record.ownCall.empty() && !IsCall(record.ownCall)) {
    return Fault(record.line, fmt::format("\"{}\" non è un nominativo", Shown(record.ownCall)));
  }
  if (!record.credit && !(record.hasDay && record.hasTime)) {
    return Fault(record.line, fmt::format("{} senza data e ora", record.call));
  }
  if (!record.credit && record.band.empty()) {
    return Fault(record.line, fmt::format("{} senza banda", record.call));
  }
  for (std::string* const text :
       {&record.mode, &record.submode, &record.modeGroup, &record.satellite, &record.state,
        &record.iota, &record.inferred, &record.partnerMode, &record.id}) {
    if (text->size() > kLongestText) {
      return Fault(record.line, fmt::format("{} con un testo troppo lungo", record.call));
    }
    std::ranges::replace_if(
        *text, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  }
  if (record.credits.size() > kLongestCredits) {
    return Fault(record.line, fmt::format("{} con troppi crediti", record.call));
  }
  if (record.id.empty()) {
    record.id = fmt::format(
        "{}{} {} {} {} {}", record.credit ? "C " : "", record.ownCall, record.call, record.band,
        base::UpperAscii(record.submode.empty() ? record.mode : record.submode), Moment(record));
    if (record.bySatellite) record.id += " " + base::UpperAscii(record.satellite);
    if (record.credit) record.id += fmt::format(" {} {}", record.dxcc, record.credits);
  }
  if (!ids_.insert(std::string(FactsOf(record.service).name) + '|' + record.id).second) {
    ++report_.repeated;
    return;
  }
  if (report_.records.size() >= kMostRecords) {
    throw ReportError(
        fmt::format("Il rapporto ha più di {} record: chiederne uno più piccolo", kMostRecords));
  }
  report_.records.push_back(std::move(record));
}

}  // namespace brenvo::conferme
