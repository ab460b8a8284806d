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

namespace brenvo::tables {

// The bands of the station. A row without a band, or with the band of another row, is refused in
// a box.
class BandGrid : public forms::DataGrid {
 public:
  BandGrid(forms::Window& window, std::string name, const forms::FieldFace& face,
           core::Session& session)
      : forms::DataGrid(window, std::move(name), face), session_(session) {}
  void EditCell(std::int64_t row, int column, std::string_view text) override;

 private:
  core::Session& session_;
};

class UserForm : public forms::Window {
 public:
  explicit UserForm(core::Session& session);

  void Load() override;
  void Unload() override;

  forms::TextField CallQso{
      *this,
      "CallQso",
      {.caption = "Call",
       .hint = "Il nominativo della stazione, obbligatorio come i campi fino al locator",
       .characters = 10}};
  forms::TextField Qra{*this, "Qra", {.caption = "Qra", .characters = 14}};
  forms::TextField Qth{*this, "Qth", {.caption = "Qth", .characters = 14}};
  forms::TextField Indirizzo{*this, "Indirizzo", {.caption = "Indirizzo", .characters = 16}};
  forms::TextField Provincia{*this, "Provincia", {.caption = "Provincia", .characters = 4}};
  forms::TextField Locator{*this,
                           "Locator",
                           {.caption = "Locator",
                            .hint = "Il locator della stazione, sei caratteri come JN61FV",
                            .characters = 9}};
  // Kept in the settings: anything at all switches the manager lookup of the log on.
  forms::TextField ZX9TOK{*this,
                          "ZX9TOK",
                          {.caption = "Path manager ZX9TOK",
                           .hint = "Se non è vuoto il log cerca il manager di ogni call",
                           .characters = 20}};

  forms::Panel PanelRTX{*this, "SSPanel1_0"};
  forms::Panel PanelMultimedia{*this, "SSPanel1_1"};
  forms::TabStrip Tab1{*this, "Tab1", {"RTX", "Multimedia"}};

  // The bands, and the lists that two of their columns are picked from; hidden until then.
  BandGrid DataGrid1;
  forms::ListField Modo{*this, "Modo", forms::ListStyle::kOpen, {.caption = "Modo"}};
  forms::ListField File2{*this, "File2", forms::ListStyle::kOpen, {.caption = "File wav"}};

  forms::ListField TNCPort{
      *this, "TNCPort", forms::ListStyle::kDropDown, {.caption = "Port", .characters = 7}};
  forms::ListField TNCBaud{
      *this, "TNCBaud", forms::ListStyle::kDropDown, {.caption = "Baud", .characters = 7}};
  forms::CheckBox TNCEcho{*this, "TNCEcho", {.caption = "Local echo"}};
  forms::TextField ClusterNode{
      *this,
      "ClusterNode",
      {.caption = "Radio cluster", .hint = "Il nodo a cui collegarsi via radio", .characters = 16}};
  forms::TextField TelnetCluster{
      *this,
      "TelnetCluster",
      {.caption = "Telnet cluster", .hint = "Host, oppure host:porta", .characters = 16}};
  forms::TextField TelnetWWConv{
      *this,
      "TelnetWWConv",
      {.caption = "Telnet WWConv", .hint = "Host, oppure host:porta", .characters = 16}};
  forms::Panel FrameChiamata{*this, "FrameChiamata", {.caption = "Chiamata automatica"}};
  forms::ListField File1{*this,
                         "File1",
                         forms::ListStyle::kOpen,
                         {.caption = "File disponibili",
                          .hint = "Trascinare il file su File wav, oppure doppio click"}};
  forms::Command cmCallFile{
      *this, "cmCallFile", "&Scegli", {.tip = "Prende il file scelto nella lista", .run = [this] {
                                         TakeFile();
                                       }}};
  forms::TextField CallFile{*this,
                            "CallFile",
                            {.caption = "File wav",
                             .hint = "Il file della chiamata automatica, backspace lo toglie",
                             .characters = 12}};
  forms::TextField CallInterval{
      *this,
      "CallInterval",
      {.caption = "Intervallo tra le chiamate", .characters = 5}};  // seconds

  forms::ToolBar Toolbar1{*this, "Toolbar1", {&cmUpdate, &cmExit}};
  // What was stored last.
  forms::Label Avviso{*this, "Avviso"};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

  forms::Command cmUpdate{*this,
                          "cmUpdate",
                          "Aggiorna",
                          {.tip = "Registra i dati della stazione",
                           .shortcut = "F3",
                           .run = [this] { StoreProfile(); }}};
  forms::Command cmExit{
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
  forms::ListField* PickerOf(int column);
  bool OnGridKey(char32_t key);
  bool OnBeforeEdit(int column, std::string& text);
  void OnPick(forms::ListField& picker, int column);
  // A band with a wave file is announced, and a band without is not.
  void FollowFile(std::int64_t row);

  core::Session& session_;
  core::DataSource data1_;
};

}  // namespace brenvo::tables
