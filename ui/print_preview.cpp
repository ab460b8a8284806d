#include "print_preview.h"

#include <algorithm>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/device_error.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

constexpr double kZoomStep = 1.25, kSmallestZoom = 0.25, kLargestZoom = 4;
constexpr int kAroundPage = 12;  // pixels

QSizeF PaperMm(const QPageLayout& paper) { return paper.fullRect(QPageLayout::Millimeter).size(); }

double ScreenDotsPerMm(const QWidget& widget) { return widget.logicalDpiX() / kMmPerInch; }

}  // namespace

PageSpool::PageSpool() {
  if (!file_.open()) throw platform::DeviceError("Non c'è posto su disco per preparare la stampa");
  stream_.setDevice(&file_);
  NewPage();
}

void PageSpool::NewPage() { starts_.push_back(end_); }

void PageSpool::Add(const PageOperation& operation) {
  file_.seek(end_);
  stream_ << operation;
  if (stream_.status() != QDataStream::Ok) {
    throw platform::DeviceError("Non c'è posto su disco per preparare la stampa");
  }
  end_ = file_.pos();
}

template <class Take>
void PageSpool::Read(int page, Take take) {
  const auto next = static_cast<std::size_t>(page) + 1;
  const qint64 end = next < starts_.size() ? starts_[next] : end_;
  file_.seek(starts_[next - 1]);
  while (file_.pos() < end) {
    PageOperation operation;
    stream_ >> operation;
    // A damaged spool shows what can be read of it.
    if (stream_.status() != QDataStream::Ok) return;
    take(operation);
  }
}

void PageSpool::Paint(int page, PagePainter& painter) {
  Read(page, [&](const PageOperation& operation) { painter.Draw(operation); });
}

void PageSpool::Replay(PageTarget& target) {
  for (int page = 0; page < Pages(); ++page) {
    if (page > 0) target.NewPage();
    Read(page, [&](const PageOperation& operation) { target.Draw(operation); });
  }
  target.End();
}

PreviewTarget::PreviewTarget(const QPageLayout& paper, Show show)
    : paper_(paper), show_(std::move(show)) {}

QSizeF PreviewTarget::PageSize() const { return paper_.paintRect(QPageLayout::Millimeter).size(); }

PrintPreview::PrintPreview(PageSpool& pages, const QPageLayout& paper, Opener openPrinter,
                           Opener openPdf, QWidget* parent)
    : QDialog(parent),
      pages_(pages),
      paper_(paper),
      openPrinter_(std::move(openPrinter)),
      openPdf_(std::move(openPdf)),
      view_(new QScrollArea),
      sheet_(new QLabel),
      place_(new QLabel) {
  setObjectName(QLatin1String(kPreviewName));
  setWindowTitle(QStringLiteral("Anteprima di stampa"));
  view_->setWidget(sheet_);
  view_->setAlignment(Qt::AlignCenter);
  view_->setBackgroundRole(QPalette::Mid);
  view_->installEventFilter(this);
  place_->setAlignment(Qt::AlignCenter);
  place_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("Pagina 0000 di 0000")));

  auto* keys = new QHBoxLayout;
  const auto add = [&](const char* name, const QString& caption, const QString& tip, auto action) {
    auto* button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    button->setAutoDefault(false);
    // A button of one sign is as wide as it is high.
    if (caption.size() <= 2) button->setFixedWidth(button->sizeHint().height());
    connect(button, &QPushButton::clicked, this, action);
    keys->addWidget(button);
    return button;
  };
  back_ = {add("First", QStringLiteral("|<"), QStringLiteral("Prima pagina (Home)"),
               [this] { Turn(0); }),
           add("Previous", QStringLiteral("<"), QStringLiteral("Pagina precedente (PgUp)"),
               [this] { Turn(page_ - 1); })};
  keys->addWidget(place_);
  forward_ = {add("Next", QStringLiteral(">"), QStringLiteral("Pagina seguente (PgDn)"),
                  [this] { Turn(page_ + 1); }),
              add("Last", QStringLiteral(">|"), QStringLiteral("Ultima pagina (Fine)"),
                  [this] { Turn(pages_.Pages() - 1); })};
  keys->addSpacing(kAroundPage);
  add("Smaller", QStringLiteral("-"), QStringLiteral("Rimpicciolisce (-)"),
      [this] { SetZoom((zoom_ > 0 ? zoom_ : WholePageZoom()) / kZoomStep); });
  add("Larger", QStringLiteral("+"), QStringLiteral("Ingrandisce (+)"),
      [this] { SetZoom((zoom_ > 0 ? zoom_ : WholePageZoom()) * kZoomStep); });
  add("Whole", QStringLiteral("Pagina &intera"), QStringLiteral("Mostra la pagina intera"),
      [this] { SetZoom(0); });
  keys->addStretch();
  add("Printer", QStringLiteral("&Stampante..."), QStringLiteral("Stampa su carta"),
      [this] { Send(openPrinter_); });
  add("Pdf", QStringLiteral("File &PDF..."), QStringLiteral("Scrive un file PDF"),
      [this] { Send(openPdf_); });
  add("Close", QStringLiteral("&Chiudi"), QStringLiteral("Chiude senza stampare (Esc)"),
      [this] { reject(); });

  auto* column = new QVBoxLayout(this);
  column->addLayout(keys);
  column->addWidget(view_, 1);
  const QSize room = screen()->availableGeometry().size();
  resize(std::min(900, room.width()), std::min(1000, room.height() * 9 / 10));
  Turn(0);
}

double PrintPreview::WholePageZoom() const {
  const QSizeF paper = PaperMm(paper_) * ScreenDotsPerMm(*this);
  const QSizeF room = view_->maximumViewportSize() - QSize(kAroundPage, kAroundPage);
  return std::clamp(std::min(room.width() / paper.width(), room.height() / paper.height()),
                    kSmallestZoom, kLargestZoom);
}

void PrintPreview::SetZoom(double zoom) {
  zoom_ = zoom > 0 ? std::clamp(zoom, kSmallestZoom, kLargestZoom) : 0;
  ShowPage();
}

void PrintPreview::Turn(int page) {
  page_ = std::clamp(page, 0, pages_.Pages() - 1);
  place_->setText(QStringLiteral("Pagina %1 di %2").arg(page_ + 1).arg(pages_.Pages()));
  for (QPushButton* button : back_) button->setEnabled(page_ > 0);
  for (QPushButton* button : forward_) button->setEnabled(page_ + 1 < pages_.Pages());
  ShowPage();
}

void PrintPreview::ShowPage() {
  const double dotsPerMm = ScreenDotsPerMm(*this) * (zoom_ > 0 ? zoom_ : WholePageZoom());
  const QSizeF paper = PaperMm(paper_) * dotsPerMm;
  QPixmap shown((paper * devicePixelRatio()).toSize());
  shown.setDevicePixelRatio(devicePixelRatio());
  // Paper is white on a dark desktop too.
  shown.fill(Qt::white);
  {
    QPainter painter(&shown);
    painter.translate(paper_.paintRect(QPageLayout::Millimeter).topLeft() * dotsPerMm);
    PagePainter page(painter, dotsPerMm);
    pages_.Paint(page_, page);
  }
  sheet_->setPixmap(shown);
  sheet_->resize(paper.toSize());
}

void PrintPreview::Send(const Opener& open) {
  const bool landscape = paper_.orientation() == QPageLayout::Landscape;
  std::unique_ptr<PageTarget> target;
  try {
    target = open(landscape);
    if (!target) return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    pages_.Replay(*target);
    QApplication::restoreOverrideCursor();
  } catch (const platform::DeviceError& failure) {
    // The pages stay on the screen for another try.
    if (target) {
      QApplication::restoreOverrideCursor();
      target->Abandon();
    }
    QMessageBox box(QMessageBox::Critical, windowTitle(), ToQt(failure.what()), QMessageBox::Ok,
                    this);
    box.exec();
    return;
  }
  accept();
}

void PrintPreview::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_PageUp:
      Turn(page_ - 1);
      return;
    case Qt::Key_PageDown:
      Turn(page_ + 1);
      return;
    case Qt::Key_Home:
      Turn(0);
      return;
    case Qt::Key_End:
      Turn(pages_.Pages() - 1);
      return;
    case Qt::Key_Plus:
      SetZoom((zoom_ > 0 ? zoom_ : WholePageZoom()) * kZoomStep);
      return;
    case Qt::Key_Minus:
      SetZoom((zoom_ > 0 ? zoom_ : WholePageZoom()) / kZoomStep);
      return;
    default:
      QDialog::keyPressEvent(event);
  }
}

bool PrintPreview::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize && zoom_ == 0) ShowPage();
  return false;
}

}  // namespace brenvo::ui
