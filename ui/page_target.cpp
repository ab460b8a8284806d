#include "ui/page_target.h"

#include <algorithm>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPrinterInfo>

#include "platform/device_error.h"
#include "ui/text.h"

namespace brenvo::ui {

std::unique_ptr<QPrinter> NewPrinter(bool landscape) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  if (QPrinterInfo::defaultPrinter().isNull()) printer->setPageSize(QPageSize(QPageSize::A4));
  printer->setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
  printer->setDocName(QApplication::applicationDisplayName());
  return printer;
}

std::unique_ptr<PaperTarget> PaperTarget::Pdf(const QString& file, bool landscape) {
  auto printer = NewPrinter(landscape);
  printer->setOutputFormat(QPrinter::PdfFormat);
  printer->setOutputFileName(file);
  return std::make_unique<PaperTarget>(std::move(printer));
}

PaperTarget::PaperTarget(std::unique_ptr<QPrinter> printer) : printer_(std::move(printer)) {
  if (!painter_.begin(printer_.get())) Fail();
  page_ = std::make_unique<PagePainter>(painter_, printer_->resolution() / kMmPerInch);
}

PaperTarget::~PaperTarget() = default;

void PaperTarget::Fail() const {
  if (!IsFile()) {
    throw platform::DeviceError("La stampante non è disponibile o ha rifiutato la stampa");
  }
  throw platform::DeviceError(
      FromQt(QStringLiteral("Il file %1 non si può scrivere")
                 .arg(QDir::toNativeSeparators(printer_->outputFileName()))));
}

QSizeF PaperTarget::PageSize() const { return printer_->pageRect(QPrinter::Millimeter).size(); }

void PaperTarget::Draw(const PageOperation& operation) { page_->Draw(operation); }

void PaperTarget::NewPage() {
  if (!printer_->newPage() || printer_->printerState() == QPrinter::Error) Fail();
}

// A full disk is not reported while pages are drawn: the file then lacks its last line.
bool PaperTarget::FileIsWhole() const {
  QFile file(printer_->outputFileName());
  constexpr qint64 kTail = 16;
  return file.open(QIODevice::ReadOnly) && file.seek(std::max<qint64>(0, file.size() - kTail)) &&
         file.read(kTail).contains("%%EOF");
}

void PaperTarget::End() {
  const bool ended = painter_.end();
  if (!ended || printer_->printerState() == QPrinter::Error || (IsFile() && !FileIsWhole())) Fail();
}

void PaperTarget::Abandon() {
  if (painter_.isActive()) {
    printer_->abort();
    painter_.end();
  }
  // Never a device that was named as one.
  const QString file = printer_->outputFileName();
  if (IsFile() && QFileInfo(file).isFile()) QFile::remove(file);
}

}  // namespace brenvo::ui
