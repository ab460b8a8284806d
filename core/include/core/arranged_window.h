// A window that shows a table which the operator arranges: sorted by its headings, narrowed by what
// stands under them, its columns chosen, moved and drawn to a width, its rows marked.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/table_window.h"

namespace brenvo::core {

struct TableColumn {
  // The heading; a column is kept by it, so it holds no "," and no ":", and stands once.
  std::string heading;
  ColumnKind kind = ColumnKind::kText;
  bool shown = true;                                        // until the operator chooses
  std::function<std::string(const std::string&)> format{};  // of the text; may be empty
  base::Twips width = forms::kOwnSize;                      // until the operator draws one
};

// As a TableWindow; it shows its table by ArrangeTable. The columns are kept under its name, the
// order, the filters and the marks go with the window. Space and clicks with Ctrl or Shift mark
// rows on a screen.
class ArrangedWindow : public TableWindow, private forms::GridArranger {
 public:
  ArrangedWindow(Session& session, std::string name, std::string caption, base::Twips width,
                 base::Twips height);
  void Unload() override;

  // "12 di 345, segnati 3".
  forms::Label Conteggi{*this, "Conteggi"};
  forms::Command cmColonne{*this,
                           "cmColonne",
                           "Colonne...",
                           {.tip = "Sceglie le colonne e il loro ordine",
                            .shortcut = "Ctrl+Shift+C",
                            .run = [this] { ChooseColumns(); }}};
  forms::Command cmTogliFiltri{*this,
                               "cmTogliFiltri",
                               "Togli i filtri",
                               {.tip = "Mostra di nuovo tutte le righe, come erano in ordine",
                                .shortcut = "F8",
                                .run = [this] { ShowAll(); },
                                .enabled = [this] { return IsArranged(); }}};
  forms::Command cmSegnaTutti{*this,
                              "cmSegnaTutti",
                              "Segna tutti",
                              {.tip = "Segna tutte le righe mostrate; se lo sono, toglie i segni",
                               .shortcut = "Ctrl+Shift+A",
                               .run = [this] { MarkAll(); }}};

 protected:
  // The keys of its tool bar: these, then those that all have that are arranged.
  void ShowCommands(std::initializer_list<forms::MenuItem> own);
  // The rows, which live as long as the window; field n of theirs is column n.
  void ArrangeTable(TableRows& rows, std::vector<TableColumn> columns);
  // The rows stand for others than before: no filter, order or mark is left.
  void ForgetArrangement();
  // Of the rows shown those that are marked, in their order; the chosen one where none is.
  std::vector<std::int64_t> MarkedKeys();
  // The same, but all rows shown where none is marked.
  std::vector<std::int64_t> MarkedOrShownKeys();
  bool HasMarks() const { return !marked_.empty(); }
  void ForgetMarks();
  // The columns shown, by their place among all of them.
  const std::vector<std::size_t>& ShownColumns() const { return shown_; }
  const std::vector<TableColumn>& AllColumns() const { return columns_; }
  // Columns have come or gone behind those that stay; what was kept of them is read again, unless
  // the operator has chosen since.
  void SetColumns(std::vector<TableColumn> columns);

  // The headings of the columns that were kept, whether there are such or not.
  std::vector<std::string> KeptHeadings();
  // The operator is about to choose among all columns.
  virtual void BeforeChoosing() {}
  // As if the operator had written it under that column, which is then shown.
  void SetFilter(std::size_t field, std::string_view text);

  Arrangement Wanted() override;
  void RowsArranged(bool done) override;

 private:
  void SortBy(int column, bool add) override;
  std::string FilterText(int column) override;
  void SetFilterText(int column, std::string_view text) override;
  std::string FilterHint(int column) override;
  std::string FilterFault(int column) override;
  void MoveColumn(int from, int to) override;
  void SetColumnWidth(int column, base::Twips width) override;
  bool IsMarked(std::int64_t row) override;
  void Mark(std::int64_t from, std::int64_t to, bool mark) override;

  struct State {  // of a column
    base::Twips width = forms::kOwnSize;
    std::string filter;
    ColumnFilter parsed;
  };
  struct Order {
    std::size_t field = 0;
    bool descending = false;
  };
  std::size_t FieldAt(int column) const { return shown_.at(static_cast<std::size_t>(column)); }
  bool IsArranged() const;
  void ShowAll();
  void MarkAll();
  void ChooseColumns();
  void EachKept(const std::function<void(std::string_view heading, std::string_view width)>& see);
  void ReadChoice();
  void KeepChoice();
  void ShowHeadings();
  void ShowCounts();
  void MarksChanged();
  template <class Wants>
  std::vector<std::int64_t> KeysOf(const Wants& wants);

  std::vector<TableColumn> columns_;
  std::vector<State> states_;       // of the same
  std::vector<std::size_t> shown_;  // of the same
  std::vector<Order> order_;
  std::vector<std::int64_t> marked_;  // keys, ascending
  std::int64_t markedHere_ = 0;       // of these, those that are shown
  bool waits_ = false;
  bool chosen_ = false;  // the columns, by the operator, since they were kept
};

}  // namespace brenvo::core
