#include "adif/adif_writer.h"

#include <fmt/format.h>

#include "base/encoding.h"

namespace brenvo {

std::string AdifBytes(std::string_view text) { return ToWindows1252(text); }

std::string AdifHeader(const std::vector<std::string>& userFields) {
  std::string header =
      "Log esportato da Brenvo\r\n"
      "<ADIF_VER:5>3.1.7\r\n"
      "<PROGRAMID:6>Brenvo\r\n";
  int number = 0;
  for (const std::string& name : userFields) {
    const std::string bytes = AdifBytes(name);
    header += fmt::format("<USERDEF{}:{}:M>{}\r\n", ++number, bytes.size(), bytes);
  }
  return header + "<EOH>\r\n";
}

std::string AdifLine(const std::vector<AdifField>& fields) {
  std::string line;
  for (const AdifField& field : fields) {
    const std::string bytes = AdifBytes(field.value);
    fmt::format_to(std::back_inserter(line), "<{}:{}>{} ", AdifBytes(field.name), bytes.size(),
                   bytes);
  }
  return line + "<EOR>\r\n";
}

}  // namespace brenvo
