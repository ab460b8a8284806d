#include "slot_table.h"

#include <algorithm>

namespace brenvo::worked {
namespace {

// Of 100 entries, that many may be in use.
constexpr std::size_t kFull = 80, kFullWhenMade = 70;

std::size_t SizeFor(std::size_t keys) { return keys * 100 / kFullWhenMade + 16; }

}  // namespace

SlotTable::SlotTable(std::size_t keys) : entries_(SizeFor(keys)) {}

std::size_t SlotTable::PlaceOf(std::uint64_t key) const {
  std::size_t at = HomeOf(key);
  while (entries_[at].key != 0 && (entries_[at].key & ~kClass) != key) {
    if (++at == entries_.size()) at = 0;
  }
  return at;
}

const SlotTable::Entry* SlotTable::Find(std::uint64_t key) const {
  const Entry& entry = entries_[PlaceOf(Usable(key))];
  return entry.key == 0 ? nullptr : &entry;
}

void SlotTable::Add(std::uint64_t key, std::uint32_t what) {
  key = Usable(key);
  std::size_t at = PlaceOf(key);
  if (entries_[at].key == 0) {
    if ((used_ + 1) * 100 > entries_.size() * kFull) {
      Rebuild(SizeFor(used_ + used_ / 2));
      at = PlaceOf(key);
    }
    ++used_;
    entries_[at] = {key, what, 1};
    return;
  }
  Entry& entry = entries_[at];
  if (ClassOf(entry) > 0) {
    AddToRow(entry, what);
  } else if (entry.count == 0 || entry.what == what) {
    entry.what = what;
    ++entry.count;
  } else {
    const Slot only{entry.what, entry.count};
    entry = {key | 1, 0, TakeRow(1)};
    *FreeSlot(entry, only.what) = only;
    *FreeSlot(entry, what) = {what, 1};
  }
}

SlotTable::Slot* SlotTable::FindInRow(const Entry& entry, std::uint32_t what) const {
  Slot* const row = RowAt(entry.count);
  if (IsHashed(entry)) {
    const std::uint32_t mask = RowSize(entry) - 1;
    std::uint32_t at = Mixed(what) & mask;
    while (row[at].what != what && row[at].what != kFree) at = (at + 1) & mask;
    return row[at].what == what ? &row[at] : nullptr;
  }
  for (std::uint32_t i = 0; i < entry.what; ++i) {
    if (row[i].what == what) return &row[i];
  }
  return nullptr;
}

SlotTable::Slot* SlotTable::FreeSlot(Entry& entry, std::uint32_t what) {
  const std::uint32_t size = RowSize(entry);
  Slot* const row = RowAt(entry.count);
  if (!IsHashed(entry)) {
    return entry.what < size ? &row[entry.what++] : nullptr;
  }
  constexpr std::uint32_t kOf = 4, kMost = 3;  // of four slots, three may be in use
  if (entry.what + 1 > size / kOf * kMost) return nullptr;
  ++entry.what;
  std::uint32_t at = Mixed(what) & (size - 1);
  while (row[at].what != kFree) at = (at + 1) & (size - 1);
  return &row[at];
}

void SlotTable::AddToRow(Entry& entry, std::uint32_t what) {
  if (Slot* const there = FindInRow(entry, what)) {
    ++there->count;
    return;
  }
  Slot* slot = FreeSlot(entry, what);
  if (slot == nullptr) {
    Grow(entry);
    slot = FreeSlot(entry, what);
  }
  *slot = {what, 1};
}

// What no longer counts anything does not come along.
void SlotTable::Grow(Entry& entry) {
  const Entry old = entry;
  entry.key += 1;
  entry.what = 0;
  entry.count = TakeRow(static_cast<unsigned>(ClassOf(entry)));
  ForEach(old, [&](const Slot& slot) { *FreeSlot(entry, slot.what) = slot; });
  free_[ClassOf(old)].push_back(old.count);
}

std::uint32_t* SlotTable::CountOf(std::uint64_t key, std::uint32_t what) {
  Entry& entry = entries_[PlaceOf(Usable(key))];
  if (entry.key == 0) return nullptr;
  if (ClassOf(entry) == 0) return entry.what == what ? &entry.count : nullptr;
  Slot* const slot = FindInRow(entry, what);
  return slot == nullptr ? nullptr : &slot->count;
}

bool SlotTable::Remove(std::uint64_t key, std::uint32_t what) {
  std::uint32_t* const count = CountOf(key, what);
  if (count == nullptr || *count == 0) return false;
  --*count;
  return true;
}

std::uint32_t SlotTable::Count(std::uint64_t key, std::uint32_t what) const {
  const Entry* const entry = Find(key);
  if (entry == nullptr) return 0;
  if (ClassOf(*entry) == 0) return entry->what == what ? entry->count : 0;
  const Slot* const slot = FindInRow(*entry, what);
  return slot == nullptr ? 0 : slot->count;
}

void SlotTable::Rebuild(std::size_t size) {
  std::vector<Entry> old(size);
  old.swap(entries_);
  used_ = 0;
  for (const Entry& entry : old) {
    if (entry.key == 0 || (ClassOf(entry) == 0 && entry.count == 0)) continue;
    entries_[PlaceOf(entry.key & ~kClass)] = entry;
    ++used_;
  }
}

void SlotTable::Shrink() { Rebuild(SizeFor(used_)); }

std::uint32_t SlotTable::TakeRow(unsigned rowClass) {
  const std::size_t size = std::size_t{1} << rowClass;
  std::vector<std::uint32_t>& free = free_[rowClass];
  std::uint32_t place = 0;
  if (!free.empty()) {
    place = free.back();
    free.pop_back();
  } else if (size > kChunk) {
    place = TakeChunks((size + kChunk - 1) / kChunk);  // which lie side by side
  } else {
    if (chunkUsed_ + size > kChunk) {
      chunkFirst_ = TakeChunks(1);
      chunkUsed_ = 0;
    }
    place = static_cast<std::uint32_t>(chunkFirst_ + chunkUsed_);
    chunkUsed_ += size;
  }
  std::fill_n(RowAt(place), size, Slot{kFree, 0});
  return place;
}

std::uint32_t SlotTable::TakeChunks(std::size_t count) {
  memory_.push_back(std::make_unique_for_overwrite<Slot[]>(count * kChunk));
  slots_ += count * kChunk;
  const auto first = static_cast<std::uint32_t>(chunks_.size() * kChunk);
  for (std::size_t i = 0; i < count; ++i) chunks_.push_back(&memory_.back()[i * kChunk]);
  return first;
}

std::size_t SlotTable::Bytes() const {
  std::size_t bytes = entries_.capacity() * sizeof(Entry) + slots_ * sizeof(Slot) +
                      memory_.capacity() * sizeof(memory_[0]) +
                      chunks_.capacity() * sizeof(chunks_[0]);
  for (const auto& rows : free_) bytes += rows.capacity() * sizeof(rows[0]);
  return bytes;
}

}  // namespace brenvo::worked
