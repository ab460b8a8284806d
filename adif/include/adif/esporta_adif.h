// The export of the log as a log file of the standard.
#pragma once

#include <string>

#include "core/help_topics.h"
#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/status_bar.h"
#include "forms/window.h"

namespace brenvo::adif {

class EsportaAdif : public forms::Window {
 public:
  explicit EsportaAdif(core::Session& session);
  void Load() override;
  void Unload() override;

  // The second is there while a log window is open.
  forms::OptionGroup Contatti{*this,
                              "Contatti",
                              {"Tutto il log", "La selezione della finestra Log"},
                              {.caption = "Contatti da esportare"}};
  forms::OptionGroup Lettere{*this,
                             "Lettere",
                             {"UTF-8: tutte le lettere", "ASCII: à diventa a, ł diventa l"},
                             {.caption = "Lettere del file",
                              .hint = "ASCII è per i programmi che non leggono altre lettere"}};
  forms::Command cmEsporta{*this,
                           "cmEsporta",
                           "E&sporta",
                           {.tip = "Sceglie il file e lo scrive", .run = [this] { Export(); }}};
  forms::Command cmHelp{
      *this, "cmHelp", "&Aiuto", {.tip = "Aiuto", .shortcut = "F1", .run = [this] {
                                    session_.Help(core::kHelpEsportaAdif);
                                  }}};
  forms::Command cmExit{*this,
                        "cmExit",
                        "&Esci",
                        {.tip = "Chiude la finestra senza esportare", .run = [this] { Close(); }}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

  // Asks for the file and writes it.
  void Export();

 private:
  std::string Selection() const;

  core::Session& session_;
};

}  // namespace brenvo::adif
