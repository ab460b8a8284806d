// The keys of a dynaset, in its order: read from both ends, as far as somebody has asked.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "connection.h"
#include "translate.h"

namespace brenvo::file {

// Places are counted from 0. A whole table of many rows need not be read to stand on its last one:
// its rows are counted, and its keys read backwards, until the two ends meet.
class HeldKeys {
 public:
  // `keyset` outlives it.
  explicit HeldKeys(const Keyset& keyset) : keyset_(keyset) {}

  // Forgets what was there and begins anew: what is read later is what is stored now, as long as
  // whoever writes has the rest read before.
  void Begin(Connection& connection);
  void Drop();

  // How many places there are; as far as is known, while HasEnd is false.
  std::int64_t Size() const;
  bool HasEnd() const { return total_.has_value(); }
  bool Complete() const { return total_ && !hasGap_; }

  // Reads until this place is read, and some more; false when the rows end before it. Whatever
  // stands in the way is thrown, and thrown again.
  bool Reach(std::int64_t place, std::int64_t more = 0);
  // Until the last one is read, if there is any.
  void ReachEnd();
  // All of them. A failure is kept for Reach.
  void ReadRest();
  // So many further ones of those between the ends; false when none are left, or none are wanted
  // since nobody has asked for the end.
  bool ReadOn(std::int64_t count);

  // The key of a place that was reached.
  std::int64_t At(std::int64_t place) const;
  // Up to so many keys from a place that was reached on.
  std::vector<std::int64_t> Some(std::int64_t place, std::size_t most) const;
  // The place of a key; -1 when it is not among them. From the back, where new ones stand.
  std::int64_t PlaceOf(std::int64_t key);

  void Append(std::int64_t key);
  void Erase(std::int64_t place);

 private:
  std::int64_t Front() const { return static_cast<std::int64_t>(front_.size()); }
  std::int64_t Back() const { return static_cast<std::int64_t>(back_.size()); }
  bool IsRead(std::int64_t place) const;
  void ReadFront(std::int64_t upTo);
  void ReadBack(std::int64_t downTo);
  void Count();
  void JoinIfMet();
  template <class Read>
  void KeepingFailure(Read read);

  const Keyset& keyset_;
  Connection* connection_ = nullptr;
  Running forward_, backward_;
  std::vector<std::int64_t> front_;
  std::vector<std::int64_t> back_;  // the last one first
  // Known once the end was reached. While there is a gap, front_ and back_ are not all.
  std::optional<std::int64_t> total_;
  bool hasGap_ = false;
  std::optional<engine::DatabaseError> failure_;  // what stands behind the keys that could be read
};

}  // namespace brenvo::file
