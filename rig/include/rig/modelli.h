// Which transceiver or rotator it is, and where.
#pragma once

#include <memory>
#include <vector>

#include "core/table_window.h"
#include "forms/list_field.h"
#include "rig/set_up.h"

namespace brenvo::rig {

// A dialog: the caller says which of the two is meant and shows it modally. The models are those
// that the library on this computer knows; without it a program at work elsewhere can be named.
class Modelli : public core::TableWindow {
 public:
  explicit Modelli(core::Session& session);
  void Load() override;

  void Ask(const DeviceKind& kind);
  // The operator has chosen; it is stored.
  bool WasChosen() const { return chosen_; }

  core::TableGrid Tabella{
      *this, {.hint = "Invio o doppio click collegano questo modello"}, "Tabella"};
  forms::TextField Porta{*this,
                         "Porta",
                         {.caption = "Porta",
                          .hint = "La porta seriale, come /dev/ttyUSB0 o COM1; vuota se non ne ha",
                          .characters = 20}};
  forms::ListField Velocita{
      *this,
      "Velocita",
      forms::ListStyle::kCombo,
      {.caption = "Velocità", .hint = "Baud; vuota per quella del modello", .characters = 8}};
  forms::TextField Indirizzo{*this,
                             "Indirizzo",
                             {.caption = "Indirizzo",
                              .hint = "Dove ascolta rigctld o rotctld, come 127.0.0.1:4532",
                              .characters = 20}};
  forms::Command cmCollega{*this,
                           "cmCollega",
                           "Collega",
                           {.tip = "Sceglie il modello segnato e lo collega",
                            .shortcut = kStoreKey,
                            .run = [this] { Take(); },
                            .enabled = [this] { return ChosenKey().has_value(); }}};

 private:
  void TakeList(const platform::ProgramEnd& end);
  void Fill();
  void Take();

  const DeviceKind* kind_ = &kRigKind;
  std::unique_ptr<platform::Process> lister_;
  std::vector<Model> models_;
  core::MemoryRows rows_;
  SetUp setUp_;
  bool chosen_ = false;
};

}  // namespace brenvo::rig
