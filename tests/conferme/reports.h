// Reports as services write them, made up.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "conferme/report.h"

namespace brenvo::conferme {

using Fields = std::vector<std::pair<std::string, std::string>>;

inline std::string RecordOf(const Fields& fields) {
  std::string text;
  for (const auto& [name, value] : fields) {
    text += fmt::format("<{}:{}>{}\r\n", name, value.size(), value);
  }
  return text + "<eor>\r\n\r\n";
}

inline std::string LotwReport(const std::vector<std::string>& records) {
  std::string text = fmt::format(
      "ARRL Logbook of the World Status Report\r\n<PROGRAMID:4>LoTW\r\n<APP_LoTW_LASTQSL:19>"
      "2001-02-01 10:00:00\r\n<APP_LoTW_NUMREC:{}>{}\r\n<eoh>\r\n",
      std::to_string(records.size()).size(), records.size());
  for (const std::string& record : records) text += record;
  return text + "<APP_LoTW_EOF>\r\n";
}

// "CT7AAA 20M FT8 20010101 221400" confirmed in LoTW, with further fields.
inline std::string LotwRecord(std::string_view call, std::string_view band, std::string_view mode,
                              std::string_view day, std::string_view time,
                              const Fields& further = {}) {
  Fields fields = {{"APP_LoTW_OWNCALL", "IK0XYZ"}, {"STATION_CALLSIGN", "IK0XYZ"},
                   {"CALL", std::string(call)},    {"BAND", std::string(band)},
                   {"MODE", std::string(mode)},    {"QSO_DATE", std::string(day)},
                   {"TIME_ON", std::string(time)}, {"QSL_RCVD", "Y"},
                   {"QSLRDATE", "20010201"}};
  fields.insert(fields.end(), further.begin(), further.end());
  return RecordOf(fields);
}

inline ReportSource SourceOf(std::string text) {
  return [text = std::move(text), at = std::size_t{0}](char* buffer, std::size_t size) mutable {
    const std::size_t got = std::min(size, text.size() - at);
    std::copy_n(text.data() + at, got, buffer);
    at += got;
    return got;
  };
}

inline Report ReportOf(const std::string& text) { return ReadReport(SourceOf(text)).value(); }

// Why a text is no report; empty where it is one.
inline std::string RefusalOf(const std::string& text) {
  try {
    ReportOf(text);
  } catch (const ReportError& error) {
    return error.what();
  }
  return {};
}

}  // namespace brenvo::conferme
