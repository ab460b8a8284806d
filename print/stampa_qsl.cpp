#include "print/stampa_qsl.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "base/number.h"
#include "core/modules.h"

namespace brenvo {
namespace {

constexpr std::string_view kSection = "StampaQsl";

QsoLabel LabelOf(Recordset& row) {
  if (FieldText(row, "Modo") == "Satellite" && row.Field("Note").IsNull()) {
    throw std::runtime_error("La nota di un collegamento via satellite e' Null");
  }
  return {FieldText(row, "Call"),          FieldText(row, "QrkDato"),
          FieldText(row, "Banda"),         FieldText(row, "Modo"),
          FieldText(row, "Note"),          row.Field("DataQso").ReadableDate(),
          row.Field("Frequenza").Number(), row.Field("QslRicevuta").ReadableBool().value_or(false)};
}

}  // namespace

// In the order of reading and storing.
const StampaQsl::Setting StampaQsl::kSettings[7] = {
    {&StampaQsl::AltezzaEtichetta, &StampaQsl::VAltezzaEtichetta, "AltezzaEtichette"},
    {&StampaQsl::LarghezzaEtichetta, &StampaQsl::VLarghezzaEtichetta, "LarghezzaEtichette"},
    {&StampaQsl::SpazOrizzontale, &StampaQsl::VSpazOrizzontale, "SpaziaturaOrizzontale"},
    {&StampaQsl::SpazVerticale, &StampaQsl::VSpazVerticale, "SpaziaturaVerticale"},
    {&StampaQsl::MargineSuperiore, &StampaQsl::VMargineSuperiore, "MargineSuperiore"},
    {&StampaQsl::MargineSinistro, &StampaQsl::VMargineSinistro, "MargineSinistro"},
    {&StampaQsl::EtichXFila, &StampaQsl::VEtichXFila, "EtichettePerFila"},
};

StampaQsl::StampaQsl(Session& session)
    : Window(session.Host(), "StampaQsl", "Stampa Qsl", Twips(7800), Twips(7200)),
      session_(session) {
  for (const Setting& setting : kSettings) {
    (this->*setting.slider).OnChange = [this, &setting] { ShowValue(setting); };
  }
  CancelCommand = &cmExit;
}

void StampaQsl::Load() {
  RestoreWindow(session_, *this, kSection);
  for (const Setting& setting : kSettings) {
    Slider& slider = this->*setting.slider;
    const double stored = Val(session_.GetSetting(kSection, setting.key, ""));
    const double least = slider.Minimum();
    const double most = slider.Maximum();
    slider.SetValue(static_cast<int>(std::clamp(stored, least, most)));
    ShowValue(setting);
  }
}

void StampaQsl::Unload() { SaveWindow(session_, *this, kSection); }

void StampaQsl::ShowValue(const Setting& setting) {
  const Slider& slider = this->*setting.slider;
  (this->*setting.value)
      .SetText(&slider == &EtichXFila ? FormatNumber(slider.Value(), "##")
                                      : FormatNumber(slider.Value() / 10.0, "###.0"));
}

void StampaQsl::StoreGeometry() {
  for (const Setting& setting : kSettings) {
    session_.SaveSetting(kSection, setting.key, std::to_string((this->*setting.slider).Value()));
  }
}

void StampaQsl::Print() {
  if (!DatiQso.IsOn() && !DatiStazione.IsOn()) {
    session_.Messages().Show(MessageIcon::kNone, "", "Selezionare il tipo di stampa");
    return;
  }
  int undated = 0;
  {
    const BusyPointer busy(Host());
    undated = PrintLabels();
    session_.Machine.GetPrinter().EndDocument();
  }
  if (undated == 0) return;
  session_.Messages().Show(
      MessageIcon::kExclamation, Caption(),
      fmt::format("Etichette senza data, che nel database non è leggibile: {}", undated));
}

int StampaQsl::PrintLabels() {
  int undated = 0;
  const auto rows = session_.Db.OpenSnapshot(
      "SELECT * FROM Log WHERE (QslDaInviare OR (QslRicevuta and not QslInviata))");
  if (rows->EOF_()) return undated;
  Printer& printer = session_.Machine.GetPrinter();
  Table& user = *session_.TbUser;
  const StationLabel station{FieldText(user, "Call"),    FieldText(user, "Qra"),
                             FieldText(user, "Locator"), FieldText(user, "Indirizzo"),
                             FieldText(user, "Qth"),     FieldText(user, "Provincia")};
  LabelGrid grid({AltezzaEtichetta.Value(), LarghezzaEtichetta.Value(), SpazOrizzontale.Value(),
                  SpazVerticale.Value(), MargineSuperiore.Value(), MargineSinistro.Value(),
                  EtichXFila.Value()});
  const bool both = DatiQso.IsOn() && DatiStazione.IsOn();
  bool turnoStazione = DatiStazione.IsOn();
  while (!rows->EOF_()) {
    if (turnoStazione) {
      DrawStationLabel(printer, grid.X(), grid.Y(), station);
    } else {
      const QsoLabel label = LabelOf(*rows);
      if (!label.DataQso) ++undated;
      DrawQsoLabel(printer, grid.X(), grid.Y(), label);
    }
    grid.Next(printer);
    if (!(both && turnoStazione)) rows->MoveNext();
    if (both) turnoStazione = !turnoStazione;
  }
  return undated;
}

}  // namespace brenvo
