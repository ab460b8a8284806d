// Places whose position everybody can look up.
#pragma once

#include "tools/mkmaps/sheets.h"

namespace brenvo::mkmaps {

struct KnownPlace {
  const char* name;
  GeoPoint position;
  const char* square;
  bool land;
};

inline constexpr KnownPlace kKnownPlaces[] = {
    {"Roma", {12.5, 41.9}, "JN61", true},
    {"Londra", {-0.12, 51.51}, "IO91", true},
    {"Parigi", {2.35, 48.86}, "JN18", true},
    {"Berlino", {13.4, 52.52}, "JO62", true},
    {"Madrid", {-3.7, 40.42}, "IN80", true},
    {"Mosca", {37.62, 55.75}, "KO85", true},
    {"Ankara", {32.85, 39.93}, "KM69", true},
    {"Il Cairo", {31.24, 30.05}, "KM50", true},
    {"Nairobi", {36.82, -1.29}, "KI88", true},
    {"Johannesburg", {28.05, -26.2}, "KG43", true},
    {"Addis Abeba", {38.75, 9.03}, "KJ99", true},
    {"Timbuctu", {-3.0, 16.77}, "IK86", true},
    {"Riyad", {46.72, 24.69}, "LL34", true},
    {"Teheran", {51.39, 35.69}, "LM55", true},
    {"Nuova Delhi", {77.21, 28.61}, "ML88", true},
    {"Lhasa", {91.1, 29.65}, "NL59", true},
    {"Pechino", {116.4, 39.9}, "OM89", true},
    {"Ulan Bator", {106.9, 47.9}, "ON37", true},
    {"Nagano", {138.2, 36.65}, "PM96", true},
    {"Jakutsk", {129.7, 62.03}, "PP42", true},
    {"Alice Springs", {133.88, -23.7}, "PG66", true},
    {"Canberra", {149.13, -35.28}, "QF44", true},
    {"Brasilia", {-47.88, -15.79}, "GH64", true},
    {"La Paz", {-68.15, -16.5}, "FH53", true},
    {"Medellin", {-75.57, 6.24}, "FJ26", true},
    {"Citta' del Messico", {-99.13, 19.43}, "EK09", true},
    {"Denver", {-104.99, 39.74}, "DM79", true},
    {"Ottawa", {-75.7, 45.42}, "FN25", true},
    {"Winnipeg", {-97.14, 49.9}, "EN19", true},
    {"Fairbanks", {-147.72, 64.84}, "BP64", true},
    {"Sao Miguel", {-25.45, 37.8}, "HM77", true},
    {"Longyearbyen", {16.5, 78.2}, "JQ88", true},
    {"Vostok", {106.8, -78.46}, "OB31", true},
    {"Ciukotka a est della linea del cambio di data", {-177.0, 67.5}, "AP17", true},
    {"Ciukotka a ovest", {177.0, 67.5}, "RP87", true},
    {"Mare Adriatico", {15.0, 43.2}, "JN73", false},
    {"Atlantico", {-45.0, 30.0}, "GM70", false},
    {"Golfo di Guinea", {0.5, 0.5}, "JJ00", false},
    {"Oceano Indiano", {80.5, -20.5}, "NG09", false},
    {"Pacifico", {-150.5, 0.5}, "BJ40", false},
    {"Mar Glaciale", {0.5, 85.5}, "JR05", false},
    {"Mare di Tasman", {160.5, -38.5}, "RF01", false},
    {"Mare delle Azzorre", {-35.5, 35.5}, "HM25", false},
    {"Golfo del Messico", {-90.5, 25.5}, "EL45", false},
};

}  // namespace brenvo::mkmaps
