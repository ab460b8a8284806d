#include "grid_widget.h"

#include <algorithm>
#include <memory>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <set>

#include "grid_model.h"
#include "table_header.h"
#include "ui/text.h"
#include "widget_watch.h"

namespace brenvo::ui {
namespace {

// The height of letters, in pixels, that given widths are meant for.
constexpr int kUsualLetters = 16;
constexpr int kLargeLetters = 19;
constexpr int kCellMargins = 16;
constexpr int kWidestGrid = 720;  // that a window is widened for
// Beyond this many rows all are alike: asking each for its height would take longer than a look.
constexpr int kMostRowsOfOwnHeight = 20000;
// Rows that a column is measured by.
constexpr int kMeasuredRows = 60;
constexpr int kNarrowest = 48, kWidestMeasured = 320;
// A column of short texts, a code or a number, is never given too little room for them.
constexpr int kWidestShort = 96;
// By a seventh.
constexpr int kBoldIsWider = 7;

class Table : public QTableView {
 public:
  Table(forms::Grid& grid, ViewContext& context, QWidget* parent)
      : QTableView(parent),
        grid_(grid),
        context_(context),
        model_(new GridModel(grid, context, this)) {
    setModel(model_);
    if (forms::GridArranger* const arranger = grid.Arranger()) {
      arranged_ = new TableHeader(*arranger, context, this);
      setHorizontalHeader(arranged_);
      connect(arranged_, &TableHeader::Left, this, [this] { setFocus(); });
      connect(horizontalScrollBar(), &QScrollBar::valueChanged, arranged_,
              [this] { arranged_->Refresh(); });
    }
    setSelectionMode(QAbstractItemView::SingleSelection);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setTabKeyNavigation(false);
    setContextMenuPolicy(Qt::CustomContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    const auto fitRows = [this] {
      verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    };
    fitRows();
    FollowLetters(*this, [this, fitRows] {
      fitRows();
      told_.clear();
      Refresh();
    });
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(16);
    connect(this, &QTableView::clicked, this, [this](const QModelIndex& at) {
      Run(at, [this](std::int64_t row, int column) { grid_.ClickCell(row, column); });
    });
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& at) {
      if (grid_.WritesCells()) return;
      Run(at, [this](std::int64_t row, int column) { grid_.DoubleClickCell(row, column); });
    });
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
      const bool add =
          arranged_ != nullptr && QApplication::keyboardModifiers() == Qt::ShiftModifier;
      context_.Later(this, [this, column, add] {
        if (add) {
          grid_.Arranger()->SortBy(column, true);
        } else {
          grid_.ClickCell(0, column);
        }
      });
    });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column, int, int width) {
              if (refreshing_) return;
              own_.insert(column);
              KeepWidth(column, width);
            });
    connect(this, &QWidget::customContextMenuRequested, this, [this] {
      context_.Later(this, [this] {
        if (grid_.OnContextMenu) grid_.OnContextMenu();
      });
    });
  }

  void Refresh() {
    if (!context_.Alive()) return;
    // Rows are counted, a million of them too, when somebody looks at them.
    stale_ = !isVisible();
    if (stale_) return;
    // An editor would lose what is typed in it; the refresh comes when it closes.
    if (state() == EditingState) return;
    refreshing_ = true;
    setEditTriggers(grid_.WritesCells()
                        ? QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                              QAbstractItemView::AnyKeyPressed
                        : QAbstractItemView::NoEditTriggers);
    // Who writes in cells must see in which.
    setSelectionBehavior(grid_.WritesCells() ? QAbstractItemView::SelectItems
                                             : QAbstractItemView::SelectRows);
    model_->Refresh();
    SizeColumns();
    SizeRows();
    ShowCurrent();
    if (arranged_ != nullptr) arranged_->Refresh();
    refreshing_ = false;
  }

  void showEvent(QShowEvent* event) override {
    QTableView::showEvent(event);
    if (stale_) Refresh();
  }

  int RoomForColumns() const {
    if (fontMetrics().height() < kLargeLetters || !context_.Alive()) return 0;
    int all = verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    for (int column = 0; column < grid_.Columns(); ++column) {
      const base::Twips given = grid_.ColumnWidth(column);
      if (given == base::Twips(0)) continue;
      // The toolkit measures them once the grid is seen.
      int words = horizontalHeader()->fontMetrics().horizontalAdvance(ToQt(grid_.Cell(0, column)));
      for (std::int64_t row = 1; row < std::min<std::int64_t>(grid_.Rows(), kMeasuredRows); ++row) {
        words = std::max(words, fontMetrics().horizontalAdvance(ToQt(grid_.Cell(row, column))));
      }
      all += std::max(given > base::Twips(0) ? ColumnPixels(given) : kNarrowest,
                      std::min(words + kCellMargins, WidestShort()));
    }
    return std::min(all, kWidestGrid);
  }

  QSize sizeHint() const override { return {420, 260}; }
  QSize minimumSizeHint() const override { return {160, 96}; }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!context_.Alive()) return;
    const QModelIndex at = currentIndex();
    if (arranged_ != nullptr && MarksByKey(*event)) return;
    if (grid_.Editable && event->key() == Qt::Key_Delete && at.isValid()) {
      Run(at, [this](std::int64_t row, int) { grid_.RemoveRow(row); });
      return;
    }
    if (grid_.WritesCells() && event->key() == Qt::Key_Backspace && at.isValid()) {
      context_.Run([this] { grid_.TypeKey(forms::kBackspace); });
      return;
    }
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && at.isValid() &&
        state() != QAbstractItemView::EditingState) {
      if (grid_.WritesCells()) {
        edit(at, EditKeyPressed, event);
      } else {
        Run(at, [this](std::int64_t row, int column) { grid_.DoubleClickCell(row, column); });
      }
      return;
    }
    if (!grid_.WritesCells() && at.isValid() && AnswersKey(*event)) return;
    QTableView::keyPressEvent(event);
    // A row that the keyboard marks is chosen as by a click: commands work on what is marked.
    const QModelIndex now = currentIndex();
    const bool moved =
        now.row() != at.row() || (grid_.ChoosesCells && now.column() != at.column());
    if (!grid_.WritesCells() && grid_.OnClick && now.isValid() && moved) {
      Run(now, [this](std::int64_t row, int column) { grid_.ClickCell(row, column); });
    }
  }

  // A click with Ctrl marks a row or takes its mark away, one with Shift marks all rows from the
  // last one.
  void mousePressEvent(QMouseEvent* event) override {
    const QModelIndex at = indexAt(event->position().toPoint());
    const auto keys = event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    const bool marks = arranged_ != nullptr && at.isValid() && context_.Alive() &&
                       event->button() == Qt::LeftButton && keys;
    if (!marks) {
      QTableView::mousePressEvent(event);
      return;
    }
    const int from =
        (keys & Qt::ShiftModifier) && currentIndex().isValid() ? currentIndex().row() : at.row();
    setCurrentIndex(at);
    MarkRows(from, at.row(), (keys & Qt::ShiftModifier) || !IsMarked(at.row()));
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    // The click has been a mark.
    if (arranged_ != nullptr &&
        (event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier)) != 0) {
      return;
    }
    QTableView::mouseReleaseEvent(event);
  }

  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override {
    QTableView::closeEditor(editor, hint);
    Refresh();
  }

  // A key that the grid answers itself opens no editor; neither does a double click where the
  // grid has its own way of filling the cell.
  bool edit(const QModelIndex& at, EditTrigger trigger, QEvent* event) override {
    const bool asked = trigger != QAbstractItemView::AllEditTriggers && (trigger & editTriggers());
    if (!asked || !at.isValid() || !context_.Alive() || state() == EditingState) {
      return QTableView::edit(at, trigger, event);
    }
    char32_t key = forms::kEnter;
    if (event != nullptr && event->type() == QEvent::KeyPress && trigger == AnyKeyPressed) {
      const std::u32string typed = static_cast<QKeyEvent*>(event)->text().toStdU32String();
      if (typed.empty()) return false;
      key = typed.front();
    }
    bool answered = false;
    context_.Run([&] {
      grid_.SetCurrent(at.row() + 1, at.column());
      answered = grid_.TypeKey(key);
    });
    return answered || QTableView::edit(at, trigger, event);
  }

  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override {
    QTableView::currentChanged(current, previous);
    if (refreshing_ || !current.isValid() || !context_.Alive()) return;
    grid_.SetCurrent(current.row() + 1, current.column());
  }

 private:
  bool IsMarked(int row) const { return grid_.Arranger()->IsMarked(row + 1); }
  void MarkRows(int from, int to, bool mark) {
    context_.Run([&] { grid_.Arranger()->Mark(from + 1, to + 1, mark); });
  }

  // Space marks and goes on; an arrow with Shift marks the row that it leaves and the one that it
  // reaches; the arrow up on the first row goes to the filters.
  bool MarksByKey(QKeyEvent& event) {
    const QModelIndex at = currentIndex();
    const bool up = event.key() == Qt::Key_Up, down = event.key() == Qt::Key_Down;
    if (up && event.modifiers() == Qt::NoModifier && (!at.isValid() || at.row() == 0)) {
      arranged_->FocusFilter(std::max(at.column(), 0));
      return true;
    }
    if (!at.isValid()) return false;
    const bool space = event.key() == Qt::Key_Space && event.modifiers() == Qt::NoModifier;
    if (!space && !((up || down) && event.modifiers() == Qt::ShiftModifier)) return false;
    const int next = std::clamp(at.row() + (up ? -1 : 1), 0, model_->rowCount() - 1);
    MarkRows(at.row(), space ? at.row() : next, !space || !IsMarked(at.row()));
    setCurrentIndex(model_->index(next, at.column()));
    context_.Run([&] { grid_.ClickCell(next + 1, at.column()); });
    return true;
  }

  // In twips for letters of the usual height, so that it fits larger ones too.
  void KeepWidth(int column, int pixels) {
    if (arranged_ == nullptr) return;
    // The last one takes the room that is left.
    if (column == model_->columnCount() - 1 && horizontalHeader()->stretchLastSection()) return;
    const base::Twips width = base::Twips::FromPixels(qRound(pixels / Larger()));
    context_.Run([&] { grid_.Arranger()->SetColumnWidth(column, width); });
  }

  // The grid has a use of its own for the character.
  bool AnswersKey(const QKeyEvent& event) {
    const std::u32string typed = event.text().toStdU32String();
    if (typed.empty() || (event.modifiers() & ~Qt::ShiftModifier) != 0) return false;
    bool answered = false;
    context_.Run([&] { answered = grid_.TypeKey(typed.front()); });
    return answered;
  }

  // The toolkit ends its click before the event changes what was clicked.
  void Run(const QModelIndex& at, std::function<void(std::int64_t, int)> event) {
    context_.Later(this, [event = std::move(event), row = at.row() + 1, column = at.column()] {
      event(row, column);
    });
  }

  // A width is meant for letters of the usual height; larger ones need more.
  double Larger() const { return std::max(1.0, fontMetrics().height() / double(kUsualLetters)); }
  int ColumnPixels(base::Twips width) const { return qRound(width.Pixels() * Larger()); }
  int WidestShort() const { return qRound(kWidestShort * Larger()); }

  void SizeColumns() {
    std::vector<base::Twips> told;
    for (int column = 0; column < model_->columnCount(); ++column) {
      told.push_back(grid_.ColumnWidth(column));
    }
    // The first rows may be short, or empty: as long as there are few, those that come widen their
    // columns. The operator's own widths stand until the grid gives others.
    const bool anew = told != told_;
    const int rows = model_->rowCount();
    if (!anew && (rows == 0 || measuredRows_ > kMeasuredRows)) return;
    if (anew) own_.clear();
    const bool widen = !anew && measuredRows_ > 0;
    told_ = told;
    measuredRows_ = rows;
    horizontalHeader()->setResizeContentsPrecision(kMeasuredRows);
    int last = -1;
    for (int column = 0; column < model_->columnCount(); ++column) {
      const base::Twips given = told[static_cast<std::size_t>(column)];
      setColumnHidden(column, given == base::Twips(0));
      if (given == base::Twips(0)) continue;
      last = column;
      if (own_.contains(column)) continue;
      if (arranged_ != nullptr && given > base::Twips(0)) {  // as the operator has drawn it
        setColumnWidth(column, ColumnPixels(given));
        continue;
      }
      int heading = horizontalHeader()->sectionSizeHint(column);
      int content = sizeHintForColumn(column) + 6;
      if (arranged_ != nullptr) {  // the sign of an order, and the bold letters of a marked row
        const QString words =
            model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        if (!words.contains(QStringLiteral(" ▲")) && !words.contains(QStringLiteral(" ▼"))) {
          heading += fontMetrics().horizontalAdvance(QStringLiteral(" ▼2"));
        }
        content += content / kBoldIsWider;
      }
      const int wanted = given > base::Twips(0)
                             ? std::max(ColumnPixels(given), std::min(content, WidestShort()))
                             : std::clamp(content, kNarrowest, kWidestMeasured);
      if (const int width = std::max(heading, wanted); !widen || width > columnWidth(column)) {
        setColumnWidth(column, width);
      }
    }
    horizontalHeader()->setStretchLastSection(last >= 0 && told[static_cast<std::size_t>(last)] <
                                                               base::Twips(0));
  }

  void SizeRows() {
    const int rows = model_->rowCount();
    if (rows > kMostRowsOfOwnHeight) return;
    for (int row = 0; row < rows; ++row) {
      const base::Twips given = grid_.RowHeight(row + 1);
      const int height =
          given > base::Twips(0) ? given.Pixels() : verticalHeader()->defaultSectionSize();
      if (height != rowHeight(row)) setRowHeight(row, height);
    }
  }

  void ShowCurrent() {
    const auto row = static_cast<int>(std::min<std::int64_t>(grid_.Row() - 1, model_->rowCount()));
    const QModelIndex at = model_->index(row, std::max(grid_.Column(), 0));
    if (!at.isValid() || at == currentIndex()) return;
    setCurrentIndex(at);
  }

  forms::Grid& grid_;
  ViewContext& context_;
  GridModel* model_;
  TableHeader* arranged_ = nullptr;  // null where nobody arranges the grid
  std::vector<base::Twips> told_;
  int measuredRows_ = 0;
  std::set<int> own_;  // columns that the operator has drawn to a width of his own
  bool refreshing_ = false;
  bool stale_ = false;  // to be refreshed when it shows
};

}  // namespace

int RoomForColumns(const QWidget& grid) {
  const auto* table = dynamic_cast<const Table*>(&grid);
  return table == nullptr ? 0 : table->RoomForColumns();
}

QWidget* MakeGridWidget(forms::Grid& field, ViewContext& context, QWidget* parent) {
  auto* table = new Table(field, context, parent);
  auto* binding = new FieldBinding(field, *table, context);
  binding->Watch(*table->viewport());
  auto refresh = std::make_shared<Coalesced>(*table, [table] { table->Refresh(); });
  binding->OnShow = [refresh] { refresh->Ask(); };
  binding->Show();
  table->Refresh();
  return table;
}

}  // namespace brenvo::ui
