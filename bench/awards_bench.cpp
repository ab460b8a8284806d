// What awards cost: each list beside its grouped query by hand; each page beside the queries that
// its entries need; each overlay of the map beside its grouped query; a search of the matrices.
#include <fmt/format.h>

#include <cstdlib>
#include <deque>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "awards/award_grid.h"
#include "awards/worked_matrix.h"
#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "maps/award_overlays.h"
#include "maps/map_viewer.h"

namespace brenvo::bench {
namespace {

std::string Same(std::string_view expression) {
  return fmt::format("rtrim({}) COLLATE NOCASE", expression);
}

struct Selection {
  const char* name;
  const char* text;  // as the dialog gives it
  std::string byHand;
  std::string columns;  // what an index made for it begins with
};

struct Award {
  const char* window;
  std::string byHand;  // the key, as an index holds it
  bool number = false;
  bool withCountry = false;  // the country is grouped too
};

std::string Grouped(const Award& award, const Selection& selection) {
  return fmt::format(
      "SELECT {0},\"QslRicevuta\" FROM \"Log\" WHERE {1} AND {0}<>{2} GROUP BY "
      "{0},\"QslRicevuta\"{3} ORDER BY {0},\"QslRicevuta\"",
      award.byHand, selection.byHand, award.number ? "0" : "''",
      award.withCountry ? "," + Same("\"Country\"") : std::string());
}

// The same groups, found one after the other in an index that was made for this question.
std::string GroupsInAnIndex(const Award& award, const Selection& selection) {
  return fmt::format(
      "WITH RECURSIVE Keys(k) AS (SELECT (SELECT {0} FROM Log WHERE {1} AND {0}>{2} ORDER BY {0} "
      "LIMIT 1) UNION ALL SELECT (SELECT {0} FROM Log WHERE {1} AND {0}>k ORDER BY {0} LIMIT 1) "
      "FROM Keys WHERE k IS NOT NULL) SELECT k,mark FROM Keys,(SELECT -1 AS mark UNION ALL SELECT "
      "0) "
      "WHERE EXISTS (SELECT 1 FROM Log WHERE {1} AND {0}=k AND QslRicevuta=mark)",
      award.byHand, selection.byHand, award.number ? "0" : "''");
}

// The contact of each entry of a list, asked for one by one.
void ContactsByHand(sqlite3* file, const Award& award, const Selection& selection,
                    forms::CellGrid& grid, int qslColumn) {
  const auto sql = [&](int confirmed) {
    return fmt::format(
        "SELECT \"DataQso\",\"Call\",\"Modo\",\"Propagazione\" FROM \"Log\" WHERE {} AND {}=? AND "
        "\"QslRicevuta\"={} ORDER BY \"DataQso\" LIMIT 1",
        selection.byHand, award.byHand, -confirmed);
  };
  Hand contacts[] = {{file, sql(0)}, {file, sql(1)}};
  for (std::int64_t row = 1; row < grid.Rows(); ++row) {
    const std::string key = grid.Cell(row, 0);
    Hand& contact = contacts[grid.Cell(row, qslColumn).empty() ? 0 : 1];
    if (award.number) {
      contact.Number(1, std::atoi(key.c_str()));
    } else {
      contact.Text(1, key);
    }
    if (contact.Step()) contact.Touch();
    contact.Done();
  }
}

class AwardTasks {
 public:
  AwardTasks(const Figures& figures, BenchStation& station)
      : figures_(figures), station_(station), session_(station.session) {}

  void Run() {
    Lists();
    Overlays();
    Matrices();
  }

 private:
  int Runs() const { return station_.contacts > 200'000 ? 2 : 5; }

  void Lists() {
    const Selection selections[] = {
        {"all", "WHERE QsoNr>0", "1", ""},
        {"since 1900", "WHERE DateValue(DataQso)>=DateValue('01/01/1900')",
         "\"DataQso\">='1900-01-01'", ""},
        {"2 m SSB", "WHERE Banda='  2 m' AND Modo in ('SSB')",
         Same("\"Banda\"") + "='  2 m' AND " + Same("\"Modo\"") + "='SSB'",
         Same("\"Banda\"") + "," + Same("\"Modo\"") + ","}};
    const Award awards[] = {{"SField", Same("substr(\"Locator\",1,2)")},
                            {"SSQuare", Same("substr(\"Locator\",1,4)")},
                            {"SPrefissi", Same("\"Prefisso\""), false, true},
                            {"SContinenti", Same("\"Continente\"")},
                            {"SZone", "\"Zona CQ\"", true},
                            {"SCountry", Same("\"Country\"")},
                            {"SProvincie", Same("\"Provincia\""), false, true}};
    for (const Selection& selection : selections) {
      for (const Award& award : awards) List(award, selection);
    }
    Notes();
  }

  void List(const Award& award, const Selection& selection) {
    const std::string task = fmt::format("{}, {}", award.window, selection.name);
    if (!figures_.Wants(task)) return;
    session_.Handed.QueryText = selection.text;
    awards::AwardGrid* window = nullptr;
    Hand grouped(station_.file, Grouped(award, selection));
    Samples program, hand;
    for (int run = 0; run < Runs(); ++run) {
      if (window != nullptr) station_.Close(*window);
      program.Measure([&] {
        window = static_cast<awards::AwardGrid*>(session_.Windows.LoadNew(award.window));
      });
      hand.Measure([&] { grouped.ReadAll(); });
    }
    figures_.Line(station_.contacts, task, program, hand,
                  fmt::format("{} entries", window->Spread1.Rows() - 1),
                  AtTheLimit(award, selection));
    for (const awards::AwardPage& page : awards::AwardPages()) {
      if (page.window != award.window) continue;
      figures_.Compare(
          station_.contacts, fmt::format("{} {}, {}", award.window, page.command, selection.name),
          Runs(), [&] { window->FindCommand(page.command)->Press(); },
          [&] {
            ContactsByHand(station_.file, award, selection, window->Spread1,
                           awards::AwardMemberOf(award.window).qslColumn);
          });
    }
    station_.Close(*window);
  }

  // Nothing for a selection by date, which no such index serves.
  Samples AtTheLimit(const Award& award, const Selection& selection) {
    Samples limit;
    if (selection.byHand.starts_with("\"DataQso\"")) return limit;
    RunByHand(station_.file, fmt::format("CREATE INDEX Best ON Log({}{},QslRicevuta)",
                                         selection.columns, award.byHand)
                                 .c_str());
    {
      Hand groups(station_.file, GroupsInAnIndex(award, selection));
      for (int run = 0; run < Runs(); ++run) limit.Measure([&] { groups.ReadAll(); });
    }
    RunByHand(station_.file, "DROP INDEX Best");
    return limit;
  }

  void Notes() {
    Hand notes(station_.file, "SELECT Note,QslRicevuta FROM Log WHERE Note LIKE '%[DCI%'");
    figures_.Compare(
        station_.contacts, "SNote of [DCI", Runs(),
        [&] {
          session_.Handed.QueryText = "WHERE Note LIKE '*[[]DCI*'";
          forms::Window* window = session_.Windows.LoadNew("SNote");
          if (window != nullptr) station_.Close(*window);
        },
        [&] { notes.ReadAll(); });
  }

  void Overlays() {
    struct Overlay {
      const char* name;
      void (*display)(core::Session&);
      const char* map;
      std::string key;
      const char* condition;
    };
    const Overlay overlays[] = {
        {"overlay of fields", maps::DisplayField, "fieldmap.jpg", Same("substr(\"Locator\",1,2)"),
         "Locator<>''"},
        {"overlay of squares", maps::DisplaySquare, "wm.jpg", Same("substr(\"Locator\",1,4)"),
         "Locator<>''"},
        {"overlay of zones", maps::DisplayZone, "wazmap.jpg", "\"Zona CQ\"", "[Zona CQ]<>0"},
        {"overlay of provinces", maps::DisplayItalia, "italia.jpg", Same("\"Provincia\""),
         "Provincia<>'' AND Country='I'"}};
    for (const Overlay& overlay : overlays) {
      if (!figures_.Wants(overlay.name)) continue;
      maps::ShowMapImage(session_, overlay.map);
      session_.Handed.QueryText = fmt::format("WHERE {}", overlay.condition);
      Hand grouped(station_.file, fmt::format("SELECT {0},QslRicevuta FROM Log WHERE {1} GROUP "
                                              "BY {0},QslRicevuta ORDER BY {0},QslRicevuta",
                                              overlay.key, overlay.condition));
      figures_.Compare(
          station_.contacts, overlay.name, Runs(), [&] { overlay.display(session_); },
          [&] { grouped.ReadAll(); });
    }
  }

  // By hand: in each cell of each of the seven rows, whether there is a confirmed contact, and
  // whether there is any.
  void Matrix(awards::WorkedMatrix& matrix, const char* task, const std::vector<std::string>& cells,
              const std::string& cell) {
    if (!figures_.Wants(task)) return;
    Hand contact(station_.file,
                 "SELECT Call,substr(Locator,1,4),Country,Prefisso,\"Zona CQ\",\"Zona ITU\","
                 "Continente,Locator FROM Log WHERE QsoNr>=? AND Locator<>'' LIMIT 1");
    const std::string keys[] = {Same("\"Call\""),      Same("substr(\"Locator\", 1, 4)"),
                                Same("\"Country\""),   Same("\"Prefisso\""),
                                "\"Zona CQ\"",         "\"Zona ITU\"",
                                Same("\"Continente\"")};
    std::deque<Hand> questions;
    for (const std::string& key : keys) {
      for (const char* mark : {" AND QslRicevuta=-1", ""}) {
        questions.emplace_back(
            station_.file,
            fmt::format("SELECT 1 FROM Log WHERE {}=?1 AND {}{} LIMIT 1", key, cell, mark));
      }
    }
    std::mt19937_64 random(2);
    Samples program, hand;
    // By hand a million contacts take a second and more for twenty modes.
    constexpr int kSearches = 300, kSearchesByHand = 30;
    for (int i = 0; i < kSearches; ++i) {
      contact.Number(
          1,
          static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(station_.contacts)) + 1);
      if (!contact.Step()) {
        contact.Done();
        continue;
      }
      std::vector<std::string> values;
      for (int column = 0; column < 8; ++column) values.push_back(contact.Cell(column));
      contact.Done();
      matrix.CallQso.SetText(values[0]);
      matrix.Locator.SetText(values[7]);
      program.Measure([&] { session_.Windows.RunEvent([&] { matrix.Search(); }); });
      if (i >= kSearchesByHand) continue;
      hand.Measure([&] {
        for (std::size_t row = 0; row < std::size(keys); ++row) {
          for (const std::string& each : cells) {
            if (Asks(questions[2 * row], row, values[row], each)) continue;
            Asks(questions[2 * row + 1], row, values[row], each);
          }
        }
      });
    }
    figures_.Line(station_.contacts, task, program, hand);
  }

  static bool Asks(Hand& question, std::size_t row, const std::string& key,
                   const std::string& cell) {
    if (row == 4 || row == 5) {
      question.Number(1, std::atoi(key.c_str()));
    } else {
      question.Text(1, key);
    }
    question.Text(2, cell);
    const bool found = question.Step();
    question.Done();
    return found;
  }

  void Matrices() {
    if (!figures_.WantsAnyOf({"matrix of 18 bands", "matrix of 20 modes"})) return;
    std::vector<std::string> bands;
    Hand known(station_.file, "SELECT Banda FROM UserRTX ORDER BY Frequenza");
    while (known.Step()) bands.push_back(known.Cell(0));
    known.Done();
    const std::vector<std::string> modes = {
        "SSB", "CW",  "FM",   "AM",     "RTTY",   "PSK31", "PSK63", "FT8",    "FT4",    "JT65",
        "JT9", "Q65", "SSTV", "MSK144", "FSK441", "JT6M",  "FST4",  "Olivia", "Packet", "D-STAR"};
    session_.SaveSetting("HrdMode", "ModiUsati", fmt::format("{},", fmt::join(modes, ",")));
    auto& byBand = station_.Open<awards::Hrd>("Hrd");
    Matrix(byBand, "matrix of 18 bands", bands, Same("\"Banda\"") + "=?2");
    station_.Close(byBand);
    auto& byMode = station_.Open<awards::HrdMode>("HrdMode");
    byMode.Banda.SetText("  2 m");
    Matrix(byMode, "matrix of 20 modes", modes,
           Same("\"Banda\"") + "='  2 m' AND " + Same("\"Modo\"") + "=?2");
    station_.Close(byMode);
  }

  const Figures& figures_;
  BenchStation& station_;
  core::Session& session_;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("awards", argc, argv);
  for (const std::int64_t size : figures.Sizes()) {
    BenchStation station(size);
    AwardTasks(figures, station).Run();
  }
}
