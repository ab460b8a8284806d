// The country table.
#pragma once

#include "core/session.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::tables {

// Works on the row that the session's country table stands on: the one chosen last from the list.
class TabellaCountry : public forms::Window {
 public:
  explicit TabellaCountry(core::Session& session);

  void Load() override;
  void Unload() override;

  forms::ListField LBCountry{
      *this,
      "LBCountry",
      forms::ListStyle::kOpen,
      {.caption = "Country",
       .hint = "Premi una lettera per ricercare o Click per richiamare i dati del country"}};
  forms::TextField Codice{*this, "Codice", {.caption = "Codice", .characters = 7}};
  forms::TextField Descrizione{*this, "Descrizione", {.caption = "Descrizione", .characters = 20}};
  forms::TextField Locator{*this, "Locator", {.caption = "Locator", .characters = 9}};
  // File names, which come from the list of files.
  forms::TextField Mappa{*this, "Mappa", {.caption = "Mappa", .characters = 16}};
  forms::TextField Flag{*this, "Flag", {.caption = "Flag", .characters = 16}};
  forms::TextField X{*this, "X", {.caption = "X", .characters = 6}};  // pixels on the map
  forms::TextField Y{*this, "Y", {.caption = "Y", .characters = 6}};
  forms::Panel Frame2{
      *this, "Frame2", {.caption = "Validità", .hint = "01/01/9999 indica nessuna data impostata"}};
  // 01/01/9999 for no date.
  forms::DatePicker Validita{*this, "Validita", {.caption = "Dal", .characters = 9}};
  forms::DatePicker Deleted{*this, "Deleted", {.caption = "Al", .characters = 9}};
  forms::ListField File1{
      *this,
      "File1",
      forms::ListStyle::kOpen,
      {.caption = "File disponibili", .hint = "File disponibili. Trascinarli su Mappa o Flag"}};
  forms::Command cmMappa{*this, "cmMappa", "Usa come &mappa", [this] { TakeFile(Mappa); }};
  forms::Command cmFlag{*this, "cmFlag", "Usa come &bandiera", [this] { TakeFile(Flag); }};
  forms::ToolBar Toolbar1{*this, "Toolbar1", {&cmInsert, &cmUpdate, &cmDelete, &cmExit}};
  // What was stored last.
  forms::Label Avviso{*this, "Avviso"};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

  forms::Command cmInsert{
      *this,
      "cmInsert",
      "Inserisci",
      {.tip = "Inserisce il country", .shortcut = "F2", .run = [this] { Insert(); }}};
  forms::Command cmUpdate{
      *this,
      "cmUpdate",
      "Aggiorna",
      {.tip = "Aggiorna il country scelto", .shortcut = "F3", .run = [this] { Update(); }}};
  forms::Command cmDelete{
      *this,
      "cmDelete",
      "Cancella",
      {.tip = "Cancella il country scelto", .shortcut = "F4", .run = [this] { Delete(); }}};
  forms::Command cmExit{
      *this, "cmExit", "Esci", {.tip = "Chiude la tabella", .run = [this] { Leave(); }}};

  void Insert();
  void Update();
  void Delete();
  void Leave();

 private:
  void HandleEvents();
  void TakeFile(forms::TextField& field);
  // The row of the country chosen, on which TbCountry then stands; null without one.
  engine::Table* Chosen();
  void ShowCountry(engine::Recordset& row);
  bool ValidateCountry();
  void Store();
  // Fills the list anew, and stands on the country that was written.
  void ReloadAndSelect();

  core::Session& session_;
};

}  // namespace brenvo::tables
