// Links: log
// Contacts of arbitrary texts as ADIF: whoever reads the lines by their lengths finds each value,
// and the end of the record behind the last one.
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>

#include "base/encoding.h"
#include "base/text.h"
#include "log/log_adi.h"

namespace {

using namespace brenvo;

void Require(bool holds) {
  if (!holds) std::abort();
}

// A contact of these columns; the writer asks for others too, which are Null.
class Contact : public engine::Snapshot {
 public:
  explicit Contact(std::map<std::string, engine::Value, std::less<>> values)
      : values_(std::move(values)) {}
  void MoveFirst() override {}
  void MoveLast() override {}
  void MoveNext() override {}
  void MovePrevious() override {}
  bool BOF() override { return false; }
  bool EOF_() override { return false; }
  std::int64_t RecordCount() override { return 1; }
  const std::vector<std::string>& Columns() const override { return kColumns; }
  engine::Value Field(std::string_view column) override {
    const auto at = values_.find(column);
    return at == values_.end() ? engine::Value() : at->second;
  }
  engine::Value Field(std::size_t column) override { return Field(kColumns.at(column)); }
  engine::Bookmark GetBookmark() override { return {}; }
  void SetBookmark(engine::Bookmark) override {}
  void Close() override {}

 private:
  inline static const std::vector<std::string> kColumns = {
      "Call",       "DataQso",     "Banda", "Modo",      "QrkDato", "QrkRicevuto",
      "QslInviata", "QslRicevuta", "Qra",   "Frequenza", "Manager"};
  std::map<std::string, engine::Value, std::less<>> values_;
};

// Reads "<name:length>value" at `at`, and leaves `at` behind the value.
std::string ReadField(const std::string& lines, std::size_t& at, std::string& name) {
  Require(lines[at] == '<');
  const std::size_t colon = lines.find(':', at);
  const std::size_t end = lines.find('>', at);
  Require(colon < end && end != std::string::npos);
  name = lines.substr(at + 1, colon - at - 1);
  const std::size_t length = std::stoul(lines.substr(colon + 1));
  Require(end + 1 + length <= lines.size());
  at = end + 1 + length;
  return lines.substr(end + 1, length);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text =
      base::ValidUtf8(std::string_view(reinterpret_cast<const char*>(data), size));
  double frequency = 0;
  for (std::size_t i = 0; i < size && i < 8; ++i) frequency = frequency * 10 + data[i];
  Contact contact({{"Call", engine::Value(text)},
                   {"Qra", engine::Value(text)},
                   {"Modo", engine::Value(text)},
                   {"Manager", engine::Value(text)},
                   {"Frequenza", engine::Value(frequency / 1000)},
                   {"DataQso", engine::Value(base::DateTime::Of(2001, 2, 3, 4, 5, 6))}});
  const std::string lines = log::AdifWriter(contact).Contact();
  const std::string expected = base::ToWindows1252(text);
  std::size_t at = 0;
  int read = 0;
  while (lines.compare(at, std::string::npos, "<eor>\r\n") != 0) {
    std::string name;
    const std::string value = ReadField(lines, at, name);
    if (name == "call" || name == "comment" || name == "mode" || name == "qsl_via") {
      Require(value == expected);
    }
    Require(lines.compare(at, 3, " \r\n") == 0);
    at += 3;
    ++read;
  }
  Require(read == 12);
  return 0;
}
