// The pick dialog of ready-made notes.
#pragma once

#include "core/session.h"
#include "core/shared_windows.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/window.h"

namespace brenvo::tables {

// Modal.
class HelpForm : public core::NotePicker {
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
