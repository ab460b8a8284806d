// The search of the log: any of its fields together.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "core/help_topics.h"
#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::log {

// A modal dialog. A statement that fails leaves what it hands back as it was.
class LogSearch : public forms::Window {
 public:
  explicit LogSearch(core::Session& session);

  void Load() override;
  void Unload() override;

  // The statement of the search; nullopt when the operator has left without one.
  std::optional<std::string> SearchText;
  // The log's rows, which the log leaves here, and then those of the search.
  std::unique_ptr<engine::Dynaset> DsSearch;

  // Each field that is not empty adds a condition.
  forms::Command cmTipoData{
      *this, "cmTipoData", "=", {.tip = "Uguale, dal giorno, fino al giorno", .run = [this] {
                                   TurnComparison();
                                 }}};
  forms::MaskedField DataQso{*this, "DataQso", "##/##/####", {.caption = "Data", .characters = 10}};
  forms::TextField CallQso{
      *this,
      "CallQso",
      {.caption = "Call",
       .hint = "* sta per qualsiasi testo, ? per un carattere, # per una cifra",
       .characters = 12}};  // with the operator's own wildcards, as the locator
  forms::ListField Country{
      *this, "Country", forms::ListStyle::kCombo, {.caption = "Country", .characters = 22}};
  forms::ListField Provincia{
      *this, "Provincia", forms::ListStyle::kCombo, {.caption = "Provincia", .characters = 22}};
  forms::TextField Locator{
      *this,
      "Locator",
      {.caption = "Locator",
       .hint = "* sta per qualsiasi testo, ? per un carattere, # per una cifra",
       .characters = 12}};
  forms::ListField Banda{
      *this, "Banda", forms::ListStyle::kDropDown, {.caption = "Banda", .characters = 8}};
  forms::ListField Modo{
      *this, "Modo", forms::ListStyle::kDropDown, {.caption = "Modo", .characters = 8}};
  forms::ListField Propagazione{*this,
                                "Propagazione",
                                forms::ListStyle::kDropDown,
                                {.caption = "Propagazione", .characters = 12}};
  forms::CheckBox QslDaInviare{*this, "QslDaInviare", {.caption = "Qsl da inviare"}, true};
  forms::CheckBox QslRicevuta{*this, "QslRicevuta", {.caption = "Qsl ricevuta"}, true};
  forms::CheckBox QslInviata{*this, "QslInviata", {.caption = "Qsl inviata"}, true};
  forms::TextField Note{*this,
                        "Note",
                        {.caption = "Note",
                         .hint = "Testo contenuto nella nota. Doppio Click per l' help note",
                         .characters = 24}};  // found anywhere within a note
  forms::OptionGroup SortOrder{
      *this,
      "SortOrder",
      {"Data", "Call", "Prefisso", "Country", "Provincia", "Locator", "Qsl", "Qrb"},
      {.caption = "Ordine"}};
  forms::ToolBar Toolbar1{*this, "Toolbar1", {&cmSearch, &cmHelp, &cmExit}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

  forms::Command cmSearch{*this,
                          "cmSearch",
                          "Ricerca",
                          {.tip = "Cerca nel log", .shortcut = "F8", .run = [this] { Search(); }}};
  forms::Command cmHelp{*this, "cmHelp", "Aiuto", {.tip = "Aiuto", .shortcut = "F1", .run = [this] {
                                                     session_.Help(core::kHelpLogSearch);
                                                   }}};
  forms::Command cmExit{
      *this, "cmExit", "Esci", {.tip = "Chiude senza cercare", .run = [this] { Cancel(); }}};

  void Search();
  void Cancel();

  // The SELECT that the fields ask for.
  std::string Statement() const;

 private:
  // Equal, from the day on, up to the day.
  void TurnComparison();
  void OnCountryChange();
  void OnNotePick();

  core::Session& session_;
};

}  // namespace brenvo::log
