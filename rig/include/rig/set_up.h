// Which transceiver or rotator the station has, and how it is reached.
#pragma once

#include <string>
#include <string_view>

#include "core/session.h"
#include "rig/replies.h"

namespace brenvo::rig {

// What is different between the two.
struct DeviceKind {
  std::string_view section;  // of the settings store
  std::string_view line;     // the connection's name
  std::string_view program;  // that leads it
  std::string_view lister;   // that knows the models
  int port = 0;              // of the program
  std::string_view title;
};
inline constexpr DeviceKind kRigKind{"Rtx", "RIG", "rigctld", "rigctl", 4532, "Rtx"};
inline constexpr DeviceKind kRotorKind{"Rotore", "ROTOR", "rotctld", "rotctl", 4533, "Rotore"};

struct SetUp {
  // The program is at work already, at an address; else it is started, for a model on a port.
  bool isElsewhere = false;
  int model = 0;
  std::string name;     // of the model
  std::string device;   // "/dev/ttyUSB0", or "COM1" for what the settings call so
  int speed = 0;        // baud; 0 for the model's own
  std::string address;  // "127.0.0.1:4532"
  // Something was chosen.
  bool IsMade() const { return isElsewhere || model > 0; }
  friend bool operator==(const SetUp&, const SetUp&) = default;
};

SetUp ReadSetUp(core::Session& session, const DeviceKind& kind);
void StoreSetUp(core::Session& session, const DeviceKind& kind, const SetUp& setUp);

}  // namespace brenvo::rig
