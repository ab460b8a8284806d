#include "ui/station_lock.h"

#include <QDir>

#include "core/files.h"
#include "ui/text.h"

namespace brenvo::ui {

StationLock::StationLock(const QString& directory)
    : lock_(directory + QStringLiteral("/Brenvo.lock")) {
  // However old, the lock of a program that runs counts.
  lock_.setStaleLockTime(0);
  if (!directory.isEmpty() && lock_.tryLock()) return;
  refusal_ = ToQt(core::WhyNotEntered(PathFromQt(directory)));
  if (!refusal_.isEmpty()) return;
  QString words;
  switch (lock_.error()) {
    case QLockFile::LockFailedError:
      words = QStringLiteral(
          "Brenvo è già in funzione sulla cartella %1.\n\nUsare la finestra che "
          "è già aperta, oppure chiuderla prima di ripartire.");
      break;
    case QLockFile::PermissionError:
      words = QStringLiteral(
          "Nella cartella %1 non si può scrivere: dare all'utente il permesso di scrivervi.");
      break;
    default:
      words = QStringLiteral(
          "Nella cartella %1 non si può scrivere: il disco è pieno, guasto o non vi stanno altri "
          "file.");
  }
  refusal_ = words.arg(QDir::toNativeSeparators(directory));
}

}  // namespace brenvo::ui
