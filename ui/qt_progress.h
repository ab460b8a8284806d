// A bar that shows how far long work has come.
#pragma once

#include <memory>
#include <optional>
#include <QElapsedTimer>
#include <QPointer>
#include <QProgressDialog>
#include <string>
#include <string_view>
#include <vector>

#include "platform/progress.h"
#include "ui/event_gate.h"
#include "ui/print_choice.h"

namespace brenvo::ui {

class QtProgress : public platform::Progress {
 public:
  // What has closed is painted away, and the pointer shows what it is to show. While it lives
  // devices wait: the work is one event, however long.
  QtProgress(EventGate& gate, std::string_view title, std::int64_t total);
  ~QtProgress() override;
  // Shows the bar once the work takes long; the operator is heard from then on.
  bool Advance(std::int64_t done) override;

 private:
  void ShowBar();

  EventGate::Hold hold_;
  std::string title_;
  std::int64_t total_;
  QElapsedTimer since_, heard_;
  std::unique_ptr<QProgressDialog> bar_;
  // The pointer over the bar's button is an arrow.
  std::optional<PlainPointer> pointer_;
  // Windows that paint again when the work is over: what they show is what is worked on.
  std::vector<QPointer<QWidget>> still_;
};

}  // namespace brenvo::ui
