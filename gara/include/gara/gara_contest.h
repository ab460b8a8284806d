// A contest by rules while it is worked: the entry of contacts on all its bands, what each is
// worth, and the log that is sent.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/arranged_window.h"
#include "core/help_topics.h"
#include "core/typed_contest_qso.h"
#include "forms/choice_fields.h"
#include "forms/list_field.h"
#include "gara/check.h"
#include "gara/count.h"
#include "gara/log_file.h"
#include "gara/rule.h"

namespace brenvo::gara {

struct Entry;
struct StoredQso;

// Contacts in memory, the newest first, each under a number of its own.
class GaraRows : public core::MemoryRows {
 public:
  static constexpr std::size_t kMost = 1000000;
  void SetNumbered(std::vector<std::int64_t> numbers, std::vector<Row> rows);
  void PutNumbered(std::int64_t number, Row row);
  std::int64_t KeyAt(std::int64_t row) override;
  std::optional<std::int64_t> RowOf(std::int64_t number) override;

 private:
  std::vector<std::int64_t> numbers_;
};

// Enter leads to what is missing and stores from anywhere once nothing is. Times are UTC.
class GaraContest : public core::ArrangedWindow {
 public:
  GaraContest(core::Session& session, core::PutContestQso put);
  ~GaraContest() override;
  void Load() override;
  void Unload() override;

  // The contest, and what the operator says of his entry.
  forms::ListField Gara{*this,
                        "Gara",
                        forms::ListStyle::kDropDown,
                        {.caption = "Contest", .hint = "I contest già cominciati"}};
  forms::ListField Regole{*this,
                          "Regole",
                          forms::ListStyle::kDropDown,
                          {.caption = "Regole", .hint = "Di un contest nuovo"}};
  forms::TextField Dal{
      *this, "Dal", {.caption = "Dal", .hint = "Il primo giorno, gg/mm/aaaa", .characters = 10}};
  forms::TextField MioCall{*this, "MioCall", {.caption = "Nominativo", .characters = 10}};
  forms::TextField MioLocator{*this, "MioLocator", {.caption = "Locatore", .characters = 7}};
  forms::TextField MioScambio{
      *this,
      "MioScambio",
      {.caption = "Scambio dato", .hint = "La propria provincia, dove si manda", .characters = 6}};
  forms::ListField Categoria{*this,
                             "Categoria",
                             forms::ListStyle::kDropDown,
                             {.caption = "Categoria", .hint = "Con le parole dello sponsor"}};
  forms::TextField Mail{*this, "Mail", {.caption = "Mail", .characters = 18}};
  forms::TextField Obiettivo{
      *this, "Obiettivo", {.caption = "Obiettivo", .hint = "Punti da fare", .characters = 8}};
  // The year of the rules, and what they leave open.
  forms::Label Regolamento{*this, "Regolamento"};

  // The contact.
  forms::ListField Banda{
      *this, "Banda", forms::ListStyle::kDropDown, {.caption = "Banda", .characters = 6}};
  forms::ListField Modo{
      *this, "Modo", forms::ListStyle::kDropDown, {.caption = "Modo", .characters = 6}};
  forms::TextField Call{*this, "Call", {.caption = "Call", .characters = 12}};
  forms::TextField RapportoDato{*this, "RapportoDato", {.caption = "Dato", .characters = 4}};
  forms::Label SerialeDato{*this, "SerialeDato"};
  forms::TextField RapportoRicevuto{
      *this, "RapportoRicevuto", {.caption = "Ricevuto", .characters = 4}};
  forms::TextField SerialeRicevuto{
      *this, "SerialeRicevuto", {.caption = "Nr ricevuto", .characters = 6}};
  forms::TextField Scambio{*this, "Scambio", {.caption = "Scambio", .characters = 6}};
  forms::TextField Locator{*this, "Locator", {.caption = "Locatore", .characters = 8}};
  forms::TextField Quando{
      *this,
      "Quando",
      {.caption = "Quando (UTC)", .hint = "gg/mm/aaaa hh:mm; vuoto per adesso", .characters = 16}};
  // Whether it is a duplicate, what it is worth.
  forms::Label Stato{*this, "Stato"};
  // Where the call was before, the serial that is to be expected.
  forms::Label Storia{*this, "Storia"};
  // Calls that hold what is typed, and those one letter away.
  forms::Label Parziali{*this, "Parziali"};
  forms::Label Direzione{*this, "Direzione"};
  // The other bands of this station.
  forms::Label Cambi{*this, "Cambi"};
  forms::Label Punti{*this, "Punti"};
  forms::Label Totale{*this, "Totale"};
  forms::Label Ritmo{*this, "Ritmo"};
  forms::Label Tempo{*this, "Tempo"};

  core::TableGrid Qso{*this, {.hint = "Invio o doppio click correggono il Qso"}, "Qso"};
  // What the check has found, and what an import has told.
  forms::DataGrid Verifiche{*this, "Verifiche", {.hint = "Invio o doppio click vanno al Qso"}};

  forms::Command cmNuova{*this,
                         "cmNuova",
                         "Nuovo contest",
                         {.tip = "Comincia un contest con queste regole, da questo giorno",
                          .shortcut = kNewKey,
                          .run = [this] { Begin(); },
                          .focusAfter = &Call}};
  forms::Command cmInserisci{*this,
                             "cmInserisci",
                             "Inserisci",
                             {.tip = "Registra il Qso",
                              .shortcut = kStoreKey,
                              .run = [this] { Store(); },
                              .enabled = [this] { return HasContest(); },
                              .focusAfter = &Call}};
  forms::Command cmCorreggi{*this,
                            "cmCorreggi",
                            "Correggi",
                            {.tip = "Porta il Qso scelto nei campi",
                             .shortcut = "F3",
                             .run = [this] { TakeUp(); },
                             .enabled = [this] { return ChosenKey().has_value(); },
                             .focusAfter = &Call}};
  forms::Command cmCancella{*this,
                            "cmCancella",
                            "Cancella",
                            {.tip = "Cancella il Qso scelto; il suo progressivo non torna",
                             .shortcut = "Ctrl+Del",
                             .run = [this] { Remove(); },
                             .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmSvuota{*this,
                          "cmSvuota",
                          "Svuota",
                          {.tip = "Svuota i campi del Qso; da vuoti, rimette quello che c'era",
                           .shortcut = "F5",
                           .run = [this] { Empty(); },
                           .focusAfter = &Call}};
  forms::Command cmModo{
      *this,
      "cmModo",
      "Modo seguente",
      {.tip = "Passa al modo seguente", .shortcut = "F6", .run = [this] { Step(Modo); }}};
  forms::Command cmBanda{
      *this,
      "cmBanda",
      "Banda seguente",
      {.tip = "Passa alla banda seguente", .shortcut = "F7", .run = [this] { Step(Banda); }}};
  forms::Command cmAccetta{*this,
                           "cmAccetta",
                           "Locatore solito",
                           {.tip = "Scrive il locatore che la stazione aveva le altre volte",
                            .shortcut = "F11",
                            .run = [this] { AcceptLocator(); }}};
  forms::Command cmVerifica{*this,
                            "cmVerifica",
                            "Verifica",
                            {.tip = "Controlla tutto il log come prima di mandarlo",
                             .shortcut = "F4",
                             .run = [this] { Check(); },
                             .enabled = [this] { return HasContest(); }}};
  forms::Command cmVaiAlQso{*this,
                            "cmVaiAlQso",
                            "Vai al Qso",
                            {.tip = "Porta nei campi il Qso di cui dice la riga della verifica",
                             .shortcut = "F9",
                             .run = [this] { GoToFinding(); },
                             .focusAfter = &Call}};
  forms::Command cmEsportaEdi{*this,
                              "cmEsportaEdi",
                              "Esporta EDI",
                              {.tip = "Verifica e scrive un file EDI per banda",
                               .run = [this] { Export(LogFormat::kEdi); },
                               .enabled = [this] { return HasContest(); }}};
  forms::Command cmEsportaCabrillo{*this,
                                   "cmEsportaCabrillo",
                                   "Esporta Cabrillo",
                                   {.tip = "Verifica e scrive il file Cabrillo",
                                    .run = [this] { Export(LogFormat::kCabrillo); },
                                    .enabled = [this] { return HasContest(); }}};
  forms::Command cmImportaEdi{*this,
                              "cmImportaEdi",
                              "Importa EDI",
                              {.tip = "Legge in questo contest un log EDI o Cabrillo",
                               .run = [this] { Import(); },
                               .enabled = [this] { return HasContest(); }}};
  forms::Command cmNelLog{*this,
                          "cmNelLog",
                          "Nel log",
                          {.tip = "Porta nel log della stazione i Qso che non ci sono ancora",
                           .run = [this] { Transfer(); },
                           .enabled = [this] { return HasContest(); }}};
  forms::Command cmHelp{
      *this, "cmHelp", "Aiuto", {.tip = "Aiuto", .shortcut = "F1", .run = [this] {
                                   session_.Help(core::HelpTopicOf("GaraContest"));
                                 }}};

 private:
  struct Kept;  // an entry that was emptied
  bool HasContest() const { return entry_ != nullptr; }
  void ReadRules();
  void ShowEntries(std::int64_t number);
  void RulesChosen();
  void Begin();
  void Open(const Entry& entry);
  void Reload();
  void KeepEntry();

  bool TableKey(char32_t key) override;
  void EnterPressed(forms::TextField& from);
  // The first field that lacks something, and what.
  struct Lack {
    forms::TextField* field = nullptr;
    std::string text;
  };
  std::optional<Lack> FindLack(const forms::TextField* but = nullptr);
  bool Wants(PartKind kind) const;
  void Store();
  void TakeUp();
  void TakeUp(std::int64_t key);
  void Remove();
  void Empty();
  void ClearEntry();
  void Step(forms::ListField& list);
  void AcceptLocator();

  Contact TypedContact() const;
  gara::Place PlaceOf(const Contact& contact);
  OwnEntry Own();
  void ShowStatus();
  void ShowTotals();
  void ShowTime();
  void ShowSerial();
  std::int64_t NextSerial(const std::string& band);
  std::vector<std::string> LocatorsOf(std::string_view call);
  std::string PartialsOf(const std::string& typed) const;
  std::string OtherBandsOf(const std::string& call) const;

  void Recount();
  core::MemoryRows::Row RowOf(std::size_t place) const;
  void FillTable(std::optional<std::int64_t> key);
  std::int64_t KeyOf(const Contact& contact) const;
  std::optional<std::size_t> PlaceOfKey(std::int64_t key) const;

  std::vector<LogRow> Rows(std::string_view band) const;
  LogHead Head(std::string_view band);
  std::vector<Finding> Check();
  void ShowFindings(const std::vector<Finding>& findings);
  void GoToFinding();
  void Export(LogFormat format);
  void Import();
  void Transfer();

  core::PutContestQso put_;
  std::vector<Rule> rules_;
  std::vector<Entry> entries_;
  std::unique_ptr<Entry> entry_;  // the one that is open; null for none
  Rule rule_;
  std::vector<StoredQso> qsos_;  // by time
  std::unique_ptr<Count> count_;
  std::map<std::string, std::int64_t> serials_;  // the last one given, by band
  std::set<std::string> worked_;                 // calls of this contest
  std::vector<std::string> known_;               // calls of the super check, ascending
  std::optional<std::int64_t> corrected_;        // the key of the one in the fields
  std::unique_ptr<Kept> kept_;
  std::string expected_;  // locator
  GaraRows rows_;
  core::MemoryRows findingRows_;
  std::vector<std::optional<std::int64_t>> findingKeys_;
  std::unique_ptr<platform::Timer> timer_;
  bool storing_ = false, showing_ = false;
  forms::Subscription changes_;
};

}  // namespace brenvo::gara
