// The machine as the desktop offers it.
#pragma once

#include <filesystem>
#include <memory>

#include "forms/window_platform.h"
#include "ui/event_gate.h"
#include "ui/print_choice.h"
#include "ui/qt_devices.h"
#include "ui/qt_printer.h"
#include "ui/qt_window_host.h"

namespace brenvo::core {
class Session;
}

namespace brenvo::ui {

class Keyring;
class LetterSize;

// Reports print by the station's own layouts, on the same printer as everything else.
class StationReports : public platform::ReportPrinter {
 public:
  void Attach(core::Session* session) { session_ = session; }
  void Print(const std::filesystem::path& layout) override;

 private:
  core::Session* session_ = nullptr;
};

class QtPlatform : public forms::WindowPlatform {
 public:
  // Settings stand in the application directory.
  explicit QtPlatform(const std::filesystem::path& appPath);
  ~QtPlatform() override;

  // The session whose windows answer from now on; null before the session goes.
  void Attach(core::Session* session);
  EventGate& Gate() { return gate_; }
  QtWindowHost& Screen() { return host_; }
  // Asks this instead of the operator where documents go.
  void SendPrintsTo(QtPrinter::Chooser chooser) { printer_.SendTo(std::move(chooser)); }

  // Secrets are kept there in place of the desktop's keyring.
  void KeepSecretsIn(std::unique_ptr<Keyring> keyring);

  platform::Clock& GetClock() override { return clock_; }
  platform::MessageBox& Messages() override { return messages_; }
  platform::SettingsStore& Settings() override { return settings_; }
  forms::WindowHost& Host() override { return host_; }
  void PrintWindow(const forms::Window& window, base::Mm x, base::Mm y) override {
    printer_.WindowImage(window, x, y);
  }
  platform::Printer& GetPrinter() override { return printer_; }
  platform::ReportPrinter& Reports() override { return reports_; }
  platform::PictureViewer& Map() override { return host_.Map(); }
  std::unique_ptr<platform::Timer> MakeTimer() override;
  std::unique_ptr<platform::SerialPort> MakeSerialPort() override;
  std::unique_ptr<platform::TcpClient> MakeTcpClient(std::string_view window) override;
  std::unique_ptr<platform::TcpServer> MakeTcpServer(std::string_view name) override;
  std::unique_ptr<platform::UdpSocket> MakeUdpSocket(std::string_view name) override;
  std::unique_ptr<platform::WavePlayer> MakeWavePlayer() override;
  std::unique_ptr<platform::Process> MakeProcess() override;
  std::unique_ptr<platform::WebClient> MakeWebClient() override;
  std::unique_ptr<platform::BackgroundWork> RunInBackground(platform::Background work) override;
  std::unique_ptr<platform::Progress> ShowProgress(std::string_view title,
                                                   std::int64_t total) override;
  std::uint64_t Random() override;
  void Beep() override;
  void Open(const std::filesystem::path& file, int topic) override;
  std::optional<std::filesystem::path> PickNewFile(std::string_view title, std::string_view pattern,
                                                   std::string_view suggestedName) override;
  std::optional<std::filesystem::path> PickFile(std::string_view title,
                                                std::string_view pattern) override;

 private:
  std::filesystem::path appPath_;
  EventGate gate_;
  QtClock clock_;
  QtMessageBox messages_;
  QtSettings settings_;
  std::unique_ptr<LetterSize> letters_;
  std::unique_ptr<Keyring> keyring_;
  StationReports reports_;
  QtWindowHost host_{gate_};
  QtPrinter printer_{ChooseTarget,
                     [this](const forms::Window& window) { return host_.PictureOf(window); }};
};

}  // namespace brenvo::ui
