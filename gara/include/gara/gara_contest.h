// A contest by rules while it is worked: the entry of contacts on all its bands, what each is
// worth, and the log that is sent.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/arranged_window.h"
#include "core/call_book.h"
#include "core/help_topics.h"
#include "core/typed_contest_qso.h"
#include "forms/choice_fields.h"
#include "forms/list_field.h"
#include "gara/check.h"
#include "gara/count.h"
#include "gara/keyer.h"
#include "gara/log_file.h"
#include "gara/rule.h"

namespace brenvo::gara {

class CallList;
struct ChangedWorth;
struct Entry;
struct Statistics;
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
                          {.tip = "Ferma quello che si manda, se no svuota i campi del Qso; da "
                                  "vuoti, rimette quello che c'era",
                           .shortcut = "F5",
                           .run = [this] { Empty(); },
                           .focusAfter = &Call}};
  forms::Command cmRimetti{*this,
                           "cmRimetti",
                           "Rimetti",
                           {.tip = "Rimette i campi che sono stati svuotati",
                            .shortcut = "Ctrl+Z",
                            .run = [this] { PutBack(); },
                            .enabled = [this] { return kept_.has_value(); },
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
  forms::Command cmEsportaAdif{*this,
                               "cmEsportaAdif",
                               "Esporta ADIF",
                               {.tip = "Scrive un file ADIF con i Qso del contest",
                                .run = [this] { ExportAdif(); },
                                .enabled = [this] { return HasContest(); }}};
  forms::Command cmImportaNominativi{
      *this,
      "cmImportaNominativi",
      "Impara nominativi",
      {.tip = "Legge nominativi e locatori da un log di contest di chiunque, da un file ADIF, da "
              "una storia di nominativi o da una lista",
       .run = [this] { LearnFile(); }}};
  forms::Command cmNelLog{*this,
                          "cmNelLog",
                          "Nel log",
                          {.tip = "Porta nel log della stazione i Qso che non ci sono ancora",
                           .run = [this] { Transfer(); },
                           .enabled = [this] { return HasContest(); }}};
  forms::Command cmStatistiche{*this,
                               "cmStatistiche",
                               "Statistiche",
                               {.tip = "Fa una pagina con ritmo, distanze, square e i migliori Qso",
                                .run = [this] { ShowStatistics(); },
                                .enabled = [this] { return HasContest(); }}};
  forms::Command cmStampa{*this,
                          "cmStampa",
                          "Stampa",
                          {.tip = "Stampa le statistiche, anche in un PDF",
                           .run = [this] { PrintStatistics(); },
                           .enabled = [this] { return HasContest(); }}};
  // What they send stands in Preferenze; hidden without transmission.
  forms::Command cmTasto1{*this, "cmTasto1", "F1", {.run = [this] { SendKey(0); }}};
  forms::Command cmTasto2{*this, "cmTasto2", "F2", {.run = [this] { SendKey(1); }}};
  forms::Command cmTasto3{*this, "cmTasto3", "F3", {.run = [this] { SendKey(2); }}};
  forms::Command cmTasto4{*this, "cmTasto4", "F4", {.run = [this] { SendKey(3); }}};
  forms::Command cmTasto5{*this, "cmTasto5", "F5", {.run = [this] { SendKey(4); }}};
  forms::Command cmTasto6{*this, "cmTasto6", "F6", {.run = [this] { SendKey(5); }}};
  forms::Command cmTasto7{*this, "cmTasto7", "F7", {.run = [this] { SendKey(6); }}};
  forms::Command cmTasto8{*this, "cmTasto8", "F8", {.run = [this] { SendKey(7); }}};
  forms::Command cmHelp{
      *this, "cmHelp", "Aiuto", {.tip = "Aiuto", .shortcut = "F1", .run = [this] {
                                   session_.Help(core::HelpTopicOf("GaraContest"));
                                 }}};

 private:
  struct Kept {  // what stood in the fields before they were emptied
    std::string call, sent, received, serial, exchange, locator, when;
    std::optional<std::int64_t> corrected;
  };
  bool HasContest() const { return entry_ != nullptr; }
  void ReadRules();
  void ShowEntries(std::int64_t number);
  void RulesChosen();
  void Begin();
  void Open(const Entry& entry);
  void LookAgain();
  void LeaveEntry();
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
  bool TakeTime(Contact& contact, const Contact* corrected);
  void Store();
  void StoreBehindAll(StoredQso qso);
  void StoreAmongOthers(StoredQso qso, std::optional<std::size_t> place);
  std::vector<ChangedWorth> WeighAnew(std::vector<StoredQso>& qsos, std::optional<std::size_t> but);
  void TakeUp();
  void TakeUp(std::int64_t key);
  void Remove();
  void Empty();
  void PutBack();
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
  // Where the call was before, the likeliest first; without this contest where `others` says so.
  std::vector<core::PlaceOfCall> PlacesOf(std::string_view call, bool others);
  const CallList& KnownCalls();
  std::string PartialsOf(const std::string& typed);
  std::string OtherBandsOf(const std::string& call) const;

  void Recount();
  core::MemoryRows::Row RowOf(std::size_t place) const;
  void FillTable(std::optional<std::int64_t> key);
  std::int64_t KeyOf(const Contact& contact) const;
  std::optional<std::size_t> PlaceOfKey(std::int64_t key) const;
  // The contact at that place is one of its station's.
  void Remember(std::size_t place);
  // The places of those with any form of that call, ascending.
  std::span<const std::size_t> WithStation(std::string_view call) const;

  std::vector<LogRow> Rows(std::string_view band) const;
  LogHead Head(std::string_view band);
  std::vector<Finding> Check();
  void ShowFindings(const std::vector<Finding>& findings);
  void GoToFinding();
  void Export(LogFormat format);
  void ExportAdif();
  void Import();
  void LearnFile();
  void Transfer();
  Statistics CountStatistics();
  void ShowStatistics();
  void PrintStatistics();

  void SendKey(std::size_t key);
  // With transmission these keys send, and with Shift do what they did before.
  void ShowSendingKeys();

  core::PutContestQso put_;
  std::vector<Rule> rules_;
  std::vector<Entry> entries_;
  std::unique_ptr<Entry> entry_;  // the one that is open; null for none
  Rule rule_;
  std::vector<StoredQso> qsos_;  // by time
  std::unique_ptr<Count> count_;
  std::map<std::string, std::int64_t> serials_;           // the last one given, by band
  std::unordered_map<std::int64_t, std::size_t> places_;  // by key
  std::unordered_map<std::string, std::vector<std::size_t>> stations_;  // places, by the plain call
  std::unique_ptr<CallList> known_;  // null until they are asked for
  // What was found of the call that is typed, until a contact or a file may tell otherwise.
  struct LookedUp {
    std::string call, partials;
    std::vector<core::PlaceOfCall> places;
  };
  std::optional<LookedUp> lookedUp_;
  std::optional<std::int64_t> corrected_;  // the key of the one in the fields
  std::optional<Kept> kept_;
  std::string expected_;  // locator
  GaraRows rows_;
  core::MemoryRows findingRows_;
  std::vector<std::optional<std::int64_t>> findingKeys_;
  std::unique_ptr<platform::Timer> timer_;
  bool storing_ = false, showing_ = false;
  Keyer keyer_;
  std::array<forms::Command*, 8> sendingKeys_;
  struct Moved {
    forms::Command* command;
    std::string shortcut;
  };
  std::vector<Moved> moved_;  // commands that have given their key to a sending one
  forms::Subscription changes_, choices_;
};

}  // namespace brenvo::gara
