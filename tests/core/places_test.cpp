#include "core/places.h"

#include <gtest/gtest.h>

#include "file/database_file.h"
#include "geo/locator.h"
#include "tests/support/station.h"

namespace brenvo::core {
namespace {

TEST(Places, TheDeliveredLocatorIsNobodysAndGivesEachCountryADistanceAndABearing) {
  const ScratchStationDirectory directory;
  engine::Database delivered = file::OpenDatabaseFile(directory.Path() / "Brenvo.mdb");
  const std::string own = delivered.OpenSnapshot("select Locator from [User]")->Field(0).Text();
  EXPECT_TRUE(geo::IsValidLocator(own)) << own;
  int countries = 0;
  const auto rows = delivered.OpenSnapshot("select Country, Locator from Country");
  for (; !rows->EOF_(); rows->MoveNext(), ++countries) {
    const std::string country = rows->Field("Country").Text();
    const std::string locator = rows->Field("Locator").Text();
    EXPECT_NE(locator, own) << country;
    EXPECT_NO_THROW(geo::PositionLine(own, locator)) << country;
    // A spot's own locator is compared with what it holds behind the sixth character.
    EXPECT_NO_THROW(geo::PositionLine(own, locator + "12")) << country;
  }
  EXPECT_EQ(countries, 402);
}

}  // namespace
}  // namespace brenvo::core
