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

namespace brenvo {

using Texts = std::vector<std::string>;

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
  void Press(Window& window, std::string_view command) {
    Event([&] { window.FindCommand(command)->Press(); });
  }
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
  // A contest with a header, its log open.
  ContestQso& OpenLog(std::string_view date = "07/09/2024", std::string_view band = "  2 m") {
    ContestForm& contest = OpenContest();
    Store(contest, date, band);
    Press(contest, "cmQso");
    return *static_cast<ContestQso*>(machine.Host().Front());
  }
  // Runs `work` inside the next dialogs.
  void InDialogs(std::function<void(Window&)> work) {
    machine.Host().InModal = std::move(work);
  }
};

}  // namespace brenvo
