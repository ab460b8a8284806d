// The station's log: one contact at a time in entry fields, and a grid of the same rows.
#pragma once

#include <array>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/data_source.h"
#include "core/help_topics.h"
#include "core/log_contact.h"
#include "core/session.h"
#include "core/shared_windows.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"

namespace brenvo::log {

class LogForm : public core::LogWindow {
 public:
  explicit LogForm(core::Session& session);
  ~LogForm() override;

  void Load() override;
  void Resize() override;
  std::string ShownCall() const override { return CallQso.Text(); }
  void TakeNewContacts() override { Renew(); }
  void Unload() override;

  // The contact. Each field maps to the column of Log of the same name, CallQso to Call, and
  // DataQso with Qtr to DataQso.
  forms::TextField CallQso{*this, "CallQso", {.caption = "Call", .characters = 14}};
  forms::ListField Banda{
      *this, "Banda", forms::ListStyle::kDropDown, {.caption = "Banda", .characters = 8}};
  forms::TextField Frequenza{*this, "Frequenza", {.caption = "Frequenza", .characters = 11}};
  forms::ListField Modo{
      *this, "Modo", forms::ListStyle::kDropDown, {.caption = "Modo", .characters = 9}};
  forms::TextField QrkDato{*this, "QrkDato", {.caption = "Qrk dato", .characters = 7}};
  forms::TextField QrkRicevuto{*this, "QrkRicevuto", {.caption = "Qrk ricevuto", .characters = 7}};
  forms::TextField Locator{*this, "Locator", {.caption = "Locator", .characters = 12}};
  forms::TextField Qra{*this, "Qra", {.caption = "Qra", .characters = 16}};
  forms::TextField Qth{*this, "Qth", {.caption = "Qth", .characters = 16}};
  forms::TextField Note{
      *this, "Note", {.caption = "Note", .hint = "Doppio Click per l' help note"}};
  forms::DatePicker DataQso{*this, "DataQso", {.caption = "Data"}};
  forms::MaskedField Qtr{*this, "Qtr", "##:##", {.caption = "Qtr", .characters = 6}};
  forms::TextField Prefisso{
      *this,
      "Prefisso",
      {.caption = "Prefisso", .hint = "Doppio Click per la tabella prefissi", .characters = 7}};
  forms::TextField ZonaCQ{*this, "ZonaCQ", {.caption = "Zona CQ", .characters = 4}};
  forms::TextField ZonaITU{*this, "ZonaITU", {.caption = "Zona ITU", .characters = 4}};
  forms::TextField Continente{*this, "Continente", {.caption = "Continente", .characters = 4}};
  forms::ListField Country{
      *this,
      "Country",
      forms::ListStyle::kCombo,
      {.caption = "Country", .hint = "Doppio Click per tabella country", .characters = 20}};
  forms::ListField Provincia{
      *this, "Provincia", forms::ListStyle::kCombo, {.caption = "Provincia", .characters = 18}};
  forms::TextField Manager{*this, "Manager", {.caption = "Manager", .characters = 12}};
  forms::TextField Potenza{*this, "Potenza", {.caption = "Potenza", .characters = 8}};
  forms::ListField Propagazione{*this,
                                "Propagazione",
                                forms::ListStyle::kDropDown,
                                {.caption = "Propagazione", .characters = 11}};
  forms::CheckBox QslDaInviare{*this, "QslDaInviare", {.caption = "Qsl da inviare"}};
  forms::CheckBox QslRicevuta{*this, "QslRicevuta", {.caption = "Qsl ricevuta"}};
  forms::CheckBox QslInviata{*this, "QslInviata", {.caption = "Qsl inviata"}};
  // Whose the ticked QslRicevuta of the record on screen is where no card has come: "da LoTW".
  forms::Label QslDi{*this, "QslDi"};
  forms::TextField QsoNr{
      *this,
      "QsoNr",
      {.caption = "Qso nr.", .characters = 8}};  // of the record on screen, kept across cmClear
  forms::TextField QsoTotali{
      *this, "QsoTotali", {.caption = "Qso totali", .characters = 8}};           // rows of DsLog
  forms::TextField Qrb{*this, "Qrb", {.caption = "Qrb (km)", .characters = 8}};  // km
  // A trigger without a caller: its change shows the contact with this call and locator.
  forms::TextField Posiziona{*this, "Posiziona"};

  forms::Panel Panel3D1{*this, "Panel3D1", {.hint = ""}};
  forms::Panel PanelGriglia{*this, "PanelGriglia"};
  forms::DataGrid DataGrid1{*this, "DataGrid1"};
  // What was done last.
  forms::Label Avviso{*this, "Avviso"};
  // Panel 1 hints, 2 the call, 3 the country, 4 the square.
  forms::StatusBar StatusBar1{*this, "StatusBar1", 4};
  forms::ToolBar Toolbar1{
      *this,
      "Toolbar1",
      {&cmInsert, &cmUpdate, &cmDelete, forms::Separator{}, &cmFirst, &cmPrevious, &cmNext, &cmLast,
       forms::Separator{}, &cmWorked, &cmVista, &cmSearch, &cmClear, &cmMappa, forms::Separator{},
       &cmExport, forms::Separator{}, &cmHelp, &cmExit}};
  // The keys of the tool bar and the button beside the time. While the grid is shown it takes all
  // of the tool bar's but its own.
  forms::Menu cmExport{*this, "cmExport", "Esporta", {&cmOnlyThisQso, &cmAllQso}};
  forms::Command cmInsert{*this,
                          "cmInsert",
                          "Inserisci",
                          {.tip = "Inserisce il Qso nel log",
                           .shortcut = "F2",
                           .run = [this] { InsertQso(); },
                           .enabled = [this] { return ShowsFields(); }}};
  forms::Command cmUpdate{*this,
                          "cmUpdate",
                          "Aggiorna",
                          {.tip = "Aggiorna il Qso",
                           .shortcut = "F3",
                           .run = [this] { UpdateQso(); },
                           .enabled = [this] { return OnRecord(); }}};
  forms::Command cmDelete{*this,
                          "cmDelete",
                          "Cancella",
                          {.tip = "Cancella il Qso",
                           .shortcut = "F4",
                           .run = [this] { DeleteQso(); },
                           .enabled = [this] { return OnRecord(); }}};
  forms::Command cmFirst{*this,
                         "cmFirst",
                         "Primo",
                         {.tip = "Primo Qso",
                          .shortcut = "Ctrl+Home",
                          .run = [this] { GoToFirst(); },
                          .enabled = [this] { return ShowsFields(); }}};
  forms::Command cmPrevious{*this,
                            "cmPrevious",
                            "Precedente",
                            {.tip = "Qso precedente",
                             .shortcut = "PgUp",
                             .run = [this] { GoToPrevious(); },
                             .enabled = [this] { return OnRecord(); }}};
  forms::Command cmNext{*this,
                        "cmNext",
                        "Successivo",
                        {.tip = "Qso successivo",
                         .shortcut = "PgDown",
                         .run = [this] { GoToNext(); },
                         .enabled = [this] { return OnRecord(); }}};
  forms::Command cmLast{*this,
                        "cmLast",
                        "Ultimo",
                        {.tip = "Ultimo Qso",
                         .shortcut = "Ctrl+End",
                         .run = [this] { GoToLast(); },
                         .enabled = [this] { return ShowsFields(); }}};
  forms::Command cmWorked{*this,
                          "cmWorked",
                          "Worked",
                          {.tip = "Cerca il Qso nei collegati",
                           .shortcut = "F6",
                           .run = [this] { WorkedPressed(); },
                           .enabled = [this] { return ShowsFields(); },
                           .toggle = true}};
  forms::Command cmVista{*this,
                         "cmVista",
                         "Griglia",
                         {.tip = "Mostra il log come griglia",
                          .shortcut = "F7",
                          .run = [this] { ShowGrid(ShowsFields()); },
                          .checked = [this] { return !ShowsFields(); }}};
  forms::Command cmSearch{*this,
                          "cmSearch",
                          "Ricerca",
                          {.tip = "Ricerca nel log",
                           .shortcut = "F8",
                           .run = [this] { SearchPressed(); },
                           .enabled = [this] { return ShowsFields(); },
                           .checked = [this] { return selected_; }}};
  forms::Command cmClear{*this,
                         "cmClear",
                         "Nuovo",
                         {.tip = "Svuota i campi per un nuovo Qso",
                          .shortcut = "F5",
                          .run = [this] { ClearQso(); },
                          .enabled = [this] { return ShowsFields(); },
                          .focusAfter = &CallQso}};
  forms::Command cmMappa{*this,
                         "cmMappa",
                         "Mappa",
                         {.tip = "Mostra la mappa del country",
                          .shortcut = "F9",
                          .run = [this] { MappaPressed(); },
                          .enabled = [this] { return OnRecord(); },
                          .toggle = true}};
  forms::Command cmOnlyThisQso{*this,
                               "cmOnlyThisQso",
                               "Esporta &questo Qso",
                               {.tip = "Scrive il Qso nel file Log.ADI",
                                .run = [this] { ExportThisQso(); },
                                .enabled = [this] { return ShowsFields(); }}};
  forms::Command cmAllQso{*this,
                          "cmAllQso",
                          "Esporta &tutti i Qso",
                          {.tip = "Scrive i Qso selezionati nel file Log.ADI",
                           .run = [this] { ExportAllQso(); },
                           .enabled = [this] { return ShowsFields(); }}};
  forms::Command cmHelp{*this,
                        "cmHelp",
                        "Aiuto",
                        {.tip = "Aiuto",
                         .shortcut = "F1",
                         .run = [this] { session_.Help(core::kHelpLog); },
                         .enabled = [this] { return ShowsFields(); }}};
  forms::Command cmExit{*this,
                        "cmExit",
                        "Esci",
                        {.tip = "Chiude il log",
                         .run = [this] { Close(); },
                         .enabled = [this] { return ShowsFields(); }}};
  // Enter, where the operator has chosen that it stores.
  forms::Command cmInvio{*this, "cmInvio", "Registra", [this] { EnterPressed(); }};
  // Beside what was done last.
  forms::Command cmAnnulla{*this,
                           "cmAnnulla",
                           "Annulla",
                           {.tip = "Riprende l'ultimo lavoro sui contatti",
                            .shortcut = "Ctrl+Z",
                            .run = [this] { TakeBackLast(); }}};
  forms::Command cmQtr{*this,
                       "cmQtr",
                       "Ora",
                       {.tip = "Imposta l'ora attuale",
                        .shortcut = "F12",
                        .run = [this] { SetTime(); },
                        .hint = "Imposta l'ora attuale"}};

  // The frequency in the fields goes to the transceiver.
  forms::Command cmRtx{*this,
                       "cmRtx",
                       "Sintonizza l'rtx",
                       {.tip = "L'rtx va sulla frequenza scritta, nel modo scritto",
                        .shortcut = "F11",
                        .run = [this] { TuneRig(); }}};

  // The last work on the contacts, whoever did it, is taken back; what came of it is told in
  // Avviso.
  void TakeBackLast();
  void InsertQso();
  void UpdateQso();
  void DeleteQso();
  void GoToFirst();
  void GoToPrevious();
  void GoToNext();
  void GoToLast();
  void ClearQso();
  // The ADIF file: the record on screen, or all of the current selection.
  void ExportThisQso();
  void ExportAllQso();

  // What runs while a contact is typed.
  void OnCallChange();
  void OnCallLeave();
  // What to tell where the call was of another country on the day in the fields than the one that
  // stands there; empty elsewhere.
  std::string OtherOnItsDay();
  // That, and the note on the station.
  std::string WhatIsToldOfCall();
  void OnRulesChange();
  void OnLocatorChange();
  void OnCountryChange();
  void OnCountryLeave();
  void OnProvinciaLeave();
  void OnPrefissoPick();
  void OnNotePick();
  void OnBandaChange();

  // The record set that the commands work on.
  std::unique_ptr<engine::Dynaset> DsLog;
  core::DataSource DataLog;
  // The values last acted on.
  std::string PrevCall, PrevLocator, PrevBanda, PrevCountry;

 private:
  struct Shown;  // a record as the fields show it
  // A column of the record that has a field of its own: all but QsoNr and DataQso.
  struct FieldOfColumn {
    const core::LogColumn& column;
    std::variant<forms::TextField*, forms::ListField*, forms::CheckBox*> field;
    // The column holds that many characters of the field, which shows a name behind them; 0: all.
    std::size_t code = 0;
  };
  std::vector<FieldOfColumn> RecordFields();

  void HandleEvents();
  // The fields stand on the screen, not the grid; and there is a record for the commands.
  bool ShowsFields() const { return !PanelGriglia.Visible(); }
  bool OnRecord() const { return recordCommands_ && ShowsFields(); }
  void SetTime();
  void SearchPressed();
  void WorkedPressed();
  void MappaPressed();
  void ShowQso();
  Shown ReadRecord();
  void ShowText(std::string_view column, forms::TextField& field, const std::string& text);
  // Panel 1 tells which columns of the record on screen are unreadable; with none it is emptied of
  // that.
  void TellUnreadable(const std::string& columns);
  // The choices that save keys, in log_form_keys.cpp. What they are asked about are new contacts:
  // the fields then show no record.
  bool IsNew() const { return !recordCommands_ && ShowsFields(); }
  void FollowChoices();
  void TakeTimeOfStart();
  // A new contact that nobody has touched follows the transceiver.
  void FollowRig();
  void TuneRig();
  std::string TextsOfRecord() const;
  void PutUsualReports();
  // The fields of a new contact that hold nothing and should; Enter pressed again leaves the one
  // that it went to last.
  forms::TextField* NextMissing();
  void EnterPressed();
  void KeepTimeOfEnd(std::int64_t qsoNr);
  // Says so of the contact in the fields.
  void TellDone(std::string_view what);
  bool TryInsert();
  bool HasTime() const;  // one that can be stored
  bool ValidateQso();
  void StoreQso(engine::EditableRecordset& row);
  base::DateTime TimeToStore() const;
  // An export of all contacts leaves DsLog at its end: back to the record it stood on.
  void ReturnFromExport();
  // The contacts of the selection have changed in the file: DsLog and the grid have them as they
  // are, on the same record and row. What is being typed stays.
  void Renew();
  void ShowPickedRow();
  // False when DsLog does not have the contact, renewed or not; it then stands where it stood.
  bool GoToContact(const std::string& number);
  void ReceiveSelection() override;
  void ShowGrid(bool shown);
  void TakeSelection(std::unique_ptr<engine::Dynaset> rows, std::string_view select);
  void PositionByCall();
  // Panel 1 tells how many contacts went into a file without their date.
  void TellUndated(int contacts);
  // Asks under `title` whether the file keeps what it holds, then appends what `write` writes.
  void Export(std::string_view title, const std::function<void(std::ostream&)>& write);
  // The panels that have told something tell it anew.
  void RenewStatus();
  void TellCall();
  void TellCountry();
  void TellSquare();
  // Panel `number` tells what `condition` (ending in a blank) finds in Log on the chosen band.
  void ShowStatus(int number, std::string_view condition, std::string_view subject);
  // The panel's words weigh what they say, and are pale while another band than theirs is chosen.
  void MarkStatus(int number);
  std::string ExcludedQsoNr() const;

  core::Session& session_;
  const std::vector<FieldOfColumn> record_ = RecordFields();
  forms::Bounds boundsBeforeGrid_;
  bool toldUnreadable_ = false;                   // in panel 1
  bool recordCommands_ = false;                   // there is a record for them
  bool selected_ = false;                         // a selection is in force, or being made
  std::optional<engine::Bookmark> beforeExport_;  // where DsLog stood
  bool renewsLater_ = false;  // the contacts changed while the search dialog held DsLog
  // Of the panels 2 to 4: what their words weigh, and on which band.
  struct Told {
    forms::Weight weight = forms::Weight::kPlain;
    std::string banda;
    std::string shownOn;  // the band that was chosen when they were marked
  };
  std::array<Told, 3> told_;
  // Chosen by the operator; looked up when he chooses, not at each keystroke.
  struct Chosen {
    bool keepsLink = false, reportsByMode = false, statusByBand = false, timesOfQso = false,
         followsRig = false;
  } chosen_;
  std::string timeOfStart_;                 // date and time as they were put in, empty for not yet
  std::vector<forms::TextField*> skipped_;  // missing, and left so by the operator
  forms::TextField* asked_ = nullptr;       // where Enter went last
  std::string toldOfCall_;                  // in Avviso, of the call that was left last
  // What the fields of a new contact held when the program had last put something there.
  std::string untouched_;
  forms::Subscription changes_, choices_, rules_, rig_;
};

}  // namespace brenvo::log
