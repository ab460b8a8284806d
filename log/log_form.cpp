#include "log/log_form.h"

#include <fmt/format.h>

#include <array>

#include "base/text.h"
#include "core/help_topics.h"
#include "core/modules.h"

namespace brenvo {
namespace {

constexpr std::string_view kWholeLog = "SELECT * FROM Log ORDER By DataQso,QsoNr";
constexpr std::string_view kWholeLogNewestFirst = "SELECT * FROM Log ORDER By DataQso DESC ,QsoNr";
// What the first panel of the status bar leaves to the others, in twips.
constexpr int kStatusPanels = 4500;

constexpr std::array<std::string_view, 5> kRecordCommands = {"cmNext", "cmPrevious", "cmUpdate",
                                                             "cmDelete", "cmMappa"};

}  // namespace

LogForm::LogForm(Session& session)
    : LogWindow(session.Host(), "LogForm", "Log", Twips(13500), Twips(7500)),
      DataLog(session),
      session_(session) {
  const std::pair<Field*, std::string_view> captions[] = {{&CallQso, "Call"},
                                                          {&Banda, "Banda"},
                                                          {&Frequenza, "Frequenza"},
                                                          {&Modo, "Modo"},
                                                          {&QrkDato, "Qrk dato"},
                                                          {&QrkRicevuto, "Qrk ricevuto"},
                                                          {&Locator, "Locator"},
                                                          {&Qra, "Qra"},
                                                          {&Qth, "Qth"},
                                                          {&Note, "Note"},
                                                          {&DataQso, "Data"},
                                                          {&Qtr, "Qtr"},
                                                          {&Prefisso, "Prefisso"},
                                                          {&ZonaCQ, "Zona CQ"},
                                                          {&ZonaITU, "Zona ITU"},
                                                          {&Continente, "Continente"},
                                                          {&Country, "Country"},
                                                          {&Provincia, "Provincia"},
                                                          {&Manager, "Manager"},
                                                          {&Potenza, "Potenza"},
                                                          {&Propagazione, "Propagazione"},
                                                          {&QslDaInviare, "Qsl da inviare"},
                                                          {&QslRicevuta, "Qsl ricevuta"},
                                                          {&QslInviata, "Qsl inviata"},
                                                          {&QsoNr, "Qso nr."},
                                                          {&QsoTotali, "Qso totali"},
                                                          {&Qrb, "Qrb (km)"}};
  for (const auto& [field, caption] : captions) field->SetCaption(caption);
  QsoNr.ReadOnly = QsoTotali.ReadOnly = Qrb.ReadOnly = true;
  Query.SetVisible(false);
  Posiziona.SetVisible(false);
  PanelGriglia.SetVisible(false);
  DataQso.MayBeEmpty = true;
  MakeToolbar();
  HangInEvents();
}

LogForm::~LogForm() = default;

void LogForm::MakeToolbar() {
  const auto run = [this](void (LogForm::*action)()) {
    return [this, action] { (this->*action)(); };
  };
  keys_.Add(
      Toolbar1,
      {{"cmInsert", "Inserisci", "Inserisce il Qso nel log", "F2", run(&LogForm::cmInsert)},
       {"cmUpdate", "Aggiorna", "Aggiorna il Qso", "F3", run(&LogForm::cmUpdate)},
       {"cmDelete", "Cancella", "Cancella il Qso", "F4", run(&LogForm::cmDelete)},
       {},
       {"cmFirst", "Primo", "Primo Qso", "Ctrl+Home", run(&LogForm::cmFirst)},
       {"cmPrevious", "Precedente", "Qso precedente", "PgUp", run(&LogForm::cmPrevious)},
       {"cmNext", "Successivo", "Qso successivo", "PgDown", run(&LogForm::cmNext)},
       {"cmLast", "Ultimo", "Ultimo Qso", "Ctrl+End", run(&LogForm::cmLast)},
       {},
       {"cmWorked", "Worked", "Cerca il Qso nei collegati", "F6", run(&LogForm::cmWorked), true},
       {"cmVista", "Griglia", "Mostra il log come griglia", "F7", run(&LogForm::cmVista), true},
       {"cmSearch", "Ricerca", "Ricerca nel log", "F8", run(&LogForm::cmSearch), true},
       {"cmClear", "Nuovo", "Svuota i campi per un nuovo Qso", "F5", run(&LogForm::cmClear)},
       {"cmMappa", "Mappa", "Mostra la mappa del country", "F9", run(&LogForm::cmMappa), true},
       {}});
  exportMenu_.Items = {
      &keys_.Make(*this, {"cmOnlyThisQso", "Esporta &questo Qso", "Scrive il Qso nel file Log.ADI",
                          "", run(&LogForm::cmOnlyThisQso)}),
      &keys_.Make(*this,
                  {"cmAllQso", "Esporta &tutti i Qso", "Scrive i Qso selezionati nel file Log.ADI",
                   "", run(&LogForm::cmAllQso)})};
  Toolbar1.Items.emplace_back(&exportMenu_);
  Key("cmClear").FocusAfter = &CallQso;
  keys_.Add(Toolbar1, {{},
                       {"cmHelp", "Aiuto", "Aiuto", "F1", [this] { session_.Help(kHelpLog); }},
                       {"cmExit", "Esci", "Chiude il log", "", [this] { Close(); }}});
  Command& now =
      keys_.Make(*this, {"cmQtr", "Ora", "Imposta l'ora attuale", "F12", run(&LogForm::cmQtr)});
  now.OnHover = [this] { StatusBar1.SetPanel(1, "Imposta l'ora attuale"); };
}

void LogForm::HangInEvents() {
  for (TextField* field : {&CallQso, &Qra, &Qth, &Locator}) field->Filter = UpperKey;
  Frequenza.Filter = NumericKey;
  Potenza.Filter = DigitsOnlyKey;
  // The two masked fields select by hand: from the start, further than any text reaches.
  Qtr.OnFocus = [this] { Qtr.Select(0, 99); };
  Frequenza.OnFocus = [this] { Frequenza.Select(0, 99); };

  CallQso.OnChange = [this] { OnCallChange(); };
  CallQso.OnLeave = [this] { OnCallLeave(); };
  Locator.OnChange = [this] { OnLocatorChange(); };
  // Backspace empties Provincia too, also where Country is empty already and does not change.
  Country.BackspaceClears = true;
  Country.Filter = [this](char32_t key) {
    if (key == kBackspace) Provincia.SetText("");
    return key;
  };
  Country.OnChange = [this] { OnCountryChange(); };
  Country.OnLeave = [this] { OnCountryLeave(); };
  Provincia.BackspaceClears = true;
  Provincia.OnLeave = [this] { OnProvinciaLeave(); };
  Banda.OnChange = [this] { OnBandaChange(); };
  Prefisso.OnDoubleClick = [this] { OnPrefissoPick(); };
  Note.OnDoubleClick = [this] { OnNotePick(); };
  Query.OnChange = [this] { ReceiveSelection(); };
  Posiziona.OnChange = [this] { PositionByCall(); };

  const auto hint = [this](Field& field, std::string_view text) {
    field.OnHover = [this, text] { StatusBar1.SetPanel(1, text); };
  };
  hint(Country, "Doppio Click per tabella country");
  hint(Prefisso, "Doppio Click per la tabella prefissi");
  hint(Note, "Doppio Click per l' help note");
  hint(Panel3D1, "");

  DataGrid1.SetSource(&DataLog);
  DataGrid1.OnDoubleClick = [this] {
    if (DsLog->EOF_() || DataGrid1.Row() < 1) return;
    DsLog->FindFirst("QsoNr=" + DataLog.Text(DataGrid1.Row() - 1, "QsoNr"));
    ShowQso();
    EnableRecordCommands();
    Key("cmVista").SetDown(false);
    ShowGrid(false);
  };
}

void LogForm::Load() {
  RestoreWindow(session_, *this, "Log");
  Key("cmMappa").SetDown(session_.GetSetting("Log", "DisplayMappa", "N") == "Y");
  Key("cmWorked").SetDown(session_.GetSetting("Log", "LookupWorked", "N") == "Y");
  LoadCountryChoices(session_, Country);
  LoadBands(session_, Banda);
  LoadModes(session_, Modo);
  LoadPropagations(session_, Propagazione);
  DsLog = session_.Db.OpenDynaset(kWholeLog);
  Selection = kWholeLog;
  Qtr.SetMask("##" + Mid(TimeText(session_.Now()), 3, 1) + "##");
  cmLast();
  DataLog.RecordSource = kWholeLogNewestFirst;
  DataLog.Refresh();
  if (!DataLog.AtEnd()) DataLog.Rows()->MoveFirst();
  std::vector<DataGrid::ColumnOf> columns;
  for (const std::string& name : DataLog.Rows()->Columns()) {
    columns.push_back({name, columns.size(), -1, name.starts_with("Qsl") ? YesNo : nullptr});
  }
  DataGrid1.SetColumnsOf(std::move(columns));
  StatusBar1.SetMinimumWidth(1, Width().Value() - kStatusPanels);
  // Last, so that no window hands its contacts to a log that has failed to open.
  session_.LogOpen = true;
  session_.CurrentLogForm = this;
}

void LogForm::Resize() { StatusBar1.SetMinimumWidth(1, Width().Value() - kStatusPanels); }

void LogForm::Unload() {
  if (DsLog) DsLog->Close();  // the search dialog holds it while it is open
  DataLog.Close();
  // In the grid view the size is not worth keeping.
  if (!Key("cmVista").Down()) SaveWindow(session_, *this, "Log");
  session_.LogOpen = false;
  if (session_.CurrentLogForm == this) session_.CurrentLogForm = nullptr;
}

void LogForm::cmQtr() { Qtr.SetText(HourMinute(session_.Now())); }

void LogForm::cmInsert() {
  if (!ValidateQso()) return;
  const bool stored = TryWrite(session_, "Insert Qso", "Qso gia' caricato", [this] {
    DsLog->AddNew();
    StoreQso();
    DsLog->Update();
    DsLog->SetBookmark(DsLog->LastModified());
  });
  if (stored) EnableRecordCommands();
}

void LogForm::cmUpdate() {
  if (!ValidateQso()) return;
  const bool stored = TryWrite(session_, "Update Qso", "Qso gia' caricato", [this] {
    ReturnFromExport();
    DsLog->Edit();
    StoreQso();
    DsLog->Update();
  });
  if (stored) EnableRecordCommands();
}

void LogForm::cmDelete() {
  if (!session_.Messages().AskYesNo("Cancellazione Qso", "Confermi l'operazione ?")) return;
  try {
    ReturnFromExport();
    DsLog->Delete();
  } catch (const DatabaseError& failure) {
    session_.EndWith(failure, "Delete Qso");
  }
  cmNext();
}

void LogForm::cmFirst() {
  DsLog->MoveFirst();
  if (DsLog->BOF()) {
    DisableRecordCommands();
    ClearQso();
    return;
  }
  ShowQso();
  EnableRecordCommands();
}

void LogForm::cmLast() {
  DsLog->MoveLast();
  if (DsLog->EOF_()) {
    DisableRecordCommands();
    ClearQso();
    return;
  }
  ShowQso();
  EnableRecordCommands();
}

void LogForm::cmNext() {
  ReturnFromExport();
  if (DsLog->RecordCount() != 0) DsLog->MoveNext();
  if (DsLog->RecordCount() == 0 || DsLog->EOF_()) {
    cmLast();
    return;
  }
  ShowQso();
  EnableRecordCommands();
}

void LogForm::cmPrevious() {
  ReturnFromExport();
  if (DsLog->RecordCount() != 0) DsLog->MovePrevious();
  if (DsLog->RecordCount() == 0 || DsLog->BOF()) {
    cmFirst();
    return;
  }
  ShowQso();
  EnableRecordCommands();
}

void LogForm::cmClear() { ClearQso(); }

// The number on screen does not tell the record: after an insert it is still the former one's.
void LogForm::ReturnFromExport() {
  if (DsLog->RecordCount() != 0 && DsLog->EOF_()) DsLog->SetBookmark(beforeExport_);
}

void LogForm::EnableRecordCommands() {
  recordCommands_ = true;
  ShowRecordCommands();
}

void LogForm::DisableRecordCommands() {
  recordCommands_ = false;
  ShowRecordCommands();
}

void LogForm::ShowRecordCommands() {
  // The grid view takes all keys but its own.
  const bool usable = recordCommands_ && !PanelGriglia.Visible();
  for (std::string_view name : kRecordCommands) Key(name).SetEnabled(usable);
}

void LogForm::cmVista() { ShowGrid(Key("cmVista").Down()); }

void LogForm::ShowGrid(bool shown) {
  if (shown == PanelGriglia.Visible()) return;
  if (shown) {
    DataLog.Refresh();
    DataGrid1.ContentChanged();
  }
  PanelGriglia.SetVisible(shown);
  std::vector<MenuItem> keys = Toolbar1.Items;
  keys.insert(keys.end(), exportMenu_.Items.begin(), exportMenu_.Items.end());
  for (const MenuItem& item : keys) {
    Command* const* command = std::get_if<Command*>(&item);
    if (command != nullptr && (*command)->Name() != "cmVista") (*command)->SetEnabled(!shown);
  }
  ShowRecordCommands();
  if (shown) {
    boundsBeforeGrid_ = GetBounds();
    Move({Twips(0), GetBounds().top, Host().ScreenWidth(), Height()});
  } else {
    Move(boundsBeforeGrid_);
  }
  StatusBar1.SetMinimumWidth(1, Width().Value() - kStatusPanels);
}

void LogForm::TakeSelection(std::unique_ptr<Dynaset> rows, std::string_view select) {
  DsLog = std::move(rows);
  Selection = select == kWholeLogNewestFirst ? kWholeLog : select;
  DataLog.RecordSource = select;
  DataLog.Refresh();
  if (!DataLog.AtEnd()) DataLog.Rows()->MoveLast();
  DataGrid1.ContentChanged();
  cmLast();
}

void LogForm::ReceiveSelection() {
  TakeSelection(session_.Db.OpenDynaset(session_.QueryText), session_.QueryText);
  // A selection is in force: the key says so, and its release drops it.
  Key("cmSearch").SetDown(true);
}

void LogForm::cmSearch() {
  Command& key = Key("cmSearch");
  if (!key.Down()) {
    TakeSelection(session_.Db.OpenDynaset(kWholeLog), kWholeLogNewestFirst);
    return;
  }
  Window* search = session_.Windows.LoadNew("LogSearch");
  if (search == nullptr) {
    key.SetDown(false);
    return;
  }
  // The dialog replaces the record set in the session's handle; leaving it by its frame is a
  // cancel like any other.
  session_.SearchText = "CANCEL";
  session_.DsSearch = std::move(DsLog);
  session_.Windows.ShowModal(*search);
  if (!Loaded()) return;
  if (session_.SearchText == "CANCEL") {
    DsLog = std::move(session_.DsSearch);
    key.SetDown(false);
    return;
  }
  TakeSelection(std::move(session_.DsSearch), session_.SearchText);
}

void LogForm::PositionByCall() {
  if (session_.ModoPosiziona != 1) return;
  DsLog->FindFirst(fmt::format("Call='{}' and Locator='{}'", CallQso.Text(), Locator.Text()));
  if (DsLog->NoMatch()) {
    ClearQso();
  } else {
    ShowQso();
  }
}

}  // namespace brenvo
