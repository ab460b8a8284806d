// A station's page: what the log knows of the station whose call is being typed.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/call_book.h"
#include "core/table_window.h"
#include "platform/background.h"
#include "worked/rules.h"

namespace brenvo::log {

class Corrispondente : public core::TableWindow {
 public:
  explicit Corrispondente(core::Session& session);
  ~Corrispondente() override;
  void Load() override;
  void Unload() override;

  // Milliseconds from the last keystroke until the log is asked, and between the looks whether it
  // has answered.
  static constexpr int kPause = 150, kBetweenLooks = 20;

  // Follows the call in the log; another one may be typed here.
  forms::TextField CallQso{*this, "CallQso", {.caption = "Call", .characters = 14}};
  core::TableGrid Tabella{*this, {.hint = "Invio o doppio click mostrano il Qso nel log"}};
  // A row a band, a column a group of modes.
  forms::DataGrid Matrice{*this, "Matrice", {.hint = "Lavorato e confermato, per banda e modo"}};
  forms::TextField Nomi{*this, "Nomi", {.caption = "Nomi"}};
  forms::TextField Luoghi{*this, "Luoghi", {.caption = "Luoghi"}};
  forms::TextField Locatori{*this, "Locatori", {.caption = "Locator"}};
  // Why the marked contact has its country; without one, whose call it is today.
  forms::TextField Entita{*this, "Entita", {.caption = "Country"}};
  // Distance and bearings to where it is, by what is known best.
  forms::TextField Direzione{*this, "Direzione", {.caption = "Direzione"}};
  forms::TextField Sole{*this, "Sole", {.caption = "Sole (UTC)"}};
  forms::TextField Nota{
      *this, "Nota", {.caption = "Nota", .hint = "La nota si mostra al prossimo collegamento"}};

  forms::Command cmUpdate{*this,
                          "cmUpdate",
                          "Salva nota",
                          {.tip = "Salva la nota sulla stazione",
                           .shortcut = kStoreKey,
                           .run = [this] { StoreNote(); },
                           .enabled = [this] { return !call_.empty(); }}};
  forms::Command cmApri{*this,
                        "cmApri",
                        "Apri nel log",
                        {.tip = "Mostra il Qso nel log",
                         .run = [this] { OpenChosen(); },
                         .enabled = [this] { return ChosenKey().has_value(); }}};

 protected:
  void RowChosen() override;

 private:
  struct Answer;

  void AskSoon();
  bool Concerns(const core::ContactsChanged& change) const;
  void Ask();
  void LookForAnswer();
  void Show(const Answer& answer);
  void ShowPlace();
  void StopAsking();
  void StoreNote();
  void OpenChosen();
  // Where others have met it.
  std::vector<core::PlaceOfCall> PlacesToldOf(const Answer& answer);
  // The locator of the place where the station is by its contacts, else by what others tell, else by
  // its country; empty when nothing tells.
  std::string PlaceOf(const Answer& answer);

  std::shared_ptr<const worked::Rules> rules_;
  std::unique_ptr<platform::Timer> timer_;
  std::shared_ptr<Answer> asked_;  // what is being asked; null for nothing
  std::unique_ptr<platform::BackgroundWork> work_;
  std::string call_;   // the base call that is shown or asked for
  std::string place_;  // where it is, as long as the log's entry does not tell
  std::vector<core::PlaceOfCall> told_;
  bool due_ = false;   // something else is wanted than what is being asked
  std::string noted_;  // whose note is shown
  std::string typed_;  // the locator that the log's entry shows
  // Of each row, at its key.
  struct Shown {
    std::int64_t qsoNr = 0;
    std::optional<base::DateTime> when;
    std::string call, country;
  };
  std::vector<Shown> shown_;
  core::MemoryRows rows_, bands_;
  forms::Subscription calls_, contacts_, closing_;
};

}  // namespace brenvo::log
