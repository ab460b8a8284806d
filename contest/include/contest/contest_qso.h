// The log of a contest: its contacts in a grid, and what can be done with them.
#pragma once

#include <string>
#include <string_view>

#include "contest/auto_call.h"
#include "core/data_source.h"
#include "core/session.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/status_bar.h"
#include "forms/window.h"

namespace brenvo {

// The rows of the log; what the grid fails in is not told.
class ContactRows : public DataSource {
 public:
  using DataSource::DataSource;
  std::string CellText(std::int64_t row, std::size_t field) override;
  void DeleteRow(std::int64_t row) override;
};

// Several can be open side by side: each keeps the contest that it was opened for.
class ContestQso : public Window {
 public:
  explicit ContestQso(Session& session);
  ~ContestQso() override;

  void Load() override;
  void Unload() override;  // offers the transfer of marked contacts into the station's log

  ContactRows Data1;
  DataGrid QC{*this, "QC", {.hint = "Doppio click per aggiornare"}};
  Command cmNew{*this, "cmNew", "&New Qso", [this] { OpenEntry("I"); }};
  Command cmStatistiche{*this, "cmStatistiche", "&Statistiche", [this] { OpenStatistics(); }};
  Command cmCheckCall{*this, "cmCheckCall", "&Check call", [this] { OpenCheckCall(); }};
  Command cmAutoCall{*this, "cmAutoCall", "&Start call", [this] { autoCall_.Press(); }};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

 private:
  void SetUpGrid();
  void ShowLastRow();
  // Hands the contest's date, band and name to the window that opens next.
  void WriteBack();
  void OpenEntry(std::string_view operation);
  void OpenStatistics();
  void OpenCheckCall();

  Session& session_;
  ContestContext contest_;
  AutoCall autoCall_;
  ContactSubscription changes_;
};

}  // namespace brenvo
