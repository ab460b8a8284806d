// The choice of a copy of the database to go back to.
#pragma once

#include <optional>
#include <vector>

#include "core/backup.h"
#include "core/session.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/window.h"

namespace brenvo {

// Modal. Closes with the copy in Chosen once the operator has agreed to it; its caller restores it,
// for no window stays open over that.
class RipristinaBackup : public Window {
 public:
  explicit RipristinaBackup(Session& session);

  void Load() override;
  void Unload() override;

  std::optional<BackupCopy> Chosen;

  ListField LBCopie{
      *this,
      "LBCopie",
      ListStyle::kOpen,
      {.caption = "Copie del database", .hint = "Doppio click per ripristinare la copia"}};
  Command cmRipristina{*this,
                       "cmRipristina",
                       "&Ripristina",
                       {.tip = "Mette la copia scelta al posto del database",
                        .run = [this] { Choose(); },
                        .hint = "Mette la copia scelta al posto del database"}};
  Command cmExit{*this,
                 "cmExit",
                 "&Esci",
                 {.tip = "Chiude la finestra senza ripristinare",
                  .run = [this] { Hide(); },
                  .hint = "Chiude la finestra senza ripristinare"}};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

 private:
  void Choose();

  Session& session_;
  std::vector<BackupCopy> copies_;
};

}  // namespace brenvo
