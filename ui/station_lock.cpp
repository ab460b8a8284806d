#include "ui/station_lock.h"

#include <QDir>

namespace brenvo {

StationLock::StationLock(const QString& directory)
    : lock_(directory + QStringLiteral("/Brenvo.lock")) {
  // However old, the lock of a program that runs counts.
  lock_.setStaleLockTime(0);
  if (lock_.tryLock()) return;
  const QString words =
      lock_.error() == QLockFile::LockFailedError
          ? QStringLiteral(
                "Brenvo e' gia' in funzione sulla cartella %1.\n\nUsare la finestra che "
                "e' gia' aperta, oppure chiuderla prima di ripartire.")
          : QStringLiteral("La cartella %1 manca o non si puo' scrivere.");
  refusal_ = words.arg(QDir::toNativeSeparators(directory));
}

}  // namespace brenvo
