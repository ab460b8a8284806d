#include "core/contact_door.h"

#include <cassert>

namespace brenvo::core {
namespace {

class UnderWay {
 public:
  explicit UnderWay(int& works) : works_(works) { ++works_; }
  ~UnderWay() { --works_; }
  UnderWay(const UnderWay&) = delete;
  UnderWay& operator=(const UnderWay&) = delete;

 private:
  int& works_;
};

}  // namespace

forms::Subscription ContactDoor::Subscribe(ContactListener listener) {
  return changed_.Subscribe([this, listener = std::move(listener)](const ContactsChanged& change) {
    windows_.RunEvent([&] { listener(change); });
  });
}

void ContactDoor::AnnounceOne(ContactTable table, const OneContact& contact) {
  if (works_ == 0) changed_({table, contact});
}

void ContactDoor::Add(ContactTable table, engine::EditableRecordset& rows, const Fill& fill) {
  rows.AddNew();
  fill(rows);
  rows.Update();
  AnnounceOne(table, {std::nullopt, rows.LastModified().key});
}

void ContactDoor::Change(ContactTable table, engine::EditableRecordset& rows, const Fill& fill) {
  rows.Edit();
  fill(rows);
  rows.Update();
  const std::int64_t key = rows.LastModified().key;
  AnnounceOne(table, {key, key});
}

void ContactDoor::Delete(ContactTable table, engine::EditableRecordset& rows) {
  const std::int64_t key = rows.GetBookmark().key;
  rows.Delete();
  AnnounceOne(table, {key, std::nullopt});
}

bool ContactDoor::ChangeMany(std::initializer_list<ContactTable> tables,
                             const std::function<bool()>& work) {
  const bool changed = [&] {
    const UnderWay underWay(works_);
    return work();
  }();
  if (!changed) return false;
  for (const ContactTable table : tables) changed_({table, ManyContacts()});
  return true;
}

ContactDoor::Appender ContactDoor::OpenAppender(engine::Database& database) {
  assert(works_ > 0);
  return Appender(database.OpenAppender("Log"));
}

}  // namespace brenvo::core
