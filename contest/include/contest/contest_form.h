// The contest header: one entry of the operator in one contest on one band, and the door to its
// contacts, its file and its sheets.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "contest/contest_header.h"
#include "core/help_topics.h"
#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/list_field.h"
#include "forms/picture_box.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

class ContestForm : public Window {
 public:
  explicit ContestForm(Session& session);
  ~ContestForm() override;

  void Load() override;
  void Unload() override;

  // "Dati contest"
  DatePicker DataContest{*this, "DataContest", {.caption = "Data", .characters = 9}};
  ListField Banda{*this, "Banda", ListStyle::kDropDown, {.caption = "Banda", .characters = 8}};
  TextField NomeContest{*this, "NomeContest", {.caption = "Descrizione", .characters = 20}};
  TextField Categoria{*this, "Categoria", {.caption = "Categoria", .characters = 10}};
  TextField Frequenza{*this, "Frequenza", {.caption = "Frequenza", .characters = 10}};  // MHz
  Panel Frame2{*this, "Frame2", {.caption = "Postazione"}};
  OptionButton Fisso{*this, "Fisso", {.caption = "Fisso"}};
  OptionButton Portatile{*this, "Portatile", {.caption = "Portatile"}};
  Panel Frame3{*this, "Frame3", {.caption = "Operatore"}};
  OptionButton Singolo{*this, "Singolo", {.caption = "Singolo"}};
  OptionButton Multi{*this, "Multi", {.caption = "Multi"}};
  Panel Frame1{*this, "Frame1", {.caption = "Moltiplicatori", .hint = ""}};
  CheckBox Square{*this, "Square", {.caption = "Square"}};
  CheckBox Country{*this, "Country", {.caption = "Country"}};
  CheckBox Exch{*this,
                "Exch",
                {.caption = "Exch",
                 .hint = "Moltiplicatore definito di volta in volta (es. Provincia), da indicare "
                         "nel campo note del "
                         "Qso [Exch=MI]"}};
  // "Dati Brenvo"
  TextField CallContest{*this, "CallContest", {.caption = "Call", .characters = 10}};
  TextField Qra{*this, "Qra", {.caption = "Qra", .characters = 14}};
  TextField Qth{*this, "Qth", {.caption = "Qth", .characters = 14}};
  TextField Indirizzo{*this, "Indirizzo", {.caption = "Indirizzo", .characters = 16}};
  TextField Provincia{*this, "Provincia", {.caption = "Provincia", .characters = 4}};
  // "Dati stazione"
  TextField SQTH{*this, "SQTH", {.caption = "Qth", .characters = 14}};
  TextField SProvincia{*this, "SProvincia", {.caption = "Provincia", .characters = 4}};
  TextField Locator{*this, "Locator", {.caption = "Locator", .characters = 9}};
  TextField Altezza{*this, "Altezza", {.caption = "Alt.", .characters = 6}};  // m
  TextField RTX{*this, "RTX", {.caption = "RTX", .characters = 16}};
  TextField Antenna{*this, "Antenna", {.caption = "Antenna", .characters = 16}};
  TextField Potenza{*this, "Potenza", {.caption = "Potenza", .characters = 7}};  // W
  // " Note"
  TextField Note{*this, "Note", {.caption = "Note"}};

  PictureBox Logo{*this, "Logo"};
  PictureBox Sign{*this, "Sign"};
  Panel Panel3D1{*this, "Panel3D1", {.caption = "Dati contest", .hint = ""}};
  Panel Panel3D2{*this, "Panel3D2", {.caption = "Dati Brenvo"}};
  Panel Panel3D3{*this, "Panel3D3", {.caption = "Dati stazione"}};
  Panel Panel3D4{*this, "Panel3D4", {.caption = " Note"}};
  StatusBar StatusBar1{*this, "StatusBar1", 1};
  ToolBar Toolbar1{*this,
                   "Toolbar1",
                   {&cmInsert, &cmUpdate, &cmDelete, Separator{}, &cmFirst, &cmPrevious, &cmNext,
                    &cmLast, Separator{}, &cmQso, &cmSearch, &cmExport, &cmClear, &cmPrint,
                    Separator{}, &cmHelp, &cmExit}};
  Command cmInsert{
      *this,
      "cmInsert",
      "Inserisci",
      {.tip = "Inserisce il contest", .shortcut = "F2", .run = [this] { ContestAdd(); }}};
  Command cmUpdate{*this,
                   "cmUpdate",
                   "Aggiorna",
                   {.tip = "Aggiorna il contest",
                    .shortcut = "F3",
                    .run = [this] { ContestUpdate(); },
                    .enabled = [this] { return recordCommands_; }}};
  Command cmDelete{*this,
                   "cmDelete",
                   "Cancella",
                   {.tip = "Cancella il contest e i suoi Qso",
                    .shortcut = "F4",
                    .run = [this] { ContestDelete(); },
                    .enabled = [this] { return recordCommands_; }}};
  Command cmFirst{
      *this, "cmFirst", "Primo", {.tip = "Primo contest", .shortcut = "Ctrl+Home", .run = [this] {
                                    GoToFirst();
                                  }}};
  Command cmPrevious{*this,
                     "cmPrevious",
                     "Precedente",
                     {.tip = "Contest precedente",
                      .shortcut = "PgUp",
                      .run = [this] { GoToPrevious(); },
                      .enabled = [this] { return recordCommands_; }}};
  Command cmNext{*this,
                 "cmNext",
                 "Successivo",
                 {.tip = "Contest successivo",
                  .shortcut = "PgDown",
                  .run = [this] { GoToNext(); },
                  .enabled = [this] { return recordCommands_; }}};
  Command cmLast{*this,
                 "cmLast",
                 "Ultimo",
                 {.tip = "Ultimo contest", .shortcut = "Ctrl+End", .run = [this] { GoToLast(); }}};
  Command cmQso{*this,
                "cmQso",
                "Qso",
                {.tip = "Qso del contest",
                 .shortcut = "F6",
                 .run = [this] { OpenContacts(); },
                 .enabled = [this] { return recordCommands_; }}};
  Command cmSearch{
      *this, "cmSearch", "Ricerca", {.tip = "Ricerca un contest", .shortcut = "F8", .run = [this] {
                                       ContestFind();
                                     }}};
  Command cmExport{
      *this,
      "cmExport",
      "Esporta",
      {.tip = "Scrive il file REG1TEST", .shortcut = "F9", .run = [this] { Export(); }}};
  Command cmClear{*this,
                  "cmClear",
                  "Nuovo",
                  {.tip = "Svuota i campi per un nuovo contest",
                   .shortcut = "F5",
                   .run = [this] { ContestClear(); },
                   .focusAfter = &DataContest}};
  Command cmPrint{
      *this,
      "cmPrint",
      "Stampa",
      {.tip = "Stampa i fogli del contest", .shortcut = "Ctrl+P", .run = [this] { Print(); }}};
  Command cmHelp{*this, "cmHelp", "Aiuto", {.tip = "Aiuto", .shortcut = "F1", .run = [this] {
                                              session_.Help(kHelpContest);
                                            }}};
  Command cmExit{*this, "cmExit", "Esci", {.tip = "Chiude il contest", .run = [this] { Close(); }}};

  void ContestAdd();
  void ContestUpdate();
  void ContestDelete();
  void ContestFind();
  void ContestClear();
  void ContestDisplay();
  void GoToFirst();
  void GoToPrevious();
  void GoToNext();
  void GoToLast();
  void OpenContacts();
  void Export();
  void Print();

  void OnBandaChange();

  // The band last acted on.
  std::string PrevBanda;

 private:
  void HandleEvents();
  bool ContestValid();
  void ContestSave();
  void SelectBand(std::string_view band);
  // The handle is everybody's: back to the record on this screen.
  void ReturnToShownRecord();
  // Without one the screen keeps what it shows, and the record commands wait for another.
  void ForgetRecordThatIsGone();
  ContestHeader ReadHeader() const;

  Session& session_;
  bool recordCommands_ = true;  // there is a record for them
  std::optional<Bookmark> shown_;
  ContactSubscription changes_;
};

}  // namespace brenvo
