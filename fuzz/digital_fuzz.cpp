// Links: digital
// Arbitrary datagrams: what is read of one, written and read again is the same, and no text is
// longer than the datagram, whatever its lengths say.
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <variant>

#include "digital/datagrams.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brenvo::digital;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto read = ReadDatagram(bytes);
  const auto* datagram = std::get_if<Datagram>(&read);
  if (datagram == nullptr) return 0;
  if (datagram->header.id.size() > size) std::abort();
  if (const auto* decode = std::get_if<Decode>(&datagram->message)) {
    if (decode->message.size() + decode->mode.size() > size) std::abort();
  }
  if (const auto* logged = std::get_if<LoggedAdif>(&datagram->message)) {
    if (logged->adif.size() > size) std::abort();
  }
  const auto again = ReadDatagram(WriteDatagram(*datagram));
  if (!std::holds_alternative<Datagram>(again) || !(std::get<Datagram>(again) == *datagram)) {
    std::abort();
  }
  return 0;
}
