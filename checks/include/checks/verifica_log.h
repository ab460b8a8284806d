// What looks wrong in the log, contact by contact, with the reason and the way to the contact.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "checks/check_log.h"
#include "core/arranged_window.h"
#include "core/contacts_later.h"
#include "forms/choice_fields.h"
#include "forms/list_field.h"

namespace brenvo::checks {

// The log is checked when the operator wants it. Then a contact that is stored or deleted is
// checked again by itself, with all contacts of its call; after many the list is called out of date
// and stays.
class VerificaLog : public core::ArrangedWindow {
 public:
  explicit VerificaLog(core::Session& session);
  ~VerificaLog() override;
  void Load() override;
  void Activate() override;

  forms::ListField Regola{
      *this,
      "Regola",
      forms::ListStyle::kDropDown,
      {.caption = "Regola", .hint = "Mostra solo i motivi di questa regola", .characters = 16}};
  forms::CheckBox AncheVerificati{
      *this,
      "AncheVerificati",
      {.caption = "Anche quelli che vanno bene",
       .hint = "Mostra anche i motivi già lasciati come sono con \"Va bene così\""}};
  core::TableGrid Tabella{*this, {.hint = "Invio apre il contatto nel log, spazio lo segna"}};
  // The whole reason of the marked row, however narrow its column is.
  forms::Label Spiegazione{*this, "Spiegazione"};

  forms::Command cmVerifica{*this,
                            "cmVerifica",
                            "Verifica",
                            {.tip = "Passa tutto il log e mostra che cosa non torna",
                             .shortcut = "F5",
                             .run = [this] { CheckAll(); }}};
  forms::Command cmApri{*this,
                        "cmApri",
                        "Apri nel log",
                        {.tip = "Mostra il contatto nella finestra Log",
                         .run = [this] { OpenInLog(); },
                         .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmVaBene{*this,
                          "cmVaBene",
                          "Va bene così",
                          {.tip = "Lascia il contatto com'è: non viene più mostrato per questo "
                                  "motivo. Vale per le righe segnate",
                           .shortcut = "F6",
                           .run = [this] { LetChosenStand(true); },
                           .enabled = [this] { return AnyChosen(false); }}};
  forms::Command cmRivedi{*this,
                          "cmRivedi",
                          "Da rivedere",
                          {.tip = "Toglie \"Va bene così\" dalle righe segnate",
                           .shortcut = "F7",
                           .run = [this] { LetChosenStand(false); },
                           .enabled = [this] { return AnyChosen(true); }}};

 protected:
  void RowChosen() override;

 private:
  struct Listed {
    std::int64_t key = 0;
    ListedFinding finding;
    bool letStand = false;
  };

  void CheckAll();
  void TakeIn(std::vector<ListedFinding> findings);
  void FillTable();
  // Null where there is none.
  Listed* Find(std::optional<std::int64_t> key);
  bool AnyChosen(bool letStand);
  void OpenInLog();
  void LetChosenStand(bool stand);
  void CheckAgain(const core::OneContact& change);

  std::vector<Listed> listed_;  // by rising keys; what is checked anew gets new ones
  std::int64_t lastKey_ = 0;
  core::KeyedRows rows_;
  std::optional<CheckFacts> facts_;  // of the last check; nothing before the first one
  core::ContactsLater stored_;
  forms::Subscription closing_;
};

}  // namespace brenvo::checks
