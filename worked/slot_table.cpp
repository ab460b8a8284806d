#include "slot_table.h"

#include <algorithm>
#include <utility>

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
    const std::uint32_t place = TakeRow(1);
    Slot* const row = RowAt(place);
    row[0] = {entry.what, entry.count};
    row[1] = {what, 1};
    entry = {key | 1, 2, place};
  }
}

void SlotTable::AddToRow(Entry& entry, std::uint32_t what) {
  Slot* row = RowAt(entry.count);
  Slot* unused = nullptr;
  for (std::uint32_t i = 0; i < entry.what; ++i) {
    if (row[i].what == what) {
      ++row[i].count;
      // What was met is mostly met again soon.
      std::swap(row[i], row[i / 2]);
      return;
    }
    if (row[i].count == 0) unused = &row[i];
  }
  if (unused == nullptr) {
    const auto rowClass = static_cast<unsigned>(ClassOf(entry));
    if (entry.what == std::uint32_t{1} << rowClass) {
      const std::uint32_t place = TakeRow(rowClass + 1);
      std::copy_n(row, entry.what, RowAt(place));
      GiveBackRow(entry.count, rowClass);
      entry.key += 1;
      entry.count = place;
      row = RowAt(place);
    }
    unused = &row[entry.what++];
  }
  *unused = {what, 1};
}

std::uint32_t* SlotTable::CountOf(std::uint64_t key, std::uint32_t what) {
  Entry& entry = entries_[PlaceOf(Usable(key))];
  if (entry.key == 0) return nullptr;
  if (ClassOf(entry) == 0) return entry.what == what ? &entry.count : nullptr;
  Slot* const row = RowAt(entry.count);
  for (std::uint32_t i = 0; i < entry.what; ++i) {
    if (row[i].what == what) return &row[i].count;
  }
  return nullptr;
}

bool SlotTable::Remove(std::uint64_t key, std::uint32_t what) {
  std::uint32_t* const count = CountOf(key, what);
  if (count == nullptr || *count == 0) return false;
  --*count;
  return true;
}

std::uint32_t SlotTable::Count(std::uint64_t key, std::uint32_t what) const {
  std::uint32_t count = 0;
  ForEach(key, [&](const Slot& slot) {
    if (slot.what == what) count = slot.count;
  });
  return count;
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
  std::vector<std::uint32_t>& free = free_[rowClass];
  if (!free.empty()) {
    const std::uint32_t place = free.back();
    free.pop_back();
    return place;
  }
  const std::size_t size = std::size_t{1} << rowClass;
  if (chunkUsed_ + size > kChunk) {
    // A row larger than a chunk takes several, which lie side by side.
    const std::size_t chunks = (size + kChunk - 1) / kChunk;
    memory_.push_back(std::make_unique_for_overwrite<Slot[]>(chunks * kChunk));
    slots_ += chunks * kChunk;
    const auto first = static_cast<std::uint32_t>(chunks_.size() * kChunk);
    for (std::size_t i = 0; i < chunks; ++i) chunks_.push_back(&memory_.back()[i * kChunk]);
    if (chunks > 1) return first;
    chunkFirst_ = first;
    chunkUsed_ = 0;
  }
  const auto place = static_cast<std::uint32_t>(chunkFirst_ + chunkUsed_);
  chunkUsed_ += size;
  return place;
}

void SlotTable::GiveBackRow(std::uint32_t place, unsigned rowClass) {
  free_[rowClass].push_back(place);
}

std::size_t SlotTable::Bytes() const {
  std::size_t bytes = entries_.capacity() * sizeof(Entry) + slots_ * sizeof(Slot) +
                      memory_.capacity() * sizeof(memory_[0]) +
                      chunks_.capacity() * sizeof(chunks_[0]);
  for (const auto& rows : free_) bytes += rows.capacity() * sizeof(rows[0]);
  return bytes;
}

}  // namespace brenvo::worked
