// The provinces of each country.
#pragma once

#include <string>

#include "core/session.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::tables {

// Works on the row that the session's province table stands on: the one chosen last.
class TabellaProvincie : public forms::Window {
 public:
  explicit TabellaProvincie(core::Session& session);

  void Load() override;
  void Unload() override;

  forms::ListField LBCountry{
      *this,
      "LBCountry",
      forms::ListStyle::kOpen,
      {.caption = "Country",
       .hint = "Premi una lettera per ricercare o Click per visualizzare le provincie"}};
  forms::ListField LBProv{
      *this,
      "LBProv",
      forms::ListStyle::kOpen,
      {.caption = "Provincie",
       .hint = "Premi una lettera per ricercare o Click per richiamare i dati della provincia"}};
  forms::TextField Codice{*this, "Codice", {.caption = "Codice", .characters = 6}};
  forms::TextField Descrizione{*this, "Descrizione", {.caption = "Descrizione", .characters = 20}};
  forms::ToolBar Toolbar1{*this, "Toolbar1", {&cmInsert, &cmUpdate, &cmDelete, &cmExit}};
  // What was stored last.
  forms::Label Avviso{*this, "Avviso"};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

  forms::Command cmInsert{
      *this,
      "cmInsert",
      "Inserisci",
      {.tip = "Inserisce la provincia", .shortcut = "F2", .run = [this] { Insert(); }}};
  forms::Command cmUpdate{
      *this,
      "cmUpdate",
      "Aggiorna",
      {.tip = "Aggiorna la provincia scelta", .shortcut = "F3", .run = [this] { Update(); }}};
  forms::Command cmDelete{
      *this,
      "cmDelete",
      "Cancella",
      {.tip = "Cancella la provincia scelta", .shortcut = "F4", .run = [this] { Delete(); }}};
  forms::Command cmExit{
      *this, "cmExit", "Esci", {.tip = "Chiude la tabella", .run = [this] { Leave(); }}};

  void Insert();
  void Update();
  void Delete();
  void Leave();

 private:
  // The country chosen, padded as its list shows it.
  std::string ChosenCountry() const;
  // The row of the province chosen, on which TbProvincie then stands; null without one.
  engine::Table* Chosen(std::size_t codeWidth);
  bool ValidateProvince() const;
  void Store();
  void ReloadAndSelect();

  core::Session& session_;
};

}  // namespace brenvo::tables
