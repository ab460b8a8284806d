// The whole machine, recorded.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/window_platform.h"
#include "recorder/fake_clock.h"
#include "recorder/later_work.h"
#include "recorder/line_sink.h"
#include "recorder/memory_settings.h"
#include "recorder/quote.h"
#include "recorder/recording_host.h"
#include "recorder/recording_map.h"
#include "recorder/recording_printer.h"
#include "recorder/recording_process.h"
#include "recorder/recording_serial.h"
#include "recorder/recording_server.h"
#include "recorder/recording_tcp.h"
#include "recorder/recording_udp.h"
#include "recorder/recording_waves.h"
#include "recorder/recording_web.h"
#include "recorder/scripted_messages.h"

namespace brenvo::recorder {

// Every device by its part; the parts' own comments give their lines. Besides these: `beep`, and
// `open "file"` for what is shown to the operator. The map lies in the window "Brenvo" once that is
// shown. Outlives the session that runs on it.
class RecordingPlatform : public forms::WindowPlatform {
 public:
  // Lines are kept for TakeLines...
  RecordingPlatform();
  // ...or handed out one by one.
  explicit RecordingPlatform(LineSink sink);

  FakeClock& GetClock() override { return clock_; }
  ScriptedMessages& Messages() override { return messages_; }
  MemorySettings& Settings() override { return settings_; }
  RecordingHost& Host() override { return host_; }
  void PrintWindow(const forms::Window& window, base::Mm x, base::Mm y) override {
    printer_.WindowImage(window, x, y);
  }
  RecordingPrinter& GetPrinter() override { return printer_; }
  RecordingPrinter& Reports() override { return printer_; }
  RecordingMap& Map() override { return map_; }
  std::unique_ptr<platform::Timer> MakeTimer() override { return clock_.MakeTimer(); }
  std::unique_ptr<platform::SerialPort> MakeSerialPort() override { return serial_.MakePort(); }
  std::unique_ptr<platform::TcpClient> MakeTcpClient(std::string_view window) override {
    return tcp_.Make(window);
  }
  std::unique_ptr<platform::TcpServer> MakeTcpServer(std::string_view name) override {
    return servers_.Make(name);
  }
  std::unique_ptr<platform::UdpSocket> MakeUdpSocket(std::string_view name) override {
    return udp_.Make(name);
  }
  std::unique_ptr<platform::WavePlayer> MakeWavePlayer() override { return waves_.MakePlayer(); }
  std::unique_ptr<platform::Process> MakeProcess() override { return processes_.Make(); }
  std::unique_ptr<platform::WebClient> MakeWebClient() override { return web_.Make(); }
  std::unique_ptr<platform::BackgroundWork> RunInBackground(platform::Background work) override {
    return std::make_unique<LaterWork>(std::move(work));
  }
  // The same from run to run: one number after the other, well mixed.
  std::uint64_t Random() override;
  void Beep() override { sink_("beep"); }
  // Writes nothing; StopProgressAt makes the operator ask to stop.
  std::unique_ptr<platform::Progress> ShowProgress(std::string_view title,
                                                   std::int64_t total) override;
  void StopProgressAt(std::int64_t done) { stopProgressAt_ = done; }
  void Open(const std::filesystem::path& file, int topic) override;
  std::optional<std::filesystem::path> PickFile(std::string_view title,
                                                std::string_view pattern) override {
    return picks_.Next(title, pattern);
  }
  std::optional<std::filesystem::path> PickNewFile(std::string_view title, std::string_view pattern,
                                                   std::string_view) override {
    return picks_.Next(title, pattern);
  }

  RecordingSerialLines& Serial() { return serial_; }
  RecordingTcpClients& Tcp() { return tcp_; }
  RecordingUdpSockets& Udp() { return udp_; }
  RecordingServers& Servers() { return servers_; }
  RecordingWaves& Waves() { return waves_; }
  RecordingProcesses& Processes() { return processes_; }
  RecordingWeb& Web() { return web_; }
  ScriptedPicks& Picks() { return picks_; }

  // Files in lines are named as seen from here.
  void SetApplicationDirectory(const std::filesystem::path& directory) {
    names_.SetDirectory(directory);
  }
  // Shorthands of the clock's.
  void SetNow(base::DateTime now) { clock_.SetNow(now); }
  void Advance(std::int64_t milliseconds) { clock_.Advance(milliseconds); }

  // Answers or picks that nothing has asked for yet.
  bool HasUnusedAnswers() const { return messages_.UnusedAnswers() + picks_.Unused() > 0; }
  // The topic of the file that was opened last; 0 for none.
  int OpenedTopic() const { return openedTopic_; }
  // The lines kept since the last call.
  std::vector<std::string> TakeLines();

 private:
  std::vector<std::string> lines_;
  LineSink sink_;
  FileNames names_;
  FakeClock clock_;
  ScriptedMessages messages_;
  ScriptedPicks picks_;
  MemorySettings settings_;
  RecordingHost host_;
  RecordingPrinter printer_;
  RecordingMap map_;
  RecordingSerialLines serial_;
  RecordingTcpClients tcp_;
  RecordingUdpSockets udp_;
  RecordingServers servers_;
  RecordingWaves waves_;
  RecordingProcesses processes_;
  RecordingWeb web_;
  int openedTopic_ = 0;
  std::uint64_t random_ = 0;
  std::int64_t stopProgressAt_ = -1;
};

}  // namespace brenvo::recorder
