// The station's log: one contact at a time in entry fields, and a grid of the same rows.
#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

#include "core/data_source.h"
#include "core/session.h"
#include "core/shared_windows.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/tool_keys.h"

namespace brenvo {

class LogForm : public LogWindow {
 public:
  explicit LogForm(Session& session);
  ~LogForm() override;

  void Load() override;
  void Resize() override;
  void Unload() override;

  // The contact. Each field maps to the column of Log of the same name, CallQso to Call, and
  // DataQso with Qtr to DataQso.
  TextField CallQso{*this, "CallQso"};
  ListField Banda{*this, "Banda", ListStyle::kDropDown};
  TextField Frequenza{*this, "Frequenza"};
  ListField Modo{*this, "Modo", ListStyle::kDropDown};
  TextField QrkDato{*this, "QrkDato"};
  TextField QrkRicevuto{*this, "QrkRicevuto"};
  TextField Locator{*this, "Locator"};
  TextField Qra{*this, "Qra"};
  TextField Qth{*this, "Qth"};
  TextField Note{*this, "Note"};
  DatePicker DataQso{*this, "DataQso"};
  MaskedField Qtr{*this, "Qtr", "##:##"};
  TextField Prefisso{*this, "Prefisso"};
  TextField ZonaCQ{*this, "ZonaCQ"};
  TextField ZonaITU{*this, "ZonaITU"};
  TextField Continente{*this, "Continente"};
  ListField Country{*this, "Country", ListStyle::kCombo};
  ListField Provincia{*this, "Provincia", ListStyle::kCombo};
  TextField Manager{*this, "Manager"};
  TextField Potenza{*this, "Potenza"};
  ListField Propagazione{*this, "Propagazione", ListStyle::kDropDown};
  CheckBox QslDaInviare{*this, "QslDaInviare"};
  CheckBox QslRicevuta{*this, "QslRicevuta"};
  CheckBox QslInviata{*this, "QslInviata"};
  TextField QsoNr{*this, "QsoNr"};          // of the record on screen, kept across cmClear
  TextField QsoTotali{*this, "QsoTotali"};  // rows of DsLog
  TextField Qrb{*this, "Qrb"};              // km
  // A trigger without a caller: its change shows the contact with this call and locator.
  TextField Posiziona{*this, "Posiziona"};

  Panel Panel3D1{*this, "Panel3D1"};
  Panel PanelGriglia{*this, "PanelGriglia"};
  DataGrid DataGrid1{*this, "DataGrid1"};
  // Panel 1 hints, 2 the call, 3 the country, 4 the square.
  StatusBar StatusBar1{*this, "StatusBar1", 4};
  ToolBar Toolbar1{*this, "Toolbar1"};
  Command& Key(std::string_view name) { return *FindCommand(name); }

  // The keys of the tool bar and the button beside the time.
  void cmInsert();
  void cmUpdate();
  void cmDelete();
  void cmFirst();
  void cmPrevious();
  void cmNext();
  void cmLast();
  void cmClear();
  void cmSearch();
  void cmVista();
  void cmWorked();
  void cmMappa();
  void cmQtr();
  // The ADIF file: the record on screen, or all of the current selection.
  void cmOnlyThisQso();
  void cmAllQso();

  // What runs while a contact is typed.
  void OnCallChange();
  void OnCallLeave();
  void OnLocatorChange();
  void OnCountryChange();
  void OnCountryLeave();
  void OnProvinciaLeave();
  void OnPrefissoPick();
  void OnNotePick();
  void OnBandaChange();

  // The record set that the commands work on.
  std::unique_ptr<Dynaset> DsLog;
  DataSource DataLog;
  // The values last acted on.
  std::string PrevCall, PrevLocator, PrevBanda, PrevCountry;

 private:
  struct Shown;  // a record as the fields show it

  void MakeToolbar();
  void HangInEvents();
  void ClearQso();
  void ShowQso();
  Shown ReadRecord();
  // Panel 1 tells which columns of the record on screen are unreadable; with none it is emptied of
  // that.
  void TellUnreadable(const std::string& columns);
  bool ValidateQso();
  void StoreQso();
  void EnableRecordCommands();
  void DisableRecordCommands();
  void ShowRecordCommands();
  // An export of all contacts leaves DsLog at its end: back to the record it stood on.
  void ReturnFromExport();
  void ReceiveSelection();
  void ShowGrid(bool shown);
  void TakeSelection(std::unique_ptr<Dynaset> rows, std::string_view select);
  void PositionByCall();
  // Panel 1 tells how many contacts went into a file without their date.
  void TellUndated(int contacts);
  // Asks under `title` whether the file keeps what it holds, then appends what `write` writes.
  void Export(std::string_view title, const std::function<void(std::ostream&)>& write);
  // Panel `number` tells what `condition` (ending in a blank) finds in Log on the chosen band.
  void ShowStatus(int number, std::string_view condition, std::string_view subject);
  std::string ExcludedQsoNr() const;

  Session& session_;
  ToolKeys keys_;
  Menu exportMenu_{*this, "cmExport", "Esporta"};
  Bounds boundsBeforeGrid_;
  bool toldUnreadable_ = false;  // in panel 1
  bool recordCommands_ = false;  // there is a record for them
  Bookmark beforeExport_;        // where DsLog stood
};

}  // namespace brenvo
