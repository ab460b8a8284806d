#include "adif/adif_names.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/text.h"

namespace brenvo::adif {
namespace {

// By rising frequency.
constexpr AdifBand kBands[] = {
    {"2190m", 0.1357, 0.1378}, {"630m", 0.472, 0.479},  {"560m", 0.501, 0.504},
    {"160m", 1.8, 2.0},        {"80m", 3.5, 4.0},       {"60m", 5.06, 5.45},
    {"40m", 7.0, 7.3},         {"30m", 10.1, 10.15},    {"20m", 14.0, 14.35},
    {"17m", 18.068, 18.168},   {"15m", 21.0, 21.45},    {"12m", 24.89, 24.99},
    {"10m", 28.0, 29.7},       {"8m", 40, 45},          {"6m", 50, 54},
    {"5m", 54.000001, 69.9},   {"4m", 70, 71},          {"2m", 144, 148},
    {"1.25m", 222, 225},       {"70cm", 420, 450},      {"33cm", 902, 928},
    {"23cm", 1240, 1300},      {"13cm", 2300, 2450},    {"9cm", 3300, 3500},
    {"6cm", 5650, 5925},       {"3cm", 10000, 10500},   {"1.25cm", 24000, 24250},
    {"6mm", 47000, 47200},     {"4mm", 75500, 81000},   {"2.5mm", 119980, 123000},
    {"2mm", 134000, 149000},   {"1mm", 241000, 250000}, {"submm", 300000, 7500000}};

constexpr std::string_view kModes[] = {
    "AM",      "ARDOP", "ATV",    "CHIP", "CLO",    "CONTESTI", "CW",    "DIGITALVOICE", "DOMINO",
    "DYNAMIC", "FAX",   "FM",     "FSK",  "FSK441", "FT8",      "HELL",  "ISCAT",        "JT4",
    "JT44",    "JT65",  "JT6M",   "JT9",  "MFSK",   "MSK144",   "MT63",  "MTONE",        "OFDM",
    "OLIVIA",  "OPERA", "PAC",    "PAX",  "PKT",    "PSK",      "PSK2K", "Q15",          "QRA64",
    "ROS",     "RTTY",  "RTTYM",  "SSB",  "SSTV",   "T10",      "THOR",  "THRB",         "TOR",
    "V4",      "VOI",   "WINMOR", "WSPR"};

// The submodes of a mode, with a comma between them.
struct Submodes {
  std::string_view mode, submodes;
};
constexpr Submodes kSubmodes[] = {
    {"CHIP", "CHIP128,CHIP64"},
    {"CW", "PCW"},
    {"DIGITALVOICE", "C4FM,DMR,DSTAR,FREEDV,M17"},
    {"DOMINO", "DOM-M,DOM11,DOM16,DOM22,DOM4,DOM44,DOM5,DOM8,DOM88,DOMINOEX,DOMINOF"},
    {"DYNAMIC", "FREEDATA,VARA FM 1200,VARA FM 9600,VARA HF,VARA SATELLITE"},
    {"FSK", "SCAMP_FAST,SCAMP_SLOW,SCAMP_VSLOW"},
    {"HELL", "FMHELL,FSKH105,FSKH245,FSKHELL,HELL80,HELLX5,HELLX9,HFSK,PSKHELL,SLOWHELL"},
    {"ISCAT", "ISCAT-A,ISCAT-B"},
    {"JT4", "JT4A,JT4B,JT4C,JT4D,JT4E,JT4F,JT4G"},
    {"JT65", "JT65A,JT65B,JT65B2,JT65C,JT65C2"},
    {"JT9",
     "JT9-1,JT9-10,JT9-2,JT9-30,JT9-5,JT9A,JT9B,JT9C,JT9D,JT9E,JT9E FAST,JT9F,JT9F FAST,"
     "JT9G,JT9G FAST,JT9H,JT9H FAST"},
    {"MFSK",
     "FSQCALL,FST4,FST4W,FT2,FT4,JS8,JTMS,MFSK11,MFSK128,MFSK128L,MFSK16,MFSK22,MFSK31,"
     "MFSK32,MFSK4,MFSK64,MFSK64L,MFSK8,Q65"},
    {"MTONE", "SCAMP_OO,SCAMP_OO_SLW"},
    {"OFDM", "RIBBIT_PIX,RIBBIT_SMS"},
    {"OLIVIA",
     "OLIVIA 16/1000,OLIVIA 16/500,OLIVIA 32/1000,OLIVIA 4/125,OLIVIA 4/250,OLIVIA 8/250,"
     "OLIVIA 8/500"},
    {"OPERA", "OPERA-BEACON,OPERA-QSO"},
    {"PAC", "PAC2,PAC3,PAC4"},
    {"PAX", "PAX2"},
    {"PSK",
     "8PSK1000,8PSK1000F,8PSK1200F,8PSK125,8PSK125F,8PSK125FL,8PSK250,8PSK250F,8PSK250FL,"
     "8PSK500,8PSK500F,FSK31,PSK10,PSK1000,PSK1000C2,PSK1000R,PSK1000RC2,PSK125,PSK125C12,"
     "PSK125R,PSK125RC10,PSK125RC12,PSK125RC16,PSK125RC4,PSK125RC5,PSK250,PSK250C6,PSK250R,"
     "PSK250RC2,PSK250RC3,PSK250RC5,PSK250RC6,PSK250RC7,PSK31,PSK500,PSK500C2,PSK500C4,"
     "PSK500R,PSK500RC2,PSK500RC3,PSK500RC4,PSK63,PSK63F,PSK63RC10,PSK63RC20,PSK63RC32,"
     "PSK63RC4,PSK63RC5,PSK800C2,PSK800RC2,PSKAM10,PSKAM31,PSKAM50,PSKFEC31,QPSK125,QPSK250,"
     "QPSK31,QPSK500,QPSK63,SIM31"},
    {"QRA64", "QRA64A,QRA64B,QRA64C,QRA64D,QRA64E"},
    {"ROS", "ROS-EME,ROS-HF,ROS-MF"},
    {"RTTY", "ASCI"},
    {"SSB", "LSB,USB"},
    {"THOR", "THOR-M,THOR100,THOR11,THOR16,THOR22,THOR25X4,THOR4,THOR5,THOR50X1,THOR50X2,THOR8"},
    {"THRB", "THRBX,THRBX1,THRBX2,THRBX4,THROB1,THROB2,THROB4"},
    {"TOR", "AMTORFEC,GTOR,NAVTEX,SITORB"}};

// Words of this program's own list, and what log files write for them.
struct Word {
  std::string_view ours, adif;
};
constexpr Word kModeWords[] = {{"Hellschreiber", "HELL"},
                               {"Pactor", "PAC"},
                               {"Amtor", "AMTORFEC"},
                               {"Packet", "PKT"},
                               {"D-STAR", "DSTAR"}};

// Of several words for one propagation the first is the one to write.
constexpr Word kPropagations[] = {{"Tropo", "TR"},
                                  {"E sporadico", "ES"},
                                  {"F2", "F2"},
                                  {"Meteor Scatter", "MS"},
                                  {"TEP", "TEP"},
                                  {"Aurora", "AUR"},
                                  {"Aurora E", "AUE"},
                                  {"EME", "EME"},
                                  {"Satellite", "SAT"},
                                  {"FAI", "FAI"},
                                  {"Ionoscatter", "ION"},
                                  {"Rain Scatter", "RS"},
                                  {"Aircraft Scatter", "AS"},
                                  {"Backscatter", "BS"},
                                  {"Onda di terra", "GWAVE"},
                                  {"Vista ottica", "LOS"},
                                  {"Ripetitore", "RPT"},
                                  {"Internet", "INTERNET"},
                                  {"Internet", "ECH"},
                                  {"Internet", "IRL"},
                                  {"Troposcatter", "TR"}};

constexpr std::string_view kContinents[] = {"AF", "AN", "AS", "EU", "NA", "OC", "SA"};

constexpr std::string_view kFields =
    "ADDRESS,ADDRESS_INTL,AGE,ALTITUDE,ANT_AZ,ANT_EL,ANT_PATH,ARRL_SECT,AWARD_GRANTED,"
    "AWARD_SUBMITTED,A_INDEX,BAND,BAND_RX,CALL,CHECK,CLASS,CLUBLOG_QSO_UPLOAD_DATE,"
    "CLUBLOG_QSO_UPLOAD_STATUS,CNTY,CNTY_ALT,COMMENT,COMMENT_INTL,CONT,CONTACTED_OP,"
    "CONTEST_ID,COUNTRY,COUNTRY_INTL,CQZ,CREDIT_GRANTED,CREDIT_SUBMITTED,DARC_DOK,"
    "DCL_QSLRDATE,DCL_QSLSDATE,DCL_QSL_RCVD,DCL_QSL_SENT,DISTANCE,DXCC,EMAIL,EQSL_AG,"
    "EQSL_QSLRDATE,EQSL_QSLSDATE,EQSL_QSL_RCVD,EQSL_QSL_SENT,EQ_CALL,FISTS,FISTS_CC,"
    "FORCE_INIT,FREQ,FREQ_RX,GRIDSQUARE,GRIDSQUARE_EXT,GUEST_OP,HAMLOGEU_QSO_UPLOAD_DATE,"
    "HAMLOGEU_QSO_UPLOAD_STATUS,HAMQTH_QSO_UPLOAD_DATE,HAMQTH_QSO_UPLOAD_STATUS,"
    "HRDLOG_QSO_UPLOAD_DATE,HRDLOG_QSO_UPLOAD_STATUS,IOTA,IOTA_ISLAND_ID,ITUZ,K_INDEX,LAT,"
    "LON,LOTW_QSLRDATE,LOTW_QSLSDATE,LOTW_QSL_RCVD,LOTW_QSL_SENT,MAX_BURSTS,MODE,"
    "MORSE_KEY_INFO,MORSE_KEY_TYPE,MS_SHOWER,MY_ALTITUDE,MY_ANTENNA,MY_ANTENNA_INTL,"
    "MY_ARRL_SECT,MY_CITY,MY_CITY_INTL,MY_CNTY,MY_CNTY_ALT,MY_COUNTRY,MY_COUNTRY_INTL,"
    "MY_CQ_ZONE,MY_DARC_DOK,MY_DXCC,MY_FISTS,MY_GRIDSQUARE,MY_GRIDSQUARE_EXT,MY_IOTA,"
    "MY_IOTA_ISLAND_ID,MY_ITU_ZONE,MY_LAT,MY_LON,MY_MORSE_KEY_INFO,MY_MORSE_KEY_TYPE,"
    "MY_NAME,MY_NAME_INTL,MY_POSTAL_CODE,MY_POSTAL_CODE_INTL,MY_POTA_REF,MY_RIG,"
    "MY_RIG_INTL,MY_SIG,MY_SIG_INFO,MY_SIG_INFO_INTL,MY_SIG_INTL,MY_SOTA_REF,MY_STATE,"
    "MY_STREET,MY_STREET_INTL,MY_USACA_COUNTIES,MY_VUCC_GRIDS,MY_WWFF_REF,NAME,NAME_INTL,"
    "NOTES,NOTES_INTL,NR_BURSTS,NR_PINGS,OPERATOR,OWNER_CALLSIGN,PFX,POTA_REF,PRECEDENCE,"
    "PROP_MODE,PUBLIC_KEY,QRZCOM_QSO_DOWNLOAD_DATE,QRZCOM_QSO_DOWNLOAD_STATUS,"
    "QRZCOM_QSO_UPLOAD_DATE,QRZCOM_QSO_UPLOAD_STATUS,QSLMSG,QSLMSG_INTL,QSLMSG_RCVD,"
    "QSLRDATE,QSLSDATE,QSL_RCVD,QSL_RCVD_VIA,QSL_SENT,QSL_SENT_VIA,QSL_VIA,QSO_COMPLETE,"
    "QSO_DATE,QSO_DATE_OFF,QSO_RANDOM,QTH,QTH_INTL,REGION,RIG,RIG_INTL,RST_RCVD,RST_SENT,"
    "RX_PWR,SAT_MODE,SAT_NAME,SFI,SIG,SIG_INFO,SIG_INFO_INTL,SIG_INTL,SILENT_KEY,SKCC,"
    "SOTA_REF,SRX,SRX_STRING,STATE,STATION_CALLSIGN,STX,STX_STRING,SUBMODE,SWL,TEN_TEN,"
    "TIME_OFF,TIME_ON,TX_PWR,UKSMG,USACA_COUNTIES,VE_PROV,VUCC_GRIDS,WEB,WWFF_REF";

std::vector<std::string_view> Words(std::string_view list) {
  std::vector<std::string_view> words;
  for (std::size_t at = 0; at <= list.size();) {
    const std::size_t end = std::min(list.find(',', at), list.size());
    words.push_back(list.substr(at, end - at));
    at = end + 1;
  }
  return words;
}

}  // namespace

const AdifBand* FindAdifBand(std::string_view name) {
  const auto* at = std::find_if(std::begin(kBands), std::end(kBands), [&](const AdifBand& band) {
    return base::SameText(band.name, name);
  });
  return at == std::end(kBands) ? nullptr : at;
}

const AdifBand* AdifBandAt(base::Mhz frequency) {
  const auto* at = std::find_if(std::begin(kBands), std::end(kBands), [&](const AdifBand& band) {
    return frequency.Value() >= band.lower && frequency.Value() <= band.upper;
  });
  return at == std::end(kBands) ? nullptr : at;
}

std::optional<AdifMode> FindAdifMode(std::string_view word) {
  static const auto kByWord = [] {
    std::unordered_map<std::string_view, AdifMode> modes;
    for (const std::string_view mode : kModes) modes.emplace(mode, AdifMode{std::string(mode), ""});
    for (const Submodes& each : kSubmodes) {
      for (const std::string_view submode : Words(each.submodes)) {
        modes.emplace(submode, AdifMode{std::string(each.mode), std::string(submode)});
      }
    }
    return modes;
  }();
  const auto found = kByWord.find(base::UpperAscii(word));
  return found == kByWord.end() ? std::nullopt : std::optional(found->second);
}

std::string_view AdifWordOf(std::string_view mode) {
  for (const Word& word : kModeWords) {
    if (base::SameText(word.ours, mode)) return word.adif;
  }
  return mode;
}

std::string_view ModeOfAdifWord(std::string_view word) {
  for (const Word& each : kModeWords) {
    if (base::SameText(each.adif, word)) return each.ours;
  }
  return word;
}

std::string_view PropagationOf(std::string_view adif) {
  for (const Word& word : kPropagations) {
    if (base::SameText(word.adif, adif)) return word.ours;
  }
  return {};
}

std::string_view AdifPropagationOf(std::string_view propagation) {
  for (const Word& word : kPropagations) {
    if (base::SameText(word.ours, propagation)) return word.adif;
  }
  return {};
}

bool IsAdifContinent(std::string_view text) {
  return std::any_of(std::begin(kContinents), std::end(kContinents),
                     [&](std::string_view continent) { return base::SameText(continent, text); });
}

bool IsAdifField(std::string_view name) {
  static const auto kKnown = [] {
    const std::vector<std::string_view> words = Words(kFields);
    return std::unordered_set<std::string_view>(words.begin(), words.end());
  }();
  return kKnown.contains(name);
}

bool IsApplicationField(std::string_view name) { return name.starts_with("APP_"); }

}  // namespace brenvo::adif
