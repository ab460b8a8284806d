// The import of a log file: what it holds, what would become of it, and the command that does it.
#pragma once

#include <filesystem>
#include <string>

#include "adif/adif_import.h"
#include "core/help_topics.h"
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

  TextField File{*this, "File", {.caption = "File"}};
  TextField Letti{*this, "Letti", {.caption = "Record letti", .characters = 9}};
  TextField Nuovi{*this, "Nuovi", {.caption = "Nuovi", .characters = 9}};
  TextField Ripetuti{*this, "Ripetuti", {.caption = "Ripetuti", .characters = 9}};
  TextField Rifiutati{*this, "Rifiutati", {.caption = "Rifiutati", .characters = 9}};
  TextField Periodo{*this, "Periodo", {.caption = "Periodo", .characters = 28}};
  TextField Bande{*this, "Bande", {.caption = "Bande"}};
  TextField Modi{*this, "Modi", {.caption = "Modi"}};
  TextField Motivi{*this, "Motivi", {.caption = "Motivi rifiuto"}};  // why records are refused
  TextField Avvisi{*this, "Avvisi", {.caption = "Avvisi", .characters = 28}};
  // Those whose second another mode has already.
  TextField Spostati{*this, "Spostati", {.caption = "Spostati nel minuto", .characters = 9}};
  // Fields whose lengths were wrong.
  TextField Riparati{*this, "Riparati", {.caption = "Campi riparati", .characters = 9}};
  // Which flags count as QslRicevuta.
  static constexpr std::string_view kConfirmations = "Conferme che valgono come Qsl ricevuta";
  CheckBox QslCartacea{*this, "QslCartacea", {.caption = "Qsl cartacea", .hint = kConfirmations}};
  CheckBox QslLotw{*this, "QslLotw", {.caption = "LoTW", .hint = kConfirmations}};
  CheckBox QslEqsl{*this, "QslEqsl", {.caption = "eQSL", .hint = kConfirmations}};
  OptionGroup ContattiRipetuti{
      *this,
      "ContattiRipetuti",
      {"Lasciarli come sono", "Riempire solo le colonne vuote"},
      {.caption = "Contatti ripetuti",
       .hint = "Stesso nominativo, stessa banda, stesso minuto e modo di un Qso del log"}};
  // The first records as they will stand in the log.
  CellGrid Anteprima{*this, "Anteprima", {.caption = "Primi record, come staranno nel log"}};
  // The first repaired fields, with the length that was told and what was read.
  CellGrid Riparazioni{*this,
                       "Riparazioni",
                       {.caption = "Campi con una lunghezza sbagliata, letti lo stesso"}};
  Command cmImporta{*this,
                    "cmImporta",
                    "&Importa",
                    {.tip = "Importa i contatti nel log", .run = [this] { Import(); }}};
  Command cmHelp{*this, "cmHelp", "&Aiuto", {.tip = "Aiuto", .shortcut = "F1", .run = [this] {
                                               session_.Help(kHelpImportaAdif);
                                             }}};
  Command cmExit{*this,
                 "cmExit",
                 "&Esci",
                 {.tip = "Chiude la finestra senza importare", .run = [this] { Close(); }}};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  void Import();

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
