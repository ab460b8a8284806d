// Contacts whose country, zones or continent are not what their call was on their day.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "core/log_contact.h"
#include "core/session.h"
#include "entities/resolver.h"

namespace brenvo::checks {

// What a contact says of its station's place, or should.
struct ContactPlace {
  std::string country;    // code of table Country; empty for none
  int cq = 0, itu = 0;    // 0: not known
  std::string continent;  // empty: not known
  friend bool operator==(const ContactPlace&, const ContactPlace&) = default;
};
// "GM 14/27 EU"; "nessun country" without one.
std::string PlaceText(const ContactPlace& place);

struct EntityFinding {
  std::int64_t qsoNr = 0;
  base::DateTime DataQso;
  std::string Call, Banda;
  // Of the contact, and by the rule; zones and continent that the rule does not know are those of
  // the contact, unless it is another country's.
  ContactPlace before, after;
  std::string why;      // with the days of the rule, for the operator
  std::string rule;     // the prefix or the call that fitted; empty without one
  std::string file;     // that says so
  bool chosen = false;  // the operator leaves his own

  bool OtherCountry() const { return before.country != after.country; }
  bool OtherZones() const { return before.cq != after.cq || before.itu != after.itu; }
  bool OtherContinent() const { return before.continent != after.continent; }
};

// The first so many are kept; all are counted.
inline constexpr std::size_t kMostEntityFindings = 100'000;

struct CheckedEntities {
  std::vector<EntityFinding> findings;  // by number
  std::int64_t contacts = 0, count = 0;
};

// By the session's rules. Reads the log once, and shows how far it is; nothing when the operator
// stops it. What a log file has told of the country counts before any rule of a call.
std::optional<CheckedEntities> CheckEntities(core::Session& session);
// The same of one contact as it stands.
std::optional<EntityFinding> CheckEntity(core::Session& session, const core::StoredContact& stored);

// The contacts of which other rules would say something else: before by the session's rules, after
// by the other ones. What the operator or a log file has told is left out.
std::optional<CheckedEntities> CompareRules(core::Session& session,
                                            const entities::Resolver& other);

// The contacts get what the rule says, as one work of that title; those that the operator leaves as
// they are do not. How many have been changed; nothing when it was stopped: then none has.
std::optional<std::int64_t> TakeOver(core::Session& session, std::string_view title,
                                     const std::vector<const EntityFinding*>& findings);

}  // namespace brenvo::checks
