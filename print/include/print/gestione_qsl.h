// The cards of the log: which are to be sent, were sent, came and are awaited; by which way and on
// which day; and labels for a bureau.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "core/arranged_window.h"
#include "core/qsl_cards.h"
#include "forms/list_field.h"

namespace brenvo::print {

// The log is read when the window opens, when the operator asks for something else, and after what
// he has done here. What else changes it makes the list out of date, which is said.
class GestioneQsl : public core::ArrangedWindow {
 public:
  explicit GestioneQsl(core::Session& session);
  ~GestioneQsl() override;
  void Load() override;

  forms::ListField Mostra{
      *this,
      "Mostra",
      forms::ListStyle::kDropDown,
      {.caption = "Mostra", .hint = "Quali Qsl si vedono nella tabella", .characters = 10}};
  forms::ListField Via{
      *this,
      "Via",
      forms::ListStyle::kDropDown,
      {.caption = "Via", .hint = "Solo le Qsl passate da questa via", .characters = 10}};
  forms::DatePicker Dal{
      *this, "Dal", {.caption = "Dal", .hint = "Il primo giorno", .characters = 9}};
  forms::DatePicker Al{*this, "Al", {.caption = "Al", .hint = "L'ultimo giorno", .characters = 9}};
  core::TableGrid Tabella{*this, {.hint = "Invio apre il contatto nel log, spazio lo segna"}};
  // Of the cards that are marked as sent or received.
  forms::ListField ViaCartolina{*this,
                                "ViaCartolina",
                                forms::ListStyle::kDropDown,
                                {.caption = "Segna con via",
                                 .hint = "Per Inviata, Ricevuta e le etichette",
                                 .characters = 10}};
  forms::DatePicker DataCartolina{
      *this,
      "DataCartolina",
      {.caption = "e data", .hint = "Vuota se il giorno non si sa", .characters = 9}};

  forms::Command cmLeggi{
      *this,
      "cmLeggi",
      "Leggi",
      {.tip = "Legge di nuovo il log e le regole", .shortcut = "F5", .run = [this] { ReadLog(); }}};
  forms::Command cmApri{*this,
                        "cmApri",
                        "Apri nel log",
                        {.tip = "Mostra il contatto nella finestra Log",
                         .run = [this] { OpenInLog(); },
                         .enabled = [this] { return ChosenKey().has_value(); }}};
  // For the marked contacts, or the chosen one.
  forms::Command cmInviata{*this,
                           "cmInviata",
                           "Inviata",
                           {.tip = "Qsl inviata ai segnati, con la via e la data scelte",
                            .shortcut = "F6",
                            .run = [this] { MarkChosen(core::CardSide::kSent); },
                            .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmRicevuta{*this,
                            "cmRicevuta",
                            "Ricevuta",
                            {.tip = "Qsl ricevuta dai segnati, con la via e la data scelte",
                             .shortcut = "F7",
                             .run = [this] { MarkChosen(core::CardSide::kReceived); },
                             .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmTogliInviata{*this,
                                "cmTogliInviata",
                                "Non inviata",
                                {.tip = "Toglie ai segnati la Qsl inviata, con via e data",
                                 .run = [this] { ForgetChosen(core::CardSide::kSent); },
                                 .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmTogliRicevuta{*this,
                                 "cmTogliRicevuta",
                                 "Non ricevuta",
                                 {.tip = "Toglie ai segnati la Qsl ricevuta, con via e data",
                                  .run = [this] { ForgetChosen(core::CardSide::kReceived); },
                                  .enabled = [this] { return ChosenKey().has_value(); }}};
  // For the marked contacts, or all that are shown.
  forms::Command cmEtichette{
      *this,
      "cmEtichette",
      "Stampa etichette",
      {.tip = "Etichette dei segnati, o di tutti i mostrati, nell'ordine del bureau",
       .shortcut = "F9",
       .run = [this] { PrintLabels(); },
       .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmAnnulla{*this,
                           "cmAnnulla",
                           "Annulla",
                           {.tip = "Riprende l'ultimo lavoro sui contatti",
                            .shortcut = "Ctrl+Z",
                            .run = [this] { TakeBack(); }}};
  forms::Menu menuTogli{*this, "menuTogli", "Togli", {&cmTogliInviata, &cmTogliRicevuta}};

 private:
  // False when the operator has stopped it: the list stays as it was.
  bool ReadLog();
  void ReadAfter(std::string_view done);
  void OpenInLog();
  core::QslCard ChosenCard() const;
  void MarkChosen(core::CardSide side);
  void ForgetChosen(core::CardSide side);
  void PrintLabels();
  void TakeBack();

  // What is announced meanwhile is not told: the log is read afterwards.
  template <class Work>
  auto DoneHere(const Work& work) {
    struct Over {
      bool& own;
      ~Over() { own = false; }
    } const over{ownWork_ = true};
    return work();
  }

  core::KeyedRows rows_;
  bool ownWork_ = false;
  std::pair<std::optional<base::DateTime>, std::optional<base::DateTime>> days_;  // as read last
  forms::Subscription stored_, closing_;
};

}  // namespace brenvo::print
