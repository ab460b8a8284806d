// What all kinds of reports have in common: a record that is well or not, and its name.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "conferme/report.h"

namespace brenvo::conferme {

class RecordKeeper {
 public:
  explicit RecordKeeper(Report& report) : report_(report) {}
  // Checks what every record needs, gives it its name where it has none, and keeps it unless it
  // stood there already.
  void Take(ReportRecord record);
  void Fault(std::int64_t line, std::string_view what);

 private:
  Report& report_;
  std::unordered_set<std::string> ids_;
};

}  // namespace brenvo::conferme
