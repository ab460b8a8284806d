#include "core/arranged_window.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "core/colonne.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kChoice = "Colonne";

}  // namespace

ArrangedWindow::ArrangedWindow(Session& session, std::string name, std::string caption,
                               base::Twips width, base::Twips height)
    : TableWindow(session, std::move(name), std::move(caption), width, height) {}

void ArrangedWindow::ShowCommands(std::initializer_list<forms::MenuItem> own) {
  TableWindow::ShowCommands(own);
  const std::initializer_list<forms::MenuItem> all = {forms::Separator(), &cmSegnaTutti,
                                                      &cmTogliFiltri, &cmColonne};
  Toolbar1.Items.insert(Toolbar1.Items.begin() + std::ssize(own), all);
}

void ArrangedWindow::Unload() {
  if (chosen_) KeepChoice();
  TableWindow::Unload();
}

void ArrangedWindow::ArrangeTable(TableRows& rows, std::vector<TableColumn> columns) {
  Table().SetArranger(this);
  Table().OnHeading = [this](int column) { SortBy(column, false); };
  ShowTable(rows, std::vector<forms::DataGrid::ColumnOf>());
  SetColumns(std::move(columns));
}

void ArrangedWindow::SetColumns(std::vector<TableColumn> columns) {
  columns_ = std::move(columns);
  states_.resize(columns_.size());
  std::erase_if(order_, [&](const Order& each) { return each.field >= columns_.size(); });
  if (!chosen_) ReadChoice();
  ShowHeadings();
}

void ArrangedWindow::ForgetArrangement() {
  for (State& state : states_) state = {.width = state.width, .filter = {}, .parsed = {}};
  order_.clear();
  marked_.clear();
  ShowHeadings();
}

// Kept as "Call:1200,Banda:,...": the headings in their order, each with its width where the
// operator has drawn one.
void ArrangedWindow::EachKept(
    const std::function<void(std::string_view heading, std::string_view width)>& see) {
  const std::string kept = session_.GetSetting(Name(), kChoice, "");
  for (std::size_t at = 0; at < kept.size();) {
    const std::size_t end = std::min(kept.find(',', at), kept.size());
    const std::string_view part = std::string_view(kept).substr(at, end - at);
    at = end + 1;
    const std::size_t colon = std::min(part.find(':'), part.size());
    see(part.substr(0, colon), part.substr(std::min(colon + 1, part.size())));
  }
}

std::vector<std::string> ArrangedWindow::KeptHeadings() {
  std::vector<std::string> headings;
  EachKept([&](std::string_view heading, std::string_view) { headings.emplace_back(heading); });
  return headings;
}

void ArrangedWindow::ReadChoice() {
  shown_.clear();
  EachKept([&](std::string_view heading, std::string_view drawn) {
    const auto column = std::ranges::find(columns_, heading, &TableColumn::heading);
    const auto field = static_cast<std::size_t>(column - columns_.begin());
    if (column == columns_.end() || std::ranges::count(shown_, field) > 0) return;
    shown_.push_back(field);
    constexpr double kNarrowest = 150, kWidest = 30000;  // twips
    const double width = base::Val(drawn);
    if (width >= kNarrowest && width <= kWidest) {
      states_[field].width = base::Twips(static_cast<int>(width));
    }
  });
  if (!shown_.empty()) return;
  for (std::size_t field = 0; field < columns_.size(); ++field) {
    if (columns_[field].shown) shown_.push_back(field);
  }
}

void ArrangedWindow::KeepChoice() {
  std::vector<std::size_t> usual;
  for (std::size_t field = 0; field < columns_.size(); ++field) {
    if (columns_[field].shown) usual.push_back(field);
  }
  std::string kept;
  bool drawn = false;
  for (const std::size_t field : shown_) {
    const base::Twips width = states_[field].width;
    drawn = drawn || width != forms::kOwnSize;
    kept += fmt::format("{}{}:{}", kept.empty() ? "" : ",", columns_[field].heading,
                        width == forms::kOwnSize ? "" : std::to_string(width.Value()));
  }
  // Columns that nobody has chosen follow the program's own choice, whatever that comes to be.
  if (shown_ == usual && !drawn) kept.clear();
  if (kept != session_.GetSetting(Name(), kChoice, "")) {
    session_.SaveSetting(Name(), kChoice, kept);
  }
}

void ArrangedWindow::ShowHeadings() {
  std::vector<forms::DataGrid::ColumnOf> headings;
  for (const std::size_t field : shown_) {
    forms::DataGrid::ColumnOf& of = headings.emplace_back();
    of.heading = columns_[field].heading;
    of.field = field;
    of.width = states_[field].width;
    if (of.width == forms::kOwnSize) of.width = columns_[field].width;
    of.format = columns_[field].format;
    const auto at = std::find_if(order_.begin(), order_.end(),
                                 [&](const Order& each) { return each.field == field; });
    if (at == order_.end()) continue;
    of.heading += at->descending ? " ▼" : " ▲";
    if (order_.size() > 1) of.heading += std::to_string(at - order_.begin() + 1);
  }
  Table().SetColumnsOf(std::move(headings));
}

Arrangement ArrangedWindow::Wanted() {
  Arrangement wanted = TableWindow::Wanted();
  wanted.searched = shown_;
  for (std::size_t field = 0; field < states_.size(); ++field) {
    if (!states_[field].parsed.WantsNothing())
      wanted.filters.push_back({field, states_[field].parsed});
  }
  for (const Order& each : order_) {
    wanted.order.push_back({each.field, columns_[each.field].kind, each.descending});
  }
  return wanted;
}

void ArrangedWindow::RowsArranged(bool done) {
  waits_ = !done;
  MarksChanged();
}

// What the first click has put in ascending order the second one turns round, and the third leaves
// alone.
void ArrangedWindow::SortBy(int column, bool add) {
  const std::size_t field = FieldAt(column);
  const auto at = std::find_if(order_.begin(), order_.end(),
                               [&](const Order& each) { return each.field == field; });
  const bool known = at != order_.end();
  const bool wasDescending = known && at->descending;
  if (add) {
    if (!known) {
      order_.push_back({field, false});
    } else if (wasDescending) {
      order_.erase(at);
    } else {
      at->descending = true;
    }
  } else {
    const bool alone = known && order_.size() == 1;
    order_.clear();
    if (!alone || !wasDescending) order_.push_back({field, alone});
  }
  ShowHeadings();
  ShowRows(ChosenKey());
}

std::string ArrangedWindow::FilterText(int column) { return states_[FieldAt(column)].filter; }

void ArrangedWindow::SetFilterText(int column, std::string_view text) {
  SetFilter(FieldAt(column), text);
}

void ArrangedWindow::SetFilter(std::size_t field, std::string_view text) {
  if (std::count(shown_.begin(), shown_.end(), field) == 0) {
    shown_.push_back(field);
    ShowHeadings();
  }
  State& state = states_[field];
  if (state.filter == text) return;
  state.filter = text;
  state.parsed = ColumnFilter(text, columns_[field].kind);
  const std::string& fault = state.parsed.Fault();
  Say(fault.empty() ? "" : fmt::format("{}: non capisco. {}", columns_[field].heading, fault));
  ShowRows(ChosenKey());
}

std::string ArrangedWindow::FilterHint(int column) {
  return std::string(ColumnFilter::Hint(columns_[FieldAt(column)].kind));
}

std::string ArrangedWindow::FilterFault(int column) {
  return states_[FieldAt(column)].parsed.Fault();
}

void ArrangedWindow::MoveColumn(int from, int to) {
  const std::size_t field = FieldAt(from);
  static_cast<void>(FieldAt(to));
  shown_.erase(shown_.begin() + from);
  shown_.insert(shown_.begin() + to, field);
  chosen_ = true;
  ShowHeadings();
}

void ArrangedWindow::SetColumnWidth(int column, base::Twips width) {
  states_[FieldAt(column)].width = width;
  chosen_ = true;
  ShowHeadings();
}

bool ArrangedWindow::IsMarked(std::int64_t row) {
  if (marked_.empty() || Rows() == nullptr || row < 1 || row > Rows()->RowCount()) return false;
  return std::binary_search(marked_.begin(), marked_.end(), Rows()->KeyAt(row - 1));
}

void ArrangedWindow::Mark(std::int64_t from, std::int64_t to, bool mark) {
  if (Rows() == nullptr) return;
  if (from > to) std::swap(from, to);
  from = std::max<std::int64_t>(from, 1);
  to = std::min(to, Rows()->RowCount());
  std::vector<std::int64_t> keys;
  for (std::int64_t row = from; row <= to; ++row) keys.push_back(Rows()->KeyAt(row - 1));
  std::sort(keys.begin(), keys.end());
  std::vector<std::int64_t> marked;
  if (mark) {
    std::set_union(marked_.begin(), marked_.end(), keys.begin(), keys.end(),
                   std::back_inserter(marked));
  } else {
    std::set_difference(marked_.begin(), marked_.end(), keys.begin(), keys.end(),
                        std::back_inserter(marked));
  }
  marked_ = std::move(marked);
  MarksChanged();
}

void ArrangedWindow::MarkAll() {
  if (Rows() == nullptr) return;
  Mark(1, Rows()->RowCount(), markedHere_ < Rows()->RowCount());
}

void ArrangedWindow::ForgetMarks() {
  marked_.clear();
  MarksChanged();
}

void ArrangedWindow::MarksChanged() {
  markedHere_ = 0;
  if (!marked_.empty()) {
    markedHere_ = std::ssize(KeysOf([](bool isMarked) { return isMarked; }));
  }
  ShowCounts();
  Table().ContentChanged();
}

template <class Wants>
std::vector<std::int64_t> ArrangedWindow::KeysOf(const Wants& wants) {
  std::vector<std::int64_t> keys;
  const std::int64_t count = Rows() == nullptr ? 0 : Rows()->RowCount();
  for (std::int64_t row = 0; row < count; ++row) {
    const std::int64_t key = Rows()->KeyAt(row);
    if (wants(std::binary_search(marked_.begin(), marked_.end(), key))) keys.push_back(key);
  }
  return keys;
}

std::vector<std::int64_t> ArrangedWindow::MarkedKeys() {
  if (markedHere_ > 0) return KeysOf([](bool isMarked) { return isMarked; });
  const auto chosen = ChosenKey();
  return chosen ? std::vector{*chosen} : std::vector<std::int64_t>();
}

std::vector<std::int64_t> ArrangedWindow::MarkedOrShownKeys() {
  return KeysOf([all = markedHere_ == 0](bool isMarked) { return all || isMarked; });
}

void ArrangedWindow::ShowCounts() {
  const std::int64_t shown = Rows()->RowCount(), all = Rows()->CountOfAll();
  std::string text =
      shown == all
          ? base::FormatNumber(static_cast<double>(all), "#,##0")
          : fmt::format("{} di {}", base::FormatNumber(static_cast<double>(shown), "#,##0"),
                        base::FormatNumber(static_cast<double>(all), "#,##0"));
  if (!marked_.empty()) text += fmt::format(", segnati {}", markedHere_);
  if (std::ssize(marked_) > markedHere_) {
    text += fmt::format(" (altri {} non mostrati)", std::ssize(marked_) - markedHere_);
  }
  if (waits_) text += " ...";
  Conteggi.SetText(text);
}

bool ArrangedWindow::IsArranged() const {
  return !order_.empty() || !Cerca.Text().empty() ||
         std::any_of(states_.begin(), states_.end(),
                     [](const State& state) { return !state.filter.empty(); });
}

void ArrangedWindow::ShowAll() {
  for (State& state : states_) state = {.width = state.width, .filter = {}, .parsed = {}};
  order_.clear();
  ShowHeadings();
  Say("");
  Cerca.HoldText("");
  ShowRows(ChosenKey());
}

void ArrangedWindow::ChooseColumns() {
  if (!session_.Windows.Knows("Colonne")) return;
  BeforeChoosing();
  auto& dialog = static_cast<Colonne&>(*session_.Windows.LoadSingle("Colonne"));
  std::vector<Colonne::Column> all;
  const auto add = [&](std::size_t field, bool shown) {
    all.push_back({columns_[field].heading, shown, field, columns_[field].shown});
  };
  for (const std::size_t field : shown_) add(field, true);
  for (std::size_t field = 0; field < columns_.size(); ++field) {
    if (std::count(shown_.begin(), shown_.end(), field) == 0) add(field, false);
  }
  dialog.Give(std::move(all));
  session_.Windows.ShowModal(dialog);
  const auto& chosen = dialog.Chosen();
  if (!chosen) return;
  chosen_ = true;
  shown_.clear();
  for (const Colonne::Column& column : *chosen) {
    if (column.shown) shown_.push_back(column.field);
  }
  // What is no longer seen may not decide what is.
  for (std::size_t field = 0; field < states_.size(); ++field) {
    if (std::count(shown_.begin(), shown_.end(), field) == 0) {
      states_[field] = State();
      std::erase_if(order_, [&](const Order& each) { return each.field == field; });
    }
  }
  ShowHeadings();
  ShowRows(ChosenKey());
}

}  // namespace brenvo::core
