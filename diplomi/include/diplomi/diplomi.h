// The awards: what is worked, confirmed and credited, what is missing, and what is to be sent.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/contacts_later.h"
#include "core/table_rows.h"
#include "core/table_window.h"
#include "diplomi/read_log.h"
#include "forms/list_field.h"

namespace brenvo::diplomi {

struct Application;

// A row a unit, a column a band. The log is read once, when the window opens; contacts that come,
// change or go are followed. Below stand the cell that is chosen, the contacts of it, and the
// totals.
class Diplomi : public core::TableWindow {
 public:
  explicit Diplomi(core::Session& session);
  ~Diplomi() override;
  void Load() override;
  void Activate() override;
  void Unload() override;

  forms::ListField Diploma{
      *this,
      "Diploma",
      forms::ListStyle::kDropDown,
      {.caption = "Diploma", .hint = "Le regole stanno nella cartella Diplomi", .characters = 22}};
  forms::ListField Modo{
      *this,
      "Modo",
      forms::ListStyle::kDropDown,
      {.caption = "Modo", .hint = "Conta solo i Qso di questo gruppo di modi", .characters = 9}};
  forms::ListField Stazione{
      *this,
      "Stazione",
      forms::ListStyle::kDropDown,
      {.caption = "Stazione",
       .hint = "Conta solo i Qso fatti da qui; dove il diploma lega i luoghi, quelli che vanno con "
               "questo",
       .characters = 16}};
  forms::ListField Banda{*this,
                         "Banda",
                         forms::ListStyle::kDropDown,
                         {.caption = "Banda",
                          .hint = "La colonna che Mostra e la lista per la domanda guardano",
                          .characters = 8}};
  forms::ListField Mostra{
      *this,
      "Mostra",
      forms::ListStyle::kDropDown,
      {.caption = "Mostra", .hint = "Quali righe si mostrano", .characters = 14}};
  core::TableGrid Tabella{
      *this, {.hint = "L lavorato, C confermato, A accreditato; Invio apre il Qso della casella"}};
  // Which contact fills the chosen cell, why, and what would raise it.
  forms::Label Casella{*this, "Casella"};
  forms::ListField Contatti{*this,
                            "Contatti",
                            forms::ListStyle::kDropDown,
                            {.caption = "Qso della casella",
                             .hint = "Il primo è quello che la riempie",
                             .characters = 60}};
  forms::Label Totali{*this, "Totali"};

  forms::Command cmApri{*this,
                        "cmApri",
                        "Apri nel log",
                        {.tip = "Mostra il Qso scelto della casella nella finestra Log",
                         .shortcut = "F8",
                         .run = [this] { OpenContact(); },
                         .enabled = [this] { return ContactChosen().has_value(); }}};
  forms::Command cmDomanda{
      *this,
      "cmDomanda",
      "Lista per la domanda...",
      {.tip = "Scrive i Qso confermati e non accreditati, come testo, pagina HTML o CSV",
       .shortcut = "F9",
       .run = [this] { WriteList(); },
       .enabled = [this] { return Chosen() != nullptr; }}};
  forms::Command cmStampa{*this,
                          "cmStampa",
                          "Stampa la lista",
                          {.tip = "Stampa i Qso confermati e non accreditati",
                           .run = [this] { PrintList(); },
                           .enabled = [this] { return Chosen() != nullptr; }}};

 protected:
  void RowChosen() override;

 private:
  void ReadRules();
  void ReadLog();
  void Follow(const std::vector<core::OneContact>& changes);
  void AwardChosen();
  void Recount();
  // The mark goes to the unit of that code.
  void FillTable(const std::string& chosen);
  void ShowTotals();
  void ShowCell();
  void OpenContact();
  void WriteList();
  void PrintList();
  std::optional<Application> ListToApply();
  std::string StationsText() const;
  bool IsShown(std::size_t unit) const;

  // Null while there is none.
  const Award* Chosen() const;
  Choice ChosenChoice() const;
  // The column that is looked at above; 0 for all.
  std::size_t WantedColumn() const;
  std::optional<std::size_t> ChosenUnit();
  std::string ChosenCode();  // of the unit; empty for none
  std::size_t ChosenColumn() const;
  std::optional<std::int64_t> ContactChosen() const;
  std::string CreditNumbers();

  std::shared_ptr<const worked::Rules> rules_;
  World world_;
  std::vector<Award> awards_;
  std::vector<OwnPlace> places_;
  std::vector<std::int64_t> stations_;  // of the list's entries behind the first one
  std::unique_ptr<LogReading> reading_;
  std::optional<LogImage> log_;
  std::string creditNumbers_;  // of the credits that are counted
  Counted counted_;
  core::KeyedRows rows_;
  std::vector<std::int64_t> listed_;  // a key a contact
  bool filling_ = false;
  std::string fault_;  // of the rules
  std::optional<core::ContactsLater> later_;
  forms::Subscription reopened_, tables_;
};

}  // namespace brenvo::diplomi
