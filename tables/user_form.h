// The station profile: who the station is, its bands, and its links.
#pragma once

#include <string>

#include "core/data_source.h"
#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/tab_strip.h"
#include "forms/text_field.h"
#include "forms/tool_keys.h"
#include "forms/window.h"

namespace brenvo {

// The bands of the station. A row without a band, or with the band of another row, is refused in
// a box.
class BandGrid : public DataGrid {
 public:
  BandGrid(Window& window, std::string name, Session& session)
      : DataGrid(window, std::move(name)), session_(session) {}
  void EditCell(std::int64_t row, int column, std::string_view text) override;

 private:
  Session& session_;
};

class UserForm : public Window {
 public:
  explicit UserForm(Session& session);

  void Load() override;
  void Unload() override;

  TextField CallQso{*this, "CallQso"};
  TextField Qra{*this, "Qra"};
  TextField Qth{*this, "Qth"};
  TextField Indirizzo{*this, "Indirizzo"};
  TextField Provincia{*this, "Provincia"};
  TextField Locator{*this, "Locator"};
  // Kept in the settings: anything at all switches the manager lookup of the log on.
  TextField ZX9TOK{*this, "ZX9TOK"};

  Panel PanelRTX{*this, "SSPanel1_0"};
  Panel PanelMultimedia{*this, "SSPanel1_1"};
  TabStrip Tab1{*this, "Tab1", {"RTX", "Multimedia"}};

  // The bands, and the lists that two of their columns are picked from; hidden until then.
  BandGrid DataGrid1;
  ListField Modo{*this, "Modo", ListStyle::kOpen};
  ListField File2{*this, "File2", ListStyle::kOpen};

  ListField TNCPort{*this, "TNCPort", ListStyle::kDropDown};
  ListField TNCBaud{*this, "TNCBaud", ListStyle::kDropDown};
  CheckBox TNCEcho{*this, "TNCEcho"};
  TextField ClusterNode{*this, "ClusterNode"};
  TextField TelnetCluster{*this, "TelnetCluster"};
  TextField TelnetWWConv{*this, "TelnetWWConv"};
  Panel FrameChiamata{*this, "FrameChiamata"};
  ListField File1{*this, "File1", ListStyle::kOpen};
  Command cmCallFile{*this, "cmCallFile", "&Scegli"};
  TextField CallFile{*this, "CallFile"};
  TextField CallInterval{*this, "CallInterval"};  // seconds

  ToolBar Toolbar1{*this, "Toolbar1"};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  void cmUpdate();
  void cmExit();

 private:
  bool ValidateUser();
  void Store();
  void MakeGrid();
  void HangInEvents();
  // The list that a grid's column is picked from; nullptr for a column that is typed.
  ListField* PickerOf(int column);
  bool OnGridKey(char32_t key);
  bool OnBeforeEdit(int column, std::string& text);
  void OnPick(ListField& picker, int column);
  // A band with a wave file is announced, and a band without is not.
  void FollowFile(std::int64_t row);

  Session& session_;
  DataSource data1_;
  ToolKeys keys_;
};

}  // namespace brenvo
