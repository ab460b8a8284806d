// Asks the operator where a document goes.
#pragma once

#include <memory>
#include <QApplication>
#include <QCursor>
#include <vector>

#include "ui/page_target.h"

namespace brenvo::ui {

// Each asks with dialogs of its own and gives null when the operator gives it up. DeviceError when
// what he chose cannot be had.

// Printer, preview or PDF file.
std::unique_ptr<PageTarget> ChooseTarget(bool landscape);
// The system's printer dialog.
std::unique_ptr<PageTarget> ChoosePrinter(bool landscape);
// A file to write.
std::unique_ptr<PageTarget> ChoosePdf(bool landscape);

// While one lives the pointer is an arrow, in the midst of long work too: a dialog stands.
class PlainPointer {
 public:
  PlainPointer() {
    while (const QCursor* busy = QApplication::overrideCursor()) {
      kept_.push_back(*busy);
      QApplication::restoreOverrideCursor();
    }
  }
  ~PlainPointer() {
    for (auto each = kept_.rbegin(); each != kept_.rend(); ++each) {
      QApplication::setOverrideCursor(*each);
    }
  }
  PlainPointer(const PlainPointer&) = delete;
  PlainPointer& operator=(const PlainPointer&) = delete;

 private:
  std::vector<QCursor> kept_;
};

}  // namespace brenvo::ui
