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

namespace brenvo::adif {

class ImportaAdif : public forms::Window {
 public:
  explicit ImportaAdif(core::Session& session);
  void Load() override;
  void Unload() override;

  // Reads the file and fills the window. False when the operator was told that there is nothing to
  // show, or has stopped it.
  [[nodiscard]] bool Preview(const std::filesystem::path& file);

  forms::TextField File{*this, "File", {.caption = "File"}};
  forms::TextField Letti{*this, "Letti", {.caption = "Record letti", .characters = 9}};
  forms::TextField Nuovi{*this, "Nuovi", {.caption = "Nuovi", .characters = 9}};
  forms::TextField Ripetuti{*this, "Ripetuti", {.caption = "Ripetuti", .characters = 9}};
  forms::TextField Rifiutati{*this, "Rifiutati", {.caption = "Rifiutati", .characters = 9}};
  forms::TextField Periodo{*this, "Periodo", {.caption = "Periodo", .characters = 28}};
  forms::TextField Bande{*this, "Bande", {.caption = "Bande"}};
  forms::TextField Modi{*this, "Modi", {.caption = "Modi"}};
  forms::TextField Motivi{
      *this, "Motivi", {.caption = "Motivi rifiuto"}};  // why records are refused
  forms::TextField Avvisi{*this, "Avvisi", {.caption = "Avvisi", .characters = 28}};
  // Those whose second another mode has already.
  forms::TextField Spostati{*this, "Spostati", {.caption = "Spostati nel minuto", .characters = 9}};
  // Fields whose lengths were wrong.
  forms::TextField Riparati{*this, "Riparati", {.caption = "Campi riparati", .characters = 9}};
  // Which flags count as QslRicevuta.
  static constexpr std::string_view kConfirmations = "Conferme che valgono come Qsl ricevuta";
  forms::CheckBox QslCartacea{
      *this, "QslCartacea", {.caption = "Qsl cartacea", .hint = kConfirmations}};
  forms::CheckBox QslLotw{*this, "QslLotw", {.caption = "LoTW", .hint = kConfirmations}};
  forms::CheckBox QslEqsl{*this, "QslEqsl", {.caption = "eQSL", .hint = kConfirmations}};
  forms::OptionGroup ContattiRipetuti{
      *this,
      "ContattiRipetuti",
      {"Lasciarli come sono", "Riempire solo le colonne vuote"},
      {.caption = "Contatti ripetuti",
       .hint = "Stesso nominativo, stessa banda, stesso minuto e modo di un Qso del log"}};
  // The first records as they will stand in the log.
  forms::CellGrid Anteprima{*this, "Anteprima", {.caption = "Primi record, come staranno nel log"}};
  // The first repaired fields, with the length that was told and what was read.
  forms::CellGrid Riparazioni{
      *this, "Riparazioni", {.caption = "Campi con una lunghezza sbagliata, letti lo stesso"}};
  forms::Command cmImporta{*this,
                           "cmImporta",
                           "&Importa",
                           {.tip = "Importa i contatti nel log", .run = [this] { Import(); }}};
  forms::Command cmHelp{
      *this, "cmHelp", "&Aiuto", {.tip = "Aiuto", .shortcut = "F1", .run = [this] {
                                    session_.Help(core::kHelpImportaAdif);
                                  }}};
  forms::Command cmExit{*this,
                        "cmExit",
                        "&Esci",
                        {.tip = "Chiude la finestra senza importare", .run = [this] { Close(); }}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

  void Import();

 private:
  QslChoice Choice() const;
  void ShowPreview();
  void ShowFirstRecords();
  void ShowRepairs();
  bool AgreesToDamage();

  core::Session& session_;
  std::filesystem::path file_;
  ImportPreview preview_;
};

// The menu's command: asks for the log's time where nobody was asked, and for the file, then shows
// the window.
void ImportaFileAdif(core::Session& session);

}  // namespace brenvo::adif
