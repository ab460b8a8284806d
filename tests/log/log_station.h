// A station with the log window, for the tests of what the log does beside its records.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "forms/list_field.h"
#include "log/log_form.h"
#include "tests/support/station.h"

namespace brenvo {

using Texts = std::vector<std::string>;

class LogStation : public StationTest {
 protected:
  LogStation() { Know<LogForm>("LogForm"); }

  LogForm& OpenLog() { return Open<LogForm>("LogForm"); }
  void Press(Window& window, std::string_view key) {
    Event([&] { window.FindCommand(key)->Press(); });
  }
  // Comes to a field, replaces its content key by key, and leaves it.
  void Type(TextField& field, std::string_view text) {
    Event([&] { field.Focus(); });
    for (const char c : text) {
      Event([&] { field.TypeKey(static_cast<unsigned char>(c)); });
    }
  }
  void Leave(Field& field) {
    Event([&] { field.Leave(); });
  }
  void Enter(TextField& field, std::string_view text) {
    Type(field, text);
    Leave(field);
  }
  void Pick(ListField& list, std::string_view entry) {
    Event([&] { list.SetText(entry); });
  }
  void Hover(Field& field) {
    Event([&] { field.Hover(); });
  }
  void Exec(std::string_view statement) { session.Db.Execute(statement); }
  // A stored contact of the 1/1/2001.
  void Store(std::string_view call, std::string_view band, std::string_view moreColumns = "",
             std::string_view moreValues = "") {
    static int minute = 0;
    minute = (minute + 1) % 1440;
    Exec("insert into Log (DataQso,Call,Banda" + std::string(moreColumns) +
         ") values ('01/01/2001 " + std::to_string(minute / 60) + ":" +
         (minute % 60 < 10 ? "0" : "") + std::to_string(minute % 60) + "','" + std::string(call) +
         "','" + std::string(band) + "'" + std::string(moreValues) + ")");
  }
  // Statements run and rows stepped by something.
  EngineCounters Counted(const std::function<void()>& work) {
    const EngineCounters before = session.Db.Counters();
    work();
    EngineCounters after = session.Db.Counters();
    after.statements -= before.statements;
    after.prepared -= before.prepared;
    after.rowsStepped -= before.rowsStepped;
    return after;
  }
};

}  // namespace brenvo
