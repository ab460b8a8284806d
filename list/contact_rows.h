// The contacts of a list: their keys in the order shown, and of what is sorted or filtered by the
// columns in memory, read in the background.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "contact_columns.h"
#include "contact_reading.h"
#include "core/contacts_changed.h"
#include "core/session.h"
#include "core/table_rows.h"

namespace brenvo::list {

// Newest first where no other order is wanted. The first rows are there at once, the others as soon
// as they have been read (OnReady); few contacts are all there at once.
class ContactRows : public core::TableRows {
 public:
  explicit ContactRows(core::Session& session);
  ~ContactRows() override;

  // All contacts, or those of these numbers.
  void Open(std::optional<std::vector<std::int64_t>> selection);
  // Reads what is stored by now; the rows stay until that is there.
  void ReadAnew();
  // One contact as it was announced: false when it is none of these.
  void Follow(const core::OneContact& change);
  void Close();

  const std::vector<ContactColumn>& Columns() const { return columns_; }
  // Fields of LogAdif become columns behind those that there are, unless they are some already.
  void AddKept(const std::vector<std::string>& fields);
  // The same of all that the log has, whose names are read now.
  void AddAllKept();
  // How many of these contacts have which text in a column, most first. Waits until it is read.
  struct Count {
    std::string text;
    std::int64_t contacts = 0;
  };
  std::vector<Count> CountBy(std::size_t field, const std::vector<std::int64_t>& keys);
  // Of these contacts those that do not show this text in a column of Log. Waits as well.
  std::vector<std::int64_t> WithOther(const core::LogColumn& column,
                                      const std::vector<std::int64_t>& keys, std::string_view text);
  ContactCells& Cells() { return cells_; }

  bool Arrange(const core::Arrangement& wanted) override;
  std::int64_t KeyAt(std::int64_t row) override;
  std::optional<std::int64_t> RowOf(std::int64_t key) override;
  std::int64_t CountOfAll() const override { return std::ssize(order_); }
  std::int64_t RowCount() override { return std::ssize(shown_); }
  std::string CellText(std::int64_t row, std::size_t field) override;

 private:
  void Begin(bool keys, std::vector<std::size_t> fields, bool atOnce);
  void LookWhetherRead();
  void TakeOver(ContactReading& job);
  void ReadFirst();
  // All of them stand newest first, as they come.
  void KnowThese(std::shared_ptr<const KnownContacts> known);
  const ColumnMemory& MemoryOf(std::size_t field);
  bool IsWanted(std::int64_t key) const;

  std::int64_t KeyOf(Slot slot) const;
  std::optional<Slot> SlotOf(std::int64_t key) const;
  Slot SlotFor(std::int64_t key);
  std::optional<base::DateTime> DateOf(Slot slot);
  void Insert(Slot slot);
  void Remove(Slot slot);
  void ReadCells(Slot slot);

  core::Session& session_;
  std::vector<ContactColumn> columns_;
  ContactCells cells_;
  std::optional<std::vector<std::int64_t>> selection_;  // ascending
  std::shared_ptr<const KnownContacts> known_;
  // The slots behind the known ones: numbers, and slots by number.
  std::vector<std::int64_t> added_;
  std::unordered_map<std::int64_t, Slot> addedSlots_;
  std::vector<Slot> order_;  // of all, newest first
  std::vector<Slot> shown_;  // as they were asked for last
  Memories memories_;
  bool whole_ = false;  // all numbers have been read

  std::unique_ptr<platform::Timer> looking_;
  std::shared_ptr<ContactReading> job_;
  std::unique_ptr<platform::BackgroundWork> work_;
  std::unique_ptr<forms::BusyPointer> busy_;
  bool due_ = false;           // something has changed that the job under way has not seen
  std::vector<Slot> touched_;  // the same, one by one
};

}  // namespace brenvo::list
