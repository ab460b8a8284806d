// The search of the log: any of its fields together.
#pragma once

#include <string>

#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/tool_keys.h"
#include "forms/window.h"

namespace brenvo {

// A modal dialog. It leaves "CANCEL" in the session's SearchText, or the statement of a search
// there and its open rows in DsSearch. A statement that fails leaves both as they were.
class LogSearch : public Window {
 public:
  explicit LogSearch(Session& session);

  void Load() override;
  void Unload() override;

  // Each field that is not empty adds a condition.
  MaskedField DataQso{*this, "DataQso", "##/##/####"};
  Command cmTipoData{*this, "cmTipoData", "="};
  TextField CallQso{*this, "CallQso"};  // with the operator's own wildcards, as the locator
  ListField Country{*this, "Country", ListStyle::kCombo};
  ListField Provincia{*this, "Provincia", ListStyle::kCombo};
  TextField Locator{*this, "Locator"};
  ListField Banda{*this, "Banda", ListStyle::kDropDown};
  ListField Modo{*this, "Modo", ListStyle::kDropDown};
  ListField Propagazione{*this, "Propagazione", ListStyle::kDropDown};
  CheckBox QslDaInviare{*this, "QslDaInviare", true};
  CheckBox QslRicevuta{*this, "QslRicevuta", true};
  CheckBox QslInviata{*this, "QslInviata", true};
  TextField Note{*this, "Note"};  // found anywhere within a note
  OptionGroup SortOrder{
      *this,
      "SortOrder",
      {"Data", "Call", "Prefisso", "Country", "Provincia", "Locator", "Qsl", "Qrb"}};
  ToolBar Toolbar1{*this, "Toolbar1"};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  void cmSearch();
  void cmExit();

  // The SELECT that the fields ask for.
  std::string Statement() const;

 private:
  void OnCountryChange();
  void OnNotePick();

  Session& session_;
  ToolKeys keys_;
};

}  // namespace brenvo
