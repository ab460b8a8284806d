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

namespace brenvo::contest {

class ContestForm : public forms::Window {
 public:
  explicit ContestForm(core::Session& session);
  ~ContestForm() override;

  void Load() override;
  void Unload() override;

  // "Dati contest"
  forms::DatePicker DataContest{*this, "DataContest", {.caption = "Data", .characters = 9}};
  forms::ListField Banda{
      *this, "Banda", forms::ListStyle::kDropDown, {.caption = "Banda", .characters = 8}};
  forms::TextField NomeContest{*this, "NomeContest", {.caption = "Descrizione", .characters = 20}};
  forms::TextField Categoria{*this, "Categoria", {.caption = "Categoria", .characters = 10}};
  forms::TextField Frequenza{
      *this, "Frequenza", {.caption = "Frequenza", .characters = 10}};  // MHz
  forms::Panel Frame2{*this, "Frame2", {.caption = "Postazione"}};
  forms::OptionButton Fisso{*this, "Fisso", {.caption = "Fisso"}};
  forms::OptionButton Portatile{*this, "Portatile", {.caption = "Portatile"}};
  forms::Panel Frame3{*this, "Frame3", {.caption = "Operatore"}};
  forms::OptionButton Singolo{*this, "Singolo", {.caption = "Singolo"}};
  forms::OptionButton Multi{*this, "Multi", {.caption = "Multi"}};
  forms::Panel Frame1{*this, "Frame1", {.caption = "Moltiplicatori", .hint = ""}};
  forms::CheckBox Square{*this, "Square", {.caption = "Square"}};
  forms::CheckBox Country{*this, "Country", {.caption = "Country"}};
  forms::CheckBox Exch{
      *this,
      "Exch",
      {.caption = "Exch",
       .hint = "Moltiplicatore definito di volta in volta (es. Provincia), da indicare "
               "nel campo note del "
               "Qso [Exch=MI]"}};
  // "Dati Brenvo"
  forms::TextField CallContest{*this, "CallContest", {.caption = "Call", .characters = 10}};
  forms::TextField Qra{*this, "Qra", {.caption = "Qra", .characters = 14}};
  forms::TextField Qth{*this, "Qth", {.caption = "Qth", .characters = 14}};
  forms::TextField Indirizzo{*this, "Indirizzo", {.caption = "Indirizzo", .characters = 16}};
  forms::TextField Provincia{*this, "Provincia", {.caption = "Provincia", .characters = 4}};
  // "Dati stazione"
  forms::TextField SQTH{*this, "SQTH", {.caption = "Qth", .characters = 14}};
  forms::TextField SProvincia{*this, "SProvincia", {.caption = "Provincia", .characters = 4}};
  forms::TextField Locator{*this, "Locator", {.caption = "Locator", .characters = 9}};
  forms::TextField Altezza{*this, "Altezza", {.caption = "Alt.", .characters = 6}};  // m
  forms::TextField RTX{*this, "RTX", {.caption = "RTX", .characters = 16}};
  forms::TextField Antenna{*this, "Antenna", {.caption = "Antenna", .characters = 16}};
  forms::TextField Potenza{*this, "Potenza", {.caption = "Potenza", .characters = 7}};  // W
  // " Note"
  forms::TextField Note{*this, "Note", {.caption = "Note"}};

  forms::PictureBox Logo{*this, "Logo"};
  forms::PictureBox Sign{*this, "Sign"};
  forms::Panel Panel3D1{*this, "Panel3D1", {.caption = "Dati contest", .hint = ""}};
  forms::Panel Panel3D2{*this, "Panel3D2", {.caption = "Dati Brenvo"}};
  forms::Panel Panel3D3{*this, "Panel3D3", {.caption = "Dati stazione"}};
  forms::Panel Panel3D4{*this, "Panel3D4", {.caption = " Note"}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};
  forms::ToolBar Toolbar1{*this,
                          "Toolbar1",
                          {&cmInsert, &cmUpdate, &cmDelete, forms::Separator{}, &cmFirst,
                           &cmPrevious, &cmNext, &cmLast, forms::Separator{}, &cmQso, &cmSearch,
                           &cmExport, &cmClear, &cmPrint, forms::Separator{}, &cmHelp, &cmExit}};
  forms::Command cmInsert{
      *this,
      "cmInsert",
      "Inserisci",
      {.tip = "Inserisce il contest", .shortcut = "F2", .run = [this] { ContestAdd(); }}};
  forms::Command cmUpdate{*this,
                          "cmUpdate",
                          "Aggiorna",
                          {.tip = "Aggiorna il contest",
                           .shortcut = "F3",
                           .run = [this] { ContestUpdate(); },
                           .enabled = [this] { return recordCommands_; }}};
  forms::Command cmDelete{*this,
                          "cmDelete",
                          "Cancella",
                          {.tip = "Cancella il contest e i suoi Qso",
                           .shortcut = "F4",
                           .run = [this] { ContestDelete(); },
                           .enabled = [this] { return recordCommands_; }}};
  forms::Command cmFirst{
      *this, "cmFirst", "Primo", {.tip = "Primo contest", .shortcut = "Ctrl+Home", .run = [this] {
                                    GoToFirst();
                                  }}};
  forms::Command cmPrevious{*this,
                            "cmPrevious",
                            "Precedente",
                            {.tip = "Contest precedente",
                             .shortcut = "PgUp",
                             .run = [this] { GoToPrevious(); },
                             .enabled = [this] { return recordCommands_; }}};
  forms::Command cmNext{*this,
                        "cmNext",
                        "Successivo",
                        {.tip = "Contest successivo",
                         .shortcut = "PgDown",
                         .run = [this] { GoToNext(); },
                         .enabled = [this] { return recordCommands_; }}};
  forms::Command cmLast{
      *this, "cmLast", "Ultimo", {.tip = "Ultimo contest", .shortcut = "Ctrl+End", .run = [this] {
                                    GoToLast();
                                  }}};
  forms::Command cmQso{*this,
                       "cmQso",
                       "Qso",
                       {.tip = "Qso del contest",
                        .shortcut = "F6",
                        .run = [this] { OpenContacts(); },
                        .enabled = [this] { return recordCommands_; }}};
  forms::Command cmSearch{
      *this, "cmSearch", "Ricerca", {.tip = "Ricerca un contest", .shortcut = "F8", .run = [this] {
                                       ContestFind();
                                     }}};
  forms::Command cmExport{
      *this,
      "cmExport",
      "Esporta",
      {.tip = "Scrive il file REG1TEST", .shortcut = "F9", .run = [this] { Export(); }}};
  forms::Command cmClear{*this,
                         "cmClear",
                         "Nuovo",
                         {.tip = "Svuota i campi per un nuovo contest",
                          .shortcut = "F5",
                          .run = [this] { ContestClear(); },
                          .focusAfter = &DataContest}};
  forms::Command cmPrint{
      *this,
      "cmPrint",
      "Stampa",
      {.tip = "Stampa i fogli del contest", .shortcut = "Ctrl+P", .run = [this] { Print(); }}};
  forms::Command cmHelp{*this, "cmHelp", "Aiuto", {.tip = "Aiuto", .shortcut = "F1", .run = [this] {
                                                     session_.Help(core::kHelpContest);
                                                   }}};
  forms::Command cmExit{
      *this, "cmExit", "Esci", {.tip = "Chiude il contest", .run = [this] { Close(); }}};

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

  core::Session& session_;
  bool recordCommands_ = true;  // there is a record for them
  std::optional<engine::Bookmark> shown_;
  forms::Subscription changes_;
};

}  // namespace brenvo::contest
