#include "contacts_in_log.h"

#include "core/session.h"
#include "core/shared_windows.h"

namespace brenvo {

void OpenLogIfNone(Session& session) {
  if (session.LogOpen) return;
  auto* log = dynamic_cast<LogWindow*>(session.Windows.LoadSingle("LogForm"));
  if (log == nullptr) return;
  // One that stands open behind a newer one, closed since, is the log again.
  session.LogOpen = true;
  session.CurrentLogForm = log;
  session.Windows.Show(*log);
}

void ShowContacts(Session& session, std::string_view select) {
  session.ShowInLog(select);
  if (session.CurrentLogForm != nullptr) session.Windows.Show(*session.CurrentLogForm);
}

}  // namespace brenvo
