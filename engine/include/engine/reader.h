// The rows of a database read from beside it, by another thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "base/date.h"

namespace brenvo::engine {

// Sees what was stored when it was made, and nothing that is stored later, as long as it lives.
// While it lives, work on the database goes on as without it, but the database may not be closed.
// One thread at a time may use it, whichever it is.
class Reader {
 public:
  // A row while it is looked at. Columns count from 0, as the SELECT names them.
  class Row {
   public:
    // As Value::Text of the cell; valid until the next row, or the next text of the same column.
    virtual std::string_view Text(std::size_t column) = 0;
    // As Value::Number, and Value::ReadableBool where it is readable, else false.
    virtual double Number(std::size_t column) = 0;
    virtual bool Bool(std::size_t column) = 0;
    // As Value::Integer.
    virtual std::int64_t Integer(std::size_t column) = 0;
    // As Value::ReadableDate; nothing for Null.
    virtual std::optional<base::DateTime> Date(std::size_t column) = 0;

   protected:
    ~Row() = default;
  };

  Reader() = default;
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;
  virtual ~Reader() = default;

  // Runs a SELECT and shows its rows one after another, until `see` gives false; true when it never
  // did. The errors are those of a snapshot.
  virtual bool ForEach(std::string_view select, const std::function<bool(Row& row)>& see) = 0;
};

}  // namespace brenvo::engine
