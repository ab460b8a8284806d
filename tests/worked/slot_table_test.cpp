#include "worked/slot_table.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace brenvo::worked {
namespace {

using Counts = std::map<std::pair<std::uint64_t, std::uint32_t>, std::uint32_t>;

Counts CountsOf(const SlotTable& table) {
  Counts counts;
  table.ForEach([&](std::uint64_t key, const SlotTable::Slot& slot) {
    counts[{key, slot.what}] += slot.count;
  });
  return counts;
}

// A key whose lowest bits do not matter, spread over all others.
std::uint64_t Key(std::uint64_t number) { return number * 0x9E3779B97F4A7C15 & ~std::uint64_t{31}; }

TEST(SlotTableTest, CountsWhatWasAddedAndNotTakenAwayAsAMapDoes) {
  std::mt19937_64 random(20261122);
  SlotTable table(0);
  Counts model;
  for (int step = 0; step < 60000; ++step) {
    // A few keys hold very many slots, most one or two.
    const std::uint64_t key = Key(1 + (random() % 2 == 0 ? random() % 3 : random() % 4000));
    const auto what = static_cast<std::uint32_t>(random() % 300);
    std::uint32_t& count = model[{key, what}];
    if (random() % 3 == 0) {
      EXPECT_EQ(table.Remove(key, what), count > 0);
      count -= count > 0 ? 1 : 0;
    } else {
      table.Add(key, what);
      ++count;
    }
    if (step % 20000 == 0) table.Shrink();
  }
  std::erase_if(model, [](const auto& each) { return each.second == 0; });
  EXPECT_EQ(CountsOf(table), model);
  for (const auto& [at, count] : model) ASSERT_EQ(table.Count(at.first, at.second), count);
}

TEST(SlotTableTest, AKeyMayHaveMoreSlotsThanAChunkHolds) {
  constexpr std::uint32_t kSlots = 10000;
  SlotTable table(0);
  for (std::uint32_t what = 0; what < kSlots; what += 2) table.Add(Key(7), what);
  for (std::uint32_t what = 0; what < 100; ++what) table.Add(Key(what + 8), what);
  for (std::uint32_t what = 0; what < kSlots; what += 2) table.Add(Key(9), what);
  std::uint32_t slots = 0, sum = 0;
  table.ForEach(Key(7), [&](const SlotTable::Slot& slot) {
    EXPECT_EQ(slot.what % 2, 0u);
    ++slots;
    sum += slot.count;
  });
  EXPECT_EQ(slots, kSlots / 2);
  EXPECT_EQ(sum, kSlots / 2);
}

TEST(SlotTableTest, WhatWasNeverCountedIsNotThere) {
  SlotTable table(10);
  EXPECT_FALSE(table.Remove(Key(1), 5));
  table.Add(Key(1), 5);
  EXPECT_FALSE(table.Remove(Key(1), 6));
  EXPECT_FALSE(table.Remove(Key(2), 5));
  EXPECT_EQ(table.Count(Key(1), 5), 1u);
  EXPECT_TRUE(table.Remove(Key(1), 5));
  EXPECT_FALSE(table.Remove(Key(1), 5));
  EXPECT_TRUE(CountsOf(table).empty());
}

TEST(SlotTableTest, AKeyOfNothingButLowestBitsIsAKeyToo) {
  SlotTable table(0);
  table.Add(0, 3);
  EXPECT_EQ(table.Count(0, 3), 1u);
}

TEST(SlotTableTest, GivesBackTheRoomThatKeysNoLongerNeed) {
  SlotTable table(100000);
  const std::size_t before = table.Bytes();
  for (std::uint32_t number = 1; number <= 1000; ++number) table.Add(Key(number), 1);
  EXPECT_EQ(table.Bytes(), before);
  table.Shrink();
  EXPECT_LT(table.Bytes(), before / 50);
  EXPECT_EQ(CountsOf(table).size(), 1000u);
}

}  // namespace
}  // namespace brenvo::worked
