// What stands at the other ends of the station's lines while pictures are taken.
#pragma once

#include <functional>
#include <QTcpServer>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::screens {

// A server that says its lines to whoever connects, one by one.
class GreetingServer {
 public:
  explicit GreetingServer(std::vector<std::string> lines);
  // "127.0.0.1:port".
  std::string Address() const;

 private:
  QTcpServer server_;
};

// A server that answers each line that it is sent.
class AnsweringServer {
 public:
  using Answer = std::function<std::string(const std::string& line)>;
  explicit AnsweringServer(Answer answer);
  std::string Address() const;

 private:
  QTcpServer server_;
};

// Datagrams to a port of this machine, from one that nobody answers.
void SendDatagrams(int port, const std::vector<std::string>& datagrams);

// A serial device that takes everything, and brings what it is told to.
class SilentDevice {
 public:
  SilentDevice();
  ~SilentDevice();
  SilentDevice(const SilentDevice&) = delete;
  SilentDevice& operator=(const SilentDevice&) = delete;

  const std::string& Path() const { return path_; }
  void Say(std::string_view bytes);

 private:
  int end_ = -1, held_ = -1;
  std::string path_;
};

}  // namespace brenvo::screens
