// The contest header: one entry of the operator in one contest on one band, and the door to its
// contacts, its file and its sheets.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "contest/contest_header.h"
#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/list_field.h"
#include "forms/picture_box.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/tool_keys.h"
#include "forms/window.h"

namespace brenvo {

class ContestForm : public Window {
 public:
  explicit ContestForm(Session& session);
  ~ContestForm() override;

  void Load() override;
  void Unload() override;

  // "Dati contest"
  DatePicker DataContest{*this, "DataContest"};
  ListField Banda{*this, "Banda", ListStyle::kDropDown};
  TextField NomeContest{*this, "NomeContest"};
  TextField Categoria{*this, "Categoria"};
  TextField Frequenza{*this, "Frequenza"};  // MHz
  Panel Frame2{*this, "Frame2"};
  OptionButton Fisso{*this, "Fisso"};
  OptionButton Portatile{*this, "Portatile"};
  Panel Frame3{*this, "Frame3"};
  OptionButton Singolo{*this, "Singolo"};
  OptionButton Multi{*this, "Multi"};
  Panel Frame1{*this, "Frame1"};
  CheckBox Square{*this, "Square"};
  CheckBox Country{*this, "Country"};
  CheckBox Exch{*this, "Exch"};
  // "Dati Brenvo"
  TextField CallContest{*this, "CallContest"};
  TextField Qra{*this, "Qra"};
  TextField Qth{*this, "Qth"};
  TextField Indirizzo{*this, "Indirizzo"};
  TextField Provincia{*this, "Provincia"};
  // "Dati stazione"
  TextField SQTH{*this, "SQTH"};
  TextField SProvincia{*this, "SProvincia"};
  TextField Locator{*this, "Locator"};
  TextField Altezza{*this, "Altezza"};  // m
  TextField RTX{*this, "RTX"};
  TextField Antenna{*this, "Antenna"};
  TextField Potenza{*this, "Potenza"};  // W
  // " Note"
  TextField Note{*this, "Note"};

  PictureBox Logo{*this, "Logo"};
  PictureBox Sign{*this, "Sign"};
  Panel Panel3D1{*this, "Panel3D1"};
  Panel Panel3D2{*this, "Panel3D2"};
  Panel Panel3D3{*this, "Panel3D3"};
  Panel Panel3D4{*this, "Panel3D4"};
  StatusBar StatusBar1{*this, "StatusBar1", 1};
  ToolBar Toolbar1{*this, "Toolbar1"};
  Command& Key(std::string_view name) { return *FindCommand(name); }

  void ContestAdd();
  void ContestUpdate();
  void ContestDelete();
  void ContestFind();
  void ContestClear();
  void ContestDisplay();
  void cmFirst();
  void cmPrevious();
  void cmNext();
  void cmLast();
  void cmQso();
  void cmExport();
  void cmPrint();

  void OnBandaChange();

  // The band last acted on.
  std::string PrevBanda;

 private:
  void MakeToolbar();
  void HangInEvents();
  bool ContestValid();
  void ContestSave();
  void ContestButtonsOn();
  void ContestButtonsOff();
  void SelectBand(std::string_view band);
  // The handle is everybody's: back to the record on this screen.
  void ReturnToShownRecord();
  // Without one the screen keeps what it shows, and the record commands wait for another.
  void ForgetRecordThatIsGone();
  ContestHeader ReadHeader() const;

  Session& session_;
  ToolKeys keys_;
  std::optional<Bookmark> shown_;
  ContactSubscription changes_;
};

}  // namespace brenvo
