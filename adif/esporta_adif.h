// The export of the log as a log file of the standard.
#pragma once

#include <string>

#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/status_bar.h"
#include "forms/window.h"

namespace brenvo {

class EsportaAdif : public Window {
 public:
  explicit EsportaAdif(Session& session);
  void Load() override;
  void Unload() override;

  // The second is there while a log window is open.
  OptionGroup Contatti{*this, "Contatti", {"Tutto il log", "La selezione della finestra Log"}};
  OptionGroup Lettere{
      *this, "Lettere", {"UTF-8: tutte le lettere", "ASCII: à diventa a, ł diventa l"}};
  Command CmEsporta{*this, "cmEsporta", "E&sporta", [this] { cmEsporta(); }};
  Command CmHelp{*this, "cmHelp", "&Aiuto"};
  Command CmExit{*this, "cmExit", "&Esci", [this] { Close(); }};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  // Asks for the file and writes it.
  void cmEsporta();

 private:
  std::string Selection() const;

  Session& session_;
};

}  // namespace brenvo
