#include "tools/demonstration/countries.h"

namespace brenvo {

const std::vector<DemonstrationCountry>& DemonstrationCountries() {
  static const DemonstrationTongue kItalian = {
      {"MARIO", "LUCIA", "GIANNI", "NICOLÒ", "PAOLA", "ENZO", "SILVIO", "FRANCO", "CARLA", "UGO"},
      {"TORINO", "FORLÌ", "BARI", "CANTÙ", "TRENTO", "LECCE", "CUNEO", "PISA", "UDINE", "TERNI"}};
  static const DemonstrationTongue kGerman = {
      {"KLAUS", "JÜRGEN", "HEIDI", "WOLFGANG", "UWE", "BERND", "PETRA", "STEFAN"},
      {"MÜNCHEN", "KÖLN", "ULM", "KASSEL", "WIEN", "GRAZ", "BERN", "DRESDEN"}};
  static const DemonstrationTongue kFrench = {{"JEAN", "ANDRÉ", "MICHEL", "CLAIRE", "RENÉ"},
                                              {"LYON", "NÎMES", "DIJON", "LIÈGE", "BREST"}};
  static const DemonstrationTongue kSpanish = {{"JOSÉ", "JUAN", "PILAR", "IÑAKI", "LUIS", "ANA"},
                                               {"BARCELONA", "LEÓN", "VIGO", "PALMA", "PORTO"}};
  static const DemonstrationTongue kEnglish = {
      {"JOHN", "DAVE", "MARY", "BOB", "STEVE", "ALICE", "KEN", "JIM"},
      {"LEEDS", "YORK", "BOSTON", "DUBLIN", "OTTAWA", "PERTH", "AUSTIN", "CORK"}};
  static const DemonstrationTongue kSlavic = {{"IVAN", "JAN", "PETR", "ZDRAVKO", "ŠÁRKA", "OLGA"},
                                              {"ZAGREB", "PRAHA", "BRNO", "SOFIA", "KRAKÓW"}};
  static const DemonstrationTongue kNorthern = {{"LARS", "ØYSTEIN", "MATTI", "ANNA", "SVEN"},
                                                {"OSLO", "MALMÖ", "ÅRHUS", "TURKU", "VISBY"}};
  static const DemonstrationTongue kFar = {{"TARO", "KENJI", "SAM", "LEE", "NINO"},
                                           {"OSAKA", "KYOTO", "MANILA", "PERTH", "AUCKLAND"}};
  static const std::vector<DemonstrationCountry> kCountries = {
      {30,
       true,
       {"I1", "IK2", "IZ3", "IW4", "IK5", "I6", "IZ7", "IK8", "IU0", "IN3", "IV3"},
       {"JN45", "JN54", "JN62", "JN63", "JN70", "JN71", "JN35", "JN55", "JN66", "JN80"},
       &kItalian},
      {2, true, {"IS0", "IM0"}, {"JM49", "JN40"}, &kItalian},
      {2, true, {"IT9"}, {"JM68", "JM77"}, &kItalian},
      {14,
       true,
       {"DL1", "DK5", "DJ9", "DF2", "DO7", "DL8"},
       {"JO31", "JO62", "JN58", "JN48", "JO40", "JO53", "JO60"},
       &kGerman},
      {6, true, {"OE1", "OE3", "OE5", "OE8"}, {"JN88", "JN78", "JN67", "JN76"}, &kGerman},
      {4, true, {"HB9", "HB0"}, {"JN36", "JN37", "JN47"}, &kGerman},
      {9,
       true,
       {"F1", "F4", "F5", "F6"},
       {"JN18", "JN23", "JN25", "IN88", "JN38", "IN94"},
       &kFrench},
      {2, true, {"ON4", "ON7"}, {"JO20", "JO11"}, &kFrench},
      {1, true, {"TK5"}, {"JN41", "JN42"}, &kFrench},
      {8,
       false,
       {"EA1", "EA3", "EA5", "EA7", "EB2"},
       {"JN11", "IN80", "IM98", "IN52", "IM76"},
       &kSpanish},
      {2, false, {"EA6", "EA8"}, {"JM19", "IL18"}, &kSpanish},
      {3, false, {"CT1", "CT7", "CU3"}, {"IM58", "IN51", "HM68"}, &kSpanish},
      {7, false, {"G3", "G4", "M0", "G8"}, {"IO91", "IO83", "JO01", "IO92"}, &kEnglish},
      {3, false, {"GM4", "GW3", "GI0", "EI5"}, {"IO75", "IO81", "IO64", "IO63"}, &kEnglish},
      {6, true, {"9A2", "9A5"}, {"JN75", "JN85", "JN83", "JN86"}, &kSlavic},
      {5, true, {"S51", "S57"}, {"JN76", "JN65", "JN75"}, &kSlavic},
      {6, true, {"OK1", "OK2"}, {"JO70", "JN79", "JN89", "JN99"}, &kSlavic},
      {4, true, {"OM3", "HA5", "HA1"}, {"JN98", "KN08", "JN97", "JN87"}, &kSlavic},
      {5, false, {"SP5", "SP9", "SQ2"}, {"KO02", "JO90", "KN09", "JO94"}, &kSlavic},
      {4, false, {"YU1", "YO3", "LZ1", "YT5"}, {"KN04", "KN34", "KN12", "KN22"}, &kSlavic},
      {5, false, {"UA3", "RA9", "UR5", "RW0"}, {"KO85", "MO06", "KN59", "PN78"}, &kSlavic},
      {3, false, {"SV1", "SV9", "TA2"}, {"KM17", "KM25", "KN40"}, &kSpanish},
      {4, false, {"SM5", "LA1", "OZ1", "OH2"}, {"JO89", "JO59", "JO65", "KP20"}, &kNorthern},
      {2, false, {"ES1", "YL2", "LY3", "TF3"}, {"KO29", "KO26", "KO24", "HP94"}, &kNorthern},
      {7,
       false,
       {"K1", "W4", "N6", "K5", "W9", "K0"},
       {"FN42", "EM73", "DM04", "EM12", "EN52"},
       &kEnglish},
      {2, false, {"VE3", "VE7"}, {"FN03", "CN89"}, &kEnglish},
      {4, false, {"JA1", "JA7", "JH3", "JR6"}, {"PM95", "QM08", "PM74", "PL36"}, &kFar},
      {2, false, {"VK2", "VK6", "ZL1"}, {"QF56", "OF78", "RF73"}, &kEnglish},
      {2, false, {"PY2", "LU5", "CE3"}, {"GG66", "GF05", "FF46"}, &kSpanish},
      {1, false, {"ZS6", "5Z4", "CN8", "4X1"}, {"KG33", "KI88", "IM64", "KM72"}, &kEnglish},
      {1, false, {"BY1", "HL2", "VU2", "HS0"}, {"OM89", "PM37", "MK82", "OK03"}, &kFar}};
  return kCountries;
}

}  // namespace brenvo
