// How far contacts have gone with each service.
#include <fmt/format.h>

#include "conferme/sending.h"
#include "conferme/taking.h"
#include "contact_state.h"
#include "core/quoted.h"

namespace brenvo::conferme {

std::vector<Stages> StagesOf(core::Session& session) {
  const auto count = [&](const std::string& select) {
    return session.Db.OpenSnapshot(select)->Field(std::size_t{0}).Integer();
  };
  // Contacts of the log that keep the field with one of these values.
  const auto with = [&](std::string_view field, std::string_view condition,
                        std::string_view further = "") {
    if (field.empty()) return std::int64_t{0};
    return count(
        fmt::format("select count(*) from LogAdif,Log where LogAdif.QsoNr=Log.QsoNr and "
                    "Campo={}{}{}",
                    core::Quoted(field), condition, further));
  };
  const std::int64_t contacts = count("select count(*) from Log");
  std::vector<Stages> stages;
  for (const ServiceFacts& facts : Services()) {
    Stages each;
    each.service = facts.service;
    const std::string received =
        fmt::format(" and Valore in ('{0}'{1})", facts.value, facts.value == "Y" ? ",'V'" : "");
    each.sent = with(facts.sent, " and Valore='Y'");
    each.refused = std::ssize(RefusalsOf(session, facts.service));
    each.toSend = contacts - with(facts.sent, " and Valore in ('Y','N','I')") - each.refused +
                  ChangedSince(session, facts.service);
    if (facts.service == Service::kLotw) {
      each.accepted = with(kAcceptedField, "");
      each.credited = with(kCreditField, " and Valore like '*LOTW*'");
    }
    each.confirmed = with(facts.received, received);
    const base::DateTime before = session.Now().Later(-kLateDays * 24 * 60 * 60).DatePart();
    const std::string unconfirmed =
        fmt::format(" and Log.QsoNr not in (select QsoNr from LogAdif where Campo={}{})",
                    core::Quoted(facts.received), received);
    // Where the day of sending is not known, the contact's own day is the nearest.
    each.late = with(facts.sentDay, fmt::format(" and Valore<'{}'", DayText(before)), unconfirmed) +
                with(facts.sent, " and Valore='Y'",
                     fmt::format("{} and DataQso<DateValue('{}') and Log.QsoNr not in (select "
                                 "QsoNr from LogAdif where Campo={})",
                                 unconfirmed, base::DateText(before), core::Quoted(facts.sentDay)));
    stages.push_back(each);
  }
  return stages;
}

}  // namespace brenvo::conferme
