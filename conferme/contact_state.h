// Contacts as they stand with all services, for those that a report is taken to.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "conferme/services.h"
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

// Of each, in the order of the numbers, each of which stands there once.
std::vector<ContactState> StatesOf(core::Session& session, std::span<const std::int64_t> keys);

// What is written of one contact, kept in the history first. Within ChangeMany and a transaction.
class ContactWriter {
 public:
  explicit ContactWriter(core::Session& session) : session_(session) {}
  // False when it says so already.
  bool SetField(std::int64_t key, ContactState& state, std::string_view field,
                std::string_view value);
  bool Store(std::int64_t key, ContactState& state, const core::Confirmation& told);
  // Of the contact's own row: "Locator='JN65AA'".
  void SetColumns(std::int64_t key, std::string_view columns);

 private:
  core::Session& session_;
  std::unique_ptr<engine::RowAppender> fields_;
};

}  // namespace brenvo::conferme
