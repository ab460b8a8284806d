// A command that goes through all rows of a table and writes many of them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "core/session.h"
#include "core/transaction.h"
#include "engine/watched.h"

namespace brenvo::core {

// Shows how far the run is, and waits for the disk once every so many rows instead of at each.
// However the run ends, what was written until then stays.
class LongRun {
 public:
  // `total` rows are to be gone through. No transaction may be open.
  LongRun(Session& session, std::string_view title, std::int64_t total);
  ~LongRun();
  LongRun(const LongRun&) = delete;
  LongRun& operator=(const LongRun&) = delete;

  // Called before each row; false when the operator has asked to stop.
  [[nodiscard]] bool Next();

 private:
  void Commit();

  Session& session_;
  forms::BusyPointer busy_;
  std::unique_ptr<platform::Progress> progress_;
  std::optional<Transaction> transaction_;
  std::int64_t done_ = 0;
};

// Single statements that may go through a whole table. While it lives the pointer is busy, what
// stood in front is gone, and who waits sees that the work goes on. The operator can stop it:
// whatever works long is DatabaseError 3059 from then on.
class LongStatement {
 public:
  // No transaction may be open.
  LongStatement(Session& session, std::string_view title);
  LongStatement(const LongStatement&) = delete;
  LongStatement& operator=(const LongStatement&) = delete;

  bool Stopped() const { return stopped_; }

 private:
  forms::BusyPointer busy_;
  std::unique_ptr<platform::Progress> progress_;
  bool stopped_ = false;
  engine::Watched watched_;
};

// Runs statements that leave everything as it was when they are stopped: then the operator is told
// `stopped` under the title, and it gives false.
bool RunLongStatements(Session& session, std::string_view title, std::string_view stopped,
                       const std::function<void()>& statements);

// Lets `work` go through the rows of a LongRun, and announces that contacts of the log may have
// changed, however it ends.
void ChangeManyContacts(Session& session, std::string_view title, std::int64_t total,
                        const std::function<void(LongRun& run)>& work);

}  // namespace brenvo::core
