#include "window_builder.h"

#include <algorithm>
#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QTableView>

#include "field_binding.h"
#include "forms/field_visit.h"
#include "grid_widget.h"
#include "split_widget.h"
#include "ui/text.h"
#include "widget_watch.h"

namespace brenvo::ui {
namespace {

using Kind = Piece::Kind;
constexpr int kMargin = 10, kGap = 8, kLineGap = 7;
constexpr int kUsualCharacters = 8;  // where no layout says what the fields are for

void FitWidth(QWidget& widget, int stretch, int characters) {
  // Capitals are wider than the average; a frame and an arrow come on top.
  int width = widget.fontMetrics().horizontalAdvance('H') * characters + 18;
  if (qobject_cast<QComboBox*>(&widget) || qobject_cast<QDateEdit*>(&widget)) width += 20;
  width = std::max(width, qobject_cast<QDateEdit*>(&widget) ? widget.sizeHint().width() : 0);
  if (stretch > 0) {
    widget.setMinimumWidth(width);
  } else {
    widget.setFixedWidth(width);
  }
}

void SetWidth(QWidget& widget, const Piece& piece, int characters) {
  if (characters <= 0) return;
  const int stretch = piece.stretch;
  FitWidth(widget, stretch, characters);
  FollowLetters(widget, [&widget, stretch, characters] { FitWidth(widget, stretch, characters); });
}

// Holds the fields. Where the window is too small for them it scrolls, so that none is cut off or
// runs into the next: on a small screen, with large letters, or because the operator wants it so.
class Body : public QScrollArea {
 public:
  explicit Body(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
  }
  // What the fields need; a window opens no smaller where there is room.
  QSize sizeHint() const override {
    QSize needed = widget()->minimumSizeHint();
    for (const QTableView* grid : widget()->findChildren<QTableView*>()) {
      const int more = RoomForColumns(*grid) - grid->minimumSizeHint().width();
      needed.setWidth(std::max(needed.width(), widget()->minimumSizeHint().width() + more));
    }
    return needed + QSize(0, HigherPages());
  }
  // One of them shows at a time; the window has room for each.
  void AddPages(std::vector<QWidget*> pages) { pages_.push_back(std::move(pages)); }
  QSize minimumSizeHint() const override { return {kSmallestBody, kSmallestBody / 2}; }

 private:
  // By how much hidden pages are higher than the shown one.
  int HigherPages() const {
    int more = 0;
    for (const std::vector<QWidget*>& pages : pages_) {
      int shown = 0, highest = 0;
      for (const QWidget* page : pages) {
        const int height = page->minimumSizeHint().height();
        highest = std::max(highest, height);
        if (!page->isHidden()) shown = height;
      }
      more += highest - shown;
    }
    return more;
  }

  static constexpr int kSmallestBody = 120;
  std::vector<std::vector<QWidget*>> pages_;
};

}  // namespace

WindowBuilder::WindowBuilder(forms::Window& window, ViewContext& context, QWidget& owner)
    : window_(window), context_(context), owner_(owner), commands_(context, owner) {}

QWidget* WindowBuilder::Build(const Piece& layout, QMenuBar* menuBar) {
  auto* inside = new QWidget;
  auto* column = new QVBoxLayout(inside);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  if (!window_.MenuBar.empty()) {
    QMenuBar* bar = menuBar;
    if (bar == nullptr) {
      bar = new QMenuBar(inside);
      bar->setNativeMenuBar(false);
      column->setMenuBar(bar);
    }
    commands_.Fill(*bar, window_.MenuBar);
  }
  for (forms::Field* field : window_.Fields()) {
    if (auto* bar = forms::FieldAs<forms::ToolBar>(*field)) {
      column->addWidget(commands_.MakeToolBar(*bar, inside));
    }
  }
  auto* body = new Body(inside);
  auto* fields = new QWidget;
  auto* around = new QVBoxLayout(fields);
  around->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  if (QWidget* all = Make(layout, fields)) around->addWidget(all);
  body->setWidget(fields);
  for (forms::Field* field : window_.Fields()) {
    const auto* tabs = forms::FieldAs<forms::TabStrip>(*field);
    if (tabs == nullptr) continue;
    std::vector<QWidget*> pages;
    for (const forms::TabStrip::Page& page : tabs->Pages()) {
      QWidget* const panel = page.panel != nullptr ? WidgetOf(*page.panel) : nullptr;
      if (panel != nullptr) pages.push_back(panel);
    }
    body->AddPages(std::move(pages));
  }
  column->addWidget(body, 1);
  for (forms::Field* field : window_.Fields()) {
    if (auto* bar = forms::FieldAs<forms::StatusBar>(*field)) {
      column->addWidget(MakeFieldWidget(*bar, context_, inside, Look::kPlain));
    }
  }
  AddPopups();
  SetTabOrder();
  return inside;
}

QWidget* WindowBuilder::WidgetOf(forms::Field& field) const {
  const auto at = widgets_.find(&field);
  return at == widgets_.end() ? nullptr : at->second;
}

bool WindowBuilder::Exists(const Piece& piece) const {
  if (piece.kind == Kind::kField) {
    const forms::Field* field = window_.FindField(piece.name);
    return field != nullptr && !commands_.Shows(*field);
  }
  if (piece.kind == Kind::kText || piece.kind == Kind::kSpace) return true;
  return std::any_of(piece.pieces.begin(), piece.pieces.end(),
                     [&](const Piece& inner) { return Exists(inner); });
}

bool WindowBuilder::Grows(const Piece& piece) const {
  switch (piece.kind) {
    case Kind::kField: {
      forms::Field* field = window_.FindField(piece.name);
      return field != nullptr && (FillsRoom(*field) || piece.look == Look::kLines) &&
             piece.look != Look::kSmall;
    }
    case Kind::kSpace:
    case Kind::kSplit:
      return true;
    case Kind::kText:
      return false;
    default:
      // A space in a line stretches it sideways only.
      return std::any_of(piece.pieces.begin(), piece.pieces.end(), [&](const Piece& inner) {
        return inner.kind != Kind::kSpace ? Grows(inner) : piece.kind == Kind::kColumn;
      });
  }
}

QWidget* WindowBuilder::Make(const Piece& piece, QWidget* parent) {
  if (!Exists(piece)) return nullptr;
  switch (piece.kind) {
    case Kind::kField:
      return MakeField(piece, parent);
    case Kind::kText:
      return new QLabel(ToQt(piece.words), parent);
    case Kind::kSpace:
      return nullptr;
    case Kind::kLine:
      return MakeRow(piece, parent, false);
    case Kind::kColumn:
      return MakeRow(piece, parent, true);
    case Kind::kForm:
      return MakeForm(piece, parent);
    case Kind::kFrame:
      return MakeFrame(piece, parent);
    case Kind::kEither:
      return MakeEither(piece, parent);
    case Kind::kSplit:
      return MakeSplit(piece, parent);
  }
  return nullptr;
}

QWidget* WindowBuilder::MakeField(const Piece& piece, QWidget* parent) {
  forms::Field& field = *window_.FindField(piece.name);
  QWidget* widget = MakeFieldWidget(field, context_, parent, piece.look);
  if (widget == nullptr) return nullptr;
  SetWidth(*widget, piece, Characters(piece));
  widgets_[&field] = widget;
  return widget;
}

int WindowBuilder::Characters(const Piece& piece) const {
  if (piece.kind != Kind::kField || piece.characters > 0) return piece.characters;
  const forms::Field* field = window_.FindField(piece.name);
  return field == nullptr ? 0 : field->WidthInCharacters();
}

std::string WindowBuilder::LabelOf(const Piece& piece) const {
  if (piece.kind != Kind::kField && piece.kind != Kind::kLine) return "";
  forms::Field* field = window_.FindField(piece.name);
  if (field == nullptr) return "";
  switch (piece.label) {
    case Piece::Label::kNone:
      return "";
    case Piece::Label::kWords:
      return piece.words;
    case Piece::Label::kUsual:
      if (piece.kind == Kind::kField && (ShowsOwnCaption(*field) || FillsRoom(*field))) return "";
      break;
    case Piece::Label::kCaption:
      break;
  }
  return field->Caption().empty() ? field->Name() : field->Caption();
}

QWidget* WindowBuilder::MakeLabelOf(const Piece& piece, QWidget& widget, QWidget* parent) {
  const std::string words = LabelOf(piece);
  if (words.empty()) return nullptr;
  forms::Field* field = piece.kind == Kind::kField ? window_.FindField(piece.name) : nullptr;
  auto* label = new QLabel(ToQt(words), parent);
  label->setBuddy(&widget);
  QSizePolicy room = label->sizePolicy();
  room.setRetainSizeWhenHidden(widget.sizePolicy().retainSizeWhenHidden());
  label->setSizePolicy(room);
  if (field != nullptr) {
    label->setVisible(field->Visible());
    if (auto* binding = widget.findChild<FieldBinding*>({}, Qt::FindDirectChildrenOnly)) {
      binding->AddCompanion(*label);
    }
  }
  return label;
}

QWidget* WindowBuilder::MakeRow(const Piece& piece, QWidget* parent, bool vertical) {
  auto* row = new QWidget(parent);
  auto* box = new QBoxLayout(vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, row);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(kGap);
  bool grown = false;
  for (const Piece& inner : piece.pieces) {
    const int stretch = vertical && Grows(inner) ? std::max(inner.stretch, 1) : inner.stretch;
    if (inner.kind == Kind::kSpace) {
      box->addStretch(1);
      grown = true;
      continue;
    }
    QWidget* widget = Make(inner, row);
    if (widget == nullptr) continue;
    grown = grown || stretch > 0 || (!vertical && Grows(inner));
    // A line that bears a field's caption has it before its first piece.
    const bool labelled =
        piece.kind == Kind::kLine && !piece.name.empty() && inner.name == piece.name;
    QWidget* label = labelled ? nullptr : MakeLabelOf(inner, *widget, row);
    if (label != nullptr) {
      if (vertical) label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
      box->addWidget(label);
    }
    box->addWidget(widget, stretch);
  }
  if (!grown) box->addStretch(1);
  return row;
}

QWidget* WindowBuilder::MakeForm(const Piece& piece, QWidget* parent) {
  auto* form = new QWidget(parent);
  auto* grid = new QGridLayout(form);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(kGap);
  grid->setVerticalSpacing(kLineGap);
  std::size_t widest = 1;
  for (const Piece& line : piece.pieces) {
    widest = std::max(widest, line.kind == Kind::kLine ? line.pieces.size() : 1);
  }
  const int columns = static_cast<int>(widest) * 2;
  std::vector<bool> wide(static_cast<std::size_t>(columns), false);
  int row = 0;
  for (const Piece& line : piece.pieces) {
    const bool single = line.kind != Kind::kLine || !line.name.empty();
    const std::vector<Piece> cells = single ? std::vector<Piece>{line} : line.pieces;
    int column = 0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const Piece& cell = cells[i];
      const int room = i + 1 == cells.size() ? columns - column : 2;
      QWidget* widget = Make(cell, form);
      if (widget == nullptr) {
        column += 2;
        continue;
      }
      QWidget* label = MakeLabelOf(cell, *widget, form);
      if (label != nullptr) grid->addWidget(label, row, column, Qt::AlignRight | Qt::AlignVCenter);
      const int first = label != nullptr ? column + 1 : column;
      const int span = label != nullptr ? room - 1 : room;
      const bool fixed = Characters(cell) > 0 && cell.stretch == 0;
      grid->addWidget(widget, row, first, 1, span,
                      fixed ? Qt::AlignLeft | Qt::AlignVCenter : Qt::Alignment());
      if (!fixed) wide[static_cast<std::size_t>(first + span - 1)] = true;
      if (Grows(cell)) grid->setRowStretch(row, 1);
      column += 2;
    }
    ++row;
  }
  bool anyWide = false;
  for (int column = 1; column < columns; column += 2) {
    if (!wide[static_cast<std::size_t>(column)]) continue;
    grid->setColumnStretch(column, 1);
    anyWide = true;
  }
  if (!anyWide) grid->setColumnStretch(columns, 1);
  return form;
}

QWidget* WindowBuilder::MakeFrame(const Piece& piece, QWidget* parent) {
  forms::Field* const panel = window_.FindField(piece.name);
  const QString title = ToQt(panel != nullptr ? panel->Caption() : piece.words).trimmed();
  QWidget* frame = title.isEmpty() ? new QWidget(parent) : new QGroupBox(title, parent);
  auto* box = new QVBoxLayout(frame);
  if (title.isEmpty()) {
    box->setContentsMargins(0, 0, 0, 0);
  } else {
    box->setContentsMargins(kMargin, kGap, kMargin, kMargin);
  }
  if (QWidget* inside = Make(piece.pieces.front(), frame)) box->addWidget(inside);
  if (panel != nullptr) {
    auto* area = forms::FieldAs<forms::Panel>(*panel);
    auto* binding = area != nullptr ? new PanelBinding(*area, *frame, context_)
                                    : new FieldBinding(*panel, *frame, context_);
    binding->Show();
    widgets_[panel] = frame;
  }
  return frame;
}

QWidget* WindowBuilder::MakeEither(const Piece& piece, QWidget* parent) {
  auto* both = new QWidget(parent);
  auto* box = new QVBoxLayout(both);
  box->setContentsMargins(0, 0, 0, 0);
  QWidget* shown = Make(piece.pieces[0], both);
  QWidget* otherwise = Make(piece.pieces[1], both);
  for (QWidget* each : {shown, otherwise}) {
    if (each != nullptr) box->addWidget(each);
  }
  forms::Field* panel = window_.FindField(piece.name);
  if (panel == nullptr || shown == nullptr) return both;
  // The panel is the first piece itself, so that its hint and state are its field's.
  auto* binding = new FieldBinding(*panel, *shown, context_);
  binding->OnShow = [this, panel, otherwise, both] {
    if (otherwise != nullptr) otherwise->setVisible(!panel->Visible());
    // What hides hands the keyboard on to whatever comes next, a key of the tool bar as well.
    const QWidget* const focus = QApplication::focusWidget();
    if (!owner_.isAncestorOf(focus) || both->isAncestorOf(focus)) return;
    if (QWidget* first = FirstField()) first->setFocus(Qt::OtherFocusReason);
  };
  binding->Show();
  widgets_[panel] = shown;
  return both;
}

QWidget* WindowBuilder::MakeSplit(const Piece& piece, QWidget* parent) {
  auto* split = new SplitWidget(parent);
  for (const Piece& inner : piece.pieces) {
    if (QWidget* widget = Make(inner, split)) split->Add(*widget);
  }
  return split;
}

// The menu under the right button comes behind the field's own event, which says what it is about.
void WindowBuilder::AddPopups() {
  for (const auto& [field, widget] : widgets_) {
    forms::Menu* menu = ContextMenuOf(*field);
    if (menu == nullptr) continue;
    QMenu* popup = commands_.MakeMenu(*menu);
    QObject::connect(widget, &QWidget::customContextMenuRequested, widget,
                     [context = &context_, widget = widget, popup] {
                       context->Later(widget, [popup] { popup->popup(QCursor::pos()); });
                     });
  }
}

// The keyboard goes from field to field in the order of their declaration.
void WindowBuilder::SetTabOrder() {
  QWidget* before = nullptr;
  for (forms::Field* field : window_.Fields()) {
    QWidget* widget = WidgetOf(*field);
    if (widget == nullptr || (widget->focusPolicy() & Qt::TabFocus) == 0) continue;
    if (before != nullptr) QWidget::setTabOrder(before, widget);
    before = widget;
  }
}

QWidget* WindowBuilder::FirstField() const {
  for (forms::Field* field : window_.Fields()) {
    // A text to be read is no place to begin: who opens a terminal wants to write.
    if (forms::FieldAs<forms::RichText>(*field) != nullptr) continue;
    QWidget* widget = WidgetOf(*field);
    if (widget != nullptr && (widget->focusPolicy() & Qt::TabFocus) != 0 && field->Enabled() &&
        widget->isVisible()) {
      return widget;
    }
  }
  return nullptr;
}

Piece LayoutOf(const forms::Window& window) {
  std::vector<Piece> lines, large, buttons, boxes;
  std::vector<Piece> line;
  const auto endLine = [&] {
    if (!line.empty()) lines.push_back(Line(std::exchange(line, {})));
  };
  for (forms::Field* field : window.Fields()) {
    const std::string& name = field->Name();
    switch (PlaceOf(*field)) {
      case Place::kBar:
      case Place::kAround:
        break;
      case Place::kLarge:
        large.push_back(Item(name));
        break;
      case Place::kButton:
        buttons.push_back(Item(name));
        break;
      case Place::kBox:
        boxes.push_back(Item(name));
        break;
      case Place::kLine:
        line.push_back(Wide(Item(name)));
        line.back().characters = kUsualCharacters;
        if (line.size() == 2) endLine();
    }
  }
  endLine();
  std::vector<Piece> all;
  if (!lines.empty()) all.push_back(Form(std::move(lines)));
  while (!boxes.empty()) {
    const auto take = std::min<std::size_t>(boxes.size(), 4);
    std::vector<Piece> some(boxes.begin(), boxes.begin() + static_cast<std::ptrdiff_t>(take));
    boxes.erase(boxes.begin(), boxes.begin() + static_cast<std::ptrdiff_t>(take));
    some.push_back(Space());
    all.push_back(Line(std::move(some)));
  }
  for (Piece& each : large) all.push_back(std::move(each));
  if (!buttons.empty()) {
    buttons.insert(buttons.begin(), Space());
    all.push_back(Line(std::move(buttons)));
  }
  return Column(std::move(all));
}

}  // namespace brenvo::ui
