// The running score of the contest in work.
#pragma once

#include "core/session.h"
#include "forms/command.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

// Computed when it loads. A contest without contacts unloads it again and is a failure of the
// event.
class StatContest : public Window {
 public:
  explicit StatContest(Session& session);
  void Load() override;

  TextField TotaleQso{*this, "TotaleQso", {.caption = "Totale Qso", .characters = 12}};
  TextField QrbTotale{*this, "QrbTotale", {.caption = "Qrb. totale", .characters = 12}};  // km
  Panel Frame1{*this, "Frame1", {.caption = "Moltiplicatori"}};
  // Empty where the contest does not count the multiplier.
  TextField NrSquare{*this, "NrSquare", {.caption = "Square", .characters = 12}};
  TextField NrCountry{*this, "NrCountry", {.caption = "Country", .characters = 12}};
  TextField NrExch{*this, "NrExch", {.caption = "Exchange", .characters = 12}};
  TextField PunteggioTotale{
      *this, "PunteggioTotale", {.caption = "Punt. totale", .characters = 12}};
  TextField MediaPunti{
      *this,
      "MediaPunti",
      {.caption = "Media Punti/Qso", .characters = 12}};  // the whole score over all contacts
  TextField QrbMax{*this, "QrbMax", {.caption = "Massimo Qrb", .characters = 12}};  // km
  TextField QsoMaxQrb{*this, "QsoMaxQrb", {.caption = "Qso Nr.", .characters = 12}};
  Command cmExit{*this, "cmExit", "&Esci", [this] { Close(); }};

 private:
  Session& session_;
};

}  // namespace brenvo
