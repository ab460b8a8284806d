// The choice of a copy of the database to go back to.
#pragma once

#include <optional>
#include <vector>

#include "core/session.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/window.h"
#include "upkeep/backup.h"

namespace brenvo::upkeep {

// Modal. Closes with the copy in Chosen once the operator has agreed to it; its caller restores it,
// for no window stays open over that.
class RipristinaBackup : public forms::Window {
 public:
  explicit RipristinaBackup(core::Session& session);

  void Load() override;
  void Unload() override;

  std::optional<BackupCopy> Chosen;

  forms::ListField LBCopie{
      *this,
      "LBCopie",
      forms::ListStyle::kOpen,
      {.caption = "Copie del database", .hint = "Doppio click per ripristinare la copia"}};
  forms::Command cmRipristina{*this,
                              "cmRipristina",
                              "&Ripristina",
                              {.tip = "Mette la copia scelta al posto del database",
                               .run = [this] { Choose(); },
                               .hint = "Mette la copia scelta al posto del database"}};
  forms::Command cmExit{*this,
                        "cmExit",
                        "&Esci",
                        {.tip = "Chiude la finestra senza ripristinare",
                         .run = [this] { Hide(); },
                         .hint = "Chiude la finestra senza ripristinare"}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

 private:
  void Choose();

  core::Session& session_;
  std::vector<BackupCopy> copies_;
};

}  // namespace brenvo::upkeep
