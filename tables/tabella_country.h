// The country table.
#pragma once

#include "core/session.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/tool_keys.h"
#include "forms/window.h"

namespace brenvo {

// Works on the row that the session's country table stands on: the one chosen last from the list.
class TabellaCountry : public Window {
 public:
  explicit TabellaCountry(Session& session);

  void Load() override;
  void Unload() override;

  ListField LBCountry{*this, "LBCountry", ListStyle::kOpen};
  TextField Codice{*this, "Codice"};
  TextField Descrizione{*this, "Descrizione"};
  TextField Locator{*this, "Locator"};
  // File names, which come from the list of files.
  TextField Mappa{*this, "Mappa"};
  TextField Flag{*this, "Flag"};
  TextField X{*this, "X"};  // pixels on the map
  TextField Y{*this, "Y"};
  Panel Frame2{*this, "Frame2"};
  // 01/01/9999 for no date.
  DatePicker Validita{*this, "Validita"};
  DatePicker Deleted{*this, "Deleted"};
  ListField File1{*this, "File1", ListStyle::kOpen};
  Command cmMappa{*this, "cmMappa", "Usa come &mappa"};
  Command cmFlag{*this, "cmFlag", "Usa come &bandiera"};
  ToolBar Toolbar1{*this, "Toolbar1"};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  void cmInsert();
  void cmUpdate();
  void cmDelete();
  void cmExit();

 private:
  void HangInEvents();
  bool SeekChosen();
  void ShowCountry();
  bool ValidateCountry();
  void Store();
  // Fills the list anew, and stands on the country that was written.
  void ReloadAndSelect();

  Session& session_;
  ToolKeys keys_;
};

}  // namespace brenvo
