#include "ui/qt_devices.h"

#include <algorithm>
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

base::DateTime TimeOf(const QDateTime& time) {
  const QDate date = time.date();
  const QTime of = time.time();
  return base::DateTime::Of(date.year(), date.month(), date.day(), of.hour(), of.minute(),
                            of.second());
}

QDateTime UtcOf(base::DateTime time) {
  return QDateTime(QDate(time.Year(), time.Month(), time.Day()),
                   QTime(time.Hour(), time.Minute(), time.Second()), Qt::UTC);
}

QString SettingKey(std::string_view section, std::string_view key) {
  return ToQt(section) + '/' + ToQt(key);
}

}  // namespace

base::DateTime QtClock::Now() { return TimeOf(QDateTime::currentDateTime()); }

base::DateTime QtClock::UtcNow() { return TimeOf(QDateTime::currentDateTimeUtc()); }

const QTimeZone& QtClock::ZoneOf(std::string_view name) {
  if (name != zoneName_) {
    const QByteArray wanted(name.data(), qsizetype(name.size()));
    zone_ = KnowsZone(name) && !name.empty() ? QTimeZone(wanted) : QTimeZone::systemTimeZone();
    zoneName_ = name;
  }
  return zone_;
}

bool QtClock::KnowsZone(std::string_view zone) {
  const QByteArray wanted(zone.data(), qsizetype(zone.size()));
  return zone.empty() || QTimeZone::isTimeZoneIdAvailable(wanted);
}

int QtClock::OffsetOfUtc(base::DateTime utc, std::string_view zone) {
  return ZoneOf(zone).offsetFromUtc(UtcOf(utc)) / 60;
}

std::vector<int> QtClock::OffsetsOfLocal(base::DateTime local, std::string_view zone) {
  // A change lies within a day of the time: the offsets around it are all that can hold.
  constexpr std::int64_t kDay = 24 * 60 * 60;
  std::vector<int> offsets;
  for (const std::int64_t away : {-kDay, kDay}) {
    const int offset = OffsetOfUtc(base::DateTime::FromSeconds(local.Seconds() + away), zone);
    const auto utc = base::DateTime::FromSeconds(local.Seconds() - offset * 60);
    if (OffsetOfUtc(utc, zone) == offset && (offsets.empty() || offsets.back() != offset)) {
      offsets.push_back(offset);
    }
  }
  // The larger offset makes the earlier moment.
  std::sort(offsets.rbegin(), offsets.rend());
  return offsets;
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
