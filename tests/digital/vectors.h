// Datagrams of tests/data/digital.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "digital/datagrams.h"
#include "tests/support/golden.h"
#include "tests/support/places.h"

namespace brenvo::digital {

inline std::string Vector(std::string_view name) {
  return ReadBytes(SourceDir() / "tests/data/digital" / (std::string(name) + ".bin"));
}

// The message of a vector that can be read.
template <class Kind>
Kind MessageOf(std::string_view name) {
  const auto read = ReadDatagram(Vector(name));
  const auto* datagram = std::get_if<Datagram>(&read);
  if (datagram == nullptr || !std::holds_alternative<Kind>(datagram->message)) {
    ADD_FAILURE() << name << " is not read as what it is";
    return {};
  }
  return std::get<Kind>(datagram->message);
}

}  // namespace brenvo::digital
