#include "tables/user_form.h"

#include "base/number.h"
#include "base/text.h"
#include "core/files.h"
#include "core/locator.h"
#include "core/modules.h"

namespace brenvo {
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
    session_.Messages().Show(MessageIcon::kExclamation, "", "Banda duplicata o mancante");
  };
  // The band is the row's key, so it is the first of a new row's cells to be filled.
  const bool missing = column == kBanda ? IsEmptyField(text) : row == Rows();
  if (missing) {
    refuse();
    return;
  }
  try {
    DataGrid::EditCell(row, column, text);
  } catch (const DatabaseError& failure) {
    if (failure.Number != DatabaseError::kDuplicateKey) throw;
    refuse();
  }
}

UserForm::UserForm(Session& session)
    : Window(session.Host(), "User", "Tabella Utente", Twips(11400), Twips(8400)),
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
  for (TextField* field : {&CallQso, &Provincia, &Locator}) field->Filter = UpperKey;
  CallFile.BackspaceClears = true;
  CallFile.OnDrop = [this](std::string_view file) { CallFile.SetText(file); };
  File1.OnDoubleClick = [this] { TakeFile(); };

  DataGrid1.Editable = true;
  DataGrid1.SetSource(&data1_);
  DataGrid1.OnKey = [this](char32_t key) { return OnGridKey(key); };
  DataGrid1.OnBeforeEdit = [this](std::int64_t, int column, std::string& text) {
    return OnBeforeEdit(column, text);
  };
  DataGrid1.OnAfterEdit = [this](std::int64_t row, int) { FollowFile(row); };
  DataGrid1.OnBeforeDelete = [this](std::int64_t) {
    return session_.Messages().AskYesNo("Cancellazione banda", "Confermi l'operazione ?");
  };
  Modo.OnClick = [this] { OnPick(Modo, kModo); };
  File2.OnClick = [this] { OnPick(File2, kFilenameDX); };
  for (ListField* picker : {&Modo, &File2}) {
    picker->SetVisible(false);
    picker->PicksOnEnter = true;
    picker->OnLeave = [picker] { picker->SetVisible(false); };
  }
}

void UserForm::Load() {
  RestoreWindow(session_, *this, kSettingsKey);
  data1_.RecordSource = "select * from UserRTX order by Frequenza";
  data1_.Refresh();
  MakeGrid();
  LoadBaudRates(TNCBaud);
  LoadComPorts(TNCPort);
  LoadModes(session_, Modo);
  Table& user = *session_.TbUser;
  user.MoveFirst();
  const std::pair<TextField*, const char*> texts[] = {{&CallQso, "Call"},
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
  for (const auto& [field, column] : texts) field->SetText(FieldText(user, column));
  ZX9TOK.SetText(session_.GetSetting("Log", "ManagerZX9TOK", ""));
  SelectListEntry(TNCBaud, Trim(FieldText(user, "TNCBaud")), kBaudWidth);
  SelectListEntry(TNCPort, FieldText(user, "TNCPort"), kPortWidth);
  TNCEcho.SetOn(user.Field("TNCEcho").Bool());
  for (ListField* list : {&File1, &File2}) list->SetItems(FilesOf(session_.AppPath, kWave));
}

void UserForm::Unload() {
  SaveWindow(session_, *this, kSettingsKey);
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
       data1_.GridColumn("Annuncia DX", "AnnunceDX", YesNo),
       data1_.GridColumn("File wav", "FilenameDX")});
}

ListField* UserForm::PickerOf(int column) {
  return column == kModo ? &Modo : column == kFilenameDX ? &File2 : nullptr;
}

bool UserForm::OnGridKey(char32_t key) {
  ListField* const picker = PickerOf(DataGrid1.Column());
  const std::int64_t row = DataGrid1.Row();
  if (picker == nullptr || row < 1 || row > DataGrid1.Rows()) return false;
  if (key == kBackspace) {
    DataGrid1.EditCell(row, DataGrid1.Column(), "");
  } else {
    picker->SetVisible(true);
  }
  return true;
}

bool UserForm::OnBeforeEdit(int column, std::string& text) {
  ListField* const picker = PickerOf(column);
  if (picker == nullptr || text.empty()) return true;
  for (const std::string& entry : picker->Items()) {
    if (Upper(entry) != Upper(text)) continue;
    text = entry;
    return true;
  }
  picker->SetVisible(true);
  return false;
}

void UserForm::OnPick(ListField& picker, int column) {
  const std::string chosen = picker.Text();
  picker.SetVisible(false);
  const std::int64_t row = DataGrid1.Row();
  if (row >= 1 && row <= DataGrid1.Rows()) DataGrid1.EditCell(row, column, chosen);
}

void UserForm::FollowFile(std::int64_t row) {
  const bool announced = !IsEmptyField(data1_.Text(row - 1, "FilenameDX"));
  if ((data1_.Text(row - 1, "AnnunceDX") != "0") == announced) return;
  data1_.SetCellText(row - 1, DataGrid1.ColumnsOf()[kAnnunceDX].field, announced ? "-1" : "0");
}

bool UserForm::ValidateUser() {
  for (const TextField* field :
       {&CallQso, &Qra, &Qth, &Indirizzo, &Provincia, static_cast<TextField*>(&TNCBaud),
        static_cast<TextField*>(&TNCPort)}) {
    if (IsEmptyField(field->Text())) return false;
  }
  if (IsValidLocator(Locator.Text())) return true;
  session_.Messages().Show(MessageIcon::kExclamation, "", "Locator non valido");
  return false;
}

void UserForm::StoreProfile() {
  if (!ValidateUser()) {
    session_.Messages().Show(MessageIcon::kExclamation, "", "I campi sono tutti obbligatori");
    return;
  }
  if (!TryValues(session_, [this] { Store(); })) return;
  session_.MyLocator = Locator.Text();
  session_.ManagerPath = Trim(ZX9TOK.Text());
  session_.SaveSetting("Log", "ManagerZX9TOK", session_.ManagerPath);
  if (session_.OnProfileStored) session_.OnProfileStored();
}

void UserForm::Store() {
  Table& user = *session_.TbUser;
  user.MoveFirst();
  user.Edit();
  const std::pair<const char*, const TextField*> texts[] = {{"Call", &CallQso},
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
  SetNumber(user, "TNCBaud", TNCBaud.Text());
  user.Set("TNCEcho", TNCEcho.IsOn());
  SetNumber(user, "CallInterval", CallInterval.Text());
  user.Update();
}

void UserForm::Leave() { Close(); }

}  // namespace brenvo
