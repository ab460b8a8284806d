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

  ListField LBCopie{*this, "LBCopie", ListStyle::kOpen};
  Command cmRipristina{*this, "cmRipristina", "&Ripristina"};
  Command cmExit{*this, "cmExit", "&Esci"};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

 private:
  void Choose();

  Session& session_;
  std::vector<BackupCopy> copies_;
};

}  // namespace brenvo
