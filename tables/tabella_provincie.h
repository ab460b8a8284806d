// The provinces of each country.
#pragma once

#include <string>

#include "core/session.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/tool_keys.h"
#include "forms/window.h"

namespace brenvo {

// Works on the row that the session's province table stands on: the one chosen last.
class TabellaProvincie : public Window {
 public:
  explicit TabellaProvincie(Session& session);

  void Load() override;
  void Unload() override;

  ListField LBCountry{*this, "LBCountry", ListStyle::kOpen};
  ListField LBProv{*this, "LBProv", ListStyle::kOpen};
  TextField Codice{*this, "Codice"};
  TextField Descrizione{*this, "Descrizione"};
  ToolBar Toolbar1{*this, "Toolbar1"};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  void cmInsert();
  void cmUpdate();
  void cmDelete();
  void cmExit();

 private:
  // The country chosen, padded as its list shows it.
  std::string ChosenCountry() const;
  bool SeekChosen(std::size_t codeWidth);
  bool ValidateProvince() const;
  void Store();
  void ReloadAndSelect();

  Session& session_;
  ToolKeys keys_;
};

}  // namespace brenvo
