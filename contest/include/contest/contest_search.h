// The list of contests, to call one back.
#pragma once

#include <cstdint>
#include <optional>

#include "core/data_source.h"
#include "forms/grid.h"
#include "forms/status_bar.h"
#include "forms/window.h"

namespace brenvo::contest {

// A double click leaves the row's number in Tag and hides the dialog; its caller reads the row and
// unloads it.
class ContestSearch : public forms::Window {
 public:
  explicit ContestSearch(core::Session& session);
  void Load() override;
  void Unload() override;

  // The row chosen, from 1.
  std::optional<std::int64_t> Chosen() const;

  core::DataSource Data1;
  forms::DataGrid Spread1{
      *this, "Spread1", {.hint = "Doppio Click per richiamare i dati del contest"}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

 private:
  core::Session& session_;
};

}  // namespace brenvo::contest
