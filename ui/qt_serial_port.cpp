#include "qt_serial_port.h"

#include <QFileInfo>

#include "ui/text.h"

namespace brenvo::ui {
namespace {

// What may wait to be read, while a sound is spoken: a minute at the fastest of the usual speeds.
constexpr qint64 kMostWaiting = 1 << 16;

QString PortName(int number) { return QStringLiteral("COM%1").arg(number); }

// The library's own words are English.
QString ReasonOf(const QSerialPort& port) {
  switch (port.error()) {
    case QSerialPort::DeviceNotFoundError:
      return QStringLiteral("non esiste");
    case QSerialPort::PermissionError:
      return QStringLiteral("è in uso, o non è permessa");
    case QSerialPort::UnsupportedOperationError:
      return QStringLiteral("non è una porta seriale");
    default:
      return port.errorString();
  }
}

}  // namespace

// All of this room that each system does in its own way stands here: what it calls the first,
// second ... serial line. Another one must supply the device for a number from 1 on.
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

QtSerialPort::QtSerialPort(EventGate& gate, platform::SettingsStore& settings)
    : settings_(settings), port_(new QSerialPort) {
  port_->setReadBufferSize(kMostWaiting);
  QObject::connect(port_, &QSerialPort::errorOccurred, port_,
                   [this](QSerialPort::SerialPortError error) { NoteError(error); });
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
  port_->setStopBits(parts.value(3).trimmed() == "2" ? QSerialPort::TwoStop : QSerialPort::OneStop);
}

QString QtSerialPort::Device() const {
  const std::string device = settings_.GetSetting("Porte", FromQt(PortName(number_)),
                                                  FromQt(DefaultSerialDevice(number_)));
  return ToQt(device);
}

// The device says nothing more, not even that it is gone: what is written would wait for ever.
void QtSerialPort::NoteError(QSerialPort::SerialPortError error) {
  const bool gone = error == QSerialPort::ResourceError || error == QSerialPort::ReadError ||
                    error == QSerialPort::WriteError;
  if (!open_ || !gone || !lost_.isEmpty()) return;
  lost_ = QStringLiteral("non c'è più");
  // A line that has hung up is ready to be read for ever: nobody may go on looking at it.
  QMetaObject::invokeMethod(port_, &QSerialPort::close, Qt::QueuedConnection);
}

void QtSerialPort::Open() {
  if (open_) return;
  const QString device = Device();
  port_->setPortName(device);
  lost_.clear();
  open_ = port_->open(QIODevice::ReadWrite);
  if (open_) return;
  throw platform::DeviceError(FromQt(QStringLiteral("La porta %1 (%2) non si apre: %3")
                                         .arg(PortName(number_), device, ReasonOf(*port_))));
}

void QtSerialPort::Close() {
  if (!open_) return;
  // What was written last still goes out.
  if (lost_.isEmpty()) port_->flush();
  open_ = false;
  port_->close();
}

std::size_t QtSerialPort::BytesWaiting() const {
  return open_ ? static_cast<std::size_t>(port_->bytesAvailable()) : 0;
}

std::string QtSerialPort::Read(std::size_t most) {
  return open_ ? port_->read(static_cast<qint64>(most)).toStdString() : std::string();
}

void QtSerialPort::Write(std::string_view bytes) {
  QString why = open_ ? lost_ : QStringLiteral("è chiusa");
  if (why.isEmpty()) {
    const auto size = static_cast<qint64>(bytes.size());
    const bool taken = port_->write(bytes.data(), size) == size;
    port_->flush();
    why = taken ? lost_ : ReasonOf(*port_);
  }
  if (why.isEmpty()) return;
  throw platform::DeviceError(
      FromQt(QStringLiteral("La porta %1 non riceve: %2").arg(PortName(number_), why)));
}

}  // namespace brenvo::ui
