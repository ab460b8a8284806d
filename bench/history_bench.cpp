// What the history costs: a contact stored with its name, its station and what was there before,
// beside the same row stored alone; contacts named that have no name yet; works taken back. By
// hand: the same rows deleted or copied by one statement.
#include <fmt/format.h>

#include <random>
#include <string>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "core/contact_origin.h"
#include "core/history.h"
#include "core/transaction.h"
#include "history/take_back.h"

namespace brenvo::bench {
namespace {

namespace column = core::column;
using enum core::ContactTable;

class HistoryTasks {
 public:
  HistoryTasks(const Figures& figures, BenchStation& station)
      : figures_(figures), station_(station), session_(station.session) {}

  void Run() {
    if (figures_.Wants("insert")) Insert();
    if (figures_.Wants("names for all")) Adopt();
    if (figures_.Wants("works taken back")) RandomWorks();
    if (figures_.Wants("import taken back")) Import();
    if (figures_.Wants("emptied log")) Empty();
  }

 private:
  base::DateTime NextTime() {
    return base::DateTime::FromSeconds(base::DateTime::Of(2030, 1, 1).Seconds() + 60 * ++minute_);
  }
  core::ContactDoor::Fill Fill() {
    return [this](engine::EditableRecordset& row) {
      row.Set(column::kDataQso, NextTime());
      row.Set(column::kCall, fmt::format("DL{}ABC", minute_ % 1000));
      row.Set(column::kBanda, "  2 m");
      row.Set(column::kModo, "SSB");
      row.Set(column::kLocator, "JO62QM");
      row.Set(column::kCountry, "DL");
      row.Set(column::kPrefisso, "DL1");
    };
  }

  void Insert() {
    constexpr int kInserts = 1000;
    engine::Table& log = *session_.Tables.TbLog;
    Samples door, alone;
    for (int i = 0; i < kInserts; ++i) {
      door.Measure([&] { session_.Contacts.Add(kLog, log, Fill()); });
      alone.Measure([&] {
        log.AddNew();
        Fill()(log);
        log.Update();
      });
    }
    figures_.Line(station_.contacts, "insert, beside the row alone", door, alone);
  }

  void Adopt() {
    session_.Db.Execute("delete * from LogOrigine");
    Samples named, hand;
    named.Measure([&] { core::AdoptContacts(session_.Db, [](std::int64_t) {}); });
    hand.Measure([&] {
      RunByHand(station_.file,
                "BEGIN IMMEDIATE; CREATE TABLE Names (QsoNr INTEGER PRIMARY KEY, Uuid TEXT, S "
                "INTEGER); INSERT INTO Names SELECT QsoNr, hex(randomblob(18)), 1 FROM Log; CREATE "
                "INDEX NamesIndex ON Names (rtrim(Uuid) COLLATE NOCASE); COMMIT");
    });
    RunByHand(station_.file, "DROP TABLE Names");
    figures_.Line(station_.contacts, "names for all", named, hand);
  }

  void Import() {
    constexpr int kContacts = 100'000;
    core::LogContact contact;
    contact.Call = "DL1ABC";
    contact.Banda = "  2 m";
    session_.Contacts.ChangeMany("Importa", {kLog}, [&] {
      core::Transaction transaction(session_);
      auto rows = session_.Contacts.OpenAppender();
      for (int i = 0; i < kContacts; ++i) {
        contact.DataQso = NextTime();
        rows.Append(contact);
      }
      transaction.Commit();
      return true;
    });
    const auto work = history::LastWork(session_).value();
    Samples back, again, hand;
    back.Measure([&] { Check(history::TakeBack(session_, work), kContacts); });
    const auto undo = history::FindWork(session_, work.Lavoro + 1).value();
    again.Measure([&] { Check(history::TakeBack(session_, undo), kContacts); });
    hand.Measure([&] {
      RunByHand(station_.file, fmt::format("DELETE FROM Log WHERE QsoNr IN (SELECT QsoNr FROM Log "
                                           "ORDER BY QsoNr DESC LIMIT {})",
                                           kContacts)
                                   .c_str());
    });
    figures_.Line(station_.contacts, "import taken back, 100000", back, hand);
    figures_.Line(station_.contacts, "import taken back, and again", again, hand);
  }

  void Empty() {
    const std::int64_t contacts = session_.Tables.TbLog->RecordCount();
    Samples emptied, back, hand;
    emptied.Measure([&] {
      session_.Contacts.ChangeMany("Azzera", {kLog}, [&] {
        core::Transaction transaction(session_);
        session_.Contacts.Past().KeepWhere("");
        session_.Db.Execute("DELETE * FROM Log");
        transaction.Commit();
        return true;
      });
    });
    back.Measure(
        [&] { Check(history::TakeBack(session_, history::LastWork(session_).value()), contacts); });
    hand.Measure([&] {
      RunByHand(station_.file,
                "BEGIN; CREATE TABLE Copy AS SELECT * FROM Log; DELETE FROM Log; INSERT INTO Log "
                "SELECT * FROM Copy; DROP TABLE Copy; COMMIT");
    });
    figures_.Line(station_.contacts, "emptied log", emptied, hand);
    figures_.Line(station_.contacts, "emptied log taken back", back, hand);
  }

  // 10,000 works, then all of them back; the contents must be those of before.
  void RandomWorks() {
    constexpr int kWorks = 10'000;
    std::mt19937 dice(1);
    engine::Table& log = *session_.Tables.TbLog;
    log.SetIndex("");
    log.MoveLast();
    const std::string before = Contents();
    const auto last = history::LastWork(session_);
    const std::int64_t first = last ? last->Lavoro : 0;
    const std::int64_t highest = log.Field("QsoNr").Integer();
    Samples done, back;
    done.Measure([&] {
      for (int i = 0; i < kWorks; ++i) {
        const std::int64_t qsoNr = 1 + static_cast<std::int64_t>(dice() % (highest + 50));
        try {
          if (dice() % 3 == 0) {
            session_.Contacts.Add(kLog, log, Fill());
            continue;
          }
          log.SetBookmark({qsoNr});
          if (dice() % 4 == 0) {
            session_.Contacts.Delete(kLog, log);
          } else {
            session_.Contacts.Change(kLog, log, [&](engine::EditableRecordset& row) {
              row.Set(column::kQra, fmt::format("Q{}", dice() % 100));
            });
          }
        } catch (const engine::DatabaseError& failure) {
          if (failure.Number != engine::DatabaseError::kRecordDeleted) throw;
        }
      }
    });
    int works = 0;
    back.Measure([&] {
      for (auto work = history::LastWork(session_); work && work->Lavoro > first;
           work = history::LastWork(session_)) {
        Check(history::TakeBack(session_, *work), 1);
        ++works;
      }
    });
    if (Contents() != before) throw std::runtime_error("not the contents of the beginning");
    figures_.Line(station_.contacts, "works taken back, done", done, {},
                  fmt::format("{} works", works));
    figures_.Line(station_.contacts, "works taken back", back, {}, "the contents of the beginning");
  }

  std::string Contents() {
    Hand rows(station_.file, "SELECT * FROM Log ORDER BY QsoNr");
    std::size_t hash = 0;
    while (rows.Step()) {
      for (int i = 0; i < 25; ++i)
        hash = hash * 1099511628211ULL ^ std::hash<std::string>()(rows.Cell(i));
    }
    rows.Done();
    return std::to_string(hash);
  }

  static void Check(const history::TakenBack& result, std::int64_t contacts) {
    if (result.taken == contacts) return;
    throw std::runtime_error(fmt::format("{} of {} taken back", result.taken, contacts));
  }

  const Figures& figures_;
  BenchStation& station_;
  core::Session& session_;
  std::int64_t minute_ = 0;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  const brenvo::bench::Figures figures("history", argc, argv);
  for (const std::int64_t contacts : figures.Sizes()) {
    brenvo::bench::BenchStation station(contacts);
    brenvo::bench::HistoryTasks(figures, station).Run();
  }
  return 0;
}
