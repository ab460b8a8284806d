#include "qt_process.h"

#include <QStandardPaths>

#include "platform/device_error.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

// How long a program may take to end once it is asked to, milliseconds; then it is made to.
constexpr int kGrace = 1000;

}  // namespace

QtProcess::QtProcess(EventGate& gate) : gate_(gate) {
  limit_.setSingleShot(true);
  QObject::connect(&limit_, &QTimer::timeout, &guard_, [this] {
    gate_.RunDevice(guard_, [this] {
      if (!IsRunning()) return;
      Take();
      Stop();
      Ended(platform::ProgramEnd::kStopped);
    });
  });
}

QtProcess::~QtProcess() { QtProcess::Stop(); }

bool QtProcess::IsRunning() const { return process_ != nullptr; }

void QtProcess::Start(const platform::ProgramStart& start) {
  Stop();
  const QString program = QStandardPaths::findExecutable(ToQt(start.program));
  if (program.isEmpty()) {
    throw platform::DeviceError("Il programma " + start.program + " non c'è");
  }
  output_.clear();
  process_ = new QProcess(&guard_);
  process_->setProcessChannelMode(QProcess::MergedChannels);
  process_->setStandardInputFile(QProcess::nullDevice());
  QStringList arguments;
  for (const std::string& each : start.arguments) arguments << ToQt(each);
  QObject::connect(process_, &QProcess::readyRead, process_, [this] { Take(); });
  QObject::connect(process_, &QProcess::finished, process_,
                   [this, mine = process_](int status, QProcess::ExitStatus how) {
                     gate_.RunDevice(*mine, [this, mine, status, how] {
                       if (process_ != mine) return;
                       Take();
                       Stop();
                       Ended(how == QProcess::NormalExit ? status : platform::ProgramEnd::kStopped);
                     });
                   });
  process_->start(program, arguments, QIODevice::ReadOnly);
  if (start.limit > 0) limit_.start(start.limit);
}

void QtProcess::Take() {
  if (process_ == nullptr) return;
  output_ += process_->readAll().toStdString();
  if (output_.size() > kMostOutput) output_.erase(0, output_.size() - kMostOutput);
}

void QtProcess::Ended(int status) {
  const platform::ProgramEnd end{status, std::move(output_)};
  output_.clear();
  if (OnEnd) OnEnd(end);
}

void QtProcess::Stop() {
  limit_.stop();
  if (process_ == nullptr) return;
  QProcess* const mine = process_;
  process_ = nullptr;
  mine->disconnect();
  if (mine->state() != QProcess::NotRunning) {
    mine->terminate();
    if (!mine->waitForFinished(kGrace)) {
      mine->kill();
      mine->waitForFinished(kGrace);
    }
  }
  mine->deleteLater();
}

}  // namespace brenvo::ui
