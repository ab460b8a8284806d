// The index of the session's log: made at the start, and kept right.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/contacts_changed.h"
#include "core/session.h"
#include "forms/signal.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "worked/worked_index.h"

namespace brenvo::worked {

// What was met beside the contacts while the log was read, by their numbers, rising. Both empty
// where the database has no table LogOrigine.
struct LogRead {
  std::vector<std::int64_t> withoutOrigin;   // contacts, as those that another program wrote
  std::vector<std::int64_t> withoutContact;  // rows of LogOrigine whose contacts are gone
};

// Lives as long as the main frame. A contact that the session's door announces is counted at once;
// many, or another program's changes, have the log read anew in the background, and until that is
// over the index answers as before.
class Keeper {
 public:
  // `tell` gets what the operator is to know: rules that cannot be understood, a log that cannot be
  // read.
  Keeper(core::Session& session, std::function<void(const std::string& text)> tell);
  ~Keeper();
  Keeper(const Keeper&) = delete;
  Keeper& operator=(const Keeper&) = delete;

  // Reads the rules, and has the log read a little later.
  void Start();
  // Nothing is read any more, and what was read is forgotten.
  void Stop();

  // Null until the log has been read once. Valid until the next event.
  const WorkedIndex* Index() const;
  // Waits until the index counts all that is stored by now; without one, when it cannot be made.
  void WaitUntilRead();

  // The log has been read; after Read, whoever shows answers asks again, and after each single
  // contact.
  forms::Signal<const LogRead&> Read;
  forms::Signal<> Renewed;

 private:
  struct Kept;
  struct Job;

  void Heard(const core::ContactsChanged& announced);
  void Count(const core::OneContact& change);
  bool Apply(const core::OneContact& change);
  void ReadAnew();
  void Begin();
  void LookWhetherRead();
  void TakeOver(Job& job);
  void LookForOthers();

  core::Session& session_;
  std::function<void(const std::string& text)> tell_;
  std::unique_ptr<platform::Timer> reading_, watching_;
  forms::Subscription contacts_, closing_, reopened_;
  std::shared_ptr<const Rules> rules_;
  std::unique_ptr<Kept> kept_;  // null until the log has been read once
  std::int64_t dataVersion_ = 0;

  std::shared_ptr<Job> job_;  // what is being read; null for nothing
  std::unique_ptr<platform::BackgroundWork> work_;
  std::vector<core::OneContact> during_;  // announced since it began
  bool due_ = false;                      // to be read again
};

}  // namespace brenvo::worked
