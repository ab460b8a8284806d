// Another program.
#pragma once

#include <QProcess>
#include <QTimer>
#include <string>

#include "platform/process.h"
#include "ui/event_gate.h"

namespace brenvo::ui {

class QtProcess : public platform::Process {
 public:
  explicit QtProcess(EventGate& gate);
  ~QtProcess() override;
  void Start(const platform::ProgramStart& start) override;
  bool IsRunning() const override;
  void Stop() override;

 private:
  void Take();
  void Ended(int status);

  EventGate& gate_;
  QProcess* process_ = nullptr;  // of the start in work; each has one of its own
  QTimer limit_;
  QObject guard_;
  std::string output_;
};

}  // namespace brenvo::ui
