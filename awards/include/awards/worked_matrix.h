// What has been worked and confirmed with a station, by band or by mode.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/session.h"
#include "core/shared_windows.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/status_bar.h"

namespace brenvo::awards {

// Where Worked by Band and Worked by Mode differ.
struct MatrixKind {
  std::string_view window, caption;
  core::MatrixWindow* core::OpenWindows::*handle;
  std::string_view columnOf;     // column of Log that the grid's columns are
  std::string_view filterField;  // name and caption of the list that filters
  std::string_view filterHead;   // of the condition that the list adds, before its text
  std::optional<std::string_view> unfiltered;  // the list's entry that adds none
  std::string_view corner;                     // the text of cell (0,0)
  base::Twips columnWidth;
  bool centred;
  std::string_view gridHint;
};
const MatrixKind& WorkedByBand();
const MatrixKind& WorkedByMode();

// Rows are award levels, columns bands or modes; a cell is "C" confirmed, "W" worked or empty.
class WorkedMatrix : public core::MatrixWindow {
 public:
  WorkedMatrix(core::Session& session, const MatrixKind& kind);

  void Load() override;
  void Unload() override;
  // Does nothing for a callsign and a locator that are those of the search before.
  void Search() override;

  // The list that filters, under its own name: Modo by band, Banda by mode.
  forms::ListField Filter;
  forms::Command cmSearch{
      *this,
      "cmSearch",
      "Cerca",
      {.tip = "Attiva il controllo", .run = [this] { Search(); }, .hint = "Attiva il controllo"}};
  forms::CheckBox Mappa{*this, "Mappa", {.caption = "Display mappa"}};
  forms::Label Coordinate{*this, "Coordinate"};
  // Who the call is today, where that is another country than the rows stand for.
  forms::Label Avviso{*this, "Avviso"};
  forms::CellGrid Grid1;
  forms::Panel SSPanel1{*this, "SSPanel1", {.hint = ""}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

 protected:
  // The first fills the heading row, the second the list, with its choice of the start.
  virtual void MakeColumns() = 0;
  virtual void FillFilter() = 0;
  virtual void FilterChosen() {}

  // The next search redoes every cell.
  void ForgetSearch();
  // Adds a column with this heading behind the others.
  void AddColumn(std::string_view heading);

  core::Session& session_;
  const MatrixKind& kind_;

 private:
  // Levels in the order of the grid's rows.
  enum Level { kCall = 1, kSquare, kCountry, kPrefisso, kZonaCQ, kZonaITU, kContinente, kRows };

  // The contacts have changed: the cells of the last search anew, whatever is typed by now.
  void Renew();
  void SearchCallRows();
  void ResolveCall(std::string_view call);
  void WriteLabel(Level level, std::string_view label);
  void SearchRow(Level level);
  bool AnyContact(std::string_view condition);
  // The condition for the contacts of a level on a column's band or mode.
  std::string ConditionOf(Level level, std::string_view column) const;
  void ShowCellInLog();
  void ShowCoordinate();
  // What the filter adds to a condition.
  std::string FilterClause() const;
  bool IsFiltered() const;

  // What was searched last; nothing when it is to be searched again.
  std::optional<std::string> lastCall_ = "", lastLocator_ = "";
  // What the rows stand for, by Level: typed, or resolved from the callsign; zones as numbers with
  // their leading blank.
  std::array<std::string, kRows> keys_;
  std::string countryLabel_, countryLocator_;
  forms::Subscription changes_;
};

class Hrd : public WorkedMatrix {
 public:
  explicit Hrd(core::Session& session) : WorkedMatrix(session, WorkedByBand()) {}

  forms::ListField& Modo = Filter;

 protected:
  void MakeColumns() override;
  void FillFilter() override;
};

class HrdMode : public WorkedMatrix {
 public:
  explicit HrdMode(core::Session& session);

  forms::ListField& Banda = Filter;
  // One entry a mode, checked where it is a column.
  forms::EntryArray Modon{*this, "Modon"};
  forms::Menu cmModi{*this, "cmModi", "Modi", {&Modon}};

  // Makes the columns and the menu of the modes in use.
  void FormattoGrid();

 protected:
  void MakeColumns() override { FormattoGrid(); }
  void FillFilter() override;
  void FilterChosen() override;

 private:
  void ToggleMode(int index);
};

}  // namespace brenvo::awards
