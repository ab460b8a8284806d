// Records of log files made by number, with accents, tags within texts, and fields beyond the
// columns.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/date.h"

namespace brenvo {

inline std::string Tagged(std::string_view name, std::string_view value) {
  return "<" + std::string(name) + ":" + std::to_string(value.size()) + ">" + std::string(value) +
         " ";
}

inline std::string GeneratedCall(std::int64_t number) {
  constexpr const char* kPrefixes[] = {"IK3", "I1",  "DL5", "F6",  "G4",  "K1",
                                       "JA1", "EA5", "OE3", "S57", "9A2", "IS0"};
  std::string call = kPrefixes[number % 12];
  std::int64_t rest = number * 7919 % 17576;
  for (int i = 0; i < 3; ++i, rest /= 26) call += static_cast<char>('A' + rest % 26);
  return call;
}

// A different contact for each number: the minutes go on with it.
inline std::string GeneratedRecord(std::int64_t number) {
  struct Band {
    const char* name;
    const char* frequency;
  };
  constexpr Band kBands[] = {{"20m", "14.074"},   {"40m", "7.0745"}, {"2m", "144.300"},
                             {"70cm", "432.174"}, {"6m", "50.313"},  {"23cm", "1296.2"}};
  constexpr const char* kModes[] = {"SSB", "CW", "FT8", "RTTY", "FM", "JT65"};
  constexpr const char* kNames[] = {"Mario",         "Nicol\xC3\xB2", "Andr\xC3\xA9",
                                    "J\xC3\xBCrgen", "Paolo",         "Bj\xC3\xB6rn"};
  const base::DateTime at = base::DateTime::FromSeconds(base::DateTime::Of(1990, 1, 1).Seconds() +
                                                        number * 60 + number % 60);
  const std::string iso = base::IsoText(at);
  const std::string date = iso.substr(0, 4) + iso.substr(5, 2) + iso.substr(8, 2);
  const std::string time = iso.substr(11, 2) + iso.substr(14, 2) + iso.substr(17, 2);
  const Band& band = kBands[number / 3 % 6];
  std::string grid = "JN00AA";
  grid[2] = static_cast<char>('0' + number / 7 % 10);
  grid[3] = static_cast<char>('0' + number / 70 % 10);
  grid[4] = static_cast<char>('A' + number % 24);
  std::string record = Tagged("CALL", GeneratedCall(number)) + Tagged("QSO_DATE", date) +
                       Tagged("TIME_ON", time) + Tagged("BAND", band.name) +
                       Tagged("FREQ", band.frequency) + Tagged("MODE", kModes[number % 6]) +
                       Tagged("RST_SENT", "59") + Tagged("RST_RCVD", "57") +
                       Tagged("NAME", kNames[number % 6]) + Tagged("GRIDSQUARE", grid) +
                       Tagged("TX_PWR", "100") + Tagged("QSL_RCVD", number % 4 == 0 ? "Y" : "N") +
                       Tagged("LOTW_QSL_RCVD", "N") + Tagged("STATION_CALLSIGN", "IK3XYZ");
  if (number % 10 == 0) record += Tagged("COMMENT", "prima <eor> poi <call:5> fine");
  if (number % 11 == 0) record += Tagged("QTH", "Citt\xC3\xA0 di Castello");
  return record + "<EOR>\r\n";
}

}  // namespace brenvo
