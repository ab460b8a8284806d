#include "tools/mkmaps/calibration.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/csv.h"
#include "geo/locator.h"
#include "maps/overlay_geometry.h"
#include "tests/mkmaps/known_places.h"
#include "tests/support/golden.h"
#include "tests/support/places.h"
#include "tools/mkmaps/outlines.h"
#include "tools/mkmaps/sheets.h"

namespace brenvo::mkmaps {
namespace {

using Path = std::filesystem::path;
const Path kFacts = SourceDir() / "data";

double Number(const base::CsvTable& table, const base::CsvTable::Row& row, const char* heading) {
  return std::stod(row.Cells[table.Column(heading)]);
}
const std::string& Text(const base::CsvTable& table, const base::CsvTable::Row& row,
                        const char* heading) {
  return row.Cells[table.Column(heading)];
}

maps::SquareCalibration DeliveredCalibration() {
  maps::SquareCalibration calibration;
  const base::CsvTable table = base::ReadCsv(kFacts / "Field.csv");
  for (const base::CsvTable::Row& row : table.Rows) {
    calibration.Add(Text(table, row, "Field"), Number(table, row, "X"), Number(table, row, "Y"));
  }
  return calibration;
}

// Half a pixel of rounding at either side.
bool Holds(const maps::MapBox& box, const SheetPoint& at, double slack = 1) {
  return at.x >= box.x - slack && at.x <= box.x + box.width + slack && at.y >= box.y - slack &&
         at.y <= box.y + box.height + slack;
}

std::string FieldName(int column, int row) {
  return {static_cast<char>('A' + column), static_cast<char>('A' + row)};
}

TEST(KnownPlaces, LieOnLandOrAtSeaAsEverybodyKnows) {
  const auto world = ReadOutlines(kFacts / "outlines" / "world.csv");
  for (const KnownPlace& place : kKnownPlaces) {
    EXPECT_EQ(Contains(world, place.position), place.land) << place.name;
  }
}

TEST(KnownPlaces, LieInTheirSquares) {
  for (const KnownPlace& place : kKnownPlaces) {
    const GeoPoint centre = PositionOf(place.square);
    EXPECT_LE(std::abs(place.position.longitude - centre.longitude), 1) << place.name;
    EXPECT_LE(std::abs(place.position.latitude - centre.latitude), 0.5) << place.name;
  }
}

TEST(FieldMap, KnownPlacesLieInTheCellThatIsPaintedForThem) {
  for (const KnownPlace& place : kKnownPlaces) {
    maps::MapBox box = maps::FieldBox(std::string(place.square).substr(0, 2), {});
    // What is painted leaves four pixels of the cell open.
    box.width += 4;
    box.height += 4;
    EXPECT_TRUE(Holds(box, FieldSheet::At(place.position), 0)) << place.name;
  }
}

TEST(FieldMap, EveryFieldIsPaintedFromTheCornerOfItsCellAndNoneReachesItsNeighbour) {
  for (int column = 0; column < 18; ++column) {
    for (int row = 0; row < 18; ++row) {
      const maps::MapBox box = maps::FieldBox(FieldName(column, row), {});
      const SheetPoint corner = FieldSheet::At({column * 20 - 180.0, row * 10 - 80.0});
      EXPECT_NEAR(box.x, corner.x, 1e-6) << FieldName(column, row);
      EXPECT_NEAR(box.y, corner.y, 1e-6) << FieldName(column, row);
      const SheetPoint end = FieldSheet::At({column * 20 - 160.0, row * 10 - 90.0});
      EXPECT_NEAR(box.x + box.width, end.x - 4, 1e-6) << FieldName(column, row);
      EXPECT_NEAR(box.y + box.height, end.y - 4, 1e-6) << FieldName(column, row);
    }
  }
}

TEST(SquareMap, KnownPlacesLieInTheSquareThatIsPaintedForThem) {
  const maps::SquareCalibration calibration = DeliveredCalibration();
  for (const KnownPlace& place : kKnownPlaces) {
    const auto box = calibration.BoxOf(place.square, {});
    ASSERT_TRUE(box) << place.name;
    EXPECT_TRUE(Holds(*box, SquareSheet::At(place.position))) << place.name;
  }
}

TEST(SquareMap, EverySquareIsPaintedWhereTheImageHasIt) {
  const maps::SquareCalibration calibration = DeliveredCalibration();
  for (int column = 0; column < 18; ++column) {
    for (int row = 0; row < 18; ++row) {
      const std::string field = FieldName(column, row);
      // The column that the map is cut through works in one field alone.
      if (column == 7 && field != "HM") continue;
      for (int square = 0; square < 100; ++square) {
        const std::string name =
            field + static_cast<char>('0' + square / 10) + static_cast<char>('0' + square % 10);
        const auto box = calibration.BoxOf(name, {});
        ASSERT_TRUE(box) << name;
        const SheetPoint centre = SquareSheet::At(PositionOf(name));
        EXPECT_NEAR(box->x + box->width / 2.0, centre.x, 1) << name;
        EXPECT_NEAR(box->y + box->height / 2.0, centre.y, 1.5) << name;
      }
    }
  }
}

TEST(SquareMap, NeighbouringSquaresMeet) {
  const maps::SquareCalibration calibration = DeliveredCalibration();
  const auto east = [&](const char* a, const char* b) {
    const auto left = calibration.BoxOf(a, {}), right = calibration.BoxOf(b, {});
    EXPECT_NEAR(left->x + left->width, right->x, 1) << a << ' ' << b;
    EXPECT_EQ(left->y, right->y) << a << ' ' << b;
  };
  const auto north = [&](const char* a, const char* b) {
    const auto below = calibration.BoxOf(a, {}), above = calibration.BoxOf(b, {});
    EXPECT_NEAR(above->y + above->height, below->y, 1) << a << ' ' << b;
    EXPECT_EQ(below->x, above->x) << a << ' ' << b;
  };
  east("JN65", "JN75");
  east("JN95", "KN05");
  east("IN90", "JN00");
  east("HM99", "IM09");
  east("GM90", "HM00");
  north("JN65", "JN66");
  north("JN69", "JO60");
  north("JM09", "JN00");
}

TEST(SquareMap, TheAzoresLieAtTheLeftAndTheSeaBehindThemAtTheRight) {
  EXPECT_LT(SquareSheet::At({-25.5, 37.8}).x, 149);
  EXPECT_GT(SquareSheet::At({-31.2, 39.4}).x, 3841);
}

TEST(SquareMap, TheGraticuleFillsTheSheetFromEdgeToEdge) {
  const maps::MapBox row =
      maps::SquareCalibration::LineOf("?@", 0, SquareSheet::RowY('@'), {}).line;
  EXPECT_EQ(row.y, SquareSheet::kBottom);
  EXPECT_EQ(row.x + row.width, SquareSheet::kRight);
  const maps::MapBox column =
      maps::SquareCalibration::LineOf("I?", SquareSheet::ColumnX('I'), 0, {}).line;
  EXPECT_EQ(column.y, SquareSheet::kTop);
  EXPECT_EQ(column.y + column.height, SquareSheet::kBottom);
}

TEST(SquareMap, NoTwoLabelsOfTheGraticuleStandOnOneSpot) {
  const base::CsvTable table = base::ReadCsv(kFacts / "Field.csv");
  std::map<std::pair<bool, double>, std::string> taken;
  for (const base::CsvTable::Row& row : table.Rows) {
    const std::string key = Text(table, row, "Field");
    const bool column = key.back() == '?';
    const double at = Number(table, row, column ? "X" : "Y");
    for (double near = at - 20; near <= at + 20; ++near) {
      EXPECT_FALSE(taken.contains({column, near})) << key << ' ' << taken[{column, near}];
    }
    taken[{column, at}] = key;
  }
}

TEST(ZoneMap, EveryZonesPointLiesInItsZoneAndOnTheSheet) {
  const auto zones = ReadOutlines(kFacts / "outlines" / "zones.csv");
  const base::CsvTable table = base::ReadCsv(kFacts / "ZoneCQ.csv");
  std::map<std::string, const Outline*> points;
  for (const Outline& outline : zones) {
    if (outline.kind == OutlineKind::kPoint) points[outline.name] = &outline;
  }
  ASSERT_EQ(table.Rows.size(), 40u);
  for (const base::CsvTable::Row& row : table.Rows) {
    const std::string zone = Text(table, row, "ZonaCQ");
    ASSERT_TRUE(points.contains(zone)) << zone;
    const GeoPoint& position = points[zone]->points.front();
    EXPECT_TRUE(Contains(zones, position, zone)) << zone;
    const SheetPoint at = ZoneSheet::At(position);
    EXPECT_NEAR(Number(table, row, "X"), at.x, 0.5) << zone;
    EXPECT_NEAR(Number(table, row, "Y"), at.y, 0.5) << zone;
    EXPECT_TRUE(Holds({20, 20, ZoneSheet::kSize.width - 40, ZoneSheet::kSize.height - 40}, at))
        << zone;
  }
}

struct ZonePlace {
  const char* name;
  GeoPoint position;
  const char* zone;
};
constexpr ZonePlace kZonePlaces[] = {{"Anchorage", {-149.9, 61.2}, "1"},
                                     {"Los Angeles", {-118.2, 34.1}, "3"},
                                     {"Chicago", {-87.9, 41.9}, "4"},
                                     {"New York", {-74.3, 41}, "5"},
                                     {"Citta' del Messico", {-99.1, 19.4}, "6"},
                                     {"L'Avana", {-82.3, 23}, "8"},
                                     {"Brasilia", {-47.9, -15.8}, "11"},
                                     {"Buenos Aires", {-58.6, -34.7}, "13"},
                                     {"Parigi", {2.35, 48.86}, "14"},
                                     {"Roma", {12.5, 41.9}, "15"},
                                     {"Mosca", {37.6, 55.75}, "16"},
                                     {"Ankara", {32.85, 39.9}, "20"},
                                     {"Riyad", {46.7, 24.7}, "21"},
                                     {"Nuova Delhi", {77.2, 28.6}, "22"},
                                     {"Tokyo", {139.6, 35.8}, "25"},
                                     {"Sydney", {150.8, -33.8}, "30"},
                                     {"Perth", {116.2, -32}, "29"},
                                     {"Nairobi", {36.8, -1.3}, "37"},
                                     {"Johannesburg", {28, -26.2}, "38"},
                                     {"Reykjavik", {-21.5, 64.1}, "40"}};

TEST(ZoneMap, KnownPlacesLieInTheirZones) {
  const auto zones = ReadOutlines(kFacts / "outlines" / "zones.csv");
  for (const ZonePlace& place : kZonePlaces) {
    EXPECT_TRUE(Contains(zones, place.position, place.zone)) << place.name;
  }
}

TEST(ZoneMap, DiscsDoNotCoverEachOther) {
  const base::CsvTable table = base::ReadCsv(kFacts / "ZoneCQ.csv");
  for (std::size_t i = 0; i < table.Rows.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const double apart =
          std::hypot(Number(table, table.Rows[i], "X") - Number(table, table.Rows[j], "X"),
                     Number(table, table.Rows[i], "Y") - Number(table, table.Rows[j], "Y"));
      EXPECT_GE(apart, 25) << table.Rows[i].Cells[0] << ' ' << table.Rows[j].Cells[0];
    }
  }
}

TEST(ItalyMap, EveryProvinceOfTodayIsMarkedWithinItsBorders) {
  const auto italy = ReadOutlines(kFacts / "outlines" / "italy.csv");
  int provinces = 0;
  for (const Outline& outline : italy) {
    if (outline.kind != OutlineKind::kPoint) continue;
    ++provinces;
    EXPECT_TRUE(Contains(italy, outline.points.front(), outline.name)) << outline.name;
  }
  EXPECT_EQ(provinces, 110);
}

TEST(ItalyMap, EveryItalianProvinceOfTheProgramHasItsPlace) {
  const base::CsvTable places = base::ReadCsv(kFacts / "ProvincieItaliane.csv");
  std::map<std::string, int> known;
  for (const base::CsvTable::Row& row : places.Rows) ++known[Text(places, row, "Provincia")];
  const base::CsvTable provinces = base::ReadCsv(kFacts / "Provincie.csv");
  for (const base::CsvTable::Row& row : provinces.Rows) {
    if (Text(provinces, row, "Country") != "I") continue;
    EXPECT_EQ(known[Text(provinces, row, "Provincia")], 1) << Text(provinces, row, "Provincia");
  }
}

struct Capital {
  const char* province;
  GeoPoint position;
};
constexpr Capital kCapitals[] = {
    {"RM", {12.48, 41.89}}, {"MI", {9.19, 45.46}}, {"TO", {7.68, 45.07}},  {"NA", {14.26, 40.85}},
    {"PA", {13.36, 38.11}}, {"CA", {9.13, 39.23}}, {"BZ", {11.35, 46.50}}, {"LE", {18.17, 40.35}},
    {"FI", {11.25, 43.77}}, {"AO", {7.32, 45.74}}};

TEST(ItalyMap, CapitalsLieInTheirProvincesAndNotFarFromTheirMarks) {
  const auto italy = ReadOutlines(kFacts / "outlines" / "italy.csv");
  const base::CsvTable places = base::ReadCsv(kFacts / "ProvincieItaliane.csv");
  std::map<std::string, SheetPoint> marks;
  for (const base::CsvTable::Row& row : places.Rows) {
    marks[Text(places, row, "Provincia")] = {Number(places, row, "X"), Number(places, row, "Y")};
  }
  for (const Capital& capital : kCapitals) {
    EXPECT_TRUE(Contains(italy, capital.position, capital.province)) << capital.province;
    const SheetPoint at = ItalySheet::At(capital.position);
    const SheetPoint& mark = marks[capital.province];
    // No province is wider than this.
    EXPECT_LT(std::hypot(at.x - mark.x, at.y - mark.y), 60) << capital.province;
  }
}

TEST(ItalyMap, NoTwoMarksCoverEachOther) {
  const base::CsvTable table = base::ReadCsv(kFacts / "ProvincieItaliane.csv");
  // The last three are provinces of once, within those of today.
  for (std::size_t i = 0; i < table.Rows.size() - 3; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const double x =
          std::abs(Number(table, table.Rows[i], "X") - Number(table, table.Rows[j], "X"));
      const double y =
          std::abs(Number(table, table.Rows[i], "Y") - Number(table, table.Rows[j], "Y"));
      EXPECT_TRUE(x >= 10 || y >= 10) << table.Rows[i].Cells[0] << ' ' << table.Rows[j].Cells[0];
    }
  }
}

TEST(EuropeMap, EverySquareOfEuropeIsMarkedAtItsMiddle) {
  const base::CsvTable table = base::ReadCsv(kFacts / "Square.csv");
  EXPECT_EQ(table.Rows.size(), 41u * 46u);
  std::map<std::string, int> seen;
  for (const base::CsvTable::Row& row : table.Rows) {
    const std::string square = Text(table, row, "Square");
    EXPECT_EQ(++seen[square], 1) << square;
    const SheetPoint at = EuropeSheet::At(PositionOf(square));
    EXPECT_NEAR(Number(table, row, "X"), at.x, 0.5) << square;
    EXPECT_NEAR(Number(table, row, "Y"), at.y, 0.5) << square;
  }
  for (const char* square : {"JN61", "IO91", "KO85", "HM77", "KM72", "IM58", "KP20"}) {
    EXPECT_EQ(seen[square], 1) << square;
  }
}

TEST(Regions, EveryCountryIsShownWhereItIs) {
  const base::CsvTable table = base::ReadCsv(kFacts / "Country.csv");
  std::map<std::string, const Region*> regions;
  for (const Region& region : Regions()) regions[std::string(region.file)] = &region;
  for (const base::CsvTable::Row& row : table.Rows) {
    const std::string code = Text(table, row, "Country");
    const std::string map = Text(table, row, "Mappa");
    ASSERT_TRUE(regions.contains(map)) << code << ' ' << map;
    const Region& region = *regions[map];
    const SheetPoint at = region.At(PositionOf(Text(table, row, "Locator")));
    EXPECT_NEAR(Number(table, row, "Pointer_X"), at.x, 0.5) << code;
    EXPECT_NEAR(Number(table, row, "Pointer_Y"), at.y, 0.5) << code;
    EXPECT_TRUE(Holds({40, 40, region.size.width - 80, region.size.height - 80}, at)) << code;
  }
}

struct CountryPlace {
  const char* country;
  const char* map;
};
constexpr CountryPlace kCountryPlaces[] = {
    {"I", "MappaEuropa.jpg"},           {"SM", "MappaEuropa.jpg"},
    {"CM", "MappaCaraibi.jpg"},         {"5Z", "MappaAfrica.jpg"},
    {"HZ", "MappaMedioOriente.jpg"},    {"JA", "MappaAsiaOrientale.jpg"},
    {"VU", "MappaAsiaMeridionale.jpg"}, {"K", "MappaAmericaNord.jpg"},
    {"LU", "MappaAmericaSud.jpg"},      {"VK", "MappaOceania.jpg"},
    {"KH6", "MappaPacifico.jpg"},       {"CE9", "MappaAntartide.jpg"},
    {"JW", "MappaArtico.jpg"},          {"UA9", "MappaRussia.jpg"}};

TEST(Regions, CountriesLieOnTheMapWhereOneLooksForThem) {
  const base::CsvTable table = base::ReadCsv(kFacts / "Country.csv");
  std::map<std::string, std::string> maps;
  for (const base::CsvTable::Row& row : table.Rows) {
    maps[Text(table, row, "Country")] = Text(table, row, "Mappa");
  }
  for (const CountryPlace& place : kCountryPlaces) {
    EXPECT_EQ(maps[place.country], place.map) << place.country;
  }
}

TEST(Regions, DistancesFromTheCentreAreTrueNearIt) {
  for (const Region& region : Regions()) {
    const GeoPoint near{region.centre.longitude,
                        region.centre.latitude + (region.centre.latitude > 80 ? -1 : 1)};
    const SheetPoint middle = region.At(region.centre);
    const SheetPoint at = region.At(near);
    constexpr double kKmPerDegree = 111.19;
    EXPECT_NEAR(std::hypot(at.x - middle.x, at.y - middle.y) * region.kmPerPixel, kKmPerDegree, 0.2)
        << region.file;
  }
}

TEST(Positions, AreThoseOfTheProgramsOwnArithmetic) {
  for (const char* locator : {"JN65AA", "AA00AA", "RR99XX", "FN31PR", "QF56OD"}) {
    const geo::Position expected = geo::LocatorToRadians(locator);
    const GeoPoint position = PositionOf(locator);
    EXPECT_NEAR(position.longitude, expected.longitude * 180 / geo::kPiValue, 1e-9) << locator;
    EXPECT_NEAR(position.latitude, expected.latitude * 180 / geo::kPiValue, 1e-9) << locator;
  }
}

TEST(Tables, AreThoseThatTheSheetsGive) {
  const Path scratch = Path(testing::TempDir()) / "brenvo_calibration";
  std::filesystem::remove_all(scratch);
  std::filesystem::create_directories(scratch / "outlines");
  std::filesystem::copy(kFacts / "outlines", scratch / "outlines");
  std::filesystem::copy(kFacts / "Country.csv", scratch / "Country.csv");
  WriteCalibration(scratch);
  for (const char* name :
       {"Field.csv", "Square.csv", "ZoneCQ.csv", "ProvincieItaliane.csv", "Country.csv"}) {
    EXPECT_TRUE(ReadBytes(scratch / name) == ReadBytes(kFacts / name)) << name;
  }
  std::filesystem::remove_all(scratch);
}

TEST(Tables, AMissingOutlineIsTold) {
  EXPECT_THROW(WriteCalibration(Path(testing::TempDir()) / "brenvo_nothing_here"),
               std::runtime_error);
}

}  // namespace
}  // namespace brenvo::mkmaps
