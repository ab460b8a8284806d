#include "logged_contact.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstring>

#include "adif/adif_names.h"
#include "adif/station_tables.h"
#include "base/number.h"
#include "base/text.h"
#include "base/uuid.h"
#include "words.h"

namespace brenvo::digital {
namespace {

constexpr double kHzPerMhz = 1e6;
// Seconds by which two may tell of the same start.
constexpr int kSameStart = 2;

void Put(adif::AdifRecord& record, std::string_view name, std::string_view value) {
  const std::string trimmed = base::Trim(value);
  if (!trimmed.empty()) record.fields.push_back({std::string(name), trimmed});
}

std::string_view Text(const adif::AdifRecord& record, std::string_view name) {
  const std::string* const value = record.Find(name);
  return value == nullptr ? std::string_view() : std::string_view(*value);
}

base::DateTime UtcOf(const Moment& moment, bool isJtdx, const core::LocalTime& local) {
  switch (moment.basis) {
    case Moment::Basis::kLocal:
      return isJtdx ? moment.time : local.ToUtc(moment.time);
    case Moment::Basis::kOffset:
      return moment.time.Later(-moment.offset);
    case Moment::Basis::kUtc:
      break;
  }
  return moment.time;
}

void PutTime(adif::AdifRecord& record, std::string_view date, std::string_view time,
             base::DateTime utc) {
  Put(record, date, fmt::format("{:04}{:02}{:02}", utc.Year(), utc.Month(), utc.Day()));
  Put(record, time, fmt::format("{:02}{:02}{:02}", utc.Hour(), utc.Minute(), utc.Second()));
}

bool AllDigits(std::string_view word) {
  return !word.empty() && word.find_first_not_of("0123456789") == std::string_view::npos;
}

// What was exchanged in a contest. In the European contests above 30 MHz report and serial are one
// word, and the locator follows ("540012 JN61FV"); elsewhere a serial is the last word.
struct Exchange {
  std::string_view serial, locator;
};
Exchange ExchangeOf(std::string_view text) {
  constexpr std::size_t kReport = 2;
  const auto words = WordsOf(text);
  if (words.size() == 2 && words[0].size() > kReport && AllDigits(words[0]) &&
      adif::IsGridSquare(words[1])) {
    return {words[0].substr(kReport), words[1]};
  }
  if (!words.empty() && AllDigits(words.back())) return {words.back(), {}};
  return {};
}

void PutExchange(adif::AdifRecord& record, std::string_view serialField, std::string_view field,
                 std::string_view text) {
  const Exchange exchange = ExchangeOf(text);
  int serial = 0;
  const char* const end = exchange.serial.data() + exchange.serial.size();
  if (!exchange.serial.empty() &&
      std::from_chars(exchange.serial.data(), end, serial).ec == std::errc()) {
    Put(record, serialField, std::to_string(serial));
  }
  Put(record, field, text);
}

// "100W", "500 mW", "1 kW": in watts.
std::string Watts(std::string_view power) {
  double watts = 0;
  const auto [end, error] = std::from_chars(power.data(), power.data() + power.size(), watts);
  if (error != std::errc()) return {};
  const std::string unit = base::Lower(base::Trim(
      std::string_view(end, static_cast<std::size_t>(power.data() + power.size() - end))));
  if (unit == "mw") watts /= 1000;
  if (unit == "kw") watts *= 1000;
  if (!unit.empty() && unit != "w" && unit != "mw" && unit != "kw") return {};
  return base::PlainNumber(watts);
}

std::optional<base::DateTime> StartOf(const adif::AdifRecord& record) {
  const std::string_view date = Text(record, "QSO_DATE");
  std::string time(Text(record, "TIME_ON"));
  if (time.empty()) time = Text(record, "TIME_OFF");
  if (time.size() == 4) time += "00";
  if (date.size() != 8 || time.size() != 6 || !AllDigits(date) || !AllDigits(time)) {
    return std::nullopt;
  }
  return base::ParseIso(fmt::format("{}-{}-{} {}:{}:{}", date.substr(0, 4), date.substr(4, 2),
                                    date.substr(6, 2), time.substr(0, 2), time.substr(2, 2),
                                    time.substr(4, 2)));
}

std::string BandOf(const adif::AdifRecord& record) {
  const adif::AdifBand* band = adif::FindAdifBand(Text(record, "BAND"));
  if (band == nullptr) band = adif::AdifBandAt(base::Mhz(base::Val(Text(record, "FREQ"))));
  return band == nullptr ? base::Upper(Text(record, "BAND")) : std::string(band->name);
}

// The submode where there is one, by its own name.
std::string ModeOf(const adif::AdifRecord& record) {
  std::string_view word = Text(record, "SUBMODE");
  if (word.empty()) word = Text(record, "MODE");
  const auto mode = adif::FindAdifMode(word);
  if (!mode) return base::UpperAscii(word);
  return base::UpperAscii(mode->submode.empty() ? mode->mode : mode->submode);
}

// What makes the contact, but for its start.
std::string WhoOf(const adif::AdifRecord& record) {
  return fmt::format("{}|{}|{}", base::UpperAscii(Text(record, "CALL")), BandOf(record),
                     ModeOf(record));
}

}  // namespace

adif::AdifRecord RecordOf(const QsoLogged& logged, bool isJtdx, const core::LocalTime& local) {
  adif::AdifRecord record;
  Put(record, "CALL", base::UpperAscii(logged.dxCall));
  // The exchange tells the locator whole where the other field may have its square alone.
  std::string grid = base::UpperAscii(base::Trim(logged.dxGrid));
  const std::string exchanged = base::UpperAscii(ExchangeOf(logged.exchangeReceived).locator);
  if (exchanged.size() > grid.size() && exchanged.starts_with(grid)) grid = exchanged;
  Put(record, "GRIDSQUARE", grid);
  const auto mode = adif::FindAdifMode(logged.mode);
  Put(record, "MODE", mode ? mode->mode : base::UpperAscii(logged.mode));
  Put(record, "SUBMODE", mode ? mode->submode : "");
  Put(record, "RST_SENT", logged.reportSent);
  Put(record, "RST_RCVD", logged.reportReceived);
  const std::optional<Moment>& begun = logged.on ? logged.on : logged.off;
  if (begun) PutTime(record, "QSO_DATE", "TIME_ON", UtcOf(*begun, isJtdx, local));
  if (logged.off) {
    PutTime(record, "QSO_DATE_OFF", "TIME_OFF", UtcOf(*logged.off, isJtdx, local));
  }
  const double mhz = static_cast<double>(logged.frequency) / kHzPerMhz;
  if (const adif::AdifBand* band = adif::AdifBandAt(base::Mhz(mhz)))
    Put(record, "BAND", band->name);
  if (logged.frequency != 0) Put(record, "FREQ", fmt::format("{:.6f}", mhz));
  Put(record, "STATION_CALLSIGN", base::UpperAscii(logged.myCall));
  Put(record, "MY_GRIDSQUARE", base::UpperAscii(logged.myGrid));
  Put(record, "OPERATOR", base::UpperAscii(logged.operatorCall));
  Put(record, "TX_PWR", Watts(logged.power));
  Put(record, "COMMENT", logged.comments);
  Put(record, "NAME", logged.name);
  PutExchange(record, "STX", "STX_STRING", logged.exchangeSent);
  PutExchange(record, "SRX", "SRX_STRING", logged.exchangeReceived);
  Put(record, "PROP_MODE", logged.propagation);
  Put(record, "SAT_NAME", logged.satellite);
  Put(record, "SAT_MODE", logged.satelliteMode);
  Put(record, "FREQ_RX", logged.rxFrequency);
  return record;
}

std::vector<adif::AdifRecord> RecordsIn(std::string_view text) {
  adif::AdifReader reader([&](char* buffer, std::size_t size) {
    const std::size_t taken = std::min(size, text.size());
    std::memcpy(buffer, text.data(), taken);
    text.remove_prefix(taken);
    return taken;
  });
  std::vector<adif::AdifRecord> records;
  adif::AdifRecord record;
  while (reader.Next(record)) {
    if (record.fault.empty() && record.Find("CALL") != nullptr) records.push_back(record);
  }
  return records;
}

adif::AdifRecord Merged(const adif::AdifRecord& record, const adif::AdifRecord& told) {
  adif::AdifRecord merged = record;
  for (const adif::AdifField& field : told.fields) {
    const auto at = std::find_if(merged.fields.begin(), merged.fields.end(),
                                 [&](const auto& each) { return each.name == field.name; });
    if (at == merged.fields.end()) {
      // A submode belongs to the mode that it was told with.
      if (field.name != "SUBMODE") merged.fields.push_back(field);
    } else if (at->value.empty() || field.name == "NAME" || field.name == "COMMENT") {
      at->value = field.value;
    }
  }
  return merged;
}

bool IsSameContact(const adif::AdifRecord& a, const adif::AdifRecord& b) {
  const auto first = StartOf(a), second = StartOf(b);
  if (!first || !second || WhoOf(a) != WhoOf(b)) return false;
  const std::int64_t apart = first->Seconds() - second->Seconds();
  return apart >= -kSameStart && apart <= kSameStart;
}

std::vector<std::string> NamesOf(const adif::AdifRecord& record) {
  std::vector<std::string> names;
  const auto start = StartOf(record);
  if (!start || Text(record, "CALL").empty()) return names;
  const std::string who = WhoOf(record);
  for (const int late : {0, -1, 1, -kSameStart, kSameStart}) {
    names.push_back(
        base::NameUuid(fmt::format("Digitale\n{}\n{}", who, base::IsoText(start->Later(late)))));
  }
  return names;
}

}  // namespace brenvo::digital
