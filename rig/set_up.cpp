#include "rig/set_up.h"

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "core/network_address.h"
#include "line_target.h"

namespace brenvo::rig {
namespace {

constexpr std::string_view kWhere = "Dove", kElsewhere = "altro", kOurs = "nostro",
                           kModel = "Modello", kName = "NomeModello", kDevice = "Porta",
                           kSpeed = "Velocita", kAddress = "Indirizzo";
constexpr int kHighestModel = 1000000, kFastest = 10000000;

int NumberOf(const std::string& text, int most) {
  return static_cast<int>(std::clamp(base::Val(text), 0.0, static_cast<double>(most)));
}

}  // namespace

SetUp ReadSetUp(core::Session& session, const DeviceKind& kind) {
  const auto get = [&](std::string_view key) { return session.GetSetting(kind.section, key, ""); };
  SetUp setUp;
  setUp.isElsewhere = get(kWhere) == kElsewhere;
  setUp.model = NumberOf(get(kModel), kHighestModel);
  setUp.name = get(kName);
  setUp.device = get(kDevice);
  setUp.speed = NumberOf(get(kSpeed), kFastest);
  setUp.address = get(kAddress);
  if (setUp.address.empty()) setUp.address = "127.0.0.1:" + std::to_string(kind.port);
  return setUp;
}

void StoreSetUp(core::Session& session, const DeviceKind& kind, const SetUp& setUp) {
  const auto put = [&](std::string_view key, std::string_view value) {
    session.SaveSetting(kind.section, key, value);
  };
  put(kWhere, setUp.isElsewhere ? kElsewhere : kOurs);
  put(kModel, std::to_string(setUp.model));
  put(kName, setUp.name);
  put(kDevice, setUp.device);
  put(kSpeed, std::to_string(setUp.speed));
  put(kAddress, setUp.address);
}

LineTarget TargetOf(core::Session& session, const DeviceKind& kind, const SetUp& setUp) {
  LineTarget target;
  target.port = kind.port;
  const auto addresses = core::TargetsOf(setUp.address);
  if (setUp.isElsewhere) {
    if (!addresses.empty()) target.host = addresses[0].host, target.port = addresses[0].port;
    return target;
  }
  // Our own is on this computer; the port alone may be another one.
  if (!addresses.empty()) target.port = addresses[0].port;
  target.isOurs = true;
  target.model = setUp.model;
  target.device = base::Trim(setUp.device);
  target.speed = setUp.speed;
  if (target.device.size() == 4 && base::SameText(target.device.substr(0, 3), "COM")) {
    target.device = session.GetSetting("Porte", base::UpperAscii(target.device), target.device);
  }
  return target;
}

}  // namespace brenvo::rig
