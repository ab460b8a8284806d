// A bar that shows how far long work has come.
#pragma once

#include <QProgressDialog>
#include <string_view>

#include "platform/progress.h"
#include "ui/event_gate.h"
#include "ui/print_choice.h"

namespace brenvo {

class QtProgress : public Progress {
 public:
  // While it lives devices wait: the work is one event, however long.
  QtProgress(EventGate& gate, std::string_view title, std::int64_t total);
  ~QtProgress() override;
  bool Advance(std::int64_t done) override;

 private:
  EventGate::Hold hold_;
  // The pointer over the bar's button is an arrow.
  PlainPointer pointer_;
  QProgressDialog dialog_;
  std::int64_t total_;
};

}  // namespace brenvo
