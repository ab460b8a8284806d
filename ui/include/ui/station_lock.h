// One program at a time on an application directory.
#pragma once

#include <QLockFile>
#include <QString>

namespace brenvo::ui {

// Holds the directory as long as it lives, if it got it. A lock that a crashed program left is no
// obstacle.
class StationLock {
 public:
  explicit StationLock(const QString& directory);
  // Why the directory was not got, for the operator; empty when it was.
  const QString& Refusal() const { return refusal_; }

 private:
  QLockFile lock_;
  QString refusal_;
};

}  // namespace brenvo::ui
