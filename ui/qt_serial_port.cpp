#include "ui/qt_serial_port.h"

#include <QFileInfo>

#include "ui/text.h"

namespace brenvo {
namespace {

QString PortName(int number) { return QStringLiteral("COM%1").arg(number); }

}  // namespace

QString DefaultSerialDevice(int number) {
#if defined(Q_OS_WIN)
  return PortName(number);
#elif defined(Q_OS_MACOS)
  return number == 1 ? QStringLiteral("/dev/cu.usbserial")
                     : QStringLiteral("/dev/cu.usbserial%1").arg(number);
#else
  // A board in the machine, or else an adapter on the bus, as is usual on small machines.
  const QString board = QStringLiteral("/dev/ttyS%1").arg(number - 1);
  const QString adapter = QStringLiteral("/dev/ttyUSB%1").arg(number - 1);
  return QFileInfo::exists(adapter) ? adapter : board;
#endif
}

QtSerialPort::QtSerialPort(EventGate& gate, SettingsStore& settings)
    : settings_(settings), port_(new QSerialPort) {
  QObject::connect(port_, &QSerialPort::readyRead, port_, [this, &gate] {
    gate.RunDevice(guard_, [this] {
      if (OnReceive) OnReceive();
    });
  });
}

QtSerialPort::~QtSerialPort() {
  port_->disconnect();
  port_->close();
  port_->deleteLater();
}

void QtSerialPort::SetSettings(std::string_view settings) {
  const QStringList parts = ToQt(settings).split(',');
  const QString parity = parts.value(1).trimmed().toUpper();
  port_->setBaudRate(parts.value(0).toInt());
  port_->setParity(parity == "E"   ? QSerialPort::EvenParity
                   : parity == "O" ? QSerialPort::OddParity
                   : parity == "M" ? QSerialPort::MarkParity
                   : parity == "S" ? QSerialPort::SpaceParity
                                   : QSerialPort::NoParity);
  const int dataBits = parts.value(2).toInt();
  port_->setDataBits(dataBits >= 5 && dataBits <= 7 ? static_cast<QSerialPort::DataBits>(dataBits)
                                                    : QSerialPort::Data8);
  port_->setStopBits(parts.value(3).trimmed() == "2" ? QSerialPort::TwoStop
                                                     : QSerialPort::OneStop);
}

QString QtSerialPort::Device() const {
  const std::string device =
      settings_.GetSetting("Porte", FromQt(PortName(number_)), FromQt(DefaultSerialDevice(number_)));
  return ToQt(device);
}

void QtSerialPort::Open() {
  if (port_->isOpen()) return;
  const QString device = Device();
  port_->setPortName(device);
  if (port_->open(QIODevice::ReadWrite)) return;
  throw DeviceError(FromQt(QStringLiteral("La porta %1 (%2) non si apre: %3")
                               .arg(PortName(number_), device, port_->errorString())));
}

void QtSerialPort::Close() {
  if (!port_->isOpen()) return;
  // What was written last still goes out.
  port_->flush();
  port_->close();
}

std::size_t QtSerialPort::BytesWaiting() const {
  return port_->isOpen() ? static_cast<std::size_t>(port_->bytesAvailable()) : 0;
}

std::string QtSerialPort::Read(std::size_t most) {
  return port_->isOpen() ? port_->read(static_cast<qint64>(most)).toStdString() : std::string();
}

void QtSerialPort::Write(std::string_view bytes) {
  const auto size = static_cast<qint64>(bytes.size());
  if (port_->isOpen() && port_->write(bytes.data(), size) == size) {
    port_->flush();
    return;
  }
  throw DeviceError(FromQt(QStringLiteral("La porta %1 non riceve: %2")
                               .arg(PortName(number_), port_->isOpen()
                                                           ? port_->errorString()
                                                           : QStringLiteral("e' chiusa"))));
}

}  // namespace brenvo
