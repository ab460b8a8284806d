// The contacts of a list read in one go, on whatever thread: their numbers, and columns of them.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "column_memory.h"
#include "contact_columns.h"
#include "core/qsl_cards.h"
#include "engine/reader.h"

namespace brenvo::list {

// Contacts that have been read: numbers by slot, newest first, and slots by number.
class KnownContacts {
 public:
  KnownContacts() = default;
  explicit KnownContacts(std::vector<std::int64_t> keys);

  std::size_t Size() const { return keys_.size(); }
  std::int64_t KeyOf(Slot slot) const { return keys_[slot]; }
  std::optional<Slot> SlotOf(std::int64_t key) const;
  // In the order of the numbers.
  const std::vector<Slot>& ByKey() const { return byKey_; }

 private:
  std::vector<std::int64_t> keys_;
  std::vector<Slot> byKey_;
};

inline constexpr std::string_view kNewestFirst =
    "Select QsoNr from Log Order By DataQso Desc,QsoNr Desc";

using Memories = std::map<std::size_t, ColumnMemory>;  // by the place among the columns

// It touches nothing but itself while it runs. What it is to read is set before, what it has read
// is taken afterwards.
struct ContactReading {
  std::unique_ptr<engine::Reader> reader;
  std::vector<ContactColumn> columns;
  std::vector<std::size_t> fields;  // of the columns
  // Whether the numbers are read as well: all, or those of them, ascending, that the log still has.
  bool keys = false;
  std::optional<std::vector<std::int64_t>> selection;
  std::shared_ptr<const KnownContacts> known;  // whose columns; its own where it reads the numbers

  Memories memories;
  std::exception_ptr failure;
  bool stopped = false;

  // Asks now and then whether to go on.
  void Run(const std::function<bool()>& goOn);

 private:
  // `see` gets each row; `take` each row of a known contact, with its slot. The latter want the
  // number first, and the rows in its order.
  template <class See>
  void Each(const std::string& select, const See& see);
  template <class Take>
  void EachKnown(const std::string& select, const Take& take);

  void ReadKeys();
  void ReadLogColumns(const std::vector<std::size_t>& ofLog);
  void ReadNumbers(ColumnMemory& memory);
  void ReadUuids(ColumnMemory& memory);
  void ReadStations(ColumnMemory& memory);
  void ReadCards(core::CardSide side, ColumnMemory& memory);
  void ReadKept(const std::string& field, ColumnMemory& memory);

  const std::function<bool()>* goOn_ = nullptr;
  unsigned rows_ = 0;
};

}  // namespace brenvo::list
