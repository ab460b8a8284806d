// What the files of others tell of calls: logs of contests, call histories, super-check lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/call_book.h"
#include "gara/log_file.h"

namespace brenvo::gara {

struct ReadCallFile {
  std::string kind;                    // what the file was taken for, for the operator
  std::vector<core::KnownCall> calls;  // each once, ascending
  std::int64_t lines = 0;              // that hold a call or should
  std::vector<ReadNote> notes;         // lines that tell nothing, and why
};

inline constexpr std::size_t kMostCallFileBytes = 32 << 20;

// Any bytes: an EDI or Cabrillo log, an ADI file, a list of columns whose order a line "!!Order!!"
// tells (or the usual one), a list of call and locator, a list of calls.
ReadCallFile ReadCallFileBytes(std::string_view bytes);

}  // namespace brenvo::gara
