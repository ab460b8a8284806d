#include "core/open_in_log.h"

#include <fmt/format.h>

#include "core/shared_windows.h"

namespace brenvo::core {

void OpenInLog(Session& session, std::int64_t qsoNr) {
  if (session.Opened.CurrentLogForm == nullptr) session.Windows.LoadSingle("LogForm");
  LogWindow* const log = session.Opened.CurrentLogForm;
  if (log == nullptr) return;
  session.Windows.Show(*log);
  session.Handed.QueryText = fmt::format("Select * from Log where QsoNr={}", qsoNr);
  // Another contact within the same second is another selection.
  log->ShowQueryText(fmt::format("{} {}", base::DateTimeText(session.Now()), qsoNr));
}

}  // namespace brenvo::core
