// A table of counters: for each key, how often each kind of contact was counted under it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace brenvo::worked {

// Most keys have one slot, which then stands in the entry itself; the others have theirs in a row
// of the pool. Keys are taken for what they stand for: of two that are alike in all but their
// lowest five bits nobody can tell.
class SlotTable {
 public:
  // What was counted, in the words of whoever counts; and how often.
  struct Slot {
    std::uint32_t what, count;
  };

  explicit SlotTable(std::size_t keys);

  // Has the memory brought near in which the key stands, for an Add a little later.
  void Prepare(std::uint64_t key) const {
#ifdef __GNUC__
    __builtin_prefetch(&entries_[HomeOf(Usable(key))]);
#else
    static_cast<void>(key);
#endif
  }
  void Add(std::uint64_t key, std::uint32_t what);
  // False when nothing is counted there.
  bool Remove(std::uint64_t key, std::uint32_t what);
  std::uint32_t Count(std::uint64_t key, std::uint32_t what) const;

  // Calls see(slot) for each of a key that counts something.
  template <class See>
  void ForEach(std::uint64_t key, const See& see) const {
    if (const Entry* entry = Find(key)) ForEach(*entry, see);
  }
  // Calls see(key, slot) for all of them.
  template <class See>
  void ForEach(const See& see) const {
    for (const Entry& entry : entries_) {
      if (entry.key == 0) continue;
      ForEach(entry, [&](const Slot& slot) { see(entry.key & ~kClass, slot); });
    }
  }

  // Room for no more keys than there are.
  void Shrink();
  std::size_t Bytes() const;

 private:
  // The lowest bits of a key hold the class of its row: 0 for a slot in the entry, else the row has
  // 2^class slots, of which `what` are in use, and `count` is its place in the pool.
  static constexpr std::uint64_t kClass = 31;
  struct Entry {
    std::uint64_t key = 0;  // 0 for a free one
    std::uint32_t what = 0, count = 0;
  };
  static constexpr std::size_t kChunk = 1 << 12;  // slots
  static constexpr unsigned kLargestClass = 28;

  static std::uint64_t Usable(std::uint64_t key) {
    return (key & ~kClass) != 0 ? key & ~kClass : kClass + 1;
  }
  static std::size_t ClassOf(const Entry& entry) { return entry.key & kClass; }

  template <class See>
  void ForEach(const Entry& entry, const See& see) const {
    if (ClassOf(entry) == 0) {
      const Slot slot{entry.what, entry.count};
      if (slot.count > 0) see(slot);
      return;
    }
    const Slot* const row = RowAt(entry.count);
    for (std::uint32_t i = 0; i < entry.what; ++i) {
      if (row[i].count > 0) see(row[i]);
    }
  }

  std::size_t HomeOf(std::uint64_t key) const {
    return static_cast<std::size_t>((key >> 32) * entries_.size() >> 32);
  }
  // The key's entry, or the free one where it would stand.
  std::size_t PlaceOf(std::uint64_t key) const;
  const Entry* Find(std::uint64_t key) const;
  std::uint32_t* CountOf(std::uint64_t key, std::uint32_t what);
  void AddToRow(Entry& entry, std::uint32_t what);
  void Rebuild(std::size_t size);

  Slot* RowAt(std::uint32_t place) const { return chunks_[place / kChunk] + place % kChunk; }
  std::uint32_t TakeRow(unsigned rowClass);
  void GiveBackRow(std::uint32_t place, unsigned rowClass);

  std::vector<Entry> entries_;
  std::size_t used_ = 0;
  std::vector<std::unique_ptr<Slot[]>> memory_;
  std::size_t slots_ = 0;  // in all of it
  std::vector<Slot*> chunks_;
  std::size_t chunkUsed_ = kChunk;                      // of the chunk that rows are taken from
  std::uint32_t chunkFirst_ = 0;                        // its first slot's place
  std::vector<std::uint32_t> free_[kLargestClass + 1];  // rows given back
};

}  // namespace brenvo::worked
