// Contests by rules in the database: tables Gare, GareBande and GareQso, beside the rows of Contest
// and Contest Qso that the told screens show.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "core/typed_contest_qso.h"
#include "gara/count.h"

namespace brenvo::gara {

// One entry in one contest.
struct Entry {
  std::int64_t number = 0;
  std::string rules, name;    // the rules' file without its ending
  base::DateTime begin, end;  // UTC
  std::string call, locator, exchange, category, mail;
  std::int64_t goal = 0;  // points, 0 for none
  // The date under which its contacts stand: the contest's first day.
  base::DateTime Day() const { return begin.DatePart(); }
};

struct StoredQso {
  Contact contact;
  std::string note;  // as Contest Qso has it
  bool qsl = false;
  bool inLog = false;     // transferred
  bool isBeside = false;  // it has a row of GareQso
  Worth worth;            // as it was stored; duplicateOf is only there or not
  std::int64_t punti = 0;
};

// The newest first; without those that were emptied with all contests.
std::vector<Entry> ReadEntries(engine::Database& database);
// A new one; its number.
std::int64_t AddEntry(core::Session& session, const Entry& entry);
void ChangeEntry(core::Session& session, const Entry& entry);
// Why contacts of the entry cannot stand on that band, for the operator: another contest is there.
// Empty where they can; `number` is the entry's own, 0 for a new one.
std::string WhyNoBand(core::Session& session, std::int64_t number, base::DateTime day,
                      std::string_view band);
// The bands that have contacts or have had some.
std::vector<std::string> BandsOf(engine::Database& database, std::int64_t number);

// All contacts by time, then serial. One that another window has written is there too, as far as
// its columns tell.
std::vector<StoredQso> ReadQsos(core::Session& session, const Entry& entry);
// The highest serial ever given on that band; 0 for none.
std::int64_t LastSerial(engine::Database& database, const Entry& entry, std::string_view band);

// Rows that change with one contact: what the rules now give them.
struct ChangedWorth {
  std::string band;
  std::int64_t serial = 0;
  Worth worth;
};

// One contact and what goes with it, in one transaction. `put` is how contacts come into Contest
// Qso; `categoryOfHeader` and the station's profile fill the row of Contest that a band begins
// with.
void StoreNewQso(core::Session& session, const core::PutContestQso& put, const Entry& entry,
                 const StoredQso& qso, const std::vector<ChangedWorth>& others);
void ChangeQso(core::Session& session, const core::PutContestQso& put, const Entry& entry,
               std::string_view band, std::int64_t serial, const StoredQso& qso,
               const std::vector<ChangedWorth>& others);
void DeleteQso(core::Session& session, const Entry& entry, std::string_view band,
               std::int64_t serial, const std::vector<ChangedWorth>& others);
// What the rules give contacts that another window or a work taken back has changed.
void KeepWorths(core::Session& session, const Entry& entry,
                const std::vector<ChangedWorth>& changed);
// Many new ones as one work of that title.
void StoreQsos(core::Session& session, const core::PutContestQso& put, const Entry& entry,
               std::string_view title, const std::vector<StoredQso>& qsos);

// Contacts that are not there yet, into Log: mode, date, serials and exchange as they were. Gives
// how many went, and how many the log held already.
struct Transferred {
  std::int64_t fresh = 0, known = 0;
};
Transferred TransferToLog(core::Session& session, const Entry& entry, const Rule& rule,
                          const std::vector<StoredQso>& qsos);

// The band as the log's tables write it ("  2 m"), of one without blanks.
std::string BandInLog(core::Session& session, std::string_view band);

}  // namespace brenvo::gara
