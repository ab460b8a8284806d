// The screen that prints QSL labels.
#pragma once

#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/field.h"
#include "forms/window.h"
#include "print/qsl_labels.h"

namespace brenvo {

class StampaQsl : public Window {
 public:
  explicit StampaQsl(Session& session);
  void Load() override;
  void Unload() override;

  // Tenths of a millimetre; EtichXFila in labels.
  Slider AltezzaEtichetta{*this, "AltezzaEtichetta", 339, 700, 339};
  Label VAltezzaEtichetta{*this, "VAltezzaEtichetta"};
  Slider LarghezzaEtichetta{*this, "LarghezzaEtichetta", 800, 1200, 800};
  Label VLarghezzaEtichetta{*this, "VLarghezzaEtichetta"};
  Slider SpazOrizzontale{*this, "SpazOrizzontale", 0, 300, 0};
  Label VSpazOrizzontale{*this, "VSpazOrizzontale"};
  Slider SpazVerticale{*this, "SpazVerticale", 0, 300, 0};
  Label VSpazVerticale{*this, "VSpazVerticale"};
  Slider MargineSuperiore{*this, "MargineSuperiore", 0, 200, 0};
  Label VMargineSuperiore{*this, "VMargineSuperiore"};
  Slider MargineSinistro{*this, "MargineSinistro", 0, 1000, 0};
  Label VMargineSinistro{*this, "VMargineSinistro"};
  Slider EtichXFila{*this, "EtichXFila", 1, 3, 1};
  Label VEtichXFila{*this, "VEtichXFila"};
  CheckBox DatiQso{*this, "DatiQso"};
  CheckBox DatiStazione{*this, "DatiStazione"};
  Command CmPrint{*this, "cmPrint", "&Stampa", [this] { cmPrint(); }};
  Command CmUpdate{*this, "cmUpdate", "&Memorizza", [this] { cmUpdate(); }};
  Command CmHelp{*this, "cmHelp", "&Aiuto"};  // no action on this screen
  Command CmExit{*this, "cmExit", "&Esci", [this] { Close(); }};

  void cmPrint();
  // Stores the geometry; nothing in the log changes.
  void cmUpdate();

 private:
  struct Setting {
    Slider StampaQsl::*slider;
    Label StampaQsl::*value;
    const char* key;
    const char* caption;
  };
  static const Setting kSettings[7];
  void ShowValue(const Setting& setting);
  // Labels whose date is unreadable, and so is not on them.
  int PrintLabels();

  Session& session_;
};

}  // namespace brenvo
