// The import of a log file: what it holds, what would become of it, and the command that does it.
#pragma once

#include <filesystem>
#include <string>

#include "adif/adif_import.h"
#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

class ImportaAdif : public Window {
 public:
  explicit ImportaAdif(Session& session);
  void Load() override;
  void Unload() override;

  // Reads the file and fills the window. False when the operator was told that there is nothing to
  // show, or has stopped it.
  [[nodiscard]] bool Preview(const std::filesystem::path& file);

  TextField File{*this, "File"};
  TextField Letti{*this, "Letti"};
  TextField Nuovi{*this, "Nuovi"};
  TextField Ripetuti{*this, "Ripetuti"};
  TextField Rifiutati{*this, "Rifiutati"};
  TextField Periodo{*this, "Periodo"};
  TextField Bande{*this, "Bande"};
  TextField Modi{*this, "Modi"};
  TextField Motivi{*this, "Motivi"};  // why records are refused
  TextField Avvisi{*this, "Avvisi"};
  TextField Spostati{*this, "Spostati"};  // whose second another mode has already
  TextField Riparati{*this, "Riparati"};  // fields whose lengths were wrong
  // Which flags count as QslRicevuta.
  CheckBox QslCartacea{*this, "QslCartacea"};
  CheckBox QslLotw{*this, "QslLotw"};
  CheckBox QslEqsl{*this, "QslEqsl"};
  OptionGroup ContattiRipetuti{
      *this, "ContattiRipetuti", {"Lasciarli come sono", "Riempire solo le colonne vuote"}};
  // The first records as they will stand in the log.
  CellGrid Anteprima{*this, "Anteprima"};
  // The first repaired fields, with the length that was told and what was read.
  CellGrid Riparazioni{*this, "Riparazioni"};
  Command CmImporta{*this, "cmImporta", "&Importa", [this] { cmImporta(); }};
  Command CmHelp{*this, "cmHelp", "&Aiuto"};
  Command CmExit{*this, "cmExit", "&Esci", [this] { Close(); }};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  void cmImporta();

 private:
  QslChoice Choice() const;
  void ShowPreview();
  void ShowFirstRecords();
  void ShowRepairs();
  bool AgreesToDamage();

  Session& session_;
  std::filesystem::path file_;
  ImportPreview preview_;
};

// The menu's command: asks for the file, then shows the window.
void ImportaFileAdif(Session& session);

}  // namespace brenvo
