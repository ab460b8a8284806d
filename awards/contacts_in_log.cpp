#include "contacts_in_log.h"

#include "core/session.h"
#include "core/shared_windows.h"

namespace brenvo::awards {

void OpenLogIfNone(core::Session& session) {
  if (session.Opened.LogOpen) return;
  auto* log = dynamic_cast<core::LogWindow*>(session.Windows.LoadSingle("LogForm"));
  if (log == nullptr) return;
  // One that stands open behind a newer one, closed since, is the log again.
  session.Opened.LogOpen = true;
  session.Opened.CurrentLogForm = log;
  session.Windows.Show(*log);
}

void ShowContacts(core::Session& session, std::string_view select) {
  session.ShowInLog(select);
  if (session.Opened.CurrentLogForm != nullptr)
    session.Windows.Show(*session.Opened.CurrentLogForm);
}

}  // namespace brenvo::awards
