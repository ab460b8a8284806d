// The one door by which contacts come into the log and the contests, change and leave.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/contacts_changed.h"
#include "core/log_contact.h"
#include "engine/database.h"
#include "forms/signal.h"

namespace brenvo::core {

class History;
class Session;

// Whoever brings a contact, a window, a transfer, an import or a batch, stores it here; whoever
// shows contacts subscribes here. What a window refuses is the window's: any contact that its
// columns can hold comes in, one of midnight too. In the same transaction a new contact of Log gets
// its name and its station (contact_origin.h), and what was there before goes into the history
// (history.h).
class ContactDoor {
 public:
  // What is to stand in the row: sets its columns, between AddNew or Edit and Update.
  using Fill = std::function<void(engine::EditableRecordset& row)>;

  explicit ContactDoor(Session& session);
  ~ContactDoor();
  ContactDoor(const ContactDoor&) = delete;
  ContactDoor& operator=(const ContactDoor&) = delete;

  // One contact, through rows of the table that the caller has open; they stand afterwards where
  // AddNew, Edit and Delete leave them. Announced when it is stored. What `fill` and the rows throw
  // goes on to the caller: then nothing is stored and nothing announced.
  // `beside` writes in the same transaction what stands beside the new contact, by its key;
  // `origin` counts for a contact of Log.
  using Beside = std::function<void(std::int64_t key)>;
  // What the contact brings of its origin; the rest is given to it.
  struct Origin {
    std::string_view uuid{};   // empty: a new one
    std::int64_t station = 0;  // 0: the current one
  };
  void Add(ContactTable table, engine::EditableRecordset& rows, const Fill& fill,
           const Beside& beside, const Origin& origin);
  void Add(ContactTable table, engine::EditableRecordset& rows, const Fill& fill,
           const Beside& beside = {}) {
    Add(table, rows, fill, beside, Origin());
  }
  void Change(ContactTable table, engine::EditableRecordset& rows, const Fill& fill);
  void Delete(ContactTable table, engine::EditableRecordset& rows);

  // Many contacts of these tables, one by one or by statements, as one work of that title:
  // announced once a table when `work` is over and says that it has stored something; the answer is
  // the work's. What it throws goes on, and nothing is announced: it leaves nothing stored.
  // `takesBack` is the number of the work in the history that this one takes back, 0 for none.
  bool ChangeMany(std::string_view title, std::initializer_list<ContactTable> tables,
                  const std::function<bool()>& work, std::int64_t takesBack = 0);
  // The history of the work that is under way: for statements, and for what stands beside contacts.
  // Only within ChangeMany or what a new contact brings beside it, and in a transaction.
  History& Past();

  // New contacts of Log one after another, at the store's full speed. Only within ChangeMany.
  class Appender {
   public:
    ~Appender();
    Appender(Appender&&) noexcept;
    using Origin = ContactDoor::Origin;
    // The key. The errors are those of RowAppender.
    std::int64_t Append(const LogContact& contact, const Origin& origin);
    std::int64_t Append(const LogContact& contact) { return Append(contact, Origin()); }

   private:
    friend class ContactDoor;
    explicit Appender(ContactDoor& door);
    ContactDoor& door_;
    std::unique_ptr<engine::RowAppender> rows_;
  };
  Appender OpenAppender();

  // Contacts that another program has written into the file get their names and stations; announced
  // as any other work. Gives how many there were.
  std::int64_t AdoptOthers();

  // The number of the station that new contacts belong to; asked again once StationChanged is
  // called.
  std::int64_t CurrentStation();
  void StationChanged() { station_.reset(); }

  // Each listener is told in the order of subscription, as an event of its own: one that fails is
  // told to the operator and keeps nothing from the others.
  [[nodiscard]] forms::Subscription Subscribe(ContactListener listener);

  // For Transaction and LongRun: what is written beside the contacts goes the way of the
  // transaction.
  void BeforeCommit();
  void Committed();
  void RolledBack();
  // The database is about to be closed.
  void Close();

 private:
  class Work;
  class OwnTransaction;
  void AnnounceOne(ContactTable table, OneContact contact);
  void GiveOrigin(std::int64_t qsoNr, const Origin& origin);
  std::optional<StoredContact> Stored(ContactTable table, std::int64_t key);

  Session& session_;
  forms::Signal<const ContactsChanged&> changed_;
  int works_ = 0;  // of ChangeMany that are under way
  int open_ = 0;   // of these and of single contacts
  std::unique_ptr<History> history_;
  std::optional<std::int64_t> station_;
  std::unique_ptr<engine::RowAppender> origins_;
  std::unique_ptr<engine::Table> stored_;
};

}  // namespace brenvo::core
