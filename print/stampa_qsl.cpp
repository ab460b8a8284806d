#include "print/stampa_qsl.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "base/number.h"
#include "core/log_contact.h"
#include "core/station_profile.h"
#include "core/texts.h"
#include "core/window_place.h"

namespace brenvo::print {
namespace {

constexpr std::string_view kSection = "StampaQsl";

QsoLabel LabelOf(engine::Recordset& row) {
  if (core::FieldText(row, core::column::kModo) == "Satellite" &&
      row.Field(core::column::kNote).IsNull()) {
    throw std::runtime_error("La nota di un collegamento via satellite è Null");
  }
  return {core::FieldText(row, core::column::kCall),
          core::FieldText(row, core::column::kQrkDato),
          core::FieldText(row, core::column::kBanda),
          core::FieldText(row, core::column::kModo),
          core::FieldText(row, core::column::kNote),
          row.Field(core::column::kDataQso).ReadableDate(),
          row.Field(core::column::kFrequenza).Number(),
          row.Field(core::column::kQslRicevuta).ReadableBool().value_or(false)};
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

StampaQsl::StampaQsl(core::Session& session)
    : forms::Window(session.Host(), "StampaQsl", "Stampa Qsl", base::Twips(7800),
                    base::Twips(7200)),
      session_(session) {
  for (const Setting& setting : kSettings) {
    (this->*setting.slider).OnChange = [this, &setting] { ShowValue(setting); };
  }
  CancelCommand = &cmExit;
}

void StampaQsl::Load() {
  core::RestoreWindow(session_, *this, kSection);
  for (const Setting& setting : kSettings) {
    forms::Slider& slider = this->*setting.slider;
    const double stored = base::Val(session_.GetSetting(kSection, setting.key, ""));
    const double least = slider.Minimum();
    const double most = slider.Maximum();
    slider.SetValue(static_cast<int>(std::clamp(stored, least, most)));
    ShowValue(setting);
  }
}

void StampaQsl::Unload() { core::SaveWindow(session_, *this, kSection); }

void StampaQsl::ShowValue(const Setting& setting) {
  const forms::Slider& slider = this->*setting.slider;
  (this->*setting.value)
      .SetText(&slider == &EtichXFila ? base::FormatNumber(slider.Value(), "##")
                                      : base::FormatNumber(slider.Value() / 10.0, "###.0"));
}

void StampaQsl::StoreGeometry() {
  for (const Setting& setting : kSettings) {
    session_.SaveSetting(kSection, setting.key, std::to_string((this->*setting.slider).Value()));
  }
}

void StampaQsl::Print() {
  if (!DatiQso.IsOn() && !DatiStazione.IsOn()) {
    session_.Messages().Show(platform::MessageIcon::kNone, "", "Selezionare il tipo di stampa");
    return;
  }
  int undated = 0;
  {
    const forms::BusyPointer busy(Host());
    undated = PrintLabels();
    session_.Machine.GetPrinter().EndDocument();
  }
  if (undated == 0) return;
  session_.Messages().Show(
      platform::MessageIcon::kExclamation, Caption(),
      fmt::format("Etichette senza data, che nel database non è leggibile: {}", undated));
}

int StampaQsl::PrintLabels() {
  int undated = 0;
  const auto rows = session_.Db.OpenSnapshot(
      "SELECT * FROM Log WHERE (QslDaInviare OR (QslRicevuta and not QslInviata))");
  if (rows->EOF_()) return undated;
  platform::Printer& printer = session_.Machine.GetPrinter();
  const auto profile = [this](std::string_view column) {
    return core::ProfileText(session_, column);
  };
  const StationLabel station{profile("Call"),      profile("Qra"), profile("Locator"),
                             profile("Indirizzo"), profile("Qth"), profile("Provincia")};
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

}  // namespace brenvo::print
