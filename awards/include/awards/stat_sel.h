// The dialog through which statistics and reports choose their contacts.
#pragma once

#include <string>
#include <string_view>

#include "core/session.h"
#include "core/shared_windows.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"

namespace brenvo::awards {

// The caller sets Tag to a mode word, shows the dialog modally, reads Tag, which is then "Cancel"
// or the text of a WHERE clause (empty when no filter was set), and unloads the dialog.
class StatSel : public core::SelectionWindow {
 public:
  explicit StatSel(core::Session& session);

  void Load() override;
  void Activate() override;
  bool QueryUnload() override;
  void Unload() override;
  bool ListsAll() const override { return Elenca.IsOn(); }
  void OfferLayouts() override;
  bool IsVertical() const override { return vertical_; }

  forms::Label FrameDataQso{*this, "FrameDataQso", {.caption = "Data Qso"}};
  forms::MaskedField DataQsoI{
      *this, "DataQsoI", "##/##/####", {.caption = "Iniziale", .characters = 10}};
  forms::MaskedField DataQsoF{
      *this, "DataQsoF", "##/##/####", {.caption = "Finale", .characters = 10}};
  forms::ListField Country{
      *this, "Country", forms::ListStyle::kCombo, {.caption = "Country", .characters = 22}};
  forms::ListField Banda{
      *this, "Banda", forms::ListStyle::kDropDown, {.caption = "Banda", .characters = 9}};
  forms::Command cmTutteLeBande{
      *this, "cmTutteLeBande", "Tutte", {.tip = "Tutte le bande: vuota il campo", .run = [this] {
                                           Banda.SetListIndex(-1);
                                         }}};
  forms::ListField Modo{*this,
                        "Modo",
                        forms::ListStyle::kMulti,
                        {.caption = "Modo", .hint = "Bottone destro per attivare il popup menu"}};
  forms::ListField Propagazione{
      *this, "Propagazione", forms::ListStyle::kMulti, {.caption = "Propagazione"}};
  forms::Label FrameQsl{*this, "FrameQsl", {.caption = "Qsl"}};
  forms::CheckBox QslRicevuta{*this, "QslRicevuta", {.caption = "Ricevuta"}};
  forms::CheckBox QslInviata{*this, "QslInviata", {.caption = "Inviata"}};
  forms::CheckBox QslDaInviare{*this, "QslDaInviare", {.caption = "Da inviare"}};
  forms::TextField Note{
      *this,
      "Note",
      {.caption = "Note", .hint = "Doppio Click per l' help note", .characters = 22}};
  // Every entry of the reference table, worked or not: offered by the mode words that know one.
  forms::CheckBox Elenca{*this, "Elenca", {.caption = "Elenca tutto"}};

  forms::Panel Panel3D1{*this, "Panel3D1", {.hint = ""}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

  // "Modo" or "Propagazione": the list on which the right button was last pressed.
  forms::TextField PopupTarget{*this, "PopupTarget"};
  forms::Command cmSelezionaTutto{*this, "cmSelezionaTutto", "Seleziona tutto",
                                  [this] { SelectAll(true); }};
  forms::Command cmDeselezionaTutto{*this, "cmDeselezionaTutto", "Deseleziona tutto",
                                    [this] { SelectAll(false); }};
  forms::Menu popup{*this, "popup", "", {&cmSelezionaTutto, &cmDeselezionaTutto}};

  forms::Command cmStat{
      *this, "cmStat", "Conferma", {.tip = "Conferma la selezione", .run = [this] { Confirm(); }}};
  forms::Command cmExit{
      *this, "cmExit", "Esci", {.tip = "Chiude senza selezionare", .run = [this] { Cancel(); }}};
  forms::Command cmHelp{*this, "cmHelp", "Aiuto", {.tip = "Aiuto", .shortcut = "F1"}};
  // The layout of a report, one of the two down. Hidden until a report offers them.
  forms::Command cmVerticale{*this,
                             "cmVerticale",
                             "Verticale",
                             {.tip = "Stampa in verticale",
                              .run = [this] { vertical_ = true; },
                              .checked = [this] { return vertical_; }}};
  forms::Command cmOrizzontale{*this,
                               "cmOrizzontale",
                               "Orizzontale",
                               {.tip = "Stampa in orizzontale",
                                .run = [this] { vertical_ = false; },
                                .checked = [this] { return !vertical_; }}};
  forms::ToolBar Toolbar1{
      *this, "Toolbar1", {&cmStat, &cmExit, &cmHelp, &cmVerticale, &cmOrizzontale}};

  // False, with a message, when the mode word wants a field that is empty.
  bool CheckSelection();
  // The clause of what is filled in: empty, or beginning with "WHERE ".
  std::string BuildWhere() const;

 private:
  void HandleEvents();
  void OfferElenca(bool offered);
  void SelectAll(bool selected);
  void Confirm();
  void Cancel();
  void OnCountryLeave();
  void OnNotePick();

  core::Session& session_;
  bool vertical_ = false;
};

}  // namespace brenvo::awards
