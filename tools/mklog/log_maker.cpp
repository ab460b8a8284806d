#include "mklog/log_maker.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/date.h"
#include "mklog/dice.h"
#include "mklog/other_stations.h"

namespace brenvo::mklog {
namespace {

constexpr int kFirstYear = 1975, kLastYear = 2024;

// On how many of a hundred contacts a band is used: near (in Europe, under 900 km), in the rest of
// Europe, and beyond. MHz, and the width in kHz that contacts spread over.
struct Band {
  const char* name;
  double near, europe, beyond;
  double mhz, width;
  int since;  // the year
};
constexpr Band kBands[] = {
    {"160 m", .5, 1, .5, 1.83, 15, 1980},     {" 80 m", 6, 7, 2, 3.65, 140, 1975},
    {" 60 m", .1, .2, .1, 5.354, 10, 2016},   {" 40 m", 8, 10, 8, 7.1, 180, 1975},
    {" 30 m", .4, 2, 3, 10.12, 20, 1984},     {" 20 m", 1, 18, 32, 14.2, 140, 1975},
    {" 17 m", .2, 3, 6, 18.12, 40, 1989},     {" 15 m", .6, 12, 24, 21.25, 190, 1975},
    {" 12 m", .1, 1.5, 4, 24.94, 40, 1989},   {" 10 m", 2, 10, 15, 28.5, 400, 1975},
    {"  6 m", 3, 14, 3, 50.15, 80, 1990},     {"  2 m", 55, 12, .3, 144.3, 110, 1975},
    {" 70cm", 15, 1.6, .05, 432.2, 80, 1976}, {" 23cm", 5.5, .5, .02, 1296.2, 60, 1979},
    {" 13cm", 1, .1, 0, 2320.2, 20, 1985},    {"  9cm", .2, 0, 0, 3400.1, 10, 1992},
    {"  6cm", .4, 0, 0, 5760.2, 10, 1990},    {"  3cm", 1, .1, 0, 10368.2, 20, 1983}};

struct Mode {
  const char* name;
  double hf, vhf;  // of a hundred contacts while the mode is in its best years
  int since, until;
  const char* report;
};
constexpr Mode kModes[] = {{"SSB", 50, 72, 1975, 9999, "59"},  {"CW", 34, 14, 1975, 9999, "599"},
                           {"FM", 1, 12, 1975, 9999, "59"},    {"AM", .3, .1, 1975, 9999, "59"},
                           {"RTTY", 6, .2, 1976, 9999, "599"}, {"PSK31", 6, .3, 1999, 2019, "599"},
                           {"FSK441", 0, 3, 2001, 2017, "26"}, {"JT65", 4, 3, 2004, 2019, "-12"},
                           {"JT6M", 0, 1, 2003, 2012, "-15"},  {"FT8", 45, 22, 2017, 9999, "-09"},
                           {"FT4", 8, 2, 2019, 9999, "-05"},   {"MSK144", 0, 3, 2016, 9999, "+03"},
                           {"Q65", 0, 1, 2021, 9999, "-18"},   {"SSTV", .4, .1, 1985, 9999, "595"}};

constexpr const char* kRemarks[] = {"primo qso",       "ant. 4 el.",     "pse qsl via bureau",
                                    "tks qso",         "qsb profondo",   "portatile in montagna",
                                    "nuovo country !", "ottimo segnale", "via diretta, 1 IRC"};
constexpr const char* kShorthand[] = {"[E.S.]", "[E.S.]", "[E.S.]", "[M.S.]", "[F2]", "[T.E.P.]"};

// A sitting at the radio: contacts follow each other on one band.
struct Sitting {
  std::int64_t left = 0;  // contacts to come
  int gap = 5;            // minutes at most from one to the next
  bool contest = false;
};

class LogMaker {
 public:
  LogMaker(sqlite3* file, std::int64_t contacts, std::uint64_t seed)
      : file_(file), contacts_(contacts), dice_(seed), others_(file, seed) {
    const char* sql =
        "INSERT OR IGNORE INTO Log (DataQso,Call,Manager,Qra,Qth,Prefisso,\"Zona CQ\","
        "\"Zona ITU\",Continente,Country,Provincia,Locator,Qrb,Banda,Frequenza,Potenza,Modo,"
        "Propagazione,QrkDato,QrkRicevuto,QslDaInviare,QslRicevuta,QslInviata,Note) VALUES "
        "(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";
    if (sqlite3_prepare_v2(file, sql, -1, &insert_, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(file));
    }
  }
  ~LogMaker() { sqlite3_finalize(insert_); }
  LogMaker(const LogMaker&) = delete;
  LogMaker& operator=(const LogMaker&) = delete;

  void Run() {
    // A contact with the same station on the same band in the same minute is drawn again.
    for (std::int64_t made = 0; made < contacts_;) made += MakeContact(made);
  }

 private:
  // The log grows faster from year to year.
  base::DateTime Planned(std::int64_t number) const {
    const double share =
        std::pow(static_cast<double>(number) / static_cast<double>(contacts_), 0.75);
    const std::int64_t first = base::DateTime::Of(kFirstYear, 1, 1).Seconds();
    const std::int64_t last = base::DateTime::Of(kLastYear, 12, 31).Seconds();
    return base::DateTime::FromSeconds(
        first + static_cast<std::int64_t>(share * static_cast<double>(last - first)) / 60 * 60);
  }

  void NextMinute(std::int64_t number) {
    if (sitting_.left-- > 0) {
      now_ = base::DateTime::FromSeconds(now_.Seconds() + 60 * dice_.Between(0, sitting_.gap));
      return;
    }
    sitting_.contest = dice_.Chance(0.08);
    sitting_.left = sitting_.contest ? dice_.Between(50, 500) : dice_.Between(1, 25);
    sitting_.gap = sitting_.contest ? 3 : 12;
    now_ = std::max(now_, Planned(number));
    band_ = nullptr;
  }

  // A few stations are worked again and again, most of them once.
  std::uint64_t StationNumber() {
    const double population = std::max(1.0, 1.6 * std::pow(static_cast<double>(contacts_), 0.93));
    return static_cast<std::uint64_t>(population * std::pow(dice_.Share(), 2.0));
  }

  const Band& BandFor(const OtherStation& station) {
    struct Choice {
      const Band* band;
      double weight;
    };
    std::vector<Choice> choices;
    const bool european = station.continente == "EU";
    for (const Band& band : kBands) {
      if (now_.Year() < band.since) continue;
      const double weight = !european ? band.beyond : station.qrb < 900 ? band.near : band.europe;
      choices.push_back({&band, weight});
    }
    // One band a sitting, but where the station cannot be reached on it.
    if (band_ != nullptr && dice_.Chance(0.9)) {
      for (const Choice& choice : choices) {
        if (choice.band == band_ && choice.weight >= 0.3) return *band_;
      }
    }
    const Band* band = dice_.Weighted(choices).band;
    if (band_ == nullptr) band_ = band;
    return *band;
  }

  const Mode& ModeOn(const Band& band) {
    struct Choice {
      const Mode* mode;
      double weight;
    };
    std::vector<Choice> choices;
    for (const Mode& mode : kModes) {
      if (now_.Year() < mode.since || now_.Year() > mode.until) continue;
      const double weight = band.mhz < 40 ? mode.hf : mode.vhf;
      const bool digital = mode.report[0] == '-' || mode.report[0] == '+';
      choices.push_back({&mode, sitting_.contest && digital ? 0 : weight});
    }
    return *dice_.Weighted(choices).mode;
  }

  std::string PropagationOn(const Band& band, const OtherStation& station) {
    if (band.mhz < 40) return "";
    if (band.mhz > 1000) return dice_.Chance(0.1) ? "Rain Scatter" : "";
    if (station.continente != "EU")
      return band.mhz > 100 ? "EME" : dice_.Chance(0.5) ? "F2" : "TEP";
    if (band.mhz < 100) return station.qrb > 600 && dice_.Chance(0.7) ? "E sporadico" : "";
    if (station.qrb > 1300) return dice_.Chance(0.5) ? "Meteor Scatter" : "E sporadico";
    if (station.qrb > 400 && dice_.Chance(0.5)) return "Tropo";
    return "";
  }

  std::string NoteOf(const Band& band, const OtherStation& station) {
    if (sitting_.contest && band.mhz > 40 && !station.provincia.empty() && dice_.Chance(0.3)) {
      return fmt::format("[Exc={}]", station.provincia);
    }
    const double share = dice_.Share();
    if (band.mhz > 40 && now_.Year() < 1995 && share < 0.08) {
      return fmt::format("{} {}", dice_.OneOf(kShorthand), dice_.OneOf(kRemarks));
    }
    if (share < 0.015) return fmt::format("[IOTA/EU-{:03}]", dice_.Between(1, 190));
    if (station.country == "I" && share < 0.025) {
      return fmt::format("[DCI/{}{:03}]", station.provincia, dice_.Between(1, 120));
    }
    return share < 0.09 ? dice_.OneOf(kRemarks) : "";
  }

  std::string ReportIn(const Mode& mode) {
    std::string report = mode.report;
    if (report == "59" || report == "599") {
      if (!sitting_.contest && dice_.Chance(0.4)) {
        report[1] = static_cast<char>('1' + dice_.Below(9));
        if (dice_.Chance(0.3)) report[0] = '5' - static_cast<char>(dice_.Below(2));
      }
    } else if (report[0] == '-' || report[0] == '+') {
      report = fmt::format("{:+03}", dice_.Between(-24, 12));
    }
    return report;
  }

  // 1 when the contact is in the log now, 0 when it would repeat one.
  int MakeContact(std::int64_t number) {
    NextMinute(number);
    const OtherStation station = others_.Make(StationNumber());
    const Band& band = BandFor(station);
    const Mode& mode = ModeOn(band);
    const bool vhf = band.mhz > 40;
    const bool withLocator = dice_.Chance(vhf ? 0.98 : 0.35);
    const double mhz =
        std::round((band.mhz + (dice_.Share() - 0.5) * band.width / 1000) * 1000) / 1000;
    const bool old = now_.Year() < kLastYear - 1;
    const bool sent = old && dice_.Chance(0.55);
    const bool received = sent ? station.answers && dice_.Chance(0.85) : dice_.Chance(0.12);
    const bool toSend = !sent && dice_.Chance(old ? 0.05 : 0.6);

    column_ = 0;
    Text(base::IsoText(now_));
    Text(station.call);
    Text(station.manager);
    Text(station.qra);
    Text(station.qth);
    Text(station.prefisso);
    Number(station.zonaCq);
    Number(station.zonaItu);
    Text(station.continente);
    Text(station.country);
    Text(dice_.Chance(station.country == "I" ? 0.8 : 0.25) ? station.provincia : "");
    Text(withLocator ? station.locator : "");
    Number(withLocator ? station.qrb : 0);
    Text(band.name);
    sqlite3_bind_double(insert_, ++column_, mhz);
    Number(vhf ? 50 : 100);
    Text(mode.name);
    Text(PropagationOn(band, station));
    Text(ReportIn(mode));
    Text(ReportIn(mode));
    for (const bool mark : {toSend, received, sent}) Number(mark ? -1 : 0);
    Text(NoteOf(band, station));
    const int code = sqlite3_step(insert_);
    sqlite3_reset(insert_);
    if (code != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(file_));
    return sqlite3_changes(file_);
  }

  void Text(const std::string& text) {
    sqlite3_bind_text(insert_, ++column_, text.data(), static_cast<int>(text.size()),
                      SQLITE_TRANSIENT);
  }
  void Number(int number) { sqlite3_bind_int(insert_, ++column_, number); }

  sqlite3* file_;
  std::int64_t contacts_;
  Dice dice_;
  OtherStations others_;
  sqlite3_stmt* insert_ = nullptr;
  int column_ = 0;  // bound last
  base::DateTime now_ = base::DateTime::Of(kFirstYear, 1, 1);
  Sitting sitting_;
  const Band* band_ = nullptr;  // of the sitting
};

void Run(sqlite3* file, const char* sql) {
  if (sqlite3_exec(file, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(file));
  }
}

}  // namespace

void MakeLog(const std::filesystem::path& database, std::int64_t contacts, std::uint64_t seed) {
  sqlite3* file = nullptr;
  const int code =
      sqlite3_open_v2(database.string().c_str(), &file, SQLITE_OPEN_READWRITE, nullptr);
  struct Closer {
    sqlite3* file;
    ~Closer() { sqlite3_close(file); }
  } closer{file};
  if (code != SQLITE_OK) {
    throw std::runtime_error(database.string() + ": " + sqlite3_errmsg(file));
  }
  // The contacts come by date, but the other indexes take them in anywhere.
  Run(file, "PRAGMA cache_size=-600000; BEGIN IMMEDIATE");
  LogMaker(file, contacts, seed).Run();
  Run(file, "COMMIT");
}

}  // namespace brenvo::mklog
