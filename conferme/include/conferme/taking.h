// What a report says goes to the contacts that it means.
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "conferme/match_log.h"
#include "conferme/report.h"
#include "core/session.h"

namespace brenvo::conferme {

struct TakenCounts {
  std::int64_t matched = 0;  // records that mean a contact...
  std::int64_t changed = 0;  // ...of which so many contacts were told something new
  std::int64_t doubtful = 0, unmatched = 0, ignored = 0;
  std::int64_t filled = 0;     // columns of the log that were empty
  std::int64_t conflicts = 0;  // locators and zones that say otherwise: they are not taken
  std::int64_t credits = 0;    // credits without a contact
  friend bool operator==(const TakenCounts&, const TakenCounts&) = default;
};

// Until when a service has told, as the log keeps it (core/own_values.h).
struct Mark {
  std::string name, value;
};

// One work of the history, in one transaction: each contact gets its confirmation, and what it
// lacks is filled in from the record; what has no contact is kept to be asked about. Writes each
// change, conflict and doubt to `told`, in UTF-8. Taking the same again changes nothing. A mark is
// stored, and taken back, with it. Throws DatabaseError; then nothing is stored.
TakenCounts TakeReport(core::Session& session, std::string_view title, const Report& report,
                       const MatchedReport& matched, std::ostream& told, const Mark& mark = {});

// A record that has no contact, by its number in table ConfermeRecord.
struct OpenRecord {
  std::int64_t number = 0;
  std::string state;  // D doubtful, N no contact, I ignored, C credit without a contact
  std::string why;
  std::vector<std::int64_t> candidates;
  ReportRecord record;
};
std::vector<OpenRecord> OpenRecords(core::Session& session);
// The operator gives it the contact; the next report does not ask again. False when either is gone,
// or the contact has a record of that service already.
bool MatchByHand(core::Session& session, std::int64_t number, std::int64_t qsoNr);
// Nor does it of one that he ignores.
void Ignore(core::Session& session, const std::vector<std::int64_t>& numbers, bool ignore);

// The operator has chosen whether confirmations of that service tick QslRicevuta: they do so now,
// or what they have ticked is taken back, but where another service that ticks has confirmed too.
// Gives the number of contacts that have changed.
std::int64_t FollowBoxChoice(core::Session& session, Service service);
// Whether it does.
bool GivesBox(core::Session& session, Service service);

// How far contacts have gone with a service.
struct Stages {
  Service service = Service::kLotw;
  std::int64_t toSend = 0, sent = 0, accepted = 0, confirmed = 0, credited = 0;
  std::int64_t refused = 0;  // as they stand; not among those to send
  std::int64_t late = 0;     // sent, of more than 60 days ago, and not confirmed
};
inline constexpr std::int64_t kLateDays = 60;
std::vector<Stages> StagesOf(core::Session& session);

// A record as a text, and back; nothing for a text that is none.
std::string TextOfRecord(const ReportRecord& record);
std::optional<ReportRecord> RecordOfText(std::string_view text);

}  // namespace brenvo::conferme
