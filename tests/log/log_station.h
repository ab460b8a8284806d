// A station with the log window, for the tests of what the log does beside its records.
#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <vector>

#include "forms/list_field.h"
#include "log/log_form.h"
#include "tests/support/station.h"

namespace brenvo::log {

using Texts = std::vector<std::string>;

class LogStation : public StationTest {
 protected:
  LogStation() { Know<LogForm>("LogForm"); }

  LogForm& OpenLog() { return Open<LogForm>("LogForm"); }
  void Leave(forms::Field& field) {
    Event([&] { field.Leave(); });
  }
  // Comes to a field, replaces its content key by key, and leaves it.
  void Enter(forms::TextField& field, std::string_view text) {
    Type(field, text);
    Leave(field);
  }
  void Pick(forms::ListField& list, std::string_view entry) {
    Event([&] { list.SetText(entry); });
  }
  // A stored contact of the 1/1/2001, a minute later than the one before.
  void Store(std::string_view call, std::string_view band, std::string_view moreColumns = "",
             std::string_view moreValues = "") {
    stored_ = (stored_ + 1) % 1440;
    Exec(fmt::format(
        "insert into Log (DataQso,Call,Banda{}) values ('01/01/2001 {}:{:02}','{}','{}'{})",
        moreColumns, stored_ / 60, stored_ % 60, call, band, moreValues));
  }
  // Statements run and rows stepped by something.
  engine::EngineCounters Counted(const std::function<void()>& work) {
    const engine::EngineCounters before = session.Db.Counters();
    work();
    engine::EngineCounters after = session.Db.Counters();
    after.statements -= before.statements;
    after.prepared -= before.prepared;
    after.rowsStepped -= before.rowsStepped;
    return after;
  }

 private:
  int stored_ = 0;
};

}  // namespace brenvo::log
