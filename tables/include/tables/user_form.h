// The station profile: who the station is, its bands, and its links.
#pragma once

#include <string>

#include "core/data_source.h"
#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/tab_strip.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

// The bands of the station. A row without a band, or with the band of another row, is refused in
// a box.
class BandGrid : public DataGrid {
 public:
  BandGrid(Window& window, std::string name, const FieldFace& face, Session& session)
      : DataGrid(window, std::move(name), face), session_(session) {}
  void EditCell(std::int64_t row, int column, std::string_view text) override;

 private:
  Session& session_;
};

class UserForm : public Window {
 public:
  explicit UserForm(Session& session);

  void Load() override;
  void Unload() override;

  TextField CallQso{
      *this,
      "CallQso",
      {.caption = "Call",
       .hint = "Il nominativo della stazione, obbligatorio come i campi fino al locator",
       .characters = 10}};
  TextField Qra{*this, "Qra", {.caption = "Qra", .characters = 14}};
  TextField Qth{*this, "Qth", {.caption = "Qth", .characters = 14}};
  TextField Indirizzo{*this, "Indirizzo", {.caption = "Indirizzo", .characters = 16}};
  TextField Provincia{*this, "Provincia", {.caption = "Provincia", .characters = 4}};
  TextField Locator{*this,
                    "Locator",
                    {.caption = "Locator",
                     .hint = "Il locator della stazione, sei caratteri come JN61FV",
                     .characters = 9}};
  // Kept in the settings: anything at all switches the manager lookup of the log on.
  TextField ZX9TOK{*this,
                   "ZX9TOK",
                   {.caption = "Path manager ZX9TOK",
                    .hint = "Se non e' vuoto il log cerca il manager di ogni call",
                    .characters = 20}};

  Panel PanelRTX{*this, "SSPanel1_0"};
  Panel PanelMultimedia{*this, "SSPanel1_1"};
  TabStrip Tab1{*this, "Tab1", {"RTX", "Multimedia"}};

  // The bands, and the lists that two of their columns are picked from; hidden until then.
  BandGrid DataGrid1;
  ListField Modo{*this, "Modo", ListStyle::kOpen, {.caption = "Modo"}};
  ListField File2{*this, "File2", ListStyle::kOpen, {.caption = "File wav"}};

  ListField TNCPort{*this, "TNCPort", ListStyle::kDropDown, {.caption = "Port", .characters = 7}};
  ListField TNCBaud{*this, "TNCBaud", ListStyle::kDropDown, {.caption = "Baud", .characters = 7}};
  CheckBox TNCEcho{*this, "TNCEcho", {.caption = "Local echo"}};
  TextField ClusterNode{
      *this,
      "ClusterNode",
      {.caption = "Radio cluster", .hint = "Il nodo a cui collegarsi via radio", .characters = 16}};
  TextField TelnetCluster{
      *this,
      "TelnetCluster",
      {.caption = "Telnet cluster", .hint = "Host, oppure host:porta", .characters = 16}};
  TextField TelnetWWConv{
      *this,
      "TelnetWWConv",
      {.caption = "Telnet WWConv", .hint = "Host, oppure host:porta", .characters = 16}};
  Panel FrameChiamata{*this, "FrameChiamata", {.caption = "Chiamata automatica"}};
  ListField File1{*this,
                  "File1",
                  ListStyle::kOpen,
                  {.caption = "File disponibili",
                   .hint = "Trascinare il file su File wav, oppure doppio click"}};
  Command cmCallFile{*this,
                     "cmCallFile",
                     "&Scegli",
                     {.tip = "Prende il file scelto nella lista", .run = [this] { TakeFile(); }}};
  TextField CallFile{*this,
                     "CallFile",
                     {.caption = "File wav",
                      .hint = "Il file della chiamata automatica, backspace lo toglie",
                      .characters = 12}};
  TextField CallInterval{*this,
                         "CallInterval",
                         {.caption = "Intervallo tra le chiamate", .characters = 5}};  // seconds

  ToolBar Toolbar1{*this, "Toolbar1", {&cmUpdate, &cmExit}};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  Command cmUpdate{*this,
                   "cmUpdate",
                   "Aggiorna",
                   {.tip = "Registra i dati della stazione", .shortcut = "F3", .run = [this] {
                      StoreProfile();
                    }}};
  Command cmExit{
      *this, "cmExit", "Esci", {.tip = "Chiude senza registrare", .run = [this] { Leave(); }}};

  void StoreProfile();
  void Leave();

 private:
  bool ValidateUser();
  void Store();
  void TakeFile();
  void MakeGrid();
  void HandleEvents();
  // The list that a grid's column is picked from; nullptr for a column that is typed.
  ListField* PickerOf(int column);
  bool OnGridKey(char32_t key);
  bool OnBeforeEdit(int column, std::string& text);
  void OnPick(ListField& picker, int column);
  // A band with a wave file is announced, and a band without is not.
  void FollowFile(std::int64_t row);

  Session& session_;
  DataSource data1_;
};

}  // namespace brenvo
