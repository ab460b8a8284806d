#include "ui/qt_window_host.h"

#include <cstdlib>
#include <QApplication>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QScreen>

#include "forms/window_list.h"
#include "frame/main_frame.h"
#include "letter_keys.h"
#include "ui/icons.h"
#include "ui/text.h"

namespace brenvo::ui {

QtWindowHost::QtWindowHost(EventGate& gate)
    : gate_(gate), main_(std::make_unique<QMainWindow>()), area_(new MapArea(main_.get())) {
  main_->setCentralWidget(area_);
  main_->setWindowIcon(ProgramIcon());
  new LetterKeys(*area_);
  // A window that closes gives way to the one before it, not to the oldest.
  area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
  QObject::connect(area_, &QMdiArea::subWindowActivated, main_.get(),
                   [this](QMdiSubWindow* child) { TellActivated(child); });
}

QtWindowHost::~QtWindowHost() = default;

WindowFrame& QtWindowHost::FrameOf(forms::Window& window, WindowFrame::Kind kind) {
  if (mainWindow_ == nullptr) mainWindow_ = &window;
  if (&window == mainWindow_) kind = WindowFrame::Kind::kMain;
  auto& frame = frames_[&window];
  // A child that is opened as a dialog, or the other way round, gets a new frame.
  if (!frame || frame->GetKind() != kind) {
    frame.reset();
    frame = std::make_unique<WindowFrame>(window, kind, gate_, *main_, *area_);
    frame->OnHelp = [this, &window] {
      if (OnHelp) OnHelp(window);
    };
    if (auto* station = dynamic_cast<frame::MainFrame*>(&window)) {
      area_->OnRectangle = [this, station](int x, int y, int width, int height) {
        gate_.Run([=] { station->MapRectangleDrawn(x, y, width, height); });
      };
      const auto welcome = [this, station] { area_->SetWelcome(ToQt(station->PrimoPasso.Text())); };
      welcome_ = station->PrimoPasso.Shown.Subscribe(welcome);
      welcome();
    }
  }
  return *frame;
}

void QtWindowHost::Show(forms::Window& window) {
  FrameOf(window, WindowFrame::Kind::kChild).Show();
}

void QtWindowHost::ShowModal(forms::Window& window) {
  FrameOf(window, WindowFrame::Kind::kDialog).ShowModal();
}

void QtWindowHost::Hide(forms::Window& window) {
  if (const auto at = frames_.find(&window); at != frames_.end()) at->second->Hide();
}

void QtWindowHost::Forget(forms::Window& window) {
  frames_.erase(&window);
  if (&window != mainWindow_) return;
  area_->OnRectangle = nullptr;
  mainWindow_ = nullptr;
  QApplication::quit();
}

QPixmap QtWindowHost::PictureOf(const forms::Window& window) const {
  const auto at = frames_.find(&window);
  return at == frames_.end() ? QPixmap() : at->second->Inside().grab();
}

QPixmap QtWindowHost::FramePictureOf(const forms::Window& window) const {
  const auto at = frames_.find(&window);
  return at == frames_.end() ? QPixmap() : at->second->Outer().grab();
}

void QtWindowHost::MoveFocus(forms::Field& field) {
  if (const auto at = frames_.find(&field.Owner()); at != frames_.end()) {
    at->second->FocusOn(field);
  }
}

void QtWindowHost::SetBusy(bool busy) {
  busy ? QApplication::setOverrideCursor(Qt::WaitCursor) : QApplication::restoreOverrideCursor();
}

void QtWindowHost::ProcessEvents() { QApplication::processEvents(); }

base::Twips QtWindowHost::ScreenWidth() {
  return base::Twips::FromPixels(main_->screen()->availableGeometry().width());
}

base::Twips QtWindowHost::ScreenHeight() {
  return base::Twips::FromPixels(main_->screen()->availableGeometry().height());
}

void QtWindowHost::ReportFailure(std::string_view text) {
  if (OnFailure) OnFailure();
  QMessageBox box(QMessageBox::Critical, QApplication::applicationDisplayName(), ToQt(text),
                  QMessageBox::NoButton, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
  box.exec();
}

void QtWindowHost::EndProgram() { std::_Exit(EXIT_FAILURE); }

void QtWindowHost::TellActivated(QMdiSubWindow* child) {
  if (child == nullptr) return;
  gate_.Later(child, [this, child] {
    // What has come to the front since then counts, not what stood there in between.
    if (area_->activeSubWindow() != child || gate_.Windows() == nullptr) return;
    for (forms::Window* window : gate_.Windows()->Loaded()) {
      const auto at = frames_.find(window);
      if (at == frames_.end() || &at->second->Outer() != child) continue;
      gate_.Windows()->Activated(*window);
      return;
    }
  });
}

}  // namespace brenvo::ui
