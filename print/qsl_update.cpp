#include "print/qsl_update.h"

#include <string>
#include <string_view>

#include "core/confirmations.h"
#include "core/history.h"
#include "core/long_run.h"
#include "core/session.h"
#include "core/transaction.h"

namespace brenvo::print {
namespace {

constexpr std::string_view kTitle = "Aggiornamento Log per Qsl";
std::string DueOnes(core::Session& session) {
  return " WHERE QslDaInviare OR (QslRicevuta and not QslInviata" + core::OnlyOfCards(session.Db) +
         ")";
}

}  // namespace

void UpdateLogForQsl(core::Session& session) {
  if (!session.Messages().AskYesNo(kTitle, "Confermi l'operazione ?")) return;
  const auto update = [&session] {
    core::Transaction transaction(session);
    // A contact that only answers a card received has none to send: one pass does for both.
    const std::string due = DueOnes(session);
    session.Contacts.Past().KeepWhere(due);
    session.Db.Execute("UPDATE Log SET QslInviata=True,QslDaInviare=False" + due);
    transaction.Commit();
  };
  session.Contacts.ChangeMany(kTitle, {core::ContactTable::kLog}, [&] {
    return core::RunLongStatements(session, kTitle,
                                   "Aggiornamento interrotto: il log è rimasto com'era.", update);
  });
}

}  // namespace brenvo::print
