#include "ui/qt_platform.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QRandomGenerator>
#include <QUrl>
#include <stdexcept>

#include "core/files.h"
#include "core/help_topics.h"
#include "core/session.h"
#include "help_viewer.h"
#include "letter_size.h"
#include "print/report_runner.h"
#include "qt_keyring.h"
#include "qt_process.h"
#include "qt_progress.h"
#include "qt_serial_port.h"
#include "qt_tcp_client.h"
#include "qt_tcp_server.h"
#include "qt_udp_socket.h"
#include "qt_wave_player.h"
#include "qt_web_client.h"
#include "thread_work.h"
#include "ui/text.h"

namespace brenvo::ui {

QtPlatform::QtPlatform(const std::filesystem::path& appPath)
    : appPath_(appPath),
      settings_(appPath / "Brenvo.ini"),
      letters_(std::make_unique<LetterSize>(settings_)),
      keyring_(std::make_unique<QtKeyring>()) {
  host_.OnFailure = [this] { printer_.Abandon(); };
  host_.Map().OnPrint = [this](const QImage& map) { printer_.PrintImage(map); };
  host_.OnHelp = [this](const forms::Window& window) {
    gate_.Run(
        [&] { ShowHelp(core::FileIn(appPath_, "Brenvo.HLP"), core::HelpTopicOf(window.Name())); });
  };
}

QtPlatform::~QtPlatform() = default;

void QtPlatform::KeepSecretsIn(std::unique_ptr<Keyring> keyring) { keyring_ = std::move(keyring); }

void StationReports::Print(const std::filesystem::path& layout) {
  if (session_ != nullptr) print::RunReport(*session_, layout);
}

void QtPlatform::Attach(core::Session* session) {
  gate_.Attach(session == nullptr ? nullptr : &session->Windows);
  reports_.Attach(session);
}

std::unique_ptr<platform::BackgroundWork> QtPlatform::RunInBackground(platform::Background work) {
  return std::make_unique<ThreadWork>(std::move(work));
}

std::unique_ptr<platform::Timer> QtPlatform::MakeTimer() {
  return std::make_unique<QtTimer>(gate_);
}

std::unique_ptr<platform::SerialPort> QtPlatform::MakeSerialPort() {
  return std::make_unique<QtSerialPort>(gate_, settings_);
}

std::unique_ptr<platform::TcpClient> QtPlatform::MakeTcpClient(std::string_view) {
  return std::make_unique<QtTcpClient>(gate_);
}

std::unique_ptr<platform::TcpServer> QtPlatform::MakeTcpServer(std::string_view) {
  return std::make_unique<QtTcpServer>(gate_);
}

std::unique_ptr<platform::UdpSocket> QtPlatform::MakeUdpSocket(std::string_view) {
  return std::make_unique<QtUdpSocket>(gate_);
}

std::unique_ptr<platform::WavePlayer> QtPlatform::MakeWavePlayer() {
  return std::make_unique<QtWavePlayer>(gate_);
}

std::unique_ptr<platform::Process> QtPlatform::MakeProcess() {
  return std::make_unique<QtProcess>(gate_);
}

std::unique_ptr<platform::WebClient> QtPlatform::MakeWebClient() {
  return std::make_unique<QtWebClient>(gate_, *keyring_, AskSecret);
}

std::unique_ptr<platform::Progress> QtPlatform::ShowProgress(std::string_view title,
                                                             std::int64_t total) {
  return std::make_unique<QtProgress>(gate_, title, total);
}

std::uint64_t QtPlatform::Random() { return QRandomGenerator::global()->generate64(); }

void QtPlatform::Beep() { QApplication::beep(); }

void QtPlatform::Open(const std::filesystem::path& file, int topic) {
  if (PathToQt(file.extension()).compare(QLatin1String(".hlp"), Qt::CaseInsensitive) == 0) {
    ShowHelp(file, topic);
    return;
  }
  if (QDesktopServices::openUrl(QUrl::fromLocalFile(PathToQt(file)))) return;
  throw std::runtime_error(
      FromQt(QStringLiteral("Nessun programma apre il file %1").arg(PathToQt(file))));
}

std::optional<std::filesystem::path> QtPlatform::PickFile(std::string_view title,
                                                          std::string_view pattern) {
  const QString picked = QFileDialog::getOpenFileName(QApplication::activeWindow(), ToQt(title),
                                                      PathToQt(appPath_), ToQt(pattern));
  if (picked.isEmpty()) return std::nullopt;
  return PathFromQt(picked);
}

std::optional<std::filesystem::path> QtPlatform::PickNewFile(std::string_view title,
                                                             std::string_view pattern,
                                                             std::string_view suggestedName) {
  const QString picked = QFileDialog::getSaveFileName(
      QApplication::activeWindow(), ToQt(title), PathToQt(appPath_ / suggestedName), ToQt(pattern));
  if (picked.isEmpty()) return std::nullopt;
  return PathFromQt(picked);
}

}  // namespace brenvo::ui
