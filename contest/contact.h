// The contacts of a contest, as its table holds them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "engine/database.h"

namespace brenvo::contest {

// What the score is made from, of a row of Contest Qso. A Null text is empty, a Null number 0.
struct ScoredContact {
  std::int64_t ProgrDato = 0;
  std::string Call, Locator;
  double Qrb = 0;  // km
  double Punti = 0;
  std::optional<std::string> Note;  // nothing for Null
};

// The whole row.
struct Contact : ScoredContact {
  std::int64_t ProgrRicevuto = 0;
  std::int64_t Giorno = 0;  // day of the month
  base::DateTime Qtr;       // a time of day
  std::string QrkDato, QrkRicevuto, Modo;
};

// " WHERE ..." for the rows of one contest: a date as dd/mm/yyyy, and a band.
std::string OfContest(std::string_view date, std::string_view band);

// All of them, in the table's own order.
std::vector<Contact> ReadContacts(engine::Database& database, std::string_view date,
                                  std::string_view band);
std::vector<ScoredContact> ReadScoredContacts(engine::Database& database, std::string_view date,
                                              std::string_view band);

// The two markers that live inside a note.

// "Qso doppio (serial) " in front of the trimmed note.
std::string MarkDuplicate(std::string_view note, std::string_view serial);
// "[Exc=exchange]" in front of the note.
std::string MarkExchange(std::string_view note, std::string_view exchange);
bool IsDuplicate(const ScoredContact& contact);
// The exchange in a contact's note; nothing when there is no marker, empty when it holds nothing.
// Throws std::runtime_error when the note is Null.
std::optional<std::string> ExchangeOf(const ScoredContact& contact);

}  // namespace brenvo::contest
