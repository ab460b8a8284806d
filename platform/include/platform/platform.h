// Everything that the station needs of the machine, in one place.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/background.h"
#include "platform/clock.h"
#include "platform/message_box.h"
#include "platform/picture_viewer.h"
#include "platform/printer.h"
#include "platform/process.h"
#include "platform/progress.h"
#include "platform/report_printer.h"
#include "platform/serial_port.h"
#include "platform/settings_store.h"
#include "platform/tcp_client.h"
#include "platform/tcp_server.h"
#include "platform/udp_socket.h"
#include "platform/wave_player.h"
#include "platform/web_client.h"

namespace brenvo::platform {

class Platform {
 public:
  virtual ~Platform() = default;
  virtual Clock& GetClock() = 0;
  virtual MessageBox& Messages() = 0;
  virtual SettingsStore& Settings() = 0;
  virtual Printer& GetPrinter() = 0;
  virtual ReportPrinter& Reports() = 0;
  // The map behind the main frame.
  virtual PictureViewer& Map() = 0;

  virtual std::unique_ptr<Timer> MakeTimer() = 0;
  virtual std::unique_ptr<SerialPort> MakeSerialPort() = 0;
  // `window` names the window that the connection belongs to, or the device: "RIG".
  virtual std::unique_ptr<TcpClient> MakeTcpClient(std::string_view window) = 0;
  // `name` is what the server is called by: "RIGSERVER".
  virtual std::unique_ptr<TcpServer> MakeTcpServer(std::string_view name) = 0;
  // `name` is what the datagrams are called by: "WSJTX".
  virtual std::unique_ptr<UdpSocket> MakeUdpSocket(std::string_view name) = 0;
  virtual std::unique_ptr<WavePlayer> MakeWavePlayer() = 0;
  virtual std::unique_ptr<Process> MakeProcess() = 0;
  virtual std::unique_ptr<WebClient> MakeWebClient() = 0;

  virtual std::unique_ptr<BackgroundWork> RunInBackground(Background work) = 0;
  // Bits that nobody can foresee.
  virtual std::uint64_t Random() = 0;
  virtual void Beep() = 0;
  // `total` is what Advance counts up to, 0 where nobody knows it. What has closed before is gone
  // from the screen when it returns. No statement of a database may be in work.
  virtual std::unique_ptr<Progress> ShowProgress(std::string_view title, std::int64_t total) = 0;
  // Shows a file to the operator: a page in the browser, the help at a topic (0 for none).
  virtual void Open(const std::filesystem::path& file, int topic) = 0;
  // A file that the operator picks, with a pattern such as "*.wav"; nothing when he cancels.
  virtual std::optional<std::filesystem::path> PickFile(std::string_view title,
                                                        std::string_view pattern) = 0;
  // A file to be written, new or in the place of an old one that he has agreed to lose.
  virtual std::optional<std::filesystem::path> PickNewFile(std::string_view title,
                                                           std::string_view pattern,
                                                           std::string_view suggestedName) = 0;
};

}  // namespace brenvo::platform
