// The keys of all commands, as a table: changed, and printed on one page.
#pragma once

#include "core/table_window.h"
#include "forms/choice_fields.h"
#include "frame/keys.h"

namespace brenvo::frame {

class Tasti : public core::TableWindow {
 public:
  explicit Tasti(core::Session& session);
  void Load() override;

  forms::CheckBox SoloConTasto{
      *this,
      "SoloConTasto",
      {.caption = "Solo con un tasto", .hint = "Mostra solo i comandi che hanno un tasto"}};
  forms::CheckBox SoloCambiati{
      *this,
      "SoloCambiati",
      {.caption = "Solo i cambiati", .hint = "Mostra solo i tasti diversi da quelli predefiniti"}};
  core::TableGrid Tabella{*this, {.hint = "Invio o doppio click portano al tasto da cambiare"}};
  forms::TextField Tasto{*this,
                         "Tasto",
                         {.caption = "Tasto",
                          .hint = "Premere il tasto voluto, poi Invio; Backspace lo vuota",
                          .characters = 16}};

  forms::Command cmCambia{*this,
                          "cmCambia",
                          "Cambia",
                          {.tip = "Porta al tasto del comando",
                           .run = [this] { Host().MoveFocus(Tasto); },
                           .enabled = [this] { return Chosen() != nullptr; }}};
  forms::Command cmUpdate{*this,
                          "cmUpdate",
                          "Applica",
                          {.tip = "Dà al comando il tasto scritto sotto la tabella",
                           .shortcut = kStoreKey,
                           .run = [this] { Store(Tasto.Text()); },
                           .enabled = [this] { return Chosen() != nullptr; }}};
  forms::Command cmPredefinito{*this,
                               "cmPredefinito",
                               "Predefinito",
                               {.tip = "Torna al tasto predefinito",
                                .shortcut = kDeleteKey,
                                .run = [this] { GoBack(); },
                                .enabled = [this] { return Chosen() != nullptr; }}};
  forms::Command cmPrint{*this,
                         "cmPrint",
                         "Stampa",
                         {.tip = "Stampa tutti i tasti su una pagina", .run = [this] { Print(); }}};

 protected:
  void RowChosen() override;

 private:
  // Null while no row is marked.
  const KeyOwner* Chosen();
  // With the mark on its row, where that is shown.
  void ShowOwners(const KeyOwner* marked);
  void GoBack();
  void Store(std::string_view text);
  // Another command of its window that has the key; null for none.
  const KeyOwner* RivalFor(const KeyOwner& owner, std::string_view key) const;
  // What else the key does, now that it is the owner's; empty for nothing.
  std::string OtherUses(const KeyOwner& owner) const;
  void Print();

  Keys keys_;
  std::vector<KeyOwner> owners_;  // at the keys of the rows
  core::MemoryRows rows_;
  std::vector<std::size_t> listed_;
};

}  // namespace brenvo::frame
