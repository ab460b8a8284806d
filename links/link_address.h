// The address of a server as the station profile holds it.
#pragma once

#include <string>
#include <string_view>

#include "platform/tcp_client.h"

namespace brenvo::links {

// Connects to "host:port", or to "host" with port 0, which is the telnet port. The text before the
// first colon is the host. Throws std::out_of_range (Italian) when what follows is beyond 65535.
void ConnectTo(platform::TcpClient& socket, std::string_view address);

}  // namespace brenvo::links
