#include "qt_udp_socket.h"

#include <algorithm>
#include <QNetworkDatagram>
#include <QNetworkInterface>

#include "platform/device_error.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

// An address of the fourth version that came over a socket of the sixth is written as it is meant.
QHostAddress Plain(const QHostAddress& address) {
  bool isFour = false;
  const quint32 four = address.toIPv4Address(&isFour);
  return isFour ? QHostAddress(four) : address;
}

QString WhyNotBound(const QUdpSocket& socket, int port) {
  switch (socket.error()) {
    case QAbstractSocket::AddressInUseError:
      return QStringLiteral("La porta %1 è occupata da un altro programma").arg(port);
    case QAbstractSocket::SocketAddressNotAvailableError:
      return QStringLiteral("Questo computer non ha l'indirizzo da ascoltare");
    case QAbstractSocket::SocketAccessError:
      return QStringLiteral("La porta %1 non è permessa").arg(port);
    default:
      return QStringLiteral("La porta %1 non si ascolta: %2").arg(port).arg(socket.errorString());
  }
}

bool IsWanted(const QNetworkInterface& each, const std::vector<std::string>& names) {
  constexpr auto kWant = QNetworkInterface::IsUp | QNetworkInterface::CanMulticast;
  // The loopback can although it does not say so.
  const bool isLoopback = each.flags().testFlag(QNetworkInterface::IsLoopBack);
  const bool can = (each.flags() & kWant) == kWant ||
                   (isLoopback && each.flags().testFlag(QNetworkInterface::IsUp));
  if (!can) return false;
  return names.empty() || std::any_of(names.begin(), names.end(), [&](const std::string& name) {
           return each.name() == ToQt(name);
         });
}

}  // namespace

QtUdpSocket::QtUdpSocket(EventGate& gate) : gate_(gate), socket_(new QUdpSocket) {
  QObject::connect(socket_, &QUdpSocket::readyRead, socket_, [this] { Tell(); });
}

QtUdpSocket::~QtUdpSocket() {
  socket_->disconnect();
  socket_->close();
  socket_->deleteLater();
}

// What an event leaves unread is told again, behind the operator's keys.
void QtUdpSocket::Tell() {
  if (told_) return;
  told_ = true;
  gate_.RunDevice(guard_, [this] {
    told_ = false;
    if (OnData) OnData();
    if (socket_->hasPendingDatagrams()) {
      QMetaObject::invokeMethod(
          &guard_, [this] { Tell(); }, Qt::QueuedConnection);
    }
  });
}

void QtUdpSocket::Open(const platform::UdpListening& where) {
  Close();
  const QHostAddress group(ToQt(where.group));
  const QHostAddress at =
      where.group.empty() ? QHostAddress(ToQt(where.at.host)) : QHostAddress(QHostAddress::AnyIPv4);
  const auto fail = [this](const QString& why) {
    Close();
    throw platform::DeviceError(FromQt(why));
  };
  if (at.isNull()) fail(QStringLiteral("L'indirizzo da ascoltare non si legge"));
  // Two unicast listeners on one port would take each other's datagrams away.
  const auto mode = where.group.empty()
                        ? QAbstractSocket::BindFlag(QAbstractSocket::DontShareAddress)
                        : QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint;
  if (!socket_->bind(at, static_cast<quint16>(where.at.port), mode)) {
    fail(WhyNotBound(*socket_, where.at.port));
  }
  if (where.group.empty()) return;
  bool joined = false;
  for (const QNetworkInterface& each : QNetworkInterface::allInterfaces()) {
    if (IsWanted(each, where.interfaces) && socket_->joinMulticastGroup(group, each)) joined = true;
  }
  if (!joined) {
    fail(
        QStringLiteral("Il gruppo %1 non si può ascoltare su nessuna rete").arg(ToQt(where.group)));
  }
}

bool QtUdpSocket::IsOpen() const { return socket_->state() == QAbstractSocket::BoundState; }

std::optional<platform::UdpDatagram> QtUdpSocket::Receive() {
  if (!IsOpen() || !socket_->hasPendingDatagrams()) return std::nullopt;
  const QNetworkDatagram read = socket_->receiveDatagram(kLongest);
  if (!read.isValid()) return std::nullopt;
  return platform::UdpDatagram{{FromQt(Plain(read.senderAddress()).toString()), read.senderPort()},
                               read.data().toStdString()};
}

void QtUdpSocket::Send(const platform::UdpAddress& to, std::string_view bytes) {
  if (!IsOpen()) return;
  const QHostAddress host(ToQt(to.host));
  if (host.isNull()) return;
  socket_->writeDatagram(bytes.data(), static_cast<qint64>(bytes.size()), host,
                         static_cast<quint16>(to.port));
}

void QtUdpSocket::Close() {
  if (!IsOpen()) return;
  const bool blocked = socket_->blockSignals(true);
  socket_->close();  // leaves its groups too
  socket_->blockSignals(blocked);
}

}  // namespace brenvo::ui
