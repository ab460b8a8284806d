// The eight printed reports: one procedure, one table.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frame/main_frame.h"

namespace brenvo::print {

struct ReportMember {
  forms::Command frame::MainFrame::*command;
  std::string_view word;         // the mode word for StatSel
  std::string_view extra;        // condition that the report adds; empty for none
  std::string_view insertOrder;  // the ending of the statement that fills SLog
  std::string_view key;          // column that makes two contacts one entity; empty: no thinning
  int keyLength = 0;             // characters of the column that count; 0 for all of it
};

const std::vector<ReportMember>& ReportMembers();

// Asks StatSel for contacts, stages them in SLog, keeps one for each entity, and prints. A
// cancelled selection changes nothing.
void PrintReport(core::Session& session, const ReportMember& member);

// "WHERE ..." and a further condition.
std::string AddCondition(std::string_view where, std::string_view condition);

}  // namespace brenvo::print
