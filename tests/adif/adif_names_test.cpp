#include "adif/adif_names.h"

#include <gtest/gtest.h>

#include <set>

#include "adif/dxcc_entities.h"
#include "adif/escaped_text.h"
#include "adif/plain_name.h"
#include "adif/record_to_contact.h"
#include "base/csv.h"
#include "tests/support/places.h"

namespace brenvo::adif {
namespace {

base::CsvTable Facts(const char* name) { return base::ReadCsv(SourceDir() / "data" / name); }

TEST(AdifNamesTest, EveryCountryOfTheTableHasItsNumber) {
  const base::CsvTable countries = Facts("Country.csv");
  std::set<int> numbers;
  for (const base::CsvTable::Row& row : countries.Rows) {
    const DxccEntity* entity = FindDxccEntityOf(row.Cells[0]);
    ASSERT_NE(entity, nullptr) << row.Cells[0];
    EXPECT_EQ(FindDxccEntity(entity->number), entity);
    EXPECT_TRUE(numbers.insert(entity->number).second) << row.Cells[0];
  }
  EXPECT_EQ(FindDxccEntityOf("I")->number, 248);
  EXPECT_EQ(FindDxccEntityOf("IS0")->number, 225);
  EXPECT_EQ(FindDxccEntity(291)->country, "K");
  EXPECT_EQ(FindDxccEntity(81)->country, "DL/D");
  EXPECT_EQ(FindDxccEntity(1000), nullptr);
  EXPECT_EQ(FindDxccEntityNamed("fed rep of GERMANY")->country, "DL");
}

TEST(AdifNamesTest, ZonesOfACountryStandInThePrefixTableOrHere) {
  std::set<std::string> listed;
  for (const base::CsvTable::Row& row : Facts("Prefissi.csv").Rows) listed.insert(row.Cells[1]);
  for (const base::CsvTable::Row& row : Facts("Country.csv").Rows) {
    const DxccZones* zones = FindDxccZones(row.Cells[0]);
    EXPECT_NE(zones != nullptr, listed.contains(row.Cells[0])) << row.Cells[0];
    if (zones == nullptr) continue;
    EXPECT_TRUE(IsAdifContinent(zones->continent)) << row.Cells[0];
    EXPECT_TRUE(zones->cq >= 0 && zones->cq <= 40) << row.Cells[0];
    EXPECT_TRUE(zones->itu > 0 ? zones->itu <= 90 : zones->itu == 0) << row.Cells[0];
  }
  EXPECT_EQ(FindDxccZones("3Y/P")->cq, 12);
  EXPECT_EQ(FindDxccZones("3Y/P")->itu, 72);
}

// Written down from the list's own sources; most of these countries no prefix tells of.
TEST(AdifNamesTest, NumbersAndZonesAreThoseOfTheList) {
  const base::CsvTable list = base::ReadCsv(SourceDir() / "tests/adif/golden/entities.csv");
  ASSERT_EQ(list.Rows.size(), 402U);
  for (const base::CsvTable::Row& row : list.Rows) {
    const DxccEntity* entity = FindDxccEntity(std::stoi(row.Cells[0]));
    ASSERT_NE(entity, nullptr) << row.Cells[0];
    EXPECT_EQ(entity->country, row.Cells[1]) << row.Cells[0];
    const DxccZones* zones = FindDxccZones(entity->country);
    ASSERT_EQ(zones == nullptr, row.Cells[2].empty()) << row.Cells[1];
    if (zones == nullptr) continue;
    EXPECT_EQ(std::to_string(zones->cq), row.Cells[2]) << row.Cells[1];
    EXPECT_EQ(std::to_string(zones->itu), row.Cells[3]) << row.Cells[1];
    EXPECT_EQ(zones->continent, row.Cells[4]) << row.Cells[1];
  }
}

TEST(AdifNamesTest, NamesAreComparedByTheirLettersAndDigitsAlone) {
  EXPECT_EQ(PlainName("az AZ 09"), "AZAZ09");
  EXPECT_EQ(PlainName("@[`{/:.-&'\t"), "");
  EXPECT_EQ(PlainName("Curaçao"), "CURAçAO");
  EXPECT_EQ(Stripped(" \t\r\n\v\f a b \t"), "a b");
  EXPECT_EQ(Stripped(" \x0E "), "\x0E");
  EXPECT_EQ(Stripped(" \t"), "");
}

TEST(AdifNamesTest, EveryBandOfTheStationIsOneOfTheStandard) {
  for (const base::CsvTable::Row& row : Facts("UserRTX.csv").Rows) {
    std::string name = row.Cells[0];
    std::erase(name, ' ');
    const AdifBand* band = FindAdifBand(name);
    ASSERT_NE(band, nullptr) << name;
    EXPECT_EQ(AdifBandAt(base::Mhz(std::stod(row.Cells[1]))), band) << name;
  }
}

TEST(AdifNamesTest, EveryModeOfTheListButTheSatelliteHasItsWord) {
  for (const base::CsvTable::Row& row : Facts("Modi.csv").Rows) {
    const std::string& mode = row.Cells[1];
    EXPECT_EQ(FindAdifMode(AdifWordOf(mode)).has_value(), mode != kSatellite) << mode;
  }
  EXPECT_EQ(FindAdifMode("ft4"), (AdifMode{"MFSK", "FT4"}));
  EXPECT_EQ(FindAdifMode("CW"), (AdifMode{"CW", ""}));
  EXPECT_EQ(FindAdifMode("ribbit_sms"), (AdifMode{"OFDM", "RIBBIT_SMS"}));
  EXPECT_EQ(FindAdifMode("JT9H FAST"), (AdifMode{"JT9", "JT9H FAST"}));
  EXPECT_EQ(FindAdifMode("8PSK1000"), (AdifMode{"PSK", "8PSK1000"}));
  EXPECT_FALSE(FindAdifMode(""));
}

TEST(AdifNamesTest, EveryPropagationOfTheListHasItsWord) {
  for (const base::CsvTable::Row& row : Facts("Propagazione.csv").Rows) {
    if (row.Cells[1].empty()) continue;
    EXPECT_FALSE(AdifPropagationOf(row.Cells[1]).empty()) << row.Cells[1];
  }
  EXPECT_EQ(PropagationOf("es"), "E sporadico");
  EXPECT_EQ(PropagationOf("ECH"), "Internet");
  EXPECT_EQ(AdifPropagationOf("Internet"), "INTERNET");
}

TEST(AdifNamesTest, FieldsOfTheStandardNeedNoDeclaration) {
  for (const char* field : {"ADDRESS", "MY_SOTA_REF", "EQSL_AG", "WWFF_REF"}) {
    EXPECT_TRUE(IsAdifField(field)) << field;
  }
  EXPECT_FALSE(IsAdifField(""));
  EXPECT_FALSE(IsAdifField("SOCIO"));
  EXPECT_TRUE(IsApplicationField("APP_LOTW_2XQSL"));
}

TEST(AdifNamesTest, AnyTextComesThroughPlainLetters) {
  for (const char* text :
       {"", "Łódź", "a\\b", "  x ", "riga\r\nriga", "\xF0\x9F\x93\xBB", "\\u0041"}) {
    EXPECT_EQ(UnescapeText(EscapeText(text)), text);
  }
  EXPECT_EQ(EscapeText("Łódź"), "\\u0141\\u00F3d\\u017A");
  EXPECT_EQ(UnescapeText("\\uD800"), "\xEF\xBF\xBD") << "half a pair is no character";
  EXPECT_EQ(UnescapeText("\\"), "\\");
}

}  // namespace
}  // namespace brenvo::adif
