// What goes through the whole log: the two batches, the ADIF file, labels, a report, the QSL
// update. By hand: the same rows read and written, without what the program makes of them.
#include <fmt/format.h>

#include <fstream>
#include <functional>
#include <string>

#include "base/text.h"
#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "core/prefix.h"
#include "log/log_form.h"
#include "log/propagation_batch.h"
#include "print/qsl_update.h"
#include "print/report_runner.h"
#include "print/stampa_qsl.h"

namespace brenvo::bench {
namespace {

class BatchTasks {
 public:
  BatchTasks(const Figures& figures, BenchStation& station)
      : figures_(figures), station_(station) {}

  void Run() {
    Export();
    Labels();
    Report();
    Propagations();
    Prefixes();
    UpdateForQsl();
  }

 private:
  using Work = std::function<void()>;
  void Compare(std::string_view task, int runs, const Work& program, const Work& hand) {
    figures_.Compare(station_.contacts, task, runs, program, hand);
  }
  int Runs() const { return station_.contacts > 200'000 ? 2 : 3; }
  void Yes() { station_.machine.Messages().QueueAnswer(true); }
  void No() { station_.machine.Messages().QueueAnswer(false); }

  void Export() {
    if (!figures_.Wants("Log.ADI of all")) return;
    auto& log = station_.Open<log::LogForm>("LogForm");
    Hand rows(station_.file,
              "SELECT Call,DataQso,Banda,Modo,QrkDato,QrkRicevuto,QslInviata,QslRicevuta,Qra,"
              "Frequenza,Manager FROM Log ORDER BY DataQso,QsoNr");
    Compare(
        "Log.ADI of all", Runs(),
        [&] {
          No();
          log.cmAllQso.Press();
        },
        [&] {
          std::ofstream file(station_.directory.Path() / "hand.adi", std::ios::binary);
          while (rows.Step()) {
            for (int i = 0; i < 11; ++i) {
              const std::string cell = rows.Cell(i);
              file << "<field:" << cell.size() << '>' << cell << " \r\n";
            }
            file << "<eor>\r\n";
          }
          rows.Done();
        });
    station_.Close(log);
  }

  void Labels() {
    auto& labels = station_.Open<print::StampaQsl>("StampaQsl");
    labels.DatiQso.SetOn(true);
    Hand rows(station_.file,
              "SELECT Call,QrkDato,Banda,Modo,Note,DataQso,Frequenza,QslRicevuta FROM Log WHERE "
              "QslDaInviare<>0 OR (QslRicevuta<>0 AND QslInviata=0)");
    Compare(
        "labels of all to send", Runs(), [&] { labels.Print(); }, [&] { rows.ReadAll(); });
    station_.Close(labels);
  }

  void Report() {
    const core::Session& session = station_.session;
    Hand fill(station_.file, "INSERT INTO SLog SELECT * FROM Log ORDER BY DataQso");
    Hand empty(station_.file, "DELETE FROM SLog");
    Hand rows(station_.file, "SELECT * FROM SLog ORDER BY DataQso,rowid");
    Compare(
        "report of all, staging included", Runs(),
        [&] {
          engine::Database& db = station_.session.Db;
          db.Execute("DELETE FROM SLog");
          db.Execute("INSERT INTO SLog SELECT * FROM Log  ORDER BY DataQso");
          print::RunReport(station_.session, session.File("\\logv.rpt"));
        },
        [&] {
          empty.ReadAll();
          fill.ReadAll();
          rows.ReadAll();
        });
    station_.session.Db.Execute("DELETE FROM SLog");
  }

  void Propagations() {
    Hand rows(station_.file, "SELECT QsoNr,Note FROM Log WHERE Note IS NOT NULL");
    Hand write(station_.file, "UPDATE Log SET Propagazione=?2,Note=?3 WHERE QsoNr=?1");
    Compare(
        "propagazione", 1, [&] { log::AssignPropagations(station_.session); },
        [&] {
          // The notes have been turned already: as many of them are written once more.
          std::int64_t left = station_.contacts / 200;
          std::vector<std::int64_t> keys;
          while (rows.Step()) {
            if (left-- > 0) keys.push_back(rows.Key());
            rows.Touch();
          }
          rows.Done();
          RunByHand(station_.file, "BEGIN");
          for (const std::int64_t key : keys) {
            write.Number(1, key).Text(2, "E sporadico").Text(3, "tks qso");
            write.Step();
            write.Done();
          }
          RunByHand(station_.file, "COMMIT");
        });
  }

  void Prefixes() {
    Hand rows(station_.file, "SELECT QsoNr,Call FROM Log ORDER BY QsoNr");
    Hand prefix(station_.file,
                "SELECT Prefisso,\"Zona CQ\",\"Zona ITU\",Continente FROM Prefissi WHERE "
                "rtrim(Prefisso) COLLATE NOCASE=? ORDER BY \"Zona CQ\",\"Zona ITU\" LIMIT 1");
    Hand write(station_.file,
               "UPDATE Log SET Prefisso=?2,\"Zona CQ\"=?3,\"Zona ITU\"=?4,Continente=?5 WHERE "
               "QsoNr=?1");
    const auto byHand = [&] {
      RunByHand(station_.file, "BEGIN");
      while (rows.Step()) {
        const std::string candidate = core::PrefixCandidate(rows.Cell(1));
        if (candidate.empty() || !prefix.Finds({candidate})) continue;
        write.Number(1, rows.Key())
            .Text(2, base::PadRight(prefix.Cell(0), 5))
            .Number(3, prefix.Key(1));
        write.Number(4, prefix.Key(2)).Text(5, prefix.Cell(3));
        write.Step();
        write.Done();
        prefix.Done();
      }
      rows.Done();
      RunByHand(station_.file, "COMMIT");
    };
    Compare(
        "cmAssegnaPrefissi, the first time", 1,
        [&] {
          Yes();
          station_.frame->cmAssegnaPrefissi.Press();
        },
        byHand);
    Compare("cmAssegnaPrefissi, again", 1,
            [&] {
              Yes();
              station_.frame->cmAssegnaPrefissi.Press();
            },
            {});
  }

  void UpdateForQsl() {
    if (!figures_.Wants("cmQslAggiorna")) return;
    constexpr const char* kDue = "QslDaInviare<>0 OR (QslRicevuta<>0 AND QslInviata=0)";
    RunByHand(station_.file, fmt::format("CREATE TEMP TABLE Due AS SELECT QsoNr,QslDaInviare AS d,"
                                         "QslInviata AS i FROM Log WHERE {}",
                                         kDue)
                                 .c_str());
    Samples program, byHand;
    Yes();
    program.Measure([&] { print::UpdateLogForQsl(station_.session); });
    RunByHand(station_.file,
              "UPDATE Log SET QslDaInviare=d,QslInviata=i FROM Due WHERE "
              "Due.QsoNr=Log.QsoNr");
    Hand write(station_.file,
               fmt::format("UPDATE Log SET QslInviata=-1,QslDaInviare=0 WHERE {}", kDue));
    byHand.Measure([&] { write.ReadAll(); });
    figures_.Line(station_.contacts, "cmQslAggiorna", program, byHand);
  }

  const Figures& figures_;
  BenchStation& station_;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("batch", argc, argv);
  for (const std::int64_t size : figures.Sizes()) {
    BenchStation station(size);
    BatchTasks(figures, station).Run();
  }
}
