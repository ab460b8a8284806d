// The pick dialog of ready-made notes.
#pragma once

#include "core/session.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/window.h"

namespace brenvo::tables {

// Modal. It leaves the chosen note, in square brackets, in the session's NoteChoice, which its
// caller has emptied; left without a choice it leaves nothing.
class HelpForm : public forms::Window {
 public:
  explicit HelpForm(core::Session& session);

  void Load() override;
  void Unload() override;

  forms::ListField LBTipoNote{*this,
                              "LBTipoNote",
                              forms::ListStyle::kOpen,
                              {.caption = "Tipo", .hint = "Doppio click per gli elementi"}};
  forms::ListField LBNote{
      *this,
      "LBNote",
      forms::ListStyle::kOpen,
      {.caption = "Nota", .hint = "Doppio click per riportare la nota nel Log"}};
  forms::Command cmExit{*this,
                        "cmExit",
                        "&Esci",
                        {.tip = "Chiude la finestra Help",
                         .run = [this] { Close(); },
                         .hint = "Chiude la finestra Help"}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

 private:
  core::Session& session_;
};

}  // namespace brenvo::tables
