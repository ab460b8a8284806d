#include "log/log_form.h"

#include <fmt/format.h>

#include "base/text.h"
#include "core/entry.h"
#include "core/lists.h"
#include "core/log_time.h"
#include "core/preferences.h"
#include "core/texts.h"
#include "core/window_place.h"
#include "core/writing.h"
#include "history/take_back.h"
#include "log/log_search.h"

namespace brenvo::log {
namespace {

constexpr core::ContactTable kTable = core::ContactTable::kLog;
constexpr std::string_view kWholeLog = "SELECT * FROM Log ORDER By DataQso,QsoNr";
constexpr std::string_view kWholeLogNewestFirst = "SELECT * FROM Log ORDER By DataQso DESC ,QsoNr";
// What the first panel of the status bar leaves to the others.
constexpr base::Twips kStatusPanels(4500);

}  // namespace

LogForm::LogForm(core::Session& session)
    : core::LogWindow(session.Host(), "LogForm", "Log", base::Twips(13500), base::Twips(7500)),
      DataLog(session),
      session_(session) {
  QsoNr.ReadOnly = QsoTotali.ReadOnly = Qrb.ReadOnly = true;
  Query.SetVisible(false);
  for (forms::Command* key : {&cmInvio, &cmRtx}) key->SetVisible(false);  // keys alone
  Posiziona.SetVisible(false);
  PanelGriglia.SetVisible(false);
  DataQso.MayBeEmpty = true;
  HandleEvents();
}

LogForm::~LogForm() = default;

void LogForm::HandleEvents() {
  for (forms::TextField* field : {&CallQso, &Qra, &Qth, &Locator}) field->Filter = core::UpperKey;
  Frequenza.Filter = core::NumericKey;
  Potenza.Filter = core::DigitsOnlyKey;
  // The two masked fields select by hand: from the start, further than any text reaches.
  Qtr.OnFocus = [this] { Qtr.Select(0, 99); };
  Frequenza.OnFocus = [this] { Frequenza.Select(0, 99); };

  CallQso.OnChange = [this] { OnCallChange(); };
  CallQso.OnLeave = [this] { OnCallLeave(); };
  Locator.OnChange = [this] { OnLocatorChange(); };
  // Backspace empties Provincia too, also where Country is empty already and does not change.
  Country.BackspaceClears = true;
  Country.Filter = [this](char32_t key) {
    if (key == forms::kBackspace) Provincia.SetText("");
    return key;
  };
  Country.OnChange = [this] { OnCountryChange(); };
  Country.OnLeave = [this] { OnCountryLeave(); };
  Provincia.BackspaceClears = true;
  Provincia.OnLeave = [this] { OnProvinciaLeave(); };
  Banda.OnChange = [this] { OnBandaChange(); };
  Modo.OnChange = [this] { PutUsualReports(); };
  Prefisso.OnDoubleClick = [this] { OnPrefissoPick(); };
  Note.OnDoubleClick = [this] { OnNotePick(); };
  Query.OnChange = [this] { ReceiveSelection(); };
  Posiziona.OnChange = [this] { PositionByCall(); };

  DataGrid1.SetSource(&DataLog);
  DataGrid1.OnDoubleClick = [this] { ShowPickedRow(); };
}

void LogForm::Load() {
  core::RestoreWindow(session_, *this, "Log");
  FollowChoices();
  cmMappa.SetDown(session_.GetSetting("Log", "DisplayMappa", "N") == "Y");
  cmWorked.SetDown(session_.GetSetting("Log", "LookupWorked", "N") == "Y");
  core::LoadCountryChoices(session_, Country);
  core::LoadBands(session_, Banda);
  core::LoadModes(session_, Modo);
  core::LoadPropagations(session_, Propagazione);
  DsLog = session_.Db.OpenDynaset(kWholeLog);
  Selection = kWholeLog;
  Qtr.SetMask("##" + base::Mid(base::TimeText(session_.Now()), 3, 1) + "##");
  GoToLast();
  DataLog.RecordSource = kWholeLogNewestFirst;
  DataLog.Refresh();
  if (!DataLog.AtEnd()) DataLog.Rows()->MoveFirst();
  std::vector<forms::DataGrid::ColumnOf> columns;
  for (const std::string& name : DataLog.Rows()->Columns()) {
    columns.push_back(
        {name, columns.size(), forms::kOwnSize, name.starts_with("Qsl") ? core::YesNo : nullptr});
  }
  DataGrid1.SetColumnsOf(std::move(columns));
  StatusBar1.SetMinimumWidth(1, Width() - kStatusPanels);
  // Last, so that no window hands its contacts to a log that has failed to open.
  session_.Opened.LogOpen = true;
  session_.Opened.CurrentLogForm = this;
  choices_ = session_.Choices.Changed.Subscribe([this](const core::Choice&) { FollowChoices(); });
  rules_ = session_.ByDate.Changed.Subscribe([this] { OnRulesChange(); });
  rig_ = session_.Rig.Changed.Subscribe([this] { FollowRig(); });
  changes_ = session_.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.table == kTable && change.Many()) Renew();
  });
}

void LogForm::Resize() { StatusBar1.SetMinimumWidth(1, Width() - kStatusPanels); }

void LogForm::Unload() {
  changes_ = {};
  choices_ = {};
  rules_ = {};
  rig_ = {};
  if (DsLog) DsLog->Close();  // the search dialog holds it while it is open
  DataLog.Close();
  // In the grid view the size is not worth keeping.
  if (ShowsFields()) core::SaveWindow(session_, *this, "Log");
  session_.Opened.LogOpen = false;
  if (session_.Opened.CurrentLogForm == this) session_.Opened.CurrentLogForm = nullptr;
}

void LogForm::SetTime() { Qtr.SetText(core::HourMinute(core::ProposedTime(session_))); }

void LogForm::InsertQso() { TryInsert(); }

bool LogForm::TryInsert() {
  if (!ValidateQso()) return false;
  const bool stored = core::TryWrite(session_, "Insert Qso", "Qso gia' caricato", [this] {
    session_.Contacts.Add(
        kTable, *DsLog, [this](auto& row) { StoreQso(row); },
        [this](std::int64_t qsoNr) { KeepTimeOfEnd(qsoNr); });
    DsLog->SetBookmark(DsLog->LastModified());
  });
  if (!stored) return false;
  recordCommands_ = true;
  TellDone("Qso inserito");
  return true;
}

void LogForm::UpdateQso() {
  if (!ValidateQso()) return;
  const bool stored = core::TryWrite(session_, "Update Qso", "Qso gia' caricato", [this] {
    ReturnFromExport();
    session_.Contacts.Change(kTable, *DsLog, [this](auto& row) { StoreQso(row); });
  });
  if (!stored) return;
  recordCommands_ = true;
  TellDone("Qso aggiornato");
}

void LogForm::DeleteQso() {
  if (!session_.Messages().AskYesNo("Cancellazione Qso", "Confermi l'operazione ?")) return;
  try {
    ReturnFromExport();
    const std::string deleted =
        core::Joined({core::FieldText(*DsLog, "Call"), core::FieldText(*DsLog, "Banda"),
                      core::FieldText(*DsLog, "Modo")});
    session_.Contacts.Delete(kTable, *DsLog);
    Avviso.SetText("Qso cancellato: " + deleted);
  } catch (const engine::DatabaseError& failure) {
    session_.EndWith(failure, "Delete Qso");
  }
  GoToNext();
}

void LogForm::TellDone(std::string_view what) {
  Avviso.SetText(
      fmt::format("{}: {}", what, core::Joined({CallQso.Text(), Banda.Text(), Modo.Text()})));
}

void LogForm::TakeBackLast() {
  const forms::BusyPointer busy(Host());
  const auto last = history::TakeBackLast(session_);
  if (!last) {
    Avviso.SetText("Niente da riprendere");
    return;
  }
  Avviso.SetText(history::Told(last->work, last->result));
  if (last->result.taken != 1) return;
  // The contact that is back as it was stands on the screen; what an insert has left there can be
  // corrected and stored again.
  const auto contacts = history::ContactsOf(session_, last->work.Lavoro, 0, 1);
  if (contacts.empty() || !contacts[0].before) return;
  if (!GoToContact(std::to_string(contacts[0].qsoNr))) return;
  ShowQso();
  recordCommands_ = true;
}

void LogForm::GoToFirst() {
  DsLog->MoveFirst();
  if (DsLog->BOF()) {
    recordCommands_ = false;
    ClearQso();
    return;
  }
  ShowQso();
  recordCommands_ = true;
}

void LogForm::GoToLast() {
  DsLog->MoveLast();
  if (DsLog->EOF_()) {
    recordCommands_ = false;
    ClearQso();
    return;
  }
  ShowQso();
  recordCommands_ = true;
}

void LogForm::GoToNext() {
  ReturnFromExport();
  if (DsLog->RecordCount() != 0) DsLog->MoveNext();
  if (DsLog->RecordCount() == 0 || DsLog->EOF_()) {
    GoToLast();
    return;
  }
  ShowQso();
  recordCommands_ = true;
}

void LogForm::GoToPrevious() {
  ReturnFromExport();
  if (DsLog->RecordCount() != 0) DsLog->MovePrevious();
  if (DsLog->RecordCount() == 0 || DsLog->BOF()) {
    GoToFirst();
    return;
  }
  ShowQso();
  recordCommands_ = true;
}

// The number on screen does not tell the record: after an insert it is still the former one's.
void LogForm::ReturnFromExport() {
  if (beforeExport_ && DsLog->RecordCount() != 0 && DsLog->EOF_()) {
    DsLog->SetBookmark(*beforeExport_);
  }
}

void LogForm::Renew() {
  renewsLater_ = DsLog == nullptr;
  if (renewsLater_) return;
  ReturnFromExport();
  beforeExport_.reset();
  const bool there = core::RequeryInPlace(*DsLog);
  QsoTotali.SetText(std::to_string(DsLog->RecordCount()));
  if (!there) recordCommands_ = false;
  if (PanelGriglia.Visible()) DataLog.Renew(DataGrid1);
  RenewStatus();
}

bool LogForm::GoToContact(const std::string& number) {
  const auto find = [&] {
    DsLog->FindFirst("QsoNr=" + number);
    return !DsLog->NoMatch();
  };
  if (number.empty()) return false;  // its row is no longer in the file
  if (find()) return true;
  Renew();
  return find();
}

void LogForm::ShowPickedRow() {
  if (beforeExport_ && DsLog->EOF_()) return;
  if (DataGrid1.Row() < 1 || DataGrid1.Row() >= DataGrid1.Rows()) return;
  if (!GoToContact(DataLog.Text(DataGrid1.Row() - 1, "QsoNr"))) {
    StatusBar1.SetPanel(1, "Il Qso della riga non c'è più nel log");
    return;
  }
  ShowQso();
  recordCommands_ = true;
  ShowGrid(false);
}

void LogForm::ShowGrid(bool shown) {
  if (shown == PanelGriglia.Visible()) return;
  if (shown) {
    DataLog.Refresh();
    DataGrid1.ContentChanged();
  }
  PanelGriglia.SetVisible(shown);
  if (shown) {
    boundsBeforeGrid_ = GetBounds();
    Move({base::Twips(0), GetBounds().top, Host().ScreenWidth(), Height()});
  } else {
    Move(boundsBeforeGrid_);
  }
  StatusBar1.SetMinimumWidth(1, Width() - kStatusPanels);
}

void LogForm::TakeSelection(std::unique_ptr<engine::Dynaset> rows, std::string_view select) {
  DsLog = std::move(rows);
  Selection = select == kWholeLogNewestFirst ? kWholeLog : select;
  DataLog.RecordSource = select;
  DataLog.Refresh();
  if (!DataLog.AtEnd()) DataLog.Rows()->MoveLast();
  DataGrid1.ContentChanged();
  GoToLast();
}

void LogForm::ReceiveSelection() {
  TakeSelection(session_.Db.OpenDynaset(session_.Handed.QueryText), session_.Handed.QueryText);
  // A selection is in force: the key says so, and its release drops it.
  selected_ = true;
}

void LogForm::SearchPressed() {
  selected_ = !selected_;
  if (!selected_) {
    TakeSelection(session_.Db.OpenDynaset(kWholeLog), kWholeLogNewestFirst);
    return;
  }
  auto* search = static_cast<LogSearch*>(session_.Windows.LoadNew("LogSearch"));
  if (search == nullptr) {
    selected_ = false;
    return;
  }
  search->DsSearch = std::move(DsLog);
  session_.Windows.ShowModal(*search);
  if (!Loaded()) return;
  if (!search->SearchText) {
    DsLog = std::move(search->DsSearch);
    selected_ = false;
    if (renewsLater_) Renew();
    return;
  }
  TakeSelection(std::move(search->DsSearch), *search->SearchText);
}

void LogForm::PositionByCall() {
  if (session_.Handed.ModoPosiziona != 1) return;
  DsLog->FindFirst(fmt::format("Call='{}' and Locator='{}'", CallQso.Text(), Locator.Text()));
  if (DsLog->NoMatch()) {
    ClearQso();
  } else {
    ShowQso();
  }
}

}  // namespace brenvo::log
