// Works of the history taken back: the contacts stand again as each work has found them.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "core/log_contact.h"
#include "core/session.h"

namespace brenvo::history {

// A row of Storia.
struct PastWork {
  std::int64_t Lavoro = 0;
  base::DateTime Quando;
  std::string Titolo;
  std::int64_t Qso = 0;                    // contacts that it touched
  std::int64_t Riprende = 0, Ripreso = 0;  // the work that it takes back, and that took it back
};

// Nothing when there is none of that number.
std::optional<PastWork> FindWork(core::Session& session, std::int64_t work);
// The last ones, newest first.
std::vector<PastWork> LastWorks(core::Session& session, std::int64_t count);
// The last one, of those with a number below `before`, that takes nothing back and has not been
// taken back whole.
std::optional<PastWork> LastWork(core::Session& session,
                                 std::int64_t before = std::numeric_limits<std::int64_t>::max());

// A contact of Log that a work has touched: as it found and as it left it, nothing where there was
// none.
struct TouchedContact {
  std::int64_t qsoNr = 0;
  std::optional<core::LogContact> before, after;
};
// In the order of their numbers, those behind `from`; at most `count`.
std::vector<TouchedContact> ContactsOf(core::Session& session, std::int64_t work, std::int64_t from,
                                       std::size_t count);

struct TakenBack {
  std::int64_t taken = 0;  // rows, of the log and the contests
  std::int64_t left = 0;   // that other works have changed since, or in whose place others stand
  bool stopped = false;    // by the operator: nothing was taken back
};

// Takes a work back, or of it one contact of the log, as a work of its own that can be taken back
// in turn; all in one transaction. What has been changed by others since stays as it is.
// DatabaseError when it cannot be stored: nothing is taken back then.
TakenBack TakeBack(core::Session& session, const PastWork& work,
                   std::optional<std::int64_t> contact = std::nullopt);

// What came of it, in words for the operator.
std::string Told(const PastWork& work, const TakenBack& result);

// The last work is taken back; one of which nothing can be taken back is not in the way of those
// before it. Nothing when there is none.
struct LastTaken {
  PastWork work;
  TakenBack result;
};
std::optional<LastTaken> TakeBackLast(core::Session& session);

}  // namespace brenvo::history
