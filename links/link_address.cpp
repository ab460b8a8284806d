#include "link_address.h"

#include <stdexcept>

#include "base/number.h"

namespace brenvo::links {
namespace {

constexpr double kHighestPort = 65535;

}  // namespace

void ConnectTo(platform::TcpClient& socket, std::string_view address) {
  const std::size_t colon = address.find(':');
  double port = 0;
  if (colon != std::string_view::npos) port = base::Val(address.substr(colon + 1));
  if (port < 0 || port > kHighestPort) throw std::out_of_range("Porta non valida");
  socket.Connect(address.substr(0, colon), static_cast<int>(port));
}

}  // namespace brenvo::links
