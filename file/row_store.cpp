#include "row_store.h"

#include <sqlite3.h>

#include <cstring>
#include <string_view>

namespace brenvo::file {
namespace {

constexpr std::size_t kBlockSize = 1 << 20;

enum Tag : char { kNull, kWhole, kReal, kText };

template <typename T>
void Put(std::string& block, T value) {
  block.append(reinterpret_cast<const char*>(&value), sizeof(T));
}

template <typename T>
T Get(const char* at) {
  T value;
  std::memcpy(&value, at, sizeof(T));
  return value;
}

std::size_t SizeOf(const char* cell) {
  switch (*cell) {
    case kNull:
      return 1;
    case kText:
      return 1 + sizeof(std::uint32_t) + Get<std::uint32_t>(cell + 1);
    default:
      return 1 + sizeof(std::int64_t);
  }
}

}  // namespace

void RowStore::Clear() {
  // One block stays, for the next rows.
  if (blocks_.size() > 1) blocks_.resize(1);
  if (!blocks_.empty()) blocks_.front().clear();
  rows_.clear();
  reached_ = {};
}

void RowStore::Append(sqlite3_stmt* statement) {
  if (blocks_.empty()) {
    blocks_.emplace_back();
  } else if (blocks_.back().size() >= kBlockSize) {
    blocks_.emplace_back();
    blocks_.back().reserve(kBlockSize);
  }
  std::string& block = blocks_.back();
  rows_.push_back(
      {static_cast<std::uint32_t>(blocks_.size() - 1), static_cast<std::uint32_t>(block.size())});
  const int count = sqlite3_column_count(statement);
  for (int i = 0; i < count; ++i) {
    switch (sqlite3_column_type(statement, i)) {
      case SQLITE_NULL:
        block += kNull;
        break;
      case SQLITE_INTEGER:
        block += kWhole;
        Put(block, static_cast<std::int64_t>(sqlite3_column_int64(statement, i)));
        break;
      case SQLITE_FLOAT:
        block += kReal;
        Put(block, sqlite3_column_double(statement, i));
        break;
      default: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
        const auto size = static_cast<std::uint32_t>(sqlite3_column_bytes(statement, i));
        block += kText;
        Put(block, size);
        if (size > 0) block.append(text, size);
        break;
      }
    }
  }
}

engine::Value RowStore::Cell(std::int64_t row, std::size_t column) const {
  const Place place = rows_[static_cast<std::size_t>(row)];
  const char* const block = blocks_[place.block].data();
  if (row != reached_.row || column < reached_.column) reached_ = {row, 0, place.offset};
  for (; reached_.column < column; ++reached_.column) {
    reached_.offset += SizeOf(block + reached_.offset);
  }
  const char* const at = block + reached_.offset;
  switch (*at) {
    case kWhole:
      return engine::Value(Get<std::int64_t>(at + 1));
    case kReal:
      return engine::Value(Get<double>(at + 1));
    case kText:
      return engine::Value(std::string(at + 1 + sizeof(std::uint32_t), Get<std::uint32_t>(at + 1)));
    default:
      return {};
  }
}

}  // namespace brenvo::file
