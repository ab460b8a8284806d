// The one design of windows that show a table: filters above, the table, and below it a line that
// says what happened; the same keys in all of them.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "core/table_rows.h"
#include "forms/command.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::core {

class TableGrid;

// A window of its own declares its filters, then its TableGrid, then what stands below the table:
// the keyboard goes through the fields in this order. Its place is kept under its name. Enter and
// the double click on a row press DefaultCommand; of the other keys those that it has use are bound
// to its commands by the names below.
class TableWindow : public forms::Window {
 public:
  static constexpr std::string_view kSearchKey = "Ctrl+F", kNewKey = "Ins", kStoreKey = "F2",
                                    kDeleteKey = "Del";

  TableWindow(Session& session, std::string name, std::string caption, base::Twips width,
              base::Twips height);
  void Load() override;
  void Unload() override;

  forms::TextField Cerca{
      *this, "Cerca", {.caption = "Cerca", .hint = "Mostra le righe che contengono queste parole"}};
  // What the last command did; empty until there was one.
  forms::Label Avviso{*this, "Avviso"};
  forms::ToolBar Toolbar1{*this, "Toolbar1"};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};
  forms::Command cmSearch{*this,
                          "cmSearch",
                          "Cerca",
                          {.tip = "Cerca nella tabella", .shortcut = kSearchKey, .run = [this] {
                             Host().MoveFocus(Cerca);
                           }}};
  forms::Command cmExit{
      *this, "cmExit", "Esci", {.tip = "Chiude la finestra", .run = [this] { Close(); }}};

 protected:
  // The keys of its tool bar: these, then those that all have.
  void ShowCommands(std::initializer_list<forms::MenuItem> own);
  // The rows, which live as long as the window; a column a heading, in the order of their texts.
  void ShowTable(TableRows& rows, std::initializer_list<std::string_view> headings);
  void ShowTable(TableRows& rows, std::vector<forms::DataGrid::ColumnOf> columns);
  // The rows, or what a filter lets through, are others than before: searches them again and puts
  // the mark on the row of that key, or on the first one where that is gone.
  void ShowRows(std::optional<std::int64_t> key);
  // The key of the row that is marked; nothing while none is.
  std::optional<std::int64_t> ChosenKey();
  // What the rows are asked for.
  virtual Arrangement Wanted() { return {.words = Cerca.Text()}; }
  // The rows stand as they were asked to, or are still at it.
  virtual void RowsArranged(bool /*done*/) {}
  void Say(std::string_view what) { Avviso.SetText(what); }
  // Another row is marked.
  virtual void RowChosen() {}
  // A key on the table that is not Enter: true when it has done its work.
  virtual bool TableKey(char32_t) { return false; }

  // Null before there are any.
  TableRows* Rows() const { return rows_; }
  TableGrid& Table() const { return *table_; }

  Session& session_;

 private:
  friend class TableGrid;
  void Take(TableGrid& table);
  bool PressDefault();

  TableGrid* table_ = nullptr;
  TableRows* rows_ = nullptr;
};

// The table of such a window; most are called alike.
class TableGrid : public forms::DataGrid {
 public:
  explicit TableGrid(TableWindow& window, const forms::FieldFace& face = {},
                     const char* name = "Tabella")
      : forms::DataGrid(window, name, face) {
    window.Take(*this);
  }
};

}  // namespace brenvo::core
