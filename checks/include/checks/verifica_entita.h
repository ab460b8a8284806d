// Contacts whose country, zones or continent are not what their call was on their day, with the
// rule that says so; and the tables that the rules come from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "checks/entity_check.h"
#include "core/arranged_window.h"
#include "core/contacts_later.h"
#include "core/table_rows.h"
#include "forms/choice_fields.h"
#include "forms/list_field.h"

namespace brenvo::checks {

// The log is checked when the operator wants it; a contact that is stored is then checked again by
// itself. A table that he loads is first compared: the list shows the contacts of which it would
// say something else, until he uses it or leaves it.
class VerificaEntita : public core::ArrangedWindow {
 public:
  explicit VerificaEntita(core::Session& session);
  ~VerificaEntita() override;
  void Load() override;
  void Activate() override;

  forms::ListField CheCosa{
      *this,
      "CheCosa",
      forms::ListStyle::kDropDown,
      {.caption = "Differenze", .hint = "Mostra solo chi differisce in questo", .characters = 16}};
  forms::CheckBox AncheScelti{
      *this,
      "AncheScelti",
      {.caption = "Anche quelli tenuti", .hint = "Mostra anche i contatti tenuti come sono"}};
  core::TableGrid Tabella{*this, {.hint = "Invio apre il contatto nel log, spazio lo segna"}};
  // The whole reason of the marked row.
  forms::Label Spiegazione{*this, "Spiegazione"};
  // The tables whose rules hold.
  forms::Label Tabelle{*this, "Tabelle"};

  forms::Command cmVerifica{*this,
                            "cmVerifica",
                            "Verifica",
                            {.tip = "Passa tutto il log e mostra chi non è quello del suo giorno",
                             .shortcut = "F5",
                             .run = [this] { CheckAll(); }}};
  forms::Command cmApri{*this,
                        "cmApri",
                        "Apri nel log",
                        {.tip = "Mostra il contatto nella finestra Log",
                         .run = [this] { OpenInLog(); },
                         .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmPrendi{*this,
                          "cmPrendi",
                          "Prendi la regola",
                          {.tip = "Country, zone e continente della regola nelle righe segnate. "
                                  "Quelli tenuti restano",
                           .shortcut = "F6",
                           .run = [this] { TakeRules(); },
                           .enabled = [this] { return !staged_ && AnyChosen(false); }}};
  forms::Command cmTieni{*this,
                         "cmTieni",
                         "Tieni il mio",
                         {.tip = "Lascia il contatto com'è, qualunque regola venga. Vale per le "
                                 "righe segnate",
                          .shortcut = "F7",
                          .run = [this] { KeepOwn(true); },
                          .enabled = [this] { return !staged_ && AnyChosen(false); }}};
  forms::Command cmRivedi{*this,
                          "cmRivedi",
                          "Da rivedere",
                          {.tip = "Toglie \"Tieni il mio\" dalle righe segnate",
                           .run = [this] { KeepOwn(false); },
                           .enabled = [this] { return !staged_ && AnyChosen(true); }}};
  forms::Command cmCarica{*this,
                          "cmCarica",
                          "Carica tabella...",
                          {.tip = "Legge cty.dat, cty.csv, cty.xml o una tabella con | e mostra "
                                  "che cosa cambierebbe",
                           .run = [this] { LoadTable(); }}};
  forms::Command cmUsa{*this,
                       "cmUsa",
                       "Usa la tabella",
                       {.tip = "Da ora valgono anche le regole della tabella caricata",
                        .shortcut = "F9",
                        .run = [this] { UseTable(); },
                        .enabled = [this] { return staged_.has_value(); }}};
  forms::Command cmLascia{*this,
                          "cmLascia",
                          "Lascia la tabella",
                          {.tip = "La tabella caricata non si usa",
                           .run = [this] { LeaveTable(); },
                           .enabled = [this] { return staged_.has_value(); }}};
  forms::Command cmPrecedente{*this,
                              "cmPrecedente",
                              "Torna alla precedente",
                              {.tip = "L'ultima tabella usata non vale più, torna quella di prima",
                               .run = [this] { TakeTableBack(); },
                               .enabled = [this] { return !staged_; }}};

 protected:
  void RowChosen() override;

 private:
  void CheckAll();
  void Show(CheckedEntities checked);
  void FillTable();
  bool IsWanted(const EntityFinding& finding) const;
  // By the contact's number; null where there is none.
  EntityFinding* Find(std::optional<std::int64_t> key);
  bool AnyChosen(bool chosen);
  void OpenInLog();
  void TakeRules();
  void KeepOwn(bool own);
  void LoadTable();
  void UseTable();
  void LeaveTable();
  void TakeTableBack();
  void ShowTables();
  void CheckAgain(const core::OneContact& change);
  void OutOfDate();

  std::vector<EntityFinding> findings_;  // by number
  core::KeyedRows rows_;
  std::optional<entities::Table> staged_;  // loaded, and not used yet
  bool checked_ = false;                   // findings_ are those of the log
  core::ContactsLater stored_;
  forms::Subscription closing_, rules_;
};

}  // namespace brenvo::checks
