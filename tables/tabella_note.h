// The table of ready-made notes.
#pragma once

#include "core/session.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/tool_keys.h"
#include "forms/window.h"

namespace brenvo {

// Works on the row that the session's note table stands on: the one chosen last. The list's key is
// cut at 5 characters, so a longer type can be stored and is not found from there.
class TabellaNote : public Window {
 public:
  explicit TabellaNote(Session& session);

  void Load() override;
  void Unload() override;

  ListField LBNote{*this, "LBNote", ListStyle::kOpen};
  TextField Codice{*this, "Codice"};  // the type
  TextField Nota{*this, "Nota"};
  ToolBar Toolbar1{*this, "Toolbar1"};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  void cmInsert();
  void cmUpdate();
  void cmDelete();
  void cmExit();

 private:
  bool SeekChosen();
  bool ValidateNote() const;
  void Store();
  void ReloadAndSelect();

  Session& session_;
  ToolKeys keys_;
};

}  // namespace brenvo
