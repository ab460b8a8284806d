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

  TextField TotaleQso{*this, "TotaleQso"};
  TextField QrbTotale{*this, "QrbTotale"};  // km
  Panel Frame1{*this, "Frame1"};
  // Empty where the contest does not count the multiplier.
  TextField NrSquare{*this, "NrSquare"};
  TextField NrCountry{*this, "NrCountry"};
  TextField NrExch{*this, "NrExch"};
  TextField PunteggioTotale{*this, "PunteggioTotale"};
  TextField MediaPunti{*this, "MediaPunti"};  // the whole score over all contacts
  TextField QrbMax{*this, "QrbMax"};          // km
  TextField QsoMaxQrb{*this, "QsoMaxQrb"};
  Command cmExit{*this, "cmExit", "&Esci"};

 private:
  Session& session_;
};

}  // namespace brenvo
