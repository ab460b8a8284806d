#include "list_widgets.h"

#include <algorithm>

#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QListView>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QWheelEvent>

#include "text_widgets.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

// A list's entries, reported to the toolkit when they have changed.
class Entries : public QStringListModel {
 public:
  using QStringListModel::QStringListModel;

  // False when they were the same.
  bool Follow(const std::vector<std::string>& items) {
    if (items == items_) return false;
    items_ = items;
    columns_ = AreColumns();
    QStringList texts;
    for (const std::string& item : items) texts.append(ToQt(item));
    setStringList(texts);
    return true;
  }
  // Codes padded with blanks before a description only line up in a fixed font. The entries bring
  // it themselves: the list under a combo box looks at no other.
  QFont Font() const {
    const QFont usual = QApplication::font();
    if (!columns_) return usual;
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(usual.pointSizeF());
    return fixed;
  }
  QVariant data(const QModelIndex& index, int role) const override {
    return role == Qt::FontRole && columns_ ? QVariant(Font())
                                            : QStringListModel::data(index, role);
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    return QStringListModel::flags(index) & ~Qt::ItemIsEditable;
  }
  QStringList mimeTypes() const override { return {QStringLiteral("text/plain")}; }
  QMimeData* mimeData(const QModelIndexList& indexes) const override {
    auto* data = new QMimeData;
    if (!indexes.isEmpty()) data->setText(indexes.first().data().toString());
    return data;
  }

 private:
  bool AreColumns() const {
    return std::any_of(items_.begin(), items_.end(), [](const std::string& item) {
      const std::size_t at = item.find("  ", item.find_first_not_of(' '));
      return at != std::string::npos && at + 2 < item.size();
    });
  }

  std::vector<std::string> items_;
  bool columns_ = false;
};

// What is typed at a list, blanks left out: "2m" finds "  2 m". A pause begins anew, and a letter
// that leads no further goes on to the next entry that begins with it.
class TypedSearch {
 public:
  // The entry to take; -1 when none fits. A closed list seeks from where it stands, so that a
  // letter typed again and again goes round; one whose entries are seen from its first entry on.
  int Next(const QString& key, const std::vector<std::string>& items, int current,
           bool open = false) {
    if (Paused()) typed_.clear();
    since_.start();
    typed_ += key.toLower();
    if (const int found = Find(typed_, items, open ? 0 : current); found >= 0) return found;
    typed_ = key.toLower();
    return Find(typed_, items, current + 1);
  }
  // True while a blank would be part of what is typed.
  bool UnderWay() const { return !typed_.isEmpty() && !Paused(); }

 private:
  static constexpr int kPauseMilliseconds = 1000;

  bool Paused() const { return !since_.isValid() || since_.elapsed() > kPauseMilliseconds; }

  static int Find(const QString& typed, const std::vector<std::string>& items, int from) {
    const int count = static_cast<int>(items.size());
    for (int step = 0; step < count; ++step) {
      const int at = (std::max(from, 0) + step) % count;
      QString entry = ToQt(items[static_cast<std::size_t>(at)]).toLower();
      if (entry.remove(' ').startsWith(typed)) return at;
    }
    return -1;
  }

  QString typed_;
  QElapsedTimer since_;
};

// What a key types; nothing where it is a command.
QString LetterOf(const QKeyEvent& event) {
  const QString key = event.text();
  const bool letter =
      key.size() == 1 && key[0].isPrint() &&
      (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
  return letter ? key : QString();
}

class Combo : public QComboBox {
 public:
  Combo(forms::ListField& field, ViewContext& context, QWidget* parent)
      : QComboBox(parent), field_(field), context_(context), entries_(new Entries(this)) {
    setModel(entries_);
    // The wheel alone brings no keyboard here, see wheelEvent.
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(20);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    if (field.Style() == forms::ListStyle::kCombo) {
      setEditable(true);
      setInsertPolicy(QComboBox::NoInsert);
      edit_ = new TextEdit(field, context, this);
      setLineEdit(edit_);
      setCompleter(nullptr);
    }
    connect(this, &QComboBox::activated, this, [this](int index) { Activated(index); });
    view()->installEventFilter(this);
  }

  QLineEdit* Line() const { return edit_; }

  void Follow() {
    const QSignalBlocker quiet(this);
    const bool lineWasQuiet = edit_ != nullptr && edit_->blockSignals(true);
    entries_->Follow(field_.Items());
    if (currentIndex() != field_.ListIndex()) setCurrentIndex(field_.ListIndex());
    if (edit_ == nullptr) return;
    edit_->blockSignals(lineWasQuiet);
    edit_->Follow();
  }

  void showPopup() override {
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + scrollBar + 8);
    QComboBox::showPopup();
  }

 protected:
  // Typed at the entries that have dropped down: they are moved to, and Enter takes one.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched != view() || event->type() != QEvent::KeyPress || !context_.Alive()) {
      return QComboBox::eventFilter(watched, event);
    }
    const QString key = LetterOf(*static_cast<QKeyEvent*>(event));
    if (key.isEmpty() || (key[0].isSpace() && !search_.UnderWay())) return false;
    if (key[0].isSpace()) return true;
    const int found = search_.Next(key, field_.Items(), view()->currentIndex().row(), true);
    if (found >= 0) view()->setCurrentIndex(entries_->index(found));
    return true;
  }

  void keyPressEvent(QKeyEvent* event) override {
    const bool clears = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
    if (edit_ == nullptr && clears) {
      context_.Run([this] { field_.Pick(-1); });
      return;
    }
    const QString key = LetterOf(*event);
    if (edit_ == nullptr && !key.isEmpty() && !key[0].isSpace() && context_.Alive()) {
      const int found = search_.Next(key, field_.Items(), field_.ListIndex());
      if (found >= 0) context_.Run([this, found] { field_.Pick(found); });
      return;
    }
    QComboBox::keyPressEvent(event);
  }

  void wheelEvent(QWheelEvent* event) override {
    // Rolling through a window must not change what stands in it.
    hasFocus() ? QComboBox::wheelEvent(event) : event->ignore();
  }

 private:
  void Activated(int index) {
    if (!context_.Alive()) return;
    // The toolkit also activates an entry that was typed in full, which is no choice.
    const auto at = static_cast<std::size_t>(index);
    if (edit_ != nullptr && at < field_.Items().size() && field_.Items()[at] == field_.Text()) {
      Follow();
      return;
    }
    context_.Run([this, index] { field_.Pick(index); });
    if (!context_.Alive()) return;
    Follow();
    // What is typed next replaces the choice.
    if (edit_ != nullptr) edit_->selectAll();
  }

  forms::ListField& field_;
  ViewContext& context_;
  Entries* entries_;
  TextEdit* edit_ = nullptr;
  TypedSearch search_;
};

class OpenList : public QListView {
 public:
  OpenList(forms::ListField& field, ViewContext& context, QWidget* parent)
      : QListView(parent), field_(field), context_(context), entries_(new Entries(this)) {
    setModel(entries_);
    setUniformItemSizes(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(Multi() ? QAbstractItemView::MultiSelection
                             : QAbstractItemView::SingleSelection);
    setDragEnabled(!Multi());
    setDragDropMode(Multi() ? QAbstractItemView::NoDragDrop : QAbstractItemView::DragOnly);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QListView::clicked, this, [this](const QModelIndex& at) { Pick(at.row()); });
    connect(this, &QListView::doubleClicked, this,
            [this] { context_.Later(this, [this] { field_.DoubleClick(); }); });
    connect(this, &QWidget::customContextMenuRequested, this, [this] {
      context_.Later(this, [this] {
        if (field_.OnContextMenu) field_.OnContextMenu();
      });
    });
  }

  void Follow() {
    if (!context_.Alive()) return;
    if (entries_->Follow(field_.Items())) FitShortEntries();
    const QSignalBlocker quiet(selectionModel());
    following_ = true;
    if (Multi()) {
      QItemSelection marked;
      for (int row = 0; row < entries_->rowCount(); ++row) {
        if (field_.Selected(row)) marked.select(entries_->index(row), entries_->index(row));
      }
      selectionModel()->select(marked, QItemSelectionModel::ClearAndSelect);
    } else if (const QModelIndex at = entries_->index(field_.ListIndex()); at.isValid()) {
      selectionModel()->setCurrentIndex(at, QItemSelectionModel::ClearAndSelect);
      scrollTo(at);
    } else {
      selectionModel()->clear();
    }
    following_ = false;
    viewport()->update();
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (Multi() && event->key() == Qt::Key_Space) {
      if (currentIndex().isValid()) Pick(currentIndex().row());
      return;
    }
    // A list that came up beside a field goes before its window does.
    if (event->key() == Qt::Key_Escape && before_ != nullptr && field_.OnLeave) {
      before_->setFocus();
      return;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && currentIndex().isValid() && (field_.PicksOnEnter || field_.OnDoubleClick)) {
      Pick(currentIndex().row());
      if (field_.OnDoubleClick) context_.Later(this, [this] { field_.DoubleClick(); });
      return;
    }
    const int before = currentIndex().row();
    const QString key = LetterOf(*event);
    if (key.isEmpty() || (key[0].isSpace() && !search_.UnderWay())) {
      QListView::keyPressEvent(event);
    } else if (!key[0].isSpace()) {
      MoveTo(search_.Next(key, field_.Items(), before, true));
    }
    // Arrows and letters choose as they go.
    if (!Multi() && !field_.PicksOnEnter && currentIndex().isValid() &&
        currentIndex().row() != before) {
      Pick(currentIndex().row());
    }
  }

  // A list that comes up for one choice takes the keyboard, and gives it back when it goes.
  void showEvent(QShowEvent* event) override {
    QListView::showEvent(event);
    if (!field_.PicksOnEnter || event->spontaneous() || !window()->isVisible()) return;
    before_ = window()->focusWidget();
    setFocus();
  }
  void hideEvent(QHideEvent* event) override {
    if (field_.PicksOnEnter && before_ != nullptr && hasFocus()) before_->setFocus();
    before_ = nullptr;
    QListView::hideEvent(event);
  }

 private:
  // Codes and words are seen whole; long descriptions may be cut.
  void FitShortEntries() {
    const int widest = QFontMetrics(entries_->Font()).averageCharWidth() * kShortEntry;
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    setMinimumWidth(std::min(sizeHintForColumn(0), widest) + scrollBar + 2 * frameWidth());
  }

  static constexpr int kShortEntry = 22;  // characters

  void MoveTo(int row) {
    if (row < 0) return;
    selectionModel()->setCurrentIndex(
        entries_->index(row),
        Multi() ? QItemSelectionModel::NoUpdate : QItemSelectionModel::ClearAndSelect);
  }

  bool Multi() const { return field_.Style() == forms::ListStyle::kMulti; }
  void Pick(int row) {
    if (following_) return;
    context_.Run([this, row] { field_.Pick(row); });
    Follow();
  }

  forms::ListField& field_;
  ViewContext& context_;
  Entries* entries_;
  TypedSearch search_;
  QPointer<QWidget> before_;  // had the keyboard before the list came up
  bool following_ = false;
};

}  // namespace

QWidget* MakeListWidget(forms::ListField& field, ViewContext& context, QWidget* parent) {
  if (field.Style() == forms::ListStyle::kDropDown || field.Style() == forms::ListStyle::kCombo) {
    auto* combo = new Combo(field, context, parent);
    auto* binding = new FieldBinding(field, *combo, context);
    binding->WatchDoubleClicks();
    binding->OnShow = [combo] { combo->Follow(); };
    if (combo->Line() != nullptr) binding->Watch(*combo->Line());
    binding->Show();
    return combo;
  }
  auto* list = new OpenList(field, context, parent);
  auto* binding = new FieldBinding(field, *list, context);
  binding->Watch(*list->viewport());
  // Entries are added one by one: the list is drawn when all are there.
  auto* soon = new QObject(list);
  auto refresh = std::make_shared<Coalesced>(*soon, [list] { list->Follow(); });
  binding->OnShow = [refresh] { refresh->Ask(); };
  binding->Show();
  list->Follow();
  return list;
}

}  // namespace brenvo::ui
