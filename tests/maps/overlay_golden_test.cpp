// The operations of each overlay for a log with contacts all over the world, on the delivered
// calibration.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "maps/award_overlays.h"
#include "maps/mappa_square.h"
#include "tests/support/golden.h"
#include "tests/support/station.h"

namespace brenvo::maps {
namespace {

struct Contact {
  const char* call;
  const char* locator;
  int zone;
  const char* province;
  bool qsl;
};

// With contacts at the corners of the arithmetic: both ends of HM, the rest of column H, the poles,
// the date line, a province and a square both confirmed and not.
constexpr Contact kContacts[] = {
    {"IK3ABC", "JN65DM", 15, "VE", true},  {"IK3XYZ", "JN65DM", 15, "VE", false},
    {"I0QRS", "JN61FV", 15, "RM", true},   {"IT9DEF", "JM68QD", 15, "PA", false},
    {"IS0GHI", "JM49ME", 15, "CA", true},  {"I1JKL", "JN45CB", 15, "TO", false},
    {"I2MNO", "JN45OL", 15, "MI", true},   {"I8PQR", "JN70DU", 15, "NA", false},
    {"I7STU", "JN81GD", 15, "BA", true},   {"IN3VWX", "JN56NB", 15, "TN", true},
    {"I4YZA", "JN54QM", 15, "BO", false},  {"I5BCD", "JN53PS", 15, "FI", true},
    {"IX1EFG", "JN35PR", 15, "AO", false}, {"IV3HIJ", "JN65VP", 15, "TS", true},
    {"I6KLM", "JN63SO", 15, "AN", false},  {"IK8NOP", "JM88CE", 15, "RC", true},
    {"DL1QRS", "JO62QM", 14, "", true},    {"F5TUV", "JN18EU", 14, "", true},
    {"G3WXY", "IO91WM", 14, "", false},    {"GM4ZAB", "IO85JV", 14, "", true},
    {"EI7CDE", "IO63VI", 14, "", false},   {"EA4FGH", "IN80DK", 14, "", true},
    {"CT1IJK", "IM58JR", 14, "", false},   {"CU2LMN", "HM77ER", 14, "", true},
    {"CU8OPQ", "HM49KL", 14, "", false},   {"TF3RST", "HP94AD", 40, "", true},
    {"LA1UVW", "JO59IW", 14, "", true},    {"SM0XYZ", "JO89XH", 14, "", true},
    {"OH2ABC", "KP20LE", 15, "", false},   {"SP5DEF", "KO02MF", 15, "", true},
    {"UA3GHI", "KO85UR", 16, "", true},    {"SV1JKL", "KM17VX", 20, "", false},
    {"TA1MNO", "KN41LA", 20, "", true},    {"4X1PQR", "KM72JB", 20, "", true},
    {"SU1STU", "KM50PB", 34, "", false},   {"EA8VWX", "IL18SK", 33, "", true},
    {"D44YZA", "HK84GW", 35, "", false},   {"ZS6BCD", "KG33XS", 38, "", true},
    {"5H3EFG", "KI93PF", 37, "", false},   {"VU2HIJ", "ML88LL", 22, "", true},
    {"BY1KLM", "OM89EV", 24, "", true},    {"JA1NOP", "PM95UQ", 25, "", true},
    {"VK2QRS", "QF56OD", 30, "", true},    {"VK6TUV", "OF78WB", 29, "", false},
    {"ZL2WXY", "RE78JS", 32, "", true},    {"3D2ZAB", "RH91FU", 32, "", false},
    {"5W1CDE", "AH46CD", 32, "", true},    {"KH6FGH", "BL11BH", 31, "", true},
    {"KL7IJK", "BP51BE", 1, "", false},    {"W6LMN", "DM04VB", 3, "", true},
    {"W0OPQ", "DM79MR", 4, "", true},      {"W1RST", "FN42IK", 5, "", true},
    {"VE3UVW", "FN03GP", 4, "", true},     {"XE1XYZ", "EK09KK", 6, "", false},
    {"CM2ABC", "EL83TC", 8, "", true},     {"YV5DEF", "FK60NL", 9, "", true},
    {"PY2GHI", "GG66QL", 11, "", true},    {"PY7JKL", "HI21NX", 11, "", false},
    {"LU1MNO", "GF05TJ", 13, "", true},    {"CE3PQR", "FF46QN", 12, "", false},
    {"KC4STU", "RB32HD", 32, "", false},   {"KC4AAA", "AA00AA", 13, "", true},
    {"RI1VWX", "MC81AA", 39, "", false},   {"JW5YZA", "JQ78TF", 40, "", true},
};

class OverlayGoldenTest : public StationTest {
 protected:
  OverlayGoldenTest() {
    machine.Map().FrameSize = [] { return base::ImageSize{1280, 900}; };
    for (const Contact& contact : kContacts) {
      session.Db.Execute(fmt::format(
          "INSERT INTO Log (DataQso,Call,Banda,Locator,Provincia,[Zona CQ],QslRicevuta) VALUES "
          "(DateValue('01/01/2001'),'{}',' 20 m','{}','{}',{},{})",
          contact.call, contact.locator, contact.province, contact.zone,
          contact.qsl ? "True" : "False"));
    }
    session.Handed.QueryText = "WHERE Locator<>''";
  }
  void ExpectLines(const char* golden) {
    std::string text;
    for (const std::string& line : Lines()) text += line + '\n';
    ExpectGolden(golden, text);
  }
};

TEST_F(OverlayGoldenTest, FieldsArePaintedAsTheyWere) {
  DisplayField(session);
  ExpectLines("maps/golden/fields.txt");
}

TEST_F(OverlayGoldenTest, SquaresArePaintedAsTheyWere) {
  DisplaySquare(session);
  ExpectLines("maps/golden/squares.txt");
}

TEST_F(OverlayGoldenTest, ZonesAreStampedAsTheyWere) {
  DisplayZone(session);
  ExpectLines("maps/golden/zones.txt");
}

TEST_F(OverlayGoldenTest, ProvincesArePaintedAsTheyWere) {
  DisplayItalia(session);
  ExpectLines("maps/golden/provinces.txt");
}

TEST_F(OverlayGoldenTest, SquaresOfEuropeAreCircledAsTheyWere) {
  std::ofstream(directory.Path() / "Square.jpg", std::ios::binary)
      << std::string("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\x04\x6E\0\0\x03\xDC", 24);
  Know<MappaSquare>("MappaSquare");
  Open<MappaSquare>("MappaSquare");
  ExpectLines("maps/golden/europe.txt");
}

}  // namespace
}  // namespace brenvo::maps
