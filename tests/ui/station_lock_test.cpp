#include "ui/station_lock.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace brenvo::ui {
namespace {

TEST(StationLockTest, TheFirstProgramGetsTheDirectoryAndTheSecondIsToldWhy) {
  const QTemporaryDir directory;
  const StationLock first(directory.path());
  EXPECT_TRUE(first.Refusal().isEmpty());
  const StationLock second(directory.path());
  EXPECT_TRUE(second.Refusal().startsWith("Brenvo è già in funzione sulla cartella"))
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
  EXPECT_EQ(lock.Refusal(), "La cartella /nowhere/at/all non esiste.");
}

TEST(StationLockTest, ADirectoryWithoutANameIsNotTheOneThatOneStandsIn) {
  EXPECT_EQ(StationLock(QString()).Refusal(), "Manca il nome della cartella di lavoro.");
  EXPECT_FALSE(QFile::exists(QStringLiteral("/Brenvo.lock")));
}

TEST(StationLockTest, ANameThatIsTooLongOrLeadsInACircleIsTold) {
  const QTemporaryDir directory;
  const QString name = directory.path() + "/" + QString(300, 'a');
  EXPECT_EQ(StationLock(name).Refusal(),
            "La cartella " + name + " non si apre: nome o percorso troppo lungo.");
  const QString circle = directory.path() + "/giro";
  ASSERT_TRUE(QFile::link(circle, circle));
  EXPECT_EQ(StationLock(circle).Refusal(),
            "La cartella " + circle + " non si apre: collegamenti che rimandano l'uno all'altro.");
}

}  // namespace
}  // namespace brenvo::ui
