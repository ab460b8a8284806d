#include "core/contact_door.h"

#include <fmt/format.h>

#include <cassert>

#include "base/uuid.h"
#include "core/contact_origin.h"
#include "core/history.h"
#include "core/quoted.h"
#include "core/session.h"
#include "core/stations.h"
#include "core/transaction.h"

namespace brenvo::core {
namespace {

// What a single contact's store is called in the history.
struct Titles {
  std::string_view added, changed, deleted;
};
constexpr Titles kTitlesOfLog = {"Nuovo qso", "Qso modificato", "Qso cancellato"};
constexpr Titles kTitlesOfContest = {"Nuovo qso di contest", "Qso di contest modificato",
                                     "Qso di contest cancellato"};

const Titles& TitlesOf(ContactTable table) {
  return table == ContactTable::kLog ? kTitlesOfLog : kTitlesOfContest;
}

// What the history knows the row by: a contact of Log by its number, one of a contest by what its
// row holds now.
class RowNow {
 public:
  RowNow(ContactTable table, engine::Recordset& row) : ofContest_(table != ContactTable::kLog) {
    if (!ofContest_) return;
    date_ = row.Field("DataContest").Date();
    band_ = row.Field("Banda").Text();
    serial_ = row.Field("ProgrDato").Integer();
  }
  void Keep(History& history, std::int64_t key) const {
    if (!ofContest_) return history.Keep(key);
    history.KeepContestQsos(
        fmt::format(" WHERE DataContest=DateValue({}) AND Banda={} AND ProgrDato={}",
                    Quoted(base::DateText(date_)), Quoted(band_), serial_));
  }
  void Brought(History& history, std::int64_t key) const {
    if (!ofContest_) return history.Brought(key);
    history.BroughtContestQso(date_, band_, serial_);
  }

 private:
  bool ofContest_;
  base::DateTime date_;
  std::string band_;
  std::int64_t serial_ = 0;
};

}  // namespace

// A work begins with the first that wants one, and ends with it.
class ContactDoor::Work {
 public:
  Work(ContactDoor& door, std::string_view title, std::int64_t takesBack = 0)
      : door_(door), isFirst_(door.open_++ == 0) {
    if (isFirst_) door_.history_->Begin(title, door_.session_.Now(), takesBack);
  }
  ~Work() {
    --door_.open_;
    if (isFirst_) door_.history_->End();
  }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

 private:
  ContactDoor& door_;
  bool isFirst_;
};

// The transaction of one contact, unless it is stored within a larger one.
class ContactDoor::OwnTransaction {
 public:
  explicit OwnTransaction(Session& session) {
    if (!session.Db.InTransaction()) transaction_.emplace(session);
  }
  void Commit() {
    if (transaction_) transaction_->Commit();
  }

 private:
  std::optional<Transaction> transaction_;
};

ContactDoor::ContactDoor(Session& session)
    : session_(session), history_(std::make_unique<History>(session.Db)) {}

ContactDoor::~ContactDoor() = default;

forms::Subscription ContactDoor::Subscribe(ContactListener listener) {
  return changed_.Subscribe([this, listener = std::move(listener)](const ContactsChanged& change) {
    session_.Windows.RunEvent([&] { listener(change); });
  });
}

void ContactDoor::AnnounceOne(ContactTable table, OneContact contact) {
  if (works_ == 0) changed_({table, std::move(contact)});
}

std::optional<StoredContact> ContactDoor::Stored(ContactTable table, std::int64_t key) {
  if (works_ > 0) return std::nullopt;  // nobody hears of it by itself
  if (table == ContactTable::kContestQso) return StoredContact{key, {}};
  if (stored_ == nullptr) stored_ = session_.Db.OpenTable("Log");
  stored_->SetBookmark({key});
  return StoredContact{key, ReadContact(*stored_)};
}

void ContactDoor::Add(ContactTable table, engine::EditableRecordset& rows, const Fill& fill,
                      const Beside& beside, const Origin& origin) {
  const Work work(*this, TitlesOf(table).added);
  rows.AddNew();
  fill(rows);
  const RowNow row(table, rows);
  OwnTransaction transaction(session_);
  rows.Update();
  const std::int64_t key = rows.LastModified().key;
  row.Brought(*history_, key);
  if (table == ContactTable::kLog) GiveOrigin(key, origin);
  if (beside) beside(key);
  transaction.Commit();
  AnnounceOne(table, {std::nullopt, Stored(table, key)});
}

void ContactDoor::Change(ContactTable table, engine::EditableRecordset& rows, const Fill& fill) {
  const Work work(*this, TitlesOf(table).changed);
  rows.Edit();
  const std::int64_t key = rows.GetBookmark().key;
  const RowNow before(table, rows);
  OneContact contact{Stored(table, key), std::nullopt};
  fill(rows);
  const RowNow after(table, rows);
  OwnTransaction transaction(session_);
  before.Keep(*history_, key);
  if (table == ContactTable::kContestQso) after.Brought(*history_, key);
  rows.Update();
  transaction.Commit();
  contact.after = Stored(table, key);
  AnnounceOne(table, std::move(contact));
}

void ContactDoor::Delete(ContactTable table, engine::EditableRecordset& rows) {
  const Work work(*this, TitlesOf(table).deleted);
  const std::int64_t key = rows.GetBookmark().key;
  const RowNow row(table, rows);
  OneContact contact{Stored(table, key), std::nullopt};
  OwnTransaction transaction(session_);
  row.Keep(*history_, key);
  rows.Delete();
  transaction.Commit();
  AnnounceOne(table, std::move(contact));
}

bool ContactDoor::ChangeMany(std::string_view title, std::initializer_list<ContactTable> tables,
                             const std::function<bool()>& work, std::int64_t takesBack) {
  {
    const Work underWay(*this, title, takesBack);
    ++works_;
    struct Over {
      int& works;
      ~Over() { --works; }
    } const over{works_};
    if (!work()) return false;
  }
  for (const ContactTable table : tables) changed_({table, ManyContacts()});
  return true;
}

std::int64_t ContactDoor::AdoptOthers() {
  std::int64_t adopted = 0;
  ChangeMany("Qso scritti da un altro programma", {ContactTable::kLog}, [&] {
    adopted = AdoptContacts(session_.Db, [](std::int64_t) {});
    return adopted > 0;
  });
  return adopted;
}

History& ContactDoor::Past() {
  assert(open_ > 0);
  return *history_;
}

std::int64_t ContactDoor::CurrentStation() {
  if (!station_) station_ = core::CurrentStation(session_.Db);
  return *station_;
}

void ContactDoor::GiveOrigin(std::int64_t qsoNr, const Origin& origin) {
  if (origins_ == nullptr) origins_ = session_.Db.OpenAppender("LogOrigine");
  const std::int64_t station = origin.station != 0 ? origin.station : CurrentStation();
  origins_->Append(
      {qsoNr, origin.uuid.empty() ? engine::Value(session_.NewUuid()) : engine::Value(origin.uuid),
       station});
}

ContactDoor::Appender::Appender(ContactDoor& door)
    : door_(door), rows_(door.session_.Db.OpenAppender("Log")) {}
ContactDoor::Appender::~Appender() = default;
ContactDoor::Appender::Appender(Appender&&) noexcept = default;

std::int64_t ContactDoor::Appender::Append(const LogContact& contact, const Origin& origin) {
  const std::int64_t key = rows_->Append(RowOf(contact));
  door_.history_->Brought(key);
  door_.GiveOrigin(key, origin);
  return key;
}

ContactDoor::Appender ContactDoor::OpenAppender() {
  assert(works_ > 0);
  return Appender(*this);
}

void ContactDoor::BeforeCommit() { history_->Flush(); }
void ContactDoor::Committed() { history_->Committed(); }
void ContactDoor::RolledBack() {
  history_->RolledBack();
  station_.reset();  // it may have been stored there
}

void ContactDoor::Close() {
  history_->Close();
  station_.reset();
  origins_.reset();
  stored_.reset();
}

}  // namespace brenvo::core
