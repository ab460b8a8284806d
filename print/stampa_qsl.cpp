#include "print/stampa_qsl.h"

#include <fmt/format.h>

#include <iterator>
#include <stdexcept>

#include "base/number.h"
#include "base/text.h"
#include "core/confirmations.h"
#include "core/lists.h"
#include "core/log_contact.h"
#include "core/station_profile.h"
#include "core/texts.h"
#include "core/window_place.h"
#include "label_settings.h"
#include "print/label_sheets.h"

namespace brenvo::print {
namespace {

constexpr std::string_view kByHand = "A mano, con i cursori";
constexpr std::string_view kLabelFont = "Times New Roman";
constexpr double kFirstLine = 9;  // points, of a label that is made smaller

std::string Millimetres(int tenths) { return base::FormatNumber(tenths / 10.0, "##0.0"); }

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

// In the order of kLabelSettings.
const StampaQsl::Setting StampaQsl::kSettings[7] = {
    {&StampaQsl::AltezzaEtichetta, &StampaQsl::VAltezzaEtichetta},
    {&StampaQsl::LarghezzaEtichetta, &StampaQsl::VLarghezzaEtichetta},
    {&StampaQsl::SpazOrizzontale, &StampaQsl::VSpazOrizzontale},
    {&StampaQsl::SpazVerticale, &StampaQsl::VSpazVerticale},
    {&StampaQsl::MargineSuperiore, &StampaQsl::VMargineSuperiore},
    {&StampaQsl::MargineSinistro, &StampaQsl::VMargineSinistro},
    {&StampaQsl::EtichXFila, &StampaQsl::VEtichXFila},
};

StampaQsl::StampaQsl(core::Session& session)
    : forms::Window(session.Host(), "StampaQsl", "Stampa Qsl", base::Twips(7800),
                    base::Twips(7200)),
      session_(session) {
  for (const Setting& setting : kSettings) {
    (this->*setting.slider).OnChange = [this, &setting] { ShowValue(setting); };
  }
  std::vector<std::string> sheets = {std::string(kByHand)};
  for (const LabelSheet& sheet : LabelSheets()) sheets.emplace_back(sheet.name);
  Foglio.SetItems(std::move(sheets));
  Foglio.SetListIndex(0);
  Foglio.OnChange = [this] { PickSheet(); };
  CancelCommand = &cmExit;
}

void StampaQsl::Load() {
  core::RestoreWindow(session_, *this, kLabelSection);
  const LabelGeometry stored = StoredGeometry(session_);
  for (std::size_t i = 0; i < std::size(kSettings); ++i) {
    (this->*kSettings[i].slider).SetValue(stored.*kLabelSettings[i].value);
    ShowValue(kSettings[i]);
  }
  const std::string sheet = session_.GetSetting(kLabelSection, kSheetKey, "");
  if (!sheet.empty()) core::SelectListEntry(Foglio, sheet, base::Len(sheet));
  ShowSheet();
}

void StampaQsl::Unload() { core::SaveWindow(session_, *this, kLabelSection); }

void StampaQsl::ShowValue(const Setting& setting) {
  const forms::Slider& slider = this->*setting.slider;
  (this->*setting.value)
      .SetText(&slider == &EtichXFila ? base::FormatNumber(slider.Value(), "##")
                                      : base::FormatNumber(slider.Value() / 10.0, "###.0"));
  ShowSheet();
}

LabelGeometry StampaQsl::Geometry() const {
  if (Foglio.ListIndex() > 0) {
    return LabelSheets()[static_cast<std::size_t>(Foglio.ListIndex() - 1)].geometry;
  }
  return {AltezzaEtichetta.Value(), LarghezzaEtichetta.Value(), SpazOrizzontale.Value(),
          SpazVerticale.Value(),    MargineSuperiore.Value(),   MargineSinistro.Value(),
          EtichXFila.Value()};
}

void StampaQsl::PickSheet() {
  for (const Setting& setting : kSettings) {
    (this->*setting.slider).SetEnabled(Foglio.ListIndex() <= 0);
  }
  ShowSheet();
}

void StampaQsl::ShowSheet() {
  const LabelGeometry geometry = Geometry();
  const LabelOverrun over = OverrunOf(geometry, kA4Width, kA4Height);
  std::string words;
  if (over.right > 0) words = fmt::format("a destra di {} mm", Millimetres(over.right));
  if (over.bottom > 0) {
    words +=
        fmt::format("{}in basso di {} mm", words.empty() ? "" : " e ", Millimetres(over.bottom));
  }
  if (!words.empty()) {
    Avviso.SetText("Attenzione: fuori dal foglio A4 " + words);
    return;
  }
  words = fmt::format("{} etichette intere su un foglio A4",
                      WholeLabelsOn(geometry, kA4Width, kA4Height));
  if (const double scale = ScaleFor(geometry); Foglio.ListIndex() > 0 && scale < 1) {
    words += fmt::format(", dati ridotti al {:.0f}%", scale * 100);
  }
  Avviso.SetText(words);
}

void StampaQsl::StoreGeometry() {
  for (std::size_t i = 0; i < std::size(kSettings); ++i) {
    session_.SaveSetting(kLabelSection, kLabelSettings[i].key,
                         std::to_string((this->*kSettings[i].slider).Value()));
  }
  const std::string sheet = Foglio.ListIndex() > 0 ? Foglio.Text() : "";
  if (sheet != session_.GetSetting(kLabelSection, kSheetKey, "")) {
    session_.SaveSetting(kLabelSection, kSheetKey, sheet);
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
  const std::string onlyOfCards = core::OnlyOfCards(session_.Db);
  const auto rows = session_.Db.OpenSnapshot(
      "SELECT * FROM Log WHERE (QslDaInviare OR (QslRicevuta and not QslInviata" + onlyOfCards +
      "))");
  if (rows->EOF_()) return undated;
  platform::Printer& printer = session_.Machine.GetPrinter();
  const auto profile = [this](std::string_view column) {
    return core::ProfileText(session_, column);
  };
  const StationLabel station{profile("Call"),      profile("Qra"), profile("Locator"),
                             profile("Indirizzo"), profile("Qth"), profile("Provincia")};
  LaidLabels labels{Geometry()};
  if (Foglio.ListIndex() > 0) {
    labels = LaidOn(printer, LabelSheets()[static_cast<std::size_t>(Foglio.ListIndex() - 1)]);
  }
  const double scale = labels.scale;
  LabelGrid grid(labels.geometry);
  const bool both = DatiQso.IsOn() && DatiStazione.IsOn();
  bool turnoStazione = DatiStazione.IsOn();
  while (!rows->EOF_()) {
    if (turnoStazione) {
      DrawStationLabel(printer, grid.X(), grid.Y(), station, scale);
    } else {
      QsoLabel label = LabelOf(*rows);
      if (!onlyOfCards.empty() && label.QslRicevuta) {
        label.QslRicevuta = !core::IsBoxOfService(session_.Db, rows->Field("QsoNr").Integer());
      }
      if (!label.DataQso) ++undated;
      if (scale < 1) printer.SetFont(kLabelFont, kFirstLine * scale, true);
      DrawQsoLabel(printer, grid.X(), grid.Y(), label, scale);
    }
    grid.Next(printer);
    if (!(both && turnoStazione)) rows->MoveNext();
    if (both) turnoStazione = !turnoStazione;
  }
  return undated;
}

}  // namespace brenvo::print
