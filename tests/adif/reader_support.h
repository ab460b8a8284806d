// Reading log files from memory.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "adif/adif_reader.h"

namespace brenvo::adif {

// Gives a text in pieces of at most `piece` bytes.
inline AdifReader::Source SourceOf(std::string text, std::size_t piece = 1 << 20) {
  return
      [text = std::move(text), piece, at = std::size_t{0}](char* buffer, std::size_t size) mutable {
        const std::size_t count = std::min({size, piece, text.size() - at});
        text.copy(buffer, count, at);
        at += count;
        return count;
      };
}

inline std::vector<AdifRecord> ReadAll(const std::string& text, std::size_t piece = 1 << 20) {
  AdifReader reader(SourceOf(text, piece));
  std::vector<AdifRecord> records;
  AdifRecord record;
  while (reader.Next(record)) records.push_back(record);
  return records;
}

// "NAME=value" of each field, joined by "|"; the fault behind "!".
inline std::string Told(const AdifRecord& record) {
  std::string text;
  for (const AdifField& field : record.fields) {
    if (!text.empty()) text += "|";
    text += field.name + "=" + field.value;
  }
  return record.fault.empty() ? text : text + "!" + record.fault;
}

}  // namespace brenvo::adif
