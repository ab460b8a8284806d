// The running score of the contest in work.
#pragma once

#include "core/session.h"
#include "forms/command.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::contest {

// Computed when it loads. A contest without contacts unloads it again and is a failure of the
// event.
class StatContest : public forms::Window {
 public:
  explicit StatContest(core::Session& session);
  void Load() override;

  forms::TextField TotaleQso{*this, "TotaleQso", {.caption = "Totale Qso", .characters = 12}};
  forms::TextField QrbTotale{
      *this, "QrbTotale", {.caption = "Qrb. totale", .characters = 12}};  // km
  forms::Panel Frame1{*this, "Frame1", {.caption = "Moltiplicatori"}};
  // Empty where the contest does not count the multiplier.
  forms::TextField NrSquare{*this, "NrSquare", {.caption = "Square", .characters = 12}};
  forms::TextField NrCountry{*this, "NrCountry", {.caption = "Country", .characters = 12}};
  forms::TextField NrExch{*this, "NrExch", {.caption = "Exchange", .characters = 12}};
  forms::TextField PunteggioTotale{
      *this, "PunteggioTotale", {.caption = "Punt. totale", .characters = 12}};
  forms::TextField MediaPunti{
      *this,
      "MediaPunti",
      {.caption = "Media Punti/Qso", .characters = 12}};  // the whole score over all contacts
  forms::TextField QrbMax{*this, "QrbMax", {.caption = "Massimo Qrb", .characters = 12}};  // km
  forms::TextField QsoMaxQrb{*this, "QsoMaxQrb", {.caption = "Qso Nr.", .characters = 12}};
  forms::Command cmExit{*this, "cmExit", "&Esci", [this] { Close(); }};

 private:
  core::Session& session_;
};

}  // namespace brenvo::contest
