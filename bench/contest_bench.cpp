// A contest of 5,000 contacts, among eleven in the file: what an operator waits for at each contact
// and at the end. By hand: the rows that the task reads, and those that it leaves in the staging
// tables.
#include <fmt/format.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "contest/contest_form.h"
#include "contest/contest_new_qso.h"
#include "contest/stat_contest.h"
#include "core/prefix.h"
#include "tools/mklog/other_stations.h"

namespace brenvo::bench {
namespace {

constexpr int kContacts = 5000;
constexpr const char* kDay = "2024-09-07 00:00:00";
constexpr const char* kWhere =
    " WHERE DataContest>='2024-09-07 00:00:00' AND DataContest<'2024-09-08 00:00:00' AND "
    "rtrim(Banda) COLLATE NOCASE='  2 m'";

void Fill(sqlite3* file) {
  RunByHand(file,
            "BEGIN; INSERT INTO Contest (DataContest,Banda,Nome,Call) VALUES "
            "('2024-09-07 00:00:00','  2 m','IARU VHF','I4ABC')");
  const mklog::OtherStations others(file, 3);
  Hand insert(file,
              "INSERT INTO \"Contest Qso\" VALUES (?1,'  2 m',?2,?2,7,'1899-12-30 14:00:00',?3,59,"
              "59,?4,'USB',?5,?5,?6,0,0)");
  for (int contest = 0; contest < 11; ++contest) {
    const std::string day = contest == 0 ? kDay : fmt::format("2024-{:02}-01 00:00:00", contest);
    for (int i = 0; i < kContacts; ++i) {
      const mklog::OtherStation other = others.Make(static_cast<std::uint64_t>(contest * 2000 + i));
      insert.Text(1, day).Number(2, i + 1).Text(3, other.call).Text(4, other.locator);
      insert.Number(5, other.qrb).Text(6, fmt::format("[Exc={}]", other.provincia));
      insert.Step();
      insert.Done();
    }
  }
  RunByHand(file, "COMMIT");
}

// What statistics and export ask beside the contacts: the country of each prefix once, and each
// different square, country and exchange into its table.
class MultipliersByHand {
 public:
  explicit MultipliersByHand(sqlite3* file)
      : file_(file),
        prefix_(file,
                "SELECT \"Prefisso\",\"Country\",\"Zona CQ\",\"Zona ITU\",\"Continente\" FROM "
                "\"Prefissi\" WHERE rtrim(\"Prefisso\") COLLATE NOCASE = ? ORDER BY \"Zona CQ\" "
                "LIMIT 1"),
        square_(file, "INSERT INTO ContestWWL VALUES (?)"),
        country_(file, "INSERT INTO ContestDXC VALUES (?)"),
        exchange_(file, "INSERT INTO ContestExc VALUES (?)") {}

  struct Columns {
    int call, locator, note;
  };
  void Count(Hand& contacts, Columns columns) {
    RunByHand(
        file_,
        "BEGIN IMMEDIATE; DELETE FROM ContestWWL; DELETE FROM ContestDXC; DELETE FROM ContestExc");
    std::unordered_map<std::string, std::string> countries;
    std::unordered_set<std::string> squares, worked, exchanges;
    while (contacts.Step()) {
      contacts.Touch();
      const std::string prefix = core::PrefixCandidate(contacts.Cell(columns.call));
      if (countries.count(prefix) == 0) {
        countries[prefix] = prefix_.Finds({prefix}) ? prefix_.Cell(1) : "";
        prefix_.Done();
      }
      const std::string text = contacts.Cell(columns.note);
      Keep(squares, square_, contacts.Cell(columns.locator).substr(0, 4));
      if (!countries[prefix].empty()) Keep(worked, country_, countries[prefix]);
      Keep(exchanges, exchange_, text.substr(5, text.size() - 6));
    }
    contacts.Done();
    RunByHand(file_, "COMMIT");
  }

 private:
  static void Keep(std::unordered_set<std::string>& kept, Hand& insert, const std::string& text) {
    if (!kept.insert(text).second) return;
    insert.Text(1, text).Step();
    insert.Done();
  }

  sqlite3* file_;
  Hand prefix_, square_, country_, exchange_;
};

void Run(const Figures& figures) {
  BenchStation station(10'000);
  core::Session& session = station.session;
  Fill(station.file);
  session.Handed.CurrentContest = {"07/09/2024", "  2 m", "IARU VHF", "JN61FV", true, true, true};
  auto& entry = static_cast<contest::ContestNewQso&>(*session.Windows.LoadNew("ContestNewQso"));

  Hand last(station.file, std::string("SELECT max(ProgrDato) FROM \"Contest Qso\"") + kWhere);
  Hand row(station.file,
           std::string("SELECT * FROM \"Contest Qso\"") + kWhere + " AND ProgrDato=5000");
  entry.Operation.SetText("I");
  figures.Compare(
      kContacts, "prepare an entry", 200,
      [&] {
        entry.UltimoProgr = 0;
        entry.Activate();
      },
      [&] {
        last.ReadAll();
        row.ReadAll();
      });
  if (figures.Wants("prepare an entry") && entry.ProgrD.Text() != std::to_string(kContacts + 1)) {
    throw std::runtime_error("wrong serial");
  }

  Hand duplicate(station.file, std::string("SELECT ProgrDato FROM \"Contest Qso\"") + kWhere +
                                   " AND rtrim(Call) COLLATE NOCASE='IK3NEW' AND ProgrDato<>5001");
  entry.ProgrD.SetText(std::to_string(kContacts + 1));
  entry.CallQso.SetText("IK3NEW");
  figures.Compare(
      kContacts, "check a duplicate", 200, [&] { entry.CallQso.Leave(); },
      [&] { duplicate.ReadAll(); });

  Hand some(station.file,
            std::string("SELECT ProgrDato,Call,Locator,Qrb,Punti,Note FROM \"Contest Qso\"") +
                kWhere + " ORDER BY rowid");
  MultipliersByHand multipliers(station.file);
  figures.Compare(
      kContacts, "statistics", 20,
      [&] { session.Windows.Unload(*session.Windows.LoadNew("StatContest")); },
      [&] { multipliers.Count(some, {.call = 1, .locator = 2, .note = 5}); });

  auto& contest = static_cast<contest::ContestForm&>(*session.Windows.LoadNew("Contest"));
  Hand all(station.file, std::string("SELECT * FROM \"Contest Qso\"") + kWhere + " ORDER BY rowid");
  figures.Compare(
      kContacts, "export", 20, [&] { contest.Export(); },
      [&] { multipliers.Count(all, {.call = 6, .locator = 9, .note = 13}); });
  if (figures.Wants("export") &&
      std::filesystem::file_size(session.File("I4ABC.txt")) < kContacts * 40) {
    throw std::runtime_error("short file");
  }
  session.Windows.Unload(contest);
}

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("contest", argc, argv);
  if (figures.WantsAnyOf({"prepare an entry", "check a duplicate", "statistics", "export"})) {
    Run(figures);
  }
}
