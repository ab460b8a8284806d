// The services that confirm contacts, and under which of the standard's fields a contact keeps what
// they say.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace brenvo::conferme {

enum class Service : std::uint8_t { kLotw, kEqsl, kQrz, kClubLog };

struct ServiceFacts {
  Service service;
  std::string_view name;      // as the operator reads it and tables hold it
  std::string_view received;  // the field of a contact that is confirmed...
  std::string_view value;     // ...and its value
  std::string_view day;       // the field of the day; empty where the service has none
  std::string_view sent;      // the field that tells how far it has gone there
  std::string_view sentDay;
};
// In the order of Service.
std::span<const ServiceFacts> Services();
inline const ServiceFacts& FactsOf(Service service) {
  return Services()[static_cast<std::size_t>(service)];
}
std::optional<Service> ServiceNamed(std::string_view name);

}  // namespace brenvo::conferme
