// Addresses in the network, as the operator writes them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvo::core {

// Four numbers from 0 to 255 with points between.
bool IsAddress(std::string_view text);
// One of a multicast group.
bool IsGroupAddress(std::string_view text);

struct NetworkTarget {
  std::string host;
  int port = 0;  // 1-65535
  friend bool operator==(const NetworkTarget&, const NetworkTarget&) = default;
};
// "127.0.0.1:2238 192.168.1.5:2237", with blanks or commas between. What cannot be read is left
// out; FaultOfTargets gives the first such, empty when there is none.
std::vector<NetworkTarget> TargetsOf(std::string_view text);
std::string FaultOfTargets(std::string_view text);

}  // namespace brenvo::core
