// The question whether the log is in UTC or in local time.
#pragma once

#include "core/log_time.h"
#include "core/session.h"
#include "forms/command.h"
#include "forms/status_bar.h"
#include "forms/window.h"

namespace brenvo::upkeep {

// Modal. Stores the answer; none is chosen by Enter alone.
class OraDelLog : public forms::Window {
 public:
  explicit OraDelLog(core::Session& session);
  void Load() override;
  void Unload() override;

  forms::Label Domanda{*this, "Domanda"};
  forms::Label Ultimo{*this, "Ultimo"};  // the last contact, beside which one sees what it is
  forms::Label Spiegazione{*this, "Spiegazione"};
  forms::Command cmUtc{*this,
                       "cmUtc",
                       "&UTC",
                       {.tip = "Le ore del log sono in UTC",
                        .run = [this] { Answer(core::LogTime::kUtc); },
                        .hint = "Le ore del log sono in UTC"}};
  forms::Command cmLocale{*this,
                          "cmLocale",
                          "Ora &locale",
                          {.tip = "Le ore del log sono quelle locali, con l'ora legale",
                           .run = [this] { Answer(core::LogTime::kLocal); },
                           .hint = "Le ore del log sono quelle locali, con l'ora legale"}};
  forms::Command cmExit{
      *this, "cmExit", "&Esci", {.tip = "Chiude senza rispondere", .run = [this] { Close(); }}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

 private:
  void Answer(core::LogTime time);

  core::Session& session_;
};

}  // namespace brenvo::upkeep
