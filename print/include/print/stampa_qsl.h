// The screen that prints QSL labels.
#pragma once

#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/field.h"
#include "forms/list_field.h"
#include "forms/window.h"
#include "print/qsl_labels.h"

namespace brenvo::print {

class StampaQsl : public forms::Window {
 public:
  explicit StampaQsl(core::Session& session);
  void Load() override;
  void Unload() override;

  // Tenths of a millimetre; EtichXFila in labels.
  forms::Slider AltezzaEtichetta{*this, "AltezzaEtichetta", 339, 700, 339, {.caption = "Altezza"}};
  forms::Label VAltezzaEtichetta{*this, "VAltezzaEtichetta", {.characters = 6}};
  forms::Slider LarghezzaEtichetta{*this, "LarghezzaEtichetta",    800, 1200,
                                   800,   {.caption = "Larghezza"}};
  forms::Label VLarghezzaEtichetta{*this, "VLarghezzaEtichetta", {.characters = 6}};
  forms::Slider SpazOrizzontale{*this, "SpazOrizzontale", 0, 300, 0, {.caption = "Orizzontale"}};
  forms::Label VSpazOrizzontale{*this, "VSpazOrizzontale", {.characters = 6}};
  forms::Slider SpazVerticale{*this, "SpazVerticale", 0, 300, 0, {.caption = "Verticale"}};
  forms::Label VSpazVerticale{*this, "VSpazVerticale", {.characters = 6}};
  forms::Slider MargineSuperiore{*this, "MargineSuperiore", 0, 200, 0, {.caption = "Superiore"}};
  forms::Label VMargineSuperiore{*this, "VMargineSuperiore", {.characters = 6}};
  forms::Slider MargineSinistro{*this, "MargineSinistro", 0, 1000, 0, {.caption = "Sinistro"}};
  forms::Label VMargineSinistro{*this, "VMargineSinistro", {.characters = 6}};
  forms::Slider EtichXFila{*this, "EtichXFila", 1, 3, 1, {.caption = "Etichette per fila"}};
  forms::Label VEtichXFila{*this, "VEtichXFila", {.characters = 6}};
  // A sheet as it is sold takes the place of the sliders; the first entry leaves it to them.
  forms::ListField Foglio{
      *this, "Foglio", forms::ListStyle::kDropDown, {.caption = "Foglio", .characters = 26}};
  // How many labels stand on an A4 sheet, and where they run off it.
  forms::Label Avviso{*this, "Avviso"};
  forms::CheckBox DatiQso{*this, "DatiQso", {.caption = "Dati Qso"}};
  forms::CheckBox DatiStazione{*this, "DatiStazione", {.caption = "Dati stazione"}};
  forms::Command cmPrint{*this, "cmPrint", "&Stampa", [this] { Print(); }};
  forms::Command cmUpdate{*this, "cmUpdate", "&Memorizza", [this] { StoreGeometry(); }};
  forms::Command cmHelp{*this, "cmHelp", "&Aiuto"};  // no action on this screen
  forms::Command cmExit{*this, "cmExit", "&Esci", [this] { Close(); }};

  void Print();
  // Nothing in the log changes.
  void StoreGeometry();

 private:
  struct Setting {
    forms::Slider StampaQsl::*slider;
    forms::Label StampaQsl::*value;
  };
  static const Setting kSettings[7];
  void ShowValue(const Setting& setting);
  void PickSheet();
  void ShowSheet();
  // The sliders', or the sheet's.
  LabelGeometry Geometry() const;
  // Labels whose date is unreadable, and so is not on them.
  int PrintLabels();

  core::Session& session_;
};

}  // namespace brenvo::print
