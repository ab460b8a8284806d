// Links: adif
// Arbitrary bytes as a log file: however they come, the same records; never more memory than a
// record's; and what the reader took for sound is read again as it was when it is written.
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "adif/adif_reader.h"
#include "adif/adif_writer.h"
#include "adif/escaped_text.h"

namespace {

using namespace brenvo;

std::vector<adif::AdifRecord> ReadAll(std::string_view bytes, std::size_t piece) {
  adif::AdifReader reader([&](char* buffer, std::size_t size) {
    const std::size_t count = bytes.copy(buffer, std::min(size, piece));
    bytes.remove_prefix(count);
    return count;
  });
  std::vector<adif::AdifRecord> records;
  adif::AdifRecord record;
  while (reader.Next(record)) {
    if (reader.RecordBytes().size() > 2 * adif::AdifReader::kLongestRecord) std::abort();
    if (record.line < 1 || (record.fields.empty() && record.fault.empty())) std::abort();
    records.push_back(record);
  }
  return records;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const auto whole = ReadAll(bytes, bytes.size() + 1);
  const auto pieces = ReadAll(bytes, 1u + data[0] % 32u);
  if (whole.size() != pieces.size()) std::abort();
  for (std::size_t i = 0; i < whole.size(); ++i) {
    const adif::AdifRecord& record = whole[i];
    if (record.line != pieces[i].line || record.fault != pieces[i].fault ||
        record.fields != pieces[i].fields || record.repairs != pieces[i].repairs) {
      std::abort();
    }
    if (!record.fault.empty()) continue;
    std::vector<adif::AdifField> fields;
    std::set<std::string> names;
    for (const adif::AdifField& field : record.fields) {
      if (!names.insert(field.name).second) continue;  // nobody writes a field twice
      fields.push_back({field.name, adif::EscapeText(field.value)});
      if (adif::UnescapeText(fields.back().value) != field.value) std::abort();
    }
    const auto again = ReadAll(adif::AdifHeader({}) + adif::AdifLine(fields), 4096);
    if (again.size() != 1 || again[0].fields.size() != fields.size()) std::abort();
    if (!again[0].repairs.empty()) std::abort();
    for (std::size_t n = 0; n < fields.size(); ++n) {
      if (again[0].fields[n].value != fields[n].value) std::abort();
    }
  }
  adif::OtherThanAdif(bytes);
  return 0;
}
