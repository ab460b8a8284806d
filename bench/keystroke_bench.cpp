// Links: log recorder database_maker
// What a keystroke costs while a contact is typed, on logs of 10,000 to 1,000,000 contacts: the
// log's own events, and the same questions asked by hand with statements prepared once. Processor
// time of this thread, a line an event: median, 99th percentile, and their ratios to by hand.
//
//   keystroke_bench [CONTACTS...]
#include <fmt/format.h>
#include <sqlite3.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "base/text.h"
#include "log/log_form.h"
#include "recorder/recording_platform.h"
#include "tests/support/scratch_database.h"
#include "tools/mkdatabase/database_maker.h"

namespace brenvo {
namespace {

constexpr int kEvents = 20000;
constexpr std::array<std::string_view, 6> kBands = {" 80 m", " 40 m", " 20 m",
                                                    "  6 m", "  2 m", " 70cm"};
struct Home {
  std::string_view prefix, country, field;
};
constexpr std::array<Home, 8> kHomes = {{{"IK3", "I", "JN"},
                                         {"DL1", "DL", "JO"},
                                         {"F6", "F", "IN"},
                                         {"S51", "S5", "JN"},
                                         {"OE5", "OE", "JN"},
                                         {"HB9", "HB", "JN"},
                                         {"9A1", "9A", "JN"},
                                         {"OK1", "OK", "JO"}}};

std::string CallOf(std::int64_t number) {
  const auto letter = [&](std::int64_t by) { return static_cast<char>('A' + number / by % 26); };
  return fmt::format("{}{}{}{}{}", kHomes[static_cast<std::size_t>(number % 8)].prefix,
                     letter(8 * 26 * 26 * 26), letter(8 * 26 * 26), letter(8 * 26), letter(8));
}

std::string LocatorOf(std::int64_t number) {
  return fmt::format("{}{}{}{}{}", kHomes[static_cast<std::size_t>(number % 8)].field,
                     number / 8 % 10, number / 80 % 10, static_cast<char>('A' + number % 24),
                     static_cast<char>('A' + number / 24 % 24));
}

class Hand {
 public:
  Hand(sqlite3* file, std::string_view sql) {
    if (sqlite3_prepare_v3(file, sql.data(), static_cast<int>(sql.size()),
                           SQLITE_PREPARE_PERSISTENT, &statement_, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(file));
    }
  }
  ~Hand() { sqlite3_finalize(statement_); }
  Hand(const Hand&) = delete;
  Hand& operator=(const Hand&) = delete;

  void Ask(std::initializer_list<std::string_view> texts) {
    sqlite3_reset(statement_);
    int at = 0;
    for (const std::string_view text : texts) {
      sqlite3_bind_text(statement_, ++at, text.data(), static_cast<int>(text.size()),
                        SQLITE_TRANSIENT);
    }
  }
  bool Step() { return sqlite3_step(statement_) == SQLITE_ROW; }
  bool Finds(std::initializer_list<std::string_view> texts) {
    Ask(texts);
    const bool found = Step();
    if (!found) sqlite3_reset(statement_);
    return found;
  }
  std::string Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    return text == nullptr ? std::string() : text;
  }
  void Done() { sqlite3_reset(statement_); }

 private:
  sqlite3_stmt* statement_ = nullptr;
};

// A log window on so many contacts, and the same file once more for the hand.
class Station {
 public:
  explicit Station(std::int64_t contacts) : contacts_(contacts) {
    const auto data = std::filesystem::path(SOURCE_DIR) / "data";
    const auto database = directory_.Path() / "Brenvo.mdb";
    MakeDatabase(data / "schema.sql", data, database);
    sqlite3_open(database.c_str(), &File);
    Fill();
    session_.Open();
    session_.Windows.Register("LogForm", [this] { return std::make_unique<LogForm>(session_); });
    Log = static_cast<LogForm*>(session_.Windows.LoadNew("LogForm"));
    session_.Windows.Show(*Log);
    Log->Key("cmClear").Press();
    Log->Banda.SetText("  2 m");
  }
  ~Station() {
    session_.CloseTables();
    sqlite3_close(File);
  }
  std::int64_t Contacts() const { return contacts_; }

  LogForm* Log = nullptr;
  sqlite3* File = nullptr;

 private:
  void Fill() {
    const auto run = [&](const char* sql) { sqlite3_exec(File, sql, nullptr, nullptr, nullptr); };
    run("PRAGMA synchronous=OFF; BEGIN");
    {
      Hand insert(File,
                  "INSERT INTO Log (DataQso,Call,Banda,Locator,Country,QslRicevuta,Qra,Qth,Qrb) "
                  "VALUES (?,?,?,?,?,CAST(? AS INTEGER),'MARIO','PADOVA',100)");
      const DateTime first = DateTime::Of(1980, 1, 1);
      for (std::int64_t i = 0; i < contacts_; ++i) {
        const std::int64_t number = i * 7919 % (contacts_ / 3);
        insert.Finds({IsoText(DateTime::FromSeconds(first.Seconds() + i * 300)), CallOf(number),
                      kBands[static_cast<std::size_t>(i % 6)], LocatorOf(number),
                      kHomes[static_cast<std::size_t>(number % 8)].country,
                      i % 3 == 0 ? "-1" : "0"});
      }
    }
    run("COMMIT; PRAGMA cache_size=-32768");
  }

  std::int64_t contacts_;
  ScratchDirectory directory_;
  RecordingPlatform machine_{[](const std::string&) {}};
  Session session_{machine_, directory_.Path()};
};

// The questions of the log, in plain SQL.
class ByHand {
 public:
  ByHand(sqlite3* file, std::string qsoNr) : file_(file), qsoNr_(std::move(qsoNr)) {}

  std::string Call(std::string_view call) { return Status(callStatus_, call, "Call"); }
  std::string Square(std::string_view locator) {
    return Status(squareStatus_, locator.substr(0, 4), "Square");
  }
  std::string Country(std::string_view code) {
    std::vector<std::string> provinces;
    provinces_.Ask({code});
    while (provinces_.Step()) provinces.push_back(provinces_.Text(0));
    provinces_.Done();
    return Status(countryStatus_, code, "Country");
  }
  std::string CallLeft(std::string_view call, std::string_view prefix, bool countryShown) {
    if (known_.Finds({call})) {
      const std::array<std::string, 4> row = {known_.Text(0), known_.Text(1), known_.Text(2),
                                              known_.Text(3)};
      known_.Done();
      Square(row[2]);
    }
    if (countryShown) Country("");
    std::string code;
    for (int resolvedThenRead = 0; resolvedThenRead < 2; ++resolvedThenRead) {
      if (prefix_.Finds({prefix})) {
        code = prefix_.Text(1);
        prefix_.Done();
      }
    }
    if (country_.Finds({code})) {
      const std::string shown = country_.Text(0) + country_.Text(1);
      country_.Done();
    }
    return Country(code);
  }

 private:
  struct Pair {
    Hand confirmed, worked;
  };
  Pair StatusOf(std::string_view key) {
    const auto sql = [&](std::string_view more) {
      return fmt::format(
          "SELECT \"Call\" FROM \"Log\" WHERE rtrim({}) COLLATE NOCASE = ?1 {} AND "
          "rtrim(\"Banda\") "
          "COLLATE NOCASE = ?2 AND \"QsoNr\" <> CAST(?3 AS INTEGER)",
          key, more);
    };
    return {Hand(file_, sql("AND \"QslRicevuta\" = -1")), Hand(file_, sql(""))};
  }
  std::string Status(Pair& pair, std::string_view key, std::string_view subject) {
    for (const auto& [hand, word] :
         {std::pair{&pair.confirmed, "Conf"}, {&pair.worked, "Worked"}}) {
      if (!hand->Finds({key, "  2 m", qsoNr_})) continue;
      hand->Done();
      return fmt::format("{} {}", subject, word);
    }
    return fmt::format("New {}", subject);
  }

  sqlite3* file_;
  std::string qsoNr_;
  Pair callStatus_ = StatusOf("\"Call\"");
  Pair squareStatus_ = StatusOf("substr(\"Locator\", 1, 4)");
  Pair countryStatus_ = StatusOf("\"Country\"");
  Hand provinces_{file_,
                  "SELECT substr(\"Provincia\" || '     ', 1, 5) || \"Descrizione\" FROM "
                  "\"Provincie\" WHERE rtrim(\"Country\") COLLATE NOCASE = ? ORDER BY rowid"};
  Hand known_{file_,
              "SELECT \"Qra\",\"Qth\",\"Locator\",\"Qrb\" FROM \"Log\" WHERE rtrim(\"Call\") "
              "COLLATE NOCASE = ? ORDER BY rowid LIMIT 1"};
  Hand prefix_{file_,
               "SELECT \"Prefisso\",\"Country\",\"Zona CQ\",\"Zona ITU\",\"Continente\" FROM "
               "\"Prefissi\" WHERE rtrim(\"Prefisso\") COLLATE NOCASE = ? ORDER BY \"Zona CQ\" "
               "LIMIT 1"};
  Hand country_{file_,
                "SELECT \"Country\",\"Descrizione\" FROM \"Country\" WHERE rtrim(\"Country\") "
                "COLLATE NOCASE = ?"};
};

double Now() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

// Microseconds of each run.
class Times {
 public:
  void Measure(const std::function<void()>& work) {
    const double start = Now();
    work();
    times_.push_back(Now() - start);
  }
  double At(double share) {
    std::sort(times_.begin(), times_.end());
    return times_[static_cast<std::size_t>(share * static_cast<double>(times_.size() - 1))];
  }

 private:
  std::vector<double> times_;
};

struct Measured {
  Times program, hand;
  int differing = 0;  // answers that were not the same
};

void Report(std::int64_t contacts, std::string_view event, Measured& measured) {
  const double p50 = measured.program.At(0.5), p99 = measured.program.At(0.99);
  const double hand50 = measured.hand.At(0.5), hand99 = measured.hand.At(0.99);
  fmt::print("{:>9} {:<16} {:>9.1f} {:>9.1f} {:>9.1f} {:>9.1f} {:>8.2f} {:>8.2f}{}\n", contacts,
             event, p50, p99, hand50, hand99, p50 / hand50, p99 / hand99,
             measured.differing == 0 ? "" : "  ANSWERS DIFFER");
  std::fflush(stdout);
}

void Run(std::int64_t contacts) {
  Station station(contacts);
  LogForm& log = *station.Log;
  ByHand hand(station.File, log.QsoNr.Text());
  std::mt19937_64 random(1);
  // Half of the calls are in the log.
  std::uniform_int_distribution<std::int64_t> any(0, contacts / 3 * 2);
  const auto panel = [&](int number) { return log.StatusBar1.Panel(number); };

  Measured call;
  for (int i = 0; i < kEvents; ++i) {
    const std::string text = CallOf(any(random));
    std::string byHand;
    call.program.Measure([&] { log.CallQso.SetText(text); });
    call.hand.Measure([&] { byHand = hand.Call(text); });
    call.differing += byHand != panel(2);
  }
  Report(contacts, "OnCallChange", call);

  Measured locator;
  for (int i = 0; i < kEvents; ++i) {
    std::string text = LocatorOf(any(random));
    if (i % 4 == 0) text[0] = 'K';
    if (text == log.Locator.Text()) continue;
    std::string byHand;
    locator.program.Measure([&] { log.Locator.SetText(text); });
    locator.hand.Measure([&] { byHand = hand.Square(text); });
    locator.differing += byHand != panel(4);
  }
  Report(contacts, "OnLocatorChange", locator);

  Measured country;
  for (int i = 0; i < kEvents; ++i) {
    const auto& list = log.Country.Items();
    const std::string text =
        i % 2 == 0 ? PadRight(kHomes[static_cast<std::size_t>(any(random) % 8)].country, 5)
                   : list[static_cast<std::size_t>(any(random)) % list.size()];
    if (text == log.Country.Text()) continue;
    std::string byHand;
    country.program.Measure([&] { log.Country.SetText(text); });
    country.hand.Measure([&] { byHand = hand.Country(RTrim(Left(text, 5))); });
    country.differing += byHand != panel(3);
  }
  Report(contacts, "OnCountryChange", country);

  Measured left;
  for (int i = 0; i < kEvents / 4; ++i) {
    const std::int64_t number = any(random);
    const std::string text = CallOf(number);
    log.CallQso.SetText(text);
    const bool countryShown = !log.Country.Text().empty();
    std::string byHand;
    left.program.Measure([&] { log.CallQso.Leave(); });
    left.hand.Measure([&] {
      byHand =
          hand.CallLeft(text, kHomes[static_cast<std::size_t>(number % 8)].prefix, countryShown);
    });
    left.differing += byHand != panel(3);
  }
  Report(contacts, "OnCallLeave", left);
}

}  // namespace
}  // namespace brenvo

int main(int argc, char** argv) {
  std::vector<std::int64_t> sizes;
  for (int i = 1; i < argc; ++i) sizes.push_back(std::stoll(argv[i]));
  if (sizes.empty()) sizes = {10000, 100000, 1000000};
  fmt::print("{:>9} {:<16} {:>9} {:>9} {:>9} {:>9} {:>8} {:>8}\n", "contacts", "event", "p50 us",
             "p99 us", "hand p50", "hand p99", "ratio", "p99 r.");
  for (const std::int64_t size : sizes) brenvo::Run(size);
}
