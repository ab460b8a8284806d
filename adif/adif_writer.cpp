#include "adif/adif_writer.h"

#include <fmt/format.h>

#include "base/plain_letters.h"
#include "base/text.h"

namespace brenvo::adif {
namespace {

void AppendBytes(std::string& line, std::string_view text, AdifLetters letters) {
  if (base::IsAscii(text)) {
    line += text;
  } else {
    line += AdifBytes(text, letters);
  }
}

}  // namespace

std::string AdifBytes(std::string_view text, AdifLetters letters) {
  if (base::IsAscii(text)) return std::string(text);
  return letters == AdifLetters::kAscii ? base::ToPlainLetters(text).text : base::ValidUtf8(text);
}

std::string AdifHeader(const std::vector<std::string>& userFields, AdifLetters letters) {
  std::string header =
      "Log esportato da Brenvo\r\n"
      "<ADIF_VER:5>3.1.7\r\n"
      "<PROGRAMID:6>Brenvo\r\n";
  int number = 0;
  for (const std::string& name : userFields) {
    const std::string bytes = AdifBytes(name, letters);
    header += fmt::format("<USERDEF{}:{}:M>{}\r\n", ++number, bytes.size(), bytes);
  }
  return header + "<EOH>\r\n";
}

std::string AdifLine(const std::vector<AdifField>& fields, AdifLetters letters) {
  constexpr std::size_t kUsual = 512;
  std::string line;
  line.reserve(kUsual);
  for (const AdifField& field : fields) {
    line += '<';
    AppendBytes(line, field.name, letters);
    line += ':';
    const std::size_t length = line.size();
    line += '>';
    AppendBytes(line, field.value, letters);
    line.insert(length, std::to_string(line.size() - length - 1));
    line += ' ';
  }
  line += "<EOR>\r\n";
  return line;
}

}  // namespace brenvo::adif
