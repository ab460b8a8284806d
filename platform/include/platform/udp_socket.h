// Datagrams that programs on this machine, or of a group in the network, send to each other.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::platform {

// An address in digits ("127.0.0.1", "::1"), as no name is looked up.
struct UdpAddress {
  std::string host;
  int port = 0;
  friend bool operator==(const UdpAddress&, const UdpAddress&) = default;
  friend auto operator<=>(const UdpAddress&, const UdpAddress&) = default;
};

struct UdpDatagram {
  UdpAddress from;
  std::string bytes;
};

struct UdpListening {
  UdpAddress at;      // of this machine; with a group the port alone counts
  std::string group;  // a multicast group to join; empty for none
  // The network interfaces to join it on, by name; none for all that can.
  std::vector<std::string> interfaces;
};

class UdpSocket {
 public:
  static constexpr std::size_t kLongest = 65535;  // bytes of a datagram

  virtual ~UdpSocket() = default;
  // Hears what comes there from now on. DeviceError when it cannot; then it hears nothing.
  virtual void Open(const UdpListening& where) = 0;
  virtual bool IsOpen() const = 0;
  // The next one that waits; nothing while none does.
  virtual std::optional<UdpDatagram> Receive() = 0;
  // From where it listens. What cannot be sent is lost, as any datagram may be; nothing is sent
  // while it is closed.
  virtual void Send(const UdpAddress& to, std::string_view bytes) = 0;
  virtual void Close() = 0;  // harmless when it is closed

  std::function<void()> OnData;  // something waits; again as long as it does
};

}  // namespace brenvo::platform
