// Starts the station on an application directory: the one that is named, else the program's own.
#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QMessageBox>
#include <QTranslator>

#include "core/files.h"
#include "station/station.h"
#include "ui/icons.h"
#include "ui/qt_platform.h"
#include "ui/station_lock.h"
#include "ui/style.h"
#include "ui/text.h"

namespace {

// The toolkit's own words in Italian: from its installation, or from beside the program.
void LoadTranslations(QApplication& application, const QString& directory) {
  for (const char* name : {"qtbase_it", "qtmultimedia_it", "qtserialport_it"}) {
    auto* translator = new QTranslator(&application);
    if (translator->load(QLatin1String(name), QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
        translator->load(QLatin1String(name), directory)) {
      application.installTranslator(translator);
    }
  }
}

int RunStation(QApplication& application, const QString& directory) {
  const brenvo::ui::StationLock lock(directory);
  brenvo::ui::QtPlatform platform(brenvo::ui::PathFromQt(directory));
  if (!lock.Refusal().isEmpty()) {
    platform.Messages().Show(brenvo::platform::MessageIcon::kCritical, "",
                             brenvo::ui::FromQt(lock.Refusal()));
    return EXIT_FAILURE;
  }
  brenvo::core::Session session(platform, brenvo::ui::PathFromQt(directory));
  platform.Attach(&session);
  const bool started = brenvo::station::StartStation(session) != nullptr;
  const int status = started ? application.exec() : EXIT_FAILURE;
  platform.Attach(nullptr);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Brenvo"));
  brenvo::ui::UseStyle();
  QApplication::setWindowIcon(brenvo::ui::ProgramIcon());
  // The main frame says when the program ends, not the last window that closes.
  QApplication::setQuitOnLastWindowClosed(false);
  QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));

  const QStringList arguments = QApplication::arguments();
  const QString named = arguments.size() > 1 ? arguments[1] : QApplication::applicationDirPath();
  // No name is not the directory that one happens to stand in.
  const QString directory = named.isEmpty() ? named : QDir(named).absolutePath();
  LoadTranslations(application, directory);
  try {
    return RunStation(application, directory);
  } catch (const std::exception& failure) {
    QMessageBox::critical(nullptr, QStringLiteral("Brenvo"),
                          brenvo::ui::ToQt(brenvo::core::FailureText(failure)));
    return EXIT_FAILURE;
  }
}
