#include "qt_tcp_server.h"

#include "platform/device_error.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

// What may wait to be read of one program, and to be written to one that does not read.
constexpr qint64 kMostWaiting = 1 << 16;

}  // namespace

QtTcpServer::QtTcpServer(EventGate& gate) : gate_(gate), server_(new QTcpServer(&guard_)) {
  server_->setMaxPendingConnections(static_cast<int>(kMostPeers));
  QObject::connect(server_, &QTcpServer::newConnection, &guard_, [this] { Welcome(); });
}

QtTcpServer::~QtTcpServer() { QtTcpServer::Close(); }

void QtTcpServer::Listen(int port) {
  Close();
  if (server_->listen(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(port))) return;
  const bool taken = server_->serverError() == QAbstractSocket::AddressInUseError;
  throw platform::DeviceError(FromQt(
      taken
          ? QStringLiteral("La porta %1 è occupata da un altro programma").arg(port)
          : QStringLiteral("La porta %1 non si offre: %2").arg(port).arg(server_->errorString())));
}

bool QtTcpServer::IsListening() const { return server_->isListening(); }

void QtTcpServer::Close() {
  server_->close();
  while (!peers_.empty()) Drop(peers_.begin()->first);
}

void QtTcpServer::Welcome() {
  while (QTcpSocket* const socket = server_->nextPendingConnection()) {
    if (peers_.size() >= kMostPeers) {
      socket->abort();
      socket->deleteLater();
      continue;
    }
    const int peer = ++last_;
    socket->setReadBufferSize(kMostWaiting);
    peers_[peer] = socket;
    QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, peer] { Tell(peer); });
    QObject::connect(socket, &QTcpSocket::disconnected, socket, [this, peer] {
      gate_.RunDevice(guard_, [this, peer] {
        if (Find(peer) == nullptr) return;
        Drop(peer);
        if (OnGone) OnGone(peer);
      });
    });
    if (socket->bytesAvailable() > 0) Tell(peer);
  }
}

void QtTcpServer::Tell(int peer) {
  gate_.RunDevice(guard_, [this, peer] {
    if (OnData && Find(peer) != nullptr) OnData(peer);
  });
}

QTcpSocket* QtTcpServer::Find(int peer) const {
  const auto at = peers_.find(peer);
  return at == peers_.end() ? nullptr : at->second;
}

std::string QtTcpServer::Read(int peer, std::size_t most) {
  QTcpSocket* const socket = Find(peer);
  return socket == nullptr ? std::string() : socket->read(static_cast<qint64>(most)).toStdString();
}

void QtTcpServer::Send(int peer, std::string_view bytes) {
  QTcpSocket* const socket = Find(peer);
  if (socket == nullptr) return;
  if (socket->bytesToWrite() > kMostWaiting) {
    Drop(peer);
    return;
  }
  socket->write(bytes.data(), static_cast<qint64>(bytes.size()));
  socket->flush();
}

void QtTcpServer::Drop(int peer) {
  QTcpSocket* const socket = Find(peer);
  if (socket == nullptr) return;
  peers_.erase(peer);
  socket->disconnect();
  socket->abort();
  socket->deleteLater();
}

}  // namespace brenvo::ui
