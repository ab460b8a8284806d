// What stands beside contacts, fields and confirmations, written for many at a time.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/confirmations.h"
#include "core/session.h"

namespace brenvo::core {

// Gathers what is to stand in LogAdif and LogConferme, and writes it block by block: a few
// statements for all of a block, where one by one each field takes several. Within ChangeMany and a
// transaction; a contact stands in one block of a work, and is written in no other way there.
class BesideWriter {
 public:
  // Whether the work has kept the contacts themselves already (History::KeepWhere).
  enum class Contacts : std::uint8_t { kToBeKept, kAreKept };
  BesideWriter(Session& session, Contacts contacts) : session_(session), contacts_(contacts) {}

  // `before` is what stands there, nothing where there is none; `after` likewise. Of what is set
  // twice the first `before` and the last `after` count.
  void SetField(std::int64_t qsoNr, std::string_view field,
                const std::optional<std::string>& before, const std::optional<std::string>& after);
  void SetConfirmation(std::int64_t qsoNr, const std::string& service,
                       const std::optional<Confirmation>& before,
                       const std::optional<Confirmation>& after);
  // The contact's own columns are about to be changed too.
  void Touch(std::int64_t qsoNr) { touched_.insert(qsoNr); }

  // All that was set since it wrote last goes to the history as it stood, and then into the tables.
  void Write();

 private:
  template <class Told>
  struct Change {
    std::optional<Told> before, after;
  };
  template <class Told>
  using Changes = std::map<std::pair<std::int64_t, std::string>, Change<Told>>;
  void KeepInHistory();
  // Rows that stand there and are to go, by the second part of their key.
  template <class Told>
  void Drop(const Changes<Told>& changes, std::string_view table, std::string_view column);

  Session& session_;
  Contacts contacts_;
  std::set<std::int64_t> touched_;
  Changes<std::string> fields_;
  Changes<Confirmation> confirmations_;
  std::unique_ptr<engine::RowAppender> fieldRows_, confirmationRows_;
};

}  // namespace brenvo::core
