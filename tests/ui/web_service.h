// A service of our own on this computer, and a keyring that stands in memory.
#pragma once

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>
#include <string>
#include <vector>

#include "ui/keyring.h"

namespace brenvo::ui {

// What the operator keeps there, in memory.
class FakeKeyring : public Keyring {
 public:
  void Read(const std::string& name, Found found) override {
    ++reads;
    QTimer::singleShot(0, &guard_, [this, name, found] {
      if (!failure.empty()) return found(std::nullopt, failure);
      const auto at = kept.find(name);
      found(at == kept.end() ? std::nullopt : std::optional(at->second), "");
    });
  }
  void Write(const std::string& name, const std::string& secret, Done done) override {
    kept[name] = secret;
    QTimer::singleShot(0, &guard_, [done] { done(""); });
  }
  void Forget(const std::string& name) override { kept.erase(name); }

  std::map<std::string, std::string> kept;
  std::string failure;
  int reads = 0;

 private:
  QObject guard_;
};

// Answers each question with what stands in `answer`, as it is, and closes or stays.
class Service {
 public:
  explicit Service(QTcpServer& server) : server_(server) {
    server_.listen(QHostAddress::LocalHost);
    QObject::connect(&server_, &QTcpServer::pendingConnectionAvailable, &server_, [this] {
      while (QTcpSocket* const socket = server_.nextPendingConnection()) Serve(*socket);
    });
  }
  std::string Address(const std::string& scheme = "http", const std::string& path = "/ask") const {
    return scheme + "://127.0.0.1:" + std::to_string(server_.serverPort()) + path;
  }

  std::vector<std::string> answers;  // each question gets the next one, the last of them again
  bool closes = true;
  std::string asked;  // all that came
  int connections = 0;

 private:
  void Serve(QTcpSocket& socket) {
    ++connections;
    auto question = std::make_shared<std::string>();
    const auto take = [this, &socket, question] {
      const std::string bytes = socket.readAll().toStdString();
      asked += bytes;
      *question += bytes;
      if (!IsWhole(*question) || answers.empty()) return;
      question->clear();
      const std::string answer = answers.front();
      if (answers.size() > 1) answers.erase(answers.begin());
      socket.write(answer.data(), static_cast<qint64>(answer.size()));
      if (closes) socket.disconnectFromHost();
    };
    QObject::connect(&socket, &QTcpSocket::readyRead, &socket, take);
    QObject::connect(&socket, &QTcpSocket::disconnected, &socket, &QObject::deleteLater);
    if (socket.bytesAvailable() > 0) take();
  }
  static bool IsWhole(const std::string& question) {
    const std::size_t head = question.find("\r\n\r\n"), length = question.find("Content-Length: ");
    if (head == std::string::npos) return false;
    const std::size_t size = length < head ? std::stoul(question.substr(length + 16)) : 0;
    return question.size() >= head + 4 + size;
  }
  QTcpServer& server_;
};

inline std::string Whole(const std::string& body, const std::string& status = "200 OK",
                         const std::string& further = "") {
  return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\nDate: Sat, 03 Feb 2001 04:05:06 GMT\r\n" + further + "\r\n" + body;
}

// A certificate of our own, made for this run.
class TlsService {
 public:
  explicit TlsService(const char* name) {
    const QString key = directory_.filePath("key.pem"), certificate = directory_.filePath("c.pem");
    QProcess make;
    make.start("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-keyout",
                           key, "-out", certificate, "-subj", QString("/CN=%1").arg(name),
                           "-addext", QString("subjectAltName=%1").arg(name)});
    if (!make.waitForStarted() || !make.waitForFinished() || make.exitCode() != 0) return;
    QFile keyFile(key);
    if (!keyFile.open(QIODevice::ReadOnly)) return;
    certificate_ = QSslCertificate::fromPath(certificate).value(0);
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(certificate_);
    configuration.setPrivateKey(QSslKey(&keyFile, QSsl::Rsa));
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    server_.setSslConfiguration(configuration);
  }
  bool Stands() const { return !certificate_.isNull(); }
  Service& Get() { return service_; }
  const QSslCertificate& Certificate() const { return certificate_; }

 private:
  QTemporaryDir directory_;
  QSslCertificate certificate_;
  QSslServer server_;
  Service service_{server_};
};

// Trusted while it lives.
class Trusted {
 public:
  explicit Trusted(const QSslCertificate& certificate)
      : before_(QSslConfiguration::defaultConfiguration()) {
    QSslConfiguration with = before_;
    with.addCaCertificate(certificate);
    QSslConfiguration::setDefaultConfiguration(with);
  }
  ~Trusted() { QSslConfiguration::setDefaultConfiguration(before_); }

 private:
  QSslConfiguration before_;
};

}  // namespace brenvo::ui
