// What services have told of contacts: table LogConferme, one row for a contact and a service. That
// a contact is confirmed, the day and the credits stand in LogAdif under the standard's own names,
// as any log file brings them; here stands what the report said beside them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/database.h"

namespace brenvo::core {

// Empty texts and zones 0 were not told.
struct Confirmation {
  std::string service;  // "LoTW"
  std::string record;   // the service's record, by a name that its next report gives it too
  std::string locator, state, iota, mode;  // of the partner
  int zoneCq = 0, zoneItu = 0;
  std::string inferred;  // what of it the service has only worked out: "CQ ITU"
  bool byHand = false;   // the operator has chosen the contact
  bool gaveBox = false;  // QslRicevuta stands because of it
  friend bool operator==(const Confirmation&, const Confirmation&) = default;
};

// Nothing where the service has told nothing of the contact.
std::optional<Confirmation> ConfirmationOf(engine::Database& database, std::int64_t qsoNr,
                                           std::string_view service);
// In place of the one of the same service; nothing takes it away. Whoever changes those of a
// contact that stands in the log keeps them in the history before (History::KeepConfirmation).
void StoreConfirmation(engine::Database& database, std::int64_t qsoNr, std::string_view service,
                       const std::optional<Confirmation>& confirmation);

// As a row of the table, for an appender.
std::vector<engine::Value> RowOfConfirmation(std::int64_t qsoNr, std::string_view service,
                                             const Confirmation& confirmation);

// The services that QslRicevuta of a contact stands because of, "LoTW, eQSL"; empty where a card has
// come, or nobody has given it.
std::string GiversOfBox(engine::Database& database, std::int64_t qsoNr);
// Whether QslRicevuta of a contact stands because of a service alone: no card has come. For many
// contacts, in the order of the numbers, each of which stands there once.
bool IsBoxOfService(engine::Database& database, std::int64_t qsoNr);
std::vector<bool> BoxesOfServices(engine::Database& database, std::span<const std::int64_t> keys);
// To be put behind "QslRicevuta" in a condition on Log, so that cards alone count: empty where no
// service has given a box.
std::string OnlyOfCards(engine::Database& database);

// As the history holds it, and back; nothing for a text that is none.
std::string TextOfConfirmation(const Confirmation& confirmation);
std::optional<Confirmation> ConfirmationOfText(std::string_view text);

// A row whose columns are those of kConfirmationColumns, counted from `first`.
inline constexpr std::string_view kConfirmationColumns =
    "Servizio,Record,Locator,Stato,Iota,Modo,ZonaCQ,ZonaITU,Dedotti,AMano,Spunta";
Confirmation ConfirmationOfRow(engine::Recordset& row, std::size_t first);

}  // namespace brenvo::core
