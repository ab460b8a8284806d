// The entry of one contest contact.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/data_source.h"
#include "core/session.h"
#include "core/typed_contest_qso.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::contest {

// Its caller sets Data1 and Operation, and shows it. Enter goes from field to field and stores the
// contact from the last one, or goes to what is still missing.
class ContestNewQso : public forms::Window {
 public:
  explicit ContestNewQso(core::Session& session);

  void Load() override;
  void Activate() override;
  void Unload() override;

  forms::TextField CallQso{*this, "CallQso", {.caption = "Call", .characters = 12}};
  forms::TextField QrkD{*this, "QrkD", {.caption = "Qrk dato", .characters = 5}};
  forms::TextField QrkR{*this, "QrkR", {.caption = "Qrk ricevuto", .characters = 5}};
  forms::TextField ProgrR{*this, "ProgrR", {.caption = "Progr. ricevuto", .characters = 6}};
  forms::TextField Locator{*this, "Locator", {.caption = "Locator", .characters = 9}};
  forms::TextField Exc{*this, "Exc", {.caption = "Exchange", .characters = 9}};
  forms::TextField Note{*this, "Note", {.caption = "Note", .characters = 20}};
  forms::TextField Giorno{*this, "Giorno", {.caption = "Giorno", .characters = 3}};
  forms::MaskedField Qtr{*this, "Qtr", "##:##", {.caption = "Qtr", .characters = 6}};
  forms::TextField ProgrD{*this, "ProgrD", {.caption = "Progr. dato", .characters = 6}};
  forms::TextField Modo{*this, "Modo", {.caption = "Modo", .characters = 6}};
  forms::CheckBox Qsl{*this, "Qsl", {.caption = "Qsl"}};
  forms::CheckBox InLog{*this, "InLog", {.caption = "In Log"}};
  forms::TextField Qrb{*this, "Qrb", {.caption = "Qrb", .characters = 7}};  // km
  forms::TextField Operation{*this,
                             "Operation"};  // "I" a new contact, "U" a change of the current row
  forms::Command cmInsertR{*this,
                           "cmInsertR",
                           "Inserisci e &resta",
                           {.tip = "Inserisce il Qso e prepara il prossimo",
                            .run = [this] { InsertAndStay(); },
                            .focusAfter = &CallQso}};
  // What was stored last; whose call it is on the contact's day, where the table of prefixes says
  // another country.
  forms::Label Avviso{*this, "Avviso"};
  forms::Command cmInsertE{
      *this, "cmInsertE", "&Inserisci ed esci", {.tip = "Inserisce il Qso e chiude", .run = [this] {
                                                   InsertAndLeave();
                                                 }}};
  forms::Command cmQtr{
      *this, "cmQtr", "Qtr", {.tip = "Imposta l'ora attuale", .shortcut = "F12", .run = [this] {
                                ShowTime();
                              }}};

  // The rows of the log's own grid.
  core::DataSource* Data1 = nullptr;
  // They have been read anew.
  std::function<void()> OnStored;

  // The serial handed out last; 0 before the first.
  std::int64_t UltimoProgr = 0;

  // Writes what the operator has typed. A refused contact is told, and nothing more: neither
  // caller stops for it.
  void InsertQso();

 private:
  struct Refusal {
    std::string_view text;
    forms::TextField* field;
  };

  void HandleEvents();
  void ChainEnter();
  void InsertAndStay();
  void InsertAndLeave();
  void Prepare();
  void PrepareNew();
  void ShowRow();
  void ShowTime();
  void OnCallLeave();
  void OnLocatorLeave();
  void EnterOnLastField();
  std::optional<Refusal> FindRefusal();
  std::string OtherOnItsDay();
  // Another program's contact may have got the serial of this one.
  void GiveWayToOther();
  core::TypedContestQso Typed() const;

  core::Session& session_;
  core::ContestContext contest_;
  forms::Subscription changes_;
  bool storing_ = false;     // its own contact
  bool others_ = false;      // others have stored some since it was opened
  bool otherOnDay_ = false;  // Avviso tells of the call's country
};

}  // namespace brenvo::contest
