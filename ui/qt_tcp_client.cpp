#include "qt_tcp_client.h"

#include <utility>

#include "ui/text.h"

namespace brenvo::ui {
namespace {

// What may wait to be read, while a sound is spoken; the rest waits at the other side.
constexpr qint64 kMostWaiting = 1 << 16;

QString ReasonOf(const QTcpSocket& socket) {
  switch (socket.error()) {
    case QAbstractSocket::ConnectionRefusedError:
      return QStringLiteral("connessione rifiutata");
    case QAbstractSocket::RemoteHostClosedError:
      return QStringLiteral("chiuso dall'altra parte");
    case QAbstractSocket::HostNotFoundError:
      return QStringLiteral("l'indirizzo non si trova");
    case QAbstractSocket::SocketAccessError:
      return QStringLiteral("permesso negato");
    case QAbstractSocket::SocketTimeoutError:
      return QStringLiteral("nessuna risposta");
    case QAbstractSocket::NetworkError:
      return QStringLiteral("la rete non risponde");
    default:
      return socket.errorString();
  }
}

}  // namespace

QtTcpClient::QtTcpClient(EventGate& gate) : socket_(new QTcpSocket) {
  socket_->setReadBufferSize(kMostWaiting);
  QObject::connect(socket_, &QTcpSocket::readyRead, socket_, [this, &gate] {
    gate.RunDevice(guard_, [this] {
      if (OnData) OnData();
    });
  });
  QObject::connect(socket_, &QTcpSocket::connected, socket_, [this, &gate] {
    gate.RunDevice(guard_, [this] {
      if (OnConnected) OnConnected();
    });
  });
  // Only a connection that stood is closed by its peer; an own close drops the signal before.
  QObject::connect(socket_, &QTcpSocket::disconnected, socket_, [this, &gate] {
    if (std::exchange(failed_, false)) return;
    gate.RunDevice(guard_, [this] {
      if (OnPeerClose) OnPeerClose();
    });
  });
  // The socket tells a peer's close as an error too, and then as what it is.
  QObject::connect(socket_, &QTcpSocket::errorOccurred, socket_, [this, &gate] {
    const bool stood = IsConnected();
    if (stood && socket_->error() == QAbstractSocket::RemoteHostClosedError) return;
    failed_ = stood;
    gate.RunDevice(guard_, [this, reason = FromQt(ReasonOf(*socket_))] {
      if (OnFail) OnFail(reason);
    });
  });
}

QtTcpClient::~QtTcpClient() {
  Close();
  socket_->disconnect();
  socket_->deleteLater();
}

void QtTcpClient::Connect(std::string_view host, int port) {
  const bool known = port > 0 && port <= 65535;
  Close();
  failed_ = false;
  socket_->connectToHost(ToQt(host).trimmed(), static_cast<quint16>(known ? port : kTelnetPort));
}

bool QtTcpClient::IsConnected() const {
  return socket_->state() == QAbstractSocket::ConnectedState;
}

std::size_t QtTcpClient::BytesWaiting() const {
  return static_cast<std::size_t>(socket_->bytesAvailable());
}

std::string QtTcpClient::Read(std::size_t most) {
  return socket_->read(static_cast<qint64>(most)).toStdString();
}

void QtTcpClient::Send(std::string_view bytes) {
  if (!IsConnected()) return;
  socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
  socket_->flush();
}

void QtTcpClient::Close() {
  const bool blocked = socket_->blockSignals(true);
  socket_->flush();
  socket_->disconnectFromHost();
  // Data that the system's buffer does not take at once is not worth a wait.
  if (socket_->state() != QAbstractSocket::UnconnectedState) socket_->abort();
  socket_->blockSignals(blocked);
}

}  // namespace brenvo::ui
