#include "ui/qt_devices.h"

#include <filesystem>
#include <QApplication>
#include <QDateTime>
#include <QFontDatabase>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>

#include "ui/text.h"

namespace brenvo::ui {
namespace {

QMessageBox::Icon IconOf(platform::MessageIcon icon) {
  switch (icon) {
    case platform::MessageIcon::kInformation:
      return QMessageBox::Information;
    case platform::MessageIcon::kExclamation:
      return QMessageBox::Warning;
    case platform::MessageIcon::kCritical:
      return QMessageBox::Critical;
    case platform::MessageIcon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

QString TitleOf(std::string_view title) {
  return title.empty() ? QApplication::applicationDisplayName() : ToQt(title);
}

// A title may say what the text does not ("Qso doppio (96)"), and a box is only as wide as its
// text.
void MakeRoomForTitle(QMessageBox& box) {
  constexpr int kBesideTitle = 120;  // icon and buttons of the frame, pixels
  auto* rows = qobject_cast<QGridLayout*>(box.layout());
  if (rows == nullptr) return;
  const QFontMetrics letters(QFontDatabase::systemFont(QFontDatabase::TitleFont));
  rows->addItem(new QSpacerItem(letters.horizontalAdvance(box.windowTitle()) + kBesideTitle, 0),
                rows->rowCount(), 0, 1, rows->columnCount());
}

QString SettingKey(std::string_view section, std::string_view key) {
  return ToQt(section) + '/' + ToQt(key);
}

}  // namespace

base::DateTime QtClock::Now() {
  const QDateTime now = QDateTime::currentDateTime();
  const QDate date = now.date();
  const QTime time = now.time();
  return base::DateTime::Of(date.year(), date.month(), date.day(), time.hour(), time.minute(),
                            time.second());
}

QtTimer::QtTimer(EventGate& gate) : timer_(new QTimer) {
  timer_->setTimerType(Qt::PreciseTimer);
  QObject::connect(timer_, &QTimer::timeout, timer_, [this, &gate] {
    // A tick that falls into a wait is lost, as it would be while any handler runs.
    if (gate.Held()) return;
    gate.Run([this] {
      if (OnTick) OnTick();
    });
  });
}

QtTimer::~QtTimer() {
  timer_->stop();
  timer_->disconnect();
  timer_->deleteLater();
}

void QtTimer::SetInterval(int milliseconds) {
  interval_ = milliseconds;
  StartOrStop();
}

void QtTimer::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  StartOrStop();
}

void QtTimer::StartOrStop() {
  if (enabled_ && interval_ > 0) {
    timer_->start(interval_);
  } else {
    timer_->stop();
  }
}

void QtMessageBox::Show(platform::MessageIcon icon, std::string_view title, std::string_view text) {
  QMessageBox box(IconOf(icon), TitleOf(title), ToQt(text), QMessageBox::NoButton,
                  QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
  MakeRoomForTitle(box);
  box.exec();
}

bool QtMessageBox::AskYesNo(std::string_view title, std::string_view text) {
  QMessageBox box(QMessageBox::Question, TitleOf(title), ToQt(text), QMessageBox::NoButton,
                  QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  QPushButton* yes = box.addButton(QStringLiteral("&Sì"), QMessageBox::YesRole);
  QPushButton* no = box.addButton(QStringLiteral("&No"), QMessageBox::NoRole);
  // Questions stand before what cannot be undone: Enter by habit must not confirm.
  box.setDefaultButton(no);
  box.setEscapeButton(no);
  MakeRoomForTitle(box);
  box.exec();
  return box.clickedButton() == yes;
}

QtSettings::QtSettings(const std::filesystem::path& file)
    : settings_(PathToQt(file), QSettings::IniFormat) {}

std::string QtSettings::GetSetting(std::string_view section, std::string_view key,
                                   std::string_view defaultValue) {
  return FromQt(settings_.value(SettingKey(section, key), ToQt(defaultValue)).toString());
}

void QtSettings::SaveSetting(std::string_view section, std::string_view key,
                             std::string_view value) {
  settings_.setValue(SettingKey(section, key), ToQt(value));
  settings_.sync();
}

}  // namespace brenvo::ui
