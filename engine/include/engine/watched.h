// Statements that whoever waits for them can stop, within a block.
#pragma once

#include <functional>
#include <utility>

#include "engine/database.h"

namespace brenvo::engine {

// Database::Watch while it lives.
class Watched {
 public:
  Watched(Database& database, std::function<bool()> goOn) : database_(database) {
    database_.Watch(std::move(goOn));
  }
  ~Watched() {
    if (database_.IsOpen()) database_.Watch(nullptr);
  }
  Watched(const Watched&) = delete;
  Watched& operator=(const Watched&) = delete;

 private:
  Database& database_;
};

}  // namespace brenvo::engine
