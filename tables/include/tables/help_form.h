// The pick dialog of ready-made notes.
#pragma once

#include "core/session.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/window.h"

namespace brenvo {

// Modal. It leaves the chosen note, in square brackets, in the session's NoteChoice, which its
// caller has emptied; left without a choice it leaves nothing.
class HelpForm : public Window {
 public:
  explicit HelpForm(Session& session);

  void Load() override;
  void Unload() override;

  ListField LBTipoNote{*this,
                       "LBTipoNote",
                       ListStyle::kOpen,
                       {.caption = "Tipo", .hint = "Doppio click per gli elementi"}};
  ListField LBNote{*this,
                   "LBNote",
                   ListStyle::kOpen,
                   {.caption = "Nota", .hint = "Doppio click per riportare la nota nel Log"}};
  Command cmExit{*this,
                 "cmExit",
                 "&Esci",
                 {.tip = "Chiude la finestra Help",
                  .run = [this] { Close(); },
                  .hint = "Chiude la finestra Help"}};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

 private:
  Session& session_;
};

}  // namespace brenvo
