// What was there before: each work on the contacts writes it, in its own transaction, so that the
// work can be taken back. Tables Storia and those that begin with its name.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "core/qsl_cards.h"
#include "engine/database.h"

namespace brenvo::core {

// Written by the door for contacts alone (contact_door.h).
class History {
 public:
  explicit History(engine::Database& database) : database_(database) {}
  History(const History&) = delete;
  History& operator=(const History&) = delete;

  // A work begins and ends. It leaves no row when it has touched nothing. `takesBack` is the work
  // whose taking back it is, 0 for none.
  void Begin(std::string_view title, base::DateTime when, std::int64_t takesBack = 0);
  void End();
  // The work's number; the rows of it are there once something has been written.
  std::int64_t Number();

  // Within a transaction. A contact that the work has brought: it is gone once that is taken back.
  void Brought(std::int64_t qsoNr);
  // Contacts that come back, by what stands behind the columns of a SELECT that gives their QsoNr.
  void CameBack(std::string_view from);
  // Contacts of Log as they stand, which are about to be changed or deleted; `where` is a condition
  // with its word, or empty.
  void Keep(std::int64_t qsoNr);
  void KeepWhere(std::string_view where);
  // The same of many, each of them once.
  void KeepAll(const std::vector<std::int64_t>& qsoNrs);
  // What stands beside a contact that the work has kept, by a name as StoriaCampi has it, from
  // whoever has just read it; nothing where there is none. Each name of a contact once a work.
  void KeepBeside(std::int64_t qsoNr, std::string_view name, const engine::Value& present);
  // A field beside the contact, of LogAdif, as it stands or as one that is missing.
  void KeepField(std::int64_t qsoNr, std::string_view field);
  // The same of the cards of one side (qsl_cards.h).
  void KeepCards(std::int64_t qsoNr, CardSide side);
  // The same of the number of its country that a log file has told.
  void KeepTold(std::int64_t qsoNr);
  // The same of what a service has told of it (confirmations.h).
  void KeepConfirmation(std::int64_t qsoNr, std::string_view service);
  // The same of its station, and of a value of the log's (own_values.h).
  void KeepStation(std::int64_t qsoNr);
  void KeepValue(std::string_view name);
  // Rows of the contests as they stand, and one that the work has brought, by its key.
  void KeepContestQsos(std::string_view where);
  void KeepContests(std::string_view where);
  void BroughtContestQso(base::DateTime date, std::string_view band, std::int64_t serial);
  void BroughtContest(base::DateTime date, std::string_view band);

  // Before the commit; then what came of it.
  void Flush();
  void Committed();
  void RolledBack();
  // The database is about to be closed.
  void Close();

  // The name under which StoriaCampi keeps a contact's station.
  static constexpr std::string_view kStationField = "(Stazione)";
  // The same of its cards, as TextOfCards has them.
  static constexpr std::string_view kSentField = "(Qsl inviate)", kReceivedField = "(Qsl ricevute)";
  // The same of the number of its country.
  static constexpr std::string_view kToldField = "(Country detto)";
  // The same of what a service has told, "(Conferma LoTW)", and the service of such a name; empty
  // for another one.
  static std::string ConfirmationField(std::string_view service);
  static std::string_view ServiceOf(std::string_view field);
  // The side of such a name; nothing for another one.
  static std::optional<CardSide> SideOf(std::string_view field);

 private:
  struct Run {
    std::int64_t from = 0, to = 0;
  };
  engine::RowAppender& Rows(std::unique_ptr<engine::RowAppender>& rows, std::string_view table);
  void KeepRows(std::string_view statement);
  bool HasBrought(std::int64_t qsoNr) const;
  void KeepCampo(std::int64_t qsoNr, std::string_view name, const engine::Value& value);

  engine::Database& database_;
  std::string title_;
  base::DateTime when_;
  std::int64_t takesBack_ = 0;
  std::int64_t number_ = 0, next_ = 0;
  std::int64_t touched_ = 0;  // since the last commit
  std::int64_t kept_ = 0;     // the contact that was kept last; no other stands between its fields
  bool written_ = false;      // something that no commit has seen yet
  bool hasHeader_ = false;    // in the file, or in the open transaction
  bool committed_ = false;    // in the file
  std::vector<Run> runs_;     // brought by this work
  std::size_t flushedRuns_ = 0, committedRuns_ = 0;
  std::unique_ptr<engine::RowAppender> works_, brought_, fields_;
};

// Drops the works that are older than so many days, and of the others the oldest beyond so many
// contacts; the last work stays, however large.
void ThinHistory(engine::Database& database, base::DateTime now, std::int64_t days,
                 std::int64_t contacts);

}  // namespace brenvo::core
