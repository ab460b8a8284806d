#include "core/long_run.h"

#include <exception>

namespace brenvo::core {
namespace {

constexpr std::int64_t kRowsPerStep = 1000;  // of the progress that is shown
// The pages of the indexes are written once a commit, however many rows of it they hold.
constexpr std::int64_t kRowsPerCommit = 20000;

}  // namespace

LongRun::LongRun(Session& session, std::string_view title, std::int64_t total)
    : session_(session),
      busy_(session.Host()),
      progress_(session.Machine.ShowProgress(title, total)) {}

LongRun::~LongRun() {
  try {
    Commit();
  } catch (const engine::DatabaseError&) {
    // The failure that ended the run is the one to tell.
  }
}

bool LongRun::Next() {
  if (done_ % kRowsPerStep == 0 && !progress_->Advance(done_)) return false;
  if (done_ % kRowsPerCommit == 0) {
    Commit();
    transaction_.emplace(session_);
  }
  ++done_;
  return true;
}

void LongRun::Commit() {
  if (!transaction_) return;
  if (session_.Db.InTransaction()) transaction_->Commit();
  transaction_.reset();
}

LongStatement::LongStatement(Session& session, std::string_view title)
    : busy_(session.Host()),
      progress_(session.Machine.ShowProgress(title, 0)),
      watched_(session.Db, [this] {
        stopped_ = stopped_ || !progress_->Advance(0);
        return !stopped_;
      }) {}

bool RunLongStatements(Session& session, std::string_view title, std::string_view stopped,
                       const std::function<void()>& statements) {
  try {
    const LongStatement watched(session, title);
    statements();
    return true;
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kStopped) throw;
  }
  session.Messages().Show(platform::MessageIcon::kExclamation, title, stopped);
  return false;
}

void ChangeManyContacts(Session& session, std::string_view title, std::int64_t total,
                        const std::function<void(LongRun& run)>& work) {
  std::exception_ptr failure;
  session.Contacts.ChangeMany(title, {ContactTable::kLog}, [&] {
    try {
      LongRun run(session, title, total);
      work(run);
    } catch (const std::exception&) {
      failure = std::current_exception();  // what was written until then stays
    }
    return true;
  });
  if (failure) std::rethrow_exception(failure);
}

}  // namespace brenvo::core
