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
  Slider AltezzaEtichetta{*this, "AltezzaEtichetta", 339, 700, 339, {.caption = "Altezza"}};
  Label VAltezzaEtichetta{*this, "VAltezzaEtichetta", {.characters = 6}};
  Slider LarghezzaEtichetta{*this, "LarghezzaEtichetta", 800, 1200, 800, {.caption = "Larghezza"}};
  Label VLarghezzaEtichetta{*this, "VLarghezzaEtichetta", {.characters = 6}};
  Slider SpazOrizzontale{*this, "SpazOrizzontale", 0, 300, 0, {.caption = "Orizzontale"}};
  Label VSpazOrizzontale{*this, "VSpazOrizzontale", {.characters = 6}};
  Slider SpazVerticale{*this, "SpazVerticale", 0, 300, 0, {.caption = "Verticale"}};
  Label VSpazVerticale{*this, "VSpazVerticale", {.characters = 6}};
  Slider MargineSuperiore{*this, "MargineSuperiore", 0, 200, 0, {.caption = "Superiore"}};
  Label VMargineSuperiore{*this, "VMargineSuperiore", {.characters = 6}};
  Slider MargineSinistro{*this, "MargineSinistro", 0, 1000, 0, {.caption = "Sinistro"}};
  Label VMargineSinistro{*this, "VMargineSinistro", {.characters = 6}};
  Slider EtichXFila{*this, "EtichXFila", 1, 3, 1, {.caption = "Etichette per fila"}};
  Label VEtichXFila{*this, "VEtichXFila", {.characters = 6}};
  CheckBox DatiQso{*this, "DatiQso", {.caption = "Dati Qso"}};
  CheckBox DatiStazione{*this, "DatiStazione", {.caption = "Dati stazione"}};
  Command cmPrint{*this, "cmPrint", "&Stampa", [this] { Print(); }};
  Command cmUpdate{*this, "cmUpdate", "&Memorizza", [this] { StoreGeometry(); }};
  Command cmHelp{*this, "cmHelp", "&Aiuto"};  // no action on this screen
  Command cmExit{*this, "cmExit", "&Esci", [this] { Close(); }};

  void Print();
  // Nothing in the log changes.
  void StoreGeometry();

 private:
  struct Setting {
    Slider StampaQsl::*slider;
    Label StampaQsl::*value;
    const char* key;
  };
  static const Setting kSettings[7];
  void ShowValue(const Setting& setting);
  // Labels whose date is unreadable, and so is not on them.
  int PrintLabels();

  Session& session_;
};

}  // namespace brenvo
