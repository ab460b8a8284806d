#include "print/qsl_update.h"

#include "core/session.h"

namespace brenvo {

void UpdateLogForQsl(Session& session) {
  if (!session.Messages().AskYesNo("Aggiornamento Log per Qsl", "Confermi l'operazione ?")) return;
  const BusyPointer busy(session.Host());
  session.Db.BeginTrans();
  try {
    session.Db.Execute("UPDATE Log SET QslInviata=True WHERE QslDaInviare");
    session.Db.Execute("UPDATE Log SET QslDaInviare=False WHERE QslDaInviare");
    session.Db.Execute("UPDATE Log SET QslInviata=True WHERE QslRicevuta and not QslInviata");
  } catch (...) {
    session.Db.Rollback();
    throw;
  }
  session.Db.CommitTrans();
}

}  // namespace brenvo
