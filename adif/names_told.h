// Names of contacts that a file has told, where the log has none that could be the same.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace brenvo::adif {

// Of each name half of its bits are held, eight bytes of memory: of two names made by chance that
// differ, one in a hundred million is taken for the other in a million of them.
class NamesTold {
 public:
  // False when it was told before. `uuid` is one.
  bool Add(std::string_view uuid);

 private:
  void Grow();
  // The place where it stands, or would.
  std::size_t PlaceOf(std::uint64_t name) const;

  std::vector<std::uint64_t> places_;  // a power of two of them; 0 is free
  std::size_t count_ = 0;
};

}  // namespace brenvo::adif
