#include "held_keys.h"

#include <algorithm>
#include <limits>

namespace brenvo::file {
namespace {

constexpr std::int64_t kBlock = 256;
// A table of so many rows is read rather than counted.
constexpr std::int64_t kFew = 2048;
constexpr std::int64_t kAll = std::numeric_limits<std::int64_t>::max();

}  // namespace

void HeldKeys::Begin(Connection& connection) {
  Drop();
  connection_ = &connection;
  forward_ = Running(connection, keyset_.keys.text, keyset_.keys.parameters);
  Reach(0);
}

void HeldKeys::Drop() {
  forward_ = Running();
  backward_ = Running();
  front_.clear();
  back_.clear();
  total_.reset();
  hasGap_ = false;
  failure_.reset();
}

std::int64_t HeldKeys::Size() const { return total_.value_or(Front()); }

bool HeldKeys::IsRead(std::int64_t place) const {
  return place < Front() || (hasGap_ && place >= *total_ - Back() && place < *total_);
}

template <class Read>
void HeldKeys::KeepingFailure(Read read) {
  if (failure_) throw engine::DatabaseError(*failure_);
  try {
    read();
  } catch (const engine::DatabaseError& failure) {
    // Asked from within a statement at work: nothing was read, and it can be asked again.
    if (failure.Number == engine::DatabaseError::kLocked) throw;
    failure_ = failure;
    forward_ = Running();
    backward_ = Running();
    throw;
  }
}

void HeldKeys::JoinIfMet() {
  if (!hasGap_ || Front() + Back() < *total_) return;
  front_.insert(front_.end(), back_.rbegin(), back_.rend());
  total_ = Front();
  back_.clear();
  hasGap_ = false;
  forward_ = Running();
  backward_ = Running();
}

void HeldKeys::ReadFront(std::int64_t upTo) {
  KeepingFailure([&] {
    while (!Complete() && Front() < upTo) {
      if (forward_.Step()) {
        front_.push_back(forward_.Key());
      } else {
        total_ = Front() + Back();
      }
      JoinIfMet();
      if (!hasGap_ && total_) forward_ = Running();
    }
  });
}

void HeldKeys::ReadBack(std::int64_t downTo) {
  KeepingFailure([&] {
    while (hasGap_ && *total_ - Back() > downTo) {
      if (!backward_.Step()) break;
      back_.push_back(backward_.Key());
      JoinIfMet();
    }
  });
}

void HeldKeys::Count() {
  KeepingFailure([&] {
    Running count(*connection_, keyset_.count.text, keyset_.count.parameters);
    count.Step();
    total_ = count.Key();
    hasGap_ = true;
    backward_ = Running(*connection_, keyset_.backwards.text, keyset_.backwards.parameters);
    JoinIfMet();
  });
  if (hasGap_) connection_->TellUnread();
}

bool HeldKeys::Reach(std::int64_t place, std::int64_t more) {
  if (IsRead(place)) return true;
  if (total_ && place >= *total_) return false;
  if (hasGap_ && *total_ - Back() - place < place - Front()) {
    ReadBack(std::max<std::int64_t>(0, place - std::max(more, kBlock)));
  } else {
    ReadFront(std::min(place, kAll - kBlock) + 1 + more);
  }
  return IsRead(place);
}

void HeldKeys::ReachEnd() {
  if (!total_) ReadFront(keyset_.count.text.empty() ? kAll : std::max(kFew, Front()));
  if (!total_) Count();
  if (hasGap_ && back_.empty()) ReadBack(*total_ - kBlock);
}

void HeldKeys::ReadRest() {
  if (failure_) return;
  try {
    ReadFront(kAll);
  } catch (const engine::DatabaseError&) {
    // It is kept, and told to whoever moves there.
  }
}

bool HeldKeys::ReadOn(std::int64_t count) {
  if (!hasGap_ || failure_) return false;
  try {
    ReadFront(Front() + count);
  } catch (const engine::DatabaseError&) {
    return false;
  }
  return hasGap_;
}

std::int64_t HeldKeys::At(std::int64_t place) const {
  return place < Front() ? front_[static_cast<std::size_t>(place)]
                         : back_[static_cast<std::size_t>(*total_ - 1 - place)];
}

std::vector<std::int64_t> HeldKeys::Some(std::int64_t place, std::size_t most) const {
  std::vector<std::int64_t> keys;
  keys.reserve(most);
  for (; keys.size() < most && IsRead(place); ++place) keys.push_back(At(place));
  return keys;
}

std::int64_t HeldKeys::PlaceOf(std::int64_t key) {
  const auto isAtBack = std::find(back_.begin(), back_.end(), key);
  if (isAtBack != back_.end()) return *total_ - 1 - (isAtBack - back_.begin());
  for (std::int64_t looked = 0;;) {
    for (std::int64_t place = Front(); place-- > looked;) {
      if (front_[static_cast<std::size_t>(place)] == key) return place;
    }
    if (Complete()) return -1;
    looked = Front();
    ReadFront(looked + kBlock);
  }
}

void HeldKeys::Append(std::int64_t key) {
  if (hasGap_) {
    back_.insert(back_.begin(), key);
  } else {
    front_.push_back(key);
  }
  if (total_) ++*total_;
}

void HeldKeys::Erase(std::int64_t place) {
  if (place < Front()) {
    front_.erase(front_.begin() + place);
  } else {
    back_.erase(back_.begin() + (*total_ - 1 - place));
  }
  if (total_) --*total_;
}

}  // namespace brenvo::file
