// What the operator may choose, as a table.
#pragma once

#include "core/preferences.h"
#include "core/session.h"
#include "core/table_window.h"
#include "forms/choice_fields.h"
#include "forms/list_field.h"

namespace brenvo::upkeep {

class Preferenze : public core::TableWindow {
 public:
  explicit Preferenze(core::Session& session);
  void Load() override;

  forms::CheckBox SoloCambiate{*this,
                               "SoloCambiate",
                               {.caption = "Solo le cambiate",
                                .hint = "Mostra solo le scelte diverse da quelle predefinite"}};
  core::TableGrid Tabella{*this, {.hint = "Invio, spazio o doppio click cambiano la scelta"}};
  // What the marked choice does.
  forms::Label Spiegazione{*this, "Spiegazione"};
  forms::ListField Valore{
      *this, "Valore", forms::ListStyle::kCombo, {.caption = "Valore", .characters = 24}};

  forms::Command cmCambia{*this,
                          "cmCambia",
                          "Cambia",
                          {.tip = "Passa al valore seguente, o porta a scriverlo",
                           .run = [this] { Change(); },
                           .enabled = [this] { return Chosen() != nullptr; }}};
  forms::Command cmUpdate{*this,
                          "cmUpdate",
                          "Applica",
                          {.tip = "Applica il valore scritto sotto la tabella",
                           .shortcut = kStoreKey,
                           .run = [this] { Store(Valore.Text()); },
                           .enabled = [this] { return Chosen() != nullptr; }}};
  forms::Command cmPredefinito{*this,
                               "cmPredefinito",
                               "Predefinito",
                               {.tip = "Torna al valore predefinito",
                                .shortcut = kDeleteKey,
                                .run = [this] { GoBack(); },
                                .enabled = [this] { return Chosen() != nullptr; }}};

 protected:
  void RowChosen() override;
  bool TableKey(char32_t key) override;

 private:
  // Null while no row is marked.
  const core::Choice* Chosen();
  void FillTable();
  void ShowValue();
  void Change();
  void GoBack();
  void Store(std::string_view text);

  core::MemoryRows rows_;
  std::vector<const core::Choice*> listed_;  // a choice a row, at its key
  forms::Subscription changed_;
};

}  // namespace brenvo::upkeep
