// The one door by which contacts come into the log and the contests, change and leave.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <utility>

#include "core/contacts_changed.h"
#include "core/log_contact.h"
#include "engine/database.h"
#include "forms/signal.h"
#include "forms/window_list.h"

namespace brenvo::core {

// Whoever brings a contact, a window, a transfer, an import or a batch, stores it here; whoever
// shows contacts subscribes here. What a window refuses is the window's: any contact that its
// columns can hold comes in, one of midnight too.
class ContactDoor {
 public:
  // What is to stand in the row: sets its columns, between AddNew or Edit and Update.
  using Fill = std::function<void(engine::EditableRecordset& row)>;

  explicit ContactDoor(forms::WindowList& windows) : windows_(windows) {}
  ContactDoor(const ContactDoor&) = delete;
  ContactDoor& operator=(const ContactDoor&) = delete;

  // One contact, through rows of the table that the caller has open; they stand afterwards where
  // AddNew, Edit and Delete leave them. Announced when it is stored. What `fill` and the rows throw
  // goes on to the caller: then nothing is stored and nothing announced.
  void Add(ContactTable table, engine::EditableRecordset& rows, const Fill& fill);
  void Change(ContactTable table, engine::EditableRecordset& rows, const Fill& fill);
  void Delete(ContactTable table, engine::EditableRecordset& rows);

  // Many contacts of these tables, one by one or by statements: announced once a table when `work`
  // is over and says that it has stored something; the answer is the work's. What it throws goes
  // on, and nothing is announced: it leaves nothing stored.
  bool ChangeMany(std::initializer_list<ContactTable> tables, const std::function<bool()>& work);

  // New contacts of Log one after another, at the store's full speed. Only within ChangeMany.
  class Appender {
   public:
    // The key. The errors are those of RowAppender.
    std::int64_t Append(const LogContact& contact) { return rows_->Append(RowOf(contact)); }

   private:
    friend class ContactDoor;
    explicit Appender(std::unique_ptr<engine::RowAppender> rows) : rows_(std::move(rows)) {}
    std::unique_ptr<engine::RowAppender> rows_;
  };
  Appender OpenAppender(engine::Database& database);

  // Each listener is told in the order of subscription, as an event of its own: one that fails is
  // told to the operator and keeps nothing from the others.
  [[nodiscard]] forms::Subscription Subscribe(ContactListener listener);

 private:
  void AnnounceOne(ContactTable table, const OneContact& contact);

  forms::WindowList& windows_;
  forms::Signal<const ContactsChanged&> changed_;
  int works_ = 0;  // of ChangeMany that are under way
};

}  // namespace brenvo::core
