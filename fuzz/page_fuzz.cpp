// Links: awards
// Arbitrary text as a page's template: its pieces are all of it, its row is one row, and a filled
// token changes nothing else.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "awards/html_page.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

bool Opens(std::string_view text) { return text.starts_with("<TR>") || text.starts_with("<tr>"); }
bool Closes(std::string_view text) { return text.ends_with("</TR>") || text.ends_with("</tr>"); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brenvo;
  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto pieces = awards::CutTemplate(text);
  if (!pieces) return 0;
  Require(pieces->head + pieces->row + pieces->tail == text);
  Require(Opens(pieces->row) && Closes(pieces->row));
  // What stands in a template may be what a contact holds.
  for (const std::string_view value :
       {std::string_view(), std::string_view("<b>[CALL]</b>"), std::string_view(pieces->tail)}) {
    for (const std::string_view token : {"[COUNTRY]", "[DESCRIZIONE]", "[CALL]"}) {
      std::string row = pieces->row;
      const std::size_t at = row.find(token);
      awards::FillToken(row, token, value);
      if (at == std::string::npos) {
        Require(row == pieces->row);
      } else {
        Require(row == pieces->row.substr(0, at) + std::string(value) +
                           pieces->row.substr(at + token.size()));
      }
    }
  }
  return 0;
}
