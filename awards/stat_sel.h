// The dialog through which statistics and reports choose their contacts.
#pragma once

#include <string>
#include <string_view>

#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"

namespace brenvo {

// The caller sets Tag to a mode word, shows the dialog modally, reads Tag, which is then "Cancel"
// or the text of a WHERE clause (empty when no filter was set), and unloads the dialog.
class StatSel : public Window {
 public:
  explicit StatSel(Session& session);

  void Load() override;
  void Activate() override;
  bool QueryUnload() override;
  void Unload() override;

  Label FrameDataQso{*this, "FrameDataQso"};
  MaskedField DataQsoI{*this, "DataQsoI", "##/##/####"};
  MaskedField DataQsoF{*this, "DataQsoF", "##/##/####"};
  ListField Country{*this, "Country", ListStyle::kCombo};
  ListField Banda{*this, "Banda", ListStyle::kDropDown};
  ListField Modo{*this, "Modo", ListStyle::kMulti};
  ListField Propagazione{*this, "Propagazione", ListStyle::kMulti};
  Label FrameQsl{*this, "FrameQsl"};
  CheckBox QslRicevuta{*this, "QslRicevuta"};
  CheckBox QslInviata{*this, "QslInviata"};
  CheckBox QslDaInviare{*this, "QslDaInviare"};
  TextField Note{*this, "Note"};
  // Every entry of the reference table, worked or not: offered by the mode words that know one.
  CheckBox Elenca{*this, "Elenca"};

  Panel Panel3D1{*this, "Panel3D1"};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  // "Modo" or "Propagazione": the list on which the right button was last pressed.
  TextField PopupTarget{*this, "PopupTarget"};
  Command cmSelezionaTutto{*this, "cmSelezionaTutto", "Seleziona tutto",
                           [this] { SelectAll(true); }};
  Command cmDeselezionaTutto{*this, "cmDeselezionaTutto", "Deseleziona tutto",
                             [this] { SelectAll(false); }};
  Menu popup{*this, "popup", "", {&cmSelezionaTutto, &cmDeselezionaTutto}};

  Command cmStat{*this, "cmStat", "Conferma", [this] { Confirm(); }};
  Command cmExit{*this, "cmExit", "Esci", [this] { Cancel(); }};
  Command cmHelp{*this, "cmHelp", "Aiuto"};
  // The layout of a report, one of the two down. Hidden until a report shows them.
  Command cmVerticale{*this, "cmVerticale", "Verticale", [this] { ChooseLayout(cmVerticale); }};
  Command cmOrizzontale{*this, "cmOrizzontale", "Orizzontale",
                        [this] { ChooseLayout(cmOrizzontale); }};
  ToolBar Toolbar1{*this, "Toolbar1"};

  // False, with a message, when the mode word wants a field that is empty.
  bool CheckSelection();
  // The clause of what is filled in: empty, or beginning with "WHERE ".
  std::string BuildWhere() const;

 private:
  void HangInEvents();
  void OfferElenca(bool offered);
  void SelectAll(bool selected);
  void Confirm();
  void Cancel();
  void ChooseLayout(Command& chosen);
  void OnCountryLeave();
  void OnNotePick();

  Session& session_;
};

}  // namespace brenvo
