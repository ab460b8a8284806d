#include "ui/print_choice.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QPushButton>
#include <QStandardPaths>

#include "platform/device_error.h"
#include "print_preview.h"

namespace brenvo::ui {
namespace {

const QString kTitle = QStringLiteral("Stampa");

void ShowPreview(PageSpool& pages, const QPageLayout& paper) {
  const PlainPointer pointer;
  PrintPreview(pages, paper, ChoosePrinter, ChoosePdf, QApplication::activeWindow()).exec();
}

}  // namespace

std::unique_ptr<PageTarget> ChooseTarget(bool landscape) {
  const PlainPointer pointer;
  QMessageBox box(QMessageBox::NoIcon, kTitle, QStringLiteral("Dove va la stampa?"),
                  QMessageBox::NoButton, QApplication::activeWindow());
  box.setObjectName(QStringLiteral("PrintChoice"));
  const QPushButton* printer =
      box.addButton(QStringLiteral("&Stampante..."), QMessageBox::AcceptRole);
  QPushButton* preview = box.addButton(QStringLiteral("&Anteprima"), QMessageBox::AcceptRole);
  const QPushButton* pdf = box.addButton(QStringLiteral("File &PDF..."), QMessageBox::AcceptRole);
  QPushButton* cancel = box.addButton(QStringLiteral("A&nnulla"), QMessageBox::RejectRole);
  // Enter by habit spends no paper.
  box.setDefaultButton(preview);
  box.setEscapeButton(cancel);
  box.exec();
  if (box.clickedButton() == printer) return ChoosePrinter(landscape);
  if (box.clickedButton() == pdf) return ChoosePdf(landscape);
  if (box.clickedButton() == preview) {
    return std::make_unique<PreviewTarget>(NewPrinter(landscape)->pageLayout(), ShowPreview);
  }
  return nullptr;
}

std::unique_ptr<PageTarget> ChoosePrinter(bool landscape) {
  if (QPrinterInfo::availablePrinterNames().isEmpty()) {
    throw platform::DeviceError(
        "Nessuna stampante è installata su questo computer: si può scrivere un file PDF");
  }
  const PlainPointer pointer;
  auto printer = NewPrinter(landscape);
  QPrintDialog dialog(printer.get(), QApplication::activeWindow());
  dialog.setWindowTitle(kTitle);
  if (dialog.exec() != QDialog::Accepted) return nullptr;
  return std::make_unique<PaperTarget>(std::move(printer));
}

std::unique_ptr<PageTarget> ChoosePdf(bool landscape) {
  const PlainPointer pointer;
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  QString file = QFileDialog::getSaveFileName(QApplication::activeWindow(), kTitle,
                                              folder + QStringLiteral("/Brenvo.pdf"),
                                              QStringLiteral("File PDF (*.pdf)"));
  if (file.isEmpty()) return nullptr;
  if (!file.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive)) file += QStringLiteral(".pdf");
  return PaperTarget::Pdf(file, landscape);
}

}  // namespace brenvo::ui
