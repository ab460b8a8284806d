// The country table.
#pragma once

#include "core/session.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

// Works on the row that the session's country table stands on: the one chosen last from the list.
class TabellaCountry : public Window {
 public:
  explicit TabellaCountry(Session& session);

  void Load() override;
  void Unload() override;

  ListField LBCountry{
      *this,
      "LBCountry",
      ListStyle::kOpen,
      {.caption = "Country",
       .hint = "Premi una lettera per ricercare o Click per richiamare i dati del country"}};
  TextField Codice{*this, "Codice", {.caption = "Codice", .characters = 7}};
  TextField Descrizione{*this, "Descrizione", {.caption = "Descrizione", .characters = 20}};
  TextField Locator{*this, "Locator", {.caption = "Locator", .characters = 9}};
  // File names, which come from the list of files.
  TextField Mappa{*this, "Mappa", {.caption = "Mappa", .characters = 16}};
  TextField Flag{*this, "Flag", {.caption = "Flag", .characters = 16}};
  TextField X{*this, "X", {.caption = "X", .characters = 6}};  // pixels on the map
  TextField Y{*this, "Y", {.caption = "Y", .characters = 6}};
  Panel Frame2{
      *this, "Frame2", {.caption = "Validità", .hint = "01/01/9999 indica nessuna data impostata"}};
  // 01/01/9999 for no date.
  DatePicker Validita{*this, "Validita", {.caption = "Dal", .characters = 9}};
  DatePicker Deleted{*this, "Deleted", {.caption = "Al", .characters = 9}};
  ListField File1{
      *this,
      "File1",
      ListStyle::kOpen,
      {.caption = "File disponibili", .hint = "File disponibili. Trascinarli su Mappa o Flag"}};
  Command cmMappa{*this, "cmMappa", "Usa come &mappa", [this] { TakeFile(Mappa); }};
  Command cmFlag{*this, "cmFlag", "Usa come &bandiera", [this] { TakeFile(Flag); }};
  ToolBar Toolbar1{*this, "Toolbar1", {&cmInsert, &cmUpdate, &cmDelete, &cmExit}};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  Command cmInsert{*this,
                   "cmInsert",
                   "Inserisci",
                   {.tip = "Inserisce il country", .shortcut = "F2", .run = [this] { Insert(); }}};
  Command cmUpdate{
      *this,
      "cmUpdate",
      "Aggiorna",
      {.tip = "Aggiorna il country scelto", .shortcut = "F3", .run = [this] { Update(); }}};
  Command cmDelete{
      *this,
      "cmDelete",
      "Cancella",
      {.tip = "Cancella il country scelto", .shortcut = "F4", .run = [this] { Delete(); }}};
  Command cmExit{*this, "cmExit", "Esci", {.tip = "Chiude la tabella", .run = [this] { Leave(); }}};

  void Insert();
  void Update();
  void Delete();
  void Leave();

 private:
  void HandleEvents();
  void TakeFile(TextField& field);
  bool SeekChosen();
  void ShowCountry();
  bool ValidateCountry();
  void Store();
  // Fills the list anew, and stands on the country that was written.
  void ReloadAndSelect();

  Session& session_;
};

}  // namespace brenvo
