#include "core/table_window.h"

#include "core/window_place.h"

namespace brenvo::core {

TableWindow::TableWindow(Session& session, std::string name, std::string caption, base::Twips width,
                         base::Twips height)
    : forms::Window(session.Host(), std::move(name), std::move(caption), width, height),
      session_(session) {
  CancelCommand = &cmExit;
  ShowCommands({});
  Cerca.OnChange = [this] { ShowRows(ChosenKey()); };
  Cerca.OnEnter = [this] { Host().MoveFocus(*table_); };
}

void TableWindow::Load() { RestoreWindow(session_, *this, Name()); }
void TableWindow::Unload() { SaveWindow(session_, *this, Name()); }

void TableWindow::ShowCommands(std::initializer_list<forms::MenuItem> own) {
  Toolbar1.Items = own;
  Toolbar1.Items.insert(Toolbar1.Items.end(), {&cmSearch, &cmExit});
}

void TableWindow::Take(TableGrid& table) {
  table_ = &table;
  table.OnClick = [this] { RowChosen(); };
  table.OnDoubleClick = [this] { PressDefault(); };
  table.OnKey = [this](char32_t key) {
    return key == forms::kEnter ? PressDefault() : TableKey(key);
  };
}

bool TableWindow::PressDefault() {
  if (DefaultCommand == nullptr || !ChosenKey()) return false;
  RowChosen();
  DefaultCommand->Press();
  return true;
}

void TableWindow::ShowTable(TableRows& rows, std::initializer_list<std::string_view> headings) {
  std::vector<forms::DataGrid::ColumnOf> columns;
  for (const std::string_view heading : headings) {
    forms::DataGrid::ColumnOf& column = columns.emplace_back();
    column.heading = heading;
    column.field = columns.size() - 1;
  }
  ShowTable(rows, std::move(columns));
}

void TableWindow::ShowTable(TableRows& rows, std::vector<forms::DataGrid::ColumnOf> columns) {
  rows_ = &rows;
  rows.OnReady = [this] { ShowRows(ChosenKey()); };
  table_->SetSource(&rows);
  table_->SetColumnsOf(std::move(columns));
  ShowRows(std::nullopt);
}

void TableWindow::ShowRows(std::optional<std::int64_t> key) {
  if (rows_ == nullptr) return;
  const bool done = rows_->Arrange(Wanted());
  const auto row = key ? rows_->RowOf(*key) : std::nullopt;
  table_->SetCurrent(rows_->RowCount() == 0 ? 0 : 1 + row.value_or(0), table_->Column());
  RowsArranged(done);
  RowChosen();
}

std::optional<std::int64_t> TableWindow::ChosenKey() {
  if (rows_ == nullptr || table_->Row() < 1 || table_->Row() > rows_->RowCount()) {
    return std::nullopt;
  }
  return rows_->KeyAt(table_->Row() - 1);
}

}  // namespace brenvo::core
