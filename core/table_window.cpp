#include "core/table_window.h"

#include <algorithm>

#include "base/plain_letters.h"
#include "base/text.h"
#include "core/window_place.h"

namespace brenvo::core {
namespace {

std::string Folded(std::string_view text) { return base::Lower(base::ToPlainLetters(text).text); }

std::vector<std::string> WordsOf(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  for (const char c : Folded(text)) {
    if (c != ' ') {
      word += c;
    } else if (!word.empty()) {
      words.push_back(std::exchange(word, {}));
    }
  }
  if (!word.empty()) words.push_back(std::move(word));
  return words;
}

bool Holds(const MemoryRows::Row& row, const std::vector<std::string>& words) {
  if (words.empty()) return true;
  std::string all;
  for (const std::string& cell : row) all += Folded(cell) + '\n';
  return std::all_of(words.begin(), words.end(),
                     [&](const std::string& word) { return all.find(word) != std::string::npos; });
}

}  // namespace

void MemoryRows::SetRows(std::vector<Row> rows) {
  rows_ = std::move(rows);
  Search({});
}

void MemoryRows::Search(std::string_view words) {
  const std::vector<std::string> wanted = WordsOf(words);
  shown_.clear();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (Holds(rows_[i], wanted)) shown_.push_back(i);
  }
}

std::int64_t MemoryRows::KeyAt(std::int64_t row) {
  return static_cast<std::int64_t>(shown_.at(static_cast<std::size_t>(row)));
}

std::optional<std::int64_t> MemoryRows::RowOf(std::int64_t key) {
  const auto at = std::lower_bound(shown_.begin(), shown_.end(),
                                   static_cast<std::size_t>(std::max<std::int64_t>(key, 0)));
  if (at == shown_.end() || static_cast<std::int64_t>(*at) != key) return std::nullopt;
  return at - shown_.begin();
}

std::string MemoryRows::CellText(std::int64_t row, std::size_t field) {
  if (row < 0 || row >= RowCount()) return {};
  const Row& cells = rows_[shown_[static_cast<std::size_t>(row)]];
  return field < cells.size() ? cells[field] : std::string();
}

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
  rows_ = &rows;
  table_->SetSource(&rows);
  table_->SetColumnsOf(std::move(columns));
  ShowRows(std::nullopt);
}

void TableWindow::ShowRows(std::optional<std::int64_t> key) {
  if (rows_ == nullptr) return;
  rows_->Search(Cerca.Text());
  const auto row = key ? rows_->RowOf(*key) : std::nullopt;
  table_->SetCurrent(rows_->RowCount() == 0 ? 0 : 1 + row.value_or(0), table_->Column());
  RowChosen();
}

std::optional<std::int64_t> TableWindow::ChosenKey() {
  if (rows_ == nullptr || table_->Row() < 1 || table_->Row() > rows_->RowCount()) {
    return std::nullopt;
  }
  return rows_->KeyAt(table_->Row() - 1);
}

}  // namespace brenvo::core
