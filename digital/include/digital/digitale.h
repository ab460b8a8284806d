// What programs of digital modes hear, and what each station is worth.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/arranged_window.h"
#include "digital/programs.h"
#include "forms/choice_fields.h"

namespace brenvo::digital {

// Rows in memory, the newest first, by the numbers of their decodes.
class DecodeRows : public core::MemoryRows {
 public:
  void SetNumbered(std::vector<std::int64_t> numbers, std::vector<Row> rows);
  void PutNumbered(std::int64_t number, Row row);
  std::int64_t KeyAt(std::int64_t row) override;
  std::optional<std::int64_t> RowOf(std::int64_t number) override;

 private:
  std::vector<std::int64_t> numbers_;  // falling
};

// While it is open the programs are listened to. Enter or a double click on a decode answers it.
class Digitale : public core::ArrangedWindow {
 public:
  Digitale(core::Session& session, Programs& programs);
  void Load() override;
  void Unload() override;

  forms::CheckBox SoloBisogni{
      *this,
      "SoloBisogni",
      {.caption = "Solo bisogni", .hint = "Mostra solo le stazioni che servono"}};
  forms::CheckBox SoloCQ{
      *this, "SoloCQ", {.caption = "Solo CQ", .hint = "Mostra solo chi chiama CQ"}};
  forms::CheckBox SoloMiei{
      *this, "SoloMiei", {.caption = "Solo per me", .hint = "Mostra solo chi chiama me"}};
  core::TableGrid Decodifiche{
      *this, {.hint = "Invio o doppio click rispondono alla stazione"}, "Decodifiche"};
  // A row a program.
  forms::DataGrid Programmi{*this, "Programmi", {.hint = "I programmi digitali al lavoro"}};
  // Where it listens, and how much of what came was dropped.
  forms::Label Ascolto{*this, "Ascolto"};
  // The contacts that could not be stored by now.
  forms::Label Attesa{*this, "Attesa"};

  forms::Command cmRispondi{
      *this,
      "cmRispondi",
      "Rispondi",
      {.tip = "Risponde alla stazione, come un doppio click nel suo programma",
       .run = [this] { Answer(); },
       .enabled = [this] { return ChosenKey().has_value(); }}};
  forms::Command cmFerma{
      *this,
      "cmFerma",
      "Ferma",
      {.tip = "I programmi smettono di trasmettere", .shortcut = "F4", .run = [this] { Halt(); }}};
  forms::Command cmRileggi{*this,
                           "cmRileggi",
                           "Rileggi",
                           {.tip = "Chiede ai programmi le decodifiche che hanno già mostrato",
                            .shortcut = "F5",
                            .run = [this] { Replay(); }}};
  forms::Command cmPulisci{*this,
                           "cmPulisci",
                           "Pulisci",
                           {.tip = "Toglie tutte le decodifiche dalla tabella",
                            .shortcut = "F9",
                            .run = [this] { Forget(); }}};
  forms::Command cmRiprova{*this,
                           "cmRiprova",
                           "Riprova",
                           {.tip = "Registra adesso i Qso in attesa",
                            .shortcut = "F6",
                            .run = [this] { TryAgain(); },
                            .enabled = [this] { return !programs_.WaitingText().empty(); }}};

 private:
  bool Passes(const HeardDecode& heard) const;
  core::MemoryRows::Row RowOf(const HeardDecode& heard) const;
  void FillTable();
  void AddDecodes();
  void ShowPrograms();
  void Answer();
  void Halt();
  void Replay();
  void Forget();
  void TryAgain();

  Programs& programs_;
  DecodeRows rows_;
  core::MemoryRows programRows_;
  std::int64_t shown_ = 0;  // the number of the newest decode that was looked at
  std::string news_, fault_;
  forms::Subscription changed_, decoded_, decodesChanged_;
};

}  // namespace brenvo::digital
