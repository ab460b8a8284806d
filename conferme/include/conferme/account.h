// As whom the station speaks to a service.
#pragma once

#include <string>
#include <string_view>

#include "conferme/services.h"
#include "core/session.h"

namespace brenvo::conferme {

// Where the services are: "https://host". A test has others.
struct Addresses {
  std::string lotw = "https://lotw.arrl.org";
  std::string eqsl = "https://www.eQSL.cc";
  std::string qrz = "https://logbook.qrz.com";
  std::string clubLog = "https://clublog.org";
};

struct Account {
  Service service = Service::kLotw;
  std::string user;  // the name that the service knows
  std::string call;  // of the station
};

// For contacts of that call, empty for the current station's. Without a user where the operator has
// told none and the service does not know stations by their calls.
Account AccountOf(core::Session& session, Service service, std::string_view call = {});
// The name of the account's secret: "LoTW IK0XYZ".
std::string SecretOf(const Account& account);
// The same of the key that Club Log wants of each program.
inline constexpr std::string_view kClubLogKey = "Club Log (chiave API)";

}  // namespace brenvo::conferme
