#include "ui/window_frame.h"

#include <algorithm>
#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QRadioButton>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include "forms/window_list.h"
#include "screen_place.h"
#include "ui/icons.h"
#include "ui/text.h"
#include "unfinished_input.h"
#include "views.h"
#include "widget_watch.h"
#include "window_builder.h"

namespace brenvo::ui {
namespace {

// How far a window opens from the corner of one that stands there already, pixels.
constexpr int kCascadeStep = 28;

forms::WindowState StateOf(const QWidget& widget) {
  if (widget.isMinimized()) return forms::WindowState::kMinimised;
  return widget.isMaximized() ? forms::WindowState::kMaximised : forms::WindowState::kNormal;
}

// The key that closes a window within a window on some desktops closes it on all.
void CloseWithCtrlF4(QMdiSubWindow& child) {
  const QKeySequence key(Qt::CTRL | Qt::Key_F4);
  for (QAction* action : child.systemMenu()->actions()) {
    QList<QKeySequence> keys = action->shortcuts();
    if (keys != QKeySequence::keyBindings(QKeySequence::Close) || keys.contains(key)) continue;
    keys += key;
    action->setShortcuts(keys);
  }
}

QRect ScreenFor(const QRect& place, const QScreen& usual) {
  QList<QRect> screens;
  for (const QScreen* screen : QGuiApplication::screens()) screens += screen->availableGeometry();
  return ScreenOf(place, screens, usual.availableGeometry());
}

}  // namespace

struct WindowFrame::Parts {
  explicit Parts(EventGate& gate) : context(gate) {}
  ViewContext context;
  std::unique_ptr<WindowBuilder> builder;
};

WindowFrame::WindowFrame(forms::Window& window, Kind kind, EventGate& gate, QMainWindow& main,
                         MapArea& area)
    : window_(window),
      kind_(kind),
      gate_(gate),
      main_(main),
      area_(area),
      parts_(std::make_shared<Parts>(gate)) {
  switch (kind_) {
    case Kind::kMain:
      outer_ = &main_;
      break;
    case Kind::kChild:
      outer_ = new QMdiSubWindow;
      break;
    case Kind::kDialog:
      outer_ = new QDialog(QApplication::activeWindow() != nullptr ? QApplication::activeWindow()
                                                                   : &main_);
  }
  outer_->setObjectName(ToQt(window_.Name()));
  outer_->setAttribute(Qt::WA_DeleteOnClose, false);
  parts_->builder = std::make_unique<WindowBuilder>(window_, parts_->context, *outer_);
  const View* view = FindView(window_.Name());
  const Piece layout = view != nullptr ? view->layout() : LayoutOf(window_);
  if (kind_ == Kind::kMain) {
    // The map is the main frame's inside; of its fields only menu, status bar, station
    // and clocks are seen.
    inside_ = parts_->builder->Build(Line({Item("Stazione"), Item("Orologi")}), main_.menuBar());
    if (auto* bar = inside_->findChild<QWidget*>(QStringLiteral("StatusBar1"))) {
      main_.statusBar()->addWidget(bar, 1);
    }
    for (const char* name : {"Stazione", "Orologi"}) {
      if (auto* label = inside_->findChild<QWidget*>(QLatin1String(name))) {
        main_.statusBar()->addPermanentWidget(label);
      }
    }
    inside_->deleteLater();
    inside_ = &area_;
    area_.OnResized = [this] { ReportSoon(); };
  } else {
    inside_ = parts_->builder->Build(layout);
    outer_->setWindowIcon(ProgramIcon());
    if (kind_ == Kind::kChild) {
      auto* child = static_cast<QMdiSubWindow*>(outer_.data());
      child->setWidget(inside_);
      CloseWithCtrlF4(*child);
      area_.addSubWindow(child);
    } else {
      auto* column = new QVBoxLayout(outer_);
      column->setContentsMargins(0, 0, 0, 0);
      column->addWidget(inside_);
    }
  }
  // The parts outlive every widget that may still call on them.
  connect(outer_, &QObject::destroyed, qApp, [parts = parts_] {});
  outer_->installEventFilter(this);
  WatchWidget(*outer_, {QEvent::FontChange, QEvent::ApplicationFontChange}, *this,
              // Behind the fields, which fit themselves in the same way.
              [this] { QTimer::singleShot(0, this, [this] { GrowWithLetters(); }); });
  if (kind_ == Kind::kChild) {
    WatchWidget(area_, {QEvent::Resize}, *this, [this] { BringIntoReach(); });
  }
  shown_ = window_.Shown.Subscribe([this] { FollowWindow(); });
  FollowWindow();
}

WindowFrame::~WindowFrame() {
  parts_->context.Die();
  if (waiting_ != nullptr) waiting_->quit();
  if (outer_ == nullptr) return;
  outer_->removeEventFilter(this);
  outer_->hide();
  if (kind_ == Kind::kMain) {
    area_.OnResized = nullptr;
    return;
  }
  if (kind_ == Kind::kChild) area_.removeSubWindow(outer_);
  outer_->deleteLater();
}

void WindowFrame::FollowWindow() {
  outer_->setWindowTitle(ToQt(window_.Caption()));
  if (placed_) Place();
}

QRect WindowFrame::Wanted() const {
  return QRect(window_.GetBounds().left.Pixels(), window_.GetBounds().top.Pixels(),
               window_.Width().Pixels(), window_.Height().Pixels());
}

QRect WindowFrame::Current() const {
  if (kind_ == Kind::kChild) return outer_->geometry();
  return QRect(outer_->pos(), outer_->size());
}

QSize WindowFrame::InnerSize() const {
  return kind_ == Kind::kMain ? area_.contentsRect().size() : inside_->size();
}

// The size at which nothing has to scroll, frame included.
QSize WindowFrame::Comfortable() const {
  if (kind_ == Kind::kMain) return outer_->minimumSizeHint();
  return inside_->sizeHint() + outer_->minimumSizeHint() - inside_->minimumSizeHint();
}

void WindowFrame::Place() {
  if (outer_->isMinimized() || outer_->isMaximized()) return;
  QRect place = Wanted();
  const bool first = !std::exchange(placed_, true);
  if (first) place.setSize(place.size().expandedTo(Comfortable()));
  if (kind_ == Kind::kMain) {
    const QRect screen = ScreenFor(place, *outer_->screen());
    const bool neverPlaced = place.topLeft() == QPoint(0, 0);
    place = Within(place, screen);
    outer_->resize(place.size());
    if (!first || !neverPlaced) outer_->move(place.topLeft());
  } else if (kind_ == Kind::kChild) {
    const QRect room(QPoint(0, 0), area_.viewport()->size());
    // No window opens right over another.
    const auto taken = [&](const QPoint& corner) {
      const auto all = area_.subWindowList();
      return std::any_of(all.begin(), all.end(), [&](const QMdiSubWindow* each) {
        return each != outer_ && each->isVisible() &&
               (each->pos() - corner).manhattanLength() < kCascadeStep / 2;
      });
    };
    while (first && taken(place.topLeft())) place.translate(kCascadeStep, kCascadeStep);
    outer_->setGeometry(Within(place, room));
  } else {
    const QRect screen = ScreenFor(place, *main_.screen());
    if (first && place.topLeft() == QPoint(0, 0)) {
      const QRect over(outer_->parentWidget()->pos(), outer_->parentWidget()->size());
      place.moveCenter(over.center());
    }
    place = Within(place, screen);
    outer_->resize(place.size());
    outer_->move(place.topLeft());
  }
  ReportSoon();
}

// What is open when the letters grow has room for them, as when it opens.
void WindowFrame::GrowWithLetters() {
  if (outer_ == nullptr || !outer_->isVisible() || kind_ == Kind::kMain) return;
  if (outer_->isMinimized() || outer_->isMaximized()) return;
  QRect place = Current();
  place.setSize(place.size().expandedTo(Comfortable()));
  if (kind_ == Kind::kChild) {
    outer_->setGeometry(Within(place, QRect(QPoint(0, 0), area_.viewport()->size())));
  } else {
    place = Within(place, ScreenFor(place, *main_.screen()));
    outer_->resize(place.size());
    outer_->move(place.topLeft());
  }
}

// The main frame may have come to a smaller screen.
void WindowFrame::BringIntoReach() {
  if (outer_ == nullptr || !outer_->isVisible()) return;
  if (outer_->isMinimized() || outer_->isMaximized()) return;
  const QRect room(QPoint(0, 0), area_.viewport()->size());
  if (!IsInReach(Current(), room)) outer_->setGeometry(Within(Current(), room));
}

void WindowFrame::Show() {
  const bool first = !placed_;
  if (first) Place();
  if (outer_->isMinimized()) outer_->setWindowState(outer_->windowState() & ~Qt::WindowMinimized);
  outer_->show();
  if (kind_ == Kind::kChild) {
    area_.setActiveSubWindow(static_cast<QMdiSubWindow*>(outer_.data()));
  } else {
    outer_->raise();
    outer_->activateWindow();
  }
  if (first) FocusFirst();
  ReportSoon();
}

void WindowFrame::ShowModal() {
  outer_->setWindowModality(Qt::ApplicationModal);
  QEventLoop loop;
  const QPointer<WindowFrame> self(this);
  waiting_ = &loop;
  Show();
  loop.exec();
  if (self) waiting_ = nullptr;
}

void WindowFrame::Hide() {
  outer_->hide();
  if (waiting_ != nullptr) waiting_->quit();
}

void WindowFrame::FocusOn(forms::Field& field) {
  if (QWidget* widget = parts_->builder->WidgetOf(field)) widget->setFocus(Qt::OtherFocusReason);
}

void WindowFrame::FocusFirst() {
  const View* const view = FindView(window_.Name());
  forms::Field* const begins =
      view != nullptr && !view->begins.empty() ? window_.FindField(view->begins) : nullptr;
  QWidget* first = begins != nullptr ? parts_->builder->WidgetOf(*begins) : nullptr;
  if (first == nullptr) first = parts_->builder->FirstField();
  if (first != nullptr) first->setFocus(Qt::OtherFocusReason);
}

void WindowFrame::ReportSoon() {
  if (reportAsked_) return;
  reportAsked_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        reportAsked_ = false;
        Report();
      },
      Qt::QueuedConnection);
}

void WindowFrame::Report() {
  if (outer_ == nullptr || !outer_->isVisible()) return;
  const forms::WindowState state = StateOf(*outer_);
  const QRect now = Current();
  forms::Bounds bounds = window_.GetBounds();
  // Whole pixels only: what stands at the same pixel has not moved.
  if (state == forms::WindowState::kNormal) {
    const auto follow = [](base::Twips& twips, int pixels) {
      if (twips.Pixels() != pixels) twips = base::Twips::FromPixels(pixels);
    };
    follow(bounds.left, now.x());
    follow(bounds.top, now.y());
    follow(bounds.width, now.width());
    follow(bounds.height, now.height());
  }
  const QSize inner = InnerSize();
  gate_.Run([&] {
    if (bounds != window_.GetBounds() || state != window_.State()) window_.Moved(bounds, state);
    if (state != forms::WindowState::kMinimised) {
      window_.SetScale(base::Twips::FromPixels(inner.width()),
                       base::Twips::FromPixels(inner.height()));
    }
  });
}

bool WindowFrame::Key(QKeyEvent& event) {
  QWidget* const focus = QApplication::focusWidget();
  const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  if (enter) {
    const bool box =
        qobject_cast<QCheckBox*>(focus) != nullptr || qobject_cast<QRadioButton*>(focus) != nullptr;
    auto* const button = qobject_cast<QAbstractButton*>(focus);
    if (button != nullptr && !box) {
      button->click();
      return true;
    }
    if (window_.DefaultCommand != nullptr) {
      const QPointer<QLineEdit> line = qobject_cast<QLineEdit*>(focus);
      parts_->context.Run([this] { window_.DefaultCommand->Press(); });
      // The next call is typed over the one that has its answer.
      if (line && line->hasFocus()) line->selectAll();
      return true;
    }
    // The blank ticks a box; Enter goes on from it as from a field.
    if (box) {
      QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
      QCoreApplication::sendEvent(focus, &tab);
      return true;
    }
  }
  // From what is typed down into the one list that it seeks in.
  if (event.key() == Qt::Key_Down && qobject_cast<QLineEdit*>(focus) != nullptr) {
    const auto lists = outer_->findChildren<QListView*>();
    if (kind_ == Kind::kDialog && lists.size() == 1 && lists.front()->isVisible()) {
      lists.front()->setFocus();
      QCoreApplication::sendEvent(lists.front(), &event);
      return true;
    }
  }
  if (event.key() == Qt::Key_Escape) {
    if (window_.CancelCommand != nullptr) {
      parts_->context.Run([this] { window_.CancelCommand->Press(); });
    } else if (kind_ == Kind::kDialog) {
      // As its frame's button.
      outer_->close();
    }
    return true;
  }
  // The toolkit would close a dialog on its own.
  return enter && kind_ == Kind::kDialog;
}

// The toolkit hides a child for a moment while it changes between full and normal size, which it
// also does to one in the full size that goes behind another: the keyboard would go on to the next
// field. For the field it is a look into another window.
void WindowFrame::KeepFocus() {
  QWidget* const focus = QApplication::focusWidget();
  if (kind_ != Kind::kChild || focus == nullptr || !outer_->isAncestorOf(focus)) return;
  kept_ = focus;
  area_.setFocus(Qt::ActiveWindowFocusReason);
}

void WindowFrame::GiveFocusBack() {
  const QPointer<QWidget> kept = std::exchange(kept_, nullptr);
  if (kept && area_.hasFocus()) kept->setFocus(Qt::ActiveWindowFocusReason);
}

bool WindowFrame::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::Close:
      event->ignore();
      FinishInput();
      gate_.Later(this, [this] { window_.Close(); });
      return true;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
      ReportSoon();
      break;
    case QEvent::Hide:
      KeepFocus();
      break;
    case QEvent::Show:
      GiveFocusBack();
      break;
    case QEvent::KeyPress:
      if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_F1 && OnHelp) {
        OnHelp();
        return true;
      }
      if (kind_ != Kind::kMain) return Key(*static_cast<QKeyEvent*>(event));
      break;
    default:
      break;
  }
  return false;
}

}  // namespace brenvo::ui
