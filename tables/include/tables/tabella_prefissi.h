// The prefix table: the operator's upkeep, and the log's pick dialog.
#pragma once

#include <string>

#include "core/data_source.h"
#include "core/session.h"
#include "core/shared_windows.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::tables {

// A double click chooses the row and closes the window, while the Tag asks for that.
class TabellaPrefissi : public core::PrefixPicker {
 public:
  explicit TabellaPrefissi(core::Session& session);

  void Load() override;
  void Unload() override;

  forms::TextField Codice{*this, "Codice", {.caption = "Prefisso", .characters = 9}};
  forms::ListField Country{
      *this, "Country", forms::ListStyle::kDropDown, {.caption = "Country", .characters = 24}};
  forms::TextField ZonaCQ{*this, "ZonaCQ", {.caption = "Zona CQ", .characters = 4}};
  forms::TextField ZonaITU{*this, "ZonaITU", {.caption = "Zona ITU", .characters = 4}};
  forms::TextField Continente{*this, "Continente", {.caption = "Continente", .characters = 4}};
  forms::DataGrid Spread1{*this, "Spread1"};
  forms::ToolBar Toolbar1{*this, "Toolbar1", {&cmInsert, &cmUpdate, &cmDelete, &cmSearch, &cmExit}};
  // What was stored last.
  forms::Label Avviso{*this, "Avviso"};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

  forms::Command cmInsert{
      *this,
      "cmInsert",
      "Inserisci",
      {.tip = "Inserisce il prefisso", .shortcut = "F2", .run = [this] { Insert(); }}};
  forms::Command cmUpdate{
      *this,
      "cmUpdate",
      "Aggiorna",
      {.tip = "Aggiorna il prefisso", .shortcut = "F3", .run = [this] { Update(); }}};
  forms::Command cmDelete{
      *this,
      "cmDelete",
      "Cancella",
      {.tip = "Cancella il prefisso", .shortcut = "F4", .run = [this] { Delete(); }}};
  forms::Command cmSearch{
      *this, "cmSearch", "Ricerca", {.tip = "Cerca il prefisso", .shortcut = "F8", .run = [this] {
                                       Find();
                                     }}};
  forms::Command cmExit{
      *this, "cmExit", "Esci", {.tip = "Chiude la tabella", .run = [this] { Leave(); }}};

  void Insert();
  void Update();
  void Delete();
  void Find();
  void Leave();

 private:
  bool ValidatePrefix() const;
  void Store();
  void SortBy(int column);
  void OnRowClick();
  void OnRowPick();
  // Fills the fields from the current row.
  void ShowPrefix();
  // Makes the row under the pointer the current one; false when there is none.
  bool GoToRow();

  core::Session& session_;
  core::DataSource data1_;
};

}  // namespace brenvo::tables
