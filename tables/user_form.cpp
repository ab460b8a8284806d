#include "tables/user_form.h"

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

constexpr std::string_view kSettingsKey = "User";
constexpr std::string_view kWave = ".wav";
constexpr std::size_t kBaudWidth = 5, kPortWidth = 4;

enum BandColumn : int {
  kBanda,
  kFrequenza,
  kRTX,
  kAntenna,
  kPotenza,
  kModo,
  kRST,
  kFrequenzaI,
  kFrequenzaF,
  kAnnunceDX,
  kFilenameDX
};

}  // namespace

void BandGrid::EditCell(std::int64_t row, int column, std::string_view text) {
  const auto refuse = [this] {
    session_.Messages().Show(platform::MessageIcon::kExclamation, "", "Banda duplicata o mancante");
  };
  // The band is the row's key, so it is the first of a new row's cells to be filled.
  const bool missing = column == kBanda ? core::IsEmptyField(text) : row == Rows();
  if (missing) {
    refuse();
    return;
  }
  try {
    forms::DataGrid::EditCell(row, column, text);
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kDuplicateKey) throw;
    refuse();
  }
}

UserForm::UserForm(core::Session& session)
    : forms::Window(session.Host(), "User", "Tabella Utente", base::Twips(11400),
                    base::Twips(8400)),
      DataGrid1(
          *this, "DataGrid1",
          {.hint = "Frequenza in MHz, inizio e fine della banda in kHz. Una banda con un file "
                   "wav viene annunciata"},
          session),
      session_(session),
      data1_(session) {
  Tab1.SetPage(0, PanelRTX, {&DataGrid1, &Modo, &File2});
  Tab1.SetPage(1, PanelMultimedia,
               {&TNCPort, &TNCBaud, &TNCEcho, &ClusterNode, &TelnetCluster, &TelnetWWConv,
                &FrameChiamata, &File1, &cmCallFile, &CallFile, &CallInterval});
  CancelCommand = &cmExit;
  HandleEvents();
}

void UserForm::TakeFile() {
  if (File1.ListIndex() >= 0) CallFile.SetText(File1.Text());
}

void UserForm::HandleEvents() {
  for (forms::TextField* field : {&CallQso, &Provincia, &Locator}) field->Filter = core::UpperKey;
  CallFile.BackspaceClears = true;
  CallFile.OnDrop = [this](std::string_view file) { CallFile.SetText(file); };
  File1.OnDoubleClick = [this] { TakeFile(); };

  DataGrid1.Editable = true;
  DataGrid1.SetSource(&data1_);
  DataGrid1.OnKey = [this](char32_t key) { return OnGridKey(key); };
  DataGrid1.OnBeforeEdit = [this](std::int64_t, int column, std::string& text) {
    return OnBeforeEdit(column, text);
  };
  DataGrid1.OnAfterEdit = [this](std::int64_t row, int) {
    FollowFile(row);
    Avviso.SetText("Banda salvata: " + base::Trim(data1_.Text(row - 1, "Banda")));
  };
  DataGrid1.OnBeforeDelete = [this](std::int64_t) {
    return session_.Messages().AskYesNo("Cancellazione banda", "Confermi l'operazione ?");
  };
  Modo.OnClick = [this] { OnPick(Modo, kModo); };
  File2.OnClick = [this] { OnPick(File2, kFilenameDX); };
  for (forms::ListField* picker : {&Modo, &File2}) {
    picker->SetVisible(false);
    picker->PicksOnEnter = true;
    picker->OnLeave = [picker] { picker->SetVisible(false); };
  }
}

void UserForm::Load() {
  core::RestoreWindow(session_, *this, kSettingsKey);
  data1_.RecordSource = "select * from UserRTX order by Frequenza";
  data1_.Refresh();
  MakeGrid();
  core::LoadBaudRates(TNCBaud);
  core::LoadComPorts(TNCPort);
  core::LoadModes(session_, Modo);
  engine::Table& user = *session_.Tables.TbUser;
  user.MoveFirst();
  const std::pair<forms::TextField*, const char*> texts[] = {{&CallQso, "Call"},
                                                             {&Qra, "Qra"},
                                                             {&Qth, "Qth"},
                                                             {&Indirizzo, "Indirizzo"},
                                                             {&Provincia, "Provincia"},
                                                             {&Locator, "Locator"},
                                                             {&CallFile, "CallFile"},
                                                             {&CallInterval, "CallInterval"},
                                                             {&ClusterNode, "ClusterNode"},
                                                             {&TelnetCluster, "TelnetCluster"},
                                                             {&TelnetWWConv, "TelnetWWConv"}};
  for (const auto& [field, column] : texts) field->SetText(core::FieldText(user, column));
  ZX9TOK.SetText(session_.GetSetting("Log", "ManagerZX9TOK", ""));
  core::SelectListEntry(TNCBaud, base::Trim(core::FieldText(user, "TNCBaud")), kBaudWidth);
  core::SelectListEntry(TNCPort, core::FieldText(user, "TNCPort"), kPortWidth);
  TNCEcho.SetOn(user.Field("TNCEcho").Bool());
  for (forms::ListField* list : {&File1, &File2})
    list->SetItems(core::FilesOf(session_.AppPath, kWave));
}

void UserForm::Unload() {
  core::SaveWindow(session_, *this, kSettingsKey);
  data1_.Close();
}

void UserForm::MakeGrid() {
  // Each stands at the place of its BandColumn.
  DataGrid1.SetColumnsOf(
      {data1_.GridColumn("Banda", "Banda"), data1_.GridColumn("Frequenza (MHz)", "Frequenza"),
       data1_.GridColumn("RTX", "RTX"), data1_.GridColumn("Antenna", "Antenna"),
       data1_.GridColumn("Potenza", "Potenza"), data1_.GridColumn("Modo", "Modo"),
       data1_.GridColumn("RST", "RST"), data1_.GridColumn("Inizio (kHz)", "FrequenzaI"),
       data1_.GridColumn("Fine (kHz)", "FrequenzaF"),
       data1_.GridColumn("Annuncia DX", "AnnunceDX", core::YesNo),
       data1_.GridColumn("File wav", "FilenameDX")});
}

forms::ListField* UserForm::PickerOf(int column) {
  return column == kModo ? &Modo : column == kFilenameDX ? &File2 : nullptr;
}

bool UserForm::OnGridKey(char32_t key) {
  forms::ListField* const picker = PickerOf(DataGrid1.Column());
  const std::int64_t row = DataGrid1.Row();
  if (picker == nullptr || row < 1 || row > DataGrid1.Rows()) return false;
  if (key == forms::kBackspace) {
    DataGrid1.EditCell(row, DataGrid1.Column(), "");
  } else {
    picker->SetVisible(true);
  }
  return true;
}

bool UserForm::OnBeforeEdit(int column, std::string& text) {
  forms::ListField* const picker = PickerOf(column);
  if (picker == nullptr || text.empty()) return true;
  for (const std::string& entry : picker->Items()) {
    if (base::Upper(entry) != base::Upper(text)) continue;
    text = entry;
    return true;
  }
  picker->SetVisible(true);
  return false;
}

void UserForm::OnPick(forms::ListField& picker, int column) {
  const std::string chosen = picker.Text();
  picker.SetVisible(false);
  const std::int64_t row = DataGrid1.Row();
  if (row >= 1 && row <= DataGrid1.Rows()) DataGrid1.EditCell(row, column, chosen);
}

void UserForm::FollowFile(std::int64_t row) {
  const bool announced = !core::IsEmptyField(data1_.Text(row - 1, "FilenameDX"));
  if ((data1_.Text(row - 1, "AnnunceDX") != "0") == announced) return;
  data1_.SetCellText(row - 1, DataGrid1.ColumnsOf()[kAnnunceDX].field, announced ? "-1" : "0");
}

bool UserForm::ValidateUser() {
  for (const forms::TextField* field :
       {&CallQso, &Qra, &Qth, &Indirizzo, &Provincia, static_cast<forms::TextField*>(&TNCBaud),
        static_cast<forms::TextField*>(&TNCPort)}) {
    if (core::IsEmptyField(field->Text())) return false;
  }
  if (geo::IsValidLocator(Locator.Text())) return true;
  session_.Messages().Show(platform::MessageIcon::kExclamation, "", "Locator non valido");
  return false;
}

void UserForm::StoreProfile() {
  if (!ValidateUser()) {
    session_.Messages().Show(platform::MessageIcon::kExclamation, "",
                             "I campi sono tutti obbligatori");
    return;
  }
  if (!core::TryValues(session_, [this] { Store(); })) return;
  session_.Station.MyLocator = Locator.Text();
  session_.Station.ManagerPath = base::Trim(ZX9TOK.Text());
  session_.SaveSetting("Log", "ManagerZX9TOK", session_.Station.ManagerPath);
  session_.Station.ProfileStored();
  Avviso.SetText("Profilo salvato: " + core::Joined({CallQso.Text(), Locator.Text()}));
}

void UserForm::Store() {
  engine::Table& user = *session_.Tables.TbUser;
  user.MoveFirst();
  user.Edit();
  const std::pair<const char*, const forms::TextField*> texts[] = {
      {"Call", &CallQso},
      {"Qra", &Qra},
      {"Qth", &Qth},
      {"Indirizzo", &Indirizzo},
      {"Provincia", &Provincia},
      {"Locator", &Locator},
      {"TNCPort", &TNCPort},
      {"CallFile", &CallFile},
      {"ClusterNode", &ClusterNode},
      {"TelnetCluster", &TelnetCluster},
      {"TelnetWWConv", &TelnetWWConv}};
  for (const auto& [column, field] : texts) user.Set(column, field->Text());
  core::SetNumber(user, "TNCBaud", TNCBaud.Text());
  user.Set("TNCEcho", TNCEcho.IsOn());
  core::SetNumber(user, "CallInterval", CallInterval.Text());
  user.Update();
}

void UserForm::Leave() { Close(); }

}  // namespace brenvo::tables
