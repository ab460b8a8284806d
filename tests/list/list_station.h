// A station with a list of contacts.
#pragma once

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "core/colonne.h"
#include "core/shared_windows.h"
#include "list/elenco.h"
#include "tests/support/station.h"

namespace brenvo::list {

// Shows what it is asked for.
class LogStandIn : public core::LogWindow {
 public:
  explicit LogStandIn(core::Session& session)
      : core::LogWindow(session.Host(), "LogForm", "Log", base::Twips(3000), base::Twips(3000)),
        session_(session) {}
  void Load() override {
    session_.Opened.CurrentLogForm = this;
    session_.Opened.LogOpen = true;
  }
  void Unload() override { session_.Opened.CurrentLogForm = nullptr; }
  std::vector<std::string> shown;
  std::string ShownCall() const override { return {}; }

 protected:
  void ReceiveSelection() override { shown.push_back(session_.Handed.QueryText); }

 private:
  core::Session& session_;
};

class ListStation : public StationTest {
 protected:
  ListStation() {
    Know<Elenco>("Elenco");
    Know<core::Colonne>("Colonne");
    Know<LogStandIn>("LogForm");
  }
  // Of 03/02/2001, so many minutes after ten o'clock.
  void Add(const std::string& call, int minute, const std::string& band = "  2 m",
           const std::function<void(engine::EditableRecordset&)>& more = {}) {
    session.Contacts.Add(
        core::ContactTable::kLog, *session.Tables.TbLog, [&](engine::EditableRecordset& row) {
          row.Set("DataQso", base::DateTime::Of(2001, 2, 3, 10 + minute / 60, minute % 60));
          row.Set("Call", call);
          row.Set("Banda", band);
          if (more) more(row);
        });
    WaitForFollowers();
  }
  void Change(std::int64_t qsoNr, const std::string& column, const engine::Value& value) {
    session.Tables.TbLog->SetBookmark({qsoNr});
    session.Contacts.Change(core::ContactTable::kLog, *session.Tables.TbLog,
                            [&](engine::EditableRecordset& row) { row.Set(column, value); });
    WaitForFollowers();
  }
  void Delete(std::int64_t qsoNr) {
    session.Tables.TbLog->SetBookmark({qsoNr});
    session.Contacts.Delete(core::ContactTable::kLog, *session.Tables.TbLog);
    WaitForFollowers();
  }
  // What was stored has come to those who look.
  void WaitForFollowers() { machine.Advance(core::ContactsLater::kPause); }
  // What the background has read is taken over.
  void Wait() { machine.Advance(50); }

  static int ColumnOf(forms::Grid& grid, std::string_view heading) {
    for (int i = 0; i < grid.Columns(); ++i) {
      if (grid.Cell(0, i).starts_with(heading)) return i;
    }
    ADD_FAILURE() << "no column " << heading;
    return 0;
  }
  static std::vector<std::string> Column(forms::Grid& grid, std::string_view heading = "Call") {
    std::vector<std::string> cells;
    const int column = ColumnOf(grid, heading);
    for (std::int64_t row = 1; row < grid.Rows(); ++row) cells.push_back(grid.Cell(row, column));
    return cells;
  }
  void Filter(forms::DataGrid& grid, std::string_view heading, std::string_view text) {
    Event([&] { grid.Arranger()->SetFilterText(ColumnOf(grid, heading), text); });
  }
  void Sort(forms::DataGrid& grid, std::string_view heading, bool add = false) {
    Event([&] { grid.Arranger()->SortBy(ColumnOf(grid, heading), add); });
  }
  void Mark(forms::DataGrid& grid, std::int64_t from, std::int64_t to) {
    Event([&] { grid.Arranger()->Mark(from, to, true); });
  }
  void ClickRow(forms::Grid& grid, std::int64_t row) {
    Event([&] { grid.ClickCell(row, 0); });
  }
};

}  // namespace brenvo::list
