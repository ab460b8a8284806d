#include "awards/contacts_in_log.h"

#include "core/session.h"
#include "core/shared_windows.h"

namespace brenvo {

void OpenLogIfNone(Session& session) {
  if (session.LogOpen) return;
  if (Window* log = session.Windows.LoadSingle("LogForm")) session.Windows.Show(*log);
}

void ShowContacts(Session& session, std::string_view select) {
  session.ShowInLog(select);
  if (session.CurrentLogForm != nullptr) session.Windows.Show(*session.CurrentLogForm);
}

}  // namespace brenvo
