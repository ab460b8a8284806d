#include "print/qsl_update.h"

#include "core/session.h"
#include "core/transaction.h"

namespace brenvo {

void UpdateLogForQsl(Session& session) {
  if (!session.Messages().AskYesNo("Aggiornamento Log per Qsl", "Confermi l'operazione ?")) return;
  const BusyPointer busy(session.Host());
  Transaction transaction(session.Db);
  session.Db.Execute("UPDATE Log SET QslInviata=True WHERE QslDaInviare");
  session.Db.Execute("UPDATE Log SET QslDaInviare=False WHERE QslDaInviare");
  session.Db.Execute("UPDATE Log SET QslInviata=True WHERE QslRicevuta and not QslInviata");
  transaction.Commit();
}

}  // namespace brenvo
