// Links: awards recorder core SQLite::SQLite3
// What awards cost on a large log. Each list beside its grouped query by hand on SQLite; each page
// beside the same grouped query, and beside the queries by hand that its rows need; a search of
// the matrices.
// Usage: awards_bench [CONTACTS]
#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <sqlite3.h>
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "awards/award_grid.h"
#include "awards/worked_matrix.h"
#include "core/main_frame.h"
#include "recorder/recording_platform.h"
#include "tests/support/scratch_database.h"

namespace brenvo {
namespace {

constexpr const char* kBands[] = {"160 m", " 80 m", " 60 m", " 40 m", " 30 m", " 20 m", " 17 m",
                                  " 15 m", " 12 m", " 10 m", "  6 m", "  2 m", " 70cm"};
constexpr const char* kModes[] = {"SSB", "CW", "FM", "RTTY", "FT8"};
constexpr const char* kContinents[] = {"EU", "NA", "SA", "AF", "AS", "OC"};
constexpr int kCountries = 340;

std::string CountryOf(int number) { return fmt::format("C{:03}", number); }

void Run(sqlite3* file, const std::string& sql) {
  char* message = nullptr;
  if (sqlite3_exec(file, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
    std::fprintf(stderr, "%s: %s\n", sql.c_str(), message);
    std::exit(1);
  }
}

// Countries are worked unevenly, as on the air: the first ones a hundred times the last ones.
void Fill(sqlite3* file, int contacts) {
  Run(file, "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA cache_size=-1000000; BEGIN");
  for (int i = 0; i < kCountries; ++i) {
    Run(file, fmt::format("INSERT INTO Country (Country,Descrizione,Locator) VALUES "
                          "('{}','Paese {}','JN00AA')", CountryOf(i), i));
    for (int digit = 0; digit < 3; ++digit) {
      Run(file, fmt::format("INSERT INTO Prefissi VALUES ('{}{}','{}',{},{},'{}')", CountryOf(i),
                            digit, CountryOf(i), 1 + i % 40, 1 + i % 90, kContinents[i % 6]));
    }
  }
  for (int i = 0; i < 13; ++i) {
    Run(file, fmt::format("INSERT INTO UserRTX (Banda,Frequenza) VALUES ('{}',{})", kBands[i], i));
  }
  for (int i = 0; i < 5; ++i) {
    Run(file, fmt::format("INSERT INTO Modi VALUES ({},'{}')", i, kModes[i]));
  }
  Run(file, "INSERT INTO User (Call,Locator) VALUES ('I0XXX','JN65AA')");

  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(file,
                     "INSERT INTO Log (DataQso,Call,Qra,Qth,Prefisso,\"Zona CQ\",\"Zona ITU\","
                     "Continente,Country,Provincia,Locator,Banda,Modo,Propagazione,QslRicevuta,"
                     "Note) VALUES (?,?,'MARIO','PADOVA',?,?,?,?,?,?,?,?,?,'',?,?)",
                     -1, &insert, nullptr);
  std::mt19937_64 random(1);
  const auto any = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
  const DateTime first = DateTime::Of(1980, 1, 1);
  for (int i = 0; i < contacts; ++i) {
    const int country = any(kCountries) * any(kCountries) / kCountries;
    const std::string prefix = fmt::format("{}{}", CountryOf(country), any(3));
    const std::string texts[] = {
        IsoText(DateTime::FromSeconds(first.Seconds() + i * 300LL)),
        fmt::format("{}{:05}", prefix, any(100000)),
        prefix,
        kContinents[country % 6],
        CountryOf(country),
        country == 0 ? fmt::format("{:02}", any(99)) : std::string(),
        fmt::format("{}{}{:02}AA", static_cast<char>('H' + any(6)),
                    static_cast<char>('H' + any(6)), any(100)),
        kBands[any(13)],
        kModes[any(5)],
        i % 1000 == 0 ? fmt::format("[DCI/{:04}/Castello]", any(500)) : std::string()};
    const int places[] = {1, 2, 3, 6, 7, 8, 9, 10, 11, 13};
    for (std::size_t t = 0; t < std::size(texts); ++t) {
      sqlite3_bind_text(insert, places[t], texts[t].c_str(), -1, SQLITE_TRANSIENT);
    }
    sqlite3_bind_int(insert, 4, 1 + country % 40);
    sqlite3_bind_int(insert, 5, 1 + country % 90);
    sqlite3_bind_int(insert, 12, any(3) == 0 ? -1 : 0);
    sqlite3_step(insert);
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  Run(file, "COMMIT");
}

// Milliseconds of processor time: what else the machine does is not counted.
double Now() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// The median of three runs.
double Time(const std::function<void()>& work) {
  std::vector<double> times;
  for (int run = 0; run < 3; ++run) {
    const double begin = Now();
    work();
    times.push_back(Now() - begin);
  }
  std::sort(times.begin(), times.end());
  return times[1];
}

// Steps through all rows as one who knows the file would.
std::int64_t ByHand(sqlite3* file, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(file, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
    std::fprintf(stderr, "%s: %s\n", sql.c_str(), sqlite3_errmsg(file));
    std::exit(1);
  }
  std::int64_t rows = 0;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    benchmark::DoNotOptimize(sqlite3_column_text(statement, 0));
    ++rows;
  }
  sqlite3_finalize(statement);
  return rows;
}

std::string Same(std::string_view expression) {
  return fmt::format("rtrim({}) COLLATE NOCASE", expression);
}

struct Selection {
  const char* name;
  const char* text;     // as the dialog gives it
  std::string byHand;
};

struct Award {
  const char* window;
  std::string byHand;  // the key, as an index holds it
  bool number = false;
  bool withCountry = false;  // the country is grouped too
};

std::string Grouped(const Award& award, const Selection& selection) {
  return fmt::format(
      "SELECT {0},\"QslRicevuta\" FROM \"Log\" WHERE {1} AND {0}<>{2} GROUP BY {0},\"QslRicevuta\"{3} "
      "ORDER BY {0},\"QslRicevuta\"",
      award.byHand, selection.byHand, award.number ? "0" : "''",
      award.withCountry ? "," + Same("\"Country\"") : std::string());
}

// The contact of each entry of a list, asked for one by one.
void ContactsByHand(sqlite3* file, const Award& award, const Selection& selection, CellGrid& grid,
                    int qslColumn) {
  sqlite3_stmt* statements[2];
  for (int confirmed = 0; confirmed < 2; ++confirmed) {
    const std::string sql = fmt::format(
        "SELECT \"DataQso\",\"Call\",\"Modo\",\"Propagazione\" FROM \"Log\" WHERE {} AND {}=? AND "
        "\"QslRicevuta\"={} ORDER BY \"DataQso\" LIMIT 1",
        selection.byHand, award.byHand, -confirmed);
    sqlite3_prepare_v2(file, sql.c_str(), -1, &statements[confirmed], nullptr);
  }
  for (std::int64_t row = 1; row < grid.Rows(); ++row) {
    const std::string key = grid.Cell(row, 0);
    sqlite3_stmt* statement = statements[grid.Cell(row, qslColumn).empty() ? 0 : 1];
    if (award.number) {
      sqlite3_bind_int(statement, 1, std::atoi(key.c_str()));
    } else {
      sqlite3_bind_text(statement, 1, key.c_str(), -1, SQLITE_TRANSIENT);
    }
    sqlite3_step(statement);
    benchmark::DoNotOptimize(sqlite3_column_text(statement, 1));
    sqlite3_reset(statement);
  }
  for (sqlite3_stmt* statement : statements) sqlite3_finalize(statement);
}

class Station {
 public:
  explicit Station(const std::filesystem::path& directory) : session(machine, directory) {
    for (const AwardMember& member : AwardMembers()) {
      session.Windows.Register(std::string(member.window), [this, &member] {
        return std::make_unique<AwardGrid>(session, member);
      });
    }
    session.Windows.Register("Hrd", [this] { return std::make_unique<Hrd>(session); });
    session.Windows.Register("HrdMode", [this] { return std::make_unique<HrdMode>(session); });
    session.Windows.Show(session.Windows.Adopt(std::make_unique<MainFrame>(session)));
  }
  void Close(Window& window) {
    session.Windows.RunEvent([&] { session.Windows.Unload(window); });
  }

  RecordingPlatform machine;
  Session session;
};

void MeasureLists(Station& station, sqlite3* file) {
  Session& session = station.session;
  const Selection selections[] = {
      {"all", "WHERE DateValue(DataQso)>=DateValue('01/01/1900')", "\"DataQso\">='1900-01-01'"},
      {"one band, one mode", "WHERE Banda='  2 m' AND Modo in ('SSB')",
       Same("\"Banda\"") + "='  2 m' AND " + Same("\"Modo\"") + " IN ('SSB')"}};
  const Award awards[] = {{"SField", Same("substr(\"Locator\",1,2)")},
                          {"SSQuare", Same("substr(\"Locator\",1,4)")},
                          {"SPrefissi", Same("\"Prefisso\""), false, true},
                          {"SContinenti", Same("\"Continente\"")},
                          {"SZone", "\"Zona CQ\"", true},
                          {"SCountry", Same("\"Country\"")},
                          {"SProvincie", Same("\"Provincia\""), false, true}};
  for (const Selection& selection : selections) {
    std::printf("\nselection: %s\n%-34s %10s %10s %7s %8s\n", selection.name, "list", "ms",
                "by hand", "ratio", "entries");
    for (const Award& award : awards) {
      session.QueryText = selection.text;
      AwardGrid* window = nullptr;
      const double ours = Time([&] {
        if (window != nullptr) station.Close(*window);
        window = static_cast<AwardGrid*>(session.Windows.LoadNew(award.window));
      });
      std::int64_t groups = 0;
      const double hand = Time([&] { groups = ByHand(file, Grouped(award, selection)); });
      const std::int64_t entries = window->Spread1.Rows() - 1;
      std::printf("%-34s %10.1f %10.1f %7.2f %8lld\n", award.window, ours, hand, ours / hand,
                  static_cast<long long>(entries));
      for (const AwardPage& page : AwardPages()) {
        if (page.window != award.window) continue;
        const double paging = Time([&] { window->FindCommand(page.command)->Press(); });
        const double asking = Time([&] {
          ContactsByHand(file, award, selection, window->Spread1,
                         AwardMemberOf(award.window).qslColumn);
        });
        std::printf("  %-32s %10.1f %10.1f %7.2f   contacts by hand %.1f, %.2f\n",
                    page.command.data(), paging, hand, paging / hand, asking, paging / asking);
        std::fflush(stdout);
      }
      station.Close(*window);
    }
  }
}

void MeasureMatrix(Station& station, WorkedMatrix& matrix, const char* name) {
  std::mt19937_64 random(2);
  constexpr int kSearches = 200;
  std::vector<double> times;
  for (int i = 0; i < kSearches; ++i) {
    const auto any = [&](unsigned below) { return random() % below; };
    matrix.CallQso.SetText(fmt::format("{}{}{:05}", CountryOf(static_cast<int>(any(kCountries))),
                                       any(3), any(100000)));
    matrix.Locator.SetText(fmt::format("{}{}{:02}AB", static_cast<char>('H' + any(6)),
                                       static_cast<char>('H' + any(6)), any(100)));
    const double begin = Now();
    station.session.Windows.RunEvent([&] { matrix.Search(); });
    times.push_back(Now() - begin);
  }
  std::sort(times.begin(), times.end());
  std::printf("%-34s %10.2f %10.2f %10.2f\n", name, times[kSearches / 2],
              times[kSearches * 95 / 100], times.back());
  std::fflush(stdout);
}

void MeasureMatrices(Station& station) {
  Session& session = station.session;
  session.SaveSetting("HrdMode", "ModiUsati", "SSB,CW,FM,RTTY,FT8,");
  auto& byBand = static_cast<Hrd&>(*session.Windows.LoadNew("Hrd"));
  auto& byMode = static_cast<HrdMode&>(*session.Windows.LoadNew("HrdMode"));
  std::printf("\n%-34s %10s %10s %10s\n", "search, ms", "median", "95 of 100", "longest");
  MeasureMatrix(station, byBand, "13 bands, all modes");
  byBand.Modo.SetText("SSB");
  MeasureMatrix(station, byBand, "13 bands, one mode");
  byMode.Banda.SetText("  2 m");
  MeasureMatrix(station, byMode, "5 modes, one band");
}

}  // namespace
}  // namespace brenvo

int main(int argc, char** argv) {
  using namespace brenvo;
  const int contacts = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
  ScratchDatabase scratch;
  sqlite3* file = nullptr;
  sqlite3_open(scratch.File().c_str(), &file);
  Fill(file, contacts);
  Run(file, "PRAGMA journal_mode=WAL");
  sqlite3_close(file);
  for (const char* name : {"Country", "Provincie", "Square", "Zone"}) {
    std::ofstream(scratch.Path() / (std::string(name) + ".html"))
        << "<tr></tr><tr>[COUNTRY][PROVINCIA][SQUARE][ZONA][QSL][DATA][CALL][MODO][PROP]</tr>";
  }
  sqlite3_open_v2(scratch.File().c_str(), &file, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX,
                  nullptr);
  Run(file, "PRAGMA cache_size=-32768");
  std::printf("%d contacts\n", contacts);
  {
    Station station(scratch.Path());
    MeasureLists(station, file);
    MeasureMatrices(station);
  }
  sqlite3_close(file);
  return 0;
}
