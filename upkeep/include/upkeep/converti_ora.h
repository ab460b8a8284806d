// The log's way from local time to UTC, looked at before it is gone.
#pragma once

#include "core/session.h"
#include "core/table_window.h"
#include "upkeep/time_conversion.h"

namespace brenvo::upkeep {

// Modal, of a log in local time. Lists the contacts whose time is doubtful.
class ConvertiOra : public core::TableWindow {
 public:
  explicit ConvertiOra(core::Session& session);
  void Load() override;

  core::TableGrid Tabella{
      *this, {.hint = "Ore del cambio dell'ora: Invio sceglie l'altra lettura di un'ora doppia"}};
  forms::TextField Qso{*this, "Qso", {.caption = "Qso da convertire", .characters = 9}};
  forms::TextField Periodo{*this, "Periodo", {.caption = "Periodo", .characters = 40}};
  forms::Label Spiegazione{*this, "Spiegazione"};
  forms::Command cmCambia{
      *this,
      "cmCambia",
      "Altra lettura",
      {.tip = "Prende un'ora che c'è due volte come quella prima o dopo il cambio",
       .run = [this] { TakeOther(); },
       .enabled = [this] { return HasOther(); }}};
  forms::Command cmConverti{*this,
                            "cmConverti",
                            "Converti",
                            {.tip = "Porta tutte le ore del log in UTC",
                             .shortcut = kStoreKey,
                             .run = [this] { Convert(); },
                             .enabled = [this] { return plan_.has_value(); }}};

 private:
  void ShowPlan();
  std::vector<core::MemoryRows::Row> RowsOfPlan() const;
  bool HasOther();
  void TakeOther();
  void Convert();

  core::MemoryRows rows_;
  std::optional<TimeConversion> plan_;  // nothing once it is done
};

// The menu's command: asks for the log's time where nobody was asked; tells what there is to tell
// of a log in UTC, else shows the window.
void ConvertiOraDelLog(core::Session& session);

}  // namespace brenvo::upkeep
