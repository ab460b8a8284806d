// A station with the delivered rules and the window that works by them.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

#include "contest/insert_qso.h"
#include "gara/gara_contest.h"
#include "tests/gara/rules.h"
#include "tests/support/grid_rows.h"
#include "tests/support/station.h"

namespace brenvo::gara {

inline core::PutContestQso PutInto(core::Session& session) {
  return
      [&session](const auto& contest, const auto& replaced, const auto& typed, const auto& beside) {
        contest::PutQso(session, contest, replaced, typed, beside);
      };
}

class GaraStation : public StationTest {
 protected:
  GaraStation() {
    std::filesystem::copy(DeliveredRules(), directory.Path() / "Contest");
    // 14:00:30 UTC.
    machine.SetNow(base::DateTime::Of(2024, 9, 7, 16, 0, 30));
    Exec("UPDATE [User] SET Call='IK4ABC',Locator='JN54MN'");
    session.Station.MyLocator = "JN54MN";
    session.Windows.Register(
        "GaraContest", [this] { return std::make_unique<GaraContest>(session, PutInto(session)); });
    window = &Open<GaraContest>("GaraContest");
  }
  void Reopen() {
    Event([&] { window->Close(); });
    window = &Open<GaraContest>("GaraContest");
  }
  void Begin(std::string_view rules, std::string_view day) {
    Event([&] { window->Regole.SetText(rules); });
    Event([&] { window->Dal.SetText(day); });
    Press(*window, "cmNuova");
  }
  // As an operator types it: Enter leads on.
  void Work(std::string_view call, std::string_view serial, std::string_view locator) {
    Type(window->Call, call);
    Type(window->SerialeRicevuto, serial);
    Type(window->Locator, locator);
    Event([&] { window->Locator.TypeKey(forms::kEnter); });
  }
  void Later(int minutes) { machine.SetNow(machine.GetClock().Now().Later(minutes * 60)); }
  std::vector<std::string> Stored() {
    return Rows(
        "Select Giorno,Call,ProgrDato,ProgrRicevuto,Locator,Modo,Qrb,Punti,Note from "
        "[Contest Qso] Order By ProgrDato");
  }
  std::vector<std::string> Beside() {
    return Rows(
        "Select Banda,ProgrDato,Quando,Punti,Moltiplicatori,Doppio from GareQso Order By "
        "Banda,ProgrDato");
  }

  GaraContest* window = nullptr;
};

}  // namespace brenvo::gara
