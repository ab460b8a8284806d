#include "tables/tabella_country.h"

#include "base/number.h"
#include "base/text.h"
#include "core/entry.h"
#include "core/files.h"
#include "core/lists.h"
#include "core/texts.h"
#include "core/window_place.h"
#include "core/writing.h"
#include "geo/locator.h"

namespace brenvo::tables {
namespace {

constexpr std::string_view kSettingsKey = "Country";
constexpr std::string_view kRepeated = "Country gia' caricato";
constexpr std::string_view kNoDate = "01/01/9999";
constexpr std::size_t kCodeWidth = 5;

std::string DateColumn(const forms::DatePicker& field) {
  return field.Text() == kNoDate ? std::string() : base::Trim(field.Text());
}

}  // namespace

TabellaCountry::TabellaCountry(core::Session& session)
    : forms::Window(session.Host(), "TabellaCountry", "Tabella Country", base::Twips(10800),
                    base::Twips(7200)),
      session_(session) {
  CancelCommand = &cmExit;
  HandleEvents();
}

void TabellaCountry::HandleEvents() {
  Codice.Filter = core::UpperKey;
  Codice.MaxLength = kCodeWidth;
  Locator.Filter = core::UpperKey;
  X.Filter = core::DigitsOnlyKey;
  Y.Filter = core::DigitsOnlyKey;
  LBCountry.OnClick = [this] {
    if (engine::Table* row = Chosen()) ShowCountry(*row);
  };
  for (forms::TextField* field : {&Mappa, &Flag}) {
    field->Filter = [](char32_t pressed) { return pressed == forms::kBackspace ? pressed : 0; };
    field->BackspaceClears = true;
    field->OnDrop = [field](std::string_view file) { field->SetText(file); };
  }
}

void TabellaCountry::TakeFile(forms::TextField& field) {
  if (File1.ListIndex() >= 0) field.SetText(File1.Text());
}

void TabellaCountry::Load() {
  core::RestoreWindow(session_, *this, kSettingsKey);
  core::LoadCountries(session_, LBCountry);
  File1.SetItems(core::FilesOf(session_.AppPath, ""));
  Validita.SetText(kNoDate);
  Deleted.SetText(kNoDate);
}

void TabellaCountry::Unload() { core::SaveWindow(session_, *this, kSettingsKey); }

engine::Table* TabellaCountry::Chosen() {
  engine::Table& countries = *session_.Tables.TbCountry;
  countries.Seek("=", {base::Left(LBCountry.Text(), kCodeWidth)});
  return countries.NoMatch() ? nullptr : &countries;
}

void TabellaCountry::ShowCountry(engine::Recordset& row) {
  const std::pair<forms::TextField*, const char*> texts[] = {
      {&Codice, "Country"}, {&Descrizione, "Descrizione"},
      {&Mappa, "Mappa"},    {&Flag, "Flag"},
      {&X, "Pointer_X"},    {&Y, "Pointer_Y"},
      {&Locator, "Locator"}};
  for (const auto& [field, column] : texts) field->SetText(core::FieldText(row, column));
  const std::pair<forms::DatePicker*, const char*> dates[] = {{&Validita, "From"},
                                                              {&Deleted, "Deleted"}};
  for (const auto& [field, column] : dates) {
    const std::string date = core::FieldText(row, column);
    field->SetText(core::IsEmptyField(date) ? kNoDate : date);
  }
}

bool TabellaCountry::ValidateCountry() {
  if (core::IsEmptyField(Codice.Text()) || core::IsEmptyField(Descrizione.Text())) return false;
  if (core::IsEmptyField(Locator.Text()) || geo::IsValidLocator(Locator.Text())) return true;
  session_.Messages().Show(platform::MessageIcon::kExclamation, "", "Locator non valido");
  return false;
}

void TabellaCountry::Store() {
  engine::Table& row = *session_.Tables.TbCountry;
  row.Set("Country", Codice.Text());
  row.Set("Descrizione", Descrizione.Text());
  row.Set("Mappa", Mappa.Text());
  row.Set("Flag", Flag.Text());
  core::SetNumber(row, "Pointer_X", X.Text());
  core::SetNumber(row, "Pointer_Y", Y.Text());
  row.Set("Locator", Locator.Text());
  row.Set("From", DateColumn(Validita));
  row.Set("Deleted", DateColumn(Deleted));
  row.Update();
}

void TabellaCountry::ReloadAndSelect() {
  core::LoadCountries(session_, LBCountry);
  core::SelectListEntry(LBCountry, Codice.Text(), kCodeWidth);
  Chosen();
}

void TabellaCountry::Insert() {
  if (!ValidateCountry()) return;
  const bool stored = core::TryWrite(session_, "Inserimento country", kRepeated, [this] {
    session_.Tables.TbCountry->AddNew();
    Store();
  });
  if (stored)
    Avviso.SetText("Country inserito: " + core::Joined({Codice.Text(), Descrizione.Text()}));
  ReloadAndSelect();
}

void TabellaCountry::Update() {
  if (!ValidateCountry()) return;
  const bool stored = core::TryWrite(session_, "Aggiornamento country", kRepeated, [this] {
    // Other windows move the table's handle meanwhile: back to the country chosen from the list.
    if (LBCountry.ListIndex() >= 0) Chosen();
    session_.Tables.TbCountry->Edit();
    Store();
  });
  if (stored)
    Avviso.SetText("Country aggiornato: " + core::Joined({Codice.Text(), Descrizione.Text()}));
  ReloadAndSelect();
}

void TabellaCountry::Delete() {
  engine::Table* row = Chosen();
  if (row == nullptr) return;
  const std::string deleted = base::Trim(LBCountry.Text());
  row->Delete();
  LBCountry.RemoveItem(LBCountry.ListIndex());
  Avviso.SetText("Country cancellato: " + deleted);
}

void TabellaCountry::Leave() { Close(); }

}  // namespace brenvo::tables
