// A station with the windows of contests.
#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "contest/check_call_contest.h"
#include "contest/contest_form.h"
#include "contest/contest_new_qso.h"
#include "contest/contest_qso.h"
#include "contest/contest_search.h"
#include "contest/stat_contest.h"
#include "tests/support/station.h"

namespace brenvo::contest {

using Texts = std::vector<std::string>;

inline constexpr std::string_view kDate = "07/09/2024";
inline constexpr std::string_view kBand = "  2 m";

class ContestStation : public StationTest {
 protected:
  ContestStation() {
    Know<ContestForm>("Contest");
    Know<ContestSearch>("ContestSearch");
    Know<ContestQso>("ContestQso");
    Know<ContestNewQso>("ContestNewQso");
    Know<CheckCallContest>("CheckCallContest");
    Know<StatContest>("StatContest");
  }

  ContestForm& OpenContest() { return Open<ContestForm>("Contest"); }
  // Fills the screen for a new contest and stores it.
  void Store(ContestForm& contest, std::string_view date, std::string_view band,
             std::string_view call = "I4ABC") {
    Press(contest, "cmClear");
    contest.DataContest.SetText(date);
    Event([&] { contest.Banda.SetText(band); });
    contest.CallContest.SetText(call);
    Press(contest, "cmInsert");
  }
  // A contact in the file, on the seventh, with its distance as points.
  void AddContact(std::string_view date, std::string_view band, int serial, std::string_view call,
                  std::string_view locator = "JN65AB", int km = 100, std::string_view note = "",
                  bool inLog = false) {
    session.Db.Execute(fmt::format(
        "INSERT INTO [Contest Qso] (DataContest,Banda,ProgrDato,ProgrRicevuto,Giorno,Qtr,Call,"
        "QrkDato,QrkRicevuto,Locator,Modo,Qrb,Punti,[Note],Qsl,InLog) VALUES "
        "('{}','{}',{},{},7,'14:0{}','{}',59,57,'{}','USB',{},{},'{}',False,{})",
        date, band, serial, serial + 100, serial % 10, call, locator, km,
        note.find("Qso doppio") == std::string_view::npos ? km : 0, note,
        inLog ? "True" : "False"));
  }
  // The log of a contest; its header is made the first time.
  ContestQso& OpenLog(std::string_view date = kDate, std::string_view band = kBand) {
    ContestForm& contest = OpenContest();
    if (Rows("select Banda from Contest").empty()) Store(contest, date, band);
    Press(contest, "cmQso");
    return *static_cast<ContestQso*>(machine.Host().Front());
  }
};

// The log of one contest and its entry.
class ContestLogStation : public ContestStation {
 protected:
  void Add(int serial, std::string_view call, std::string_view locator = "JN65AB", int km = 100,
           std::string_view note = "", bool inLog = false) {
    AddContact(kDate, kBand, serial, call, locator, km, note, inLog);
  }
  // Opens the entry for a new contact and runs `work` in it.
  void InEntry(ContestQso& log, const std::function<void(ContestNewQso&)>& work) {
    InDialogs([work](forms::Window& window) {
      work(static_cast<ContestNewQso&>(window));
      window.Close();
    });
    Press(log, "cmNew");
  }
  // The same for a change of the grid's row.
  void InRow(ContestQso& log, std::int64_t row, const std::function<void(ContestNewQso&)>& work) {
    InDialogs([work](forms::Window& window) {
      work(static_cast<ContestNewQso&>(window));
      window.Close();
    });
    Event([&] { log.QC.DoubleClickCell(row, 0); });
  }
  void Type(ContestNewQso& entry, std::string_view call, std::string_view serial,
            std::string_view locator, std::string_view note = "", std::string_view exchange = "") {
    entry.CallQso.SetText(call);
    entry.ProgrR.SetText(serial);
    entry.Locator.SetText(locator);
    entry.Note.SetText(note);
    entry.Exc.SetText(exchange);
  }
};

}  // namespace brenvo::contest
