// The transceiver and the rotator, whatever their makes.
#pragma once

#include <string>

#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/tab_strip.h"
#include "forms/text_field.h"
#include "forms/window.h"
#include "rig/rig_server.h"
#include "rig/rotator.h"
#include "rig/text_rows.h"
#include "rig/transceiver.h"

namespace brenvo::rig {

// While it is open both are connected, if they have been chosen. The wheel over a digit of the
// frequency turns that digit; Enter goes to the frequency that is typed.
class Rtx : public forms::Window {
 public:
  Rtx(core::Session& session, Transceiver& transceiver, Rotator& rotator, RigServer& server);
  ~Rtx() override;
  void Load() override;
  void Unload() override;

  forms::Label Stato{*this, "Stato"};
  forms::TextField Frequenza{
      *this,
      "Frequenza",
      {.caption = "Frequenza",
       .hint = "Rotella o frecce su una cifra: sintonia. Si scrive in kHz o in MHz, poi Invio",
       .characters = 13}};
  forms::ListField Modo{
      *this,
      "Modo",
      forms::ListStyle::kDropDown,
      {.caption = "Modo", .hint = "Il modo dell'rtx; sceglierne uno lo cambia", .characters = 9}};
  forms::Label Banda{*this, "Banda"};
  // Where it transmits, if that is another frequency.
  forms::Label Split{*this, "Split"};
  // What other programs are served of it.
  forms::Label Offerta{*this, "Offerta"};
  forms::Gauge SMeter{*this, "SMeter", -54, 60, {.caption = "S-meter"}};
  forms::Label Segnale{*this, "Segnale"};

  forms::TabStrip Schede{*this, "Schede", {"Memorie", "Modi", "Transverter"}};
  forms::Panel PanelMemorie{*this, "PanelMemorie"};
  forms::DataGrid Memorie{
      *this, "Memorie", {.hint = "Le ultime dieci frequenze: Invio o doppio click vi tornano"}};
  forms::Panel PanelModi{*this, "PanelModi"};
  forms::DataGrid Modi{
      *this, "Modi", {.hint = "Quale modo dell'rtx è quale modo del log: si cambia Diventa"}};
  forms::Panel PanelTransverter{*this, "PanelTransverter"};
  forms::DataGrid Transverter{
      *this,
      "Transverter",
      {.hint = "MHz da aggiungere alla frequenza dell'rtx, banda per banda; In uso: Sì o No"}};

  forms::Label Azimut{*this, "Azimut"};
  forms::TextField Verso{*this,
                         "Verso",
                         {.caption = "Verso (gradi)",
                          .hint = "I gradi dal nord, poi Invio: l'antenna gira",
                          .characters = 4}};
  forms::Label Rotore{*this, "Rotore"};
  // The call in work, and where it is.
  forms::Label Corrispondente{*this, "Corrispondente"};
  forms::Label Avviso{*this, "Avviso"};

  forms::Command cmModello{*this,
                           "cmModello",
                           "Scegli l'rtx...",
                           {.tip = "Sceglie il modello dell'rtx e la porta, e lo collega",
                            .shortcut = "F2",
                            .run = [this] { Choose(kRigKindOf); }}};
  forms::Command cmRicorda{*this,
                           "cmRicorda",
                           "Ricorda",
                           {.tip = "Mette la frequenza tra le memorie",
                            .shortcut = "F3",
                            .run = [this] { transceiver_.Remember(); },
                            .enabled = [this] { return transceiver_.Frequency().has_value(); }}};
  forms::Command cmModelloRotore{*this,
                                 "cmModelloRotore",
                                 "Scegli il rotore...",
                                 {.tip = "Sceglie il modello del rotore e la porta, e lo collega",
                                  .shortcut = "Shift+F2",
                                  .run = [this] { Choose(kRotorKindOf); }}};
  forms::Command cmCorto{*this,
                         "cmCorto",
                         "Via corta",
                         {.tip = "Gira l'antenna verso il corrispondente, per la via corta",
                          .shortcut = "F6",
                          .run = [this] { TurnToCall(false); },
                          .enabled = [this] { return CanTurn(); }}};
  forms::Command cmLungo{*this,
                         "cmLungo",
                         "Via lunga",
                         {.tip = "Gira l'antenna verso il corrispondente, per la via lunga",
                          .shortcut = "F7",
                          .run = [this] { TurnToCall(true); },
                          .enabled = [this] { return CanTurn(); }}};
  forms::Command cmFermaRotore{*this,
                               "cmFermaRotore",
                               "Ferma",
                               {.tip = "Ferma il rotore",
                                .shortcut = "F4",
                                .run = [this] { Say(rotator_.StopTurning()); },
                                .enabled = [this] { return rotator_.Stands(); }}};
  forms::Command cmMappa{*this,
                         "cmMappa",
                         "Sulla mappa",
                         {.tip = "Disegna sulla mappa dove guarda l'antenna",
                          .shortcut = "F9",
                          .run = [this] { ShowOnMap(); },
                          .enabled = [this] { return rotator_.Direction().has_value(); }}};
  forms::Command cmExit{
      *this, "cmExit", "Esci", {.tip = "Chiude la finestra", .run = [this] { Close(); }}};
  forms::ToolBar Toolbar1{*this,
                          "Toolbar1",
                          {&cmModello, &cmRicorda, forms::Separator{}, &cmModelloRotore, &cmCorto,
                           &cmLungo, &cmFermaRotore, &cmMappa, forms::Separator{}, &cmExit}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

 private:
  static constexpr bool kRigKindOf = true, kRotorKindOf = false;

  void Show();
  void ShowRotator();
  void ShowMemories();
  void ShowModes();
  void ShowTransverters();
  void GoToTyped();
  void GoToRemembered();
  void Step(std::size_t character, int by);
  bool EditMode(std::int64_t row, int column, const std::string& text);
  bool EditTransverter(std::int64_t row, int column, const std::string& text);
  void Choose(bool rig);
  bool CanTurn() const { return rotator_.Stands() && !call_.empty(); }
  void TurnToCall(bool longPath);
  void TurnToTyped();
  void ShowOnMap();
  void Say(std::string_view what) { Avviso.SetText(what); }

  core::Session& session_;
  Transceiver& transceiver_;
  Rotator& rotator_;
  RigServer& server_;
  TextRows memories_, modes_, transverters_;
  std::string shown_;  // in Frequenza, by us
  std::string call_, locator_;
  std::string rigNews_, rotorNews_;
  std::size_t modesShown_ = 0;
  forms::Subscription rigChanged_, rotorChanged_, serverChanged_, callTyped_;
};

}  // namespace brenvo::rig
