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
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::core {

// What a table shows. Rows count from 0, and each has a key that it keeps while others come and go.
class TableRows : public forms::GridRows {
 public:
  // Shows the rows alone in which each of the words stands somewhere; all rows for no word.
  virtual void Search(std::string_view words) = 0;
  virtual std::int64_t KeyAt(std::int64_t row) = 0;
  // Nothing for a row that is not shown.
  virtual std::optional<std::int64_t> RowOf(std::int64_t key) = 0;

  // The cells are only read.
  void SetCellText(std::int64_t, std::size_t, std::string_view) override {}
  void AddRow(std::size_t, std::string_view) override {}
  void DeleteRow(std::int64_t) override {}
};

// Rows in memory. A row's key is its place among all of them. Case and accents do not count in a
// search.
class MemoryRows : public TableRows {
 public:
  using Row = std::vector<std::string>;  // a text a column
  // All of them are shown until the next search.
  void SetRows(std::vector<Row> rows);
  std::size_t CountOfAll() const { return rows_.size(); }

  void Search(std::string_view words) override;
  std::int64_t KeyAt(std::int64_t row) override;
  std::optional<std::int64_t> RowOf(std::int64_t key) override;
  std::int64_t RowCount() override { return static_cast<std::int64_t>(shown_.size()); }
  std::string CellText(std::int64_t row, std::size_t field) override;

 private:
  std::vector<Row> rows_;
  std::vector<std::size_t> shown_;
};

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
  // The rows, or what a filter lets through, are others than before: searches them again and puts
  // the mark on the row of that key, or on the first one where that is gone.
  void ShowRows(std::optional<std::int64_t> key);
  // The key of the row that is marked; nothing while none is.
  std::optional<std::int64_t> ChosenKey();
  void Say(std::string_view what) { Avviso.SetText(what); }
  // Another row is marked.
  virtual void RowChosen() {}
  // A key on the table that is not Enter: true when it has done its work.
  virtual bool TableKey(char32_t) { return false; }

  Session& session_;

 private:
  friend class TableGrid;
  void Take(TableGrid& table);
  bool PressDefault();

  TableGrid* table_ = nullptr;
  TableRows* rows_ = nullptr;
};

// The table of such a window.
class TableGrid : public forms::DataGrid {
 public:
  explicit TableGrid(TableWindow& window, const forms::FieldFace& face = {})
      : forms::DataGrid(window, "Tabella", face) {
    window.Take(*this);
  }
};

}  // namespace brenvo::core
