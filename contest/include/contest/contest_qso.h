// The log of a contest: its contacts in a grid, and what can be done with them.
#pragma once

#include <string>
#include <string_view>

#include "contest/auto_call.h"
#include "core/data_source.h"
#include "core/session.h"
#include "core/told_contact.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/status_bar.h"
#include "forms/window.h"

namespace brenvo::contest {

// The rows of the log; what the grid fails in is not told.
class ContactRows : public core::DataSource {
 public:
  using core::DataSource::DataSource;
  std::string CellText(std::int64_t row, std::size_t field) override;
  void DeleteRow(std::int64_t row) override;

 private:
  void DeleteCurrent() override;
};

// Several can be open side by side: each keeps the contest that it was opened for.
class ContestQso : public forms::Window {
 public:
  explicit ContestQso(core::Session& session);
  ~ContestQso() override;

  void Load() override;
  void Unload() override;  // offers the transfer of marked contacts into the station's log

  // See take_contact.h.
  [[nodiscard]] bool Take(const core::ToldContact& told);

  ContactRows Data1;
  forms::DataGrid QC{*this, "QC", {.hint = "Doppio click per aggiornare"}};
  forms::Command cmNew{*this, "cmNew", "&New Qso", [this] { OpenEntry("I"); }};
  forms::Command cmStatistiche{*this, "cmStatistiche", "&Statistiche",
                               [this] { OpenStatistics(); }};
  forms::Command cmCheckCall{*this, "cmCheckCall", "&Check call", [this] { OpenCheckCall(); }};
  forms::Command cmAutoCall{*this, "cmAutoCall", "&Start call", [this] { autoCall_.Press(); }};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

 private:
  // Whether a contact with that call stands there at that minute, or one beside it.
  bool HasAtItsTime(const core::ToldContact& told, const std::string& where);
  void SetUpGrid();
  void ShowLastRow();
  // Hands the contest's date, band and name to the window that opens next.
  void WriteBack();
  void OpenEntry(std::string_view operation);
  void OpenStatistics();
  void OpenCheckCall();

  core::Session& session_;
  core::ContestContext contest_;
  AutoCall autoCall_;
  forms::Subscription changes_;
};

}  // namespace brenvo::contest
