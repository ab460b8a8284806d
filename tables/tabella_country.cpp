#include "tables/tabella_country.h"

#include "base/number.h"
#include "base/text.h"
#include "core/files.h"
#include "core/locator.h"
#include "core/modules.h"

namespace brenvo {
namespace {

constexpr std::string_view kSettingsKey = "Country";
constexpr std::string_view kRepeated = "Country gia' caricato";
constexpr std::string_view kNoDate = "01/01/9999";
constexpr std::size_t kCodeWidth = 5;

std::string DateColumn(const DatePicker& field) {
  return field.Text() == kNoDate ? std::string() : Trim(field.Text());
}

}  // namespace

TabellaCountry::TabellaCountry(Session& session)
    : Window(session.Host(), "TabellaCountry", "Tabella Country", Twips(10800), Twips(7200)),
      session_(session) {
  CancelCommand = &cmExit;
  HandleEvents();
}

void TabellaCountry::HandleEvents() {
  Codice.Filter = UpperKey;
  Codice.MaxLength = kCodeWidth;
  Locator.Filter = UpperKey;
  X.Filter = DigitsOnlyKey;
  Y.Filter = DigitsOnlyKey;
  LBCountry.OnClick = [this] {
    if (SeekChosen()) ShowCountry();
  };
  for (TextField* field : {&Mappa, &Flag}) {
    field->Filter = [](char32_t pressed) { return pressed == kBackspace ? pressed : 0; };
    field->BackspaceClears = true;
    field->OnDrop = [field](std::string_view file) { field->SetText(file); };
  }
}

void TabellaCountry::TakeFile(TextField& field) {
  if (File1.ListIndex() >= 0) field.SetText(File1.Text());
}

void TabellaCountry::Load() {
  RestoreWindow(session_, *this, kSettingsKey);
  LoadCountries(session_, LBCountry);
  File1.SetItems(FilesOf(session_.AppPath, ""));
  Validita.SetText(kNoDate);
  Deleted.SetText(kNoDate);
}

void TabellaCountry::Unload() { SaveWindow(session_, *this, kSettingsKey); }

bool TabellaCountry::SeekChosen() {
  session_.TbCountry->Seek("=", {Left(LBCountry.Text(), kCodeWidth)});
  return !session_.TbCountry->NoMatch();
}

void TabellaCountry::ShowCountry() {
  Table& row = *session_.TbCountry;
  const std::pair<TextField*, const char*> texts[] = {
      {&Codice, "Country"}, {&Descrizione, "Descrizione"},
      {&Mappa, "Mappa"},    {&Flag, "Flag"},
      {&X, "Pointer_X"},    {&Y, "Pointer_Y"},
      {&Locator, "Locator"}};
  for (const auto& [field, column] : texts) field->SetText(FieldText(row, column));
  const std::pair<DatePicker*, const char*> dates[] = {{&Validita, "From"}, {&Deleted, "Deleted"}};
  for (const auto& [field, column] : dates) {
    const std::string date = FieldText(row, column);
    field->SetText(IsEmptyField(date) ? kNoDate : date);
  }
}

bool TabellaCountry::ValidateCountry() {
  if (IsEmptyField(Codice.Text()) || IsEmptyField(Descrizione.Text())) return false;
  if (IsEmptyField(Locator.Text()) || IsValidLocator(Locator.Text())) return true;
  session_.Messages().Show(MessageIcon::kExclamation, "", "Locator non valido");
  return false;
}

void TabellaCountry::Store() {
  Table& row = *session_.TbCountry;
  row.Set("Country", Codice.Text());
  row.Set("Descrizione", Descrizione.Text());
  row.Set("Mappa", Mappa.Text());
  row.Set("Flag", Flag.Text());
  SetNumber(row, "Pointer_X", X.Text());
  SetNumber(row, "Pointer_Y", Y.Text());
  row.Set("Locator", Locator.Text());
  row.Set("From", DateColumn(Validita));
  row.Set("Deleted", DateColumn(Deleted));
  row.Update();
}

void TabellaCountry::ReloadAndSelect() {
  LoadCountries(session_, LBCountry);
  SelectListEntry(LBCountry, Codice.Text(), kCodeWidth);
  SeekChosen();
}

void TabellaCountry::Insert() {
  if (!ValidateCountry()) return;
  TryWrite(session_, "Inserimento country", kRepeated, [this] {
    session_.TbCountry->AddNew();
    Store();
  });
  ReloadAndSelect();
}

void TabellaCountry::Update() {
  if (!ValidateCountry()) return;
  TryWrite(session_, "Aggiornamento country", kRepeated, [this] {
    // Other windows move the table's handle meanwhile: back to the country chosen from the list.
    if (LBCountry.ListIndex() >= 0) SeekChosen();
    session_.TbCountry->Edit();
    Store();
  });
  ReloadAndSelect();
}

void TabellaCountry::Delete() {
  if (!SeekChosen()) return;
  session_.TbCountry->Delete();
  LBCountry.RemoveItem(LBCountry.ListIndex());
}

void TabellaCountry::Leave() { Close(); }

}  // namespace brenvo
