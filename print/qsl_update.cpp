#include "print/qsl_update.h"

#include "core/session.h"
#include "core/transaction.h"

namespace brenvo {

void UpdateLogForQsl(Session& session) {
  if (!session.Messages().AskYesNo("Aggiornamento Log per Qsl", "Confermi l'operazione ?")) return;
  const BusyPointer busy(session.Host());
  Transaction transaction(session.Db);
  // A contact that only answers a card received has none to send: one pass does for both.
  session.Db.Execute(
      "UPDATE Log SET QslInviata=True,QslDaInviare=False WHERE QslDaInviare OR (QslRicevuta and "
      "not QslInviata)");
  transaction.Commit();
  session.Changes.AnnounceMany(ContactTable::kLog);
}

}  // namespace brenvo
