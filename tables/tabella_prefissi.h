// The prefix table: the operator's upkeep, and the log's pick dialog.
#pragma once

#include <string>

#include "core/data_source.h"
#include "core/session.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/tool_keys.h"
#include "forms/window.h"

namespace brenvo {

// Its Tag is the session's PrefixTag at loading: with "LOG" a double click leaves the row in the
// session's ChosenPrefix and closes the window.
class TabellaPrefissi : public Window {
 public:
  explicit TabellaPrefissi(Session& session);

  void Load() override;
  void Unload() override;

  TextField Codice{*this, "Codice"};
  ListField Country{*this, "Country", ListStyle::kDropDown};
  TextField ZonaCQ{*this, "ZonaCQ"};
  TextField ZonaITU{*this, "ZonaITU"};
  TextField Continente{*this, "Continente"};
  DataGrid Spread1{*this, "Spread1"};
  ToolBar Toolbar1{*this, "Toolbar1"};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  void cmInsert();
  void cmUpdate();
  void cmDelete();
  void cmSearch();
  void cmExit();

 private:
  bool ValidatePrefix() const;
  void Store();
  void SortBy(int column);
  void OnRowClick();
  void OnRowPick();
  // Fills the fields from the current row.
  void ShowPrefix();
  // Makes the row under the pointer the current one; false when there is none.
  bool GoToRow();

  Session& session_;
  DataSource data1_;
  ToolKeys keys_;
};

}  // namespace brenvo
