// The works of the history, what each has changed, and the way back.
#pragma once

#include <memory>
#include <vector>

#include "core/table_window.h"
#include "history/take_back.h"

namespace brenvo::history {

class Storia : public core::TableWindow {
 public:
  explicit Storia(core::Session& session);
  void Load() override;

  // Newest first; at most the last so many.
  static constexpr std::int64_t kMostWorks = 10000;
  // Milliseconds from a single contact's store until it is listed: whoever types does not wait for
  // the list.
  static constexpr int kRenewAfter = 200;
  core::TableGrid Tabella{*this, {.hint = "Invio o doppio click riprendono il lavoro"}};
  // Of the marked work: a row a column that it changed, with what stood there before and after; of
  // a large one the first contacts.
  static constexpr std::size_t kMostContacts = 200;
  forms::Label Contatti{*this, "Contatti"};
  forms::DataGrid Cambiamenti{*this, "Cambiamenti", {.hint = "Che cosa c'era prima, e dopo"}};

  forms::Command cmRiprendi{*this,
                            "cmRiprendi",
                            "Riprendi",
                            {.tip = "Riporta tutti i contatti del lavoro a com'erano prima",
                             .shortcut = "F4",
                             .run = [this] { TakeBackWork(); },
                             .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmRiprendiQso{*this,
                               "cmRiprendiQso",
                               "Riprendi il Qso",
                               {.tip = "Riporta a com'era prima solo il contatto scelto sotto",
                                .shortcut = "F6",
                                .run = [this] { TakeBackOne(); },
                                .enabled = [this] { return ChosenContact() != 0; }}};

 protected:
  void RowChosen() override;

 private:
  void FillTable();
  void Renew();
  void ShowChanges();
  // 0 while none is marked.
  std::int64_t ChosenContact();
  void TakeBackWork();
  void TakeBackOne();
  void TakeBackAndSay(std::optional<std::int64_t> contact);

  std::vector<PastWork> works_;  // a work a row, at its key
  core::MemoryRows rows_, changes_;
  std::vector<std::int64_t> changed_;  // the contact of each row of changes_
  std::int64_t shown_ = 0;             // the work whose changes are shown
  std::unique_ptr<platform::Timer> renewing_;
  forms::Subscription stored_;
};

}  // namespace brenvo::history
