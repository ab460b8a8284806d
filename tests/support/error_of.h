// What a piece of work reports.
#pragma once

#include "engine/database_error.h"

namespace brenvo {

// The number of the DatabaseError that a piece of work throws; 0 when it throws none.
template <typename Work>
int ErrorOf(Work&& work) {
  try {
    work();
  } catch (const engine::DatabaseError& error) {
    return error.Number;
  }
  return 0;
}

}  // namespace brenvo
