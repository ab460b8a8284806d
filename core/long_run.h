// A command that goes through all rows of a table and writes many of them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "core/session.h"

namespace brenvo {

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

  Database& database_;
  BusyPointer busy_;
  std::unique_ptr<Progress> progress_;
  std::int64_t done_ = 0;
};

// Lets `work` go through the rows of such a run, and announces that contacts of the log may have
// changed, however it ends.
void ChangeManyContacts(Session& session, std::string_view title, std::int64_t total,
                        const std::function<void(LongRun& run)>& work);

}  // namespace brenvo
