// The stations that contacts are made from; the current one is that of new contacts.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "core/stations.h"
#include "core/table_window.h"
#include "forms/list_field.h"

namespace brenvo::tables {

class Stazioni : public core::TableWindow {
 public:
  explicit Stazioni(core::Session& session);
  void Load() override;

  core::TableGrid Tabella{*this, {.hint = "Invio o doppio click: da qui i prossimi contatti"}};
  // The marked station, or the one that is being made.
  forms::TextField Nome{*this, "Nome", {.caption = "Nome", .characters = 20}};
  forms::ListField Tipo{
      *this, "Tipo", forms::ListStyle::kDropDown, {.caption = "Tipo", .characters = 10}};
  forms::TextField CallQso{*this, "CallQso", {.caption = "Call", .characters = 12}};
  forms::TextField Operatore{*this,
                             "Operatore",
                             {.caption = "Operatore",
                              .hint = "Nominativo di chi opera, se non è quello della stazione",
                              .characters = 12}};
  forms::TextField Locator{*this, "Locator", {.caption = "Locator", .characters = 12}};
  forms::TextField Provincia{*this, "Provincia", {.caption = "Provincia", .characters = 5}};
  forms::TextField Country{*this, "Country", {.caption = "Country", .characters = 6}};
  forms::TextField Altezza{*this, "Altezza", {.caption = "Altezza (m)", .characters = 6}};
  forms::TextField RTX{*this, "RTX", {.caption = "RTX", .characters = 20}};
  forms::TextField Antenna{*this, "Antenna", {.caption = "Antenna", .characters = 20}};
  forms::DatePicker Dal{*this, "Dal", {.caption = "Dal"}};
  forms::DatePicker Al{*this, "Al", {.caption = "Al"}};

  forms::Command cmCorrente{*this,
                            "cmCorrente",
                            "Corrente",
                            {.tip = "I prossimi contatti sono di questa stazione",
                             .run = [this] { MakeCurrent(); },
                             .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmClear{*this,
                         "cmClear",
                         "Nuova",
                         {.tip = "Svuota i campi per una nuova stazione",
                          .shortcut = kNewKey,
                          .run = [this] { BeginNew(); },
                          .focusAfter = &Nome}};
  forms::Command cmUpdate{*this,
                          "cmUpdate",
                          "Salva",
                          {.tip = "Salva la stazione dei campi sotto la tabella",
                           .shortcut = kStoreKey,
                           .run = [this] { Store(); }}};
  forms::Command cmDelete{*this,
                          "cmDelete",
                          "Cancella",
                          {.tip = "Cancella una stazione senza contatti",
                           .shortcut = kDeleteKey,
                           .run = [this] { DeleteChosen(); },
                           .enabled = [this] { return ChosenKey().has_value(); }}};

 protected:
  void RowChosen() override;

 private:
  void FillTable();
  void ShowStation(const core::StationRow& station);
  // Nothing while none is marked.
  const core::StationRow* Chosen();
  // Shows all rows again with the mark on that station.
  void Renew(std::int64_t station);
  void MakeCurrent();
  void BeginNew();
  void Store();
  void DeleteChosen();

  core::MemoryRows rows_;
  std::vector<core::StationRow> stations_;  // a station a row, at its key
  std::int64_t edited_ = 0;                 // the station in the fields, 0 for a new one
  // By station; nothing while a contact has been stored since they were counted.
  std::optional<std::map<std::int64_t, std::int64_t>> contacts_;
  forms::Subscription changes_;
};

}  // namespace brenvo::tables
