#include "table_header.h"

#include <QKeyEvent>

#include "ui/text.h"

namespace brenvo::ui {
namespace {

// A frame in every theme; where a filter is not understood, one that is seen without its colour
// too.
constexpr const char* kUsual = "QLineEdit { border: 1px solid palette(mid); }";
constexpr const char* kFault = "QLineEdit { border: 2px dashed #d03030; }";

}  // namespace

TableHeader::TableHeader(forms::GridArranger& arranger, ViewContext& context, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), arranger_(arranger), context_(context) {
  setSectionsMovable(true);
  setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  connect(this, &QHeaderView::sectionResized, this, [this] { Place(); });
  connect(this, &QHeaderView::sectionMoved, this, &TableHeader::SectionMoved);
}

// The columns stand as the table has them: it is told of the move, and shows it.
void TableHeader::SectionMoved(int, int from, int to) {
  if (moving_) return;
  moving_ = true;
  moveSection(to, from);
  moving_ = false;
  context_.Later(this, [this, from, to] { arranger_.MoveColumn(from, to); });
}

QLineEdit* TableHeader::MakeFilter(int column) {
  auto* filter = new QLineEdit(this);
  filter->setClearButtonEnabled(true);
  filter->installEventFilter(this);
  // Whoever changes it, the cross at its end too, but not the table that is followed.
  connect(filter, &QLineEdit::textChanged, this, [this, column](const QString& text) {
    if (following_) return;
    context_.Run([&] { arranger_.SetFilterText(column, FromQt(text)); });
    Refresh();
  });
  return filter;
}

void TableHeader::Refresh() {
  if (!context_.Alive()) return;
  const auto wanted = static_cast<std::size_t>(count());
  while (filters_.size() > wanted) {
    filters_.back()->hide();
    filters_.back()->deleteLater();
    filters_.pop_back();
  }
  while (filters_.size() < wanted)
    filters_.push_back(MakeFilter(static_cast<int>(filters_.size())));
  for (std::size_t i = 0; i < filters_.size(); ++i) {
    const auto column = static_cast<int>(i);
    QLineEdit& filter = *filters_[i];
    if (const QString text = ToQt(arranger_.FilterText(column)); filter.text() != text) {
      following_ = true;
      filter.setText(text);
      following_ = false;
    }
    const QString fault = ToQt(arranger_.FilterFault(column));
    filter.setToolTip(ToQt(arranger_.FilterHint(column)));
    filter.setAccessibleName(model()->headerData(column, Qt::Horizontal).toString());
    if (const QString style = fault.isEmpty() ? kUsual : kFault; filter.styleSheet() != style) {
      filter.setStyleSheet(style);
    }
  }
  Place();
}

void TableHeader::FocusFilter(int column) {
  if (column < 0 || column >= std::ssize(filters_)) return;
  QLineEdit* const filter = filters_[static_cast<std::size_t>(column)];
  filter->setFocus();
  filter->selectAll();
}

int TableHeader::FilterHeight() const { return fontMetrics().height() + 10; }

QSize TableHeader::sizeHint() const {
  const QSize headings = QHeaderView::sizeHint();
  return {headings.width(), headings.height() + FilterHeight()};
}

void TableHeader::updateGeometries() {
  setViewportMargins(0, 0, 0, FilterHeight());
  QHeaderView::updateGeometries();
  Place();
}

void TableHeader::Place() {
  const int top = height() - FilterHeight();
  for (std::size_t i = 0; i < filters_.size(); ++i) {
    const auto column = static_cast<int>(i);
    QLineEdit& filter = *filters_[i];
    filter.setGeometry(sectionViewportPosition(column), top, sectionSize(column), FilterHeight());
    filter.setVisible(!isSectionHidden(column));
  }
}

bool TableHeader::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    auto* filter = qobject_cast<QLineEdit*>(watched);
    switch (key->key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter:
      case Qt::Key_Down:
        emit Left();
        return true;
      case Qt::Key_Escape:
        if (filter == nullptr || filter->text().isEmpty()) break;
        filter->clear();
        return true;
      default:
        break;
    }
  }
  return QHeaderView::eventFilter(watched, event);
}

}  // namespace brenvo::ui
