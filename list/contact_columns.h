// What a list shows of a contact: columns as data, and a contact's cells.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/arranged_window.h"
#include "core/log_contact.h"
#include "core/session.h"

namespace brenvo::list {

struct ContactColumn {
  enum class Source {
    kNumber,
    kLog,
    kStation,
    kUuid,
    kSentCards,
    kReceivedCards,
    kKept
  } source = Source::kLog;
  std::string heading;  // of Log's columns the name; of a kept field too
  core::ColumnKind kind = core::ColumnKind::kText;
  bool shown = false;  // where nobody has chosen
  const core::LogColumn* log = nullptr;
};

// The columns of Log in the order of an operator's eye, the number, the station and the contact's
// own name.
std::vector<ContactColumn> ContactColumns();
// A field of LogAdif.
ContactColumn KeptColumn(std::string_view field);
std::vector<core::TableColumn> TableColumnsOf(const std::vector<ContactColumn>& columns);

// A value as the list shows it: "03/02/2001 10:15", "Sì", nothing for 0.
std::string ShownDate(base::DateTime date);
std::string ShownText(const core::LogContact& contact, const core::LogColumn& column);

// The cells of contacts, read one contact at a time, those seen last kept.
class ContactCells {
 public:
  explicit ContactCells(core::Session& session) : session_(session) {}

  // Empty for a contact that is gone.
  std::string Text(std::int64_t qsoNr, const ContactColumn& column);
  // Null when it is gone; good until the next contact is asked for.
  const core::LogContact* Contact(std::int64_t qsoNr);
  // The contact is read again, or all of them.
  void Forget(std::int64_t qsoNr) { cells_.erase(qsoNr); }
  void ForgetAll();
  // The database is about to be closed.
  void Close();

 private:
  struct Cells {
    bool there = false;
    core::LogContact contact;
    bool hasBeside = false;  // these have been read
    std::string station, uuid, sent, received;
    std::unordered_map<std::string, std::string> kept;
  };
  Cells& Of(std::int64_t qsoNr);
  void ReadBeside(std::int64_t qsoNr, Cells& cells);
  const std::string& StationName(std::int64_t number);

  core::Session& session_;
  std::unique_ptr<engine::Table> log_;
  std::unordered_map<std::int64_t, Cells> cells_;
  std::unordered_map<std::int64_t, std::string> stations_;
};

}  // namespace brenvo::list
