// Contacts as they stand with all services, for those that a report is taken to.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/date.h"
#include "conferme/services.h"
#include "core/beside_writer.h"
#include "core/confirmations.h"
#include "core/session.h"

namespace brenvo::conferme {

struct ContactState {
  bool exists = false;
  base::DateTime when;
  std::string call, band, locator, country, province;
  double zoneCq = 0, zoneItu = 0, distance = 0;
  bool box = false;                                // QslRicevuta
  std::map<std::string, std::string> fields;       // of LogAdif, those that matter here
  std::map<std::string, core::Confirmation> told;  // by service
};

// When LoTW took a contact in, and what awards have been given for it.
inline constexpr std::string_view kAcceptedField = "APP_LOTW_RXQSO",
                                  kCreditField = "CREDIT_GRANTED";
// "20010203", as those fields write a day.
std::string DayText(base::DateTime day);

// As many of a record's places as there are, the first one counts for the log.
std::string_view FirstPlace(std::string_view places);
// The part that both locators have is the same.
bool AgreeOnPlace(std::string_view a, std::string_view b);
// Whether a service has only worked out what it tells of this: "CQ" of "CQ ITU".
bool IsInferred(std::string_view inferred, std::string_view what);

// Of each, in the order of the numbers, each of which stands there once.
std::vector<ContactState> StatesOf(core::Session& session, std::span<const std::int64_t> keys);

// What contacts learn, written a block of them at a time and kept in the history first. Within
// ChangeMany and a transaction.
class ContactWriter {
 public:
  explicit ContactWriter(core::Session& session)
      : session_(session), beside_(session, core::BesideWriter::Contacts::kToBeKept) {}
  // False when it says so already.
  bool SetField(std::int64_t key, ContactState& state, std::string_view field,
                std::string_view value);
  bool Store(std::int64_t key, ContactState& state, const core::Confirmation& told);
  // Of the contact's own row.
  void SetColumn(std::int64_t key, std::string_view column, const engine::Value& value);

  // All that was set goes into the tables; a contact that was written is not set again.
  void Write();

 private:
  core::Session& session_;
  core::BesideWriter beside_;
  std::map<std::int64_t, std::vector<std::pair<std::string, engine::Value>>> columns_;
  std::unique_ptr<engine::Table> log_;
};

}  // namespace brenvo::conferme
