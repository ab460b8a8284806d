// Where a document's pages go.
#pragma once

#include <memory>
#include <QPrinter>
#include <QSizeF>

#include "ui/page_operations.h"

namespace brenvo::ui {

// Takes one document, page by page. Every operation may throw DeviceError, with an Italian text.
class PageTarget {
 public:
  virtual ~PageTarget() = default;
  // Of the printable area, in millimetres.
  virtual QSizeF PageSize() const = 0;
  virtual void Draw(const PageOperation& operation) = 0;
  virtual void NewPage() = 0;
  // All pages are drawn.
  virtual void End() = 0;
  // The document is given up: nothing of it stays where it went, as far as that can be helped.
  virtual void Abandon() = 0;
};

// A printer as the program wants it before the operator is asked: A4 where the system names no
// printer of its own.
std::unique_ptr<QPrinter> NewPrinter(bool landscape);

// A printer, or the PDF file that it is set to.
class PaperTarget : public PageTarget {
 public:
  explicit PaperTarget(std::unique_ptr<QPrinter> printer);
  static std::unique_ptr<PaperTarget> Pdf(const QString& file, bool landscape);
  ~PaperTarget() override;

  QSizeF PageSize() const override;
  void Draw(const PageOperation& operation) override;
  void NewPage() override;
  void End() override;
  void Abandon() override;

 private:
  bool IsFile() const { return printer_->outputFormat() == QPrinter::PdfFormat; }
  [[noreturn]] void Fail() const;
  bool FileIsWhole() const;

  std::unique_ptr<QPrinter> printer_;
  QPainter painter_;
  std::unique_ptr<PagePainter> page_;
};

}  // namespace brenvo::ui
