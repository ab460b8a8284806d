// Which columns a table shows, and in which order.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/table_window.h"

namespace brenvo::core {

// A dialog by the name "Colonne": the caller gives it the columns and shows it modally.
class Colonne : public TableWindow {
 public:
  explicit Colonne(Session& session);
  void Load() override;

  struct Column {
    std::string heading;
    bool shown = true;
    std::size_t field = 0;
    bool usual = true;  // shown where nobody has chosen
  };
  // In the order in which they stand; at least one is shown.
  void Give(std::vector<Column> columns);
  // The same as the operator wants them; nothing when he has left the dialog.
  const std::optional<std::vector<Column>>& Chosen() const { return chosen_; }

  TableGrid Tabella{*this, {.hint = "Invio mostra o toglie la colonna"}};
  forms::Command cmCambia{*this,
                          "cmCambia",
                          "Mostra o togli",
                          {.tip = "Mostra la colonna, o la toglie", .run = [this] { Toggle(); }}};
  forms::Command cmSu{
      *this, "cmSu", "Su", {.tip = "La colonna sta prima", .shortcut = "Ctrl+Up", .run = [this] {
                              MoveBy(-1);
                            }}};
  forms::Command cmGiu{
      *this, "cmGiu", "Giù", {.tip = "La colonna sta dopo", .shortcut = "Ctrl+Down", .run = [this] {
                                MoveBy(1);
                              }}};
  forms::Command cmConsuete{
      *this, "cmConsuete", "Consuete", {.tip = "Le colonne come erano all'inizio", .run = [this] {
                                          TakeUsual();
                                        }}};
  forms::Command cmApplica{
      *this,
      "cmApplica",
      "Applica",
      {.tip = "Mostra queste colonne", .shortcut = kStoreKey, .run = [this] { Take(); }}};

 private:
  void Fill(std::optional<std::int64_t> key);
  void Toggle();
  void MoveBy(int places);
  void TakeUsual();
  void Take();

  MemoryRows rows_;
  std::vector<Column> columns_;
  std::optional<std::vector<Column>> chosen_;
};

}  // namespace brenvo::core
