// The table of ready-made notes.
#pragma once

#include "core/session.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::tables {

// Works on the row that the session's note table stands on: the one chosen last. The list's key is
// cut at 5 characters, so a longer type can be stored and is not found from there.
class TabellaNote : public forms::Window {
 public:
  explicit TabellaNote(core::Session& session);

  void Load() override;
  void Unload() override;

  forms::ListField LBNote{
      *this,
      "LBNote",
      forms::ListStyle::kOpen,
      {.caption = "Note", .hint = "Doppio click per richiamare i dati della nota"}};
  forms::TextField Codice{*this, "Codice", {.caption = "Tipo", .characters = 7}};  // the type
  forms::TextField Nota{*this, "Nota", {.caption = "Nota", .characters = 20}};
  forms::ToolBar Toolbar1{*this, "Toolbar1", {&cmInsert, &cmUpdate, &cmDelete, &cmExit}};
  // What was stored last.
  forms::Label Avviso{*this, "Avviso"};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

  forms::Command cmInsert{
      *this, "cmInsert", "Inserisci", {.tip = "Inserisce la nota", .shortcut = "F2", .run = [this] {
                                         Insert();
                                       }}};
  forms::Command cmUpdate{
      *this,
      "cmUpdate",
      "Aggiorna",
      {.tip = "Aggiorna la nota scelta", .shortcut = "F3", .run = [this] { Update(); }}};
  forms::Command cmDelete{
      *this,
      "cmDelete",
      "Cancella",
      {.tip = "Cancella la nota scelta", .shortcut = "F4", .run = [this] { Delete(); }}};
  forms::Command cmExit{
      *this, "cmExit", "Esci", {.tip = "Chiude la tabella", .run = [this] { Leave(); }}};

  void Insert();
  void Update();
  void Delete();
  void Leave();

 private:
  // The row of the note chosen, on which TbNoteHelp then stands; null without one.
  engine::Table* Chosen();
  bool ValidateNote() const;
  void Store();
  void ReloadAndSelect();

  core::Session& session_;
};

}  // namespace brenvo::tables
