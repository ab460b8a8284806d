#include "ui/station_lock.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace brenvo {
namespace {

TEST(StationLockTest, TheFirstProgramGetsTheDirectoryAndTheSecondIsToldWhy) {
  const QTemporaryDir directory;
  const StationLock first(directory.path());
  EXPECT_TRUE(first.Refusal().isEmpty());
  const StationLock second(directory.path());
  EXPECT_TRUE(second.Refusal().startsWith("Brenvo e' gia' in funzione sulla cartella"))
      << qPrintable(second.Refusal());
  EXPECT_TRUE(second.Refusal().contains(directory.path()));
}

TEST(StationLockTest, ADirectoryIsFreeAgainWhenItsProgramHasGone) {
  const QTemporaryDir directory;
  { const StationLock first(directory.path()); }
  EXPECT_TRUE(StationLock(directory.path()).Refusal().isEmpty());
}

TEST(StationLockTest, TwoDirectoriesAreTwoStations) {
  const QTemporaryDir home, portable;
  const StationLock first(home.path());
  EXPECT_TRUE(StationLock(portable.path()).Refusal().isEmpty());
}

TEST(StationLockTest, ADirectoryThatIsNotThereIsNamed) {
  const StationLock lock(QStringLiteral("/nowhere/at/all"));
  EXPECT_EQ(lock.Refusal(), "La cartella /nowhere/at/all manca o non si puo' scrivere.");
}

}  // namespace
}  // namespace brenvo
