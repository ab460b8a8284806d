#include "tables/tabella_provincie.h"

#include "base/text.h"
#include "core/entry.h"
#include "core/lists.h"
#include "core/texts.h"
#include "core/window_place.h"
#include "core/writing.h"

namespace brenvo::tables {
namespace {

constexpr std::string_view kSettingsKey = "Provincie";
constexpr std::string_view kRepeated = "Provincia gia' caricata";
constexpr std::size_t kCountryWidth = 5, kProvinceWidth = 4;
// A longer code can be shown and changed, but not deleted.
constexpr std::size_t kDeletedCodeWidth = 3;

}  // namespace

TabellaProvincie::TabellaProvincie(core::Session& session)
    : forms::Window(session.Host(), "TabellaProvincie", "Tabella Provincie", base::Twips(9600),
                    base::Twips(6000)),
      session_(session) {
  CancelCommand = &cmExit;
  Codice.Filter = core::UpperKey;
  LBCountry.OnClick = [this] { core::LoadProvinces(session_, LBProv, ChosenCountry()); };
  LBProv.OnClick = [this] {
    engine::Table* row = Chosen(kProvinceWidth);
    if (row == nullptr) return;
    Codice.SetText(core::FieldText(*row, "Provincia"));
    Descrizione.SetText(core::FieldText(*row, "Descrizione"));
  };
}

void TabellaProvincie::Load() {
  core::RestoreWindow(session_, *this, kSettingsKey);
  core::LoadCountries(session_, LBCountry);
}

void TabellaProvincie::Unload() { core::SaveWindow(session_, *this, kSettingsKey); }

std::string TabellaProvincie::ChosenCountry() const {
  return base::Left(LBCountry.Text(), kCountryWidth);
}

engine::Table* TabellaProvincie::Chosen(std::size_t codeWidth) {
  engine::Table& provinces = *session_.Tables.TbProvincie;
  provinces.Seek("=", {ChosenCountry(), base::Left(LBProv.Text(), codeWidth)});
  return provinces.NoMatch() ? nullptr : &provinces;
}

bool TabellaProvincie::ValidateProvince() const {
  return LBCountry.ListIndex() >= 0 && !core::IsEmptyField(Codice.Text()) &&
         !core::IsEmptyField(Descrizione.Text());
}

void TabellaProvincie::Store() {
  engine::Table& row = *session_.Tables.TbProvincie;
  row.Set("Country", ChosenCountry());
  row.Set("Provincia", Codice.Text());
  row.Set("Descrizione", Descrizione.Text());
  row.Update();
}

void TabellaProvincie::ReloadAndSelect() {
  core::LoadProvinces(session_, LBProv, ChosenCountry());
  core::SelectListEntry(LBProv, Codice.Text(), kProvinceWidth);
  Chosen(kProvinceWidth);
}

void TabellaProvincie::Insert() {
  if (!ValidateProvince()) return;
  const bool stored = core::TryWrite(session_, "Inserimento provincia", kRepeated, [this] {
    session_.Tables.TbProvincie->AddNew();
    Store();
  });
  if (stored)
    Avviso.SetText("Provincia inserita: " + core::Joined({Codice.Text(), Descrizione.Text()}));
  ReloadAndSelect();
}

void TabellaProvincie::Update() {
  if (!ValidateProvince()) return;
  // The title is the country table's, as operators know it.
  const bool stored = core::TryWrite(session_, "Aggiornamento country", kRepeated, [this] {
    // Other windows move the table's handle meanwhile: back to the province chosen from the list.
    if (LBProv.ListIndex() >= 0) Chosen(kProvinceWidth);
    session_.Tables.TbProvincie->Edit();
    Store();
  });
  if (stored)
    Avviso.SetText("Provincia aggiornata: " + core::Joined({Codice.Text(), Descrizione.Text()}));
  ReloadAndSelect();
}

void TabellaProvincie::Delete() {
  engine::Table* row = Chosen(kDeletedCodeWidth);
  if (row == nullptr) return;
  const std::string deleted = base::Trim(LBProv.Text());
  row->Delete();
  LBProv.RemoveItem(LBProv.ListIndex());
  Avviso.SetText("Provincia cancellata: " + deleted);
}

void TabellaProvincie::Leave() { Close(); }

}  // namespace brenvo::tables
